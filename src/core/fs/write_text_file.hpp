// Writes a whole text to a path, all of it or nothing.
#pragma once

#include <core/export.hpp>

#include <mutex>
#include <set>
#include <string>
#include <string_view>

namespace quor::core::fs {

/// Writes `text` to `path` so that a reader finds either the old file or the whole new one; returns whether it did.
///
/// A regular (or new) target is replaced by renaming a temporary file written beside it and flushed to disk; the temporary
/// takes over the target's permissions. A symbolic link is followed and stays a link. A target that is something else (a
/// pipe, a terminal, /dev/stdout) is written directly. Bytes are written as given; no folder is made. On failure the result
/// is false, the old file is untouched and no temporary file is left. Safe to call from several threads on different paths.
QUOR_GJF_API bool write_text_file(const std::string& path, std::string_view text) noexcept;

/// Folders in which files were replaced, each to be flushed once instead of after every file.
///
/// Until `flush`, or the end of this object, a power failure leaves each file old or new, and after it new.
class QUOR_GJF_API FolderFlushes {
   public:
    FolderFlushes() = default;
    FolderFlushes(const FolderFlushes&) = delete;
    FolderFlushes& operator=(const FolderFlushes&) = delete;
    ~FolderFlushes() { flush(); }

    /// Notes a folder in which a file was replaced. Safe to call from several threads.
    void add(const std::string& folder) noexcept;
    /// Makes all that was written so far last, and forgets the folders.
    void flush() noexcept;

   private:
    std::mutex mutex_;
    std::set<std::string> folders_;
};

/// Writes as the function above does, but leaves the flush of the folder to `folders`.
QUOR_GJF_API bool write_text_file(const std::string& path, std::string_view text, FolderFlushes& folders) noexcept;

}  // namespace quor::core::fs

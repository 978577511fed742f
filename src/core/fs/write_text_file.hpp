// Writes a whole text to a path, all of it or nothing.
#pragma once

#include <core/export.hpp>

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

}  // namespace quor::core::fs

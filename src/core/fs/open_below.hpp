// Opens files below a folder, and nowhere else. Private to the library.
#pragma once

#include <core/fs/read_regular_file.hpp>

#include <string>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace quor::core::fs {

/// What is opened to be read is neither waited for nor a link.
inline constexpr int flags_for_reading = O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC;

/// Closes a file when it goes; errno stays.
class OpenedFile {
   public:
    explicit OpenedFile(int descriptor) noexcept : descriptor_(descriptor) {}
    OpenedFile(OpenedFile&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    OpenedFile& operator=(OpenedFile&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~OpenedFile();

    int descriptor() const noexcept { return descriptor_; }  ///< -1 where nothing could be opened; errno tells why

   private:
    int descriptor_;
};

/// Opens a path below a folder to be read; fails with EXDEV where it leads out of it.
OpenedFile open_below(int folder, const std::string& path, PathSteps steps);

}  // namespace quor::core::fs

// Opens without waiting, and asks what was opened before anything is read: the name may stand for another file by then.
#include <core/fs/read_regular_file.hpp>

#include <array>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quor::core::fs {
namespace {

// Reads to the end of a file, which may grow meanwhile.
ReadFile read_open_file(int descriptor, std::size_t largest) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) {
        return {ReadOutcome::Unreadable};
    }
    if (!S_ISREG(status.st_mode)) {
        return {ReadOutcome::NotRegular};
    }
    ReadFile file{ReadOutcome::Read};
    std::array<char, 1 << 14> block;
    for (;;) {
        const ssize_t count = ::read(descriptor, block.data(), block.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return {ReadOutcome::Unreadable};
        }
        if (count == 0) {
            return file;
        }
        if (static_cast<std::size_t>(count) > largest - file.text.size()) {
            return {ReadOutcome::TooLarge};
        }
        file.text.append(block.data(), static_cast<std::size_t>(count));
    }
}

}  // namespace

ReadFile read_regular_file(const std::string& path, std::size_t largest) {
    struct Closing {
        int descriptor;
        ~Closing() { ::close(descriptor); }
    };
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0) {
        const bool is_missing = errno == ENOENT || errno == ENOTDIR || errno == ENAMETOOLONG;
        return {errno == ENXIO ? ReadOutcome::NotRegular : is_missing ? ReadOutcome::Missing : ReadOutcome::Unreadable};
    }
    const Closing closing{descriptor};
    return read_open_file(descriptor, largest);
}

}  // namespace quor::core::fs

// Opens without waiting, and asks what was opened before anything is read: the name may stand for another file by then.
#include <core/fs/read_regular_file.hpp>

#include <core/fs/open_below.hpp>

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
    if (status.st_size > 0 && static_cast<std::uint64_t>(status.st_size) > largest) {
        return {ReadOutcome::TooLarge};
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

// Tells what came of a file that could not be opened.
ReadOutcome outcome_of(int error) noexcept {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
        case ENAMETOOLONG:
            return ReadOutcome::Missing;
        case ENXIO:
            return ReadOutcome::NotRegular;
        case EXDEV:
            return ReadOutcome::Outside;
        default:
            return ReadOutcome::Unreadable;
    }
}

ReadFile read_opened(const OpenedFile& file, std::size_t largest) {
    return file.descriptor() < 0 ? ReadFile{outcome_of(errno)} : read_open_file(file.descriptor(), largest);
}

}  // namespace

ReadFile read_regular_file(const std::string& path, std::size_t largest) {
    return read_opened(OpenedFile(::open(path.c_str(), flags_for_reading)), largest);
}

ReadFile read_regular_file_below(const std::string& folder, const std::string& path, std::size_t largest, PathSteps steps) {
    const OpenedFile root(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (root.descriptor() < 0) {
        return {outcome_of(errno)};
    }
    return read_opened(open_below(root.descriptor(), path, steps), largest);
}

}  // namespace quor::core::fs

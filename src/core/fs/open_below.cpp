// Lets the kernel find what lies below a folder. Where it cannot, walks name by name, each opened from the folder before it,
// so that nobody can put a link in the place of a folder that was looked at.
#include <core/fs/open_below.hpp>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <deque>
#include <string_view>
#include <vector>

#include <sys/stat.h>
#include <sys/syscall.h>

#if __has_include(<linux/openat2.h>)
#include <linux/openat2.h>
#endif

namespace quor::core::fs {
namespace {

constexpr int most_links = 40;
[[maybe_unused]] constexpr int most_tries = 20;  // of a walk that others disturb

OpenedFile refused(int error) noexcept {
    errno = error;
    return OpenedFile(-1);
}

// Fails with ENOSYS where the kernel does not know how.
OpenedFile open_by_kernel([[maybe_unused]] int folder, [[maybe_unused]] const std::string& path) noexcept {
#if defined(SYS_openat2) && defined(RESOLVE_BENEATH)
    open_how how{};
    how.flags = static_cast<unsigned>(flags_for_reading & ~O_NOFOLLOW);
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS;
    for (int i = 0; i < most_tries; ++i) {
        OpenedFile file(static_cast<int>(::syscall(SYS_openat2, folder, path.c_str(), &how, sizeof how)));
        if (file.descriptor() >= 0 || errno != EAGAIN) {
            return file;
        }
    }
#endif
    return refused(ENOSYS);
}

class Walk {
   public:
    explicit Walk(int folder) : root_(folder) {}

    OpenedFile open(std::string_view path) {
        if (!take(path)) {
            return OpenedFile(-1);
        }
        while (!names_.empty()) {
            const std::string name = std::move(names_.front());
            names_.pop_front();
            if (name == "..") {
                if (folders_.empty()) {
                    return refused(EXDEV);
                }
                folders_.pop_back();
            } else if (name != "." && !name.empty() && !step(name)) {
                return std::move(found_);
            }
        }
        return OpenedFile(::openat(here(), ".", flags_for_reading));  // a folder
    }

   private:
    int here() const noexcept { return folders_.empty() ? root_ : folders_.back().descriptor(); }

    // Puts the names of a path before those that are left.
    bool take(std::string_view path) {
        if (path.empty() || path.front() == '/') {
            errno = path.empty() ? ENOENT : EXDEV;
            return false;
        }
        std::vector<std::string> names;
        for (std::size_t begin = 0; begin <= path.size();) {
            const std::size_t end = std::min(path.find('/', begin), path.size());
            names.emplace_back(path.substr(begin, end - begin));
            begin = end + 1;
        }
        names_.insert(names_.begin(), names.begin(), names.end());
        return true;
    }

    // Goes into a folder or takes the way that a link tells; returns false at the end of the walk: `found_` is what came of
    // it.
    bool step(const std::string& name) {
        OpenedFile next(::openat(here(), name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
        struct stat status {};
        if (next.descriptor() < 0 || ::fstat(next.descriptor(), &status) != 0) {
            return false;
        }
        if (S_ISLNK(status.st_mode)) {
            return follow(next.descriptor());
        }
        if (S_ISDIR(status.st_mode)) {
            folders_.push_back(std::move(next));
            return true;
        }
        found_ = names_.empty() ? OpenedFile(::openat(here(), name.c_str(), flags_for_reading)) : refused(ENOTDIR);
        return false;
    }

    bool follow(int link) {
        std::array<char, PATH_MAX> target;
        const ssize_t length = ::readlinkat(link, "", target.data(), target.size());
        if (length < 0 || ++links_ > most_links) {
            errno = length < 0 ? errno : ELOOP;
            return false;
        }
        return take(std::string_view(target.data(), static_cast<std::size_t>(length)));
    }

    int root_;
    int links_ = 0;
    std::vector<OpenedFile> folders_;  // those on the way, without the root
    std::deque<std::string> names_;    // still to go
    OpenedFile found_{-1};
};

}  // namespace

OpenedFile::~OpenedFile() {
    if (descriptor_ >= 0) {
        const int error = errno;
        ::close(descriptor_);
        errno = error;
    }
}

OpenedFile open_below(int folder, const std::string& path, PathSteps steps) {
    if (path.find('\0') != std::string::npos) {
        return refused(ENOENT);
    }
    if (steps == PathSteps::KernelsFirst) {
        OpenedFile file = open_by_kernel(folder, path);
        if (file.descriptor() >= 0 || (errno != ENOSYS && errno != EPERM)) {
            return file;
        }
    }
    return Walk(folder).open(path);
}

}  // namespace quor::core::fs

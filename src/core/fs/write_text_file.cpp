// Writes a text beside its target and renames it over it, so that no reader ever finds half a file.
#include <core/fs/write_text_file.hpp>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <optional>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quor::core::fs {
namespace {

// A chain of symbolic links longer than this is taken for a circle, as the system does.
constexpr int link_limit = 40;

// Owns an open file; closing may fail, and says so when asked to.
class OpenFile {
   public:
    explicit OpenFile(int descriptor) noexcept : descriptor_(descriptor) {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() { close(); }

    bool is_open() const noexcept { return descriptor_ >= 0; }
    int descriptor() const noexcept { return descriptor_; }

    bool close() noexcept {
        const int descriptor = descriptor_;
        descriptor_ = -1;
        return descriptor < 0 || ::close(descriptor) == 0;
    }

    bool write(std::string_view text) noexcept {
        while (!text.empty()) {
            const ssize_t written = ::write(descriptor_, text.data(), text.size());
            if (written < 0 && errno != EINTR) {
                return false;
            }
            text.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
        }
        return true;
    }

   private:
    int descriptor_;
};

// Follows symbolic links by hand, so that a link to a file that is not there yet gives that file's path.
std::optional<std::filesystem::path> follow_links(std::filesystem::path path) {
    for (int i = 0; i < link_limit; ++i) {
        std::error_code error;
        if (!std::filesystem::is_symlink(std::filesystem::symlink_status(path, error))) {
            return path;
        }
        const std::filesystem::path target = std::filesystem::read_symlink(path, error);
        if (error) {
            return std::nullopt;
        }
        path = path.parent_path() / target;  // an absolute target replaces the folder
    }
    return std::nullopt;
}

bool write_directly(const char* path, std::string_view text) noexcept {
    OpenFile file(::open(path, O_WRONLY | O_CLOEXEC));
    return file.is_open() && file.write(text) && file.close();
}

// A name that no other writer of this machine uses at the same time.
std::string temporary_name(const std::filesystem::path& target) {
    static std::atomic<unsigned> counter{0};
    return target.string() + ".tmp-" + std::to_string(::getpid()) + "-" + std::to_string(counter.fetch_add(1));
}

// Makes a rename last over a power failure. Not every file system can do it, and the text is safe either way.
void flush_folder(const std::filesystem::path& target) noexcept {
    const std::filesystem::path parent = target.parent_path();
    OpenFile folder(::open(parent.empty() ? "." : parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.is_open()) {
        ::fsync(folder.descriptor());
    }
}

bool fill(OpenFile& file, std::string_view text, const struct stat* old) noexcept {
    const bool written = file.is_open() && file.write(text);
    const bool permitted = written && (old == nullptr || ::fchmod(file.descriptor(), old->st_mode & 07777) == 0);
    return permitted && ::fsync(file.descriptor()) == 0 && file.close();
}

bool replace(const std::filesystem::path& target, std::string_view text, const struct stat* old) {
    const std::string temporary = temporary_name(target);
    OpenFile file(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (!file.is_open()) {
        return false;
    }
    if (!fill(file, text, old) || std::rename(temporary.c_str(), target.c_str()) != 0) {
        ::unlink(temporary.c_str());
        return false;
    }
    flush_folder(target);
    return true;
}

}  // namespace

bool write_text_file(const std::string& path, std::string_view text) noexcept {
    try {
        struct stat old {};
        const bool exists = ::stat(path.c_str(), &old) == 0;
        if (!exists && errno != ENOENT) {
            return false;
        }
        if (exists && !S_ISREG(old.st_mode)) {
            return write_directly(path.c_str(), text);
        }
        const std::optional<std::filesystem::path> target = follow_links(path);
        return target && !path.empty() && replace(*target, text, exists ? &old : nullptr);
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace quor::core::fs

// Writes a text beside its target and renames it over it, so that no reader ever finds half a file.
#include <core/fs/write_text_file.hpp>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <exception>
#include <filesystem>
#include <optional>
#include <system_error>

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quor::core::fs {
namespace {

// A chain of symbolic links longer than this is taken for a circle, as the system does.
constexpr int link_limit = 40;

// Names in a folder are no longer than this, in bytes.
constexpr std::size_t longest_file_name = 255;

// So many temporary files of killed processes are passed over.
constexpr int leftover_limit = 1000;

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

// Holds back the signal that a pipe sends when its reader has gone, and takes it away if it came: a failed write says
// enough.
class PipeSignalHeldBack {
   public:
    PipeSignalHeldBack() noexcept {
        ::sigemptyset(&pipe_);
        ::sigaddset(&pipe_, SIGPIPE);
        sigset_t pending;
        ::sigpending(&pending);
        was_pending_ = ::sigismember(&pending, SIGPIPE) == 1;
        ::pthread_sigmask(SIG_BLOCK, &pipe_, &old_mask_);
    }
    PipeSignalHeldBack(const PipeSignalHeldBack&) = delete;
    PipeSignalHeldBack& operator=(const PipeSignalHeldBack&) = delete;
    ~PipeSignalHeldBack() {
        const timespec at_once{};
        while (!was_pending_ && ::sigtimedwait(&pipe_, nullptr, &at_once) < 0 && errno == EINTR) {
        }
        ::pthread_sigmask(SIG_SETMASK, &old_mask_, nullptr);
    }

   private:
    sigset_t pipe_{};
    sigset_t old_mask_{};
    bool was_pending_ = false;
};

bool write_directly(const char* path, std::string_view text) noexcept {
    const PipeSignalHeldBack held_back;
    OpenFile file(::open(path, O_WRONLY | O_CLOEXEC));
    return file.is_open() && file.write(text) && file.close();
}

// A name beside the target that no other writer of this machine uses at the same time. One left over by a killed process
// of the same number may be there all the same.
std::string temporary_name(const std::filesystem::path& target) {
    static std::atomic<unsigned> counter{0};
    const std::string suffix = ".tmp-" + std::to_string(::getpid()) + "-" + std::to_string(counter.fetch_add(1));
    const std::string name = target.filename().string().substr(0, longest_file_name - suffix.size());
    return (target.parent_path() / (name + suffix)).string();
}

// Makes a new file under a temporary name, which it stores.
int make_temporary(const std::filesystem::path& target, std::string& name) {
    int descriptor = -1;
    for (int i = 0; i < leftover_limit && descriptor < 0 && (i == 0 || errno == EEXIST); ++i) {
        name = temporary_name(target);
        descriptor = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    }
    return descriptor;
}

// Makes a rename last over a power failure. Not every file system can do it, and the text is safe either way.
void flush_folder(const std::string& parent) noexcept {
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
    std::string temporary;
    OpenFile file(make_temporary(target, temporary));
    if (!file.is_open()) {
        return false;
    }
    if (!fill(file, text, old) || std::rename(temporary.c_str(), target.c_str()) != 0) {
        ::unlink(temporary.c_str());
        return false;
    }
    return true;
}

// Writes as `write_text_file` does; hands the folder of a file that was replaced to `replaced`.
template <class Replaced>
bool write_whole(const std::string& path, std::string_view text, const Replaced& replaced) noexcept {
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
        if (!target || path.empty()) {
            return false;
        }
        const std::string folder = target->parent_path().string();
        if (!replace(*target, text, exists ? &old : nullptr)) {
            return false;
        }
        replaced(folder);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace

bool write_text_file(const std::string& path, std::string_view text) noexcept {
    return write_whole(path, text, flush_folder);
}

bool write_text_file(const std::string& path, std::string_view text, FolderFlushes& folders) noexcept {
    return write_whole(path, text, [&folders](const std::string& folder) { folders.add(folder); });
}

void FolderFlushes::flush() noexcept {
    const std::lock_guard<std::mutex> lock(mutex_);
    for (const std::string& folder : folders_) {
        flush_folder(folder);
    }
    folders_.clear();
}

void FolderFlushes::add(const std::string& folder) noexcept {
    try {
        const std::lock_guard<std::mutex> lock(mutex_);
        folders_.insert(folder);
    } catch (const std::bad_alloc&) {
        flush_folder(folder);  // no room to remember it
    }
}

}  // namespace quor::core::fs

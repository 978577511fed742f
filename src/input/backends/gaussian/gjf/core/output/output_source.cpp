// Opens outputs and finds out their form by their first bytes.
#include <gjf/core/output/output_source.hpp>

#include <gjf/core/output/decompression.hpp>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quor::input::gaussian {
namespace {

class TextSource final : public OutputSource {
   public:
    explicit TextSource(std::string_view text) : text_(text) {}
    std::size_t read(char* bytes, std::size_t size) override {
        const std::size_t count = text_.copy(bytes, size);
        text_.remove_prefix(count);
        return count;
    }

   private:
    std::string_view text_;
};

[[noreturn]] void refuse_file(const char* what, int reason) { throw OutputError(std::string(what) + std::strerror(reason)); }

class FileSource final : public OutputSource {
   public:
    explicit FileSource(const std::string& path)
        : descriptor_(path == "-" ? STDIN_FILENO : ::open(path.c_str(), O_RDONLY | O_NOCTTY | O_CLOEXEC)) {
        if (descriptor_ < 0) {
            refuse_file("Cannot open file: ", errno);
        }
        struct stat status {};
        if (::fstat(descriptor_, &status) == 0 && S_ISDIR(status.st_mode)) {
            close();
            refuse_file("Cannot open file: ", EISDIR);
        }
    }
    ~FileSource() override { close(); }

    std::size_t read(char* bytes, std::size_t size) override {
        for (;;) {
            const ssize_t count = ::read(descriptor_, bytes, size);
            if (count >= 0) {
                return static_cast<std::size_t>(count);
            }
            if (errno != EINTR) {
                refuse_file("Cannot read file: ", errno);
            }
        }
    }

   private:
    void close() const noexcept {
        if (descriptor_ != STDIN_FILENO) {
            ::close(descriptor_);
        }
    }

    int descriptor_;
};

// Gives the bytes that were read to find out the form, then all others.
class BegunSource final : public OutputSource {
   public:
    BegunSource(std::unique_ptr<OutputSource> source, std::string begin)
        : source_(std::move(source)), begin_(std::move(begin)) {}
    std::size_t read(char* bytes, std::size_t size) override {
        if (taken_ == begin_.size()) {
            return source_->read(bytes, size);
        }
        const std::size_t count = begin_.copy(bytes, size, taken_);
        taken_ += count;
        return count;
    }

   private:
    std::unique_ptr<OutputSource> source_;
    std::string begin_;
    std::size_t taken_ = 0;
};

}  // namespace

std::unique_ptr<OutputSource> text_source(std::string_view text) { return std::make_unique<TextSource>(text); }

std::unique_ptr<OutputSource> decompressed(std::unique_ptr<OutputSource> packed) {
    constexpr std::string_view gzip_begin = "\x1f\x8b";
    constexpr std::string_view xz_begin{"\xfd\x37\x7a\x58\x5a\x00", 6};
    std::string begin(xz_begin.size(), '\0');
    std::size_t size = 0;
    for (std::size_t count = 1; count > 0 && size < begin.size(); size += count) {
        count = packed->read(begin.data() + size, begin.size() - size);
    }
    begin.resize(size);
    if (begin.compare(0, gzip_begin.size(), gzip_begin) == 0) {
        return gzip_source(std::move(packed), std::move(begin));
    }
    if (begin == xz_begin) {
        return xz_source(std::move(packed), std::move(begin));
    }
    return std::make_unique<BegunSource>(std::move(packed), std::move(begin));
}

std::unique_ptr<OutputSource> open_output(const std::string& path) {
    return decompressed(std::make_unique<FileSource>(path));
}

}  // namespace quor::input::gaussian

// The one source that knows zlib and liblzma. Either may be missing when the library is built; then its form is refused.
#include <gjf/core/output/decompression.hpp>

#include <algorithm>
#include <utility>

#ifdef QUOR_GJF_WITH_GZIP
#include <zlib.h>
#endif
#ifdef QUOR_GJF_WITH_XZ
#include <lzma.h>
#endif

namespace quor::input::gaussian {
namespace {

// Hands out the packed bytes in pieces, those first that were read while the form was found out.
class PackedBytes {
   public:
    PackedBytes(std::unique_ptr<OutputSource> source, std::string begin)
        : source_(std::move(source)), bytes_(std::move(begin)) {}

    // False at the end.
    bool next() {
        if (is_first_ && !bytes_.empty()) {
            is_first_ = false;
            return true;
        }
        is_first_ = false;
        bytes_.resize(1U << 16);
        bytes_.resize(source_->read(bytes_.data(), bytes_.size()));
        return !bytes_.empty();
    }
    std::string& bytes() noexcept { return bytes_; }

   private:
    std::unique_ptr<OutputSource> source_;
    std::string bytes_;
    bool is_first_ = true;
};

#if defined(QUOR_GJF_WITH_GZIP) || defined(QUOR_GJF_WITH_XZ)
[[noreturn]] void refuse(const char* form, const char* reason) { throw OutputError(std::string(form) + ": " + reason); }
#endif

#ifdef QUOR_GJF_WITH_GZIP
class GzipSource final : public OutputSource {
   public:
    GzipSource(std::unique_ptr<OutputSource> packed, std::string begin) : packed_(std::move(packed), std::move(begin)) {
        if (inflateInit2(&stream_, 16 + MAX_WBITS) != Z_OK) {
            refuse("gzip", "no memory");
        }
    }
    ~GzipSource() override { inflateEnd(&stream_); }

    std::size_t read(char* bytes, std::size_t size) override {
        const std::size_t wanted = std::min<std::size_t>(size, 1U << 30);
        stream_.next_out = reinterpret_cast<Bytef*>(bytes);
        stream_.avail_out = static_cast<uInt>(wanted);
        while (stream_.avail_out == wanted && !is_done_) {
            step();
        }
        return wanted - stream_.avail_out;
    }

   private:
    bool fill() {
        if (stream_.avail_in > 0) {
            return true;
        }
        if (!packed_.next()) {
            return false;
        }
        stream_.next_in = reinterpret_cast<Bytef*>(packed_.bytes().data());
        stream_.avail_in = static_cast<uInt>(packed_.bytes().size());
        return true;
    }

    void step() {
        if (!fill()) {
            is_done_ = true;
            if (is_inside_) {
                refuse("gzip", "the file ends before its content does");
            }
            return;
        }
        if (!is_inside_ && has_member_ && *stream_.next_in != 0x1f) {
            is_done_ = true;  // what follows the last member is padding
            return;
        }
        is_inside_ = true;
        has_member_ = true;
        const int outcome = inflate(&stream_, Z_NO_FLUSH);
        if (outcome == Z_STREAM_END) {
            is_inside_ = false;
            inflateReset(&stream_);
        } else if (outcome != Z_OK) {
            refuse("gzip", "the file is damaged");
        }
    }

    PackedBytes packed_;
    z_stream stream_{};
    bool is_inside_ = false;
    bool has_member_ = false;
    bool is_done_ = false;
};
#endif

#ifdef QUOR_GJF_WITH_XZ
class XzSource final : public OutputSource {
   public:
    XzSource(std::unique_ptr<OutputSource> packed, std::string begin) : packed_(std::move(packed), std::move(begin)) {
        if (lzma_stream_decoder(&stream_, memory_limit, LZMA_CONCATENATED) != LZMA_OK) {
            refuse("xz", "no memory");
        }
    }
    ~XzSource() override { lzma_end(&stream_); }

    std::size_t read(char* bytes, std::size_t size) override {
        stream_.next_out = reinterpret_cast<std::uint8_t*>(bytes);
        stream_.avail_out = size;
        while (stream_.avail_out == size && !is_done_) {
            if (stream_.avail_in == 0 && packed_.next()) {
                stream_.next_in = reinterpret_cast<const std::uint8_t*>(packed_.bytes().data());
                stream_.avail_in = packed_.bytes().size();
            }
            const lzma_ret outcome = lzma_code(&stream_, stream_.avail_in == 0 ? LZMA_FINISH : LZMA_RUN);
            is_done_ = outcome == LZMA_STREAM_END;
            if (outcome != LZMA_OK && !is_done_) {
                refuse("xz", outcome == LZMA_BUF_ERROR ? "the file ends before its content does" : "the file is damaged");
            }
        }
        return size - stream_.avail_out;
    }

   private:
    // Twice what the strongest preset needs.
    static constexpr std::uint64_t memory_limit = std::uint64_t{128} << 20;

    PackedBytes packed_;
    lzma_stream stream_ = LZMA_STREAM_INIT;
    bool is_done_ = false;
};
#endif

}  // namespace

std::unique_ptr<OutputSource> gzip_source(std::unique_ptr<OutputSource> packed, std::string begin) {
#ifdef QUOR_GJF_WITH_GZIP
    return std::make_unique<GzipSource>(std::move(packed), std::move(begin));
#else
    (void)packed, (void)begin;
    throw OutputError("gzip: not known here, built without zlib");
#endif
}

std::unique_ptr<OutputSource> xz_source(std::unique_ptr<OutputSource> packed, std::string begin) {
#ifdef QUOR_GJF_WITH_XZ
    return std::make_unique<XzSource>(std::move(packed), std::move(begin));
#else
    (void)packed, (void)begin;
    throw OutputError("xz: not known here, built without liblzma");
#endif
}

}  // namespace quor::input::gaussian

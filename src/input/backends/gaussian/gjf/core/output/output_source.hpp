// Where the bytes of an output come from: a file, plain or compressed by gzip or xz, or a text in memory.
#pragma once

#include <core/export.hpp>

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quor::input::gaussian {

/// Tells that an output cannot be opened, read or decompressed.
class QUOR_GJF_API OutputError : public std::runtime_error {
   public:
    using std::runtime_error::runtime_error;
};

/// Gives bytes from the first to the last, once.
class QUOR_GJF_API OutputSource {
   public:
    OutputSource() = default;
    OutputSource(const OutputSource&) = delete;
    OutputSource& operator=(const OutputSource&) = delete;
    virtual ~OutputSource() = default;
    /// Fills in at most `size` bytes and returns how many; 0 at the end. Throws `OutputError`.
    virtual std::size_t read(char* bytes, std::size_t size) = 0;
};

/// Gives the bytes of a text, which must outlive the source, as they are.
QUOR_GJF_API std::unique_ptr<OutputSource> text_source(std::string_view text);

/// Opens a file, "-" for standard input. What its first bytes say is gzip or xz is decompressed as it is read, also where
/// several such streams follow each other. Throws `OutputError` with the system's reason, or where the library was built
/// without that form.
QUOR_GJF_API std::unique_ptr<OutputSource> open_output(const std::string& path);

/// Gives what the bytes of another source, gzip, xz or plain, stand for.
QUOR_GJF_API std::unique_ptr<OutputSource> decompressed(std::unique_ptr<OutputSource> packed);

}  // namespace quor::input::gaussian

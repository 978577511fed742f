// What all who handle the bytes of job files share: reading them whole, their first bytes, and where one job ends and the
// next begins.
#pragma once

#include <core/export.hpp>

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// The line between two jobs, as it is written; it is read in any case, with blanks around it.
inline constexpr std::string_view job_separator = "--Link1--";

/// Reads a stream to its end. Whether it could be read, the stream tells.
QUOR_GJF_API std::string read_stream(std::istream& stream);

/// Reads a file whole; throws "Cannot open file: PATH" when it cannot be read.
QUOR_GJF_API std::string read_whole_file(const std::string& path);

/// Removes the byte order mark that some editors put at the beginning of a file.
QUOR_GJF_API std::string_view without_byte_order_mark(std::string_view text) noexcept;

/// Returns the pieces of a text between its --Link1-- lines that hold something, byte for byte, as views of the text.
QUOR_GJF_API std::vector<std::string_view> job_texts(std::string_view text);

}  // namespace quor::input::gaussian

// The text of each job of a file, byte for byte.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quor_gjf {

/// Returns the pieces of a text between its --Link1-- lines that hold something, as views of the text.
std::vector<std::string_view> job_pieces(std::string_view text);

}  // namespace quor_gjf

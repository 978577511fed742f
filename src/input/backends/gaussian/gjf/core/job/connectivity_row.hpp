// The fields of a connectivity row. Private to the library.
#pragma once

#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// Cuts a row at blanks, up to its comment. Quotes and brackets bind nothing here.
void cut_connectivity_row(std::string_view line, std::vector<std::string_view>& fields);

}  // namespace quor::input::gaussian

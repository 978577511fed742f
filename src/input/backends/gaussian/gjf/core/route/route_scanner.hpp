// Cuts a route into segments and lists, minding quotes and brackets.
#pragma once

#include <core/export.hpp>

#include <string>
#include <vector>

namespace quor::input::gaussian {

/// Returns the first position of `character` outside quotes and all brackets, or -1. An opening bracket counts as standing
/// outside itself.
QUOR_GJF_API int find_top_level_char(const std::string& text, char character);

/// Returns the position of the ")" that closes the "(" at `position`, or -1 when there is no "(" there or nothing closes it.
QUOR_GJF_API int find_matching_paren(const std::string& text, std::size_t position);

/// Cuts `text` at every top-level `separator`; pieces are trimmed, empty ones dropped.
QUOR_GJF_API std::vector<std::string> split_top_level_list(const std::string& text, char separator);

/// Cuts a route at top-level white space; an option list with blanks in it stays one segment.
QUOR_GJF_API std::vector<std::string> split_route_segments_preserving_nesting(const std::string& route);

}  // namespace quor::input::gaussian

// What a printed route asks for, as far as reading its output needs it; without the vocabulary, which may be missing.
// Private to the room.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quor::input::gaussian {

/// Returns the options of a keyword (lower case) that stands in a route, in lower case and without the outer brackets; empty
/// where it has none, absent where it does not stand there.
std::optional<std::string> options_in(std::string_view route, std::string_view keyword);

/// Tells whether one of several words (lower case, with blanks between) stands in a list of options.
bool has_any_option(std::string_view options, std::string_view words);

}  // namespace quor::input::gaussian

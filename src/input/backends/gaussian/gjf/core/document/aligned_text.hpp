// A layout that loses nothing: the columns of atom lines are aligned, and all else keeps its bytes.
#pragma once

#include <core/export.hpp>

#include <string>
#include <string_view>

namespace quor::input::gaussian {

/// Returns a text with other blanks in its atom lines and Z-matrix rows, so that their columns stand below each other,
/// numbers by their points and comments behind all.
///
/// Words, digits, comments, line ends and every other line stay as they are. Lines with commas between their fields stay
/// too, and so do jobs that cannot be read whole. A second run changes nothing. Throws `GJFParseException` for a text that
/// is too long.
QUOR_GJF_API std::string aligned_text(std::string_view text);

}  // namespace quor::input::gaussian

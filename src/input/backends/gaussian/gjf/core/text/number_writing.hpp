// Numbers as text, independent of any locale. Private to the library.
#pragma once

#include <string>

namespace quor::input::gaussian {

/// Appends a number with so many decimals, at most 60.
void append_fixed(std::string& text, double number, int decimals);

/// The same as a text of its own.
std::string fixed_text(double number, int decimals);

/// Writes the fewest digits that read as the same number, without an exponent.
std::string shortest_text(double number);

/// Writes six significant digits, as a stream does.
std::string general_text(double number);

}  // namespace quor::input::gaussian

// What the label of an atom stands for, as far as selections ask. Private to the room.
#pragma once

#include <string>
#include <string_view>

namespace quor::input::gaussian {

/// Tells whether a text is the symbol of an element, or Bq, X, Xx or Tv, letter case aside.
bool is_element_symbol(std::string_view text);

/// Returns the symbol that a label begins with, in lower case: of C, c5 and 6 that is "c".
std::string element_of_label(const std::string& label);

}  // namespace quor::input::gaussian

// How far two words are from each other.
#pragma once

#include <core/export.hpp>

#include <cstddef>
#include <string_view>

namespace quor::input::gaussian {

/// Counts the steps from one word to another: a letter put in, left out, changed, or exchanged with its neighbour.
QUOR_GJF_API std::size_t steps_between(std::string_view a, std::string_view b);

/// Tells how many steps a word of this length may be from the one that was meant.
constexpr std::size_t most_steps(std::size_t length) noexcept { return length < 4 ? 1 : length < 10 ? 2 : 3; }

}  // namespace quor::input::gaussian

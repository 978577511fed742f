// A number or a range in one field, as in 4 or 3-7: how job files list atoms and cores. Private to the library.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace quor::input::gaussian {

/// A range with both its ends; a single number is a range of one.
struct NumberRange {
    std::int64_t first = 0;
    std::int64_t last = 0;
};

/// Tells whether a field has the form of a range: integers of any size and order, with a "-" between them. The first may
/// have a sign.
bool is_number_range_text(std::string_view field) noexcept;

/// Reads a field of that form; absent when it has another one, when the numbers do not ascend, or when one lies below
/// `lowest` or above `highest`.
std::optional<NumberRange> to_number_range(std::string_view field, std::int64_t lowest,
                                           std::int64_t highest = std::numeric_limits<std::int64_t>::max()) noexcept;

}  // namespace quor::input::gaussian

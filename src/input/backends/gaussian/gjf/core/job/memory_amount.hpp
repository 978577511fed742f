// Amounts of memory as %mem gives them. Private to the library.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace quor::input::gaussian {

/// A number of units, and how many bytes one of them has: 0 for a unit that is none.
struct MemoryAmount {
    std::int64_t amount = 0;
    std::int64_t unit = 0;
    bool has_unit = false;  ///< without one it counts words of 8 bytes
};

/// Reads a whole number with a unit or without, in any letter case; absent for any other text.
std::optional<MemoryAmount> read_memory_amount(std::string_view text);

}  // namespace quor::input::gaussian

// Reads amounts of memory.
#include <gjf/core/job/memory_amount.hpp>

#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {

std::optional<MemoryAmount> read_memory_amount(std::string_view text) {
    const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
    const std::optional<std::int64_t> amount = to_int64(text.substr(0, digits));
    if (digits == 0 || !amount) {
        return std::nullopt;
    }
    constexpr std::int64_t word = 8;
    constexpr struct {
        std::string_view name;
        std::int64_t bytes;
    } units[] = {{"", word},         {"b", 1},           {"w", word},       {"kb", 1LL << 10},
                 {"mb", 1LL << 20},  {"gb", 1LL << 30},  {"tb", 1LL << 40}, {"kw", word << 10},
                 {"mw", word << 20}, {"gw", word << 30}, {"tw", word << 40}};
    const std::string_view unit = text.substr(digits);
    for (const auto& known : units) {
        if (equals_folded(unit, known.name)) {
            return MemoryAmount{*amount, known.bytes, !unit.empty()};
        }
    }
    return MemoryAmount{*amount, 0, true};
}

}  // namespace quor::input::gaussian

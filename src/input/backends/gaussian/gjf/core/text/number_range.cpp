// Cuts a field at the "-" between two numbers.
#include <gjf/core/text/number_range.hpp>

#include <gjf/core/text/number.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

struct Ends {
    std::string_view first;
    std::string_view last;
};

// A "-" at the front is a sign.
Ends ends_of(std::string_view field) noexcept {
    const std::size_t dash = std::min(field.find('-', 1), field.size());
    const std::string_view first = field.substr(0, dash);
    return {first, dash == field.size() ? first : field.substr(dash + 1)};
}

}  // namespace

bool is_number_range_text(std::string_view field) noexcept {
    const Ends ends = ends_of(field);
    return is_integer_text(ends.first) && is_integer_text(ends.last);
}

std::optional<NumberRange> to_number_range(std::string_view field, std::int64_t lowest, std::int64_t highest) noexcept {
    const Ends ends = ends_of(field);
    const std::optional<std::int64_t> first = to_int64(ends.first);
    const std::optional<std::int64_t> last = to_int64(ends.last);
    if (!first || !last || *first > *last || *first < lowest || *last > highest) {
        return std::nullopt;
    }
    return NumberRange{*first, *last};
}

}  // namespace quor::input::gaussian

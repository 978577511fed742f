// Atom numbers and ranges as sections write them.
#include <gjf/core/document/renumbering.hpp>

#include <gjf/core/text/number.hpp>
#include <gjf/core/text/number_range.hpp>

#include <cstdint>
#include <iterator>
#include <limits>
#include <set>

namespace quor::input::gaussian {
namespace {

// Writes sorted numbers as a list of ranges.
std::string ranges_text(const std::set<std::size_t>& numbers) {
    std::string text;
    for (auto begin = numbers.begin(); begin != numbers.end();) {
        auto last = begin;
        while (std::next(last) != numbers.end() && *std::next(last) == *last + 1) {
            ++last;
        }
        text += (text.empty() ? "" : ",") + std::to_string(*begin);
        text += *last == *begin ? "" : "-" + std::to_string(*last);
        begin = std::next(last);
    }
    return text;
}

}  // namespace

bool names_numbers(std::string_view field) noexcept {
    return to_number_range(field, std::numeric_limits<std::int64_t>::min()).has_value();
}

std::optional<std::size_t> new_number(std::string_view field, const AtomPlaces& places) {
    const std::optional<std::int64_t> number = to_int64(field);
    if (!number || *number < 1 || static_cast<std::size_t>(*number) > places.old_count()) {
        throw CannotRenumber("'" + std::string(field) + "' is no atom of the molecule");
    }
    const std::size_t place = places.places[static_cast<std::size_t>(*number) - 1];
    return place == AtomPlaces::gone ? std::nullopt : std::optional<std::size_t>(place + 1);
}

std::string renumbered_range(std::string_view field, const AtomPlaces& places) {
    const std::optional<NumberRange> range = to_number_range(field, 1, static_cast<std::int64_t>(places.old_count()));
    if (!range) {
        throw CannotRenumber("'" + std::string(field) + "' is no atom of the molecule");
    }
    std::set<std::size_t> numbers;
    for (std::int64_t i = range->first; i <= range->last; ++i) {
        const std::size_t place = places.places[static_cast<std::size_t>(i) - 1];
        if (place != AtomPlaces::gone) {
            numbers.insert(place + 1);
        }
    }
    return ranges_text(numbers);
}

std::string change_lines(const std::string& text, const AtomPlaces& places, const ChangeLine& change_line) {
    std::string result;
    for (const std::string_view line : split_lines(text)) {
        if (const std::optional<std::string> now = change_line(line, places)) {
            result += *now;
            result += '\n';
        }
    }
    if (!result.empty()) {
        result.pop_back();
    }
    return result;
}

}  // namespace quor::input::gaussian

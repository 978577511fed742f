// Walks the fields of a line whose form is expected, taking each as what it should be. For lines that are many and alike:
// what is not as expected is not taken, and the line left to those who look at every form. Private to the library.
#pragma once

#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <system_error>

namespace quor::input::gaussian {

/// Stands at a place of a line and takes fields from there on. Quotes, brackets and comments mean nothing to it: a field
/// that has one is taken only by who accepts that character.
class FieldWalk {
   public:
    FieldWalk(std::string_view line, FieldSeparators separators) noexcept
        : rest_(line), commas_(separators == FieldSeparators::WhiteSpaceAndComma) {}

    /// Passes over separators; tells whether the line ends there.
    bool at_end() noexcept {
        std::size_t blanks = 0;
        while (blanks < rest_.size() && is_separator(rest_[blanks])) {
            ++blanks;
        }
        rest_.remove_prefix(blanks);
        return rest_.empty();
    }

    /// Tells whether the character at a distance from here is `c`.
    bool has(std::size_t distance, char c) const noexcept { return distance < rest_.size() && rest_[distance] == c; }

    /// Counts the characters from a distance on that are accepted.
    template <typename Accepts>
    std::size_t count(std::size_t distance, Accepts accepts) const noexcept {
        std::size_t end = distance;
        while (end < rest_.size() && accepts(rest_[end])) {
            ++end;
        }
        return end - distance;
    }

    /// Takes a field of this length, if that is where the field ends; returns an empty one otherwise.
    std::string_view take(std::size_t length) noexcept {
        if (length < rest_.size() && !is_separator(rest_[length])) {
            return {};
        }
        const std::string_view field = rest_.substr(0, length);
        rest_.remove_prefix(length);
        return field;
    }

    /// Takes a whole number without a sign; absent when there is none.
    std::optional<std::int32_t> take_whole() noexcept {
        const std::string_view digits = at_end() ? std::string_view() : take(count(0, is_digit));
        std::int32_t number = 0;
        const std::errc error = std::from_chars(digits.data(), digits.data() + digits.size(), number).ec;
        return error == std::errc{} ? std::optional<std::int32_t>(number) : std::nullopt;
    }

    struct Decimal {
        std::string_view text;
        double value = 0;
    };

    /// Takes a plain decimal; its text is empty when there is none.
    Decimal take_decimal() noexcept {
        if (at_end()) {
            return {};
        }
        const PlainDecimal number = leading_plain_decimal(rest_);
        return {take(number.length), number.value};
    }

   private:
    bool is_separator(char c) const noexcept { return c == ' ' || (c == ',' && commas_) || is_white_space(c); }

    std::string_view rest_;
    bool commas_;
};

}  // namespace quor::input::gaussian

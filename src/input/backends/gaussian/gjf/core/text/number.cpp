// Number fields as strtod and strtol read them in the C locale, over std::from_chars so that no locale is asked.
#include <gjf/core/text/number.hpp>

#include <gjf/core/text/text.hpp>

#if !defined(__cpp_lib_to_chars)
#include <gjf/core/text/portable_numbers.hpp>
#endif

#include <algorithm>
#include <cfenv>
#include <charconv>
#include <limits>
#include <string>

namespace quor::input::gaussian {
namespace {

#if defined(__cpp_lib_to_chars)
using std::from_chars;
#else
using portable::from_chars;
#endif

constexpr bool is_hex_digit(char c) noexcept {
    return is_digit(c) || (to_lower_ascii(c) >= 'a' && to_lower_ascii(c) <= 'f');
}

constexpr bool is_word_character(char c) noexcept { return is_digit(c) || is_letter(c) || c == '_'; }

std::string_view without_leading_white_space(std::string_view text) noexcept {
    while (!text.empty() && is_white_space(text.front())) {
        text.remove_prefix(1);
    }
    return text;
}

// Takes a sign off the text; returns whether it was a minus.
bool take_sign(std::string_view& text) noexcept {
    const bool minus = !text.empty() && text.front() == '-';
    if (minus || (!text.empty() && text.front() == '+')) {
        text.remove_prefix(1);
    }
    return minus;
}

// "inf", "infinity", "nan" and "nan(word)" in any case.
std::optional<double> to_special_number(std::string_view text) noexcept {
    if (equals_folded(text, "inf") || equals_folded(text, "infinity")) {
        return std::numeric_limits<double>::infinity();
    }
    if (!equals_folded(text.substr(0, 3), "nan")) {
        return std::nullopt;
    }
    text.remove_prefix(3);
    const bool has_payload = text.size() >= 2 && text.front() == '(' && text.back() == ')' &&
                             std::all_of(text.begin() + 1, text.end() - 1, is_word_character);
    if (text.empty() || has_payload) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    return std::nullopt;
}

// Tells whether a number that from_chars found out of range is too large rather than too small: by the power of the base
// that its first digit other than zero stands for.
bool is_overflow(std::string_view text, bool hexadecimal) noexcept {
    const auto exponent_mark =
        hexadecimal ? [](char c) { return c == 'p' || c == 'P'; } : [](char c) { return c == 'e' || c == 'E'; };
    const auto mark = std::find_if(text.begin(), text.end(), exponent_mark);
    const std::string_view mantissa = text.substr(0, static_cast<std::size_t>(mark - text.begin()));
    bool minus_exponent = false;
    std::int64_t exponent = 0;
    if (mark != text.end()) {
        std::string_view digits = text.substr(mantissa.size() + 1);
        minus_exponent = take_sign(digits);
        const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
        if (result.ec == std::errc::result_out_of_range) {
            return !minus_exponent;
        }
    }
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t first = std::min(mantissa.find_first_not_of("0."), mantissa.size());
    const auto position = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
    return position * (hexadecimal ? 4 : 1) + (minus_exponent ? -exponent : exponent) > 0;
}

// Tells whether sums are rounded to nearest, by two sums that are equal in that mode alone: asking the processor takes as
// long as reading a number.
bool rounds_to_nearest() noexcept {
    static const volatile float smallest = std::numeric_limits<float>::min();  // not to be summed by the compiler
    const float small = smallest;
    return 1.0F + small == 1.0F - small;
}

std::optional<double> to_unsigned_number(std::string_view text) noexcept {
    const bool hexadecimal = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    if (hexadecimal) {
        text.remove_prefix(2);
        if (!is_hex_digit(text[0]) && !(text[0] == '.' && text.size() > 1 && is_hex_digit(text[1]))) {
            return std::nullopt;
        }
    } else if (!is_digit(text[0]) && text[0] != '.') {
        return to_special_number(text);
    }
    double value = 0;
    const auto result = read_number(text, value, hexadecimal ? std::chars_format::hex : std::chars_format::general);
    if (result.ec == std::errc::invalid_argument || result.ptr != text.data() + text.size()) {
        return std::nullopt;
    }
    if (result.ec == std::errc::result_out_of_range) {
        return is_overflow(text, hexadecimal) ? std::numeric_limits<double>::infinity() : 0.0;
    }
    return value;
}

template <typename Integer>
std::optional<Integer> leading_integer(std::string_view text, bool whole) noexcept {
    text = without_leading_white_space(text);
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
        if (!text.empty() && text.front() == '-') {
            return std::nullopt;
        }
    }
    Integer value = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (result.ec != std::errc{} || (whole && result.ptr != end)) {
        return std::nullopt;
    }
    return value;
}

}  // namespace

std::from_chars_result read_number(std::string_view text, double& value, std::chars_format format) noexcept {
    const char* const end = text.data() + text.size();
    const int mode = rounds_to_nearest() ? FE_TONEAREST : std::fegetround();
    if (mode == FE_TONEAREST) {
        return from_chars(text.data(), end, value, format);
    }
    std::fesetround(FE_TONEAREST);
    const auto result = from_chars(text.data(), end, value, format);
    std::fesetround(mode);
    return result;
}

PlainDecimal leading_plain_decimal(std::string_view text) noexcept {
    const std::size_t size = text.size();
    const bool minus = take_sign(text);
    if (text.empty() || !(is_digit(text.front()) || text.front() == '.')) {
        return {};
    }
    PlainDecimal decimal;
    const auto result = read_number(text, decimal.value, std::chars_format::fixed);
    if (result.ec != std::errc{}) {
        return {};
    }
    const auto length = static_cast<std::size_t>(result.ptr - text.data());
    decimal.length = length + size - text.size();
    decimal.value = minus ? -decimal.value : decimal.value;
    return decimal;
}

std::optional<double> to_number(std::string_view text) noexcept {
    text = without_leading_white_space(text);
    const bool minus = take_sign(text);
    if (text.empty()) {
        return std::nullopt;
    }
    const std::optional<double> value = to_unsigned_number(text);
    return value && minus ? std::optional<double>(-*value) : value;
}

std::optional<double> to_fortran_number(std::string_view text) {
    const std::optional<double> number = to_number(text);
    const std::size_t mark = text.find_first_of("dD");
    if (number || mark == std::string_view::npos) {
        return number;
    }
    std::string with_e(text);
    with_e[mark] = 'e';
    return to_number(with_e);
}

bool is_integer_text(std::string_view text) noexcept {
    text = without_leading_white_space(text);
    take_sign(text);
    return !text.empty() && std::all_of(text.begin(), text.end(), is_digit);
}

std::optional<std::int64_t> to_int64(std::string_view text) noexcept { return leading_integer<std::int64_t>(text, true); }

std::optional<std::int32_t> to_int32(std::string_view text) noexcept { return leading_integer<std::int32_t>(text, true); }

std::optional<std::int32_t> leading_int32(std::string_view text) noexcept {
    return leading_integer<std::int32_t>(text, false);
}

}  // namespace quor::input::gaussian

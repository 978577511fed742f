// Floating-point numbers from and to text where the standard library has no such conversions, as of emscripten: over strtod
// and snprintf, which are exact there and know no locale. Tests hold them to std::from_chars and std::to_chars. Private to
// the room.
#pragma once

#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>

namespace quor::input::gaussian::portable {

inline bool is_digit_of(char c, bool hexadecimal) noexcept {
    return is_digit(c) || (hexadecimal && to_lower_ascii(c) >= 'a' && to_lower_ascii(c) <= 'f');
}

inline std::size_t exponent_length(std::string_view text, char mark) noexcept {
    if (text.size() < 2 || to_lower_ascii(text[0]) != mark) {
        return 0;
    }
    const std::size_t digits = text[1] == '+' || text[1] == '-' ? 2 : 1;
    const std::size_t end = std::min(text.find_first_not_of("0123456789", digits), text.size());
    return end > digits ? end : 0;
}

/// The length of the number without sign that a text begins with: digits with at most one point among them, and an exponent
/// unless the format is fixed. 0 for none.
inline std::size_t number_length(std::string_view text, std::chars_format format) noexcept {
    const bool hexadecimal = format == std::chars_format::hex;
    std::size_t end = 0;
    std::size_t points = 0;
    for (; end < text.size(); ++end) {
        const bool is_point = text[end] == '.' && points == 0;
        if (!is_point && !is_digit_of(text[end], hexadecimal)) {
            break;
        }
        points += is_point ? 1 : 0;
    }
    if (end == points) {
        return 0;
    }
    return format == std::chars_format::fixed ? end : end + exponent_length(text.substr(end), hexadecimal ? 'p' : 'e');
}

/// Reads plain decimals as one exact division; NaN for those that it would not be exact for. Nearly all numbers are such.
inline double short_decimal(std::string_view digits) noexcept {
    constexpr double powers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    constexpr std::uint64_t exact = std::uint64_t{1} << 53;
    std::uint64_t whole = 0;
    const std::size_t point = std::min(digits.find('.'), digits.size());
    for (const char c : digits) {
        if ((c != '.' && !is_digit(c)) || whole > exact / 10) {
            return std::nan("");
        }
        whole = c == '.' ? whole : whole * 10 + static_cast<std::uint64_t>(c - '0');
    }
    const std::size_t decimals = digits.size() - std::min(point + 1, digits.size());
    return whole > exact || decimals >= std::size(powers) ? std::nan("") : static_cast<double>(whole) / powers[decimals];
}

/// As std::from_chars, but for infinities and what is no number, which it does not take.
inline std::from_chars_result from_chars(const char* first, const char* last, double& value, std::chars_format format) {
    std::string_view text(first, static_cast<std::size_t>(last - first));
    const bool minus = text.starts_with('-');
    text.remove_prefix(minus ? 1 : 0);
    text = text.substr(0, number_length(text, format));
    if (text.empty()) {
        return {first, std::errc::invalid_argument};
    }
    double read = format == std::chars_format::hex ? std::nan("") : short_decimal(text);
    if (std::isnan(read)) {
        const std::string whole = (format == std::chars_format::hex ? "0x" : "") + std::string(text);
        read = std::strtod(whole.c_str(), nullptr);
        const std::string_view digits = text.substr(0, text.find_first_of(format == std::chars_format::hex ? "pP" : "eE"));
        const bool is_zero = digits.find_first_not_of("0.") == std::string_view::npos;
        if (std::isinf(read) || (read == 0 && !is_zero)) {
            return {text.data() + text.size(), std::errc::result_out_of_range};
        }
    }
    value = minus ? -read : read;
    return {text.data() + text.size(), std::errc()};
}

/// Writes as printf does with one of the formats "%.*f", "%.*e" and "%.*g".
inline std::string printed(const char* format, int precision, double number) {
    char digits[400];
    // One of three literals.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    const int size = std::snprintf(digits, sizeof digits, format, precision, number);
#pragma GCC diagnostic pop
    return {digits, static_cast<std::size_t>(size)};
}

/// Tells whether digits with an exponent read as a number, or do with a last digit that is one more: the numbers above a
/// power of two lie twice as far apart as those below, so that what is read as it need not be what lies nearest.
inline bool reads_as(std::string& digits, double number) {
    if (std::strtod(digits.c_str(), nullptr) == number) {
        return true;
    }
    char& last = digits[digits.find('e') - 1];
    if (last == '9') {
        return false;  // one more has fewer digits
    }
    ++last;
    return std::strtod(digits.c_str(), nullptr) == number;
}

/// Writes "1.25e-03" as "0.00125".
inline std::string without_exponent(const std::string& text) {
    const std::size_t mark = text.find('e');
    const int exponent = std::atoi(text.c_str() + mark + 1);
    std::string digits = text.substr(0, 1) + (mark > 2 ? text.substr(2, mark - 2) : "");
    if (exponent < 0) {
        return "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
    }
    const std::size_t whole = static_cast<std::size_t>(exponent) + 1;
    if (digits.size() <= whole) {
        return digits + std::string(whole - digits.size(), '0');
    }
    return digits.insert(whole, 1, '.');
}

/// The fewest digits that read as the same number, and of these the nearest; without an exponent.
inline std::string shortest(double number) {
    constexpr double whole_numbers = 9007199254740992;  // from here on
    const double size = std::fabs(number);
    if (!std::isfinite(number) || size >= whole_numbers) {
        return printed("%.*f", 0, number);
    }
    int precision = 0;
    std::string digits = printed("%.*e", precision, size);
    while (precision < 16 && !reads_as(digits, size)) {
        digits = printed("%.*e", ++precision, size);
    }
    return (std::signbit(number) ? "-" : "") + without_exponent(digits);
}

}  // namespace quor::input::gaussian::portable

// Whole-field tests and conversions of numbers, independent of any locale. Private to the library.
#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace quor::input::gaussian {

/// Reads a floating-point number as strtod does in the C locale, when it takes up the whole text; absent otherwise.
///
/// Leading white space, signs, hexadecimal numbers, "inf", "infinity" and "nan" are taken as strtod takes them. A magnitude
/// beyond the range of double gives an infinity, one below it zero.
std::optional<double> to_number(std::string_view text) noexcept;

/// The same, with D or d also where an exponent begins, as Fortran writes and reads.
std::optional<double> to_fortran_number(std::string_view text);

/// Tells whether the whole text is a floating-point number.
inline bool is_number_text(std::string_view text) noexcept { return to_number(text).has_value(); }

/// Reads the number without white space or plus that a text begins with, as std::from_chars does, infinities and the like
/// left out: the same whatever mode the caller's own computing runs in.
std::from_chars_result read_number(std::string_view text, double& value, std::chars_format format) noexcept;

/// A decimal without an exponent, as coordinates are.
struct PlainDecimal {
    std::size_t length = 0;  ///< of its text; 0 when there is none
    double value = 0;
};

/// Reads the decimal that a text begins with: an optional sign, and digits with at most one point among them, in a number
/// that `to_number` would read the same. What is beyond the range of double is left to that.
PlainDecimal leading_plain_decimal(std::string_view text) noexcept;

/// Tells whether the whole text is a decimal integer (of any size) with an optional sign, leading white space allowed.
bool is_integer_text(std::string_view text) noexcept;

/// Reads a whole decimal integer; absent when the text is none or the value does not fit.
std::optional<std::int64_t> to_int64(std::string_view text) noexcept;
std::optional<std::int32_t> to_int32(std::string_view text) noexcept;

/// Reads the decimal integer at the start of the text, whatever follows it; absent when there is none or it does not fit.
std::optional<std::int32_t> leading_int32(std::string_view text) noexcept;

}  // namespace quor::input::gaussian

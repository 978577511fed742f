// Reads numbers of operations, whatever the locale. Private to the room.
#pragma once

#include <gjf/core/text/number.hpp>

#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>
#include <system_error>
#include <type_traits>

namespace quor::input::gaussian {

/// Reads a finite decimal number that takes up the whole text, with a sign or without; absent when it is none.
template <typename Number>
std::optional<Number> number_of(std::string_view text) noexcept {
    const bool has_plus = text.size() > 1 && text.front() == '+' && text[1] != '-';
    const std::string_view digits = text.substr(has_plus ? 1 : 0);
    const char* const end = digits.data() + digits.size();
    Number number = 0;
    std::from_chars_result read;
    if constexpr (std::is_floating_point_v<Number>) {
        read = read_number(digits, number, std::chars_format::general);
    } else {
        read = std::from_chars(digits.data(), end, number);
    }
    const bool is_number = read.ec == std::errc() && read.ptr == end && std::isfinite(static_cast<double>(number));
    return is_number ? std::optional<Number>(number) : std::nullopt;
}

}  // namespace quor::input::gaussian

// Reads numbers of operations, whatever the locale. Private to the room.
#pragma once

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
    Number number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size()) {
        return std::nullopt;
    }
    if constexpr (std::is_floating_point_v<Number>) {
        return std::isfinite(number) ? std::optional<Number>(number) : std::nullopt;
    }
    return number;
}

}  // namespace quor::input::gaussian

// Places in a text: the one kind of stretch, of line and column, and of change that the whole library speaks in.
#pragma once

#include <core/export.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// The largest text that spans can speak of; longer ones are refused by who reads them.
inline constexpr std::size_t largest_text = 0xFFFFFFFFU;

/// A stretch of a text: bytes from 0, a byte order mark counted. Small, since every token of a job has one.
struct Span {
    std::uint32_t begin = 0;
    std::uint32_t length = 0;

    constexpr std::uint32_t end() const noexcept { return begin + length; }
    constexpr bool empty() const noexcept { return length == 0; }
    /// Returns what stands there; `text` must be the text that the span was made for.
    constexpr std::string_view in(std::string_view text) const noexcept { return text.substr(begin, length); }

    friend constexpr bool operator==(Span a, Span b) noexcept { return a.begin == b.begin && a.length == b.length; }
    friend constexpr bool operator!=(Span a, Span b) noexcept { return !(a == b); }
};

/// Makes a span from two offsets, `end` not included.
constexpr Span span_between(std::size_t begin, std::size_t end) noexcept {
    return {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end - begin)};
}

/// Returns where a view into a text stands in it; `part` must lie within `text`.
inline Span span_of(std::string_view text, std::string_view part) noexcept {
    return {static_cast<std::uint32_t>(part.data() - text.data()), static_cast<std::uint32_t>(part.size())};
}

/// One change of a text: bytes `begin` to `end`, `end` not included, give way to `text`.
struct TextEdit {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::string text;
};

/// Makes changes that are in the order of their places and do not overlap.
QUOR_GJF_API std::string with_edits(std::string_view text, const std::vector<TextEdit>& edits);

/// A place for people: both count from 1; columns are bytes of the line, a byte order mark not counted.
struct LineAndColumn {
    std::size_t line = 1;
    std::size_t column = 1;
};

/// Returns the line and column of a byte of a text, or of its end. Takes time proportional to the text before it.
QUOR_GJF_API LineAndColumn line_and_column(std::string_view text, std::size_t offset) noexcept;

/// What a column counts: each protocol has its own unit.
enum class ColumnUnit : std::uint8_t { Bytes, CodePoints, Utf16 };

/// Returns how many columns a stretch of UTF-8 takes. A byte that belongs to no character counts as one of its own.
QUOR_GJF_API std::size_t columns_in(std::string_view text, ColumnUnit unit) noexcept;

}  // namespace quor::input::gaussian

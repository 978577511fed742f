// Places of a text as the protocol counts them: lines from 0, and characters of a line in the unit that was agreed on.
// Private to the room.
#pragma once

#include <core/export.hpp>
#include <gjf/core/text/span.hpp>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// A place in a text: both count from 0.
struct LinePosition {
    std::size_t line = 0;
    std::size_t character = 0;

    friend constexpr bool operator==(const LinePosition&, const LinePosition&) = default;
};

/// Finds places in a text. Lines end as the protocol has it: with a line feed, a carriage return, or both in this order.
class QUOR_GJF_API TextPositions {
   public:
    /// `text` must outlive the object.
    TextPositions(std::string_view text, ColumnUnit unit);

    /// Returns where a byte stands; an offset behind the end is the end. Within a character it is that of the character.
    LinePosition position(std::size_t offset) const noexcept;
    /// Returns the offset of a place; behind the end of a line it is that end, behind the last line the end of the text.
    /// Half of a character that takes two units is its begin.
    std::size_t offset(LinePosition place) const noexcept;
    std::size_t line_count() const noexcept { return begins_.size(); }
    /// Follows a change of the text: a stretch of the old one has given way to so many bytes.
    void follow(std::string_view new_text, Span old_place, std::size_t new_length);

   private:
    void add_begins(std::size_t first, std::size_t last, std::vector<std::uint32_t>& begins) const;
    std::string_view line(std::size_t number) const noexcept;  // without its end

    std::string_view text_;
    ColumnUnit unit_;
    std::vector<std::uint32_t> begins_;
};

}  // namespace quor::input::gaussian

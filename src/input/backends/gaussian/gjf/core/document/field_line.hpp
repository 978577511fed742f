// A line whose fields are replaced while its columns stay where they can. Private to the room.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// Cuts a line into fields as molecule lines are cut, and replaces, inserts and removes fields. What stands behind them (a
/// comment) is kept. At least one blank, or the separator that was there, stays between two fields.
class FieldLine {
   public:
    explicit FieldLine(std::string_view line);

    std::size_t size() const noexcept { return fields_.size(); }
    std::string_view field(std::size_t i) const noexcept;
    /// Replaces a field; a number keeps its right end, text its left one, where the blanks around suffice.
    void set_number(std::size_t i, std::string_view text);
    void set_text(std::size_t i, std::string_view text);
    /// Puts a field behind field `i`, into the blanks there where they suffice.
    void insert_after(std::size_t i, std::string_view text);
    /// Removes a field and closes the gap.
    void remove(std::size_t i);
    /// Removes a field and leaves blanks in its place, so that the columns behind it stay.
    void blank_out(std::size_t i);
    /// Removes all fields from `i` on.
    void truncate(std::size_t i);
    const std::string& text() const noexcept { return text_; }

   private:
    struct Field {
        std::size_t begin;
        std::size_t end;
    };
    void cut();
    std::size_t blanks_before(std::size_t i) const noexcept;
    std::size_t free_blanks_behind(std::size_t i) const noexcept;
    void splice(std::size_t begin, std::size_t end, const std::string& text);

    std::string text_;
    std::vector<Field> fields_;
};

}  // namespace quor::input::gaussian

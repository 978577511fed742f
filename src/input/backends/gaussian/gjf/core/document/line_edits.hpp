// Lines of a text with their line ends, and the changes to be made to them. Private to the room.
#pragma once

#include <gjf/core/text/span.hpp>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// A text cut into lines; the line ends are kept. Lines count from 1.
class TextLines {
   public:
    explicit TextLines(std::string_view text);

    std::size_t size() const noexcept { return begins_.size(); }
    /// Returns where a line begins; the size of the text behind the last one.
    std::size_t begin_of(std::size_t number) const noexcept;
    /// Returns a line without its end; empty for one that is not there.
    std::string_view line(std::size_t number) const noexcept;
    /// Returns a line end: "\n", "\r\n", or of the last line of a text perhaps "\r" or nothing.
    std::string_view line_end(std::size_t number) const noexcept;
    /// Returns the line end that new lines take: that of the first line, or a line feed.
    std::string_view usual_end() const noexcept;

   private:
    std::string_view with_end(std::size_t number) const noexcept;

    std::string_view text_;
    std::vector<std::uint32_t> begins_;
};

/// Changes to lines, to be made all at once.
class LineEdits {
   public:
    bool empty() const noexcept { return changes_.empty(); }
    void replace(std::size_t line, std::string text);
    void remove(std::size_t line);
    /// Puts a line before or behind another one, behind what was put there before.
    void insert_before(std::size_t line, std::string text);
    void insert_after(std::size_t line, std::string text);
    bool is_removed(std::size_t line) const;
    /// Returns the changes as changes of the text, in the order of their places. Lines that are not there are passed over.
    std::vector<TextEdit> text_edits(const TextLines& lines) const;

   private:
    enum class State { Kept, Replaced, Removed };
    struct Change {
        State state = State::Kept;
        std::string text;
        std::vector<std::string> before;
        std::vector<std::string> after;
    };
    std::map<std::size_t, Change> changes_;
};

}  // namespace quor::input::gaussian

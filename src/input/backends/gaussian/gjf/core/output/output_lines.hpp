// Cuts what a source gives into lines, with one buffer however long the output is. Private to the room.
#pragma once

#include <gjf/core/output/output_source.hpp>

#include <cstddef>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

class OutputLines {
   public:
    explicit OutputLines(OutputSource& source) : source_(source), buffer_(1U << 17) {}

    /// Returns what comes first, at most as much as the buffer holds, before any line is taken.
    std::string_view beginning(std::size_t size);
    /// Goes to the next line; false at the end. A line longer than the buffer comes in pieces of its size.
    bool next();
    /// The line, without its end; valid until the next.
    std::string_view line() const noexcept { return line_; }
    /// Whether the line has an end: of one that was cut off, numbers may be cut too.
    bool is_whole() const noexcept { return !is_in_line_; }
    /// Counts from 1.
    std::size_t number() const noexcept { return number_; }

   private:
    bool fill();

    OutputSource& source_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0;  // of what was not handed out yet
    std::size_t end_ = 0;
    bool is_at_end_ = false;
    bool is_in_line_ = false;  // the next piece belongs to the line before it
    std::string_view line_;
    std::size_t number_ = 0;
};

}  // namespace quor::input::gaussian

// The route of a job as it stands in its lines, and changes to its words. Private to the room.
#pragma once

#include <gjf/core/document/line_edits.hpp>
#include <gjf/core/reader/job_layout.hpp>
#include <gjf/core/reader/reading.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// A stretch of the route as it is interpreted: byte offsets from 0, `end` exclusive.
struct RoutePiece {
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// Notes changes of words and writes them into the lines. Lines that are left empty go; a line that a change has made longer
/// than 80 columns is broken before a word. A text that holds a line break itself is refused with `GJFParseException`.
class RouteText {
   public:
    RouteText(const TextLines& lines, const std::vector<std::string>& words, const std::vector<TextPlace>& places);

    /// Returns the segments behind the head, in order.
    const std::vector<RoutePiece>& segments() const noexcept { return segments_; }
    std::string text(const RoutePiece& piece) const { return joined_.text.substr(piece.begin, piece.end - piece.begin); }
    /// Puts a text in the place of a segment; an empty one leaves it out.
    void replace(const RoutePiece& piece, const std::string& text);
    /// The same for one word of the route.
    void replace_word(std::size_t word, const std::string& text);
    /// Puts another head ("#", "#p") in the place of the first.
    void set_head(const std::string& head);
    void insert_behind_head(const std::string& word);
    /// Puts a word at the end of the route.
    void append(const std::string& word);

    void apply(LineEdits& edits) const;

   private:
    /// One word of the route and what becomes of parts of it.
    struct Word {
        TextPlace place;
        std::string text;
        bool changed = false;
    };
    std::string new_line(std::size_t number, const std::vector<const Word*>& words, bool& empty) const;

    const TextLines& lines_;
    JoinedRoute joined_;
    std::vector<RoutePiece> segments_;
    std::vector<Word> words_;
    std::size_t head_length_ = 0;  // of the first word
    std::vector<std::string> appended_;
};

}  // namespace quor::input::gaussian

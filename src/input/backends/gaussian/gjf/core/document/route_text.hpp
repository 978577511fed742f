// The route of a job as it stands in its lines, and changes to its words. Private to the room.
#pragma once

#include <gjf/core/document/line_edits.hpp>
#include <gjf/core/reader/job_layout.hpp>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace quor::input::gaussian {

/// Notes changes of words and writes them into the lines. Lines that are left empty go; a line that a change has made longer
/// than 80 columns is broken before a word, unless it was longer before. A text that holds a line break itself is refused
/// with `GJFParseException`.
class RouteText {
   public:
    /// `layout` must outlive the object.
    RouteText(const TextLines& lines, const JobLayout& layout, const std::vector<std::string>& words);

    const RouteTree& tree() const noexcept { return layout_.route; }
    bool has_several_stretches(Span place) const { return layout_.route_map.stretches(place).size() > 1; }
    /// Puts a text in the place of a stretch of the route text; an empty one leaves it out. Changes come from left to right.
    void replace(Span place, const std::string& text);
    /// The same for one word of the route.
    void replace_word(std::size_t word, const std::string& text);
    /// Puts another head ("#", "#p") in the place of the first.
    void set_head(const std::string& head);
    void insert_behind_head(const std::string& word);
    /// Puts a word at the end of the route.
    void append(const std::string& word);

    void apply(LineEdits& edits) const;

   private:
    /// One word of the route and what becomes of it.
    struct Word {
        TextPlace place;
        std::string text;
        bool changed = false;
        std::ptrdiff_t shift = 0;  // how much longer it has become by changes, which come from left to right
    };
    /// The lines that are not as they were, by number, and the last that a word stands in.
    struct NewLines {
        std::vector<std::pair<std::size_t, std::string>> changed;
        std::size_t last;
    };

    NewLines new_lines(LineEdits& edits) const;
    void write_line(std::size_t number, const std::string& line, bool is_last, LineEdits& edits) const;
    void insert_at_front(std::size_t length, const std::string& text);
    std::string new_line(std::size_t number, const std::vector<const Word*>& words, bool& empty) const;

    const TextLines& lines_;
    const JobLayout& layout_;
    std::vector<Word> words_;
    std::size_t head_length_;  // as it is now
    std::vector<std::string> appended_;
};

/// Puts other words in the place of those of a route: those that stay keep their place. Where others were put before them,
/// the route is written anew at the place of its first word.
void rewrite_words(RouteText& text, const std::vector<std::string>& before, const std::vector<std::string>& after);

}  // namespace quor::input::gaussian

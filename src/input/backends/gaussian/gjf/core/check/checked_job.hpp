// One job as the checks see it, and the list that they add their findings to. Private to the room.
#pragma once

#include <gjf/core/check/finding.hpp>
#include <gjf/core/reader/reading.hpp>
#include <gjf/core/schema/simple_yaml_parser.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// One option of a keyword as it stands in the route.
struct WrittenOption {
    std::string name;       ///< as written, trimmed
    std::string canonical;  ///< preferred spelling, or the name in lower case
    std::string value;      ///< empty when written without one
    TextPlace place;        ///< of the name
    Span name_span;         ///< in the route's text
    Span value_span;
};

/// One keyword as it stands in the route.
struct WrittenKeyword {
    std::string name;  ///< canonical when the vocabulary knows it
    std::string head;  ///< as written
    std::string raw;   ///< the whole keyword as written
    bool known = false;
    std::vector<WrittenOption> options;
    TextPlace place;
    bool is_method = false;  ///< a method that is written with options
};

/// A segment of the route: what it says by itself, whatever stands beside it.
struct WrittenSegment {
    std::string text;
    std::string method;  ///< empty when the segment names none
    std::string basis;
    std::string secondary_method;
    bool is_oniom = false;
    std::vector<WrittenKeyword> keywords;
    TextPlace place;
    bool is_assignment = false;  ///< of a basis set to `assigned`, which should be the word basis
    std::string assigned;
    TextPlace assigned_place;
};

class CheckedJob {
   public:
    /// `piece` and `reading` must outlive the object.
    CheckedJob(const JobPiece& piece, const JobReading& reading, const SimpleYAMLParser& schema);

    const GJFData& job;
    const JobLayout& layout;
    const SimpleYAMLParser& schema;
    const ParsedKeywords& route;  ///< an empty one for a job without route
    std::vector<WrittenSegment> segments;

    /// Tells whether the whole job was read.
    bool read_whole() const noexcept { return reading_.error.empty(); }
    /// Returns a line by its number in the whole text, without its line end; empty for one outside the job.
    std::string_view line(std::size_t number) const noexcept;
    LineSpan lines() const noexcept { return piece_.lines; }
    const JobReading& reading() const noexcept { return reading_; }
    /// Returns the stretch of the text from one line of the job to another.
    std::string_view text(const LineRange& lines) const noexcept;
    /// Tells whether a --Link1-- line follows the job.
    bool separated() const noexcept { return piece_.separated; }
    /// Returns the route as it is interpreted: its words joined.
    const std::string& route_text() const noexcept { return layout.route.text; }

    /// Returns where a stretch of the route text begins in the job's text, as far as it is one stretch there too.
    TextPlace route_place(Span of_route_text) const;
    /// Returns where a view into one of the job's lines stands.
    TextPlace place_in(std::size_t line_number, std::string_view part) const noexcept;
    /// Returns the change that puts `text` in a place, counted in bytes of the whole text.
    TextEdit replacing(const TextPlace& place, std::string text) const;
    /// Returns the change that puts `text` behind a line, before its line end; lines of it end as that line does.
    TextEdit behind_line(std::size_t line_number, std::string_view text) const;
    /// Returns the change that puts a blank line behind a line.
    TextEdit blank_line_behind(std::size_t line_number) const;
    /// Returns the change that takes whole lines away.
    TextEdit without_lines(const LineRange& lines) const;

    /// Returns the first keyword of this name in the route, or null.
    const WrittenKeyword* find_keyword(std::string_view canonical) const noexcept;
    /// Returns an option of a keyword of the route by its preferred spelling, or null.
    const WrittenOption* find_option(std::string_view keyword, std::string_view option) const noexcept;
    bool has_keyword(std::string_view canonical) const noexcept { return find_keyword(canonical) != nullptr; }
    bool has_option(std::string_view keyword, std::string_view option) const noexcept {
        return find_option(keyword, option) != nullptr;
    }
    /// Returns where the route has a word: a keyword (td also as rtd and utd), an option, as opt=calcfc, or a method; or
    /// null.
    const TextPlace* find_word(std::string_view word) const noexcept;
    /// Tells whether the route has all, or any, of some words with blanks between.
    bool has_all_words(std::string_view words) const noexcept;
    bool has_any_word(std::string_view words) const noexcept;
    /// Tells whether a segment of the route names this basis set.
    bool names_basis(std::string_view canonical) const noexcept;
    /// Tells whether the molecule is taken from a checkpoint, wholly or but for charge and multiplicity.
    bool molecule_from_checkpoint() const;
    bool all_from_checkpoint() const;
    /// Tells whether the route goes on with a job that was broken off.
    bool restarts() const noexcept;

   private:
    WrittenSegment written_segment(const RouteTree::Segment& segment) const;

    const JobPiece& piece_;
    const JobReading& reading_;
};

/// Collects the findings of one job.
class Findings {
   public:
    Findings(std::vector<Finding>& list, std::size_t job) noexcept : list_(list), job_(job) {}

    /// Adds a finding and returns it, for what else is known: fixes and related places. It may move when the next is added.
    Finding& add(const char* code, Severity severity, std::string message, const TextPlace& place, std::string hint = {}) {
        // Where something is missing there is nothing to point at: the finding is about the line.
        const std::size_t column = place.length == 0 ? 0 : place.column;
        return list_.emplace_back(Finding{
            code, severity, std::move(message), job_, place.line, column, place.length, std::move(hint), 0, 0, {}, {}});
    }
    Finding& add(const char* code, Severity severity, std::string message, std::size_t line, std::string hint = {}) {
        return add(code, severity, std::move(message), TextPlace{line, 0, 0}, std::move(hint));
    }

    /// Tells whether names near to an unknown word may be looked for: in a text that is no job file at all, every word is
    /// unknown, and each search walks a vocabulary.
    bool may_look_for_names() noexcept { return searches_++ < most_searches; }

   private:
    static constexpr std::size_t most_searches = 50;

    std::vector<Finding>& list_;
    std::size_t job_;
    std::size_t searches_ = 0;
};

/// Returns the severity that a table of facts names; a note where it names none.
inline Severity severity_named(std::string_view name) noexcept {
    return name == "error" ? Severity::Error : name == "warning" ? Severity::Warning : Severity::Note;
}

/// Reports a field of a molecule line that looks like a number but holds an odd character.
void check_numbers_of_line(const CheckedJob& job, std::size_t line_number, Findings& findings);

/// Checks what concerns the text as a whole: its line ends and its first bytes.
void check_whole_text(std::string_view text, Findings& findings);

}  // namespace quor::input::gaussian

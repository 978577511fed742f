// One job as the checks see it, and the list that they add their findings to. Private to the room.
#pragma once

#include <gjf/core/check/finding.hpp>
#include <gjf/core/reader/reading.hpp>
#include <gjf/core/route/route_words.hpp>
#include <gjf/core/schema/simple_yaml_parser.hpp>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

struct CheckLimits;
struct IncludedFile;

/// One job, with what its route asks for. What stands in the route is told by stretches of the route text.
class CheckedJob : public RouteWords {
   public:
    /// `piece` and `reading` must outlive the object.
    CheckedJob(const JobPiece& piece, const JobReading& reading, const SimpleYAMLParser& schema);

    const GJFData& job;
    const JobLayout& layout;
    const SimpleYAMLParser& schema;
    const ParsedKeywords& route;          ///< an empty one for a job without route
    const CheckLimits* limits = nullptr;  ///< null for none
    /// Those that the whole text names; null where none was looked for.
    const std::vector<IncludedFile>* included = nullptr;

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
    const std::string& route_text() const noexcept { return tree.text; }
    /// Returns a stretch of it.
    std::string written(Span of_route_text) const { return std::string(of_route_text.in(tree.text)); }

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

    /// Tells whether the molecule is taken from a checkpoint, wholly or but for charge and multiplicity.
    bool molecule_from_checkpoint() const;
    bool all_from_checkpoint() const;
    /// Tells whether the route goes on with a job that was broken off.
    bool restarts() const noexcept;

   private:
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

    /// Tells whether a code was found in the job.
    bool tell(std::string_view code) const noexcept {
        return std::any_of(list_.begin(), list_.end(),
                           [&](const Finding& each) { return each.job == job_ && each.code == code; });
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

/// Returns the severity of what rests on a fact: without a source for it never more than a note.
inline Severity severity_by_fact(Severity wanted, bool is_verified) noexcept {
    return is_verified ? wanted : Severity::Note;
}

/// Reports a field of a molecule line that looks like a number but holds an odd character.
void check_numbers_of_line(const CheckedJob& job, std::size_t line_number, Findings& findings);

/// Reports numbers of molecule and sections that have a decimal comma.
void check_decimal_commas(const CheckedJob& job, Findings& findings);

/// Checks what concerns the text as a whole: its line ends and its first bytes.
void check_whole_text(std::string_view text, Findings& findings);

}  // namespace quor::input::gaussian

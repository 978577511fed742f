// A job as it was read: where everything stands, by token and by line, and what could not be read.
#pragma once

#include <core/export.hpp>
#include <gjf/core/job/gjf_data.hpp>
#include <gjf/core/reader/job_places.hpp>
#include <gjf/core/route/joined_route.hpp>
#include <gjf/core/route/route_tree.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// A range of lines counted from 1, both ends included; {0, 0} when there is none.
struct LineRange {
    std::size_t first = 0;
    std::size_t last = 0;

    bool empty() const noexcept { return first == 0; }
};

/// A stretch of one line: line and column (in bytes) count from 1.
struct TextPlace {
    std::size_t line = 0;
    std::size_t column = 0;
    std::size_t length = 0;
};

/// One extra input section: what it was taken for, and its lines.
struct SectionLayout {
    ExtraInputSectionKind kind = ExtraInputSectionKind::Unknown;
    LineRange lines;
};

/// Where the parts of one job stand. Lines count from 1 over the whole text. Lists run parallel to those of the job.
struct JobLayout {
    std::size_t number = 0;                ///< of the job, from 1; blank pieces between --Link1-- lines are no jobs
    LineRange lines;                       ///< all lines of the piece, without the --Link1-- lines
    std::vector<std::size_t> link0_lines;  ///< every line taken as a Link 0 line
    std::vector<TextPlace> route_words;    ///< of ControlSection::route_keywords
    RouteTree route;                       ///< of the text that these words are joined to
    RouteMap route_map;                    ///< from that text to the words
    LineRange overlays;
    LineRange title;
    std::size_t charge_line = 0;            ///< 0 when the job has none
    LineRange molecule;                     ///< of GeomSection::molecule_lines
    std::vector<std::size_t> atoms;         ///< of GeomSection::atoms
    std::vector<std::size_t> zmatrix_rows;  ///< of GeomSection::zmatrix_entries
    std::vector<std::size_t> variables;
    std::vector<std::size_t> constants;
    std::vector<std::size_t> cartesian_variables;
    std::vector<SectionLayout> sections;         ///< of GJFData::extra_inputs; kind `Unknown` is left over
    std::vector<ExtraInputSectionKind> missing;  ///< asked for by the route and not there
    std::vector<TextPlace> faults;               ///< of JobReading::faults
};

/// What `GJFParser` throws for a fault: `GJFParseException` or `std::out_of_range`.
enum class FaultKind : std::uint8_t { Parse, OutOfRange };

/// What could not be read.
struct ReadingFault {
    Span place;           ///< the line, or the part of it that is meant; where something is missing, the line read last
    std::string message;  ///< without any prefix
    FaultKind kind = FaultKind::Parse;
    bool harmless = false;  ///< Gaussian reads it, and so does this reading; `GJFParser` alone minds
};

/// One job read, and where its parts stand.
///
/// Reading goes on behind what it cannot read. A control line is passed over; behind a charge line, which then gives no
/// pairs, atoms are read; an atom line of four fields or more counts as an atom without position; of connectivity the line
/// is left out. Where nothing follows that a job needs, its parts up to there are given. Some forms are read that
/// `GJFParser` refuses: they are harmless faults.
struct JobReading {
    GJFData job;
    JobPlaces places;
    JobLayout layout;                  ///< the same by lines
    std::vector<ReadingFault> faults;  ///< in the order of detection; none when the job was read whole
    bool atoms_uncertain = false;      ///< a line of the molecule was left out, which may have been an atom
    bool structure_uncertain = false;  ///< what the parts were taken for is in doubt
    std::string error;                 ///< of the first fault that is not harmless; empty when the job was read whole
    std::size_t error_line = 0;        ///< where that fault lies
    std::size_t error_column = 0;
};

/// Reads every job of a text as `GJFParser` does, and where its parts stand. Blank pieces between --Link1-- lines are passed
/// over. Throws `GJFParseException` for a text longer than `largest_text`, and for no other.
QUOR_GJF_API std::vector<JobReading> read_jobs_with_layout(std::string_view text);

/// Returns where a stretch of the route text stands: one place for each stretch of a word that it is made of, in order.
QUOR_GJF_API std::vector<TextPlace> route_places(const JobLayout& layout, Span of_route_text);

}  // namespace quor::input::gaussian

// The steps of reading one job, over views of its lines. Private to the library.
//
// A job's text is cut into lines once; each step takes the lines it needs from a cursor, so nothing is copied before it is
// stored.
#pragma once

#include <gjf/core/job/gjf_data.hpp>
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/reader/job_layout.hpp>
#include <gjf/core/reader/job_text.hpp>
#include <gjf/core/schema/simple_yaml_parser.hpp>

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

using LineSpan = std::span<const std::string_view>;

/// Notes where the parts of a job stand while it is read, and what cannot be read. A null recorder everywhere means that
/// nobody asked. Every view handed to it lies in the text.
class ReadingRecorder {
   public:
    ReadingRecorder(std::string_view text, JobReading& target) noexcept : reading(target), text_(text) {}

    Span place_of(std::string_view part) const noexcept { return span_of(text_, part); }
    /// Returns a recorder of the same text that notes everything elsewhere.
    ReadingRecorder beside(JobReading& target) const noexcept { return {text_, target}; }
    /// Returns the place of lines, from the first to the last.
    Span place_of(LineSpan lines) const noexcept;
    /// Notes the line that is being read, so that the lists of lines and a fault can tell it.
    void at(std::string_view line) noexcept { current_line = place_of(line); }

    JobReading& reading;
    Span current_line;

   private:
    std::string_view text_;
};

/// Takes what cannot be read; reading goes on as if it were not there. Without a recorder it is thrown. An empty `place`
/// stands for the line that is being read.
void report_fault(ReadingRecorder* recorder, std::string_view place, std::string message, FaultKind kind = FaultKind::Parse);

/// Takes a form that Gaussian reads and `GJFParser` refuses: thrown without a recorder, noted as harmless with one.
void report_departure(ReadingRecorder* recorder, std::string_view place, std::string message);

/// Returns what an exception of the reader says, without what stands before all its messages.
std::string message_of(const GJFParseException& error);

/// Notes as harmless what `read`, a reading of the same lines without a recorder, throws first.
void note_refusal(ReadingRecorder& recorder, const std::function<void()>& read);

/// Notes the line that is being read in a list.
inline void note_line(ReadingRecorder* recorder, std::vector<std::uint32_t> JobPlaces::*list) {
    if (recorder != nullptr) {
        (recorder->reading.places.*list).push_back(recorder->current_line.begin);
    }
}

/// Notes which line is read as the charge line.
void note_charge_line(ReadingRecorder* recorder, std::string_view line) noexcept;

/// Notes that a line which may have been an atom was left out, or that what the parts were taken for is in doubt.
void note_doubt(ReadingRecorder* recorder, bool JobReading::*doubt) noexcept;

/// Tells whether nothing is left of a line when it is trimmed.
bool is_blank_line(std::string_view line) noexcept;

/// Joins lines with line feeds.
std::string joined(LineSpan lines);

/// Copies texts for the interfaces that hold strings, and views them for the steps that hold views.
std::vector<std::string_view> views_of(const std::vector<std::string>& lines);

/// Walks the lines of one job. A section is a run of lines that are not blank.
class LineCursor {
   public:
    explicit LineCursor(LineSpan lines) noexcept : lines_(lines) {}

    bool at_end() const noexcept { return next_ == lines_.size(); }
    std::size_t position() const noexcept { return next_; }
    void move_to(std::size_t position) noexcept { next_ = position; }
    LineSpan range(std::size_t begin, std::size_t end) const noexcept { return lines_.subspan(begin, end - begin); }

    /// Passes over blank lines and returns how many there were.
    std::size_t skip_blank_lines() noexcept;
    /// Takes the next line; the cursor must not be at the end.
    std::string_view take_line() noexcept { return lines_[next_++]; }
    std::string_view peek_line() const noexcept { return lines_[next_]; }
    /// Takes the next section; it is empty at the end of the job.
    LineSpan take_section() noexcept;
    /// Takes the next section that holds more than comments.
    LineSpan take_section_past_comments() noexcept;

   private:
    LineSpan lines_;
    std::size_t next_ = 0;
};

/// The text between --Link1-- lines, cut into lines.
struct JobPiece {
    std::size_t number = 0;      ///< from 1, blank pieces not counted
    std::size_t first_line = 1;  ///< of the whole text
    bool separated = false;      ///< whether a --Link1-- line follows
    std::string_view text;       ///< the whole text, which the lines are views of
    std::vector<std::string_view> lines;
};

/// Takes the lines before the next --Link1-- line off a text; `separated` tells whether there was one.
void take_job_lines(std::string_view& text, bool& separated, std::vector<std::string_view>& lines);

bool are_blank(LineSpan lines) noexcept;

/// Cuts a text at its --Link1-- lines, a byte order mark aside, and hands over every piece that is not blank.
void for_each_job_piece(std::string_view text, const std::function<void(JobPiece)>& take);

/// Reads one piece and where its parts stand.
JobReading read_job_piece(const JobPiece& piece);

/// Gives the places of a reading as lines, in its layout.
void number_lines(const JobPiece& piece, JobReading& reading);

/// Reads Link 0 lines and route. An empty line closes the route, unless blank lines are passed over.
ControlSection read_control_section(LineSpan lines, bool pass_over_blank_lines, ReadingRecorder* recorder);

/// Tells whether the route asks for any section after the molecule. Asked only where it matters, since the answer takes
/// time.
using SectionsExpected = std::function<bool()>;

/// A molecule as read. What its labels hold is noted while they are read, since looking them all through again takes time.
struct MoleculeReading {
    GeomSection geom;
    bool has_residues = false;  ///< whether an atom label carries residue information
};

/// Reads the molecule section at the cursor and the variable sections that belong to it.
///
/// `sections_expected` tells whether the route asks for any section after the molecule: a section of name and value lines
/// that the molecule does not refer to is then left to it.
MoleculeReading read_molecule(LineCursor& cursor, LineSpan section, const SectionsExpected& sections_expected,
                              ReadingRecorder* recorder);

/// Takes the variable sections after a molecule that is kept as text. Without a recorder, only those of a Z-matrix, and
/// nothing after a malformed one.
void take_variable_sections(LineCursor& cursor, LineSpan section, const SectionsExpected& sections_expected,
                            const ReadingRecorder* recorder);

/// Reads one or more charge and multiplicity pairs.
std::vector<ChargeSpinPair> read_charge_line(std::string_view line, ReadingRecorder* recorder);

bool is_valid_geometry_first_line(std::string_view line);

/// The kinds of section that a route asks for, in their order; and those that blocks left over may be.
struct KindsOfRoute {
    std::vector<ExtraInputSectionKind> expected;
    std::vector<ExtraInputSectionKind> for_left_over;
};

/// Gives each expected kind its section and keeps what is left as sections of unknown kind. `atoms_known` tells whether atom
/// numbers of connectivity are bounded by the job's own molecule. Kinds for blocks left over are the reading's alone.
void read_extra_inputs(LineCursor& cursor, GJFData& job, const KindsOfRoute& kinds, bool atoms_known,
                       ReadingRecorder* recorder);

/// Tells whether a section opens with a charge line that an atom follows.
bool opens_like_molecule(LineSpan section);

/// Tells whether an empty title stands before the section at the cursor, which then is the molecule section: `blank_lines`
/// (those just passed) are at least two, and that section opens like a molecule, but not the one behind it.
bool opens_molecule_without_title(const LineCursor& cursor, std::size_t blank_lines);

/// The same for a job that takes its molecule from a checkpoint: taken as a title, the section would leave the job without a
/// charge line, or without all the sections behind it that are expected.
bool opens_charge_line_without_title(const LineCursor& cursor, std::size_t blank_lines, std::size_t sections_expected);

}  // namespace quor::input::gaussian

// The steps of reading one job, over views of its lines. Private to the library.
//
// A job's text is cut into lines once; each step takes the lines it needs from a cursor, so nothing is copied before it is
// stored.
#pragma once

#include <gjf/core/job/gjf_data.hpp>
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/reader/job_layout.hpp>
#include <gjf/core/schema/simple_yaml_parser.hpp>

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

using LineSpan = std::span<const std::string_view>;

/// Notes where the parts of a job stand while it is read. A null recorder everywhere means that nobody asked.
///
/// Lines are told by their address: every line handed to a step is an element of the job's one array of lines.
class LayoutRecorder {
   public:
    LayoutRecorder(JobLayout& target, const std::string_view* lines) noexcept : layout(target), lines_(lines) {}

    std::size_t number_of(const std::string_view& line) const noexcept {
        return layout.lines.first + static_cast<std::size_t>(&line - lines_);
    }
    LineRange range_of(LineSpan lines) const noexcept {
        return lines.empty() ? LineRange{} : LineRange{number_of(lines.front()), number_of(lines.back())};
    }
    /// Notes the line that is being read, so that a failure can name it.
    void at(const std::string_view& line) noexcept { current_line = number_of(line); }

    JobLayout& layout;
    std::size_t current_line = 0;

   private:
    const std::string_view* lines_;
};

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

/// Reads a file whole; throws "Cannot open file: PATH".
std::string read_whole_file(const std::string& path);

/// The text between --Link1-- lines, cut into lines.
struct JobPiece {
    std::size_t number = 0;      ///< from 1, blank pieces counted
    std::size_t first_line = 1;  ///< of the whole text
    bool separated = false;      ///< whether a --Link1-- line follows
    std::vector<std::string_view> lines;
};

/// Cuts a text without a byte order mark at its --Link1-- lines and hands over every piece that is not blank.
void for_each_job_piece(std::string_view text, const std::function<void(JobPiece)>& take);

/// Reads one piece and where its parts stand.
JobReading read_job_piece(const JobPiece& piece);

/// Reads Link 0 lines and route. An empty line closes the route, unless blank lines are passed over.
ControlSection read_control_section(LineSpan lines, bool pass_over_blank_lines, LayoutRecorder* recorder);

/// Tells whether an interpreted route has a geom keyword with an option.
bool has_geom_option(const ParsedKeywords& route, const SimpleYAMLParser& schema, const std::string& option);

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
                              LayoutRecorder* recorder);

/// Takes the variable sections after a Z-matrix that is kept as text; nothing for any other molecule, or a malformed one.
void take_variable_sections(LineCursor& cursor, LineSpan section, const SectionsExpected& sections_expected);

bool is_valid_geometry_first_line(std::string_view line);

/// What the rules for sections ask of a molecule; of none, nothing holds.
struct MoleculeTraits {
    bool open_shell = false;    ///< a charge/multiplicity pair is no singlet
    bool has_residues = false;  ///< an atom label carries residue information
};

bool has_residue(const AtomInfo& info);
bool is_open_shell(const GeomSection& geom);

/// Gives each expected kind its section and keeps what is left as sections of unknown kind. `atoms_known` tells whether atom
/// numbers of connectivity are bounded by the job's own molecule.
void read_extra_inputs(LineCursor& cursor, GJFData& job, const std::vector<ExtraInputSectionKind>& kinds, bool atoms_known,
                       LayoutRecorder* recorder);

/// Tells whether an empty title stands before the section at the cursor, which then is the molecule section: `blank_lines`
/// (those just passed) are at least two and the section opens with a charge line that more lines follow.
/// `charge_line_suffices` drops the last condition.
bool opens_molecule_without_title(const LineCursor& cursor, std::size_t blank_lines, bool charge_line_suffices);

}  // namespace quor::input::gaussian

// Reads Gaussian 16 job text into the job model.
//
// Members are defined by topic: job_reader.cpp, control_reader.cpp, molecule_reader.cpp, extra_input_reader.cpp and
// analysis_report.cpp.
#pragma once

#include <core/export.hpp>
#include <gjf/core/job/gjf_data.hpp>
#include <gjf/core/job/gjf_parse_exception.hpp>

#include <string>
#include <vector>

namespace quor::input::gaussian {

/// Reads job text. All members are static, keep no state between calls and may run in several threads at once.
///
/// Malformed text is reported by `GJFParseException`, a charge or multiplicity beyond 32 bits by `std::out_of_range`; a job
/// is given whole or not at all. From "!" to the end of a line is a
/// comment in Link 0 lines, route, molecule specification and connectivity; titles and other sections keep it as text.
class QUOR_GJF_API GJFParser {
   public:
    /// Reads the first job of a text.
    static GJFData parse_string(const std::string& text);
    /// Reads the first job of a file; throws "Cannot open file: PATH" when it cannot be read.
    static GJFData parse_file(const std::string& path);
    /// Reads every job of a text; jobs are separated by lines that hold "--Link1--" alone. A failure names the job, counted
    /// from 1.
    static GJFMultiData parse_string_multi(const std::string& text);
    /// The same for a file; throws "Cannot open file: PATH" when it cannot be read.
    static GJFMultiData parse_file_multi(const std::string& path);

    /// Cuts a text at its "--Link1--" lines.
    static std::vector<std::string> split_by_link1(const std::string& text);
    /// Cuts a text into its runs of lines that are not blank; each run's lines are joined with line feeds.
    static std::vector<std::string> split_by_empty_lines(const std::string& text);
    /// Cuts a text at every `delimiter`; empty pieces are kept, an empty text gives none, a final delimiter ends the last
    /// piece.
    static std::vector<std::string> split_string(const std::string& text, char delimiter);
    /// Removes space, tab, carriage return and line feed at both ends.
    static std::string trim(const std::string& text);
    /// Tells whether a line begins with "#" or "%", leading blanks aside.
    static bool is_valid_control_line(const std::string& line);

    /// Reads Link 0 lines and route from the lines of a control section; throws for a line that is neither.
    static ControlSection parse_control_section(const std::vector<std::string>& lines);
    /// Cuts one route line into its words, at blanks and commas outside quotes and brackets. The second argument is taken
    /// for symmetry with `parse_keywords`; cutting needs no vocabulary.
    static std::vector<std::string> parse_keywords_from_line(const std::string& line, const std::string& schema_path);
    /// Interprets route words, joined with single blanks. Where later lines repeat the head it is left out: the words "#",
    /// "#p", "#n" and "#t" after the first, and the "#" before a word. `schema_path` names a vocabulary document; empty
    /// means the default one.
    static ParsedKeywords parse_keywords(const std::vector<std::string>& route_keywords, const std::string& schema_path);
    /// Tells whether the route's geom keyword carries an option, under the vocabulary's equivalences.
    static bool has_geom_option(const ControlSection& control, const std::string& option);
    static bool is_geom_check(const ControlSection& control);
    static bool is_geom_allchk(const ControlSection& control);

    /// Tells whether the whole text is a floating-point number, as strtod reads it in the C locale.
    static bool is_number(const std::string& text);
    /// Tells whether the whole text is a decimal integer.
    static bool is_integer(const std::string& text);

    /// Reads one or more charge and multiplicity pairs. A value beyond 32 bits throws `std::out_of_range`.
    static std::vector<ChargeSpinPair> parse_charge_spin_line(const std::string& line);
    /// Reads an atom label; never throws.
    static AtomInfo parse_atom_info(const std::string& label);
    /// Reads a molecule section: the charge line and the molecule specification. Throws for fewer than two lines, and for
    /// one that cannot be read; a charge or multiplicity beyond 32 bits throws `std::out_of_range`.
    static GeomSection parse_geometry_section(const std::vector<std::string>& lines);
    /// Tells whether a line can open a molecule section: an even number, at least two, of integer fields.
    static bool is_valid_geometry_first_line(const std::string& line);

    static const char* extra_input_section_kind_name(ExtraInputSectionKind kind);
    static bool extra_input_section_requires_blank_line(ExtraInputSectionKind kind);
    /// Returns the kinds of input section that a route asks for, in the order they stand in the job.
    static std::vector<ExtraInputSectionKind> expected_extra_input_order(const ControlSection& control);
    /// The same, with the conditions that depend on the molecule (PDB residues, open shells).
    static std::vector<ExtraInputSectionKind> expected_extra_input_order(const GJFData& data);

    /// Writes a report of a job, or of its parts, for people to read.
    static std::string format_full_gjf(const GJFData& data);
    static std::string format_full_multi_gjf(const GJFMultiData& data);
    static std::string format_control_section(const ControlSection& control);
    static std::string format_geometry_section(const GeomSection& geom);
    static std::string format_charge_spin_line(const std::vector<ChargeSpinPair>& pairs);
    static std::string format_charge_spin_line(const GeomSection& geom);
};

}  // namespace quor::input::gaussian

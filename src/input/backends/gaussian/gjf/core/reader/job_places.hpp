// Where every token of a job stands in the text that it was read from.
//
// Lines of which a job has many (atoms, rows, variables) keep one offset each; their fields are found again by the functions
// below, which cut a line as the reading does.
#pragma once

#include <core/export.hpp>
#include <gjf/core/job/extra_input_kind.hpp>
#include <gjf/core/text/span.hpp>

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// A Link 0 line: the word behind "%", and the value behind "=".
struct Link0Place {
    Span key;
    Span value;  ///< empty where there is none
};

/// An extra input section: what it was taken for, and its lines.
struct SectionPlace {
    ExtraInputSectionKind kind = ExtraInputSectionKind::Unknown;
    Span lines;
};

/// The places of one job. A stretch of lines begins with its first line and ends with its last, without that one's line end.
/// Lists run parallel to those of the job; lists of lines hold the offset at which each line begins.
struct JobPlaces {
    Span lines;                     ///< the whole piece between --Link1-- lines, without the last line end
    std::vector<Link0Place> link0;  ///< of every line taken as a Link 0 line
    std::vector<Span> route_words;  ///< of ControlSection::route_keywords
    Span overlays;
    Span title;
    Span charge_line;
    Span molecule;                            ///< of GeomSection::molecule_lines, blank lines between sections included
    std::vector<std::uint32_t> atoms;         ///< of GeomSection::atoms
    std::vector<std::uint32_t> zmatrix_rows;  ///< of GeomSection::zmatrix_entries
    std::vector<std::uint32_t> variables;     ///< of GeomSection::variables
    std::vector<std::uint32_t> constants;     ///< of GeomSection::constants
    std::vector<std::uint32_t> cartesian_variables;
    std::vector<SectionPlace> sections;  ///< of GJFData::extra_inputs
};

/// Returns the lines of a stretch, without their line ends.
QUOR_GJF_API std::vector<Span> line_places(std::string_view text, Span lines);

/// Returns the fields of a charge line: charge and multiplicity in turn.
QUOR_GJF_API std::vector<Span> charge_places(std::string_view text, Span charge_line);

/// The fields of a Cartesian atom line; empty spans for those that it does not have.
struct AtomLineFields {
    Span label;
    Span freeze;
    std::array<Span, 3> position;
    Span layer;
    std::vector<Span> rest;  ///< behind the layer: the link atom, the atom it is bonded to, and more
};

/// Returns the fields of the atom line that begins at an offset.
QUOR_GJF_API AtomLineFields atom_line_fields(std::string_view text, std::uint32_t line);

/// The fields of a Z-matrix row; empty spans for those that it does not have.
struct RowFields {
    struct Reference {
        Span atom;
        Span value;
    };

    Span label;
    std::array<Reference, 3> references;  ///< bond, angle and dihedral; or coordinates, whose atoms are empty
    Span code;                            ///< behind the dihedral
    std::vector<Span> rest;               ///< behind all this: the fragment, the layer, the link atom
};

/// Returns the fields of the Z-matrix row that begins at an offset.
QUOR_GJF_API RowFields row_fields(std::string_view text, std::uint32_t line);

/// The name and the value of a variable, as the job holds them.
struct VariableFields {
    Span name;
    Span value;
};

/// Returns name and value in the line of a Z-matrix variable or constant that begins at an offset.
QUOR_GJF_API VariableFields zmatrix_variable_fields(std::string_view text, std::uint32_t line);

/// Returns name and value in the line of a variable of Cartesian coordinates that begins at an offset.
QUOR_GJF_API VariableFields cartesian_variable_fields(std::string_view text, std::uint32_t line);

}  // namespace quor::input::gaussian

// Fields of molecule lines, atom labels, and the names that stand for coordinates. Private to the library.
#pragma once

#include <gjf/core/job/geometry.hpp>
#include <gjf/core/reader/reading.hpp>

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

using Fields = std::vector<std::string_view>;

/// Cuts a line at blanks and commas outside quotes and brackets; a quote that nothing closes is text.
void cut_fields(std::string_view line, Fields& fields);

/// Cuts a charge line, at slashes too, which Gaussian takes for blanks.
void cut_charge_fields(std::string_view text, Fields& fields);

/// Reads an atom label into an empty `info`.
void read_atom_label(std::string_view label, AtomInfo& info);

/// Gives the label "-", of which nothing is left once it is read, to what has neither element, type, charge nor parameters.
void name_dummy(AtomInfo& info);

/// Reads a Cartesian atom line of the plain form into an empty `atom`, as the general reading would; returns false, with
/// `atom` untouched, for a line of any other form.
bool read_plain_atom_line(std::string_view line, AtomCoord& atom);

/// Tells whether a line holds something once its comment is taken away.
bool holds_text(std::string_view line) noexcept;

/// Returns the index of the first coordinate field of an atom line: 2 behind a freeze code, else 1.
std::size_t coordinate_begin(const Fields& fields) noexcept;

/// Tells whether fields are an atom's: a label, perhaps a freeze code, three numbers.
bool is_cartesian_line(const Fields& fields) noexcept;

/// A field that cannot be read, and what is said of it.
struct UnreadField {
    std::string_view field;
    std::string message;
};

/// Reads the four fields or more of a Cartesian atom line into an empty `atom`; `line` is for messages, and `fortran` takes
/// exponents with D. Returns the first field that cannot be read; the atom then has its label alone.
std::optional<UnreadField> read_atom_fields(const Fields& fields, std::string_view line, AtomCoord& atom,
                                            bool fortran = false);

/// Tells whether a text is a letter or underscore followed by letters, digits and underscores.
bool is_variable_name(std::string_view name) noexcept;

std::string_view without_sign(std::string_view text) noexcept;

/// A variable's name and value as they stand around the first "=", trimmed.
struct NameAndValue {
    std::string_view name;
    std::string_view value;
};

NameAndValue cut_at_equals(std::string_view text, std::size_t equals) noexcept;

/// Cuts the line of a Z-matrix variable, its comment taken away: "name=value", or `fields`, its first two fields. The name
/// is empty when it is none.
NameAndValue cut_zmatrix_variable(std::string_view text, const Fields& fields) noexcept;

/// Cuts the line "name=value" of a variable of Cartesian coordinates, its comment taken away; or a name and a number, which
/// are a variable only when the name is in use. The name is empty when it is neither; the value
/// is empty when it is nothing but commas, which stay with any other value though its number ends before them.
NameAndValue cut_cartesian_variable(std::string_view text);

/// The lines "Variables:" and "Constants:", with or without the colon, in any case; `singular` takes "Variable" and
/// "Constant" too.
enum class VariableHeader { None, Variables, Constants };

VariableHeader variable_header(std::string_view line, bool singular = false) noexcept;

/// Sorted, since a job chooses these names: no choice of them makes looking one up slow.
using NameSet = std::set<std::string, std::less<>>;

/// Collects the names, in lower case, that stand for coordinates and that nothing read so far gives a value.
NameSet undefined_names(const GeomSection& geom);
/// Returns all names that stand for coordinates or for values of rows, in lower case.
NameSet names_in_use(const GeomSection& geom);

/// Which lines are variable lines beside those of the form "name=value".
enum class VariableLines {
    WithEquals,   ///< none
    WithNumbers,  ///< a name and numbers behind it
    WithCodes,    ///< the same, with codes of one letter among the numbers, and headers in the singular
};

/// What a section that may hold variables is made of.
struct VariableBlock {
    bool well_formed = true;  ///< headers and variable lines alone
    bool has_header = false;
    bool defines_wanted_name = false;
};

/// Examines a section; `forms` tells what a variable line may be.
VariableBlock examine_variables(LineSpan section, VariableLines forms, const NameSet& wanted);

}  // namespace quor::input::gaussian

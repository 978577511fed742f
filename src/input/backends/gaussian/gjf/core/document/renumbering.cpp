// Renumbers the atoms that sections name, each kind of section in its own form.
#include <gjf/core/document/renumbering.hpp>

#include <gjf/core/document/field_line.hpp>
#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/reader/reading.hpp>
#include <gjf/core/sections/section_kinds.hpp>
#include <gjf/core/text/number.hpp>

#include <algorithm>
#include <optional>

namespace quor::input::gaussian {
namespace {

using Kind = ExtraInputSectionKind;

// A line of an internal coordinate: a type letter, atoms and what is to be done; gone when one of its atoms is.
std::optional<std::string> coordinate_line(std::string_view line, const AtomPlaces& places) {
    constexpr std::string_view letters = "xbadlo";
    constexpr std::size_t atom_counts[] = {1, 2, 3, 4, 4, 4};
    FieldLine fields(line);
    if (fields.size() == 0) {
        return std::string(line);
    }
    if (line.find('(') != std::string_view::npos || fields.field(0).find('=') != std::string_view::npos) {
        throw CannotRenumber("it holds expressions");
    }
    const bool typed = !is_integer_text(fields.field(0)) && fields.field(0) != "*";
    const std::size_t type = typed ? letters.find(to_lower_ascii(fields.field(0).front())) : 4;
    if (type == std::string_view::npos || (typed && fields.field(0).size() != 1)) {
        throw CannotRenumber("'" + std::string(fields.field(0)) + "' is no type of coordinate");
    }
    std::size_t count = typed ? atom_counts[type] : 4;
    bool gone = false;
    for (std::size_t i = typed ? 1 : 0; i < fields.size() && count > 0; ++i, --count) {
        if (fields.field(i) == "*") {
            continue;
        }
        if (!is_integer_text(fields.field(i))) {
            break;
        }
        const std::optional<std::size_t> number = new_number(fields.field(i), places);
        gone = gone || !number;
        if (number && fields.field(i) != std::to_string(*number)) {
            fields.set_number(i, std::to_string(*number));
        }
    }
    return gone ? std::nullopt : std::optional<std::string>(fields.text());
}

// A line of atom numbers and ranges alone.
std::optional<std::string> atom_list_line(std::string_view line, const AtomPlaces& places) {
    FieldLine fields(line);
    const std::size_t count = fields.size();
    for (std::size_t i = fields.size(); i-- > 0;) {
        const std::string text = renumbered_range(fields.field(i), places);
        if (text.empty()) {
            fields.remove(i);
        } else if (text != fields.field(i)) {
            fields.set_text(i, text);
        }
    }
    return fields.size() == 0 && count > 0 ? std::nullopt : std::optional<std::string>(fields.text());
}

// A line whose first field is an atom or an element, as in a list of radii.
std::optional<std::string> first_field_line(std::string_view line, const AtomPlaces& places) {
    FieldLine fields(line);
    if (fields.size() == 0 || !names_numbers(fields.field(0))) {
        return std::string(line);
    }
    const std::string text = renumbered_range(fields.field(0), places);
    if (text.empty()) {
        return std::nullopt;
    }
    if (text != fields.field(0)) {
        fields.set_text(0, text);
    }
    return fields.text();
}

// Lists one line an atom, behind a first line of temperature and pressure.
std::string masses_text(const std::string& text, const AtomPlaces& places) {
    const std::vector<std::string_view> lines = split_lines(text);
    if (lines.size() != places.old_count() + 1) {
        throw CannotRenumber("it does not have one line for each atom");
    }
    if (places.added) {
        throw CannotRenumber("the isotope of a new atom is not known");
    }
    std::vector<std::string_view> ordered(places.count);
    for (std::size_t old = 0; old < places.old_count(); ++old) {
        if (places.places[old] != AtomPlaces::gone) {
            ordered[places.places[old]] = lines[old + 1];
        }
    }
    std::string result(lines[0]);
    for (const std::string_view line : ordered) {
        result += '\n';
        result += line;
    }
    return result;
}

// A second or third structure: its atoms go and move as those of the first.
std::string structure_text(const std::string& text, const AtomPlaces& places) {
    const std::vector<std::string_view> lines = split_lines(text);
    const auto blank = std::find_if(lines.begin(), lines.end(), is_blank_line);
    const auto charge = std::find_if_not(blank == lines.end() ? lines.begin() : blank, lines.end(), is_blank_line);
    const auto atoms = charge == lines.end() ? charge : charge + 1;
    const bool cartesian =
        std::all_of(atoms, lines.end(), [](std::string_view line) { return FieldLine(line).size() >= 4; });
    if (!cartesian || static_cast<std::size_t>(lines.end() - atoms) != places.old_count()) {
        throw CannotRenumber("its atoms cannot be told");
    }
    if (places.added) {
        throw CannotRenumber("where a new atom is in it is not known");
    }
    std::vector<std::string_view> ordered(places.count);
    for (std::size_t old = 0; old < places.old_count(); ++old) {
        if (places.places[old] != AtomPlaces::gone) {
            ordered[places.places[old]] = atoms[static_cast<std::ptrdiff_t>(old)];
        }
    }
    std::vector<std::string_view> all(lines.begin(), atoms);
    all.insert(all.end(), ordered.begin(), ordered.end());
    return join_lines(all.data(), all.size());
}

// Rows of bonds that are kept as text.
std::optional<std::string> bond_row(std::string_view line, const AtomPlaces& places) {
    FieldLine row(line);
    if (row.size() == 0) {
        return std::string(line);
    }
    const std::optional<std::size_t> atom = new_number(row.field(0), places);
    if (!atom) {
        return std::nullopt;
    }
    for (std::size_t i = row.size() - 1; i >= 2; i -= 2) {
        const std::optional<std::size_t> partner = new_number(row.field(i - 1), places);
        if (!partner) {
            row.remove(i);
            row.remove(i - 1);
        } else if (row.field(i - 1) != std::to_string(*partner)) {
            row.set_text(i - 1, std::to_string(*partner));
        }
    }
    if (row.field(0) != std::to_string(*atom)) {
        row.set_number(0, std::to_string(*atom));
    }
    return row.text();
}

bool has_digit(const std::string& text) { return text.find_first_of("0123456789") != std::string::npos; }

std::string refuse_numbers(const std::string& text) {
    if (has_digit(text)) {
        throw CannotRenumber("it may name atoms by number");
    }
    return text;
}

std::string solvation_text(const std::string& text) {
    const bool names_spheres = contains_folded(text, "modifysph") || contains_folded(text, "extrasph");
    for (const std::string_view line : split_lines(text)) {
        Fields fields;
        cut_fields(without_comment(line), fields);
        if (names_spheres || (!fields.empty() && is_integer_text(fields[0]))) {
            throw CannotRenumber("it changes the spheres of single atoms");
        }
    }
    return text;
}

// Atoms that are only added at the end leave the numbers of the others as they are; these kinds list all atoms all the same.
bool lists_every_atom(Kind kind) noexcept {
    return kind == Kind::AtomicMasses || kind == Kind::SecondTitleAndMolecule || kind == Kind::ThirdTitleAndTSStructure ||
           kind == Kind::BOMDInput;
}

std::string renumbered(Kind kind, const std::string& text, const AtomPlaces& places) {
    switch (kind) {
        case Kind::CoordinateModifications:
        case Kind::SecondCoordinateModifications:
        case Kind::ThirdCoordinateModifications:
        case Kind::IRCCoordinates:
            return change_lines(text, places, coordinate_line);
        case Kind::SpinSpinAtoms:
        case Kind::PickettAtoms:
            return change_lines(text, places, atom_list_line);
        case Kind::FrozenAtomAlterations:
        case Kind::SecondFrozenAtomAlterations:
        case Kind::ThirdFrozenAtomAlterations:
        case Kind::HarmonicModeSelection:
        case Kind::AnharmonicModeSelection:
            return change_lines(text, places, atom_selection_line);
        case Kind::AtomicRadii:
            return change_lines(text, places, first_field_line);
        case Kind::BasisSet:
        case Kind::DensityFittingBasis:
            return basis_text(text, places);
        case Kind::ECP:
            return potential_text(text, places);
        case Kind::AtomicMasses:
            return masses_text(text, places);
        case Kind::SecondTitleAndMolecule:
        case Kind::ThirdTitleAndTSStructure:
            return structure_text(text, places);
        case Kind::SecondConnectivity:
        case Kind::ThirdConnectivity:
            return change_lines(text, places, bond_row);
        case Kind::PCMInput:
        case Kind::PCMSolvation:
            return solvation_text(text);
        case Kind::NBOInput:
        case Kind::HarmonicConstraints:
        case Kind::External:
        case Kind::LinkSpecificInput:
        case Kind::BOMDInput:
        case Kind::HinderedRotor:
        case Kind::ElectrostaticData:
        case Kind::FCHTInput:
        case Kind::GuessSource:
        case Kind::AnharmonicInput:
            return refuse_numbers(text);
        default:
            return text;
    }
}

}  // namespace

std::string renumber_section(Kind kind, const std::string& text, const AtomPlaces& places, bool force) {
    if (!places.renumbered && !(places.added && lists_every_atom(kind))) {
        return text;
    }
    try {
        return renumbered(kind, text, places);
    } catch (const CannotRenumber& reason) {
        if (force) {
            return text;
        }
        throw GJFParseException(std::string("The section '") + extra_input_kind_name(kind) +
                                "' cannot follow the change of atoms: " + reason.what());
    }
}

}  // namespace quor::input::gaussian

// Sections whose lines each speak of single atoms: bonds, lists, radii, isotopes, structures; and those of no known form.
#include <gjf/core/sections/section_tokens.hpp>

#include <gjf/core/job/connectivity_row.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/number_range.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <limits>

namespace quor::input::gaussian {
namespace {

bool is_ascending_range(std::string_view field) noexcept {
    return to_number_range(field, std::numeric_limits<std::int64_t>::min()).has_value();
}

bool is_blank(std::string_view line) noexcept { return trim_view(line).empty(); }

// What is left of the lines is about one atom each.
void mark_as_atoms(SectionReading& section, std::size_t first) {
    for (std::size_t i = first; i < section.lines.size(); ++i) {
        section.lines[i].form = LineForm::OfAtom;
    }
}

}  // namespace

void read_atomless(SectionReading& section) {
    for (SectionScanner scan(section); scan.next();) {
        scan.begin(LineForm::Plain);
        scan.add_rest(0);
    }
}

void read_unknown_form(SectionReading& section) {
    read_atomless(section);
    section.includes_name_atoms = true;
    if (section.text.find_first_of("0123456789") != std::string_view::npos) {
        section.unclear = "it may name atoms by number";
    }
}

// Velocities are given atom by atom.
void read_trajectory(SectionReading& section) {
    read_unknown_form(section);
    section.lists_every_atom = true;
}

void read_left_over(SectionReading& section) {
    for (SectionScanner scan(section); scan.next();) {
        scan.begin(LineForm::LeftOver);
        std::string_view rest = without_comment(scan.line());
        constexpr std::string_view separators = " \t\v\f,;()[]{}=\"'*:/";
        for (std::size_t i = rest.find_first_not_of(separators); i < rest.size();) {
            const std::size_t end = std::min(rest.find_first_of(separators, i), rest.size());
            const std::string_view word = rest.substr(i, end - i);
            scan.add(word, is_number_range_text(word) ? TokenKind::Atoms : TokenKind::Word);
            i = rest.find_first_not_of(separators, end);
        }
    }
}

void read_bonds(SectionReading& section) {
    section.includes_name_atoms = true;
    for (SectionScanner scan(section, cut_connectivity_row); scan.next();) {
        scan.begin(LineForm::Bonds);
        scan.add(scan.field(0), TokenKind::Atom);
        for (std::size_t i = 1; i < scan.size(); ++i) {
            scan.add(scan.field(i), i % 2 == 1 ? TokenKind::Atom : TokenKind::Number);
        }
    }
}

void read_atom_lists(SectionReading& section) {
    section.includes_name_atoms = true;
    for (SectionScanner scan(section); scan.next();) {
        scan.begin(LineForm::Atoms);
        for (const std::string_view field : scan.fields()) {
            scan.add(field, TokenKind::Atoms);
        }
    }
}

void read_first_fields(SectionReading& section) {
    section.includes_name_atoms = true;
    for (SectionScanner scan(section); scan.next();) {
        scan.begin(LineForm::First);
        scan.add(scan.field(0), is_ascending_range(scan.field(0)) ? TokenKind::Atoms : TokenKind::Element);
        scan.add_rest(1);
    }
}

// A first line of temperature and pressure, then one line an atom.
void read_isotopes(SectionReading& section) {
    section.miscounted = "it does not have one line for each atom";
    section.without_place = "the isotope of a new atom is not known";
    section.lists_every_atom = true;
    mark_as_atoms(section, 1);
}

// A title, a blank line, a charge line, and a molecule whose atoms can be told when all are Cartesian.
void read_structure(SectionReading& section) {
    section.miscounted = "its atoms cannot be told";
    section.without_place = "where a new atom is in it is not known";
    section.lists_every_atom = true;
    std::size_t line = 0;
    const auto pass = [&](bool blank) {
        while (line < section.lines.size() && is_blank(section[section.lines[line].span]) == blank) {
            ++line;
        }
    };
    pass(false);
    pass(true);
    // Without a blank line inside, there is a molecule without a title.
    line = line < section.lines.size() ? line : 0;
    const auto is_cartesian = [&](const SectionLine& atom) {
        std::vector<std::string_view> fields;
        cut_section_line(section[atom.span], fields);
        return fields.size() >= 4;
    };
    const std::size_t atoms = std::min(line + 1, section.lines.size());
    const auto begin = section.lines.begin() + static_cast<std::ptrdiff_t>(atoms);
    if (std::all_of(begin, section.lines.end(), is_cartesian)) {
        mark_as_atoms(section, atoms);
    } else {
        section.unclear = section.miscounted;
    }
}

void read_solvation(SectionReading& section) {
    read_atomless(section);
    section.includes_name_atoms = true;
    const auto names_sphere = [&](const SectionLine& line) {
        return line.count > 0 && is_integer_text(section[section.tokens[line.first].span]);
    };
    if (contains_folded(section.text, "modifysph") || contains_folded(section.text, "extrasph") ||
        std::any_of(section.lines.begin(), section.lines.end(), names_sphere)) {
        section.unclear = "it changes the spheres of single atoms";
    }
}

}  // namespace quor::input::gaussian

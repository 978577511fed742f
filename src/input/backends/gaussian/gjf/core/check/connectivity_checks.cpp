// Checks of the connectivity rows: every atom one row, bonds between two atoms, each given in one way.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/check/fixes.hpp>
#include <gjf/core/sections/section_tokens.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <map>
#include <utility>

namespace quor::input::gaussian {
namespace {

// A bond as it stands in a row.
struct WrittenBond {
    std::size_t line = 0;
    bool from_lower = false;  // whether it stands in the row of the atom with the smaller number
    double order = 0;
};

using WrittenBonds = std::multimap<std::pair<std::int64_t, std::int64_t>, WrittenBond>;

// Reads one row into `bonds`; returns the atom that it is about, 0 for a line without one.
std::int64_t read_row(const CheckedJob& job, std::size_t line, const SectionReading& section, const SectionLine& row,
                      WrittenBonds& bonds, Findings& findings) {
    const auto tokens = section.tokens_of(row);
    const auto text = [&](std::size_t i) { return section[tokens[i].span]; };
    const std::int64_t atom = tokens.empty() ? 0 : to_int64(text(0)).value_or(0);
    for (std::size_t i = 1; i + 1 < tokens.size(); i += 2) {
        const std::int64_t partner = to_int64(text(i)).value_or(0);
        if (partner == atom) {
            findings.add("GJF-S003", Severity::Error, "atom " + std::to_string(atom) + " is bonded to itself",
                         job.place_in(line, text(i)));
            continue;
        }
        bonds.insert({{std::min(atom, partner), std::max(atom, partner)},
                      {line, atom < partner, to_number(text(i + 1)).value_or(0)}});
    }
    return atom;
}

std::string bond_text(const std::pair<std::int64_t, std::int64_t>& bond) {
    return "the bond between atoms " + std::to_string(bond.first) + " and " + std::to_string(bond.second);
}

void check_bonds(const CheckedJob& job, const WrittenBonds& bonds, Findings& findings) {
    bool any_two_sided = false;
    for (auto begin = bonds.begin(); begin != bonds.end();) {
        const auto end = bonds.upper_bound(begin->first);
        const auto count = std::distance(begin, end);
        const auto from_lower = std::count_if(begin, end, [](const auto& entry) { return entry.second.from_lower; });
        const auto last = std::prev(end);
        any_two_sided = any_two_sided || (from_lower > 0 && from_lower < count);
        const bool has_two_orders = begin->second.order != last->second.order;
        if (has_two_orders || from_lower > 1 || count - from_lower > 1) {
            Finding& finding =
                findings.add("GJF-S004", Severity::Warning,
                             bond_text(begin->first) + (has_two_orders ? " is given with two orders" : " is given twice"),
                             last->second.line);
            relate_line(job, begin->second.line, "first here", finding);
        }
        begin = end;
    }
    if (!any_two_sided) {
        return;
    }
    for (auto begin = bonds.begin(); begin != bonds.end(); begin = bonds.upper_bound(begin->first)) {
        if (bonds.count(begin->first) == 1) {
            findings.add("GJF-S006", Severity::Note, bond_text(begin->first) + " is given from one side, others from both",
                         begin->second.line);
        }
    }
}

// Tells of atoms without a row; `row_of` holds the line of the row of each, 0 for none.
void check_missing_rows(const CheckedJob& job, const std::vector<std::size_t>& row_of, std::size_t last_line,
                        Findings& findings) {
    const std::size_t atom_count = row_of.size() - 1;
    const auto missing = std::count(row_of.begin() + 1, row_of.end(), std::size_t{0});
    if (missing == 0) {
        return;
    }
    const auto first = std::find(row_of.begin() + 1, row_of.end(), std::size_t{0}) - row_of.begin();
    Finding& finding = findings.add("GJF-S005", Severity::Warning,
                                    std::to_string(missing) + " of " + std::to_string(atom_count) +
                                        " atoms have no row in the connectivity; the first is atom " + std::to_string(first),
                                    last_line, "give every atom a row, with its number alone when it has no bonds");
    // Rows in the order of the atoms: only those behind the last one can be told.
    std::string rows;
    for (std::size_t atom = atom_count + 1 - static_cast<std::size_t>(missing); atom <= atom_count; ++atom) {
        rows += row_of[atom] == 0 ? "\n " + std::to_string(atom) : std::string();
    }
    if (std::cmp_equal(first + missing, atom_count + 1)) {
        offer(finding, "add rows with the numbers alone", FixSafety::Unsafe, {job.behind_line(last_line, rows)});
    }
}

// Translation vectors are numbered as atoms are, but need no row.
void check_rows(const CheckedJob& job, const LineRange& lines, const std::vector<MoleculeAtom>& atoms, Findings& findings) {
    const std::size_t atom_count = atoms.size();
    WrittenBonds bonds;
    std::vector<std::size_t> row_of(atom_count + 1);  // the line of its row; 0 for none
    const SectionReading section = read_section(ExtraInputSectionKind::Connectivity, job.text(lines));
    for (std::size_t line = lines.first; line <= lines.last; ++line) {
        const std::int64_t atom = read_row(job, line, section, section.lines[line - lines.first], bonds, findings);
        // The reader refuses rows of other atoms.
        if (atom < 1 || std::cmp_greater(atom, atom_count)) {
            continue;
        }
        std::size_t& first = row_of[static_cast<std::size_t>(atom)];
        if (first != 0) {
            Finding& finding =
                findings.add("GJF-S005", Severity::Warning, "atom " + std::to_string(atom) + " has a second row", line);
            relate_line(job, first, "first here", finding);
        }
        first = line;
    }
    for (std::size_t i = 0; i < atom_count; ++i) {
        if (atoms[i].species.kind == SpeciesKind::TranslationVector && row_of[i + 1] == 0) {
            row_of[i + 1] = lines.last;
        }
    }
    check_missing_rows(job, row_of, lines.last, findings);
    check_bonds(job, bonds, findings);
}

// Rows may name their neighbours alone, each with an order; they then belong to the atoms in turn.
bool names_neighbours_alone(std::string_view row) {
    std::vector<std::string_view> fields;
    split_fields(without_comment(row), FieldSeparators::WhiteSpaceAndComma, true, fields);
    return fields.size() >= 2 && fields.size() % 2 == 0 && fields[1].find('.') != std::string_view::npos;
}

void check_connectivity(const CheckedMolecule& molecule, Findings& findings) {
    const auto& [job, atoms, layers] = molecule;
    for (const SectionLayout& section : job.layout.sections) {
        if (section.kind == ExtraInputSectionKind::Connectivity && !atoms.empty() &&
            !names_neighbours_alone(job.line(section.lines.first))) {
            check_rows(job, section.lines, atoms, findings);
        }
    }
}

}  // namespace

const Family connectivity_family = {Known::Molecule, check_connectivity, {"GJF-S003", "GJF-S004", "GJF-S005", "GJF-S006"}};

}  // namespace quor::input::gaussian

// Bond lists: text form, queries and renumbering.
#include <gjf/core/job/connectivity_section.hpp>

#include <gjf/core/job/connectivity_row.hpp>
#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/text/field_walk.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/number_writing.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace quor::input::gaussian {
namespace {

Bond make_bond(std::uint64_t i, std::uint64_t j, double order) { return {std::min(i, j), std::max(i, j), order}; }

[[noreturn]] void fail(const char* what, std::string_view token, std::string_view line) {
    std::string message = what;
    message += " '";
    message += token;
    message += "' in line: ";
    message += line;
    throw GJFParseException(message);
}

std::uint64_t parse_atom_index(std::string_view token, std::string_view line) {
    const std::optional<std::int64_t> number = to_int64(token);
    if (!number) {
        fail("Invalid connectivity atom index", token, line);
    }
    if (*number < 1) {
        throw GJFParseException("Connectivity atom indices must be positive 1-based integers in line: " + std::string(line));
    }
    return static_cast<std::uint64_t>(*number - 1);
}

void parse_line(std::string_view line, std::vector<std::string_view>& fields, std::vector<Bond>& bonds) {
    cut_connectivity_row(line, fields);
    if (fields.empty()) {
        return;
    }
    const std::string_view shown = trim_view(line);
    const std::uint64_t atom = parse_atom_index(fields[0], shown);
    const auto incomplete = [&] { throw GJFParseException("Incomplete connectivity pair in line: " + std::string(shown)); };
    if (fields.size() == 2) {
        incomplete();
    }
    for (std::size_t i = 1; i < fields.size(); i += 2) {
        if (i + 1 == fields.size()) {
            incomplete();
        }
        const std::uint64_t partner = parse_atom_index(fields[i], shown);
        const std::optional<double> order = to_number(fields[i + 1]);
        if (!order || !std::isfinite(*order)) {
            fail("Invalid connectivity bond order", fields[i + 1], shown);
        }
        bonds.push_back(make_bond(atom, partner, *order));
    }
}

// Reads a line of whole atom numbers and plain bond orders, as nearly all are, in one pass; returns false, and adds no
// bonds, for any other line.
bool parse_plain_line(std::string_view line, std::vector<Bond>& bonds) {
    FieldWalk walk(line, FieldSeparators::WhiteSpace);
    const std::size_t count = bonds.size();
    const auto take_atom = [&walk](std::uint64_t& atom) {
        const std::int32_t number = walk.take_whole().value_or(0);
        atom = static_cast<std::uint64_t>(number) - 1;
        return number >= 1;
    };
    std::uint64_t atom = 0;
    bool plain = take_atom(atom);
    while (plain && !walk.at_end()) {
        std::uint64_t partner = 0;
        plain = take_atom(partner);
        const FieldWalk::Decimal order = walk.take_decimal();
        plain = plain && !order.text.empty();
        if (plain) {
            bonds.push_back(make_bond(atom, partner, order.value));
        }
    }
    if (!plain) {
        bonds.resize(count);
    }
    return plain;
}

void append_number(std::string& line, std::uint64_t number) {
    char digits[std::numeric_limits<std::uint64_t>::digits10 + 2];
    line.append(digits, std::to_chars(digits, std::end(digits), number).ptr);
}

template <typename Renumber>
void renumber_bonds(std::vector<Bond>& bonds, Renumber renumber) {
    for (Bond& bond : bonds) {
        bond = make_bond(renumber(bond.atom1), renumber(bond.atom2), bond.order);
    }
}

// An atom beyond what a list can hold, as 32 bits tell of fewer than a row can name, is the last that none holds.
std::size_t index_of(std::uint64_t atom) noexcept {
    return static_cast<std::size_t>(std::min<std::uint64_t>(atom, std::numeric_limits<std::size_t>::max()));
}

}  // namespace

void cut_connectivity_row(std::string_view line, std::vector<std::string_view>& fields) {
    const std::string_view row = line.substr(0, line.find('!'));
    fields.clear();
    for (std::size_t end = 0, begin = 0; begin < row.size(); begin = end) {
        if (is_white_space(row[begin])) {
            end = begin + 1;
            continue;
        }
        end = static_cast<std::size_t>(
            std::find_if(row.begin() + static_cast<std::ptrdiff_t>(begin), row.end(), is_white_space) - row.begin());
        fields.push_back(row.substr(begin, end - begin));
    }
}

void ConnectivitySection::parse_from_lines(const std::vector<std::string>& lines) {
    parse_from_views(std::vector<std::string_view>(lines.begin(), lines.end()).data(), lines.size());
}

void ConnectivitySection::parse_from_views(const std::string_view* lines, std::size_t count) {
    bonds.clear();
    bonds.reserve(count);  // about one for each atom, among molecules of all kinds
    std::vector<std::string_view> fields;
    for (std::size_t i = 0; i < count; ++i) {
        if (!parse_plain_line(lines[i], bonds)) {
            parse_line(lines[i], fields, bonds);
        }
    }
}

std::vector<std::string> ConnectivitySection::to_lines() const { return to_lines_with_atom_count(0); }

std::vector<std::string> ConnectivitySection::to_lines_with_atom_count(std::size_t atom_count) const {
    if (atom_count == 0) {
        for (const Bond& bond : bonds) {
            atom_count = std::max(atom_count, index_of(std::max(bond.atom1, bond.atom2) + 1));
        }
    }
    std::vector<std::string> lines(atom_count);
    for (std::size_t atom = 0; atom < atom_count; ++atom) {
        append_number(lines[atom], atom + 1);
    }
    // Each bond goes to the end of its smaller atom's line, so that a line holds its bonds in storage order.
    for (const Bond& bond : bonds) {
        if (bond.atom1 < atom_count && bond.atom2 > bond.atom1) {
            std::string& line = lines[index_of(bond.atom1)];
            line += ' ';
            append_number(line, bond.atom2 + 1);
            line += ' ';
            append_fixed(line, bond.order, 1);
        }
    }
    return lines;
}

double ConnectivitySection::get_bond_order(std::size_t i, std::size_t j) const {
    const auto bond = std::find(bonds.begin(), bonds.end(), make_bond(i, j, 0));
    return bond == bonds.end() ? 0.0 : bond->order;
}

void ConnectivitySection::set_bond_order(std::size_t i, std::size_t j, double order) {
    if (!(order > 0.0)) {
        remove_bond(i, j);
        return;
    }
    const auto bond = std::find(bonds.begin(), bonds.end(), make_bond(i, j, order));
    if (bond == bonds.end()) {
        bonds.push_back(make_bond(i, j, order));
    } else {
        bond->order = order;
    }
}

void ConnectivitySection::remove_bond(std::size_t i, std::size_t j) {
    bonds.erase(std::remove(bonds.begin(), bonds.end(), make_bond(i, j, 0)), bonds.end());
}

std::vector<std::size_t> ConnectivitySection::get_connected_atoms(std::size_t i) const {
    std::vector<std::size_t> partners;
    for (const Bond& bond : bonds) {
        if (bond.atom1 == i) {
            partners.push_back(index_of(bond.atom2));
        } else if (bond.atom2 == i) {
            partners.push_back(index_of(bond.atom1));
        }
    }
    return partners;
}

void ConnectivitySection::remove_atom(std::size_t i) {
    const auto touches = [i](const Bond& bond) { return bond.atom1 == i || bond.atom2 == i; };
    bonds.erase(std::remove_if(bonds.begin(), bonds.end(), touches), bonds.end());
    renumber_bonds(bonds, [i](std::uint64_t x) { return x > i ? x - 1 : x; });
}

void ConnectivitySection::insert_atom(std::size_t i) {
    renumber_bonds(bonds, [i](std::uint64_t x) { return x >= i ? x + 1 : x; });
}

void ConnectivitySection::move_atom(std::size_t from, std::size_t to) {
    renumber_bonds(bonds, [from, to](std::uint64_t x) {
        if (x == from) {
            return static_cast<std::uint64_t>(to);
        }
        if (from < x && x <= to) {
            return x - 1;
        }
        return to <= x && x < from ? x + 1 : x;
    });
}

}  // namespace quor::input::gaussian

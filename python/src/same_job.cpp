// Compares two jobs part by part, for equality in Python and for the check after writing.
#include "same_job.hpp"

#include <gjf/core/reader/gjf_parser.hpp>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace quor_python {
namespace {

using namespace quor::input::gaussian;

// Half of the last decimal written, and a little for the rounding of binary numbers.
constexpr double written_coordinate_step = 0.5000001e-6;
constexpr double written_charge_step = 0.5000001e-10;

template <class List, class Same>
bool same_list(const List& a, const List& b, Same same) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), same);
}

bool near(double a, double b, double step) { return std::abs(a - b) <= step + 1e-15 * std::abs(a); }

bool same_coordinate(const CoordinateValue& a, double x, const CoordinateValue& b, double y, Coordinates mode) {
    const bool symbolic = (!a.text.empty() && !a.value) || (!b.text.empty() && !b.value);
    if (symbolic || mode == Coordinates::AsText) {
        return a.text == b.text && x == y;
    }
    if (mode == Coordinates::AsNumber) {
        return x == y;
    }
    return a.text.empty() ? near(x, y, written_coordinate_step) : a.text == b.text;
}

bool same_label(const AtomInfo& a, const AtomInfo& b, Coordinates mode) {
    const double step = mode == Coordinates::AsWritten ? written_charge_step : 0.0;
    const bool same_charge = a.mm_charge.has_value() == b.mm_charge.has_value() &&
                             (!a.mm_charge || *a.mm_charge == *b.mm_charge || near(*a.mm_charge, *b.mm_charge, step));
    return same_charge && std::tie(a.element, a.mm_type, a.params) == std::tie(b.element, b.mm_type, b.params);
}

bool same_atom(const AtomCoord& a, const AtomCoord& b, Coordinates mode) {
    // A layer that is present but empty is written as blanks.
    const bool same_layer = a.layer.value_or("") == b.layer.value_or("");
    return same_layer && a.freeze == b.freeze && same_label(a.info, b.info, mode) &&
           same_coordinate(a.x_ref, a.x, b.x_ref, b.x, mode) && same_coordinate(a.y_ref, a.y, b.y_ref, b.y, mode) &&
           same_coordinate(a.z_ref, a.z, b.z_ref, b.z, mode);
}

bool same_reference(const std::optional<ZMatrixReference>& a, const std::optional<ZMatrixReference>& b) {
    return a.has_value() == b.has_value() && (!a || (a->atom == b->atom && a->value == b->value));
}

bool same_row(const ZMatrixEntry& a, const ZMatrixEntry& b) {
    return same_label(a.info, b.info, Coordinates::AsNumber) && same_reference(a.bond, b.bond) &&
           same_reference(a.angle, b.angle) && same_reference(a.dihedral, b.dihedral);
}

bool same_variable(const ZMatrixVariable& a, const ZMatrixVariable& b) { return a.name == b.name && a.value == b.value; }

bool same_pair(const ChargeSpinPair& a, const ChargeSpinPair& b) {
    return a.charge == b.charge && a.multiplicity == b.multiplicity;
}

std::vector<std::string> route_words(const ControlSection& control) {
    std::string line;
    for (const std::string& word : control.route_keywords) {
        line += word + " ";
    }
    // Behind a "!" nothing would be read again: such words are compared as they stand.
    return line.find_first_of("!\r\n") == std::string::npos ? GJFParser::parse_keywords_from_line(line, {})
                                                            : std::vector<std::string>{line};
}

std::string without_last_blanks(std::string text) {
    text.erase(text.find_last_not_of(" \t\r\n") + 1);
    return text;
}

// Bonds in the order of their atoms: writing groups them by atom.
std::vector<std::tuple<std::uint64_t, std::uint64_t, double>> sorted_bonds(const ConnectivitySection& section) {
    std::vector<std::tuple<std::uint64_t, std::uint64_t, double>> bonds;
    bonds.reserve(section.bonds.size());
    for (const Bond& bond : section.bonds) {
        bonds.emplace_back(bond.atom1, bond.atom2, bond.order);
    }
    std::sort(bonds.begin(), bonds.end());
    return bonds;
}

bool same_section(const ExtraInputSection& a, const ExtraInputSection& b) {
    const auto unknown = ExtraInputSectionKind::Unknown;
    if (a.kind != b.kind && a.kind != unknown && b.kind != unknown) {
        return false;
    }
    if (a.connectivity() != nullptr && b.connectivity() != nullptr) {
        return sorted_bonds(*a.connectivity()) == sorted_bonds(*b.connectivity());
    }
    return without_last_blanks(a.text()) == without_last_blanks(b.text());
}

bool same_link0(const ControlSection& a, const ControlSection& b) {
    return std::tie(a.chk, a.oldchk, a.rwf, a.mem, a.nproc, a.cpu, a.other_link0_lines) ==
           std::tie(b.chk, b.oldchk, b.rwf, b.mem, b.nproc, b.cpu, b.other_link0_lines);
}

bool same_variables(const std::vector<ZMatrixVariable>& a, const std::vector<ZMatrixVariable>& b) {
    return same_list(a, b, same_variable);
}

}  // namespace

const char* first_difference(const GJFData& a, const GJFData& b, Coordinates mode) {
    const auto atoms = [mode](const AtomCoord& left, const AtomCoord& right) { return same_atom(left, right, mode); };
    if (!same_link0(a.control, b.control)) {
        return "Link 0 lines";
    }
    if (a.control.route_keywords != b.control.route_keywords && route_words(a.control) != route_words(b.control)) {
        return "route";
    }
    if (without_last_blanks(a.extra_overlays.value_or("")) != without_last_blanks(b.extra_overlays.value_or(""))) {
        return "overlay input";
    }
    if (without_last_blanks(a.title) != without_last_blanks(b.title)) {
        return "title";
    }
    if (!same_list(a.geom.charge_spin_pairs(), b.geom.charge_spin_pairs(), same_pair)) {
        return "charge and multiplicity";
    }
    if (a.geom.format != b.geom.format || !same_list(a.geom.zmatrix_entries, b.geom.zmatrix_entries, same_row)) {
        return "Z-matrix";
    }
    if (!same_list(a.geom.atoms, b.geom.atoms, atoms)) {
        return "atoms";
    }
    if (!same_variables(a.geom.variables, b.geom.variables) || !same_variables(a.geom.constants, b.geom.constants) ||
        !same_variables(a.geom.cartesian_variables, b.geom.cartesian_variables)) {
        return "variables";
    }
    return same_list(a.extra_inputs, b.extra_inputs, same_section) ? nullptr : "extra input sections";
}

}  // namespace quor_python

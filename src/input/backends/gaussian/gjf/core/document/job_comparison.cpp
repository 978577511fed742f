// Compares a job that was read with the one that should be there.
#include <gjf/core/document/job_rewriting.hpp>

#include <gjf/core/reader/gjf_parser.hpp>

#include <algorithm>
#include <cmath>
#include <optional>
#include <tuple>

namespace quor::input::gaussian {
namespace {

using Keywords = std::vector<std::pair<std::string, std::map<std::string, std::string>>>;

Keywords sorted_keywords(const ParsedKeywords& route) {
    Keywords keywords;
    for (const KeywordInfo& keyword : route.keywords) {
        keywords.emplace_back(keyword.name, keyword.options);
    }
    std::sort(keywords.begin(), keywords.end());
    return keywords;
}

bool same_route(const std::vector<std::string>& a, const std::vector<std::string>& b) {
    if (a == b) {
        return true;
    }
    const ParsedKeywords x = GJFParser::parse_keywords(a, {});
    const ParsedKeywords y = GJFParser::parse_keywords(b, {});
    const auto model = [](const ParsedKeywords& r) {
        return std::tie(r.print_level, r.method, r.basis_set, r.secondary_method, r.secondary_basis_set,
                        r.density_fitting_basis, r.oniom_expression);
    };
    return model(x) == model(y) && sorted_keywords(x) == sorted_keywords(y);
}

bool same_control(const ControlSection& a, const ControlSection& b) {
    std::vector<std::string> others_a = a.other_link0_lines;
    std::vector<std::string> others_b = b.other_link0_lines;
    std::sort(others_a.begin(), others_a.end());
    std::sort(others_b.begin(), others_b.end());
    return std::tie(a.chk, a.oldchk, a.rwf, a.mem, a.nproc, a.cpu) ==
               std::tie(b.chk, b.oldchk, b.rwf, b.mem, b.nproc, b.cpu) &&
           others_a == others_b;
}

// A coordinate without a text is written with at least six decimals.
bool same_coordinate(const CoordinateValue& read, double read_value, const CoordinateValue& wanted, double wanted_value) {
    constexpr double rounding = 5.1e-7;
    return !wanted.text.empty() ? read.text == wanted.text
                                : std::fabs(read_value - wanted_value) <= rounding + 1e-15 * std::fabs(wanted_value);
}

bool same_atom(const AtomCoord& read, const AtomCoord& wanted) {
    return same_label(read.info, wanted.info) && read.freeze == wanted.freeze && read.layer == wanted.layer &&
           same_coordinate(read.x_ref, read.x, wanted.x_ref, wanted.x) &&
           same_coordinate(read.y_ref, read.y, wanted.y_ref, wanted.y) &&
           same_coordinate(read.z_ref, read.z, wanted.z_ref, wanted.z);
}

bool same_reference(const std::optional<ZMatrixReference>& a, const std::optional<ZMatrixReference>& b) {
    return a.has_value() == b.has_value() && (!a || (a->atom == b->atom && a->value == b->value));
}

bool same_row(const ZMatrixEntry& a, const ZMatrixEntry& b) {
    return same_label(a.info, b.info) && same_reference(a.bond, b.bond) && same_reference(a.angle, b.angle) &&
           same_reference(a.dihedral, b.dihedral);
}

bool same_pair(const ChargeSpinPair& a, const ChargeSpinPair& b) {
    return a.charge == b.charge && a.multiplicity == b.multiplicity;
}

template <typename Element>
bool same_list(const std::vector<Element>& a, const std::vector<Element>& b, bool (*same)(const Element&, const Element&)) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), same);
}

std::vector<std::tuple<std::uint64_t, std::uint64_t, double>> sorted_bonds(const ConnectivitySection& section) {
    std::vector<std::tuple<std::uint64_t, std::uint64_t, double>> bonds;
    for (const Bond& bond : section.bonds) {
        bonds.emplace_back(bond.atom1, bond.atom2, bond.order);
    }
    std::sort(bonds.begin(), bonds.end());
    return bonds;
}

std::string geometry_difference(const GeomSection& read, const GeomSection& wanted) {
    if (read.charge != wanted.charge || read.multiplicity != wanted.multiplicity ||
        !same_list(read.additional_pairs, wanted.additional_pairs, same_pair)) {
        return "charge and multiplicity";
    }
    if (read.format != wanted.format || read.atoms.size() != wanted.atoms.size()) {
        return "the number of atoms";
    }
    for (std::size_t i = 0; i < read.atoms.size(); ++i) {
        if (!same_atom(read.atoms[i], wanted.atoms[i])) {
            return "atom " + std::to_string(i + 1);
        }
    }
    if (!same_list(read.zmatrix_entries, wanted.zmatrix_entries, same_row)) {
        return "the Z-matrix";
    }
    const bool same_variables = same_list(read.variables, wanted.variables, same_variable) &&
                                same_list(read.constants, wanted.constants, same_variable) &&
                                same_list(read.cartesian_variables, wanted.cartesian_variables, same_variable);
    return same_variables ? std::string() : "the variables";
}

std::string section_name(const ExtraInputSection& section) {
    return std::string("the section '") + extra_input_kind_name(section.kind) + "'";
}

std::string sections_difference(const std::vector<ExtraInputSection>& read, const std::vector<ExtraInputSection>& wanted) {
    for (std::size_t i = 0; i < std::max(read.size(), wanted.size()); ++i) {
        if (i >= wanted.size()) {
            return section_name(read[i]) + ", which should not be there";
        }
        if (i >= read.size()) {
            return section_name(wanted[i]) + ", which is not read";
        }
        // What was left over may be asked for now.
        if (read[i].kind != wanted[i].kind && wanted[i].kind != ExtraInputSectionKind::Unknown) {
            return section_name(wanted[i]) + ", which would be read as " + section_name(read[i]);
        }
        const ConnectivitySection* bonds = read[i].connectivity();
        const ConnectivitySection* wanted_bonds = wanted[i].connectivity();
        const bool both = bonds != nullptr && wanted_bonds != nullptr;
        const bool neither = bonds == nullptr && wanted_bonds == nullptr;
        if ((both && sorted_bonds(*bonds) != sorted_bonds(*wanted_bonds)) ||
            (neither && read[i].text() != wanted[i].text())) {
            return section_name(wanted[i]);
        }
    }
    return {};
}

}  // namespace

bool same_label(const AtomInfo& a, const AtomInfo& b) {
    return std::tie(a.element, a.mm_type, a.mm_charge, a.params) == std::tie(b.element, b.mm_type, b.mm_charge, b.params);
}

bool same_variable(const ZMatrixVariable& a, const ZMatrixVariable& b) { return a.name == b.name && a.value == b.value; }

std::string difference_between(const GJFData& read, const GJFData& wanted, bool sections_too) {
    if (!same_control(read.control, wanted.control)) {
        return "the Link 0 lines";
    }
    if (!same_route(read.control.route_keywords, wanted.control.route_keywords)) {
        return "the route";
    }
    if (read.title != wanted.title) {
        return "the title";
    }
    if (read.extra_overlays != wanted.extra_overlays) {
        return "the overlays";
    }
    const std::string geometry = geometry_difference(read.geom, wanted.geom);
    return geometry.empty() && sections_too ? sections_difference(read.extra_inputs, wanted.extra_inputs) : geometry;
}

}  // namespace quor::input::gaussian

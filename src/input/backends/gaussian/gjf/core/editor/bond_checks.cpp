// The checks that every job of an editor passes.
#include <gjf/core/editor/bond_checks.hpp>

#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/reader/gjf_parser.hpp>

#include <algorithm>
#include <cmath>

namespace quor::input::gaussian {
namespace {

// Interprets the route only where an atom number is too large for a job without atoms.
bool is_outside(const GJFData& data, std::uint64_t atom) {
    const std::size_t count = data.geom.atom_count();
    if (atom < count) {
        return false;
    }
    return count > 0 || !(GJFParser::is_geom_check(data.control) || GJFParser::is_geom_allchk(data.control));
}

}  // namespace

void check_bond_atoms(const GJFData& data, const Bond& bond) {
    if (is_outside(data, std::max(bond.atom1, bond.atom2))) {
        throw GJFParseException("Connectivity references an atom outside the geometry");
    }
    if (bond.atom1 == bond.atom2) {
        throw GJFParseException("Connectivity contains a self bond");
    }
}

void check_bonds(const GJFData& data) {
    const auto is_connectivity = [](const ExtraInputSection& section) { return section.is_connectivity(); };
    if (std::count_if(data.extra_inputs.begin(), data.extra_inputs.end(), is_connectivity) > 1) {
        throw GJFParseException("GJF data contains more than one primary connectivity section");
    }
    const ConnectivitySection* connectivity = data.connectivity();
    if (connectivity == nullptr || connectivity->bonds.empty()) {
        return;
    }
    // The route says once for all bonds whether a job without atoms bounds them.
    const bool unbounded = data.geom.atom_count() == 0 && !is_outside(data, 0);
    for (const Bond& bond : connectivity->bonds) {
        if (!unbounded && std::max(bond.atom1, bond.atom2) >= data.geom.atom_count()) {
            throw GJFParseException("Connectivity references an atom outside the geometry");
        }
        if (bond.atom1 == bond.atom2) {
            throw GJFParseException("Connectivity contains a self bond");
        }
        if (!std::isfinite(bond.order)) {
            throw GJFParseException("Connectivity contains a non-finite bond order");
        }
    }
}

}  // namespace quor::input::gaussian

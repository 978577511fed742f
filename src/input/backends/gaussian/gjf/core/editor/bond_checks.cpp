// The checks that every job of an editor passes.
#include <gjf/core/editor/bond_checks.hpp>

#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/reader/gjf_parser.hpp>

#include <algorithm>
#include <cmath>
#include <utility>

namespace quor::input::gaussian {
namespace {

bool are_below(const std::vector<Bond>& bonds, std::size_t atom_count) noexcept {
    return std::all_of(bonds.begin(), bonds.end(),
                       [atom_count](const Bond& bond) { return std::max(bond.atom1, bond.atom2) < atom_count; });
}

bool is_from_checkpoint(const ControlSection& control) {
    return GJFParser::is_geom_check(control) || GJFParser::is_geom_allchk(control);
}

// The atoms of a job itself: those of its list, or the rows of its Z-matrix.
std::size_t own_atoms(const GJFData& data) noexcept { return std::max(data.geom.atom_count(), data.geom.atoms.size()); }

// The number of atoms that bonds may name. The route is interpreted only when they name more than the job has.
std::size_t bound_of(const GJFData& data, const std::vector<Bond>& bonds) {
    const std::size_t count = own_atoms(data);
    return are_below(bonds, count) || !is_from_checkpoint(data.control) ? count : std::max(count, largest_atom_count);
}

void check_atoms(const Bond& bond, std::size_t atom_count) {
    if (std::max(bond.atom1, bond.atom2) >= atom_count) {
        throw GJFParseException("Connectivity references an atom outside the geometry");
    }
    if (bond.atom1 == bond.atom2) {
        throw GJFParseException("Connectivity contains a self bond");
    }
}

}  // namespace

void check_bond_atoms(const GJFData& data, const std::vector<Bond>& bonds) {
    const std::size_t atom_count = bound_of(data, bonds);
    for (const Bond& bond : bonds) {
        check_atoms(bond, atom_count);
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
    const std::size_t atom_count = bound_of(data, connectivity->bonds);
    for (const Bond& bond : connectivity->bonds) {
        check_atoms(bond, atom_count);
        if (!std::isfinite(bond.order)) {
            throw GJFParseException("Connectivity contains a non-finite bond order");
        }
    }
}

void settle_bonds(GJFData& data) {
    for (ExtraInputSection& section : data.extra_inputs) {
        if (section.is_connectivity() && section.connectivity() == nullptr) {
            section.assign_text(section.kind, section.text());
        }
        if (ConnectivitySection* connectivity = section.mutable_connectivity()) {
            for (Bond& bond : connectivity->bonds) {
                if (bond.atom2 < bond.atom1) {
                    std::swap(bond.atom1, bond.atom2);
                }
            }
        }
    }
}

bool name_atoms_elsewhere(const GJFData& data, const std::vector<Bond>& bonds) {
    return !are_below(bonds, data.geom.atoms.size()) &&
           (data.geom.format == GeometryFormat::ZMatrix || is_from_checkpoint(data.control));
}

void check_route_for_bonds(const GJFData& data, const ControlSection& control) {
    const ConnectivitySection* connectivity = data.connectivity();
    if (connectivity != nullptr && !are_below(connectivity->bonds, own_atoms(data)) && is_from_checkpoint(data.control) &&
        !is_from_checkpoint(control)) {
        throw GJFParseException("The bonds name atoms of the checkpoint, which the changed route would not read");
    }
}

}  // namespace quor::input::gaussian

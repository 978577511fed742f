// The charge and multiplicity pairs of a molecule, and its size.
#include <gjf/core/job/geometry.hpp>

namespace quor::input::gaussian {

std::vector<ChargeSpinPair> GeomSection::charge_spin_pairs() const {
    std::vector<ChargeSpinPair> pairs;
    if (multiplicity < 1 && additional_pairs.empty()) {
        return pairs;
    }
    pairs.reserve(additional_pairs.size() + 1);
    pairs.push_back({charge, multiplicity});
    pairs.insert(pairs.end(), additional_pairs.begin(), additional_pairs.end());
    return pairs;
}

void GeomSection::set_charge_spin_pairs(const std::vector<ChargeSpinPair>& pairs) {
    if (pairs.empty()) {
        charge = 0;
        multiplicity = 0;
        additional_pairs.clear();
        return;
    }
    std::vector<ChargeSpinPair> rest(pairs.begin() + 1, pairs.end());
    charge = pairs.front().charge;
    multiplicity = pairs.front().multiplicity;
    additional_pairs = std::move(rest);
}

bool is_cartesian(const ZMatrixEntry& row) noexcept {
    return row.dihedral && row.dihedral->atom == 0 && row.bond->atom == 0;
}

std::size_t GeomSection::atom_count() const noexcept {
    return format == GeometryFormat::ZMatrix ? zmatrix_entries.size() : atoms.size();
}

}  // namespace quor::input::gaussian

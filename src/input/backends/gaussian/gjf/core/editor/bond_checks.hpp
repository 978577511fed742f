// The checks that every job of an editor passes. Private to the editor room.
#pragma once

#include <gjf/core/job/gjf_data.hpp>

#include <vector>

namespace quor::input::gaussian {

/// Throws for a second connectivity section, and for a bond outside the molecule, to itself or with an order that is not
/// finite.
///
/// Where a job takes its molecule from a checkpoint and brings no atoms, `largest_atom_count` bounds the atom numbers.
void check_bonds(const GJFData& data);

/// Throws for the first bond outside the molecule or from an atom to itself.
void check_bond_atoms(const GJFData& data, const std::vector<Bond>& bonds);

}  // namespace quor::input::gaussian

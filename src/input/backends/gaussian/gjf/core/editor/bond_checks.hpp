// The checks that every job of an editor passes. Private to the editor room.
#pragma once

#include <gjf/core/job/gjf_data.hpp>

#include <vector>

namespace quor::input::gaussian {

/// Throws for a second connectivity section, and for a bond outside the molecule, to itself or with an order that is not
/// finite.
///
/// Bonds of a Z-matrix name its rows, or the atoms that were added beside them. Where a job takes its molecule from a
/// checkpoint, `largest_atom_count` bounds the atom numbers.
void check_bonds(const GJFData& data);

/// Throws for the first bond outside the molecule or from an atom to itself.
void check_bond_atoms(const GJFData& data, const std::vector<Bond>& bonds);

/// Tells whether bonds name numbers behind the last atom of the list that a new atom moves up. Rows of a Z-matrix and atoms
/// of a checkpoint keep theirs.
bool are_moved_by_a_new_atom(const GJFData& data, const std::vector<Bond>& bonds);

}  // namespace quor::input::gaussian

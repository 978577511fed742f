// The checks that every job of an editor passes. Private to the room.
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

/// Brings bonds into the form that the model has: those under a section's kind that were given as text are read, and the
/// smaller atom stands first. Throws for a text that is no list of bonds.
void settle_bonds(GJFData& data);

/// Tells whether bonds name atoms that are not in the atom list: rows of a Z-matrix, or atoms of a checkpoint. They keep
/// their numbers when the list changes.
bool name_atoms_elsewhere(const GJFData& data, const std::vector<Bond>& bonds);

/// Throws when the bonds of a job name atoms of its checkpoint, and a route in place of its own would not read that.
void check_route_for_bonds(const GJFData& data, const ControlSection& control);

}  // namespace quor::input::gaussian

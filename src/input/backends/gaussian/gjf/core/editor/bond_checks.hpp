// The checks that every job of an editor passes. Private to the editor room.
#pragma once

#include <gjf/core/job/gjf_data.hpp>

namespace quor::input::gaussian {

/// Throws for a second connectivity section, and for a bond outside the molecule, to itself or with an order that is not
/// finite.
///
/// A job that takes its molecule from a checkpoint and brings no atoms does not bound the atom numbers.
void check_bonds(const GJFData& data);

/// Throws for a bond outside the molecule or from an atom to itself.
void check_bond_atoms(const GJFData& data, const Bond& bond);

}  // namespace quor::input::gaussian

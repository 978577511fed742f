// What is told of atoms: their names, places and neighbours, and the coordinates between them. Private to the library.
#pragma once

#include <gjf/core/job/positions.hpp>

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// Returns the label of an atom, counted from 1, as it is written; empty when there is no such atom.
std::string_view label_of(const GJFData& job, std::size_t atom);

/// Tells the atom of a number from 1: "atom 3 of 12, `O`, at 0.000 0.000 1.430", and the atoms bonded to it: those of the
/// connectivity, or else those near it.
std::string atom_text(const GJFData& job, const std::vector<AtomPosition>& atoms, std::size_t number);

/// Tells the distance, angle or dihedral of two, three or four atoms by their numbers: "distance 1-2: 1.430 Å"; empty when
/// it is not defined.
std::string coordinate_text(const std::vector<AtomPosition>& atoms, std::span<const std::size_t> numbers);

}  // namespace quor::input::gaussian

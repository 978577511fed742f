// The bond list of a job, its text form and its renumbering.
#pragma once

#include <core/export.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// A bond between two atoms counted from 0, the smaller index first. Equality compares the atoms and not the order.
struct Bond {
    std::uint64_t atom1 = 0;
    std::uint64_t atom2 = 0;
    double order = 0;  ///< 1 single, 1.5 aromatic, 2 double; any value is kept

    friend bool operator==(const Bond& a, const Bond& b) noexcept { return a.atom1 == b.atom1 && a.atom2 == b.atom2; }
    friend bool operator!=(const Bond& a, const Bond& b) noexcept { return !(a == b); }
};

/// The bonds of a job in file order; one pair of atoms may occur more than once. Indices count from 0 in memory and from 1
/// in text.
struct QUOR_GJF_API ConnectivitySection {
    ConnectivitySection();
    ConnectivitySection(const ConnectivitySection& other);
    ConnectivitySection(ConnectivitySection&& other) noexcept;
    ConnectivitySection& operator=(const ConnectivitySection& other);
    ConnectivitySection& operator=(ConnectivitySection&& other) noexcept;
    ~ConnectivitySection();

    std::vector<Bond> bonds;

    /// Replaces the bonds with those of "i j1 o1 j2 o2 ..." lines; a "!" begins a comment. Throws `GJFParseException` for a
    /// malformed line, leaving the bonds read before it and the whole pairs of that line.
    void parse_from_lines(const std::vector<std::string>& lines);
    /// Does the same for `count` lines that are held elsewhere.
    void parse_from_views(const std::string_view* lines, std::size_t count);
    /// Writes one line an atom, up to the highest atom that has a bond.
    std::vector<std::string> to_lines() const;
    /// Writes `atom_count` lines; with 0, up to the highest atom that has a bond. Orders have one decimal.
    std::vector<std::string> to_lines_with_atom_count(std::size_t atom_count) const;

    /// Returns the order of the first bond between two atoms, 0 when there is none.
    double get_bond_order(std::size_t i, std::size_t j) const;
    /// Sets the first bond between two atoms or adds one; an order that is not above 0 removes all of them.
    void set_bond_order(std::size_t i, std::size_t j, double order);
    void remove_bond(std::size_t i, std::size_t j);
    /// Returns the partners of an atom in storage order, one for each bond.
    std::vector<std::size_t> get_connected_atoms(std::size_t i) const;

    /// Drops the bonds of an atom that is taken out and renumbers the rest.
    void remove_atom(std::size_t i);
    /// Renumbers for a new atom at `i`, which has no bonds.
    void insert_atom(std::size_t i);
    /// Renumbers for an atom taken out at `from` and put back at `to`.
    void move_atom(std::size_t from, std::size_t to);
};

}  // namespace quor::input::gaussian

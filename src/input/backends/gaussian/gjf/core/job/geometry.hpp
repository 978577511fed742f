// The molecule of a job: charge and multiplicity pairs, and its Cartesian or Z-matrix specification.
#pragma once

#include <core/export.hpp>
#include <gjf/core/job/atom.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quor::input::gaussian {

enum class GeometryFormat : std::int32_t { Cartesian = 0, ZMatrix = 1 };

/// Bounds the atom numbers of a job whose molecule stands in a checkpoint: no molecule has more atoms, and connectivity is
/// written with a line for each of them.
inline constexpr std::size_t largest_atom_count = 1'000'000;

struct ChargeSpinPair {
    std::int32_t charge = 0;
    std::int32_t multiplicity = 0;
};

/// A reference of a Z-matrix row: an atom number counted from 1 (0 where the row gives coordinates), and a number or a
/// variable name as written.
struct ZMatrixReference {
    std::int32_t atom = 0;
    std::string value;
};

/// One Z-matrix row.
struct QUOR_GJF_API ZMatrixEntry {
    ZMatrixEntry();
    ZMatrixEntry(const ZMatrixEntry& other);
    ZMatrixEntry(ZMatrixEntry&& other) noexcept;
    ZMatrixEntry& operator=(const ZMatrixEntry& other);
    ZMatrixEntry& operator=(ZMatrixEntry&& other) noexcept;
    ~ZMatrixEntry();

    AtomInfo info;
    std::optional<ZMatrixReference> bond;      ///< length
    std::optional<ZMatrixReference> angle;     ///< degrees
    std::optional<ZMatrixReference> dihedral;  ///< degrees
};

/// Tells whether a row gives coordinates: its three values are x, y and z, and each atom is 0.
QUOR_GJF_API bool is_cartesian(const ZMatrixEntry& row) noexcept;

/// A named value of the molecule specification, kept as written.
struct ZMatrixVariable {
    std::string name;
    std::string value;
};

/// Charge, multiplicity and molecule specification of one job.
struct QUOR_GJF_API GeomSection {
    GeomSection();
    GeomSection(const GeomSection& other);
    GeomSection(GeomSection&& other) noexcept;
    GeomSection& operator=(const GeomSection& other);
    GeomSection& operator=(GeomSection&& other) noexcept;
    ~GeomSection();

    std::int32_t charge = 0;
    std::int32_t multiplicity = 0;                 ///< of the first pair; 0 when no pair was given
    std::vector<ChargeSpinPair> additional_pairs;  ///< the pairs after the first
    std::vector<AtomCoord> atoms;                  ///< of a Cartesian specification, in file order
    GeometryFormat format = GeometryFormat::Cartesian;
    std::vector<std::string> molecule_lines;  ///< every line after the charge line, as read
    std::vector<ZMatrixEntry> zmatrix_entries;
    std::vector<ZMatrixVariable> variables;            ///< of a Z-matrix
    std::vector<ZMatrixVariable> constants;            ///< of a Z-matrix
    std::vector<ZMatrixVariable> cartesian_variables;  ///< of symbolic Cartesian coordinates

    /// Returns all pairs, the primary one first; none when `multiplicity` is below 1 and there are no additional pairs.
    std::vector<ChargeSpinPair> charge_spin_pairs() const;
    /// Sets all pairs; an empty list sets charge and multiplicity to 0.
    void set_charge_spin_pairs(const std::vector<ChargeSpinPair>& pairs);
    /// Returns the number of atoms: of `atoms`, or of the Z-matrix rows.
    std::size_t atom_count() const noexcept;
};

}  // namespace quor::input::gaussian

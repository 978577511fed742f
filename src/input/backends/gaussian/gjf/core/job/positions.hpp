// Where the atoms of a job stand: symbolic coordinates and Z-matrices resolved.
#pragma once

#include <core/export.hpp>
#include <gjf/core/chemistry/space.hpp>
#include <gjf/core/job/gjf_data.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// Why an atom has no position.
enum class PositionFault {
    None,
    NoValue,           ///< a name that is given no value, or a value that is no number
    SelfReference,     ///< a name whose value leads back to it
    NotFinite,         ///< infinite or no number, or farther out than any molecule reaches
    MissingField,      ///< a row that lacks a length, an angle or a dihedral
    LaterRow,          ///< a row that refers to itself, to a row below it, or to none at all
    RepeatedRow,       ///< a row that refers to one row twice
    AngleRange,        ///< an angle below 0 or above 180 degrees
    LostReference,     ///< a row that refers to an atom without position
    Collinear,         ///< a dihedral with three atoms on one line, or two of them on one spot
    ImpossibleAngles,  ///< two angles that no direction makes
};

/// One atom, ghost, dummy atom or translation vector, and where it stands.
struct AtomPosition {
    Species species;
    std::optional<Position> position;  ///< in ångström; of a translation vector the vector
    PositionFault fault = PositionFault::None;
    std::string cause;  ///< the name, value or row number that the fault is about, as written; may be empty
};

/// Says why an atom, counted from 1, has no position: "r has no value", "atom 3 refers to a row twice"; empty when it has
/// one.
QUOR_GJF_API std::string position_fault_text(const AtomPosition& atom, std::size_t number);

/// Returns where each atom of a job stands, one entry for each of `atoms` or, of a Z-matrix, of `zmatrix_entries`.
///
/// Cartesian coordinates stand as written. A Z-matrix begins at the origin, with its second atom on the positive z axis and
/// its third in the half of the xz plane where x is positive. Names are those of `variables`, `constants` and
/// `cartesian_variables`, in any letter case, with a sign before them or none; of a value that a scan steps through the
/// first number counts. Lengths in bohr and angles in radian are taken as such where the route says so (`units`). Whether a
/// row's dihedral is a second angle is read from its line among `molecule_lines`.
QUOR_GJF_API std::vector<AtomPosition> positions(const GJFData& job);

/// Returns the length in ångström of one unit of the job's coordinates: 1, or a bohr where the route says so (`units=au`).
QUOR_GJF_API double length_unit(const GJFData& job);

}  // namespace quor::input::gaussian

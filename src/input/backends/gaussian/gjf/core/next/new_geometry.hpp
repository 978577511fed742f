// Puts the positions of an output into the molecule of a job. Private to the room.
#pragma once

#include <gjf/core/output/output_reader.hpp>

#include <string>
#include <vector>

namespace quor::input::gaussian {

/// How positions are put in.
struct NewGeometry {
    OutputGeometry geometry;
    bool cartesian = false;  ///< a Z-matrix becomes Cartesian coordinates
};

/// Returns the text with the positions in its first job: numbers alone are written anew. Atoms are told by element and
/// order. Throws `std::runtime_error` with the first that differs, where something else of the job holds in another frame,
/// and where a Z-matrix cannot take them.
std::string with_geometry(const std::string& text, const NewGeometry& wanted);

/// Returns the lines of atoms, as a job has them, without a blank line behind.
std::string atom_lines(const OutputGeometry& geometry, const std::vector<std::string>& labels);

}  // namespace quor::input::gaussian

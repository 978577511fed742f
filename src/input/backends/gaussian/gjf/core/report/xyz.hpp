// Jobs as XYZ files, for programs that know no job files.
#pragma once

#include <core/export.hpp>
#include <gjf/core/job/gjf_data.hpp>

#include <cstddef>
#include <string>

namespace quor::input::gaussian {

/// A molecule as the lines of an XYZ file.
struct XyzText {
    std::string text;         ///< count, title, and a line an atom in ångström; empty where there are no positions
    std::string problem;      ///< why there are none; empty where there are
    std::size_t dummies = 0;  ///< dummy atoms, ghosts and translation vectors that were left out
    std::size_t ghosts = 0;
    std::size_t vectors = 0;
};

/// Resolves the positions of a job, whatever its units, and symbolic coordinates and Z-matrices too.
///
/// Dummy atoms and ghosts, which no other program knows as such, are left out. Three translation vectors become the lattice
/// of the title line, as extended XYZ has it; fewer are left out.
QUOR_GJF_API XyzText xyz_text(const GJFData& job);

}  // namespace quor::input::gaussian

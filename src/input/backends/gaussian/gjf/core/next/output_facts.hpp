// What a new job needs of an output beyond its summary: vibrations, the points of a scan, and what is echoed of the old
// job. Private to the room.
#pragma once

#include <gjf/core/output/output_summary.hpp>

#include <optional>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// One imaginary vibration.
struct ImaginaryMode {
    double frequency = 0;
    std::vector<int> atoms;  ///< from 1
    std::vector<std::array<double, 3>> displacements;
};

/// The label of an atom as it is echoed, with its freeze code.
struct EchoedAtom {
    std::string label;
    std::string freeze;  ///< empty for none
};

struct OutputFacts {
    std::vector<ImaginaryMode> imaginary;  ///< of the last vibrations, the lowest first
    std::vector<OutputPoint> scan;         ///< the last one with a finished energy of each point
    std::optional<OutputGeometry> first;   ///< of the user's last step
    std::vector<EchoedAtom> atoms;         ///< of the user's last step that echoed any
    std::string modredundant;              ///< the lines of that section as they are echoed
};

/// Reads an output again; throws `OutputError`.
OutputFacts read_output_facts(const std::string& path);

}  // namespace quor::input::gaussian

// Gives the variables and numbers of a Z-matrix the values that positions have. Private to the room.
#pragma once

#include <gjf/core/output/output_reader.hpp>
#include <gjf/core/reader/job_layout.hpp>

#include <string>
#include <vector>

namespace quor::input::gaussian {

/// Returns the text with the values of the first job's Z-matrix, of which `places` has an atom for each row, or null where
/// its position is not known. Throws `std::runtime_error` where it cannot take them.
std::string with_zmatrix_values(const std::string& text, const JobReading& reading,
                                const std::vector<const OutputAtom*>& places);

}  // namespace quor::input::gaussian

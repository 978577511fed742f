// Whether a recipe fits a job. Private to the room.
#pragma once

#include <gjf/core/next/recipes.hpp>

#include <cstddef>

namespace quor::input::gaussian {

/// Tells whether what a recipe asks of the old job holds, counted from 0.
bool fits_job(const Recipe& recipe, const JobFile& file, std::size_t job);

/// Counts the steps of an output that the user asked for, not Gaussian.
std::size_t user_steps(const OutputSummary& summary);

}  // namespace quor::input::gaussian

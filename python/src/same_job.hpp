// Compares two jobs part by part.
#pragma once

#include <gjf/core/job/job_comparison.hpp>

namespace quor_python {

/// Names the first part in which two jobs differ, as in "title", or returns null when they say the same.
///
/// What says nothing does not count, and a section of unknown kind equals any of the same text.
const char* first_difference(const quor::input::gaussian::GJFData& a, const quor::input::gaussian::GJFData& b,
                             quor::input::gaussian::JobComparison::Coordinates coordinates);

}  // namespace quor_python

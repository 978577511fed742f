// Compares two jobs for equality in Python.
#include "same_job.hpp"

#include <optional>

namespace quor_python {

using namespace quor::input::gaussian;

const char* first_difference(const GJFData& a, const GJFData& b, JobComparison::Coordinates coordinates) {
    JobComparison comparison;
    comparison.coordinates = coordinates;
    comparison.unknown_sections = JobComparison::UnknownSections::OfBoth;
    comparison.empty_values = false;
    const std::optional<JobDifference> difference = find_difference(a, b, comparison);
    return difference ? job_part_name(difference->part) : nullptr;
}

}  // namespace quor_python

// How large a job is: its basis functions and its electrons.
#pragma once

#include <core/export.hpp>
#include <gjf/core/job/gjf_data.hpp>

#include <cstdint>
#include <optional>
#include <string>

namespace quor::input::gaussian {

/// What is known of a job's size. Nothing is guessed: what is not known is absent, with the reason beside it.
struct JobSize {
    std::optional<std::int64_t> functions;  ///< contracted basis functions, as Gaussian prints them behind NBasis
    std::optional<std::int64_t> electrons;  ///< without those that core potentials stand for
    std::int64_t core_electrons = 0;        ///< that core potentials stand for; 0 when `electrons` is absent
    /// Whether the functions come from a source that resembles Gaussian's own data but is not certain to agree with it.
    bool doubtful = false;
    std::string no_functions;  ///< why there are no `functions`; empty when there are
    std::string no_electrons;  ///< why there are no `electrons`; empty when there are
};

/// Counts the basis functions and electrons of a job, by its route, its atoms and its sections of basis sets and potentials.
///
/// Ghost atoms have functions and no electrons. Of a composite method the functions are those of the basis set that it
/// begins with. Without a basis set in the route STO-3G is counted, as Gaussian takes it. Uses the default vocabulary and
/// the facts beside it; never throws for anything that the job says.
QUOR_GJF_API JobSize job_size(const GJFData& job);

}  // namespace quor::input::gaussian

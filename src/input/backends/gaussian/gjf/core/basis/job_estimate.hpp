// What a job asks of the machine: memory, disk, and how its time grows.
#pragma once

#include <core/export.hpp>
#include <gjf/core/basis/job_size.hpp>

#include <cstdint>
#include <optional>
#include <string>

namespace quor::input::gaussian {

/// A number of bytes that a job takes at the least, and the formula that it comes from.
struct LeastBytes {
    std::optional<std::int64_t> bytes;
    std::string formula;  ///< in words of 8 bytes, as "4194304 + 2 N^2"; empty when there is none
    std::string unknown;  ///< why there are no `bytes`; empty when there are
};

/// What is known of a job's needs. N stands for basis functions, O for correlated occupied orbitals, V for empty ones.
struct JobEstimate {
    LeastBytes memory;
    LeastBytes disk;
    std::string cost;          ///< how one energy grows with the job, as "O^2 V^4"; empty when it is not known
    std::string unknown_cost;  ///< why there is no `cost`; empty when there is
};

/// Estimates what a job takes, from the facts about its method and from its size, which `job_size` returned for it.
///
/// Amounts are the least: matrices that every SCF keeps, all integrals where SCF=InCore wants them in memory, the amplitudes
/// of correlated methods. The real ones are larger. Never throws for anything that the job says.
QUOR_GJF_API JobEstimate estimate_job(const GJFData& job, const JobSize& size);

}  // namespace quor::input::gaussian

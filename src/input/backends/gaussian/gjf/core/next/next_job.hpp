// From a job and its output to the next job.
//
// The old job is the base: what the recipe does not name keeps its bytes. Method, basis set, dispersion, charge and
// multiplicity are never changed by a cure. What cannot be done is refused with the reason.
#pragma once

#include <core/export.hpp>
#include <gjf/core/next/recipes.hpp>

#include <stdexcept>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// Tells why there is no next job.
class QUOR_GJF_API NextJobRefused : public std::runtime_error {
   public:
    using std::runtime_error::runtime_error;
};

/// What is wanted.
struct NextWish {
    std::string to;               ///< as --to: "freq", "ts", ...; empty for a cure, and with a route
    std::string route;            ///< in the place of the old job's; empty for none
    bool cartesian = false;       ///< writes Cartesian coordinates in the place of a Z-matrix
    bool force = false;           ///< of an output that does not fit, and with errors that the checker finds
    std::string folder;           ///< where the new job will be; empty: beside the output
    std::string name;             ///< of the new job's file; empty: by the output and what is wanted
    std::vector<Recipe> recipes;  ///< empty: those of the library
};

/// A new job, which lies nowhere yet.
struct NewJob {
    std::string name;  ///< of its file, without folder
    std::string text;
    std::string recipe;                ///< id of the recipe; empty for a route
    int attempt = 0;                   ///< of a cure; 0 otherwise
    std::vector<std::string> remarks;  ///< what was done, what went, what is to be known
};

/// The old job and its output.
struct OldCalculation {
    std::string output_path;
    Diagnosis diagnosis;
    std::string job_path;  ///< empty where there is none beside the output
    std::string job_text;
};

/// Reads an output, or the output beside a job, and what lies beside it. Throws `OutputError`, and `NextJobRefused` where a
/// job has no output beside it.
QUOR_GJF_API OldCalculation read_old_calculation(const std::string& path);

/// Makes the jobs that are wanted: one, or two for the sides of a path. Throws `NextJobRefused`.
QUOR_GJF_API std::vector<NewJob> next_jobs(const OldCalculation& old, const NextWish& wish);

/// Makes the next attempt to cure what an output shows; none where it ended normally and nothing is wrong. Throws
/// `NextJobRefused`.
QUOR_GJF_API std::vector<NewJob> retry_jobs(const OldCalculation& old, const NextWish& wish);

}  // namespace quor::input::gaussian

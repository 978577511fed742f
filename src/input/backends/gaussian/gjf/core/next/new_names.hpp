// Names of new jobs, beside those of the old. Private to the room.
#pragma once

#include <gjf/core/next/next_job.hpp>

#include <string>

namespace quor::input::gaussian {

/// Returns "opt" of "dir/opt.log.gz".
std::string output_stem(const OldCalculation& old);
/// Returns "opt_r1" of "opt", and "opt_r2" of "opt_r1".
std::string retry_stem(const OldCalculation& old);
/// Returns the extension of the old job, or ".gjf".
std::string new_extension(const OldCalculation& old);
/// Returns the folder in which the new job will be.
std::string new_folder(const OldCalculation& old, const NextWish& wish);
/// Returns a path as it is named from a folder.
std::string path_from(const std::string& path, const std::string& folder);

}  // namespace quor::input::gaussian

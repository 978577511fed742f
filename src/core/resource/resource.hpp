// Finds files a program needs at run time: by environment variable, beside a base folder, or near the loaded library.
#pragma once

#include <core/export.hpp>

#include <string>
#include <vector>

namespace quor::core::resource {

/// Returns the path of the first resource file found, or an empty text; the path is usable as it stands.
///
/// Searched in this order:
/// 1. each variable of `file_variables`: its value, when that names a regular file;
/// 2. each variable of `folder_variables`: the `candidates` below the folder it names;
/// 3. the `candidates` (relative paths, in order) below `base`, then below each of up to `depth` parent folders, nearest
/// first.
///    With an empty base so from the current folder, then from the folder that holds this library;
/// 4. each entry of `fallbacks`: a path taken as it stands.
/// Paths found in step 3 are absolute.
QUOR_GJF_API std::string search_file(const std::vector<std::string>& file_variables,
                                     const std::vector<std::string>& folder_variables,
                                     const std::vector<std::string>& candidates, const std::string& base,
                                     const std::vector<std::string>& fallbacks, int depth);

/// Returns the first of `candidates` below the folder that holds this library, then below each of up to `depth` parent
/// folders, nearest first; an empty text when there is none.
QUOR_GJF_API std::string search_near_library(const std::vector<std::string>& candidates, int depth);

/// Returns the value of an environment variable, or an empty text when it is unset.
QUOR_GJF_API std::string getenv_string(const std::string& name);

/// Tells whether `path` names an existing regular file (symbolic links are followed).
QUOR_GJF_API bool is_regular_file_path(const std::string& path);

}  // namespace quor::core::resource

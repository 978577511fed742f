// Looks files up by environment variable, upwards from a folder, and upwards from where this library was loaded from.
//
// Of several candidates the one in the nearest folder wins, so that an installed copy finds its own files even when it lies
// inside the tree of another copy.
#include <core/resource/resource.hpp>

#include <dlfcn.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace quor::core::resource {

namespace {

namespace fs = std::filesystem;

/// Makes a folder absolute and free of "." and ".."; empty when that fails.
fs::path absolute_folder(const fs::path& folder) {
    std::error_code error;
    fs::path absolute = fs::absolute(folder, error);
    if (error) {
        return {};
    }
    for (const fs::path& part : absolute) {
        if (part == "..") {  // after a symbolic link ".." cannot be taken out of the text
            absolute = fs::weakly_canonical(absolute, error);
            break;
        }
    }
    if (error) {
        return {};
    }
    absolute = absolute.lexically_normal();
    return absolute.has_filename() ? absolute : absolute.parent_path();  // a slash at the end is no folder more
}

/// Returns the folder this library was loaded from, or an empty path.
fs::path library_folder() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&library_folder), &info) == 0 || info.dli_fname == nullptr) {
        return {};
    }
    return absolute_folder(fs::path(info.dli_fname)).parent_path();
}

std::string search_folder(const fs::path& folder, const std::vector<std::string>& candidates) {
    for (const std::string& candidate : candidates) {
        if (candidate.empty()) {
            continue;
        }
        std::string path = (folder / candidate).string();
        if (is_regular_file_path(path)) {
            return path;
        }
    }
    return {};
}

/// Searches `start` and up to `depth` folders above it.
std::string search_upwards(const fs::path& start, const std::vector<std::string>& candidates, int depth) {
    fs::path folder = start;
    for (int level = 0; level <= depth && !folder.empty(); ++level) {
        std::string path = search_folder(folder, candidates);
        if (!path.empty()) {
            return path;
        }
        const fs::path parent = folder.parent_path();
        if (parent == folder) {
            break;
        }
        folder = parent;
    }
    return {};
}

// Not the exported function: of two copies of this library each asks for its own folder.
std::string search_beside_library(const std::vector<std::string>& candidates, int depth) {
    const fs::path folder = library_folder();
    if (folder.empty()) {
        return {};
    }
    std::string path = search_upwards(folder, candidates, depth);
    if (!path.empty()) {
        return path;
    }
    std::error_code error;
    const fs::path real_folder = fs::canonical(folder, error);
    return error || real_folder == folder ? std::string{} : search_upwards(real_folder, candidates, depth);
}

std::string search_bases(const std::vector<std::string>& candidates, const std::string& base, int depth) {
    if (!base.empty()) {
        return search_upwards(absolute_folder(base), candidates, depth);
    }
    std::error_code error;
    const fs::path current = fs::current_path(error);
    std::string path = error ? std::string{} : search_upwards(current, candidates, depth);
    return path.empty() ? search_beside_library(candidates, depth) : path;
}

}  // namespace

std::string search_near_library(const std::vector<std::string>& candidates, int depth) {
    return search_beside_library(candidates, depth);
}

std::string getenv_string(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value == nullptr ? std::string{} : std::string(value);
}

bool is_regular_file_path(const std::string& path) {
    if (path.empty() || path.find('\0') != std::string::npos) {
        return false;
    }
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

std::string search_file(const std::vector<std::string>& file_variables, const std::vector<std::string>& folder_variables,
                        const std::vector<std::string>& candidates, const std::string& base,
                        const std::vector<std::string>& fallbacks, int depth) {
    for (const std::string& variable : file_variables) {
        std::string path = getenv_string(variable);
        if (is_regular_file_path(path)) {
            return path;
        }
    }
    for (const std::string& variable : folder_variables) {
        const std::string folder = getenv_string(variable);
        std::string path = folder.empty() ? std::string{} : search_folder(folder, candidates);
        if (!path.empty()) {
            return path;
        }
    }
    std::string path = search_bases(candidates, base, depth);
    if (!path.empty()) {
        return path;
    }
    for (const std::string& fallback : fallbacks) {
        if (is_regular_file_path(fallback)) {
            return fallback;
        }
    }
    return {};
}

}  // namespace quor::core::resource

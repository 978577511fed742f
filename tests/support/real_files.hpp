// Real job files, a collection that this tree does not carry: the variable QUOR_GJF_REAL_FILES names its folder.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace quor::test {

/// What a test says that is skipped for want of them.
inline constexpr const char* no_real_files = "QUOR_GJF_REAL_FILES names no folder of real job files";

/// Returns the folder, empty where none is named. A name that leads nowhere is a mistake of the caller: nothing is skipped
/// for it.
inline std::filesystem::path real_files_folder() {
    const char* name = std::getenv("QUOR_GJF_REAL_FILES");
    if (name == nullptr || *name == '\0') {
        return {};
    }
    if (!std::filesystem::is_directory(name)) {
        throw std::runtime_error("QUOR_GJF_REAL_FILES names " + std::string(name) + ", which is no folder");
    }
    return name;
}

}  // namespace quor::test

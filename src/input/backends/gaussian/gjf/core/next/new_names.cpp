// Makes names by the stem of the output.
#include <gjf/core/next/new_names.hpp>

#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace quor::input::gaussian {

namespace fs = std::filesystem;

std::string output_stem(const OldCalculation& old) {
    fs::path name = fs::path(old.output_path).filename();
    if (name.extension() == ".gz" || name.extension() == ".xz") {
        name = name.stem();
    }
    return name.stem().string();
}

std::string retry_stem(const OldCalculation& old) {
    const std::string stem = output_stem(old);
    const std::size_t mark = stem.rfind("_r");
    const std::string digits = mark == std::string::npos ? std::string() : stem.substr(mark + 2);
    const bool is_retry = !digits.empty() && digits.size() < 6 && std::all_of(digits.begin(), digits.end(), is_digit);
    return is_retry ? stem.substr(0, mark + 2) + std::to_string(std::stoi(digits) + 1) : stem + "_r1";
}

std::string new_extension(const OldCalculation& old) {
    return old.job_path.empty() ? ".gjf" : fs::path(old.job_path).extension().string();
}

std::string new_folder(const OldCalculation& old, const NextWish& wish) {
    return wish.folder.empty() ? fs::path(old.output_path).parent_path().string() : wish.folder;
}

std::string path_from(const std::string& path, const std::string& folder) {
    std::error_code error;
    const fs::path from = fs::weakly_canonical(folder.empty() ? fs::path(".") : fs::path(folder), error);
    const fs::path target = error ? fs::path(path) : fs::weakly_canonical(path, error);
    return error ? path : target.lexically_relative(from).string();
}

}  // namespace quor::input::gaussian

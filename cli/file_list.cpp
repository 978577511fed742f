// Walks folders without recursion.
#include "file_list.hpp"

#include "config.hpp"

#include <gjf/gjf.hpp>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

namespace quor_gjf {
namespace {

namespace fs = std::filesystem;

using namespace quor::input::gaussian;

constexpr std::array<std::string_view, 4> job_extensions = {".gjf", ".com", ".gau", ".inp"};
constexpr std::string_view doubtful_extension = ".inp";

bool ends_in(const std::string& name, std::string_view extension) {
    return name.size() > extension.size() &&
           SimpleYAMLParser::to_lower(name.substr(name.size() - extension.size())) == extension;
}

bool is_job_file_name(const std::string& name) {
    return std::any_of(job_extensions.begin(), job_extensions.end(),
                       [&](std::string_view extension) { return ends_in(name, extension); });
}

bool is_output_name(const std::string& name) {
    const bool is_packed = ends_in(name, ".gz") || ends_in(name, ".xz");
    const std::string plain = is_packed ? name.substr(0, name.size() - 3) : name;
    return ends_in(plain, ".log") || ends_in(plain, ".out");
}

bool is_excluded_by_file(const std::string& path) {
    try {
        const Setting* setting = configurations().for_file(path)->find({"files", "exclude"});
        return setting != nullptr && names_path(*setting, path);
    } catch (const ConfigurationError&) {
        return false;  // told of with the files that it is for
    }
}

}  // namespace

std::string passed_over_summary(const PassedOver& counts) {
    std::string text;
    const auto add = [&text](std::size_t count, const char* why) {
        text += count == 0 ? std::string() : (text.empty() ? "passed over: " : ", ") + std::to_string(count) + ' ' + why;
    };
    add(counts.hidden, "hidden");
    add(counts.excluded, "excluded");
    add(counts.foreign, "of *.inp without a Gaussian job");
    return text.empty() ? text : text + '\n';
}

FileList::FileList(std::vector<std::string> arguments, Walk walk)
    : arguments_(std::move(arguments)), walk_(std::move(walk)) {}

bool FileList::is_excluded(const std::string& path) const {
    std::error_code error;
    const std::string below = walk_.exclude.empty() ? std::string() : path_below(fs::current_path(error).string(), path);
    return std::any_of(walk_.exclude.begin(), walk_.exclude.end(),
                       [&](const std::string& pattern) { return path_matches(pattern, below); }) ||
           is_excluded_by_file(path);
}

std::string FileList::name_of(const fs::directory_entry& entry) {
    std::error_code error;
    std::string name = entry.path().filename().string();
    const bool link = entry.is_symlink(error);
    const bool folder = !link && entry.is_directory(error);
    // A pipe would be waited on for ever; a link that leads nowhere is given, so that it is told of.
    const bool file = entry.is_regular_file(error) || (link && !entry.exists(error));
    if (!folder && !(file && (walk_.outputs ? is_output_name(name) : is_job_file_name(name)))) {
        return {};
    }
    if (name.front() == '.' && !walk_.hidden) {
        ++passed_over_.hidden;
        return {};
    }
    if (is_excluded(entry.path().string())) {
        ++passed_over_.excluded;
        return {};
    }
    return folder ? name + '/' : name;
}

std::optional<ListedFile> FileList::next() {
    while (argument_ < arguments_.size() || !open_.empty()) {
        std::optional<ListedFile> file = open_.empty() ? next_argument() : next_in_folder();
        if (file) {
            ++given_;
            return file;
        }
    }
    return std::nullopt;
}

std::optional<ListedFile> FileList::next_argument() {
    const std::string& path = arguments_[argument_++];
    given_ = 0;
    std::error_code error;
    if (path != "-" && walk_.force_exclude && is_excluded(path)) {
        ++passed_over_.excluded;
        return std::nullopt;
    }
    if (path == "-" || !fs::is_directory(path, error)) {
        return ListedFile{path, {}};
    }
    return open_folder(path);
}

std::optional<ListedFile> FileList::next_in_folder() {
    Folder& folder = open_.back();
    if (folder.next == folder.names.size()) {
        const std::string path = std::move(folder.path);
        open_.pop_back();
        if (open_.empty() && given_ == 0 && passed_over_.hidden + passed_over_.excluded == 0) {
            return ListedFile{path, walk_.outputs ? "no output (*.log, *.out) is in this folder"
                                                  : "no job file (*.gjf, *.com, *.gau, *.inp) is in this folder"};
        }
        return std::nullopt;
    }
    const std::string& name = folder.names[folder.next++];
    std::string path = folder.path;
    if (path.back() != '/') {
        path += '/';
    }
    path += name;
    if (name.back() != '/') {
        return ListedFile{path, {}, ends_in(name, doubtful_extension)};
    }
    path.pop_back();
    return open_folder(path);
}

std::optional<ListedFile> FileList::open_folder(const std::string& path) {
    std::error_code error;
    Folder folder{path, {}, 0};
    fs::directory_iterator entries(path, error);
    while (!error && entries != fs::directory_iterator()) {
        std::string name = name_of(*entries);
        if (!name.empty()) {
            folder.names.push_back(std::move(name));
        }
        entries.increment(error);
    }
    if (error) {
        return ListedFile{path, "cannot read folder: " + error.message()};
    }
    std::sort(folder.names.begin(), folder.names.end());
    open_.push_back(std::move(folder));
    return std::nullopt;
}

}  // namespace quor_gjf

// Walks folders without recursion.
#include "file_list.hpp"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

namespace quor_gjf {
namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 4> job_extensions = {".gjf", ".com", ".gau", ".inp"};

bool is_job_file_name(std::string name) {
    for (char& c : name) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return std::any_of(job_extensions.begin(), job_extensions.end(), [&](std::string_view extension) {
        return name.size() > extension.size() && std::string_view(name).ends_with(extension);
    });
}

// Returns the name of an entry that is walked or read, "" of any other.
std::string name_of(const fs::directory_entry& entry) {
    std::error_code error;
    std::string name = entry.path().filename().string();
    const bool link = entry.is_symlink(error);
    if (!link && entry.is_directory(error)) {
        return name + '/';
    }
    // A pipe would be waited on for ever; a link that leads nowhere is given, so that it is told of.
    const bool file = entry.is_regular_file(error) || (link && !entry.exists(error));
    return file && is_job_file_name(name) ? name : std::string();
}

}  // namespace

FileList::FileList(std::vector<std::string> arguments) : arguments_(std::move(arguments)) {}

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
        if (open_.empty() && given_ == 0) {
            return ListedFile{path, "no job file (*.gjf, *.com, *.gau, *.inp) is in this folder"};
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
        return ListedFile{path, {}};
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

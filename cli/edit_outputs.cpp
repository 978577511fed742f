// Walks the files once before the work, so that what is wrong is told before anything is written.
#include "edit_outputs.hpp"

#include "terminal.hpp"

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <system_error>
#include <utility>

namespace quor_gjf {
namespace {

namespace fs = std::filesystem;

// One name for a file, however it is written; links are followed.
std::string real_name(const std::string& path) {
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    const fs::path canonical = fs::weakly_canonical(absolute, error);
    return error ? absolute.lexically_normal().string() : canonical.string();
}

}  // namespace

EditOutputs::EditOutputs(std::vector<std::string> arguments, Walk walk, std::string output)
    : arguments_(std::move(arguments)), walk_(std::move(walk)), output_(std::move(output)) {
    for (const std::string& argument : arguments_) {
        std::error_code error;
        if (fs::is_directory(argument, error)) {
            folders_.push_back(argument.back() == '/' ? argument : argument + '/');
        }
    }
    std::error_code error;
    is_file_ = arguments_.size() == 1 && folders_.empty() && !output_.empty() && output_.back() != '/' &&
               !fs::is_directory(output_, error);
}

std::string EditOutputs::path_of(const std::string& input) const {
    if (is_file_) {
        return output_;
    }
    const auto folder =
        std::find_if(folders_.begin(), folders_.end(), [&](const std::string& name) { return input.starts_with(name); });
    const std::string name = folder == folders_.end() ? fs::path(input).filename().string() : input.substr(folder->size());
    return (fs::path(output_) / name).string();
}

std::string EditOutputs::conflict() const {
    if (!output_.empty()) {
        const std::string output = real_name(output_) + '/';
        for (const std::string& folder : folders_) {
            if (output.starts_with(real_name(folder.substr(0, folder.size() - 1)) + '/')) {
                return "the output folder " + printable(output_) + " lies in " + printable(folder) +
                       ", whose files are read";
            }
        }
    }
    std::map<std::string, std::string> inputs;
    std::map<std::string, std::string> outputs;
    FileList files(arguments_, walk_);
    while (const std::optional<ListedFile> file = files.next()) {
        if (!file->problem.empty()) {
            continue;
        }
        const auto [same, is_new] = inputs.emplace(real_name(file->path), file->path);
        if (!is_new) {
            return printable(file->path) + " is named twice" +
                   (same->second == file->path ? "" : ", also as " + printable(same->second));
        }
        if (output_.empty()) {
            continue;
        }
        const auto [other, is_free] = outputs.emplace(path_of(file->path), file->path);
        if (!is_free) {
            return printable(other->second) + " and " + printable(file->path) + " would both be written to " +
                   printable(other->first);
        }
    }
    return {};
}

}  // namespace quor_gjf

// Compares the checkpoints of files by their paths, each taken from the folder that its file is in.
#include "shared_checkpoints.hpp"

#include "input.hpp"

#include <gjf/core/job/link0_keys.hpp>

#include <algorithm>
#include <cstddef>
#include <exception>
#include <filesystem>
#include <system_error>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

constexpr const char* several = "";  // no file has this name

std::string path_of(const std::string& file, const std::string& checkpoint) {
    return (std::filesystem::path(file).parent_path() / checkpoint).lexically_normal().string();
}

// Tells whether an output lies beside a job's file: it has run, so nothing is lost any more that a warning could save.
bool has_run(const std::string& file) {
    std::filesystem::path output = file;
    std::error_code error;
    return std::filesystem::exists(output.replace_extension(".log"), error) ||
           std::filesystem::exists(output.replace_extension(".out"), error);
}

std::size_t begin_of_line(std::string_view content, std::size_t line) {
    std::size_t begin = 0;
    for (; line > 1 && begin < content.size(); --line) {
        begin = std::min(content.find('\n', begin), content.size() - 1) + 1;
    }
    return begin;
}

// Adds a finding about a checkpoint's name at its place among the others.
void add(const char* code, Severity severity, std::string message, std::string hint, const NamedCheckpoint& checkpoint,
         std::string_view content, std::vector<Finding>& findings) {
    Finding finding;
    finding.code = code;
    finding.severity = severity;
    finding.message = std::move(message);
    finding.hint = std::move(hint);
    finding.job = checkpoint.job;
    finding.line = checkpoint.line;
    finding.column = checkpoint.column;
    finding.length = checkpoint.length;
    finding.begin = begin_of_line(content, checkpoint.line) + checkpoint.column - 1;
    finding.end = finding.begin + checkpoint.length;
    findings.insert(std::upper_bound(findings.begin(), findings.end(), finding.line,
                                     [](std::size_t line, const Finding& other) { return line < other.line; }),
                    std::move(finding));
}

// Returns the checkpoints that the %chk lines of a file name; none of a file that cannot be read.
std::vector<std::string> written_by(const std::string& file) {
    std::vector<std::string> checkpoints;
    std::string text;
    try {
        text = read_text(file);
    } catch (const std::exception&) {
        return checkpoints;  // it is told of when its turn comes
    }
    std::string_view rest = text;
    while (!rest.empty()) {
        const std::string_view line = rest.substr(0, std::min(rest.find('\n'), rest.size()));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        const Link0Words words = link0_words(line);
        const Link0Key* key = words.key.empty() ? nullptr : find_link0_key(words.key);
        if (key != nullptr && key->name == "chk") {
            checkpoints.push_back(path_of(file, checkpoint_path(words.value)));
        }
    }
    return checkpoints;
}

}  // namespace

bool SharedCheckpoints::is_written(const std::string& checkpoint, const std::string& reader) {
    if (!writers_) {
        writers_.emplace();
        FileList files(arguments_, walk_);
        while (const std::optional<ListedFile> file = files.next()) {
            for (std::string& written :
                 file->problem.empty() && file->path != "-" ? written_by(file->path) : std::vector<std::string>()) {
                const auto [writer, is_new] = writers_->try_emplace(std::move(written), file->path);
                writer->second = is_new || writer->second == file->path ? file->path : several;
            }
        }
    }
    const auto writer = writers_->find(checkpoint);
    return writer != writers_->end() && writer->second != reader;
}

bool SharedCheckpoints::add_findings(const std::string& path, std::string_view content, const FileCheckpoints& checkpoints,
                                     std::vector<Finding>& findings) {
    const std::size_t before = findings.size();
    for (const NamedCheckpoint& checkpoint : checkpoints.begun) {
        const auto [known, is_new] = files_.try_emplace(path_of(path, checkpoint.path), path);
        if (!is_new && known->second != path && !has_run(path)) {
            add(shared_code, Severity::Warning, "the checkpoint of " + known->second + " is begun here too",
                "give each job a checkpoint of its own: the job that runs later writes over the other's", checkpoint,
                content, findings);
        }
    }
    for (const NamedCheckpoint& checkpoint : checkpoints.read) {
        std::error_code error;
        const std::string place = path_of(path, checkpoint.path);
        if (checkpoint.path.front() != '/' && !std::filesystem::exists(place, error) && !has_run(path) &&
            !is_written(place, path)) {
            add(missing_code, Severity::Note,
                "the checkpoint '" + checkpoint.path + "' is not here, and no file of this run writes it",
                "it must be there when the job starts", checkpoint, content, findings);
        }
    }
    return findings.size() > before;
}

}  // namespace quor_gjf

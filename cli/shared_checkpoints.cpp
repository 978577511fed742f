// Compares the checkpoints of files by their paths, each taken from the folder that its file is in.
#include "shared_checkpoints.hpp"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <system_error>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

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

}  // namespace

bool SharedCheckpoints::add_findings(const std::string& path, std::string_view content,
                                     const std::vector<BegunCheckpoint>& begun, std::vector<Finding>& findings) {
    bool any = false;
    for (const BegunCheckpoint& checkpoint : begun) {
        const auto [known, is_new] = files_.try_emplace(path_of(path, checkpoint.path), path);
        if (is_new || known->second == path || has_run(path)) {
            continue;
        }
        Finding finding;
        finding.code = code;
        finding.message = "the checkpoint of " + known->second + " is begun here too";
        finding.hint = "give each job a checkpoint of its own: the job that runs later writes over the other's";
        finding.job = checkpoint.job;
        finding.line = checkpoint.line;
        finding.column = checkpoint.column;
        finding.length = checkpoint.length;
        finding.begin = begin_of_line(content, checkpoint.line) + checkpoint.column - 1;
        finding.end = finding.begin + checkpoint.length;
        findings.insert(std::upper_bound(findings.begin(), findings.end(), finding.line,
                                         [](std::size_t line, const Finding& other) { return line < other.line; }),
                        std::move(finding));
        any = true;
    }
    return any;
}

}  // namespace quor_gjf

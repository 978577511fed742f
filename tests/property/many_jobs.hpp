// Every job there is to try properties on: the examples and, where they are named, real files.
#pragma once

#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/reader/gjf_parser.hpp>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "../support/real_files.hpp"

namespace quor::input::gaussian::test {

struct NamedJob {
    std::string name;  ///< file and number of the job
    GJFData data;
};

/// Lists the example files and the real files that there are, sorted.
inline std::vector<std::filesystem::path> all_job_files() {
    namespace fs = std::filesystem;
    std::vector<fs::path> paths;
    for (const fs::path& folder : {fs::path(QUOR_GJF_SOURCE_DIR) / "examples/jobs", quor::test::real_files_folder()}) {
        if (!folder.empty()) {
            for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
                const fs::path extension = entry.path().extension();
                if (entry.is_regular_file() && extension != ".md" && extension != ".tsv") {
                    paths.push_back(entry.path());
                }
            }
        }
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

/// Reads the jobs of all files; files that do not read are left out.
inline std::vector<NamedJob> all_jobs() {
    std::vector<NamedJob> jobs;
    for (const std::filesystem::path& path : all_job_files()) {
        try {
            const GJFMultiData file = GJFParser::parse_file_multi(path);
            for (std::size_t i = 0; i < file.jobs.size(); ++i) {
                jobs.push_back({path.filename().string() + " job " + std::to_string(i + 1), file.jobs[i]});
            }
        } catch (const GJFParseException&) {
            continue;
        }
    }
    return jobs;
}

}  // namespace quor::input::gaussian::test

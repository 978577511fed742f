// quor-gjf report: prints what is in job files, with each job's route warnings under it.
#include "commands.hpp"
#include "input.hpp"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <memory>
#include <string>
#include <vector>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

std::string warnings_of(const GJFData& job) {
    if (!job.control.parsed_keywords || job.control.parsed_keywords->warnings.empty()) {
        return {};
    }
    const std::vector<ParseWarning>& warnings = job.control.parsed_keywords->warnings;
    std::string text = "Route Warnings (" + std::to_string(warnings.size()) + "):\n";
    for (const ParseWarning& warning : warnings) {
        text += "  " + warning.code + " " + warning.message + "\n";
    }
    return text;
}

// The reports of a file's jobs, each under its number when there are several.
std::string report_of(const GJFMultiData& file) {
    std::string text;
    for (std::size_t i = 0; i < file.jobs.size(); ++i) {
        if (file.jobs.size() > 1) {
            text += (i == 0 ? "--- Job " : "\n--- Job ") + std::to_string(i + 1) + " of " +
                    std::to_string(file.jobs.size()) + " ---\n";
        }
        text += GJFParser::format_full_gjf(file.jobs[i]) + warnings_of(file.jobs[i]);
    }
    return text;
}

// Writes a text to standard output at once, so that it stands before what is said of the next file; says when that fails.
bool write_out(const std::string& text) {
    const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
    if (!written) {
        std::fputs("quor-gjf: cannot write the report\n", stderr);
    }
    return written;
}

int report(const std::vector<std::string>& paths) {
    report_missing_vocabulary();
    int exit_code = exit_success;
    bool first = true;
    for (const std::string& path : paths) {
        try {
            const std::string text = report_of(read_jobs(path));
            const std::string heading = paths.size() > 1 ? "==> " + path + " <==\n" : std::string();
            if (!write_out((first ? "" : "\n") + heading + text)) {
                return exit_failure;
            }
            first = false;
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s: %s\n", path.c_str(), error.what());
            exit_code = exit_failure;
        }
    }
    return exit_code;
}

}  // namespace

void add_report_command(CLI::App& command, int& exit_code) {
    const auto paths = std::make_shared<std::vector<std::string>>();
    command.add_option("FILE", *paths, "Job files; - reads standard input")->required();
    command.callback([paths, &exit_code] { exit_code = report(*paths); });
}

}  // namespace quor_gjf

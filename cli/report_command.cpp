// quor-gjf report: prints what is in job files, with each job's route warnings under it.
#include "batch.hpp"
#include "commands.hpp"
#include "input.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

std::string warnings_of(const GJFData& job) {
    const std::vector<Finding> findings = check_route(join_route_words(job.control.route_keywords).text);
    std::string text = findings.empty() ? "" : "Route Warnings (" + std::to_string(findings.size()) + "):\n";
    for (const Finding& finding : findings) {
        text += "  " + finding.code + ' ' + severity_name(finding.severity) + ": " + finding.message +
                (finding.hint.empty() ? "" : "; " + finding.hint) + '\n';
    }
    return text;
}

std::string size_of(const GJFData& job) {
    const JobSize size = job_size(job);
    std::string text = "Basis functions: ";
    text += size.functions ? std::to_string(*size.functions) + (size.doubtful ? " (doubtful)" : "")
                           : "not known, " + size.no_functions;
    text += "\nElectrons: ";
    text += size.electrons ? std::to_string(*size.electrons) : "not known, " + size.no_electrons;
    if (size.core_electrons != 0) {
        text += ", and " + std::to_string(size.core_electrons) + " in core potentials";
    }
    return text + '\n';
}

std::string report_of(const JobReading& reading) {
    return reading.error.empty() ? GJFParser::format_full_gjf(reading.job) + size_of(reading.job) + warnings_of(reading.job)
                                 : "line " + std::to_string(reading.error_line) + ": not read: " + reading.error + "\n";
}

// The reports of a file's jobs, each under its number when there are several.
std::string report_of(const std::vector<JobReading>& readings) {
    std::string text;
    for (std::size_t i = 0; i < readings.size(); ++i) {
        if (readings.size() > 1) {
            text += (i == 0 ? "--- Job " : "\n--- Job ") + std::to_string(i + 1) + " of " + std::to_string(readings.size()) +
                    " ---\n";
        }
        text += report_of(readings[i]);
    }
    return text;
}

FileResult report_file(const std::string& path, bool with_heading, bool json) {
    const std::string text = read_text(path);
    const std::vector<JobReading> readings = read_jobs_with_layout(text);
    const auto is_read = [](const JobReading& reading) { return reading.error.empty(); };
    if (std::none_of(readings.begin(), readings.end(), is_read)) {
        GJFParser::parse_string_multi(text);  // throws what it says of such a file
    }
    FileResult result;
    result.out = json ? readings_json(path, readings)
                      : (with_heading ? "==> " + path + " <==\n" : std::string()) + report_of(readings);
    for (const JobReading& reading : readings) {
        if (!is_read(reading)) {
            result.err += path + ": Job " + std::to_string(reading.layout.number) + ": " + reading.error + "\n";
            result.code = exit_failure;
        }
    }
    return result;
}

int report(const BatchOptions& options) {
    report_missing_vocabulary();
    const bool with_heading = names_several_files(options.paths);
    Batch batch;
    batch.output_name = "the report";
    batch.separator = options.json ? "" : "\n";
    batch.work = [&](const std::string& path) { return report_file(path, with_heading, options.json); };
    return run_batch(options, batch);
}

}  // namespace

void add_report_command(CLI::App& command, int& exit_code) {
    const auto options = std::make_shared<BatchOptions>();
    add_batch_options(command, *options);
    command.get_option("FILE")->required();
    command.callback([options, &exit_code] { exit_code = report(*options); });
}

}  // namespace quor_gjf

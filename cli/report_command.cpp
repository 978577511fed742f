// quor-gjf report: prints what is in job files, with each job's route warnings under it.
#include "batch.hpp"
#include "commands.hpp"
#include "input.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

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

// The reports of a file's jobs, each under its number when there are several.
std::string report_of(const GJFMultiData& file) {
    std::string text;
    for (std::size_t i = 0; i < file.jobs.size(); ++i) {
        if (file.jobs.size() > 1) {
            text += (i == 0 ? "--- Job " : "\n--- Job ") + std::to_string(i + 1) + " of " +
                    std::to_string(file.jobs.size()) + " ---\n";
        }
        text += GJFParser::format_full_gjf(file.jobs[i]) + size_of(file.jobs[i]) + warnings_of(file.jobs[i]);
    }
    return text;
}

int report(const BatchOptions& options) {
    report_missing_vocabulary();
    const bool with_heading = names_several_files(options.paths);
    Batch batch;
    batch.output_name = "the report";
    batch.separator = options.json ? "" : "\n";
    batch.work = [&](const std::string& path) {
        const GJFMultiData file = GJFParser::parse_string_multi(read_text(path));
        FileResult result;
        result.out = options.json ? report_json(path, file.jobs)
                                  : (with_heading ? "==> " + path + " <==\n" : std::string()) + report_of(file);
        return result;
    };
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

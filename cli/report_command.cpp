// quor-gjf report: prints what is in job files, with each job's route warnings under it, or a table of chosen fields.
#include "batch.hpp"
#include "commands.hpp"
#include "field_table.hpp"
#include "input.hpp"
#include "terminal.hpp"
#include "where.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>
#include <stdexcept>
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

std::string least_of(const char* name, const LeastBytes& least) {
    return std::string(name) +
           (least.bytes
                ? ": at least " + std::to_string(((*least.bytes - 1) >> 20) + 1) + " MB (" + least.formula + " words)"
                : ": not known, " + least.unknown) +
           '\n';
}

std::string needs_of(const JobEstimate& estimate) {
    return least_of("Memory", estimate.memory) + least_of("Disk", estimate.disk) + "Cost: " +
           (estimate.cost.empty() ? "not known, " + estimate.unknown_cost : "one energy grows as " + estimate.cost) + '\n';
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
    return text + '\n' + needs_of(estimate_job(job, size));
}

std::string report_of(const std::vector<IncludedFile>& files) {
    std::string text = files.empty() ? "" : "Included files:\n";
    for (const IncludedFile& file : files) {
        const std::string problem = find_problem(file);
        text += "  line " + std::to_string(file.line) + ": " + (problem.empty() ? file.name : problem) + '\n';
    }
    return text;
}

std::string report_of(const JobReading& reading) {
    return reading.error.empty() ? GJFParser::format_full_gjf(reading.job) + size_of(reading.job) + warnings_of(reading.job)
                                 : "line " + std::to_string(reading.error_line) + ": not read: " + reading.error + "\n";
}

// The reports of a file's jobs, each under its number when there are several; files that they name stand in their places
// where all can be had.
std::string report_of(const JobFile& file, const std::vector<std::size_t>& jobs) {
    const std::string count = std::to_string(file.jobs().size());
    std::string text;
    for (const std::size_t job : jobs) {
        if (file.jobs().size() > 1) {
            text += (text.empty() ? "--- Job " : "\n--- Job ") + std::to_string(job + 1) + " of " + count + " ---\n";
        }
        text += report_of(file.whole(job)) + report_of(files_of_job(file.included(), file.jobs()[job]));
    }
    return text;
}

struct ReportArguments {
    BatchOptions batch;
    Where where;
    std::vector<std::string> field_names;
    std::string format;
    Fields fields;
    TableForm form = TableForm::Text;

    bool is_table() const noexcept { return !fields.empty(); }
};

std::string output_of(const JobFile& file, const std::vector<std::size_t>& jobs, const ReportArguments& arguments,
                      bool with_heading) {
    if (arguments.is_table()) {
        return arguments.batch.json ? fields_json(file, jobs, arguments.fields)
                                    : table_rows(file, jobs, arguments.fields, arguments.form);
    }
    if (!arguments.batch.json) {
        return (with_heading ? "==> " + file.path() + " <==\n" : std::string()) + report_of(file, jobs);
    }
    return readings_json(file, jobs);
}

FileResult report_file(const std::string& path, const ReportArguments& arguments, bool with_heading) {
    const JobFile file(path, read_text(path), NamedFiles::Opened);
    const auto is_read = [](const JobReading& reading) { return reading.error.empty(); };
    if (std::none_of(file.jobs().begin(), file.jobs().end(), is_read) && !arguments.where) {
        GJFParser::parse_string_multi(file.text());  // throws what it says of such a file
    }
    FileResult result;
    const std::vector<std::size_t> jobs = fitting_jobs(arguments.where, file);
    result.out = jobs.empty() && arguments.where ? std::string() : output_of(file, jobs, arguments, with_heading);
    for (const std::size_t job : jobs) {
        const JobReading& reading = file.jobs()[job];
        if (!is_read(reading)) {
            result.err += path + ": Job " + std::to_string(reading.layout.number) + ": " + reading.error + "\n";
            result.code = exit_failure;
        }
    }
    return result;
}

// Says what --fields and --output-format ask for.
void read_table(ReportArguments& arguments) {
    const bool is_csv = arguments.format == "csv";
    const bool is_markdown = arguments.format == "markdown";
    arguments.batch.json = arguments.batch.json || arguments.format == "json";
    arguments.form = is_csv ? TableForm::Csv : is_markdown ? TableForm::Markdown : TableForm::Text;
    if (is_csv || is_markdown || !arguments.field_names.empty()) {
        try {
            arguments.fields = fields_named(arguments.field_names);
        } catch (const std::runtime_error& error) {
            throw CLI::ValidationError("--fields", printable(error.what()));
        }
    }
}

int report(ReportArguments& arguments) {
    read_table(arguments);
    report_missing_vocabulary();
    const bool with_heading = names_several_files(arguments.batch.paths);
    Batch batch;
    batch.output_name = "the report";
    batch.separator = arguments.batch.json || arguments.is_table() ? "" : "\n";
    batch.work = [&](const std::string& path) { return report_file(path, arguments, with_heading); };
    if (arguments.is_table() && !arguments.batch.json) {
        std::fputs(table_head(arguments.fields, arguments.form).c_str(), stdout);
    }
    return run_batch(arguments.batch, batch);
}

}  // namespace

void add_report_command(CLI::App& command, int& exit_code) {
    const auto arguments = std::make_shared<ReportArguments>();
    add_batch_options(command, arguments->batch);
    command.get_option("FILE")->required();
    command
        .add_option("--fields", arguments->field_names,
                    "Print a table of these fields, a row a job, as in file,method,charge (find --fields lists them)")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("NAMES");
    command
        .add_option("--output-format", arguments->format,
                    "How to print: text (default), json; tables of fields also csv, markdown")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"text", "json", "csv", "markdown"}));
    add_where_option(command, arguments->where);
    command.callback([arguments, &exit_code] { exit_code = report(*arguments); });
}

}  // namespace quor_gjf

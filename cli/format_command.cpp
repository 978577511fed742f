// quor-gjf format: reads job files and writes them anew in the fixed layout, or refuses when that would lose something.
#include "batch.hpp"
#include "commands.hpp"
#include "faithful.hpp"
#include "file_list.hpp"
#include "input.hpp"
#include "output.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

struct FormatArguments {
    std::vector<std::string> inputs;
    std::string output;
    bool in_place = false;
    bool force = false;
    bool drop_comments = false;
};

// Reads what was written and compares it with what was meant, so that no fault of the layout goes unseen.
void check_written(const GJFMultiData& meant, const std::string& text) {
    const GJFMultiData found = GJFParser::parse_string_multi(text);
    if (found.jobs.size() != meant.jobs.size()) {
        throw std::runtime_error("the fixed layout cannot carry it: another number of jobs would be read back");
    }
    for (std::size_t i = 0; i < meant.jobs.size(); ++i) {
        const std::string part = difference(meant.jobs[i], found.jobs[i]);
        if (!part.empty()) {
            throw std::runtime_error("job " + std::to_string(i + 1) + ": the fixed layout cannot carry its " + part +
                                     ": it would read back as something else");
        }
    }
}

std::string formatted(const std::string& text, bool drop_comments) {
    std::vector<JobReading> readings = read_jobs_with_layout(text);
    if (readings.empty()) {
        throw std::runtime_error("no job was found");
    }
    const std::vector<std::string_view> lines = lines_of(text);
    GJFMultiData jobs;
    for (JobReading& reading : readings) {
        const std::string loss = loss_in_writing(reading, lines, drop_comments);
        if (!loss.empty()) {
            throw std::runtime_error(loss);
        }
        jobs.jobs.push_back(std::move(reading.job));
    }
    std::string written = GJFMultiEditor(jobs).to_gjf_string();
    check_written(jobs, written);
    return written;
}

int format_file(const ListedFile& file, const FormatArguments& arguments) {
    if (!file.problem.empty()) {
        throw UnreadableInput(file.problem);
    }
    const std::string text = read_text(file.path);
    const std::string written = formatted(text, arguments.drop_comments);
    if (!arguments.in_place) {
        write_output(arguments.output, written, arguments.force);
    } else if (written != text) {
        write_output(file.path, written, true);
    }
    return exit_success;
}

void check_arguments(const FormatArguments& arguments) {
    const std::vector<std::string>& inputs = arguments.inputs;
    if (!arguments.in_place && names_several_files(inputs)) {
        throw CLI::ValidationError("FILE", "several files are written with --in-place alone");
    }
    if (arguments.in_place && std::find(inputs.begin(), inputs.end(), "-") != inputs.end()) {
        throw CLI::ValidationError("--in-place", "standard input has no place");
    }
}

int format(const FormatArguments& arguments) {
    check_arguments(arguments);
    require_vocabulary();
    FileList files(arguments.inputs);
    int exit_code = exit_success;
    while (const std::optional<ListedFile> file = files.next()) {
        exit_code = std::max(exit_code, guarded(file->path, [&] { return format_file(*file, arguments); }));
    }
    return exit_code;
}

}  // namespace

void add_format_command(CLI::App& command, int& exit_code) {
    const auto arguments = std::make_shared<FormatArguments>();
    command
        .add_option("FILE", arguments->inputs, "A job file; with --in-place, job files and folders; - reads standard input")
        ->required();
    CLI::Option* output =
        command.add_option("-o,--output", arguments->output, "Write to this file (default: standard output)")
            ->type_name("FILE");
    command.add_flag("--in-place", arguments->in_place, "Replace each file by what is written")->excludes(output);
    command.add_flag("--force", arguments->force, "Replace an output file that is there already");
    command.add_flag("--drop-comments", arguments->drop_comments,
                     "Write jobs without their comments, instead of refusing them");
    command.callback([arguments, &exit_code] { exit_code = format(*arguments); });
}

}  // namespace quor_gjf

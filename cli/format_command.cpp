// quor-gjf format: reads job files and writes them anew in the fixed layout, or refuses when that would lose something; or
// aligns their atom lines, which loses nothing.
#include "batch.hpp"
#include "commands.hpp"
#include "faithful.hpp"
#include "file_list.hpp"
#include "input.hpp"
#include "output.hpp"
#include "terminal.hpp"
#include "unified_diff.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
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
    Walk walk;
    bool in_place = false;
    bool force = false;
    bool drop_comments = false;
    bool align = false;
    bool check = false;
    bool diff = false;

    bool only_tells() const noexcept { return check || diff; }
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

// Names a file that would change, or shows how.
int tell_changes(const std::string& path, const std::string& text, const std::string& written,
                 const FormatArguments& arguments) {
    if (written == text) {
        return exit_success;
    }
    const std::string told =
        arguments.diff ? unified_diff(path, text, written, output_has_colour()) : printable(path) + '\n';
    std::fputs(told.c_str(), stdout);
    return exit_failure;
}

int format_file(const ListedFile& file, const FormatArguments& arguments) {
    if (!file.problem.empty()) {
        throw UnreadableInput(file.problem);
    }
    const std::string text = read_text(file.path);
    const std::string written = arguments.align ? aligned_text(text) : formatted(text, arguments.drop_comments);
    if (arguments.only_tells()) {
        return tell_changes(file.path, text, written, arguments);
    }
    if (!arguments.in_place) {
        write_output(arguments.output, written, arguments.force);
    } else if (written != text) {
        write_output(file.path, written, true);
    }
    return exit_success;
}

void check_arguments(const FormatArguments& arguments) {
    const std::vector<std::string>& inputs = arguments.inputs;
    if (!arguments.in_place && !arguments.only_tells() && names_several_files(inputs)) {
        throw CLI::ValidationError("FILE", "several files are written with --in-place alone");
    }
    if (arguments.in_place && std::find(inputs.begin(), inputs.end(), "-") != inputs.end()) {
        throw CLI::ValidationError("--in-place", "standard input has no place");
    }
}

int format(const FormatArguments& arguments) {
    check_arguments(arguments);
    require_vocabulary();
    FileList files(arguments.inputs, arguments.walk);
    int exit_code = exit_success;
    while (const std::optional<ListedFile> file = files.next()) {
        bool done = false;
        const int code = guarded(file->path, [&] {
            const int told = format_file(*file, arguments);
            done = true;
            return told;
        });
        // With --check and --diff, 1 says that there is something to do; a file that cannot be formatted is trouble.
        exit_code = std::max(exit_code, arguments.only_tells() && !done ? int{exit_usage} : code);
    }
    return exit_code;
}

}  // namespace

void add_format_command(CLI::App& command, int& exit_code) {
    const auto arguments = std::make_shared<FormatArguments>();
    command
        .add_option("FILE", arguments->inputs, "A job file; with --in-place, job files and folders; - reads standard input")
        ->required();
    add_walk_options(command, arguments->walk);
    CLI::Option* output =
        command.add_option("-o,--output", arguments->output, "Write to this file (default: standard output)")
            ->type_name("FILE");
    CLI::Option* in_place =
        command.add_flag("--in-place", arguments->in_place, "Replace each file by what is written")->excludes(output);
    command.add_flag("--force", arguments->force, "Replace an output file that is there already");
    command.add_flag("--align", arguments->align,
                     "Align the columns of atom lines and change nothing else: words, digits, comments and sections stay");
    CLI::Option* check = command.add_flag("--check", arguments->check,
                                          "Write nothing; name the files that would change, and exit with 1 for any");
    check->excludes(in_place)->excludes(output);
    command.add_flag("--diff", arguments->diff, "Write nothing; show the changes, and exit with 1 for any")
        ->excludes(in_place)
        ->excludes(output)
        ->excludes(check);
    command.add_flag("--drop-comments", arguments->drop_comments,
                     "Write jobs without their comments, instead of refusing them (--align keeps them)");
    command.callback([arguments, &exit_code] { exit_code = format(*arguments); });
}

}  // namespace quor_gjf

// quor-gjf find: names the jobs that fit a condition.
#include "batch.hpp"
#include "commands.hpp"
#include "input.hpp"
#include "terminal.hpp"
#include "where.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <memory>
#include <string>
#include <vector>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

constexpr std::size_t found_count = 0;  // the place in FileResult::counts

struct FindArguments {
    BatchOptions batch;
    std::string condition;
    bool files = false;
    bool nul = false;
    bool count = false;
    bool list_fields = false;
};

// A job by its file, the line of its route, its number and its route.
std::string line_of(const JobFile& file, std::size_t job) {
    const JobReading& reading = file.jobs()[job];
    const JobLayout& layout = reading.layout;
    const std::size_t line = layout.route_words.empty() ? layout.lines.first : layout.route_words.front().line;
    return printable(file.path()) + ':' + std::to_string(line) + ": job " + std::to_string(layout.number) + ": " +
           printable(join_route_words(reading.job.control.route_keywords).text) + '\n';
}

FileResult find_in_file(const std::string& path, const Where& condition, const FindArguments& arguments) {
    const JobFile file(path, read_text(path), NamedFiles::Opened);
    const std::vector<std::size_t> found = fitting_jobs(condition, file);
    FileResult result;
    result.counts[found_count] = found.size();
    if (found.empty()) {
        return result;
    }
    if (arguments.batch.json) {
        result.out = find_json(file, found);
    } else if (arguments.files || arguments.nul) {
        result.out = arguments.nul ? path + '\0' : printable(path) + '\n';
    } else if (arguments.count) {
        result.out = printable(path) + ':' + std::to_string(found.size()) + '\n';
    } else {
        for (const std::size_t job : found) {
            result.out += line_of(file, job);
        }
    }
    return result;
}

void print_fields() {
    for (const JobField& field : job_fields()) {
        std::printf("%-13s %s\n", field.name, field.description);
    }
}

int find(FindArguments arguments) {
    if (arguments.list_fields) {
        print_fields();
        return exit_success;
    }
    if (arguments.condition.empty()) {
        throw CLI::RequiredError("CONDITION");
    }
    if (arguments.batch.paths.empty()) {
        arguments.batch.paths = {"."};
    }
    require_vocabulary(arguments.batch.json ? arguments.batch.paths.front() : std::string());
    const Where condition = read_condition("CONDITION", arguments.condition);
    std::size_t found = 0;
    Batch batch;
    batch.work = [&](const std::string& path) { return find_in_file(path, condition, arguments); };
    batch.note = [&](const FileResult& result) { found += result.counts[found_count]; };
    // What could not be read is trouble, and not a file without such a job.
    return run_batch(arguments.batch, batch) != exit_success ? exit_usage : found == 0 ? exit_failure : exit_success;
}

}  // namespace

void add_find_command(CLI::App& command, int& exit_code) {
    const auto arguments = std::make_shared<FindArguments>();
    command.add_option("CONDITION", arguments->condition, "What a job must be, as in 'opt=ts and charge = -1'");
    add_batch_options(command, arguments->batch);
    command.add_flag("-l,--files", arguments->files, "Name the files alone that have such a job");
    command.add_flag("-0,--null", arguments->nul,
                     "Name the files alone, each with a null byte behind it, as xargs -0 reads them");
    command.add_flag("--count", arguments->count, "Tell how many such jobs each file has");
    command.add_flag("--fields", arguments->list_fields, "List the fields that conditions may ask for");
    command.callback([arguments, &exit_code] { exit_code = find(*arguments); });
}

}  // namespace quor_gjf

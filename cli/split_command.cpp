// quor-gjf split: writes each job of a file, or chosen ones, byte for byte, to a file of its own.
#include "commands.hpp"
#include "input.hpp"
#include "output.hpp"
#include "where.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

struct SplitArguments {
    std::string input;
    std::string folder;
    std::vector<std::size_t> jobs;  // from 1; none for all
    Where where;
    bool force = false;
};

// Numbers are filled with zeros to one width, so that the names sort in the order of the jobs.
std::string numbered_name(const std::filesystem::path& input, std::size_t number, std::size_t count) {
    const std::size_t width = std::to_string(count).size();
    std::string digits = std::to_string(number);
    digits.insert(0, width - digits.size(), '0');
    if (input == "-") {
        return "job_" + digits + ".gjf";
    }
    const std::string extension = input.extension().string();
    return input.stem().string() + '_' + digits + (extension.empty() ? ".gjf" : extension);
}

// Returns the jobs that are wanted, counted from 0.
std::vector<std::size_t> wanted_jobs(const SplitArguments& arguments, const std::string& text, std::size_t count) {
    for (const std::size_t job : arguments.jobs) {
        if (job == 0 || job > count) {
            throw std::runtime_error("there is no job " + std::to_string(job) + ": the file has " + std::to_string(count));
        }
    }
    const ChosenJobs fitting(arguments.where, arguments.input, text, NamedFiles::Opened);
    const std::vector<std::size_t>& named = arguments.jobs;
    std::vector<std::size_t> wanted;
    for (std::size_t job = 0; job < count; ++job) {
        if (fitting.has(job + 1) && (named.empty() || std::find(named.begin(), named.end(), job + 1) != named.end())) {
            wanted.push_back(job);
        }
    }
    return wanted;
}

int split(const SplitArguments& arguments) {
    const std::string text = read_text(arguments.input);
    const std::vector<std::string_view> pieces = job_texts(text);
    if (pieces.empty()) {
        throw std::runtime_error("no job was found");
    }
    const std::filesystem::path input = arguments.input;
    const std::filesystem::path folder =
        arguments.folder.empty() ? input.parent_path() : std::filesystem::path(arguments.folder);
    const std::vector<std::size_t> wanted = wanted_jobs(arguments, text, pieces.size());
    std::vector<std::string> names;
    for (const std::size_t job : wanted) {
        names.push_back((folder / numbered_name(input, job + 1, pieces.size())).string());
        check_output(names.back(), arguments.force);
    }
    std::error_code error;  // where it cannot be made, the first file says so
    if (!arguments.folder.empty() && !wanted.empty()) {
        std::filesystem::create_directories(folder, error);
    }
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        write_output(names[i], std::string(pieces[wanted[i]]), arguments.force);
        std::printf("%s\n", names[i].c_str());
    }
    return wanted.empty() ? exit_failure : exit_success;
}

}  // namespace

void add_split_command(CLI::App& command, int& exit_code) {
    const auto arguments = std::make_shared<SplitArguments>();
    command.add_option("FILE", arguments->input, "A job file; - reads standard input")->required();
    command
        .add_option("-o,--output", arguments->folder,
                    "Write into this folder, made when missing (default: that of the file)")
        ->type_name("FOLDER");
    command
        .add_option("--job", arguments->jobs,
                    "Write this job alone, counted from 1; may be given several times, or with commas")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("N");
    add_where_option(command, arguments->where);
    command.add_flag("--force", arguments->force, "Replace files that are there already");
    command.callback([arguments, &exit_code] { exit_code = guarded(arguments->input, [&] { return split(*arguments); }); });
}

}  // namespace quor_gjf

// quor-gjf next and retry: write the job that follows another, by its output and the job beside it.
#include "batch.hpp"
#include "commands.hpp"
#include "input.hpp"
#include "output.hpp"
#include "plain_text.hpp"
#include "terminal.hpp"
#include "unified_diff.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;
namespace fs = std::filesystem;

constexpr const char* kinds_of_jobs = "freq ts irc sp td nmr opt scan-ts displace restart";

struct NextArguments {
    BatchOptions batch;
    NextWish wish;
    std::vector<std::string> recipes;
    std::string output;
    bool dry_run = false;
    bool diff = false;
    bool cures = false;  // retry
    bool output_is_file = false;

    bool writes() const { return !dry_run && !diff; }
};

std::string path_of(const NewJob& job, const std::string& old, const NextArguments& arguments) {
    if (arguments.output_is_file) {
        return arguments.output;
    }
    const fs::path folder = arguments.output.empty() ? fs::path(old).parent_path() : fs::path(arguments.output);
    return (folder / job.name).string();
}

void write_job(const std::string& path, const NewJob& job, const NextArguments& arguments) {
    check_output(path, arguments.wish.force);
    if (arguments.writes()) {
        std::error_code error;
        const fs::path folder = fs::path(path).parent_path();
        if (!folder.empty()) {
            fs::create_directories(folder, error);
        }
        write_output(path, job.text, arguments.wish.force);
    }
}

std::string told(const NewJob& job, const std::string& path, const std::string& old) {
    std::string text = printable(path) + ": from " + printable(old);
    text += job.attempt > 0 ? ", " + job.recipe + (job.recipe.empty() ? "" : " attempt ") + std::to_string(job.attempt) : "";
    text += '\n';
    for (const std::string& remark : job.remarks) {
        text += "  " + printable(remark) + '\n';
    }
    return text;
}

// What there is to say of an output whose jobs are made.
std::string shown(const std::string& path, const OldCalculation& old, std::vector<NewJob>& jobs,
                  const NextArguments& arguments) {
    std::string text;
    for (NewJob& job : jobs) {
        job.name = path_of(job, path, arguments);
        write_job(job.name, job, arguments);
        if (arguments.diff) {
            text += unified_diff(job.name, old.job_text, job.text, output_has_colour());
        } else if (!arguments.batch.json) {
            text += told(job, job.name, path);
        }
    }
    return arguments.batch.json ? next_jobs_json(path, jobs, arguments.writes()) : text;
}

FileResult refused(const std::string& path, const std::string& reason, const NextArguments& arguments) {
    FileResult result;
    result.code = exit_failure;
    result.err = printable(path) + ": not written: " + printable(reason) + '\n';
    result.out = arguments.batch.json ? refused_job_json(path, reason) : std::string();
    return result;
}

FileResult make_jobs(const std::string& path, const NextArguments& arguments) {
    const std::vector<std::string>& named = arguments.batch.paths;
    FileResult result;
    try {
        const OldCalculation old = read_old_calculation(path);
        std::vector<NewJob> jobs = arguments.cures ? retry_jobs(old, arguments.wish) : next_jobs(old, arguments.wish);
        if (jobs.size() > 1 && arguments.output_is_file) {
            return refused(path, "several jobs are made of it, and the output is one file", arguments);
        }
        const bool is_named = std::find(named.begin(), named.end(), path) != named.end();
        result.out = jobs.empty() && !arguments.batch.json
                         ? (is_named ? printable(path) + ": ended normally, there is nothing to cure\n" : std::string())
                         : shown(path, old, jobs, arguments);
    } catch (const NextJobRefused& error) {
        return refused(path, error.what(), arguments);
    } catch (const OutputExists& error) {
        return refused(path, error.what(), arguments);
    } catch (const NoOutput& error) {
        result.foreign = std::find(named.begin(), named.end(), path) == named.end();
        if (!result.foreign) {
            throw UnreadableInput(error.what());
        }
    } catch (const OutputError& error) {
        throw UnreadableInput(error.what());
    }
    return result;
}

int run_next(NextArguments& arguments) {
    require_vocabulary();
    if (const std::string missing = missing_for_diagnosis(); !missing.empty()) {
        throw MissingVocabulary(missing);
    }
    if (!arguments.cures && arguments.wish.to.empty() == arguments.wish.route.empty()) {
        throw CLI::ValidationError("next", "one of --to and --route says what is wanted");
    }
    try {
        arguments.wish.recipes = recipes_with(arguments.recipes);
    } catch (const std::exception& error) {
        throw CLI::ValidationError("--recipes", printable(error.what()));
    }
    arguments.batch.walk.outputs = true;
    std::error_code error;
    arguments.output_is_file = !arguments.output.empty() && arguments.output.back() != '/' &&
                               !fs::is_directory(arguments.output, error) && !names_several_files(arguments.batch.paths);
    if (!arguments.output.empty()) {
        const fs::path output = arguments.output;
        arguments.wish.folder = arguments.output_is_file ? output.parent_path().string() : output.string();
        arguments.wish.folder = arguments.wish.folder.empty() ? "." : arguments.wish.folder;
        arguments.wish.name = arguments.output_is_file ? output.filename().string() : std::string();
    }
    Batch batch;
    batch.work = [&](const std::string& path) { return make_jobs(path, arguments); };
    return run_batch(arguments.batch, batch);
}

void add_command(CLI::App& command, int& exit_code, bool cures) {
    const auto arguments = std::make_shared<NextArguments>();
    arguments->cures = cures;
    add_batch_options(command, arguments->batch);
    command.get_option("FILE")->required()->description(
        "Outputs, also compressed by gzip or xz, or the jobs beside them; folders with all *.log and *.out below them");
    if (!cures) {
        command.add_option("--to", arguments->wish.to, std::string("What the next job is: ") + kinds_of_jobs)
            ->type_name("KIND")
            ->check(CLI::IsMember({"freq", "ts", "irc", "sp", "td", "nmr", "opt", "scan-ts", "displace", "restart"}));
        command.add_option("--route", arguments->wish.route, "The route of the next job, in the place of the old one")
            ->type_name("ROUTE")
            ->excludes("--to");
    }
    command.add_flag("--cartesian", arguments->wish.cartesian, "Write Cartesian coordinates in the place of a Z-matrix");
    command.add_option("--recipes", arguments->recipes, "Take recipes from this table, in the place of those for the same")
        ->type_name("TABLE")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
    command
        .add_option("-o,--output", arguments->output,
                    "Write to this file, or to this folder under the usual names (default: beside the output)")
        ->type_name("OUT");
    add_colour_option(command);
    command.add_flag("--diff", arguments->diff, "Show what differs from the old job; nothing is written")
        ->excludes("--json");
    command.add_flag("--dry-run", arguments->dry_run, "Write nothing; tell what would be written");
    command.add_flag("--force", arguments->wish.force,
                     "Replace files that are there, and write where the output is no good beginning or check finds errors");
    command.callback([arguments, &exit_code] { exit_code = run_next(*arguments); });
}

}  // namespace

void add_next_command(CLI::App& command, int& exit_code) { add_command(command, exit_code, false); }

void add_retry_command(CLI::App& command, int& exit_code) { add_command(command, exit_code, true); }

}  // namespace quor_gjf

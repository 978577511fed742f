// quor-gjf convert: writes the molecules of job files as XYZ.
#include "batch.hpp"
#include "commands.hpp"
#include "file_list.hpp"
#include "input.hpp"
#include "output.hpp"
#include "plain_text.hpp"
#include "terminal.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

struct ConvertArguments {
    std::vector<std::string> inputs;
    std::string output;
    std::size_t job = 0;
    bool force = false;
};

std::string left_out(const XyzText& xyz) {
    std::string text;
    for (const auto& [count, what] :
         {std::pair{xyz.dummies, "dummy atom"}, {xyz.ghosts, "ghost"}, {xyz.vectors, "translation vector"}}) {
        if (count != 0) {
            text += (text.empty() ? "" : ", ") + counted(count, what);
        }
    }
    return text;
}

// Returns one frame for each job that has positions, and says what was left out; throws when no job has any.
std::string frames_of(const std::string& path, const ConvertArguments& arguments) {
    const JobFile file(path, read_text(path), NamedFiles::Opened);
    const std::size_t count = file.jobs().size();
    if (count == 0 || arguments.job > count) {
        throw std::runtime_error(count == 0 ? "no job was found" : "there is no job " + std::to_string(arguments.job));
    }
    std::string text;
    std::string remarks;
    for (std::size_t i = 0; i < count; ++i) {
        if (arguments.job != 0 && arguments.job != i + 1) {
            continue;
        }
        const JobReading& reading = file.whole(i);
        const XyzText xyz = xyz_text(reading.job);
        const std::string& error = reading.error;
        const std::string problem = reading.atoms_uncertain && !error.empty() ? error : xyz.problem;
        const std::string where = count > 1 ? "job " + std::to_string(i + 1) + ": " : "";
        if (!problem.empty()) {
            remarks += (remarks.empty() ? "" : "; ") + where + problem;
            continue;
        }
        text += xyz.text;
        if (const std::string lost = left_out(xyz); !lost.empty()) {
            std::fprintf(stderr, "%s: %sleft out: %s\n", printable(path).c_str(), where.c_str(), lost.c_str());
        }
    }
    if (text.empty()) {
        throw std::runtime_error(remarks);
    }
    if (!remarks.empty()) {
        std::fprintf(stderr, "%s: passed over: %s\n", printable(path).c_str(), printable(remarks).c_str());
    }
    return text;
}

// One file goes to a file, unless its name is that of a folder; several go to a folder, which is made when missing.
std::string output_for(const std::string& input, const ConvertArguments& arguments, bool several) {
    std::error_code error;
    const std::filesystem::path output = arguments.output;
    if (output.empty() || (!several && !arguments.output.ends_with('/') && !std::filesystem::is_directory(output, error))) {
        return arguments.output;
    }
    std::filesystem::create_directories(output, error);
    const std::string stem = input == "-" ? "job" : std::filesystem::path(input).stem().string();
    return (output / (stem + ".xyz")).string();
}

int convert(const ConvertArguments& arguments) {
    require_vocabulary();
    const bool several = names_several_files(arguments.inputs);
    FileList files(arguments.inputs);
    int exit_code = exit_success;
    while (const std::optional<ListedFile> file = files.next()) {
        exit_code = std::max(exit_code, guarded(file->path, [&] {
                                 if (!file->problem.empty()) {
                                     throw UnreadableInput(file->problem);
                                 }
                                 const std::string text = frames_of(file->path, arguments);
                                 write_output(output_for(file->path, arguments, several), text, arguments.force);
                                 return exit_success;
                             }));
    }
    return exit_code;
}

}  // namespace

void add_convert_command(CLI::App& command, int& exit_code) {
    const auto arguments = std::make_shared<ConvertArguments>();
    command
        .add_option("FILE", arguments->inputs,
                    "Job files; folders with all *.gjf, *.com, *.gau and *.inp below them; - reads standard input")
        ->required();
    command
        .add_option("-o,--output", arguments->output,
                    "Write to this file, or to FILE.xyz in this folder where several files come (default: standard output)")
        ->type_name("FILE");
    command.add_option("--job", arguments->job, "Convert this job alone, counted from 1 (default: all, a frame each)")
        ->check(CLI::Range(std::size_t{1}, std::size_t{1'000'000}))
        ->type_name("N");
    command.add_flag("--force", arguments->force, "Replace files that are there already");
    command.callback([arguments, &exit_code] { exit_code = convert(*arguments); });
}

}  // namespace quor_gjf

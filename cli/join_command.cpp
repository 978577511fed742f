// quor-gjf join: puts job files together, byte for byte, with --Link1-- lines between them.
#include "batch.hpp"
#include "commands.hpp"
#include "file_list.hpp"
#include "input.hpp"
#include "output.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

struct JoinArguments {
    std::vector<std::string> inputs;
    std::string output;
    bool force = false;
};

// Ends a text in a blank line, which Gaussian wants before --Link1--, in the text's own kind of line ends.
void end_in_blank_line(std::string& text) {
    const std::size_t first = text.find('\n');
    const bool with_return = first != std::string::npos && first > 0 && text[first - 1] == '\r';
    const std::string line_end = with_return ? "\r\n" : "\n";
    if (!text.ends_with('\n')) {
        text += line_end;
    }
    const std::size_t before = text.find_last_not_of(" \t\r\n");
    const std::string_view tail = std::string_view(text).substr(before + 1);
    if (tail.find('\n') == tail.rfind('\n')) {
        text += line_end;
    }
    text += std::string(job_separator) + line_end;
}

// Appends one file; the number of its jobs is added to `jobs`.
void append_file(const ListedFile& file, std::string& joined, std::size_t& jobs) {
    if (!file.problem.empty()) {
        throw UnreadableInput(file.problem);
    }
    const std::string text = read_text(file.path);
    const std::vector<std::string_view> pieces = job_texts(text);
    if (pieces.empty()) {
        throw std::runtime_error("no job was found");
    }
    jobs += pieces.size();
    // Separators before the first job and after the last are left out: they would make a job of nothing.
    const char* begin = pieces.front().data();
    std::string_view body(begin, static_cast<std::size_t>(pieces.back().data() + pieces.back().size() - begin));
    if (!joined.empty()) {
        end_in_blank_line(joined);
        // It marks the beginning of a file and would be a stray character inside one.
        body = without_byte_order_mark(body);
    }
    joined += body;
}

int join(const JoinArguments& arguments) {
    check_standard_input_once(arguments.inputs);
    FileList files(arguments.inputs);
    std::string joined;
    std::size_t jobs = 0;
    while (const std::optional<ListedFile> file = files.next()) {
        const int code = guarded(file->path, [&] {
            append_file(*file, joined, jobs);
            return exit_success;
        });
        if (code != exit_success) {
            return code;
        }
    }
    return guarded("quor-gjf", [&] {
        if (job_texts(joined).size() != jobs) {
            throw std::runtime_error("the joined text does not hold the jobs of its parts");
        }
        write_output(arguments.output, joined, arguments.force);
        return exit_success;
    });
}

}  // namespace

void add_join_command(CLI::App& command, int& exit_code) {
    const auto arguments = std::make_shared<JoinArguments>();
    command.add_option("FILE", arguments->inputs, "Job files, in their order; folders; - reads standard input")->required();
    command.add_option("-o,--output", arguments->output, "Write to this file (default: standard output)")->type_name("FILE");
    command.add_flag("--force", arguments->force, "Replace a file that is there already");
    command.callback([arguments, &exit_code] { exit_code = join(*arguments); });
}

}  // namespace quor_gjf

// quor-gjf diff: tells what differs between two job files by meaning.
#include "commands.hpp"
#include "input.hpp"
#include "plain_text.hpp"
#include "terminal.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

struct DiffArguments {
    std::string first;
    std::string second;
    bool json = false;
};

constexpr std::size_t most_moved_atoms = 10;

// A text of one line as it is, of a longer one how many lines it has.
std::string shown(const std::string& text) {
    const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
    return lines == 1 ? printable(text) : "(" + counted(lines, "line") + ")";
}

std::string line_of(const JobChange& change) {
    const bool names_value = change.part == "route";  // a keyword is shown with its options, a method by itself
    const std::string what = change.part + (change.name.empty() ? "" : " " + printable(change.name)) + ": ";
    if (change.moved && change.before == change.after) {
        return "  ~ " + what + shown(*change.before) + " moved by " + std::to_string(*change.moved) + " angstrom\n";
    }
    if (!change.before || !change.after) {
        const std::string& text = change.before ? *change.before : *change.after;
        return (change.before ? "  - " : "  + ") + (names_value ? "route: " : what) + shown(text) + '\n';
    }
    const std::string moved = change.moved ? ", moved by " + std::to_string(*change.moved) + " angstrom" : std::string();
    return "  ~ " + what + shown(*change.before) + " -> " + shown(*change.after) + moved + '\n';
}

bool only_moved(const JobChange& change) { return change.moved && change.before == change.after; }

std::string text_of(const JobPairChanges& pair) {
    std::string text = "job " + std::to_string(pair.job);
    if (!pair.in_first || !pair.in_second) {
        return text + (pair.in_first ? ": in the first file alone\n" : ": in the second file alone\n");
    }
    text += ":\n";
    std::size_t moved = 0;
    double farthest = 0;
    for (const JobChange& change : pair.changes) {
        farthest = std::max(farthest, change.moved.value_or(0));
        moved += only_moved(change) ? 1 : 0;
        text += only_moved(change) && moved > most_moved_atoms ? std::string() : line_of(change);
    }
    if (moved > most_moved_atoms) {
        text += "  ~ atoms: " + std::to_string(moved - most_moved_atoms) + " more moved, the farthest by " +
                std::to_string(farthest) + " angstrom\n";
    }
    return text;
}

std::vector<JobReading> jobs_in(const std::string& path) {
    try {
        std::vector<JobReading> readings = read_jobs_with_layout(read_text(path));
        if (!readings.empty()) {
            return readings;
        }
    } catch (const UnreadableInput& error) {
        throw UnreadableInput(path + ": " + error.what());
    }
    throw std::runtime_error(path + ": no job was found");
}

int diff(const DiffArguments& arguments) {
    require_vocabulary(arguments.json ? arguments.first : std::string());
    try {
        const std::vector<JobPairChanges> changes = file_changes(jobs_in(arguments.first), jobs_in(arguments.second));
        if (arguments.json) {
            std::fputs(diff_json(arguments.first, arguments.second, changes).c_str(), stdout);
        } else {
            for (const JobPairChanges& pair : changes) {
                std::fputs(text_of(pair).c_str(), stdout);
            }
        }
        return changes.empty() ? exit_success : exit_failure;
    } catch (const std::exception& error) {
        const std::string message = bare_message(error.what());
        std::fprintf(stderr, "quor-gjf diff: %s\n", printable(message).c_str());
        std::fputs(arguments.json ? error_json(arguments.first, message).c_str() : "", stdout);
        return exit_usage;
    }
}

}  // namespace

void add_diff_command(CLI::App& command, int& exit_code) {
    const auto arguments = std::make_shared<DiffArguments>();
    command.add_option("FILE", arguments->first, "A job file; - reads standard input")->required();
    command.add_option("OTHER", arguments->second, "The job file to compare it with")->required()->type_name("FILE");
    command.add_flag("--json", arguments->json, "Print one JSON object");
    command.callback([arguments, &exit_code] { exit_code = diff(*arguments); });
}

}  // namespace quor_gjf

// quor-gjf check: prints what the checker finds in job files, each finding with its line and a hint.
#include "batch.hpp"
#include "check_codes.hpp"
#include "check_fixing.hpp"
#include "commands.hpp"
#include "input.hpp"
#include "plain_text.hpp"
#include "shared_checkpoints.hpp"
#include "terminal.hpp"
#include "where.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

struct CheckArguments {
    BatchOptions batch;
    std::vector<std::string> selected;  // codes, or how they begin, as for those ignored
    std::vector<std::string> ignored;
    std::string fail_on = "error";
    bool exit_zero = false;
    bool statistics = false;
    bool list = false;
    std::vector<std::string> explained;
    FixArguments fixing;
    Where where;
};

// Escape sequences around parts of a finding; all empty without colour.
struct Colours {
    const char* severities[3] = {"", "", ""};  // by severity
    const char* place = "";
    const char* mark = "";
    const char* off = "";
};

constexpr Colours no_colours;
constexpr Colours terminal_colours = {{"\033[1;36m", "\033[1;35m", "\033[1;31m"}, "\033[1m", "\033[1;32m", "\033[0m"};

std::size_t index_of(Severity severity) noexcept { return static_cast<std::size_t>(severity); }

// Finds lines of a text by number; findings mostly come in the order of lines, so the walk goes on where it ended.
class NumberedLines {
   public:
    explicit NumberedLines(std::string_view text) noexcept : text_(text) {}

    std::string_view line(std::size_t number) noexcept {
        if (number < number_) {
            number_ = 1;
            begin_ = 0;
        }
        while (number_ < number && begin_ < text_.size()) {
            begin_ = std::min(text_.find('\n', begin_), text_.size() - 1) + 1;
            ++number_;
        }
        std::string_view found = text_.substr(begin_, text_.find('\n', begin_) - begin_);
        if (!found.empty() && found.back() == '\r') {
            found.remove_suffix(1);
        }
        return found;
    }

   private:
    std::string_view text_;
    std::size_t number_ = 1;
    std::size_t begin_ = 0;
};

std::string place_of(const std::string& path, const Finding& finding) {
    std::string place = printable(path) + ':';
    for (const std::size_t number : {finding.line, finding.line == 0 ? 0 : finding.column}) {
        place += number == 0 ? std::string() : std::to_string(number) + ':';
    }
    return place;
}

std::string text_of(const std::string& path, const Finding& finding, NumberedLines& lines, const Colours& colours) {
    std::string text = colours.place + place_of(path, finding) + colours.off + ' ' +
                       colours.severities[index_of(finding.severity)] + severity_name(finding.severity) + ':' + colours.off +
                       ' ' + printable(finding.message) + " [" + finding.code + "]\n";
    if (finding.line != 0) {
        const bool has_column = finding.column != 0;
        text += excerpt(lines.line(finding.line), has_column ? finding.column - 1 : 0,
                        has_column ? std::max<std::size_t>(finding.length, 1) : 0, colours.mark, colours.off);
    }
    return finding.hint.empty() ? text : text + "  hint: " + printable(finding.hint) + '\n';
}

Severity severity_of(const std::string& name) {
    return name == "error" ? Severity::Error : name == "warning" ? Severity::Warning : Severity::Note;
}

// The most frequent code first.
void print_statistics(const std::map<std::string, std::size_t>& codes) {
    std::vector<std::pair<std::string, std::size_t>> rows(codes.begin(), codes.end());
    std::stable_sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) { return a.second > b.second; });
    for (const auto& [code, count] : rows) {
        std::printf("%7zu  %s\n", count, code.c_str());
    }
}

// Prints what was found; what the text of standard input goes to is not mixed with it, nor is a difference.
void tell_findings(const std::string& path, const FixedFile& file, const CheckArguments& arguments, const Colours& colours,
                   FileResult& result) {
    std::string text;
    NumberedLines lines(file.text);
    for (const Finding& finding : file.findings) {
        text += arguments.batch.json ? std::string() : text_of(path, finding, lines, colours);
    }
    text = arguments.batch.json ? check_json(path, file.findings) : text;
    const bool prints_text = arguments.fixing.fix && path == "-" && !arguments.fixing.diff;
    if (prints_text) {
        result.err += text;
    } else if (!arguments.fixing.diff) {
        result.out += text;
    }
}

FileResult result_of(const std::string& path, const FixedFile& file, const CheckArguments& arguments,
                     const Colours& colours) {
    const Severity fail_on = severity_of(arguments.fail_on);
    FileResult result;
    result.out = file.out;
    result.err = file.err;
    result.fixes = count_fixes(file.findings, arguments.fixing);
    result.fixes.applied = file.applied;
    result.code = arguments.fixing.diff && !result.out.empty() ? exit_failure : exit_success;
    for (const Finding& finding : file.findings) {
        ++result.counts[index_of(finding.severity)];
        ++result.codes[finding.code];
        result.code = finding.severity >= fail_on ? exit_failure : result.code;
    }
    if (!arguments.statistics) {
        tell_findings(path, file, arguments, colours, result);
    }
    return result;
}

FileResult check_file(const std::string& path, const CheckArguments& arguments, const Colours& colours,
                      quor::core::fs::FolderFlushes& folders, SharedCheckpoints& shared) {
    const std::string content = read_text(path);
    const ChosenJobs jobs(arguments.where, path, content);
    const auto is_wanted = [&](const Finding& finding) {
        return is_chosen(finding.code, arguments.selected, arguments.ignored) && jobs.has(finding.job);
    };
    const auto file = std::make_shared<FixedFile>();
    std::vector<BegunCheckpoint> begun;
    if (arguments.fixing.works()) {
        *file = fix_file(path, content, arguments.fixing, is_wanted, folders);
    } else {
        CheckOptions options;
        options.begun_checkpoints =
            is_chosen(SharedCheckpoints::code, arguments.selected, arguments.ignored) ? &begun : nullptr;
        file->text = content;
        file->findings = check_text(content, options);
    }
    std::erase_if(file->findings, [&](const Finding& finding) { return !is_wanted(finding); });
    FileResult result = result_of(path, *file, arguments, colours);
    if (!begun.empty()) {
        result.in_order = [&arguments, &colours, &shared, path, file, begun](FileResult& told) {
            if (shared.add_findings(path, file->text, begun, file->findings)) {
                told = result_of(path, *file, arguments, colours);
            }
        };
    }
    return result;
}

void print_summary(std::size_t files, const std::array<std::size_t, 3>& counts) {
    std::fprintf(stderr, "%s, %s, %s, %s\n", counted(files, "file").c_str(),
                 counted(counts[index_of(Severity::Error)], "error").c_str(),
                 counted(counts[index_of(Severity::Warning)], "warning").c_str(),
                 counted(counts[index_of(Severity::Note)], "note").c_str());
}

// What is counted over all files.
struct Totals {
    std::size_t files = 0;
    std::array<std::size_t, 3> counts{};
    std::map<std::string, std::size_t> codes;
    FixCounts fixes;

    void add(const FileResult& result) {
        files += result.code == exit_usage ? 0 : 1;
        std::transform(counts.begin(), counts.end(), result.counts.begin(), counts.begin(), std::plus<>());
        for (const auto& [code, count] : result.codes) {
            codes[code] += count;
        }
        fixes += result.fixes;
    }
};

int check(const CheckArguments& arguments) {
    const bool asks_for_codes = arguments.list || !arguments.explained.empty();
    if (arguments.batch.paths.empty() && !asks_for_codes) {
        throw CLI::RequiredError("FILE");
    }
    require_codes("--select", arguments.selected);
    require_codes("--ignore", arguments.ignored);
    require_codes("--explain", arguments.explained);
    check_fix_options(arguments.fixing);
    const bool tells_in_json = arguments.batch.json && !arguments.batch.paths.empty();
    require_facts(tells_in_json ? arguments.batch.paths.front() : std::string());
    if (asks_for_codes) {
        print_codes(arguments.explained, arguments.batch.json);
        return exit_success;
    }
    const Colours& colours = output_has_colour() ? terminal_colours : no_colours;
    Totals totals;
    quor::core::fs::FolderFlushes folders;
    SharedCheckpoints shared;
    Batch batch;
    batch.work = [&](const std::string& path) { return check_file(path, arguments, colours, folders, shared); };
    batch.note = [&](const FileResult& result) { totals.add(result); };
    const int exit_code = run_batch(arguments.batch, batch);
    folders.flush();
    if (arguments.statistics) {
        print_statistics(totals.codes);
    }
    if (!arguments.batch.json) {
        print_summary(totals.files, totals.counts);
        std::fputs(fix_summary(totals.fixes, arguments.fixing).c_str(), stderr);
    }
    return arguments.exit_zero && exit_code == exit_failure ? exit_success : exit_code;
}

}  // namespace

void add_check_command(CLI::App& command, int& exit_code) {
    const auto arguments = std::make_shared<CheckArguments>();
    add_batch_options(command, arguments->batch);
    add_code_option(
        command, "--select", arguments->selected,
        "Report these codes alone; a code may be cut short, as GJF-M; may be given several times, or with commas");
    add_code_option(command, "--ignore", arguments->ignored,
                    "Do not report these codes; of --select and --ignore the one that names more of a code holds");
    command.add_option("--fail-on", arguments->fail_on, "Exit with 1 from this severity on: error (default), warning, note")
        ->type_name("SEVERITY")
        ->check(CLI::IsMember({"error", "warning", "note"}));
    add_fix_options(command, arguments->fixing);
    add_where_option(command, arguments->where);
    command.add_flag("--exit-zero", arguments->exit_zero, "Exit with 0 although there are findings");
    command.add_flag("--statistics", arguments->statistics, "Tell how often each code was found, instead of the findings");
    command.add_flag("--list", arguments->list, "List all codes with their titles");
    add_code_option(command, "--explain", arguments->explained,
                    "Explain a code, with a wrong and a right job; list those of one cut short");
    command.callback([arguments, &exit_code] { exit_code = check(*arguments); });
}

}  // namespace quor_gjf

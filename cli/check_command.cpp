// quor-gjf check: prints what the checker finds in job files, each finding with its line and a hint.
#include "batch.hpp"
#include "check_codes.hpp"
#include "check_fixing.hpp"
#include "check_formats.hpp"
#include "commands.hpp"
#include "config.hpp"
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

Severity severity_of(const std::string& name) {
    return name == "error" ? Severity::Error : name == "warning" ? Severity::Warning : Severity::Note;
}

struct CheckArguments {
    BatchOptions batch;
    std::vector<std::string> selected;  // codes, or how they begin, as for those ignored
    std::vector<std::string> ignored;
    std::string fail_on;
    std::string format = "text";
    std::string stdin_name = "-";
    bool exit_zero = false;
    bool statistics = false;
    bool quiet = false;
    bool list = false;
    std::vector<std::string> explained;
    FixArguments fixing;
    Where where;

    /// Returns the form in which findings are told; null for text.
    const CheckFormat* form() const { return find_check_format(format); }
    /// Returns by what name a file is told of.
    const std::string& name_of(const std::string& path) const { return path == "-" ? stdin_name : path; }
    /// Returns what is reported of a file: what the command line says, else the nearest configuration.
    CheckRules rules_of(const std::string& path) const {
        const std::string& name = name_of(path);
        CheckRules rules = check_rules(*configurations().for_file(name == "-" ? std::string() : name), name);
        rules.selected = selected.empty() ? rules.selected : selected;
        rules.ignored = ignored.empty() ? rules.ignored : ignored;
        rules.fail_on = fail_on.empty() ? rules.fail_on : severity_of(fail_on);
        return rules;
    }
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

std::string text_of(const std::string& path, const Finding& finding, NumberedLines& lines, const Colours& colours) {
    std::string text = colours.place + shown_place(path, finding.line, finding.column) + ':' + colours.off + ' ' +
                       colours.severities[index_of(finding.severity)] + severity_name(finding.severity) + ':' + colours.off +
                       ' ' + printable(finding.message) + " [" + finding.code + "]\n";
    if (finding.line != 0) {
        const bool has_column = finding.column != 0;
        text += excerpt(lines.line(finding.line), has_column ? finding.column - 1 : 0,
                        has_column ? std::max<std::size_t>(finding.length, 1) : 0, colours.mark, colours.off);
    }
    return finding.hint.empty() ? text : text + "  hint: " + printable(finding.hint) + '\n';
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
void tell_findings(const std::string& path, const FixedFile& file, Severity fail_on, const CheckArguments& arguments,
                   const Colours& colours, FileResult& result) {
    const std::string& name = arguments.name_of(path);
    std::string text;
    if (const CheckFormat* form = arguments.form()) {
        text = form->part({name, file.text, file.findings, fail_on});
    } else {
        NumberedLines lines(file.text);
        for (const Finding& finding : file.findings) {
            text += text_of(name, finding, lines, colours);
        }
    }
    const bool prints_text = arguments.fixing.fix && path == "-" && !arguments.fixing.diff;
    if (prints_text) {
        result.err += text;
    } else if (!arguments.fixing.diff) {
        result.out += text;
    }
}

FileResult result_of(const std::string& path, const FixedFile& file, Severity fail_on, const CheckArguments& arguments,
                     const Colours& colours) {
    FileResult result;
    result.out = file.out;
    result.err = file.err;
    result.fixes = count_fixes(file.findings, arguments.fixing);
    result.fixes.applied = file.applied;
    result.code = arguments.fixing.diff && !result.out.empty() ? exit_failure : exit_success;
    for (const Finding& finding : file.findings) {
        ++result.counts[index_of(finding.severity)];
        ++result.codes[finding.code];
        if (is_code_of_site(finding.code)) {
            result.site_rules.emplace(finding.code, finding.message);
        }
        result.code = finding.severity >= fail_on ? exit_failure : result.code;
    }
    if (!arguments.statistics) {
        tell_findings(path, file, fail_on, arguments, colours, result);
    }
    return result;
}

FileResult check_file(const std::string& path, const CheckArguments& arguments, const Colours& colours,
                      quor::core::fs::FolderFlushes& folders, SharedCheckpoints& shared) {
    const auto rules = std::make_shared<CheckRules>(arguments.rules_of(path));
    const std::string content = read_text(path);
    const ChosenJobs jobs(arguments.where, path, content, NamedFiles::Opened);
    const auto is_wanted = [&jobs](const Finding& finding) { return jobs.has(finding.job); };
    const auto file = std::make_shared<FixedFile>();
    FileCheckpoints checkpoints;
    CheckOptions options = rules->put_into({});
    options.path = path == "-" ? std::string() : path;
    if (arguments.fixing.works()) {
        *file = fix_file(path, arguments.name_of(path), content, arguments.fixing, is_wanted, options, folders);
    } else {
        options.begun_checkpoints = rules->reports(SharedCheckpoints::shared_code) ? &checkpoints.begun : nullptr;
        options.read_checkpoints =
            path != "-" && rules->reports(SharedCheckpoints::missing_code) ? &checkpoints.read : nullptr;
        file->text = content;
        file->findings = check_text(content, options);
    }
    rules->judge(arguments.name_of(path), file->text, file->findings);
    std::erase_if(file->findings, [&](const Finding& finding) { return !is_wanted(finding); });
    FileResult result = result_of(path, *file, rules->fail_on, arguments, colours);
    if (!checkpoints.begun.empty() || !checkpoints.read.empty()) {
        result.in_order = [&arguments, &colours, &shared, rules, path, file, checkpoints](FileResult& told) {
            if (shared.add_findings(arguments.name_of(path), file->text, checkpoints, file->findings)) {
                rules->apply(file->findings);
                told = result_of(path, *file, rules->fail_on, arguments, colours);
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
    SiteRules site_rules;
    FixCounts fixes;

    void add(const FileResult& result) {
        files += result.code == exit_usage ? 0 : 1;
        std::transform(counts.begin(), counts.end(), result.counts.begin(), counts.begin(), std::plus<>());
        for (const auto& [code, count] : result.codes) {
            codes[code] += count;
        }
        site_rules.insert(result.site_rules.begin(), result.site_rules.end());
        fixes += result.fixes;
    }
};

// Puts what a form needs around the parts of the files.
void use_format(const CheckArguments& arguments, const Totals& totals, Batch& batch) {
    const CheckFormat* form = arguments.form();
    if (form == nullptr || arguments.statistics || arguments.fixing.diff) {
        return;
    }
    batch.head = form->head();
    batch.separator = form->separator;
    if (form->foot != nullptr) {
        batch.foot = [form, &totals] { return form->foot(totals.site_rules); };
    }
    batch.tell_problem = [form](const std::string& path, const std::string& message) {
        return form->part({path, {}, {}, Severity::Error, message});
    };
}

void check_format_options(CheckArguments& arguments) {
    arguments.format = arguments.batch.json ? "json" : arguments.format;
    const CheckFormat* form = arguments.form();
    if (form == nullptr || form->foot == nullptr) {
        return;
    }
    // What else goes to standard output would stand within the document.
    const std::vector<std::string>& paths = arguments.batch.paths;
    const bool prints_text = arguments.fixing.fix && std::find(paths.begin(), paths.end(), "-") != paths.end();
    const char* other = arguments.statistics    ? "--statistics"
                        : arguments.fixing.diff ? "--diff"
                        : prints_text           ? "--fix of standard input"
                                                : nullptr;
    if (other != nullptr) {
        throw CLI::ValidationError("--output-format", arguments.format + " does not go with " + other);
    }
}

int check(CheckArguments& arguments) {
    check_format_options(arguments);
    const bool asks_for_codes = arguments.list || !arguments.explained.empty();
    if (arguments.batch.paths.empty() && !asks_for_codes) {
        throw CLI::RequiredError("FILE");
    }
    require_codes("--select", arguments.selected);
    require_codes("--ignore", arguments.ignored);
    require_codes("--explain", arguments.explained);
    check_fix_options(arguments.fixing);
    check_rules(*configurations().for_folder({}), {});  // a mistake in them is told before any file is looked at
    const bool tells_in_json = arguments.format == "json" && !arguments.batch.paths.empty();
    require_facts(tells_in_json ? arguments.batch.paths.front() : std::string());
    if (asks_for_codes) {
        print_codes(arguments.explained, arguments.format == "json");
        return exit_success;
    }
    const Colours& colours = output_has_colour() ? terminal_colours : no_colours;
    Totals totals;
    quor::core::fs::FolderFlushes folders;
    SharedCheckpoints shared(arguments.batch.paths, arguments.batch.walk);
    Batch batch;
    batch.work = [&](const std::string& path) { return check_file(path, arguments, colours, folders, shared); };
    batch.note = [&](const FileResult& result) { totals.add(result); };
    use_format(arguments, totals, batch);
    PassedOver passed_over;
    batch.passed_over = &passed_over;
    const int exit_code = run_batch(arguments.batch, batch);
    folders.flush();
    if (arguments.statistics) {
        print_statistics(totals.codes);
    }
    if (arguments.format == "text" && !arguments.quiet) {
        print_summary(totals.files, totals.counts);
        std::fputs(passed_over_summary(passed_over).c_str(), stderr);
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
    command
        .add_option("--output-format", arguments->format,
                    "How findings are told: text (default), json, gcc, github, gitlab, sarif, junit")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"text", "json", "gcc", "github", "gitlab", "sarif", "junit"}));
    command.add_option("--stdin-filename", arguments->stdin_name, "Tell of standard input by this name")->type_name("FILE");
    add_colour_option(command);
    command.add_flag("-q,--quiet", arguments->quiet, "Print no summary");
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

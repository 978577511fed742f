// quor-gjf diagnose: tells of outputs how their jobs ended, why, and what may help.
#include "batch.hpp"
#include "check_codes.hpp"
#include "commands.hpp"
#include "input.hpp"
#include "plain_text.hpp"
#include "terminal.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

struct DiagnoseArguments {
    BatchOptions batch;
    bool details = false;
    bool steps = false;
    bool table = false;
    bool list = false;
    std::vector<std::string> explained;
};

std::string decimals(double value, const char* form) {
    char text[64];
    std::snprintf(text, sizeof text, form, value);
    return text;
}

std::string energy_text(double value) { return decimals(value, "%.8f"); }

// "error in link 502, scf_502: the SCF did not converge"
std::string verdict(const Diagnosis& diagnosis) {
    std::string text = termination_name(diagnosis.summary.termination());
    text += diagnosis.link > 0 ? " in link " + std::to_string(diagnosis.link) : std::string();
    text += diagnosis.cause.empty() ? std::string() : ", " + diagnosis.cause + ": " + diagnosis.says;
    if (diagnosis.summary.termination() == StepTermination::Normal) {
        for (const OutputFinding& finding : diagnosis.findings) {
            text += finding.severity == "warning" ? ", but: " + finding.message : std::string();
        }
    }
    return text + (diagnosis.may_run ? "; it may still be running" : "");
}

void append_point(std::string& text, const char* name, const OutputPoint& point) {
    text += std::string("  ") + name + " geometry: line " + std::to_string(point.geometry.line) + ", " +
            output_frame_name(point.geometry.frame) + " orientation";
    text += point.scan_point > 0 ? ", scan point " + std::to_string(point.scan_point) : std::string();
    text += point.step > 0 ? ", step " + std::to_string(point.step) : std::string();
    text += point.energy ? ", energy " + energy_text(point.energy->value) : ", no finished energy";
    text += point.rms_force ? ", RMS force " + decimals(*point.rms_force, "%.6f") : std::string();
    text += '\n';
}

std::string molecule_text(const OutputSummary& summary) {
    std::string text = "  " + output_formula(summary) + ", " + counted(atom_count(summary), "atom");
    if (const OutputCharge* const charge = summary.total_charge()) {
        text += ", charge " + std::to_string(charge->charge) + ", multiplicity " + std::to_string(charge->multiplicity);
    }
    text += summary.functions ? ", " + std::to_string(*summary.functions) + " basis functions" : std::string();
    return text + '\n';
}

void append_optimization(std::string& text, const OutputSummary& summary) {
    constexpr const char* ends[] = {"completed", "stopped", "aborted"};
    const OptimizationSummary& optimization = *summary.optimization;
    text += std::string("  optimization: ") + (optimization.end ? ends[static_cast<int>(*optimization.end)] : "under way") +
            " at step " + std::to_string(optimization.steps) + " of " + std::to_string(optimization.max_steps) +
            (optimization.converged ? ", converged" : ", not converged") +
            (optimization.has_no_progress ? "; no step is better than the first\n" : "\n");
    if (!summary.scan.empty()) {
        text += "  scan: " + std::to_string(summary.scan.size()) + " of " + std::to_string(summary.scan_points) +
                " points begun\n";
    }
}

void append_results(std::string& text, const OutputSummary& summary) {
    if (summary.energy) {
        text += "  energy: " + energy_text(summary.energy->value) + " (" + energy_kind_name(summary.energy->kind) + ")\n";
    }
    if (summary.optimization) {
        append_optimization(text, summary);
    }
    if (summary.frequencies) {
        text += "  frequencies: " + std::to_string(summary.frequencies->count) + ", " +
                std::to_string(summary.frequencies->imaginary) + " imaginary, lowest " +
                decimals(summary.frequencies->lowest, "%.2f") + " cm-1\n";
    }
    if (summary.last) {
        append_point(text, "last", *summary.last);
    }
    if (summary.best) {
        append_point(text, "best", *summary.best);
    }
}

// Those beside the cause of the failure, which the first line tells.
void append_findings(std::string& text, const Diagnosis& diagnosis) {
    for (const OutputFinding& finding : diagnosis.findings) {
        if (diagnosis.cause.empty() || finding.cause != diagnosis.cause) {
            text += "  " + finding.severity + ' ' + finding.code +
                    (finding.line > 0 ? ", line " + std::to_string(finding.line) : "") + ": " + finding.message +
                    (finding.hint.empty() ? "" : "; " + finding.hint) + '\n';
        }
    }
}

std::string details_of(const Diagnosis& diagnosis) {
    const OutputSummary& summary = diagnosis.summary;
    std::string text;
    if (diagnosis.cause_line > 0) {
        text += "  line " + std::to_string(diagnosis.cause_line) + ": " + printable(diagnosis.cause_text) + '\n';
    }
    if (!diagnosis.scheduler_file.empty()) {
        text += "  " + printable(diagnosis.scheduler_file) + ": " + printable(diagnosis.scheduler_text) + '\n';
    }
    text += diagnosis.told_mem.empty() ? "" : "  memory that would do: " + printable(diagnosis.told_mem) + '\n';
    text += diagnosis.remedy.empty() ? "" : "  may help: " + diagnosis.remedy + '\n';
    append_findings(text, diagnosis);
    text += summary.route.empty() ? "" : "  " + printable(summary.route) + '\n';
    text += summary.last ? molecule_text(summary) : std::string();
    append_results(text, summary);
    return text;
}

// A line for each point: what is better than all before it is marked.
std::string steps_text(const std::vector<OutputPoint>& points) {
    std::string text = "  point  step          line                energy         change  RMS force\n";
    const OutputPoint* before = nullptr;
    double lowest = 0;
    for (const OutputPoint& point : points) {
        char line[160];
        const bool has_change = point.energy && before != nullptr && before->energy;
        const bool is_lowest = point.energy && (before == nullptr || point.energy->value < lowest);
        std::snprintf(line, sizeof line, "  %5d  %4d  %12zu  %20s  %13s  %9s%s\n", point.scan_point, point.step,
                      point.geometry.line, point.energy ? energy_text(point.energy->value).c_str() : "-",
                      has_change ? decimals(point.energy->value - before->energy->value, "%+.8f").c_str() : "-",
                      point.rms_force ? decimals(*point.rms_force, "%.6f").c_str() : "-", is_lowest ? "  *" : "");
        text += line;
        if (point.energy) {
            lowest = is_lowest ? point.energy->value : lowest;
            before = &point;
        }
    }
    return text;
}

// Outputs by what happened to them, in the order of its name.
class CauseTable {
   public:
    void add(const Diagnosis& diagnosis, const std::string& path) {
        const std::string cause =
            diagnosis.cause.empty() ? termination_name(diagnosis.summary.termination()) : diagnosis.cause;
        const std::lock_guard lock(mutex_);
        files_[cause].insert(path);
    }
    std::string text() const {
        std::string text;
        for (const auto& [cause, paths] : files_) {
            text += cause + ": " + std::to_string(paths.size()) + '\n';
            for (const std::string& path : paths) {
                text += "  " + printable(path) + '\n';
            }
        }
        return text;
    }

   private:
    std::mutex mutex_;
    std::map<std::string, std::set<std::string>> files_;
};

FileResult diagnose_one(const std::string& path, const DiagnoseArguments& arguments, CauseTable& table) {
    std::vector<OutputPoint> points;
    const auto note = [&points](const OutputPoint& point) {
        points.push_back(point);
        points.back().standard.atoms.clear();
        points.back().geometry.atoms.clear();
    };
    FileResult result;
    try {
        const Diagnosis diagnosis = diagnose_file(path, arguments.steps ? PointListener(note) : PointListener());
        result.code = diagnosis.summary.termination() == StepTermination::Normal ? exit_success : exit_failure;
        if (arguments.table) {
            table.add(diagnosis, path);
        } else if (arguments.batch.json) {
            result.out = diagnosis_json(path, diagnosis, arguments.steps ? &points : nullptr);
        } else {
            result.out = printable(path) + ": " + verdict(diagnosis) + '\n';
            result.out += arguments.details ? details_of(diagnosis) : std::string();
            result.out += arguments.steps ? steps_text(points) : std::string();
        }
    } catch (const NoOutput& error) {
        // Below a folder files of schedulers and other programs have such names too.
        const std::vector<std::string>& named = arguments.batch.paths;
        result.foreign = std::find(named.begin(), named.end(), path) == named.end();
        if (!result.foreign) {
            throw UnreadableInput(error.what());
        }
    } catch (const OutputError& error) {
        throw UnreadableInput(error.what());
    }
    return result;
}

// Returns the exit code: a code that is none is a misuse.
int print_output_codes(const DiagnoseArguments& arguments) {
    std::vector<OutputCodeDescription> wanted = output_code_descriptions();
    for (const std::string& code : arguments.explained) {
        if (std::none_of(wanted.begin(), wanted.end(), [&](const auto& one) { return one.code.rfind(code, 0) == 0; })) {
            throw CLI::ValidationError("--explain", "outputs have no code " + code + "; quor-gjf diagnose --list names all");
        }
    }
    for (const OutputCodeDescription& one : wanted) {
        const bool is_wanted =
            arguments.explained.empty() || std::any_of(arguments.explained.begin(), arguments.explained.end(),
                                                       [&](const auto& code) { return one.code.rfind(code, 0) == 0; });
        std::string text = one.code + "  " + one.severity + "  " + one.title + '\n';
        text += arguments.explained.empty()
                    ? ""
                    : "\n" + one.explanation + "\n" + (one.remedy.empty() ? "" : "May help: " + one.remedy + ".\n");
        std::fputs(!is_wanted ? "" : arguments.batch.json ? output_code_json(one).c_str() : text.c_str(), stdout);
    }
    return exit_success;
}

int diagnose(DiagnoseArguments& arguments) {
    if (const std::string missing = missing_for_diagnosis(); !missing.empty()) {
        throw MissingVocabulary(missing);
    }
    if (arguments.list || !arguments.explained.empty()) {
        return print_output_codes(arguments);
    }
    if (arguments.batch.paths.empty()) {
        throw CLI::RequiredError("FILE");
    }
    arguments.details = arguments.details || !names_several_files(arguments.batch.paths);
    arguments.batch.walk.outputs = true;
    CauseTable table;
    Batch batch;
    batch.work = [&](const std::string& path) { return diagnose_one(path, arguments, table); };
    const int exit_code = run_batch(arguments.batch, batch);
    std::fputs(table.text().c_str(), stdout);
    return exit_code;
}

}  // namespace

void add_diagnose_command(CLI::App& command, int& exit_code) {
    const auto arguments = std::make_shared<DiagnoseArguments>();
    add_batch_options(command, arguments->batch);
    command.get_option("FILE")->description(
        "Outputs, also compressed by gzip or xz, and formatted checkpoints; folders with all *.log and *.out below them; - "
        "reads standard input");
    command.add_flag("--details", arguments->details, "Tell all of each output, as of a single one");
    command.add_flag("--steps", arguments->steps,
                     "List the geometries with their energies and forces; * marks the lowest energy so far");
    command.add_flag("--table", arguments->table, "List the outputs by what happened to them")
        ->excludes("--json")
        ->excludes("--steps");
    command.add_flag("--list", arguments->list, "Name all codes of findings")->excludes("FILE");
    add_code_option(command, "--explain", arguments->explained, "Explain a code, or all that begin so");
    command.get_option("--explain")->excludes("FILE");
    command.callback([arguments, &exit_code] { exit_code = diagnose(*arguments); });
}

}  // namespace quor_gjf

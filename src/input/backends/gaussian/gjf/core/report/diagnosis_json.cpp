// What happened to a job, as JSON.
#include <core/fs/read_regular_file.hpp>
#include <gjf/core/next/recipes.hpp>
#include <gjf/core/output/diagnosis.hpp>
#include <gjf/core/report/json_values.hpp>

#include <stdexcept>
#include <utility>
#include <vector>

namespace quor::input::gaussian {
namespace {

Json json_of_step(const SummarizedStep& step) {
    Json object = {{"line", step.line},
                   {"route", step.route},
                   {"internal", step.is_internal},
                   {"termination", termination_name(step.end.termination)}};
    if (step.end.link > 0) {
        object["link"] = step.end.link;
    }
    return object;
}

Json json_of_charge(const OutputCharge& charge) {
    Json object = {{"charge", charge.charge}, {"multiplicity", charge.multiplicity}};
    set_text(object, "of", charge.of);
    return object;
}

Json json_of_point(const OutputPoint& point) {
    Json object = {{"line", point.geometry.line}, {"frame", output_frame_name(point.geometry.frame)}, {"step", point.step}};
    if (point.scan_point > 0) {
        object["scan_point"] = point.scan_point;
    }
    if (point.energy) {
        object["energy"] = point.energy->value;
    }
    if (point.rms_force) {
        object["rms_force"] = *point.rms_force;
    }
    return object;
}

Json json_of_optimization(const OutputSummary& summary) {
    constexpr const char* end_names[] = {"completed", "stopped", "aborted"};
    const OptimizationSummary& optimization = *summary.optimization;
    Json object = {{"state", optimization.end ? end_names[static_cast<std::size_t>(*optimization.end)] : "running"},
                   {"steps", optimization.steps},
                   {"max_steps", optimization.max_steps},
                   {"converged", optimization.converged}};
    if (optimization.has_no_progress) {
        object["no_progress"] = true;
    }
    return object;
}

Json json_of_scan(const OutputSummary& summary) {
    const auto json_of = [](const ScanPoint& point) {
        Json object = {{"point", point.point}, {"steps", point.steps}, {"converged", point.converged}};
        if (point.energy) {
            object["line"] = point.line;
            object["energy"] = *point.energy;
        }
        return object;
    };
    Json object = {{"points", list_of(summary.scan, json_of)}};
    if (summary.scan_points > 0) {
        object["asked"] = summary.scan_points;
    }
    return object;
}

Json json_of_frequencies(const FrequencySummary& frequencies) {
    Json object = {{"count", frequencies.count}, {"imaginary", frequencies.imaginary}, {"lowest", frequencies.lowest}};
    if (frequencies.is_stationary) {
        object["stationary"] = *frequencies.is_stationary;
    }
    return object;
}

Json json_of_output_finding(const OutputFinding& finding) {
    Json object = {{"code", finding.code}, {"severity", finding.severity}, {"message", finding.message}};
    if (finding.line > 0) {
        object["line"] = finding.line;
    }
    object["hint"] = finding.hint;
    set_text(object, "cause", finding.cause);
    return object;
}

Json json_of_cure(const Cure& cure) {
    return {{"id", cure.id},
            {"attempt", cure.attempt},
            {"title", cure.title},
            {"edits", cure.edits},
            {"geometry", cure.geometry},
            {"certainty", cure.certainty},
            {"applied_by_tool", cure.applied_by_tool}};
}

// The job beside the output decides which cures fit; one that cannot be read is none.
std::string job_beside(const Diagnosis& diagnosis) {
    constexpr std::size_t longest = std::size_t{16} << 20;
    if (diagnosis.job_file.empty()) {
        return {};
    }
    core::fs::ReadFile file = core::fs::read_regular_file(diagnosis.job_file, longest);
    return file.outcome == core::fs::ReadOutcome::Read ? std::move(file.text) : std::string();
}

// Where the recipes do not lie beside the facts, as in a browser, an output is told of without them.
std::vector<Cure> cures_at_hand(const Diagnosis& diagnosis) {
    try {
        return cures_of(diagnosis, job_beside(diagnosis));
    } catch (const std::runtime_error&) {
        return {};
    }
}

Json json_of_checkpoint(const CheckpointFacts& facts) {
    Json object = {{"kind", facts.kind},
                   {"method", facts.method},
                   {"basis", facts.basis},
                   {"force_constants", facts.has_force_constants},
                   {"whole", facts.is_whole}};
    if (facts.status) {
        object["status"] = *facts.status;
    }
    return object;
}

Json json_of_resources(const Diagnosis& diagnosis) {
    const OutputSummary& summary = diagnosis.summary;
    Json object = Json::object();
    set_text(object, "mem", link0_value(summary, "%mem"));
    const std::string shared = link0_value(summary, "%nprocshared");
    set_text(object, "nproc", shared.empty() ? link0_value(summary, "%nproc") : shared);
    if (summary.cpu_seconds > 0) {
        object["cpu_seconds"] = summary.cpu_seconds;
    }
    if (summary.wall_seconds > 0) {
        object["wall_seconds"] = summary.wall_seconds;
    }
    set_text(object, "told_mem", diagnosis.told_mem);
    return object;
}

void set_end(Json& object, const Diagnosis& diagnosis) {
    object["program"] = diagnosis.summary.program;
    set_text(object, "revision", diagnosis.summary.revision);
    object["termination"] = termination_name(diagnosis.summary.termination());
    if (diagnosis.link > 0) {
        object["link"] = diagnosis.link;
    }
    set_text(object, "cause", diagnosis.cause);
    if (diagnosis.cause_line > 0) {
        object["cause_line"] = diagnosis.cause_line;
        object["cause_text"] = diagnosis.cause_text;
    }
    set_text(object, "says", diagnosis.says);
    set_text(object, "remedy", diagnosis.remedy);
    if (diagnosis.may_run) {
        object["running"] = true;
    }
}

void set_molecule(Json& object, const OutputSummary& summary) {
    if (const OutputCharge* const charge = summary.total_charge()) {
        object["charge"] = charge->charge;
        object["multiplicity"] = charge->multiplicity;
    }
    object["charges"] = list_of(summary.charges, json_of_charge);
    object["atoms"] = atom_count(summary);
    set_text(object, "formula", output_formula(summary));
    set_text(object, "route", summary.route);
    object["link0"] = summary.link0;
    set_text(object, "title", summary.title);
    if (summary.functions) {
        object["nbasis"] = *summary.functions;
    }
    if (summary.electrons) {
        object["electrons"] = *summary.electrons;
    }
}

void set_results(Json& object, const OutputSummary& summary) {
    object["jobs"] = list_of(summary.steps, json_of_step);
    if (summary.energy) {
        object["energy"] = {
            {"value", summary.energy->value}, {"kind", energy_kind_name(summary.energy->kind)}, {"converged", true}};
    }
    if (summary.last) {
        object["geometry"] = {{"last", json_of_point(*summary.last)}};
    }
    if (summary.best) {
        object["geometry"]["best"] = json_of_point(*summary.best);
    }
    if (summary.optimization) {
        object["optimization"] = json_of_optimization(summary);
    }
    if (summary.frequencies) {
        object["frequencies"] = json_of_frequencies(*summary.frequencies);
    }
    if (!summary.scan.empty()) {
        object["scan"] = json_of_scan(summary);
    }
    if (summary.path_points > 0) {
        object["irc"] = {{"points", summary.path_points}, {"paths", summary.paths}};
    }
}

}  // namespace

std::string diagnosis_json(const std::string& path, const Diagnosis& diagnosis, const std::vector<OutputPoint>* points) {
    Json object = about_file(path);
    set_end(object, diagnosis);
    set_molecule(object, diagnosis.summary);
    set_results(object, diagnosis.summary);
    if (Json resources = json_of_resources(diagnosis); !resources.empty()) {
        object["resources"] = std::move(resources);
    }
    if (!diagnosis.scheduler_file.empty()) {
        object["scheduler"] = {{"file", diagnosis.scheduler_file}, {"reason", diagnosis.scheduler_text}};
    }
    set_text(object, "job_file", diagnosis.job_file);
    set_text(object, "checkpoint", diagnosis.checkpoint);
    if (diagnosis.summary.checkpoint) {
        object["formatted_checkpoint"] = json_of_checkpoint(*diagnosis.summary.checkpoint);
    }
    object["findings"] = list_of(diagnosis.findings, json_of_output_finding);
    object["cures"] = list_of(cures_at_hand(diagnosis), json_of_cure);
    if (points != nullptr) {
        object["steps"] = list_of(*points, json_of_point);
    }
    return json_line(object);
}

std::string output_code_json(const OutputCodeDescription& description) {
    Json object = versioned();
    object["code"] = description.code;
    object["severity"] = description.severity;
    object["title"] = description.title;
    object["explanation"] = description.explanation;
    object["remedy"] = description.remedy;
    return json_line(object);
}

}  // namespace quor::input::gaussian

// Chooses a recipe, and makes the new job by it.
#include <gjf/core/next/next_job.hpp>

#include <gjf/core/check/checker.hpp>
#include <gjf/core/check/fix_text.hpp>
#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/job/link0_keys.hpp>
#include <gjf/core/knowledge/failures.hpp>
#include <gjf/core/next/applied_recipe.hpp>
#include <gjf/core/next/base_job.hpp>
#include <gjf/core/next/edit_names.hpp>
#include <gjf/core/next/fitting_recipes.hpp>
#include <gjf/core/next/job_texts.hpp>
#include <gjf/core/next/new_geometry.hpp>
#include <gjf/core/next/new_names.hpp>

#include <algorithm>
#include <optional>
#include <utility>

namespace quor::input::gaussian {
namespace {

std::string_view kind_of(const std::string& cause) {
    const auto rows = failures();
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const Failure& row) { return row.id == cause; });
    return found == rows.end() ? std::string_view() : found->kind;
}

// All that is known before a recipe is chosen.
struct Workplace {
    const OldCalculation& old;
    const NextWish& wish;
    OutputFacts facts;
    BaseJob base;
    JobFile file;  // the base, for the conditions of recipes

    Workplace(const OldCalculation& calculation, const NextWish& wanted, bool with_later_jobs)
        : old(calculation),
          wish(wanted),
          facts(read_output_facts(calculation.output_path)),
          base(base_job(calculation, facts, with_later_jobs)),
          file("-", base.text) {}

    const std::vector<Recipe>& recipes() const { return wish.recipes.empty() ? default_recipes() : wish.recipes; }
    const OutputSummary& summary() const { return old.diagnosis.summary; }
};

bool has_completed_optimization(const OutputSummary& summary) {
    return summary.optimization && summary.optimization->end == OptimizationEnd::Completed && summary.scan.empty();
}

// Why a recipe cannot be used here; empty where it can.
std::string unmet_need(const Recipe& recipe, const Workplace& here) {
    if (recipe.needs_job && here.base.is_echo) {
        return "the old job is needed beside the output";
    }
    if (recipe.needs_checkpoint && !is_checkpoint_usable(here.old)) {
        return "a checkpoint that can be used is needed";
    }
    if (recipe.needs_modes &&
        here.facts.imaginary.size() < static_cast<std::size_t>(std::max(recipe.displacement.mode, 1))) {
        return "the output holds no imaginary vibration to move along";
    }
    return {};
}

const OutputPoint& highest_scan_point(const Workplace& here) {
    const std::vector<OutputPoint>& scan = here.facts.scan;
    const auto lower = [](const OutputPoint& a, const OutputPoint& b) { return a.energy->value < b.energy->value; };
    const auto highest = std::max_element(scan.begin(), scan.end(), lower);
    if (highest == scan.end()) {
        throw NextJobRefused("the output holds no relaxed scan");
    }
    if (!here.wish.force && (highest == scan.begin() || highest + 1 == scan.end())) {
        throw NextJobRefused("the highest point of the scan is its " +
                             std::string(highest == scan.begin() ? "first" : "last") + ": there is no maximum inside");
    }
    return *highest;
}

OutputGeometry displaced_geometry(const Workplace& here, const Displacement& displacement) {
    const OutputPoint& last = *here.summary().last;
    const ImaginaryMode& mode = here.facts.imaginary[static_cast<std::size_t>(displacement.mode) - 1];
    OutputGeometry geometry = last.standard.atoms.empty() ? last.geometry : last.standard;
    for (std::size_t i = 0; i < mode.atoms.size(); ++i) {
        const auto atom = static_cast<std::size_t>(mode.atoms[i]) - 1;
        if (atom >= geometry.atoms.size()) {
            throw NextJobRefused("the vibration moves atoms that the geometry has not");
        }
        for (std::size_t axis = 0; axis < 3; ++axis) {
            geometry.atoms[atom].position[axis] += displacement.amplitude * mode.displacements[i][axis];
        }
    }
    return geometry;
}

std::string told_point(const OutputPoint& point, const char* which) {
    std::string text = std::string("the ") + which + " geometry: line " + std::to_string(point.geometry.line) + ", " +
                       output_frame_name(point.geometry.frame) + " orientation";
    text += point.scan_point > 0 ? ", scan point " + std::to_string(point.scan_point) : std::string();
    return text + (point.step > 0 ? ", step " + std::to_string(point.step) : std::string());
}

// The geometry of a recipe; absent where the job keeps its own.
std::optional<OutputGeometry> wanted_geometry(const Workplace& here, const Recipe& recipe, RecipeGeometry which,
                                              std::vector<std::string>& remarks) {
    const OutputSummary& summary = here.summary();
    if (which == RecipeGeometry::Displaced) {
        remarks.push_back("moved along the vibration at " +
                          std::to_string(static_cast<int>(
                              here.facts.imaginary[static_cast<std::size_t>(recipe.displacement.mode) - 1].frequency)) +
                          " cm-1");
        return displaced_geometry(here, recipe.displacement);
    }
    const OutputPoint* point = nullptr;
    const char* name = "last";
    if (which == RecipeGeometry::HighestPoint) {
        point = &highest_scan_point(here);
        name = "highest";
    } else if (which == RecipeGeometry::Best && summary.best) {
        point = &*summary.best;
        name = "best";
    } else if (which == RecipeGeometry::Last || here.base.takes_geometry) {
        point = summary.last ? &*summary.last : nullptr;
    }
    if (point == nullptr) {
        if (here.base.takes_geometry) {
            throw NextJobRefused("the output holds no molecule");
        }
        return std::nullopt;
    }
    remarks.push_back(told_point(*point, name));
    if (which == RecipeGeometry::Best && summary.optimization && summary.optimization->has_no_progress) {
        remarks.emplace_back("no step is better than the first");
    }
    return point->geometry;
}

std::vector<EditOperation> operations_of(const Recipe& recipe, const Workplace& here) {
    std::vector<EditOperation> operations;
    for (const RecipeEdit& edit : recipe.edits) {
        operations.push_back(
            read_operation(*find_edit_option(edit.option), with_edit_names(edit.value, here.base.text, here.old.diagnosis)));
    }
    return operations;
}

// The optimization that came to its end is not run again where the step behind it failed.
bool leaves_optimization_out(const Workplace& here, const Recipe& recipe) {
    static const JobPredicate both("opt and freq");
    return recipe.kind == RecipeKind::Cure && here.summary().termination() != StepTermination::Normal &&
           here.summary().steps.back().is_internal && has_completed_optimization(here.summary()) && both.fits(here.file, 0);
}

// What check would mend by itself, in a job that Gaussian could not read.
// A word that is none is mended where it alone is wrong.
std::string mended(const std::string& text, const std::string& cause) {
    FixOptions options;
    options.unsafe = cause == "syntax";
    options.applies = [&](const Finding& finding) {
        const bool is_of_word = finding.code.starts_with("GJF-R") || finding.code.starts_with("GJF-W");
        return !options.unsafe || (is_of_word && finding.severity == Severity::Error);
    };
    const FixedText fixed = fix_text(text, options);
    if (fixed.text == text || (options.unsafe && fixed.applied.size() > 1)) {
        throw NextJobRefused("nothing in the job can be mended that can mean one thing alone");
    }
    return fixed.text;
}

void require_no_errors(const NewJob& job, bool force) {
    for (const Finding& finding : check_text(job.text)) {
        if (finding.severity == Severity::Error && !force) {
            throw NextJobRefused("the new job would have an error: line " + std::to_string(finding.line) + ": " +
                                 finding.message + " (" + finding.code + ")");
        }
    }
}

// The checkpoint as the new job names it, where it reads one.
std::string read_checkpoint(const Workplace& here, const std::string& text) {
    const JobReading job = read_jobs_with_layout(text).at(0);
    const CheckpointUse use = checkpoint_use(job);
    const bool reads =
        use.molecule || use.other || !use.refused.empty() || job.layout.route.text.find("restart") != std::string::npos;
    return reads && is_checkpoint_usable(here.old)
               ? path_from(here.old.diagnosis.checkpoint, new_folder(here.old, here.wish))
               : std::string();
}

struct Naming {
    std::string stem;  // of the new file
    std::string extension;
    std::string note;  // the comment line, without its beginning
};

Naming named(const Workplace& here, const std::string& stem, const std::string& note) {
    const std::string& name = here.wish.name;
    const std::size_t dot = name.rfind('.');
    return name.empty() ? Naming{stem, new_extension(here.old), note}
                        : Naming{name.substr(0, dot), dot == std::string::npos ? std::string() : name.substr(dot), note};
}

// Makes one job by a recipe.
NewJob made_job(const Workplace& here, const Recipe& recipe, const Naming& naming) {
    NewJob job{naming.stem + naming.extension, here.base.text, recipe.id,
               recipe.kind == RecipeKind::Cure ? recipe.attempt : 0, here.base.remarks};
    job.remarks.insert(job.remarks.begin(), recipe.says);
    std::vector<EditOperation> operations = operations_of(recipe, here);
    RecipeGeometry which = recipe.geometry;
    if (leaves_optimization_out(here, recipe)) {
        operations.push_back(read_operation(*find_edit_option("--remove-keyword"), "opt"));
        which = RecipeGeometry::Last;
        job.remarks.emplace_back("the optimization came to its end and is not run again");
    }
    AppliedEdits applied;
    if (which == RecipeGeometry::Checkpoint) {
        applied = restarted_job(job.text, operations);
    } else {
        const std::optional<OutputGeometry> geometry = wanted_geometry(here, recipe, which, job.remarks);
        job.text = geometry ? with_geometry(job.text, {*geometry, here.wish.cartesian}) : job.text;
        const bool is_mended =
            recipe.edits.empty() && which == RecipeGeometry::Same && kind_of(recipe.wanted_for) == "input";
        job.text = is_mended && job.text == here.base.old_text ? mended(job.text, recipe.wanted_for) : job.text;
        applied = with_recipe_edits(job.text, operations, here.base.is_echo);
    }
    job.remarks.insert(job.remarks.end(), applied.remarks.begin(), applied.remarks.end());
    job.text = with_checkpoint_names(applied.text, naming.stem, read_checkpoint(here, applied.text));
    job.text = with_note(job.text, naming.note);
    require_no_errors(job, here.wish.force);
    return job;
}

NewJob job_or_refusal(const Workplace& here, const Recipe& recipe, const Naming& naming) {
    try {
        return made_job(here, recipe, naming);
    } catch (const NextJobRefused&) {
        throw;
    } catch (const std::exception& error) {
        throw NextJobRefused(bare_message(error.what()));
    }
}

// Refuses where the output is no good beginning for what is asked.
void check_beginning(const OldCalculation& old, const std::string& to) {
    const OutputSummary& summary = old.diagnosis.summary;
    const bool is_normal = summary.termination() == StepTermination::Normal;
    if (old.diagnosis.may_run) {
        throw NextJobRefused("it may still be running: the output was written to less than ten minutes ago");
    }
    if (to == "restart" ? is_normal : !is_normal && !has_completed_optimization(summary)) {
        throw NextJobRefused(is_normal ? "the output ended normally: there is nothing to go on with"
                                       : "the output did not end normally" +
                                             (old.diagnosis.says.empty() ? std::string() : " (" + old.diagnosis.says + ")") +
                                             "; retry cures, --to restart goes on");
    }
    if (to == "irc" && (!summary.frequencies || summary.frequencies->imaginary != 1)) {
        throw NextJobRefused("a path begins at one imaginary vibration, and the output has " +
                             (summary.frequencies ? std::to_string(summary.frequencies->imaginary) : "no vibrations"));
    }
}

std::string end_of(const std::string& path) { return path.substr(path.find_last_of('/') + 1); }

bool is_cure(const Recipe& recipe, const std::string& cause) {
    return recipe.kind == RecipeKind::Cure && recipe.wanted_for == cause && !recipe.is_hint();
}

// The first attempt that was not made yet and can be made; throws where there is none.
const Recipe& next_attempt(const Workplace& here, const std::string& cause, const std::vector<Recipe>& known) {
    // What ran out of time goes on as often as it is asked for.
    const std::optional<AttemptNote> note = attempt_note(here.base.text);
    const bool counts = note && kind_of(cause) != "time";
    std::string reason =
        counts && note->id == cause ? "no attempt is left after " + std::to_string(note->attempt) : "no cure fits the job";
    for (const Recipe& recipe : known) {
        const bool is_used = counts && note->id == recipe.id && recipe.attempt <= note->attempt;
        if (!is_cure(recipe, cause) || is_used || !fits_job(recipe, here.file, 0)) {
            continue;
        }
        std::string unmet = unmet_need(recipe, here);
        try {
            operations_of(recipe, here);
        } catch (const std::exception& error) {
            unmet = error.what();
        }
        if (unmet.empty()) {
            return recipe;
        }
        reason = unmet;
    }
    throw NextJobRefused(reason);
}

Recipe route_recipe(const std::string& route) {
    Recipe recipe;
    recipe.kind = RecipeKind::Next;
    recipe.geometry = RecipeGeometry::Last;
    recipe.geometry_text = "last";
    recipe.edits = {{"--route", route}};
    recipe.says = "the route that was given, at the last geometry";
    recipe.id = "next";
    return recipe;
}

}  // namespace

std::vector<NewJob> next_jobs(const OldCalculation& old, const NextWish& wish) {
    if (!wish.force) {
        check_beginning(old, wish.to);
    }
    const Workplace here(old, wish, wish.to == "restart");
    const std::string from = " from " + end_of(old.output_path);
    std::vector<NewJob> jobs;
    if (!wish.route.empty()) {
        jobs.push_back(
            job_or_refusal(here, route_recipe(wish.route), named(here, output_stem(old) + "_next", "next: route" + from)));
        return jobs;
    }
    std::string reason = "no recipe fits the job";
    int attempt = 0;
    for (const Recipe& recipe : here.recipes()) {
        const bool is_wanted = recipe.kind == RecipeKind::Next && recipe.wanted_for == wish.to &&
                               (attempt == 0 || recipe.attempt == attempt) && !recipe.is_hint() &&
                               fits_job(recipe, here.file, 0);
        const std::string unmet = is_wanted ? unmet_need(recipe, here) : std::string();
        reason = unmet.empty() ? reason : unmet;
        if (is_wanted && unmet.empty()) {
            attempt = recipe.attempt;
            jobs.push_back(
                job_or_refusal(here, recipe, named(here, output_stem(old) + '_' + recipe.id, "next: " + recipe.id + from)));
        }
    }
    if (jobs.empty()) {
        throw NextJobRefused(reason);
    }
    return jobs;
}

std::vector<NewJob> retry_jobs(const OldCalculation& old, const NextWish& wish) {
    const std::string cause = cause_to_cure(old.diagnosis);
    if (old.diagnosis.may_run && !wish.force) {
        throw NextJobRefused("it may still be running: the output was written to less than ten minutes ago");
    }
    if (cause.empty()) {
        if (old.diagnosis.summary.termination() == StepTermination::Normal) {
            return {};
        }
        throw NextJobRefused("why it failed is not known");
    }
    const std::string told = old.diagnosis.says.empty() ? cause : cause + ": " + old.diagnosis.says;
    const std::string remedy = old.diagnosis.remedy.empty() ? std::string() : "; what may help: " + old.diagnosis.remedy;
    const std::vector<Recipe>& known = wish.recipes.empty() ? default_recipes() : wish.recipes;
    if (std::none_of(known.begin(), known.end(), [&](const Recipe& recipe) { return is_cure(recipe, cause); })) {
        throw NextJobRefused(told + ": no program can cure it" + remedy);
    }
    try {
        const Workplace here(old, wish, true);
        const Recipe& recipe = next_attempt(here, cause, known);
        const std::string line = "retry: " + recipe.id + " attempt " + std::to_string(recipe.attempt) + " from ";
        return {job_or_refusal(here, recipe, named(here, retry_stem(old), line + end_of(old.output_path)))};
    } catch (const NextJobRefused& error) {
        throw NextJobRefused(told + ": " + error.what() + remedy);
    }
}

}  // namespace quor::input::gaussian

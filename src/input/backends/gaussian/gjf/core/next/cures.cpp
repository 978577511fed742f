// Tells which recipes fit the failure of an output.
#include <gjf/core/next/recipes.hpp>

#include <gjf/core/next/edit_names.hpp>
#include <gjf/core/next/fitting_recipes.hpp>
#include <gjf/core/predicate/job_file.hpp>

#include <algorithm>
#include <exception>
#include <stdexcept>

namespace quor::input::gaussian {
namespace {

// Weaker ones are noise of the grid and of the thresholds.
constexpr double soft_mode = -30;

Cure cure_of(const Recipe& recipe, const std::string& job_text, const Diagnosis& diagnosis) {
    Cure cure{recipe.id, recipe.attempt, recipe.says, {}, recipe.geometry_text, recipe.certainty, !recipe.is_hint()};
    for (const RecipeEdit& edit : recipe.edits) {
        cure.edits.push_back(edit.option);
        if (!edit.value.empty()) {
            cure.edits.push_back(with_edit_names(edit.value, job_text, diagnosis));
        }
    }
    return cure;
}

}  // namespace

std::size_t user_steps(const OutputSummary& summary) {
    return static_cast<std::size_t>(std::count_if(summary.steps.begin(), summary.steps.end(),
                                                  [](const SummarizedStep& step) { return !step.is_internal; }));
}

bool fits_job(const Recipe& recipe, const JobFile& file, std::size_t job) {
    return (!recipe.when || recipe.when->fits(file, job)) && (!recipe.unless || !recipe.unless->fits(file, job));
}

std::string cause_to_cure(const Diagnosis& diagnosis) {
    const OutputSummary& summary = diagnosis.summary;
    if (summary.termination() != StepTermination::Normal || !diagnosis.cause.empty() || !summary.frequencies ||
        !summary.optimization) {
        return diagnosis.cause;
    }
    const FrequencySummary& frequencies = *summary.frequencies;
    if (frequencies.is_stationary && !*frequencies.is_stationary) {
        return "freq_notconv";
    }
    if (summary.optimization->is_saddle) {
        return frequencies.imaginary > 1 ? "imag_ts_many" : "";
    }
    return frequencies.imaginary > 0 && frequencies.lowest < soft_mode ? "imag_min" : "";
}

std::vector<Cure> cures_of(const Diagnosis& diagnosis, const std::string& job_text) {
    std::vector<Cure> cures;
    const std::string cause = cause_to_cure(diagnosis);
    const std::string& route = diagnosis.summary.route;
    if (cause.empty() || (job_text.empty() && route.empty())) {
        return cures;
    }
    const std::string text = job_text.empty() ? route + "\n\nt\n\n0 1\nH 0 0 0\n\n" : job_text;
    const JobFile file("-", text);
    if (file.jobs().empty()) {
        return cures;
    }
    const std::size_t job = std::min(std::max<std::size_t>(user_steps(diagnosis.summary), 1), file.jobs().size()) - 1;
    for (const Recipe& recipe : default_recipes()) {
        const bool is_for_it = recipe.kind == RecipeKind::Cure && recipe.wanted_for == cause && fits_job(recipe, file, job);
        if (!is_for_it || (recipe.needs_checkpoint && diagnosis.checkpoint.empty())) {
            continue;
        }
        try {
            cures.push_back(cure_of(recipe, text, diagnosis));
        } catch (const std::runtime_error&) {
            continue;  // what it would be made of is not known here
        }
    }
    return cures;
}

}  // namespace quor::input::gaussian

// Finds the job that ended in its file, or makes it of the output's echo, and makes it stand alone.
#include <gjf/core/next/base_job.hpp>

#include <gjf/core/chemistry/elements.hpp>
#include <gjf/core/knowledge/failures.hpp>
#include <gjf/core/next/fitting_recipes.hpp>
#include <gjf/core/next/job_texts.hpp>
#include <gjf/core/next/new_geometry.hpp>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <optional>
#include <system_error>

namespace quor::input::gaussian {
namespace {

namespace fs = std::filesystem;

// The checkpoint is closed before the last lines of the output are written.
constexpr std::chrono::seconds closing_time{60};

bool is_of_kind(const std::string& cause, std::string_view kind) {
    const auto rows = failures();
    return std::any_of(rows.begin(), rows.end(), [&](const Failure& row) { return row.id == cause && row.kind == kind; });
}

// The labels that the output echoes, or symbols where it echoes others.
std::vector<std::string> labels_of(const OutputGeometry& geometry, const OutputFacts& facts) {
    std::vector<std::string> labels;
    const bool has_echo = facts.atoms.size() == geometry.atoms.size();
    for (std::size_t i = 0; i < geometry.atoms.size(); ++i) {
        const int number = geometry.atoms[i].number;
        if (has_echo) {
            labels.push_back(facts.atoms[i].label + (facts.atoms[i].freeze.empty() ? "" : ' ' + facts.atoms[i].freeze));
        } else {
            constexpr const char* others[] = {"Bq", "X", "Tv"};
            labels.push_back(number > 0 ? element_symbol(number) : others[std::min(-number, 2)]);
        }
    }
    return labels;
}

MoleculeText molecule_of_output(const OldCalculation& old, const OutputFacts& facts) {
    const OutputSummary& summary = old.diagnosis.summary;
    const OutputCharge* const charge = summary.total_charge();
    const OutputGeometry* const geometry = facts.first ? &*facts.first : summary.last ? &summary.last->geometry : nullptr;
    if (geometry == nullptr || charge == nullptr) {
        throw NextJobRefused("the output holds no molecule");
    }
    if (summary.charges.size() > 1) {
        throw NextJobRefused(
            "layers and fragments of the molecule stand in the old job alone, and there is none beside the "
            "output");
    }
    return {summary.title, std::to_string(charge->charge) + ' ' + std::to_string(charge->multiplicity),
            atom_lines(*geometry, labels_of(*geometry, facts))};
}

std::string echoed_job(const OldCalculation& old, const OutputFacts& facts) {
    const OutputSummary& summary = old.diagnosis.summary;
    if (summary.route.empty()) {
        throw NextJobRefused("the output holds no route, and there is no job beside it");
    }
    std::string text;
    for (const std::string& line : summary.link0) {
        text += (line.starts_with('%') ? "" : "%") + line + '\n';
    }
    text += summary.route + "\n\n";
    const JobReading route = read_jobs_with_layout(text).at(0);
    if (!route.job.control.route_keywords.empty() && route.layout.route.text.find("oniom") != std::string::npos) {
        throw NextJobRefused("the layers of an ONIOM job stand in the old job alone, and there is none beside the output");
    }
    const MoleculeText molecule = molecule_of_output(old, facts);
    text += (molecule.title.empty() ? "title" : molecule.title) + "\n\n" + molecule.charge + '\n' + molecule.atoms + "\n\n";
    return text + facts.modredundant + (facts.modredundant.empty() ? "" : "\n");
}

bool has_molecule(const std::string& text) {
    const std::vector<JobReading> jobs = read_jobs_with_layout(text);
    return !jobs.empty() && jobs[0].job.geom.atom_count() > 0 && !jobs[0].places.charge_line.empty();
}

void refuse_words(const std::vector<std::string>& words) {
    if (!words.empty()) {
        throw NextJobRefused("the route reads from the checkpoint what nothing else tells (" + words.front() +
                             "), and that cannot be used");
    }
}

// Gives the job a molecule of its own, in place of the one that it read.
void bring_molecule(BaseJob& base, const OldCalculation& old, const OutputFacts& facts, const std::vector<JobReading>& jobs,
                    std::size_t index) {
    if (has_molecule(base.text)) {
        base.remarks.emplace_back("the atoms of the job are taken in place of the checkpoint's");
        return;
    }
    base.takes_geometry = true;
    for (std::size_t donor = index; donor-- > 0;) {
        if (jobs[donor].job.geom.atom_count() > 0) {
            base.text = with_molecule(base.text, molecule_text(old.job_text, jobs[donor]));
            base.remarks.push_back("the molecule is that of job " + std::to_string(donor + 1) + ", written out");
            return;
        }
    }
    base.text = with_molecule(base.text, molecule_of_output(old, facts));
    base.remarks.emplace_back("the molecule is that of the output, written out");
}

std::size_t job_index(const OldCalculation& old, std::size_t count) {
    const std::size_t steps = std::max<std::size_t>(user_steps(old.diagnosis.summary), 1);
    if (steps > count) {
        throw NextJobRefused("the output has " + std::to_string(steps) + " jobs, the job file " + std::to_string(count));
    }
    return steps - 1;
}

void settle_checkpoint(BaseJob& base, const OldCalculation& old, const OutputFacts& facts,
                       const std::vector<JobReading>& jobs, std::size_t index) {
    const CheckpointUse use = checkpoint_use(jobs[index]);
    const bool usable = is_checkpoint_usable(old);
    if (!usable) {
        refuse_words(use.refused);
    }
    base.reads_checkpoint = usable && (use.other || !use.refused.empty());
    base.text = without_checkpoint_words(base.text, usable);
    if (!usable && use.other) {
        base.remarks.emplace_back("nothing is read from the checkpoint, which cannot be used");
    }
    if (use.molecule || !has_molecule(base.text)) {
        bring_molecule(base, old, facts, jobs, index);
    }
}

}  // namespace

bool is_checkpoint_usable(const OldCalculation& old) {
    const Diagnosis& diagnosis = old.diagnosis;
    if (diagnosis.checkpoint.empty() || !diagnosis.summary.energy || is_of_kind(diagnosis.cause, "checkpoint")) {
        return false;
    }
    std::error_code error;
    const fs::file_time_type checkpoint = fs::last_write_time(diagnosis.checkpoint, error);
    const fs::file_time_type output = error ? checkpoint : fs::last_write_time(old.output_path, error);
    return !error && checkpoint + closing_time >= output;
}

BaseJob base_job(const OldCalculation& old, const OutputFacts& facts, bool with_later_jobs) {
    BaseJob base;
    if (old.job_text.empty()) {
        base.is_echo = true;
        base.text = echoed_job(old, facts);
        base.remarks.emplace_back("there is no job beside the output: this one is made of what it echoes");
        const std::vector<JobReading> jobs = read_jobs_with_layout(base.text);
        const CheckpointUse use = checkpoint_use(jobs.at(0));
        const bool usable = is_checkpoint_usable(old);
        if (!usable) {
            refuse_words(use.refused);
        }
        base.reads_checkpoint = usable && use.other;
        // With geom=check the molecule was read for something else: taken out, it is the job's.
        base.text = without_checkpoint_words(base.text, usable);
        return base;
    }
    const std::vector<JobReading> jobs = read_jobs_with_layout(old.job_text);
    if (jobs.empty()) {
        throw NextJobRefused("the job file beside the output holds no job");
    }
    const std::size_t index = job_index(old, jobs.size());
    base.old_text = jobs_from(old.job_text, jobs, index, true);
    base.text = jobs_from(old.job_text, jobs, index, !with_later_jobs);
    if (index > 0) {
        base.remarks.push_back("begins at job " + std::to_string(index + 1) + " of the file");
    }
    settle_checkpoint(base, old, facts, jobs, index);
    return base;
}

}  // namespace quor::input::gaussian

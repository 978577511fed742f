// Applies operations to the jobs of a document, and compares what is found before and after.
#include <gjf/core/editing/edited_text.hpp>

#include <gjf/core/check/change_checks.hpp>
#include <gjf/core/document/gjf_document.hpp>
#include <gjf/core/job/extra_input_kind.hpp>
#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/sections/section_kinds.hpp>
#include <gjf/core/text/span.hpp>

#include <set>
#include <stdexcept>
#include <string_view>

namespace quor::input::gaussian {
namespace {

// Tells whether a job has in the file what an operation works on.
bool has_target(const GJFDocument& document, std::size_t job, EditTarget target) {
    switch (target) {
        case EditTarget::Head:
            return true;
        case EditTarget::TitleAndCharge:
            return document.layout(job).charge_line != 0;
        default:
            return document.job(job).get_data().geom.atom_count() != 0;
    }
}

std::string lacking(EditTarget target) {
    return target == EditTarget::Atoms ? "there are no atoms: the molecule comes from a checkpoint or another file"
                                       : "there is no title and no charge: they come from a checkpoint";
}

bool apply(const EditOperation& operation, GJFEditor& job, EditContext& context) {
    const bool wants_atoms = operation.option->target == EditTarget::Atoms;
    if (wants_atoms && job.get_data().geom.format == GeometryFormat::ZMatrix) {
        throw std::runtime_error("the molecule is a Z-matrix, and its rows cannot be changed this way");
    }
    return operation.edit(job, context);
}

// Says once a file what an operation found to say of its jobs.
void tell(const EditOperation& operation, const EditContext& context, bool found, std::vector<std::string>& remarks) {
    std::set<std::string> texts(context.remarks.begin(), context.remarks.end());
    if (!found) {
        texts.insert("found nothing to change");
    }
    const std::string as_given = operation.option->name + (operation.value.empty() ? std::string() : ' ' + operation.value);
    for (const std::string& text : texts) {
        remarks.push_back(as_given + ": " + text);
    }
}

// The jobs of a document that are edited.
struct EditedJobs {
    GJFDocument& document;
    const std::string& path;
    std::size_t only;
    const ChosenJobs& chosen;

    bool has(std::size_t job) const { return (only != 0 || document.readable(job)) && chosen.has(job + 1); }
};

void apply_to_jobs(const EditOperation& operation, const EditedJobs& jobs, std::vector<std::string>& remarks) {
    const EditTarget target = operation.option->target;
    bool applied = false;
    bool found = false;
    EditContext context{jobs.path, 0, {}};
    const std::size_t count = jobs.document.job_count();
    const std::size_t end = jobs.only == 0 ? count : jobs.only;
    for (std::size_t job = jobs.only == 0 ? 0 : jobs.only - 1; job < end; ++job) {
        if (!jobs.has(job) || !has_target(jobs.document, job, target)) {
            continue;
        }
        applied = true;
        context.job = job + 1;
        try {
            found = apply(operation, jobs.document.job(job), context) || found;
        } catch (const std::exception& error) {
            const std::string where = count > 1 ? "job " + std::to_string(job + 1) + ": " : std::string();
            throw std::runtime_error(where + operation.option->name + ": " + bare_message(error.what()));
        }
    }
    if (!applied) {
        throw std::runtime_error(std::string(operation.option->name) + ": " + lacking(target));
    }
    tell(operation, context, found, remarks);
}

void require_job(const GJFDocument& document, std::size_t job) {
    if (job > document.job_count()) {
        throw std::runtime_error("there is no job " + std::to_string(job) + ": the file has " +
                                 std::to_string(document.job_count()));
    }
    if (job != 0 && !document.readable(job - 1)) {
        throw std::runtime_error("job " + std::to_string(job) + " cannot be read: " + document.fault(job - 1).message);
    }
}

std::vector<UnreadableJob> unreadable_jobs(const GJFDocument& document) {
    std::vector<UnreadableJob> jobs;
    for (std::size_t i = 0; i < document.job_count(); ++i) {
        if (!document.readable(i)) {
            const ReadingFault& fault = document.fault(i);
            jobs.push_back(
                {i + 1, line_and_column(document.original_text(), fault.place.begin).line, std::string(fault.message)});
        }
    }
    return jobs;
}

// Names the operation that takes out a section which nothing in the route asks for any more.
std::string with_removal(const std::string& message) {
    for (std::size_t i = 0; const auto kind = find_extra_input_kind(std::to_string(i)); ++i) {
        if (message.find("the section '" + std::string(extra_input_kind_name(*kind)) +
                         "', which would be read as the section '" +
                         extra_input_kind_name(ExtraInputSectionKind::Unknown)) != std::string::npos) {
            return message + "; --remove-section " + extra_input_short_name(*kind) + " takes it out";
        }
    }
    return message;
}

std::string written_text(const GJFDocument& document, bool force) {
    try {
        return document.to_text({force});
    } catch (const GJFParseException& error) {
        throw std::runtime_error(with_removal(bare_message(error.what())));
    }
}

}  // namespace

EditedText edit_text(const std::string& text, const EditPlan& plan, const std::string& path) {
    EditedText edited;
    const ChosenJobs chosen(plan.where, path, text, plan.included_files);
    GJFDocument document(text);
    require_job(document, plan.job);
    if (!chosen.has(plan.job)) {
        edited.text = text;
        return edited;
    }
    for (const EditOperation& operation : plan.operations) {
        apply_to_jobs(operation, {document, path, plan.job, chosen}, edited.remarks);
    }
    edited.text = written_text(document, plan.force);
    edited.unreadable = unreadable_jobs(document);
    edited.findings = plan.checks ? findings_of_change(text, edited.text) : std::vector<Finding>();
    edited.refused = plan.strict && !edited.findings.empty();
    if (edited.refused) {
        edited.text = text;
    }
    return edited;
}

}  // namespace quor::input::gaussian

// Applies operations, and finds out by the new route which sections stay.
#include <gjf/core/next/applied_recipe.hpp>

#include <gjf/core/document/gjf_document.hpp>
#include <gjf/core/editing/edited_text.hpp>
#include <gjf/core/job/link0_keys.hpp>
#include <gjf/core/reader/job_layout.hpp>
#include <gjf/core/sections/section_kinds.hpp>

#include <algorithm>
#include <stdexcept>

namespace quor::input::gaussian {
namespace {

EditOperation operation(const char* name, const std::string& value) {
    return read_operation(*find_edit_option(name), value);
}

EditedText edited(const std::string& text, const std::vector<EditOperation>& operations, bool force = false) {
    EditPlan plan;
    plan.operations = operations;
    plan.job = 1;
    plan.checks = false;
    plan.force = force;
    return edit_text(text, plan);
}

std::vector<ExtraInputSectionKind> kinds_in(const JobReading& job) {
    std::vector<ExtraInputSectionKind> kinds;
    for (const SectionLayout& section : job.layout.sections) {
        if (section.kind != ExtraInputSectionKind::Unknown &&
            std::find(kinds.begin(), kinds.end(), section.kind) == kinds.end()) {
            kinds.push_back(section.kind);
        }
    }
    return kinds;
}

bool has(const std::vector<ExtraInputSectionKind>& kinds, ExtraInputSectionKind kind) {
    return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

EditOperation removal(ExtraInputSectionKind kind) { return operation("--remove-section", extra_input_short_name(kind)); }

// A keyword that came out of the edit without options, which says nothing then.
std::vector<EditOperation> removals_of_bare_words(const std::string& text) {
    std::vector<EditOperation> operations;
    const std::vector<JobReading> jobs = read_jobs_with_layout(text);
    for (const RouteTree::Segment& segment : jobs.at(0).layout.route.segments) {
        for (const RouteTree::Keyword& keyword : segment.keywords) {
            if (keyword.options.empty() && (keyword.name == "geom" || keyword.name == "guess")) {
                operations.push_back(operation("--remove-keyword", keyword.name));
            }
        }
    }
    return operations;
}

// Which sections the route asks for after the operations.
std::vector<ExtraInputSectionKind> asked_for(const std::string& text, std::vector<EditOperation> operations,
                                             const std::vector<ExtraInputSectionKind>& kinds) {
    for (const ExtraInputSectionKind kind : kinds) {
        operations.push_back(removal(kind));
    }
    const std::string bare = edited(text, operations, true).text;
    return read_jobs_with_layout(bare).at(0).layout.missing;
}

void check_missing(const std::string& before, const std::string& after, bool is_echo) {
    const std::vector<ExtraInputSectionKind> old = read_jobs_with_layout(before).at(0).layout.missing;
    const std::vector<ExtraInputSectionKind> now = read_jobs_with_layout(after).at(0).layout.missing;
    for (const ExtraInputSectionKind kind : now) {
        if (is_echo || !has(old, kind)) {
            throw std::runtime_error(
                std::string("the route asks for the section '") + extra_input_kind_name(kind) +
                (is_echo ? "', which no output holds: the old job is needed beside it" : "', which the old job has not"));
        }
    }
}

// What operations say of their jobs, without those that found nothing to do.
std::vector<std::string> told(const EditedText& result) {
    std::vector<std::string> remarks;
    std::copy_if(result.remarks.begin(), result.remarks.end(), std::back_inserter(remarks),
                 [](const std::string& remark) { return remark.find("found nothing to change") == std::string::npos; });
    return remarks;
}

std::string line_of_words(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& word : words) {
        line += (line.empty() ? "" : " ") + word;
    }
    return line;
}

}  // namespace

AppliedEdits with_recipe_edits(const std::string& text, const std::vector<EditOperation>& operations, bool is_echo) {
    AppliedEdits applied{text, {}};
    const std::vector<JobReading> jobs = read_jobs_with_layout(text);
    const std::vector<ExtraInputSectionKind> kinds = kinds_in(jobs.at(0));
    if (!operations.empty()) {
        std::vector<EditOperation> all = operations;
        const std::vector<ExtraInputSectionKind> asked =
            kinds.empty() ? std::vector<ExtraInputSectionKind>() : asked_for(text, operations, kinds);
        for (const ExtraInputSectionKind kind : kinds) {
            if (!has(asked, kind)) {
                all.push_back(removal(kind));
                applied.remarks.push_back(std::string("the section '") + extra_input_kind_name(kind) +
                                          "' goes, which the route no longer asks for");
            }
        }
        const EditedText result = edited(text, all);
        applied.text = result.text;
        const std::vector<std::string> more = told(result);
        applied.remarks.insert(applied.remarks.end(), more.begin(), more.end());
        const std::vector<EditOperation> bare = removals_of_bare_words(applied.text);
        applied.text = bare.empty() ? applied.text : edited(applied.text, bare).text;
    }
    check_missing(text, applied.text, is_echo);
    return applied;
}

AppliedEdits restarted_job(const std::string& text, const std::vector<EditOperation>& operations) {
    GJFDocument document(text);
    EditContext context{"-", 1, {}};
    for (const EditOperation& each : operations) {
        each.edit(document.job(0), context);
    }
    const JobReading job = read_jobs_with_layout(text).at(0);
    const Span first = job.places.route_words.front();
    const std::string head = text.substr(0, text.rfind('\n', first.begin) + 1);
    std::string rest = text.substr(std::min<std::size_t>(job.places.lines.end(), text.size()));
    rest.erase(0, std::min(rest.find_first_not_of("\r\n"), rest.size()));
    return {head + line_of_words(document.job(0).get_data().control.route_keywords) + "\n\n" + rest,
            {"title, charge, molecule and sections go: a restart takes them from the checkpoint"}};
}

std::string with_checkpoint_names(const std::string& text, const std::string& stem, const std::string& oldchk) {
    const std::vector<JobReading> jobs = read_jobs_with_layout(text);
    std::vector<std::string> names;
    GJFDocument document(text);
    const auto new_name = [&](const std::string& old) {
        const auto found = std::find(names.begin(), names.end(), old);
        const auto place = static_cast<std::size_t>(found - names.begin());
        return found == names.end() ? old : stem + (place == 0 ? "" : '_' + std::to_string(place + 1)) + ".chk";
    };
    const Link0Key& chk = *find_link0_key("chk");
    const Link0Key& old_key = *find_link0_key("oldchk");
    for (std::size_t i = 0; i < document.job_count(); ++i) {
        if (!document.readable(i)) {
            continue;
        }
        const std::string named = link0_value(jobs[i].job.control, chk).value_or("");
        const std::string read = link0_value(jobs[i].job.control, old_key).value_or("");
        const bool is_kept = read.empty() || i == 0;
        if (i == 0 && read != oldchk) {
            oldchk.empty() ? document.job(i).remove_oldchk_file() : document.job(i).set_oldchk_file(oldchk);
        } else if (!is_kept && new_name(checkpoint_path(read)) != checkpoint_path(read)) {
            document.job(i).set_oldchk_file(new_name(checkpoint_path(read)));
        }
        if (!named.empty()) {
            if (std::find(names.begin(), names.end(), checkpoint_path(named)) == names.end()) {
                names.push_back(checkpoint_path(named));
            }
            document.job(i).set_checkpoint_file(new_name(checkpoint_path(named)));
        }
    }
    return document.to_text();
}

}  // namespace quor::input::gaussian

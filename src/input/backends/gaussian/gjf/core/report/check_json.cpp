// What was found in a file, texts that were mended or edited, and files that cannot be used, as JSON.
#include <gjf/core/report/json_values.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>

#include <algorithm>
#include <utility>

namespace quor::input::gaussian {
namespace {

Json json_of_edit(const TextEdit& edit) { return {{"begin", edit.begin}, {"end", edit.end}, {"text", edit.text}}; }

Json json_of_fix(const Fix& fix) {
    return {{"title", fix.title}, {"safety", fix_safety_name(fix.safety)}, {"edits", list_of(fix.edits, json_of_edit)}};
}

Json json_of_place(const RelatedPlace& place) {
    return {{"message", place.message}, {"line", place.line}, {"column", place.column}, {"length", place.length}};
}

Json json_of_report(const FixReport& fix) {
    return {{"code", fix.code}, {"line", fix.line}, {"title", fix.title}, {"safety", fix_safety_name(fix.safety)}};
}

Json json_of_unreadable(const UnreadableJob& job) {
    return {{"job", job.job}, {"line", job.line}, {"message", job.message}};
}

void set_findings(Json& object, const std::vector<Finding>& findings) {
    const auto count = [&](Severity severity) {
        return std::count_if(findings.begin(), findings.end(), [&](const Finding& f) { return f.severity == severity; });
    };
    object["errors"] = count(Severity::Error);
    object["warnings"] = count(Severity::Warning);
    object["notes"] = count(Severity::Note);
    object["findings"] = list_of(findings, json_of_finding);
}

}  // namespace

Json begun_object(const std::string* path) {
    Json object = {{"version", json_version}};
    if (path != nullptr) {
        object["file"] = *path;
    }
    set_text(object, "warning", default_route_schema_warning());
    return object;
}

Json json_of_finding(const Finding& finding) {
    const bool whole_line = finding.column == 0;
    Json object = {{"code", finding.code},
                   {"severity", severity_name(finding.severity)},
                   {"message", finding.message},
                   {"job", finding.job},
                   {"line", std::max<std::size_t>(finding.line, 1)},
                   {"column", whole_line ? 1 : finding.column},
                   {"length", whole_line ? finding.end - finding.begin : finding.length},
                   {"begin", finding.begin},
                   {"end", finding.end},
                   {"hint", finding.hint}};
    if (!finding.related.empty()) {
        object["related"] = list_of(finding.related, json_of_place);
    }
    if (!finding.fixes.empty()) {
        object["fixes"] = list_of(finding.fixes, json_of_fix);
    }
    return object;
}

std::string error_json(const std::string& path, const std::string& message) {
    Json object = about_file(path);
    object["error"] = message;
    return json_line(object);
}

std::string check_json(const std::string& path, const std::vector<Finding>& findings) {
    Json object = about_file(path);
    set_findings(object, findings);
    return json_line(object);
}

std::string fix_json(const std::string& path, const FixedText& fixed) {
    Json object = about_file(path);
    object["text"] = fixed.text;
    object["applied"] = list_of(fixed.applied, json_of_report);
    object["dropped"] = list_of(fixed.dropped, json_of_report);
    set_findings(object, fixed.findings);
    return json_line(object);
}

std::string edit_json(const std::string& path, const std::string& before, const EditedText& edited) {
    Json object = about_file(path);
    object["text"] = edited.text;
    object["changed"] = edited.text != before;
    object["refused"] = edited.refused;
    object["remarks"] = edited.remarks;
    object["unreadable"] = list_of(edited.unreadable, json_of_unreadable);
    set_findings(object, edited.findings);
    return json_line(object);
}

std::string check_code_json(const CheckDescription& description) {
    Json object = versioned();
    object["code"] = description.code;
    object["title"] = description.title;
    for (const auto& [name, text] : {std::pair{"explanation", &description.explanation},
                                     {"gaussian_says", &description.gaussian_says},
                                     {"wrong", &description.wrong_job},
                                     {"right", &description.right_job}}) {
        if (!text->empty()) {
            object[name] = *text;
        }
    }
    return json_line(object);
}

}  // namespace quor::input::gaussian

// What was found in a file, and files that cannot be used, as JSON.
#include <gjf/core/report/json_values.hpp>

#include <algorithm>

namespace quor::input::gaussian {
std::string error_json(const std::string& path, const std::string& message) {
    Json object = about_file(path);
    object["error"] = message;
    return json_line(object);
}

std::string check_json(const std::string& path, const std::vector<Finding>& findings) {
    const auto count = [&](Severity severity) {
        return std::count_if(findings.begin(), findings.end(), [&](const Finding& f) { return f.severity == severity; });
    };
    Json object = about_file(path);
    object["errors"] = count(Severity::Error);
    object["warnings"] = count(Severity::Warning);
    object["notes"] = count(Severity::Note);
    object["findings"] = list_of(findings, json_of_finding);
    return json_line(object);
}

std::string check_code_json(const CheckDescription& description) {
    Json object = versioned();
    object["code"] = description.code;
    object["title"] = description.title;
    return json_line(object);
}

}  // namespace quor::input::gaussian

// The formats made of JSON: SARIF 2.1.0 and GitLab's code quality report.
#include "check_formats.hpp"

#include <gjf/gjf.hpp>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <string>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;
using Json = nlohmann::ordered_json;

std::string text_of_json(const Json& value) { return value.dump(-1, ' ', false, Json::error_handler_t::replace); }

// Returns a path as a reference that may stand in a URI.
std::string uri_of(const std::string& path) {
    constexpr std::string_view plain = "-._~/";
    constexpr const char* digits = "0123456789ABCDEF";
    std::string uri = path.starts_with('/') ? "file://" : "";
    for (const char c : path) {
        const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (letter || plain.find(c) != std::string_view::npos) {
            uri += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            uri += {'%', digits[byte / 16], digits[byte % 16]};
        }
    }
    return uri;
}

Json region_of(const CharacterRange& range) {
    return {{"startLine", range.line}, {"startColumn", range.begin}, {"endColumn", range.end}};
}

Json location_of(const std::string& path, const CharacterRange& range) {
    return {{"physicalLocation", {{"artifactLocation", {{"uri", uri_of(path)}}}, {"region", region_of(range)}}}};
}

Json message_of(const std::string& text) { return {{"text", text}}; }

// Returns the place of a byte in characters.
std::pair<std::size_t, std::size_t> character_at(std::string_view text, std::size_t offset) {
    const LineAndColumn place = line_and_column(text, offset);
    const std::size_t begin = offset - (place.column - 1);
    return {place.line, columns_in(text.substr(begin, offset - begin), ColumnUnit::CodePoints) + 1};
}

Json fix_of(const std::string& path, std::string_view text, const Fix& fix) {
    Json replacements = Json::array();
    for (const TextEdit& edit : fix.edits) {
        const auto [first_line, first_column] = character_at(text, edit.begin);
        const auto [last_line, last_column] = character_at(text, edit.end);
        replacements.push_back({{"deletedRegion",
                                 {{"startLine", first_line},
                                  {"startColumn", first_column},
                                  {"endLine", last_line},
                                  {"endColumn", last_column}}},
                                {"insertedContent", message_of(edit.text)}});
    }
    return {
        {"description", message_of(fix.title)},
        {"artifactChanges", Json::array({{{"artifactLocation", {{"uri", uri_of(path)}}}, {"replacements", replacements}}})}};
}

Json sarif_result(const ToldFile& file, const Finding& finding, NumberedLines& lines) {
    const std::string hint = finding.hint.empty() ? "" : "; " + finding.hint;
    Json result = {
        {"ruleId", finding.code},
        {"level", severity_name(finding.severity)},
        {"message", message_of(finding.message + hint)},
        {"locations",
         Json::array({location_of(file.path, characters_of(finding.line, finding.column, finding.length, lines))})}};
    std::size_t number = 0;
    for (const RelatedPlace& place : finding.related) {
        Json related = location_of(file.path, characters_of(place.line, place.column, place.length, lines));
        related["id"] = ++number;
        related["message"] = message_of(place.message);
        result["relatedLocations"].push_back(std::move(related));
    }
    for (const Fix& fix : finding.fixes) {
        result["fixes"].push_back(fix_of(file.path, file.text, fix));
    }
    return result;
}

std::string joined_lines(const std::vector<std::string>& items) {
    std::string text;
    for (const std::string& item : items) {
        text += (text.empty() ? "" : ",\n") + item;
    }
    return text;
}

}  // namespace

std::string sarif_head() {
    return "{\"version\":\"2.1.0\",\"$schema\":\"https://json.schemastore.org/sarif-2.1.0.json\",\n"
           "\"runs\":[{\"columnKind\":\"unicodeCodePoints\",\"results\":[\n";
}

std::string sarif_foot(const SiteRules& told) {
    Json rules = Json::array();
    for (const CheckDescription& each : check_descriptions()) {
        rules.push_back({{"id", each.code},
                         {"shortDescription", message_of(each.title)},
                         {"fullDescription", {{"text", each.explanation}, {"markdown", each.explanation}}}});
    }
    for (const auto& [code, message] : told) {
        rules.push_back({{"id", code}, {"shortDescription", message_of(message)}});
    }
    const Json driver = {{"name", "quor-gjf"}, {"version", QUOR_GJF_PROJECT_VERSION}, {"rules", rules}};
    return "\n],\n\"tool\":{\"driver\":" + text_of_json(driver) + "}}]}\n";
}

std::string sarif_part(const ToldFile& file) {
    if (!file.problem.empty()) {
        return text_of_json(
            {{"level", "error"},
             {"message", message_of(file.problem)},
             {"locations", Json::array({{{"physicalLocation", {{"artifactLocation", {{"uri", uri_of(file.path)}}}}}}})}});
    }
    NumberedLines lines(file.text);
    const std::vector<std::string> marks = fingerprints(file.path, file.findings);
    std::vector<std::string> results;
    for (std::size_t i = 0; i < file.findings.size(); ++i) {
        Json result = sarif_result(file, file.findings[i], lines);
        result["partialFingerprints"] = {{"quorGjf/v1", marks[i]}};
        results.push_back(text_of_json(result));
    }
    return joined_lines(results);
}

std::string gitlab_part(const ToldFile& file) {
    constexpr const char* levels[] = {"info", "minor", "critical"};
    if (!file.problem.empty()) {
        Finding unread;
        unread.message = file.problem;
        unread.severity = Severity::Error;
        const std::vector<Finding> alone = {unread};
        return gitlab_part({file.path, file.text, alone, file.fail_on});
    }
    const std::vector<std::string> marks = fingerprints(file.path, file.findings);
    std::vector<std::string> items;
    for (std::size_t i = 0; i < file.findings.size(); ++i) {
        const Finding& finding = file.findings[i];
        const std::string hint = finding.hint.empty() ? "" : "; " + finding.hint;
        items.push_back(text_of_json(
            {{"description", finding.message + hint},
             {"check_name", finding.code},
             {"fingerprint", marks[i]},
             {"severity", levels[static_cast<std::size_t>(finding.severity)]},
             {"location", {{"path", file.path}, {"lines", {{"begin", std::max<std::size_t>(finding.line, 1)}}}}}}));
    }
    return joined_lines(items);
}

}  // namespace quor_gjf

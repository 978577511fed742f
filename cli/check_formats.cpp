// The formats made of lines and of XML; those made of JSON are in check_documents.cpp.
#include "check_formats.hpp"

#include "terminal.hpp"

#include <gjf/gjf.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <map>
#include <utility>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

using Escapes = std::initializer_list<std::pair<char, const char*>>;

std::string escaped(std::string_view text, Escapes escapes) {
    std::string result;
    for (const char c : text) {
        const auto* escape = std::find_if(escapes.begin(), escapes.end(), [c](const auto& each) { return each.first == c; });
        result += escape == escapes.end() ? std::string(1, c) : escape->second;
    }
    return result;
}

std::string none() { return {}; }

std::string json_part(const ToldFile& file) {
    return file.problem.empty() ? check_json(file.path, file.findings) : error_json(file.path, file.problem);
}

std::string gcc_part(const ToldFile& file) {
    std::string text;
    for (const Finding& finding : file.findings) {
        text += printable(file.path) + ':' + std::to_string(std::max<std::size_t>(finding.line, 1)) + ':' +
                std::to_string(std::max<std::size_t>(finding.column, 1)) + ": " + severity_name(finding.severity) + ": " +
                printable(finding.message) + " [" + finding.code + "]\n";
    }
    return text;
}

// Of workflow commands, messages and properties have escapes of their own.
std::string github_part(const ToldFile& file) {
    constexpr const char* levels[] = {"notice", "warning", "error"};
    const auto property = [](const std::string& text) {
        return escaped(text, {{'%', "%25"}, {'\r', "%0D"}, {'\n', "%0A"}, {':', "%3A"}, {',', "%2C"}});
    };
    const std::string name = "file=" + property(file.path);
    if (!file.problem.empty()) {
        return "::error " + name + "::" + escaped(file.problem, {{'%', "%25"}, {'\r', "%0D"}, {'\n', "%0A"}}) + '\n';
    }
    std::string text;
    NumberedLines lines(file.text);
    for (const Finding& finding : file.findings) {
        const CharacterRange range = characters_of(finding.line, finding.column, finding.length, lines);
        const std::string message =
            printable(finding.message) + (finding.hint.empty() ? "" : "; " + printable(finding.hint));
        text += std::string("::") + levels[static_cast<std::size_t>(finding.severity)] + ' ' + name +
                ",line=" + std::to_string(range.line) + ",col=" + std::to_string(range.begin) +
                ",endColumn=" + std::to_string(range.end) + ",title=" + property(finding.code) +
                "::" + escaped(message, {{'%', "%25"}}) + '\n';
    }
    return text;
}

std::string in_xml(std::string_view text) {
    return escaped(printable(text), {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}, {'\t', "&#9;"}});
}

std::string junit_head() { return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites name=\"quor-gjf check\">\n"; }

std::string junit_case(const std::string& name, const std::string& path, const std::string& inside) {
    return "    <testcase name=\"" + in_xml(name) + "\" classname=\"" + in_xml(path) + "\">" + inside + "</testcase>\n";
}

// A file is a suite, each finding a case of it; a file without findings is a case that passes.
std::string junit_part(const ToldFile& file) {
    std::string cases;
    std::size_t failures = 0;
    for (const Finding& finding : file.findings) {
        const bool fails = finding.severity >= file.fail_on;
        failures += fails ? 1 : 0;
        const std::string place = std::to_string(std::max<std::size_t>(finding.line, 1)) + ':' +
                                  std::to_string(std::max<std::size_t>(finding.column, 1));
        const std::string told = in_xml(file.path + ':' + place + ": " + severity_name(finding.severity) + ": " +
                                        finding.message + (finding.hint.empty() ? "" : "; " + finding.hint));
        cases += junit_case(finding.code + " at " + place, file.path,
                            fails ? "<failure type=\"" + finding.code + "\" message=\"" + in_xml(finding.message) + "\">" +
                                        told + "</failure>"
                                  : "<system-out>" + told + "</system-out>");
    }
    const bool unread = !file.problem.empty();
    if (unread || file.findings.empty()) {
        cases += junit_case("check", file.path, unread ? "<error message=\"" + in_xml(file.problem) + "\"/>" : "");
    }
    return "  <testsuite name=\"" + in_xml(file.path) + "\" tests=\"" +
           std::to_string(std::max<std::size_t>(file.findings.size(), 1)) + "\" failures=\"" + std::to_string(failures) +
           "\" errors=\"" + (unread ? "1" : "0") + "\">\n" + cases + "  </testsuite>\n";
}

std::string junit_foot(const SiteRules& /*told*/) { return "</testsuites>\n"; }

std::string gitlab_head() { return "[\n"; }
std::string gitlab_foot(const SiteRules& /*told*/) { return "\n]\n"; }

constexpr std::array<CheckFormat, 6> formats = {{{"json", none, json_part, "", nullptr},
                                                 {"gcc", none, gcc_part, "", nullptr},
                                                 {"github", none, github_part, "", nullptr},
                                                 {"gitlab", gitlab_head, gitlab_part, ",\n", gitlab_foot},
                                                 {"sarif", sarif_head, sarif_part, ",\n", sarif_foot},
                                                 {"junit", junit_head, junit_part, "", junit_foot}}};

}  // namespace

const CheckFormat* find_check_format(std::string_view name) {
    const auto found =
        std::find_if(formats.begin(), formats.end(), [name](const CheckFormat& format) { return format.name == name; });
    return found == formats.end() ? nullptr : &*found;
}

std::string_view NumberedLines::line(std::size_t number) noexcept {
    if (number < number_) {
        number_ = 1;
        begin_ = 0;
    }
    while (number_ < number && begin_ < text_.size()) {
        begin_ = std::min(text_.find('\n', begin_), text_.size() - 1) + 1;
        ++number_;
    }
    std::string_view found = text_.substr(begin_, text_.find('\n', begin_) - begin_);
    if (!found.empty() && found.back() == '\r') {
        found.remove_suffix(1);
    }
    return found;
}

CharacterRange characters_of(std::size_t line, std::size_t column, std::size_t length, NumberedLines& lines) {
    if (line == 0) {
        return {};
    }
    const std::string_view text = lines.line(line);
    const std::size_t begin = std::min(column == 0 ? 0 : column - 1, text.size());
    const std::size_t end = column == 0 ? text.size() : std::min(begin + length, text.size());
    return {line, columns_in(text.substr(0, begin), ColumnUnit::CodePoints) + 1,
            columns_in(text.substr(0, end), ColumnUnit::CodePoints) + 1};
}

std::vector<std::string> fingerprints(const std::string& path, const std::vector<Finding>& findings) {
    std::map<std::string, std::size_t> counts;
    std::vector<std::string> marks;
    for (const Finding& finding : findings) {
        std::string key = path + '\n' + finding.code + '\n' + finding.message + '\n';
        key += std::to_string(counts[key]++);
        std::uint64_t hash = 14695981039346656037U;  // FNV-1a
        for (const char c : key) {
            hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
        }
        std::array<char, 17> digits{};
        std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(hash));
        marks.emplace_back(digits.data());
    }
    return marks;
}

}  // namespace quor_gjf

// quor-gjf route: explains a route that is given as text.
#include "route_text.hpp"

#include "commands.hpp"
#include "input.hpp"
#include "job_json.hpp"
#include "json.hpp"
#include "terminal.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

struct RouteArguments {
    std::vector<std::string> text;
    bool json = false;
};

bool is_head(const std::string& word) {
    const std::string lower = SimpleYAMLParser::to_lower(word);
    return lower == "#" || lower == "#n" || lower == "#p" || lower == "#t";
}

void append_line(std::string& text, const char* label, const std::string& value) {
    if (!value.empty()) {
        text += std::string(label) + ": " + printable(value) + '\n';
    }
}

std::string print_level_text(const std::string& level) {
    return level == "p" ? "p (more output)" : level == "t" ? "t (less output)" : level == "n" ? "n (usual output)" : level;
}

std::string keyword_text(const KeywordInfo& keyword) {
    std::string text = "  " + printable(keyword.name) + " (" + keyword.category + ")";
    const char* separator = ": ";
    for (const auto& [name, value] : keyword.options) {
        text += separator + printable(name);
        text += value.empty() || value == "TRUE" ? std::string() : "=" + printable(value);
        separator = ", ";
    }
    return text + '\n';
}

std::string model_chemistry_text(const ParsedKeywords& route) {
    std::string text;
    append_line(text, "print level", print_level_text(route.print_level));
    append_line(text, "method", route.method);
    append_line(text, "method with options", route.method_options);
    append_line(text, "basis set", route.basis_set);
    append_line(text, "density fitting basis set", route.density_fitting_basis);
    append_line(text, "second method", route.secondary_method);
    append_line(text, "second method with options", route.secondary_method_options);
    append_line(text, "second basis set", route.secondary_basis_set);
    append_line(text, "ONIOM", route.oniom_expression);
    return text;
}

std::string explanation(const RouteText& text, const ParsedKeywords& route,
                        const std::vector<ExtraInputSectionKind>& sections) {
    std::string result = "route: " + printable(text.joined) + "\n" + model_chemistry_text(route);
    result += route.keywords.empty() ? "" : "keywords:\n";
    for (const KeywordInfo& keyword : route.keywords) {
        result += keyword_text(keyword);
    }
    result += sections.empty() ? "" : "sections after the molecule, in this order:\n";
    for (const ExtraInputSectionKind kind : sections) {
        const std::string request = extra_input_request(kind);
        result += std::string("  ") + extra_input_kind_name(kind) + (request.empty() ? "" : " (" + request + ")") + '\n';
    }
    result += route.warnings.empty() ? "" : "warnings:\n";
    for (const ParseWarning& warning : route.warnings) {
        result += "  " + warning.code + ' ' + printable(warning.message) + '\n';
        if (warning.span) {
            result += excerpt(text.joined, warning.span->begin, warning.span->end - warning.span->begin);
        }
    }
    return result;
}

int explain(const RouteArguments& arguments) {
    const RouteText text = read_route_text(text_of_arguments(arguments.text));
    if (text.words.empty()) {
        throw CLI::ValidationError("TEXT", "it holds no route");
    }
    report_missing_vocabulary();
    ControlSection control;
    control.route_keywords = text.words;
    control.parsed_keywords = GJFParser::parse_keywords(text.words, {});
    const std::vector<ExtraInputSectionKind> sections = GJFParser::expected_extra_input_order(control);
    std::string output;
    if (arguments.json) {
        Json object = {{"version", json_version}, {"text", text.joined}};
        object["route"] = json_of_route(*control.parsed_keywords);
        object["sections"] = Json::array();
        for (const ExtraInputSectionKind kind : sections) {
            object["sections"].push_back(json_of_kind(kind));
        }
        output = json_line(object);
    } else {
        output = explanation(text, *control.parsed_keywords, sections);
    }
    std::fputs(output.c_str(), stdout);
    return exit_success;
}

}  // namespace

RouteText read_route_text(const std::string& text) {
    RouteText route;
    for (const std::string& line : GJFParser::split_string(text, '\n')) {
        for (std::string& word : GJFParser::parse_keywords_from_line(line, {})) {
            route.words.push_back(std::move(word));
        }
    }
    // A head that stands alone says nothing; one that is missing is added.
    if (route.words.size() == 1 && is_head(route.words[0])) {
        route.words.clear();
    }
    if (!route.words.empty() && route.words[0][0] != '#') {
        route.words.insert(route.words.begin(), "#");
    }
    for (std::size_t i = 0; i < route.words.size(); ++i) {
        const std::string& word = route.words[i];
        if (i > 0 && is_head(word)) {
            continue;  // later lines may repeat the head
        }
        route.joined += (i > 0 ? " " : "") + (i > 0 && word[0] == '#' ? word.substr(1) : word);
    }
    return route;
}

std::string text_of_arguments(const std::vector<std::string>& arguments) {
    if (arguments.size() == 1 && arguments[0] == "-") {
        std::string text = read_text("-");
        while (text.ends_with('\n') || text.ends_with('\r')) {
            text.pop_back();
        }
        return text;
    }
    std::string text;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        text += (i > 0 ? " " : "") + arguments[i];
    }
    return text;
}

void add_route_command(CLI::App& command, int& exit_code) {
    const auto arguments = std::make_shared<RouteArguments>();
    command.add_option("TEXT", arguments->text, "The route, with or without #; - reads standard input")->required();
    command.add_flag("--json", arguments->json, "Print a JSON object");
    command.callback([arguments, &exit_code] { exit_code = explain(*arguments); });
}

}  // namespace quor_gjf

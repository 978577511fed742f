// quor-gjf route: explains a route that is given as text, or those of a job file.
#include "route_text.hpp"

#include "commands.hpp"
#include "input.hpp"
#include "terminal.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

struct RouteArguments {
    std::vector<std::string> text;
    bool json = false;
};

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

std::string findings_text(const std::string& route) {
    std::string text;
    for (const Finding& finding : check_route(route)) {
        text += text.empty() ? "findings:\n" : "";
        text += "  " + finding.code + ' ' + severity_name(finding.severity) + ": " + printable(finding.message) + '\n';
        text += finding.column == 0 ? std::string() : excerpt(route, finding.column - 1, finding.length);
        text += finding.hint.empty() ? std::string() : "    hint: " + printable(finding.hint) + '\n';
    }
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
    return result + findings_text(text.joined);
}

std::string explained(const RouteText& text, bool as_json) {
    ControlSection control;
    control.route_keywords = text.words;
    control.parsed_keywords = GJFParser::parse_keywords(text.words, {});
    const std::vector<ExtraInputSectionKind> sections = GJFParser::expected_extra_input_order(control);
    if (!as_json) {
        return explanation(text, *control.parsed_keywords, sections);
    }
    return route_json(text.joined, *control.parsed_keywords, sections, check_route(text.joined));
}

// A name of a file that is there is no route: the routes of its jobs are meant.
bool is_file(const std::vector<std::string>& arguments) {
    std::error_code ignored;
    return arguments.size() == 1 && arguments[0] != "-" && std::filesystem::is_regular_file(arguments[0], ignored);
}

std::vector<RouteText> routes_of_file(const std::string& path) {
    std::vector<RouteText> routes;
    for (const JobReading& reading : read_jobs_with_layout(read_text(path))) {
        const std::vector<std::string>& words = reading.job.control.route_keywords;
        if (!words.empty()) {
            routes.push_back({words, join_route_words(words).text});
        }
    }
    return routes;
}

int explain(const RouteArguments& arguments) {
    std::vector<RouteText> routes;
    if (is_file(arguments.text)) {
        routes = routes_of_file(arguments.text[0]);
    } else if (RouteText text = read_route_text(text_of_arguments(arguments.text)); !text.words.empty()) {
        routes.push_back(std::move(text));
    }
    if (routes.empty()) {
        throw CLI::ValidationError("TEXT", "it holds no route");
    }
    require_vocabulary();
    for (const RouteText& text : routes) {
        const bool follows = &text != &routes.front() && !arguments.json;
        std::fputs(((follows ? "\n" : "") + explained(text, arguments.json)).c_str(), stdout);
    }
    return exit_success;
}

}  // namespace

RouteText read_route_text(const std::string& text) {
    RouteText route{route_words_of(text), {}};
    route.joined = join_route_words(route.words).text;
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
    command.add_option("TEXT", arguments->text, "The route, with or without #, or a job file; - reads standard input")
        ->required();
    command.add_flag("--json", arguments->json, "Print a JSON object");
    command.callback([arguments, &exit_code] { exit_code = explain(*arguments); });
}

}  // namespace quor_gjf

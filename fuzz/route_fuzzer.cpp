// Interprets any route text: no exception, the same twice, warnings with places inside the text, nothing cut away, and a
// route written from the interpretation is written the same again.
#include "fuzzers.hpp"
#include "properties.hpp"

#include <gjf/gjf.hpp>

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace quor::fuzz {
namespace {

using namespace input::gaussian;

std::string without_blanks(const std::string& text) {
    std::string kept;
    std::copy_if(text.begin(), text.end(), std::back_inserter(kept),
                 [](char c) { return std::string_view(" \t\n\v\f\r").find(c) == std::string_view::npos; });
    return kept;
}

std::string joined(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts) {
        all += text;
    }
    return all;
}

std::string all_of_route(const ParsedKeywords& route) {
    std::string text = route.print_level + "|" + route.method + "|" + route.basis_set + "|" + route.secondary_method + "|" +
                       route.secondary_basis_set + "|" + route.method_options + "|" + route.secondary_method_options + "|" +
                       route.density_fitting_basis + "|" + route.oniom_expression;
    for (const KeywordInfo& keyword : route.keywords) {
        text += "\n" + keyword.name + "|" + keyword.category + "|" + keyword.raw;
        for (const auto& [name, value] : keyword.options) {
            text += "|" + name + "=" + value;
        }
    }
    return text;
}

void hold_warnings(const ParsedKeywords& parsed, const std::string& text) {
    static const std::set<std::string> codes = {"GJF-W001", "GJF-W002", "GJF-W003", "GJF-W004", "GJF-W005"};
    for (const ParseWarning& warning : parsed.warnings) {
        hold(codes.count(warning.code) == 1 && !warning.message.empty(), "a warning has a known code and a message");
        hold(warning.span && warning.span->begin < warning.span->end && warning.span->end <= text.size(),
             "a warning stands inside the text");
    }
}

void hold_cutting(const std::string& text) {
    const std::vector<std::string> segments = split_route_segments_preserving_nesting(text);
    hold(without_blanks(joined(segments)) == without_blanks(text), "cutting a route loses blanks alone");
    for (std::size_t i = 0; i < text.size(); i += 1 + text.size() / 8) {
        const int closing = find_matching_paren(text, i);
        hold(closing < 0 || (text[i] == '(' && text[static_cast<std::size_t>(closing)] == ')'),
             "a parenthesis is closed by one");
    }
    const int comma = find_top_level_char(text, ',');
    hold(comma < 0 || text[static_cast<std::size_t>(comma)] == ',', "what is found is what was looked for");
}

void hold_words(const std::string& text) {
    const SimpleYAMLParser& schema = default_route_schema();
    for (const std::string& word : split_route_segments_preserving_nesting(text)) {
        hold(schema.keywords_equivalent(word, word) && schema.options_equivalent("opt", word, word), "a word equals itself");
        hold(!schema.knows_keyword_exact(word) || schema.knows_keyword(word), "what is known exactly is known");
        for (const std::vector<std::string>& words :
             {schema.keyword_completions(word), schema.method_completions(word), schema.basis_completions(word)}) {
            hold(std::is_sorted(words.begin(), words.end()), "completions are sorted");
            hold(std::adjacent_find(words.begin(), words.end()) == words.end(), "each completion comes once");
        }
    }
}

// Once written from its interpretation, a route is what it says: interpreting and writing it again changes nothing.
void hold_writing(const std::string& text) {
    GJFEditor editor{GJFData()};
    editor.set_route_section(GJFParser::parse_keywords_from_line(text, ""));
    editor.ensure_parsed_keywords();
    editor.update_route_from_parsed_keywords();
    const std::vector<std::string> once = editor.get_data().control.route_keywords;
    editor.update_route_from_parsed_keywords();
    hold(editor.get_data().control.route_keywords == once, "writing a route twice gives the same words");
}

}  // namespace

int route(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    G16KeywordParser parser(default_route_schema());
    parser.parse(text);
    const ParsedKeywords parsed = parser.get_parsed_keywords();
    hold_warnings(parsed, text);
    hold(parsed.keywords.size() <= text.size() + 1, "no more keywords than the text has room for");
    parser.reset();
    parser.parse(text);
    hold(all_of_route(parser.get_parsed_keywords()) == all_of_route(parsed), "a route says the same twice");
    G16KeywordParser without_schema;
    without_schema.parse(text);
    hold(without_schema.get_parsed_keywords().warnings.size() <= parsed.keywords.size() + text.size(),
         "a parser without vocabulary reads too");
    hold_cutting(text);
    hold_words(text);
    hold_writing(text);
    return 0;
}

}  // namespace quor::fuzz

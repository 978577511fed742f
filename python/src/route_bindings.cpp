// The route of one job: its words, its interpretation and their edits.
#include "bindings.hpp"

#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/reader/route_lines.hpp>

#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace quor_python {
namespace {

using namespace quor::input::gaussian;
using Option = std::variant<Text, std::pair<Text, std::optional<Text>>>;  // as it is written, or name and value

std::vector<RouteOption> to_options(std::vector<Option>&& given) {
    std::vector<RouteOption> options;
    options.reserve(given.size());
    for (Option& option : given) {
        if (const Text* written = std::get_if<Text>(&option)) {
            options.push_back(read_route_option(written->value));
            continue;
        }
        auto& [name, value] = std::get<1>(option);
        options.push_back(
            {std::move(name.value), value ? std::optional<std::string>(std::move(value->value)) : std::nullopt});
    }
    return options;
}

/// Gives the editor of a job whose route has been interpreted; the questions answer nothing before.
GJFEditor& interpreted(JobHandle& job) {
    job.editor.ensure_parsed_keywords();
    return job.editor;
}

using Slot = std::string ParsedKeywords::*;

constexpr std::pair<const char*, Slot> slots[] = {
    {"print_level", &ParsedKeywords::print_level},
    {"method", &ParsedKeywords::method},
    {"basis", &ParsedKeywords::basis_set},
    {"secondary_method", &ParsedKeywords::secondary_method},
    {"secondary_basis", &ParsedKeywords::secondary_basis_set},
    {"method_options", &ParsedKeywords::method_options},
    {"secondary_method_options", &ParsedKeywords::secondary_method_options},
    {"density_fitting_basis", &ParsedKeywords::density_fitting_basis},
    {"oniom_expression", &ParsedKeywords::oniom_expression},
};

void bind_route_words(JobClass& job) {
    job.def("route_words", [](const JobHandle& self) { return to_python(self.editor.get_data().control.route_keywords); });
    job.def("set_route_words",
            [](JobHandle& self, std::vector<Text> words) { self.editor.set_route_section(to_strings(std::move(words))); });
    job.def("set_route_line", [](JobHandle& self, const Text& line) {
        self.editor.set_route_section(GJFParser::parse_keywords_from_line(line.value, {}));
    });
    job.def("set_route_text",
            [](JobHandle& self, const Text& text) { self.editor.set_route_section(cut_route(text.value)); });
    job.def("append_route_word", [](JobHandle& self, const Text& word) { self.editor.add_route_keyword(word.value); });
    job.def("remove_route_word", [](JobHandle& self, const Text& word) { self.editor.remove_route_keyword(word.value); });
    job.def("interpret_route",
            [](JobHandle& self, const Text& vocabulary) { self.editor.parse_keywords(vocabulary.value); });
    job.def("copy_interpretation", [](JobHandle& self, JobHandle& other) {
        self.editor.set_parsed_keywords(interpreted(other).get_parsed_keywords());
    });
    job.def("rewrite_route", [](JobHandle& self) { interpreted(self).update_route_from_parsed_keywords(); });
}

void bind_route_questions(JobClass& job) {
    for (const auto& [name, slot] : slots) {
        job.def(("route_" + std::string(name)).c_str(),
                [slot = slot](JobHandle& self) { return to_python(interpreted(self).get_parsed_keywords().*slot); });
    }
    job.def("route_keywords", [](JobHandle& self) { return interpreted(self).get_parsed_keywords().keywords; });
    job.def("route_warnings", [](JobHandle& self) { return interpreted(self).get_parsed_keywords().warnings; });
    job.def("has_keyword", [](JobHandle& self, const Text& name) { return interpreted(self).has_keyword(name.value); });
    job.def("has_method", [](JobHandle& self, const Text& name) {
        return interpreted(self).get_parsed_keywords().has_method(name.value);
    });
    job.def("keywords_by_name",
            [](JobHandle& self, const Text& name) { return interpreted(self).get_keywords_by_name(name.value); });
    job.def("keywords_by_category", [](JobHandle& self, const Text& category) {
        return interpreted(self).get_keywords_by_category(category.value);
    });
    job.def("keyword_option", [](JobHandle& self, const Text& keyword, const Text& option) {
        return to_python_or_none(interpreted(self).get_keyword_variable(keyword.value, option.value));
    });
}

void bind_route_edits(JobClass& job) {
    job.def("set_print_level", [](JobHandle& self, const Text& level) { self.editor.set_output_mode(level.value); });
    job.def("set_method", [](JobHandle& self, const Text& method) { self.editor.set_method(method.value); });
    job.def("clear_method", [](JobHandle& self) { self.editor.clear_method(); });
    job.def("set_basis", [](JobHandle& self, const Text& basis) { self.editor.set_basis_set(basis.value); });
    job.def("clear_basis", [](JobHandle& self) { self.editor.clear_basis_set(); });
    job.def("set_model_chemistry_basis",
            [](JobHandle& self, const Text& basis) { self.editor.set_model_chemistry_basis(basis.value); });
    job.def("set_model_chemistry_method", [](JobHandle& self, const Text& method, std::vector<Option> options) {
        self.editor.set_model_chemistry_method_with_options(method.value, to_options(std::move(options)));
    });
    job.def("add_keyword", [](JobHandle& self, const Text& name, std::vector<Option> options) {
        self.editor.add_keyword_with_options(name.value, to_options(std::move(options)));
    });
    job.def("upsert_keyword", [](JobHandle& self, const Text& name, std::vector<Option> options) {
        self.editor.upsert_keyword_with_options(name.value, to_options(std::move(options)));
    });
    job.def(
        "ensure_keyword_option", [](JobHandle& self, const Text& keyword, const Text& option, std::optional<Text> value) {
            self.editor.ensure_keyword_option(
                keyword.value, {option.value, value ? std::optional<std::string>(std::move(value->value)) : std::nullopt});
        });
    job.def("remove_keyword_option",
            [](JobHandle& self, const Text& keyword, const Text& option, std::optional<Text> value) {
                return self.editor.remove_keyword_option(
                    keyword.value, {option.value, value ? std::optional<std::string>(value->value) : std::nullopt});
            });
    job.def("remove_keyword",
            [](JobHandle& self, const Text& name) { interpreted(self).remove_keyword_by_name(name.value); });
}

}  // namespace

void bind_route(JobClass& job) {
    bind_route_words(job);
    bind_route_questions(job);
    bind_route_edits(job);
}

}  // namespace quor_python

// quor-gjf schema: examines a vocabulary document, tells what it knows about a word, which words it has, and which document
// is in use.
#include "commands.hpp"
#include "input.hpp"

#include <gjf/gjf.hpp>

#include <core/resource/resource.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

int validate(const std::string& file) {
    const std::string path = file.empty() ? default_route_schema_path() : file;
    const std::vector<SchemaProblem> problems = validate_route_schema(path);
    for (const SchemaProblem& problem : problems) {
        std::printf("%s:%zu: %s\n", path.c_str(), problem.line, problem.message.c_str());
    }
    if (problems.empty()) {
        std::printf("%s: nothing found\n", path.c_str());
    }
    return problems.empty() ? exit_success : exit_failure;
}

void print_list(const char* label, const std::vector<std::string>& words) {
    if (words.empty()) {
        return;
    }
    std::printf("%s:", label);
    for (const std::string& word : words) {
        std::printf(" %s", word.c_str());
    }
    std::printf("\n");
}

// Tells how a word is known in one role, and what else it may stand for.
bool show_role(const char* role, bool known, bool exact, const std::vector<std::string>& completions) {
    if (known) {
        std::printf("%s: %s\n", role, exact ? "yes" : "by abbreviation");
    } else if (!completions.empty()) {
        std::printf("%s: no, it is ambiguous\n", role);
        print_list("  it begins", completions);
    }
    return known || !completions.empty();
}

void print_line(const char* label, std::string_view text, const char* remark = "") {
    if (!text.empty()) {
        std::printf("%s: %.*s%s\n", label, static_cast<int>(text.size()), text.data(), remark);
    }
}

void print_description(const WordDescription& word) {
    print_line("meaning", word.meaning);
    print_line("default", word.default_value);
    print_line("source", word.source, word.is_certain ? "" : " (not certain)");
}

int show_as_json(const std::string& word) {
    const SimpleYAMLParser& schema = default_route_schema();
    std::fputs(word_json(schema, word).c_str(), stdout);
    const bool begins_something = !schema.keyword_completions(word).empty() || !schema.method_completions(word).empty() ||
                                  !schema.basis_completions(word).empty();
    const bool known = schema.knows_keyword(word) || schema.knows_method(word) || schema.knows_basis(word) ||
                       describe_word(schema, word) != nullptr;
    return known || begins_something ? exit_success : exit_failure;
}

int show(const std::string& word, bool json) {
    require_vocabulary();
    if (json) {
        return show_as_json(word);
    }
    const SimpleYAMLParser& schema = default_route_schema();
    const WordDescription* description = describe_word(schema, word);
    if (description != nullptr && (description->role == "option" || description->role == "link0")) {
        std::printf("%.*s: yes\n", static_cast<int>(description->role.size()), description->role.data());
        print_description(*description);
        return exit_success;
    }
    bool known =
        show_role("keyword", schema.knows_keyword(word), schema.knows_keyword_exact(word), schema.keyword_completions(word));
    known =
        show_role("method", schema.knows_method(word), schema.knows_method_exact(word), schema.method_completions(word)) ||
        known;
    known =
        show_role("basis set", schema.knows_basis(word), schema.knows_basis_exact(word), schema.basis_completions(word)) ||
        known;
    if (!known) {
        std::printf("'%s' is not known\n", word.c_str());
        return exit_failure;
    }
    const bool is_basis = !schema.knows_keyword(word) && !schema.knows_method(word);
    std::printf("written: %s\n", (is_basis ? schema.normalize_basis(word) : schema.normalize_keyword(word)).c_str());
    std::printf("category: %s\n", schema.classify(schema.normalize_keyword(word)).c_str());
    print_list("options", schema.options_of(word));
    if (description != nullptr) {
        print_description(*description);
    }
    return exit_success;
}

std::vector<std::string> written_link0_keys() {
    std::vector<std::string> names;
    for (const Link0Key& key : link0_keys()) {
        names.emplace_back(key.name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

int words(const std::string& kind) {
    require_vocabulary();
    const SimpleYAMLParser& schema = default_route_schema();
    const std::vector<std::string> all = kind == "keyword"  ? schema.keyword_spellings()
                                         : kind == "method" ? schema.method_spellings()
                                         : kind == "basis"  ? schema.basis_spellings()
                                                            : written_link0_keys();
    for (const std::string& word : all) {
        std::printf("%s\n", word.c_str());
    }
    return exit_success;
}

int where() {
    require_vocabulary();
    const std::string path = default_route_schema_path();
    const bool is_named = path == quor::core::resource::getenv_string(route_schema_variable);
    std::printf("%s\n%s\n", path.c_str(),
                is_named ? (std::string("named by ") + route_schema_variable).c_str() : "found by search");
    return exit_success;
}

}  // namespace

void add_schema_command(CLI::App& command, int& exit_code) {
    command.require_subcommand(1);
    const auto text = std::make_shared<std::string>();
    CLI::App* check = command.add_subcommand("validate", "Examine a vocabulary document, or the one in use");
    check->add_option("FILE", *text, "The document");
    check->callback([text, &exit_code] { exit_code = validate(*text); });
    CLI::App* tell = command.add_subcommand("show", "Tell what the vocabulary knows about a word");
    tell->add_option("WORD", *text, "A keyword, method or basis set, an option as keyword=option, or a Link 0 key behind %")
        ->required();
    const auto json = std::make_shared<bool>(false);
    tell->add_flag("--json", *json, "Print a JSON object");
    tell->callback([text, json, &exit_code] { exit_code = show(*text, *json); });
    CLI::App* list = command.add_subcommand("words", "List every spelling of the words of a kind, for grammars of editors");
    list->add_option("KIND", *text, "Which words")
        ->required()
        ->check(CLI::IsMember({"keyword", "method", "basis", "link0"}));
    list->callback([text, &exit_code] { exit_code = words(*text); });
    command.add_subcommand("where", "Tell which vocabulary document is in use")->callback([&exit_code] {
        exit_code = where();
    });
}

}  // namespace quor_gjf

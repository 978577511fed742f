// What the vocabulary says of a word or of the end of a route, as JSON.
#include <gjf/core/report/json_values.hpp>

namespace quor::input::gaussian {
namespace {

const char* name_of(RouteEnd end) {
    switch (end) {
        case RouteEnd::Word:
            return "word";
        case RouteEnd::Method:
            return "method";
        case RouteEnd::Basis:
            return "basis set";
        case RouteEnd::Option:
            return "option";
        case RouteEnd::Other:
            break;
    }
    return "other";
}

Json json_of_role(bool known, bool exact, const std::vector<std::string>& completions) {
    return {{"known", known}, {"exact", exact}, {"completions", completions}};
}

}  // namespace

std::string completion_json(const RouteContext& context, const std::vector<Completion>& completions) {
    Json object = versioned();
    object["context"] = name_of(context.end);
    if (context.end == RouteEnd::Option) {
        object["keyword"] = context.keyword;
    }
    object["prefix"] = context.prefix;
    object["completions"] = list_of(completions, [](const Completion& word) -> Json {
        return {{"text", word.text}, {"roles", word.roles}};
    });
    return json_line(object);
}

std::string word_json(const SimpleYAMLParser& schema, const std::string& word) {
    const bool is_basis = !schema.knows_keyword(word) && !schema.knows_method(word);
    const std::string keyword = schema.normalize_keyword(word);
    Json object = versioned();
    object["word"] = word;
    object["keyword"] =
        json_of_role(schema.knows_keyword(word), schema.knows_keyword_exact(word), schema.keyword_completions(word));
    object["method"] =
        json_of_role(schema.knows_method(word), schema.knows_method_exact(word), schema.method_completions(word));
    object["basis_set"] =
        json_of_role(schema.knows_basis(word), schema.knows_basis_exact(word), schema.basis_completions(word));
    object["written"] = is_basis ? schema.normalize_basis(word) : keyword;
    object["category"] = schema.classify(keyword);
    object["options"] = schema.options_of(word);
    return json_line(object);
}

}  // namespace quor::input::gaussian

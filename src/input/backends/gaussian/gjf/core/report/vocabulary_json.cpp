// What is known of a word or of the end of a route, as JSON.
#include <gjf/core/job/link0_keys.hpp>
#include <gjf/core/report/json_values.hpp>

#include <algorithm>

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
        case RouteEnd::Value:
            return "value";
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
    if (context.end == RouteEnd::Option || context.end == RouteEnd::Value) {
        object["keyword"] = context.keyword;
    }
    set_text(object, "option", context.option);
    object["prefix"] = context.prefix;
    object["completions"] = list_of(completions, [](const Completion& word) -> Json {
        return {{"text", word.text}, {"roles", word.roles}};
    });
    return json_line(object);
}

const WordDescription* describe_word(const SimpleYAMLParser& schema, const std::string& text) {
    if (text.starts_with('%')) {
        const Link0Key* key = find_link0_key(std::string_view(text).substr(1));
        return key == nullptr ? nullptr : find_description("link0", {}, key->name);
    }
    const std::size_t sign = std::min(text.find('='), text.size());
    const std::string word = text.substr(0, sign);
    const std::string keyword = schema.normalize_keyword(word);
    if (sign < text.size() && schema.knows_keyword(word)) {
        return find_description("option", keyword, schema.normalize_option(keyword, text.substr(sign + 1)));
    }
    if (schema.knows_keyword(text) || schema.knows_method(text)) {
        return find_description("keyword", {}, keyword);
    }
    return schema.knows_basis(text) ? find_description("basis", {}, schema.normalize_basis(text)) : nullptr;
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
    if (const WordDescription* description = describe_word(schema, word)) {
        object["meaning"] = description->meaning;
        if (!description->default_value.empty()) {
            object["default"] = description->default_value;
        }
        object["source"] = description->source;
        object["certain"] = description->is_certain;
    }
    return json_line(object);
}

}  // namespace quor::input::gaussian

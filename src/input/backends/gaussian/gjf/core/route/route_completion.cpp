// Finds the place at the end of a route and asks the vocabulary what may stand there.
#include <gjf/core/knowledge/facts.hpp>
#include <gjf/core/knowledge/route_facts.hpp>
#include <gjf/core/route/route_completion.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/text/text.hpp>

#include <map>
#include <utility>

namespace quor::input::gaussian {
namespace {

std::string_view without_leading_blanks(std::string_view text) noexcept {
    while (!text.empty() && is_trim_character(text.front())) {
        text.remove_prefix(1);
    }
    return text;
}

// Where the last word of a route begins, and what is open at its end.
struct LastWord {
    std::size_t begin = 0;
    std::vector<std::size_t> open;  // positions of parentheses that nothing closes
};

LastWord last_word(std::string_view route) {
    LastWord word;
    for (std::size_t i = 0; i < route.size(); ++i) {
        const char c = route[i];
        if (c == '(') {
            word.open.push_back(i);
        } else if (c == ')' && !word.open.empty()) {
            word.open.pop_back();
        } else if (word.open.empty() && (is_trim_character(c) || c == ',')) {
            word.begin = i + 1;
        }
    }
    return word;
}

// method, method/basis or method/basis//method/basis
RouteContext model_chemistry(std::string_view text, RouteEnd first) {
    const std::size_t slash = text.rfind('/');
    if (slash == std::string_view::npos) {
        return {first, {}, std::string(text)};
    }
    const bool second = slash > 0 && text[slash - 1] == '/';
    return {second ? RouteEnd::Method : RouteEnd::Basis, {}, std::string(text.substr(slash + 1))};
}

// What may stand behind the "=" of an option, where it is known.
std::vector<std::string> known_values(const std::string& keyword, const std::string& option) {
    const SimpleYAMLParser& schema = default_route_schema();
    const std::string name = schema.normalize_option(keyword, option);
    const std::string of = schema.normalize_keyword(keyword);
    if (of == "scrf" && name == "solvent") {
        return solvent_names();
    }
    std::vector<std::string_view> values;
    for (const OptionValue& row : option_values(of)) {
        if (values.empty() && lists_word(row.options, name)) {
            split_fields(row.names, FieldSeparators::WhiteSpace, true, values);
        }
    }
    return {values.begin(), values.end()};
}

RouteContext option_context(std::string_view keyword, std::string_view list) {
    const std::size_t comma = list.rfind(',');
    const std::string_view item = without_leading_blanks(comma == std::string_view::npos ? list : list.substr(comma + 1));
    while (!keyword.empty() && (keyword.back() == '=' || is_trim_character(keyword.back()))) {
        keyword.remove_suffix(1);
    }
    const std::size_t equals = item.find('=');
    if (equals == std::string_view::npos) {
        return {RouteEnd::Option, std::string(keyword), std::string(item)};
    }
    const std::string option(trim_view(item.substr(0, equals)));
    if (known_values(std::string(keyword), option).empty()) {
        return {RouteEnd::Other, std::string(keyword), std::string(item)};
    }
    return {RouteEnd::Value, std::string(keyword), std::string(without_leading_blanks(item.substr(equals + 1))), option};
}

RouteContext context_in_word(std::string_view word) {
    const std::size_t equals = word.find('=');
    return equals == std::string_view::npos ? model_chemistry(word, RouteEnd::Word)
                                            : option_context(word.substr(0, equals), word.substr(equals + 1));
}

// Inside the parenthesis at `open`, the only one that is open.
RouteContext context_in_list(std::string_view word, std::size_t open) {
    const std::string_view keyword = word.substr(0, open);
    const std::string_view list = word.substr(open + 1);
    if (default_route_schema().keywords_equivalent(std::string(keyword.substr(0, keyword.find('='))), "oniom")) {
        return model_chemistry(list.substr(list.rfind(':') + 1), RouteEnd::Method);
    }
    const RouteContext basis = model_chemistry(word, RouteEnd::Word);
    if (keyword.find('=') == std::string_view::npos && !default_route_schema().basis_completions(basis.prefix).empty()) {
        return {RouteEnd::Basis, {}, basis.prefix};  // as in 6-31g(d
    }
    return option_context(keyword, list);
}

using Roles = std::map<std::string, std::vector<std::string>>;

// A word ends at "=": some are known together with the numbers behind it.
void add(Roles& roles, const char* role, const std::vector<std::string>& words) {
    for (const std::string& word : words) {
        std::vector<std::string>& known = roles[word.substr(0, word.find('='))];
        if (known.empty() || known.back() != role) {
            known.emplace_back(role);
        }
    }
}

}  // namespace

RouteContext context_at_end(std::string_view route) {
    const LastWord last = last_word(route);
    std::string_view word = route.substr(last.begin);
    if (!word.empty() && word.front() == '#') {
        word.remove_prefix(1);
    }
    const std::size_t taken_off = route.size() - word.size();
    if (last.open.empty()) {
        return context_in_word(word);
    }
    if (last.open.size() > 1) {
        return {RouteEnd::Other, {}, {}};
    }
    return context_in_list(word, last.open.front() - taken_off);
}

std::vector<Completion> completions_of(const RouteContext& context) {
    const SimpleYAMLParser& schema = default_route_schema();
    Roles roles;
    if (context.end == RouteEnd::Word) {
        add(roles, "keyword", schema.keyword_completions(context.prefix));
    }
    if (context.end == RouteEnd::Word || context.end == RouteEnd::Method) {
        add(roles, "method", schema.method_completions(context.prefix));
    }
    if (context.end == RouteEnd::Word || context.end == RouteEnd::Basis) {
        add(roles, "basis set", schema.basis_completions(context.prefix));
    }
    if (context.end == RouteEnd::Option) {
        add(roles, "option",
            context.prefix.empty() ? schema.options_of(context.keyword)
                                   : schema.option_completions(context.keyword, context.prefix));
    }
    if (context.end == RouteEnd::Value) {
        std::vector<std::string> values = known_values(context.keyword, context.option);
        std::erase_if(
            values, [begin = to_lower_copy(context.prefix)](const std::string& value) { return !value.starts_with(begin); });
        add(roles, "value", values);
    }
    std::vector<Completion> completions;
    completions.reserve(roles.size());
    for (auto& [text, its_roles] : roles) {
        completions.push_back({text, std::move(its_roles)});
    }
    return completions;
}

}  // namespace quor::input::gaussian

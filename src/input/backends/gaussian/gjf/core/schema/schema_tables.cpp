// Normalization of words and state names, and the choice of the spelling to show.
#include <gjf/core/schema/schema_tables.hpp>

#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {

void SimpleYAMLParser::Impl::reset_schema() { *this = Impl{}; }

std::string_view SimpleYAMLParser::Impl::normalized(std::string_view token, std::string& buffer) const {
    const std::string_view word = trim_view(token);
    const auto is_upper = [](char c) { return c >= 'A' && c <= 'Z'; };
    if (case_sensitive || std::none_of(word.begin(), word.end(), is_upper)) {
        return word;
    }
    buffer = to_lower_copy(word);
    return buffer;
}

std::string SimpleYAMLParser::Impl::normalize_token(std::string_view token) const {
    const std::string_view word = trim_view(token);
    return case_sensitive ? std::string(word) : to_lower_copy(word);
}

std::string SimpleYAMLParser::Impl::normalize_state_name(std::string_view name) const {
    return name == " " ? std::string(name) : normalize_token(name);
}

std::string SimpleYAMLParser::Impl::normalize_keyword(std::string_view token) const {
    std::string buffer;
    const std::string_view word = normalized(token, buffer);
    const GroupHit keyword = keyword_groups.match(word);
    if (keyword.exact) {
        return std::string(keyword.canonical);
    }
    const GroupHit method = method_groups.match(word);
    if (method.exact) {
        return std::string(method.canonical);
    }
    MatchResult basis = match_basis(word);
    if (basis.exact) {
        return std::move(basis.canonical);
    }
    if (keyword.found()) {
        return std::string(keyword.canonical);
    }
    if (method.found()) {
        return std::string(method.canonical);
    }
    return basis.found() ? std::move(basis.canonical) : std::string(word);
}

std::string SimpleYAMLParser::Impl::choose_preferred_form(const std::vector<std::string>& forms,
                                                          bool prefer_short_names) const {
    for (const std::string& form : forms) {
        if (const std::string* preferred = find_value(canonical_forms, form)) {
            return *preferred;
        }
    }
    const auto has_form = [&forms](std::string_view form) {
        return std::find(forms.begin(), forms.end(), form) != forms.end();
    };
    if (prefer_short_names && has_form("frequency")) {
        return "freq";
    }
    if (prefer_short_names && has_form("population")) {
        return "pop";
    }
    if (has_form("casscf")) {
        return "casscf";
    }
    const auto shorter = [](const std::string& a, const std::string& b) {
        return a.size() != b.size() ? a.size() < b.size() : a < b;
    };
    const auto best = std::min_element(forms.begin(), forms.end(), shorter);
    return best == forms.end() ? std::string{} : *best;
}

}  // namespace quor::input::gaussian

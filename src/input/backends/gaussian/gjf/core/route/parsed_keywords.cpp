// Questions asked of an interpreted route, through the default vocabulary.
#include <gjf/core/route/parsed_keywords.hpp>

#include <gjf/core/route/route_scanner.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>

namespace quor::input::gaussian {

RouteOption read_route_option(std::string_view text) {
    const int equals = find_top_level_char(std::string(text), '=');
    if (equals < 0) {
        return {std::string(trim_view(text)), std::nullopt};
    }
    const auto at = static_cast<std::size_t>(equals);
    return {std::string(trim_view(text.substr(0, at))), std::string(trim_view(text.substr(at + 1)))};
}

ParsedKeywords::ParsedKeywords() = default;
ParsedKeywords::ParsedKeywords(const ParsedKeywords&) = default;
ParsedKeywords::ParsedKeywords(ParsedKeywords&&) noexcept = default;
ParsedKeywords& ParsedKeywords::operator=(const ParsedKeywords&) = default;
ParsedKeywords& ParsedKeywords::operator=(ParsedKeywords&&) noexcept = default;
ParsedKeywords::~ParsedKeywords() = default;

bool ParsedKeywords::has_method(const std::string& name) const {
    const SimpleYAMLParser& schema = default_route_schema();
    return (!method.empty() && schema.keywords_equivalent(method, name)) ||
           (!secondary_method.empty() && schema.keywords_equivalent(secondary_method, name));
}

bool ParsedKeywords::has_keyword(const std::string& name) const {
    const SimpleYAMLParser& schema = default_route_schema();
    return std::any_of(keywords.begin(), keywords.end(),
                       [&](const KeywordInfo& keyword) { return schema.keywords_equivalent(keyword.name, name); });
}

std::vector<KeywordInfo> ParsedKeywords::get_keywords_by_name(const std::string& name) const {
    const SimpleYAMLParser& schema = default_route_schema();
    std::vector<KeywordInfo> found;
    std::copy_if(keywords.begin(), keywords.end(), std::back_inserter(found),
                 [&](const KeywordInfo& keyword) { return schema.keywords_equivalent(keyword.name, name); });
    return found;
}

std::vector<KeywordInfo> ParsedKeywords::get_keywords_by_category(const std::string& category) const {
    std::vector<KeywordInfo> found;
    std::copy_if(keywords.begin(), keywords.end(), std::back_inserter(found),
                 [&](const KeywordInfo& keyword) { return keyword.category == category; });
    return found;
}

std::optional<std::string> ParsedKeywords::get_keyword_variable(const std::string& keyword,
                                                                const std::string& option) const {
    const SimpleYAMLParser& schema = default_route_schema();
    for (const KeywordInfo& info : keywords) {
        if (!schema.keywords_equivalent(info.name, keyword)) {
            continue;
        }
        for (const auto& [name, value] : info.options) {
            if (schema.options_equivalent(info.name, name, option)) {
                return value;
            }
        }
    }
    return std::nullopt;
}

}  // namespace quor::input::gaussian

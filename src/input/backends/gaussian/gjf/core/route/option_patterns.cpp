// Keywords with options: keyword(options), keyword=(options), keyword=option, keyword=option(options) and keyword/option.
#include <gjf/core/route/keyword_parser.hpp>

#include <gjf/core/route/route_scanner.hpp>
#include <gjf/core/text/text.hpp>

#include <string_view>
#include <tuple>
#include <utility>

namespace quor::input::gaussian {
namespace {

// Stands for the value of an option that is written without one.
constexpr const char* bare_option_value = "TRUE";

// The trimmed texts before and after a position that holds a separator.
std::pair<std::string, std::string> cut_at(const std::string& text, int position) {
    const std::string_view view = text;
    const auto at = static_cast<std::size_t>(position);
    return {std::string(trim_view(view.substr(0, at))), std::string(trim_view(view.substr(at + 1)))};
}

// The name of an option, and its value or what stands for one.
std::pair<std::string, std::string> name_and_value(const std::string& item) {
    const int equals = find_top_level_char(item, '=');
    return equals < 0 ? std::pair(std::string(trim_view(item)), std::string(bare_option_value)) : cut_at(item, equals);
}

}  // namespace

void G16KeywordParser::take_option(const std::string& keyword, const std::string& item,
                                   const std::optional<SourceSpan>& span, std::map<std::string, std::string>& options) {
    auto [name, value] = name_and_value(item);
    warn_ambiguous_option(keyword, name, span);
    options[normalize_route_option(keyword, name)] = std::move(value);
}

std::string G16KeywordParser::name_of_keyword(const std::string& text, bool known) const {
    return known ? schema_.normalize_keyword(text) : normalize_raw_route_token(text);
}

void G16KeywordParser::process_parentheses_pattern(const std::string& segment, const std::optional<SourceSpan>& span) {
    const int open = find_top_level_char(segment, '(');
    const int close = open < 0 ? -1 : find_matching_paren(segment, static_cast<std::size_t>(open));
    if (close < 0 || close + 1 != static_cast<int>(segment.size())) {
        process_simple_segment(segment, span);
        return;
    }
    const std::string head = trim(segment.substr(0, static_cast<std::size_t>(open)));
    const std::string inner = segment.substr(static_cast<std::size_t>(open) + 1, static_cast<std::size_t>(close - open) - 1);
    const int equals = find_top_level_char(head, '=');
    std::string keyword = head;
    std::string head_option;
    if (equals >= 0) {
        std::tie(keyword, head_option) = cut_at(head, equals);
    }
    const bool known = can_accept_simple_segment_as(keyword, SimpleSegmentKind::Keyword);
    if (schema_loaded_ && !known) {
        warn_ambiguous_simple_segment(keyword, span, true, true, true);
    }
    std::map<std::string, std::string> options;
    if (!head_option.empty()) {
        warn_ambiguous_option(keyword, head_option, span);
        options[normalize_route_option(keyword, head_option)] = bare_option_value;
    }
    for (const std::string& item : split_top_level_list(inner, ',')) {
        take_option(keyword, item, span, options);
    }
    append_keyword(name_of_keyword(keyword, known), std::move(options), segment);
}

void G16KeywordParser::process_equal_pattern(const std::string& segment, const std::optional<SourceSpan>& span) {
    const int equals = find_top_level_char(segment, '=');
    if (equals < 0) {
        process_simple_segment(segment, span);
        return;
    }
    const auto [keyword, value] = cut_at(segment, equals);
    // The word "basis" is known to this pattern alone; keyword(options) warns about it.
    const bool known = can_accept_simple_segment_as(keyword, SimpleSegmentKind::Keyword);
    if (schema_loaded_ && keyword != "basis" && !known) {
        warn_ambiguous_simple_segment(keyword, span, true, true, true);
    }
    std::map<std::string, std::string> options;
    take_option(keyword, value, span, options);
    append_keyword(name_of_keyword(keyword, known), std::move(options), segment);
}

bool G16KeywordParser::try_process_keyword_option_slash_form(const std::string& segment,
                                                             const std::optional<SourceSpan>& span) {
    const std::vector<std::string> pieces = split_top_level_list(segment, '/');
    if (!schema_loaded_ || pieces.size() != 2 || !schema_.knows_keyword(pieces[0])) {
        return false;
    }
    if (!schema_.knows_option(pieces[0], pieces[1])) {
        warn_ambiguous_option(pieces[0], pieces[1], span);
        return false;
    }
    append_keyword(schema_.normalize_keyword(pieces[0]), {{normalize_route_option(pieces[0], pieces[1]), bare_option_value}},
                   segment);
    return true;
}

void G16KeywordParser::process_slash_pattern(const std::string& segment, const std::optional<SourceSpan>& span) {
    if (!try_process_method_basis_form(segment, span) && !try_process_keyword_option_slash_form(segment, span)) {
        process_simple_segment(segment, span);
    }
}

}  // namespace quor::input::gaussian

// Takes the head off a route, hands each segment to the first form that takes it, and places bare words.
#include <gjf/core/route/keyword_parser.hpp>

#include <gjf/core/route/interpretation_count.hpp>
#include <gjf/core/route/route_recorder.hpp>
#include <gjf/core/route/route_scanner.hpp>
#include <gjf/core/route/route_segments.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/text/text.hpp>

#include <string_view>
#include <utility>

namespace quor::input::gaussian {
namespace {

// Tells whether a segment has a top-level "(" that the segment's last character closes, and none before it.
bool ends_in_option_list(const std::string& segment) {
    const int open = find_top_level_char(segment, '(');
    return open >= 0 && find_matching_paren(segment, static_cast<std::size_t>(open)) == static_cast<int>(segment.size()) - 1;
}

}  // namespace

#ifndef NDEBUG
std::size_t& interpreted_routes() noexcept {
    static thread_local std::size_t count = 0;
    return count;
}
#endif

std::optional<std::string> take_route_head(std::string_view& route) {
    if (route.empty() || route.front() != '#') {
        return std::nullopt;
    }
    if (equals_folded(route.substr(0, 4), "#n#p")) {
        route.remove_prefix(4);
        return "n#p";
    }
    const char level = route.size() >= 2 ? to_lower_ascii(route[1]) : '\0';
    if (level == 'n' || level == 'p' || level == 't') {
        route.remove_prefix(2);
        return std::string(1, level);
    }
    route.remove_prefix(1);
    return std::string();
}

G16KeywordParser::G16KeywordParser() = default;

G16KeywordParser::G16KeywordParser(const SimpleYAMLParser& schema) : schema_(schema), schema_loaded_(schema.is_loaded()) {}

bool G16KeywordParser::load_config(const std::string& path) {
    schema_ = path.empty() ? default_route_schema() : load_route_schema_cached(path).parser;
    schema_loaded_ = schema_.is_loaded();
    return schema_loaded_;
}

void G16KeywordParser::reset() {
    result_ = ParsedKeywords();
    recorded_.clear();
}

void G16KeywordParser::parse(const std::string& route) {
#ifndef NDEBUG
    ++interpreted_routes();
#endif
    const std::string_view trimmed = trim_view(route);
    std::string_view rest = trimmed;
    if (std::optional<std::string> level = take_route_head(rest); level && !level->empty()) {
        result_.print_level = std::move(*level);
    }
    if (recorder_ != nullptr) {
        recorder_->take_head(span_of(route, trimmed.substr(0, trimmed.size() - rest.size())));
    }
    const std::size_t offset = rest.empty() ? 0 : static_cast<std::size_t>(rest.data() - route.data());
    SourceSpan span;
    for (const Span segment : find_route_segments(rest)) {
        const std::string_view text = segment.in(rest);
        span.begin = offset + segment.begin;
        span.end = offset + segment.end();
        if (recorder_ != nullptr) {
            recorder_->begin_segment(result_, span_of(route, text));
        }
        parse_segment_schema_driven(std::string(text), span);
        if (recorder_ != nullptr) {
            recorder_->end_segment(result_);
        }
        ++span.segment;
    }
    classify_keywords();
}

void G16KeywordParser::classify_keywords() {
    if (!schema_loaded_) {
        return;
    }
    for (KeywordInfo& keyword : result_.keywords) {
        keyword.category = schema_.classify(keyword.name);
    }
}

ParsedKeywords G16KeywordParser::get_parsed_keywords() const { return result_; }

ParsedKeywords G16KeywordParser::take_parsed_keywords() {
    ParsedKeywords result = std::move(result_);
    reset();
    return result;
}

void G16KeywordParser::parse_segment_schema_driven(const std::string& segment, const std::optional<SourceSpan>& span) {
    const std::string text = trim(segment);
    if (text.empty() || try_process_oniom_form(text, span)) {
        return;
    }
    if (find_top_level_char(text, '/') >= 0) {
        if (try_process_method_basis_form(text, span) || try_process_keyword_option_slash_form(text, span)) {
            return;
        }
        // The pieces have no top-level "/" of their own, so this goes no deeper.
        const std::vector<std::string> pieces = split_top_level_list(text, '/');
        if (pieces.size() > 1) {
            for (const std::string& piece : pieces) {
                if (recorder_ != nullptr) {
                    recorder_->enter_piece(piece);
                }
                parse_segment_schema_driven(piece, span);
            }
            return;
        }
    }
    if (try_process_basis_assignment(text, span) || try_process_bare_basis(text) ||
        try_process_standalone_method_form(text, span)) {
        return;
    }
    if (ends_in_option_list(text)) {
        process_parentheses_pattern(text, span);
    } else if (find_top_level_char(text, '=') < 0) {
        process_simple_segment(text, span);
    } else {
        process_equal_pattern(text, span);
    }
}

bool G16KeywordParser::can_accept_simple_segment_as(const std::string& token, SimpleSegmentKind kind) const {
    if (!schema_loaded_ || token.empty()) {
        return false;
    }
    const bool exact_keyword = schema_.knows_keyword_exact(token);
    const bool exact_method = schema_.knows_method_exact(token);
    switch (kind) {
        case SimpleSegmentKind::Keyword:
            if (exact_keyword || exact_method || schema_.knows_basis_exact(token)) {
                return exact_keyword;
            }
            return schema_.keyword_completions(token).size() == 1 && schema_.method_completions(token).empty();
        case SimpleSegmentKind::Method:
            if (exact_method || exact_keyword || schema_.knows_basis_exact(token)) {
                return exact_method;
            }
            return schema_.method_completions(token).size() == 1 && schema_.keyword_completions(token).empty();
        case SimpleSegmentKind::Basis:
            break;
    }
    if (schema_.knows_basis_exact(token) || exact_keyword || exact_method) {
        return schema_.knows_basis_exact(token);
    }
    return schema_.keyword_completions(token).empty() && schema_.basis_completions(token).size() == 1;
}

void G16KeywordParser::process_simple_segment(const std::string& segment, const std::optional<SourceSpan>& span) {
    const std::string token = trim(segment);
    if (can_accept_simple_segment_as(token, SimpleSegmentKind::Keyword)) {
        append_keyword(schema_.normalize_keyword(token), {}, token);
        return;
    }
    if (result_.method.empty() && can_accept_simple_segment_as(token, SimpleSegmentKind::Method)) {
        result_.method = normalize_method_token_for_output(token);
        return;
    }
    if (result_.basis_set.empty() && can_accept_simple_segment_as(token, SimpleSegmentKind::Basis)) {
        result_.basis_set = normalize_basis_token_for_output(token);
        return;
    }
    warn_ambiguous_simple_segment(token, span, true, result_.method.empty(), result_.basis_set.empty());
    append_keyword(schema_loaded_ ? normalize_raw_route_token(token) : token, {}, token);
}

void G16KeywordParser::append_keyword(std::string name, std::map<std::string, std::string> options, std::string raw) {
    if (recorder_ != nullptr) {
        recorder_->take_keyword(name, raw);
    }
    result_.keywords.push_back({std::move(name), std::move(options), "other", std::move(raw)});
}

std::string G16KeywordParser::trim(const std::string& text) const { return std::string(trim_view(text)); }

std::string G16KeywordParser::to_lower(const std::string& text) const { return to_lower_copy(text); }

std::vector<std::string> G16KeywordParser::split(const std::string& text, char separator) const {
    return split_top_level_list(text, separator);
}

std::string G16KeywordParser::normalize_raw_route_token(const std::string& token) const {
    return to_lower_copy(trim_view(token));
}

std::string G16KeywordParser::normalize_route_option(const std::string& /*keyword*/, const std::string& option) const {
    return to_lower_copy(trim_view(option));
}

}  // namespace quor::input::gaussian

// Recognises the model chemistry: methods with their options, basis sets, method/basis forms and ONIOM expressions.
#include <gjf/core/route/keyword_parser.hpp>

#include <gjf/core/route/keyword_shape.hpp>
#include <gjf/core/route/route_recorder.hpp>
#include <gjf/core/route/route_scanner.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace quor::input::gaussian {
namespace {

// Words that a dash joins to a method: which orbitals are correlated, and how integrals are handled.
constexpr std::string_view dash_words[] = {"full",         "fc",     "frozen", "frozencore", "nofrozen",
                                           "nofrozencore", "direct", "incore", "fulldirect", "fulltran"};

bool is_dash_word(std::string_view word) {
    return std::any_of(std::begin(dash_words), std::end(dash_words),
                       [&](std::string_view known) { return equals_folded(word, known); });
}

// The pieces of a text around its top-level "//" and "/".
struct SlashPieces {
    std::vector<std::string> first;
    std::vector<std::string> second;  // behind "//"
};

SlashPieces cut_at_slashes(const std::string& segment) {
    int slash = find_top_level_char(segment, '/');
    for (std::size_t offset = 0; slash >= 0;) {
        const std::size_t at = offset + static_cast<std::size_t>(slash);
        if (segment.compare(at, 2, "//") == 0) {
            return {split_top_level_list(segment.substr(0, at), '/'), split_top_level_list(segment.substr(at + 2), '/')};
        }
        offset = at + 1;
        slash = find_top_level_char(segment.substr(offset), '/');
    }
    return {split_top_level_list(segment, '/'), {}};
}

// An ONIOM segment taken apart: the list in its parentheses, and what stands behind a second "=".
struct OniomText {
    std::string list;
    std::string options;
};

std::string without_parentheses(const std::string& text) {
    const bool enclosed = find_matching_paren(text, 0) + 1 == static_cast<int>(text.size()) && !text.empty();
    return enclosed ? text.substr(1, text.size() - 2) : text;
}

OniomText cut_oniom(std::string text) {
    if (!text.empty() && text.front() == '=') {
        text = std::string(trim_view(std::string_view(text).substr(1)));
    }
    const int equals = find_top_level_char(text, '=');
    if (equals < 0) {
        return {without_parentheses(text), {}};
    }
    const auto at = static_cast<std::size_t>(equals);
    const std::string list(trim_view(std::string_view(text).substr(0, at)));
    const std::string options(trim_view(std::string_view(text).substr(at + 1)));
    return {without_parentheses(list), without_parentheses(options)};
}

}  // namespace

std::optional<G16KeywordParser::MethodExpression> G16KeywordParser::parse_method_expression(const std::string& text) const {
    if (!schema_loaded_ || text.empty()) {
        return std::nullopt;
    }
    if (schema_.knows_method_exact(text)) {
        return MethodExpression{normalize_method_token_for_output(text), {}};
    }
    std::size_t head_end = std::string::npos;
    if (const int equals = find_top_level_char(text, '='); equals >= 0) {
        head_end = static_cast<std::size_t>(equals);
    } else if (const int list = find_last_option_list(text); list >= 0) {
        head_end = static_cast<std::size_t>(list);
    } else if (const std::size_t dash = text.rfind('-');
               dash != std::string::npos && is_dash_word(std::string_view(text).substr(dash + 1))) {
        head_end = dash;
    }
    const std::string head = head_end == std::string::npos ? std::string() : trim(text.substr(0, head_end));
    if (head.empty() || !schema_.knows_method_exact(head)) {
        return std::nullopt;
    }
    return MethodExpression{normalize_method_token_for_output(head), text};
}

bool G16KeywordParser::try_process_standalone_method_form(const std::string& segment,
                                                          const std::optional<SourceSpan>& /*span*/) {
    if (!result_.method.empty()) {
        return false;
    }
    std::optional<MethodExpression> expression = parse_method_expression(trim(segment));
    if (!expression) {
        return false;
    }
    result_.method = std::move(expression->method);
    result_.method_options = std::move(expression->options);
    return true;
}

bool G16KeywordParser::try_process_method_basis_form(const std::string& segment, const std::optional<SourceSpan>& /*span*/) {
    if (!schema_loaded_ || !result_.method.empty()) {
        return false;
    }
    const SlashPieces pieces = cut_at_slashes(segment);
    const bool two_models = !pieces.second.empty();
    if (pieces.first.size() < 2 || pieces.first.size() > 3 || (two_models && pieces.second.size() != 2)) {
        return false;
    }
    std::optional<MethodExpression> primary = parse_method_expression(pieces.first[0]);
    std::optional<MethodExpression> secondary = two_models ? parse_method_expression(pieces.second[0]) : std::nullopt;
    const bool methods_known = primary && (secondary || !two_models);
    const bool bases_known = std::all_of(pieces.first.begin() + 1, pieces.first.end(),
                                         [this](const std::string& piece) { return is_known_basis_token(piece); }) &&
                             (!two_models || is_known_basis_token(pieces.second[1]));
    if (!methods_known || !bases_known) {
        return false;
    }
    result_.method = std::move(primary->method);
    result_.method_options = std::move(primary->options);
    result_.basis_set = normalize_basis_token_for_output(pieces.first[1]);
    if (pieces.first.size() == 3) {
        result_.density_fitting_basis = normalize_basis_token_for_output(pieces.first[2]);
    }
    if (two_models) {
        result_.secondary_method = std::move(secondary->method);
        result_.secondary_method_options = std::move(secondary->options);
        result_.secondary_basis_set = normalize_basis_token_for_output(pieces.second[1]);
    }
    return true;
}

bool G16KeywordParser::is_basis_set_pattern(const std::string& segment) const {
    const int equals = find_top_level_char(segment, '=');
    return schema_loaded_ && equals >= 0 &&
           !schema_.knows_keyword(trim(segment.substr(0, static_cast<std::size_t>(equals))));
}

bool G16KeywordParser::try_process_basis_assignment(const std::string& segment, const std::optional<SourceSpan>& span) {
    if (!is_basis_set_pattern(segment)) {
        return false;
    }
    const auto equals = static_cast<std::size_t>(find_top_level_char(segment, '='));
    if (recorder_ != nullptr) {
        recorder_->take_assignment(equals);
    }
    const std::string basis = trim(segment.substr(equals + 1));
    if (schema_.knows_basis(basis)) {
        result_.basis_set = normalize_basis_token_for_output(basis);
    } else {
        warn_ambiguous_simple_segment(basis, span, true, true, true);
    }
    return true;
}

bool G16KeywordParser::try_process_bare_basis(const std::string& segment) {
    if (!result_.basis_set.empty() || !can_accept_simple_segment_as(segment, SimpleSegmentKind::Basis)) {
        return false;
    }
    result_.basis_set = normalize_basis_token_for_output(segment);
    return true;
}

bool G16KeywordParser::is_known_basis_token(const std::string& token) const { return schema_.knows_basis(token); }

std::string G16KeywordParser::normalize_method_token_for_output(const std::string& token) const {
    return schema_.knows_method(token) ? schema_.normalize_keyword(token) : normalize_raw_route_token(token);
}

std::string G16KeywordParser::normalize_basis_token_for_output(const std::string& token) const {
    return schema_.normalize_basis(token);
}

bool G16KeywordParser::try_process_oniom_form(const std::string& segment, const std::optional<SourceSpan>& span) {
    constexpr std::string_view head = "oniom";
    const std::size_t end = segment.find_first_of("(=");
    if (end == std::string::npos || !equals_folded(trim_view(std::string_view(segment).substr(0, end)), head)) {
        return false;
    }
    const OniomText text = cut_oniom(segment.substr(end));
    std::map<std::string, std::string> options;
    std::vector<std::string> items = split_top_level_list(text.list, ',');
    const auto is_model = [](const std::string& item) { return find_top_level_char(item, ':') >= 0; };
    const auto model = std::find_if(items.begin(), items.end(), is_model);
    const auto layers = model == items.end() ? items.begin() : model;
    for (auto item = items.begin(); item != items.end(); ++item) {
        if (item == layers) {
            options["layers"] = *item;
        } else {
            take_option(head.data(), *item, span, options);
        }
    }
    for (const std::string& item : split_top_level_list(text.options, ',')) {
        take_option(head.data(), item, span, options);
    }
    result_.oniom_expression = segment;
    if (recorder_ != nullptr) {
        recorder_->take_oniom();
    }
    append_keyword(std::string(head), std::move(options), segment);
    return true;
}

}  // namespace quor::input::gaussian

// The coded warnings: when each is raised, and its text.
#include <gjf/core/route/parse_warning.hpp>

#include <gjf/core/route/keyword_parser.hpp>
#include <gjf/core/text/number.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

constexpr std::size_t warning_candidate_limit = 6;

// What tells two warnings apart, in one text.
std::string warning_key(const std::string& code, const std::string& message, const std::optional<SourceSpan>& span) {
    std::string key = code;
    if (span) {
        key += ' ' + std::to_string(span->begin) + ' ' + std::to_string(span->end) + ' ' + std::to_string(span->segment);
    }
    key += '\n';
    key += message;
    return key;
}

std::string ambiguous(const char* what, const std::string& token, const std::vector<std::string>& candidates) {
    return std::string("ambiguous ") + what + " abbreviation '" + token +
           "'; candidates: " + format_warning_candidates(candidates, warning_candidate_limit);
}

}  // namespace

std::string format_warning_candidates(const std::vector<std::string>& candidates, std::size_t limit) {
    std::string text;
    const std::size_t shown = std::min(limit, candidates.size());
    for (std::size_t i = 0; i < shown; ++i) {
        text += i == 0 ? "" : ", ";
        text += candidates[i];
    }
    if (shown < candidates.size()) {
        text += ", ...";
    }
    return text;
}

void G16KeywordParser::add_warning(const std::string& code, const std::string& message,
                                   const std::optional<SourceSpan>& span) {
    if (recorded_.insert(warning_key(code, message, span)).second) {
        result_.warnings.push_back({code, message, span});
    }
}

void G16KeywordParser::warn_ambiguous_simple_segment(const std::string& token, const std::optional<SourceSpan>& span,
                                                     bool as_keyword, bool as_method, bool as_basis) {
    if ((as_keyword && schema_.knows_keyword_exact(token)) || (as_method && schema_.knows_method_exact(token)) ||
        (as_basis && schema_.knows_basis_exact(token))) {
        return;
    }
    const std::vector<std::string> none;
    const std::vector<std::string> keywords = as_keyword ? schema_.keyword_completions(token) : none;
    const std::vector<std::string> methods = as_method ? schema_.method_completions(token) : none;
    const std::vector<std::string> bases = as_basis ? schema_.basis_completions(token) : none;
    if (keywords.size() > 1) {
        add_warning("GJF-W001", ambiguous("route keyword", token, keywords), span);
    }
    if (methods.size() > 1) {
        add_warning("GJF-W002", ambiguous("method", token, methods), span);
    }
    if (bases.size() > 1) {
        add_warning("GJF-W003", ambiguous("basis", token, bases), span);
    }
    if ((as_keyword && schema_.knows_keyword(token)) || (as_method && schema_.knows_method(token)) ||
        (as_basis && schema_.knows_basis(token))) {
        return;
    }
    if (keywords.empty() && methods.empty() && bases.empty()) {
        add_warning("GJF-W005", "unknown route keyword/method/basis token '" + token + "'; preserved as raw", span);
    }
}

void G16KeywordParser::warn_ambiguous_option(const std::string& keyword, const std::string& option,
                                             const std::optional<SourceSpan>& span) {
    if (!schema_loaded_ || option.empty() || is_integer_text(option) || schema_.knows_option_exact(keyword, option) ||
        !schema_.knows_keyword(keyword)) {
        return;
    }
    const std::vector<std::string> candidates = schema_.option_completions(keyword, option);
    if (candidates.size() > 1) {
        add_warning("GJF-W004",
                    "ambiguous option '" + option + "' for keyword '" + keyword +
                        "'; candidates: " + format_warning_candidates(candidates, warning_candidate_limit),
                    span);
    }
}

}  // namespace quor::input::gaussian

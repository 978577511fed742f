// Interprets a route text against the route vocabulary.
//
// Members are defined by topic: keyword_parser.cpp (prefix, dispatch, simple segments), model_chemistry.cpp (methods, basis
// sets, slash forms, ONIOM), option_patterns.cpp (keywords with options), parse_warning.cpp (the coded warnings).
#pragma once

#include <core/export.hpp>
#include <gjf/core/route/parsed_keywords.hpp>
#include <gjf/core/schema/simple_yaml_parser.hpp>

#include <map>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace quor::input::gaussian {

class RouteRecorder;
struct RouteReading;

/// The three roles a bare route word can have.
enum class SimpleSegmentKind { Keyword = 0, Method = 1, Basis = 2 };

/// Turns route text into `ParsedKeywords`. Never throws for route content: what it cannot place is kept as a raw keyword,
/// with a warning.
///
/// A fresh parser has no vocabulary; every word is then kept raw. One parser is used by one thread at a time.
class QUOR_GJF_API G16KeywordParser {
   public:
    G16KeywordParser();
    /// Makes a parser over a vocabulary that is already loaded.
    explicit G16KeywordParser(const SimpleYAMLParser& schema);

    /// Takes the vocabulary at `path`, or the default one for an empty path; returns whether one is loaded now.
    bool load_config(const std::string& path);
    /// Clears the result; the vocabulary stays.
    void reset();
    /// Interprets one route text and adds what it says to the result.
    void parse(const std::string& route);
    /// Sets every keyword's category from the vocabulary; does nothing without one.
    void classify_keywords();
    ParsedKeywords get_parsed_keywords() const;
    /// Hands over the result and clears it.
    ParsedKeywords take_parsed_keywords();

    // The steps of `parse`, one by one, for tools that follow it. Each adds to the result what its segment says; `span` is
    // where the segment stands, for warnings. Those named `try_` return false, and add nothing, where the segment has not
    // their form.

    /// Interprets one segment: a word with its options, or a model chemistry.
    void parse_segment_schema_driven(const std::string& segment, const std::optional<SourceSpan>& span);

    // Roles of a bare word: keyword, then method and basis set while none is there; else it is kept raw, with a warning.
    bool can_accept_simple_segment_as(const std::string& token, SimpleSegmentKind kind) const;
    void process_simple_segment(const std::string& segment, const std::optional<SourceSpan>& span);

    // Model chemistry: "oniom(...)", "method/basis" with its forms, a method alone.
    bool try_process_oniom_form(const std::string& segment, const std::optional<SourceSpan>& span);
    bool try_process_method_basis_form(const std::string& segment, const std::optional<SourceSpan>& span);
    bool try_process_standalone_method_form(const std::string& segment, const std::optional<SourceSpan>& span);
    bool is_basis_set_pattern(const std::string& segment) const;
    bool is_known_basis_token(const std::string& token) const;
    std::string normalize_method_token_for_output(const std::string& token) const;
    std::string normalize_basis_token_for_output(const std::string& token) const;

    // Keywords with options: "opt=(a,b)" and "opt(a,b)", "opt=a", "opt/a". What has not the form is taken as a bare word.
    void process_parentheses_pattern(const std::string& segment, const std::optional<SourceSpan>& span);
    void process_equal_pattern(const std::string& segment, const std::optional<SourceSpan>& span);
    bool try_process_keyword_option_slash_form(const std::string& segment, const std::optional<SourceSpan>& span);
    void process_slash_pattern(const std::string& segment, const std::optional<SourceSpan>& span);

    // Words as they are stored: trimmed and in lower case, or in the vocabulary's spelling where it knows them.
    std::string trim(const std::string& text) const;
    std::string to_lower(const std::string& text) const;
    std::vector<std::string> split(const std::string& text, char separator) const;
    std::string normalize_raw_route_token(const std::string& token) const;
    std::string normalize_route_option(const std::string& keyword, const std::string& option) const;

    // Warnings, with a code such as "GJF-W001".
    void add_warning(const std::string& code, const std::string& message, const std::optional<SourceSpan>& span);
    void warn_ambiguous_simple_segment(const std::string& token, const std::optional<SourceSpan>& span, bool as_keyword,
                                       bool as_method, bool as_basis);
    void warn_ambiguous_option(const std::string& keyword, const std::string& option, const std::optional<SourceSpan>& span);

   private:
    friend class RouteRecorder;
    friend RouteReading read_route(std::string text, const SimpleYAMLParser& schema);

    /// A method and, when it carries options, the whole expression as written.
    struct MethodExpression {
        std::string method;
        std::string options;
    };

    std::optional<MethodExpression> parse_method_expression(const std::string& text) const;
    bool try_process_basis_assignment(const std::string& segment, const std::optional<SourceSpan>& span);
    bool try_process_bare_basis(const std::string& segment);
    void append_keyword(std::string name, std::map<std::string, std::string> options, std::string raw);
    /// Names a keyword that has options; `known` tells whether it is accepted as a keyword.
    std::string name_of_keyword(const std::string& text, bool known) const;
    /// Stores "name" or "name=value" under the name in lower case, and warns when the name is ambiguous.
    void take_option(const std::string& keyword, const std::string& item, const std::optional<SourceSpan>& span,
                     std::map<std::string, std::string>& options);

    ParsedKeywords result_;
    std::unordered_set<std::string> recorded_;  // keys of the warnings, so that telling a repeat takes constant time
    SimpleYAMLParser schema_;
    bool schema_loaded_ = false;
    RouteRecorder* recorder_ = nullptr;  // is told what is taken, where somebody wants the tree
};

}  // namespace quor::input::gaussian

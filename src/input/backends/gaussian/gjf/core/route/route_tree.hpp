// A route as a tree: segments, their keywords, the options of these and their values, each with its place in the route text,
// the word of the vocabulary that it is, and how it was found there.
#pragma once

#include <core/export.hpp>
#include <gjf/core/route/parsed_keywords.hpp>
#include <gjf/core/schema/simple_yaml_parser.hpp>
#include <gjf/core/text/span.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// How a word was found in the vocabulary.
enum class RouteMatch {
    Exact,         ///< as its preferred spelling
    Alias,         ///< as another spelling of it
    Abbreviation,  ///< as a beginning that no other word has
    Ambiguous,     ///< not: it may stand for several
    Unknown        ///< not: nothing begins so
};

/// A route text and what it is made of. Spans are places in `text`; it is made by `read_route`.
struct QUOR_GJF_API RouteTree {
    struct Option {
        Span place;             ///< with its value
        Span name;              ///< as written
        Span value;             ///< empty when it was written without one
        std::string canonical;  ///< preferred spelling, or the name in lower case
        RouteMatch match = RouteMatch::Unknown;
    };

    /// A keyword, or a method that is written with options.
    struct Keyword {
        Span place;        ///< with its options
        Span head;         ///< as written
        std::string name;  ///< preferred spelling where the vocabulary takes it, else in lower case
        RouteMatch match = RouteMatch::Unknown;
        bool is_method = false;
        std::vector<Option> options;

        bool known() const noexcept { return match != RouteMatch::Unknown && match != RouteMatch::Ambiguous; }
        /// Returns the first option with this preferred spelling, or null.
        const Option* find_option(std::string_view name) const noexcept;
    };

    /// What stands between blanks outside of brackets. What it says by itself does not depend on its neighbours; what it
    /// gives to the interpretation does: a second method, say, is only a word that is kept.
    struct Segment {
        Span place;
        std::string method;  ///< by itself; empty when it names none
        std::string basis;
        std::string secondary_method;
        bool is_oniom = false;
        bool is_assignment = false;  ///< of a basis set, as basis=6-31g; so is read what has no keyword before its "="
        Span assigned;               ///< the word before that sign
        std::vector<Keyword> keywords;

        bool gives_method = false;
        bool gives_basis = false;
        bool gives_oniom = false;
        std::size_t first_keyword = 0;  ///< of those it gave, in `ParsedKeywords::keywords`
        std::size_t keyword_count = 0;
    };

    std::string text;
    Span head;  ///< "#" and the print level; empty when there is none
    std::vector<Segment> segments;
};

/// A route with its tree.
struct RouteReading {
    ParsedKeywords meaning;
    RouteTree tree;
};

/// Interprets a route text as `G16KeywordParser::parse` does, once, and keeps where everything stands.
QUOR_GJF_API RouteReading read_route(std::string text, const SimpleYAMLParser& schema);

}  // namespace quor::input::gaussian

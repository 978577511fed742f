// The tables of one loaded route vocabulary, and the questions that are answered from them. Private to the library.
//
// Filled once, by a document (schema_document.cpp) or an image (embedded_schema.cpp), and then only read. Everything in the
// tables is normalized: words and state names trimmed and, unless the vocabulary is case-sensitive, lower-cased.
#pragma once

#include <gjf/core/schema/candidate_group.hpp>
#include <gjf/core/schema/graph_walk.hpp>
#include <gjf/core/schema/group_matching.hpp>
#include <gjf/core/schema/simple_yaml_parser.hpp>
#include <gjf/core/text/text_map.hpp>

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

class DocumentNode;

struct __attribute__((visibility("hidden"))) SimpleYAMLParser::Impl {
    using CandidateGroup = quor::input::gaussian::CandidateGroup;
    using GraphEdge = quor::input::gaussian::GraphEdge;
    using MatchResult = quor::input::gaussian::MatchResult;

    bool loaded = false;
    bool case_sensitive = false;
    std::string entry_state = "GCL";       ///< where a route word is read
    std::string procedure_state = "Proc";  ///< holds the methods
    std::string basis_state = "Basis";     ///< holds the basis sets

    TextMap<std::string> canonical_forms;  ///< from a spelling to the preferred one
    TextMap<std::vector<CandidateGroup>> state_groups;
    TextMap<std::vector<GraphEdge>> state_edges;
    TextMap<std::vector<std::string>> state_includes;
    TextMap<std::vector<std::string>> option_states;  ///< states that hold a keyword's options
    TextMap<GroupList> option_groups;                 ///< options of a keyword, by its canonical spelling

    std::set<std::string, std::less<>> exchange_components;
    std::set<std::string, std::less<>> correlation_components;
    std::set<std::string, std::less<>> functional_prefixes;
    TextMap<std::string> functional_aliases;
    TextMap<std::string> categories;  ///< category of a keyword, by its canonical spelling

    GroupList keyword_groups;
    GroupList procedure_groups;
    GroupList method_groups;
    GroupList basis_groups;

    StateGraph graph;  ///< made from state_edges and state_includes by `build_graph`

    /// Empties every table and sets the defaults.
    void reset_schema();

    /// Fills the tables from a document; throws on what cannot be converted. The tables must be empty.
    void load_schema(const DocumentNode& root);

    /// Numbers the state graph. To be called when `state_edges` and `state_includes` are complete.
    void build_graph();

    // Normalization.

    /// Returns the trimmed and, unless case-sensitive, lower-cased token: a view of it, or of `buffer` when it had to
    /// change.
    std::string_view normalized(std::string_view token, std::string& buffer) const;
    std::string normalize_token(std::string_view token) const;
    /// Normalizes a state name like a token, but leaves a name of exactly one blank alone.
    std::string normalize_state_name(std::string_view name) const;
    /// Returns the canonical spelling: as exact keyword, method, basis, else as abbreviated ones; the normalized token
    /// otherwise.
    std::string normalize_keyword(std::string_view token) const;
    /// Chooses the spelling to show for an entry; an empty text for no forms.
    std::string choose_preferred_form(const std::vector<std::string>& forms, bool prefer_short_names) const;

    // Matching.

    MatchResult match_group(std::string_view token, const GroupList& groups) const;
    MatchResult match_option(std::string_view keyword, std::string_view option) const;
    /// Matches an entry, a spelling of the basis graph, its only completion, or the entry named before the first "(".
    MatchResult match_basis(std::string_view token) const;
    bool knows_basis_exact(std::string_view token) const;
    /// Finds the options of a keyword, given in any accepted spelling; null when it has none.
    const GroupList* find_option_groups(std::string_view keyword) const;

    // State graphs. A state is named as in the document; `text` is taken as it stands.

    bool graph_exact_match(std::string_view state, std::string_view text) const;
    bool graph_exact_match_from_state(std::string_view state, std::string_view text, std::size_t position) const;
    bool reaches_accepting_state(std::string_view state) const;

    // Completions: sorted, each once; none for an empty prefix.

    std::vector<std::string> collect_group_completions(std::string_view prefix, const GroupList& groups) const;
    /// Completes along the graph: at most `limit_a` words of at most `limit_b` characters.
    std::vector<std::string> graph_prefix_completions(std::string_view state, std::string_view prefix, std::size_t limit_a,
                                                      std::size_t limit_b) const;
    std::vector<std::string> basis_completions(std::string_view prefix) const;
    std::vector<std::string> option_completions(std::string_view keyword, std::string_view prefix) const;
};

}  // namespace quor::input::gaussian

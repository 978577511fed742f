// Finds mistakes in a vocabulary document: the tree tells the lines, the tables made from it tell what became of them.
#include <gjf/core/schema/schema_validation.hpp>

#include <gjf/core/schema/schema_document.hpp>
#include <gjf/core/text/steps_between.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <exception>
#include <map>
#include <set>
#include <string_view>
#include <utility>

namespace quor::input::gaussian {
namespace {

using Schema = SimpleYAMLParser::Impl;
using NameSet = std::set<std::string, std::less<>>;

// The keys that the grammar knows, in whatever map of its own they stand; "actions" holds what others refer to.
constexpr std::string_view known_keys[] = {"action",
                                           "actions",
                                           "aliases",
                                           "canonical_forms",
                                           "case_sensitive",
                                           "categories",
                                           "consume",
                                           "entries",
                                           "entry_state",
                                           "forms",
                                           "exchange_components",
                                           "includes",
                                           "metadata",
                                           "next",
                                           "prefixes",
                                           "option_states",
                                           "correlation_components",
                                           "pure_dft",
                                           "procedure_state",
                                           "result",
                                           "spec",
                                           "specs",
                                           "states",
                                           "syntax",
                                           "top_level",
                                           "transitions",
                                           "value"};

// States that stand for something outside the document: the end of a word, and words that take text from elsewhere.
constexpr std::string_view outside_states[] = {"Exi", "Extern"};

class Validator {
   public:
    Validator(const DocumentNode& root, const Schema& schema) : root_(root), schema_(schema) {}

    std::vector<SchemaProblem> run() {
        find_repeated_keys(root_);
        find_misspelt_keys();
        gather_states();
        find_unknown_and_unreached_states();
        for (const auto& [role, groups] :
             {std::pair("a keyword", &schema_.keyword_groups), std::pair("a method", &schema_.method_groups),
              std::pair("a basis set", &schema_.basis_groups)}) {
            find_shared_spellings(role, *groups);
        }
        for (const auto& [keyword, groups] : schema_.option_groups) {
            find_shared_spellings("an option of " + keyword, groups);
        }
        find_unknown_words();
        find_dead_ends();
        std::stable_sort(problems_.begin(), problems_.end(),
                         [](const SchemaProblem& a, const SchemaProblem& b) { return a.line < b.line; });
        return std::move(problems_);
    }

   private:
    void report(std::size_t line, std::string message) { problems_.push_back({line, std::move(message)}); }

    // Walks the maps that have keys of their own, to the depth that the grammar has.
    void find_repeated_keys(const DocumentNode& root) {
        std::vector<std::pair<DocumentNode, int>> pending = {{root, 0}};
        while (!pending.empty()) {
            const auto [node, depth] = pending.back();
            pending.pop_back();
            if (node.is_map()) {
                find_repeated_keys_of(node);
            }
            for (std::size_t i = 0; depth < deepest_map && i < node.size(); ++i) {
                pending.emplace_back(node.is_map() ? node.value(i) : node.element(i), depth + 1);
            }
        }
    }

    void find_repeated_keys_of(const DocumentNode& map) {
        NameSet seen;
        for (std::size_t i = 0; i < map.size(); ++i) {
            const std::string key = schema_.normalize_state_name(map.key(i).text());
            if (!seen.insert(key).second) {
                report(map.key(i).line(), "key '" + std::string(map.key(i).text()) + "' stands twice");
            }
        }
    }

    // A key that the grammar does not know is passed over in silence, and so is all below it. A map with many names is
    // looked at once.
    void find_misspelt_keys_of(const DocumentNode& map) {
        if (!map.is_map() || map.size() == 0 || !searched_maps_.insert(map.key(0).text().data()).second) {
            return;
        }
        for (std::size_t i = 0; i < map.size(); ++i) {
            const std::string_view key = map.key(i).text();
            if (std::find(std::begin(known_keys), std::end(known_keys), key) != std::end(known_keys)) {
                continue;
            }
            const std::string word = to_lower_copy(key);
            const auto steps_to = [&](std::string_view known) { return steps_between(word, known); };
            const std::string_view near =
                *std::min_element(std::begin(known_keys), std::end(known_keys),
                                  [&](std::string_view a, std::string_view b) { return steps_to(a) < steps_to(b); });
            if (steps_to(near) <= most_steps(word.size())) {
                report(map.key(i).line(),
                       "key '" + std::string(key) + "' is not known; did you mean " + std::string(near) + "?");
            }
        }
    }

    void find_misspelt_keys() {
        const DocumentNode metadata = root_.find("metadata");
        const DocumentNode states = root_.find("states");
        for (const DocumentNode& map : {root_, root_.find("top_level"), metadata, metadata.find("pure_dft")}) {
            find_misspelt_keys_of(map);
        }
        for (std::size_t i = 0; i < states.size(); ++i) {
            const DocumentNode state = states.value(i);
            const DocumentNode syntax = state.find("syntax");
            find_misspelt_keys_of(state);
            find_misspelt_keys_of(syntax);
            for (const DocumentNode& list : {state.find("entries"), syntax.find("transitions"), state.find("specs")}) {
                for (std::size_t j = 0; list.is_sequence() && j < list.size(); ++j) {
                    find_misspelt_keys_of(list.element(j));
                }
            }
        }
    }

    // Notes where each state is defined and where each is named, and the line of every spelling.
    void gather_states() {
        const DocumentNode states = root_.find("states");
        for (std::size_t i = 0; i < states.size(); ++i) {
            const std::string name = schema_.normalize_state_name(states.key(i).text());
            defined_.emplace(name, states.key(i).line());
            gather_state(name, states.value(i));
        }
        const DocumentNode option_states = root_.find("metadata").find("option_states");
        for (std::size_t i = 0; option_states.is_map() && i < option_states.size(); ++i) {
            name_states("", option_states.value(i));
        }
        for (const std::string* start : {&schema_.entry_state, &schema_.procedure_state, &schema_.basis_state}) {
            leads_to_[""].insert(*start);
        }
    }

    void gather_state(const std::string& name, const DocumentNode& state) {
        name_states(name, state.find("includes"));
        for (const DocumentNode& list :
             {state.find("entries"), state.find("syntax").find("transitions"), state.find("specs")}) {
            for (std::size_t i = 0; list.is_sequence() && i < list.size(); ++i) {
                name_states(name, list.element(i).find("next"));
                gather_spellings(name, list.element(i));
            }
        }
    }

    void gather_spellings(const std::string& state, const DocumentNode& entry) {
        const DocumentNode forms = entry.find("forms");
        for (std::size_t i = 0; forms.is_sequence() && i < forms.size(); ++i) {
            const std::string form = schema_.normalize_token(forms.element(i).text());
            spelling_lines_[{state, form}].push_back(entry.line());
        }
    }

    void name_states(const std::string& from, const DocumentNode& names) {
        for (std::size_t i = 0; i < (names.is_sequence() ? names.size() : std::size_t{names.is_scalar()}); ++i) {
            const DocumentNode node = names.is_sequence() ? names.element(i) : names;
            const std::string name = schema_.normalize_state_name(node.text());
            named_.emplace(name, node.line());
            leads_to_[from].insert(name);
        }
    }

    bool is_outside(const std::string& name) const {
        return std::any_of(std::begin(outside_states), std::end(outside_states),
                           [&](std::string_view state) { return schema_.normalize_state_name(state) == name; });
    }

    void find_unknown_and_unreached_states() {
        for (const auto& [name, line] : named_) {
            if (defined_.count(name) == 0 && !is_outside(name)) {
                report(line, "state '" + name + "' is not defined");
            }
        }
        const NameSet reached = reached_from("", leads_to_);
        for (const auto& [name, line] : defined_) {
            if (reached.count(name) == 0 && !is_outside(name)) {
                report(line, "state '" + name + "' is not reached from anywhere");
            }
        }
    }

    static NameSet reached_from(const std::string& start, const std::map<std::string, NameSet, std::less<>>& ways) {
        NameSet reached = {start};
        std::vector<std::string> pending = {start};
        while (!pending.empty()) {
            const auto found = ways.find(pending.back());
            pending.pop_back();
            if (found == ways.end()) {
                continue;
            }
            for (const std::string& name : found->second) {
                if (reached.insert(name).second) {
                    pending.push_back(name);
                }
            }
        }
        return reached;
    }

    // The line of the n-th entry of a state that has a spelling.
    std::size_t line_of(const CandidateGroup& group, const std::string& form, std::size_t occurrence) const {
        const auto found = spelling_lines_.find({group.state, form});
        return found == spelling_lines_.end() ? 0 : found->second[std::min(occurrence, found->second.size() - 1)];
    }

    void find_shared_spellings(const std::string& role, const GroupList& groups) {
        std::map<std::string, const CandidateGroup*> owners;
        for (const CandidateGroup& group : groups) {
            for (const std::string& form : group.forms) {
                const auto [owner, is_new] = owners.emplace(form, &group);
                if (!is_new) {
                    const bool same_state = owner->second->state == group.state;
                    report(line_of(group, form, same_state ? 1 : 0), "spelling '" + form + "' stands twice as " + role);
                }
            }
        }
    }

    bool is_word(const std::string& word) const {
        return schema_.keyword_groups.match_exact(word).found() || schema_.method_groups.match_exact(word).found() ||
               schema_.basis_groups.match_exact(word).found();
    }

    bool is_spelling(const std::string& form) const {
        return std::any_of(schema_.state_groups.begin(), schema_.state_groups.end(), [&](const auto& state) {
            return std::any_of(state.second.begin(), state.second.end(), [&](const CandidateGroup& group) {
                return std::find(group.forms.begin(), group.forms.end(), form) != group.forms.end();
            });
        });
    }

    void find_unknown_words() {
        const DocumentNode metadata = root_.find("metadata");
        for (const auto& [table, what] :
             {std::pair("option_states", "options are given to '"), std::pair("categories", "a category is given to '")}) {
            const DocumentNode map = metadata.find(table);
            for (std::size_t i = 0; map.is_map() && i < map.size(); ++i) {
                const std::string word = schema_.normalize_token(map.key(i).text());
                if (!is_word(word)) {
                    report(map.key(i).line(), what + word + "', which is no keyword, method or basis set");
                }
            }
        }
        const DocumentNode canonical = metadata.find("canonical_forms");
        for (std::size_t i = 0; canonical.is_map() && i < canonical.size(); ++i) {
            const std::string form = schema_.normalize_token(canonical.value(i).text());
            if (!is_spelling(form)) {
                report(canonical.key(i).line(), "a preferred spelling is given to '" + form + "', which no word has");
            }
        }
    }

    // Walks the basis graph backwards from its end: a state that is reached but cannot get there accepts nothing.
    void find_dead_ends() {
        std::map<std::string, NameSet, std::less<>> forwards;
        std::map<std::string, NameSet, std::less<>> backwards;
        const auto connect = [&](const std::string& from, const std::string& to) {
            forwards[from].insert(to);
            backwards[to].insert(from);
        };
        for (const auto& [name, edges] : schema_.state_edges) {
            for (const GraphEdge& edge : edges) {
                if (!edge.next.empty()) {
                    connect(name, edge.next);
                }
            }
        }
        for (const auto& [name, includes] : schema_.state_includes) {
            for (const std::string& included : includes) {
                connect(name, included);
            }
        }
        const NameSet accepting = reached_from(schema_.normalize_state_name(outside_states[0]), backwards);
        for (const std::string& name : reached_from(schema_.basis_state, forwards)) {
            const bool holds_words_alone =
                schema_.state_groups.find(name) != schema_.state_groups.end() && forwards.count(name) == 0;
            const auto line = defined_.find(name);
            if (accepting.count(name) == 0 && !holds_words_alone && line != defined_.end() && name != schema_.basis_state) {
                report(line->second, "no word of the basis graph that reaches state '" + name + "' can end");
            }
        }
    }

    static constexpr int deepest_map = 6;

    DocumentNode root_;
    const Schema& schema_;
    std::vector<SchemaProblem> problems_;
    std::map<std::string, std::size_t> defined_;
    std::multimap<std::string, std::size_t> named_;
    std::map<std::string, NameSet, std::less<>> leads_to_;
    std::map<std::pair<std::string, std::string>, std::vector<std::size_t>> spelling_lines_;
    std::set<const char*> searched_maps_;  // by where the text of the first key stands
};

}  // namespace

std::vector<SchemaProblem> validate_route_schema(const std::string& path) {
    DocumentTree tree;
    if (const std::optional<SchemaProblem> problem = read_document_or_problem(path, tree)) {
        return {*problem};
    }
    const DocumentNode root(tree);
    Schema schema;
    try {
        if (!root.is_map() || !root.find("states").is_map()) {
            return {{root.line(), "the document has no map of states"}};
        }
        schema.load_schema(root);
        return Validator(root, schema).run();
    } catch (const std::exception& error) {
        return {{0, std::string("the document does not load: ") + error.what()}};
    }
}

}  // namespace quor::input::gaussian

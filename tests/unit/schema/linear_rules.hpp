// The rules of matching and of graph walks, written out plainly: every spelling is looked at, and walks call themselves.
//
// Slow and only for small graphs; the indexed answers are compared with these.
#pragma once

#include <gjf/core/schema/schema_tables.hpp>

#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quor::input::gaussian::linear {

inline MatchResult match(std::string_view word, const std::vector<CandidateGroup>& groups) {
    if (word.empty()) {
        return {};
    }
    for (const CandidateGroup& group : groups) {
        for (const std::string_view form : group.forms) {
            if (form == word) {
                return {&group, true, group.canonical};
            }
            if (form.size() > 1 && form.back() == '(' && form.substr(0, form.size() - 1) == word) {
                return {&group, true, std::string(word)};
            }
        }
    }
    const CandidateGroup* only = nullptr;
    for (const CandidateGroup& group : groups) {
        for (const std::string_view form : group.forms) {
            if (form.substr(0, word.size()) == word) {
                if (only != nullptr) {
                    return {};
                }
                only = &group;
                break;
            }
        }
    }
    return only == nullptr ? MatchResult{} : MatchResult{only, false, only->canonical};
}

inline std::vector<std::string> completions(std::string_view prefix, const std::vector<CandidateGroup>& groups) {
    std::set<std::string> words;
    for (const CandidateGroup& group : groups) {
        for (const std::string_view form : group.forms) {
            if (!prefix.empty() && form.substr(0, prefix.size()) == prefix) {
                words.insert(group.canonical);
            }
        }
    }
    return {words.begin(), words.end()};
}

using EdgeTable = TextMap<std::vector<GraphEdge>>;
using IncludeTable = TextMap<std::vector<std::string>>;

/// A graph whose accepting state is "exi".
struct Graph {
    EdgeTable edges;
    IncludeTable includes;

    const std::vector<GraphEdge>& edges_of(const std::string& state) const {
        static const std::vector<GraphEdge> none;
        const auto found = edges.find(state);
        return found == edges.end() ? none : found->second;
    }
    const std::vector<std::string>& includes_of(const std::string& state) const {
        static const std::vector<std::string> none;
        const auto found = includes.find(state);
        return found == includes.end() ? none : found->second;
    }

    bool accepts(const std::string& state, std::set<std::string>& visited) const {
        if (state.empty() || state == "exi") {
            return !state.empty();
        }
        if (!visited.insert(state).second) {
            return false;
        }
        for (const std::string& included : includes_of(state)) {
            if (accepts(included, visited)) {
                return true;
            }
        }
        for (const GraphEdge& edge : edges_of(state)) {
            if (edge.null_edge && accepts(edge.next, visited)) {
                return true;
            }
        }
        return false;
    }

    bool matches(const std::string& state, std::string_view text, std::size_t position,
                 std::set<std::pair<std::string, std::size_t>>& visited) const {
        if (state.empty() || !visited.insert({state, position}).second) {
            return false;
        }
        if (position == text.size()) {
            std::set<std::string> fresh;
            return accepts(state, fresh);
        }
        for (const std::string& included : includes_of(state)) {
            if (matches(included, text, position, visited)) {
                return true;
            }
        }
        for (const GraphEdge& edge : edges_of(state)) {
            const std::size_t length = edge.null_edge ? 0 : edge.token.size();
            const bool taken = edge.null_edge || text.substr(position, length) == edge.token;
            if (taken && matches(edge.next, text, position + length, visited)) {
                return true;
            }
        }
        return false;
    }

    struct Completion {
        std::string_view prefix;
        std::size_t count;
        std::size_t length;
        std::set<std::string> memo;
        std::set<std::string> words;
    };

    void complete(const std::string& state, std::size_t position, const std::string& spelling, Completion& walk) const {
        if (state.empty() || walk.words.size() >= walk.count || spelling.size() > walk.length ||
            !walk.memo.insert(state + '\x1F' + std::to_string(position) + '\x1F' + spelling).second) {
            return;
        }
        if (state == "exi") {
            if (position == walk.prefix.size()) {
                walk.words.insert(spelling);
            }
            return;
        }
        for (const std::string& included : includes_of(state)) {
            complete(included, position, spelling, walk);
        }
        for (const GraphEdge& edge : edges_of(state)) {
            if (walk.words.size() >= walk.count) {
                return;
            }
            const std::string_view rest = walk.prefix.substr(position);
            const std::string_view token = edge.token;
            if (edge.null_edge) {
                complete(edge.next, position, spelling, walk);
            } else if (rest.empty() || rest.substr(0, token.size()) == token) {
                complete(edge.next, rest.empty() ? position : position + token.size(), spelling + edge.token, walk);
            } else if (token.substr(0, rest.size()) == rest) {
                complete(edge.next, walk.prefix.size(), spelling + edge.token, walk);
            }
        }
    }

    std::vector<std::string> completions(const std::string& state, std::string_view prefix, std::size_t count,
                                         std::size_t length) const {
        Completion walk{prefix, count, length, {}, {}};
        complete(state, 0, "", walk);
        return {walk.words.begin(), walk.words.end()};
    }
};

}  // namespace quor::input::gaussian::linear

// The rules of matching and of graph walks, written out plainly: every spelling is looked at, and walks call themselves.
//
// Slow and only for small graphs; the indexed answers are compared with these.
#pragma once

#include <gjf/core/schema/schema_tables.hpp>

#include <cstring>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quor::input::gaussian::linear {

/// All spellings of a list, in order, each with its entry.
struct Spellings {
    explicit Spellings(const GroupList& groups) {
        for (const CandidateGroup& group : groups) {
            for (const std::string& form : group.forms) {
                list.push_back({form, &group});
            }
        }
    }
    std::vector<std::pair<std::string_view, const CandidateGroup*>> list;
};

struct Answer {
    MatchResult match;
    std::set<std::string> completions;
};

/// Looks at every spelling once: the first that equals the word, or is the word and a "(", is the match; else the only entry
/// with spellings that begin with the word is.
inline Answer ask(std::string_view word, const Spellings& spellings) {
    Answer answer;
    std::set<const CandidateGroup*> begun;
    for (const auto& [form, group] : spellings.list) {
        if (word.empty() || form.size() < word.size() || std::memcmp(form.data(), word.data(), word.size()) != 0) {
            continue;
        }
        begun.insert(group);
        answer.completions.insert(group->canonical);
        const bool before_parenthesis = form.size() == word.size() + 1 && form.back() == '(';
        if (!answer.match.exact && (form == word || before_parenthesis)) {
            answer.match = {group, true, before_parenthesis ? std::string(word) : group->canonical};
        }
    }
    if (!answer.match.exact && begun.size() == 1) {
        answer.match = {*begun.begin(), false, (*begun.begin())->canonical};
    }
    return answer;
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

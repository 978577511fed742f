// What completes a prefix: spellings of entries, and words spelled out along a state graph.
#include <gjf/core/schema/schema_tables.hpp>

#include <algorithm>
#include <cstring>
#include <set>
#include <unordered_set>

namespace quor::input::gaussian {

namespace {

void sort_unique(std::vector<std::string>& words) {
    std::sort(words.begin(), words.end());
    words.erase(std::unique(words.begin(), words.end()), words.end());
}

}  // namespace

/// One depth-first walk. `spelling_` holds what has been spelled up to the current step; a step back cuts it.
///
/// The work is bounded by the answer: a state from which no accepted spelling within the length limit can follow is never
/// entered, so once the prefix is read every step leads to a word, and the walk ends with the last word asked for.
struct StateGraph::CompletionWalk {
    struct Step {
        StateId state;
        std::size_t offset;  ///< characters of the prefix read so far
        std::size_t length;  ///< characters spelled so far
        std::size_t next_move = 0;
    };

    CompletionWalk(const StateGraph& walked, std::string_view prefix, CompletionLimits limits)
        : graph_(walked), prefix_(prefix), limits_(limits) {}

    std::set<std::string> run(StateId start) {
        enter(start, 0);
        while (!steps_.empty() && words_.size() < limits_.count) {
            advance();
        }
        return std::move(words_);
    }

   private:
    /// Goes to a state with `spelling_` as it stands, unless the walk was there before in the same way or nothing can come
    /// of it.
    void enter(StateId state, std::size_t offset) {
        const std::size_t distance = graph_.states_[state].distance;
        if (distance == unreachable || spelling_.size() + distance > limits_.length) {
            return;
        }
        if (offset < prefix_.size() && !graph_.may_read(state, prefix_.substr(offset))) {
            return;
        }
        if (!remember(state, offset)) {
            return;
        }
        if (state != graph_.accepting_) {
            steps_.push_back({state, offset, spelling_.size()});
        } else if (offset == prefix_.size() && words_.size() < limits_.count) {
            words_.insert(spelling_);
        }
    }

    bool remember(StateId state, std::size_t offset) {
        std::string place(sizeof state + sizeof offset, '\0');
        std::memcpy(place.data(), &state, sizeof state);
        std::memcpy(place.data() + sizeof state, &offset, sizeof offset);
        return visited_.insert(place + spelling_).second;
    }

    /// Takes the next move of the newest step that reads what the prefix says, or steps back when there is none.
    void advance() {
        Step& step = steps_.back();
        const State& state = graph_.states_[step.state];
        const std::string_view rest = prefix_.substr(step.offset);
        while (step.next_move < state.move_count) {
            const Move& move = graph_.moves_[state.first_move + step.next_move];
            ++step.next_move;
            const std::size_t shared = std::min(rest.size(), move.token.size());
            if (rest.substr(0, shared) == move.token.substr(0, shared)) {
                spelling_.resize(step.length);
                spelling_ += move.token;
                enter(move.next, step.offset + shared);  // may move `steps_`: `step` is not used from here on
                return;
            }
        }
        steps_.pop_back();
    }

    const StateGraph& graph_;
    std::string_view prefix_;
    CompletionLimits limits_;
    std::string spelling_;
    std::vector<Step> steps_;
    std::set<std::string> words_;
    std::unordered_set<std::string> visited_;
};

std::vector<std::string> StateGraph::completions(StateId state, std::string_view prefix, CompletionLimits limits) const {
    if (prefix.empty()) {
        return {};
    }
    const std::set<std::string> words = CompletionWalk(*this, prefix, limits).run(state);
    return {words.begin(), words.end()};
}

std::vector<std::string> SimpleYAMLParser::Impl::collect_group_completions(std::string_view prefix,
                                                                           const GroupList& groups) const {
    std::string buffer;
    std::vector<std::string> words;
    groups.append_completions(normalized(prefix, buffer), words);
    sort_unique(words);
    return words;
}

std::vector<std::string> SimpleYAMLParser::Impl::graph_prefix_completions(std::string_view state, std::string_view prefix,
                                                                          std::size_t limit_a, std::size_t limit_b) const {
    std::string buffer;
    const std::string_view word = normalized(prefix, buffer);
    const auto start = graph.find(normalize_state_name(state));
    return start ? graph.completions(*start, word, {limit_a, limit_b}) : std::vector<std::string>{};
}

std::vector<std::string> SimpleYAMLParser::Impl::basis_completions(std::string_view prefix) const {
    const CompletionLimits limits;
    std::vector<std::string> words = graph_prefix_completions(basis_state, prefix, limits.count, limits.length);
    std::string buffer;
    basis_groups.append_completions(normalized(prefix, buffer), words);
    sort_unique(words);
    return words;
}

std::vector<std::string> SimpleYAMLParser::Impl::option_completions(std::string_view keyword,
                                                                    std::string_view prefix) const {
    const GroupList* options = find_option_groups(keyword);
    return options == nullptr ? std::vector<std::string>{} : collect_group_completions(prefix, *options);
}

}  // namespace quor::input::gaussian

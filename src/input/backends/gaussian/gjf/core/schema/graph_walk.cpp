// Numbers the states of a graph, measures how far each is from acceptance, and walks texts through it.
#include <gjf/core/schema/graph_walk.hpp>

#include <gjf/core/schema/schema_tables.hpp>

#include <algorithm>
#include <array>
#include <functional>
#include <queue>
#include <unordered_set>
#include <utility>

namespace quor::input::gaussian {

namespace {

/// Sorts moves that read nothing first, then by the first byte.
int first_byte_key(std::string_view token) { return token.empty() ? -1 : static_cast<unsigned char>(token.front()); }

/// Remembers where a walk has been. Most walks see few places, which a short list finds faster than a hash set.
class VisitedPlaces {
   public:
    /// Adds a place; returns whether it is new.
    bool insert(std::uint64_t place) {
        if (!many_.empty()) {
            return many_.insert(place).second;
        }
        const auto end = few_.begin() + count_;
        if (std::find(few_.begin(), end, place) != end) {
            return false;
        }
        if (static_cast<std::size_t>(count_) == few_.size()) {
            many_.insert(few_.begin(), end);
            return many_.insert(place).second;
        }
        few_[static_cast<std::size_t>(count_++)] = place;
        return true;
    }

   private:
    std::array<std::uint64_t, 32> few_;  // the first `count_` are set
    std::ptrdiff_t count_ = 0;
    std::unordered_set<std::uint64_t> many_;
};

}  // namespace

StateGraph::StateGraph(const EdgeTable& edges, const IncludeTable& includes, std::string_view accepting_state) {
    accepting_ = number(accepting_state);
    std::vector<std::string_view> sources;
    for (const auto& [name, moves] : edges) {
        number(name);
        sources.push_back(name);
    }
    for (const auto& [name, included] : includes) {
        number(name);
        if (edges.find(name) == edges.end()) {
            sources.push_back(name);
        }
    }
    for (const std::string_view name : sources) {
        add_moves(name, edges, includes);
    }
    const Arrivals backwards = arrivals();
    mark_accepting(backwards);
    measure_distances(backwards);
    gather_first_bytes(backwards);
    order_by_first_byte();
}

StateGraph::StateId StateGraph::number(std::string_view name) {
    const auto found = ids_.find(name);
    if (found != ids_.end()) {
        return found->second;
    }
    const StateId id = static_cast<StateId>(states_.size());
    ids_.emplace(std::string(name), id);
    states_.emplace_back();
    return id;
}

void StateGraph::add_moves(std::string_view name, const EdgeTable& edges, const IncludeTable& includes) {
    const std::size_t first = moves_.size();
    if (const auto* included = find_value(includes, name)) {
        for (const std::string& state : *included) {
            if (!state.empty()) {
                moves_.push_back({{}, number(state), true});
            }
        }
    }
    if (const auto* outgoing = find_value(edges, name)) {
        for (const GraphEdge& edge : *outgoing) {
            if (!edge.next.empty()) {  // an edge to nowhere accepts nothing
                const std::string_view token = edge.null_edge ? std::string_view{} : std::string_view(edge.token);
                moves_.push_back({token, number(edge.next), edge.null_edge});
            }
        }
    }
    State& state = states_[number(name)];
    state.first_move = first;
    state.move_count = moves_.size() - first;
}

StateGraph::Arrivals StateGraph::arrivals() const {
    Arrivals arrivals(states_.size());
    for (StateId from = 0; from < states_.size(); ++from) {
        const State& state = states_[from];
        for (std::size_t index = 0; index < state.move_count; ++index) {
            const Move& move = moves_[state.first_move + index];
            arrivals[move.next].push_back({from, move.token, move.silent});
        }
    }
    return arrivals;
}

/// Marks every state from which silent moves alone lead to the accepting one.
void StateGraph::mark_accepting(const Arrivals& arrivals) {
    std::vector<StateId> accepting{accepting_};
    states_[accepting_].accepts = true;
    while (!accepting.empty()) {
        const StateId reached = accepting.back();
        accepting.pop_back();
        for (const Arrival& arrival : arrivals[reached]) {
            if (arrival.silent && !std::exchange(states_[arrival.from].accepts, true)) {
                accepting.push_back(arrival.from);
            }
        }
    }
}

/// Measures from the accepting state backwards, nearest states first.
void StateGraph::measure_distances(const Arrivals& arrivals) {
    using Reached = std::pair<std::size_t, StateId>;
    std::priority_queue<Reached, std::vector<Reached>, std::greater<>> nearest;
    states_[accepting_].distance = 0;
    nearest.push({0, accepting_});
    while (!nearest.empty()) {
        const auto [distance, reached] = nearest.top();
        nearest.pop();
        if (distance > states_[reached].distance) {
            continue;  // reached on a shorter way since
        }
        for (const Arrival& arrival : arrivals[reached]) {
            const std::size_t longer = distance + arrival.token.size();
            if (longer < states_[arrival.from].distance) {
                states_[arrival.from].distance = longer;
                nearest.push({longer, arrival.from});
            }
        }
    }
}

/// Gathers, from moves that lead to states that can still accept, the first bytes read; moves that read nothing pass them
/// on.
void StateGraph::gather_first_bytes(const Arrivals& arrivals) {
    std::vector<StateId> grown;
    for (StateId state = 0; state < states_.size(); ++state) {
        for (const Arrival& arrival : arrivals[state]) {
            if (!arrival.token.empty() && states_[state].distance != unreachable) {
                states_[arrival.from].first_bytes.set(static_cast<unsigned char>(arrival.token.front()));
            }
        }
        grown.push_back(state);
    }
    while (!grown.empty()) {  // a state grows at most 256 times
        const StateId state = grown.back();
        grown.pop_back();
        for (const Arrival& arrival : arrivals[state]) {
            const auto bytes = states_[arrival.from].first_bytes | states_[state].first_bytes;
            if (arrival.token.empty() && bytes != states_[arrival.from].first_bytes) {
                states_[arrival.from].first_bytes = bytes;
                grown.push_back(arrival.from);
            }
        }
    }
}

void StateGraph::order_by_first_byte() {
    by_first_byte_.resize(moves_.size());
    for (std::size_t index = 0; index < moves_.size(); ++index) {
        by_first_byte_[index] = index;
    }
    for (const State& state : states_) {
        const auto begin = by_first_byte_.begin() + static_cast<std::ptrdiff_t>(state.first_move);
        std::stable_sort(begin, begin + static_cast<std::ptrdiff_t>(state.move_count), [this](std::size_t a, std::size_t b) {
            return first_byte_key(moves_[a].token) < first_byte_key(moves_[b].token);
        });
    }
}

std::optional<StateGraph::StateId> StateGraph::find(std::string_view name) const {
    const StateId* id = find_value(ids_, name);
    return id == nullptr ? std::nullopt : std::optional<StateId>(*id);
}

/// Tells whether a walk from `state` may read on at the start of `text`, or may end when the text is empty.
bool StateGraph::may_read(StateId state, std::string_view text) const {
    return text.empty() ? states_[state].accepts : states_[state].first_bytes.test(static_cast<unsigned char>(text.front()));
}

bool StateGraph::matches(StateId state, std::string_view text) const {
    if (!may_read(state, text)) {
        return false;
    }
    VisitedPlaces visited;
    std::vector<Position> stack;
    stack.reserve(32);
    stack.push_back({state, 0});
    while (!stack.empty()) {
        const Position position = stack.back();
        stack.pop_back();
        if (position.offset == text.size()) {
            return true;
        }
        if (visited.insert(static_cast<std::uint64_t>(position.offset) * states_.size() + position.state)) {
            push_matching_moves(position, text, stack);
        }
    }
    return false;
}

/// Pushes where each move from `position` leads that reads nothing or what stands there; states that never accept are left
/// out.
void StateGraph::push_matching_moves(Position position, std::string_view text, std::vector<Position>& stack) const {
    const State& state = states_[position.state];
    const auto begin = by_first_byte_.begin() + static_cast<std::ptrdiff_t>(state.first_move);
    const auto end = begin + static_cast<std::ptrdiff_t>(state.move_count);
    const std::string_view rest = text.substr(position.offset);
    const auto take = [&](std::size_t index) {
        const Move& move = moves_[index];
        if (rest.substr(0, move.token.size()) == move.token && may_read(move.next, rest.substr(move.token.size()))) {
            stack.push_back({move.next, position.offset + move.token.size()});
        }
    };
    auto place = begin;
    for (; place != end && moves_[*place].token.empty(); ++place) {
        take(*place);
    }
    const int byte = first_byte_key(rest);
    const auto key_less = [this](std::size_t index, int key) { return first_byte_key(moves_[index].token) < key; };
    for (place = std::lower_bound(place, end, byte, key_less); place != end && moves_[*place].token.front() == rest.front();
         ++place) {
        take(*place);
    }
}

void SimpleYAMLParser::Impl::build_graph() { graph = StateGraph(state_edges, state_includes, normalize_state_name("Exi")); }

bool SimpleYAMLParser::Impl::graph_exact_match(std::string_view state, std::string_view text) const {
    return graph_exact_match_from_state(state, text, 0);
}

bool SimpleYAMLParser::Impl::graph_exact_match_from_state(std::string_view state, std::string_view text,
                                                          std::size_t position) const {
    const std::string name = normalize_state_name(state);
    const auto start = position > text.size() ? std::nullopt : graph.find(name);
    return start && graph.matches(*start, text.substr(position));
}

bool SimpleYAMLParser::Impl::reaches_accepting_state(std::string_view state) const {
    const auto start = graph.find(normalize_state_name(state));
    return start && graph.accepts(*start);
}

}  // namespace quor::input::gaussian

// Numbers the states of a graph, measures how far each is from acceptance, and walks texts through it.
#include <gjf/core/schema/graph_walk.hpp>

#include <gjf/core/schema/schema_tables.hpp>

#include <algorithm>
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
        if (std::find(few_.begin(), few_.end(), place) != few_.end()) {
            return false;
        }
        few_.push_back(place);
        if (few_.size() > few_limit) {
            many_.insert(few_.begin(), few_.end());
        }
        return true;
    }

   private:
    static constexpr std::size_t few_limit = 32;
    std::vector<std::uint64_t> few_;
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
    measure_distances();
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

/// Walks backwards from the accepting state, over all moves.
void StateGraph::measure_distances() {
    std::vector<std::vector<Arrival>> arrivals(states_.size());
    for (StateId from = 0; from < states_.size(); ++from) {
        const State& state = states_[from];
        for (std::size_t index = 0; index < state.move_count; ++index) {
            const Move& move = moves_[state.first_move + index];
            arrivals[move.next].push_back({from, move.token.size(), move.silent});
        }
    }
    mark_accepting(arrivals);
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
            const std::size_t longer = distance + arrival.length;
            if (longer < states_[arrival.from].distance) {
                states_[arrival.from].distance = longer;
                nearest.push({longer, arrival.from});
            }
        }
    }
}

/// Marks every state from which silent moves alone lead to the accepting one.
void StateGraph::mark_accepting(const std::vector<std::vector<Arrival>>& arrivals) {
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

bool StateGraph::matches(StateId state, std::string_view text) const {
    VisitedPlaces visited;
    std::vector<Position> stack{{state, 0}};
    while (!stack.empty()) {
        const Position position = stack.back();
        stack.pop_back();
        if (!visited.insert(static_cast<std::uint64_t>(position.offset) * states_.size() + position.state)) {
            continue;
        }
        if (position.offset < text.size()) {
            push_matching_moves(position, text, stack);
        } else if (states_[position.state].accepts) {
            return true;
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
        if (states_[move.next].distance <= rest.size() && rest.substr(0, move.token.size()) == move.token) {
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

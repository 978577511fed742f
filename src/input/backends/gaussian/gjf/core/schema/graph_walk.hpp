// State graphs: names spelled out along the edges of states, from a start state to the accepting one. Private to the
// room.
//
// States are numbered once per load, and includes stand as silent moves before the edges of their state. Every walk keeps
// its own stack, so a graph of any depth is walked safely, and remembers where it was, so cycles end.
#pragma once

#include <gjf/core/schema/candidate_group.hpp>
#include <gjf/core/text/text_map.hpp>

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// The most words a completion walk gives, and the longest spelling it gives, in characters.
struct CompletionLimits {
    std::size_t count = 8;
    std::size_t length = 96;
};

/// Holds the numbered graph of all states. It points into the tables it was made from, which must outlive it unchanged.
class StateGraph {
   public:
    using StateId = std::uint32_t;
    using EdgeTable = TextMap<std::vector<GraphEdge>>;
    using IncludeTable = TextMap<std::vector<std::string>>;

    StateGraph() = default;
    StateGraph(const EdgeTable& edges, const IncludeTable& includes, std::string_view accepting_state);

    /// Finds a state by its normalized name; absent for a state that no table mentions.
    std::optional<StateId> find(std::string_view name) const;

    /// Tells whether the accepting state is reached from `state` by includes and null edges alone.
    bool accepts(StateId state) const { return states_[state].accepts; }

    /// Tells whether a walk from `state` can read all of `text` and accept.
    bool matches(StateId state, std::string_view text) const;

    /// Returns accepted spellings that begin with `prefix`, in byte order: the first ones a depth-first walk meets, which
    /// takes includes before edges and both in the order of the tables.
    std::vector<std::string> completions(StateId state, std::string_view prefix, CompletionLimits limits) const;

   private:
    static constexpr std::size_t unreachable = std::numeric_limits<std::size_t>::max();

    struct Move {
        std::string_view token;  ///< text it reads
        StateId next = 0;
        bool silent = false;  ///< an include or a null edge
    };
    struct State {
        std::size_t first_move = 0;
        std::size_t move_count = 0;
        bool accepts = false;
        std::size_t distance = unreachable;  ///< characters of the shortest text read on the way to the accepting state
        std::bitset<256> first_bytes;        ///< with which a text can begin that is read from here on
    };
    struct Position {
        StateId state;
        std::size_t offset;
    };
    /// A move seen from where it leads.
    struct Arrival {
        StateId from;
        std::string_view token;
        bool silent;
    };
    using Arrivals = std::vector<std::vector<Arrival>>;
    struct CompletionWalk;

    StateId number(std::string_view name);
    void add_moves(std::string_view name, const EdgeTable& edges, const IncludeTable& includes);
    Arrivals arrivals() const;
    void mark_accepting(const Arrivals& arrivals);
    void measure_distances(const Arrivals& arrivals);
    void gather_first_bytes(const Arrivals& arrivals);
    void order_by_first_byte();
    bool may_read(StateId state, std::string_view text) const;
    void push_matching_moves(Position position, std::string_view text, std::vector<Position>& stack) const;

    TextMap<StateId> ids_;
    std::vector<State> states_;
    std::vector<Move> moves_;                 ///< in order, state by state
    std::vector<std::size_t> by_first_byte_;  ///< indices of moves, each state's own sorted by the first byte they read
    StateId accepting_ = 0;
};

}  // namespace quor::input::gaussian

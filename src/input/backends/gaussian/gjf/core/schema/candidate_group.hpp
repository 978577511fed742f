// The records that the route vocabulary is made of: words with their spellings, edges of state graphs, and the result of a
// match. Private to the library.
#pragma once

#include <core/export.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// One entry of a vocabulary state: the spellings of one word and what it leads to. All texts are normalized.
struct CandidateGroup {
    std::vector<std::string> forms;  ///< spellings, in the document's order
    std::string next;                ///< state the word leads to; empty when none
    std::string canonical;           ///< preferred spelling
    std::string state;               ///< state in which the entry stands
    std::string result;              ///< result of the entry's action; empty when none
    std::int64_t value = 0;          ///< value of the entry's action; 0 when none
    bool has_action = false;
    bool consume = false;
};

/// One edge of a state graph.
struct GraphEdge {
    std::string token;       ///< text the edge reads; empty for a null edge
    std::string next;        ///< state it leads to
    bool null_edge = false;  ///< taken without reading anything
};

/// What matching a word gave. `group` points into the vocabulary and lives as long as it.
struct MatchResult {
    const CandidateGroup* group = nullptr;  ///< null when nothing matched or a graph walk matched
    bool exact = false;
    std::string canonical;

    bool found() const noexcept { return group != nullptr || !canonical.empty(); }
};

}  // namespace quor::input::gaussian

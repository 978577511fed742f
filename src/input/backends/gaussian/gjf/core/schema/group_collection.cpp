// Depth-first visits over states: the entries of a state, then those of its includes, then, for keywords, those its edges
// lead to.
#include <gjf/core/schema/group_collection.hpp>

#include <stdexcept>
#include <unordered_set>
#include <utility>

namespace quor::input::gaussian {

namespace {

using StateNames = std::unordered_set<std::string_view>;

constexpr std::string_view method_result = "xprc";
constexpr std::int64_t last_plain_method_value = 99999999;  ///< methods of a greater value are keywords too
constexpr std::size_t option_limit = 200000;  ///< of options, and states looked through for them, of all keywords

/// Collects entries in the order of a visit, each spelling set once.
class GroupCollector {
   public:
    explicit GroupCollector(const SimpleYAMLParser::Impl& schema) : schema_(schema) {}

    void exclude(StateNames states) { excluded_ = std::move(states); }

    /// Visits a state and what it includes; with `follow_edges`, also what its edges lead to.
    void visit(std::string_view start, bool follow_edges) {
        std::vector<std::string_view> stack{start};
        while (!stack.empty()) {
            const std::string_view state = stack.back();
            stack.pop_back();
            if (state.empty() || excluded_.count(state) != 0 || !visited_.insert(state).second) {
                continue;
            }
            if (const auto* groups = find_value(schema_.state_groups, state)) {
                for (const CandidateGroup& group : *groups) {
                    add(group);
                }
            }
            push_followers(state, follow_edges, stack);
        }
    }

    /// Adds one entry unless one equal in spellings is there.
    void add(const CandidateGroup& group) {
        if (known_.insert(&group).second) {
            groups_.push_back(&group);
        }
    }

    /// Returns the work done: entries collected and states visited.
    std::size_t work() const { return groups_.size() + visited_.size(); }

    GroupList to_list() const { return GroupList(groups_); }

   private:
    struct SameSpellings {
        std::size_t operator()(const CandidateGroup* group) const {
            const std::hash<std::string_view> hash;
            return hash(group->canonical) ^ (group->forms.empty() ? 0 : hash(group->forms.back()) * 31);
        }
        bool operator()(const CandidateGroup* a, const CandidateGroup* b) const {
            return a->canonical == b->canonical && a->forms == b->forms;
        }
    };

    /// Pushes in reverse, so that the stack gives them back in order: includes first.
    void push_followers(std::string_view state, bool follow_edges, std::vector<std::string_view>& stack) const {
        const auto* edges = follow_edges ? find_value(schema_.state_edges, state) : nullptr;
        if (edges != nullptr) {
            for (auto edge = edges->rbegin(); edge != edges->rend(); ++edge) {
                if (edge->next != schema_.entry_state && (stack.empty() || stack.back() != edge->next)) {
                    stack.push_back(edge->next);
                }
            }
        }
        if (const auto* includes = find_value(schema_.state_includes, state)) {
            stack.insert(stack.end(), includes->rbegin(), includes->rend());
        }
    }

    const SimpleYAMLParser::Impl& schema_;
    StateNames excluded_;
    StateNames visited_;
    GroupList::Groups groups_;
    std::unordered_set<const CandidateGroup*, SameSpellings, SameSpellings> known_;
};

/// Returns a state and all it includes, directly or not.
StateNames include_closure(const SimpleYAMLParser::Impl& schema, std::string_view start) {
    StateNames closure;
    std::vector<std::string_view> stack{start};
    while (!stack.empty()) {
        const std::string_view state = stack.back();
        stack.pop_back();
        if (state.empty() || !closure.insert(state).second) {
            continue;
        }
        if (const auto* includes = find_value(schema.state_includes, state)) {
            stack.insert(stack.end(), includes->begin(), includes->end());
        }
    }
    return closure;
}

/// Tells what a procedure is: first whether a method, then whether a keyword.
std::pair<bool, bool> procedure_roles(const CandidateGroup& group, std::string_view external_state) {
    if (group.result == method_result) {
        return {true, group.value > last_plain_method_value};
    }
    const bool set_apart = group.has_action || group.next == external_state;
    return {!set_apart, set_apart};
}

}  // namespace

void collect_role_groups(SimpleYAMLParser::Impl& schema) {
    GroupCollector procedures(schema);
    procedures.visit(schema.procedure_state, false);
    schema.procedure_groups = procedures.to_list();

    StateNames excluded = include_closure(schema, schema.procedure_state);
    excluded.erase(schema.entry_state);
    GroupCollector keywords(schema);
    keywords.exclude(std::move(excluded));
    keywords.visit(schema.entry_state, true);

    GroupCollector methods(schema);
    const std::string external_state = schema.normalize_state_name("Extern");
    for (const CandidateGroup& group : schema.procedure_groups) {
        const auto [is_method, is_keyword] = procedure_roles(group, external_state);
        if (is_method) {
            methods.add(group);
        }
        if (is_keyword) {
            keywords.add(group);
        }
    }
    schema.keyword_groups = keywords.to_list();
    schema.method_groups = methods.to_list();

    GroupCollector basis_sets(schema);
    basis_sets.visit(schema.basis_state, false);
    schema.basis_groups = basis_sets.to_list();
}

void collect_option_groups(SimpleYAMLParser::Impl& schema) {
    std::size_t work = 0;
    for (const auto& [keyword, states] : schema.option_states) {
        GroupCollector options(schema);
        for (const std::string& state : states) {
            options.visit(state, false);
        }
        work += options.work();
        if (work > option_limit) {
            throw std::length_error("too many options");
        }
        schema.option_groups.insert_or_assign(keyword, options.to_list());
    }
}

}  // namespace quor::input::gaussian

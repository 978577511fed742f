// The index of a list of entries, and the matches that rest on it.
#include <gjf/core/schema/group_matching.hpp>

#include <gjf/core/schema/schema_tables.hpp>

#include <algorithm>
#include <bit>
#include <memory>
#include <numeric>
#include <utility>

namespace quor::input::gaussian {

namespace {

bool begins_with(std::string_view text, std::string_view prefix) { return text.substr(0, prefix.size()) == prefix; }

}  // namespace

/// All spellings of a list: as they stand in the entries, sorted, and by word.
struct GroupList::Index {
    struct Spelling {
        std::string_view form;
        std::uint32_t group;
    };

    Index(const Groups& groups, Order given_order);

    std::string_view word_in(std::uint32_t slot) const;
    std::size_t slot_of(std::string_view word) const;
    Order::const_iterator first_with_prefix(std::string_view prefix) const;

    std::vector<Spelling> spellings;
    Order order;  ///< numbers of the spellings, sorted
    /// A hash table of exact words: 0 is free, else twice the number of a spelling and 2, or 3 where its "(" is left out.
    Order slots;

   private:
    void sort_spellings();
};

GroupList::Index::Index(const Groups& groups, Order given_order) : order(std::move(given_order)) {
    spellings.reserve(order.size());
    std::size_t words = 1;  // at least one slot stays free
    const auto has_parenthesis = [](std::string_view form) { return form.size() > 1 && form.back() == '('; };
    for (std::uint32_t index = 0; index < groups.size(); ++index) {
        for (const std::string_view form : groups[index]->forms) {
            spellings.push_back({form, index});
            words += has_parenthesis(form) ? 2 : 1;
        }
    }
    sort_spellings();
    slots.resize(std::bit_ceil(words + words / 2));
    const auto take = [this](std::string_view word, std::size_t slot) {
        std::uint32_t& place = slots[slot_of(word)];
        place = place == 0 ? static_cast<std::uint32_t>(slot) : place;  // the first in order stays
    };
    for (std::size_t index = 0; index < spellings.size(); ++index) {
        const std::string_view form = spellings[index].form;
        take(form, 2 * index + 2);
        if (has_parenthesis(form)) {
            take(form.substr(0, form.size() - 1), 2 * index + 3);
        }
    }
}

/// Makes the order, unless the one that was given is right.
void GroupList::Index::sort_spellings() {
    const auto before = [this](std::uint32_t a, std::uint32_t b) {
        const int difference = spellings[a].form.compare(spellings[b].form);
        return difference != 0 ? difference < 0 : a < b;
    };
    const std::size_t count = spellings.size();
    bool sorted = order.size() == count;
    for (std::size_t place = 0; sorted && place < count; ++place) {
        sorted = order[place] < count && (place == 0 || before(order[place - 1], order[place]));
    }
    if (!sorted) {
        order.resize(count);
        std::iota(order.begin(), order.end(), 0U);
        std::sort(order.begin(), order.end(), before);
    }
}

std::string_view GroupList::Index::word_in(std::uint32_t slot) const {
    const std::string_view form = spellings[slot / 2 - 1].form;
    return form.substr(0, form.size() - slot % 2);
}

/// Returns the slot that holds the word, or the free one where it would stand.
std::size_t GroupList::Index::slot_of(std::string_view word) const {
    const std::size_t mask = slots.size() - 1;
    std::size_t place = TextHash()(word) & mask;
    while (slots[place] != 0 && word_in(slots[place]) != word) {
        place = (place + 1) & mask;
    }
    return place;
}

GroupList::Order::const_iterator GroupList::Index::first_with_prefix(std::string_view prefix) const {
    return std::lower_bound(order.begin(), order.end(), prefix, [this](std::uint32_t spelling, std::string_view word) {
        return spellings[spelling].form < word;
    });
}

GroupList::GroupList(Groups groups, std::vector<std::uint32_t> order)
    : groups_(std::move(groups)), order_(std::move(order)) {}

GroupList::GroupList(std::vector<CandidateGroup> groups) : own_(std::move(groups)) {
    for (const CandidateGroup& group : own_) {
        groups_.push_back(&group);
    }
}

GroupList::GroupList(GroupList&& other) noexcept { *this = std::move(other); }

GroupList& GroupList::operator=(GroupList&& other) noexcept {
    own_.swap(other.own_);
    groups_.swap(other.groups_);
    order_.swap(other.order_);
    index_.store(other.index_.exchange(index_.load()));
    return *this;
}

GroupList::~GroupList() { delete index_.load(); }

const GroupList::Index& GroupList::index() const {
    const Index* index = index_.load(std::memory_order_acquire);
    if (index == nullptr) {
        auto fresh = std::make_unique<const Index>(groups_, order_);
        if (index_.compare_exchange_strong(index, fresh.get(), std::memory_order_acq_rel)) {
            index = fresh.release();
        }
    }
    return *index;
}

const std::vector<std::uint32_t>& GroupList::order() const { return index().order; }

GroupHit GroupList::match_exact(std::string_view word) const {
    if (word.empty() || empty()) {
        return {};
    }
    const Index& all = index();
    const std::uint32_t slot = all.slots[all.slot_of(word)];
    if (slot == 0) {
        return {};
    }
    const CandidateGroup& group = *groups_[all.spellings[slot / 2 - 1].group];
    return {&group, true, slot % 2 != 0 ? all.word_in(slot) : std::string_view(group.canonical)};
}

GroupHit GroupList::match(std::string_view word) const {
    const GroupHit exact = match_exact(word);
    if (exact.found() || word.empty()) {
        return exact;
    }
    const Index& all = index();
    const CandidateGroup* only = nullptr;
    for (auto place = all.first_with_prefix(word); place != all.order.end() && begins_with(all.spellings[*place].form, word);
         ++place) {
        const CandidateGroup* const group = groups_[all.spellings[*place].group];
        if (only != nullptr && group != only) {
            return {};  // ambiguous
        }
        only = group;
    }
    return only == nullptr ? GroupHit{} : GroupHit{only, false, only->canonical};
}

void GroupList::append_completions(std::string_view prefix, std::vector<std::string>& words) const {
    if (prefix.empty()) {
        return;
    }
    const Index& all = index();
    for (auto place = all.first_with_prefix(prefix);
         place != all.order.end() && begins_with(all.spellings[*place].form, prefix); ++place) {
        words.push_back(groups_[all.spellings[*place].group]->canonical);
    }
}

MatchResult SimpleYAMLParser::Impl::match_group(std::string_view token, const GroupList& groups) const {
    std::string buffer;
    return groups.match(normalized(token, buffer)).to_result();
}

const GroupList* SimpleYAMLParser::Impl::find_option_groups(std::string_view keyword) const {
    std::string buffer;
    const std::string_view word = normalized(keyword, buffer);
    GroupHit hit = keyword_groups.match(word);
    if (!hit.found()) {
        hit = method_groups.match(word);
    }
    if (hit.found()) {
        if (const GroupList* options = find_value(option_groups, hit.canonical)) {
            return options;
        }
        const bool has_forms = !hit.group->forms.empty();
        if (const GroupList* options = has_forms ? find_value(option_groups, hit.group->forms.front()) : nullptr) {
            return options;
        }
    }
    return find_value(option_groups, word);
}

MatchResult SimpleYAMLParser::Impl::match_option(std::string_view keyword, std::string_view option) const {
    const GroupList* options = find_option_groups(keyword);
    return options == nullptr ? MatchResult{} : match_group(option, *options);
}

MatchResult SimpleYAMLParser::Impl::match_basis(std::string_view token) const {
    std::string buffer;
    const std::string_view word = normalized(token, buffer);
    const GroupHit entry = basis_groups.match(word);
    if (entry.found() || word.empty()) {
        return entry.to_result();
    }
    const auto start = graph.find(normalize_state_name(basis_state));
    if (start && graph.matches(*start, word)) {
        return {nullptr, true, std::string(word)};
    }
    // Two completions tell that there is not exactly one; the other six need not be looked for.
    CompletionLimits limits;
    limits.count = 2;
    const std::vector<std::string> completions =
        start ? graph.completions(*start, word, limits) : std::vector<std::string>{};
    if (completions.size() == 1) {
        return {nullptr, completions.front() == word, completions.front()};
    }
    const std::size_t parenthesis = word.find('(');
    if (parenthesis == std::string_view::npos || parenthesis == 0) {
        return {};
    }
    GroupHit head = basis_groups.match(normalized(word.substr(0, parenthesis), buffer));
    head.exact = false;
    return head.to_result();
}

bool SimpleYAMLParser::Impl::knows_basis_exact(std::string_view token) const {
    std::string buffer;
    const std::string_view word = normalized(token, buffer);
    if (word.empty()) {
        return false;
    }
    return basis_groups.match_exact(word).found() || graph_exact_match_from_state(basis_state, word, 0);
}

}  // namespace quor::input::gaussian

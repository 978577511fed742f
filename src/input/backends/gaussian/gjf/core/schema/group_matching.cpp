// The index of a list of entries, and the matches that rest on it.
#include <gjf/core/schema/group_matching.hpp>

#include <gjf/core/schema/schema_tables.hpp>

#include <algorithm>
#include <bit>
#include <numeric>
#include <utility>

namespace quor::input::gaussian {

namespace {

bool begins_with(std::string_view text, std::string_view prefix) { return text.substr(0, prefix.size()) == prefix; }

}  // namespace

GroupList::GroupList(Groups groups, std::vector<std::uint32_t> order)
    : groups_(std::move(groups)), order_(std::move(order)) {
    index_spellings();
}

GroupList::GroupList(std::vector<CandidateGroup> groups) : own_(std::move(groups)) {
    for (const CandidateGroup& group : own_) {
        groups_.push_back(&group);
    }
    index_spellings();
}

void GroupList::index_spellings() {
    spellings_.reserve(order_.size());
    for (std::uint32_t index = 0; index < groups_.size(); ++index) {
        for (const std::string_view form : groups_[index]->forms) {
            spellings_.push_back({form, index});
        }
    }
    sort_spellings();
    slots_.resize(std::bit_ceil(4 * spellings_.size() + 1));  // a spelling may give two words; at most half are taken
    for (std::uint32_t index = 0; index < spellings_.size(); ++index) {
        const std::string_view form = spellings_[index].form;
        const auto take = [this](std::string_view word, std::uint32_t slot) {
            std::uint32_t& place = slots_[slot_of(word)];
            place = place == 0 ? slot : place;  // the first in order stays
        };
        take(form, 2 * index + 2);
        if (form.size() > 1 && form.back() == '(') {
            take(form.substr(0, form.size() - 1), 2 * index + 3);
        }
    }
}

/// Makes the order, unless the one that was given is right.
void GroupList::sort_spellings() {
    const auto before = [this](std::uint32_t a, std::uint32_t b) {
        const int order = spellings_[a].form.compare(spellings_[b].form);
        return order != 0 ? order < 0 : a < b;
    };
    const std::size_t count = spellings_.size();
    bool sorted = order_.size() == count;
    for (std::size_t place = 0; sorted && place < count; ++place) {
        sorted = order_[place] < count && (place == 0 || before(order_[place - 1], order_[place]));
    }
    if (!sorted) {
        order_.resize(count);
        std::iota(order_.begin(), order_.end(), 0U);
        std::sort(order_.begin(), order_.end(), before);
    }
}

std::string_view GroupList::word_in(std::uint32_t slot) const {
    const std::string_view form = spellings_[slot / 2 - 1].form;
    return form.substr(0, form.size() - slot % 2);
}

/// Returns the slot that holds the word, or the free one where it would stand.
std::size_t GroupList::slot_of(std::string_view word) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t place = TextHash()(word) & mask;
    while (slots_[place] != 0 && word_in(slots_[place]) != word) {
        place = (place + 1) & mask;
    }
    return place;
}

GroupHit GroupList::match_exact(std::string_view word) const {
    const std::uint32_t slot = word.empty() || slots_.empty() ? 0 : slots_[slot_of(word)];
    if (slot == 0) {
        return {};
    }
    const CandidateGroup& group = *groups_[spellings_[slot / 2 - 1].group];
    return {&group, true, slot % 2 != 0 ? word_in(slot) : std::string_view(group.canonical)};
}

GroupHit GroupList::match(std::string_view word) const {
    const GroupHit exact = match_exact(word);
    if (exact.found() || word.empty()) {
        return exact;
    }
    const CandidateGroup* only = nullptr;
    for (auto place = first_with_prefix(word); place != order_.end() && begins_with(spellings_[*place].form, word);
         ++place) {
        const CandidateGroup* const group = groups_[spellings_[*place].group];
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
    for (auto place = first_with_prefix(prefix); place != order_.end() && begins_with(spellings_[*place].form, prefix);
         ++place) {
        words.push_back(groups_[spellings_[*place].group]->canonical);
    }
}

GroupList::Order::const_iterator GroupList::first_with_prefix(std::string_view prefix) const {
    return std::lower_bound(order_.begin(), order_.end(), prefix, [this](std::uint32_t spelling, std::string_view word) {
        return spellings_[spelling].form < word;
    });
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

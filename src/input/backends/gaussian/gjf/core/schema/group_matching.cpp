// The index of a list of entries, and the matches that rest on it.
#include <gjf/core/schema/group_matching.hpp>

#include <gjf/core/schema/schema_tables.hpp>

#include <algorithm>
#include <tuple>

namespace quor::input::gaussian {

namespace {

bool begins_with(std::string_view text, std::string_view prefix) { return text.substr(0, prefix.size()) == prefix; }

}  // namespace

GroupList::GroupList(std::vector<CandidateGroup> groups) : groups_(std::move(groups)) {
    std::size_t form_count = 0;
    for (const CandidateGroup& group : groups_) {
        form_count += group.forms.size();
    }
    sorted_.reserve(form_count);
    exact_.reserve(form_count);
    for (std::uint32_t index = 0; index < groups_.size(); ++index) {
        for (const std::string_view form : groups_[index].forms) {
            sorted_.push_back({form, index});
            exact_.try_emplace(form, ExactSpelling{index, false});  // the first in order stays
            if (form.size() > 1 && form.back() == '(') {
                exact_.try_emplace(form.substr(0, form.size() - 1), ExactSpelling{index, true});
            }
        }
    }
    std::sort(sorted_.begin(), sorted_.end(),
              [](const Spelling& a, const Spelling& b) { return std::tie(a.form, a.group) < std::tie(b.form, b.group); });
}

GroupHit GroupList::match_exact(std::string_view word) const {
    const auto found = word.empty() ? exact_.end() : exact_.find(word);
    if (found == exact_.end()) {
        return {};
    }
    const CandidateGroup& group = groups_[found->second.group];
    return {&group, true, found->second.stands_before_parenthesis ? found->first : std::string_view(group.canonical)};
}

GroupHit GroupList::match(std::string_view word) const {
    const GroupHit exact = match_exact(word);
    if (exact.found() || word.empty()) {
        return exact;
    }
    const auto first = first_with_prefix(word);
    for (auto spelling = first; spelling != sorted_.end() && begins_with(spelling->form, word); ++spelling) {
        if (spelling->group != first->group) {
            return {};  // ambiguous
        }
    }
    if (first == sorted_.end() || !begins_with(first->form, word)) {
        return {};
    }
    const CandidateGroup& group = groups_[first->group];
    return {&group, false, group.canonical};
}

void GroupList::append_completions(std::string_view prefix, std::vector<std::string>& words) const {
    if (prefix.empty()) {
        return;
    }
    for (auto spelling = first_with_prefix(prefix); spelling != sorted_.end() && begins_with(spelling->form, prefix);
         ++spelling) {
        words.push_back(groups_[spelling->group].canonical);
    }
}

std::vector<GroupList::Spelling>::const_iterator GroupList::first_with_prefix(std::string_view prefix) const {
    return std::lower_bound(sorted_.begin(), sorted_.end(), prefix,
                            [](const Spelling& spelling, std::string_view word) { return spelling.form < word; });
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

// A word against the spellings of a list of entries: exactly, or by a prefix that one entry alone has. Private to the room.
//
// The linear rule is the definition; the index gives the same answers without looking at every spelling. Exactly: the first
// entry in order, and in it the first spelling in order, that equals the word, or that is the word followed by "(". By
// prefix: all spellings that begin with the word stand next to each other once sorted.
#pragma once

#include <gjf/core/schema/candidate_group.hpp>
#include <gjf/core/text/text_map.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quor::input::gaussian {

/// What a look-up in a `GroupList` found; both members live as long as the list.
struct GroupHit {
    const CandidateGroup* group = nullptr;  ///< null when nothing was found
    bool exact = false;
    std::string_view canonical;

    bool found() const noexcept { return group != nullptr; }
    MatchResult to_result() const { return {group, exact, std::string(canonical)}; }
};

/// Holds a list of entries, never changed once made, with the index that answers words. Words given to it are normalized.
class GroupList {
   public:
    GroupList() = default;
    explicit GroupList(std::vector<CandidateGroup> groups);

    // The index points into the entries: they may move together, and not be copied.
    GroupList(GroupList&&) noexcept = default;
    GroupList& operator=(GroupList&&) noexcept = default;
    GroupList(const GroupList&) = delete;
    GroupList& operator=(const GroupList&) = delete;
    ~GroupList() = default;

    const std::vector<CandidateGroup>& groups() const noexcept { return groups_; }
    auto begin() const noexcept { return groups_.begin(); }
    auto end() const noexcept { return groups_.end(); }
    std::size_t size() const noexcept { return groups_.size(); }
    bool empty() const noexcept { return groups_.empty(); }
    const CandidateGroup& operator[](std::size_t index) const noexcept { return groups_[index]; }

    /// Finds the entry with a spelling equal to `word`; for a spelling "word(" the canonical spelling is the word itself.
    GroupHit match_exact(std::string_view word) const;

    /// Finds the entry as `match_exact` does, else the only entry with a spelling that begins with `word`; nothing for an
    /// empty word.
    GroupHit match(std::string_view word) const;

    /// Appends the canonical spelling of every entry with a spelling that begins with `prefix`; nothing for an empty prefix.
    /// The additions are neither sorted nor free of repetition.
    void append_completions(std::string_view prefix, std::vector<std::string>& words) const;

   private:
    struct Spelling {
        std::string_view form;
        std::uint32_t group;
    };
    struct ExactSpelling {
        std::uint32_t group;
        bool stands_before_parenthesis;  ///< the spelling has a "(" after the word
    };

    std::vector<Spelling>::const_iterator first_with_prefix(std::string_view prefix) const;

    std::vector<CandidateGroup> groups_;
    std::vector<Spelling> sorted_;
    std::unordered_map<std::string_view, ExactSpelling, TextHash> exact_;
};

}  // namespace quor::input::gaussian

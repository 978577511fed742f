// A word against the spellings of a list of entries: exactly, or by a prefix that one entry alone has. Private to the room.
//
// The linear rule is the definition; the index gives the same answers without looking at every spelling. Exactly: the first
// entry in order, and in it the first spelling in order, that equals the word, or that is the word followed by "(". By
// prefix: all spellings that begin with the word stand next to each other once sorted.
#pragma once

#include <gjf/core/schema/candidate_group.hpp>
#include <gjf/core/text/text_map.hpp>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
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
    using Groups = std::vector<const CandidateGroup*>;

    /// Gives the entries one by one.
    class Iterator {
       public:
        explicit Iterator(Groups::const_iterator place) : place_(place) {}
        const CandidateGroup& operator*() const { return **place_; }
        Iterator& operator++() {
            ++place_;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return place_ != other.place_; }

       private:
        Groups::const_iterator place_;
    };

    GroupList() = default;
    /// Lists entries that others keep: they must outlive the list and stay where they are. `order` may give the order of all
    /// spellings, numbered from 0 as they stand in the entries; one that is not sorted is made anew.
    explicit GroupList(Groups groups, std::vector<std::uint32_t> order = {});
    /// Lists entries of its own.
    explicit GroupList(std::vector<CandidateGroup> groups);

    // The index points into the entries: they may move together, and not be copied.
    GroupList(GroupList&& other) noexcept;
    GroupList& operator=(GroupList&& other) noexcept;
    GroupList(const GroupList&) = delete;
    GroupList& operator=(const GroupList&) = delete;
    ~GroupList();

    const Groups& groups() const noexcept { return groups_; }
    /// Returns the numbers of all spellings, sorted by spelling.
    const std::vector<std::uint32_t>& order() const;
    Iterator begin() const noexcept { return Iterator(groups_.begin()); }
    Iterator end() const noexcept { return Iterator(groups_.end()); }
    std::size_t size() const noexcept { return groups_.size(); }
    bool empty() const noexcept { return groups_.empty(); }
    const CandidateGroup& operator[](std::size_t index) const noexcept { return *groups_[index]; }

    /// Finds the entry with a spelling equal to `word`; for a spelling "word(" the canonical spelling is the word itself.
    GroupHit match_exact(std::string_view word) const;

    /// Finds the entry as `match_exact` does, else the only entry with a spelling that begins with `word`; nothing for an
    /// empty word.
    GroupHit match(std::string_view word) const;

    /// Appends the canonical spelling of every entry with a spelling that begins with `prefix`; nothing for an empty prefix.
    /// The additions are neither sorted nor free of repetition.
    void append_completions(std::string_view prefix, std::vector<std::string>& words) const;

   private:
    struct Index;
    using Order = std::vector<std::uint32_t>;

    const Index& index() const;

    std::vector<CandidateGroup> own_;
    Groups groups_;
    Order order_;  ///< as it was given
    /// Made at the first question, of whichever thread: most commands ask for few of the two hundred lists.
    mutable std::atomic<const Index*> index_{nullptr};
};

}  // namespace quor::input::gaussian

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
    GroupList(GroupList&&) noexcept = default;
    GroupList& operator=(GroupList&&) noexcept = default;
    GroupList(const GroupList&) = delete;
    GroupList& operator=(const GroupList&) = delete;
    ~GroupList() = default;

    const Groups& groups() const noexcept { return groups_; }
    /// Returns the numbers of all spellings, sorted by spelling.
    const std::vector<std::uint32_t>& order() const noexcept { return order_; }
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
    struct Spelling {
        std::string_view form;
        std::uint32_t group;
    };
    using Order = std::vector<std::uint32_t>;

    void index_spellings();
    void sort_spellings();
    std::string_view word_in(std::uint32_t slot) const;
    std::size_t slot_of(std::string_view word) const;
    Order::const_iterator first_with_prefix(std::string_view prefix) const;

    std::vector<CandidateGroup> own_;
    Groups groups_;
    std::vector<Spelling> spellings_;  ///< as they stand in the entries
    Order order_;                      ///< numbers of the spellings, sorted
    /// A hash table of exact words: 0 is free, else twice the number of a spelling and 2, or 3 where its "(" is left out.
    Order slots_;
};

}  // namespace quor::input::gaussian

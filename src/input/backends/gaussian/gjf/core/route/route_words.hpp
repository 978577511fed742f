// What a route asks for, by name: keywords, options and words of its tree. Private to the library.
#pragma once

#include <gjf/core/route/route_tree.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// Answers whether and where a route has a word. Names are preferred spellings; what stands in an ONIOM expression is no
/// keyword of the route.
class RouteWords {
   public:
    /// `route` must outlive the object.
    explicit RouteWords(const RouteTree& route);

    const RouteTree& tree;
    std::vector<const RouteTree::Keyword*> keywords;  ///< in the order of the route

    /// Returns the first, or the last, keyword of this name, or null.
    const RouteTree::Keyword* find_keyword(std::string_view name) const noexcept;
    const RouteTree::Keyword* last_keyword(std::string_view name) const noexcept;
    /// Returns the first such option of any keyword of this name, or null.
    const RouteTree::Option* find_option(std::string_view keyword, std::string_view option) const noexcept;
    bool has_keyword(std::string_view name) const noexcept {
        return (keyword_marks_ & mark_of(name)) != 0 && find_keyword(name) != nullptr;
    }
    bool has_option(std::string_view keyword, std::string_view option) const noexcept {
        return (option_marks_ & mark_of(option)) != 0 && find_option(keyword, option) != nullptr;
    }
    /// Tells whether any keyword at all has such an option; `known` asks for one that the vocabulary gives it.
    bool any_has_option(std::string_view option, bool known = false) const noexcept;
    /// Returns where the route has a word: a keyword (td also as rtd and utd), an option, as opt=calcfc, or a method.
    std::optional<Span> find_word(std::string_view word) const noexcept;
    /// Tells whether the route has all, or any, of some words with blanks between, and how many.
    bool has_all_words(std::string_view words) const noexcept;
    bool has_any_word(std::string_view words) const noexcept;
    std::size_t count_words(std::string_view words) const noexcept;
    /// Tells whether a segment names this basis set.
    bool names_basis(std::string_view name) const noexcept;

   private:
    // Words with another mark differ, so that most of what is asked for need not be looked for.
    static std::uint64_t mark_of(std::string_view word) noexcept {
        return word.empty() ? 0 : std::uint64_t{1} << ((static_cast<unsigned char>(word.front()) + 5 * word.size()) % 64);
    }

    std::uint64_t keyword_marks_ = 0;
    std::uint64_t option_marks_ = 0;
};

}  // namespace quor::input::gaussian

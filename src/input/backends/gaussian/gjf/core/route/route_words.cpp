// Looks words up in the tree of a route.
#include <gjf/core/route/route_words.hpp>

#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

bool is_word(const RouteTree::Keyword& keyword, std::string_view word) noexcept {
    const std::string_view name = keyword.name;
    const bool has_prefix = keyword.is_method || name == "rtd" || name == "utd" || name == "rtda" || name == "utda";
    return name == word || (has_prefix && name.substr(1) == word);
}

// Cuts the first word off a text of words with single blanks between.
std::string_view take_word(std::string_view& words) noexcept {
    const std::string_view word = words.substr(0, words.find(' '));
    words.remove_prefix(std::min(word.size() + 1, words.size()));
    return word;
}

}  // namespace

RouteWords::RouteWords(const RouteTree& route) : tree(route) {
    for (const RouteTree::Segment& segment : route.segments) {
        for (const RouteTree::Keyword& keyword : segment.keywords) {
            if (!segment.is_oniom) {
                keywords.push_back(&keyword);
                keyword_marks_ |= mark_of(keyword.name);
                for (const RouteTree::Option& option : keyword.options) {
                    option_marks_ |= mark_of(option.canonical);
                }
            }
        }
    }
}

const RouteTree::Keyword* RouteWords::find_keyword(std::string_view name) const noexcept {
    const auto found =
        std::find_if(keywords.begin(), keywords.end(), [&](const auto* keyword) { return keyword->name == name; });
    return found == keywords.end() ? nullptr : *found;
}

const RouteTree::Keyword* RouteWords::last_keyword(std::string_view name) const noexcept {
    const auto found =
        std::find_if(keywords.rbegin(), keywords.rend(), [&](const auto* keyword) { return keyword->name == name; });
    return found == keywords.rend() ? nullptr : *found;
}

const RouteTree::Option* RouteWords::find_option(std::string_view name, std::string_view option) const noexcept {
    for (const RouteTree::Keyword* keyword : keywords) {
        if (keyword->name == name) {
            if (const RouteTree::Option* found = keyword->find_option(option); found != nullptr) {
                return found;
            }
        }
    }
    return nullptr;
}

bool RouteWords::any_has_option(std::string_view option, bool known) const noexcept {
    return (option_marks_ & mark_of(option)) != 0 &&
           std::any_of(keywords.begin(), keywords.end(), [&](const RouteTree::Keyword* keyword) {
               const RouteTree::Option* found = keyword->find_option(option);
               return found != nullptr && (!known || found->match != RouteMatch::Unknown);
           });
}

std::optional<Span> RouteWords::find_word(std::string_view word) const noexcept {
    if (const std::size_t sign = word.find('='); sign != std::string_view::npos) {
        const RouteTree::Option* option = find_option(word.substr(0, sign), word.substr(sign + 1));
        return option == nullptr ? std::nullopt : std::optional(option->name);
    }
    for (const RouteTree::Segment& segment : tree.segments) {
        for (const RouteTree::Keyword& keyword : segment.keywords) {
            if (!segment.is_oniom && is_word(keyword, word)) {
                return keyword.head;
            }
        }
        if (segment.method == word || (segment.is_oniom && word == "oniom")) {
            return segment.place;
        }
    }
    return std::nullopt;
}

bool RouteWords::has_all_words(std::string_view words) const noexcept {
    while (!words.empty()) {
        if (!find_word(take_word(words))) {
            return false;
        }
    }
    return true;
}

bool RouteWords::has_any_word(std::string_view words) const noexcept {
    while (!words.empty()) {
        if (find_word(take_word(words))) {
            return true;
        }
    }
    return false;
}

std::size_t RouteWords::count_words(std::string_view words) const noexcept {
    std::size_t count = 0;
    while (!words.empty()) {
        count += find_word(take_word(words)) ? 1 : 0;
    }
    return count;
}

bool RouteWords::names_basis(std::string_view name) const noexcept {
    return std::any_of(tree.segments.begin(), tree.segments.end(),
                       [&](const auto& segment) { return segment.basis == name; });
}

}  // namespace quor::input::gaussian

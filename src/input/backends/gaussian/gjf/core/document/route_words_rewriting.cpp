// Writes words of a route that were given or taken one by one, or as a whole, without looking at what they mean.
#include <gjf/core/document/route_text.hpp>

#include <algorithm>
#include <map>
#include <string_view>

namespace quor::input::gaussian {
namespace {

std::string joined_words(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

// Puts all words in the place of the first of those that were there.
void write_anew(RouteText& text, std::size_t old_count, const std::vector<std::string>& words) {
    text.replace_word(0, joined_words(words));
    for (std::size_t i = 1; i < old_count; ++i) {
        text.replace_word(i, {});
    }
}

}  // namespace

void rewrite_words(RouteText& text, const std::vector<std::string>& before, const std::vector<std::string>& after) {
    std::map<std::string_view, std::vector<std::size_t>> places;
    for (std::size_t i = 0; i < before.size(); ++i) {
        places[before[i]].push_back(i);
    }
    std::vector<char> kept(before.size());
    std::vector<std::string> added;
    std::size_t next = 0;
    bool in_order = true;
    // The head leads, so another one takes its place.
    const bool other_head = !after.empty() && after[0] != before[0] && after[0][0] == '#' && before[0][0] == '#';
    if (other_head) {
        text.replace_word(0, after[0]);
        kept[0] = 1;
        next = 1;
    }
    for (std::size_t i = other_head ? 1 : 0; i < after.size(); ++i) {
        const std::vector<std::size_t>& same = places[after[i]];
        const auto found = std::lower_bound(same.begin(), same.end(), next);
        if (found == same.end()) {
            added.push_back(after[i]);
            continue;
        }
        in_order = in_order && added.empty();
        next = *found + 1;
        kept[next - 1] = 1;
    }
    if (!in_order) {
        write_anew(text, before.size(), after);
        return;
    }
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (kept[i] == 0) {
            text.replace_word(i, {});
        }
    }
    for (const std::string& word : added) {
        text.append(word);
    }
}

}  // namespace quor::input::gaussian

// Renumbers selections of atoms such as "noatoms atoms=1-4".
#include <gjf/core/document/renumbering.hpp>

#include <algorithm>
#include <optional>
#include <vector>

namespace quor::input::gaussian {
namespace {

// A part of a line that selects atoms, as in "atoms=1-4,C": a key, which may be missing, and the words behind it.
struct SelectionItem {
    std::string_view text;
    std::string_view key;
    std::vector<std::string_view> words;

    bool has_key(std::string_view lower) const noexcept { return equals_folded(key, lower); }
    bool selects() const noexcept { return key.empty() || has_key("atoms"); }
    bool lists_atoms() const noexcept { return selects() || has_key("notatoms"); }
};

// Cuts a line into items; a list ends where the next key begins.
std::vector<SelectionItem> selection_items(std::string_view text) {
    constexpr std::string_view separators = " \t\r\v\f,()=";
    std::vector<SelectionItem> items;
    for (std::size_t i = text.find_first_not_of(separators); i < text.size();) {
        const std::size_t end = std::min(text.find_first_of(separators, i), text.size());
        const std::size_t equals = std::min(text.find_first_not_of(" \t", end), text.size());
        const std::string_view word = text.substr(i, end - i);
        const bool is_key = equals < text.size() && text[equals] == '=';
        if (is_key || equals_folded(word, "noatoms")) {
            items.push_back({text.substr(i, (is_key ? equals + 1 : end) - i), word, {}});
        } else {
            if (items.empty() || items.back().has_key("noatoms")) {
                items.push_back({word, {}, {}});
            }
            const std::size_t closed = std::min(text.find_first_not_of(')', end), text.size());
            const auto begin = static_cast<std::size_t>(items.back().text.data() - text.data());
            items.back().words.push_back(word);
            items.back().text = text.substr(begin, closed - begin);
        }
        i = text.find_first_not_of(separators, end);
    }
    return items;
}

// Renumbers the words of an item; nothing is left of it when all of them are gone. Elements stay.
std::string renumbered_item(const SelectionItem& item, const AtomPlaces& places) {
    if (!item.lists_atoms() || item.words.empty()) {
        return std::string(item.text);
    }
    std::string result;
    const char* written = item.text.data();
    for (const std::string_view word : item.words) {
        const bool numeric = (word[0] >= '0' && word[0] <= '9') || word.find_first_not_of("+-0123456789") == word.npos;
        const std::string now = numeric ? renumbered_range(word, places) : std::string(word);
        if (!now.empty()) {
            // What stands before the first word is the key; a word that is gone takes what separates it along.
            const char* begin = result.empty() ? item.text.data() : written;
            const char* end = result.empty() ? item.words[0].data() : word.data();
            result.append(begin, end).append(now);
        }
        written = word.data() + word.size();
    }
    return result.empty() ? result : result.append(written, item.text.data() + item.text.size());
}

// Refuses when a list that selected atoms is gone and nothing on its line says that others are meant, or none.
void check_selection(const std::vector<SelectionItem>& items, const std::vector<std::string>& now) {
    bool lost = false;
    bool kept = false;
    for (std::size_t i = 0; i < items.size(); ++i) {
        lost = lost || (items[i].selects() && now[i].empty());
        kept = kept || items[i].has_key("noatoms") || (items[i].selects() && !items[i].words.empty() && !now[i].empty());
    }
    if (lost && !kept) {
        throw CannotRenumber("no atom of 'atoms=...' is left");
    }
}

}  // namespace

std::optional<std::string> atom_selection_line(std::string_view line, const AtomPlaces& places) {
    const std::vector<SelectionItem> items = selection_items(without_comment(line));
    if (items.empty()) {
        return std::string(line);
    }
    std::vector<std::string> now;
    std::transform(items.begin(), items.end(), std::back_inserter(now),
                   [&](const SelectionItem& item) { return renumbered_item(item, places); });
    check_selection(items, now);
    const auto end_of = [](std::string_view text) { return text.data() + text.size(); };
    std::string result;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (!now[i].empty()) {
            const char* begin = result.empty() ? line.data() : end_of(items[i - 1].text);
            const char* end = result.empty() ? items[0].text.data() : items[i].text.data();
            result.append(begin, end).append(now[i]);
        }
    }
    return result.empty() ? std::nullopt
                          : std::optional<std::string>(result.append(end_of(items.back().text), end_of(line)));
}

}  // namespace quor::input::gaussian

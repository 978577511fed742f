// What the label of an atom stands for, as far as selections ask.
#include <gjf/core/selection/atom_labels.hpp>
#include <gjf/core/selection/selection.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string>
#include <string_view>

namespace quor::input::gaussian {
namespace {

// In the order of the atomic numbers, after what has no nucleus.
constexpr std::string_view symbols[] = {
    "bq", "h",  "he", "li", "be", "b",  "c",  "n",  "o",  "f",  "ne", "na", "mg", "al", "si", "p",  "s",  "cl",
    "ar", "k",  "ca", "sc", "ti", "v",  "cr", "mn", "fe", "co", "ni", "cu", "zn", "ga", "ge", "as", "se", "br",
    "kr", "rb", "sr", "y",  "zr", "nb", "mo", "tc", "ru", "rh", "pd", "ag", "cd", "in", "sn", "sb", "te", "i",
    "xe", "cs", "ba", "la", "ce", "pr", "nd", "pm", "sm", "eu", "gd", "tb", "dy", "ho", "er", "tm", "yb", "lu",
    "hf", "ta", "w",  "re", "os", "ir", "pt", "au", "hg", "tl", "pb", "bi", "po", "at", "rn", "fr", "ra", "ac",
    "th", "pa", "u",  "np", "pu", "am", "cm", "bk", "cf", "es", "fm", "md", "no", "lr", "rf", "db", "sg", "bh",
    "hs", "mt", "ds", "rg", "cn", "nh", "fl", "mc", "lv", "ts", "og", "x",  "xx", "tv",
};
constexpr std::size_t last_atomic_number = 118;

bool is_letter(char c) noexcept { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

}  // namespace

bool is_element_symbol(std::string_view text) {
    return std::find(std::begin(symbols), std::end(symbols), to_lower_copy(text)) != std::end(symbols);
}

std::string element_of_label(const std::string& label) {
    std::size_t number = 0;
    const char* label_end = label.data() + label.size();
    const auto [end, error] = std::from_chars(label.data(), label_end, number);
    if (error == std::errc() && end == label_end && number <= last_atomic_number) {
        return std::string(symbols[number]);
    }
    const auto letters_end = std::find_if_not(label.begin(), label.end(), is_letter);
    return to_lower_copy(std::string_view(label).substr(0, static_cast<std::size_t>(letters_end - label.begin())));
}

bool is_translation_vector(const AtomCoord& atom) { return element_of_label(atom.info.element) == "tv"; }

}  // namespace quor::input::gaussian

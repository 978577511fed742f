// Edit distance between words, and the vocabulary as a list of words.
#include <gjf/core/check/near_names.hpp>

#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

constexpr std::size_t most_names = 3;
constexpr std::size_t longest_word = 40;  // a longer one is no misspelt name

std::size_t most_steps(std::size_t length) noexcept { return length < 4 ? 1 : length < 10 ? 2 : 3; }

std::string without_dashes(std::string_view word) {
    std::string text;
    for (const char c : word) {
        if (c != '-' && c != '_') {
            text += to_lower_ascii(c);
        }
    }
    return text;
}

// Counts the steps between two words row by row: letters put in, left out, changed, or exchanged with a neighbour.
std::size_t steps_between(std::string_view a, std::string_view b) {
    std::vector<std::size_t> before_last;
    std::vector<std::size_t> last(b.size() + 1);
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) {
        last[j] = j;
    }
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                row[j] = std::min(row[j], before_last[j - 2] + 1);
            }
        }
        before_last = last;
        last = row;
    }
    return last[b.size()];
}

std::size_t length_difference(std::string_view a, std::string_view b) noexcept {
    return a.size() > b.size() ? a.size() - b.size() : b.size() - a.size();
}

using Completions = std::vector<std::string> (SimpleYAMLParser::*)(const std::string& prefix) const;

// An empty prefix completes to nothing, so the words are asked for by their first characters.
std::vector<std::string> all_completions(const SimpleYAMLParser& schema, Completions completions) {
    std::vector<std::string> words;
    for (const char first : std::string_view("abcdefghijklmnopqrstuvwxyz0123456789")) {
        const std::vector<std::string> some = (schema.*completions)(std::string(1, first));
        words.insert(words.end(), some.begin(), some.end());
    }
    return words;
}

}  // namespace

std::vector<std::string> near_names(std::string_view word, const std::vector<std::string>& names) {
    if (word.size() < 2 || word.size() > longest_word) {
        return {};
    }
    const std::string wanted = without_dashes(word);
    std::size_t best = most_steps(wanted.size());
    std::vector<std::string> found;
    for (const std::string& name : names) {
        const std::string candidate = without_dashes(name);
        if (length_difference(wanted, candidate) > best) {
            continue;
        }
        const std::size_t steps = steps_between(wanted, candidate);
        if (steps > best || steps >= wanted.size() - 1) {
            continue;
        }
        if (steps < best) {
            found.clear();
            best = steps;
        }
        found.push_back(name);
    }
    // The names most like the word come first: same first letter, then same length.
    std::stable_sort(found.begin(), found.end(), [&](const std::string& a, const std::string& b) {
        const auto other_letter = [&](const std::string& name) { return name.front() != wanted.front(); };
        const auto key = [&](const std::string& name) {
            return std::make_pair(other_letter(name), length_difference(name, wanted));
        };
        return key(a) < key(b);
    });
    found.erase(std::unique(found.begin(), found.end()), found.end());
    found.resize(std::min(found.size(), most_names));
    return found;
}

bool is_misspelt(std::string_view word, const std::vector<std::string>& near) {
    const std::string wanted = without_dashes(word);
    const std::size_t most = wanted.size() < 8 ? 1 : 2;
    return std::any_of(near.begin(), near.end(), [&](const std::string& name) {
        const std::string candidate = without_dashes(name);
        return !wanted.empty() && candidate.front() == wanted.front() && steps_between(wanted, candidate) <= most;
    });
}

std::vector<std::string> all_basis_sets(const SimpleYAMLParser& schema) {
    return all_completions(schema, &SimpleYAMLParser::basis_completions);
}

std::vector<std::string> all_route_words(const SimpleYAMLParser& schema) {
    std::vector<std::string> words = all_completions(schema, &SimpleYAMLParser::keyword_completions);
    for (const std::vector<std::string>& more :
         {all_completions(schema, &SimpleYAMLParser::method_completions), all_basis_sets(schema)}) {
        words.insert(words.end(), more.begin(), more.end());
    }
    std::sort(words.begin(), words.end());
    words.erase(std::unique(words.begin(), words.end()), words.end());
    return words;
}

std::string did_you_mean(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        text += i == 0 ? "did you mean " : i + 1 == names.size() ? " or " : ", ";
        text += names[i];
    }
    return text.empty() ? text : text + "?";
}

}  // namespace quor::input::gaussian

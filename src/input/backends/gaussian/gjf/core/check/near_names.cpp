// Names near to a word, and the vocabulary as a list of words.
#include <gjf/core/check/near_names.hpp>

#include <gjf/core/knowledge/facts.hpp>
#include <gjf/core/schema/candidate_group.hpp>
#include <gjf/core/text/steps_between.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

constexpr std::size_t most_names = 3;
constexpr std::size_t shortest_sure_word = 6;  // shorter ones are too near to each other
constexpr std::size_t shortest_sure_model = 4;
constexpr std::size_t longest_word = 40;  // a longer one is no misspelt name

std::string without_dashes(std::string_view word) {
    std::string text;
    for (const char c : word) {
        if (c != '-' && c != '_') {
            text += to_lower_ascii(c);
        }
    }
    return text;
}

bool is_small_letter(char c) noexcept { return c >= 'a' && c <= 'z'; }

// Tells whether one letter inside `right` is wrong, missing, doubled or swapped with its neighbour in `word`. Where a digit
// differs, the word is rather another name; digits count as letters where they are only doubled or swapped, and must.
bool is_slip(std::string_view word, std::string_view right, bool may_move_digits) {
    const auto same =
        static_cast<std::size_t>(std::mismatch(word.begin(), word.end(), right.begin(), right.end()).first - word.begin());
    const std::string_view rest = word.substr(same);
    const std::string_view right_rest = right.substr(same);
    if (same == 0) {
        return false;
    }
    if (word.size() == right.size() + 1) {
        return (may_move_digits || is_small_letter(rest[0])) && rest[0] == word[same - 1] && rest.substr(1) == right_rest;
    }
    if (right_rest.size() < 2 || rest.empty() || (!may_move_digits && !is_small_letter(right_rest[0]))) {
        return false;
    }
    if (word.size() + 1 == right.size()) {
        return is_small_letter(right_rest[0]) && rest == right_rest.substr(1);
    }
    const bool is_swapped = rest.size() > 1 && rest[0] == right_rest[1] && rest[1] == right_rest[0] &&
                            (may_move_digits || is_small_letter(rest[0]));
    return (is_small_letter(rest[0]) && is_small_letter(right_rest[0]) && rest.substr(1) == right_rest.substr(1)) ||
           (is_swapped && rest.substr(2) == right_rest.substr(2));
}

// A name may be abbreviated, and the abbreviation misspelt.
bool is_slip_of_abbreviation(std::string_view word, std::string_view name) {
    for (std::size_t size = std::max<std::size_t>(word.size() - 1, shortest_sure_word);
         size <= std::min(name.size(), word.size() + 1); ++size) {
        if (is_slip(word, name.substr(0, size), false)) {
            return true;
        }
    }
    return false;
}

std::size_t length_difference(std::string_view a, std::string_view b) noexcept {
    return a.size() > b.size() ? a.size() - b.size() : b.size() - a.size();
}

// Letters that changed places are a slip of the fingers; a letter too many or too few may be another name.
void keep_rearrangements(std::vector<std::string>& names, const std::string& wanted) {
    const auto has_other_letters = [&](const std::string& name) {
        const std::string candidate = without_dashes(name);
        return !std::is_permutation(wanted.begin(), wanted.end(), candidate.begin(), candidate.end());
    };
    if (!std::all_of(names.begin(), names.end(), has_other_letters)) {
        names.erase(std::remove_if(names.begin(), names.end(), has_other_letters), names.end());
    }
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
    keep_rearrangements(found, wanted);
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

bool differ_in_dashes_alone(std::string_view a, std::string_view b) { return without_dashes(a) == without_dashes(b); }

bool is_misspelt(std::string_view word, const std::vector<std::string>& near) {
    const std::string wanted = to_lower_copy(word);
    return std::any_of(near.begin(), near.end(), [&](const std::string& name) {
        return differ_in_dashes_alone(wanted, name) || is_slip_of_abbreviation(wanted, name);
    });
}

bool is_misspelt_model(std::string_view word, const std::vector<std::string>& near) {
    const std::string wanted = to_lower_copy(word);
    return word.size() >= shortest_sure_model && std::any_of(near.begin(), near.end(), [&](const std::string& name) {
               return is_slip(wanted, to_lower_copy(name), true);
           });
}

bool has_added_letter(std::string_view word, const std::vector<std::string>& near) {
    const std::string wanted = to_lower_copy(word);
    const auto is_part_of_word = [](char c) { return is_letter(c) || is_digit(c); };
    return std::any_of(near.begin(), near.end(), [&](const std::string& near_name) {
        const std::string name = to_lower_copy(near_name);
        if (name.empty() || wanted.size() != name.size() + 1) {
            return false;
        }
        const bool is_doubled = is_letter(wanted.back()) && wanted.back() == name.back();
        return (wanted.ends_with(name) && is_part_of_word(wanted.front())) ||
               (wanted.starts_with(name) && is_part_of_word(wanted.back()) && !is_doubled);
    });
}

bool is_foreign(std::string_view word) {
    return word.find_first_of("\\;") != std::string_view::npos || other_name("foreign", word).has_value();
}

bool is_surely_none(std::string_view word, const std::vector<std::string>& near, bool has_looked) {
    return is_foreign(word) || is_misspelt(word, near) ||
           (has_looked && !has_added_letter(word, near) && word.find('(') == word.npos && !other_name("older", word));
}

std::vector<std::string> all_basis_sets(const SimpleYAMLParser& schema) {
    return all_completions(schema, &SimpleYAMLParser::basis_completions);
}

std::vector<std::string> all_route_words(const SimpleYAMLParser& schema) {
    std::vector<std::string> words = all_basis_sets(schema);
    for (const Completions role : {&SimpleYAMLParser::keyword_completions, &SimpleYAMLParser::method_completions}) {
        for (const std::string& word : all_completions(schema, role)) {
            const KeywordIdentity identity = schema.identify_keyword(word);
            for (const CandidateGroup* group : {identity.keyword, identity.method}) {
                if (group != nullptr) {
                    words.insert(words.end(), group->forms.begin(), group->forms.end());
                }
            }
        }
    }
    std::sort(words.begin(), words.end());
    words.erase(std::unique(words.begin(), words.end()), words.end());
    return words;
}

std::vector<std::string> all_options(const SimpleYAMLParser& schema, const std::string& keyword) {
    std::vector<std::string> spellings;
    for (const std::string& option : schema.options_of(keyword)) {
        const OptionIdentity identity = schema.identify_option(keyword, option);
        if (identity.option != nullptr) {
            spellings.insert(spellings.end(), identity.option->forms.begin(), identity.option->forms.end());
        }
    }
    return spellings;
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

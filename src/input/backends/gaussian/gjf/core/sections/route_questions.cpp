// Answers the questions that the rules for extra input ask of a route and its molecule.
#include <gjf/core/sections/route_questions.hpp>

#include <gjf/core/schema/candidate_group.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <array>
#include <string_view>

namespace quor::input::gaussian {
namespace {

std::string trimmed(const std::string& text) { return std::string(trim_view(text)); }

std::string folded(const std::string& text) { return to_lower_copy(trim_view(text)); }

bool is_word_character(char c) noexcept { return is_letter(c) || is_digit(c) || c == '-' || c == '_'; }

std::size_t count_whole_word(std::string_view text, std::string_view word) noexcept {
    std::size_t count = 0;
    for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1)) {
        const std::size_t end = at + word.size();
        const bool begins = at == 0 || !is_word_character(text[at - 1]);
        count += begins && (end == text.size() || !is_word_character(text[end]));
    }
    return count;
}

bool any_whole_word(const std::string& text, Words words) {
    if (text.empty()) {
        return false;
    }
    const std::string lower = folded(text);
    return std::any_of(words.begin(), words.end(), [&](std::string_view word) { return count_whole_word(lower, word) > 0; });
}

bool is_residue_parameter(const std::string& key) {
    constexpr std::string_view keys[] = {"resname", "resnum", "pdbname", "residue", "chainid"};
    const std::string lower = to_lower_copy(key);
    return std::find(std::begin(keys), std::end(keys), lower) != std::end(keys);
}

using Identities = std::array<KeywordIdentity, std::size(asked_keywords)>;

// The keywords that the rules ask for, looked up in the default vocabulary once.
const Identities& identities() {
    static const Identities found = [] {
        Identities list;
        std::transform(std::begin(asked_keywords), std::end(asked_keywords), list.begin(),
                       [](std::string_view word) { return default_route_schema().identify_keyword(std::string(word)); });
        return list;
    }();
    return found;
}

// Tells whether an option of the vocabulary has a spelling that a word is or abbreviates. Only then can they be the same.
bool may_be(const CandidateGroup* option, std::string_view word) {
    return option != nullptr && std::any_of(option->forms.begin(), option->forms.end(), [word](const std::string& form) {
               return form.compare(0, word.size(), word) == 0;
           });
}

}  // namespace

RouteQuestions::RouteQuestions(const ParsedKeywords& route) : route_(route), schema_(default_route_schema()) {
    const Identities& asked = identities();
    keywords_.reserve(route.keywords.size());
    for (const KeywordInfo& info : route.keywords) {
        Keyword& keyword = keywords_.emplace_back();
        keyword.info = &info;
        const KeywordIdentity identity = schema_.identify_keyword(info.name);
        for (std::size_t i = 0; i < asked.size(); ++i) {
            keyword.is[i] = SimpleYAMLParser::equivalent(identity, asked[i]);
        }
        present_ |= keyword.is;
        keyword.options.reserve(2 * info.options.size());
        for (const auto& [name, value] : info.options) {
            keyword.options.push_back(schema_.identify_option(info.name, name));
            keyword.options.push_back(schema_.identify_option(info.name, value));
        }
    }
}

bool RouteQuestions::has_option(const Keyword& keyword, Words options) const {
    const auto is_one = [&](const OptionIdentity& entry, std::string_view wanted) {
        return entry.word == wanted ||
               (may_be(entry.option, wanted) &&
                SimpleYAMLParser::equivalent(entry, schema_.identify_option(keyword.info->name, std::string(wanted))));
    };
    return std::any_of(keyword.options.begin(), keyword.options.end(), [&](const OptionIdentity& entry) {
        return std::any_of(options.begin(), options.end(), [&](std::string_view wanted) { return is_one(entry, wanted); });
    });
}

bool RouteQuestions::keyword(Keywords names) const noexcept {
    return std::any_of(names.begin(), names.end(), [&](AskedKeyword name) { return present_[name.index()]; });
}

bool RouteQuestions::option(AskedKeyword keyword, Words options) const {
    return present_[keyword.index()] && std::any_of(keywords_.begin(), keywords_.end(), [&](const Keyword& candidate) {
               return candidate.is[keyword.index()] && has_option(candidate, options);
           });
}

bool RouteQuestions::any_option(Words options) const {
    return std::any_of(keywords_.begin(), keywords_.end(),
                       [&](const Keyword& keyword) { return has_option(keyword, options); });
}

bool RouteQuestions::iop(const char* name, const char* value) const {
    constexpr AskedKeyword iop = "iop";
    return present_[iop.index()] && std::any_of(keywords_.begin(), keywords_.end(), [&](const Keyword& keyword) {
               const auto& options = keyword.info->options;
               return keyword.is[iop.index()] && std::any_of(options.begin(), options.end(), [&](const auto& entry) {
                          return trim_view(entry.second) == value && schema_.options_equivalent("iop", entry.first, name);
                      });
           });
}

bool RouteQuestions::method(Words names, bool by_canonical_spelling) const {
    const std::string method = folded(route_.method);
    const std::string canonical = by_canonical_spelling && !method.empty() ? schema_.normalize_keyword(method) : method;
    return std::any_of(names.begin(), names.end(),
                       [&](std::string_view name) { return method == name || canonical == name; });
}

bool RouteQuestions::basis(Words names) const {
    const std::string basis = folded(route_.basis_set);
    return std::find(names.begin(), names.end(), basis) != names.end() || option("basis", names);
}

bool RouteQuestions::word_in_method_options(Words words) const { return any_whole_word(route_.method_options, words); }

bool RouteQuestions::word_in_oniom(Words words) const { return any_whole_word(route_.oniom_expression, words); }

std::size_t RouteQuestions::count_in_oniom(std::string_view word) const {
    return count_whole_word(folded(route_.oniom_expression), word);
}

bool RouteQuestions::option_text(AskedKeyword keyword, const char* text) const {
    return std::any_of(keywords_.begin(), keywords_.end(), [&](const Keyword& candidate) {
        const auto& options = candidate.info->options;
        return candidate.is[keyword.index()] && std::any_of(options.begin(), options.end(), [&](const auto& entry) {
                   return folded(entry.first) == text || folded(entry.second) == text;
               });
    });
}

bool RouteQuestions::unrestricted() const {
    const std::string method = folded(route_.method);
    if (!method.empty() && method.front() == 'u') {
        return true;
    }
    return std::any_of(route_.keywords.begin(), route_.keywords.end(), [&](const KeywordInfo& info) {
        const std::string name = trimmed(info.name);
        return schema_.knows_method(name) && schema_.normalize_keyword(name).substr(0, 1) == "u";
    });
}

bool has_residue(const AtomInfo& info) {
    return std::any_of(info.params.begin(), info.params.end(),
                       [](const auto& entry) { return is_residue_parameter(entry.first); });
}

bool is_open_shell(const GeomSection& geom) {
    const std::vector<ChargeSpinPair> pairs = geom.charge_spin_pairs();
    if (pairs.empty()) {
        return geom.multiplicity != 1;
    }
    return std::any_of(pairs.begin(), pairs.end(), [](const ChargeSpinPair& pair) { return pair.multiplicity != 1; });
}

}  // namespace quor::input::gaussian

// Answers the questions that the rules for extra input ask of a route and its molecule.
#include <gjf/core/sections/route_questions.hpp>

#include <gjf/core/schema/candidate_group.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

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

// The keywords of a route and their options by preferred spelling, as a tree of one segment.
RouteTree tree_of(const ParsedKeywords& route) {
    const SimpleYAMLParser& schema = default_route_schema();
    RouteTree tree;
    std::vector<RouteTree::Keyword>& keywords = tree.segments.emplace_back().keywords;
    keywords.reserve(route.keywords.size());
    for (const KeywordInfo& info : route.keywords) {
        RouteTree::Keyword& keyword = keywords.emplace_back();
        const KeywordIdentity identity = schema.identify_keyword(info.name);
        const CandidateGroup* group = identity.keyword != nullptr ? identity.keyword : identity.method;
        keyword.name = group == nullptr ? identity.word : group->canonical;
        keyword.options.reserve(2 * info.options.size());
        for (const auto& [name, value] : info.options) {
            for (const std::string* word : {&name, &value}) {
                if (!word->empty()) {
                    const OptionIdentity option = schema.identify_option(info.name, *word);
                    const bool known = option.option != nullptr;
                    RouteTree::Option& added = keyword.options.emplace_back();
                    added.canonical = known ? option.option->canonical : option.word;
                    added.match = known ? RouteMatch::Exact : RouteMatch::Unknown;
                }
            }
        }
    }
    return tree;
}

}  // namespace

RouteQuestions::RouteQuestions(const ParsedKeywords& route) : route_(route), tree_(tree_of(route)), words_(tree_) {}

bool RouteQuestions::keyword(Words names) const noexcept {
    return std::any_of(names.begin(), names.end(), [&](std::string_view name) { return words_.has_keyword(name); });
}

bool RouteQuestions::option(std::string_view keyword, Words options) const noexcept {
    return std::any_of(options.begin(), options.end(),
                       [&](std::string_view option) { return words_.has_option(keyword, option); });
}

bool RouteQuestions::any_option(Words options) const noexcept {
    return std::any_of(options.begin(), options.end(),
                       [&](std::string_view option) { return words_.any_has_option(option); });
}

bool RouteQuestions::iop(const char* name, const char* value) const {
    for (std::size_t i = 0; i < route_.keywords.size(); ++i) {
        const auto option = route_.keywords[i].options.find(name);
        if (words_.keywords[i]->name == "iop" && option != route_.keywords[i].options.end() &&
            trim_view(option->second) == value) {
            return true;
        }
    }
    return false;
}

bool RouteQuestions::method(Words names, bool by_canonical_spelling) const {
    const std::string method = folded(route_.method);
    const std::string canonical =
        by_canonical_spelling && !method.empty() ? default_route_schema().normalize_keyword(method) : method;
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

bool RouteQuestions::unrestricted() const {
    const std::string method = folded(route_.method);
    if (!method.empty() && method.front() == 'u') {
        return true;
    }
    const SimpleYAMLParser& schema = default_route_schema();
    return std::any_of(route_.keywords.begin(), route_.keywords.end(), [&](const KeywordInfo& info) {
        const std::string name = trimmed(info.name);
        return schema.knows_method(name) && schema.normalize_keyword(name).substr(0, 1) == "u";
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

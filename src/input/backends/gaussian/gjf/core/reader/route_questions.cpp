// Answers the questions that the rules for extra input ask of a route and its molecule.
#include <gjf/core/reader/extra_input_rules.hpp>

#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <string_view>
#include <unordered_map>

namespace quor::input::gaussian {
namespace {

std::string trimmed(const std::string& text) { return std::string(trim_view(text)); }

std::string folded(const std::string& text) { return to_lower_copy(trim_view(text)); }

bool is_word_character(char c) noexcept {
    const char lower = to_lower_ascii(c);
    return (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
}

bool occurs_as_whole_word(std::string_view text, std::string_view word) noexcept {
    for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1)) {
        const std::size_t end = at + word.size();
        const bool begins = at == 0 || !is_word_character(text[at - 1]);
        if (begins && (end == text.size() || !is_word_character(text[end]))) {
            return true;
        }
    }
    return false;
}

bool any_whole_word(const std::string& text, Names words) {
    const std::string lower = folded(text);
    return std::any_of(words.begin(), words.end(), [&](const char* word) { return occurs_as_whole_word(lower, word); });
}

bool is_residue_parameter(const std::string& key) {
    constexpr std::string_view keys[] = {"resname", "resnum", "pdbname", "residue", "chainid"};
    const std::string lower = to_lower_copy(key);
    return std::find(std::begin(keys), std::end(keys), lower) != std::end(keys);
}

using Identities = std::unordered_map<std::string_view, KeywordIdentity>;

// The words that the rules ask for, looked up in the default vocabulary once. One that is left out here is looked up each
// time.
const Identities& asked_for() {
    static const Identities identities = [] {
        Identities map;
        for (const char* word : {"admp",          "basis",
                                 "bomd",          "both",
                                 "cas",           "casscf",
                                 "charge",        "cphf",
                                 "dftb",          "ept",
                                 "external",      "extrabasis",
                                 "extralinks",    "extradensitybasis",
                                 "field",         "freq",
                                 "gen",           "genecp",
                                 "geom",          "guess",
                                 "gvb",           "hardfirst",
                                 "input",         "iop",
                                 "irc",           "massage",
                                 "modconnect",    "modify",
                                 "mopacexternal", "nmr",
                                 "opt",           "output",
                                 "pop",           "prop",
                                 "pseudo",        "readatradii",
                                 "readisotopes",  "readmwvelocity",
                                 "readvelocity",  "readwindow",
                                 "scrf",          "softfirst",
                                 "softonly"}) {
            map.emplace(word, default_route_schema().identify_keyword(word));
        }
        return map;
    }();
    return identities;
}

}  // namespace

RouteQuestions::RouteQuestions(const ParsedKeywords& route, const SimpleYAMLParser& schema, const MoleculeTraits& molecule)
    : route_(route), schema_(schema), molecule_(molecule) {
    keywords_.reserve(route.keywords.size());
    for (const KeywordInfo& info : route.keywords) {
        Keyword& keyword = keywords_.emplace_back();
        keyword.name = trimmed(info.name);
        keyword.identity = schema.identify_keyword(keyword.name);
        keyword.options.reserve(2 * info.options.size());
        has_options_ = has_options_ || !info.options.empty();
        for (const auto& [name, value] : info.options) {
            keyword.options.push_back(schema.identify_option(keyword.name, trimmed(name)));
            keyword.options.push_back(schema.identify_option(keyword.name, trimmed(value)));
        }
    }
}

KeywordIdentity RouteQuestions::look_up(const char* wanted) const {
    if (&schema_ == &default_route_schema()) {
        const auto found = asked_for().find(wanted);
        if (found != asked_for().end()) {
            return found->second;
        }
    }
    return schema_.identify_keyword(wanted);
}

bool RouteQuestions::has_option(const Keyword& keyword, Names options) const {
    return !keyword.options.empty() && std::any_of(options.begin(), options.end(), [&](const char* option) {
        const OptionIdentity wanted = schema_.identify_option(keyword.name, option);
        return std::any_of(keyword.options.begin(), keyword.options.end(),
                           [&](const OptionIdentity& entry) { return SimpleYAMLParser::equivalent(entry, wanted); });
    });
}

bool RouteQuestions::keyword(Names names) const {
    return !keywords_.empty() && std::any_of(names.begin(), names.end(), [&](const char* name) {
        const KeywordIdentity wanted = look_up(name);
        return std::any_of(keywords_.begin(), keywords_.end(),
                           [&](const Keyword& keyword) { return SimpleYAMLParser::equivalent(keyword.identity, wanted); });
    });
}

bool RouteQuestions::option(const char* keyword, Names options) const {
    if (!has_options_) {
        return false;
    }
    const KeywordIdentity wanted = look_up(keyword);
    return std::any_of(keywords_.begin(), keywords_.end(), [&](const Keyword& candidate) {
        return !candidate.options.empty() && SimpleYAMLParser::equivalent(candidate.identity, wanted) &&
               has_option(candidate, options);
    });
}

bool RouteQuestions::any_option(Names options) const {
    return std::any_of(keywords_.begin(), keywords_.end(),
                       [&](const Keyword& keyword) { return has_option(keyword, options); });
}

bool RouteQuestions::iop(const char* name, const char* value) const {
    return std::any_of(route_.keywords.begin(), route_.keywords.end(), [&](const KeywordInfo& info) {
        if (info.options.empty() || !schema_.keywords_equivalent(trimmed(info.name), "iop")) {
            return false;
        }
        return std::any_of(info.options.begin(), info.options.end(), [&](const auto& entry) {
            return trim_view(entry.second) == value && schema_.options_equivalent("iop", trimmed(entry.first), name);
        });
    });
}

bool RouteQuestions::method(Names names, bool by_canonical_spelling) const {
    const std::string method = folded(route_.method);
    const std::string canonical = by_canonical_spelling && !method.empty() ? schema_.normalize_keyword(method) : method;
    return std::any_of(names.begin(), names.end(), [&](const char* name) { return method == name || canonical == name; });
}

bool RouteQuestions::basis(Names names) const {
    const std::string basis = folded(route_.basis_set);
    return std::find(names.begin(), names.end(), basis) != names.end() || option("basis", names);
}

bool RouteQuestions::word_in_method_options(Names words) const { return any_whole_word(route_.method_options, words); }

bool RouteQuestions::word_in_oniom(Names words) const { return any_whole_word(route_.oniom_expression, words); }

bool RouteQuestions::option_text(const char* keyword, const char* text) const {
    return std::any_of(route_.keywords.begin(), route_.keywords.end(), [&](const KeywordInfo& info) {
        return !info.options.empty() && schema_.keywords_equivalent(trimmed(info.name), keyword) &&
               std::any_of(info.options.begin(), info.options.end(),
                           [&](const auto& entry) { return folded(entry.first) == text || folded(entry.second) == text; });
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

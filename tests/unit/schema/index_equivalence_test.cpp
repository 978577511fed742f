// The index and the plain rules give the same answers, for every prefix of every spelling of a vocabulary.
#include "linear_rules.hpp"
#include "vocabulary.hpp"

#include <gjf/core/schema/route_schema_cache.hpp>

#include <random>
#include <set>

namespace quor::input::gaussian {
namespace {

std::set<std::string> all_prefixes(const GroupList& groups) {
    std::set<std::string> prefixes;
    for (const CandidateGroup& group : groups) {
        for (const std::string& form : group.forms) {
            for (std::size_t length = 0; length <= form.size(); ++length) {
                prefixes.insert(form.substr(0, length));
            }
            prefixes.insert(form + "x");
            prefixes.insert(form + "(");
        }
    }
    return prefixes;
}

/// Compares match and completions for every prefix; returns how many questions were asked.
std::size_t compare_with_linear_rules(const GroupList& groups) {
    const linear::Spellings spellings(groups);
    std::size_t questions = 0;
    for (const std::string& word : all_prefixes(groups)) {
        const GroupHit indexed = groups.match(word);
        const linear::Answer plain = linear::ask(word, spellings);
        EXPECT_EQ(indexed.group, plain.match.group) << word;
        EXPECT_EQ(indexed.exact, plain.match.exact) << word;
        EXPECT_EQ(indexed.canonical, plain.match.canonical) << word;
        EXPECT_EQ(groups.match_exact(word).group, plain.match.exact ? plain.match.group : nullptr) << word;
        std::vector<std::string> words;
        groups.append_completions(word, words);
        EXPECT_EQ(std::set<std::string>(words.begin(), words.end()), plain.completions) << word;
        ++questions;
    }
    return questions;
}

/// Compares every list that words are matched against.
std::size_t compare_all_lists(const SimpleYAMLParser::Impl& tables) {
    std::size_t questions = 0;
    for (const GroupList* groups : {&tables.keyword_groups, &tables.method_groups, &tables.basis_groups}) {
        questions += compare_with_linear_rules(*groups);
    }
    for (const auto& [keyword, groups] : tables.option_groups) {
        questions += compare_with_linear_rules(groups);
    }
    return questions;
}

TEST(GroupIndex, AgreesWithThePlainRulesOnRandomLists) {
    std::mt19937 random(7);
    const auto random_word = [&random] {
        std::string word;
        for (std::size_t length = random() % 5; length > 0; --length) {
            word += "ab(\xE9"[random() % 4];
        }
        return word;
    };
    std::size_t questions = 0;
    for (int round = 0; round < 400; ++round) {
        std::vector<CandidateGroup> groups(random() % 12);
        for (CandidateGroup& group : groups) {
            for (std::size_t count = random() % 4; count > 0; --count) {
                group.forms.push_back(random_word());
            }
            group.canonical = random_word();
        }
        questions += compare_with_linear_rules(GroupList(std::move(groups)));
    }
    EXPECT_GT(questions, 10000u);
}

TEST(GroupIndex, AgreesWithThePlainRulesOnAWrittenVocabulary) {
    const auto tables = tables_of(R"yaml(
metadata:
  option_states: {opt: Opt, freq: [Freq, Opt]}
  canonical_forms: {opt: optimization}
states:
  GCL:
    entries:
      - {forms: [opt, optimization]}
      - {forms: [optcyc]}
      - {forms: ["freq("]}
      - {forms: [freq, frequency]}
      - {forms: ["scf(", scfcon, scf]}
      - {forms: [scf]}
      - {forms: [geom, geometry, geom]}
      - {forms: [scrf, "scrf(", sc]}
  Proc:
    entries:
      - {forms: [b3lyp]}
      - {forms: [b3pw91, b3p86]}
      - {forms: [hf, rhf]}
      - {forms: ["ccsd(t)"]}
      - {forms: ["ccsd("]}
      - {forms: [ccsd]}
  Basis: {entries: [{forms: [6-31g]}, {forms: ["6-31g*"]}, {forms: [6-311g]}]}
  Opt: {entries: [{forms: [calcfc]}, {forms: [calcall]}, {forms: [tight]}, {forms: [ts]}, {forms: [qst2]}, {forms: [qst3]}]}
  Freq: {entries: [{forms: [noraman]}, {forms: [tight, tights]}]}
)yaml");
    EXPECT_GT(compare_all_lists(tables), 150u);
}

TEST(GroupIndex, AgreesWithThePlainRulesOnTheShippedVocabulary) {
    SimpleYAMLParser::Impl tables;
    ASSERT_TRUE(load_schema_document(QUOR_GJF_SOURCE_DIR "/resources/schemas/input/gaussian_route.yaml", tables));
    EXPECT_GT(compare_all_lists(tables), 5000u);
}

TEST(GroupIndex, WalksTheShippedGraphAsThePlainRulesDo) {
    SimpleYAMLParser::Impl tables;
    ASSERT_TRUE(load_schema_document(QUOR_GJF_SOURCE_DIR "/resources/schemas/input/gaussian_route.yaml", tables));
    const linear::Graph plain{tables.state_edges, tables.state_includes};
    std::set<std::string> words = all_prefixes(tables.basis_groups);
    for (const std::string& start : all_prefixes(tables.basis_groups)) {
        for (const std::string& word : tables.graph_prefix_completions("Basis", start, 8, 96)) {
            for (std::size_t length = 1; length <= word.size(); ++length) {
                words.insert(word.substr(0, length));
            }
            words.insert(word + "x");
        }
    }
    for (const std::string& word : words) {
        std::set<std::pair<std::string, std::size_t>> visited;
        EXPECT_EQ(tables.graph_exact_match("Basis", word), plain.matches("basis", word, 0, visited)) << word;
        const auto completions = word.empty() ? Words{} : plain.completions("basis", word, 8, 96);
        EXPECT_EQ(tables.graph_prefix_completions("Basis", word, 8, 96), completions) << word;
    }
    EXPECT_GT(words.size(), 1000u);
}

TEST(Identities, CompareAsTheWordsDo) {
    const SimpleYAMLParser& schema = default_route_schema();
    std::vector<std::string> words = {"",   " Opt ", "OPTI", "freq", "fre",  "b3lyp", "B3L",
                                      "hf", "rhf",   "scf",  "sc",   "geom", "popul", "nonsense"};
    for (const std::string& word : schema.keyword_completions("s")) {
        words.push_back(word);
    }
    std::size_t equal = 0;
    for (const std::string& a : words) {
        for (const std::string& b : words) {
            const bool same = SimpleYAMLParser::equivalent(schema.identify_keyword(a), schema.identify_keyword(b));
            ASSERT_EQ(same, schema.keywords_equivalent(a, b)) << a << ' ' << b;
            equal += same ? 1 : 0;
        }
    }
    EXPECT_GT(equal, words.size());
    std::vector<std::string> options = schema.options_of("opt");
    options.insert(options.end(), {"", "TRUE", "cal", "CalcFC", " modred", "m", "nothing"});
    for (const std::string& a : options) {
        for (const std::string& b : options) {
            for (const char* keyword : {"opt", "scf", "nonsense"}) {
                ASSERT_EQ(
                    SimpleYAMLParser::equivalent(schema.identify_option(keyword, a), schema.identify_option(keyword, b)),
                    schema.options_equivalent(keyword, a, b))
                    << keyword << ' ' << a << ' ' << b;
            }
        }
    }
}

}  // namespace
}  // namespace quor::input::gaussian

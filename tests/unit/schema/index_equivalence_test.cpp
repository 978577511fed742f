// The index and the plain rules give the same answers, for every prefix of every spelling of a vocabulary.
#include "linear_rules.hpp"
#include "vocabulary.hpp"

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
    std::size_t questions = 0;
    for (const std::string& word : all_prefixes(groups)) {
        const GroupHit indexed = groups.match(word);
        const MatchResult plain = linear::match(word, groups.groups());
        EXPECT_EQ(indexed.group, plain.group) << word;
        EXPECT_EQ(indexed.exact, plain.exact) << word;
        EXPECT_EQ(indexed.canonical, plain.canonical) << word;
        EXPECT_EQ(groups.match_exact(word).group, plain.exact ? plain.group : nullptr) << word;
        std::vector<std::string> words;
        groups.append_completions(word, words);
        EXPECT_EQ(std::set<std::string>(words.begin(), words.end()).size(),
                  linear::completions(word, groups.groups()).size())
            << word;
        ++questions;
    }
    return questions;
}

std::size_t compare_all_lists(const SimpleYAMLParser::Impl& tables) {
    std::size_t questions = 0;
    for (const GroupList* groups :
         {&tables.keyword_groups, &tables.method_groups, &tables.procedure_groups, &tables.basis_groups}) {
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
    const std::string path = QUOR_GJF_SOURCE_DIR "/resources/schemas/input/gaussian_route.yaml";
    SimpleYAMLParser::Impl tables;
    if (!std::filesystem::exists(path)) {
        GTEST_SKIP() << "no vocabulary in the source tree";
    }
    ASSERT_TRUE(load_schema_document(path, tables));
    EXPECT_GT(compare_all_lists(tables), 1000u);
}

}  // namespace
}  // namespace quor::input::gaussian

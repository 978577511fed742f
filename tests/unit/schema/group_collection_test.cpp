// Which entries become keywords, methods, basis sets and options.
#include "vocabulary.hpp"

namespace quor::input::gaussian {
namespace {

TEST(GroupCollection, TakesKeywordsFromIncludesThenFromWhereEdgesLead) {
    const auto tables = tables_of(R"(
states:
  GCL:
    includes: [Jobs, Jobs, "", GCL]
    entries:
      - {forms: [opt], next: After}
      - {forms: [scf], next: GCL}
    syntax: {transitions: [{forms: ["/"], next: Slash}]}
    specs: [{spec: nul, next: Silent}]
  Jobs:
    includes: [More]
    entries: [{forms: [freq]}]
  More: {entries: [{forms: [irc]}]}
  After: {entries: [{forms: [after]}]}
  Slash: {entries: [{forms: [slash]}]}
  Silent: {entries: [{forms: [silent]}], specs: [{spec: nul, next: After}]}
  Unreached: {entries: [{forms: [unreached]}]}
)");
    EXPECT_EQ(canonical_words(tables.keyword_groups), (Words{"opt", "scf", "freq", "irc", "after", "slash", "silent"}));
}

TEST(GroupCollection, KeepsProcedureStatesOutOfTheKeywords) {
    const auto tables = tables_of(R"(
top_level: {entry_state: Start, procedure_state: Methods}
states:
  Start:
    includes: [Methods]
    entries: [{forms: [opt], next: Dft}]
  Methods:
    includes: [Dft]
    entries: [{forms: [hf], next: Tail}]
  Dft: {entries: [{forms: [b3lyp], next: Tail}]}
  Tail: {entries: [{forms: [tail]}]}
)");
    EXPECT_EQ(canonical_words(tables.keyword_groups), (Words{"opt"}));
    EXPECT_EQ(canonical_words(tables.procedure_groups), (Words{"hf", "b3lyp"}));
    EXPECT_EQ(canonical_words(tables.method_groups), (Words{"hf", "b3lyp"}));
}

TEST(GroupCollection, KeepsTheEntryStateThoughProceduresIncludeIt) {
    const auto tables = tables_of(R"(
states:
  GCL: {entries: [{forms: [opt]}]}
  Proc: {includes: [GCL], entries: [{forms: [hf]}]}
)");
    EXPECT_EQ(canonical_words(tables.keyword_groups), (Words{"opt"}));
    EXPECT_EQ(canonical_words(tables.procedure_groups), (Words{"hf", "opt"}));
}

TEST(GroupCollection, SortsProceduresIntoMethodsAndKeywords) {
    const auto tables = tables_of(R"(
states:
  GCL: {entries: [{forms: [opt]}]}
  Proc:
    entries:
      - {forms: [plain]}
      - {forms: [elsewhere], next: Exi}
      - {forms: [method], action: {result: XPRC, value: 99999999}}
      - {forms: [both], action: {result: xprc, value: 100000000}}
      - {forms: [action], action: {result: other, value: 5}}
      - {forms: [emptyaction], action: {}}
      - {forms: [external], next: EXTERN}
      - {forms: [xexternal], next: Extern, action: {result: xprc}}
)");
    EXPECT_EQ(canonical_words(tables.method_groups), (Words{"plain", "elsewhere", "method", "both", "xexternal"}));
    EXPECT_EQ(canonical_words(tables.keyword_groups), (Words{"opt", "both", "action", "emptyaction", "external"}));
    EXPECT_EQ(tables.procedure_groups.size(), 8u);
}

TEST(GroupCollection, ComparesTheExternalStateAsTheDocumentDoes) {
    const std::string states = "states: {Proc: {entries: [{forms: [a], next: extern}, {forms: [b], next: Extern}]}}\n";
    EXPECT_EQ(canonical_words(tables_of(states).keyword_groups), (Words{"a", "b"}));
    const auto exact = tables_of("case_sensitive: true\n" + states);
    EXPECT_EQ(canonical_words(exact.keyword_groups), (Words{"b"}));
    EXPECT_EQ(canonical_words(exact.method_groups), (Words{"a"}));
}

TEST(GroupCollection, TakesEntriesOfEqualSpellingsOnce) {
    const auto tables = tables_of(R"(
states:
  GCL:
    includes: [More]
    entries: [{forms: [opt, optimization]}, {forms: [optimization, opt]}]
  More: {entries: [{forms: [opt, optimization], next: Other}, {forms: [td]}]}
  Proc: {entries: [{forms: [td], action: {}}, {forms: [td], action: {result: xprc, value: 100000000}}]}
)");
    ASSERT_EQ(tables.keyword_groups.size(), 3u);
    EXPECT_EQ(tables.keyword_groups[0].forms, (Words{"opt", "optimization"}));
    EXPECT_EQ(tables.keyword_groups[0].next, "");
    EXPECT_EQ(tables.keyword_groups[1].forms, (Words{"optimization", "opt"}));
    EXPECT_EQ(tables.keyword_groups[2].state, "more");
    EXPECT_EQ(tables.procedure_groups.size(), 1u);
}

TEST(GroupCollection, TakesBasisSetsFromIncludesAndNotFromEdges) {
    const auto tables = tables_of(R"(
states:
  Basis: {includes: [Dunning], entries: [{forms: [3-21g], next: Pol}]}
  Dunning: {entries: [{forms: [cc-pvdz]}]}
  Pol: {entries: [{forms: ['(d)']}]
}
)");
    EXPECT_EQ(canonical_words(tables.basis_groups), (Words{"3-21g", "cc-pvdz"}));
}

TEST(GroupCollection, GathersOptionsInTheOrderOfTheListedStates) {
    const auto tables = tables_of(R"(
metadata:
  option_states: {Opt: [B, A, Missing], freq: A}
states:
  GCL: {entries: [{forms: [opt]}, {forms: [freq, frequency]}]}
  A: {entries: [{forms: [tight]}, {forms: [shared]}]}
  B: {includes: [C], entries: [{forms: [loose], next: D}]}
  C: {entries: [{forms: [shared]}, {forms: [calcfc]}]}
  D: {entries: [{forms: [never]}]}
)");
    EXPECT_EQ(canonical_words(tables.option_groups.at("opt")), (Words{"loose", "shared", "calcfc", "tight"}));
    EXPECT_EQ(canonical_words(tables.option_groups.at("freq")), (Words{"tight", "shared"}));
    EXPECT_EQ(tables.option_groups.size(), 2u);
}

TEST(GroupCollection, EndsWhenIncludesOrEdgesRunInCircles) {
    const auto tables = tables_of(R"(
states:
  GCL: {includes: [A], entries: [{forms: [a], next: A}]}
  A: {includes: [GCL, B], entries: [{forms: [b], next: A}]}
  B: {includes: [A], entries: [{forms: [c], next: GCL}]}
  Proc: {includes: [Proc]}
)");
    EXPECT_EQ(canonical_words(tables.keyword_groups), (Words{"a", "b", "c"}));
}

TEST(GroupCollection, FollowsHundredThousandStatesInAChain) {
    for (const std::string link : {"includes", "next"}) {
        std::string document = "states:\n  GCL: {includes: [s0]}\n";
        for (int i = 0; i < 100000; ++i) {
            const std::string next = "s" + std::to_string(i + 1);
            document +=
                "  s" + std::to_string(i) +
                (link == "next" ? ": {specs: [{spec: nul, next: " + next + "}]}\n" : ": {includes: [" + next + "]}\n");
        }
        document += "  s100000: {entries: [{forms: [last]}]}\n";
        EXPECT_EQ(canonical_words(tables_of(document).keyword_groups), (Words{"last"})) << link;
    }
}

}  // namespace
}  // namespace quor::input::gaussian

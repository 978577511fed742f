// Words against entries: exact spellings, abbreviations, options and basis sets.
#include "vocabulary.hpp"

#include <thread>

namespace quor::input::gaussian {
namespace {

constexpr const char* groups_vocabulary = R"yaml(
metadata:
  option_states:
    opt: OptStates
    b3lyp: DftStates
    freq: FreqStates
    lonely: FreqStates
states:
  GCL:
    entries:
      - {forms: [optimization, opt]}
      - {forms: [optcyc]}
      - {forms: ["freq(", frequency]}
      - {forms: [population, pop]}
      - {forms: [popart]}
  Proc:
    entries:
      - {forms: [b3lyp]}
      - {forms: [b3pw91]}
  Basis:
    entries:
      - {forms: [6-31g], next: Polarisation}
      - {forms: [6-311g], next: Polarisation}
      - {forms: [sto-3g]}
      - {forms: [lanl2dz]}
    specs: [{spec: cc-pv, next: Zeta}]
  Polarisation: {specs: [{spec: "*", next: Exi}, {spec: "**", next: Exi}, {spec: "(d)", next: Exi}]}
  Zeta: {specs: [{spec: dz, next: Exi}, {spec: tz, next: Exi}, {spec: quad, next: Exi}]}
  OptStates: {entries: [{forms: [calcfc]}, {forms: [calcall]}, {forms: [maxcycles]}, {forms: [tight]}]}
  DftStates: {entries: [{forms: [fine]}]}
  FreqStates: {entries: [{forms: [noraman]}]}
)yaml";

struct Expected {
    std::string word;
    std::string group;  ///< the matched entry's first form; empty for none
    bool exact;
    std::string canonical;
};

void expect_match(const MatchResult& match, const Expected& expected) {
    EXPECT_EQ(match.group == nullptr ? "" : match.group->forms.front(), expected.group) << expected.word;
    EXPECT_EQ(match.exact, expected.exact) << expected.word;
    EXPECT_EQ(match.canonical, expected.canonical) << expected.word;
    EXPECT_EQ(match.found(), !expected.canonical.empty()) << expected.word;
}

TEST(GroupMatching, TakesExactSpellingsAndUniqueAbbreviations) {
    const auto tables = tables_of(groups_vocabulary);
    const Expected cases[] = {
        {"opt", "optimization", true, "opt"},
        {"optimization", "optimization", true, "opt"},
        {" \tOPT\r\n", "optimization", true, "opt"},
        {"optcyc", "optcyc", true, "optcyc"},
        {"optc", "optcyc", false, "optcyc"},
        {"opti", "optimization", false, "opt"},
        {"op", "", false, ""},
        {"o", "", false, ""},
        {"optimizations", "", false, ""},
        {"optx", "", false, ""},
        {"pop", "population", true, "pop"},
        {"po", "", false, ""},
        {"popu", "population", false, "pop"},
        {"popa", "popart", false, "popart"},
        {"freq", "freq(", true, "freq"},
        {"freq(", "freq(", true, "freq("},
        {"fre", "freq(", false, "freq("},
        {"freque", "freq(", false, "freq("},
        {"freq)", "", false, ""},
        {"", "", false, ""},
        {"  ", "", false, ""},
        {"o pt", "", false, ""},
        {"(", "", false, ""},
        {std::string("opt\0", 4), "", false, ""},
        {std::string(100000, 'o'), "", false, ""},
    };
    for (const Expected& expected : cases) {
        expect_match(tables.match_group(expected.word, tables.keyword_groups), expected);
    }
}

TEST(GroupMatching, TakesTheFirstOfEqualSpellings) {
    const auto tables = tables_of(R"yaml(
states:
  GCL: {entries: [{forms: [a, "b("]}, {forms: [b, a]}, {forms: ["c(", c]}, {forms: [d, "d("]}, {forms: ["("]}, {forms: ["e(("]}]}
)yaml");
    const Expected cases[] = {{"a", "a", true, "a"},     {"b", "a", true, "b"},      {"b(", "a", false, "a"},
                              {"c", "c(", true, "c"},    {"c(", "c(", true, "c"},    {"d", "d", true, "d"},
                              {"d(", "d", true, "d"},    {"(", "(", true, "("},      {"e", "e((", false, "e(("},
                              {"e(", "e((", true, "e("}, {"e((", "e((", true, "e(("}};
    // "b(" is a form of the first entry, so it is exact there.
    for (Expected expected : cases) {
        if (expected.word == "b(") {
            expected.exact = true;
        }
        expect_match(tables.match_group(expected.word, tables.keyword_groups), expected);
    }
}

TEST(GroupMatching, CountsAnEntryOnceHoweverManySpellingsBeginAlike) {
    const auto tables = tables_of("states: {GCL: {entries: [{forms: [pcm, pcmodel, pcmx]}, {forms: [pa]}]}}\n");
    expect_match(tables.match_group("pc", tables.keyword_groups), {"pc", "pcm", false, "pcm"});
    expect_match(tables.match_group("p", tables.keyword_groups), {"p", "", false, ""});
}

TEST(GroupMatching, TellsCaseApartInACaseSensitiveVocabulary) {
    const auto tables = tables_of("case_sensitive: true\nstates: {GCL: {entries: [{forms: [Opt]}, {forms: [opt]}]}}\n");
    expect_match(tables.match_group("Opt", tables.keyword_groups), {"Opt", "Opt", true, "Opt"});
    expect_match(tables.match_group(" opt ", tables.keyword_groups), {"opt", "opt", true, "opt"});
    expect_match(tables.match_group("OPT", tables.keyword_groups), {"OPT", "", false, ""});
    expect_match(tables.match_group("Op", tables.keyword_groups), {"Op", "Opt", false, "Opt"});
}

TEST(GroupMatching, FindsOptionsOfAKeywordHoweverItIsWritten) {
    const auto tables = tables_of(groups_vocabulary);
    struct {
        const char* keyword;
        Expected expected;
    } cases[] = {
        {"opt", {"calcfc", "calcfc", true, "calcfc"}},
        {"Optimization", {"CALCFC ", "calcfc", true, "calcfc"}},
        {"opti", {"calcf", "calcfc", false, "calcfc"}},
        {"opt", {"calc", "", false, ""}},
        {"opt", {"", "", false, ""}},
        {"opt", {"noraman", "", false, ""}},
        {"op", {"calcfc", "", false, ""}},       // an ambiguous keyword
        {"optcyc", {"calcfc", "", false, ""}},   // a keyword without options
        {"nothing", {"calcfc", "", false, ""}},  // no keyword
        {"", {"calcfc", "", false, ""}},
        {"b3lyp", {"fine", "fine", true, "fine"}},  // a method
        {"b3l", {"f", "fine", false, "fine"}},
        {"b3", {"fine", "", false, ""}},
        {"freq", {"nora", "noraman", false, "noraman"}},
        {"lonely", {"noraman", "noraman", true, "noraman"}},  // a key that is no keyword of the vocabulary
    };
    for (const auto& [keyword, expected] : cases) {
        SCOPED_TRACE(keyword);
        expect_match(tables.match_option(keyword, expected.word), expected);
    }
}

TEST(GroupMatching, LooksOptionsUpUnderTheCanonicalThenTheFirstSpellingThenTheWord) {
    SimpleYAMLParser::Impl tables;
    CandidateGroup keyword;
    keyword.forms = {"first", "second"};
    keyword.canonical = "shown";
    tables.keyword_groups = GroupList({keyword});
    const auto options = [](const char* form) {
        CandidateGroup option;
        option.forms = {form};
        option.canonical = form;
        return GroupList({option});
    };
    EXPECT_FALSE(tables.match_option("second", "x").found());
    tables.option_groups.insert_or_assign("second", options("of word"));
    EXPECT_EQ(tables.match_option("second", "of").canonical, "of word");
    EXPECT_EQ(tables.match_option("sec", "of").canonical, "");
    tables.option_groups.insert_or_assign("first", options("of first"));
    EXPECT_EQ(tables.match_option("second", "of").canonical, "of first");
    tables.option_groups.insert_or_assign("shown", options("of canonical"));
    EXPECT_EQ(tables.match_option("second", "of").canonical, "of canonical");
}

TEST(GroupMatching, FindsBasisSetsByEntryGraphCompletionOrHead) {
    const auto tables = tables_of(groups_vocabulary);
    const Expected cases[] = {
        {"STO-3G", "sto-3g", true, "sto-3g"},
        {"sto", "sto-3g", false, "sto-3g"},
        {"6-31g", "6-31g", true, "6-31g"},
        {"6-31", "", false, ""},         // two entries, six spellings
        {"6-31G*", "", true, "6-31g*"},  // a walk of the graph
        {"6-31g(D)", "", true, "6-31g(d)"},
        {"6-31g(", "", false, "6-31g(d)"},  // the only completion
        {"6-311g(", "", false, "6-311g(d)"},
        {"6-31g(q)", "6-31g", false, "6-31g"},  // the head alone
        {"lanl2dz(x)", "lanl2dz", false, "lanl2dz"},
        {"lanl (x)", "lanl2dz", false, "lanl2dz"},
        {"sto(x)(y)", "sto-3g", false, "sto-3g"},
        {"(6-31g)", "", false, ""},
        {"6-31(d)", "", false, ""},
        {"cc-pvdz", "", true, "cc-pvdz"},
        {"cc-pvd", "", false, "cc-pvdz"},
        {"cc-pvq", "", false, "cc-pvquad"},
        {"cc-pv", "", false, ""},
        {"cc-pvvz", "", false, ""},
        {"cc-pvdz*", "", false, ""},
        {"", "", false, ""},
        {" ", "", false, ""},
        {"6-31g***", "", false, ""},
        {"def2", "", false, ""},
    };
    for (const Expected& expected : cases) {
        expect_match(tables.match_basis(expected.word), expected);
    }
}

TEST(GroupMatching, KnowsExactBasisNamesOnly) {
    const auto tables = tables_of(groups_vocabulary);
    for (const char* exact : {"6-31g", "6-31G*", "6-31g**", " 6-311G(d) ", "cc-pVTZ", "lanl2dz"}) {
        EXPECT_TRUE(tables.knows_basis_exact(exact)) << exact;
    }
    for (const char* other :
         {"", " ", "6-31", "6-31g(", "6-31g(q)", "sto", "sto-3g*", "cc-pv", "cc-pvq", "6-31g*(d)", "*", "opt"}) {
        EXPECT_FALSE(tables.knows_basis_exact(other)) << other;
    }
}

TEST(GroupMatching, PrefersTheAbbreviatedEntryToTheGraph) {
    const auto tables = tables_of(R"(
states:
  Basis: {entries: [{forms: [cc-pvdz-f12]}], specs: [{spec: cc-pvdz, next: Exi}]}
)");
    expect_match(tables.match_basis("cc-pvdz"), {"cc-pvdz", "cc-pvdz-f12", false, "cc-pvdz-f12"});
    EXPECT_TRUE(tables.knows_basis_exact("cc-pvdz"));
}

TEST(PreferredForm, FollowsItsOrderOfRules) {
    const auto plain = tables_of("states: {}\n");
    const auto with_table = tables_of("metadata: {canonical_forms: {fancy: beta, plain: gamma}}\nstates: {}\n");
    struct {
        Words forms;
        bool short_names;
        const char* plain;
        const char* with_table;
    } cases[] = {
        {{}, false, "", ""},
        {{}, true, "", ""},
        {{"alpha"}, false, "alpha", "alpha"},
        {{"optimization", "opt"}, false, "opt", "opt"},
        {{"bb", "aa", "ab"}, false, "aa", "aa"},
        {{"bb", "a", "b"}, true, "a", "a"},
        {{"alpha", "gamma", "beta"}, false, "beta", "plain"},
        {{"be", "beta"}, false, "be", "fancy"},
        {{"x", "casscf"}, false, "casscf", "casscf"},
        {{"casscf", "beta"}, true, "casscf", "fancy"},
        {{"frequency", "f"}, true, "freq", "freq"},
        {{"frequency", "f"}, false, "f", "f"},
        {{"population", "frequency"}, true, "freq", "freq"},
        {{"population", "casscf"}, true, "pop", "pop"},
        {{"population", "frequencies"}, false, "population", "population"},
    };
    for (const auto& expected : cases) {
        EXPECT_EQ(plain.choose_preferred_form(expected.forms, expected.short_names), expected.plain);
        EXPECT_EQ(with_table.choose_preferred_form(expected.forms, expected.short_names), expected.with_table);
    }
}

TEST(Normalization, TrimsAndFoldsAndNothingElse) {
    const SimpleYAMLParser::Impl folding;
    SimpleYAMLParser::Impl exact;
    exact.case_sensitive = true;
    struct {
        const char* token;
        const char* folded;
        const char* kept;
    } cases[] = {
        {"", "", ""},
        {" \t\r\n", "", ""},
        {" Opt ", "opt", "Opt"},
        {"\vOpt\f", "\vopt\f", "\vOpt\f"},
        {"A  b(C)=D", "a  b(c)=d", "A  b(C)=D"},
        {"\xC3\x84h", "\xC3\x84h", "\xC3\x84h"},
        {"6-31+G(d,p)", "6-31+g(d,p)", "6-31+G(d,p)"},
    };
    for (const auto& expected : cases) {
        EXPECT_EQ(folding.normalize_token(expected.token), expected.folded);
        EXPECT_EQ(exact.normalize_token(expected.token), expected.kept);
        std::string buffer;
        EXPECT_EQ(folding.normalized(expected.token, buffer), expected.folded);
        EXPECT_EQ(exact.normalized(expected.token, buffer), expected.kept);
        EXPECT_EQ(folding.normalize_state_name(expected.token), expected.folded);
    }
    EXPECT_EQ(folding.normalize_state_name(" "), " ");
    EXPECT_EQ(folding.normalize_state_name("  "), "");
    EXPECT_EQ(folding.normalize_state_name("\t"), "");
}

TEST(GroupList, MayBeAskedFirstByManyThreadsAtOnce) {
    std::vector<CandidateGroup> groups(200);
    for (std::size_t i = 0; i < groups.size(); ++i) {
        groups[i].forms = {"word" + std::to_string(i), "other" + std::to_string(i)};
        groups[i].canonical = groups[i].forms.front();
    }
    for (int turn = 0; turn < 20; ++turn) {
        const GroupList list(groups);
        std::vector<int> right(8, 0);
        std::vector<std::thread> threads;
        for (int& count : right) {
            threads.emplace_back([&list, &count] {
                for (std::size_t i = 0; i < list.size(); ++i) {
                    count += list.match("other" + std::to_string(i)).group == &list[i] ? 1 : 0;
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        EXPECT_EQ(right, std::vector<int>(8, 200));
    }
}

TEST(GroupList, AnswersAlikeAfterItWasMoved) {
    std::vector<CandidateGroup> groups(2);
    groups[0].forms = {"freq("};
    groups[0].canonical = "freq";
    groups[1].forms = {"frequency", "fr"};
    groups[1].canonical = "fr";
    GroupList list(groups);
    EXPECT_TRUE(list.match_exact("freq").found());
    GroupList moved(std::move(list));
    EXPECT_EQ(moved.match("freq").canonical, "freq");
    EXPECT_EQ(moved.match("frequ").canonical, "fr");
    GroupList other;
    EXPECT_FALSE(other.match("freq").found());
    other = std::move(moved);
    EXPECT_TRUE(other.match_exact("frequency").found());
    EXPECT_FALSE(other.match("f").found());
}

}  // namespace
}  // namespace quor::input::gaussian

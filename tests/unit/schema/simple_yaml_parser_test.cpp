// The questions a handle answers, and what copies, moves and loads do to it.
#include "vocabulary.hpp"

#include <thread>
#include <utility>

namespace quor::input::gaussian {
namespace {

constexpr const char* query_vocabulary = R"yaml(
metadata:
  option_states: {opt: OptStates, scrf: ScrfStates}
  categories: {opt: job, Frequency: job, scr: solvation, b3ly: functional, 6-31g: stored basis, mystery: Unseen}
states:
  GCL:
    entries:
      - {forms: [optimization, opt]}
      - {forms: [optcyc]}
      - {forms: [freq, frequency]}
      - {forms: [scrf]}
      - {forms: [hfx]}
      - {forms: [sto-3gx]}
      - {forms: [pm6]}
  Proc:
    entries:
      - {forms: [b3lyp]}
      - {forms: [hf, hartree-fock]}
      - {forms: [mp2, "mp2("]}
      - {forms: [pm6]}
      - {forms: [freqq]}
  Basis:
    entries:
      - {forms: [sto-3g]}
      - {forms: [6-31g], next: Polarisation}
      - {forms: [freqb]}
  Polarisation: {specs: [{spec: "*", next: Exi}, {spec: "(d)", next: Exi}]}
  OptStates: {entries: [{forms: [calcfc]}, {forms: [modredundant, modred]}, {forms: [maxcycles, maxcyc]}]}
  ScrfStates: {entries: [{forms: [solvent]}, {forms: [smd]}, {forms: [pcm, iefpcm]}]}
)yaml";

struct Knowledge {
    std::string token;
    const char* known;  ///< letters: K, M, B exact; k, m, b found; in any order
};

TEST(SimpleYAMLParser, KnowsWordsByRole) {
    const SimpleYAMLParser parser = parser_of(query_vocabulary);
    const Knowledge cases[] = {
        {"opt", "kK"},
        {" OPT ", "kK"},
        {"optc", "k"},
        {"op", ""},
        {"freq", "kKmb"},  // also begins a method and a basis set
        {"freque", "k"},
        {"hf", "mM"},  // also begins hfx, but is a method
        {"hfx", "kK"},
        {"har", "m"},
        {"b3", "m"},
        {"sto-3g", "bB"},  // also begins sto-3gx, but is a basis set
        {"sto", "kb"},     // abbreviates one of each
        {"6-31g*", "bB"},
        {"6-31G(d)", "bB"},
        {"6-31g(q)", "b"},
        {"6-3", "b"},  // one entry begins so
        {"pm6", "kKmM"},
        {"pm", "km"},
        {"mp2", "mM"},
        {"mp2(", "mM"},
        {"nothing", ""},
        {"", ""},
        {"  ", ""},
        {"opt freq", ""},
        {"opt=", ""},
        {"(", ""},
        {std::string("opt\0x", 5), ""},
        {std::string(1 << 20, 'q'), ""},
    };
    for (const auto& [token, known] : cases) {
        const auto has = [letters = std::string(known)](char letter) { return letters.find(letter) != std::string::npos; };
        EXPECT_EQ(parser.knows_keyword(token), has('k')) << token;
        EXPECT_EQ(parser.knows_keyword_exact(token), has('K')) << token;
        EXPECT_EQ(parser.knows_method(token), has('m')) << token;
        EXPECT_EQ(parser.knows_method_exact(token), has('M')) << token;
        EXPECT_EQ(parser.knows_basis(token), has('b')) << token;
        EXPECT_EQ(parser.knows_basis_exact(token), has('B')) << token;
    }
}

TEST(SimpleYAMLParser, KnowsOptionsOfAKeyword) {
    const SimpleYAMLParser parser = parser_of(query_vocabulary);
    struct {
        const char* keyword;
        const char* option;
        bool known;
        bool exact;
        const char* normalized;
    } cases[] = {
        {"opt", "calcfc", true, true, "calcfc"},    {"Optimization", " CalcFC", true, true, "calcfc"},
        {"opt", "calc", true, false, "calcfc"},     {"opt", "ModRedundant", true, true, "modred"},
        {"opt", "modredu", true, false, "modred"},  {"opt", "m", false, false, "m"},
        {"opt", "max", true, false, "maxcyc"},      {"opt", "solvent", false, false, "solvent"},
        {"scr", "IEFPCM", true, true, "pcm"},       {"scrf", "s", false, false, "s"},
        {"freq", "calcfc", false, false, "calcfc"}, {"nothing", " Some Thing ", false, false, "some thing"},
        {"", "calcfc", false, false, "calcfc"},     {"opt", "", false, false, ""},
    };
    for (const auto& expected : cases) {
        SCOPED_TRACE(std::string(expected.keyword) + " " + expected.option);
        EXPECT_EQ(parser.knows_option(expected.keyword, expected.option), expected.known);
        EXPECT_EQ(parser.knows_option_exact(expected.keyword, expected.option), expected.exact);
        EXPECT_EQ(parser.normalize_option(expected.keyword, expected.option), expected.normalized);
    }
}

TEST(SimpleYAMLParser, NormalizesExactRolesBeforeAbbreviatedOnes) {
    const SimpleYAMLParser parser = parser_of(query_vocabulary);
    const std::pair<const char*, const char*> cases[] = {
        {"Optimization", "opt"},  // exact keyword
        {"hf", "hf"},             // exact method before the abbreviated keyword hfx
        {"Hartree-Fock", "hf"},
        {"sto-3g", "sto-3g"},      // exact basis set before the abbreviated keyword sto-3gx
        {"freq", "freq"},          // exact keyword, though freqq and freqb begin so
        {"optc", "optcyc"},        // abbreviated keyword
        {"sto", "sto-3gx"},        // abbreviated keyword before the abbreviated basis set
        {"har", "hf"},             // abbreviated method
        {"6-31", "6-31g"},         // abbreviated basis set
        {"6-31G(D)", "6-31g(d)"},  // spelled along the graph
        {"6-31g(q)", "6-31g"},     // known through its head
        {"mp2(", "mp2"},
        {" Op ", "op"},  // ambiguous: as it stands
        {"Nothing At All", "nothing at all"},
        {"", ""},
        {" \t", ""},
    };
    for (const auto& [token, normalized] : cases) {
        EXPECT_EQ(parser.normalize_keyword(token), normalized) << token;
    }
}

TEST(SimpleYAMLParser, NormalizesBasisSetsWithoutLosingASuffix) {
    const SimpleYAMLParser parser = parser_of(query_vocabulary);
    const std::pair<const char*, const char*> cases[] = {
        {"STO-3G", "sto-3g"},     {" sto ", "sto-3g"},
        {"6-31", "6-31g"},        {"6-31G*", "6-31g*"},
        {"6-31G(D)", "6-31g(d)"}, {"6-31g(", "6-31g("},
        {"6-31G(q)", "6-31g(q)"}, {"nothing", "nothing"},
        {"opt", "opt"},           {"", ""},
    };
    for (const auto& [token, normalized] : cases) {
        EXPECT_EQ(parser.normalize_basis(token), normalized) << token;
    }
}

TEST(SimpleYAMLParser, ComparesKeywords) {
    const SimpleYAMLParser parser = parser_of(query_vocabulary);
    struct {
        const char* a;
        const char* b;
        bool equivalent;
    } cases[] = {
        {"opt", "Optimization", true},
        {"opti", " OPT", true},
        {"opt", "freq", false},
        {"opt", "op", false},          // ambiguous
        {"op", "op", true},            // equal as they stand
        {"hf", "hartree-fock", true},  // both abbreviate or are methods
        {"hf", "mp2", false},
        {"mp2", "mp2(", true},
        {"hf", "hfx", true},  // as keywords, hf abbreviates hfx
        {"pm6", "pm", true},
        {"sto", "sto-3gx", true},  // as keywords
        {"6-31g", "6-31", false},  // basis sets are no keywords
        {"6-31G", " 6-31g", true},
        {"b3", "B3LYP", true},
        {"opt", "hf", false},  // a keyword that is no method
        {"unknown", "UNKNOWN ", true},
        {"unknown", "other", false},
        {"", "", true},
        {"", " ", true},
        {"", "opt", false},
        {"opt", "", false},
    };
    for (const auto& expected : cases) {
        SCOPED_TRACE(std::string(expected.a) + " " + expected.b);
        EXPECT_EQ(parser.keywords_equivalent(expected.a, expected.b), expected.equivalent);
        EXPECT_EQ(parser.keywords_equivalent(expected.b, expected.a), expected.equivalent);
    }
}

TEST(SimpleYAMLParser, ComparesOptions) {
    const SimpleYAMLParser parser = parser_of(query_vocabulary);
    struct {
        const char* keyword;
        const char* a;
        const char* b;
        bool equivalent;
    } cases[] = {
        {"opt", "modredundant", "ModRed", true},
        {"opt", " modredu", "modred", true},
        {"opt", "m", "modred", false},
        {"opt", "m", "M ", true},
        {"opt", "calcfc", "modred", false},
        {"opt", "calcfc", "pcm", false},
        {"scrf", "pcm", "iefpcm", true},
        {"opt", "pcm", "iefpcm", false},  // options of another keyword
        {"nothing", "pcm", "iefpcm", false},
        {"nothing", "pcm", " PCM", true},
        {"", "pcm", "iefpcm", false},
        {"opt", "", " ", true},
        {"opt", "", "calcfc", false},
    };
    for (const auto& expected : cases) {
        SCOPED_TRACE(std::string(expected.keyword) + ": " + expected.a + ", " + expected.b);
        EXPECT_EQ(parser.options_equivalent(expected.keyword, expected.a, expected.b), expected.equivalent);
        EXPECT_EQ(parser.options_equivalent(expected.keyword, expected.b, expected.a), expected.equivalent);
    }
}

TEST(SimpleYAMLParser, ClassifiesByCategoryThenByRole) {
    const SimpleYAMLParser parser = parser_of(query_vocabulary);
    const std::pair<const char*, const char*> cases[] = {
        {"opt", "job"},
        {"OPTIMIZATION", "job"},
        {"opti", "job"},
        {"freq", "job"},
        {"scrf", "solvation"},
        {"b3lyp", "functional"},
        {"6-31g", "stored basis"},
        {"6-31g(q)", "stored basis"},
        {"mystery", "Unseen"},
        {"optcyc", "other"},
        {"pm6", "other"},
        {"hf", "method"},
        {"mp2", "method"},
        {"sto-3g", "basis"},
        {"6-31g*", "basis"},
        {"har", "other"},
        {"op", "other"},
        {"unknown", "other"},
        {"", "other"},
        {"  ", "other"},
    };
    for (const auto& [token, category] : cases) {
        EXPECT_EQ(parser.classify(token), category) << token;
    }
}

TEST(SimpleYAMLParser, CompletesPrefixesSortedAndOnce) {
    const SimpleYAMLParser parser = parser_of(query_vocabulary);
    EXPECT_EQ(parser.keyword_completions("o"), (Words{"opt", "optcyc"}));
    EXPECT_EQ(parser.keyword_completions(" OPT "), (Words{"opt", "optcyc"}));
    EXPECT_EQ(parser.keyword_completions("optimizations"), Words{});
    EXPECT_EQ(parser.method_completions("h"), (Words{"hf"}));
    EXPECT_EQ(parser.method_completions("m"), (Words{"mp2"}));
    EXPECT_EQ(parser.basis_completions("6"), (Words{"6-31g", "6-31g(d)", "6-31g*"}));
    EXPECT_EQ(parser.basis_completions("6-31g("), (Words{"6-31g(d)"}));
    EXPECT_EQ(parser.basis_completions("f"), (Words{"freqb"}));
    EXPECT_EQ(parser.option_completions("opt", "m"), (Words{"maxcyc", "modred"}));
    EXPECT_EQ(parser.option_completions("Opti", "MOD"), (Words{"modred"}));
    EXPECT_EQ(parser.option_completions("freq", "m"), Words{});
    EXPECT_EQ(parser.option_completions("unknown", "m"), Words{});
    for (const char* empty : {"", " ", "\t\n"}) {
        EXPECT_EQ(parser.keyword_completions(empty), Words{});
        EXPECT_EQ(parser.method_completions(empty), Words{});
        EXPECT_EQ(parser.basis_completions(empty), Words{});
        EXPECT_EQ(parser.option_completions("opt", empty), Words{});
    }
}

/// Asks an empty vocabulary everything.
void expect_empty(const SimpleYAMLParser& parser) {
    EXPECT_FALSE(parser.is_loaded());
    EXPECT_FALSE(parser.knows_keyword("opt"));
    EXPECT_FALSE(parser.knows_keyword_exact("opt"));
    EXPECT_FALSE(parser.knows_method("hf"));
    EXPECT_FALSE(parser.knows_method_exact("hf"));
    EXPECT_FALSE(parser.knows_basis("6-31g(d)"));
    EXPECT_FALSE(parser.knows_basis_exact("6-31g"));
    EXPECT_FALSE(parser.knows_option("opt", "calcfc"));
    EXPECT_FALSE(parser.knows_option_exact("opt", "calcfc"));
    EXPECT_EQ(parser.normalize_keyword(" Opt "), "opt");
    EXPECT_EQ(parser.normalize_option("opt", " CalcFC "), "calcfc");
    EXPECT_TRUE(parser.keywords_equivalent("Opt ", "opt"));
    EXPECT_FALSE(parser.keywords_equivalent("opt", "optimization"));
    EXPECT_TRUE(parser.options_equivalent("opt", "A", "a"));
    EXPECT_FALSE(parser.options_equivalent("opt", "a", "b"));
    EXPECT_EQ(parser.classify("opt"), "other");
    EXPECT_EQ(parser.keyword_completions("o"), Words{});
    EXPECT_EQ(parser.method_completions("h"), Words{});
    EXPECT_EQ(parser.basis_completions("6"), Words{});
    EXPECT_EQ(parser.option_completions("opt", "c"), Words{});
}

TEST(SimpleYAMLParser, ListsEverySpellingOfAKindSortedAndOnce) {
    const SimpleYAMLParser parser = parser_of(query_vocabulary);
    using Words = std::vector<std::string>;
    EXPECT_EQ(parser.keyword_spellings(),
              (Words{"freq", "frequency", "hfx", "opt", "optcyc", "optimization", "pm6", "scrf", "sto-3gx"}));
    EXPECT_EQ(parser.method_spellings(), (Words{"b3lyp", "freqq", "hartree-fock", "hf", "mp2", "mp2(", "pm6"}));
    EXPECT_EQ(parser.basis_spellings(), (Words{"6-31g", "freqb", "sto-3g"}));
    EXPECT_EQ(SimpleYAMLParser().keyword_spellings(), Words{});
}

TEST(SimpleYAMLParser, IsEmptyWhenFresh) { expect_empty(SimpleYAMLParser()); }

TEST(SimpleYAMLParser, IsEmptyAfterAFailedLoad) {
    const TemporaryFolder folder;
    const std::string bad[] = {
        folder.write("missing.yaml", "metadata: {}\n"),
        folder.write("sequence.yaml", "states: [a]\n"),
        folder.write("late.yaml", "states: {GCL: {entries: [{forms: [opt]}, {forms: [a], consume: 3}]}}\n"),
        (folder.path() / "absent.yaml").string(),
        folder.path().string(),
        ""};
    for (const std::string& path : bad) {
        SimpleYAMLParser parser = parser_of(query_vocabulary);
        const SimpleYAMLParser copy = parser;
        EXPECT_FALSE(parser.load_from_file(path)) << path;
        expect_empty(parser);
        EXPECT_TRUE(copy.knows_keyword_exact("opt")) << path;
    }
}

TEST(SimpleYAMLParser, HasNoVocabularyCompiledIn) {
    SimpleYAMLParser parser = parser_of(query_vocabulary);
    const SimpleYAMLParser copy = parser;
    EXPECT_FALSE(parser.load_embedded_default());
    expect_empty(parser);
    EXPECT_TRUE(copy.knows_keyword_exact("opt"));
}

TEST(SimpleYAMLParser, SharesItsVocabularyWithCopiesUntilItReloads) {
    const TemporaryFolder folder;
    SimpleYAMLParser parser = parser_of(query_vocabulary);
    SimpleYAMLParser copy(parser);
    SimpleYAMLParser assigned;
    assigned = parser;
    ASSERT_TRUE(parser.load_from_file(folder.write("other.yaml", "states: {GCL: {entries: [{forms: [irc]}]}}\n")));
    EXPECT_TRUE(parser.knows_keyword_exact("irc"));
    EXPECT_FALSE(parser.knows_keyword("opt"));
    EXPECT_TRUE(copy.knows_keyword_exact("opt"));
    EXPECT_TRUE(assigned.knows_keyword_exact("opt"));
    EXPECT_FALSE(assigned.knows_keyword("irc"));

    SimpleYAMLParser moved(std::move(copy));
    EXPECT_TRUE(moved.knows_keyword_exact("opt"));
    copy = std::move(assigned);  // a moved-from handle takes a new vocabulary
    EXPECT_TRUE(copy.knows_keyword_exact("opt"));
    ASSERT_TRUE(assigned.load_from_file(folder.write("third.yaml", "states: {}\n")));
    EXPECT_TRUE(assigned.is_loaded());
    EXPECT_FALSE(assigned.knows_keyword("opt"));
}

TEST(SimpleYAMLParser, AnswersSeveralThreadsAtOnce) {
    const SimpleYAMLParser parser = parser_of(query_vocabulary);
    std::vector<std::thread> threads;
    std::vector<int> known(4, 0);
    for (int& count : known) {
        threads.emplace_back([copy = parser, &count] {
            for (int round = 0; round < 500; ++round) {
                const SimpleYAMLParser own = copy;
                count += own.knows_keyword("opti") && own.knows_basis("6-31g(d)") && own.basis_completions("6").size() == 3;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(known, std::vector<int>(4, 500));
}

TEST(SimpleYAMLParser, FoldsAndTrimsText) {
    EXPECT_EQ(SimpleYAMLParser::to_lower("OPT=(CalcFC)\xC3\x84"), "opt=(calcfc)\xC3\x84");
    EXPECT_EQ(SimpleYAMLParser::to_lower(""), "");
    EXPECT_EQ(SimpleYAMLParser::trim(" \t\r\na b\n"), "a b");
    EXPECT_EQ(SimpleYAMLParser::trim(" \t\r\n"), "");
    EXPECT_EQ(SimpleYAMLParser::trim("\va\f"), "\va\f");
}

}  // namespace
}  // namespace quor::input::gaussian

// What each key of a vocabulary document does, and which documents are refused.
#include "vocabulary.hpp"

#include <chrono>

#include <sys/stat.h>

namespace quor::input::gaussian {
namespace {

TEST(SchemaDocument, LoadsAnEmptyMapOfStatesIntoEmptyTables) {
    const auto tables = tables_of("states: {}\n");
    EXPECT_TRUE(tables.loaded);
    EXPECT_FALSE(tables.case_sensitive);
    EXPECT_EQ(tables.entry_state, "gcl");
    EXPECT_EQ(tables.procedure_state, "proc");
    EXPECT_EQ(tables.basis_state, "basis");
    EXPECT_TRUE(tables.canonical_forms.empty());
    EXPECT_TRUE(tables.state_groups.empty());
    EXPECT_TRUE(tables.state_edges.empty());
    EXPECT_TRUE(tables.state_includes.empty());
    EXPECT_TRUE(tables.option_states.empty());
    EXPECT_TRUE(tables.option_groups.empty());
    EXPECT_TRUE(tables.exchange_components.empty());
    EXPECT_TRUE(tables.correlation_components.empty());
    EXPECT_TRUE(tables.functional_prefixes.empty());
    EXPECT_TRUE(tables.functional_aliases.empty());
    EXPECT_TRUE(tables.categories.empty());
    EXPECT_TRUE(tables.keyword_groups.empty());
    EXPECT_TRUE(tables.procedure_groups.empty());
    EXPECT_TRUE(tables.method_groups.empty());
    EXPECT_TRUE(tables.basis_groups.empty());
}

TEST(SchemaDocument, HasDefaultsInFreshAndResetTables) {
    auto tables = tables_of(
        "case_sensitive: true\ntop_level: {entry_state: A, procedure_state: B}\nstates: {A: {entries: [{forms: [x]}]}}\n");
    EXPECT_EQ(tables.entry_state, "A");
    EXPECT_EQ(tables.procedure_state, "B");
    EXPECT_TRUE(tables.case_sensitive);
    tables.reset_schema();
    const SimpleYAMLParser::Impl fresh;
    for (const SimpleYAMLParser::Impl* empty : {&std::as_const(tables), &fresh}) {
        EXPECT_FALSE(empty->loaded);
        EXPECT_FALSE(empty->case_sensitive);
        EXPECT_EQ(empty->entry_state, "GCL");
        EXPECT_EQ(empty->procedure_state, "Proc");
        EXPECT_EQ(empty->basis_state, "Basis");
        EXPECT_TRUE(empty->state_groups.empty());
        EXPECT_TRUE(empty->state_edges.empty());
        EXPECT_TRUE(empty->keyword_groups.empty());
        EXPECT_FALSE(empty->graph_exact_match("a", "x"));
    }
}

TEST(SchemaDocument, RefusesDocumentsThatAreNoVocabulary) {
    const std::string documents[] = {
        "",                                          // empty
        "# a comment alone\n",                       //
        "states\n",                                  // the root is a scalar
        "[states]\n",                                // the root is a sequence
        "~\n",                                       // null
        "metadata: {}\n",                            // no states
        "states:\n",                                 // null states
        "states: text\n",                            //
        "states: [GCL, Proc]\n",                     //
        "states: {GCL: [}\n",                        // syntax
        "states: {\n",                               //
        "states: {GCL: {}\n  Proc: {}}\n",           //
        "states: {GCL: *unknown}\n",                 // unknown alias
        "states: \"no end\n",                        //
        "\tstates: {}\n",                            // a tab as indentation
        "top_level: text\nstates: {}\n",             // scalars where maps are needed
        "metadata: text\nstates: {}\n",              //
        "metadata: {pure_dft: text}\nstates: {}\n",  //
        "states: {GCL: text}\n",                     //
        "states: {GCL: {syntax: text}}\n",           //
        "states: {GCL: {entries: [text]}}\n",        //
        "states: {GCL: {specs: [text]}}\n",          //
        "states: {GCL: {syntax: {transitions: [text]}}}\n",
        "case_sensitive: maybe\nstates: {}\n",  // values that do not convert
        "case_sensitive: [true]\nstates: {}\n",
        "case_sensitive:\nstates: {}\n",
        "states: {GCL: {entries: [{forms: [a], consume: 2}]}}\n",
        "states: {GCL: {entries: [{forms: [a], consume: maybe}]}}\n",
        "states: {GCL: {entries: [{forms: [a], consume: {a: b}}]}}\n",
        "states: {GCL: {entries: [{forms: [a], consume: }]}}\n",
        "states: {GCL: {entries: [{forms: [a], action: {value: many}}]}}\n",
        "states: {GCL: {entries: [{forms: [a], action: {value: 1.5}}]}}\n",
        "states: {GCL: {entries: [{forms: [a], action: {value: 0x10}}]}}\n",
        "states: {GCL: {entries: [{forms: [a], action: {value: [1]}}]}}\n",
        "states: {GCL: {entries: [{forms: [a], action: {value: }}]}}\n",
        "states: {GCL: {entries: [{forms: [a], action: {value: 9223372036854775808}}]}}\n",
    };
    for (const std::string& document : documents) {
        EXPECT_FALSE(document_loads(document)) << document;
    }
}

TEST(SchemaDocument, PassesOverValuesOfTheWrongKind) {
    const std::string documents[] = {
        "top_level: [a]\nstates: {}\n",
        "top_level:\nstates: {}\n",
        "top_level: {entry_state: [a], procedure_state: {b: c}}\nstates: {}\n",
        "metadata:\nstates: {}\n",
        "metadata: [a]\nstates: {}\n",
        "metadata: {canonical_forms: text, option_states: text, categories: text}\nstates: {}\n",
        "metadata: {canonical_forms: [a], option_states: [a], categories: [a], pure_dft: [a]}\nstates: {}\n",
        "metadata: {canonical_forms: {a: [b]}, categories: {a: {b: c}}}\nstates: {}\n",
        "metadata: {pure_dft: {exchange_components: a, correlation_components: {a: b}, prefixes: 1, aliases: [a]}}\nstates: "
        "{}\n",
        "unknown: {any: [thing]}\nstates: {}\n",
        "states: {GCL: }\n",
        "states: {GCL: [a, b]}\n",
        "states: {[a, b]: {entries: [{forms: [x]}]}}\n",
        "states: {GCL: {includes: Proc, entries: text, specs: text}}\n",
        "states: {GCL: {includes: {a: b}, entries: {forms: [a]}, specs: {spec: a, next: b}, syntax: {transitions: {a: "
        "b}}}}\n",
        "states: {GCL: {entries: [{}, {forms: }, {forms: text}, {forms: []}, {forms: {a: b}}, {next: x}, [a], ~]}}\n",
        "states: {GCL: {syntax: {transitions: [{next: x}, {forms: [a]}, {next: [x], forms: [a]}, {next: x, forms: a}, "
        "~]}}}\n",
        "states: {GCL: {specs: [{spec: a}, {next: x}, {spec: [a], next: x}, {spec: a, next: [x]}, {spec: '', next: x}, "
        "~]}}\n",
    };
    for (const std::string& document : documents) {
        const auto tables = tables_of(document);
        EXPECT_TRUE(tables.loaded) << document;
        EXPECT_EQ(tables.entry_state, "gcl") << document;
        EXPECT_EQ(tables.procedure_state, "proc") << document;
        EXPECT_TRUE(tables.state_groups.empty()) << document;
        EXPECT_TRUE(tables.state_edges.empty()) << document;
        EXPECT_TRUE(tables.canonical_forms.empty()) << document;
        EXPECT_TRUE(tables.option_states.empty()) << document;
        EXPECT_TRUE(tables.categories.empty()) << document;
        EXPECT_TRUE(tables.exchange_components.empty()) << document;
        EXPECT_TRUE(tables.correlation_components.empty()) << document;
        EXPECT_TRUE(tables.functional_prefixes.empty()) << document;
        EXPECT_TRUE(tables.functional_aliases.empty()) << document;
    }
}

TEST(SchemaDocument, FillsTheFieldsOfAnEntry) {
    const auto tables = tables_of(R"(
states:
  GCL:
    entries:
      - forms: [" Optimization ", "", OPT, ~, [a]]
        next: Opt List
        consume: yes
        action: {result: "XPrc ", value: -42}
      - forms: [freq]
      - forms: [one, two]
        action: {}
      - forms: ["  "]
)");
    const auto& groups = tables.state_groups.at("gcl");
    ASSERT_EQ(groups.size(), 4u);
    EXPECT_EQ(groups[0].forms, (Words{"optimization", "opt"}));
    EXPECT_EQ(groups[0].next, "opt list");
    EXPECT_EQ(groups[0].canonical, "opt");
    EXPECT_EQ(groups[0].state, "gcl");
    EXPECT_EQ(groups[0].result, "xprc");
    EXPECT_EQ(groups[0].value, -42);
    EXPECT_TRUE(groups[0].has_action);
    EXPECT_TRUE(groups[0].consume);
    EXPECT_EQ(groups[1].forms, (Words{"freq"}));
    EXPECT_EQ(groups[1].next, "");
    EXPECT_EQ(groups[1].result, "");
    EXPECT_EQ(groups[1].value, 0);
    EXPECT_FALSE(groups[1].has_action);
    EXPECT_FALSE(groups[1].consume);
    EXPECT_TRUE(groups[2].has_action);
    EXPECT_TRUE(groups[3].forms.empty());
    EXPECT_EQ(groups[3].canonical, "");
}

TEST(SchemaDocument, TakesAnActionOnlyFromAMap) {
    for (const std::string action : {"text", "[a]", "~"}) {
        const auto tables = tables_of("states: {GCL: {entries: [{forms: [a], action: " + action + "}]}}\n");
        EXPECT_FALSE(tables.state_groups.at("gcl").front().has_action) << action;
    }
}

TEST(SchemaDocument, ReadsValuesAsDecimalIntegers) {
    const std::pair<const char*, std::int64_t> values[] = {{"0", 0},
                                                           {"010", 10},
                                                           {"+7", 7},
                                                           {"-1", -1},
                                                           {"100000000", 100000000},
                                                           {"' 5 '", 5},
                                                           {"9223372036854775807", INT64_MAX}};
    for (const auto& [text, value] : values) {
        const auto tables =
            tables_of(std::string("states: {GCL: {entries: [{forms: [a], action: {value: ") + text + "}}]}}\n");
        EXPECT_EQ(tables.state_groups.at("gcl").front().value, value) << text;
    }
}

struct EdgeText {
    std::string token;
    std::string next;
    bool null_edge;
    bool operator==(const EdgeText& other) const {
        return token == other.token && next == other.next && null_edge == other.null_edge;
    }
};

std::vector<EdgeText> edges_of(const SimpleYAMLParser::Impl& tables, const std::string& state) {
    std::vector<EdgeText> edges;
    for (const GraphEdge& edge : tables.state_edges.at(state)) {
        edges.push_back({edge.token, edge.next, edge.null_edge});
    }
    return edges;
}

TEST(SchemaDocument, MakesEdgesOfEntriesTransitionsAndSpecsInThatOrder) {
    const auto tables = tables_of(R"(
states:
  Basis:
    specs:
      - {spec: NUL, next: Exi}
      - {spec: Integer, next: " "}
    syntax:
      transitions:
        - {forms: ["(", " ", "", "D "], next: Pol}
    entries:
      - {forms: [3-21G, 6-31G], next: Aug}
      - {forms: [gen]}
)");
    const std::vector<EdgeText> expected = {{"3-21g", "aug", false}, {"6-31g", "aug", false}, {"gen", "", false},
                                            {"(", "pol", false},     {" ", "pol", false},     {"d", "pol", false},
                                            {"", "exi", true},       {"integer", " ", false}};
    EXPECT_EQ(edges_of(tables, "basis"), expected);
}

TEST(SchemaDocument, FoldsStateNamesUnlessCaseSensitive) {
    const std::string states = "states: {GCL: {entries: [{forms: [A]}]}, gcl: {entries: [{forms: [b]}]}}\n";
    const auto folded = tables_of(states);
    EXPECT_EQ(folded.state_groups.size(), 1u);
    EXPECT_EQ(canonical_words(folded.keyword_groups), (Words{"a", "b"}));
    const auto exact = tables_of("case_sensitive: true\n" + states);
    EXPECT_EQ(exact.state_groups.size(), 2u);
    EXPECT_EQ(canonical_words(exact.keyword_groups), (Words{"A"}));
    EXPECT_EQ(exact.entry_state, "GCL");
}

TEST(SchemaDocument, ReadsCaseSensitivityBeforeAllElse) {
    const auto tables = tables_of(
        "states: {GCL: {entries: [{forms: [Opt]}]}}\nmetadata: {canonical_forms: {OPT: Opt}}\ncase_sensitive: on\n");
    EXPECT_EQ(canonical_words(tables.keyword_groups), (Words{"OPT"}));
}

TEST(SchemaDocument, AddsUpStatesAndOptionStatesThatNormalizeAlike) {
    const auto tables = tables_of(R"(
metadata:
  option_states:
    opt: OptA
    optimization: [OptB, [x], OptA]
states:
  GCL: {entries: [{forms: [opt, optimization]}]}
  OptA: {entries: [{forms: [tight]}]}
  OptB: {entries: [{forms: [loose]}]}
)");
    EXPECT_EQ(tables.option_states.at("opt"), (Words{"opta", "optb", "opta"}));
    EXPECT_EQ(canonical_words(tables.option_groups.at("opt")), (Words{"tight", "loose"}));
}

TEST(SchemaDocument, ReadsTheMetadata) {
    const auto tables = tables_of(R"(
metadata:
  canonical_forms: {Opt: Optimization, "Freq ": Frequency}
  option_states: {Optimi: " ", unknown: [A, B]}
  pure_dft:
    exchange_components: [B, "", SLATER, ~]
    correlation_components: [LYP]
    prefixes: [LC-, u]
    aliases: {LDA: SVWN, LSDA: SVWN}
  categories: {OPTIMIZATION: Job Type, hf: method, nothing: "Other things"}
states:
  GCL: {entries: [{forms: [optimization]}]}
  Proc: {entries: [{forms: [hartree-fock, hf]}]}
  " ": {entries: [{forms: [tight]}]}
)");
    EXPECT_EQ(tables.canonical_forms.size(), 2u);
    EXPECT_EQ(tables.canonical_forms.at("optimization"), "opt");
    EXPECT_EQ(tables.canonical_forms.at("frequency"), "freq");
    EXPECT_EQ(tables.option_states.at("opt"), (Words{" "}));
    EXPECT_EQ(tables.option_states.at("unknown"), (Words{"a", "b"}));
    EXPECT_EQ(canonical_words(tables.option_groups.at("opt")), (Words{"tight"}));
    EXPECT_TRUE(tables.option_groups.at("unknown").empty());
    EXPECT_EQ(tables.option_groups.size(), 2u);
    EXPECT_EQ(Words(tables.exchange_components.begin(), tables.exchange_components.end()), (Words{"b", "slater"}));
    EXPECT_EQ(Words(tables.correlation_components.begin(), tables.correlation_components.end()), (Words{"lyp"}));
    EXPECT_EQ(Words(tables.functional_prefixes.begin(), tables.functional_prefixes.end()), (Words{"lc-", "u"}));
    EXPECT_EQ(tables.functional_aliases.at("lda"), "svwn");
    EXPECT_EQ(tables.functional_aliases.at("lsda"), "svwn");
    EXPECT_EQ(tables.categories.size(), 3u);
    EXPECT_EQ(tables.categories.at("opt"), "Job Type");
    EXPECT_EQ(tables.categories.at("hf"), "method");
    EXPECT_EQ(tables.categories.at("nothing"), "Other things");
}

TEST(SchemaDocument, FollowsAliasesOfNodes) {
    const auto tables = tables_of(R"(
states:
  GCL: {entries: &words [{forms: &forms [opt, optimization]}, {forms: [freq]}]}
  Opt: {entries: *words}
  Basis: {entries: [{forms: *forms}]}
)");
    EXPECT_EQ(canonical_words(tables.keyword_groups), (Words{"opt", "freq"}));
    EXPECT_EQ(tables.state_groups.at("opt").size(), 2u);
    EXPECT_EQ(tables.basis_groups[0].forms, (Words{"opt", "optimization"}));
}

TEST(SchemaDocument, SurvivesANodeThatContainsItself) {
    const auto tables = tables_of("states: &s {GCL: {entries: &e [{forms: [a]}, {forms: *e}]}, loop: *s}\n");
    EXPECT_EQ(canonical_words(tables.keyword_groups), (Words{"a", ""}));
}

TEST(SchemaDocument, RefusesAliasesThatMultiplyBeyondMeasure) {
    std::string document = "forms: &f [a";
    for (int i = 0; i < 2000; ++i) {
        document += ",a";
    }
    document += "]\nentries: &e [{forms: *f}";
    for (int i = 0; i < 2000; ++i) {
        document += ",{forms: *f}";
    }
    document += "]\nstates: {A: {entries: *e}, B: {entries: *e}}\n";
    EXPECT_FALSE(document_loads(document));
}

TEST(SchemaDocument, RefusesAliasesOfWhatHoldsNoWord) {
    std::string document = "entries: &e [{x: 1}";
    for (int i = 0; i < 2000; ++i) {
        document += ",{x: 1}";
    }
    const std::string entries = document + "]\nstates:\n  GCL: {entries: [{forms: [opt]}]}\n";
    std::string many = entries;
    for (int i = 0; i < 2000; ++i) {
        many += "  s" + std::to_string(i) + ": {entries: *e}\n";
    }
    EXPECT_TRUE(document_loads(entries + "  Other: {entries: *e}\n"));
    EXPECT_FALSE(document_loads(many)) << "each of four million looks would find nothing";
}

TEST(SchemaDocument, RefusesOptionListsThatMultiplyBeyondMeasure) {
    std::string document = "states:\n  Big:\n    entries:\n";
    for (int i = 0; i < 2000; ++i) {
        document += "    - forms: [o" + std::to_string(i) + "]\n";
    }
    document += "metadata:\n  option_states:\n";
    for (int i = 0; i < 2000; ++i) {
        document += "    k" + std::to_string(i) + ": Big\n";
    }
    EXPECT_FALSE(document_loads(document));
}

TEST(SchemaDocument, RefusesEndlessNestingWithoutCrashing) {
    for (const std::string nest : {"[", "{a: ", "- ", "? ", "[{a: ", "&a [", "!t {b: "}) {
        std::string document = "states:\n  ";
        for (int i = 0; i < 100000; ++i) {
            document += nest;
        }
        EXPECT_FALSE(document_loads(document)) << nest;
    }
    std::string steps = "states:\n";
    for (int depth = 1; depth < 2000; ++depth) {
        steps += std::string(static_cast<std::size_t>(depth), ' ') + "a:\n";
    }
    EXPECT_FALSE(document_loads(steps));
}

TEST(SchemaDocument, RefusesBinaryText) {
    EXPECT_FALSE(document_loads(std::string("states: \0\x01\x02", 11)));
    EXPECT_FALSE(document_loads(std::string(5000, '\0')));
    EXPECT_FALSE(document_loads(std::string(5000, '\xFF')));
    EXPECT_FALSE(
        document_loads("\x7f"
                       "ELF\x02\x01\x01"));
}

TEST(SchemaDocument, ReadsPastAByteOrderMarkAndCarriageReturns) {
    const auto tables = tables_of("\xEF\xBB\xBFstates:\r\n  GCL:\r\n    entries:\r\n      - {forms: [opt]}\r\n");
    EXPECT_EQ(canonical_words(tables.keyword_groups), (Words{"opt"}));
}

TEST(SchemaDocument, RefusesWhatIsNoRegularFile) {
    const TemporaryFolder folder;
    SimpleYAMLParser::Impl tables;
    EXPECT_FALSE(load_schema_document(folder.path().string(), tables));
    EXPECT_FALSE(load_schema_document((folder.path() / "absent.yaml").string(), tables));
    const std::string pipe = (folder.path() / "pipe").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(load_schema_document(pipe, tables));
    EXPECT_FALSE(load_schema_document("/dev/null", tables));
    EXPECT_FALSE(load_schema_document("", tables));
}

TEST(SchemaDocument, RefusesAFileOfHundredMegabytes) {
    const TemporaryFolder folder;
    const std::string path = folder.write("huge.yaml", "states: {}\n");
    std::filesystem::resize_file(path, 100u << 20);
    SimpleYAMLParser::Impl tables;
    EXPECT_FALSE(load_schema_document(path, tables));
}

}  // namespace
}  // namespace quor::input::gaussian

// Mistakes in vocabulary documents: each kind is found, with its line, and a near right document is not blamed.
#include <gjf/core/schema/schema_validation.hpp>

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "../../support/files.hpp"

namespace quor::input::gaussian {
namespace {

std::string problems_in(const std::string& document) {
    const quor::test::TemporaryFolder folder;
    const std::string path = folder.write("vocabulary.yaml", document);
    std::string text;
    for (const SchemaProblem& problem : validate_route_schema(path)) {
        text += (text.empty() ? "" : "\n") + std::to_string(problem.line) + ": " + problem.message;
    }
    return text;
}

// A document without a mistake; tests put one more line under a mark.
const std::string whole =
    "states:\n"                                                            // 1
    "  GCL:\n"                                                             // 2
    "    includes: [More]\n"                                               // 3
    "    entries:\n"                                                       // 4
    "      - {forms: [opt, optimize], next: GCL}\n"                        // 5
    "  More:\n"                                                            // 6
    "    entries:\n"                                                       // 7
    "      - {forms: [freq, frequency], next: GCL}\n"                      // 8
    "  Proc: {entries: [{forms: [hf]}, {forms: [uff], next: Extern}]}\n"   // 9
    "  Basis:\n"                                                           // 10
    "    entries: [{forms: [sto-3g]}]\n"                                   // 11
    "    syntax: {transitions: [{forms: [6-31g], next: Tail}]}\n"          // 12
    "  Tail: {specs: [{spec: nul, next: Exi}, {spec: '*', next: Exi}]}\n"  // 13
    "  OptOptions: {entries: [{forms: [tight]}, {forms: [calcfc]}]}\n";    // 14
const std::string metadata =
    "metadata:\n"                                   // 15
    "  canonical_forms: {freq: frequency}\n"        // 16
    "  option_states: {opt: OptOptions}\n"          // 17
    "  categories: {opt: job type, hf: method}\n";  // 18

TEST(SchemaValidation, FindsNothingInARightDocument) {
    EXPECT_EQ(problems_in(whole + metadata), "");
    EXPECT_EQ(problems_in("states: {GCL: {}, Proc: {}, Basis: {}}\n"), "");
}

TEST(SchemaValidation, FindsMisspeltKeys) {
    const std::string empty = "states: {GCL: {}, Proc: {}, Basis: {}}\n";
    const std::pair<std::string, std::string> cases[] = {
        {"states: {GCL: {enties: []}, Proc: {}, Basis: {}}\n", "1: key 'enties' is not known; did you mean entries?"},
        {"states: {GCL: {Entries: []}, Proc: {}, Basis: {}}\n", "1: key 'Entries' is not known; did you mean entries?"},
        {"states:\n  GCL: {entries: [{forms: [a], nxt: GCL}]}\n  Proc: {}\n  Basis: {}\n",
         "2: key 'nxt' is not known; did you mean next?"},
        {"states: {GCL: {}, Proc: {}, Basis: {syntax: {transition: []}}}\n",
         "1: key 'transition' is not known; did you mean transitions?"},
        {"states: {GCL: {}, Proc: {}, Basis: {}, Tail: {sepcs: []}}\n",
         "1: key 'sepcs' is not known; did you mean specs?\n1: state 'tail' is not reached from anywhere"},
        {empty + "metadata:\n  categorys: {}\n", "3: key 'categorys' is not known; did you mean categories?"},
        {empty + "metdata: {}\n", "2: key 'metdata' is not known; did you mean metadata?"},
        {empty + "toplevel: {}\n", "2: key 'toplevel' is not known; did you mean top_level?"},
        {empty + "top_level: {entry_sate: GCL}\n", "2: key 'entry_sate' is not known; did you mean entry_state?"},
    };
    for (const auto& [document, problems] : cases) {
        EXPECT_EQ(problems_in(document), problems) << document;
    }
    // Keys of one's own, as for anchors, and names of words and states are no misspelt keys.
    for (const char* rest : {"actions: []\n", "authors: [someone]\n", "metadata: {categories: {}, comment: x}\n"}) {
        EXPECT_EQ(problems_in(empty + rest), "") << rest;
    }
}

TEST(SchemaValidation, FindsEachKindOfMistake) {
    struct Case {
        std::string document;
        std::string problems;
    };
    const Case cases[] = {
        {whole + "  gcl: {}\n" + metadata, "15: key 'gcl' stands twice"},
        {whole + metadata + "  categories: {}\n", "19: key 'categories' stands twice"},
        {whole + "  Lost: {entries: [{forms: [x]}]}\n" + metadata, "15: state 'lost' is not reached from anywhere"},
        {"states:\n  GCL: {includes: [Gone]}\n  Proc: {}\n  Basis: {}\n", "2: state 'gone' is not defined"},
        {"states:\n  GCL: {entries: [{forms: [a], next: Gone}]}\n  Proc: {}\n  Basis: {}\n",
         "2: state 'gone' is not defined"},
        {"states:\n  GCL:\n    entries:\n      - {forms: [a]}\n      - {forms: [b, a]}\n  Proc: {}\n  Basis: {}\n",
         "5: spelling 'a' stands twice as a keyword"},
        {"states:\n  GCL: {}\n  Proc:\n    entries:\n      - {forms: [a]}\n      - {forms: [a, b]}\n  Basis: {}\n",
         "6: spelling 'a' stands twice as a method"},
        {whole + "  Other: {entries: [{forms: [tight, snug]}]}\nmetadata:\n  option_states: {opt: [OptOptions, Other]}\n",
         "15: spelling 'tight' stands twice as an option of opt"},
        {whole + "metadata:\n  option_states:\n    opt: OptOptions\n    nothing: OptOptions\n",
         "18: options are given to 'nothing', which is no keyword, method or basis set"},
        {whole + metadata + "  other: {}\n  more: 1\n", ""},
        {whole + "metadata:\n  option_states: {opt: OptOptions}\n  categories:\n    nothing: x\n",
         "18: a category is given to 'nothing', which is no keyword, method or basis set"},
        {whole + "metadata:\n  option_states: {opt: OptOptions}\n  canonical_forms:\n    n: nothing\n",
         "18: a preferred spelling is given to 'nothing', which no word has"},
        {"states:\n  GCL: {}\n  Proc: {}\n  Basis: {syntax: {transitions: [{forms: [x], next: Dead}]}}\n  Dead: {}\n",
         "5: no word of the basis graph that reaches state 'dead' can end"},
        {"states: [1, 2\n", "2: end of sequence flow not found"},
        {"other: 1\n", "1: the document has no map of states"},
        {"states: {GCL: {entries: [{forms: [a], consume: maybe}]}}\n", "0: the document does not load: bad conversion"},
        {"", "0: the file cannot be read, is too long or holds no document"},
    };
    for (const Case& c : cases) {
        const std::string found = problems_in(c.document);
        EXPECT_EQ(found, c.problems) << c.document;
    }
}

TEST(SchemaValidation, NamesEveryWordThatAWrongEntryStateLoses) {
    const std::string found = problems_in(whole + metadata + "top_level: {entry_state: Nowhere}\n");
    EXPECT_NE(found.find("2: state 'gcl' is not reached from anywhere"), std::string::npos) << found;
    EXPECT_NE(found.find("17: options are given to 'opt', which is no keyword"), std::string::npos) << found;
}

TEST(SchemaValidation, SaysThatAFileCannotBeRead) {
    const std::vector<SchemaProblem> problems = validate_route_schema("/no/such/file.yaml");
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_EQ(problems[0].line, 0u);
}

TEST(SchemaValidation, FindsNothingInTheShippedDocument) {
    EXPECT_EQ(validate_route_schema(QUOR_GJF_SOURCE_DIR "/resources/schemas/input/gaussian_route.yaml").size(), 0u);
}

}  // namespace
}  // namespace quor::input::gaussian

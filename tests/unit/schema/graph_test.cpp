// Walks of state graphs: exact spellings, acceptance, completions, and graphs made to hurt.
#include "linear_rules.hpp"
#include "vocabulary.hpp"

#include <ctime>
#include <random>

namespace quor::input::gaussian {
namespace {

constexpr const char* pople = R"yaml(
states:
  Basis:
    includes: [Dunning]
    entries: [{forms: [6-31], next: Diffuse}, {forms: [6-311], next: Diffuse}]
  Diffuse: {specs: [{spec: nul, next: Letter}, {spec: "+", next: Letter}, {spec: "++", next: Letter}]}
  Letter: {specs: [{spec: g, next: Polarisation}]}
  Polarisation:
    specs: [{spec: nul, next: Exi}, {spec: "*", next: Exi}, {spec: "**", next: Exi}]
    syntax: {transitions: [{forms: ["("], next: Heavy}]}
  Heavy: {specs: [{spec: d, next: Light}, {spec: 2d, next: Light}, {spec: 3df, next: Light}]}
  Light: {syntax: {transitions: [{forms: [","], next: Hydrogen}, {forms: [")"], next: Exi}]}}
  Hydrogen: {specs: [{spec: p, next: Close}, {spec: 2p, next: Close}, {spec: 3pd, next: Close}]}
  Close: {syntax: {transitions: [{forms: [")"], next: Exi}]}}
  Dunning: {specs: [{spec: aug-, next: Correlated}, {spec: nul, next: Correlated}]}
  Correlated: {specs: [{spec: cc-pvdz, next: Exi}, {spec: cc-pvtz, next: Exi}]}
  Silent: {includes: [Silenter]}
  Silenter: {specs: [{spec: x, next: Exi}, {spec: nul, next: Silent}, {spec: nul, next: Exi}]}
  Loop: {specs: [{spec: a, next: Loop}, {spec: nul, next: Loop}, {spec: b, next: Exi}]}
  Dead: {specs: [{spec: a, next: Dead}, {spec: b, next: Nowhere}], includes: [Dead, Nowhere]}
)yaml";

TEST(StateGraph, MatchesWholeSpellingsOnly) {
    const auto tables = tables_of(pople);
    for (const char* text : {"6-31g", "6-311g", "6-31+g", "6-311++g**", "6-31g*", "6-31g(d)", "6-311++g(3df,3pd)",
                             "6-31+g(2d,p)", "cc-pvdz", "aug-cc-pvtz"}) {
        EXPECT_TRUE(tables.graph_exact_match("Basis", text)) << text;
    }
    for (const char* text : {"", "6-31", "6-31+", "6-31g(", "6-31g(d", "6-31g(d,", "6-31g(d,)", "6-31g(q)", "6-31g*(d)",
                             "6-31+++g", "g", "aug-", "aug-6-31g", "cc-pvdz ", "6-31G", "6-31g()", "cc-pvqz"}) {
        EXPECT_FALSE(tables.graph_exact_match("Basis", text)) << text;
    }
    EXPECT_TRUE(tables.graph_exact_match(" BASIS ", "6-31g"));
    EXPECT_TRUE(tables.graph_exact_match("Letter", "g"));
    EXPECT_FALSE(tables.graph_exact_match("", "g"));
    EXPECT_FALSE(tables.graph_exact_match("absent", ""));
    EXPECT_TRUE(tables.graph_exact_match("Exi", ""));
    EXPECT_FALSE(tables.graph_exact_match("Exi", "g"));
}

TEST(StateGraph, MatchesFromAPositionOn) {
    const auto tables = tables_of(pople);
    EXPECT_TRUE(tables.graph_exact_match_from_state("diffuse", "6-31+g", 4));
    EXPECT_TRUE(tables.graph_exact_match_from_state("polarisation", "6-31+g", 6));
    EXPECT_FALSE(tables.graph_exact_match_from_state("diffuse", "6-31+g", 6));
    EXPECT_FALSE(tables.graph_exact_match_from_state("polarisation", "6-31+g", 7));
    EXPECT_FALSE(tables.graph_exact_match_from_state("", "6-31+g", 6));
}

TEST(StateGraph, ReachesTheAcceptingStateSilently) {
    const auto tables = tables_of(pople);
    for (const char* state : {"Exi", "exi", "Polarisation", "Silent", "Silenter"}) {
        EXPECT_TRUE(tables.reaches_accepting_state(state)) << state;
    }
    for (const char* state : {"", "Basis", "Letter", "Loop", "Dead", "Nowhere", "absent"}) {
        EXPECT_FALSE(tables.reaches_accepting_state(state)) << state;
    }
    EXPECT_TRUE(SimpleYAMLParser::Impl{}.graph_prefix_completions("Exi", "a", 8, 96).empty());
    const auto exact = tables_of("case_sensitive: true\nstates: {A: {includes: [exi]}, B: {includes: [Exi]}}\n");
    EXPECT_FALSE(exact.reaches_accepting_state("A"));
    EXPECT_TRUE(exact.reaches_accepting_state("B"));
}

TEST(StateGraph, EndsInCircles) {
    const auto tables = tables_of(pople);
    EXPECT_TRUE(tables.graph_exact_match("Loop", "aaaab"));
    EXPECT_FALSE(tables.graph_exact_match("Loop", "aaaa"));
    EXPECT_FALSE(tables.graph_exact_match("Dead", "aaaa"));
    EXPECT_FALSE(tables.graph_exact_match("Dead", ""));
    EXPECT_TRUE(tables.graph_prefix_completions("Dead", "a", 8, 96).empty());
    EXPECT_EQ(tables.graph_prefix_completions("Loop", "aa", 3, 96).size(), 3u);
    EXPECT_EQ(tables.graph_prefix_completions("Loop", "aa", 8, 5), (Words{"aaaab", "aaab", "aab"}));
    EXPECT_TRUE(tables.graph_exact_match("Loop", std::string(200000, 'a') + "b"));
}

TEST(StateGraph, CompletesInTheOrderOfTheDocumentUpToTheLimit) {
    const auto tables = tables_of(pople);
    struct {
        const char* prefix;
        std::size_t count;
        std::size_t length;
        Words words;
    } cases[] = {
        {"6-31g",
         8,
         96,
         {"6-31g(2d)", "6-31g(2d,2p)", "6-31g(2d,3pd)", "6-31g(2d,p)", "6-31g(d)", "6-31g(d,2p)", "6-31g(d,3pd)",
          "6-31g(d,p)"}},
        {"6-31g*", 8, 96, {"6-31g*", "6-31g**"}},
        {"6-31g**", 8, 96, {"6-31g**"}},
        {"6-31G(D,", 8, 96, {"6-31g(d,2p)", "6-31g(d,3pd)", "6-31g(d,p)"}},
        {"6-31g(d", 8, 96, {"6-31g(d)", "6-31g(d,2p)", "6-31g(d,3pd)", "6-31g(d,p)"}},
        {"6-31g(d", 2, 96, {"6-31g(d,2p)", "6-31g(d,p)"}},
        {"6-31g(d", 0, 96, {}},
        {"6-31g(d", 8, 8, {"6-31g(d)"}},
        {"6-31g(d", 8, 7, {}},
        {" aug", 8, 96, {"aug-cc-pvdz", "aug-cc-pvtz"}},
        {"aug-cc-pvd", 8, 96, {"aug-cc-pvdz"}},
        {"cc-pvdz", 8, 96, {"cc-pvdz"}},
        {"cc-pvdzx", 8, 96, {}},
        {"", 8, 96, {}},
        {"  ", 8, 96, {}},
        {"q", 8, 96, {}},
    };
    for (const auto& expected : cases) {
        EXPECT_EQ(tables.graph_prefix_completions("Basis", expected.prefix, expected.count, expected.length), expected.words)
            << expected.prefix;
    }
}

TEST(StateGraph, CompletesFromTheDocumentedFirstWords) {
    // The limit cuts the walk, not the sorted list: entries come in the document's order.
    const auto tables =
        tables_of("states: {Basis: {specs: [{spec: xz, next: Exi}, {spec: xm, next: Exi}, {spec: xa, next: Exi}]}}\n");
    EXPECT_EQ(tables.graph_prefix_completions("Basis", "x", 2, 96), (Words{"xm", "xz"}));
    EXPECT_EQ(tables.graph_prefix_completions("Basis", "x", 3, 96), (Words{"xa", "xm", "xz"}));
}

/// A small random graph: few states, few letters, edges of every kind.
linear::Graph random_graph(std::mt19937& random) {
    const std::string names[] = {"s0", "s1", "s2", "s3", "exi", ""};
    const std::string tokens[] = {"a", "b", "ab", "ba", "aab", ""};
    linear::Graph graph;
    for (int state = 0; state < 5; ++state) {
        for (std::size_t count = random() % 4; count > 0; --count) {
            const bool null_edge = random() % 4 == 0;
            graph.edges[names[state]].push_back({null_edge ? "" : tokens[random() % 6], names[random() % 6], null_edge});
        }
        if (random() % 3 == 0) {
            graph.includes[names[state]].push_back(names[random() % 6]);
        }
    }
    return graph;
}

TEST(StateGraph, AgreesWithThePlainWalksOnRandomGraphs) {
    std::mt19937 random(11);
    const std::string texts[] = {"", "a", "b", "ab", "ba", "aab", "aba", "abab", "baab", "aaaa", "abbaab"};
    std::size_t matched = 0;
    std::size_t completed = 0;
    for (int round = 0; round < 3000; ++round) {
        const linear::Graph plain = random_graph(random);
        const StateGraph numbered(plain.edges, plain.includes, "exi");
        for (const std::string state : {"s0", "exi"}) {
            const auto start = numbered.find(state);
            for (const std::string& text : texts) {
                std::set<std::pair<std::string, std::size_t>> visited;
                const bool matches = plain.matches(state, text, 0, visited);
                ASSERT_EQ(start && numbered.matches(*start, text), matches) << round << ' ' << state << ' ' << text;
                matched += matches;
                if (text.empty()) {
                    continue;
                }
                for (const std::size_t count : {1u, 3u, 8u}) {
                    const Words words = plain.completions(state, text, count, 7);
                    ASSERT_EQ(start ? numbered.completions(*start, text, {count, 7}) : Words{}, words)
                        << round << ' ' << state << ' ' << text;
                    completed += words.size();
                }
            }
            std::set<std::string> visited;
            ASSERT_EQ(start && numbered.accepts(*start), plain.accepts(state, visited)) << round << ' ' << state;
        }
    }
    EXPECT_GT(matched, 3000u);
    EXPECT_GT(completed, 10000u);
}

/// Runs `work` and returns how much processor time it took, in seconds: other programs must not count.
template <class Work>
double seconds_of(const Work& work) {
    const std::clock_t begin = std::clock();
    work();
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

TEST(StateGraph, WalksHundredThousandSilentStatesInAChain) {
    for (const bool by_include : {false, true}) {
        linear::Graph chain;
        const int last = 100000;
        for (int state = 0; state < last; ++state) {
            const std::string next = state + 1 == last ? "tail" : "s" + std::to_string(state + 1);
            if (by_include) {
                chain.includes["s" + std::to_string(state)].push_back(next);
            } else {
                chain.edges["s" + std::to_string(state)].push_back({"", next, true});
            }
        }
        chain.edges["tail"].push_back({"xyz", "exi", false});
        const StateGraph graph(chain.edges, chain.includes, "exi");
        const auto start = graph.find("s0");
        ASSERT_TRUE(start);
        EXPECT_TRUE(graph.matches(*start, "xyz"));
        EXPECT_FALSE(graph.matches(*start, "xy"));
        EXPECT_FALSE(graph.accepts(*start));
        EXPECT_EQ(graph.completions(*start, "x", {8, 96}), (Words{"xyz"}));
    }
}

TEST(StateGraph, CompletesDenseGraphsThatNeverAcceptWithoutExploding) {
    linear::Graph graph;
    for (char state = 'a'; state <= 'z'; ++state) {
        for (char next = 'a'; next <= 'z'; ++next) {
            graph.edges[std::string(1, state)].push_back({std::string(1, next), std::string(1, next), false});
        }
    }
    const StateGraph dead(graph.edges, graph.includes, "exi");
    EXPECT_LT(seconds_of([&] { EXPECT_TRUE(dead.completions(*dead.find("a"), "b", {8, 96}).empty()); }), 1.0);

    // The accepting state lies farther off than the longest spelling allowed.
    for (int step = 0; step < 100; ++step) {
        graph.edges[step == 0 ? "z" : "far" + std::to_string(step)].push_back(
            {"x", "far" + std::to_string(step + 1), false});
    }
    graph.edges["far100"].push_back({"", "exi", true});
    const StateGraph distant(graph.edges, graph.includes, "exi");
    EXPECT_LT(seconds_of([&] { EXPECT_TRUE(distant.completions(*distant.find("a"), "b", {8, 96}).empty()); }), 1.0);
    const std::string nearest = "bz" + std::string(100, 'x');
    EXPECT_LT(seconds_of([&] { EXPECT_EQ(distant.completions(*distant.find("a"), "b", {8, 102}), Words{nearest}); }), 1.0);
    EXPECT_LT(seconds_of([&] { EXPECT_EQ(distant.completions(*distant.find("a"), "b", {8, 103}).size(), 8u); }), 1.0);
}

TEST(StateGraph, CompletesManyWaysToOneSpellingWithoutExploding) {
    // Two silent ways and two ways to read the same text at every step: 4^60 walks, 61 spellings.
    linear::Graph graph;
    for (int step = 0; step < 60; ++step) {
        const std::string here = "s" + std::to_string(step);
        const std::string next = "s" + std::to_string(step + 1);
        for (int way = 0; way < 2; ++way) {
            const std::string side = here + (way == 0 ? "left" : "right");
            graph.edges[here].push_back({"", side, true});
            graph.edges[side].push_back({"a", next, false});
            graph.edges[side].push_back({"", next, true});
        }
    }
    graph.edges["s60"].push_back({"", "exi", true});
    const StateGraph walked(graph.edges, graph.includes, "exi");
    const auto start = walked.find("s0");
    EXPECT_LT(seconds_of([&] { EXPECT_EQ(walked.completions(*start, "a", {100, 96}).size(), 60u); }), 2.0);
    EXPECT_TRUE(walked.matches(*start, std::string(60, 'a')));
    EXPECT_FALSE(walked.matches(*start, std::string(61, 'a')));
}

TEST(StateGraph, MatchesLongTextsInLinearTime) {
    const auto tables =
        tables_of("states: {Basis: {specs: [{spec: a, next: Basis}, {spec: aa, next: Basis}, {spec: b, next: Exi}]}}\n");
    const std::string text(300000, 'a');
    EXPECT_LT(seconds_of([&] { EXPECT_FALSE(tables.graph_exact_match("Basis", text)); }), 3.0);
    EXPECT_LT(seconds_of([&] { EXPECT_FALSE(tables.match_basis(text).found()); }), 3.0);
}

}  // namespace
}  // namespace quor::input::gaussian

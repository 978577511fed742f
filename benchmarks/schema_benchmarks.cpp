// The vocabulary: loading it, and each of its queries over the same words.
#include "inputs.hpp"
#include "measuring.hpp"

#include <gjf/gjf.hpp>

#include <iterator>
#include <stdexcept>
#include <string>

namespace quor::benchmarks {
namespace {

using namespace quor::input::gaussian;

void load(::benchmark::State& state) {
    measure(state, {}, [] {
        SimpleYAMLParser parser;
        if (!parser.load_from_file(vocabulary_path())) {
            throw std::runtime_error("the vocabulary does not load");
        }
    });
}
BENCHMARK(load)->Name("schema/load")->Unit(::benchmark::kMillisecond);

void find_loaded(::benchmark::State& state) {
    measure(state, {}, [] { ::benchmark::DoNotOptimize(&default_route_schema()); });
}
BENCHMARK(find_loaded)->Name("schema/default_loaded");

void find_cached(::benchmark::State& state) {
    measure(state, {}, [] { ::benchmark::DoNotOptimize(load_route_schema_cached(vocabulary_path())); });
}
BENCHMARK(find_cached)->Name("schema/cached_load");

// Spelled out, abbreviated and unknown words; methods and basis sets that are found along the graphs too.
const std::string words[] = {
    "opt",     "freq",        "scrf",     "empiricaldispersion", "geom", "gfin",  "b3lyp",     "ucam-b3lyp",
    "ccsd(t)", "6-31+g(d,p)", "def2tzvp", "aug-cc-pvtz",         "pop",  "blurb", "temperatu", "h"};
// Options of opt.
const std::string options[] = {"calcfc", "ts", "maxcycles", "noeigent", "modredundant", "tight", "blurb", "q"};

using Schema = SimpleYAMLParser;
using Query = void (*)(const Schema& schema, const std::string& word, const std::string& other);

#define QUOR_GJF_WORD_QUERY(name)                                                                                       \
    {                                                                                                                   \
#name, [](const Schema& s, const std::string& w, const std::string&) { ::benchmark::DoNotOptimize(s.name(w)); } \
    }
#define QUOR_GJF_OPTION_QUERY(name)                                                                                         \
    {                                                                                                                       \
#name,                                                                                                              \
            [](const Schema& s, const std::string& w, const std::string&) { ::benchmark::DoNotOptimize(s.name("opt", w)); } \
    }

struct NamedQuery {
    const char* name;
    Query query;
};

const NamedQuery word_queries[] = {
    QUOR_GJF_WORD_QUERY(knows_keyword),
    QUOR_GJF_WORD_QUERY(knows_keyword_exact),
    QUOR_GJF_WORD_QUERY(knows_method),
    QUOR_GJF_WORD_QUERY(knows_method_exact),
    QUOR_GJF_WORD_QUERY(knows_basis),
    QUOR_GJF_WORD_QUERY(knows_basis_exact),
    QUOR_GJF_WORD_QUERY(normalize_keyword),
    QUOR_GJF_WORD_QUERY(normalize_basis),
    QUOR_GJF_WORD_QUERY(classify),
    QUOR_GJF_WORD_QUERY(identify_keyword),
    QUOR_GJF_WORD_QUERY(options_of),
    QUOR_GJF_WORD_QUERY(keyword_completions),
    QUOR_GJF_WORD_QUERY(method_completions),
    QUOR_GJF_WORD_QUERY(basis_completions),
    {"keywords_equivalent", [](const Schema& s, const std::string& w,
                               const std::string& other) { ::benchmark::DoNotOptimize(s.keywords_equivalent(w, other)); }},
};

const NamedQuery option_queries[] = {
    QUOR_GJF_OPTION_QUERY(knows_option),
    QUOR_GJF_OPTION_QUERY(knows_option_exact),
    QUOR_GJF_OPTION_QUERY(normalize_option),
    QUOR_GJF_OPTION_QUERY(identify_option),
    QUOR_GJF_OPTION_QUERY(option_completions),
    {"options_equivalent",
     [](const Schema& s, const std::string& w, const std::string& other) {
         ::benchmark::DoNotOptimize(s.options_equivalent("opt", w, other));
     }},
};

#undef QUOR_GJF_WORD_QUERY
#undef QUOR_GJF_OPTION_QUERY

// One turn asks for every word once; the counter "each" is the time of one question.
void ask(::benchmark::State& state, Query query, const std::string* begin, const std::string* end) {
    const Schema& schema = default_route_schema();
    measure(state, {}, [=, &schema] {
        for (const std::string* word = begin; word != end; ++word) {
            query(schema, *word, word + 1 == end ? *begin : word[1]);
        }
    });
    using ::benchmark::Counter;
    state.counters["each"] =
        Counter(static_cast<double>(state.iterations() * (end - begin)), Counter::kIsRate | Counter::kInvert);
}

const bool registered = [] {
    for (const NamedQuery& entry : word_queries) {
        const Query query = entry.query;
        ::benchmark::RegisterBenchmark((std::string("schema/") + entry.name).c_str(), [query](::benchmark::State& s) {
            ask(s, query, std::begin(words), std::end(words));
        });
    }
    for (const NamedQuery& entry : option_queries) {
        const Query query = entry.query;
        ::benchmark::RegisterBenchmark((std::string("schema/") + entry.name).c_str(), [query](::benchmark::State& s) {
            ask(s, query, std::begin(options), std::end(options));
        });
    }
    return true;
}();

}  // namespace
}  // namespace quor::benchmarks

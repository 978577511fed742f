// Times loading the vocabulary, interpreting a route, and reading and writing jobs of three sizes.
#include <gjf/gjf.hpp>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <string>

namespace {

using namespace quor::input::gaussian;

const char* const vocabulary = QUOR_GJF_SOURCE_DIR "/resources/schemas/input/gaussian_route.yaml";

std::string make_job(std::int64_t atoms) {
    std::string text = "%chk=a.chk\n%mem=2GB\n#p b3lyp/6-31g(d) opt freq scrf=(smd,solvent=water)\n\ntitle\n\n0 1\n";
    char line[80];
    for (std::int64_t i = 0; i < atoms; ++i) {
        const auto x = static_cast<double>(i);
        std::snprintf(line, sizeof line, " C %22.8f %14.8f %14.8f\n", 0.001 * x - 5.0, 0.37 * x - 1.0, 0.011 * x);
        text += line;
    }
    return text + "\n";
}

void load_vocabulary(benchmark::State& state) {
    for (auto _ : state) {
        SimpleYAMLParser parser;
        if (!parser.load_from_file(vocabulary)) {
            state.SkipWithError("the vocabulary does not load");
        }
    }
}
BENCHMARK(load_vocabulary)->Unit(benchmark::kMillisecond);

void interpret_route(benchmark::State& state) {
    const SimpleYAMLParser schema = load_route_schema_cached(vocabulary).parser;
    const std::string route =
        "#p ub3lyp/6-311++g(3df,3pd) opt=(ts,calcfc,noeigentest,maxcycles=100) freq=(raman,hpmodes) "
        "scrf=(smd,solvent=water) "
        "scf=(tight,xqc,maxcycle=300) int=(ultrafine,acc2e=12) pop=(nbo,full) guess=(mix,always) geom=connectivity nosymm "
        "test gfinput "
        "density=current iop(3/33=1) empiricaldispersion=gd3bj nmr=giao temperature=300 pressure=2 symmetry=loose "
        "field=z+10";
    for (auto _ : state) {
        G16KeywordParser parser(schema);
        parser.parse(route);
        benchmark::DoNotOptimize(parser.get_parsed_keywords());
    }
}
BENCHMARK(interpret_route)->Unit(benchmark::kMicrosecond);

void read_job(benchmark::State& state) {
    const std::string text = make_job(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(GJFParser::parse_string(text));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}
BENCHMARK(read_job)->Arg(30)->Arg(1'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);

void read_job_with_layout(benchmark::State& state) {
    const std::string text = make_job(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(read_jobs_with_layout(text));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}
BENCHMARK(read_job_with_layout)->Arg(100'000)->Unit(benchmark::kMicrosecond);

void write_job(benchmark::State& state) {
    const GJFEditor editor(GJFParser::parse_string(make_job(state.range(0))));
    std::size_t bytes = 0;
    for (auto _ : state) {
        bytes += editor.to_gjf_string().size();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes));
}
BENCHMARK(write_job)->Arg(30)->Arg(1'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);

}  // namespace

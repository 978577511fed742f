// Each operation of the editor on 10,000, 100,000 and 200,000 atoms, so that it shows how its time grows; and files of jobs.
#include "editor_operations.hpp"
#include "inputs.hpp"
#include "measuring.hpp"

#include <chrono>
#include <map>
#include <string>

namespace quor::benchmarks {
namespace {

using namespace quor::input::gaussian;

const std::map<std::int64_t, std::string> inputs = {
    {10'000, "oniom_10000.gjf"}, {100'000, "oniom_large.gjf"}, {200'000, "oniom_200000.gjf"}};

// One size is kept at a time: the benchmarks run size by size.
const GJFData& job_of(std::int64_t atoms) {
    static std::int64_t kept = 0;
    static GJFData job;
    if (kept != atoms) {
        job = GJFParser::parse_string(input_text(inputs.at(atoms)));
        kept = atoms;
    }
    return job;
}

// Each run is timed by itself, since most need something done before that is not theirs.
void edit(::benchmark::State& state, const EditorOperation& operation, std::int64_t atoms) {
    using Clock = std::chrono::steady_clock;
    const GJFData& job = job_of(atoms);
    try {
        Workbench bench(job);
        std::size_t turn = 0;
        for (auto _ : state) {
            prepare(bench, operation.before, job);
            const auto begin = Clock::now();
            operation.run(bench, turn++);
            state.SetIterationTime(std::chrono::duration<double>(Clock::now() - begin).count());
        }
        state.counters["atoms"] = static_cast<double>(atoms);
    } catch (const std::exception& error) {
        state.SkipWithError(error.what());
    }
}

std::int64_t rounds_of(Before before) {
    switch (before) {
        case Before::Nothing:
            return 10;
        case Before::Route:
        case Before::PlainRoute:
            return 50;
        default:
            return 3;
    }
}

const bool registered = [] {
    for (const auto& [atoms, input] : inputs) {
        for (const EditorOperation& operation : editor_operations()) {
            const std::string name = std::string("edit/") + operation.name + '/' + std::to_string(atoms);
            ::benchmark::RegisterBenchmark(
                name.c_str(), [&operation, size = atoms](::benchmark::State& state) { edit(state, operation, size); })
                ->Iterations(rounds_of(operation.before))
                ->UseManualTime()
                ->Unit(::benchmark::kMicrosecond);
        }
    }
    return true;
}();

// --- A file of 1,000 jobs

void edit_jobs(::benchmark::State& state, void (*work)(GJFMultiEditor& editor, const GJFData& job)) {
    GJFMultiEditor editor(GJFParser::parse_string_multi(input_text("jobs.gjf")));
    const GJFData job = GJFParser::parse_string(input_text("small.gjf"));
    measure(state, {}, [&] { work(editor, job); });
}

// Added and removed again, so that the file keeps its size.
void add_and_remove(GJFMultiEditor& editor, const GJFData& job) {
    editor.add_job(job);
    editor.remove_job(editor.job_count() - 1);
}

void insert_and_remove_first(GJFMultiEditor& editor, const GJFData& job) {
    editor.insert_job(0, job);
    editor.remove_job(0);
}

void take_all(GJFMultiEditor& editor, const GJFData&) { ::benchmark::DoNotOptimize(editor.get_multi_data()); }

void write_all(GJFMultiEditor& editor, const GJFData&) { ::benchmark::DoNotOptimize(editor.to_gjf_string()); }

BENCHMARK_CAPTURE(edit_jobs, , add_and_remove)->Name("edit_jobs/add_job_remove_job/1000")->Unit(::benchmark::kMicrosecond);
BENCHMARK_CAPTURE(edit_jobs, , insert_and_remove_first)
    ->Name("edit_jobs/insert_job_remove_job/1000")
    ->Unit(::benchmark::kMicrosecond);
BENCHMARK_CAPTURE(edit_jobs, , take_all)->Name("edit_jobs/get_multi_data/1000")->Unit(::benchmark::kMicrosecond);
BENCHMARK_CAPTURE(edit_jobs, , write_all)->Name("edit_jobs/to_gjf_string/1000")->Unit(::benchmark::kMicrosecond);

}  // namespace
}  // namespace quor::benchmarks

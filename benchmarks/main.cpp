// Runs the benchmarks. Names are WORK/INPUT, as in read/large; --benchmark_filter takes a regular expression of them.
#include "inputs.hpp"

#include <benchmark/benchmark.h>

int main(int argc, char** argv) {
    quor::benchmarks::use_vocabulary_of_the_tree();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::AddCustomContext("compiler", __VERSION__);
#ifdef NDEBUG
    benchmark::AddCustomContext("build", "release");
#else
    benchmark::AddCustomContext("build", "debug: the figures say nothing of speed");
#endif
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}

// Runs a piece of work as a benchmark with the figures that all benchmarks over texts share.
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>
#include <string>

namespace quor::benchmarks {

/// How much a piece of work goes through each time.
struct Amount {
    std::size_t bytes = 0;
    std::size_t atoms = 0;
};

/// Returns how many atoms the jobs of a text have.
std::size_t atoms_of(const std::string& text);

/// Times `work` and reports bytes and atoms a second, allocations an atom, and peak bytes of heap for each byte gone
/// through. An exception ends the benchmark with its message. The work frees all it takes, within the time measured.
void measure(::benchmark::State& state, const Amount& amount, const std::function<void()>& work);

}  // namespace quor::benchmarks

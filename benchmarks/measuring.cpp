// Times work and adds the counters; the heap is counted in a run of its own, before the timed ones.
#include "measuring.hpp"

#include "heap.hpp"

#include <gjf/gjf.hpp>

#include <cstdint>
#include <exception>

namespace quor::benchmarks {

using ::benchmark::Counter;

std::size_t atoms_of(const std::string& text) {
    std::size_t count = 0;
    for (const auto& job : input::gaussian::GJFParser::parse_string_multi(text).jobs) {
        count += job.geom.atom_count();
    }
    return count;
}

void measure(::benchmark::State& state, const Amount& amount, const std::function<void()>& work) {
    try {
        work();  // loads the vocabulary, if it needs it
        const HeapUse heap = heap_use_of(work);
        for (auto _ : state) {
            work();
        }
        const auto rounds = static_cast<double>(state.iterations());
        state.counters["allocations"] = static_cast<double>(heap.allocations);
        if (amount.bytes != 0) {
            const auto bytes = static_cast<double>(amount.bytes);
            state.counters["bytes/s"] = Counter(rounds * bytes, Counter::kIsRate, Counter::kIs1000);
            state.counters["peak_per_byte"] = static_cast<double>(heap.peak_bytes) / bytes;
        }
        if (amount.atoms != 0) {
            const auto atoms = static_cast<double>(amount.atoms);
            state.counters["atoms/s"] = Counter(rounds * atoms, Counter::kIsRate, Counter::kIs1000);
            state.counters["allocations_per_atom"] = static_cast<double>(heap.allocations) / atoms;
        }
    } catch (const std::exception& error) {
        state.SkipWithError(error.what());
    }
}

}  // namespace quor::benchmarks

// Counts what operator new gives out in this program, the library's share included, while a piece of work runs.
#pragma once

#include <cstddef>
#include <functional>

namespace quor::benchmarks {

/// What a piece of work took from the heap. Bytes are those the blocks really have, their rounding up included.
struct HeapUse {
    std::size_t allocations = 0;
    std::size_t peak_bytes = 0;  ///< the most that was live at once, above what was live before
};

/// Runs `work` once and counts. Single-threaded; outside this call the hook costs one comparison an allocation.
HeapUse heap_use_of(const std::function<void()>& work);

}  // namespace quor::benchmarks

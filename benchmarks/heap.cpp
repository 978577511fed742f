// Replaces the global operator new and delete by ones that count while they are asked to.
#include "heap.hpp"

#include <algorithm>
#include <cstdlib>
#include <new>

#include <malloc.h>

namespace quor::benchmarks {
namespace {

bool counting = false;
HeapUse use;
std::ptrdiff_t live = 0;  // below zero when blocks from before are given back

void* counted(void* block) noexcept {
    if (counting && block != nullptr) {
        ++use.allocations;
        live += static_cast<std::ptrdiff_t>(::malloc_usable_size(block));
        use.peak_bytes = std::max(use.peak_bytes, static_cast<std::size_t>(std::max<std::ptrdiff_t>(live, 0)));
    }
    return block;
}

void* allocate_or_null(std::size_t size, std::size_t alignment) noexcept {
    return counted(alignment > alignof(std::max_align_t)
                       ? std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment)
                       : std::malloc(size == 0 ? 1 : size));
}

void* allocate(std::size_t size, std::size_t alignment) {
    void* block = allocate_or_null(size, alignment);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void release(void* block) noexcept {
    if (counting && block != nullptr) {
        live -= static_cast<std::ptrdiff_t>(::malloc_usable_size(block));
    }
    std::free(block);
}

}  // namespace

HeapUse heap_use_of(const std::function<void()>& work) {
    struct Counting {  // ends where work throws, too
        Counting() { counting = true; }
        ~Counting() { counting = false; }
    };
    use = {};
    live = 0;
    {
        const Counting while_it_runs;
        work();
    }
    return use;
}

}  // namespace quor::benchmarks

using quor::benchmarks::allocate;
using quor::benchmarks::allocate_or_null;
using quor::benchmarks::release;

#include "../tests/support/global_operators.hpp"

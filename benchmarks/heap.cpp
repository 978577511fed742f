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

void* allocate(std::size_t size, std::size_t alignment) noexcept {
    return counted(alignment > alignof(std::max_align_t)
                       ? std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment)
                       : std::malloc(size == 0 ? 1 : size));
}

void* allocate_or_throw(std::size_t size, std::size_t alignment) {
    void* block = allocate(size, alignment);
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
using quor::benchmarks::allocate_or_throw;
using quor::benchmarks::release;

void* operator new(std::size_t size) { return allocate_or_throw(size, 0); }
void* operator new[](std::size_t size) { return allocate_or_throw(size, 0); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocate(size, 0); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocate(size, 0); }
void* operator new(std::size_t size, std::align_val_t alignment) {
    return allocate_or_throw(size, static_cast<std::size_t>(alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
    return allocate_or_throw(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* block) noexcept { release(block); }
void operator delete[](void* block) noexcept { release(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { release(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { release(block); }
void operator delete(void* block, std::size_t) noexcept { release(block); }
void operator delete[](void* block, std::size_t) noexcept { release(block); }
void operator delete(void* block, std::align_val_t) noexcept { release(block); }
void operator delete[](void* block, std::align_val_t) noexcept { release(block); }
void operator delete(void* block, std::size_t, std::align_val_t) noexcept { release(block); }
void operator delete[](void* block, std::size_t, std::align_val_t) noexcept { release(block); }

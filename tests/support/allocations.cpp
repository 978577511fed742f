// Replaces the global operator new and delete by ones that count and that can fail.
#include "allocations.hpp"

#include <atomic>
#include <cstdlib>
#include <new>

#include <malloc.h>

namespace quor::test {
namespace {

std::atomic<std::size_t> until_failure{0};  // allocations up to and with the one that fails; 0: none fails
std::atomic<bool> keeps_failing{false};
std::atomic<bool> has_failed{false};
std::atomic<std::size_t> blocks{0};
std::atomic<std::size_t> bytes{0};
std::atomic<std::size_t> peak{0};

bool must_fail() noexcept {
    if (until_failure == 0) {
        return false;
    }
    if (until_failure == 1) {
        has_failed = true;
        until_failure = keeps_failing ? 1 : 0;
        return true;
    }
    --until_failure;
    return false;
}

void* allocate_or_null(std::size_t size, std::size_t alignment) noexcept {
    void* block = alignment > alignof(std::max_align_t)
                      ? std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment)
                      : std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) {
        return nullptr;
    }
    ++blocks;
    const std::size_t now = bytes += ::malloc_usable_size(block);
    if (now > peak) {
        peak = now;
    }
    return block;
}

// The form that gives null is not made to fail: who calls it (std::stable_sort) does without.
void* allocate(std::size_t size, std::size_t alignment) {
    void* block = must_fail() ? nullptr : allocate_or_null(size, alignment);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    return block;
}

void release(void* block) noexcept {
    if (block != nullptr) {
        --blocks;
        bytes -= ::malloc_usable_size(block);
        std::free(block);
    }
}

}  // namespace

void fail_allocation(std::size_t n, Failure failure) noexcept {
    has_failed = false;
    keeps_failing = failure == Failure::FromThenOn;
    until_failure = n;
}

bool stop_failing() noexcept {
    until_failure = 0;
    return has_failed;
}

std::size_t live_blocks() noexcept { return blocks; }

void restart_peak() noexcept { peak = bytes.load(); }

std::size_t peak_bytes() noexcept { return peak; }

std::size_t live_bytes() noexcept { return bytes; }

}  // namespace quor::test

using quor::test::allocate;
using quor::test::allocate_or_null;
using quor::test::release;

#include "global_operators.hpp"

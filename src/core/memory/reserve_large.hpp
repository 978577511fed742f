// Makes room in a vector that is about to be filled. A large one is asked for in large pages: the first touch of a small
// page costs the system more than reading what goes there costs us.
#pragma once

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <vector>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace quor::core::memory {

/// Reserves room for `count` elements. The advice to the system is no more than that: it may be turned down, and holds for
/// that stretch of memory until it is given back. `errno` stays as it was.
template <typename Element>
void reserve_large(std::vector<Element>& elements, std::size_t count) {
    elements.reserve(count);
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    constexpr std::uintptr_t large_page = std::uintptr_t{1} << 21;
    char* const bytes = reinterpret_cast<char*>(elements.data());
    const auto address = reinterpret_cast<std::uintptr_t>(bytes);
    const auto begin = (address + large_page - 1) & ~(large_page - 1);
    const auto end = reinterpret_cast<std::uintptr_t>(elements.data() + elements.capacity()) & ~(large_page - 1);
    if (elements.empty() && begin < end) {
        madvise(bytes + (begin - address), end - begin, MADV_HUGEPAGE);
    }
#endif
}

}  // namespace quor::core::memory

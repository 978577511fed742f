// Counts what operator new gives out in this program, and makes it fail on demand. Linked into a program, it serves the
// library in it too.
#pragma once

#include <cstddef>

namespace quor::test {

/// Which allocations fail: the n-th alone, or all from the n-th on.
enum class Failure { Once, FromThenOn };

/// Lets the `n`-th allocation from now (counted from 1) throw std::bad_alloc.
void fail_allocation(std::size_t n, Failure failure) noexcept;

/// Lets every allocation succeed again; returns whether one has failed since `fail_allocation`.
bool stop_failing() noexcept;

std::size_t live_blocks() noexcept;

/// Forgets the peak: it is what is live now.
void restart_peak() noexcept;
/// Returns the most bytes that were live at once since `restart_peak`.
std::size_t peak_bytes() noexcept;
std::size_t live_bytes() noexcept;

}  // namespace quor::test

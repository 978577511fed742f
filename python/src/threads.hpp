// Work on many things at once, without Python's lock.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <system_error>
#include <thread>
#include <vector>

namespace quor_python {

/// Calls `work` with each number below `count`, from as many threads at once, this one among them; 0: as many as there are
/// processors. Threads take the next number that nobody has taken. `work` must not throw, nor touch Python.
template <class Work>
void in_threads(std::size_t count, unsigned thread_count, const Work& work) {
    std::atomic<std::size_t> next{0};
    const auto take = [&] {
        for (std::size_t i = next++; i < count; i = next++) {
            work(i);
        }
    };
    const std::size_t wanted = thread_count != 0 ? thread_count : std::max(1U, std::thread::hardware_concurrency());
    std::vector<std::thread> threads;
    try {
        while (threads.size() + 1 < std::min(wanted, count)) {
            threads.emplace_back(take);
        }
    } catch (const std::system_error&) {
        // The system gives no more threads: those there are do it.
    }
    take();
    for (std::thread& thread : threads) {
        thread.join();
    }
}

}  // namespace quor_python

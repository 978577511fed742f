// Bounds what an input may cost: ten times the input may take ten times the time and memory, and not much more.
//
// Memory is counted in bytes of operator new, so it is exact. Time is the best of several runs of this thread's own clock; a
// quadratic step shows as a factor of a hundred, and the bound lies between.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <ctime>
#include <functional>
#include <iomanip>
#include <iostream>
#include <string>

#include "../support/allocations.hpp"

namespace quor::test {

inline constexpr double time_factor_limit = 35;    // for ten times the input: linear is 10, quadratic 100
inline constexpr double memory_factor_limit = 25;  // growing buffers double: linear is 5 to 20
inline constexpr double shortest_time = 0.0005;    // seconds: shorter ones are taken for this

/// An input of a size, and what is done with it.
struct Input {
    const char* name;
    std::size_t size;  ///< the smallest of the three sizes
    std::function<std::string(std::size_t size)> make;
    std::function<void(const std::string& text)> use;
};

struct Cost {
    double seconds = 0;
    double bytes = 0;
};

inline double thread_seconds() {
    timespec now{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

inline Cost cost_of(const Input& input, std::size_t size) {
    const std::string text = input.make(size);
    Cost cost{1e9, 0};
    for (int run = 0; run < 5; ++run) {
        restart_peak();
        const std::size_t before = live_bytes();
        const double start = thread_seconds();
        input.use(text);
        cost.seconds = std::min(cost.seconds, thread_seconds() - start);
        cost.bytes = static_cast<double>(peak_bytes() - before);
        if (cost.seconds > 0.02) {
            break;  // long enough to be told from noise
        }
    }
    cost.seconds = std::max(cost.seconds, shortest_time);
    return cost;
}

inline std::string repeated(const std::string& text, std::size_t count) {
    std::string all;
    all.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

/// Puts a number where "@" stands.
inline std::string numbered(const std::string& text, std::size_t count) {
    std::string all;
    for (std::size_t i = 1; i <= count; ++i) {
        for (const char c : text) {
            c == '@' ? all += std::to_string(i) : all += c;
        }
    }
    return all;
}

inline void expect_linear(const Input& input) {
    SCOPED_TRACE(input.name);
    input.use(input.make(input.size));  // whatever is set up on first use
    const Cost small = cost_of(input, input.size);
    const Cost middle = cost_of(input, 10 * input.size);
    const Cost large = cost_of(input, 100 * input.size);
    const double time_factor = large.seconds / middle.seconds;
    const double memory_factor = large.bytes / std::max(middle.bytes, 10'000.0);
    std::cout << std::left << std::setw(42) << input.name << std::right << std::fixed << std::setprecision(4)
              << std::setw(10) << small.seconds << std::setw(10) << middle.seconds << std::setw(10) << large.seconds
              << " s  x" << std::setprecision(1) << time_factor << "   memory x" << memory_factor << '\n';
    EXPECT_LT(time_factor, time_factor_limit);
    EXPECT_LT(memory_factor, memory_factor_limit);
}

}  // namespace quor::test

// Runs an operation again and again, each time with another allocation failing, until it succeeds.
#pragma once

#include "allocations.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>

namespace quor::test {

/// One operation under test. `run` prepares afresh, calls `armed` around the operation alone, and checks what a failure must
/// have left.
///
/// `armed(operation)` returns whether an allocation failed inside the operation.
using Armed = std::function<bool(const std::function<void()>& operation)>;

/// Lets the first, second, ... allocation fail, alone and with all that follow, until none fails; returns how many failures
/// there were. `run` is called once for each and must free all it made.
inline std::size_t fail_each_allocation(const std::string& name, const std::function<void(const Armed&)>& run) {
    std::size_t failures = 0;
    for (const Failure failure : {Failure::Once, Failure::FromThenOn}) {
        bool failed = true;
        for (std::size_t n = 1; failed && n < 100'000 && !::testing::Test::HasFatalFailure(); ++n) {
            const std::string place =
                name + ", allocation " + std::to_string(n) + (failure == Failure::Once ? "" : " and on");
            const ::testing::ScopedTrace trace(__FILE__, __LINE__, place);
            const std::size_t blocks = live_blocks();
            run([&](const std::function<void()>& operation) {
                fail_allocation(n, failure);
                operation();
                failed = stop_failing();
                return failed;
            });
            EXPECT_EQ(live_blocks(), blocks) << "something leaked";
            failures += failed ? 1 : 0;
        }
        EXPECT_FALSE(failed) << name << " never succeeded";
    }
    return failures;
}

}  // namespace quor::test

// Lets allocations fail while the default vocabulary is loaded, each in a process of its own. A process that was short of
// memory once must not read without vocabulary from then on.
#include <gjf/c_api/quor_g16_gjf.h>
#include <gjf/gjf.hpp>

#include <gtest/gtest.h>

#include <iostream>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

#include "../support/allocations.hpp"

namespace quor::test {
namespace {

using namespace input::gaussian;

// In a process of its own: reads a job while one allocation of the first use fails, then reads it again.
int first_use_with_failure(std::size_t n) {
    constexpr const char* job = "#p b3lyp/6-31g(d) opt=modredundant\n\nt\n\n0 1\nHe 0 0 0\n\n1 F\n\n";
    fail_allocation(n, Failure::Once);
    quor_gjf_editor* first = gjf_editor_create_from_string(job);
    const bool failed = stop_failing();
    if ((first == nullptr) != failed || (failed && std::string(gjf_get_last_error()) != "std::bad_alloc")) {
        return 2;
    }
    gjf_editor_destroy(first);
    const GJFData again = GJFParser::parse_string(job);
    if (again.extra_inputs.size() != 1 || again.extra_inputs[0].kind != ExtraInputSectionKind::CoordinateModifications) {
        return 3;
    }
    return failed ? 0 : 1;
}

TEST(FirstUse, ThatRunsOutOfMemoryIsTriedAgain) {
    int status = 0;
    std::size_t failures = 0;
    for (std::size_t n = 1; status == 0 && n < 10'000'000; n += 1 + n / 3) {
        const pid_t child = ::fork();
        if (child == 0) {
            ::_exit(first_use_with_failure(n));
        }
        int wait_status = 0;
        ASSERT_EQ(::waitpid(child, &wait_status, 0), child);
        ASSERT_TRUE(WIFEXITED(wait_status)) << "allocation " << n;
        status = WEXITSTATUS(wait_status);
        ASSERT_LE(status, 1) << "allocation " << n;
        failures += status == 0 ? 1 : 0;
    }
    EXPECT_EQ(status, 1) << "the first use never succeeded";
    EXPECT_GT(failures, 20u);
    std::cout << failures << " failed first uses\n";
}

}  // namespace
}  // namespace quor::test

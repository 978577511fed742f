// Lets allocations fail while a vocabulary is loaded: nothing leaks, and no failure of memory is kept.
#include <gjf/gjf.hpp>

#include <gtest/gtest.h>

#include <iostream>
#include <new>
#include <string>

#include "../support/failing_calls.hpp"
#include "../support/files.hpp"

namespace quor::test {
namespace {

using namespace input::gaussian;

constexpr const char* small_document = R"(
metadata:
  option_states: {opt: Options}
  categories: {opt: job}
states:
  GCL:
    includes: [Keywords]
  Keywords:
    entries: [{forms: [opt, optimization], next: GCL, consume: true}]
  Proc:
    entries: [{forms: [b3lyp], action: {result: xprc, value: 1}}]
  Basis:
    entries: [{forms: [sto-3g], next: Exi}, {forms: [3-21], next: Rest}]
  Rest:
    syntax: {transitions: [{forms: [g], next: Exi}]}
  Options:
    entries: [{forms: [tight]}, {forms: [a_word_that_is_longer_than_short_texts]}]
)";

class VocabularyMemory : public ::testing::Test {
   protected:
    VocabularyMemory() {
        SimpleYAMLParser().load_from_file(path);  // first use of what stays for the life of the process
    }

    const TemporaryFolder folder;
    const std::string path = folder.write("vocabulary.yaml", small_document);
};

TEST_F(VocabularyMemory, GivesAFalseResultWhenItRunsOut) {
    const std::size_t failures = fail_each_allocation("load_from_file", [&](const Armed& armed) {
        SimpleYAMLParser schema;
        bool loaded = false;
        const bool failed = armed([&] { loaded = schema.load_from_file(path); });
        EXPECT_EQ(loaded, !failed);
        EXPECT_EQ(schema.is_loaded(), loaded);
        EXPECT_EQ(schema.knows_option("opt", "tight"), loaded);
    });
    EXPECT_GT(failures, 300u);
    std::cout << failures << " failed allocations in loading\n";
}

TEST_F(VocabularyMemory, IsNoFailureThatTheCacheRemembers) {
    std::size_t failures = 0;
    std::size_t step = 1;
    for (bool failed = true; failed && failures < 10'000; step += 1 + step / 16) {
        // Each path text is loaded afresh.
        const std::string fresh =
            path.substr(0, path.rfind('/')) + std::string(failures + 1, '/') + path.substr(path.rfind('/') + 1);
        bool threw = false;
        fail_allocation(step, Failure::Once);
        try {
            load_route_schema_cached(fresh);
        } catch (const std::bad_alloc&) {
            threw = true;
        }
        failed = stop_failing();
        EXPECT_EQ(threw, failed) << "allocation " << step;
        EXPECT_TRUE(load_route_schema_cached(fresh).loaded) << "after allocation " << step;
        failures += failed ? 1 : 0;
    }
    EXPECT_GT(failures, 50u);
}

}  // namespace
}  // namespace quor::test

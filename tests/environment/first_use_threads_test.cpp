// The default vocabulary used first by sixteen threads at once: one load, the same answers in all. A program of one test.
#include <gjf/gjf.hpp>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace quor::input::gaussian {
namespace {

TEST(DefaultVocabulary, IsUsedFirstBySixteenThreadsAtOnce) {
    constexpr int thread_count = 16;
    std::atomic<int> waiting{0};
    std::vector<std::size_t> keywords(thread_count);
    std::vector<const SimpleYAMLParser*> schemas(thread_count);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < thread_count; ++i) {
        threads.emplace_back([&, i] {
            ++waiting;
            while (waiting < thread_count) {
                std::this_thread::yield();
            }
            const GJFData job =
                GJFParser::parse_string("#p b3lyp/6-31g(d) opt=modredundant freq\n\nt\n\n0 1\nHe 0 0 0\n\n1 F\n");
            keywords[i] = job.control.parsed_keywords->keywords.size() * 10 + job.extra_inputs.size();
            schemas[i] = &default_route_schema();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (std::size_t i = 0; i < thread_count; ++i) {
        EXPECT_EQ(keywords[i], 21u) << "thread " << i;
        EXPECT_EQ(schemas[i], schemas[0]);
    }
    EXPECT_TRUE(schemas[0]->is_loaded());
}

}  // namespace
}  // namespace quor::input::gaussian

// Many threads at once: the cache with many paths, handles of their own, and messages of their own.
#include <gjf/c_api/quor_g16_gjf.h>
#include <gjf/gjf.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "../support/files.hpp"

namespace quor::input::gaussian {
namespace {

constexpr std::size_t thread_count = 16;

void run_threads(const std::function<void(std::size_t)>& work) {
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < thread_count; ++i) {
        threads.emplace_back(work, i);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(Threads, ShareACacheOfManyPaths) {
    const quor::test::TemporaryFolder folder;
    constexpr std::size_t documents = 24;
    for (std::size_t i = 0; i < documents; ++i) {
        folder.write(std::to_string(i), "states: {GCL: {entries: [{forms: [word" + std::to_string(i) + "]}]}}\n");
    }
    std::vector<std::size_t> wrong(thread_count);
    run_threads([&](std::size_t thread) {
        for (std::size_t step = 0; step < 3 * documents; ++step) {
            const std::size_t i = (step * 7 + thread) % documents;
            const SchemaCacheEntry entry = load_route_schema_cached(folder / std::to_string(i));
            const bool right = entry.loaded && entry.parser.knows_keyword_exact("word" + std::to_string(i)) &&
                               !entry.parser.knows_keyword_exact("word" + std::to_string(i + 1)) &&
                               !load_route_schema_cached(folder / "missing").loaded;
            wrong[thread] += right ? 0 : 1;
        }
    });
    EXPECT_EQ(std::count(wrong.begin(), wrong.end(), 0u), static_cast<std::ptrdiff_t>(thread_count));
}

// Reads, edits and writes a job of so many atoms; returns the atoms of the text that comes out.
std::size_t edit_one_job(std::size_t atoms) {
    std::string text = "#p b3lyp/6-31g(d) opt\n\nt\n\n0 1\n";
    for (std::size_t i = 0; i < atoms; ++i) {
        text += "C 0.0 0.0 0.0\n";
    }
    quor_gjf_editor* job = gjf_editor_create_from_string(text.c_str());
    gjf_editor_set_freeze_by_element(job, "C", -1);
    gjf_editor_add_atom(job, "H", 1, 2, 3, nullptr, nullptr, 0);
    gjf_editor_set_model_chemistry_method(job, "mp2");
    std::string buffer(1 << 14, '\0');
    gjf_editor_to_string(job, buffer.data(), static_cast<int>(buffer.size()));
    gjf_editor_destroy(job);
    return GJFParser::parse_string(buffer.c_str()).geom.atoms.size();
}

TEST(Threads, HaveHandlesOfTheirOwn) {
    std::vector<std::size_t> wrong(thread_count);
    run_threads([&](std::size_t thread) {
        for (std::size_t step = 0; step < 10; ++step) {
            const std::size_t atoms = 1 + (thread + step) % 20;
            wrong[thread] += edit_one_job(atoms) == atoms + 1 ? 0 : 1;
        }
    });
    EXPECT_EQ(std::count(wrong.begin(), wrong.end(), 0u), static_cast<std::ptrdiff_t>(thread_count));
}

TEST(Threads, HaveMessagesOfTheirOwn) {
    std::vector<std::size_t> wrong(thread_count);
    run_threads([&](std::size_t thread) {
        const std::string line = "line of thread " + std::to_string(thread);
        for (std::size_t step = 0; step < 50; ++step) {
            wrong[thread] += gjf_editor_create_from_string((line + "\n").c_str()) == nullptr ? 0 : 1;
            wrong[thread] += gjf_get_last_error() == "GJF Parse Error: Invalid control line: " + line ? 0 : 1;
        }
    });
    EXPECT_EQ(std::count(wrong.begin(), wrong.end(), 0u), static_cast<std::ptrdiff_t>(thread_count));
}

}  // namespace
}  // namespace quor::input::gaussian

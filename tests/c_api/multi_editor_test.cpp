// The C interface to editors of several jobs: each function's results, each message, and NULL for each pointer.
#include "editors.hpp"

#include <filesystem>
#include <functional>
#include <utility>
#include <vector>

#include "../support/files.hpp"

namespace quor::test {
namespace {

TEST(CMultiEditor, EditsTheListOfJobs) {
    const MultiEditor owner = make_multi();
    quor_gjf_multi_editor* m = owner.get();
    EXPECT_EQ(gjf_multi_editor_job_count(m), 2);
    EXPECT_EQ(gjf_multi_editor_add_job_from_string(m, "# hf geom=allcheck\n"), 0);
    EXPECT_EQ(gjf_multi_editor_job_count(m), 3);
    EXPECT_EQ(gjf_multi_editor_remove_job(m, 0), 0);
    const std::string text = to_text(m);
    EXPECT_EQ(text.rfind("# mp2/sto-3g \n\nb\n", 0), 0u);
    EXPECT_NE(text.find("\n\n--Link1--\n# hf geom=allcheck \n\n\n"), std::string::npos) << text;
    const TemporaryFolder folder;
    const std::filesystem::path path = folder / "jobs.gjf";
    EXPECT_EQ(gjf_multi_editor_save_to_file(m, path.c_str()), 0);
    const MultiEditor again(gjf_multi_editor_create_from_file(path.c_str()));
    EXPECT_EQ(to_text(again.get()), text);
}

TEST(CMultiEditor, GivesCopiesOfJobs) {
    const MultiEditor owner = make_multi();
    const std::string before = to_text(owner.get());
    for (const auto get : {gjf_multi_editor_get_job, gjf_multi_editor_clone_job}) {
        const Editor copy(get(owner.get(), 1));
        ASSERT_NE(copy, nullptr);
        gjf_editor_set_charge_and_spin(copy.get(), 7, 8);
        EXPECT_EQ(to_text(owner.get()), before);
        EXPECT_EQ(gjf_multi_editor_set_job(owner.get(), 1, copy.get()), 0);
        EXPECT_NE(to_text(owner.get()).find("\n7 8\n"), std::string::npos);
        gjf_editor_set_charge_and_spin(copy.get(), 0, 2);
        EXPECT_EQ(gjf_multi_editor_set_job(owner.get(), 1, copy.get()), 0);
        EXPECT_EQ(to_text(owner.get()), before);
    }
}

TEST(CMultiEditor, RefusesWithItsFixedMessages) {
    const MultiEditor owner = make_multi();
    const Editor job = make_editor();
    quor_gjf_multi_editor* m = owner.get();
    const std::string before = to_text(m);
    char b[4] = "?";
    const std::vector<std::pair<std::string, std::function<bool()>>> cases = {
        {"content is null", [&] { return gjf_multi_editor_add_job_from_string(m, nullptr) == -1; }},
        {"GJF Parse Error: Empty file or invalid format", [&] { return gjf_multi_editor_add_job_from_string(m, "") == -1; }},
        {"GJF Parse Error: Connectivity contains a self bond",
         [&] {
             return gjf_multi_editor_add_job_from_string(m, "# hf geom=connectivity\n\nt\n\n0 1\nH 0 0 0\n\n1 1 1.0\n") ==
                    -1;
         }},
        {"job index must not be negative", [&] { return gjf_multi_editor_remove_job(m, -1) == -1; }},
        {"GJF Parse Error: Invalid job index: 2 (total jobs: 2)", [&] { return gjf_multi_editor_remove_job(m, 2) == -1; }},
        {"job index must not be negative", [&] { return gjf_multi_editor_clone_job(m, -1) == nullptr; }},
        {"GJF Parse Error: Invalid job index: 2 (total jobs: 2)", [&] { return gjf_multi_editor_get_job(m, 2) == nullptr; }},
        {"GJF output buffer is invalid", [&] { return gjf_multi_editor_to_string(m, nullptr, 4) == -1; }},
        {"GJF output buffer is invalid", [&] { return gjf_multi_editor_to_string(m, b, 0) == -1; }},
        {"GJF output buffer is too small", [&] { return gjf_multi_editor_to_string(m, b, 4) == -1 && b[0] == '\0'; }},
        {"filename is null", [&] { return gjf_multi_editor_save_to_file(m, nullptr) == -1; }},
        {"GJF Parse Error: Cannot write file: /no/such/f",
         [&] { return gjf_multi_editor_save_to_file(m, "/no/such/f") == -1; }},
        {"job handle is null", [&] { return gjf_multi_editor_set_job(m, 0, nullptr) == -1; }},
        {"job index must not be negative", [&] { return gjf_multi_editor_set_job(m, -1, job.get()) == -1; }},
        {"GJF Parse Error: Invalid job index: 5 (total jobs: 2)",
         [&] { return gjf_multi_editor_set_job(m, 5, job.get()) == -1; }},
    };
    for (const auto& [message, call] : cases) {
        EXPECT_TRUE(call()) << message;
        EXPECT_EQ(gjf_multi_editor_last_error(m), message);
        EXPECT_EQ(gjf_multi_editor_last_error(nullptr), message);
        EXPECT_EQ(to_text(m), before);
        EXPECT_STREQ(gjf_multi_editor_last_error(m), "");
    }
}

TEST(CMultiEditor, RecordsANullHandleForTheThread) {
    char b[4];
    const std::vector<std::function<bool()>> calls = {
        [] { return gjf_multi_editor_job_count(nullptr) == -1; },
        [] { return gjf_multi_editor_add_job_from_string(nullptr, "x") == -1; },
        [] { return gjf_multi_editor_remove_job(nullptr, 0) == -1; },
        [&] { return gjf_multi_editor_to_string(nullptr, b, 4) == -1; },
        [] { return gjf_multi_editor_save_to_file(nullptr, "f") == -1; },
        [] { return gjf_multi_editor_clone_job(nullptr, 0) == nullptr; },
        [] { return gjf_multi_editor_get_job(nullptr, 0) == nullptr; },
        [] { return gjf_multi_editor_set_job(nullptr, 0, nullptr) == -1; },
    };
    for (const auto& call : calls) {
        const Editor clears = make_editor();
        EXPECT_TRUE(call());
        EXPECT_STREQ(gjf_get_last_error(), "multi editor handle is null");
    }
}

}  // namespace
}  // namespace quor::test

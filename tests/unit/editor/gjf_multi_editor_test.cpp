// Several jobs: their list, its refusals and the written file.
#include <gjf/core/editor/gjf_multi_editor.hpp>

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "../../support/sample_jobs.hpp"

namespace quor::input::gaussian {
namespace {

using test::expect_refused;
using test::make_job;

GJFData titled(const std::string& title) {
    GJFData data = make_job(1);
    data.title = title;
    return data;
}

GJFData bad_job() {
    GJFData data = make_job(1);
    data.extra_inputs.emplace_back(ExtraInputSectionKind::Connectivity, "1 5 1.0");
    return data;
}

std::string titles(const GJFMultiEditor& editor) {
    std::string text;
    for (const GJFData& job : editor.get_multi_data().jobs) {
        text += job.title;
    }
    return text;
}

GJFMultiEditor make_editor(const std::string& letters) {
    GJFMultiData data;
    for (const char letter : letters) {
        data.jobs.push_back(titled(std::string(1, letter)));
    }
    return GJFMultiEditor(data);
}

TEST(GJFMultiEditor, WritesJobsWithSeparators) {
    GJFMultiEditor editor = make_editor("ab");
    const std::string a = GJFEditor(titled("a")).to_gjf_string();
    const std::string b = GJFEditor(titled("b")).to_gjf_string();
    EXPECT_EQ(editor.to_gjf_string(), a.substr(0, a.size() - 3) + "\n\n--Link1--\n" + b);
    EXPECT_EQ(GJFParser::parse_string_multi(editor.to_gjf_string()).jobs.size(), 2u);
    EXPECT_EQ(make_editor("").to_gjf_string(), "");
}

TEST(GJFMultiEditor, AddsInsertsAndRemovesJobs) {
    GJFMultiEditor editor = make_editor("ab");
    editor.add_job(titled("c"));
    const GJFData copy = titled("d");
    editor.add_job(copy);
    editor.insert_job(0, titled("x"));
    editor.insert_job(5, titled("y"));
    EXPECT_EQ(titles(editor), "xabcdy");
    editor.remove_job(2);
    EXPECT_EQ(titles(editor), "xacdy");
    EXPECT_EQ(editor.job_count(), 5u);
    editor.job(1).set_title("A");
    EXPECT_EQ(titles(editor), "xAcdy");
    editor.insert_job(0, editor.job(4).get_data());
    EXPECT_EQ(titles(editor), "yxAcdy");
}

TEST(GJFMultiEditor, RefusesAndChangesNothing) {
    GJFMultiEditor editor = make_editor("ab");
    const GJFMultiEditor& constant = editor;
    const std::string before = editor.to_gjf_string();
    const std::string outside = "Connectivity references an atom outside the geometry";
    const std::vector<std::pair<std::string, std::function<void()>>> cases = {
        {"Invalid job index: 2 (total jobs: 2)", [&] { editor.job(2); }},
        {"Invalid job index: 3 (total jobs: 2)", [&] { constant.job(3); }},
        {"Invalid job index: 2 (total jobs: 2)", [&] { editor.remove_job(2); }},
        {"Invalid job index: 9 (total jobs: 2)", [&] { editor.validate_job_index(9); }},
        {"Invalid job index for insert: 3", [&] { editor.insert_job(3, titled("c")); }},
        {"Invalid job index for insert: 4", [&] { editor.insert_job(4, bad_job()); }},
        {outside, [&] { editor.insert_job(1, bad_job()); }},
        {outside, [&] { editor.add_job(bad_job()); }},
        {"Cannot write file: /nowhere/f", [&] { editor.save_to_file("/nowhere/f"); }},
    };
    for (const auto& [message, action] : cases) {
        expect_refused(message, action);
        EXPECT_EQ(editor.to_gjf_string(), before);
    }
    GJFMultiData bad;
    bad.jobs = {titled("a"), bad_job()};
    expect_refused(outside, [&] { GJFMultiEditor refused(bad); });
}

TEST(GJFMultiEditor, CopiesAndMoves) {
    GJFMultiEditor first(GJFMultiData{});
    first.add_job(titled("a"));
    GJFMultiEditor copy(first);
    copy.add_job(titled("b"));
    EXPECT_EQ(titles(first), titles(GJFMultiEditor(first)));
    EXPECT_NE(titles(first), titles(copy));
    const std::string both = titles(copy);
    first = copy;
    EXPECT_EQ(titles(first), both);
    GJFMultiEditor moved(std::move(copy));
    EXPECT_EQ(titles(moved), both);
    GJFMultiEditor assigned(GJFMultiData{});
    assigned = std::move(moved);
    EXPECT_EQ(titles(assigned), both);
    EXPECT_EQ(assigned.job_count(), 2u);
}

}  // namespace
}  // namespace quor::input::gaussian

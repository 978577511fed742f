// The fixes of every code that offers one: the mended text, that a second run changes nothing, and what is never applied.
#include <gjf/core/check/fix_text.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

using namespace quor::input::gaussian;

namespace {

const std::string behind_route = "\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n";

FixOptions with_unsafe(bool unsafe) {
    FixOptions options;
    options.unsafe = unsafe;
    return options;
}

struct Mended {
    const char* code;
    FixSafety safety;
    std::string before;
    std::string after;
};

const std::vector<Mended>& mended_texts() {
    constexpr auto safe = FixSafety::Safe;
    static const std::vector<Mended> table = {
        {"GJF-T001", safe, "# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n", "# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n"},
        {"GJF-T001", safe, "# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0", "# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n"},
        {"GJF-T001", safe, "# hf/sto-3g\r\n\r\nt\r\n\r\n0 1\r\nHe 0.0 0.0 0.0",
         "# hf/sto-3g\r\n\r\nt\r\n\r\n0 1\r\nHe 0.0 0.0 0.0\r\n\r\n"},
        {"GJF-T004", safe, "# hf/sto-3g\r\n\nt\n\n0 1\nHe 0.0 0.0 0.0\r\n\n", "# hf/sto-3g" + behind_route},
        {"GJF-T005", safe, "# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n--Link1--\n# hf/sto-3g" + behind_route,
         "# hf/sto-3g" + behind_route + "--Link1--\n# hf/sto-3g" + behind_route},
        {"GJF-T008", safe, "\xEF\xBB\xBF# hf/sto-3g" + behind_route, "# hf/sto-3g" + behind_route},
        {"GJF-P001", safe, "# hf/sto-3g\r\rt\r\r0 1\rHe 0.0 0.0 0.0\r\r", "# hf/sto-3g" + behind_route},
    };
    return table;
}

bool found(const std::vector<Finding>& findings, const std::string& code) {
    return std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) { return finding.code == code; });
}

TEST(Fixes, MendWhatEachCodeFinds) {
    for (const Mended& row : mended_texts()) {
        SCOPED_TRACE(std::string(row.code) + ": " + row.before);
        ASSERT_TRUE(found(check_text(row.before), row.code));
        const FixedText fixed = fix_text(row.before, with_unsafe(row.safety == FixSafety::Unsafe));
        EXPECT_EQ(fixed.text, row.after);
        EXPECT_EQ(fix_text(fixed.text, with_unsafe(row.safety == FixSafety::Unsafe)).text, fixed.text);
        EXPECT_TRUE(std::any_of(fixed.applied.begin(), fixed.applied.end(),
                                [&](const FixReport& fix) { return fix.code == row.code && fix.safety == row.safety; }));
        EXPECT_TRUE(fixed.dropped.empty());
        if (row.safety == FixSafety::Unsafe) {
            EXPECT_FALSE(found(fixed.findings, row.code));
            EXPECT_NE(fix_text(row.before).text, row.after) << "applied without being asked for";
        }
    }
}

TEST(Fixes, AreInOrderAndInsideTheText) {
    for (const Mended& row : mended_texts()) {
        for (const Finding& finding : check_text(row.before)) {
            for (const Fix& fix : finding.fixes) {
                EXPECT_FALSE(fix.title.empty());
                EXPECT_FALSE(fix.edits.empty()) << fix.title;
                std::size_t done = 0;
                for (const TextEdit& edit : fix.edits) {
                    EXPECT_LE(done, edit.begin) << row.before;
                    EXPECT_LE(edit.begin, edit.end);
                    EXPECT_LE(edit.end, row.before.size());
                    EXPECT_NE(row.before.substr(edit.begin, edit.end - edit.begin), edit.text);
                    done = edit.end;
                }
            }
        }
    }
}

TEST(Fixes, AreLeftOutWhereTheyAreNotWanted) {
    const std::string text = "\xEF\xBB\xBF# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n";
    FixOptions options;
    options.applies = [](const Finding& finding) { return finding.code != "GJF-T008"; };
    EXPECT_EQ(fix_text(text, options).text, text + "\n");
    EXPECT_TRUE(found(fix_text(text, options).findings, "GJF-T008"));
    options.applies = nullptr;
    options.check.ignored_codes = {"gjf-t001"};
    EXPECT_EQ(fix_text(text, options).text, text.substr(3));
    EXPECT_EQ(fix_text("", {}).text, "");
}

TEST(Fixes, AreNotAppliedWhenTwoOfOneClassDiffer) {
    const Fix safe{"a", FixSafety::Safe, {}};
    const Fix unsafe{"b", FixSafety::Unsafe, {}};
    const Fix choice{"c", FixSafety::Choice, {}};
    const struct {
        std::vector<Fix> fixes;
        bool with_unsafe;
        const char* title;
    } rows[] = {{{}, true, ""},           {{choice}, true, ""},         {{unsafe}, false, ""},
                {{unsafe}, true, "b"},    {{unsafe, safe}, true, "a"},  {{unsafe, safe}, false, "a"},
                {{safe, safe}, true, ""}, {{unsafe, unsafe}, true, ""}, {{choice, unsafe}, true, "b"}};
    for (const auto& row : rows) {
        Finding finding;
        finding.fixes = row.fixes;
        const Fix* fix = applicable_fix(finding, row.with_unsafe);
        EXPECT_EQ(fix == nullptr ? "" : fix->title, row.title);
    }
}

TEST(FindingPlaces, CountBytesOfTheText) {
    const struct {
        std::string text;
        const char* code;
        const char* found;
    } rows[] = {
        {"\xEF\xBB\xBF%mem=1GB\r\n# hf/sto-3g opt=calfc\r\n\r\nt\r\n\r\n0 1\r\nHe 0 0 0\r\n\r\n", "GJF-R001", "calfc"},
        {"\xEF\xBB\xBF# hf/sto-3g\r\n\r\nt\r\n\r\n0 2\r\nHe 0 0 0\r\n\r\n", "GJF-M002", "0 2"},
        {"\xEF\xBB\xBF# hf/sto-3g" + behind_route, "GJF-T008", "# hf/sto-3g"},
        {"# hf/sto-3g\n\nt\n\n0 1\nHe 0 0 0", "GJF-T001", "He 0 0 0"},
        {"", "GJF-P001", ""},
    };
    for (const auto& row : rows) {
        const std::vector<Finding> findings = check_text(row.text);
        const auto finding =
            std::find_if(findings.begin(), findings.end(), [&](const Finding& f) { return f.code == row.code; });
        ASSERT_NE(finding, findings.end()) << row.text;
        EXPECT_EQ(row.text.substr(finding->begin, finding->end - finding->begin), row.found) << row.code;
    }
}

}  // namespace

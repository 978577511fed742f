// Every pair of words that the facts say exclude each other raises its finding, in both orders; one word alone does not.
#include <gjf/core/check/checker.hpp>
#include <gjf/core/knowledge/facts.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using namespace quor::input::gaussian;

namespace {

// A route that holds the words, and what restarts, reads and job types need beside them.
std::string job_with(const std::string& words) {
    return "%chk=a\n# hf/sto-3g " + words + "\n\ntitle\n\n0 1\nH 0.0 0.0 0.0\nH 0.0 0.0 0.74\n\n";
}

std::size_t count_of(const std::string& text, const std::string& code, const std::string& part) {
    const std::vector<Finding> findings = check_text(text);
    return static_cast<std::size_t>(std::count_if(findings.begin(), findings.end(), [&](const Finding& finding) {
        return finding.code == code && finding.message.find(part) != std::string::npos;
    }));
}

std::string in_quotes(std::string_view first, std::string_view second) {
    return "'" + std::string(first) + "' and '" + std::string(second) + "'";
}

TEST(Exclusions, OfOptionsAreFoundRowByRow) {
    std::size_t rows = 0;
    for (const char* keyword : {"opt", "irc", "scf", "freq", "geom", "guess", "pop", "td", "tda", "cis"}) {
        for (const Exclusion& pair : exclusions("options", keyword)) {
            ++rows;
            const std::string name(keyword);
            const std::string a(pair.first);
            const std::string b(pair.second);
            EXPECT_EQ(count_of(job_with(name + "=(" + a + "," + b + ")"), "GJF-R008", in_quotes(a, b)), 1U)
                << name << a << b;
            EXPECT_EQ(count_of(job_with(name + "=(" + b + "," + a + ")"), "GJF-R008", in_quotes(a, b)), 1U)
                << name << a << b;
            EXPECT_EQ(count_of(job_with(name + "=" + a + " " + name + "=" + b), "GJF-R008", in_quotes(a, b)), 1U)
                << name << a << b;
            EXPECT_EQ(count_of(job_with(name + "=" + a), "GJF-R008", ""), 0U) << name << a;
            EXPECT_EQ(count_of(job_with(name + "=" + b), "GJF-R008", ""), 0U) << name << b;
        }
    }
    EXPECT_GE(rows, 92U);
}

TEST(Exclusions, OfKeywordsAreFoundRowByRow) {
    ASSERT_GE(exclusions("keywords").size(), 6U);
    for (const Exclusion& pair : exclusions("keywords")) {
        const std::string a(pair.first);
        const std::string b(pair.second);
        EXPECT_EQ(count_of(job_with(a + " " + b), "GJF-R008", in_quotes(a, b)), 1U) << a << b;
        EXPECT_EQ(count_of(job_with(b + " " + a), "GJF-R008", in_quotes(a, b)), 1U) << a << b;
        EXPECT_EQ(count_of(job_with(a), "GJF-R008", "") + count_of(job_with(b), "GJF-R008", ""), 0U) << a << b;
    }
}

TEST(Exclusions, OfJobTypesAreFoundRowByRow) {
    ASSERT_GE(exclusions("jobs").size(), 29U);
    for (const Exclusion& pair : exclusions("jobs")) {
        const std::string a(pair.first);
        const std::string b(pair.second);
        EXPECT_EQ(count_of(job_with(a + " " + b), "GJF-R010", in_quotes(a, b)), 1U) << a << b;
        EXPECT_EQ(count_of(job_with(b + " " + a), "GJF-R010", in_quotes(a, b)), 1U) << a << b;
        EXPECT_EQ(count_of(job_with(a), "GJF-R010", "") + count_of(job_with(b), "GJF-R010", ""), 0U) << a << b;
    }
}

TEST(Exclusions, OfOtherWordsAreFoundRowByRow) {
    ASSERT_GE(exclusions("words").size(), 8U);
    for (const Exclusion& pair : exclusions("words")) {
        const std::string a(pair.first);
        const std::string b(pair.second);
        const std::string second = b == "oniom" ? "oniom(hf/sto-3g:uff)" : b;
        EXPECT_EQ(count_of(job_with(a + " " + second), "GJF-R008", in_quotes(a, b)), 1U) << a << b;
        EXPECT_EQ(count_of(job_with(second + " " + a), "GJF-R008", in_quotes(a, b)), 1U) << a << b;
        EXPECT_EQ(count_of(job_with(a), "GJF-R008", "") + count_of(job_with(second), "GJF-R008", ""), 0U) << a << b;
    }
}

TEST(Exclusions, AreFoundUnderOtherSpellings) {
    EXPECT_EQ(count_of(job_with("symm nosymm"), "GJF-R008", in_quotes("symmetry", "nosymm")), 1U);
    EXPECT_EQ(count_of(job_with("nosymmetry symmetry"), "GJF-R008", in_quotes("symmetry", "nosymm")), 1U);
    EXPECT_EQ(count_of(job_with("opt=(rcfc,CalcFC)"), "GJF-R008", in_quotes("calcfc", "rcfc")), 1U);
}

}  // namespace

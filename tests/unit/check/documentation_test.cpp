// What is said of the codes: each has its text and its jobs, the jobs behave as told, and no other code is given or told of.
#include <gjf/core/check/checker.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <vector>

using namespace quor::input::gaussian;

namespace {

const std::filesystem::path source_root = QUOR_GJF_SOURCE_DIR;

// Returns what the first group of a pattern matches in a file.
std::set<std::string> all_matches(const std::filesystem::path& path, const std::string& pattern) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    const std::string text(std::istreambuf_iterator<char>(file), {});
    const std::regex regex(pattern);
    std::set<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), regex), end; match != end; ++match) {
        found.insert((*match)[1]);
    }
    return found;
}

std::set<std::string> registered() {
    std::set<std::string> codes;
    for (const CheckDescription& description : check_descriptions()) {
        EXPECT_TRUE(codes.insert(description.code).second) << description.code;
    }
    return codes;
}

bool raises(const std::string& text, const std::string& code) {
    CheckOptions options;
    options.path = (source_root / "examples/forms/included_basis.gjf").string();
    if (code.compare(0, 5, "GJF-X") == 0) {
        options.limits = {std::int64_t{64} << 30, 32, {"scf=qc"}, {"%chk"}};
    }
    const std::vector<Finding> findings = check_text(text, options);
    return std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) { return finding.code == code; });
}

}  // namespace

TEST(CheckTexts, TellOfTheRegisteredCodesAlone) {
    EXPECT_EQ(all_matches(source_root / "resources/knowledge/checks.md", "\n### (GJF-[A-Z][0-9]{3}) "), registered());
}

TEST(CheckTexts, AreThereForEveryCode) {
    for (const CheckDescription& description : check_descriptions()) {
        EXPECT_FALSE(description.title.empty()) << description.code;
        EXPECT_GT(description.explanation.size(), 80U) << description.code;
        EXPECT_EQ(description.explanation.find('#' + std::string("##")), std::string::npos) << description.code;
    }
}

TEST(CheckTexts, RaiseTheCodeByTheWrongJobAndNotByTheRightOne) {
    for (const CheckDescription& description : check_descriptions()) {
        // Two files that begin one checkpoint, and a checkpoint that is not there, are found by the tool alone.
        const bool is_of_files = description.code == "GJF-L010" || description.code == "GJF-L015";
        EXPECT_TRUE(raises(description.wrong_job, description.code) || is_of_files) << description.code << " in\n"
                                                                                    << description.wrong_job;
        EXPECT_FALSE(raises(description.right_job, description.code)) << description.code << " in\n"
                                                                      << description.right_job;
    }
}

TEST(CheckTexts, HaveRightJobsThatGaussianTakes) {
    for (const CheckDescription& description : check_descriptions()) {
        for (const Finding& finding : check_text(description.right_job)) {
            EXPECT_NE(finding.severity, Severity::Error)
                << description.code << ": " << finding.code << " " << finding.message;
        }
    }
}

// The list of a family stands at the end of its source, so a code that is given and not listed would be known to nobody.
TEST(CheckTexts, NameEveryCodeThatASourceGives) {
    std::set<std::string> given;
    for (const auto& entry :
         std::filesystem::directory_iterator(source_root / "src/input/backends/gaussian/gjf/core/check")) {
        given.merge(all_matches(entry.path(), "add\\(\\s*\"(GJF-[A-Z][0-9]{3})\""));
    }
    const std::set<std::string> known = registered();
    EXPECT_GT(given.size(), 60U);
    for (const std::string& code : given) {
        EXPECT_EQ(known.count(code), 1U) << code;
    }
}

// The documentation of the checks explains every code, under the heading that the library knows it by, and no other.
#include <gjf/core/check/checker.hpp>

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <string>

using namespace quor::input::gaussian;

TEST(CheckDocumentation, HasAParagraphForEveryCode) {
    std::ifstream file(std::string(QUOR_GJF_SOURCE_DIR) + "/docs/checks.md");
    ASSERT_TRUE(file.is_open());
    std::map<std::string, std::string> titles;
    std::map<std::string, std::string> paragraphs;
    std::string code;
    for (std::string line; std::getline(file, line);) {
        if (line.rfind("### GJF-", 0) == 0) {
            code = line.substr(4, 8);
            titles[code] = line.substr(13);
        } else if (line.rfind("## ", 0) == 0) {
            code.clear();
        } else if (!code.empty()) {
            paragraphs[code] += line + "\n";
        }
    }
    EXPECT_EQ(titles.size(), check_descriptions().size());
    for (const CheckDescription& description : check_descriptions()) {
        EXPECT_EQ(titles[description.code], description.title) << description.code;
        EXPECT_NE(paragraphs[description.code].find("Example: "), std::string::npos) << description.code;
        EXPECT_NE(paragraphs[description.code].find("Silence: "), std::string::npos) << description.code;
        EXPECT_GT(paragraphs[description.code].size(), 120U) << description.code;
    }
}

// Gaussian's messages, one by one: a code foresees each, and its page names it, or the text cannot show it.
#include <gjf/core/check/checker.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "../../support/files.hpp"

using namespace quor::input::gaussian;

namespace {

const CheckDescription* find_description(const std::string& code) {
    const std::vector<CheckDescription>& all = check_descriptions();
    const auto found = std::find_if(all.begin(), all.end(), [&](const auto& each) { return each.code == code; });
    return found == all.end() ? nullptr : &*found;
}

TEST(MessagesOfGaussian, AreForeseenByCodesOrCannotBeSeen) {
    std::istringstream table(quor::test::bytes_of(QUOR_GJF_SOURCE_DIR "/resources/knowledge/messages.tsv"));
    std::string line;
    std::getline(table, line);
    EXPECT_EQ(line, "message\tcodes\tunseen_because\tsource\tcertainty");
    const std::set<std::string> reasons = {"only the run shows it", "it is in other files", "it depends on the machine"};
    std::set<std::string> messages;
    while (std::getline(table, line)) {
        std::istringstream cells(line);
        std::string message;
        std::string listed;
        std::string unseen;
        std::getline(std::getline(std::getline(cells, message, '\t'), listed, '\t'), unseen, '\t');
        EXPECT_TRUE(messages.insert(message).second) << message;
        EXPECT_EQ(listed.empty(), reasons.count(unseen) == 1) << message;
        std::istringstream codes(listed);
        bool is_named = listed.empty();
        for (std::string code; codes >> code;) {
            const CheckDescription* description = find_description(code);
            ASSERT_NE(description, nullptr) << code;
            is_named = is_named || description->gaussian_says.find(message) != std::string::npos;
        }
        EXPECT_TRUE(is_named) << "no page names it: " << message;
    }
    EXPECT_EQ(messages.size(), 65U);
}

// What stops Gaussian is named with what Gaussian says; some stops have no message of their own that is known.
TEST(MessagesOfGaussian, AreNamedByTheCodesThatStop) {
    const std::set<std::string> silent = {"GJF-T005", "GJF-T006", "GJF-T009", "GJF-T011", "GJF-T013", "GJF-B004",
                                          "GJF-L001", "GJF-R012", "GJF-M001", "GJF-M004", "GJF-M014", "GJF-S003",
                                          "GJF-S007", "GJF-S016", "GJF-S018", "GJF-S019", "GJF-S021", "GJF-S022",
                                          "GJF-S024", "GJF-S026", "GJF-S027", "GJF-S028", "GJF-S031", "GJF-M016"};
    for (const CheckDescription& description : check_descriptions()) {
        const std::vector<Finding> findings = check_text(description.wrong_job);
        const bool stops = std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) {
            return finding.code == description.code && finding.severity == Severity::Error;
        });
        const bool is_named =
            !description.gaussian_says.empty() || description.explanation.find("Gaussian ") != std::string::npos;
        EXPECT_TRUE(!stops || is_named) << description.code << " does not say what Gaussian does";
        EXPECT_EQ(stops && description.gaussian_says.empty(), silent.count(description.code) == 1) << description.code;
    }
}

}  // namespace

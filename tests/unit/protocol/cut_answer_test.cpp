// What is left of answers that are too long.
#include <gjf/core/protocol/cut_answer.hpp>

#include <gtest/gtest.h>

#include <numeric>
#include <string>

namespace {

using namespace quor::input::gaussian;

Message numbers(int count) {
    std::vector<int> list(static_cast<std::size_t>(count), 7);
    return list;
}

TEST(CutAnswer, LeavesShortOnesAlone) {
    for (const char* text : {"{}", R"({"a":[1,2,3],"b":"x\ny\n"})"}) {
        Message answer = Message::parse(text);
        cut_answer(answer, 1500);
        EXPECT_EQ(message_text(answer), text);
    }
}

TEST(CutAnswer, CountsWhatIsNotThere) {
    std::string lines;
    for (int i = 0; i < 1000; ++i) {
        lines += "0123456\n";
    }
    const struct {
        Message answer;
        const char* left;
    } rows[] = {
        {{{"file", "a"}, {"list", numbers(2000)}}, R"({"/list":1761})"},
        {{{"file", "a"}, {"diff", lines}}, R"({"/diff":947})"},
        {{{"diff", std::string(9000, 'x')}}, R"({"/diff":1})"},
        {{{"jobs", Message::array({{{"atoms", numbers(2000)}}, {{"atoms", numbers(1)}}})}},
         R"({"/jobs/0/atoms":1761,"/jobs":1})"},
        {{{"short", numbers(10)}, {"a", numbers(2000)}, {"b", numbers(2000)}}, R"({"/a":1886,"/b":1886})"},
    };
    for (const auto& row : rows) {
        Message answer = row.answer;
        cut_answer(answer, 1500);
        EXPECT_EQ(message_text(answer["left"]), row.left);
        EXPECT_LE(message_text(answer).size(), 1500U);
        if (answer.contains("file")) {
            EXPECT_EQ(answer["file"], "a");
        }
    }
}

}  // namespace

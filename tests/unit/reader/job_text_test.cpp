// Texts read whole, and cut into those of their jobs.
#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/reader/job_text.hpp>

#include "../../support/files.hpp"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {
namespace {

TEST(JobText, IsCutAtSeparatorLinesByteForByte) {
    const std::string mark = "\xEF\xBB\xBF";
    const struct {
        std::string text;
        std::vector<std::string_view> jobs;
    } cases[] = {
        {"", {}},
        {"\n \t\r\n", {}},
        {"--Link1--\n--Link1--", {}},
        {"a", {"a"}},
        {"a\n\n--link1--\nb\n", {"a\n\n", "b\n"}},
        {"a\r\n  --LINK1-- \t\r\n\r\nb\r\n\r\n", {"a\r\n", "\r\nb\r\n\r\n"}},
        {"\n--Link1--\n\n--Link1--\nb", {"b"}},
        {"a --Link1--\n--Link1-\n--Link1--x\n", {"a --Link1--\n--Link1-\n--Link1--x\n"}},
        {mark + "a\n--Link1--\n" + mark + "b\n",
         {"\xEF\xBB\xBF"
          "a\n",
          "\xEF\xBB\xBF"
          "b\n"}},
        {mark + "--Link1--\nb\n", {"b\n"}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(job_texts(c.text), c.jobs) << c.text;
    }
}

TEST(JobText, IsReadWithoutItsByteOrderMark) {
    EXPECT_EQ(without_byte_order_mark("\xEF\xBB\xBF# hf"), "# hf");
    EXPECT_EQ(without_byte_order_mark("\xEF\xBB# hf"), "\xEF\xBB# hf");
    EXPECT_EQ(without_byte_order_mark(""), "");
}

TEST(JobText, IsReadToItsEnd) {
    const std::string text = std::string(40'000, 'x') + '\0' + "\r\n";
    std::istringstream stream(text);
    EXPECT_EQ(read_stream(stream), text);
    const test::TemporaryFolder folder;
    EXPECT_EQ(read_whole_file(folder.write("a.gjf", text)), text);
}

TEST(JobText, OfAFileThatCannotBeReadIsRefused) {
    const test::TemporaryFolder folder;
    for (const std::string& path : std::vector<std::string>{folder / "none", folder.path(), ""}) {
        try {
            read_whole_file(path);
            ADD_FAILURE() << path;
        } catch (const GJFParseException& error) {
            EXPECT_EQ(error.what(), "GJF Parse Error: Cannot open file: " + path);
        }
    }
}

}  // namespace
}  // namespace quor::input::gaussian

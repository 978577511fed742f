// Stretches of a text, and the line and column of a byte.
#include <gjf/core/text/span.hpp>

#include <gtest/gtest.h>

namespace quor::input::gaussian {
namespace {

TEST(Span, NamesAStretchOfItsText) {
    const std::string_view text = "# hf opt";
    const Span word = span_of(text, text.substr(5));
    EXPECT_EQ(word, (Span{5, 3}));
    EXPECT_EQ(word.end(), 8U);
    EXPECT_EQ(word.in(text), "opt");
    EXPECT_TRUE(span_of(text, text.substr(8)).empty());
    EXPECT_NE(word, (Span{5, 2}));
}

TEST(LineAndColumn, CountsBytesFromOneWithoutTheByteOrderMark) {
    const struct {
        std::string_view text;
        std::size_t offset;
        std::size_t line;
        std::size_t column;
    } rows[] = {
        {"", 0, 1, 1},
        {"ab\ncd", 0, 1, 1},
        {"ab\ncd", 2, 1, 3},
        {"ab\ncd", 3, 2, 1},
        {"ab\ncd", 5, 2, 3},
        {"ab\ncd", 99, 2, 3},
        {"ab\r\ncd", 3, 1, 4},
        {"ab\r\ncd", 4, 2, 1},
        {"\n\n\nx", 3, 4, 1},
        {"\xEF\xBB\xBF# hf", 3, 1, 1},
        {"\xEF\xBB\xBF# hf", 5, 1, 3},
        {"\xEF\xBB\xBF# hf", 0, 1, 1},
        {"\xEF\xBB\xBF#\nx", 5, 2, 1},
        {"\xC3\xA4x", 2, 1, 3},
    };
    for (const auto& row : rows) {
        const LineAndColumn found = line_and_column(row.text, row.offset);
        EXPECT_EQ(found.line, row.line) << row.text << " at " << row.offset;
        EXPECT_EQ(found.column, row.column) << row.text << " at " << row.offset;
    }
}

}  // namespace
}  // namespace quor::input::gaussian

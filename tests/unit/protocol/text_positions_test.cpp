// Lines and characters of texts with every kind of line end and character.
#include <gjf/core/protocol/text_positions.hpp>

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace quor::input::gaussian;

struct PlaceRow {
    const char* text;
    std::size_t offset;
    LinePosition utf16;
    LinePosition bytes;
};

TEST(TextPositions, CountUnitsOfLines) {
    const PlaceRow rows[] = {
        {"", 0, {0, 0}, {0, 0}},
        {"ab\ncd", 3, {1, 0}, {1, 0}},
        {"ab\r\ncd", 4, {1, 0}, {1, 0}},
        {"ab\rcd", 3, {1, 0}, {1, 0}},
        {"ab\n", 3, {1, 0}, {1, 0}},
        {"\xC3\xA5x", 2, {0, 1}, {0, 2}},
        {"\xF0\x9F\x98\x80x", 4, {0, 2}, {0, 4}},
        {"\xE2\x82\xACx\ny", 3, {0, 1}, {0, 3}},
        {"\xFFx", 1, {0, 1}, {0, 1}},
    };
    for (const PlaceRow& row : rows) {
        const TextPositions utf16(row.text, ColumnUnit::Utf16);
        const TextPositions bytes(row.text, ColumnUnit::Bytes);
        EXPECT_EQ(utf16.position(row.offset), row.utf16) << row.text;
        EXPECT_EQ(bytes.position(row.offset), row.bytes) << row.text;
        EXPECT_EQ(utf16.offset(row.utf16), row.offset) << row.text;
        EXPECT_EQ(bytes.offset(row.bytes), row.offset) << row.text;
    }
}

TEST(TextPositions, AreClampedToTheText) {
    const TextPositions places("ab\r\n\xF0\x9F\x98\x80", ColumnUnit::Utf16);
    EXPECT_EQ(places.offset({0, 99}), 2U);
    EXPECT_EQ(places.offset({1, 1}), 4U) << "half of a character";
    EXPECT_EQ(places.offset({1, 99}), 8U);
    EXPECT_EQ(places.offset({9, 0}), 8U);
    EXPECT_EQ(places.position(99), (LinePosition{1, 2}));
    EXPECT_EQ(places.position(3), (LinePosition{0, 2})) << "between carriage return and line feed";
    EXPECT_EQ(places.position(6), (LinePosition{1, 0})) << "within a character";
}

}  // namespace

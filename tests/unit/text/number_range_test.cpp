// Ranges of numbers: their form, their order and their bounds.
#include <gjf/core/text/number_range.hpp>

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>

namespace quor::input::gaussian {
namespace {

constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();

std::string text_of(const std::optional<NumberRange>& range) {
    return range ? std::to_string(range->first) + ".." + std::to_string(range->last) : "none";
}

TEST(NumberRanges, AreReadWithinTheirBounds) {
    const struct {
        std::string field;
        std::int64_t lowest;
        std::int64_t highest;
        std::string wanted;
    } cases[] = {
        {"4", 1, 9, "4..4"},
        {"3-7", 1, 9, "3..7"},
        {"1-9", 1, 9, "1..9"},
        {"7-7", 1, 9, "7..7"},
        {"+3", 1, 9, "3..3"},
        {"007-08", 1, 9, "7..8"},
        {"0", 1, 9, "none"},
        {"0", 0, 9, "0..0"},
        {"0-3", 1, 9, "none"},
        {"10", 1, 9, "none"},
        {"3-10", 1, 9, "none"},
        {"3-10", 1, highest, "3..10"},
        {"7-3", 1, 9, "none"},
        {"-3", 1, 9, "none"},
        {"-3", lowest, highest, "-3..-3"},
        {"-3-4", lowest, highest, "-3..4"},
        {"3--4", lowest, highest, "none"},
        {"-4--3", lowest, highest, "-4..-3"},
        {"9223372036854775807", 1, highest, "9223372036854775807..9223372036854775807"},
        {"9223372036854775808", 1, highest, "none"},
        {"1-9223372036854775808", 1, highest, "none"},
        {"", lowest, highest, "none"},
        {"-", lowest, highest, "none"},
        {"--", lowest, highest, "none"},
        {"3-", lowest, highest, "none"},
        {"3-4-5", lowest, highest, "none"},
        {"3 - 4", lowest, highest, "none"},
        {"3:4", lowest, highest, "none"},
        {"3.0", lowest, highest, "none"},
        {"C", lowest, highest, "none"},
        {"3-C", lowest, highest, "none"},
        {"3,4", lowest, highest, "none"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(text_of(to_number_range(c.field, c.lowest, c.highest)), c.wanted) << c.field;
    }
    EXPECT_EQ(text_of(to_number_range("3-70", 1)), "3..70");
}

TEST(NumberRanges, HaveAFormWhateverTheirNumbers) {
    for (const char* field : {"4", "3-7", "7-3", "0", "-3", "-3-4", "3--4", "+1", "9999999999999999999999-1"}) {
        EXPECT_TRUE(is_number_range_text(field)) << field;
    }
    for (const char* field : {"", "-", "--", "3-", "3-4-5", "3.0", "x", "3-x", "C1", "3:4", "1e3", "3 -4"}) {
        EXPECT_FALSE(is_number_range_text(field)) << field;
    }
}

}  // namespace
}  // namespace quor::input::gaussian

// Numbers and integers, whole fields of them, whatever the locale.
#include <gjf/core/text/number.hpp>

#include <gtest/gtest.h>

#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

#include <locale.h>
#include <stdlib.h>

namespace quor::input::gaussian {
namespace {

const double infinity = std::numeric_limits<double>::infinity();

TEST(Numbers, AreReadAsStrtodReadsThem) {
    const std::pair<std::string, double> cases[] = {
        {"0", 0},
        {"+0.28", 0.28},
        {"-1.5", -1.5},
        {"1e-3", 1e-3},
        {"1.", 1},
        {".5", 0.5},
        {"-.5E+2", -50},
        {" 7", 7},
        {"\t\n\v7", 7},
        {"0x10", 16},
        {"0X1.8p1", 3},
        {"-0x.8", -0.5},
        {"inf", infinity},
        {"-Infinity", -infinity},
        {"1e999", infinity},
        {"-1e999", -infinity},
        {"1e-999", 0},
        {"0.0000001e99999999999999999999", infinity},
        {"1e-99999999999999999999", 0},
        {"0x1p5000", infinity},
        {"0x1p-5000", 0},
        {"1000000000000000000000000000000", 1e30},
    };
    for (const auto& [text, value] : cases) {
        ASSERT_TRUE(to_number(text).has_value()) << text;
        EXPECT_EQ(*to_number(text), value) << text;
    }
    for (const char* text : {"nan", "NAN", "-nan", "nan()", "nan(a_1)"}) {
        ASSERT_TRUE(to_number(text).has_value()) << text;
        EXPECT_TRUE(std::isnan(*to_number(text)));
    }
}

TEST(Numbers, RefuseAllElse) {
    for (const char* text : {"",
                             " ",
                             "+",
                             "-",
                             ".",
                             "e5",
                             "1 ",
                             "1e",
                             "1e+",
                             "1d3",
                             "1,5",
                             "--1",
                             "+-1",
                             "- 1",
                             "1.2.3",
                             "0x",
                             "0xg",
                             "0x.",
                             "infin",
                             "infinit",
                             "nan(",
                             "nan(-)",
                             "nanx",
                             "x1",
                             "1x",
                             "'1'",
                             "1_0",
                             "\xEF\xBB\xBF"
                             "1"}) {
        EXPECT_FALSE(to_number(text).has_value()) << text;
        EXPECT_FALSE(is_number_text(text)) << text;
    }
    EXPECT_FALSE(to_number(std::string_view("1\0", 2)).has_value());
}

TEST(Numbers, AgreeWithStrtodOnRandomText) {
    const locale_t c_locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
    std::mt19937 random(7);
    const std::string alphabet = "0123456789.+-eExXpPnaif() ";
    for (int i = 0; i < 200'000; ++i) {
        std::string text;
        for (std::size_t n = 1 + random() % 8; n-- > 0;) {
            text += alphabet[random() % alphabet.size()];
        }
        char* end = nullptr;
        const double expected = ::strtod_l(text.c_str(), &end, c_locale);
        const bool whole = end == text.c_str() + text.size() && end != text.c_str();
        ASSERT_EQ(to_number(text).has_value(), whole) << text;
        if (whole && !std::isnan(expected)) {
            // A magnitude that only a denormal number comes near may be given as zero.
            EXPECT_TRUE(*to_number(text) == expected || std::abs(expected) < 1e-307) << text;
        }
    }
    ::freelocale(c_locale);
}

TEST(Integers, AreWholeDecimalNumbers) {
    for (const char* text : {"0", "-1", "+5", " 7", "007", "99999999999999999999999"}) {
        EXPECT_TRUE(is_integer_text(text)) << text;
    }
    for (const char* text : {"", "-", "+", "1.0", "1 ", "0x1", "1e3", "a", "--1", "+-1", "1-2"}) {
        EXPECT_FALSE(is_integer_text(text)) << text;
        EXPECT_FALSE(to_int64(text).has_value()) << text;
    }
    EXPECT_EQ(to_int64("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    EXPECT_FALSE(to_int64("9223372036854775808").has_value());
    EXPECT_EQ(to_int32("+2147483647"), 2147483647);
    EXPECT_FALSE(to_int32("2147483648").has_value());
    EXPECT_FALSE(to_int32("+-1").has_value());
    EXPECT_EQ(leading_int32("8abc"), 8);
    EXPECT_EQ(leading_int32("-3 4"), -3);
    EXPECT_FALSE(leading_int32("abc").has_value());
    EXPECT_FALSE(leading_int32("99999999999").has_value());
    EXPECT_FALSE(leading_int32("").has_value());
}

// The nearest double, whatever the locale.
double nearest(const std::string& text) {
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

TEST(PlainDecimals, EndWhereTheirDigitsDo) {
    struct Case {
        const char* text;
        std::size_t length;
        bool whole;
        double value;
    };
    const Case cases[] = {
        {"7", 1, true, 7},
        {"-12 ", 3, true, -12},
        {"+0.5,1", 4, false, 0.5},
        {"1.", 2, false, 1},
        {".25x", 3, false, 0.25},
        {"1.5.5", 3, false, 1.5},
        {"12345678.12345678", 17, false, 12345678.12345678},
        {"0.12345678 0.5", 10, false, 0.12345678},
        {"0.1234567 0.5", 9, false, 0.1234567},
        {"9007199254740992", 16, true, 9007199254740992.0},
        {"0.9007199254740992", 18, false, 0.9007199254740992},
        {"00000000000000000.001", 21, false, 0.001},
        {"000000000000000.0015", 20, false, 0.0015},
        {"9007199254740993", 16, true, 9007199254740992.0},  // no binary number: the nearest
        {"123456789012345678901", 21, true, 123456789012345678901.0},
        {"99999999999999999999999999999999", 32, true, 1e32},
        {"1e5", 1, true, 1},
        {"-1.5d3", 4, false, -1.5},
        {"", 0, false, 0},
        {"-", 0, false, 0},
        {".", 0, false, 0},
        {"-.", 0, false, 0},
        {"--1", 0, false, 0},
        {" 1", 0, false, 0},
        {"x1", 0, false, 0},
        {"e5", 0, false, 0},
        {"inf", 0, false, 0},
        {"-nan", 0, false, 0},
    };
    const std::string beyond_double(400, '9');
    EXPECT_EQ(leading_plain_decimal(beyond_double).length, 0u);
    EXPECT_EQ(leading_plain_decimal("." + std::string(400, '0') + "1").length, 0u);
    for (const Case& expected : cases) {
        const PlainDecimal decimal = leading_plain_decimal(expected.text);
        EXPECT_EQ(decimal.length, expected.length) << expected.text;
        EXPECT_EQ(is_integer_text(std::string_view(expected.text).substr(0, decimal.length)), expected.whole)
            << expected.text;
        EXPECT_EQ(decimal.value, expected.value) << expected.text;
    }
}

TEST(Numbers, OfFewDigitsAreTheNearestNumbers) {
    std::mt19937_64 random(15);
    for (int turn = 0; turn < 200000; ++turn) {
        const std::size_t count = 1 + random() % 18;
        std::string text;
        for (std::size_t i = 0; i < count; ++i) {
            text += static_cast<char>('0' + random() % 10);
        }
        text.insert(random() % (count + 1), ".");
        ASSERT_EQ(to_number(text), nearest(text)) << text;
        ASSERT_EQ(to_number("-" + text), -nearest(text)) << text;
    }
    for (const char* wrong : {".", "-.", "1.2.3", "..", "1-2", "12a", "1,5", "+-1"}) {
        EXPECT_FALSE(to_number(wrong).has_value()) << wrong;
    }
    EXPECT_TRUE(std::signbit(*to_number("-0.000")));
}

TEST(Numbers, AreTheSameUnderACommaLocale) {
    const char* locale = nullptr;
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "de_DE"}) {
        locale = locale != nullptr ? locale : std::setlocale(LC_ALL, name);
    }
    if (locale == nullptr) {
        GTEST_SKIP() << "no locale with a decimal comma is installed";
    }
    EXPECT_EQ(to_number("1.5"), 1.5);
    EXPECT_FALSE(to_number("1,5").has_value());
    EXPECT_EQ(to_number("1e999"), infinity);
    std::setlocale(LC_ALL, "C");
}

}  // namespace
}  // namespace quor::input::gaussian

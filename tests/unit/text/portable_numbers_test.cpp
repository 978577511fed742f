// Numbers where the standard library has no conversions of them: the same as where it has, text by text and bit by bit.
#include <gjf/core/text/portable_numbers.hpp>

#include <gjf/core/text/number_writing.hpp>

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <tuple>
#include <vector>

namespace quor::input::gaussian {
namespace {

constexpr std::chars_format formats[] = {std::chars_format::general, std::chars_format::fixed, std::chars_format::hex};

// What a conversion says of a text: the characters that it takes, its error, the bits of the number.
using Said = std::tuple<std::ptrdiff_t, std::errc, std::uint64_t>;

template <typename Convert>
Said said_of(const std::string& text, std::chars_format format, Convert convert) {
    double value = -7;
    const std::from_chars_result result = convert(text.data(), text.data() + text.size(), value, format);
    return {result.ptr - text.data(), result.ec, std::bit_cast<std::uint64_t>(value)};
}

bool is_read_alike(const std::string& text, std::chars_format format) {
    const auto by_library = [](const char* first, const char* last, double& value, std::chars_format wanted) {
        return std::from_chars(first, last, value, wanted);
    };
    return said_of(text, format, portable::from_chars) == said_of(text, format, by_library);
}

TEST(PortableNumbers, AreReadAlike) {
    for (const char* text : {"",
                             ".",
                             "-",
                             "-.",
                             "+1",
                             " 1",
                             "1",
                             "-1",
                             "1.",
                             ".5",
                             "-.5",
                             "0.0001",
                             "1.5.2",
                             "1e",
                             "1e+",
                             "1e5",
                             "1E-5x",
                             "1d5",
                             "1e5.5",
                             "0",
                             "-0",
                             "0.0e999",
                             "1e22",
                             "1e23",
                             "9007199254740993",
                             "9007199254740992",
                             "123456789012345678901234567890",
                             "0.1000000000000000055511151231257827",
                             "1e308",
                             "1.7976931348623159e308",
                             "-1e309",
                             "1e-400",
                             "1e-320",
                             "4.9e-324",
                             "2.4703282292062327208e-324",
                             "2.4703282292062327209e-324",
                             "2.2250738585072011e-308",
                             "1e99999999999999999999",
                             "0.000000000000000000000012345",
                             "0.00000000000000000000001",
                             "8",
                             "f",
                             "F.8p3",
                             "1.8p1",
                             ".8",
                             "1p-1074",
                             "1p-1075",
                             "1.8p-1075",
                             "1p1023",
                             "0p0",
                             "abcdef012345678",
                             "1.fffffffffffffp1023",
                             "12x",
                             "x12",
                             "1,5",
                             "e5",
                             "p5"}) {
        for (const std::chars_format format : formats) {
            EXPECT_TRUE(is_read_alike(text, format)) << text << ", format " << static_cast<int>(format);
        }
    }
}

// As job files have them, and any bits at all, the powers of two with their neighbours among them.
std::vector<double> many_numbers() {
    std::mt19937_64 random(20);  // the same each time
    std::vector<double> numbers = {0.0, -0.0, 0.0001, 1e-5, 0.5, 1.5, 2.5, 0.125, 1e21, 1e22, 1e23, 123456.5, 9.5, 99.99995};
    for (int exponent = -1074; exponent <= 1023; ++exponent) {
        const double power = std::ldexp(1.0, exponent);
        numbers.insert(numbers.end(), {power, std::nextafter(power, 0), -std::nextafter(power, 2 * power)});
    }
    while (numbers.size() < 10'000) {
        numbers.push_back(std::bit_cast<double>(random()));
    }
    while (numbers.size() < 100'000) {
        const double whole =
            static_cast<double>(static_cast<std::int64_t>(random() % 2'000'000'000'000) - 1'000'000'000'000);
        numbers.push_back(whole / std::pow(10.0, static_cast<double>(random() % 13)));
    }
    return numbers;
}

bool is_plain(double number) { return std::fabs(number) < 1e22 && (number == 0 || std::fabs(number) > 1e-22); }

TEST(PortableNumbers, AreReadAlikeAHundredThousandTimes) {
    char digits[400];
    const auto expect_alike = [&](const char* end, std::chars_format format) {
        const std::string text(static_cast<const char*>(digits), end);
        ASSERT_TRUE(is_read_alike(text, format)) << text;
    };
    for (const double number : many_numbers()) {
        if (std::isfinite(number)) {
            expect_alike(std::to_chars(digits, std::end(digits), number).ptr, std::chars_format::general);
            expect_alike(std::to_chars(digits, std::end(digits), number, std::chars_format::hex).ptr,
                         std::chars_format::hex);
        }
        if (is_plain(number)) {
            expect_alike(std::to_chars(digits, std::end(digits), number, std::chars_format::fixed, 6).ptr,
                         std::chars_format::fixed);
        }
    }
}

TEST(PortableNumbers, AreWrittenAlikeAHundredThousandTimes) {
    for (const double number : many_numbers()) {
        if (std::isnan(number)) {
            continue;
        }
        ASSERT_EQ(portable::shortest(number), shortest_text(number)) << std::hexfloat << number;
        ASSERT_EQ(portable::printed("%.*g", 6, number), general_text(number)) << std::hexfloat << number;
        if (is_plain(number)) {
            ASSERT_EQ(portable::printed("%.*f", 6, number), fixed_text(number, 6)) << std::hexfloat << number;
        }
    }
    for (const double number :
         {0.0, -0.5, 2.5, 1e-300, 1e300, std::numeric_limits<double>::max(), std::numeric_limits<double>::infinity()}) {
        for (const int decimals : {0, 1, 8, 60}) {
            EXPECT_EQ(portable::printed("%.*f", decimals, number), fixed_text(number, decimals)) << number;
        }
    }
}

}  // namespace
}  // namespace quor::input::gaussian

// Trimming, folding, lines, comments and fields.
#include <gjf/core/text/text.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quor::input::gaussian {
namespace {

using Views = std::vector<std::string_view>;

TEST(Text, IsTrimmedOfFourCharacters) {
    const std::pair<std::string, std::string> cases[] = {{"", ""},           {" \t\r\n", ""},
                                                         {" a b\t", "a b"},  {"\va\f", "\va\f"},
                                                         {"\r\na\r\n", "a"}, {std::string("\0 ", 2), std::string("\0", 1)}};
    for (const auto& [text, trimmed] : cases) {
        EXPECT_EQ(trim_view(text), trimmed);
    }
}

TEST(Text, FoldsAsciiLettersAlone) {
    EXPECT_EQ(to_lower_copy("AZaz09-\xC3\x84\xFF"), "azaz09-\xC3\x84\xFF");
    EXPECT_TRUE(equals_folded("--LINK1--", "--link1--"));
    EXPECT_FALSE(equals_folded("--link1-", "--link1--"));
    EXPECT_TRUE(contains_folded("abc $End x", "$end"));
    EXPECT_FALSE(contains_folded("$en", "$end"));
    EXPECT_TRUE(contains_folded("", ""));
}

TEST(Text, IsCutIntoLines) {
    const std::pair<std::string, Views> cases[] = {
        {"", {}},
        {"\n", {""}},
        {"a", {"a"}},
        {"a\n", {"a"}},
        {"a\r\nb", {"a", "b"}},
        {"\r\n\r\n", {"", ""}},
        {"a\r\r\n", {"a\r"}},
        {"a\rb\n", {"a\rb"}},
        {"\n\na", {"", "", "a"}},
    };
    for (const auto& [text, lines] : cases) {
        EXPECT_EQ(split_lines(text), lines);
    }
    const Views lines = {"a", "", "b"};
    EXPECT_EQ(join_lines(lines.data(), lines.size()), "a\n\nb");
    EXPECT_EQ(join_lines(lines.data(), 0), "");
}

TEST(Text, LosesAByteOrderMarkAtItsStart) {
    EXPECT_EQ(skip_byte_order_mark("\xEF\xBB\xBF# hf"), "# hf");
    EXPECT_EQ(skip_byte_order_mark("\xEF\xBB"), "\xEF\xBB");
    EXPECT_EQ(skip_byte_order_mark("a\xEF\xBB\xBF"), "a\xEF\xBB\xBF");
}

TEST(Comments, BeginOutsideQuotes) {
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"a", "a"},
        {"a ! b", "a "},
        {"!", ""},
        {"'!' ! c", "'!' "},
        {"\"a!b\"!", "\"a!b\""},
        {"it's! x", "it's"},
        {"hf/6-31g(d') ! it's", "hf/6-31g(d') "},
        {"'a!", "'a"},
        {"a'b\"c!d'e!", "a'b\"c!d'e"},
    };
    for (const auto& [line, kept] : cases) {
        EXPECT_EQ(without_comment(line), kept) << line;
    }
    EXPECT_TRUE(is_comment_line(" \t! x"));
    EXPECT_FALSE(is_comment_line("a !"));
    EXPECT_FALSE(is_comment_line("  "));
}

TEST(Nesting, NeverDropsBelowZero) {
    NestingTracker nesting;
    for (const char c : std::string(")]}([{")) {
        nesting.advance(c);
    }
    EXPECT_FALSE(nesting.at_top_level());
    for (const char c : std::string("}])")) {
        nesting.advance(c);
    }
    EXPECT_TRUE(nesting.at_top_level());
    nesting.advance('\'');
    nesting.advance('(');
    nesting.advance('"');
    EXPECT_FALSE(nesting.at_top_level());
    nesting.advance('\'');
    EXPECT_TRUE(nesting.at_top_level());
}

TEST(Fields, EndAtSeparatorsOutsideQuotesAndBrackets) {
    struct Case {
        std::string line;
        FieldSeparators separators;
        bool lone_quotes;
        Views fields;
    };
    const auto comma = FieldSeparators::WhiteSpaceAndComma;
    const auto blank = FieldSeparators::WhiteSpace;
    const Case cases[] = {
        {"", comma, true, {}},
        {" ,, \t", comma, true, {}},
        {"a b\tc\vd", blank, true, {"a", "b", "c", "d"}},
        {"a,b", blank, true, {"a,b"}},
        {"C,0.0,,1.0", comma, true, {"C", "0.0", "1.0"}},
        {"C(Fragment=1,ResName=ALA) 0", comma, true, {"C(Fragment=1,ResName=ALA)", "0"}},
        {"a(b c)d e", comma, true, {"a(b c)d", "e"}},
        {"[1 2],{3 4}", comma, true, {"[1 2]", "{3 4}"}},
        {"'a b' \"c,d\"", comma, true, {"'a b'", "\"c,d\""}},
        {"O5' 1 2", comma, true, {"O5'", "1", "2"}},
        {"O5' 1 2", comma, false, {"O5' 1 2"}},
        {"C(PDBName=O5',ResNum=1) 0 1", comma, true, {"C(PDBName=O5',ResNum=1)", "0", "1"}},
        {"H5'' x", comma, true, {"H5''", "x"}},
        {"hf/6-31g(d') opt", blank, false, {"hf/6-31g(d')", "opt"}},
        {"6-31+G(D',p') 'a b'", comma, false, {"6-31+G(D',p')", "'a b'"}},
        {"(xd' a)' b", comma, false, {"(xd' a)' b"}},
        {"a(b c", comma, true, {"a(b c"}},
        {"a) b", comma, true, {"a)", "b"}},
    };
    std::vector<std::string_view> fields;
    for (const Case& c : cases) {
        split_fields(c.line, c.separators, c.lone_quotes, fields);
        EXPECT_EQ(fields, c.fields) << c.line;
    }
}

}  // namespace
}  // namespace quor::input::gaussian

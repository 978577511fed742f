// Cutting routes: quotes, brackets, lists and segments.
#include <gjf/core/route/route_scanner.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quor::input::gaussian {
namespace {

using Texts = std::vector<std::string>;

TEST(RouteScanner, FindsCharactersAtTopLevelAlone) {
    struct Case {
        std::string text;
        char character;
        int position;
    };
    const Case cases[] = {
        {"", '/', -1},           {"a/b", '/', 1},   {"f(a/b)/c", '/', 6}, {"'a/b'/c", '/', 5}, {"\"a'/\"/c", '/', 5},
        {"[a/b]{c/d}", '/', -1}, {"a)/b", '/', 2},  {"(a(b)/c", '/', -1}, {"opt=(a)", '(', 4}, {"f(x(y))", '(', 1},
        {"6-31g(d')/a", '/', 9}, {"a=b=c", '=', 1}, {"'a", '=', -1},      {"a'='b", '=', -1},  {"(]=)=", '=', 4},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(find_top_level_char(c.text, c.character), c.position) << c.text;
    }
}

TEST(RouteScanner, MatchesParentheses) {
    struct Case {
        std::string text;
        std::size_t position;
        int match;
    };
    const Case cases[] = {
        {"", 0, -1},     {"(a)", 0, 2},    {"(a(b)c)", 0, 6}, {"(a(b)c)", 2, 4}, {"(a", 0, -1},
        {"a(b)", 0, -1}, {"(')')", 0, 4},  {"(\")\")", 0, 4}, {"([)]", 0, 2},    {"(a)", 3, -1},
        {"(a)", 99, -1}, {"(a'b)", 0, -1}, {"(d',p')", 0, 6}, {"(a,d'f)", 0, 6},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(find_matching_paren(c.text, c.position), c.match) << c.text;
    }
}

TEST(RouteScanner, SplitsListsAndDropsEmptyPieces) {
    struct Case {
        std::string text;
        char separator;
        Texts pieces;
    };
    const Case cases[] = {
        {"", ',', {}},
        {",, ,", ',', {}},
        {"a", ',', {"a"}},
        {" a , b ", ',', {"a", "b"}},
        {"a,(b,c),d", ',', {"a", "(b,c)", "d"}},
        {"a,'b,c',d", ',', {"a", "'b,c'", "d"}},
        {"a//b", '/', {"a", "b"}},
        {"a,(b,c", ',', {"a", "(b,c"}},
        {"a),b", ',', {"a)", "b"}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(split_top_level_list(c.text, c.separator), c.pieces) << c.text;
    }
}

TEST(RouteScanner, KeepsBlanksInsideBracketsAndQuotes) {
    struct Case {
        std::string route;
        Texts segments;
    };
    const Case cases[] = {
        {"", {}},
        {" \t\n ", {}},
        {"opt=(calcfc, maxcycles=100)  freq", {"opt=(calcfc, maxcycles=100)", "freq"}},
        {"external='my script' opt", {"external='my script'", "opt"}},
        {"a\tb\nc\vd\fe\rf", {"a", "b", "c", "d", "e", "f"}},
        {"a(b c", {"a(b c"}},
        {"a) b", {"a)", "b"}},
        {"a[1 2] {3 4}", {"a[1 2]", "{3 4}"}},
        {"it's a b", {"it's a b"}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(split_route_segments_preserving_nesting(c.route), c.segments) << c.route;
    }
}

TEST(RouteScanner, WalksDeepNestingWithoutEffort) {
    const std::string deep = std::string(1'000'000, '(') + " x " + std::string(1'000'000, ')');
    EXPECT_EQ(split_route_segments_preserving_nesting(deep + " y").size(), 2u);
    EXPECT_EQ(find_matching_paren(deep, 0), static_cast<int>(deep.size()) - 1);
}

}  // namespace
}  // namespace quor::input::gaussian

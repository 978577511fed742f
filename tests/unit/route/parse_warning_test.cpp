// The coded warnings: when each is raised, its exact text and its place.
#include <gjf/core/route/keyword_parser.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "small_vocabulary.hpp"

namespace quor::input::gaussian {
namespace {

using test::keywords_of;
using test::make_parser;
using test::parse_route;
using test::warnings_of;

TEST(WarningCandidates, AreCutAtTheLimit) {
    const std::vector<std::string> seven = {"a", "b", "c", "d", "e", "f", "g"};
    EXPECT_EQ(format_warning_candidates({}, 6), "");
    EXPECT_EQ(format_warning_candidates({"a"}, 6), "a");
    EXPECT_EQ(format_warning_candidates({"a", "b"}, 6), "a, b");
    EXPECT_EQ(format_warning_candidates({seven.begin(), seven.end() - 1}, 6), "a, b, c, d, e, f");
    EXPECT_EQ(format_warning_candidates(seven, 6), "a, b, c, d, e, f, ...");
}

TEST(RouteWarnings, HaveFixedTexts) {
    struct Case {
        std::string route;
        std::string warnings;
    };
    const Case cases[] = {
        {"# opt", ""},
        {"# optc", ""},
        {"# Fo", "GJF-W001 ambiguous route keyword abbreviation 'Fo'; candidates: fopt, force"},
        {"# b3", "GJF-W002 ambiguous method abbreviation 'b3'; candidates: b3lyp, b3p86"},
        {"# Def2", "GJF-W003 ambiguous basis abbreviation 'Def2'; candidates: def2sv, def2tzvp"},
        {"# opt=calc", "GJF-W004 ambiguous option 'calc' for keyword 'opt'; candidates: calcall, calcfc"},
        {"# Opt(Calc=1,Tight)", "GJF-W004 ambiguous option 'Calc' for keyword 'Opt'; candidates: calcall, calcfc"},
        {"# Foo", "GJF-W005 unknown route keyword/method/basis token 'Foo'; preserved as raw"},
        // The basis set gen begins so too: the word is known, and not called unknown.
        {"# g", "GJF-W001 ambiguous route keyword abbreviation 'g'; candidates: g1x, g2x, g3x, g4x, g5x, g6x, ..."},
        {"# opt=5 opt=100", ""},
        {"# opt=(-3)", ""},
        {"# opt=tig", ""},
        {"# opt=unknown", ""},
        {"# foo(calc)", "GJF-W005 unknown route keyword/method/basis token 'foo'; preserved as raw"},
        {"# opt/calc",
         "GJF-W004 ambiguous option 'calc' for keyword 'opt'; candidates: calcall, calcfc\n"
         "GJF-W005 unknown route keyword/method/basis token 'calc'; preserved as raw"},
        {"# hf hf2x", "GJF-W005 unknown route keyword/method/basis token 'hf2x'; preserved as raw"},
        {"# hf b3", "GJF-W005 unknown route keyword/method/basis token 'b3'; preserved as raw"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(warnings_of(parse_route(c.route)), c.warnings) << c.route;
    }
}

TEST(RouteWarnings, KeepUnknownWords) {
    const ParsedKeywords route = parse_route("#p Foo opt BAR=(x)");
    EXPECT_EQ(keywords_of(route), "foo opt");
    EXPECT_EQ(route.keywords[0].raw, "Foo");
}

TEST(RouteWarnings, TellTheirPlaceInTheRoute) {
    const ParsedKeywords route = parse_route("  #p  opt=calc  (a b)  Foo/Bar");
    ASSERT_GE(route.warnings.size(), 3u);
    const std::vector<SourceSpan> expected = {{6, 14, 0}, {16, 21, 1}, {23, 30, 2}, {23, 30, 2}};
    for (std::size_t i = 0; i < route.warnings.size(); ++i) {
        ASSERT_TRUE(route.warnings[i].span.has_value());
        EXPECT_EQ(*route.warnings[i].span, expected[i]) << route.warnings[i].message;
    }
}

TEST(RouteWarnings, AreRecordedOncePerPlace) {
    EXPECT_EQ(parse_route("# foo foo").warnings.size(), 2u);
    EXPECT_EQ(parse_route("# foo/foo").warnings.size(), 1u);
    G16KeywordParser parser = make_parser();
    parser.parse("# foo");
    parser.parse("# foo");
    EXPECT_EQ(parser.get_parsed_keywords().warnings.size(), 1u);
    parser.add_warning("GJF-W005", "m", std::nullopt);
    parser.add_warning("GJF-W005", "m", std::nullopt);
    parser.add_warning("GJF-W005", "m", SourceSpan{0, 1, 0});
    parser.add_warning("GJF-W005", "m", SourceSpan{0, 1, 1});
    parser.add_warning("GJF-W005", "n", SourceSpan{0, 1, 1});
    parser.add_warning("GJF-W004", "n", SourceSpan{0, 1, 1});
    parser.add_warning("GJF-W004", "n", SourceSpan{0, 1, 1});
    EXPECT_EQ(parser.get_parsed_keywords().warnings.size(), 6u);
    parser.reset();
    parser.add_warning("GJF-W004", "n", SourceSpan{0, 1, 1});
    EXPECT_EQ(parser.get_parsed_keywords().warnings.size(), 1u);
}

TEST(RouteWarnings, NeedAVocabularyForOptions) {
    G16KeywordParser parser;
    parser.parse("# opt=calc");
    EXPECT_EQ(warnings_of(parser.get_parsed_keywords()), "");
    parser.warn_ambiguous_option("opt", "calc", std::nullopt);
    EXPECT_EQ(warnings_of(parser.get_parsed_keywords()), "");
}

}  // namespace
}  // namespace quor::input::gaussian

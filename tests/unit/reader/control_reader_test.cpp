// Link 0 lines and routes: what is kept where, and what is refused.
#include <gjf/core/reader/gjf_parser.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quor::input::gaussian {
namespace {

using Texts = std::vector<std::string>;

std::string refusal_of(const Texts& lines) {
    try {
        GJFParser::parse_control_section(lines);
        return "";
    } catch (const GJFParseException& error) {
        return error.what();
    }
}

TEST(ControlLines, AreStoredByTheirKeys) {
    const ControlSection control = GJFParser::parse_control_section(
        {"%Chk=a.chk", "%chk = b c.chk ", "%OLDCHK=o", "%rwf=r,1GB,s,2GB", " %Mem=1 GB", "%NProcShared=16", "%CPU=0-3",
         "%kjob l301", "%int=i", "#P B3LYP/6-31G(d)", "Opt Freq"});
    EXPECT_EQ(control.chk, "b c.chk");
    EXPECT_EQ(control.oldchk, "o");
    EXPECT_EQ(control.rwf, "r,1GB,s,2GB");
    EXPECT_EQ(control.mem, "1 GB");
    EXPECT_EQ(control.nproc, 16);
    EXPECT_EQ(control.cpu, "0-3");
    EXPECT_EQ(control.other_link0_lines, (Texts{"%kjob l301", "%int=i"}));
    EXPECT_EQ(control.route_keywords, (Texts{"#P", "B3LYP/6-31G(d)", "Opt", "Freq"}));
    EXPECT_EQ(control.raw_lines.size(), 11u);
    EXPECT_EQ(control.raw_lines[1], "%chk = b c.chk ");
    ASSERT_TRUE(control.parsed_keywords.has_value());
    EXPECT_EQ(control.parsed_keywords->method, "b3lyp");
}

TEST(ControlLines, TakeProcessorCountsThatBeginWithANumber) {
    const std::pair<std::string, std::optional<std::int32_t>> cases[] = {
        {"%nproc=8", 8},           {"%nproc=8abc", 8},
        {"%nproc= -2", -2},        {"%nproc=abc", std::nullopt},
        {"%nproc=", std::nullopt}, {"%nproc=99999999999", std::nullopt},
        {"%nprocshared=+4", 4},    {"%nproclinda=4", std::nullopt},
    };
    for (const auto& [line, count] : cases) {
        EXPECT_EQ(GJFParser::parse_control_section({line}).nproc, count) << line;
    }
    EXPECT_EQ(GJFParser::parse_control_section({"%nproc=4", "%nprocshared=x"}).nproc, 4);
    EXPECT_EQ(GJFParser::parse_control_section({"%nproc=4", "%nprocshared=6"}).nproc, 6);
}

TEST(ControlLines, WithoutAValueStayAsTheyAre) {
    const ControlSection control = GJFParser::parse_control_section({"%chk=", "%mem = ", "%nosave"});
    EXPECT_FALSE(control.chk.has_value());
    EXPECT_FALSE(control.mem.has_value());
    EXPECT_EQ(control.other_link0_lines, (Texts{"%chk=", "%mem =", "%nosave"}));
    EXPECT_FALSE(control.parsed_keywords.has_value());
}

TEST(Routes, ContinueUntilAnEmptyLine) {
    struct Case {
        Texts lines;
        Texts words;
        Texts other;
    };
    const Case cases[] = {
        {{"# hf", "opt", "freq"}, {"#", "hf", "opt", "freq"}, {}},
        {{"# hf", "", "%nosave"}, {"#", "hf"}, {"%nosave"}},
        {{"# hf", "", "# mp2"}, {"#", "hf"}, {}},
        {{"# hf", "%nosave", "%mem=1GB"}, {"#", "hf", "%nosave"}, {}},
        {{"# hf", " ", "opt"}, {"#", "hf", "opt"}, {}},
        {{"", "%a", "", "# hf"}, {"#", "hf"}, {"%a"}},
        {{"# opt=(calcfc,", " tight) freq"}, {"#", "opt=(calcfc,", "tight)", "freq"}, {}},
        {{"# hf,opt, freq=(a b,c)", "'x y'"}, {"#", "hf", "opt", "freq=(a b,c)", "'x y'"}, {}},
        {{"#", "#", "hf"}, {"#", "#", "hf"}, {}},
        {{"# hf ! opt", "! freq", "scf=tight"}, {"#", "hf", "scf=tight"}, {}},
    };
    for (const Case& c : cases) {
        const ControlSection control = GJFParser::parse_control_section(c.lines);
        EXPECT_EQ(control.route_keywords, c.words);
        EXPECT_EQ(control.other_link0_lines, c.other);
    }
}

TEST(ControlLines, RefuseForeignLinesOutsideTheRoute) {
    const std::pair<Texts, std::string> cases[] = {
        {{"Hello"}, "Hello"},           {{"%chk=a", "  hf"}, "  hf"},
        {{"# hf", "", "opt"}, "opt"},   {{"   "}, "   "},
        {{"! fine", "x"}, "x"},         {{"\xEF\xBB\xBF# hf"}, "\xEF\xBB\xBF# hf"},
        {{"# hf", "", "%a", "b"}, "b"},
    };
    for (const auto& [lines, line] : cases) {
        EXPECT_EQ(refusal_of(lines), "GJF Parse Error: Invalid control line: " + line);
    }
    EXPECT_EQ(refusal_of({"! only", "! comments", ""}), "");
}

TEST(ControlLines, AreToldByTheirFirstCharacter) {
    const std::pair<std::string, bool> cases[] = {{"# hf", true}, {"  %chk=a", true}, {"", false},
                                                  {"  ", false},  {"hf #", false},    {"!#", false}};
    for (const auto& [line, valid] : cases) {
        EXPECT_EQ(GJFParser::is_valid_control_line(line), valid) << line;
    }
}

TEST(RouteWords, AreCutFromALine) {
    EXPECT_EQ(GJFParser::parse_keywords_from_line("#p hf/3-21g(*) opt=(a, b) ! c", ""),
              (Texts{"#p", "hf/3-21g(*)", "opt=(a, b)"}));
    EXPECT_EQ(GJFParser::parse_keywords_from_line(" ,, ", ""), Texts{});
}

TEST(RouteWords, AreJoinedWithoutRepeatedHeads) {
    const std::pair<Texts, std::string> cases[] = {
        {{"#p", "hf/sto-3g", "#", "opt"}, "p hf sto-3g opt"},
        {{"#N", "hf/sto-3g", "#P", "opt", "#t", "#n"}, "n hf sto-3g opt"},
        {{"#", "#b3lyp/6-31g(d)", "#SP"}, " b3lyp 6-31g(d) sp"},
        {{"hf/sto-3g", "#", "opt=(calcfc,", "tight)"}, " hf sto-3g opt"},
    };
    for (const auto& [words, expected] : cases) {
        const ParsedKeywords route = GJFParser::parse_keywords(words, "");
        std::string found = route.print_level + " " + route.method + " " + route.basis_set;
        for (const KeywordInfo& keyword : route.keywords) {
            found += " " + keyword.name;
        }
        EXPECT_EQ(found, expected);
    }
    EXPECT_TRUE(GJFParser::parse_keywords({}, "").keywords.empty());
    EXPECT_EQ(GJFParser::parse_keywords({"#", "hf/sto-3g"}, "/no/such.yaml").method, "");
}

TEST(GeomOptions, FollowTheVocabulary) {
    struct Case {
        std::string route;
        bool check, allcheck;
    };
    const Case cases[] = {
        {"# hf", false, false},
        {"# hf geom=check", true, false},
        {"# hf Geom=Checkpoint", true, false},
        {"# hf geom=(AllCheck)", false, true},
        {"# hf geom=(connectivity,chk)", true, false},
        {"# hf opt=check", false, false},
        {"# hf guess=check", false, false},
        {"# hf GEOM(AllChk)", false, true},
    };
    for (const Case& c : cases) {
        const ControlSection control = GJFParser::parse_control_section({c.route});
        EXPECT_EQ(GJFParser::is_geom_check(control), c.check) << c.route;
        EXPECT_EQ(GJFParser::is_geom_allchk(control), c.allcheck) << c.route;
    }
    EXPECT_TRUE(GJFParser::has_geom_option(GJFParser::parse_control_section({"# geom=connectivity"}), " Connect\t"));
    EXPECT_FALSE(GJFParser::has_geom_option(ControlSection(), "chk"));
}

}  // namespace
}  // namespace quor::input::gaussian

// Words of a route joined to its text, and the way back from the text to the words.
#include <gjf/core/route/joined_route.hpp>

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

using namespace quor::input::gaussian;

namespace {

using Words = std::vector<std::string>;

struct Case {
    Words words;
    const char* text;
};

void check_texts(const std::vector<Case>& cases) {
    for (const Case& c : cases) {
        EXPECT_EQ(join_route_words(c.words).text, c.text);
    }
}

TEST(JoinedRoute, JoinsWordsWithBlanks) {
    check_texts({
        {{}, ""},
        {{"#"}, "#"},
        {{"#p", "hf/sto-3g", "opt"}, "#p hf/sto-3g opt"},
        {{"#p hf/sto-3g", "opt=(a, b)"}, "#p hf/sto-3g opt=(a, b)"},
        {{"#", "hf", "", "opt"}, "# hf  opt"},
        {{"#", "hf  opt"}, "# hf  opt"},
    });
}

TEST(JoinedRoute, LeavesRepeatedHeadsOut) {
    check_texts({
        {{"#p", "hf", "#", "opt"}, "#p hf opt"},
        {{"#p", "hf", "#P", "#t", "opt", "#n"}, "#p hf opt"},
        {{"#", "#b3lyp/6-31g(d)"}, "# b3lyp/6-31g(d)"},
        {{"hf", "#x"}, "hf x"},
        {{"#p", "#"}, "#p"},
    });
}

TEST(JoinedRoute, KeepsBracketsOpenFromWordToWord) {
    check_texts({
        {{"#p", "opt=(ts,", "calcfc", "noeigentest)", "freq"}, "#p opt=(ts, calcfc,noeigentest) freq"},
        {{"#", "opt=(", "ts", ")", "freq"}, "# opt=( ts ) freq"},
        {{"#", "opt=(ts", "maxcycles", "=", "30", ")"}, "# opt=(ts,maxcycles = 30 )"},
        {{"#", "scf=[xqc", "tight]"}, "# scf=[xqc,tight]"},
        {{"#", "oniom(hf/sto-3g", ":", "uff)"}, "# oniom(hf/sto-3g : uff)"},
        {{"#", "hf/6-31g(d'", "p')", "opt"}, "# hf/6-31g(d',p') opt"},
        {{"#", "external='a", "b'", "opt"}, "# external='a b' opt"},
        {{"#", "opt=(a", "(b", "c))", "d"}, "# opt=(a (b,c)) d"},
    });
}

TEST(JoinedRoute, LeavesNoBlanksAroundSigns) {
    check_texts({
        {{"#", "opt", "(maxcycle=100)"}, "# opt(maxcycle=100)"},
        {{"#", "pop", "=", "full"}, "# pop=full"},
        {{"#", "int", "=", "(ultrafinegrid)"}, "# int=(ultrafinegrid)"},
        {{"#", "int=", "(ultrafinegrid)"}, "# int=(ultrafinegrid)"},
        {{"#", "scf(xqc maxconventionalcycle = 500)"}, "# scf(xqc,maxconventionalcycle = 500)"},
        {{"#", "freq(noraman temp=100  pre=5)"}, "# freq(noraman,temp=100,pre=5)"},
        {{"#", "hf", "/6-31g(d)"}, "# hf/6-31g(d)"},
        {{"#", "hf/", "6-31g(d)"}, "# hf/6-31g(d)"},
        {{"#", "hf", "//", "mp2/gen"}, "# hf//mp2/gen"},
        {{"#", "6-31g(d)", "(5d)"}, "# 6-31g(d) (5d)"},
        {{"#p", "/6-31g(d)"}, "#p /6-31g(d)"},
        {{"#p", "hf", "=", "/", "x"}, "#p hf=/x"},
        {{"#p hf = x", "opt  (ts)"}, "#p hf=x opt(ts)"},
    });
}

TEST(JoinedRoute, JoinsNothingToASignThatStandsAlone) {
    check_texts({
        {{"#p/", "b3lyp/6-31g(d)", "opt"}, "#p/ b3lyp/6-31g(d) opt"},
        {{"#", "/", "hf"}, "# / hf"},
        {{"#", "=", "x"}, "# = x"},
        {{"#p", "(opt)"}, "#p (opt)"},
        {{"#", "hf/sto-3g", "=(nboread,full)"}, "# hf/sto-3g =(nboread,full)"},
        {{"#", "hf/sto-3g", "=", "x"}, "# hf/sto-3g = x"},
        {{"#", "iop(3/33=1)", "pop", "=full"}, "# iop(3/33=1) pop=full"},
    });
}

TEST(JoinedRoute, TakesBracketsThatAreNeverClosedAsTheyAre) {
    check_texts({
        {{"#", "opt=(ts", "freq"}, "# opt=(ts freq"},
        {{"#", "opt=(ts", "pop", "=", "full"}, "# opt=(ts pop = full"},
        {{"#", "title='a", "opt"}, "# title='a opt"},
        {{"#", "opt)", "freq"}, "# opt) freq"},
    });
}

// The stretches of a part of the route text, as "word:text" separated by blanks.
std::string stretches_of(const Words& words, std::string_view part) {
    const JoinedRoute route = join_route_words(words);
    const std::size_t begin = route.text.find(part);
    EXPECT_NE(begin, std::string::npos) << part;
    std::string text;
    for (const RouteWordStretch& stretch : route.map.stretches(span_between(begin, begin + part.size()))) {
        text += (text.empty() ? "" : " ") + std::to_string(stretch.word) + ":" +
                std::string(stretch.part.in(words[stretch.word]));
    }
    return text;
}

TEST(RouteMap, FindsTheStretchesOfAPart) {
    const struct {
        Words words;
        const char* part;
        const char* stretches;
    } cases[] = {
        {{"#p", "hf/sto-3g", "opt"}, "sto-3g", "1:sto-3g"},
        {{"#p", "hf/sto-3g", "opt"}, "hf/sto-3g opt", "1:hf/sto-3g 2:opt"},
        {{"#", "#b3lyp"}, "b3lyp", "1:b3lyp"},
        {{"#", "opt=(ts,", "calcfc", "tight)", "freq"}, "opt=(ts, calcfc,tight)", "1:opt=(ts, 2:calcfc 3:tight)"},
        {{"#", "opt=(ts,", "calcfc", "tight)", "freq"}, "fc,ti", "2:fc 3:ti"},
        {{"#", "opt=(ts", "calcfc)"}, ",", ""},
        {{"#", "pop", "=", "full"}, "pop=full", "1:pop 2:= 3:full"},
        {{"#", "scf(xqc tight)"}, "xqc,tight", "1:xqc 1:tight"},
        {{"#", "#p", "opt"}, "opt", "2:opt"},
        {{"#", "opt=(a, b , c)"}, "opt=(a, b , c)", "1:opt=(a, b , c)"},
        {{"# hf  opt"}, "hf  opt", "0:hf  opt"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(stretches_of(c.words, c.part), c.stretches) << c.part;
    }
}

TEST(RouteMap, GivesAnEmptyPartAPlace) {
    const JoinedRoute route = join_route_words({"#", "opt=(ts", "calcfc)"});
    const struct {
        std::size_t at;
        std::size_t word;
        std::uint32_t begin;
    } cases[] = {{0, 0, 0}, {2, 1, 0}, {9, 1, 7}, {10, 2, 0}, {17, 2, 7}};
    for (const auto& c : cases) {
        const std::vector<RouteWordStretch> found = route.map.stretches(span_between(c.at, c.at));
        ASSERT_EQ(found.size(), 1u) << c.at;
        EXPECT_EQ(found[0].word, c.word) << c.at;
        EXPECT_EQ(found[0].part.begin, c.begin) << c.at;
        EXPECT_TRUE(found[0].part.empty()) << c.at;
    }
    EXPECT_TRUE(RouteMap().stretches(span_between(0, 3)).empty());
}

}  // namespace

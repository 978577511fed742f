// What is told of a word: its meaning behind every way to name it, and nothing for what is no word.
#include <gjf/core/report/json.hpp>

#include <gjf/core/job/link0_keys.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/sections/section_kinds.hpp>

#include <gtest/gtest.h>

#include <string>

using namespace quor::input::gaussian;

namespace {

std::string meaning(const std::string& text) {
    const WordDescription* found = describe_word(default_route_schema(), text);
    return found == nullptr ? "" : std::string(found->meaning);
}

TEST(WordDescriptions, TellOfEveryLink0Key) {
    for (const Link0Key& key : link0_keys()) {
        EXPECT_NE(meaning("%" + std::string(key.name)), "") << key.name;
    }
}

TEST(WordDescriptions, TellOfEveryKindOfSection) {
    std::size_t kinds = 0;
    for (; find_extra_input_kind(std::to_string(kinds)); ++kinds) {
        const char* name = extra_input_short_name(*find_extra_input_kind(std::to_string(kinds)));
        EXPECT_NE(find_description("section", {}, name), nullptr) << name;
    }
    EXPECT_EQ(kinds, 56U);
}

TEST(WordDescriptions, TakeEverySpellingOfAWord) {
    EXPECT_EQ(meaning("Optim"), meaning("opt"));
    EXPECT_EQ(meaning("OPT=CalcF"), "Computes the force constants at the first point");
    EXPECT_EQ(meaning("mp2=readwindow"), meaning("mp2=rw"));
    EXPECT_EQ(meaning("UB3LYP"), meaning("b3lyp"));
    EXPECT_EQ(meaning("6-31G**"), meaning("6-31g"));
    EXPECT_EQ(meaning("auto=10"), meaning("auto"));
    EXPECT_EQ(meaning("%NProc"), meaning("%nprocshared"));
}

TEST(WordDescriptions, AreNotGivenForWhatIsNoWord) {
    for (const char* text :
         {"", "=", "%", "%%mem", "mem", "%memory=1", "% mem", "nothing", "op", "opt=", "opt=nothing", "=calcfc",
          "nothing=calcfc", "opt=calcfc=1", "opt calcfc", "b3lyp=calcfc", "6-31", "modredundant"}) {
        EXPECT_EQ(meaning(text), "") << text;
    }
}

TEST(WordDescriptions, StandInTheJsonOfAWord) {
    const std::string known = word_json(default_route_schema(), "irc=maxpoints");
    EXPECT_NE(known.find(R"("options":[],"meaning":"Sets the number of points on each side","default":"10",)"
                         R"("source":"page irc","certain":true})"),
              std::string::npos)
        << known;
    const std::string unknown = word_json(default_route_schema(), "opt=nothing");
    EXPECT_NE(unknown.find(R"("options":[]})"), std::string::npos) << unknown;
}

}  // namespace

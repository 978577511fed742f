// The shortest text that still means a keyword or an option. The tables were worked out from the word tables, not asked of
// the vocabulary.
#include "vocabulary_tables.hpp"

#include <gjf/core/route/keyword_parser.hpp>

#include <map>
#include <set>
#include <utility>

namespace quor::input::gaussian {
namespace {

/// Returns every proper beginning of the spellings that is shorter than `length`.
std::set<std::string> beginnings(const std::vector<std::string>& spellings, std::size_t length) {
    std::set<std::string> texts;
    for (const std::string& spelling : spellings) {
        for (std::size_t size = 1; size < length && size < spelling.size(); ++size) {
            texts.insert(spelling.substr(0, size));
        }
    }
    return texts;
}

/// Tells whether a bare route word is read as the keyword whose preferred spelling is given.
bool is_read_as(const G16KeywordParser& parser, const std::string& word, const std::string& keyword) {
    return parser.can_accept_simple_segment_as(word, SimpleSegmentKind::Keyword) &&
           vocabulary().normalize_keyword(word) == keyword;
}

TEST(Abbreviations, OfKeywordsMeanTheKeyword) {
    const G16KeywordParser parser(vocabulary());
    const auto rows = read_table("keyword_abbreviations", 2);
    EXPECT_GE(rows.size(), 100U);
    for (const TableRow& row : rows) {
        EXPECT_TRUE(is_read_as(parser, row[1], row[0])) << row[1] << " for " << row[0];
    }
}

TEST(Abbreviations, OfKeywordsCannotBeShorter) {
    const G16KeywordParser parser(vocabulary());
    std::map<std::string, std::vector<std::string>> spellings;
    for (const TableRow& row : read_table("keywords", 3)) {
        spellings[row[1]].push_back(row[0]);
    }
    for (const TableRow& row : read_table("keyword_abbreviations", 2)) {
        for (const std::string& text : beginnings(spellings.at(row[0]), row[1].size())) {
            EXPECT_FALSE(is_read_as(parser, text, row[0])) << text << " for " << row[0];
        }
    }
}

TEST(Abbreviations, ThatNewOptionsMadeAmbiguousAreListed) {
    std::size_t count = 0;
    for (const TableRow& row : read_table("lost_abbreviations", 2)) {
        std::istringstream texts(row[1]);
        for (std::string text; texts >> text; ++count) {
            EXPECT_FALSE(vocabulary().knows_option(row[0], text)) << row[0] << '=' << text;
            EXPECT_GT(vocabulary().option_completions(row[0], text).size(), 1U) << row[0] << '=' << text;
        }
    }
    EXPECT_GE(count, 100U);
}

TEST(Abbreviations, OfOptionsMeanTheOption) {
    const auto rows = read_table("option_abbreviations", 3);
    EXPECT_GE(rows.size(), 1000U);
    for (const TableRow& row : rows) {
        EXPECT_TRUE(vocabulary().options_equivalent(row[0], row[2], row[1])) << row[2] << " for " << row[0] << '=' << row[1];
    }
}

TEST(Abbreviations, OfOptionsCannotBeShorter) {
    std::map<std::pair<std::string, std::string>, std::vector<std::string>> spellings;
    for (const TableRow& row : read_table("options", 3)) {
        spellings[{row[0], row[1]}].push_back(row[2]);
    }
    for (const TableRow& row : read_table("option_abbreviations", 3)) {
        for (const std::string& text : beginnings(spellings.at({row[0], row[1]}), row[2].size())) {
            EXPECT_FALSE(vocabulary().options_equivalent(row[0], text, row[1]))
                << text << " for " << row[0] << '=' << row[1];
        }
    }
}

TEST(Abbreviations, InUseAreReadWithoutDoubt) {
    const std::vector<TableRow> expected = {{"opt", "noeigen", "noeigentest"}, {"opt", "modr", "modredundant"},
                                            {"opt", "maxcyc", "maxcycles"},    {"opt", "cart", "cartesian"},
                                            {"freq", "noram", "noraman"},      {"freq", "anharm", "anharmonic"},
                                            {"freq", "hpm", "hpmodes"},        {"freq", "numer", "numerical"},
                                            {"scf", "maxcyc", "maxcycles"},    {"scf", "nosym", "nosymm"},
                                            {"scf", "vsh", "vshift"},          {"scrf", "solv", "solvent"},
                                            {"pop", "hirsh", "hirshfeld"},     {"pop", "reg", "regular"},
                                            {"pop", "min", "minimal"},         {"int", "ultra", "ultrafinegrid"},
                                            {"int", "super", "superfinegrid"}, {"guess", "frag", "fragment"},
                                            {"guess", "perm", "permute"},      {"geom", "allch", "allcheck"},
                                            {"geom", "conn", "connectivity"},  {"td", "nst", "nstates"},
                                            {"td", "sing", "singlets"},        {"nmr", "spin", "spinspin"},
                                            {"irc", "maxp", "maxpoints"},      {"irc", "step", "stepsize"},
                                            {"output", "pick", "pickett"},     {"mp2", "frzn", "freezenoblegascore"}};
    for (const TableRow& row : expected) {
        EXPECT_TRUE(vocabulary().options_equivalent(row[0], row[1], row[2])) << row[0] << '=' << row[1];
        EXPECT_TRUE(vocabulary().knows_option_exact(row[0], row[1]) ||
                    vocabulary().option_completions(row[0], row[1]).size() <= 1)
            << row[0] << '=' << row[1];
    }
}

TEST(Abbreviations, OfSeveralOptionsMeanNone) {
    const std::vector<TableRow> ambiguous = {{"opt", "calc"},  {"opt", "max"}, {"opt", "read"}, {"geom", "mod"},
                                             {"scf", "conv"},  {"scf", "no"},  {"int", "no"},   {"freq", "sel"},
                                             {"pop", "saven"}, {"td", "s"}};
    for (const TableRow& row : ambiguous) {
        EXPECT_FALSE(vocabulary().knows_option(row[0], row[1])) << row[0] << '=' << row[1];
        EXPECT_GT(vocabulary().option_completions(row[0], row[1]).size(), 1U) << row[0] << '=' << row[1];
    }
}

TEST(Abbreviations, OfSeveralKeywordsMeanNone) {
    for (const char* const word : {"dens", "sc", "test", "tr", "ex", "for", "te", "co", "p", "mp"}) {
        const bool exact = vocabulary().knows_keyword_exact(word);
        EXPECT_EQ(vocabulary().knows_keyword(word), exact) << word;
        EXPECT_GT(vocabulary().keyword_completions(word).size(), 1U) << word;
    }
}

}  // namespace
}  // namespace quor::input::gaussian

// Every option of every keyword under each of its spellings: known exactly, one option under all of them, and apart from the
// keyword's other options.
#include "vocabulary_tables.hpp"

#include <map>
#include <set>

namespace quor::input::gaussian {
namespace {

using Spellings = std::map<std::string, std::vector<std::string>>;  // by documented name

std::map<std::string, Spellings> options_by_keyword() {
    std::map<std::string, Spellings> keywords;
    for (const TableRow& row : read_table("options", 3)) {
        keywords[row[0]][row[1]].push_back(row[2]);
    }
    return keywords;
}

TEST(Options, AreKnownExactlyUnderEachSpelling) {
    const auto rows = read_table("options", 3);
    EXPECT_GE(rows.size(), 1000U);
    for (const TableRow& row : rows) {
        EXPECT_TRUE(vocabulary().knows_option_exact(row[0], row[2])) << row[0] << '=' << row[2];
    }
}

// A misprint of the vendor's list is no word; the reason stands beside it.
TEST(Options, OfTheVendorsListAreAllKnown) {
    std::set<std::pair<std::string, std::string>> misprints;
    for (const TableRow& row : read_table("misprints", 3)) {
        misprints.emplace(row[0], row[1]);
        EXPECT_FALSE(vocabulary().knows_option(row[0], row[1])) << row[0] << '=' << row[1];
    }
    std::size_t pairs = 0;
    for (const TableRow& row : read_table("documented_options", 2)) {
        std::istringstream options(row[1]);
        for (std::string option; options >> option; ++pairs) {
            EXPECT_TRUE(vocabulary().knows_option(row[0], option) || misprints.count({row[0], option}) == 1)
                << row[0] << '=' << option;
        }
    }
    EXPECT_EQ(pairs, 910U);
}

TEST(Options, AreOneOptionUnderAllSpellings) {
    for (const TableRow& row : read_table("options", 3)) {
        EXPECT_TRUE(vocabulary().options_equivalent(row[0], row[2], row[1])) << row[0] << '=' << row[2];
        EXPECT_EQ(vocabulary().normalize_option(row[0], row[2]), vocabulary().normalize_option(row[0], row[1]));
    }
}

TEST(Options, WithOtherDocumentedNamesAreOtherOptions) {
    for (const auto& [keyword, options] : options_by_keyword()) {
        std::map<std::string, std::string> seen;
        for (const auto& [name, spellings] : options) {
            const auto [other, fresh] = seen.emplace(vocabulary().normalize_option(keyword, name), name);
            EXPECT_TRUE(fresh) << keyword << ": " << name << " and " << other->second;
        }
    }
}

TEST(Options, AreNormalizedToOneOfTheirOwnSpellings) {
    for (const auto& [keyword, options] : options_by_keyword()) {
        for (const auto& [name, spellings] : options) {
            std::set<std::string> lower;
            for (const std::string& spelling : spellings) {
                lower.insert(SimpleYAMLParser::to_lower(spelling));
            }
            EXPECT_EQ(lower.count(vocabulary().normalize_option(keyword, name)), 1U) << keyword << '=' << name;
        }
    }
}

TEST(Options, AreSharedByTheSpinPrefixedNamesOfAMethod) {
    const std::vector<TableRow> expected = {{"ump2", "full"},       {"romp4", "frzngc"},   {"roccsd(t)", "t1diag"},
                                            {"uqcisd(tq)", "e4t"},  {"rbd", "readwindow"}, {"ucis(d)", "nstates"},
                                            {"ueomccsd", "nstpir"}, {"ropm3", "input"},    {"rdftba", "readparm"},
                                            {"rob2plyp", "fc"},     {"cas", "uno"},        {"ovgf", "p3"},
                                            {"cc", "maxcyc"},       {"upm7r6", "generate"}};
    for (const TableRow& row : expected) {
        EXPECT_TRUE(vocabulary().knows_option_exact(row[0], row[1])) << row[0] << '=' << row[1];
    }
}

TEST(Options, AreRefusedForKeywordsWithoutThem) {
    const std::vector<TableRow> refused = {{"sp", "tight"},   {"b3lyp", "full"}, {"gfinput", "all"}, {"nosymm", "loose"},
                                           {"hf", "tight"},   {"iop", "3/33"},   {"freq", "calcfc"}, {"pop", "solvent"},
                                           {"mndo", "input"}, {"g4", "full"},    {"uff", "t"},       {"nokeyword", "read"}};
    for (const TableRow& row : refused) {
        EXPECT_FALSE(vocabulary().knows_option(row[0], row[1])) << row[0] << '=' << row[1];
    }
}

}  // namespace
}  // namespace quor::input::gaussian

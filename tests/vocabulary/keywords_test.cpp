// Every route keyword under each of its spellings: known exactly, with its preferred spelling and its category.
#include "vocabulary_tables.hpp"

#include <map>
#include <set>

namespace quor::input::gaussian {
namespace {

TEST(Keywords, AreKnownExactlyUnderEachSpelling) {
    const auto rows = read_table("keywords", 3);
    EXPECT_GE(rows.size(), 120U);
    for (const TableRow& row : rows) {
        EXPECT_TRUE(vocabulary().knows_keyword_exact(row[0])) << row[0];
        EXPECT_FALSE(vocabulary().knows_method_exact(row[0])) << row[0];
        EXPECT_FALSE(vocabulary().knows_basis_exact(row[0])) << row[0];
    }
}

TEST(Keywords, HaveThePreferredSpelling) {
    for (const TableRow& row : read_table("keywords", 3)) {
        EXPECT_EQ(vocabulary().normalize_keyword(row[0]), row[1]);
        EXPECT_TRUE(vocabulary().keywords_equivalent(row[0], row[1])) << row[0];
    }
}

TEST(Keywords, WithOtherPreferredSpellingsAreOtherKeywords) {
    std::set<std::string> preferred;
    for (const TableRow& row : read_table("keywords", 3)) {
        preferred.insert(row[1]);
    }
    for (const std::string& one : preferred) {
        for (const std::string& other : preferred) {
            EXPECT_EQ(vocabulary().keywords_equivalent(one, other), one == other) << one << ' ' << other;
        }
    }
}

TEST(Keywords, HaveACategory) {
    for (const TableRow& row : read_table("keywords", 3)) {
        EXPECT_EQ(vocabulary().classify(row[0]), row[2]) << row[0];
    }
}

TEST(Keywords, AreSpeltAsAChemistWouldWriteThem) {
    const std::map<std::string, std::string> expected = {{"Optimization", "opt"},
                                                         {"FREQUENCY", "freq"},
                                                         {"population", "pop"},
                                                         {"integral", "int"},
                                                         {"nosymmetry", "nosymm"},
                                                         {"densityfit", "densityfit"},
                                                         {"fchk", "formcheck"},
                                                         {"casscf", "casscf"},
                                                         {"cas", "casscf"},
                                                         {"OVGF", "ept"},
                                                         {"property", "prop"},
                                                         {"geom", "geom"},
                                                         {"guess", "guess"},
                                                         {"scrf", "scrf"},
                                                         {"nmr", "nmr"},
                                                         {"td", "td"},
                                                         {"symm", "symmetry"},
                                                         {"tran", "transformation"},
                                                         {"trajectory", "bomd"},
                                                         {"scf", "scf"},
                                                         {"EmpiricalDispersion", "empiricaldispersion"}};
    for (const auto& [written, preferred] : expected) {
        EXPECT_EQ(vocabulary().normalize_keyword(written), preferred) << written;
    }
}

}  // namespace
}  // namespace quor::input::gaussian

// Every stored basis set, the suffixes that each takes, and density fitting sets.
#include "vocabulary_tables.hpp"

namespace quor::input::gaussian {
namespace {

TEST(BasisSets, AreKnownExactly) {
    const auto rows = read_table("basis_sets", 1);
    EXPECT_GE(rows.size(), 400U);
    for (const TableRow& row : rows) {
        EXPECT_TRUE(vocabulary().knows_basis_exact(row[0])) << row[0];
        EXPECT_FALSE(vocabulary().knows_keyword_exact(row[0])) << row[0];
        EXPECT_FALSE(vocabulary().knows_method_exact(row[0])) << row[0];
        EXPECT_EQ(vocabulary().classify(row[0]), "basis") << row[0];
    }
}

TEST(BasisSets, AreKnownThroughTheirHeadWhenTheSuffixIsWrong) {
    for (const char* const written : {"6-31G(q)", "6-311++G(4df)", "def2TZVP(f)", "cc-pVTZ(d)", "D95V(2d)", "3-21+G(q)"}) {
        EXPECT_FALSE(vocabulary().knows_basis_exact(written)) << written;
        EXPECT_TRUE(vocabulary().knows_basis(written)) << written;
    }
}

TEST(BasisSets, HaveThePreferredSpelling) {
    const std::vector<TableRow> expected = {
        {"MC-311G", "6-311g"},    {"ReadBasis", "chkbasis"},      {"G3Large", "gtlarge"},   {"SEC", "shc"},
        {"Def2TZVP", "def2tzvp"}, {"AUG-cc-pVDZ", "aug-cc-pvdz"}, {"6-31G(D)", "6-31g(d)"}, {"6-31G*", "6-31g*"},
        {"UGBS1P++", "ugbs1p++"}, {"auto=all", "auto=all"},       {"GenECP", "genecp"},     {"LanL2DZ", "lanl2dz"}};
    for (const TableRow& row : expected) {
        EXPECT_EQ(vocabulary().normalize_keyword(row[0]), row[1]);
    }
}

TEST(BasisSets, ReadFromInputAreTwoWords) {
    EXPECT_FALSE(vocabulary().keywords_equivalent("gen", "genecp"));
    EXPECT_EQ(vocabulary().normalize_keyword("gen"), "gen");
    EXPECT_FALSE(vocabulary().knows_keyword("gen"));
    EXPECT_FALSE(vocabulary().knows_keyword("basis"));
}

}  // namespace
}  // namespace quor::input::gaussian

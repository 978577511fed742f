// Every method under each of its spellings, and its role: method alone, keyword alone, or both.
#include "vocabulary_tables.hpp"

#include <set>

namespace quor::input::gaussian {
namespace {

TEST(Methods, HaveTheirRole) {
    const auto rows = read_table("methods", 3);
    EXPECT_GE(rows.size(), 400U);
    for (const TableRow& row : rows) {
        EXPECT_TRUE(row[2] == "method" || row[2] == "keyword" || row[2] == "both") << row[0];
        EXPECT_EQ(vocabulary().knows_method_exact(row[0]), row[2] != "keyword") << row[0];
        EXPECT_EQ(vocabulary().knows_keyword_exact(row[0]), row[2] != "method") << row[0];
        EXPECT_FALSE(vocabulary().knows_basis_exact(row[0])) << row[0];
    }
}

TEST(Methods, HaveThePreferredSpellingAndTheCategoryMethod) {
    for (const TableRow& row : read_table("methods", 3)) {
        EXPECT_EQ(vocabulary().normalize_keyword(row[0]), row[1]);
        EXPECT_EQ(vocabulary().classify(row[0]), "method") << row[0];
    }
}

TEST(Methods, IncludeEveryExchangeWithEveryCorrelation) {
    const char* const exchanges[] = {"S", "XA",   "B",       "PW91", "mPW",  "G96",   "PBE",
                                     "O", "TPSS", "RevTPSS", "BRx",  "PKZB", "wPBEh", "PBEh"};
    const char* const correlations[] = {"VWN",  "VWN5",    "LYP",  "PL",  "P86",  "PW91", "B95",  "PBE",
                                        "TPSS", "RevTPSS", "KCIS", "BRC", "PKZB", "VP86", "V5LYP"};
    std::set<std::string> names;
    for (const std::string prefix : {"", "r", "u", "ro"}) {
        for (const std::string exchange : exchanges) {
            for (const std::string correlation : correlations) {
                const std::string name = prefix + exchange + correlation;
                EXPECT_TRUE(vocabulary().knows_method_exact(name)) << name;
                names.insert(vocabulary().normalize_keyword(name));
                if (exchange != "wPBEh") {
                    EXPECT_TRUE(vocabulary().knows_method_exact(prefix + "LC-" + exchange + correlation)) << name;
                }
            }
        }
    }
    EXPECT_EQ(names.size(), 4U * 14U * 15U);  // none is another's second spelling
}

TEST(Methods, KeepTheirSpinPrefix) {
    const std::vector<TableRow> expected = {{"UB3LYP", "ub3lyp"},
                                            {"ROMP2", "romp2"},
                                            {"GHF", "ghf"},
                                            {"ULSDA", "usvwn"},
                                            {"UCAM-B3LYP", "ucam-b3lyp"},
                                            {"uLC-wPBE", "ulc-wpbe"},
                                            {"ROBP86", "robp86"},
                                            {"ropbe", "ropbe"},
                                            {"UCCSD(T)", "uccsd(t)"},
                                            {"UCCSD-T", "uccsd(t)"},
                                            {"rHCTH407", "rhcth"},
                                            {"UPM7R6", "upm7"},
                                            {"RRevTPSSRevTPSS", "rrevtpssrevtpss"}};
    for (const TableRow& row : expected) {
        EXPECT_EQ(vocabulary().normalize_keyword(row[0]), row[1]);
        EXPECT_TRUE(vocabulary().knows_method_exact(row[0])) << row[0];
    }
    EXPECT_FALSE(vocabulary().keywords_equivalent("ub3lyp", "b3lyp"));
    EXPECT_FALSE(vocabulary().keywords_equivalent("ump2", "mp2"));
    EXPECT_FALSE(vocabulary().keywords_equivalent("ccsd(t)", "ccsd"));
}

TEST(Methods, AreRefusedWithPrefixesThatTheyDoNotTake) {
    for (const char* const name :
         {"ug4", "rog3", "uuff", "ramber", "roqcisd", "robd", "rocisd", "rotd", "uoniom", "ucbs-qb3", "romp5", "roccd",
          "ropm7", "rodftb", "roeomccsd", "uub3lyp", "rrhf", "urohf"}) {
        EXPECT_FALSE(vocabulary().knows_method_exact(name)) << name;
        EXPECT_FALSE(vocabulary().knows_keyword_exact(name)) << name;
    }
}

}  // namespace
}  // namespace quor::input::gaussian

// Spellings that Gaussian refuses: none is known exactly, whatever role it was meant for.
#include "vocabulary_tables.hpp"

namespace quor::input::gaussian {
namespace {

void expect_no_exact_word(const std::string& word) {
    EXPECT_FALSE(vocabulary().knows_keyword_exact(word)) << word;
    EXPECT_FALSE(vocabulary().knows_method_exact(word)) << word;
    EXPECT_FALSE(vocabulary().knows_basis_exact(word)) << word;
}

TEST(WrongSpellings, OfKeywordsAreNotKnownExactly) {
    const auto rows = read_table("wrong_keywords", 1);
    EXPECT_GE(rows.size(), 100U);
    for (const TableRow& row : rows) {
        expect_no_exact_word(row[0]);
    }
}

TEST(WrongSpellings, OfMethodsAreNotKnownExactly) {
    const auto rows = read_table("wrong_methods", 1);
    EXPECT_GE(rows.size(), 100U);
    for (const TableRow& row : rows) {
        expect_no_exact_word(row[0]);
    }
}

TEST(WrongSpellings, OfBasisSetsAreNotKnownExactly) {
    const auto rows = read_table("wrong_basis_sets", 1);
    EXPECT_GE(rows.size(), 100U);
    for (const TableRow& row : rows) {
        expect_no_exact_word(row[0]);
    }
}

TEST(WrongSpellings, OfOptionsAreNotKnown) {
    const auto rows = read_table("wrong_options", 2);
    EXPECT_GE(rows.size(), 100U);
    for (const TableRow& row : rows) {
        EXPECT_TRUE(vocabulary().knows_keyword_exact(row[0])) << row[0];
        EXPECT_FALSE(vocabulary().knows_option(row[0], row[1])) << row[0] << '=' << row[1];
    }
}

TEST(WrongSpellings, OfPopularHyphensAreNotAbbreviationsEither) {
    for (const char* const word :
         {"m06-2x", "um06-2x", "wb97x-d", "b97-d3", "def2-tzvp", "def2-svp", "hse06", "b3lyp-d3", "camb3lyp"}) {
        EXPECT_FALSE(vocabulary().knows_keyword(word)) << word;
        EXPECT_FALSE(vocabulary().knows_method(word)) << word;
        EXPECT_FALSE(vocabulary().knows_basis(word)) << word;
    }
}

}  // namespace
}  // namespace quor::input::gaussian

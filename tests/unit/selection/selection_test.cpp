// Selections of atoms: which they mean in a job, and what is told of a text or a job that cannot be meant.
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/selection/selection.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using namespace quor::input::gaussian;
using Indices = std::vector<std::size_t>;

GJFData molecule() {
    return GJFParser::parse_string(
        "# hf/sto-3g geom=connectivity\n\nt\n\n0 1\nC(ResName=ALA) -1 0 0 0\nO-OH 0 0 1.4\n"
        "H(Fragment=2) 0 0 0.9 1.7 H\nTv 0 0 9\n\n1 2 1.0\n2 3 1.0\n3\n4\n\n");
}

TEST(Selection, MeansAtomsOfAJob) {
    const struct {
        const char* text;
        Indices atoms;
    } rows[] = {
        {"all", {0, 1, 2}},
        {"h", {2}},
        {"Tv", {3}},
        {"Xe", {}},
        {"1-2,4", {0, 1, 3}},
        {"not C", {1, 2}},
        {"not C and not O or 1", {0, 2}},
        {"not (C or O)", {2}},
        {"frozen", {0}},
        {"layer:high", {2}},
        {"fragment:2", {2}},
        {"type:OH", {1}},
        {"type:oh", {}},
        {"resname:ala", {0}},
        {"element:O", {1}},
        {"within 1.4 of 1", {0, 1}},
        {"within 1.5 of within 1.5 of 1", {0, 1, 2}},
        {"within 100 of 1", {0, 1, 2}},
        {"bonded to 2", {0, 2}},
        {"BONDED To bonded tO 1", {0, 2}},
    };
    const GJFData job = molecule();
    for (const auto& row : rows) {
        EXPECT_EQ(select(job, row.text), row.atoms) << row.text;
    }
}

// Labels stand for species: HC and HW1 are hydrogen, O-Bq is a ghost, -1 a dummy atom and -2 a translation vector.
TEST(Selection, GoesBySpecies) {
    const GJFData job = GJFParser::parse_string(
        "# hf/sto-3g\n\nt\n\n0 1\nHC 0 0 0\nHW1 0 0 2\nO-Bq 0 0 4\n8 0 0 6\nO3 0 0 8\nBq 0 0 10\n-1 0 0 12\nX1 0 0 14\n"
        "-2 0 0 50\nCA 0 0 16\nQ1 0 0 18\n\n");
    const struct {
        const char* text;
        Indices atoms;
    } rows[] = {
        {"H", {0, 1}},
        {"element:1", {0, 1}},
        {"element:HC", {0}},
        {"element:hw1", {1}},
        {"O", {3, 4}},
        {"element:8", {3, 4}},
        {"element:O3", {4}},
        {"Bq", {2, 5}},
        {"type:Bq", {2}},
        {"X", {6, 7}},
        {"xx", {6, 7}},
        {"Tv", {8}},
        {"not all", {}},
        {"C", {}},
        {"Ca", {9}},
        {"element:Q1", {10}},
        {"element:119", {}},
        {"element:-1", {}},
        {"He", {}},
        {"element:0", {2, 5}},
        {"not H and not O and not Bq and not X", {9, 10}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(select(job, row.text), row.atoms) << row.text;
    }
}

TEST(Selection, KnowsWhereTheAtomsOfAZMatrixAre) {
    const std::string route = "# hf/sto-3g geom=connectivity";
    const std::string rest =
        "\n\nt\n\n0 1\nX\nO 1 1.0\nH 2 r 1 a\nHC(Fragment=2) 2 r 1 a 3 180.0\n\nr=0.96 0.05\na=90.0\n\n1\n2 3 1.0 4 "
        "1.0\n3\n4\n\n";
    const GJFData job = GJFParser::parse_string(route + rest);
    const struct {
        const char* text;
        Indices atoms;
    } rows[] = {
        {"all", {0, 1, 2, 3}},
        {"H", {2, 3}},
        {"X", {0}},
        {"4", {3}},
        {"fragment:2", {3}},
        {"within 0.96 of O", {1, 2, 3}},
        {"within 0.95 of O", {1}},
        {"within 1.5 of 1 and not X", {1, 2, 3}},
        {"within 1.92 of 3", {1, 2, 3, 0}},
        {"bonded to O", {2, 3}},
        {"frozen", {}},
        {"layer:H", {}},
    };
    for (const auto& row : rows) {
        Indices wanted = row.atoms;
        std::sort(wanted.begin(), wanted.end());
        EXPECT_EQ(select(job, row.text), wanted) << row.text;
    }
    // Distances are in the job's own unit.
    EXPECT_EQ(select(GJFParser::parse_string(route + " units=au" + rest), "within 0.96 of O"), (Indices{1, 2, 3}));
    EXPECT_EQ(select(GJFParser::parse_string("# hf units=au\n\nt\n\n0 1\nO 0 0 3.0\nO 0 0 5.0\n\n"), "within 2 of 1"),
              (Indices{0, 1}));
}

std::string refusal(const GJFData& job, const std::string& text) {
    try {
        select(job, text);
        return "selected";
    } catch (const SelectionError& error) {
        return error.what();
    }
}

TEST(Selection, SaysWhereATextGoesWrong) {
    const std::string deep(5000, '(');
    const struct {
        std::string text;
        const char* message;
    } rows[] = {
        {"", "column 1: the selection is empty"},
        {" ", "column 2: atoms are missing at the end"},
        {"Fee", "column 1: 'Fee' is neither an element nor a word of selections"},
        {"\xC3\xA9 or C", "column 1: '\xC3\xA9' is neither an element nor a word of selections"},
        {"C or \xC3\xA9 H", "column 6: '\xC3\xA9' is neither an element nor a word of selections"},
        {"C H", "column 3: 'and' or 'or' is missing before 'H'"},
        {"(\xC3\xA9", "column 2: '\xC3\xA9' is neither an element nor a word of selections"},
        {"C,H", "column 1: 'C,H': commas join atom numbers alone; write 'or' between tests"},
        {"foo:1", "column 1: 'foo:' is not one of element:, layer:, fragment:, type: and resname:"},
        {"type:", "column 6: a name is missing after 'type:'"},
        {"0", "column 1: atoms are counted from 1"},
        {"3-1", "column 1: the range ends before it begins"},
        {"1-", "column 3: an atom number is missing"},
        {"18446744073709551617", "column 1: an atom number is missing"},
        {"1x", "column 2: 'x' does not belong to a list of atom numbers"},
        {"within 1e999 of 1", "column 8: a distance above 0 is missing after 'within'"},
        {"within nan of 1", "column 8: a distance above 0 is missing after 'within'"},
        {"within -2 of 1", "column 8: a distance above 0 is missing after 'within'"},
        {"within 2 C", "column 10: 'of' is missing after 'within 2'"},
        {"bonded 1", "column 8: 'to' is missing after 'bonded'"},
        {"C)", "column 2: there is no '(' for this ')'"},
        {deep + "1", "column 5000: the parenthesis is never closed"},
    };
    const GJFData job = molecule();
    for (const auto& row : rows) {
        EXPECT_EQ(refusal(job, row.text), row.message) << row.text;
    }
}

TEST(Selection, SaysWhatAJobDoesNotHave) {
    const GJFData job = molecule();
    EXPECT_EQ(refusal(job, "5"), "there is no atom 5: the job has 4");
    EXPECT_EQ(refusal(job, "4294967297"), "there is no atom 4294967297: the job has 4");
    EXPECT_EQ(refusal(job, "C or 2-6"), "there is no atom 5: the job has 4");
    const GJFData symbolic = GJFParser::parse_string("# hf/sto-3g\n\nt\n\n0 1\nHe 0 0 0\nHe 0 0 q\n\nr=1.0\n\n");
    EXPECT_EQ(refusal(symbolic, "bonded to 1"), "'bonded to' needs connectivity, and the job has none");
    EXPECT_EQ(refusal(symbolic, "within 2 of 1"), "'within' needs coordinates, and q has no value");
    EXPECT_EQ(refusal(symbolic, "He and not 1"), "selected");
    const GJFData rows =
        GJFParser::parse_string("# hf/sto-3g\n\nt\n\n0 1\nO\nC 1 1.0\nO 2 1.0 1 180.0\nH 3 1.0 2 90.0 1 0.0\n\n");
    EXPECT_EQ(refusal(rows, "within 2 of 1"),
              "'within' needs coordinates, and atom 4 has a dihedral with atoms in one line");
    EXPECT_EQ(refusal(rows, "5"), "there is no atom 5: the job has 4");
}

TEST(Selection, IsReadOnceForManyJobs) {
    const Selection selection = parse_selection("O or within 1 of 3");
    EXPECT_EQ(selected_atoms(selection, molecule()), (Indices{1, 2}));
    EXPECT_EQ(selected_atoms(selection, GJFParser::parse_string("# hf\n\nt\n\n0 1\nO 0 0 0\nC 0 0 1\nO 0 0 2\n\n")),
              (Indices{0, 1, 2}));
}

}  // namespace

// Selections of atoms: which they mean in a job, and what is told of a text or a job that cannot be meant.
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/selection/selection.hpp>

#include <gtest/gtest.h>

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
}

TEST(Selection, IsReadOnceForManyJobs) {
    const Selection selection = parse_selection("O or within 1 of 3");
    EXPECT_EQ(selected_atoms(selection, molecule()), (Indices{1, 2}));
    EXPECT_EQ(selected_atoms(selection, GJFParser::parse_string("# hf\n\nt\n\n0 1\nO 0 0 0\nC 0 0 1\nO 0 0 2\n\n")),
              (Indices{0, 1, 2}));
}

}  // namespace

// The one-pass reading of atom lines against the general reading: whatever it takes, both read the same.
#include <gjf/core/reader/molecule_fields.hpp>

#include <gjf/core/text/text.hpp>

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <tuple>

namespace {

using namespace quor::input::gaussian;

AtomCoord read_generally(std::string_view line) {
    AtomCoord atom;
    Fields fields;
    cut_fields(without_comment(line), fields);
    if (fields.size() > 3) {
        read_atom_fields(fields, line, atom);
    }
    return atom;
}

auto values_of(const AtomCoord& atom) {
    const auto coordinate = [](const CoordinateValue& value) { return std::tuple(value.text, value.value); };
    return std::tuple(atom.info.element, atom.info.mm_type, atom.info.mm_charge, atom.info.params, atom.freeze, atom.x,
                      atom.y, atom.z, coordinate(atom.x_ref), coordinate(atom.y_ref), coordinate(atom.z_ref), atom.layer);
}

TEST(PlainAtomLine, IsReadAsTheGeneralReadingReadsIt) {
    for (const char* line : {
             "C 0.0 0.0 0.0",
             " C                 -1.23456789    0.12345678   13.45678901",
             "C,0.,.5,-.5",
             "\tH\t+1.0\t-0.0\t0 ",
             "6 1 2 3",
             "C 0 1.5 2.5 3.5",
             "C -1 1 2 3",
             "C -1 1 2 3 H",
             "C-CT--0.12 0 1.5 2.5 3.5 L H-H1-0.1 12 0.723 0.723",
             "C-CT--0.12(PDBName=CA,ResName=ALA,ResNum=1_A) -1 1.5 2.5 3.5 M",
             "N(Iso=15, Spin=1) 1.5 2.5 3.5",
             "Bq 1.5 2.5 3.5 L !comment",
             "C 12345678901.2345 0.12345678901234 9007199254740992",
             "C 0000000000.00000000 00.000000001 1.2345678901",
             "C 1.0 2.0 9007199254740993",
             "C 1.0 2.0 12345678901234567890",
             "C 1.0 2.0 0.00000000000000000001",
             "X 1.0 2.0 3.0 H0",
         }) {
        AtomCoord atom;
        EXPECT_TRUE(read_plain_atom_line(line, atom)) << line;
        EXPECT_EQ(values_of(atom), values_of(read_generally(line))) << line;
    }
}

TEST(PlainAtomLine, LeavesEveryOtherFormAlone) {
    for (const char* line : {
             "",
             "   ",
             "C",
             "C 1.0 2.0",
             "C 1.0 2.0 !3.0",
             "! C 1.0 2.0 3.0",
             "C 1.0 2.0 3.0!",
             "C 1.0 2.0 3.0 !",
             "C 1.0 2.0 3.0 'H'",
             "C 1.0 2.0 3.0 H!",
             "C 1.0 2.0 z1",
             "C x y z",
             "C 1.0 2.0 3.0e0",
             "C 1.0 2.0 3.0D0",
             "C 1.0 2.0 0x10",
             "C 1.0 2.0 inf",
             "C 1.0 2.0 nan",
             "C 1.0 2.0 .",
             "C 1.0 2.0 -",
             "C 1.0 2.0 --3",
             "C 1.0 2.0 3.0.0",
             "C 1.0 2.0 3-4",
             "C 1 2.0 3.0 H",
             "C 99999999999 1.0 2.0 3.0",
             "C( 1.0 2.0 3.0",
             "C(a 1.0 2.0 3.0",
             "C(a)b 1.0 2.0 3.0",
             "C(O5') 1.0 2.0 3.0",
             "C((a)) 1.0 2.0 3.0",
             "(a) 1.0 2.0 3.0",
             "O5' 1.0 2.0 3.0",
             "C[a] 1.0 2.0 3.0",
             "r=0.96 1.0 2.0 3.0",
             "C=C 1.0 2.0 3.0",
         }) {
        AtomCoord atom;
        EXPECT_FALSE(read_plain_atom_line(line, atom)) << line;
        EXPECT_EQ(values_of(atom), values_of(AtomCoord())) << line;
    }
}

TEST(PlainAtomLine, AgreesWithTheGeneralReadingOnLinesOfRandomPieces) {
    std::mt19937 random(20240917);
    const auto any_of = [&](auto& list) { return std::string(list[random() % std::size(list)]); };
    constexpr const char* labels[] = {"C",         "H1",       "6", "C-CT", "C-CT--0.25", "N-N3-+0.1",
                                      "Ca(a=b,c)", "O(x='y')", "-", "C(",   "Bq_1"};
    constexpr const char* gaps[] = {" ", "  ", "\t", ",", " , ", "\v", "", " !", "'", "("};
    constexpr const char* words[] = {"0",           "-1",
                                     "1",           "1.25",
                                     "-0.00000001", "123.456789012345678",
                                     "x1",          "-y",
                                     "1e5",         "H",
                                     "L",           "M",
                                     "=",           "12345678",
                                     "0.12345678",  "+.5",
                                     "1..2",        "00000000.00000000",
                                     ")",           "9007199254740993.0"};
    std::size_t taken = 0;
    for (int round = 0; round < 40'000; ++round) {
        const auto gap = [&] { return random() % 8 == 0 ? any_of(gaps) : std::string(" "); };
        std::string line = gap() + any_of(labels);
        for (std::size_t count = random() % 7; count > 0; --count) {
            line += gap() + any_of(words);
        }
        AtomCoord atom;
        if (read_plain_atom_line(line, atom)) {
            ++taken;
            ASSERT_EQ(values_of(atom), values_of(read_generally(line))) << line;
        }
    }
    EXPECT_GT(taken, 500U);
}

}  // namespace

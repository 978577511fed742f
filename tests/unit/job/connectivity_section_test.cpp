// Bond lists: text, queries, renumbering.
#include <gjf/core/job/connectivity_section.hpp>
#include <gjf/core/job/gjf_parse_exception.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace quor::input::gaussian {
namespace {

using Texts = std::vector<std::string>;
using BondList = std::vector<std::tuple<std::uint64_t, std::uint64_t, double>>;

ConnectivitySection read(const Texts& lines) {
    ConnectivitySection section;
    section.parse_from_lines(lines);
    return section;
}

BondList bonds_of(const ConnectivitySection& section) {
    BondList bonds;
    for (const Bond& bond : section.bonds) {
        bonds.emplace_back(bond.atom1, bond.atom2, bond.order);
    }
    return bonds;
}

TEST(Connectivity, ReadsLinesInAnyOrder) {
    struct Case {
        Texts lines;
        BondList bonds;
    };
    const Case cases[] = {
        {{}, {}},
        {{"", "  ", "1", "7"}, {}},
        {{"1 2 1.0 3 1.5", "2", "3"}, {{0, 1, 1.0}, {0, 2, 1.5}}},
        {{"2 1 2.0"}, {{0, 1, 2.0}}},
        {{"1 2 1.0", "2 1 1.0"}, {{0, 1, 1.0}, {0, 1, 1.0}}},
        {{"3 3 1.0", "1 2 0", "1 4 -1e0"}, {{2, 2, 1.0}, {0, 1, 0.0}, {0, 3, -1.0}}},
        {{"\t1\t2\t1.0 ! 3 1.0", "! 5 6 1.0"}, {{0, 1, 1.0}}},
        {{"1 2 1.0! 'of the ring", "2 ! \"(\""}, {{0, 1, 1.0}}},
        {{"+1 +2 .5"}, {{0, 1, 0.5}}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(bonds_of(read(c.lines)), c.bonds);
    }
}

TEST(Connectivity, RefusesMalformedLinesAndKeepsWhatStoodBefore) {
    struct Case {
        std::string line;
        std::string message;
        std::size_t bonds;
    };
    const Case cases[] = {
        {" 1 2 ", "Incomplete connectivity pair in line: 1 2", 1},
        {"1 2 1.0 3", "Incomplete connectivity pair in line: 1 2 1.0 3", 2},
        {"0 2 1.0", "Connectivity atom indices must be positive 1-based integers in line: 0 2 1.0", 1},
        {"1 -2 1.0", "Connectivity atom indices must be positive 1-based integers in line: 1 -2 1.0", 1},
        {"0", "Connectivity atom indices must be positive 1-based integers in line: 0", 1},
        {"x 2 1.0", "Invalid connectivity atom index 'x' in line: x 2 1.0", 1},
        {"1 2.0 1.0", "Invalid connectivity atom index '2.0' in line: 1 2.0 1.0", 1},
        {"99999999999999999999 2 1.0",
         "Invalid connectivity atom index '99999999999999999999' in line: 99999999999999999999 2 1.0", 1},
        {"1 2 single", "Invalid connectivity bond order 'single' in line: 1 2 single", 1},
        {"1 2 1.0abc", "Invalid connectivity bond order '1.0abc' in line: 1 2 1.0abc", 1},
        {"1 2 1.0 3 x", "Invalid connectivity bond order 'x' in line: 1 2 1.0 3 x", 2},
        {"1 2 nan", "Invalid connectivity bond order 'nan' in line: 1 2 nan", 1},
        {"1 2 inf", "Invalid connectivity bond order 'inf' in line: 1 2 inf", 1},
        {"1 2 -Infinity", "Invalid connectivity bond order '-Infinity' in line: 1 2 -Infinity", 1},
        {"1 2 1e999", "Invalid connectivity bond order '1e999' in line: 1 2 1e999", 1},
        {"1 (2 1.0)", "Invalid connectivity atom index '(2' in line: 1 (2 1.0)", 1},
        {"1 '2 1.0'", "Invalid connectivity atom index ''2' in line: 1 '2 1.0'", 1},
        {"1 2 [1.0 3] 1.0", "Invalid connectivity bond order '[1.0' in line: 1 2 [1.0 3] 1.0", 1},
        {"1 2,1.0", "Incomplete connectivity pair in line: 1 2,1.0", 1},
    };
    for (const Case& c : cases) {
        ConnectivitySection section;
        try {
            section.parse_from_lines({"5 6 1.0", c.line, "7 8 1.0"});
            ADD_FAILURE() << c.line;
        } catch (const GJFParseException& error) {
            EXPECT_EQ(error.what(), "GJF Parse Error: " + c.message);
        }
        EXPECT_EQ(section.bonds.size(), c.bonds) << c.line;
    }
}

// What one line gives: its bonds, or the message of its failure without the line itself.
std::pair<BondList, std::string> outcome_of(const std::string& line) {
    ConnectivitySection section;
    std::string failure;
    try {
        section.parse_from_lines({line});
    } catch (const GJFParseException& error) {
        failure = error.what();
        failure.resize(std::min(failure.find(" in line: "), failure.size()));
    }
    return {bonds_of(section), failure};
}

// A comment at the end keeps a line from being read in one pass.
TEST(Connectivity, ReadsPlainLinesAsItReadsAllOthers) {
    std::mt19937 random(5);
    constexpr const char* words[] = {"1",
                                     "2",
                                     "17",
                                     "0",
                                     "-3",
                                     "+4",
                                     "1.0",
                                     "2.5",
                                     "1.",
                                     ".5",
                                     "1e",
                                     "x",
                                     "1,2",
                                     "0x1",
                                     "1e0",
                                     "99999999999999999999",
                                     "9007199254740992",
                                     "inf"};
    constexpr const char* gaps[] = {" ", "  ", "\t", "\v", ","};
    std::size_t with_bonds = 0;
    for (int round = 0; round < 40'000; ++round) {
        std::string line = random() % 4 == 0 ? " " : "";
        line += words[random() % 4];
        for (std::size_t pairs = random() % 4; pairs > 0; --pairs) {
            line += std::string(" ") + words[random() % (random() % 4 == 0 ? std::size(words) : 3)];
            line += random() % 16 == 0 ? gaps[random() % std::size(gaps)] : " ";
            line += random() % 8 == 0 ? words[random() % std::size(words)] : "1.5";
        }
        const auto plain = outcome_of(line);
        ASSERT_EQ(plain, outcome_of(line + " !")) << line;
        with_bonds += plain.first.empty() ? 0 : 1;
    }
    EXPECT_GT(with_bonds, 5000U);
}

TEST(Connectivity, WritesOneLineAnAtom) {
    const ConnectivitySection section = read({"1 2 1.0 3 1.5", "2", "3"});
    EXPECT_EQ(section.to_lines(), (Texts{"1 2 1.0 3 1.5", "2", "3"}));
    EXPECT_EQ(section.to_lines_with_atom_count(5), (Texts{"1 2 1.0 3 1.5", "2", "3", "4", "5"}));
    EXPECT_EQ(section.to_lines_with_atom_count(1), (Texts{"1 2 1.0 3 1.5"}));
    EXPECT_EQ(ConnectivitySection().to_lines(), Texts{});
    EXPECT_EQ(ConnectivitySection().to_lines_with_atom_count(2), (Texts{"1", "2"}));
    EXPECT_EQ(read({"1 2 1.0", "2 1 1.0"}).to_lines(), (Texts{"1 2 1.0 2 1.0", "2"}));
    EXPECT_EQ(read({"2 2 1.0"}).to_lines(), (Texts{"1", "2"}));
    EXPECT_EQ(read({"1 2 1.25", "1 3 1.35", "1 2 -0.04"}).to_lines()[0], "1 2 1.2 3 1.4 2 -0.0");
}

TEST(Connectivity, AnswersAndSetsByPair) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    ConnectivitySection section = read({"1 2 1.0", "2 1 2.0", "3 3 1.0", "1 3 1.0"});
    EXPECT_EQ(section.get_bond_order(1, 0), 1.0);
    EXPECT_EQ(section.get_bond_order(5, 6), 0.0);
    EXPECT_EQ(section.get_connected_atoms(0), (std::vector<std::size_t>{1, 1, 2}));
    EXPECT_EQ(section.get_connected_atoms(2), (std::vector<std::size_t>{2, 0}));
    section.set_bond_order(1, 0, 3.0);
    EXPECT_EQ(bonds_of(section)[0], std::make_tuple(0u, 1u, 3.0));
    EXPECT_EQ(bonds_of(section)[1], std::make_tuple(0u, 1u, 2.0));
    section.set_bond_order(0, 1, nan);
    EXPECT_EQ(section.bonds.size(), 2u);
    section.set_bond_order(0, 1, -1.0);
    section.set_bond_order(0, 1, nan);
    section.remove_bond(7, 8);
    EXPECT_EQ(section.bonds.size(), 2u);
    section.set_bond_order(4, 2, 1.0);
    EXPECT_EQ(bonds_of(section).back(), std::make_tuple(2u, 4u, 1.0));
    section.remove_bond(2, 2);
    EXPECT_EQ(section.bonds.size(), 2u);
    EXPECT_EQ((Bond{0, 1, 1.0}), (Bond{0, 1, 2.0}));
    EXPECT_NE((Bond{0, 1, 1.0}), (Bond{0, 2, 1.0}));
}

TEST(Connectivity, IsRenumbered) {
    ConnectivitySection removed = read({"1 2 1.0", "1 3 1.0", "2 3 1.0"});
    removed.remove_atom(1);
    EXPECT_EQ(bonds_of(removed), (BondList{{0, 1, 1.0}}));
    ConnectivitySection inserted = read({"1 2 1.0", "1 3 1.0"});
    inserted.insert_atom(0);
    EXPECT_EQ(bonds_of(inserted), (BondList{{1, 2, 1.0}, {1, 3, 1.0}}));
    inserted.insert_atom(3);
    EXPECT_EQ(bonds_of(inserted), (BondList{{1, 2, 1.0}, {1, 4, 1.0}}));
    ConnectivitySection moved = read({"1 2 1.0", "2 3 1.0"});
    moved.move_atom(0, 2);
    EXPECT_EQ(bonds_of(moved), (BondList{{0, 2, 1.0}, {0, 1, 1.0}}));
    moved.move_atom(2, 0);
    EXPECT_EQ(bonds_of(moved), (BondList{{0, 1, 1.0}, {1, 2, 1.0}}));
    moved.move_atom(1, 1);
    moved.remove_atom(99);
    EXPECT_EQ(bonds_of(moved), (BondList{{0, 1, 1.0}, {1, 2, 1.0}}));
}

}  // namespace
}  // namespace quor::input::gaussian

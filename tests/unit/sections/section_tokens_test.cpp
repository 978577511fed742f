// What the lines of each kind of section are read to: forms of lines, tokens, and their places.
#include <gjf/core/sections/section_tokens.hpp>

#include <gtest/gtest.h>

#include <string>

namespace quor::input::gaussian {
namespace {

using Kind = ExtraInputSectionKind;

char letter_of(LineForm form) {
    switch (form) {
        case LineForm::Plain:
            return '.';
        case LineForm::Include:
            return '@';
        case LineForm::Coordinate:
            return 'c';
        case LineForm::Expression:
            return 'x';
        case LineForm::Bonds:
            return 'b';
        case LineForm::Atoms:
            return 'a';
        case LineForm::First:
            return 'f';
        case LineForm::Centers:
            return 'C';
        case LineForm::Selection:
            return 's';
        case LineForm::OfAtom:
            return 'o';
        case LineForm::BlockEnd:
            return '*';
        case LineForm::Shell:
            return 'S';
        case LineForm::Primitive:
            return 'p';
        case LineForm::Name:
            return 'n';
        case LineForm::LeftOver:
            return '?';
    }
    return '!';
}

// One character a line of the section.
std::string forms(const SectionReading& section) {
    std::string text;
    for (const SectionLine& line : section.lines) {
        text += letter_of(line.form);
    }
    return text;
}

// The tokens that name atoms or elements: "1" for an atom, "[1-3]" for atoms, "*", "<C>" for an element.
std::string names(const SectionReading& section) {
    std::string text;
    for (const SectionToken& token : section.tokens) {
        const std::string word(section[token.span]);
        switch (token.kind) {
            case TokenKind::Atom:
            case TokenKind::AnyAtom:
                text += " " + word;
                break;
            case TokenKind::Atoms:
                text += " [" + word + "]";
                break;
            case TokenKind::Element:
                text += " <" + word + ">";
                break;
            case TokenKind::Word:
            case TokenKind::Number:
            case TokenKind::End:
                break;
        }
    }
    return text;
}

struct Row {
    Kind kind;
    const char* text;
    const char* forms;
    const char* names;
    const char* unclear = "";
};

constexpr const char* by_number = "it names atoms by number";
constexpr const char* may_name = "it may name atoms by number";

const Row rows[] = {
    {Kind::CoordinateModifications, "B 1 2 F\n! no 3\nX *  F ! 4", "c.c", " 1 2 *"},
    {Kind::CoordinateModifications, "1 2 3 B", "c", " 1 2 3"},
    {Kind::CoordinateModifications, "1 2 3 4 5 B", "c", " 1 2 3 4"},
    {Kind::CoordinateModifications, "B 1 2 3 F", "c", " 1 2"},
    {Kind::CoordinateModifications, "B 1 2 1.5 F", "c", " 1 2"},
    {Kind::CoordinateModifications, "A 1 2.0 3", "c", " 1"},
    {Kind::CoordinateModifications, "l,1,2,3,4,F", "c", " 1 2 3 4"},
    {Kind::CoordinateModifications, "FreezeAll\n@more", ".@", ""},
    {Kind::CoordinateModifications, "All 1", "c", " 1", "'All' is no type of coordinate"},
    {Kind::CoordinateModifications, "R1=R(1,2)\nB 1 2", "xc", " 1 2", "it holds expressions"},
    {Kind::CoordinateModifications, "Q 1 2 F\nBA 1 2 3", "cc", " 1 2 1 2 3", "'Q' is no type of coordinate"},
    {Kind::CoordinateModifications, "B 1 2 F ! (of the ring)", "c", " 1 2"},
    {Kind::CoordinateModifications, "B 4294967297 -1", "c", " 4294967297 -1"},
    {Kind::SecondConnectivity, "1 2 1.0 3 1.5\n2\n\n3", "bb.b", " 1 2 3 2 3"},
    {Kind::SecondConnectivity, "1 2", "b", " 1 2"},
    {Kind::SpinSpinAtoms, "1-2 4,7\nC", "aa", " [1-2] [4] [7] [C]"},
    {Kind::AtomicRadii, "C 1.7\n3 1.2\n1-4 2\n4-1 2", "ffff", " <C> [3] [1-4] <4-1>"},
    {Kind::BasisSetAlterations, "2 SP 0.5", "f", " [2]"},
    {Kind::FrozenAtomAlterations, "noatoms atoms=1-4,C block=2 notatoms=(7)", "s", " [1-4] [7]"},
    {Kind::FrozenAtomAlterations, "1 3-4\nlayer = 2\natoms=2:3 + H1", "sss", " [1] [3-4] [2:3] [+]"},
    {Kind::HarmonicModeSelection, "atoms=\n=,", "ss", ""},
    {Kind::BasisSet, "1-2 0\n6-31G\n****\nC -Fe Bq 0\nS 1 1.0\n 1.5D0 1.0\n++++\n3 0\nx", "Cn*CSp*Cn",
     " [1-2] <C> <-Fe> <Bq> [3]"},
    {Kind::BasisSet, "C 0\nSP 2 1.0\n1.0 0.1 0.2\n0.5 0.3 0.4\n6 0\nsto-3g\n****", "CSppCn*", " <C> [6]"},
    {Kind::BasisSet, "C 0\nS 3 1.0\n1.0 0.1\n****\nH 0\nS 1 1.0\n2 0\n****", "CSp*CSp*", " <C> <H>"},
    {Kind::BasisSet, "C 0\nS 3 1.0\n1.0 0.1\nP 1 1.0\n2 0\n****", "CSpSp*", " <C>"},
    {Kind::BasisSet, "C 0\nsto 1s 3 7.66\n****", "CS*", " <C>"},
    {Kind::BasisSet, "@a.gbs\n2 0\n@b.gbs\n****\n@c.gbs", "@C@*@", " [2]"},
    {Kind::BasisSet, "carbon\nx", "Cn", ""},
    {Kind::ECP, "C 0\nlanl2dz\n3 0\nlanl2dz", "CnCn", " <C> [3]"},
    {Kind::ECP, "2 0\nx 1 2\nd-ul\n1\n3 4 0\ns-ul\n2\n2 1.0D0 -0.5d-01\n2 4 0\n4 0\nsdd", "CnnSpnSppCn", " [2] [4]"},
    {Kind::ECP, "@file.ecp", "@", ""},
    {Kind::ECP, "", "", ""},
    {Kind::ECP, "F 0\nF 2 0\nd\nmany", "C...", " <F>"},
    {Kind::ECP, "2 0", "C", " [2]", by_number},
    {Kind::ECP, "F 0\nx 99999999999999999999 0\nd\n2 0\nsdd", "C..C.", " <F> [2]", by_number},
    {Kind::AtomicMasses, "298.15 1.0\n12\n1", ".oo", ""},
    {Kind::SecondTitleAndMolecule, "t\n\n0 1\nH 0 0 0\nH 0 0 1", "...oo", ""},
    {Kind::SecondTitleAndMolecule, "0 1\nH 0 0 0", ".o", ""},
    {Kind::SecondTitleAndMolecule, "t\n\n0 1\nH\nH 1 0.7", ".....", "", "its atoms cannot be told"},
    {Kind::PCMSolvation, "eps=4.0\nradii=uff", "..", ""},
    {Kind::PCMSolvation, "2 1.2 1.0", ".", "", "it changes the spheres of single atoms"},
    {Kind::PCMSolvation, "ModifySph", ".", "", "it changes the spheres of single atoms"},
    {Kind::NBOInput, "$NBO NRT $END", ".", ""},
    {Kind::NBOInput, "$NBO PRINT=2 $END", ".", "", may_name},
    {Kind::BOMDInput, "1.0", ".", "", may_name},
    {Kind::BackgroundCharge, "0.0 0.0 1.0 1", ".", ""},
    {Kind::Unknown, "D(1,2-3) 1.0 x4 5\n! 6", "?.", " [1] [2-3] [5]"},
    {Kind::Unknown, "6-31G(d)\n@7", "?@", ""},
    {static_cast<Kind>(56), "1", "?", " [1]"},
};

TEST(SectionTokens, AreWhatTheGrammarOfTheKindSays) {
    for (const Row& row : rows) {
        const SectionReading section = read_section(row.kind, row.text);
        EXPECT_EQ(forms(section), row.forms) << row.text;
        EXPECT_EQ(names(section), row.names) << row.text;
        EXPECT_EQ(section.unclear, row.unclear) << row.text;
    }
}

TEST(SectionTokens, HaveTheSamePlacesWhateverEndsTheLines) {
    for (const Row& row : rows) {
        std::string text = row.text;
        for (std::size_t i = 0; (i = text.find('\n', i)) != std::string::npos; i += 2) {
            text.insert(i, "\r");
        }
        const SectionReading section = read_section(row.kind, text);
        EXPECT_EQ(forms(section), row.forms) << row.text;
        EXPECT_EQ(names(section), row.names) << row.text;
    }
}

TEST(SectionTokens, OfALineFollowEachOtherInIt) {
    for (const Row& row : rows) {
        const SectionReading section = read_section(row.kind, row.text);
        for (const SectionLine& line : section.lines) {
            std::size_t end = line.span.begin;
            for (const SectionToken& token : section.tokens_of(line)) {
                EXPECT_GE(token.span.begin, end) << row.text;
                EXPECT_FALSE(token.span.empty()) << row.text;
                end = token.span.end();
            }
            EXPECT_LE(end, line.span.end()) << row.text;
        }
    }
}

TEST(SectionTokens, OfSelectionsStandInLists) {
    const SectionReading section =
        read_section(Kind::FrozenAtomAlterations, "1,2 noatoms 3\nNotAtoms=(4) block = 5 6, atoms=");
    std::string text;
    for (const SelectionList& list : section.lists) {
        text += std::to_string(list.line) + '<' + std::string(list.key) + '|' + std::string(section[list.span]) + '|' +
                std::to_string(list.count) + (list.selects() ? '+' : '-') + (list.is_noatoms() ? "n>" : ">");
    }
    EXPECT_EQ(
        text,
        "0<|1,2|2+>0<noatoms|noatoms|0-n>0<|3|1+>1<NotAtoms|NotAtoms=(4)|1->1<block|block = 5 6|2->1<atoms|atoms=|0+>");
}

TEST(CoordinateTypes, AreFoundByOneLetter) {
    EXPECT_EQ(find_coordinate_type("b")->least, 2U);
    EXPECT_EQ(find_coordinate_type("L")->least, 3U);
    EXPECT_EQ(find_coordinate_type("L")->most, 4U);
    for (const char* text : {"", "Q", "BB", "1", "*"}) {
        EXPECT_EQ(find_coordinate_type(text), nullptr) << text;
    }
}

}  // namespace
}  // namespace quor::input::gaussian

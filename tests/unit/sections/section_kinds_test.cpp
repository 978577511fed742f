// What is told of the kinds of extra input: names, short names and classes.
#include <gjf/core/sections/section_kinds.hpp>

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace quor::input::gaussian {
namespace {

using Kind = ExtraInputSectionKind;

TEST(Kinds, HaveNamesAndClasses) {
    struct Row {
        int value;
        const char* name;
        bool blank_line;
    };
    const Row rows[] = {
        {0, "Unknown", true},
        {1, "Connectivity specifications", true},
        {4, "2nd title and molecule specification", true},
        {8, "3rd title and initial TS structure", true},
        {19, "BOMD/ADMP input", true},
        {33, "Symmetry types to combine", false},
        {34, "Orbital specifications (separate \xCE\xB1 & \xCE\xB2)", true},
        {37, "# Orbitals/GVB pair", false},
        {39, "States of interest for spin orbit coupling", false},
        {46, "NBO input", false},
        {52, "Atom list for Pickett file generation", false},
        {53, "ACID output filename", true},
        {54, "PROAIMS output filename", false},
        {55, "Matrix element filename", true},
        {56, "Unknown", true},
        {-1, "Unknown", true},
        {2147483647, "Unknown", true},
    };
    for (const Row& row : rows) {
        EXPECT_STREQ(extra_input_kind_name(static_cast<Kind>(row.value)), row.name);
        EXPECT_EQ(extra_input_requires_blank_line(static_cast<Kind>(row.value)), row.blank_line) << row.value;
    }
    int without_blank_line = 0;
    for (int value = 0; value < 56; ++value) {
        without_blank_line += extra_input_requires_blank_line(static_cast<Kind>(value)) ? 0 : 1;
        EXPECT_EQ(value == 0, std::string(extra_input_kind_name(static_cast<Kind>(value))) == "Unknown") << value;
    }
    EXPECT_EQ(without_blank_line, 6);
    EXPECT_EQ(extra_input_class(Kind::NBOInput), ExtraInputClass::UpToEnd);
    EXPECT_EQ(extra_input_class(Kind::PickettAtoms), ExtraInputClass::AtomList);
    EXPECT_EQ(extra_input_class(Kind::SecondTitleAndMolecule), ExtraInputClass::TitleAndMolecule);
}

TEST(Kinds, AreFoundByNumberAndByEitherName) {
    struct Row {
        const char* text;
        int value;
    };
    const Row rows[] = {
        {"0", 0},
        {"25", 25},
        {"55", 55},
        {"unknown", 0},
        {"modredundant", 3},
        {"ModRedundant2", 7},
        {"Basis set specification", 25},
        {"ECP SPECIFICATION", 28},
        {"# orbitals/gvb pair", 37},
        {"matrix", 55},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(find_extra_input_kind(row.text), static_cast<Kind>(row.value)) << row.text;
    }
    for (const char* text : {"", " ", "56", "-1", "+3", "3 ", "3.0", "4294967299", "18446744073709551617", "modredundan",
                             "modredundant4", "basis ", "opt=modredundant", "CoordinateModifications"}) {
        EXPECT_EQ(find_extra_input_kind(text), std::nullopt) << text;
    }
}

TEST(Kinds, TellHowARouteAsksForThem) {
    EXPECT_STREQ(extra_input_request(Kind::CoordinateModifications), "opt=modredundant");
    EXPECT_STREQ(extra_input_request(Kind::MatrixElementFile), "output=matrixelement");
    EXPECT_STREQ(extra_input_request(Kind::Unknown), "");
    EXPECT_STREQ(extra_input_request(static_cast<Kind>(56)), "");
}

TEST(Kinds, HaveDifferentNamesOfBothSorts) {
    std::set<std::string> names;
    for (int value = 0; value < 56; ++value) {
        const auto kind = static_cast<Kind>(value);
        EXPECT_TRUE(names.insert(extra_input_kind_name(kind)).second) << value;
        EXPECT_TRUE(names.insert(extra_input_short_name(kind)).second) << value;
        EXPECT_EQ(find_extra_input_kind(extra_input_short_name(kind)), kind) << value;
        EXPECT_EQ(find_extra_input_kind(extra_input_kind_name(kind)), kind) << value;
        EXPECT_EQ(std::string(extra_input_request(kind)).empty(), value == 0) << value;
    }
    EXPECT_STREQ(extra_input_short_name(static_cast<Kind>(56)), "unknown");
    EXPECT_STREQ(extra_input_request(static_cast<Kind>(-1)), "");
}

}  // namespace
}  // namespace quor::input::gaussian

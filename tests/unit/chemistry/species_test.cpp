// Elements, what names of atoms stand for, and names of layers.
#include <gjf/core/chemistry/elements.hpp>
#include <gjf/core/chemistry/layers.hpp>
#include <gjf/core/chemistry/species.hpp>

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

namespace quor::input::gaussian {

void PrintTo(const Species& species, std::ostream* out) {
    *out << "kind " << static_cast<int>(species.kind) << ", element " << species.element
         << (species.certain ? ", certain" : ", not certain");
}

namespace {

constexpr SpeciesKind atom = SpeciesKind::Atom;
constexpr SpeciesKind ghost = SpeciesKind::Ghost;
constexpr SpeciesKind dummy = SpeciesKind::Dummy;
constexpr SpeciesKind vector = SpeciesKind::TranslationVector;
constexpr Species unknown{};

TEST(Elements, AreFoundBySymbolInAnyLetterCase) {
    const struct {
        std::string_view symbol;
        int number;
    } cases[] = {{"H", 1}, {"h", 1},  {"He", 2}, {"HE", 2},     {"hE", 2},   {"Og", 118}, {"Uuo", 0},
                 {"", 0},  {"D", 0},  {"Bq", 0}, {"Carbon", 0}, {"6", 0},    {"C ", 0},   {"C1", 0},
                 {"J", 0}, {"Hx", 0}, {"W", 74}, {"Cm", 96},    {"c\xC3", 0}};
    for (const auto& [symbol, number] : cases) {
        EXPECT_EQ(atomic_number(symbol), number) << symbol;
    }
}

TEST(Elements, AllHaveSymbolsThatLeadBack) {
    for (int number = 1; number <= 118; ++number) {
        EXPECT_EQ(atomic_number(element_symbol(number)), number);
    }
    for (const int number : {-2147483647, -1, 0, 119, 2147483647}) {
        EXPECT_STREQ(element_symbol(number), "") << number;
    }
}

TEST(Elements, HaveCovalentRadii) {
    EXPECT_DOUBLE_EQ(covalent_radius(1), 0.31);
    EXPECT_DOUBLE_EQ(covalent_radius(6), 0.76);
    EXPECT_DOUBLE_EQ(covalent_radius(96), 1.69);
    for (const int number : {-1, 0, 97, 118, 119}) {
        EXPECT_DOUBLE_EQ(covalent_radius(number), 1.6) << number;
    }
}

TEST(Species, AreReadFromTheNamesOfAtoms) {
    const struct {
        std::string_view name;
        Species wanted;
    } cases[] = {
        {"H", {atom, 1, true}},
        {"6", {atom, 6, true}},
        {"118", {atom, 118, true}},
        {"cl", {atom, 17, true}},
        {"CL", {atom, 17, true}},
        {"C12", {atom, 6, true}},
        {"O5'", {atom, 8, true}},
        {"Fe_2", {atom, 26, true}},
        {"Ca", {atom, 20, true}},
        {"ca", {atom, 20, true}},
        {"C1A", {atom, 6, true}},
        {"BR3", {atom, 35, true}},
        {"NA", {atom, 11, true}},
        {"CO", {atom, 27, true}},
        {"0", {ghost, 0, true}},
        {"Bq", {ghost, 0, true}},
        {"bq3", {ghost, 0, true}},
        {"X", {dummy, 0, true}},
        {"xx", {dummy, 0, true}},
        {"X12", {dummy, 0, true}},
        {"Tv", {vector, 0, true}},
        {"TV", {vector, 0, true}},
        {"tv1", {vector, 0, true}},
        {"Xe", {atom, 54, true}},
        // One letter is the element, with letters behind that make no symbol of it.
        {"HC", {atom, 1, false}},
        {"HW1", {atom, 1, false}},
        {"OW", {atom, 8, false}},
        {"CT", {atom, 6, false}},
        {"CB", {atom, 6, false}},
        {"OXT", {atom, 8, false}},
        {"HX", {atom, 1, false}},
        // Two letters are the element, but names of types and atoms are alike.
        {"HOX", {atom, 67, false}},
        {"CARB", {atom, 20, false}},
        {"Carbon", {atom, 20, false}},
        {"CA", {atom, 20, false}},
        {"CD1", {atom, 48, false}},
        {"HG11", {atom, 80, false}},
        {"NE2", {atom, 10, false}},
        {"HE", {atom, 2, false}},
        {"CE", {atom, 58, false}},
        {"ND1", {atom, 60, false}},
        {"D", {SpeciesKind::Unknown, 1, false}},
        {"t1", {SpeciesKind::Unknown, 1, false}},
        {"", unknown},
        {"119", unknown},
        {"-1", unknown},
        {"+6", unknown},
        {"J", unknown},
        {"Q1", unknown},
        {"?", unknown},
        {" H", unknown},
        {"4294967297", unknown},
        {"1.0", unknown},
        {"(H)", unknown},
        {"\xC3\xA9", unknown},
        {"_C", unknown},
        {"6a", unknown},
        {"M", unknown},
    };
    for (const auto& [name, wanted] : cases) {
        EXPECT_EQ(species_of_name(name), wanted) << name;
    }
}

TEST(Species, AreReadFromSymbolsAlone) {
    const struct {
        std::string_view symbol;
        Species wanted;
    } cases[] = {{"C", {atom, 6, true}},  {"CA", {atom, 20, true}}, {"bq", {ghost, 0, true}},
                 {"X", {dummy, 0, true}}, {"XX", {dummy, 0, true}}, {"TV", {vector, 0, true}},
                 {"C1", unknown},         {"HC", unknown},          {"6", unknown},
                 {"0", unknown},          {"D", unknown},           {"", unknown},
                 {"bq1", unknown},        {"xxx", unknown}};
    for (const auto& [symbol, wanted] : cases) {
        EXPECT_EQ(species_of_symbol(symbol), wanted) << symbol;
    }
}

TEST(Species, HaveASymbolAndANuclearCharge) {
    const struct {
        Species species;
        std::string_view symbol;
        int charge;
    } cases[] = {{{atom, 17, true}, "Cl", 17},
                 {{atom, 1, false}, "H", 1},
                 {{ghost, 6, true}, "Bq", 0},
                 {{ghost, 0, true}, "Bq", 0},
                 {{dummy, 0, true}, "X", 0},
                 {{vector, 0, true}, "Tv", 0},
                 {unknown, "", 0},
                 {{SpeciesKind::Unknown, 1, false}, "", 0}};
    for (const auto& [species, symbol, charge] : cases) {
        EXPECT_EQ(symbol_of(species), symbol);
        EXPECT_EQ(species.nuclear_charge(), charge) << symbol;
    }
}

TEST(Layers, HaveLettersAndNames) {
    const struct {
        std::string_view name;
        char letter;
    } cases[] = {{"H", 'h'},  {"m", 'm'},      {"L", 'l'},   {"High", 'h'}, {"MEDIUM", 'm'}, {"low", 'l'},
                 {"", 0},     {"hi", 'h'},     {"Med", 'm'}, {"LO", 'l'},   {"0", '?'},      {"X", '?'},
                 {"L ", '?'}, {"lowest", '?'}, {"-1", '?'},  {"HH", '?'}};
    for (const auto& [name, letter] : cases) {
        EXPECT_EQ(layer_letter(name), letter) << name;
    }
}

}  // namespace
}  // namespace quor::input::gaussian

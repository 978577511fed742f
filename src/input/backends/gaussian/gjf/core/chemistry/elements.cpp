// Element symbols and covalent radii.
#include <gjf/core/chemistry/elements.hpp>

#include <gjf/core/text/text.hpp>

#include <array>
#include <cstddef>
#include <iterator>
#include <string_view>

namespace quor::input::gaussian {
namespace {

constexpr const char* symbols[] = {
    "H",  "He", "Li", "Be", "B",  "C",  "N",  "O",  "F",  "Ne", "Na", "Mg", "Al", "Si", "P",  "S",  "Cl", "Ar", "K",  "Ca",
    "Sc", "Ti", "V",  "Cr", "Mn", "Fe", "Co", "Ni", "Cu", "Zn", "Ga", "Ge", "As", "Se", "Br", "Kr", "Rb", "Sr", "Y",  "Zr",
    "Nb", "Mo", "Tc", "Ru", "Rh", "Pd", "Ag", "Cd", "In", "Sn", "Sb", "Te", "I",  "Xe", "Cs", "Ba", "La", "Ce", "Pr", "Nd",
    "Pm", "Sm", "Eu", "Gd", "Tb", "Dy", "Ho", "Er", "Tm", "Yb", "Lu", "Hf", "Ta", "W",  "Re", "Os", "Ir", "Pt", "Au", "Hg",
    "Tl", "Pb", "Bi", "Po", "At", "Rn", "Fr", "Ra", "Ac", "Th", "Pa", "U",  "Np", "Pu", "Am", "Cm", "Bk", "Cf", "Es", "Fm",
    "Md", "No", "Lr", "Rf", "Db", "Sg", "Bh", "Hs", "Mt", "Ds", "Rg", "Cn", "Nh", "Fl", "Mc", "Lv", "Ts", "Og"};

// Covalent radii in picometres, of hydrogen to curium (Cordero and others, Dalton Trans. 2008, 2832).
constexpr short radii[] = {
    31,  28,  128, 96,  84,  76,  71,  66,  57,  58,  166, 141, 121, 111, 107, 105, 102, 106, 203, 176, 170, 160, 153, 139,
    139, 132, 126, 124, 132, 122, 122, 120, 119, 120, 120, 116, 220, 195, 190, 175, 164, 154, 147, 146, 142, 139, 145, 144,
    142, 139, 139, 138, 139, 140, 244, 215, 207, 204, 203, 201, 199, 198, 198, 196, 194, 192, 192, 189, 190, 187, 187, 175,
    170, 162, 151, 144, 141, 136, 136, 132, 145, 146, 148, 140, 150, 150, 260, 221, 215, 206, 200, 196, 190, 187, 180, 169};

constexpr char no_letter = 'a' - 1;

constexpr std::size_t index_of(char first, char second) noexcept {
    return static_cast<std::size_t>(to_lower_ascii(first) - 'a') * 27 +
           static_cast<std::size_t>(to_lower_ascii(second) - no_letter);
}

using NumberTable = std::array<unsigned char, 702>;  // 26 first letters, 26 second ones or none

constexpr NumberTable make_numbers() noexcept {
    NumberTable table{};
    for (std::size_t i = 0; i < std::size(symbols); ++i) {
        const std::string_view symbol = symbols[i];
        table[index_of(symbol.front(), symbol.size() == 2 ? symbol.back() : no_letter)] = static_cast<unsigned char>(i + 1);
    }
    return table;
}

// Atomic numbers by both letters of the symbol.
constexpr NumberTable numbers = make_numbers();

}  // namespace

int atomic_number(std::string_view symbol) noexcept {
    if (symbol.empty() || symbol.size() > 2 || !is_letter(symbol.front()) || !is_letter(symbol.back())) {
        return 0;
    }
    return numbers[index_of(symbol.front(), symbol.size() == 2 ? symbol.back() : no_letter)];
}

const char* element_symbol(int number) noexcept {
    return number >= 1 && number <= static_cast<int>(std::size(symbols)) ? symbols[number - 1] : "";
}

double covalent_radius(int number) noexcept {
    const auto row = static_cast<std::size_t>(number - 1);
    return row < std::size(radii) ? radii[row] / 100.0 : 1.6;
}

}  // namespace quor::input::gaussian

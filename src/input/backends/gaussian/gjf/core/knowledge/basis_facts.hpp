// What is known of basis sets: the elements that they cover, their functions, and the core potentials that they bring.
// Private to the library.
//
// Sets are named in the vocabulary's preferred spelling; polarization functions may be given as "*" or in brackets.
#pragma once

#include <gjf/core/text/text.hpp>

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// The types of shells, by their angular momentum.
inline constexpr std::string_view shell_letters = "spdfghik";
constexpr bool is_shell_letter(char c) noexcept { return shell_letters.find(to_lower_ascii(c)) != std::string_view::npos; }

/// Elements by their atomic numbers.
class ElementSet {
   public:
    /// Reads ranges, as in 1-18,20-36.
    explicit ElementSet(std::string_view ranges);
    bool covers(int element) const noexcept {
        return element >= 0 && static_cast<std::size_t>(element) < covered_.size() &&
               covered_[static_cast<std::size_t>(element)];
    }

   private:
    std::vector<bool> covered_;
};

/// The elements for which a basis set has functions.
struct BasisElements {
    std::string_view basis;
    ElementSet elements;
    std::string_view severity;  ///< of an element that it lacks

    bool covers(int element) const noexcept { return elements.covers(element); }
};
/// Returns what is known of a basis set; null for nothing.
const BasisElements* basis_elements(std::string_view basis);

/// Returns how many electrons a named core potential, or the one that a basis set brings, stands for in an element: 0 when
/// it brings none, absent when nothing is known of it.
std::optional<int> core_electrons(std::string_view basis, int element);

/// Returns the core electrons of a Stuttgart and Dresden potential by its name, as in MWB28; absent for any other name.
std::optional<int> stuttgart_core(std::string_view name) noexcept;

/// Contracted functions of one or several atoms by angular momentum: s, p, d and so on.
struct ShellCounts {
    std::array<long long, 8> shells{};
    bool certain = true;

    /// Adds shells written as 3s2p1d; false for any other text.
    bool add(std::string_view text) noexcept;
    void add(const ShellCounts& other, long long times = 1) noexcept;
    /// Counts functions with five or six d functions in a shell, and pure or Cartesian ones beyond.
    long long functions(bool six_d, bool cartesian_f) const noexcept;
    friend bool operator==(const ShellCounts&, const ShellCounts&) = default;
};
/// Returns the functions of an element in a basis set; absent when they are not known.
std::optional<ShellCounts> basis_shells(std::string_view basis, int element);
/// Tells whether a basis set has six d functions in a shell unless the route says otherwise.
bool has_six_d_functions(std::string_view basis);

/// A composite method or a dispersion correction, and the elements that it has parameters for.
struct ParametersElements {
    std::string_view kind;  ///< "composite" or "dispersion"
    std::string_view name;
    ElementSet elements;
    std::string_view severity;     ///< of an element that it lacks
    std::string_view first_basis;  ///< that a composite method begins with; empty when it is not known
};
/// Returns what is known of a method or correction; null for nothing.
const ParametersElements* parameters_elements(std::string_view kind, std::string_view name);

/// Returns what keeps one of the tables from being read; empty when all are there.
std::string missing_basis_facts();

}  // namespace quor::input::gaussian

// What the name of an atom stands for: an element, a ghost, a dummy atom, a translation vector.
#pragma once

#include <core/export.hpp>

#include <string_view>

namespace quor::input::gaussian {

enum class SpeciesKind { Unknown, Atom, Ghost, Dummy, TranslationVector };

/// What an atom label stands for.
struct Species {
    SpeciesKind kind = SpeciesKind::Unknown;
    int element = 0;       ///< atomic number, also that of the element whose basis functions a ghost has; 0 for none
    bool certain = false;  ///< false when the label may be read in another way

    constexpr int nuclear_charge() const noexcept { return kind == SpeciesKind::Atom ? element : 0; }
    friend constexpr bool operator==(const Species& a, const Species& b) noexcept {
        return a.kind == b.kind && a.element == b.element && a.certain == b.certain;
    }
};

/// Reads an element symbol, Bq, X, Xx or Tv, in any letter case; of unknown kind for any other text.
QUOR_GJF_API Species species_of_symbol(std::string_view symbol) noexcept;

/// Reads the name of an atom: an atomic number, or an element symbol with anything but letters behind it.
///
/// Two letters that are a symbol are taken before one, so HO is holmium and HC hydrogen with a name of its own; a symbol
/// with more letters behind it, and capitals such as CA that are names of atoms in proteins too, are not certain. D and T
/// are hydrogen that Gaussian may not know: of unknown kind.
QUOR_GJF_API Species species_of_name(std::string_view name) noexcept;

/// Returns the symbol of a species, Bq for ghosts, X for dummy atoms and Tv for translation vectors; empty when it is not
/// known.
QUOR_GJF_API std::string_view symbol_of(const Species& species) noexcept;

}  // namespace quor::input::gaussian

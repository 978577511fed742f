// Elements, and what an atom label stands for. Private to the library.
#pragma once

#include <gjf/core/job/atom.hpp>

#include <string_view>

namespace quor::input::gaussian {

enum class SpeciesKind { Unknown, Atom, Ghost, Dummy, TranslationVector };

/// What an atom label stands for.
struct Species {
    SpeciesKind kind = SpeciesKind::Unknown;
    int number = 0;        ///< atomic number; 0 for what has no nucleus
    bool certain = false;  ///< false when the label may be read in another way
};

/// Returns the atomic number of an element symbol in any letter case, 0 for none.
int atomic_number(std::string_view symbol) noexcept;

/// Returns the symbol of an atomic number, empty for none.
const char* element_symbol(int number) noexcept;

/// Returns a covalent radius in ångström; 1.6 where none is known.
double covalent_radius(int number) noexcept;

/// Reads an element name: a symbol with anything but letters behind it, or an atomic number.
Species species_of_name(std::string_view name) noexcept;
Species species_of(const AtomInfo& info);

}  // namespace quor::input::gaussian

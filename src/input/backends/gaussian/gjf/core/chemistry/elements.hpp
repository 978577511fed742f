// The chemical elements: symbols and covalent radii. The one table of them.
#pragma once

#include <core/export.hpp>

#include <string_view>

namespace quor::input::gaussian {

/// Returns the atomic number of an element symbol in any letter case, 0 for none.
QUOR_GJF_API int atomic_number(std::string_view symbol) noexcept;

/// Returns the symbol of an atomic number, empty for none.
QUOR_GJF_API const char* element_symbol(int number) noexcept;

/// Returns a covalent radius in ångström; 1.6 where none is known.
double covalent_radius(int number) noexcept;

}  // namespace quor::input::gaussian

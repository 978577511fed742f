// The ONIOM layers.
#pragma once

#include <core/export.hpp>

#include <string_view>

namespace quor::input::gaussian {

/// Reads the name of an ONIOM layer, written out or cut short, in any letter case: returns 'h', 'm' or 'l', 0 for an empty
/// name and '?' for any other.
QUOR_GJF_API char layer_letter(std::string_view name) noexcept;

}  // namespace quor::input::gaussian

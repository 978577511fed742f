// Lines of centers, which say what atoms a basis set or potential is for. Private to the room.
#pragma once

#include <gjf/core/sections/section_tokens.hpp>

#include <string_view>

namespace quor::input::gaussian {

/// What a line of centers names: elements alone, or atoms by number too.
enum class Centers { None, Elements, Numbers };

/// Reads the line as one of centers, with the zero that ends it; only behind "-Fe", which can begin nothing else, the zero
/// may be missing.
Centers centers_of(const SectionScanner& scan);

/// Adds the tokens of a line of centers.
void add_centers(SectionScanner& scan);

/// Tells whether a line ends a block: of a basis set, or of one of its levels.
bool ends_block(std::string_view line) noexcept;

}  // namespace quor::input::gaussian

// How two stretches of a text lie to each other. Private to the room.
#pragma once

#include <gjf/core/text/span.hpp>

namespace quor::input::gaussian {

/// Tells whether two stretches overlap, or one ends where the other begins.
constexpr bool touch(Span a, Span b) noexcept { return a.begin <= b.end() && b.begin <= a.end(); }

/// Tells whether the second of two stretches lies within the first.
constexpr bool holds(Span outer, Span inner) noexcept { return outer.begin <= inner.begin && inner.end() <= outer.end(); }

}  // namespace quor::input::gaussian

// Positions, distances, and the units of length.
#pragma once

#include <array>
#include <cmath>

namespace quor::input::gaussian {

/// A bohr in ångström (CODATA 2018).
inline constexpr double bohr = 0.529177210903;

using Position = std::array<double, 3>;

inline double distance(const Position& a, const Position& b) noexcept {
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

}  // namespace quor::input::gaussian

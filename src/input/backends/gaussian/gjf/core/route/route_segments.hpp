// Where the segments of a route stand. Private to the library.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// A stretch of a route: byte offsets from 0, `end` exclusive.
struct RouteSegment {
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// Takes the head of a trimmed route off it; returns the print level it sets, or nothing when there is no head.
std::optional<std::string> take_route_head(std::string_view& route);

/// Cuts a route at top-level white space.
std::vector<RouteSegment> find_route_segments(std::string_view route);

}  // namespace quor::input::gaussian

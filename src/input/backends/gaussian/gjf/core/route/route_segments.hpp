// Where the segments of a route stand. Private to the route room.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// A stretch of a route: byte offsets from 0, `end` exclusive.
struct RouteSegment {
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// Cuts a route at top-level white space.
std::vector<RouteSegment> find_route_segments(std::string_view route);

}  // namespace quor::input::gaussian

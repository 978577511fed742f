// Where the segments of a route stand. Private to the library.
#pragma once

#include <gjf/core/text/span.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// Takes the head of a trimmed route off it; returns the print level it sets, or nothing when there is no head.
std::optional<std::string> take_route_head(std::string_view& route);

/// Cuts a route at top-level white space.
std::vector<Span> find_route_segments(std::string_view route);

}  // namespace quor::input::gaussian

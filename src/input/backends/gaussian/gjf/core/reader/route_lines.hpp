// A route that is given as a text of its own.
#pragma once

#include <core/export.hpp>

#include <string>
#include <vector>

namespace quor::input::gaussian {

/// Cuts a route of one line or several into words; "#" is added where none begins it.
QUOR_GJF_API std::vector<std::string> cut_route(const std::string& text);

/// The same; none where it is a head alone.
QUOR_GJF_API std::vector<std::string> route_words_of(const std::string& text);

}  // namespace quor::input::gaussian

// A route that is given as a text of its own.
#pragma once

#include <core/export.hpp>

#include <string>
#include <vector>

namespace quor::input::gaussian {

/// Returns the words of a route of one line or several, with or without "#", which is added; none where it holds no route.
QUOR_GJF_API std::vector<std::string> route_words_of(const std::string& text);

}  // namespace quor::input::gaussian

// Counts interpretations of routes, so that tests can hold how often the library reads one. Private to the library.
#pragma once

#include <cstddef>

namespace quor::input::gaussian {

#ifndef NDEBUG
/// How many routes this thread has interpreted. Builds without assertions count nothing.
std::size_t& interpreted_routes() noexcept;
#endif

}  // namespace quor::input::gaussian

// Cuts answers that are too long for who asked. Private to the room.
#pragma once

#include <gjf/core/protocol/messages.hpp>

#include <cstddef>

namespace quor::input::gaussian {

/// Cuts the longest lists (whole items) and texts (whole lines) of an object, until its JSON takes at most so many bytes.
/// Then `left` in it tells by JSON Pointers how many items and lines of which are not there.
void cut_answer(Message& answer, std::size_t most_bytes);

}  // namespace quor::input::gaussian

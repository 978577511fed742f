// Compares two jobs part by part.
#pragma once

#include <gjf/core/job/gjf_data.hpp>

namespace quor_python {

/// What counts as the same coordinate: its text and number; the number alone; or the number as far as it is written.
enum class Coordinates { AsText, AsNumber, AsWritten };

/// Names the first part in which two jobs differ, as in "title", or returns null when they say the same.
///
/// Not compared: lines as read, the interpretation of the route, and how route words are grouped. A section of unknown kind
/// equals any of the same text.
const char* first_difference(const quor::input::gaussian::GJFData& a, const quor::input::gaussian::GJFData& b,
                             Coordinates coordinates);

}  // namespace quor_python

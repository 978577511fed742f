// Names in braces of a recipe's edits, as {2*opt.maxcycles}, and what they stand for. Private to the room.
#pragma once

#include <gjf/core/output/diagnosis.hpp>

#include <string>
#include <string_view>

namespace quor::input::gaussian {

/// Throws `std::runtime_error` for a name that is none, and a brace that is not closed.
void check_edit_names(std::string_view text);

/// Returns a text with the values of its names: those of the old job's route and Link 0 lines, else those that the output
/// tells, else what Gaussian takes by itself. Throws where a value is not known.
std::string with_edit_names(std::string_view text, const std::string& job_text, const Diagnosis& diagnosis);

}  // namespace quor::input::gaussian

// Looks for the rows of the table of failures among lines. Private to the room.
#pragma once

#include <gjf/core/knowledge/failures.hpp>
#include <gjf/core/output/diagnosis.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

struct TailLine {
    std::size_t number = 0;
    std::string_view text;
};

/// Tells whether a row is for a step that ended so.
bool fits_end(const Failure& failure, const StepEnd& end);
/// Returns the first line that holds a fragment of the row, where its other condition holds too; else null.
const TailLine* find_failure(const Failure& failure, const std::vector<TailLine>& lines);
/// Tells whether one of the fields of a list, with blanks between, is this one.
bool has_any_field(std::string_view list, std::string_view field);
/// Says anew what is worth saying of what the diagnosis holds.
void find_all(Diagnosis& diagnosis);
void set_cause(Diagnosis& diagnosis, const Failure& failure);
/// Returns the memory that lines say would do; empty for none.
std::string told_mem(const std::vector<TailLine>& tail);

}  // namespace quor::input::gaussian

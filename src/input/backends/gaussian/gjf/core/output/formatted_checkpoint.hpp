// Reads formatted checkpoints: the other form in which results of Gaussian are handed on. Private to the room.
#pragma once

#include <gjf/core/output/output_lines.hpp>
#include <gjf/core/output/output_reader.hpp>

#include <string_view>

namespace quor::input::gaussian {

/// Tells whether a text begins as a formatted checkpoint does: a title, a line of kind, method and basis set, a heading.
bool begins_formatted_checkpoint(std::string_view text);

/// Tells the visitor of one step what an output would tell of it. Throws `OutputError` where what is needed cannot be read.
void read_formatted_checkpoint(OutputLines& lines, OutputVisitor& visitor);

}  // namespace quor::input::gaussian

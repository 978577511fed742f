// The rows of the operations by topic. Private to the room.
#pragma once

#include <gjf/core/editing/edit_operations.hpp>

#include <vector>

namespace quor::input::gaussian {

std::vector<EditOption> head_edit_options();
std::vector<EditOption> route_edit_options();
std::vector<EditOption> atom_edit_options();
std::vector<EditOption> molecule_edit_options();
std::vector<EditOption> section_edit_options();

}  // namespace quor::input::gaussian

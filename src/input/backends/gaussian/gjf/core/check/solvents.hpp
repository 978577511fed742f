// The solvents that SCRF knows by name. Private to the room.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// Tells whether a text is a solvent's name, the beginning of one, or a usual short name; letter case does not matter.
bool is_solvent(std::string_view name);

/// Returns all solvents, in lower case.
std::vector<std::string> solvent_names();

}  // namespace quor::input::gaussian

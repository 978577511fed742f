// Gathers the entries that a role (keyword, method, basis set, option) has, from the states of a vocabulary. Private to the
// room.
#pragma once

#include <gjf/core/schema/schema_tables.hpp>

namespace quor::input::gaussian {

/// Fills keyword_groups, procedure_groups, method_groups and basis_groups from the tables of states.
void collect_role_groups(SimpleYAMLParser::Impl& schema);

/// Fills option_groups from option_states. Throws std::length_error when the options of all keywords together would not fit
/// in reasonable memory.
void collect_option_groups(SimpleYAMLParser::Impl& schema);

}  // namespace quor::input::gaussian

// The jobs that a condition picks, as in --where 'opt=ts and charge = -1'.
#pragma once

#include <gjf/gjf.hpp>

#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace quor_gjf {

/// A condition on jobs; absent when none was given.
using Where = std::optional<quor::input::gaussian::JobPredicate>;

/// Declares --where.
void add_where_option(CLI::App& command, Where& where);

/// Reads a condition; throws `CLI::ValidationError` with its column.
quor::input::gaussian::JobPredicate read_condition(const std::string& name, const std::string& text);

}  // namespace quor_gjf

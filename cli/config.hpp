// The tool's configuration file: .quor-gjf in the current folder, or in the nearest folder above it.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace quor_gjf {

/// Lets an application read its configuration file. Keys stand under the name of their subcommand, as in [check]; a key
/// above all sections belongs to `check`. An unknown key is a usage error.
void read_configuration_file(CLI::App& app);

/// Words what CLI11 says of a configuration file: "FILE: no such option: SECTION.KEY".
std::string configuration_problem(CLI::App& app, std::string message);

}  // namespace quor_gjf

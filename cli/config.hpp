// The tool's configuration: which files have a say, and what of them is options of the command that runs.
#pragma once

#include <gjf/core/configuration/configuration.hpp>

#include <functional>

namespace CLI {
class App;
}

namespace quor_gjf {

/// Declares --config and --no-config, and gives the chosen command those options of the current folder's configuration that
/// are not on the command line, before it runs. What is told of single files, codes above all, is left to the command.
/// `declare_all` declares the options of all commands, which what stands in a file is judged by.
void read_configuration_files(CLI::App& app, std::function<void()> declare_all);

/// Returns the configurations of this run.
quor::input::gaussian::Configurations& configurations();

/// Reads configuration files anew when they are asked for again.
void forget_configurations();

/// Declares the arguments of `quor-gjf config`.
void add_config_command(CLI::App& command, int& exit_code);

}  // namespace quor_gjf

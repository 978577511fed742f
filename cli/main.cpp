// The tool's entry: declares the subcommands, reads the arguments and turns failures into exit codes.
#include "commands.hpp"
#include "config.hpp"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <string>

namespace {

struct Command {
    const char* name;
    const char* description;
    void (*add)(CLI::App& command, int& exit_code);
};

constexpr Command commands[] = {
    {"report", "Print what is in job files: Link 0, route, molecule, extra input and route warnings",
     quor_gjf::add_report_command},
    {"check", "Find what would make jobs fail, or give another result than meant", quor_gjf::add_check_command},
    {"outline", "Tell which lines of a job file hold what, and what is missing or left over", quor_gjf::add_outline_command},
    {"route", "Explain a route: model chemistry, keywords, the sections it wants, warnings", quor_gjf::add_route_command},
    {"complete", "List what may complete the last word of a route", quor_gjf::add_complete_command},
    {"edit", "Change job files, and nothing in them but what is to be changed", quor_gjf::add_edit_command},
    {"format", "Write job files anew in the fixed layout", quor_gjf::add_format_command},
    {"split", "Write each job of a file to a file of its own", quor_gjf::add_split_command},
    {"join", "Join job files to one file of several jobs", quor_gjf::add_join_command},
    {"schema", "Examine the route vocabulary, or ask it about a word", quor_gjf::add_schema_command},
};

int run(int argc, char** argv) {
    CLI::App app("Reads, checks and writes Gaussian 16 job files.", "quor-gjf");
    app.set_version_flag("--version", std::string("quor-gjf ") + QUOR_GJF_PROJECT_VERSION);
    app.require_subcommand(1);
    quor_gjf::read_configuration_file(app);
    int exit_code = quor_gjf::exit_success;
    for (const Command& command : commands) {
        command.add(*app.add_subcommand(command.name, command.description), exit_code);
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::ConfigError& error) {
        std::fprintf(stderr, "%s\n", quor_gjf::configuration_problem(app, error.what()).c_str());
        return quor_gjf::exit_usage;
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? quor_gjf::exit_success : quor_gjf::exit_usage;
    }
    return exit_code;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "quor-gjf: %s\n", error.what());
        return quor_gjf::exit_failure;
    }
}

// The tool's entry: declares the subcommands, reads the arguments and turns failures into exit codes.
#include "commands.hpp"
#include "config.hpp"
#include "input.hpp"
#include "near_options.hpp"
#include "terminal.hpp"

#include <gjf/core/text/steps_between.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

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
    {"find", "Name the jobs that fit a condition on route, charge, atoms and more", quor_gjf::add_find_command},
    {"diagnose", "Tell of outputs how their jobs ended, why, and what may help", quor_gjf::add_diagnose_command},
    {"next", "Write the job that follows an output: frequencies, a saddle, a path, ...", quor_gjf::add_next_command},
    {"retry", "Write jobs anew that failed, with what may cure them", quor_gjf::add_retry_command},
    {"diff", "Tell what differs between two job files by meaning", quor_gjf::add_diff_command},
    {"outline", "Tell which lines of a job file hold what, and what is missing or left over", quor_gjf::add_outline_command},
    {"route", "Explain a route: model chemistry, keywords, the sections it wants, warnings", quor_gjf::add_route_command},
    {"complete", "List what may complete the last word of a route", quor_gjf::add_complete_command},
    {"edit", "Change job files, and nothing in them but what is to be changed", quor_gjf::add_edit_command},
    {"format", "Write job files anew in the fixed layout, or align their atom lines", quor_gjf::add_format_command},
    {"split", "Write each job of a file to a file of its own", quor_gjf::add_split_command},
    {"join", "Join job files to one file of several jobs", quor_gjf::add_join_command},
    {"convert", "Write the molecules of job files as XYZ", quor_gjf::add_convert_command},
    {"schema", "Examine the route vocabulary, or ask it about a word", quor_gjf::add_schema_command},
    {"config", "Tell what configuration files say", quor_gjf::add_config_command},
    {"lsp", "Answer an editor over standard input and output: the Language Server Protocol", quor_gjf::add_lsp_command},
    {"mcp", "Serve agents over the Model Context Protocol, by tools that write nothing", quor_gjf::add_mcp_command},
    {"completion", "Print what completes commands in a shell: bash, zsh or fish", quor_gjf::add_completion_command},
};

bool is_command(const std::string& word) {
    return std::any_of(std::begin(commands), std::end(commands), [&](const Command& each) { return each.name == word; });
}

// Declares the options of commands, each once. All of them together take longer than all else that starting takes, so that a
// run declares those of its own command, and the others when something asks for them.
class Declarations {
   public:
    Declarations(CLI::App& app, int& exit_code) : exit_code_(exit_code) {
        for (const Command& command : commands) {
            waiting_.emplace_back(&command, app.add_subcommand(command.name, command.description));
        }
    }

    // Without a name: those of all.
    void declare(const std::string& name = {}) {
        for (auto& [command, app] : waiting_) {
            if (app != nullptr && (name.empty() || command->name == name)) {
                command->add(*std::exchange(app, nullptr), exit_code_);
            }
        }
    }

   private:
    int& exit_code_;
    std::vector<std::pair<const Command*, CLI::App*>> waiting_;  ///< null where it is done
};

// Tells of a word that stands in the place of the command and is none.
std::string wrong_command(const std::string& word) {
    const Command* near =
        std::min_element(std::begin(commands), std::end(commands), [&](const Command& a, const Command& b) {
            return quor::input::gaussian::steps_between(word, a.name) < quor::input::gaussian::steps_between(word, b.name);
        });
    const std::string message = "no command '" + quor_gjf::printable(word) + "'; ";
    return message + (quor::input::gaussian::steps_between(word, near->name) <= 2
                          ? "did you mean " + std::string(near->name) + "?"
                          : "quor-gjf --help lists all");
}

// The long options of the command that was read, and of those above it.
std::vector<std::string> options_of(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames()) {
            names.push_back("--" + name);
        }
    }
    for (const CLI::App* command : app.get_subcommands()) {
        const std::vector<std::string> more = options_of(*command);
        names.insert(names.end(), more.begin(), more.end());
    }
    return names;
}

// Tells of an option that is none where one is near to it; tells whether it did.
bool tell_wrong_option(const CLI::App& app, const std::vector<std::string>& arguments) {
    const std::vector<std::string> known = options_of(app);
    const auto end = std::find(arguments.begin(), arguments.end(), "--");
    for (auto argument = arguments.begin(); argument != end; ++argument) {
        const std::string name = argument->substr(0, argument->find('='));
        const std::vector<std::string> near =
            name.starts_with('-') ? quor_gjf::near_options(name, known) : std::vector<std::string>();
        if (!near.empty()) {
            std::fprintf(stderr, "%s: there is no such option; did you mean %s?\nRun with --help for more information.\n",
                         quor_gjf::printable(name).c_str(), quor_gjf::alternatives(near).c_str());
            return true;
        }
    }
    return false;
}

// Puts the tool's own options before the command, where they are read.
void put_first(std::vector<std::string>& arguments) {
    std::vector<std::string> own;
    std::vector<std::string> others;
    const auto end = std::find(arguments.begin(), arguments.end(), "--");
    for (auto argument = arguments.begin(); argument != end; ++argument) {
        const bool is_own = *argument == "--config" || *argument == "--no-config" || argument->starts_with("--config=");
        (is_own ? own : others).push_back(*argument);
        if (*argument == "--config" && argument + 1 != end) {
            own.push_back(*++argument);
        }
    }
    own.insert(own.end(), others.begin(), others.end());
    own.insert(own.end(), end, arguments.end());
    arguments = std::move(own);
}

// The arguments, with "help" and no arguments at all in the form that is read.
std::vector<std::string> arguments_of(int argc, char** argv) {
    std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    put_first(arguments);
    if (arguments.empty()) {
        return {"--help"};
    }
    if (arguments.front() == "help") {
        arguments.erase(arguments.begin());
        arguments.emplace_back("--help");
    }
    return arguments;
}

// Returns the first argument that is neither an option of the tool nor the value of one.
const std::string* command_in(const std::vector<std::string>& arguments) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == "--config") {
            ++i;
        } else if (!arguments[i].starts_with('-')) {
            return &arguments[i];
        }
    }
    return nullptr;
}

int run(int argc, char** argv) {
    CLI::App app("Reads, checks and writes Gaussian 16 job files.", "quor-gjf");
    app.set_version_flag("-V,--version", std::string("quor-gjf ") + QUOR_GJF_PROJECT_VERSION);
    app.require_subcommand(1);
    int exit_code = quor_gjf::exit_success;
    Declarations declarations(app, exit_code);
    quor_gjf::read_configuration_files(app, [&declarations] { declarations.declare(); });
    std::vector<std::string> arguments = arguments_of(argc, argv);
    if (const std::string* name = command_in(arguments)) {
        if (!is_command(*name)) {
            std::fprintf(stderr, "quor-gjf: %s\n", wrong_command(*name).c_str());
            return quor_gjf::exit_usage;
        }
        declarations.declare(*name == "completion" ? std::string() : *name);
    }
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const quor::input::gaussian::ConfigurationError& error) {
        std::fprintf(stderr, "%s\n", quor_gjf::printable(error.what()).c_str());
        return quor_gjf::exit_usage;
    } catch (const CLI::ExtrasError& error) {
        return tell_wrong_option(app, arguments) ? quor_gjf::exit_usage
                                                 : std::min(app.exit(error), int{quor_gjf::exit_usage});
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? quor_gjf::exit_success : quor_gjf::exit_usage;
    }
    return exit_code;
}

// Ends the process. A release leaves its memory to the system, which takes it back at once: giving back each word of the
// vocabulary takes a tenth of a short run. Other builds do it, since they look for what is lost, or count what is reached.
int leave(int exit_code) {
#ifdef NDEBUG
    std::fflush(nullptr);
    std::_Exit(exit_code);
#else
    return exit_code;
#endif
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return leave(run(argc, argv));
    } catch (const quor_gjf::MissingVocabulary& error) {
        std::fprintf(stderr, "quor-gjf: %s\n", quor_gjf::printable(error.what()).c_str());
        return quor_gjf::exit_usage;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "quor-gjf: %s\n", error.what());
        return quor_gjf::exit_failure;
    }
}

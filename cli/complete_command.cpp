// quor-gjf complete: lists what may complete the last word of a route, for editors and shells.
#include "commands.hpp"
#include "input.hpp"
#include "route_text.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

struct CompleteArguments {
    std::vector<std::string> text;
    bool json = false;
};

int complete(const CompleteArguments& arguments) {
    require_vocabulary();
    const RouteContext context = context_at_end(text_of_arguments(arguments.text));
    const std::vector<Completion> completions = completions_of(context);
    if (arguments.json) {
        std::fputs(completion_json(context, completions).c_str(), stdout);
        return exit_success;
    }
    for (const Completion& completion : completions) {
        std::printf("%s\n", completion.text.c_str());
    }
    return exit_success;
}

}  // namespace

void add_complete_command(CLI::App& command, int& exit_code) {
    const auto arguments = std::make_shared<CompleteArguments>();
    command.add_option("TEXT", arguments->text, "A route up to the place of the cursor; - reads standard input")->required();
    command.add_flag("--json", arguments->json, "Print a JSON object");
    command.callback([arguments, &exit_code] { exit_code = complete(*arguments); });
}

}  // namespace quor_gjf

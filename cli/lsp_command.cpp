// quor-gjf lsp: the language server, for editors that start it and speak with it over standard input and output.
#include "commands.hpp"
#include "config.hpp"
#include "input.hpp"
#include "message_stream.hpp"
#include "shared_checkpoints.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <memory>
#include <string>
#include <vector>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

// What `check` finds in a file with this text. Configuration files are read each time: somebody may be writing them.
std::vector<Finding> check_opened(const std::string& text, const std::string& path) {
    forget_configurations();
    const std::string name = path.empty() ? "-" : path;
    const CheckRules rules = check_rules(*configurations().for_file(path), name);
    FileCheckpoints checkpoints;
    CheckOptions options;
    options.path = path;
    options.read_checkpoints = !path.empty() && rules.reports(SharedCheckpoints::missing_code) ? &checkpoints.read : nullptr;
    std::vector<Finding> findings = rules.check(name, text, options);
    SharedCheckpoints({path}, Walk()).add_findings(path, text, checkpoints, findings);
    rules.apply(findings);
    return findings;
}

int serve_editor() {
    require_facts();
    LanguageServer server({check_opened});
    serve(Framing::Headers,
          {[&](std::string_view message) { server.take(message); }, [&] { return server.has_work(); },
           [&] { return server.work(); }, [&] { return server.is_over(); }, [&] { return server.client_process(); }});
    return server.is_over() ? server.exit_code() : exit_failure;
}

}  // namespace

void add_lsp_command(CLI::App& command, int& exit_code) {
    command.callback([&exit_code] { exit_code = serve_editor(); });
}

}  // namespace quor_gjf

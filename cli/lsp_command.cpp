// quor-gjf lsp: the language server, for editors that start it and speak with it over standard input and output.
#include "commands.hpp"
#include "config.hpp"
#include "file_list.hpp"
#include "input.hpp"
#include "message_stream.hpp"
#include "shared_checkpoints.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

const std::string& name_of(const std::string& path) {
    static const std::string unnamed = "-";
    return path.empty() ? unnamed : path;
}

// Configuration files are read each time: somebody may be writing them.
CheckRules rules_of(const std::string& path) {
    forget_configurations();
    return check_rules(*configurations().for_file(path), name_of(path));
}

// What `check` finds in a file with this text.
std::vector<Finding> check_opened(const std::string& text, const std::string& path) {
    const CheckRules rules = rules_of(path);
    FileCheckpoints checkpoints;
    CheckOptions options;
    options.path = path;
    options.read_checkpoints = !path.empty() && rules.reports(SharedCheckpoints::missing_code) ? &checkpoints.read : nullptr;
    std::vector<Finding> findings = rules.check(name_of(path), text, options);
    SharedCheckpoints({path}, Walk()).add_findings(path, text, checkpoints, findings);
    rules.apply(findings);
    return findings;
}

std::string fix_opened(const std::string& text, const std::string& path) {
    const CheckRules rules = rules_of(path);
    FixOptions options;
    options.check.limits = rules.limits;
    options.check.path = path;
    options.check.reports = [&rules](const std::string& code) { return rules.reports(code); };
    return fix_text(text, options).text;
}

std::vector<std::string> files_below(const std::string& folder, std::size_t most) {
    std::vector<std::string> paths;
    FileList list({folder});
    for (std::optional<ListedFile> file = list.next(); file && paths.size() < most; file = list.next()) {
        if (file->problem.empty()) {
            paths.push_back(file->path);
        }
    }
    return paths;
}

std::optional<std::string> text_or_nothing(const std::string& path) {
    try {
        return read_text(path);
    } catch (const UnreadableInput&) {
        return std::nullopt;
    }
}

int serve_editor() {
    require_facts();
    LanguageServer server({check_opened, fix_opened, true, files_below, text_or_nothing});
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

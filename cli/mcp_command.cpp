// quor-gjf mcp: the tools for agents, over standard input and output: a message a line.
#include "commands.hpp"
#include "input.hpp"
#include "message_stream.hpp"
#include "unified_diff.hpp"

#include <gjf/gjf.hpp>

#include <core/fs/read_regular_file.hpp>

#include <CLI/CLI.hpp>

#include <cstddef>
#include <deque>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;
using quor::core::fs::ReadOutcome;

constexpr std::size_t largest = std::size_t{256} << 20;  // bytes of a message, and of a file

std::string problem_of(ReadOutcome outcome) {
    switch (outcome) {
        case ReadOutcome::Missing:
            return "is not there";
        case ReadOutcome::NotRegular:
            return "is no regular file";
        case ReadOutcome::TooLarge:
            return "is larger than 256 MB";
        case ReadOutcome::Outside:
            return "leads out of the root";
        default:
            return "cannot be read";
    }
}

// Gives the texts of files below a folder; an absolute path may name one by way of the folder.
std::string text_below(const std::string& root, const std::string& path) {
    if (path.find('\0') != std::string::npos) {
        throw std::runtime_error("a path has no NUL");
    }
    const std::string begin = root.ends_with('/') ? root : root + '/';
    const std::string below = path.starts_with(begin) ? path.substr(begin.size()) : path;
    quor::core::fs::ReadFile file = quor::core::fs::read_regular_file_below(root, below, largest);
    if (file.outcome != ReadOutcome::Read) {
        throw std::runtime_error("'" + path + "' " + problem_of(file.outcome));
    }
    return std::move(file.text);
}

// Answers lines in their order until there are none; blank ones are no messages.
void serve_agent(ToolServer& server) {
    std::deque<std::string> waiting;
    serve(Framing::Lines, {[&](std::string_view line) {
                               if (line.find_first_not_of(" \t\r") != std::string_view::npos) {
                                   waiting.emplace_back(line);
                               }
                           },
                           [&] { return !waiting.empty(); },
                           [&] {
                               const std::string answer = server.receive(waiting.front());
                               waiting.pop_front();
                               return answer.empty() ? std::vector<std::string>() : std::vector<std::string>{answer};
                           },
                           [] { return false; }, nullptr, true});
}

void serve_below(const std::string& root) {
    require_facts();
    ToolServerOptions options;
    if (!root.empty()) {
        options.read = [folder = std::filesystem::canonical(root).string()](const std::string& path) {
            return text_below(folder, path);
        };
    }
    options.difference = [](const std::string& name, const std::string& before, const std::string& after) {
        return unified_diff(name, before, after, false);
    };
    ToolServer server(std::move(options));
    serve_agent(server);
}

}  // namespace

void add_mcp_command(CLI::App& command, int& exit_code) {
    const auto root = std::make_shared<std::string>();
    command.add_option("--root", *root, "The folder below which files are read; without it, none is")
        ->type_name("FOLDER")
        ->check(CLI::ExistingDirectory);
    command.callback([root, &exit_code] {
        serve_below(*root);
        exit_code = exit_success;
    });
}

}  // namespace quor_gjf

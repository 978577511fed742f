// Lays configuration files over the options of commands, and prints what holds.
#include "config.hpp"

#include "commands.hpp"
#include "terminal.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

struct KeptConfigurations {
    ConfigurationSources sources;
    std::optional<Configurations> files;
};

KeptConfigurations& kept_configurations() {
    static KeptConfigurations kept;
    return kept;
}

void keep_configurations(const ConfigurationSources& sources) {
    kept_configurations().sources = sources;
    kept_configurations().files.emplace(sources);
}

// Keys that no option of a command reads: the library knows them, or `check` asks for each file.
bool is_of_files(const Setting& setting) {
    constexpr std::array<std::string_view, 3> keys = {"select", "ignore", "fail-on"};
    const std::vector<std::string>& path = setting.path;
    return path.size() != 2 || path[0] == "files" || path[0] == "limits" || path[0] == "rules" ||
           (path[0] == "check" && std::find(keys.begin(), keys.end(), path[1]) != keys.end());
}

bool is_own_table(const Setting& setting) {
    const std::vector<std::string>& path = setting.path;
    return path[0] == "files" || path[0] == "limits" || path[0] == "rules" ||
           (path.size() == 3 && path[0] == "check" && (path[1] == "severity" || path[1] == "per-file-ignores"));
}

CLI::App* command_of(CLI::App& app, const Setting& setting) {
    CLI::App* command = &app;
    for (std::size_t i = 0; command != nullptr && i + 1 < setting.path.size(); ++i) {
        const auto below = command->get_subcommands([&](CLI::App* each) { return each->get_name() == setting.path[i]; });
        command = below.empty() ? nullptr : below.front();
    }
    return command;
}

// Returns the option that a setting stands for, or null.
CLI::Option* option_of(CLI::App& app, const Setting& setting) {
    CLI::App* command = command_of(app, setting);
    CLI::Option* option = command == nullptr ? nullptr : command->get_option_no_throw("--" + setting.path.back());
    const bool may_be_set = option != nullptr && option->get_configurable() && option != command->get_help_ptr();
    return may_be_set ? option : nullptr;
}

std::string problem_of(CLI::App& app, const Setting& setting) {
    if (is_own_table(setting)) {
        return {};
    }
    const CLI::Option* option = option_of(app, setting);
    if (option == nullptr || setting.path.size() < 2) {
        return "no such option: " + setting_name(setting);
    }
    const bool is_flag = option->get_items_expected_max() == 0;
    if (is_flag != (setting.kind == SettingKind::Flag)) {
        return setting_name(setting) + (is_flag ? " is true or false" : " is a text, a number or a list");
    }
    return {};
}

void apply(CLI::App& app, const Setting& setting) {
    CLI::Option* option = option_of(app, setting);
    if (is_of_files(setting) || !command_of(app, setting)->parsed() || !option->empty()) {
        return;
    }
    try {
        option->add_result(setting.values);
        option->run_callback();
    } catch (const CLI::ParseError& error) {
        throw ConfigurationError(setting, setting_name(setting) + ": " + error.what());
    }
}

// Writes a value as TOML has it.
std::string written(const Setting& setting) {
    const auto quoted = [](const std::string& text) {
        std::string result = "\"";
        for (const char c : text) {
            result += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
        }
        return result + '"';
    };
    if (setting.kind == SettingKind::Number || setting.kind == SettingKind::Flag) {
        return setting.values.front();
    }
    std::string text;
    for (const std::string& value : setting.values) {
        text += (text.empty() ? "" : ", ") + quoted(value);
    }
    return setting.kind == SettingKind::List ? '[' + text + ']' : text;
}

int show(const std::string& path) {
    const auto configuration = path.empty() ? configurations().for_folder({}) : configurations().for_file(path);
    check_rules(*configuration, path);
    if (configuration->settings().empty()) {
        std::fputs("no configuration file says anything here: defaults hold\n", stderr);
    }
    for (const Setting& setting : configuration->settings()) {
        std::printf("%s = %s  # %s:%zu\n", printable(setting_name(setting)).c_str(), printable(written(setting)).c_str(),
                    printable(setting.file).c_str(), setting.line);
    }
    return exit_success;
}

}  // namespace

Configurations& configurations() { return *kept_configurations().files; }

void forget_configurations() { kept_configurations().files.emplace(kept_configurations().sources); }

void read_configuration_files(CLI::App& app, std::function<void()> declare_all) {
    const auto sources = std::make_shared<ConfigurationSources>();
    CLI::Option* file =
        app.add_option("--config", sources->file, "Read options from this file alone (default: .quor-gjf and others)")
            ->type_name("FILE");
    app.add_flag("--no-config", sources->none, "Read options from no file")->excludes(file);
    sources->judge = [&app, declare_all = std::move(declare_all)](const Setting& setting) {
        declare_all();
        return problem_of(app, setting);
    };
    keep_configurations(*sources);
    app.parse_complete_callback([&app, sources] {
        if (app.got_subcommand("completion")) {
            return;  // whoever types a command is not to be stopped by a mistake elsewhere
        }
        keep_configurations(*sources);
        const auto configuration = configurations().for_folder({});
        for (const Setting& setting : configuration->settings()) {
            apply(app, setting);
        }
    });
}

void add_config_command(CLI::App& command, int& exit_code) {
    command.require_subcommand(1);
    const auto path = std::make_shared<std::string>();
    CLI::App* tell = command.add_subcommand("show", "Print the options that configuration files give, and from where");
    tell->add_option("FILE", *path, "A job file for which they hold (default: the current folder)");
    tell->callback([path, &exit_code] { exit_code = show(*path); });
}

}  // namespace quor_gjf

// Finds the configuration file and reads it in CLI11's own format.
#include "config.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <istream>
#include <memory>
#include <string_view>
#include <system_error>
#include <vector>

namespace quor_gjf {
namespace {

namespace fs = std::filesystem;

constexpr const char* file_name = ".quor-gjf";

// CLI11 takes a folder's name for no file, so a folder of this name does no harm.
std::string nearest_file() {
    std::error_code error;
    fs::path folder = fs::current_path(error);
    while (!error && !folder.empty()) {
        const fs::path candidate = folder / file_name;
        if (fs::is_regular_file(candidate, error)) {
            return candidate.string();
        }
        error.clear();
        if (folder == folder.root_path()) {
            break;
        }
        folder = folder.parent_path();
    }
    return {};
}

// Gives keys above all sections to `check`.
class Configuration : public CLI::ConfigTOML {
   public:
    std::vector<CLI::ConfigItem> from_config(std::istream& input) const override {
        std::vector<CLI::ConfigItem> entries = CLI::ConfigTOML::from_config(input);
        for (CLI::ConfigItem& item : entries) {
            if (item.parents.empty() && item.name != "++" && item.name != "--") {
                item.parents = {"check"};
            }
        }
        return entries;
    }
};

}  // namespace

void read_configuration_file(CLI::App& app) {
    app.set_config("--config", nearest_file(), "Read options from this file (default: the nearest .quor-gjf)")
        ->type_name("FILE");
    app.config_formatter(std::make_shared<Configuration>());
    app.allow_config_extras(CLI::config_extras_mode::error);
}

std::string configuration_problem(CLI::App& app, std::string message) {
    constexpr std::string_view unknown_key = "INI was not able to parse ";
    constexpr std::string_view section_mark = ".++";
    if (message.starts_with(unknown_key)) {
        message.replace(0, unknown_key.size(), "no such option: ");
    }
    if (message.ends_with(section_mark)) {
        message.resize(message.size() - section_mark.size());
    }
    return app.get_config_ptr()->as<std::string>() + ": " + message;
}

}  // namespace quor_gjf

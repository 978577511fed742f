// Reads TOML through toml++ and flattens its tables.
#include <gjf/core/configuration/toml_settings.hpp>

// From its headers alone, so that no program needs one more library.
#define TOML_HEADER_ONLY 1
#define TOML_ENABLE_FORMATTERS 0
#include <toml++/toml.h>

#include <algorithm>
#include <utility>

namespace quor::input::gaussian {
namespace {

std::size_t line_of(const toml::node& node) { return node.source().begin.line; }

void add_values(const toml::array& items, Setting& setting) {
    setting.kind = SettingKind::List;
    for (const toml::node& item : items) {
        const auto text = item.value_exact<std::string>();
        if (!text) {
            throw ConfigurationError(setting, "the items of " + setting_name(setting) + " are texts, in quotes");
        }
        setting.values.push_back(*text);
    }
}

void add_value(const toml::node& node, Setting& setting) {
    if (const toml::array* items = node.as_array()) {
        add_values(*items, setting);
    } else if (const auto text = node.value_exact<std::string>()) {
        setting.values = {*text};
    } else if (const auto number = node.value_exact<std::int64_t>()) {
        setting.kind = SettingKind::Number;
        setting.values = {std::to_string(*number)};
    } else if (const auto flag = node.value_exact<bool>()) {
        setting.kind = SettingKind::Flag;
        setting.values = {*flag ? "true" : "false"};
    } else {
        throw ConfigurationError(setting,
                                 setting_name(setting) + " is a text, a whole number, true, false or a list of texts");
    }
}

void add_settings(const toml::table& table, const Setting& above, std::vector<Setting>& settings) {
    for (const auto& [key, node] : table) {
        Setting setting = above;
        setting.path.emplace_back(key.str());
        setting.line = key.source().begin.line != 0 ? key.source().begin.line : line_of(node);
        if (const toml::table* below = node.as_table()) {
            add_settings(*below, setting, settings);
            continue;
        }
        add_value(node, setting);
        settings.push_back(std::move(setting));
    }
}

}  // namespace

std::vector<Setting> toml_settings(const std::string& text, const std::string& file) {
    Setting top;
    top.file = file;
    std::vector<Setting> settings;
    try {
        add_settings(toml::parse(text), top, settings);
    } catch (const toml::parse_error& error) {
        top.line = error.source().begin.line;
        std::string message(error.description());
        std::replace(message.begin(), message.end(), '\n', ' ');
        throw ConfigurationError(top, message + "; texts stand in quotes");
    }
    return settings;
}

}  // namespace quor::input::gaussian

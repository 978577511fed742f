// Judges settings and puts one file's over another's.
#include <gjf/core/configuration/configuration.hpp>

#include <gjf/core/configuration/toml_settings.hpp>
#include <gjf/core/job/memory_amount.hpp>

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace quor::input::gaussian {
namespace {

using Path = std::vector<std::string>;

bool is_severity(const std::string& value) {
    return value == "error" || value == "warning" || value == "note" || value == "off";
}

bool is_memory(const std::string& value) {
    const std::optional<MemoryAmount> memory = read_memory_amount(value);
    return memory && memory->unit != 0 && memory->amount > 0;
}

bool is_count(const std::string& value) { return value.size() < 10 && value != "0" && value.front() != '-'; }

bool is_site_severity(const std::string& value) { return value == "warning" || value == "note"; }

bool is_anything(const std::string& /*value*/) { return true; }

bool is_filled(const std::string& value) { return value.find_first_not_of(" \t") != std::string::npos; }

// Keys that no option of a command stands for. A name of "" is any, "*" any table.
struct KnownKey {
    std::string_view table;
    std::string_view below;
    std::string_view name;
    SettingKind kind;
    bool (*takes)(const std::string& value);
    const char* wanted;
};

constexpr std::array<KnownKey, 10> known_keys = {{
    {"check", "severity", "", SettingKind::Text, is_severity, "is \"error\", \"warning\", \"note\" or \"off\""},
    {"check", "per-file-ignores", "", SettingKind::List, is_anything, "is a list of codes"},
    {"files", "", "exclude", SettingKind::List, is_anything, "is a list of patterns"},
    {"limits", "", "memory", SettingKind::Text, is_memory, "is an amount of memory with its unit, as \"64GB\""},
    {"limits", "", "cores", SettingKind::Number, is_count, "is a number of cores"},
    {"limits", "", "forbid", SettingKind::List, is_anything, "is a list of words"},
    {"limits", "", "require", SettingKind::List, is_anything, "is a list of words"},
    {"rules", "*", "when", SettingKind::Text, is_filled, "is a condition on a job, as \"opt=ts and not freq\""},
    {"rules", "*", "message", SettingKind::Text, is_filled, "is what is told of the job"},
    {"rules", "*", "severity", SettingKind::Text, is_site_severity,
     "is \"warning\" or \"note\": Gaussian would run the job"},
}};

bool fits(const KnownKey& key, const Path& path) {
    const bool is_nested = !key.below.empty();
    return path.size() == (is_nested ? 3U : 2U) && path[0] == key.table &&
           (!is_nested || key.below == "*" || path[1] == key.below) && (key.name.empty() || path.back() == key.name);
}

bool is_own_table(const Path& path) {
    return path.front() == "files" || path.front() == "limits" || path.front() == "rules" ||
           (path.size() > 1 && path.front() == "check" && (path[1] == "severity" || path[1] == "per-file-ignores"));
}

void judge_own(const Setting& setting) {
    if (!is_own_table(setting.path)) {
        return;
    }
    const auto* known =
        std::find_if(known_keys.begin(), known_keys.end(), [&](const KnownKey& key) { return fits(key, setting.path); });
    if (known == known_keys.end()) {
        throw ConfigurationError(setting, "no such option: " + setting_name(setting));
    }
    if (setting.kind != known->kind || !std::all_of(setting.values.begin(), setting.values.end(), known->takes)) {
        throw ConfigurationError(setting, setting_name(setting) + ' ' + known->wanted);
    }
}

bool by_path(const Setting& a, const Setting& b) { return a.path < b.path; }

}  // namespace

std::string setting_name(const Setting& setting) {
    std::string name;
    for (const std::string& part : setting.path) {
        name += (name.empty() ? "" : ".") + part;
    }
    return name;
}

ConfigurationError::ConfigurationError(const Setting& setting, const std::string& message)
    : std::runtime_error(setting.file + ':' + (setting.line == 0 ? "" : std::to_string(setting.line) + ':') + ' ' +
                         message) {}

std::vector<Setting> read_configuration(const std::string& text, const std::string& file) {
    std::vector<Setting> settings = toml_settings(text, file);
    for (Setting& setting : settings) {
        if (setting.path.size() == 1) {
            setting.path.insert(setting.path.begin(), "check");
        }
        judge_own(setting);
    }
    std::sort(settings.begin(), settings.end(), by_path);
    const auto twice =
        std::adjacent_find(settings.begin(), settings.end(), [](const auto& a, const auto& b) { return a.path == b.path; });
    if (twice != settings.end()) {
        throw ConfigurationError(*twice, setting_name(*twice) + " is given twice: above all tables and below [check]");
    }
    return settings;
}

void Configuration::add(const std::vector<Setting>& settings) {
    for (const Setting& setting : settings) {
        const auto place = std::lower_bound(settings_.begin(), settings_.end(), setting, by_path);
        if (place != settings_.end() && place->path == setting.path) {
            *place = setting;
        } else {
            settings_.insert(place, setting);
        }
    }
}

const Setting* Configuration::find(const Path& path) const noexcept {
    const auto place = std::lower_bound(settings_.begin(), settings_.end(), path,
                                        [](const Setting& setting, const Path& wanted) { return setting.path < wanted; });
    return place == settings_.end() || place->path != path ? nullptr : &*place;
}

}  // namespace quor::input::gaussian

// What configuration files say: .quor-gjf of a project, that of the user and that of the system, all TOML. The tool reads
// them, and a server would; the library's other doors do not, unless asked.
#pragma once

#include <core/export.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace quor::input::gaussian {

enum class SettingKind : std::uint8_t { Text, Number, Flag, List };

/// One key of a configuration, with its place.
struct Setting {
    std::vector<std::string> path;  ///< its tables and its name, as in {"check", "fail-on"}
    SettingKind kind = SettingKind::Text;
    std::vector<std::string> values;  ///< of a list its items, else one; numbers and flags as they are written
    std::string file;
    std::size_t line = 0;
    std::string folder;  ///< from where patterns of paths count: of a project file its own, else the current one
};

/// Returns the name of a setting, as in "check.fail-on".
QUOR_GJF_API std::string setting_name(const Setting& setting);

/// Tells what is wrong with a configuration file: "FILE:LINE: what", without the line where none is to blame.
class QUOR_GJF_API ConfigurationError : public std::runtime_error {
   public:
    using std::runtime_error::runtime_error;
    ConfigurationError(const Setting& setting, const std::string& message);
};

/// Reads the text of a configuration file, whose keys above all tables belong to `check`. Throws `ConfigurationError` for
/// what is no TOML, for a value of a kind that no key has, and for wrong keys and values of the tables check.severity,
/// check.per-file-ignores, files, limits and rules. Other keys are the caller's to judge.
QUOR_GJF_API std::vector<Setting> read_configuration(const std::string& text, const std::string& file);

/// What holds for some files: of each key the nearest setting, in the order of keys.
class QUOR_GJF_API Configuration {
   public:
    Configuration() = default;
    /// Puts settings over those that are there.
    void add(const std::vector<Setting>& settings);
    /// Returns a setting by its tables and name, or null.
    const Setting* find(const std::vector<std::string>& path) const noexcept;
    const std::vector<Setting>& settings() const noexcept { return settings_; }

   private:
    std::vector<Setting> settings_;
};

/// Where configurations come from.
struct ConfigurationSources {
    std::string file;   ///< stands for all others; empty: they are looked for
    bool none = false;  ///< there are none
    /// Tells what is wrong with a setting; empty for nothing. May be empty itself.
    std::function<std::string(const Setting&)> judge;
};

/// Finds the configuration of files and keeps it: that of the system (quor-gjf/config.toml in XDG_CONFIG_DIRS), over it the
/// user's (in XDG_CONFIG_HOME), over it the nearest .quor-gjf, from the file's folder up to the first that holds .git or is
/// the home folder. Safe to use from several threads.
class QUOR_GJF_API Configurations {
   public:
    explicit Configurations(ConfigurationSources sources = {});
    ~Configurations();
    Configurations(const Configurations&) = delete;
    Configurations& operator=(const Configurations&) = delete;

    /// Returns what holds in a folder, "" for the current one, which must not change meanwhile. Throws `ConfigurationError`,
    /// each time it is asked.
    std::shared_ptr<const Configuration> for_folder(const std::string& folder);
    /// Returns what holds for a file.
    std::shared_ptr<const Configuration> for_file(const std::string& path);

   private:
    struct Cache;
    std::unique_ptr<Cache> cache_;
};

/// Tells whether a path fits a pattern: * and ? stand for characters of one name, ** for any, folders too. A pattern without
/// a slash fits any name on the path; a pattern that fits a folder fits all below it. Both are relative.
QUOR_GJF_API bool path_matches(const std::string& pattern, const std::string& path);

/// Returns a path as patterns see it: relative to a folder.
QUOR_GJF_API std::string path_below(const std::string& folder, const std::string& path);

}  // namespace quor::input::gaussian

// Looks for configuration files and keeps what was read of them.
#include <gjf/core/configuration/configuration.hpp>

#include <core/resource/resource.hpp>
#include <gjf/core/reader/job_text.hpp>

#include <algorithm>
#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <system_error>
#include <utility>

namespace quor::input::gaussian {
namespace {

namespace fs = std::filesystem;
using quor::core::resource::getenv_string;

constexpr const char* project_file_name = ".quor-gjf";
constexpr const char* user_file_name = "quor-gjf/config.toml";
constexpr std::size_t most_folders = 1000;

std::string current_folder() {
    std::error_code error;
    return fs::current_path(error).string();
}

// Returns the files of the system, the farthest first, and that of the user.
std::vector<fs::path> user_files() {
    std::string folders = getenv_string("XDG_CONFIG_DIRS");
    folders = folders.empty() ? "/etc/xdg" : folders;
    std::vector<fs::path> files;
    while (!folders.empty()) {
        const std::size_t end = std::min(folders.find(':'), folders.size());
        files.insert(files.begin(), fs::path(folders.substr(0, end)) / user_file_name);
        folders.erase(0, end + 1);
    }
    const std::string own = getenv_string("XDG_CONFIG_HOME");
    const std::string home = getenv_string("HOME");
    files.push_back((own.empty() ? fs::path(home) / ".config" : fs::path(own)) / user_file_name);
    // By the rules of XDG, what is not absolute is not meant.
    files.erase(std::remove_if(files.begin(), files.end(), [](const fs::path& path) { return !path.is_absolute(); }),
                files.end());
    return files;
}

fs::path absolute_path(const std::string& path) {
    std::error_code error;
    const fs::path absolute = fs::absolute(path.empty() ? "." : path, error).lexically_normal();
    return absolute.has_filename() ? absolute : absolute.parent_path();
}

// Returns the nearest file of a project, "" for none.
fs::path project_file(fs::path folder) {
    const std::string home = getenv_string("HOME");
    std::error_code error;
    while (!folder.empty()) {
        if (fs::is_regular_file(folder / project_file_name, error)) {
            return folder / project_file_name;
        }
        if (fs::exists(folder / ".git", error) || folder == home || folder == folder.root_path()) {
            break;
        }
        folder = folder.parent_path();
    }
    return {};
}

// Returns a path as people see it from the current folder.
std::string shown_path(const fs::path& path) {
    const fs::path relative = path.lexically_relative(current_folder());
    return relative.empty() || *relative.begin() == ".." ? path.string() : relative.string();
}

}  // namespace

struct Configurations::Cache {
    explicit Cache(ConfigurationSources from) : sources(std::move(from)) {}

    // Reads a file and judges it; `folder` is where its patterns count from.
    void add_file(const fs::path& path, const std::string& folder, Configuration& to) const {
        std::vector<Setting> settings = read_configuration(text_of(path), shown_path(path));
        for (Setting& setting : settings) {
            setting.folder = folder;
            if (const std::string problem = sources.judge ? sources.judge(setting) : std::string(); !problem.empty()) {
                throw ConfigurationError(setting, problem);
            }
        }
        to.add(settings);
    }

    static std::string text_of(const fs::path& path) {
        try {
            return read_whole_file(path.string());
        } catch (const std::exception&) {
            throw ConfigurationError(path.string() + ": cannot be read");
        }
    }

    const Configuration& of_user() {
        if (!user) {
            Configuration read;
            std::error_code error;
            for (const fs::path& path : user_files()) {
                if (fs::is_regular_file(path, error)) {
                    add_file(path, current_folder(), read);
                }
            }
            user = std::move(read);
        }
        return *user;
    }

    std::shared_ptr<const Configuration> read(const fs::path& project) {
        const auto configuration = std::make_shared<Configuration>();
        if (sources.none) {
            return configuration;
        }
        if (!sources.file.empty()) {
            add_file(sources.file, current_folder(), *configuration);
            return configuration;
        }
        *configuration = of_user();
        if (!project.empty()) {
            add_file(project, project.parent_path().string(), *configuration);
        }
        return configuration;
    }

    std::shared_ptr<const Configuration> of_folder(const std::string& folder);

    ConfigurationSources sources;
    std::mutex mutex;
    std::optional<Configuration> user;
    std::string last_folder;  // asked for, and its answer: most files lie beside the one before
    std::shared_ptr<const Configuration> last;
    std::map<std::string, std::string> project_files;  // by folder
    std::map<std::string, std::shared_ptr<const Configuration>> read_files;
};

Configurations::Configurations(ConfigurationSources sources) : cache_(std::make_unique<Cache>(std::move(sources))) {}

Configurations::~Configurations() = default;

std::shared_ptr<const Configuration> Configurations::for_folder(const std::string& folder) {
    const std::lock_guard lock(cache_->mutex);
    if (cache_->last == nullptr || folder != cache_->last_folder) {
        cache_->last = cache_->of_folder(folder);
        cache_->last_folder = folder;
    }
    return cache_->last;
}

std::shared_ptr<const Configuration> Configurations::Cache::of_folder(const std::string& folder) {
    const bool searches = !sources.none && sources.file.empty();
    if (project_files.size() > most_folders) {
        project_files.clear();
        read_files.clear();
    }
    const auto [known, is_new] = project_files.try_emplace(searches ? absolute_path(folder).string() : std::string());
    if (is_new && searches) {
        known->second = project_file(known->first).string();
    }
    const auto found = read_files.find(known->second);
    if (found != read_files.end()) {
        return found->second;
    }
    std::shared_ptr<const Configuration> configuration = read(known->second);
    read_files.emplace(known->second, configuration);
    return configuration;
}

std::shared_ptr<const Configuration> Configurations::for_file(const std::string& path) {
    const std::size_t slash = path.find_last_of('/');
    return for_folder(slash == std::string::npos ? std::string() : path.substr(0, std::max<std::size_t>(slash, 1)));
}

std::string path_below(const std::string& folder, const std::string& path) {
    const fs::path absolute = absolute_path(path);
    const fs::path relative = absolute.lexically_relative(folder);
    return relative.empty() || *relative.begin() == ".." ? absolute.relative_path().string() : relative.string();
}

}  // namespace quor::input::gaussian

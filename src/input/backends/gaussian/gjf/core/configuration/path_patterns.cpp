// Patterns of paths, matched against all beginnings of a path at once: time grows with the length of pattern and path alone.
#include <gjf/core/configuration/configuration.hpp>

#include <cstddef>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {
namespace {

// Which beginnings of a path the part of the pattern so far fits: [n] for n characters.
using Reached = std::vector<bool>;

// Any number of characters: all, or those of one name.
void extend(Reached& reached, std::string_view path, bool over_folders) {
    for (std::size_t i = 1; i < reached.size(); ++i) {
        reached[i] = reached[i] || (reached[i - 1] && (over_folders || path[i - 1] != '/'));
    }
}

// Folders, none or any number: "**/".
void extend_by_folders(Reached& reached, std::string_view path) {
    bool begun = false;
    for (std::size_t i = 0; i < reached.size(); ++i) {
        const bool stood = reached[i];
        reached[i] = stood || (begun && path[i - 1] == '/');
        begun = begun || stood;
    }
}

void step(Reached& reached, std::string_view path, char wanted) {
    for (std::size_t i = reached.size() - 1; i > 0; --i) {
        const char c = path[i - 1];
        reached[i] = reached[i - 1] && (wanted == '?' ? c != '/' : c == wanted);
    }
    reached[0] = false;
}

// Tells whether a pattern fits a path, or a folder on it.
bool fits(std::string_view pattern, std::string_view path) {
    Reached reached(path.size() + 1);
    reached[0] = true;
    while (!pattern.empty()) {
        const bool folders = pattern.substr(0, 3) == "**/";
        const bool any = pattern.substr(0, 2) == "**";
        if (folders) {
            extend_by_folders(reached, path);
        } else if (pattern.front() == '*') {
            extend(reached, path, any);
        } else {
            step(reached, path, pattern.front());
        }
        pattern.remove_prefix(folders ? 3 : any ? 2 : 1);
    }
    for (std::size_t i = 1; i < path.size(); ++i) {
        if (reached[i] && path[i] == '/') {
            return true;
        }
    }
    return reached.back();
}

}  // namespace

bool path_matches(const std::string& pattern, const std::string& path) {
    std::string_view wanted = pattern;
    wanted.remove_prefix(wanted.substr(0, 2) == "./" ? 2 : 0);
    wanted.remove_suffix(wanted.size() > 1 && wanted.back() == '/' ? 1 : 0);
    if (wanted.find('/') != std::string_view::npos) {
        return !wanted.empty() && fits(wanted, path);
    }
    // A pattern of one name fits wherever the name stands.
    return !wanted.empty() && fits("**/" + std::string(wanted), path);
}

}  // namespace quor::input::gaussian

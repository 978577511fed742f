// Finds the route vocabulary: near the caller, near the library, in the source tree this was built from, under HOME; and the
// facts beside it.
#include <gjf/core/route_schema_paths.hpp>

#include <core/resource/resource.hpp>

#include <string_view>

namespace quor::input::gaussian {

namespace {

constexpr const char* source_tree_schema = "resources/schemas/input/gaussian_route.yaml";
constexpr const char* installed_schema = "share/quorlib/schemas/input/gaussian_route.yaml";
constexpr std::string_view vocabulary_below_resources = "schemas/input/gaussian_route.yaml";
constexpr const char* one_table = "knowledge/words.tsv";
constexpr const char* knowledge_variable = "QUOR_G16_KNOWLEDGE";
constexpr int parent_limit = 6;

/// Where this file lies below a source root, in the layouts it has had.
constexpr std::string_view source_file_suffixes[] = {
    "/src/input/backends/gaussian/gjf/core/route_schema_paths.cpp",
    "src/input/backends/gaussian/gjf/core/route_schema_paths.cpp",
    "/g16/gjf/src/core/route_schema_paths.cpp",
    "g16/gjf/src/core/route_schema_paths.cpp",
};

/// Returns a vocabulary that one of `variables` names, or the nearest to `base`; empty when there is none.
std::string find_near(const std::vector<std::string>& variables, const std::string& base = {}) {
    return quor::core::resource::search_file(variables, {}, {source_tree_schema, installed_schema}, base, {}, parent_limit);
}

/// Returns the vocabulary's path in the source tree that `source_file` belongs to, or an empty text when it is not there.
std::string schema_in_source_tree(std::string_view source_file) {
    for (const std::string_view suffix : source_file_suffixes) {
        const std::size_t position = source_file.rfind(suffix);
        if (position == std::string_view::npos) {
            continue;
        }
        const std::string root(source_file.substr(0, position));
        const std::string path = root + "/" + source_tree_schema;
        return quor::core::resource::is_regular_file_path(path) ? path : std::string{};
    }
    return {};
}

}  // namespace

/// Resolves as `resolve_route_schema_path` does, for a build that recorded `source_file` as the path of this file. Not
/// exported.
std::string resolve_route_schema_path_of_build(const std::string& base, std::string_view source_file);

std::string resolve_route_schema_path_of_build(const std::string& base, std::string_view source_file) {
    std::string path = find_near({route_schema_variable}, base);
    if (!path.empty()) {
        return path;
    }
    path = schema_in_source_tree(source_file);
    if (!path.empty()) {
        return path;
    }
    const std::string home = quor::core::resource::getenv_string("HOME");
    return home.empty() ? source_tree_schema : home + "/.quor/lib/" + source_tree_schema;
}

std::string resolve_route_schema_path(const std::string& base) {
    return resolve_route_schema_path_of_build(base, QUOR_GJF_PATHS_SOURCE);
}

std::string route_schema_beside_library() {
    std::string path = quor::core::resource::search_near_library({source_tree_schema, installed_schema}, parent_limit);
    return path.empty() ? schema_in_source_tree(QUOR_GJF_PATHS_SOURCE) : path;
}

std::string resolve_knowledge_folder() {
    std::string named = quor::core::resource::getenv_string(knowledge_variable);
    if (!named.empty()) {
        return named;
    }
    // A vocabulary of one's own may stand anywhere; then the facts are those beside the default one.
    for (const std::string& vocabulary : {resolve_route_schema_path(""), find_near({}), route_schema_beside_library()}) {
        const std::size_t end = vocabulary.rfind(vocabulary_below_resources);
        if (end != std::string::npos && quor::core::resource::is_regular_file_path(vocabulary.substr(0, end) + one_table)) {
            return vocabulary.substr(0, end) + "knowledge";
        }
    }
    return "resources/knowledge";
}

std::string resolve_recipes_folder() {
    const std::string facts = resolve_knowledge_folder();
    const std::size_t end = facts.find_last_of('/', facts.find_last_not_of('/'));
    return end == std::string::npos ? "recipes" : facts.substr(0, end + 1) + "recipes";
}

}  // namespace quor::input::gaussian

// Keeps the vocabularies of this process. Nothing runs before the first question.
//
// Where memory runs out while one is loaded, nothing is kept and the exception passes on: to read on without a vocabulary
// would read jobs wrongly, and for as long as the process lives.
#include <gjf/core/schema/route_schema_cache.hpp>

#include <core/resource/resource.hpp>
#include <gjf/core/route_schema_paths.hpp>
#include <gjf/core/schema/carried_resources.hpp>
#include <gjf/core/schema/schema_document.hpp>
#include <gjf/core/schema/schema_image.hpp>
#include <gjf/core/schema/schema_validation.hpp>

#include <memory>
#include <mutex>
#include <unordered_map>
#include <utility>

namespace quor::input::gaussian {

namespace {

struct SchemaCache {
    std::mutex mutex;
    std::unordered_map<std::string, SchemaCacheEntry> entries;
};

SchemaCache& schema_cache() {
    static SchemaCache cache;
    return cache;
}

// The default vocabulary, and where it came from.
struct DefaultSchema {
    SimpleYAMLParser parser;
    std::string path;
    std::string warning;  // where it stands in for a document before it that does not load
};

std::string named_path() { return quor::core::resource::getenv_string(route_schema_variable); }

std::string first_problem(const std::string& path) {
    for (const SchemaProblem& problem : validate_route_schema(path)) {
        return path + ':' + (problem.line == 0 ? std::string() : std::to_string(problem.line) + ':') + ' ' + problem.message;
    }
    return path + ": it holds no vocabulary";
}

// What is carried inside, where there are no files to look for.
SchemaCacheEntry carried_schema() {
    auto tables = std::make_shared<SimpleYAMLParser::Impl>();
    if (!read_schema_image(carried_resource("gaussian_route.yaml.image"), std::nullopt, *tables)) {
        return {};
    }
    return {true, SimpleYAMLParser(std::move(tables))};
}

// A document that was named is the one that is meant; for one that merely lies on the way, another may stand in.
DefaultSchema load_default_schema() {
    const std::string path = resolve_route_schema_path("");
    SchemaCacheEntry entry = load_route_schema_cached(path);
    const std::string other = route_schema_beside_library();
    if (entry.loaded || path == named_path()) {
        return {std::move(entry.parser), path, {}};
    }
    entry = load_route_schema_cached(other);
    if (!entry.loaded) {
        return {carried_schema().parser, path, {}};
    }
    return {std::move(entry.parser), other, first_problem(path) + "; " + other + " serves in its place"};
}

const DefaultSchema& loaded_default() {
    static const DefaultSchema schema = load_default_schema();
    return schema;
}

}  // namespace

SchemaCacheEntry load_route_schema_cached(const std::string& path) {
    if (path.empty()) {
        return {};
    }
    SchemaCache& cache = schema_cache();
    const std::lock_guard<std::mutex> lock(cache.mutex);
    const auto found = cache.entries.find(path);
    if (found != cache.entries.end()) {
        return found->second;
    }
    auto tables = std::make_shared<SimpleYAMLParser::Impl>();
    SchemaCacheEntry entry;
    entry.loaded = load_schema_document(path, *tables);
    if (entry.loaded) {
        entry.parser = SimpleYAMLParser(std::move(tables));
    }
    cache.entries.emplace(path, entry);
    return entry;
}

std::string default_route_schema_problem() {
    const std::string named = named_path();
    if (!named.empty() && !quor::core::resource::is_regular_file_path(named)) {
        return named + ", which " + route_schema_variable + " names, is no file";
    }
    if (default_route_schema().is_loaded()) {
        return {};
    }
    const std::string path = default_route_schema_path();
    if (!quor::core::resource::is_regular_file_path(path)) {
        return std::string("no route vocabulary was found; set ") + route_schema_variable +
               " to the path of gaussian_route.yaml";
    }
    return first_problem(path);
}

std::string default_route_schema_warning() { return loaded_default().warning; }

std::string default_route_schema_path() { return loaded_default().path; }

const SimpleYAMLParser& default_route_schema() { return loaded_default().parser; }

}  // namespace quor::input::gaussian

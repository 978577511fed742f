// Keeps the vocabularies of this process. Nothing runs before the first question.
//
// Where memory runs out while one is loaded, nothing is kept and the exception passes on: to read on without a vocabulary
// would read jobs wrongly, and for as long as the process lives.
#include <gjf/core/schema/route_schema_cache.hpp>

#include <gjf/core/route_schema_paths.hpp>
#include <gjf/core/schema/schema_document.hpp>

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

SimpleYAMLParser load_default_schema() {
    SchemaCacheEntry entry = load_route_schema_cached(resolve_route_schema_path(""));
    return entry.loaded ? std::move(entry.parser) : SimpleYAMLParser();
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

const SimpleYAMLParser& default_route_schema() {
    static const SimpleYAMLParser schema = load_default_schema();
    return schema;
}

}  // namespace quor::input::gaussian

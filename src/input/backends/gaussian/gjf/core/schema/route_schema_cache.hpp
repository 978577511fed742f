// The vocabularies this process has loaded: one per path, and the default one.
#pragma once

#include <core/export.hpp>
#include <gjf/core/schema/simple_yaml_parser.hpp>

#include <string>

namespace quor::input::gaussian {

/// A cached load: whether it succeeded, and the vocabulary (empty when not).
struct SchemaCacheEntry {
    bool loaded = false;
    SimpleYAMLParser parser;
};

/// Returns the vocabulary at `path`, loading it on the first call for that path (compared byte for byte).
///
/// Failures are remembered too, but for want of memory, which throws std::bad_alloc and leaves the next call to try again.
/// An empty path gives an entry that is not loaded. Safe to call from several threads; a load blocks the others.
QUOR_GJF_API SchemaCacheEntry load_route_schema_cached(const std::string& path);

/// Returns the process-wide default vocabulary, located and loaded on the first call and never again.
///
/// It is the document that the environment variable QUOR_G16_ROUTE_SCHEMA_YAML names, else the one found by
/// `resolve_route_schema_path`, or, where that one does not load, the one of `route_schema_beside_library`; else an empty
/// vocabulary. Safe to call from several threads. Throws std::bad_alloc when
/// memory runs out during the first call; the next call is then the first.
QUOR_GJF_API const SimpleYAMLParser& default_route_schema();

/// Tells why there is no default vocabulary, or why it is not the one that was named: with the file and, where it does not
/// load, the line. Empty when all is well.
QUOR_GJF_API std::string default_route_schema_problem();

/// Tells of a document that was found and does not load, with its file and line, and of the one that serves in its place.
/// Empty when there is no such document.
QUOR_GJF_API std::string default_route_schema_warning();

/// Returns the path of the document that serves, or of the one that should.
QUOR_GJF_API std::string default_route_schema_path();

}  // namespace quor::input::gaussian

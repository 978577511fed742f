// Where the route vocabulary and the facts beside it may lie.
#pragma once

#include <core/export.hpp>

#include <string>

namespace quor::input::gaussian {

/// The environment variable that may name the vocabulary document.
inline constexpr const char* route_schema_variable = "QUOR_G16_ROUTE_SCHEMA_YAML";

/// Returns a path to the route vocabulary document; it may name a file that does not exist, and is never empty.
///
/// Tried in order: the environment variable QUOR_G16_ROUTE_SCHEMA_YAML; resources/schemas/input/gaussian_route.yaml and
/// share/quorlib/schemas/input/gaussian_route.yaml below `base` and up to six of its parents (with an empty base: the
/// current folder, then the library's own folder); the source tree the library was built from; then, unchecked,
/// .quor/lib/resources/schemas/input under HOME, or the first relative path when HOME is unset.
QUOR_GJF_API std::string resolve_route_schema_path(const std::string& base);

/// Returns the vocabulary document that lies near the library, or in the source tree that it was built from; empty when
/// there is none.
QUOR_GJF_API std::string route_schema_beside_library();

/// Returns the folder of the tables of facts: the one that the environment variable QUOR_G16_KNOWLEDGE names; else the
/// folder "knowledge" that lies beside the vocabulary's folder "schemas", for the vocabulary that is used or, where that
/// has none, for the default one. It may not exist.
QUOR_GJF_API std::string resolve_knowledge_folder();

/// Returns the folder of the recipes for next jobs, which lies beside the folder of the tables of facts. It may not exist.
QUOR_GJF_API std::string resolve_recipes_folder();

}  // namespace quor::input::gaussian

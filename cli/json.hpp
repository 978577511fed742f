// The tool's JSON: objects whose keys keep their order, one a line.
#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace quor_gjf {

using Json = nlohmann::ordered_json;

/// The version of the schema that docs/json.md tells, the first value of every object. It grows when a key goes or changes
/// its meaning.
constexpr int json_version = 1;

/// Begins an object about a file.
inline Json json_of_file(const std::string& path) { return {{"version", json_version}, {"file", path}}; }

/// Writes an object as one line. Bytes that are not UTF-8 become U+FFFD.
inline std::string json_line(const Json& object) {
    return object.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
}

}  // namespace quor_gjf

// What the sources of this room share: values of the JSON library, before they are text. Private to the room.
#pragma once

#include <gjf/core/job/extra_input_kind.hpp>
#include <gjf/core/report/json.hpp>
#include <gjf/core/sections/section_kinds.hpp>

#include <nlohmann/json.hpp>

#include <string>

namespace quor::input::gaussian {

using Json = nlohmann::ordered_json;

/// Begins an object, which may be about a file: with its version, and a word on a vocabulary that stands in for another.
Json begun_object(const std::string* path);

inline Json versioned() { return begun_object(nullptr); }
inline Json about_file(const std::string& path) { return begun_object(&path); }

inline std::string json_text(const Json& object) { return object.dump(-1, ' ', false, Json::error_handler_t::replace); }

inline std::string json_line(const Json& object) { return json_text(object) + '\n'; }

/// Sets `object[key]` unless the text is empty.
inline void set_text(Json& object, const char* key, const std::string& text) {
    if (!text.empty()) {
        object[key] = text;
    }
}

/// Returns a kind of extra input as an object: number, name and, when a route asks for it, how.
inline Json json_of_kind(ExtraInputSectionKind kind) {
    Json object = {{"kind", static_cast<std::int32_t>(kind)}, {"name", extra_input_kind_name(kind)}};
    set_text(object, "request", extra_input_request(kind));
    return object;
}

/// Returns a finding; one about a whole line, or the whole file, is told from column 1.
Json json_of_finding(const Finding& finding);

/// Returns a list of what a function makes of each item.
template <typename Items, typename ToJson>
Json list_of(const Items& items, ToJson to_json) {
    Json list = Json::array();
    for (const auto& item : items) {
        list.push_back(to_json(item));
    }
    return list;
}

}  // namespace quor::input::gaussian

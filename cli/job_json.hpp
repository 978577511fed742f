// The job model as JSON.
#pragma once

#include "json.hpp"

#include <gjf/gjf.hpp>

namespace quor_gjf {

/// Returns a job as an object; what a job does not have has no key.
Json json_of_job(const quor::input::gaussian::GJFData& job);

/// Returns an interpreted route as an object.
Json json_of_route(const quor::input::gaussian::ParsedKeywords& route);

Json json_of_finding(const quor::input::gaussian::Finding& finding);

/// Returns a kind of extra input as an object: number, name and, when a route asks for it, how.
Json json_of_kind(quor::input::gaussian::ExtraInputSectionKind kind);

/// Sets `object[key]` unless the text is empty.
void set_text(Json& object, const char* key, const std::string& text);

}  // namespace quor_gjf

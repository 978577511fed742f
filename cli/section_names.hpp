// Short names for the kinds of extra input sections, as in --section basis=@file.
#pragma once

#include <gjf/gjf.hpp>

#include <optional>
#include <string>

namespace quor_gjf {

/// Returns the kind that a text names: by its number, its short name or its display name, letter case aside.
std::optional<quor::input::gaussian::ExtraInputSectionKind> section_kind_named(const std::string& text);

/// Lists all kinds, one a line: number, short name, display name, and what in a route asks for it.
std::string section_kind_list();

}  // namespace quor_gjf

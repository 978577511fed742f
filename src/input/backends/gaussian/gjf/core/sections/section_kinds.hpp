// What is known of each kind of extra input: its names, how its lines are told, and what asks for it.
#pragma once

#include <core/export.hpp>
#include <gjf/core/job/extra_input_kind.hpp>

#include <optional>
#include <string_view>

namespace quor::input::gaussian {

/// How the lines of a section are told from those of the next one.
enum class ExtraInputClass {
    Block,             ///< lines up to a blank line
    TitleAndMolecule,  ///< two blocks: a title and a molecule specification
    SingleLine,        ///< the next line that is not blank
    UpToEnd,           ///< lines up to and including the first that contains "$end"
    AtomList,          ///< lines of atom numbers and ranges
};

/// Returns the display name of a kind, "Unknown" for a value outside 1 to 55. Never null; UTF-8; static.
QUOR_GJF_API const char* extra_input_kind_name(ExtraInputSectionKind kind) noexcept;

/// Returns a short name for command lines, as "modredundant"; "unknown" for a value outside 1 to 55. Static.
QUOR_GJF_API const char* extra_input_short_name(ExtraInputSectionKind kind) noexcept;

/// Finds a kind by its number, its short name or its display name, letter case aside; absent when there is none.
QUOR_GJF_API std::optional<ExtraInputSectionKind> find_extra_input_kind(std::string_view text);

/// Returns how a route usually asks for a kind of section, as in "opt=modredundant"; empty for one that no route asks for.
/// Static.
QUOR_GJF_API const char* extra_input_request(ExtraInputSectionKind kind) noexcept;

/// Returns the class of a kind; `Block` for a value outside 1 to 55.
QUOR_GJF_API ExtraInputClass extra_input_class(ExtraInputSectionKind kind) noexcept;

/// Tells whether a section of this kind is ended by a blank line: those of class block, and title and molecule, are.
QUOR_GJF_API bool extra_input_requires_blank_line(ExtraInputSectionKind kind) noexcept;

}  // namespace quor::input::gaussian

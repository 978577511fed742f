// What a section of a job is called for people, which its kind alone does not always tell.
#pragma once

#include <core/export.hpp>
#include <gjf/core/job/control_section.hpp>
#include <gjf/core/job/extra_input_kind.hpp>

#include <string>

namespace quor::input::gaussian {

/// Returns the name of a section of a job, and how its route asks for it in parentheses. With geom=modify the molecular
/// mechanics parameters are changes to the checkpoint's geometry: both are of one kind.
QUOR_GJF_API std::string section_name(ExtraInputSectionKind kind, const ControlSection& control);

/// Tells whether a kind of section stands for changes to the checkpoint's geometry.
QUOR_GJF_API bool changes_checkpoint(ExtraInputSectionKind kind, const ControlSection& control);

}  // namespace quor::input::gaussian

// Names sections by their kind, and by the route where two things are of one kind.
#include <gjf/core/reader/section_name.hpp>

#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/sections/section_kinds.hpp>

namespace quor::input::gaussian {

bool changes_checkpoint(ExtraInputSectionKind kind, const ControlSection& control) {
    return kind == ExtraInputSectionKind::MMParameters && GJFParser::has_geom_option(control, "modify");
}

std::string section_name(ExtraInputSectionKind kind, const ControlSection& control) {
    return changes_checkpoint(kind, control)
               ? "changes to the checkpoint's geometry (geom=modify)"
               : std::string(extra_input_kind_name(kind)) + " (" + extra_input_request(kind) + ")";
}

}  // namespace quor::input::gaussian

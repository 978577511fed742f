// Where atoms went, and the sections that follow them. Private to the room.
#pragma once

#include <gjf/core/document/job_rewriting.hpp>
#include <gjf/core/editor/gjf_editor.hpp>

#include <cstddef>
#include <vector>

namespace quor::input::gaussian {

/// Tells where the atoms of a job went, from the origins of those that are there now.
AtomPlaces places_of(std::size_t old_count, const std::vector<std::size_t>& origins);

/// Returns the sections of a job as they should be written: renumbered, and without those at the end that are left empty.
/// Throws where it is not known which atoms a section names, or all that it names is gone.
std::vector<ExtraInputSection> sections_to_write(const GJFEditor& editor, const AtomPlaces& places, bool force);

}  // namespace quor::input::gaussian

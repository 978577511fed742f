// Finds what became of the sections of a job. Private to the room.
#pragma once

#include <gjf/core/job/extra_input_section.hpp>

#include <cstddef>
#include <vector>

namespace quor::input::gaussian {

/// Stands for a section that was not there before.
constexpr std::size_t no_section = static_cast<std::size_t>(-1);

/// Finds for each section that should be there the one that it was, or `no_section`: equal ones first, then those of its
/// kind. Of several that fit the first is taken, and the order of the sections never crosses.
std::vector<std::size_t> match_sections(const std::vector<ExtraInputSection>& before,
                                        const std::vector<ExtraInputSection>& after);

}  // namespace quor::input::gaussian

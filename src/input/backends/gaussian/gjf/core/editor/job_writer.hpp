// Writes a job as job text. Private to the library.
#pragma once

#include <gjf/core/job/gjf_data.hpp>

#include <string>
#include <string_view>

namespace quor::input::gaussian {

/// The width of a coordinate column; a text of this length or more touches the next one.
constexpr std::size_t coordinate_width = 12;

/// Writes one job: Link 0 lines in fixed order, route, title, charge line, atoms in fixed columns, sections.
std::string write_job(const GJFData& data);

/// Removes every trailing line break.
std::string_view without_trailing_breaks(std::string_view text) noexcept;

/// Ends a text in exactly three line breaks, unless nothing is left without them.
void end_job_text(std::string& text);

/// Returns a coordinate as it is written: its text, or the number with six decimals when it has none.
std::string coordinate_text(const CoordinateValue& coordinate, double value);

/// Tells whether a whole number as the first coordinate would be read as a freeze code: there is a layer and no code.
inline bool needs_decimals(const AtomCoord& atom) noexcept { return !atom.freeze && atom.layer && !atom.layer->empty(); }

}  // namespace quor::input::gaussian

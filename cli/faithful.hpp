// Whether the fixed layout carries all that a job file says.
#pragma once

#include <gjf/gjf.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace quor_gjf {

/// Cuts a text into its lines, without line ends.
std::vector<std::string_view> lines_of(std::string_view text);

/// Returns the first thing of a job that would be lost in writing it, with its line, as in "line 7: the comment"; empty when
/// all is carried. `lines` are those of the whole text.
std::string loss_in_writing(const quor::input::gaussian::JobReading& reading, const std::vector<std::string_view>& lines,
                            bool comments_may_go);

/// Returns the first part in which two jobs differ, as in "title"; empty when they say the same.
std::string difference(const quor::input::gaussian::GJFData& a, const quor::input::gaussian::GJFData& b);

}  // namespace quor_gjf

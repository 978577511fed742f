// The Link 0 lines of a job, taken apart. Private to the room.
#pragma once

#include <gjf/core/check/checked_job.hpp>

#include <cstddef>
#include <initializer_list>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

struct Link0Line {
    std::size_t line = 0;
    std::string_view key;  ///< without %
    std::string_view value;
    bool is_assigned = false;  ///< by a sign of equality
};

std::vector<Link0Line> link0_lines_of(const CheckedJob& job);

/// Returns the line that holds of some keys: the last one; null for none.
const Link0Line* find_line(const std::vector<Link0Line>& lines, std::initializer_list<std::string_view> keys);

}  // namespace quor::input::gaussian

// Small things about text that several commands need.
#pragma once

#include <cstddef>
#include <string>

namespace quor_gjf {

/// Tells white space within and between lines.
constexpr bool is_blank(char c) noexcept { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

/// Gives a number with what it counts: "1 job", "2 jobs".
inline std::string counted(std::size_t count, const char* what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

}  // namespace quor_gjf

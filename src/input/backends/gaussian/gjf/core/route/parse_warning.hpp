// What the route parser could not place, where it stood and what it may have meant.
#pragma once

#include <core/export.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// Where a segment stands in the route text: byte offsets from 0, `end` exclusive, and the segment's number from 0.
struct SourceSpan {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
    std::uint64_t segment = 0;

    friend bool operator==(const SourceSpan& a, const SourceSpan& b) noexcept {
        return a.begin == b.begin && a.end == b.end && a.segment == b.segment;
    }
    friend bool operator!=(const SourceSpan& a, const SourceSpan& b) noexcept { return !(a == b); }
};

/// A coded remark about one word of the route. Codes: "GJF-W001" ambiguous keyword, "GJF-W002" ambiguous method, "GJF-W003"
/// ambiguous basis set, "GJF-W004" ambiguous option, "GJF-W005" unknown word kept as it is.
struct ParseWarning {
    std::string code;
    std::string message;
    std::optional<SourceSpan> span;  ///< absent when the caller gave no position
};

/// Writes the first `limit` candidates separated by ", ", and ", ..." after them when some were left out.
QUOR_GJF_API std::string format_warning_candidates(const std::vector<std::string>& candidates, std::size_t limit);

}  // namespace quor::input::gaussian

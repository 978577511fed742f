// What an editor tells of a place: what a word means, which atom is meant, the value of a coordinate.
#pragma once

#include <core/export.hpp>
#include <gjf/core/predicate/job_file.hpp>
#include <gjf/core/text/span.hpp>

#include <cstddef>
#include <optional>
#include <string>

namespace quor::input::gaussian {

/// A text about a stretch of a file: Markdown, in which what is from the file stands in code spans.
struct Hover {
    Span place;
    std::string markdown;
};

/// Tells what stands at an offset; nothing for a place of which nothing is known. Distances are in ångström, angles in
/// degrees.
QUOR_GJF_API std::optional<Hover> hover_at(const JobFile& file, std::size_t offset);

/// Returns a text as a code span of Markdown in which nothing of it takes effect; line ends become blanks.
QUOR_GJF_API std::string code_span(std::string_view text);

}  // namespace quor::input::gaussian

// The tokens of a job file: every stretch that means something, and what it is. What editors colour, and ask about.
#pragma once

#include <core/export.hpp>
#include <gjf/core/predicate/job_file.hpp>
#include <gjf/core/text/span.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace quor::input::gaussian {

/// What a token is.
enum class TokenRole : std::uint8_t {
    Separator,  ///< a line --Link1--
    Comment,
    Link0Key,
    Link0Value,
    RouteHead,  ///< "#" with the print level
    Method,
    BasisSet,
    Keyword,
    Option,
    OptionValue,
    RouteWord,  ///< that the vocabulary does not know
    Title,
    Charge,
    Multiplicity,
    AtomLabel,
    FreezeCode,
    Layer,
    Number,
    AtomNumber,  ///< which atom is meant, or several as "3-7"
    Variable,    ///< a name in coordinates, or where it is given a value; without a sign before it
    Element,     ///< in a section
    SectionWord,
};

/// One token. What `number` is depends on the role: of a label the number of its atom, of an atom number the (first) atom
/// meant, both from 1; 0 for others.
struct JobToken {
    Span place;
    TokenRole role = TokenRole::Comment;
    std::uint32_t job = 0;  ///< from 0; of a separator the job before it
    std::uint32_t number = 0;
};

/// Returns the tokens that overlap a stretch of a file, in order, none over another. Takes time in proportion to the
/// stretch, to the control section and title of its jobs, and to the sections that it meets.
QUOR_GJF_API std::vector<JobToken> tokens_in(const JobFile& file, Span stretch);

/// Returns the token that holds an offset, or ends there where none begins.
QUOR_GJF_API std::optional<JobToken> token_at(const JobFile& file, std::size_t offset);

/// Returns the job, counted from 0, whose lines hold an offset, or the last before it; nothing before the first.
QUOR_GJF_API std::optional<std::size_t> job_at(const JobFile& file, std::size_t offset);

}  // namespace quor::input::gaussian

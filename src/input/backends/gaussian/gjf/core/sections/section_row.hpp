// The row of a kind of extra input. Private to the library.
#pragma once

#include <gjf/core/sections/route_questions.hpp>
#include <gjf/core/sections/section_kinds.hpp>
#include <gjf/core/sections/section_tokens.hpp>

#include <cstddef>
#include <vector>

namespace quor::input::gaussian {

struct SectionRow {
    ExtraInputSectionKind kind;
    const char* name;        ///< for people
    const char* short_name;  ///< for command lines
    ExtraInputClass input_class;
    const char* request;                          ///< how a route usually asks for it
    std::size_t (*asked)(const RouteQuestions&);  ///< how many such sections a route asks for
    void (*grammar)(SectionReading&);             ///< reads its lines; `text` is set, and `lines` cut
};

/// Returns the row of a kind; that of `Unknown` for a value outside 1 to 55.
const SectionRow& section_row(ExtraInputSectionKind kind) noexcept;

/// Lists the kinds of section that are asked for, in their order.
std::vector<ExtraInputSectionKind> expected_kinds(const RouteQuestions& questions);

/// Lists the kinds that a block may be which is left over behind these, in their order: what Gaussian reads though no
/// condition of the first table names it.
std::vector<ExtraInputSectionKind> kinds_for_blocks_left_over(const RouteQuestions& questions);

}  // namespace quor::input::gaussian

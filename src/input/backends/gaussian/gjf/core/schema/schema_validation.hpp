// Finds mistakes in a vocabulary document that loading passes over in silence.
#pragma once

#include <core/export.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// A mistake in a vocabulary document, and the line it stands in, counted from 1 (0: the whole file).
struct SchemaProblem {
    std::size_t line = 0;
    std::string message;
};

/// Examines the document at `path`; the result is in the order of lines and empty when nothing is wrong.
///
/// Found are: a file that does not load, keys that stand twice in a map or are misspelt, spellings that two words of one
/// role share, states that are named but not defined or defined but not reached, options of unknown keywords, preferred
/// spellings and categories of unknown words, and basis states from which no word can end. Never throws for what the
/// document holds.
QUOR_GJF_API std::vector<SchemaProblem> validate_route_schema(const std::string& path);

}  // namespace quor::input::gaussian

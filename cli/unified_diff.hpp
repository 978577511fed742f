// Shows what changed between two texts, as `diff -u` and `patch` know it.
#pragma once

#include <string>
#include <string_view>

namespace quor_gjf {

/// Returns a unified diff with three lines of context; empty when the texts are equal.
///
/// Plain, it holds the bytes of the texts, so that `patch` makes the second text of the first. For a terminal it is
/// coloured, and holds nothing that could disturb one. Time grows with the texts almost linearly: large stretches that have
/// no line in common order are shown replaced as a whole.
std::string unified_diff(const std::string& name, std::string_view before, std::string_view after, bool for_terminal);

}  // namespace quor_gjf

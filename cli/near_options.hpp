// Finds the options, and other names of the tool, that a misspelt one may have meant.
#pragma once

#include <string>
#include <vector>

namespace quor_gjf {

/// Returns the options, each with its dashes, that `word` may mean: those that it begins, or else those that it is a slip
/// of; at most three. None for what is one of them, or a number.
std::vector<std::string> near_options(const std::string& word, const std::vector<std::string>& options);

/// Joins names: "a, b or c".
std::string alternatives(const std::vector<std::string>& names);

}  // namespace quor_gjf

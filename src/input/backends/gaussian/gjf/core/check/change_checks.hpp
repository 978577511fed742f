// What a change brings: findings that the old text did not have, and words of a route that nobody knows.
#pragma once

#include <core/export.hpp>
#include <gjf/core/check/finding.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// Returns a message without the numbers of lines, rows and atoms, which change with what stands before them.
QUOR_GJF_API std::string message_without_numbers(std::string_view message);

/// Returns the findings of a text that an earlier form of it did not have, each as often as it is new.
///
/// Findings are the same when job, code and message are, numbers aside (`message_without_numbers`). What lies where the
/// earlier text could not be read is not new.
QUOR_GJF_API std::vector<Finding> new_findings(const std::vector<Finding>& before, const std::vector<Finding>& after);

/// Checks a text, and the text that it was made from where anything is found; returns what is new. As `check_text`.
QUOR_GJF_API std::vector<Finding> findings_of_change(std::string_view before, std::string_view after);

/// Returns what is found of words, options, solvents and paper names in a route that Gaussian certainly or probably does not
/// know, with the candidates as the hint. Empty where there is no vocabulary.
QUOR_GJF_API std::vector<Finding> unknown_route_words(std::string_view route);

}  // namespace quor::input::gaussian

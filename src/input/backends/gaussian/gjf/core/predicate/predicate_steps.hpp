// The steps of a condition in postfix order, and how they are read. Private to the room.
#pragma once

#include <gjf/core/predicate/job_file.hpp>
#include <gjf/core/selection/expression_reader.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

enum class PredicateTest { Not, And, Or, Field, Count, Route };

enum class Sign { None, Equal, Unequal, Less, LessOrEqual, Greater, GreaterOrEqual, Within };

struct PredicateStep {
    PredicateTest test = PredicateTest::Not;
    const JobField* field = nullptr;
    Sign sign = Sign::None;
    std::string text;       ///< what a text is compared with, in the spelling of the field
    double number = 0;      ///< what a number is compared with; of a severity its rank
    Selection selection;    ///< of a count
    ParsedKeywords route;   ///< of a route word
    std::size_t joins = 0;  ///< the step, from 1, that joins what begins here to what stands before it; 0 for none
};

/// Reads a condition; throws `SelectionError`.
std::vector<PredicateStep> read_predicate(std::string_view text);

/// Returns a basis set in the one spelling that is compared.
std::string basis_to_compare(const std::string& basis);

/// Returns the rank of a severity's name, 0 for any other text.
int severity_rank(std::string_view name) noexcept;

}  // namespace quor::input::gaussian

// What is known of the words of routes: the values of options. Private to the library.
//
// As with the other facts, a table is loaded at its first question, words are in the vocabulary's preferred spelling, and
// all texts are static.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace quor::input::gaussian {

/// What may stand behind the "=" of some options of a keyword.
struct OptionValue {
    std::string_view keyword;
    std::string_view options;   ///< with blanks between; empty for the value of the keyword itself
    std::string_view takes;     ///< "required", "optional" or "no"
    std::string_view kind;      ///< "integer", "real", "name", "iop", "size" or "text"
    std::string_view least;     ///< the smallest number that makes sense; empty for none
    std::string_view names;     ///< words that may stand there too
    std::string_view severity;  ///< of a value of another kind
};
/// Returns what is known of the values of a keyword's options.
std::span<const OptionValue> option_values(std::string_view keyword);

/// Tells whether a word stands in a list of words with blanks between.
bool lists_word(std::string_view list, std::string_view word) noexcept;

/// Returns what keeps a table about routes from being read; empty when all are there.
std::string missing_route_facts();

}  // namespace quor::input::gaussian

// What is known of the words of routes: the values of options, what methods lack. Private to the library.
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

/// What a route asks of its method.
struct MethodRequest {
    std::string_view request;   ///< words of a route with blanks between, each as opt or opt=calcfc, that all stand there
    std::string_view unless;    ///< words of which none stands there
    std::string_view needs;     ///< what `method_lacks` knows of
    std::string_view kind;      ///< "lacks", or "numerical" for what is then made from many energies
    std::string_view severity;  ///< where the method lacks it
};
std::span<const MethodRequest> method_requests();
/// Tells whether a method, with or without r, u or ro before it, is known to lack something, as "analytic gradients".
bool method_lacks(std::string_view method, std::string_view needed);

/// What a functional has to do with a dispersion correction that is asked for beside it.
struct Dispersion {
    std::string_view functional;
    std::string_view correction;  ///< an option of empiricaldispersion
    std::string_view status;      ///< "none", "not listed" or "built in"
    std::string_view severity;
};
/// Returns what is known to be wrong with a correction beside a functional; null for nothing.
const Dispersion* find_dispersion(std::string_view functional, std::string_view correction);

/// How the work of a method grows, and what it keeps: formulas in N basis functions, O correlated occupied and V empty
/// orbitals.
struct MethodCost {
    std::string_view methods;  ///< with blanks between
    std::string_view cost;     ///< of one energy
    std::string_view memory;   ///< in words of 8 bytes, at the least, as the next two; empty for what is not known
    std::string_view in_core;  ///< where all integrals are to be kept in memory
    std::string_view disk;
};
/// Returns what is known of a method, with or without r, u or ro before it; null for nothing.
const MethodCost* method_cost(std::string_view method);

/// What may stand before the name of a method, for the spins of its reference.
inline constexpr std::string_view spin_prefixes[] = {"", "ro", "r", "u"};

/// Tells whether a word stands in a list of words with blanks between.
bool lists_word(std::string_view list, std::string_view word) noexcept;

/// Returns what keeps a table about routes from being read; empty when all are there.
std::string missing_route_facts();

}  // namespace quor::input::gaussian

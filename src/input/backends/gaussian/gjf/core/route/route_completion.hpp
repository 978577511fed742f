// What may stand at the end of a route that is being written.
#pragma once

#include <core/export.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// What the end of a route is.
enum class RouteEnd {
    Word,    ///< a keyword, method or basis set
    Method,  ///< behind "//", or at the head of a layer of ONIOM
    Basis,   ///< behind "method/"
    Option,  ///< of a keyword
    Value,   ///< of an option, where it is known which there are, as solvents
    Other,   ///< something that is not listed, as a number behind an option
};

/// The end of a route, and the part of it that is to be completed.
struct RouteContext {
    RouteEnd end = RouteEnd::Word;
    std::string keyword;  ///< whose option it is, or the value of whose option
    std::string prefix;
    std::string option = {};  ///< whose value it is
};

/// Looks at the end of a route text.
QUOR_GJF_API RouteContext context_at_end(std::string_view route);

/// One word that completes the prefix, and the roles it may have: "keyword", "method", "basis set", "option", "value".
struct Completion {
    std::string text;
    std::vector<std::string> roles;
};

/// Returns what completes a context, sorted, each word once. Nothing completes an empty word outside an option list
/// and a value.
QUOR_GJF_API std::vector<Completion> completions_of(const RouteContext& context);

}  // namespace quor::input::gaussian

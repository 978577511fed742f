// The text that a route is interpreted from, joined from its words, and which word each stretch of it comes from.
//
// Words are cut line by line, so an option list over several lines, or one with blanks around its signs, comes as several.
#pragma once

#include <core/export.hpp>
#include <gjf/core/text/span.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// A stretch of one word of a route: `part` counts from the word's first byte.
struct RouteWordStretch {
    std::size_t word = 0;
    Span part;
};

/// Tells where in the words of a route a stretch of the route text stands. Signs that were put between words stand nowhere.
class QUOR_GJF_API RouteMap {
   public:
    /// Notes that the route text goes on, at `begin`, with a stretch of a word. Stretches are added in order.
    void add(std::size_t begin, const RouteWordStretch& stretch);

    /// Returns the stretches that a part of the route text is made of, in order; for an empty part the place in the stretch
    /// that is there or before it. None for an empty map.
    std::vector<RouteWordStretch> stretches(Span of_text) const;

   private:
    struct Piece {
        std::size_t begin;  // in the route text
        RouteWordStretch stretch;
    };

    std::vector<Piece> pieces_;  // by `begin`
};

struct JoinedRoute {
    std::string text;
    RouteMap map;
};

/// Joins route words with blanks. Where later lines repeat the head, it is left out: alone, or the "#" before a word.
///
/// Brackets stay open from one word to the next: between two options a blank, or the end of a word, is a comma. Outside of
/// them, no blank is left around "=" and "/", nor between a word and the "(" that opens its options. Words of which a
/// bracket is never closed are joined with blanks alone.
QUOR_GJF_API JoinedRoute join_route_words(const std::vector<std::string>& words);

}  // namespace quor::input::gaussian

// The tokens of a route: its words by their roles, in the route text. Private to the library.
#pragma once

#include <gjf/core/language/job_tokens.hpp>
#include <gjf/core/reader/job_layout.hpp>
#include <gjf/core/route/route_tree.hpp>

#include <vector>

namespace quor::input::gaussian {

/// A token in the text of a route.
struct RouteToken {
    Span place;
    TokenRole role = TokenRole::RouteWord;
};

/// Returns the tokens of a route; not in order.
std::vector<RouteToken> route_tokens(const RouteTree& route);

/// Returns where a stretch of a job's route text stands in the file: one place for each stretch of a word, in order.
std::vector<Span> route_spans(const JobReading& reading, Span of_route_text);

}  // namespace quor::input::gaussian

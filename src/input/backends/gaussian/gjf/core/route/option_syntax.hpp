// How keywords with options and the model chemistry are written in a route. Private to the library.
#pragma once

#include <gjf/core/route/parsed_keywords.hpp>

#include <map>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// Writes a keyword: the name alone, name=option for a single option without a value, else name=(option,option=value). IOp
/// always takes its options in parentheses, without "=".
std::string format_keyword(const std::string& name, const std::vector<RouteOption>& options);

/// Turns stored options into a list, in the map's order; an option whose value is empty or "TRUE" is written without one.
std::vector<RouteOption> to_route_options(const std::map<std::string, std::string>& options);

/// Writes ONIOM with its layers and these other options, as in oniom(hf:uff)=(a,b=c).
std::string format_oniom(const std::string& layers, const std::vector<RouteOption>& options);

/// Returns the options of an ONIOM expression that have the name under which its model is interpreted, in order.
std::vector<RouteOption> options_called_layers(const std::string& expression);

/// Returns the model of an ONIOM expression: the item of its list with the levels of the layers.
std::string oniom_layers(const std::string& expression);

/// Returns the levels of an ONIOM expression, as in oniom(b3lyp/6-31g*:uff), highest first; none of any other text.
std::vector<std::string> oniom_levels(const std::string& expression);

/// Writes the words of a route: the head with the model chemistry, and each keyword as it was written where that is known.
std::vector<std::string> format_route(const ParsedKeywords& route);

/// The same, with what the words before had beside the interpretation: segments that assign to a word what is no basis set.
std::vector<std::string> format_route(const ParsedKeywords& route, const std::vector<std::string>& words_before);

/// Writes the model chemistry of a route: its ONIOM expression, method/basis with what goes with them, or "basis=" and a
/// basis set without a method; empty when the route has none.
std::string format_model_chemistry(const ParsedKeywords& route);

}  // namespace quor::input::gaussian

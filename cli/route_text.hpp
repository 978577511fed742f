// A route given as an argument.
#pragma once

#include <string>
#include <vector>

namespace quor_gjf {

/// A route cut into words, and joined again with single blanks. Warnings tell their places in the joined text.
struct RouteText {
    std::vector<std::string> words;
    std::string joined;
};

/// Reads a route of one or several lines, with or without "#"; the words are empty when it holds none.
RouteText read_route_text(const std::string& text);

/// Joins arguments with blanks; a lone "-" stands for standard input, without the line breaks at its end.
std::string text_of_arguments(const std::vector<std::string>& arguments);

}  // namespace quor_gjf

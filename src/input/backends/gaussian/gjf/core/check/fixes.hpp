// What findings carry beside their message: the other place that they speak of, and ways to mend. Private to the room.
//
// Every function offers nothing where the text does not stand as it must, so that a fix never changes what it did not see.
#pragma once

#include <gjf/core/check/checked_job.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// Names another place that a finding speaks of; all of a line where `place` has no column.
void relate(const TextPlace& place, const std::string& message, Finding& finding);

/// Names another line that a finding speaks of.
void relate_line(const CheckedJob& job, std::size_t line, const std::string& message, Finding& finding);

/// Offers changes under a title; nothing when there are none.
void offer(Finding& finding, std::string title, FixSafety safety, std::vector<TextEdit> edits);

/// Offers to write a word in the place of `written`: the only one with a safety, several as choices.
void offer_words(const CheckedJob& job, const TextPlace& place, std::string_view written,
                 const std::vector<std::string>& words, FixSafety safety, Finding& finding);

/// Offers the nearest name of a misspelt word; safe where both differ in dashes alone.
void offer_near(const CheckedJob& job, const TextPlace& place, std::string_view written,
                const std::vector<std::string>& near, Finding& finding);

/// Returns the change that puts a text in the place of a stretch of the route, which must stand in one line.
std::vector<TextEdit> route_edits(const CheckedJob& job, Span of_route_text, const std::string& text);

/// Returns the change that takes a word out of the route, with the blanks that part it from its neighbour.
std::vector<TextEdit> without_word(const CheckedJob& job, Span of_route_text);

/// Returns the change that takes a keyword with its options out of the route.
std::vector<TextEdit> without_keyword(const CheckedJob& job, const RouteTree::Keyword& keyword);

/// Returns the changes that take an option out of its list, or the keyword away that has no other.
std::vector<TextEdit> without_option(const CheckedJob& job, const RouteTree::Keyword& keyword,
                                     const RouteTree::Option& option);

/// Returns the change that gives a keyword an option more, such as "calcfc" or "nstates=5".
std::vector<TextEdit> with_option(const CheckedJob& job, const RouteTree::Keyword& keyword, const std::string& option);

/// Returns the change that puts a word behind the last one of the route; or, where the keyword before its "=" stands there,
/// that gives this one the option.
std::vector<TextEdit> with_word(const CheckedJob& job, const std::string& word);

}  // namespace quor::input::gaussian

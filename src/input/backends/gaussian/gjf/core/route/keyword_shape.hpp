// The parts of a keyword with options as it is written in a route. Private to the library.
#pragma once

#include <gjf/core/text/span.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// A keyword taken apart: its name, and its options with their values.
struct KeywordShape {
    Span head;
    std::vector<Span> items;
};

/// Returns a stretch without the blanks at its ends.
Span trimmed_span(std::string_view text, Span part) noexcept;

/// Cuts a stretch at separators outside of quotes and brackets; pieces are trimmed, empty ones dropped.
std::vector<Span> cut_list(std::string_view text, Span list, char separator = ',');

/// An option taken apart: its name, and its value where it has one.
struct KeywordItem {
    Span name;
    Span value;
};

KeywordItem keyword_item(std::string_view text, Span item);

/// Returns where the list in parentheses begins that ends an expression, or -1.
int find_last_option_list(const std::string& text);

/// Takes apart keyword, keyword=item, keyword(items), keyword=(items), keyword=item(items) and keyword/item. The name
/// of a method may itself end in a list, as in ccsd(t)(full).
KeywordShape keyword_shape(const std::string& text, bool is_method = false);

/// Takes apart oniom(layers,items), oniom=(layers,items) and oniom(layers)=(items): layers and items are one list.
KeywordShape oniom_shape(const std::string& text);

}  // namespace quor::input::gaussian

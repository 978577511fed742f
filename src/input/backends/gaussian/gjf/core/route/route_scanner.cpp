// Cuts a route into segments and lists, minding quotes and brackets.
//
// White space ends a segment only outside quotes, parentheses, brackets and braces, so Opt=(CalcFC, MaxCycles=100) stays
// whole.
#include <gjf/core/route/route_scanner.hpp>

#include <gjf/core/route/route_segments.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace quor::input::gaussian {
namespace {

// Calls `take` for each stretch between the top-level characters that `separates` accepts, with its begin and end.
template <typename Separates, typename Take>
void walk_top_level(std::string_view text, Separates separates, Take take) {
    NestingTracker nesting;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool cuts = separates(text[i]) && nesting.at_top_level();
        nesting.advance(text[i]);
        if (cuts) {
            take(begin, i);
            begin = i + 1;
        }
    }
    take(begin, text.size());
}

}  // namespace

int find_top_level_char(const std::string& text, char character) {
    // Most texts do not have the character, or have nothing that nests before it.
    const std::size_t first = text.find(character);
    if (first == std::string::npos) {
        return -1;
    }
    if (std::none_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(first), is_nesting_character)) {
        return static_cast<int>(first);
    }
    NestingTracker nesting;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (nesting.at_top_level() && text[i] == character) {
            return static_cast<int>(i);
        }
        nesting.advance(text[i]);
    }
    return -1;
}

int find_matching_paren(const std::string& text, std::size_t position) {
    if (position >= text.size() || text[position] != '(') {
        return -1;
    }
    std::size_t depth = 0;
    char quote = 0;
    for (std::size_t i = position; i < text.size(); ++i) {
        const char c = text[i];
        if (quote != 0) {
            quote = c == quote ? '\0' : quote;
        } else if (opens_quote(text, i)) {
            quote = c;
        } else if (c == '(') {
            ++depth;
        } else if (c == ')' && --depth == 0) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

std::vector<std::string> split_top_level_list(const std::string& text, char separator) {
    std::vector<std::string> pieces;
    const std::string_view view = text;
    walk_top_level(
        view, [separator](char c) { return c == separator; },
        [&](std::size_t begin, std::size_t end) {
            const std::string_view piece = trim_view(view.substr(begin, end - begin));
            if (!piece.empty()) {
                pieces.emplace_back(piece);
            }
        });
    return pieces;
}

std::vector<Span> find_route_segments(std::string_view route) {
    std::vector<Span> segments;
    walk_top_level(route, is_white_space, [&](std::size_t begin, std::size_t end) {
        if (end > begin) {
            segments.push_back(span_between(begin, end));
        }
    });
    return segments;
}

std::vector<std::string> split_route_segments_preserving_nesting(const std::string& route) {
    std::vector<std::string> texts;
    for (const Span segment : find_route_segments(route)) {
        const std::string_view text = trim_view(segment.in(route));
        if (!text.empty()) {
            texts.emplace_back(text);
        }
    }
    return texts;
}

}  // namespace quor::input::gaussian

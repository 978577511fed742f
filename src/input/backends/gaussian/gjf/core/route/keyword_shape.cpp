// Takes apart a keyword with options.
#include <gjf/core/route/keyword_shape.hpp>

#include <gjf/core/route/route_scanner.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

// Cuts a stretch at top-level commas.
std::vector<RouteStretch> cut_list(std::string_view text, RouteStretch list) {
    std::vector<RouteStretch> items;
    NestingTracker nesting;
    std::size_t begin = list.begin;
    for (std::size_t i = list.begin; i <= list.end; ++i) {
        const bool ends = i == list.end || (nesting.advance(text[i]) && text[i] == ',');
        if (!ends) {
            continue;
        }
        const RouteStretch item = trimmed_stretch(text, {begin, i});
        if (item.begin < item.end) {
            items.push_back(item);
        }
        begin = i + 1;
    }
    return items;
}

}  // namespace

RouteStretch trimmed_stretch(std::string_view text, RouteStretch part) {
    while (part.begin < part.end && is_trim_character(text[part.begin])) {
        ++part.begin;
    }
    while (part.end > part.begin && is_trim_character(text[part.end - 1])) {
        --part.end;
    }
    return part;
}

std::string_view stretch_text(std::string_view text, RouteStretch part) {
    return text.substr(part.begin, part.end - part.begin);
}

KeywordShape keyword_shape(const std::string& text) {
    KeywordShape shape;
    std::size_t end = text.size();
    if (const int open = find_top_level_char(text, '('); open >= 0) {
        const auto at = static_cast<std::size_t>(open);
        if (find_matching_paren(text, at) + 1 == static_cast<int>(text.size())) {
            shape.items = cut_list(text, {at + 1, text.size() - 1});
            end = at;
        }
    }
    const std::size_t mark = std::min(text.find_first_of("=/"), end);
    shape.head = trimmed_stretch(text, {0, mark});
    if (mark < end) {
        const RouteStretch item = trimmed_stretch(text, {mark + 1, end});
        if (item.begin < item.end) {
            shape.items.insert(shape.items.begin(), item);
        }
    }
    return shape;
}

}  // namespace quor::input::gaussian

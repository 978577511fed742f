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

// Where a sign stands outside of brackets; the largest number when it does not.
std::size_t position_of(const std::string& text, char sign) {
    const int found = find_top_level_char(text, sign);
    return found < 0 ? std::string::npos : static_cast<std::size_t>(found);
}

// A list without the parentheses that enclose it.
RouteStretch within_parentheses(const std::string& text, RouteStretch list) {
    const RouteStretch part = trimmed_stretch(text, list);
    const bool enclosed = part.end > part.begin && text[part.begin] == '(' &&
                          find_matching_paren(text, part.begin) + 1 == static_cast<int>(part.end);
    return enclosed ? RouteStretch{part.begin + 1, part.end - 1} : part;
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

KeywordItem keyword_item(std::string_view text, RouteStretch item) {
    const std::string whole(stretch_text(text, item));
    const int equals = find_top_level_char(whole, '=');
    const std::size_t name_end = equals >= 0 ? static_cast<std::size_t>(equals) : std::min(whole.find('('), whole.size());
    const std::size_t value = std::min(item.begin + name_end + (equals >= 0 ? 1 : 0), item.end);
    return {trimmed_stretch(text, {item.begin, item.begin + name_end}), trimmed_stretch(text, {value, item.end})};
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
    const std::size_t mark = std::min({position_of(text, '='), position_of(text, '/'), end});
    shape.head = trimmed_stretch(text, {0, mark});
    if (mark < end) {
        const RouteStretch item = trimmed_stretch(text, {mark + 1, end});
        if (item.begin < item.end) {
            shape.items.insert(shape.items.begin(), item);
        }
    }
    return shape;
}

KeywordShape oniom_shape(const std::string& text) {
    KeywordShape shape;
    const std::size_t begin = std::min(text.find_first_of("(="), text.size());
    shape.head = trimmed_stretch(text, {0, begin});
    const std::size_t list = begin + (begin < text.size() && text[begin] == '=' ? 1 : 0);
    const std::size_t length = std::min(position_of(text.substr(list), '='), text.size() - list);
    shape.items = cut_list(text, within_parentheses(text, {list, list + length}));
    const std::vector<RouteStretch> options =
        cut_list(text, within_parentheses(text, {std::min(list + length + 1, text.size()), text.size()}));
    shape.items.insert(shape.items.end(), options.begin(), options.end());
    return shape;
}

}  // namespace quor::input::gaussian

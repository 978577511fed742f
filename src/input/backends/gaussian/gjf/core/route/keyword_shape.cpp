// Takes apart a keyword with options.
#include <gjf/core/route/keyword_shape.hpp>

#include <gjf/core/route/route_scanner.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

// Where a sign stands outside of brackets; the largest number when it does not.
std::size_t position_of(const std::string& text, char sign) {
    const int found = find_top_level_char(text, sign);
    return found < 0 ? std::string::npos : static_cast<std::size_t>(found);
}

// A list without the parentheses that enclose it.
Span within_parentheses(const std::string& text, Span list) {
    const Span part = trimmed_span(text, list);
    const bool enclosed = !part.empty() && find_matching_paren(text, part.begin) + 1 == static_cast<int>(part.end());
    return enclosed ? Span{part.begin + 1, part.length - 2} : part;
}

}  // namespace

int find_last_option_list(const std::string& text) {
    int open = find_top_level_char(text, '(');
    while (open >= 0) {
        const int close = find_matching_paren(text, static_cast<std::size_t>(open));
        if (close < 0) {
            return -1;
        }
        if (close + 1 == static_cast<int>(text.size())) {
            return open;
        }
        const int next = find_top_level_char(text.substr(static_cast<std::size_t>(close) + 1), '(');
        open = next < 0 ? -1 : close + 1 + next;
    }
    return -1;
}

Span trimmed_span(std::string_view text, Span part) noexcept { return span_of(text, trim_view(part.in(text))); }

std::vector<Span> cut_list(std::string_view text, Span list, char separator) {
    std::vector<Span> items;
    NestingTracker nesting;
    std::size_t begin = list.begin;
    for (std::size_t i = list.begin; i <= list.end(); ++i) {
        const bool ends = i == list.end() || (nesting.advance(text[i]) && text[i] == separator);
        if (!ends) {
            continue;
        }
        const Span item = trimmed_span(text, span_between(begin, i));
        if (!item.empty()) {
            items.push_back(item);
        }
        begin = i + 1;
    }
    return items;
}

KeywordItem keyword_item(std::string_view text, Span item) {
    const std::string whole(item.in(text));
    const int equals = find_top_level_char(whole, '=');
    const std::size_t name_end = equals >= 0 ? static_cast<std::size_t>(equals) : std::min(whole.find('('), whole.size());
    const std::size_t value = std::min<std::size_t>(item.begin + name_end + (equals >= 0 ? 1 : 0), item.end());
    return {trimmed_span(text, span_between(item.begin, item.begin + name_end)),
            trimmed_span(text, span_between(value, item.end()))};
}

KeywordShape keyword_shape(const std::string& text, bool is_method) {
    KeywordShape shape;
    std::size_t end = text.size();
    const int open = find_last_option_list(text);
    if (open >= 0 && (is_method || open == find_top_level_char(text, '('))) {
        end = static_cast<std::size_t>(open);
        shape.items = cut_list(text, span_between(end + 1, text.size() - 1));
    }
    const std::size_t mark = std::min({position_of(text, '='), position_of(text, '/'), end});
    shape.head = trimmed_span(text, span_between(0, mark));
    if (mark < end) {
        const Span item = trimmed_span(text, span_between(mark + 1, end));
        if (!item.empty()) {
            shape.items.insert(shape.items.begin(), item);
        }
    }
    return shape;
}

KeywordShape oniom_shape(const std::string& text) {
    KeywordShape shape;
    const std::size_t begin = std::min(text.find_first_of("(="), text.size());
    shape.head = trimmed_span(text, span_between(0, begin));
    const std::size_t list = begin + (begin < text.size() && text[begin] == '=' ? 1 : 0);
    const std::size_t length = std::min(position_of(text.substr(list), '='), text.size() - list);
    shape.items = cut_list(text, within_parentheses(text, span_between(list, list + length)));
    const std::vector<Span> options =
        cut_list(text, within_parentheses(text, span_between(std::min(list + length + 1, text.size()), text.size())));
    shape.items.insert(shape.items.end(), options.begin(), options.end());
    return shape;
}

}  // namespace quor::input::gaussian

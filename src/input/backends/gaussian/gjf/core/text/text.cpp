// Line, field and comment cutting. Every function is one pass over its text.
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace quor::input::gaussian {

std::string_view trim_view(std::string_view text) noexcept {
    std::size_t begin = 0;
    std::size_t end = text.size();
    while (begin < end && is_trim_character(text[begin])) {
        ++begin;
    }
    while (end > begin && is_trim_character(text[end - 1])) {
        --end;
    }
    return text.substr(begin, end - begin);
}

std::string to_lower_copy(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), to_lower_ascii);
    return lower;
}

bool equals_folded(std::string_view text, std::string_view lower) noexcept {
    return text.size() == lower.size() &&
           std::equal(text.begin(), text.end(), lower.begin(), [](char a, char b) { return to_lower_ascii(a) == b; });
}

bool contains_folded(std::string_view text, std::string_view lower) noexcept {
    const auto same = [](char a, char b) { return to_lower_ascii(a) == b; };
    return std::search(text.begin(), text.end(), lower.begin(), lower.end(), same) != text.end() || lower.empty();
}

std::string_view skip_byte_order_mark(std::string_view text) noexcept {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    return text.substr(0, mark.size()) == mark ? text.substr(mark.size()) : text;
}

std::vector<std::string_view> split_lines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        lines.push_back(take_line(text));
    }
    return lines;
}

std::string_view take_line(std::string_view& text) noexcept {
    const void* feed = text.empty() ? nullptr : std::memchr(text.data(), '\n', text.size());
    const std::size_t length =
        feed == nullptr ? text.size() : static_cast<std::size_t>(static_cast<const char*>(feed) - text.data());
    std::string_view line = text.substr(0, length);
    text.remove_prefix(feed == nullptr ? length : length + 1);
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
    }
    return line;
}

std::string join_lines(const std::string_view* lines, std::size_t count) {
    std::size_t size = count;
    for (std::size_t i = 0; i < count; ++i) {
        size += lines[i].size();
    }
    std::string text;
    text.reserve(size);
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0) {
            text += '\n';
        }
        text += lines[i];
    }
    return text;
}

namespace {

// Tells whether a single quote behind these two characters is the prime of d' or p' in a list of polarization functions.
bool is_prime_behind(char before_last, char last) noexcept {
    const char letter = to_lower_ascii(last);
    return (letter == 'd' || letter == 'p') && (before_last == '(' || before_last == ',');
}

}  // namespace

bool opens_quote(std::string_view text, std::size_t i) noexcept {
    if (text[i] == '\'') {
        return i < 2 || !is_prime_behind(text[i - 2], text[i - 1]);
    }
    return text[i] == '"';
}

bool NestingTracker::advance_nesting(char c) noexcept {
    if (quote_ != 0) {
        if (c == quote_) {
            quote_ = 0;
        }
        return false;
    }
    const bool is_prime = c == '\'' && is_prime_behind(last_[1], last_[0]);
    remember(c);
    if (is_prime) {
        return at_top_level();
    }
    const auto lower = [](std::size_t& depth) { depth -= depth > 0 ? 1 : 0; };
    switch (c) {
        case '\'':
        case '"':
            quote_ = c;
            return false;
        case '(':
            ++round_;
            return false;
        case '[':
            ++square_;
            return false;
        case '{':
            ++curly_;
            return false;
        case ')':
            lower(round_);
            return false;
        case ']':
            lower(square_);
            return false;
        case '}':
            lower(curly_);
            return false;
        default:
            return at_top_level();
    }
}

std::string_view without_comment(std::string_view line) noexcept {
    const std::size_t mark = line.find('!');
    if (mark == std::string_view::npos) {
        return line;
    }
    std::size_t i = 0;
    while (i < line.size() && line[i] != '!') {
        const std::size_t close = opens_quote(line, i) ? line.find(line[i], i + 1) : std::string_view::npos;
        i = (close == std::string_view::npos ? i : close) + 1;
    }
    return line.substr(0, i);
}

bool is_include_line(std::string_view line) noexcept {
    const std::string_view text = trim_view(line);
    return text.size() > 1 && text.front() == '@';
}

bool is_comment_line(std::string_view line) noexcept {
    const std::string_view text = trim_view(line);
    return !text.empty() && text.front() == '!';
}

namespace {

// What a character does to fields, by its byte: most lines are cut by looking each character up once.
enum : std::uint8_t { is_blank_class = 1, is_comma_class = 2, is_nesting_class = 4 };

constexpr std::array<std::uint8_t, 256> character_classes = []() {
    std::array<std::uint8_t, 256> classes{};
    for (std::size_t byte = 0; byte < classes.size(); ++byte) {
        const char c = static_cast<char>(byte);
        classes[byte] = is_white_space(c)         ? is_blank_class
                        : c == ','                ? is_comma_class
                        : is_nesting_character(c) ? is_nesting_class
                                                  : 0;
    }
    return classes;
}();

// Walks past a quoted stretch that begins at `i`; a quote that nothing closes is passed over alone when it counts as text.
std::size_t end_of_quote(std::string_view line, std::size_t i, bool lone_quotes_are_text) noexcept {
    const std::size_t close = line.find(line[i], i + 1);
    if (close != std::string_view::npos) {
        return close + 1;
    }
    return lone_quotes_are_text ? i + 1 : line.size();
}

// Returns where the field that begins at `i` ends.
std::size_t end_of_nested_field(std::string_view line, std::size_t i, bool commas, bool lone_quotes_are_text) noexcept {
    NestingTracker nesting;
    while (i < line.size()) {
        const char c = line[i];
        if (opens_quote(line, i)) {
            i = end_of_quote(line, i, lone_quotes_are_text);
            continue;
        }
        if (nesting.advance(c) && (is_white_space(c) || (commas && c == ','))) {
            return i;
        }
        ++i;
    }
    return i;
}

}  // namespace

void split_fields(std::string_view line, FieldSeparators separators, bool lone_quotes_are_text,
                  std::vector<std::string_view>& fields) {
    fields.clear();
    const bool commas = separators == FieldSeparators::WhiteSpaceAndComma;
    const unsigned separators_wanted = commas ? is_blank_class | is_comma_class : is_blank_class;
    const auto class_at = [line](std::size_t at) -> unsigned {
        return character_classes[static_cast<unsigned char>(line[at])];
    };
    std::size_t i = 0;
    while (true) {
        while (i < line.size() && (class_at(i) & separators_wanted) != 0) {
            ++i;
        }
        if (i == line.size()) {
            return;
        }
        const std::size_t begin = i;
        while (i < line.size() && (class_at(i) & (separators_wanted | is_nesting_class)) == 0) {
            ++i;
        }
        if (i < line.size() && (class_at(i) & is_nesting_class) != 0) {
            i = end_of_nested_field(line, i, commas, lone_quotes_are_text);
        }
        fields.push_back(line.substr(begin, i - begin));
    }
}

}  // namespace quor::input::gaussian

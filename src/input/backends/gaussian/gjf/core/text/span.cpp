// Line and column of a place in a text, and changes made to one.
#include <gjf/core/text/span.hpp>

#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {

namespace {

bool is_continuation(char c) noexcept { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

// Returns how many bytes at the head of a text make a character; 1 where they make none.
std::size_t character_length(std::string_view text) noexcept {
    const auto first = static_cast<unsigned char>(text.front());
    const std::size_t length = first < 0xC2 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 1;
    const std::string_view rest = text.substr(1, length - 1);
    return rest.size() == length - 1 && std::all_of(rest.begin(), rest.end(), is_continuation) ? length : 1;
}

}  // namespace

LineAndColumn line_and_column(std::string_view text, std::size_t offset) noexcept {
    const std::string_view before = text.substr(0, std::min(offset, text.size()));
    const std::size_t line_feed = before.rfind('\n');
    const std::size_t mark = text.size() - skip_byte_order_mark(text).size();
    const std::size_t begin = line_feed == std::string_view::npos ? std::min(mark, before.size()) : line_feed + 1;
    return {1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')), before.size() - begin + 1};
}

std::size_t columns_in(std::string_view text, ColumnUnit unit) noexcept {
    if (unit == ColumnUnit::Bytes) {
        return text.size();
    }
    std::size_t columns = 0;
    while (!text.empty()) {
        const std::size_t length = character_length(text);
        columns += unit == ColumnUnit::Utf16 && length == 4 ? 2 : 1;
        text.remove_prefix(length);
    }
    return columns;
}

std::string with_edits(std::string_view text, const std::vector<TextEdit>& edits) {
    std::size_t size = text.size();
    for (const TextEdit& edit : edits) {
        size += edit.text.size();
    }
    std::string result;
    result.reserve(size);
    std::size_t done = 0;
    for (const TextEdit& edit : edits) {
        result.append(text.substr(done, edit.begin - done)).append(edit.text);
        done = edit.end;
    }
    return result.append(text.substr(done));
}

}  // namespace quor::input::gaussian

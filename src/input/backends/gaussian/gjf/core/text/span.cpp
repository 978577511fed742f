// Line and column of a place in a text, and changes made to one.
#include <gjf/core/text/span.hpp>

#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {

LineAndColumn line_and_column(std::string_view text, std::size_t offset) noexcept {
    const std::string_view before = text.substr(0, std::min(offset, text.size()));
    const std::size_t line_feed = before.rfind('\n');
    const std::size_t mark = text.size() - skip_byte_order_mark(text).size();
    const std::size_t begin = line_feed == std::string_view::npos ? std::min(mark, before.size()) : line_feed + 1;
    return {1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')), before.size() - begin + 1};
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

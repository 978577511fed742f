// Walks the lines of one job, section by section.
#include <gjf/core/reader/reading.hpp>

#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {

bool is_blank_line(std::string_view line) noexcept { return std::all_of(line.begin(), line.end(), is_trim_character); }

std::string joined(LineSpan lines) { return join_lines(lines.data(), lines.size()); }

std::vector<std::string_view> views_of(const std::vector<std::string>& lines) {
    return std::vector<std::string_view>(lines.begin(), lines.end());
}

std::size_t LineCursor::skip_blank_lines() noexcept {
    const std::size_t begin = next_;
    while (!at_end() && is_blank_line(lines_[next_])) {
        ++next_;
    }
    return next_ - begin;
}

LineSpan LineCursor::take_section() noexcept {
    skip_blank_lines();
    const std::size_t begin = next_;
    while (!at_end() && !is_blank_line(lines_[next_])) {
        ++next_;
    }
    return range(begin, next_);
}

LineSpan LineCursor::take_section_past_comments() noexcept {
    LineSpan section = take_section();
    while (!section.empty() && std::all_of(section.begin(), section.end(), is_comment_line)) {
        section = take_section();
    }
    return section;
}

}  // namespace quor::input::gaussian

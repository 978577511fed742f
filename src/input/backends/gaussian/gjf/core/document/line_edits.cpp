// Cuts a text into lines with their ends, and applies changes to them.
#include <gjf/core/document/line_edits.hpp>

namespace quor::input::gaussian {
namespace {

// Appends a line with an end, and gives the line before it one when it has none.
void append_line(std::string& text, std::string_view line, std::string_view end, std::string_view usual_end) {
    if (!text.empty() && text.back() != '\n') {
        text += usual_end;
    }
    text += line;
    text += end;
}

}  // namespace

TextLines::TextLines(std::string_view text) {
    while (!text.empty()) {
        const std::size_t feed = text.find('\n');
        const std::size_t length = feed == std::string_view::npos ? text.size() : feed + 1;
        std::size_t end = feed == std::string_view::npos ? length : feed;
        if (end > 0 && text[end - 1] == '\r') {
            --end;
        }
        lines_.push_back({text.substr(0, end), text.substr(end, length - end)});
        text.remove_prefix(length);
    }
}

std::string_view TextLines::line(std::size_t number) const noexcept {
    return number >= 1 && number <= lines_.size() ? lines_[number - 1].text : std::string_view();
}

std::string_view TextLines::line_end(std::size_t number) const noexcept {
    return number >= 1 && number <= lines_.size() ? lines_[number - 1].end : std::string_view();
}

std::string_view TextLines::usual_end() const noexcept {
    return lines_.empty() || lines_.front().end.empty() ? std::string_view("\n") : lines_.front().end;
}

void LineEdits::replace(std::size_t line, std::string text) {
    Change& change = changes_[line];
    change.state = State::Replaced;
    change.text = std::move(text);
}

void LineEdits::remove(std::size_t line) { changes_[line].state = State::Removed; }

void LineEdits::insert_before(std::size_t line, std::string text) { changes_[line].before.push_back(std::move(text)); }

void LineEdits::insert_after(std::size_t line, std::string text) { changes_[line].after.push_back(std::move(text)); }

std::string_view LineEdits::line(const TextLines& lines, std::size_t number) const {
    const auto change = changes_.find(number);
    return change != changes_.end() && change->second.state == State::Replaced ? std::string_view(change->second.text)
                                                                               : lines.line(number);
}

bool LineEdits::is_removed(std::size_t line) const {
    const auto change = changes_.find(line);
    return change != changes_.end() && change->second.state == State::Removed;
}

void LineEdits::apply(const TextLines& lines, std::size_t first, std::size_t last, std::string& text) const {
    auto change = changes_.lower_bound(first);
    for (std::size_t number = first; number <= last; ++number) {
        if (change == changes_.end() || change->first != number) {
            append_line(text, lines.line(number), lines.line_end(number), lines.usual_end());
            continue;
        }
        for (const std::string& line : change->second.before) {
            append_line(text, line, lines.usual_end(), lines.usual_end());
        }
        if (change->second.state != State::Removed) {
            append_line(text, line(lines, number), lines.line_end(number), lines.usual_end());
        }
        for (const std::string& line : change->second.after) {
            append_line(text, line, lines.usual_end(), lines.usual_end());
        }
        ++change;
    }
}

}  // namespace quor::input::gaussian

// Cuts a text into lines with their ends, and turns changes of lines into changes of the text.
#include <gjf/core/document/line_edits.hpp>

#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {

TextLines::TextLines(std::string_view text) : text_(text) {
    for (std::size_t begin = 0; begin < text.size(); begin = std::min(text.find('\n', begin), text.size() - 1) + 1) {
        begins_.push_back(static_cast<std::uint32_t>(begin));
    }
}

std::size_t TextLines::begin_of(std::size_t number) const noexcept {
    return number <= begins_.size() ? begins_[number - 1] : text_.size();
}

std::string_view TextLines::with_end(std::size_t number) const noexcept {
    return number >= 1 && number <= size() ? text_.substr(begin_of(number), begin_of(number + 1) - begin_of(number))
                                           : std::string_view();
}

std::string_view TextLines::line(std::size_t number) const noexcept {
    const std::string_view whole = with_end(number);
    return whole.substr(0, whole.size() - line_end(number).size());
}

std::string_view TextLines::line_end(std::size_t number) const noexcept {
    const std::string_view whole = with_end(number);
    std::string_view rest = whole;
    return whole.substr(take_line(rest).size());
}

std::string_view TextLines::usual_end() const noexcept {
    const std::string_view end = line_end(1);
    return end.ends_with('\n') ? end : std::string_view("\n");
}

void LineEdits::replace(std::size_t line, std::string text) {
    Change& change = changes_[line];
    change.state = State::Replaced;
    change.text = std::move(text);
}

void LineEdits::remove(std::size_t line) { changes_[line].state = State::Removed; }

void LineEdits::insert_before(std::size_t line, std::string text) { changes_[line].before.push_back(std::move(text)); }

void LineEdits::insert_after(std::size_t line, std::string text) { changes_[line].after.push_back(std::move(text)); }

bool LineEdits::is_removed(std::size_t line) const {
    const auto change = changes_.find(line);
    return change != changes_.end() && change->second.state == State::Removed;
}

std::vector<TextEdit> LineEdits::text_edits(const TextLines& lines) const {
    std::vector<TextEdit> edits;
    const std::string_view usual_end = lines.usual_end();
    for (auto found = changes_.lower_bound(1); found != changes_.end() && found->first <= lines.size(); ++found) {
        const auto& [number, change] = *found;
        const std::size_t begin = lines.begin_of(number);
        const std::size_t end = lines.begin_of(number + 1);
        const std::size_t line_end = end - lines.line_end(number).size();
        TextEdit before{begin, begin, {}};
        for (const std::string& line : change.before) {
            before.text.append(line).append(usual_end);
        }
        if (change.state != State::Kept) {
            before.end = change.state == State::Removed ? end : line_end;
            before.text += change.text;
        }
        TextEdit after{end, end, {}};
        // The last line of a text may have no end yet, or the first half of one.
        const std::string_view own_end = lines.line_end(number);
        if (!own_end.ends_with('\n') && change.state != State::Removed && !change.after.empty()) {
            after.text += own_end.empty() ? usual_end : std::string_view("\n");
        }
        for (const std::string& line : change.after) {
            after.text.append(line).append(usual_end);
        }
        edits.push_back(std::move(before));
        edits.push_back(std::move(after));
    }
    return edits;
}

}  // namespace quor::input::gaussian

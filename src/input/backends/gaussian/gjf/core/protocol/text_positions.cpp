// Finds places by lines and characters.
#include <gjf/core/protocol/text_positions.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

// Returns how many units a character takes, and how many bytes.
struct Step {
    std::size_t units;
    std::size_t bytes;
};

Step step_of(std::string_view rest, ColumnUnit unit) noexcept {
    if (static_cast<unsigned char>(rest.front()) < 0x80) {
        return {1, 1};
    }
    for (std::size_t bytes = 2; bytes <= std::min<std::size_t>(4, rest.size()); ++bytes) {
        if (columns_in(rest.substr(0, bytes), ColumnUnit::CodePoints) == 1) {
            return {columns_in(rest.substr(0, bytes), unit), bytes};
        }
    }
    return {1, 1};
}

}  // namespace

TextPositions::TextPositions(std::string_view text, ColumnUnit unit) : text_(text), unit_(unit), begins_{0} {
    add_begins(1, text.size(), begins_);
}

// Adds where lines begin from one offset to another, both included: behind each line feed, and behind each carriage return
// that stands before none.
void TextPositions::add_begins(std::size_t first, std::size_t last, std::vector<std::uint32_t>& begins) const {
    if (first > last) {
        return;
    }
    const std::size_t old_size = begins.size();
    const std::string_view ends = text_.substr(0, last);
    for (std::size_t at = ends.find('\n', first - 1); at != std::string_view::npos; at = ends.find('\n', at + 1)) {
        begins.push_back(static_cast<std::uint32_t>(at + 1));
    }
    const std::size_t behind_line_feeds = begins.size();
    for (std::size_t at = ends.find('\r', first - 1); at != std::string_view::npos; at = ends.find('\r', at + 1)) {
        if (at + 1 == text_.size() || text_[at + 1] != '\n') {
            begins.push_back(static_cast<std::uint32_t>(at + 1));
        }
    }
    const auto middle = [&begins](std::size_t index) { return begins.begin() + static_cast<std::ptrdiff_t>(index); };
    std::inplace_merge(middle(old_size), middle(behind_line_feeds), begins.end());
}

// A line begins by the two bytes around it, so that only those in the new stretch and at its ends are looked for.
void TextPositions::follow(std::string_view new_text, Span old_place, std::size_t new_length) {
    text_ = new_text;
    const auto first = std::lower_bound(begins_.begin() + 1, begins_.end(), old_place.begin);
    const auto behind = std::upper_bound(first, begins_.end(), old_place.end());
    for (auto begin = behind; begin != begins_.end(); ++begin) {
        *begin = static_cast<std::uint32_t>(*begin + new_length - old_place.length);
    }
    std::vector<std::uint32_t> added;
    add_begins(std::max<std::size_t>(old_place.begin, 1), old_place.begin + new_length, added);
    begins_.insert(begins_.erase(first, behind), added.begin(), added.end());
}

std::string_view TextPositions::line(std::size_t number) const noexcept {
    const std::size_t begin = begins_[number];
    const std::size_t end = number + 1 < begins_.size() ? begins_[number + 1] : text_.size();
    std::string_view line = text_.substr(begin, end - begin);
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) {
        line.remove_suffix(1);
    }
    return line;
}

LinePosition TextPositions::position(std::size_t offset) const noexcept {
    const std::size_t at = std::min(offset, text_.size());
    const auto behind = std::upper_bound(begins_.begin(), begins_.end(), at);
    const auto number = static_cast<std::size_t>(behind - begins_.begin()) - 1;
    std::string_view rest = line(number);
    std::size_t left = std::min(at - begins_[number], rest.size());
    LinePosition place{number, 0};
    while (left > 0) {
        const Step step = step_of(rest, unit_);
        if (step.bytes > left) {
            break;
        }
        place.character += step.units;
        left -= step.bytes;
        rest.remove_prefix(step.bytes);
    }
    return place;
}

std::size_t TextPositions::offset(LinePosition place) const noexcept {
    if (place.line >= begins_.size()) {
        return text_.size();
    }
    std::string_view rest = line(place.line);
    std::size_t offset = begins_[place.line];
    std::size_t left = place.character;
    while (left > 0 && !rest.empty()) {
        const Step step = step_of(rest, unit_);
        if (step.units > left) {
            break;
        }
        left -= step.units;
        offset += step.bytes;
        rest.remove_prefix(step.bytes);
    }
    return offset;
}

}  // namespace quor::input::gaussian

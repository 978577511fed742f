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
    if (unit == ColumnUnit::Bytes || static_cast<unsigned char>(rest.front()) < 0x80) {
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
    for (std::size_t at = text.find_first_of("\r\n"); at != std::string_view::npos; at = text.find_first_of("\r\n", at)) {
        at += text.substr(at, 2) == "\r\n" ? 2 : 1;
        begins_.push_back(static_cast<std::uint32_t>(at));
    }
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

// Replaces fields of a line within the blanks around them.
#include <gjf/core/document/field_line.hpp>

#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {

FieldLine::FieldLine(std::string_view line) : text_(line) { cut(); }

void FieldLine::cut() {
    Fields fields;
    cut_fields(without_comment(text_), fields);
    fields_.clear();
    for (const std::string_view field : fields) {
        const auto begin = static_cast<std::size_t>(field.data() - text_.data());
        fields_.push_back({begin, begin + field.size()});
    }
}

std::string_view FieldLine::field(std::size_t i) const noexcept {
    return std::string_view(text_).substr(fields_[i].begin, fields_[i].end - fields_[i].begin);
}

// Counts the blanks before a field; none when anything else separates it from the one before.
std::size_t FieldLine::blanks_before(std::size_t i) const noexcept {
    const std::size_t from = i == 0 ? 0 : fields_[i - 1].end;
    const bool all =
        std::all_of(text_.begin() + static_cast<std::ptrdiff_t>(from),
                    text_.begin() + static_cast<std::ptrdiff_t>(fields_[i].begin), [](char c) { return c == ' '; });
    return all ? fields_[i].begin - from : 0;
}

// Counts the blanks behind a field that another text may take: one is left before the next field or a comment.
std::size_t FieldLine::free_blanks_behind(std::size_t i) const noexcept {
    const std::size_t from = fields_[i].end;
    if (i + 1 < fields_.size()) {
        const std::size_t blanks = blanks_before(i + 1);
        return blanks == 0 ? 0 : blanks - 1;
    }
    const std::size_t end = std::min(text_.find_first_not_of(' ', from), text_.size());
    return end == text_.size() ? end - from : end == from ? 0 : end - from - 1;
}

void FieldLine::splice(std::size_t begin, std::size_t end, const std::string& text) {
    text_.replace(begin, end - begin, text);
    cut();
}

void FieldLine::set_number(std::size_t i, std::string_view text) {
    const Field field = fields_[i];
    const std::size_t width = field.end - field.begin;
    if (text.size() <= width) {
        const std::size_t padding = i > 0 && blanks_before(i) > 0 ? width - text.size() : 0;
        splice(field.begin, field.end, std::string(padding, ' ').append(text));
        return;
    }
    const std::size_t more = text.size() - width;
    const std::size_t before = blanks_before(i);
    const std::size_t left = i == 0 || before == 0 ? 0 : std::min(more, before - 1);
    const std::size_t right = std::min(more - left, free_blanks_behind(i));
    splice(field.begin - left, field.end + right, std::string(text));
}

void FieldLine::set_text(std::size_t i, std::string_view text) {
    const Field field = fields_[i];
    const std::size_t width = field.end - field.begin;
    if (text.size() <= width) {
        const bool blanks_follow = field.end < text_.size() && text_[field.end] == ' ';
        splice(field.begin, field.end, std::string(text).append(blanks_follow ? width - text.size() : 0, ' '));
        return;
    }
    splice(field.begin, field.end + std::min(text.size() - width, free_blanks_behind(i)), std::string(text));
}

void FieldLine::insert_after(std::size_t i, std::string_view text) {
    const std::size_t at = fields_[i].end;
    splice(at, at + std::min(text.size() + 1, free_blanks_behind(i)), " " + std::string(text));
}

void FieldLine::remove(std::size_t i) {
    const Field field = fields_[i];
    if (i > 0) {
        splice(fields_[i - 1].end, field.end, {});
    } else {
        splice(field.begin, fields_.size() > 1 ? fields_[1].begin : field.end, {});
    }
}

void FieldLine::blank_out(std::size_t i) {
    const Field field = fields_[i];
    if (i + 1 < fields_.size() && blanks_before(i + 1) > 0) {
        splice(field.begin, field.end, std::string(field.end - field.begin, ' '));
    } else {
        remove(i);
    }
}

void FieldLine::truncate(std::size_t i) {
    while (fields_.size() > i) {
        remove(fields_.size() - 1);
    }
}

}  // namespace quor::input::gaussian

// Cuts the lines of a section and hands them to the grammar of its kind.
#include <gjf/core/sections/section_tokens.hpp>

#include <gjf/core/sections/section_row.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {

SectionReading read_section(ExtraInputSectionKind kind, std::string_view text) {
    SectionReading section;
    section.text = text;
    for (const std::string_view line : split_lines(text)) {
        section.lines.push_back({span_of(text, line), LineForm::Plain, 0, 0});
    }
    section_row(kind).grammar(section);
    return section;
}

bool is_fortran_or_c_number(std::string_view field) {
    std::string text = to_lower_copy(field);
    std::replace(text.begin(), text.end(), 'd', 'e');
    return text.find_first_not_of("+-.0123456789e") == std::string::npos && is_number_text(text);
}

void cut_section_line(std::string_view line, std::vector<std::string_view>& fields) {
    split_fields(without_comment(line), FieldSeparators::WhiteSpaceAndComma, true, fields);
}

bool SectionScanner::next() {
    while (++line_ < section_.lines.size()) {
        if (is_include_line(line())) {
            begin(LineForm::Include);
            add(trim_view(without_comment(line())), TokenKind::Word);
            continue;
        }
        cut_(line(), fields_);
        if (!fields_.empty()) {
            return true;
        }
    }
    return false;
}

void SectionScanner::begin(LineForm form) {
    section_.lines[line_].form = form;
    section_.lines[line_].first = static_cast<std::uint32_t>(section_.tokens.size());
}

void SectionScanner::add(std::string_view text, TokenKind kind) {
    section_.tokens.push_back({span_of(section_.text, text), kind});
    ++section_.lines[line_].count;
}

void SectionScanner::add_rest(std::size_t first) {
    for (std::size_t i = first; i < fields_.size(); ++i) {
        add(fields_[i], is_number_text(fields_[i]) ? TokenKind::Number : TokenKind::Word);
    }
}

}  // namespace quor::input::gaussian

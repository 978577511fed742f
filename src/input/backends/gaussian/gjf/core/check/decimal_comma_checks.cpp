// Checks of numbers with a decimal comma. A comma separates fields, so such a number is read as two whole ones.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/check/fixes.hpp>
#include <gjf/core/knowledge/facts.hpp>
#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/sections/section_tokens.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

// Tells whether coordinates are written with decimal commas: fields such as 0,123, two or more, and no point in the line.
bool has_decimal_commas(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
        count += text[i] == ',' && is_digit(text[i - 1]) && is_digit(text[i + 1]);
    }
    const std::string_view trimmed = trim_view(text);
    const auto blanks = std::count_if(trimmed.begin(), trimmed.end(), is_trim_character);
    return count >= 2 && blanks >= 2 && text.find_first_of(".()") == std::string_view::npos;
}

// Puts points in the place of the commas between digits, in this line and all below that are written so.
std::vector<TextEdit> decimal_points(const CheckedJob& job, std::size_t line) {
    std::vector<TextEdit> edits;
    for (; line <= job.layout.molecule.last; ++line) {
        const std::string_view text = without_comment(job.line(line));
        for (std::size_t i = 1; has_decimal_commas(text) && i + 1 < text.size(); ++i) {
            if (text[i] == ',' && is_digit(text[i - 1]) && is_digit(text[i + 1])) {
                edits.push_back(job.replacing({line, i + 1, 1}, "."));
            }
        }
    }
    return edits;
}

constexpr const char* comma_hint = "a comma separates fields; write a decimal point";

// Returns the first word, of those between blanks, that is a number with a comma for its point; empty for none.
std::string_view decimal_comma(std::string_view text, std::size_t first_word) {
    Fields words;
    split_fields(text, FieldSeparators::WhiteSpace, true, words);
    const auto is_one = [](std::string_view word) {
        const std::size_t comma = word.find(',');
        return comma != std::string_view::npos && is_integer_text(word.substr(0, comma)) && comma + 1 < word.size() &&
               std::all_of(word.begin() + static_cast<std::ptrdiff_t>(comma) + 1, word.end(), is_digit);
    };
    const auto found =
        std::find_if(words.begin() + static_cast<std::ptrdiff_t>(std::min(first_word, words.size())), words.end(), is_one);
    return found == words.end() ? std::string_view() : *found;
}

// Tells whether all words of a line, but for those before `first`, are numbers, with points or with commas.
bool are_numbers(const Fields& words, std::size_t first) {
    return words.size() > first &&
           std::all_of(words.begin() + static_cast<std::ptrdiff_t>(first), words.end(), [](auto word) {
               std::string number(word);
               std::replace(number.begin(), number.end(), ',', '.');
               return is_fortran_or_c_number(number);
           });
}

// The word with a decimal comma on a line whose other numbers have points: an atom's coordinates, or a row's values.
std::string_view slip_among_points(std::string_view text) {
    Fields words;
    split_fields(text, FieldSeparators::WhiteSpace, true, words);
    const bool has_columns = words.size() >= 3 && words.size() <= 7 && words[0].find(',') == std::string_view::npos;
    const std::string_view slip = has_columns && text.find_first_of("()") == text.npos ? decimal_comma(text, 1) : "";
    return slip.size() - std::min(slip.find(','), slip.size()) > 2 && are_numbers(words, 1) ? slip : std::string_view();
}

// The word with a decimal comma on a line of a section, where its form tells that a number stands there.
std::string_view slip_in_section(ExtraInputSectionKind kind, std::string_view text) {
    using Kind = ExtraInputSectionKind;
    Fields words;
    split_fields(text, FieldSeparators::WhiteSpace, true, words);
    if (kind == Kind::PCMInput || kind == Kind::PCMSolvation) {
        for (const std::string_view word : words) {
            const std::size_t sign = std::min(word.find('='), word.size());
            if (sign < word.size() && takes_number(word.substr(0, sign)) &&
                !decimal_comma(word.substr(sign + 1), 0).empty()) {
                return word.substr(sign + 1);
            }
        }
        return {};
    }
    if (words.size() < 2 || text.find_first_of("()=") != text.npos) {
        return {};
    }
    const bool is_shell = kind == Kind::BasisSet && words.size() == 3 && is_letter(words[0][0]);
    switch (kind) {
        case Kind::CoordinateModifications: {
            const auto action = std::find_if(words.begin() + 1, words.end(), [](auto word) { return is_letter(word[0]); });
            return decimal_comma(text, static_cast<std::size_t>(action - words.begin()));
        }
        case Kind::BasisSet:
        case Kind::ECP:
            return words.back() != "0" && are_numbers(words, is_shell ? 2 : 0) ? decimal_comma(text, is_shell ? 2 : 0) : "";
        case Kind::BackgroundCharge:
            return words.size() == 4 && are_numbers(words, 0) ? decimal_comma(text, 0) : "";
        case Kind::AtomicMasses:
            return words.size() <= 3 && are_numbers(words, 0) ? decimal_comma(text, 0) : "";
        default:
            return {};
    }
}

void add_decimal_comma(const CheckedJob& job, std::size_t line, std::string_view word, Findings& findings) {
    const TextPlace place = job.place_in(line, word);
    Finding& finding =
        findings.add("GJF-T006", Severity::Error, "'" + std::string(word) + "' has a decimal comma", place, comma_hint);
    std::string number(word);
    std::replace(number.begin(), number.end(), ',', '.');
    offer_words(job, place, word, {number}, FixSafety::Unsafe, finding);
}

// Reports the first number of each section that has a decimal comma.
void check_commas_of_sections(const CheckedJob& job, Findings& findings) {
    for (const SectionLayout& section : job.layout.sections) {
        for (std::size_t line = section.lines.first; line <= section.lines.last; ++line) {
            const std::string_view text = without_comment(job.line(line));
            const std::string_view word = text.find(',') == text.npos ? "" : slip_in_section(section.kind, text);
            if (!word.empty()) {
                add_decimal_comma(job, line, word, findings);
                break;
            }
        }
    }
}

void check_commas_of_molecule(const CheckedJob& job, Findings& findings) {
    const LineRange& molecule = job.layout.molecule;
    for (std::size_t line = molecule.first; !molecule.empty() && line <= molecule.last; ++line) {
        const std::string_view text = job.line(line);
        if (text.find(',') != std::string_view::npos && has_decimal_commas(without_comment(text))) {
            Finding& finding = findings.add("GJF-T006", Severity::Error, "the numbers of this line have decimal commas",
                                            line, "a comma separates fields; write decimal points");
            offer(finding, "write decimal points", FixSafety::Unsafe, decimal_points(job, line));
            return;
        }
        const bool is_row = line > job.layout.charge_line && text.find(',') != std::string_view::npos;
        if (const std::string_view slip = is_row ? slip_among_points(without_comment(text)) : ""; !slip.empty()) {
            add_decimal_comma(job, line, slip, findings);
            return;
        }
    }
}

// Behind the value stand the steps of a scan, so a comma may part them.
void check_commas_of_variables(const CheckedJob& job, const std::vector<ZMatrixVariable>& variables,
                               const std::vector<std::size_t>& lines, Findings& findings) {
    for (std::size_t i = 0; i < std::min(variables.size(), lines.size()); ++i) {
        if (const std::string_view word = decimal_comma(variables[i].value, 0); !word.empty()) {
            const std::string_view line = job.line(lines[i]);
            add_decimal_comma(job, lines[i], line.substr(std::min(line.rfind(word), line.size()), word.size()), findings);
        }
    }
}

}  // namespace

void check_decimal_commas(const CheckedJob& job, Findings& findings) {
    const GeomSection& geom = job.job.geom;
    check_commas_of_molecule(job, findings);
    check_commas_of_sections(job, findings);
    check_commas_of_variables(job, geom.variables, job.layout.variables, findings);
    check_commas_of_variables(job, geom.constants, job.layout.constants, findings);
    check_commas_of_variables(job, geom.cartesian_variables, job.layout.cartesian_variables, findings);
}

}  // namespace quor::input::gaussian

// Checks of the bare text: its characters, line ends, and the blank lines that end a job.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/check/fixes.hpp>

#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/sections/section_kinds.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>

namespace quor::input::gaussian {
namespace {

bool is_control_character(char c) noexcept { return (static_cast<unsigned char>(c) < 0x20 && c != '\t') || c == '\x7f'; }

bool is_outside_ascii(char c) noexcept { return static_cast<unsigned char>(c) >= 0x80; }

// Tells whether a line holds printable ASCII alone, as nearly all do: without a branch for each character.
bool is_printable(std::string_view line) noexcept {
    unsigned odd = 0;
    for (const char c : line) {
        odd |= static_cast<unsigned char>(c - 0x20) > 0x5E ? 1U : 0U;
    }
    return odd == 0;
}

bool holds(const LineRange& range, std::size_t line) noexcept { return line >= range.first && line <= range.last; }

// Characters that text processors put in the place of others.
constexpr struct {
    std::string_view character;
    std::string_view meant;
} typographic[] = {
    {"\xC2\xA0", " "},      {"\xE2\x80\x87", " "}, {"\xE2\x80\xAF", " "}, {"\xE3\x80\x80", " "}, {"\xE2\x80\x83", " "},
    {"\xE2\x80\x82", " "},  {"\xE2\x80\x89", " "}, {"\xE2\x80\x8B", ""},  {"\xEF\xBB\xBF", ""},  {"\xC2\xAD", ""},
    {"\xE2\x88\x92", "-"},  {"\xE2\x80\x90", "-"}, {"\xE2\x80\x91", "-"}, {"\xE2\x80\x92", "-"}, {"\xE2\x80\x93", "-"},
    {"\xE2\x80\x94", "-"},  {"\xE2\x80\x98", "'"}, {"\xE2\x80\x99", "'"}, {"\xE2\x80\xB2", "'"}, {"\xE2\x80\x9C", "\""},
    {"\xE2\x80\x9D", "\""}, {"\xEF\xBC\x8C", ","}, {"\xEF\xBC\x88", "("}, {"\xEF\xBC\x89", ")"}, {"\xEF\xBC\x9D", "="},
};

// Offers the ASCII characters for typographic ones. Blanks and the signs of a route can be nothing else; a dash among
// coordinates changes one of them.
void offer_plain_characters(const CheckedJob& job, const TextPlace& place, Finding& finding) {
    std::string_view rest = job.line(place.line).substr(place.column - 1, place.length);
    std::string text;
    while (!rest.empty()) {
        const auto known = std::find_if(std::begin(typographic), std::end(typographic),
                                        [&](const auto& row) { return rest.starts_with(row.character); });
        if (known == std::end(typographic)) {
            return;
        }
        text += known->meant;
        rest.remove_prefix(known->character.size());
    }
    const bool is_blank = text.find_first_not_of(' ') == std::string::npos;
    const bool in_head = job.layout.charge_line == 0 || place.line < job.layout.charge_line;
    offer(finding, is_blank ? "write blanks" : "write " + text, is_blank || in_head ? FixSafety::Safe : FixSafety::Unsafe,
          {job.replacing(place, text)});
}

// Tells whether a line is of a section that is read number by number.
bool is_in_numbered_section(const CheckedJob& job, std::size_t line) {
    using Kind = ExtraInputSectionKind;
    constexpr Kind kinds[] = {Kind::CoordinateModifications, Kind::FrozenAtomAlterations, Kind::BasisSet,    Kind::ECP,
                              Kind::BackgroundCharge,        Kind::OrbitalAlterations,    Kind::AtomicMasses};
    return std::any_of(job.layout.sections.begin(), job.layout.sections.end(), [&](const SectionLayout& section) {
        return holds(section.lines, line) && std::find(std::begin(kinds), std::end(kinds), section.kind) != std::end(kinds);
    });
}

void check_line_characters(const CheckedJob& job, std::size_t number, Findings& findings) {
    const std::string_view line = job.line(number);
    if (is_printable(line)) {
        return;
    }
    const auto control = std::find_if(line.begin(), line.end(), is_control_character);
    if (control != line.end()) {
        const auto column = static_cast<std::size_t>(control - line.begin()) + 1;
        const TextPlace place{number, column, 1};
        Finding& finding = findings.add("GJF-T002", Severity::Warning, "a control character stands here", place,
                                        "remove it; editors often do not show it");
        const bool is_blank = *control == '\f' || *control == '\v';
        offer(finding, is_blank ? "write a blank" : "remove it", FixSafety::Unsafe,
              {job.replacing(place, is_blank ? " " : "")});
    }
    // A title may hold anything; every other part ends where its comment begins.
    const std::string_view text = holds(job.layout.title, number) ? std::string_view() : without_comment(line);
    const auto first = std::find_if(text.begin(), text.end(), is_outside_ascii);
    if (first != text.end()) {
        const auto last = std::find_if_not(first, text.end(), is_outside_ascii);
        const auto column = static_cast<std::size_t>(first - text.begin()) + 1;
        const TextPlace place{number, column, static_cast<std::size_t>(last - first)};
        const auto at = static_cast<std::size_t>(last - text.begin());
        const bool is_in_number = is_in_numbered_section(job, number) && at < text.size() && is_digit(text[at]) &&
                                  *first != '\xC2' &&
                                  (first == text.begin() || is_digit(first[-1]) || is_trim_character(first[-1]));
        Finding& finding = findings.add("GJF-T003", is_in_number ? Severity::Error : Severity::Warning,
                                        "a character outside ASCII stands here", place,
                                        "write it with the letters, digits and signs of ASCII");
        offer_plain_characters(job, place, finding);
    }
}

// The part of a job that its last line belongs to, as far as its blank line matters: Gaussian stops at the end of the file
// among atoms, and takes it for the end of all other sections.
enum class LastPart { NeedsNoBlankLine, Atoms, Other };

LastPart last_part(const CheckedJob& job) {
    const JobLayout& layout = job.layout;
    if (!layout.sections.empty()) {
        const ExtraInputSectionKind kind = layout.sections.back().kind;
        const bool needs = kind != ExtraInputSectionKind::Unknown && extra_input_requires_blank_line(kind);
        return needs ? LastPart::Other : LastPart::NeedsNoBlankLine;
    }
    const std::vector<std::size_t>& atoms = layout.zmatrix_rows.empty() ? layout.atoms : layout.zmatrix_rows;
    return !atoms.empty() && atoms.back() == layout.lines.last ? LastPart::Atoms : LastPart::Other;
}

void check_final_blank_line(const CheckedJob& job, Findings& findings) {
    const std::size_t last = job.layout.lines.last;
    if (!job.read_whole() || is_blank_line(job.line(last))) {
        return;
    }
    const LastPart part = last_part(job);
    if (part == LastPart::NeedsNoBlankLine) {
        return;
    }
    const Severity severity = part == LastPart::Atoms ? Severity::Error : Severity::Note;
    Finding& finding = job.separated() ? findings.add("GJF-T005", severity, "no blank line stands before --Link1--", last)
                                       : findings.add("GJF-T001", severity, "no blank line ends the job", last);
    finding.hint = "put a blank line behind this line";
    finding.fixes = {{"put a blank line behind it", FixSafety::Safe, {job.blank_line_behind(last)}}};
}

// Offers the partner of the only bracket that has none: behind the last option of a list at the end of the route, or before
// the first one behind the first "=" of its word.
void offer_balance(const CheckedJob& job, std::size_t at, Finding& finding) {
    const std::string& text = job.route_text();
    const auto count = [&](char c) { return std::count(text.begin(), text.end(), c); };
    if (text[at] == '(' && count('(') == count(')') + 1 && text.find(' ', at) == std::string::npos) {
        const TextPlace last = job.route_place(span_between(text.size() - 1, text.size()));
        offer(finding, "close it at the end", FixSafety::Unsafe, {job.replacing({last.line, last.column + 1, 0}, ")")});
    } else if (text[at] == ')' && count('(') + 1 == count(')')) {
        // In the line itself: a comma outside brackets parts words of the interpreted route.
        const TextPlace place = job.route_place(span_between(at, at + 1));
        const std::string_view before = job.line(place.line).substr(0, place.column - 1);
        const std::size_t sign = before.find('=', before.find_last_of(" \t(") + 1);
        if (sign != std::string_view::npos) {
            offer(finding, "open it behind =", FixSafety::Unsafe, {job.replacing({place.line, sign + 2, 0}, "(")});
        }
    }
}

// Reports brackets and quotes of the route that have no partner.
void check_route_balance(const CheckedJob& job, Findings& findings) {
    constexpr std::string_view opening = "([{";
    constexpr std::string_view closing = ")]}";
    const std::string& text = job.route_text();
    std::vector<std::size_t> open;
    std::size_t quote = std::string::npos;
    const auto report = [&](std::size_t at, const char* what) {
        Finding& finding = findings.add("GJF-T007", Severity::Error, std::string("'") + text[at] + "' " + what,
                                        job.route_place(span_between(at, at + 1)));
        offer_balance(job, at, finding);
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quote != std::string::npos) {
            quote = c == text[quote] ? std::string::npos : quote;
        } else if (opens_quote(text, i)) {
            quote = i;
        } else if (opening.find(c) != std::string_view::npos) {
            open.push_back(i);
        } else if (const std::size_t kind = closing.find(c); kind != std::string_view::npos) {
            if (open.empty() || text[open.back()] != opening[kind]) {
                report(i, "closes nothing");
            } else {
                open.pop_back();
            }
        }
    }
    if (quote != std::string::npos) {
        report(quote, "is never closed");
    }
    for (const std::size_t at : open) {
        report(at, "is never closed");
    }
}

// A field that begins like a number and is none.
bool is_spoilt_number(std::string_view field) {
    std::string_view digits = without_sign(field);
    if (!digits.empty() && digits.front() == '.') {
        digits.remove_prefix(1);
    }
    const bool has_odd_zero =
        digits.size() > 2 && to_lower_ascii(digits[0]) == 'o' && digits[1] == '.' && is_digit(digits[2]);
    const bool begins_as_number = has_odd_zero || (!digits.empty() && is_digit(digits.front()));
    const bool odd_sign = !field.empty() && is_outside_ascii(field.front());
    return !to_fortran_number(field) && (begins_as_number || odd_sign);
}

// Writes a number without the letters that look like its digits; empty where that gives none.
std::string with_digits(std::string_view field) {
    std::string number(field);
    for (char& c : number) {
        c = c == 'O' || c == 'o' ? '0' : c == 'l' || c == 'I' ? '1' : c;
    }
    return number != field && is_number_text(number) ? number : std::string();
}

void check_variable_values(const std::vector<ZMatrixVariable>& variables, const std::vector<std::size_t>& lines,
                           Findings& findings) {
    Fields fields;
    for (std::size_t i = 0; i < std::min(variables.size(), lines.size()); ++i) {
        cut_fields(variables[i].value, fields);
        if (!fields.empty() && is_spoilt_number(fields[0])) {
            findings.add("GJF-T006", Severity::Error, "'" + std::string(fields[0]) + "' is no number", lines[i]);
        } else if (!fields.empty() && !to_fortran_number(fields[0]) &&
                   fields[0].find_first_of("0123456789") == fields[0].npos) {
            findings.add("GJF-T006", Severity::Warning, "'" + std::string(fields[0]) + "' is no number", lines[i]);
        }
    }
}

// Changes each line end of carriage return and line feed to a line feed.
std::vector<TextEdit> without_returns(std::string_view text) {
    std::vector<TextEdit> edits;
    for (std::size_t at = text.find("\r\n"); at != std::string_view::npos; at = text.find("\r\n", at + 2)) {
        edits.push_back({at, at + 1, {}});
    }
    return edits;
}

}  // namespace

void check_numbers_of_line(const CheckedJob& job, std::size_t line_number, Findings& findings) {
    Fields fields;
    cut_fields(without_comment(job.line(line_number)), fields);
    for (std::size_t i = 1; i < fields.size(); ++i) {
        if (is_spoilt_number(fields[i])) {
            const TextPlace place = job.place_in(line_number, fields[i]);
            Finding& finding = findings.add("GJF-T006", Severity::Error, "'" + std::string(fields[i]) + "' is no number",
                                            place, "look for letters such as O and l among the digits");
            if (const std::string number = with_digits(fields[i]); !number.empty()) {
                offer_words(job, place, fields[i], {number}, FixSafety::Unsafe, finding);
            }
        }
    }
}

namespace {

void check_characters(const CheckedMolecule& molecule, Findings& findings) {
    const CheckedJob& job = molecule.job;
    for (std::size_t line = job.layout.lines.first; line <= job.layout.lines.last; ++line) {
        check_line_characters(job, line, findings);
    }
    check_final_blank_line(job, findings);
    check_route_balance(job, findings);
    check_decimal_commas(job, findings);
    const GeomSection& geom = job.job.geom;
    check_variable_values(geom.variables, job.layout.variables, findings);
    check_variable_values(geom.constants, job.layout.constants, findings);
    check_variable_values(geom.cartesian_variables, job.layout.cartesian_variables, findings);
}

// Old editors end a file with Ctrl-Z, which the reading leaves out.
void check_last_mark(std::string_view text, Findings& findings) {
    const std::size_t end = text.find_last_not_of("\r\n");
    if (end == std::string_view::npos || text[end] != '\x1a') {
        return;
    }
    const auto line =
        static_cast<std::size_t>(std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end), '\n'));
    findings.add("GJF-T002", Severity::Note, "the file ends in Ctrl-Z, as old editors wrote it", line + 1, "remove it")
        .fixes = {{"remove it", FixSafety::Unsafe, {{end, end + 1, {}}}}};
}

}  // namespace

const Family text_family = {
    Known::Control,
    check_characters,
    {"GJF-T001", "GJF-T002", "GJF-T003", "GJF-T004", "GJF-T005", "GJF-T006", "GJF-T007", "GJF-T008"}};

void check_whole_text(std::string_view text, Findings& findings) {
    if (skip_byte_order_mark(text).size() != text.size()) {
        findings
            .add("GJF-T008", Severity::Warning, "the file begins with a byte order mark", std::size_t{1},
                 "save it as plain ASCII or as UTF-8 without a byte order mark")
            .fixes = {
            {"remove the byte order mark", FixSafety::Safe, {{0, text.size() - skip_byte_order_mark(text).size(), {}}}}};
    }
    check_last_mark(text, findings);
    std::size_t line = 0;
    std::size_t first_of[2] = {0, 0};  // the first line that ends in a line feed alone, and with a carriage return before it
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = text.find('\n', begin);
        if (end == std::string_view::npos) {
            break;
        }
        ++line;
        std::size_t& first = first_of[end > begin && text[end - 1] == '\r' ? 1 : 0];
        first = first == 0 ? line : first;
        begin = end + 1;
    }
    if (first_of[0] != 0 && first_of[1] != 0) {
        const bool later_is_crlf = first_of[1] > first_of[0];
        findings
            .add("GJF-T004", Severity::Warning,
                 later_is_crlf ? "this line ends in carriage return and line feed, those before it in a line feed alone"
                               : "this line ends in a line feed alone, those before it in carriage return and line feed",
                 std::max(first_of[0], first_of[1]), "convert all line ends to line feeds")
            .fixes = {{"end all lines in line feeds", FixSafety::Safe, without_returns(text)}};
    }
}

}  // namespace quor::input::gaussian

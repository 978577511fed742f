// Checks of what blank lines part: route, title, charge line, molecule and sections. Gaussian ends a part at each blank
// line, so that one too many stands for an empty part, and all behind it is read as something else.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/check/fixes.hpp>

#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/sections/section_kinds.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

using Kind = ExtraInputSectionKind;

constexpr std::size_t most_title_lines = 5;

// The last line of the control section; 0 without one.
std::size_t last_control_line(const JobLayout& layout) {
    std::size_t last = layout.overlays.last;
    for (const TextPlace& word : layout.route_words) {
        last = std::max(last, word.line);
    }
    return last;
}

// Returns the n-th blank line (from 1) between two lines; 0 where there are fewer.
std::size_t blank_line_between(const CheckedJob& job, std::size_t before, std::size_t behind, std::size_t n) {
    for (std::size_t line = before + 1; line < behind; ++line) {
        n -= is_blank_line(job.line(line));
        if (n == 0) {
            return line;
        }
    }
    return 0;
}

void report_blank_line(const CheckedJob& job, std::size_t line, Severity severity, const std::string& what,
                       Findings& findings) {
    Finding& finding = findings.add("GJF-T009", severity, "a blank line too many stands before " + what, line,
                                    "remove it: a blank line ends a part, so that Gaussian reads an empty one here");
    offer(finding, "remove it", severity == Severity::Error ? FixSafety::Safe : FixSafety::Unsafe,
          {job.without_lines({line, line})});
}

// Before the title and the charge line: what follows is read as the charge line, or as an atom, and is none. With charge and
// multiplicity alone to be read, nothing more is known.
void check_head(const CheckedJob& job, Findings& findings) {
    const JobLayout& layout = job.layout;
    const std::size_t control = last_control_line(layout);
    const Severity severity = job.molecule_from_checkpoint() || job.restarts() ? Severity::Warning : Severity::Error;
    if (control == 0 || layout.title.empty()) {
        // Two blank lines stand for an empty title, a third for an empty molecule.
        const std::size_t line = control == 0 ? 0 : blank_line_between(job, control, layout.charge_line, 3);
        if (line != 0) {
            report_blank_line(job, line, severity, "charge and multiplicity", findings);
        }
        return;
    }
    if (const std::size_t line = blank_line_between(job, control, layout.title.first, 2); line != 0) {
        report_blank_line(job, line, severity, "the title", findings);
    }
    if (const std::size_t line = blank_line_between(job, layout.title.last, layout.charge_line, 2); line != 0) {
        report_blank_line(job, line, severity, "charge and multiplicity", findings);
    }
    if (layout.title.last - layout.title.first >= most_title_lines) {
        findings.add("GJF-T012", Severity::Warning, "the title has more than five lines",
                     layout.title.first + most_title_lines, "Gaussian takes a title of up to five lines");
    }
}

bool has_header_between(const CheckedJob& job, std::size_t before, std::size_t behind) {
    for (std::size_t line = before + 1; line < behind; ++line) {
        if (variable_header(without_comment(job.line(line)), true) != VariableHeader::None) {
            return true;
        }
    }
    return false;
}

// Between the rows of a molecule and its variables: with two the variables are not read, with none they are read as atoms.
// Values in the section of Cartesian atoms are a form of their own, though not one that Gaussian's manual shows.
void check_variables(const CheckedJob& job, Findings& findings) {
    const JobLayout& layout = job.layout;
    const std::vector<std::size_t>& rows = layout.zmatrix_rows.empty() ? layout.atoms : layout.zmatrix_rows;
    const std::vector<std::size_t>* lists[] = {&layout.variables, &layout.cartesian_variables, &layout.constants};
    std::size_t before = rows.empty() ? 0 : rows.back();
    for (const std::vector<std::size_t>* list : lists) {
        if (before == 0 || list->empty()) {
            continue;
        }
        if (const std::size_t line = blank_line_between(job, before, list->front(), 2); line != 0) {
            report_blank_line(job, line, Severity::Error, "variables of the molecule", findings);
        } else if (before == rows.back() && blank_line_between(job, before, list->front(), 1) == 0 &&
                   !has_header_between(job, before, list->front())) {
            const bool is_certain = !layout.zmatrix_rows.empty();
            Finding& finding = findings.add("GJF-T013", is_certain ? Severity::Error : Severity::Warning,
                                            "no blank line stands before the variables of the molecule", list->front(),
                                            "put one before this line, which is read as an atom");
            offer(finding, "put a blank line before it", is_certain ? FixSafety::Safe : FixSafety::Unsafe,
                  {job.blank_line_behind(list->front() - 1)});
        }
        before = list->back();
    }
}

void check_sections_apart(const CheckedJob& job, Findings& findings) {
    const JobLayout& layout = job.layout;
    std::size_t before = std::max(layout.charge_line, layout.molecule.last);
    while (before > 0 && is_blank_line(job.line(before))) {
        --before;
    }
    before = before == 0 ? last_control_line(layout) : before;
    // Sections that may be empty stand in a job as a blank line, and which one it is cannot always be told.
    const std::size_t most = layout.missing.size() + 1;
    for (const SectionLayout& section : layout.sections) {
        // Before a structure, the reading may have taken blank lines for sections of the one before it.
        const bool may_be_empty = extra_input_class(section.kind) == ExtraInputClass::TitleAndMolecule &&
                                  (job.has_option("opt", "modredundant") || job.has_option("opt", "readopt"));
        const bool is_asked = section.kind != Kind::Unknown && section.kind != Kind::NBOInput && !may_be_empty;
        if (const std::size_t line = blank_line_between(job, before, section.lines.first, most + 1); is_asked && line != 0) {
            // Basis functions are read up to the first blank line.
            report_blank_line(job, line, section.kind == Kind::BasisSet ? Severity::Error : Severity::Warning,
                              "the section '" + std::string(extra_input_kind_name(section.kind)) + "'", findings);
        }
        before = section.lines.last;
    }
}

// Tells whether every word of a line may stand in a route.
bool is_of_route_words(const CheckedJob& job, std::string_view line) {
    std::vector<std::string_view> words;
    split_fields(without_comment(line), FieldSeparators::WhiteSpace, true, words);
    return !words.empty() && std::all_of(words.begin(), words.end(), [&](std::string_view word) {
        const std::string head(word.substr(0, word.find_first_of("=(/")));
        return job.schema.knows_keyword(head) || job.schema.knows_method_exact(head) || job.schema.knows_basis_exact(head);
    });
}

bool has_open_bracket(std::string_view text) {
    return std::count(text.begin(), text.end(), '(') > std::count(text.begin(), text.end(), ')');
}

// A title of route words, in a job whose charge line cannot be read, is the rest of its route.
void check_route_apart(const CheckedJob& job, Findings& findings) {
    const LineRange& title = job.layout.title;
    if (job.read_whole() || title.empty() ||
        (!is_of_route_words(job, job.line(title.first)) && !has_open_bracket(job.route_text()))) {
        return;
    }
    Finding& finding =
        findings.add("GJF-T010", Severity::Error, "a blank line stands inside the route: what follows is read as the title",
                     title.first - 1, "remove it");
    if (is_blank_line(job.line(title.first - 1))) {
        offer(finding, "remove it", FixSafety::Unsafe, {job.without_lines({title.first - 1, title.first - 1})});
    }
}

void check_route_line(const CheckedJob& job, Findings& findings) {
    if (!job.read_whole() || !job.layout.route_words.empty() || !job.layout.route.segments.empty()) {
        return;
    }
    std::size_t line = job.layout.lines.first;
    const std::vector<std::size_t>& link0 = job.layout.link0_lines;
    while (line < job.layout.lines.last &&
           (is_blank_line(without_comment(job.line(line))) || std::find(link0.begin(), link0.end(), line) != link0.end())) {
        ++line;
    }
    if (is_include_line(job.line(line))) {
        return;  // the route is perhaps in the file that is named
    }
    Finding& finding = findings.add("GJF-T011", Severity::Error, "the job has no route: no line begins with #", line,
                                    "the route stands behind the Link 0 lines, as in # hf/6-31g(d) opt");
    if (is_of_route_words(job, job.line(line))) {
        offer(finding, "put # before it", FixSafety::Unsafe, {job.replacing({line, 1, 0}, "# ")});
    }
}

void check_blank_lines(const CheckedMolecule& molecule, Findings& findings) {
    const CheckedJob& job = molecule.job;
    check_route_line(job, findings);
    check_route_apart(job, findings);
    check_head(job, findings);
}

void check_blank_lines_behind(const CheckedMolecule& molecule, Findings& findings) {
    check_variables(molecule.job, findings);
    check_sections_apart(molecule.job, findings);
}

}  // namespace

const Family blank_line_family = {Known::Control, check_blank_lines, {"GJF-T009", "GJF-T010", "GJF-T011", "GJF-T012"}};
const Family later_blank_line_family = {Known::Molecule, check_blank_lines_behind, {"GJF-T009", "GJF-T013"}};

}  // namespace quor::input::gaussian

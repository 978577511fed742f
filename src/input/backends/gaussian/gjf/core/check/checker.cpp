// Runs the families of checks over every job of a text: the table of codes, suppression, and the order of findings.
#include <gjf/core/check/checker.hpp>

#include <gjf/core/check/checked_job.hpp>
#include <gjf/core/check/foreign_texts.hpp>
#include <gjf/core/check/molecule_view.hpp>
#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>
#include <optional>
#include <tuple>
#include <unordered_set>

namespace quor::input::gaussian {
namespace {

// Of what cannot be read in a job, so much is told: in a text that is no job at all, no line can be read.
constexpr std::size_t most_faults_told = 21;

using CodeList = std::unordered_set<std::string>;

// Numbers with Fortran exponents, which Gaussian takes, are not read here.
bool fails_at_fortran_number(const CheckedJob& job, std::size_t line) {
    Fields fields;
    cut_fields(without_comment(job.line(line)), fields);
    return std::any_of(fields.begin(), fields.end(), is_fortran_number);
}

// What a failure of reading usually comes from; by how its message begins.
constexpr struct {
    std::string_view message;
    const char* hint;
} failure_hints[] = {
    {"Invalid control line", "route lines begin with #, Link 0 lines with %"},
    {"Invalid charge/spin line", "this line is read as charge and multiplicity, two whole numbers such as 0 1"},
    {"Invalid connectivity", "this is read as connectivity: sections stand in a fixed order, connectivity among the first"},
    {"Invalid coordinate line", "an atom has a label and three coordinates"},
    {"Geometry section must", "charge and multiplicity and the atoms stand here, without a blank line between"},
    {"Missing title", "a title of one line or more stands between two blank lines behind the route"},
};

bool is_charge_line(std::string_view line) {
    Fields fields;
    cut_fields(without_comment(line), fields);
    return fields.size() >= 2 && fields.size() % 2 == 0 && std::all_of(fields.begin(), fields.end(), is_integer_text);
}

// A job without molecule often has its title or the blank line behind it missing, so that the molecule is its title.
std::string hint_at_title(const CheckedJob& job) {
    const LineRange& title = job.layout.title;
    for (std::size_t line = title.first; !title.empty() && line <= title.last; ++line) {
        if (is_charge_line(job.line(line))) {
            return line == title.first ? "the title is missing: a title and a blank line stand before this line"
                                       : "a blank line is missing before line " + std::to_string(line) +
                                             ", which is read as a part of the title";
        }
    }
    return {};
}

std::string hint_at_failure(const CheckedJob& job, const std::string& message) {
    const std::string_view told = message;
    if (told.starts_with("Missing geometry section")) {
        return hint_at_title(job);
    }
    for (const auto& known : failure_hints) {
        if (told.starts_with(known.message)) {
            return known.hint;
        }
    }
    return {};
}

// Tells whether Gaussian may take what is not read here: a row of connectivity that begins with a partner and its order, or
// names atoms of the next cells, and empty sections among structures.
bool is_taken_by_gaussian(const CheckedJob& job, std::string_view line, const std::string& message) {
    Fields fields;
    cut_fields(without_comment(line), fields);
    if (message.starts_with("Invalid connectivity atom index")) {
        bool begins_with_partner = fields.size() % 2 == 0;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            begins_with_partner = begins_with_partner &&
                                  (i % 2 == 0 ? is_integer_text(fields[i]) : fields[i].find('.') != std::string_view::npos);
        }
        return begins_with_partner;
    }
    if (message.starts_with("Incomplete QST")) {
        // A blank line may stand for an empty list of changes behind a structure; it is not read so here.
        return job.has_option("opt", "modredundant") || job.has_option("opt", "readopt");
    }
    const std::vector<AtomCoord>& atoms = job.job.geom.atoms;
    return message.find("outside the geometry atom count") != std::string::npos &&
           std::any_of(atoms.begin(), atoms.end(),
                       [](const AtomCoord& atom) { return species_of(atom.info).kind == SpeciesKind::TranslationVector; });
}

void add_fault(const CheckedJob& job, const ReadingFault& fault, const TextPlace& place, Findings& findings) {
    const std::string_view line = job.line(place.line);
    const TextPlace told = place.length == line.size() ? TextPlace{place.line, 0, 0} : place;
    if (fails_at_fortran_number(job, place.line)) {
        findings.add("GJF-P001", Severity::Warning, fault.message, told,
                     "Gaussian reads D exponents, this tool does not; write the number without one to have the job checked");
        return;
    }
    if (is_taken_by_gaussian(job, line, fault.message)) {
        findings.add("GJF-P001", Severity::Note, fault.message, told,
                     "Gaussian may take it; the rest of the job is checked less");
        return;
    }
    const bool in_molecule = job.layout.charge_line != 0 && place.line > job.layout.charge_line;
    // Gaussian passes over the $ line that old files begin with; and where rows were not read, atoms may be missing.
    const bool is_uncertain = (in_molecule && has_unread_rows(job)) || trim_view(line).substr(0, 1) == "$";
    const Severity severity = is_uncertain ? Severity::Warning : Severity::Error;
    findings.add("GJF-P001", severity, fault.message, told, hint_at_failure(job, fault.message));
    if (in_molecule) {
        check_numbers_of_line(job, place.line, findings);
    }
}

// Reports what cannot be read, each line once. Behind a charge line that cannot be read nothing is told: what is read as
// atoms is perhaps none.
void report_faults(const CheckedJob& job, const JobReading& reading, Findings& findings) {
    std::vector<std::size_t> told;
    for (std::size_t i = 0; i < reading.faults.size(); ++i) {
        const TextPlace& place = reading.layout.faults[i];
        if (reading.faults[i].harmless || std::find(told.begin(), told.end(), place.line) != told.end()) {
            continue;
        }
        add_fault(job, reading.faults[i], place, findings);
        told.push_back(place.line);
        if (place.line == job.layout.charge_line || told.size() == most_faults_told) {
            return;
        }
    }
}

// Collects the codes that comments of a job silence.
CodeList silenced_codes(LineSpan lines) {
    constexpr std::string_view mark = "quor-gjf:";
    CodeList codes;
    std::vector<std::string_view> words;
    for (const std::string_view line : lines) {
        const std::size_t comment = line.find('!');
        if (comment == std::string_view::npos || !contains_folded(line.substr(comment), mark)) {
            continue;
        }
        split_fields(line.substr(comment + 1), FieldSeparators::WhiteSpaceAndComma, true, words);
        if (words.size() > 2 && equals_folded(words[0], mark) && equals_folded(words[1], "ignore")) {
            std::transform(words.begin() + 2, words.end(), std::inserter(codes, codes.end()), to_lower_copy);
        }
    }
    return codes;
}

void drop_codes(std::vector<Finding>& findings, std::size_t begin, const CodeList& codes) {
    const auto is_dropped = [&](const Finding& finding) { return codes.count(to_lower_copy(finding.code)) > 0; };
    findings.erase(std::remove_if(findings.begin() + static_cast<std::ptrdiff_t>(begin), findings.end(), is_dropped),
                   findings.end());
}

bool has_pasted_xyz(const CheckedJob& job) {
    const std::size_t line = job.layout.charge_line;
    return line != 0 && opens_like_xyz(job.line(line + 1), job.line(line + 3));
}

void check_job(const CheckedJob& job, const JobReading& reading, Findings& findings) {
    for (const auto check : {check_characters, check_blank_lines, check_link0, check_route_words, check_route_sense}) {
        check(job, findings);
    }
    if (!job.read_whole()) {
        report_faults(job, reading, findings);
        return;
    }
    if (job.restarts() && job.job.geom.atom_count() == 0) {
        return;  // all that a section would be about is in the checkpoint
    }
    if (has_pasted_xyz(job)) {
        findings.add("GJF-P001", Severity::Error, "an .xyz file stands here with its count of atoms and its title",
                     job.layout.charge_line + 1, "remove this line and the next one");
        return;
    }
    const std::vector<MoleculeAtom> atoms = atoms_of(job);
    if (reading.atoms_uncertain) {
        check_atoms(job, atoms, findings);
        return;
    }
    if (has_unread_rows(job)) {
        // Where atoms are missing, nothing can be counted, and numbers of atoms mean nothing.
        check_atoms(job, atoms, findings);
        check_zmatrix(job, atoms, findings);
        check_sections(job, findings);
        return;
    }
    const OniomLayers layers = oniom_layers(job, atoms);
    check_molecule_form(job, findings);
    check_atoms(job, atoms, findings);
    check_electrons(job, atoms, layers, findings);
    check_zmatrix(job, atoms, findings);
    check_layers(job, atoms, layers, findings);
    check_connectivity(job, atoms, findings);
    check_basis_sections(job, atoms, findings);
    check_basis_elements(job, atoms, findings);
    check_sections(job, findings);
    check_section_contents(job, atoms, findings);
}

void sort_by_place(std::vector<Finding>& findings) {
    std::stable_sort(findings.begin(), findings.end(), [](const Finding& a, const Finding& b) {
        return std::tie(a.line, a.column) < std::tie(b.line, b.column);
    });
}

std::vector<TextEdit> line_feeds_for_returns(std::string_view text) {
    std::vector<TextEdit> edits;
    for (std::size_t at = text.find('\r'); at != std::string_view::npos; at = text.find('\r', at + 1)) {
        edits.push_back({at, at + 1, "\n"});
    }
    return edits;
}

// Gives findings, sorted by place, their bytes of the text.
void count_bytes(std::string_view text, std::vector<Finding>& findings) {
    const std::size_t mark = text.size() - skip_byte_order_mark(text).size();
    std::size_t begin = mark;
    std::size_t line = 1;
    for (Finding& finding : findings) {
        for (; line < finding.line && begin < text.size(); ++line) {
            begin = std::min(text.find('\n', begin), text.size() - 1) + 1;
        }
        if (finding.line == 0) {
            continue;
        }
        finding.begin = begin + (finding.column == 0 ? 0 : finding.column - 1);
        finding.end = finding.begin + finding.length;
        if (finding.column == 0) {
            finding.end = std::min(text.find('\n', begin), text.size());
            finding.end -= finding.end > begin && text[finding.end - 1] == '\r' ? 1 : 0;
        }
    }
}

void check_jobs(std::string_view text, std::vector<Finding>& findings) {
    const SimpleYAMLParser& schema = default_route_schema();
    CheckpointChain chain;
    std::size_t jobs = 0;
    for_each_job_piece(text, [&](const JobPiece& piece) {
        const std::size_t begin = findings.size();
        Findings of_job(findings, piece.number);
        const JobReading reading = read_job_piece(piece);
        const CheckedJob job(piece, reading, schema);
        check_job(job, reading, of_job);
        chain.add(job, of_job);
        drop_codes(findings, begin, silenced_codes(piece.lines));
        ++jobs;
    });
    if (jobs == 0) {
        Findings(findings, 0).add("GJF-P001", Severity::Error, "No valid jobs found in input", std::size_t{0});
    }
}

}  // namespace

const char* fix_safety_name(FixSafety safety) noexcept {
    constexpr const char* names[] = {"safe", "unsafe", "choice"};
    return names[static_cast<std::size_t>(safety)];
}

const char* severity_name(Severity severity) noexcept {
    constexpr const char* names[] = {"note", "warning", "error"};
    return names[static_cast<std::size_t>(severity)];
}

std::vector<Finding> check_text(std::string_view text, const CheckOptions& options) {
    std::vector<Finding> findings;
    Findings of_file(findings, 0);
    if (const std::optional<ForeignText> foreign = find_foreign_text(text)) {
        Finding& finding = of_file.add("GJF-P001", Severity::Error, foreign->message, foreign->line, foreign->hint);
        if (foreign->has_lone_returns) {
            finding.fixes = {{"end all lines in line feeds", FixSafety::Safe, line_feeds_for_returns(text)}};
        }
    } else {
        check_jobs(text, findings);
        check_whole_text(text, of_file);
    }
    CodeList ignored;
    std::transform(options.ignored_codes.begin(), options.ignored_codes.end(), std::inserter(ignored, ignored.end()),
                   to_lower_copy);
    drop_codes(findings, 0, ignored);
    sort_by_place(findings);
    count_bytes(text, findings);
    return findings;
}

std::vector<Finding> check_route(std::string_view route) {
    std::vector<Finding> findings;
    for_each_job_piece(route, [&](const JobPiece& piece) {
        const JobReading reading = read_job_piece(piece);
        const CheckedJob job(piece, reading, default_route_schema());
        Findings of_route(findings, piece.number);
        check_route_words(job, of_route);
        check_route_sense(job, of_route);
    });
    sort_by_place(findings);
    count_bytes(route, findings);
    return findings;
}

}  // namespace quor::input::gaussian

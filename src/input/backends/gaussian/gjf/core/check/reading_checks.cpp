// What of a job cannot be read: each fault of the reading, with what it usually comes from.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/check/fixes.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

// Of what cannot be read in a job, so much is told: in a text that is no job at all, no line can be read.
constexpr std::size_t most_faults_told = 21;

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

// A job without molecule often has its title or the blank line behind it missing, so that the molecule is its title: returns
// the charge line in it, or 0.
std::size_t charge_line_in_title(const CheckedJob& job) {
    const LineRange& title = job.layout.title;
    for (std::size_t line = title.first; !title.empty() && line <= title.last; ++line) {
        if (is_charge_line(job.line(line))) {
            return line;
        }
    }
    return 0;
}

std::string hint_at_title(const CheckedJob& job) {
    const std::size_t line = charge_line_in_title(job);
    return line == 0 ? std::string()
           : line == job.layout.title.first
               ? "the title is missing: a title and a blank line stand before this line"
               : "a blank line is missing before line " + std::to_string(line) + ", which is read as a part of the title";
}

// Tells whether the molecule is missing, or what is read as its first line is a section behind the true one.
bool speaks_of_title(const CheckedJob& job, std::string_view message) {
    const std::size_t charge = charge_line_in_title(job);
    Fields below;
    if (charge != 0 && charge < job.layout.title.last) {
        cut_fields(without_comment(job.line(charge + 1)), below);
    }
    return message.starts_with("Missing geometry section") ||
           (message.starts_with("Invalid charge/spin line") && below.size() >= 4 && to_fortran_number(below.back()));
}

void offer_title(const CheckedJob& job, Finding& finding) {
    const std::size_t line = charge_line_in_title(job);
    if (line > 1 && line == job.layout.title.first) {
        offer(finding, "put a title before it", FixSafety::Unsafe, {job.behind_line(line - 1, "\ntitle\n")});
    } else if (line > 1) {
        offer(finding, "put a blank line before line " + std::to_string(line), FixSafety::Unsafe,
              {job.blank_line_behind(line - 1)});
    }
}

std::string hint_at_failure(const CheckedJob& job, const std::string& message) {
    const std::string_view told = message;
    if (speaks_of_title(job, message)) {
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
    if (is_taken_by_gaussian(job, line, fault.message)) {
        findings.add("GJF-P001", Severity::Note, fault.message, told,
                     "Gaussian may take it; the rest of the job is checked less");
        return;
    }
    const bool in_molecule = job.layout.charge_line != 0 && place.line > job.layout.charge_line;
    // Gaussian passes over the $ line that old files begin with; and where rows were not read, atoms may be missing.
    const bool is_uncertain = (in_molecule && has_unread_rows(job)) || trim_view(line).substr(0, 1) == "$";
    const Severity severity = is_uncertain ? Severity::Warning : Severity::Error;
    Finding& finding = findings.add("GJF-P001", severity, fault.message, told, hint_at_failure(job, fault.message));
    if (speaks_of_title(job, fault.message)) {
        offer_title(job, finding);
    }
    if (in_molecule) {
        check_numbers_of_line(job, place.line, findings);
    }
}

// Reports what cannot be read, each line once. Behind a charge line that cannot be read nothing is told: what is read as
// atoms is perhaps none.
void report_faults(const CheckedMolecule& molecule, Findings& findings) {
    const CheckedJob& job = molecule.job;
    if (job.read_whole()) {
        return;
    }
    const JobReading& reading = job.reading();
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

}  // namespace

const Family reading_family = {Known::Control, report_faults, {"GJF-P001"}};

}  // namespace quor::input::gaussian

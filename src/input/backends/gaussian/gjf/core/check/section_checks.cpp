// Checks of the sections after the molecule as a whole: those that the route asks for and the job lacks, and those that are
// left over.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/check/fixes.hpp>
#include <gjf/core/chemistry/elements.hpp>
#include <gjf/core/knowledge/basis_facts.hpp>
#include <gjf/core/knowledge/facts.hpp>
#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/reader/section_name.hpp>
#include <gjf/core/sections/section_kinds.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>
#include <utility>

namespace quor::input::gaussian {
namespace {

using Kind = ExtraInputSectionKind;

// Sections without which Gaussian stops.
constexpr Kind indispensable[] = {Kind::Connectivity,
                                  Kind::SecondTitleAndMolecule,
                                  Kind::ThirdTitleAndTSStructure,
                                  Kind::AtomicMasses,
                                  Kind::BasisSet,
                                  Kind::ECP,
                                  Kind::DensityFittingBasis,
                                  Kind::PCMInput,
                                  Kind::PCMSolvation,
                                  Kind::NBOInput};

// Sections that Gaussian reads only in some cases, which the route alone does not tell.
constexpr Kind optional_kinds[] = {Kind::BOMDInput, Kind::FrequencyOfInterest, Kind::MMParameters, Kind::GVBPairs,
                                   Kind::ACIDOutput};

template <std::size_t N>
bool is_one_of(const Kind (&list)[N], Kind kind) noexcept {
    return std::find(std::begin(list), std::end(list), kind) != std::end(list);
}

// Sections that may be empty, so that a blank line alone stands for them.
constexpr Kind empty_kinds[] = {Kind::PCMInput,           Kind::PCMSolvation,     Kind::ECP, Kind::OrbitalSpecifications,
                                Kind::OrbitalAlterations, Kind::OrbitalReordering};

bool includes_file(const CheckedJob& job, const SectionLayout& section) {
    bool any = false;
    for (std::size_t line = section.lines.first; line <= section.lines.last; ++line) {
        any = any || trim_view(job.line(line)).substr(0, 1) == "@";
    }
    return any;
}

std::size_t blank_lines_at_end(const CheckedJob& job) {
    std::size_t count = 0;
    for (std::size_t line = job.layout.lines.last; line > 0 && is_blank_line(job.line(line)); --line) {
        ++count;
    }
    return count;
}

// Tells whether the n-th section that is missing may be: it is empty, or the second of its kind, or may stand in a file that
// is included before it.
bool may_be_missing(const CheckedJob& job, std::size_t n) {
    const Kind kind = job.layout.missing[n];
    const auto begin = job.layout.missing.begin();
    const bool is_second =
        std::find(begin, begin + static_cast<std::ptrdiff_t>(n), kind) != begin + static_cast<std::ptrdiff_t>(n);
    // Residue names in atom labels stand in many jobs without that section.
    return kind == Kind::PDBSecondaryStructure || is_second ||
           (is_one_of(empty_kinds, kind) && blank_lines_at_end(job) >= n + 2) ||
           std::any_of(job.layout.sections.begin(), job.layout.sections.end(), [&](const SectionLayout& section) {
               return section.kind == kind || (section.kind < kind && includes_file(job, section));
           });
}

// Tells whether a force field computes with the bonds of the input, so that they cannot be left out.
bool needs_bonds(const CheckedJob& job) {
    return has_trait(job.route.method, "is a force field") || !job.route.oniom_expression.empty();
}

void check_missing(const CheckedJob& job, Findings& findings) {
    for (std::size_t n = 0; n < job.layout.missing.size(); ++n) {
        const Kind kind = job.layout.missing[n];
        if (may_be_missing(job, n)) {
            continue;
        }
        const Severity severity = is_one_of(indispensable, kind)    ? Severity::Error
                                  : is_one_of(optional_kinds, kind) ? Severity::Note
                                                                    : Severity::Warning;
        Finding& finding = findings.add("GJF-S001", severity,
                                        changes_checkpoint(kind, job.job.control)
                                            ? "changes to the checkpoint's geometry are missing, which geom=modify asks for"
                                            : std::string("the section '") + extra_input_kind_name(kind) +
                                                  "' is missing, which the route asks for with " + extra_input_request(kind),
                                        job.layout.lines.last,
                                        "sections stand behind the molecule in a fixed order, each ended by a blank line");
        if (const RouteTree::Option* option = job.find_option("geom", "connectivity");
            kind == Kind::Connectivity && option != nullptr && !needs_bonds(job)) {
            offer(finding, "leave out geom=connectivity", FixSafety::Unsafe,
                  without_option(job, *job.find_keyword("geom"), *option));
        }
    }
}

// Counts the basis sets and core potentials that the levels of an ONIOM job take from the input, and a fitting set that is
// given like a basis set.
std::size_t count_basis_requests(const CheckedJob& job) {
    const std::string& oniom = job.route.oniom_expression;
    const std::size_t of_oniom = contains_folded(oniom, "genecp") ? 2 : contains_folded(oniom, "gen") ? 1 : 0;
    const bool of_fitting = std::any_of(
        job.tree.segments.begin(), job.tree.segments.end(),
        [&](const RouteTree::Segment& segment) { return contains_folded(job.written(segment.place), "/gen/gen"); });
    return of_oniom + (of_fitting ? 1 : 0);
}

// Counts the lists of spheres that the solvent input asks for.
std::size_t count_sphere_lists(const CheckedJob& job) {
    std::size_t count = 0;
    for (const SectionLayout& section : job.layout.sections) {
        const bool is_solvent_input = section.kind == Kind::PCMInput || section.kind == Kind::PCMSolvation;
        for (std::size_t line = section.lines.first; is_solvent_input && line <= section.lines.last; ++line) {
            const std::string_view text = without_comment(job.line(line));
            count += contains_folded(text, "sph=") || contains_folded(text, "modifysph");
        }
    }
    return count;
}

std::size_t count_further_requests(const CheckedJob& job) {
    return job.count_words(words_with("may ask for input")) + count_basis_requests(job) + count_sphere_lists(job);
}

bool all_lines(const CheckedJob& job, const LineRange& lines, bool (*test)(std::string_view)) {
    for (std::size_t line = lines.first; line <= lines.last; ++line) {
        if (!test(job.line(line))) {
            return false;
        }
    }
    return true;
}

bool is_bond_row(std::string_view line) {
    Fields fields;
    cut_fields(line, fields);
    return fields.size() % 2 == 1 && std::all_of(fields.begin(), fields.end(), is_number_text) && is_integer_text(fields[0]);
}

bool is_coordinate_line(std::string_view line) {
    Fields fields;
    cut_fields(line, fields);
    return fields.size() >= 3 && fields[0].size() == 1 &&
           std::string_view("xbadloXBADLO").find(fields[0]) != std::string_view::npos && is_integer_text(fields[1]);
}

bool is_atom_line(std::string_view line) {
    Fields fields;
    cut_fields(line, fields);
    return fields.size() >= 4 && atomic_number(fields[0]) != 0 &&
           std::all_of(fields.begin() + 1, fields.begin() + 4, is_number_text);
}

bool has_atom_lines(const CheckedJob& job, const LineRange& lines) {
    for (std::size_t line = lines.first; line <= lines.last; ++line) {
        if (is_atom_line(job.line(line))) {
            return true;
        }
    }
    return false;
}

bool has_line_with(const CheckedJob& job, const LineRange& lines, std::string_view text) {
    for (std::size_t line = lines.first; line <= lines.last; ++line) {
        if (contains_folded(job.line(line), text)) {
            return true;
        }
    }
    return false;
}

// Writes genecp in the place of the gen that ends a segment of the route.
std::vector<TextEdit> with_genecp(const CheckedJob& job) {
    for (const RouteTree::Segment& segment : job.tree.segments) {
        const Span last =
            span_between(segment.place.end() - std::min<std::size_t>(segment.place.length, 3), segment.place.end());
        if (segment.basis == "gen" && equals_folded(last.in(job.route_text()), "gen")) {
            return route_edits(job, last, "genecp");
        }
    }
    return {};
}

// A guess at what a left-over section is: what is said of it, and what would mend the job.
struct LikelyRequest {
    std::string hint;
    std::string title = {};
    std::vector<TextEdit> edits = {};
};

// The blank lines between the molecule and a section behind it.
std::vector<TextEdit> without_blank_lines_before(const CheckedJob& job, std::size_t line) {
    std::size_t first = line;
    while (first > job.layout.charge_line + 1 && is_blank_line(job.line(first - 1))) {
        --first;
    }
    const bool behind_molecule = job.layout.molecule.last + 1 >= first && first < line;
    return behind_molecule ? std::vector<TextEdit>{job.without_lines({first, line - 1})} : std::vector<TextEdit>();
}

// Potentials may be given to the sets that the route takes from the input.
LikelyRequest request_of_basis(const CheckedJob& job, const LineRange& lines) {
    const bool has_potentials = has_line_with(job, lines, "ecp");
    if (!job.names_basis("gen") || !has_potentials) {
        return {"it looks like a basis set (gen)"};
    }
    return {"it looks like core potentials (genecp)", "write genecp", with_genecp(job)};
}

// Tells whether lines give core potentials by name.
bool name_potentials(const CheckedJob& job, const LineRange& lines) {
    std::vector<std::string_view> centers;
    split_fields(without_comment(job.line(lines.first)), FieldSeparators::WhiteSpaceAndComma, true, centers);
    const std::string set = to_lower_copy(trim_view(without_comment(job.line(lines.first + 1))));
    return centers.size() > 1 && centers.back() == "0" &&
           std::any_of(centers.begin(), centers.end() - 1, [&](std::string_view name) {
               return atomic_number(name) != 0 && core_electrons(set, atomic_number(name)).value_or(0) > 0;
           });
}

// Guesses the request that a left-over section belongs to, from its lines.
LikelyRequest likely_request(const CheckedJob& job, const LineRange& lines) {
    if (job.all_from_checkpoint()) {
        return {"geom=allcheck takes title, charge and molecule from the checkpoint"};
    }
    const std::string_view first = trim_view(job.line(lines.first));
    if (contains_folded(first, "$nbo")) {
        return {"it looks like NBO input (pop=nboread)", "add pop=nboread", with_word(job, "pop=nboread")};
    }
    for (std::size_t line = lines.first; line <= lines.last; ++line) {
        if (trim_view(job.line(line)).substr(0, 4) == "****") {
            return request_of_basis(job, lines);
        }
    }
    if (first.substr(0, 2) == "--") {
        return {"the line between two jobs is --Link1--",
                "write --Link1--",
                {job.replacing(job.place_in(lines.first, job.line(lines.first)), "--Link1--")}};
    }
    if (first.substr(0, 1) == "#" || first.substr(0, 1) == "%") {
        return {"the line between two jobs is --Link1--",
                "put --Link1-- before it",
                {job.behind_line(lines.first - 1, "\n--Link1--")}};
    }
    if (all_lines(job, lines, is_atom_line)) {
        return {"it looks like atoms: the blank line before it ends the molecule", "remove the blank line",
                without_blank_lines_before(job, lines.first)};
    }
    if (all_lines(job, lines, is_coordinate_line)) {
        return {"it looks like changes of coordinates (opt=modredundant)", "add opt=modredundant",
                with_word(job, "opt=modredundant")};
    }
    if (all_lines(job, lines, is_bond_row)) {
        return {"it looks like connectivity (geom=connectivity)", "add geom=connectivity",
                with_word(job, "geom=connectivity")};
    }
    if (job.names_basis("gen") && name_potentials(job, lines)) {
        return {"it looks like core potentials (genecp)", "write genecp", with_genecp(job)};
    }
    return {"a keyword is missing from the route, or a blank line is one too many"};
}

// NBO reads on behind its first list, as long as keys begin with "$".
bool is_further_nbo_list(const CheckedJob& job, const SectionLayout& section) {
    const auto is_nbo = [](const SectionLayout& other) { return other.kind == Kind::NBOInput; };
    return trim_view(job.line(section.lines.first)).substr(0, 1) == "$" &&
           std::any_of(job.layout.sections.begin(), job.layout.sections.end(), is_nbo);
}

void check_left_over(const CheckedJob& job, Findings& findings) {
    std::size_t allowed = count_further_requests(job);
    for (const SectionLayout& section : job.layout.sections) {
        if (section.kind != Kind::Unknown || all_lines(job, section.lines, is_comment_line) ||
            is_further_nbo_list(job, section)) {
            continue;
        }
        if (allowed > 0) {
            --allowed;
            continue;
        }
        const bool is_title = job.all_from_checkpoint() &&
                              std::none_of(job.layout.sections.begin(), job.layout.sections.end(), [&](const auto& s) {
                                  return s.kind == Kind::Unknown && has_atom_lines(job, s.lines);
                              });
        const Severity severity = is_title || job.has_keyword("iop") ? Severity::Note : Severity::Warning;
        LikelyRequest likely = likely_request(job, section.lines);
        Finding& finding = findings.add(
            "GJF-S002", severity,
            "nothing in the route asks for what stands here" +
                (section.lines.first == section.lines.last ? std::string()
                                                           : " (to line " + std::to_string(section.lines.last) + ")"),
            section.lines.first, std::move(likely.hint));
        offer(finding, std::move(likely.title), FixSafety::Unsafe, std::move(likely.edits));
    }
}

void check_sections(const CheckedMolecule& molecule, Findings& findings) {
    const CheckedJob& job = molecule.job;
    check_missing(job, findings);
    check_left_over(job, findings);
}

}  // namespace

const Family section_family = {Known::Rows, check_sections, {"GJF-S001", "GJF-S002"}};

}  // namespace quor::input::gaussian

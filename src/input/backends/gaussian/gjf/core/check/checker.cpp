// Runs the families of checks over every job of a text: what each may look at, suppression, and the order of findings.
#include <gjf/core/check/checker.hpp>

#include <gjf/core/check/checkpoint_chain.hpp>
#include <gjf/core/check/fixes.hpp>
#include <gjf/core/check/foreign_texts.hpp>
#include <gjf/core/check/rule.hpp>
#include <gjf/core/check/silencing.hpp>
#include <gjf/core/knowledge/knowledge.hpp>
#include <gjf/core/reader/included_files.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/route/option_syntax.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <functional>
#include <optional>
#include <tuple>
#include <utility>

namespace quor::input::gaussian {
namespace {

bool has_pasted_xyz(const CheckedJob& job) {
    const std::size_t line = job.layout.charge_line;
    return line != 0 && opens_like_xyz(job.line(line + 1), job.line(line + 3));
}

// Asks the families that need more to be known than `before`, and no more than what is known now.
void ask(const CheckedMolecule& molecule, Known before, Known now, Findings& findings) {
    for (const Family* family : families()) {
        if (family->needs > before && family->needs <= now) {
            family->find(molecule, findings);
        }
    }
}

// Asks of a molecule that comes from a job before this one what needs no lines of atoms, where fragments stand.
void check_earlier_molecule(const CheckedJob& job, const CheckpointChain::Molecule& earlier, Findings& findings) {
    if (earlier.atoms.empty() || job.has_keyword("massage") || job.has_keyword("counterpoise") ||
        job.has_option("guess", "fragment")) {
        return;
    }
    const CheckedMolecule molecule{job, earlier.atoms, earlier.layers};
    check_earlier_pairs(molecule, earlier.pairs, findings);
    for (const Family* family :
         {&electron_family, &layer_family, &basis_section_family, &basis_element_family, &named_block_family}) {
        family->find(molecule, findings);
    }
}

// Returns the molecule, none where it is not known for sure.
CheckpointChain::Molecule check_job(const CheckedJob& job, const CheckpointChain& chain, Findings& findings) {
    ask({job, {}, {}}, Known::Nothing, Known::Control, findings);
    if (!job.read_whole() || (job.restarts() && job.job.geom.atom_count() == 0)) {
        return {};  // of a restart, all that a section would be about is in the checkpoint
    }
    if (has_pasted_xyz(job)) {
        const std::size_t line = job.layout.charge_line + 1;
        Finding& finding =
            findings.add("GJF-P001", Severity::Error, "an .xyz file stands here with its count of atoms and its title", line,
                         "remove this line and the next one");
        offer(finding, "remove both lines", FixSafety::Unsafe, {job.without_lines({line, line + 1})});
        return {};
    }
    const Known known = job.reading().atoms_uncertain ? Known::Labels : has_unread_rows(job) ? Known::Rows : Known::Molecule;
    std::vector<MoleculeAtom> atoms = atoms_of(job);
    OniomLayers layers = known == Known::Molecule ? oniom_layers(job, atoms) : OniomLayers{};
    CheckedMolecule molecule{job, std::move(atoms), std::move(layers)};
    ask(molecule, Known::Control, known, findings);
    if (!molecule.atoms.empty()) {
        if (known != Known::Molecule || job.has_keyword("massage")) {
            return {};
        }
        return {std::move(molecule.atoms), std::move(molecule.layers), job.job.geom.charge_spin_pairs()};
    }
    CheckpointChain::Molecule earlier = chain.molecule_for(job);
    check_earlier_molecule(job, earlier, findings);
    if (job.layout.charge_line != 0) {
        earlier.pairs = job.job.geom.charge_spin_pairs();
    }
    return job.has_keyword("massage") ? CheckpointChain::Molecule() : earlier;
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

void check_jobs(std::string_view text, const CheckOptions& options, const std::function<bool(const std::string&)>& is_on,
                std::vector<Finding>& findings) {
    const SimpleYAMLParser& schema = default_route_schema();
    const std::vector<IncludedFile> included = read_included_files(text, options.path);
    CheckpointChain chain;
    std::size_t jobs = 0;
    for_each_job_piece(text, [&](const JobPiece& piece) {
        const std::size_t begin = findings.size();
        Findings of_job(findings, piece.number);
        const JobReading reading = read_job_piece(piece);
        CheckedJob job(piece, reading, schema);
        job.limits = &options.limits;
        job.included = &included;
        CheckpointChain::Molecule molecule = check_job(job, chain, of_job);
        const SilencedCodes silenced(job);
        CheckpointChain::OpenEnds ends = chain.add(job, std::move(molecule), of_job);
        if (ends.begun && options.begun_checkpoints != nullptr && !silenced.has("GJF-L010")) {
            options.begun_checkpoints->push_back(std::move(*ends.begun));
        }
        if (ends.read && options.read_checkpoints != nullptr && !silenced.has("GJF-L015")) {
            options.read_checkpoints->push_back(std::move(*ends.read));
        }
        silenced.apply(job, findings, begin, is_on, of_job);
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

std::string missing_for_checks() {
    std::string problem = default_route_schema_problem();
    if (problem.empty()) {
        problem = missing_knowledge();
        problem.insert(0, problem.empty() ? "" : "facts are missing: ");
    }
    return problem;
}

std::vector<Finding> check_text(std::string_view text, const CheckOptions& options) {
    const auto is_on = [&options](const std::string& code) {
        return (!options.reports || options.reports(code)) &&
               std::none_of(options.ignored_codes.begin(), options.ignored_codes.end(),
                            [&](const std::string& ignored) { return equals_folded(ignored, to_lower_copy(code)); });
    };
    std::vector<Finding> findings;
    Findings of_file(findings, 0);
    if (const std::optional<ForeignText> foreign = find_foreign_text(text)) {
        Finding& finding = of_file.add("GJF-P001", Severity::Error, foreign->message, foreign->line, foreign->hint);
        if (foreign->has_lone_returns) {
            finding.fixes = {{"end all lines in line feeds", FixSafety::Safe, line_feeds_for_returns(text)}};
        }
    } else {
        check_jobs(text, options, is_on, findings);
        check_whole_text(text, of_file);
    }
    findings.erase(std::remove_if(findings.begin(), findings.end(), [&](const Finding& each) { return !is_on(each.code); }),
                   findings.end());
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
        ask({job, {}, {}}, Known::Nothing, Known::Route, of_route);
    });
    sort_by_place(findings);
    count_bytes(route, findings);
    return findings;
}

}  // namespace quor::input::gaussian

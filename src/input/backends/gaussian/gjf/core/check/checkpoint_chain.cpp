// What each job leaves in its checkpoint, and what later jobs look for in it.
#include <gjf/core/check/checkpoint_chain.hpp>

#include <gjf/core/check/fixes.hpp>
#include <gjf/core/check/link0_lines.hpp>
#include <gjf/core/job/link0_keys.hpp>
#include <gjf/core/knowledge/facts.hpp>
#include <gjf/core/route/option_syntax.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <utility>

namespace quor::input::gaussian {
namespace {

std::string request_of(const CheckpointRead& reads) {
    return std::string(reads.keyword) + (reads.option.empty() ? "" : "=") + std::string(reads.option);
}

// Returns all that asks for a checkpoint.
std::vector<const CheckpointRead*> reading_requests(const CheckedJob& job) {
    std::vector<const CheckpointRead*> requests;
    for (const CheckpointRead& reads : checkpoint_reads()) {
        if (reads.option.empty() ? job.has_keyword(reads.keyword) || job.names_basis(reads.keyword)
                                 : job.has_option(reads.keyword, reads.option)) {
            requests.push_back(&reads);
        }
    }
    return requests;
}

NamedCheckpoint named(const CheckedJob& job, const Link0Line& line) {
    const TextPlace place = job.place_in(line.line, line.value);
    return {checkpoint_path(line.value), job.layout.number, place.line, place.column, place.length};
}

// The line that names the checkpoint which a job reads; null for none.
const Link0Line* source_of(const std::vector<Link0Line>& lines) {
    const Link0Line* old = find_line(lines, {"oldchk"});
    return old == nullptr ? find_line(lines, {"chk"}) : old;
}

bool optimizes(const CheckedJob& job) { return job.has_any_word("opt fopt popt"); }

TextPlace place_of_route(const CheckedJob& job) {
    return job.tree.segments.empty() ? TextPlace{job.layout.lines.first, 0, 0}
                                     : job.route_place(job.tree.segments.front().place);
}

// Method and basis set of a job that has one of each; nothing of any other. A method is the same with u, r or ro before it.
ModelLevel level_of(const CheckedJob& job) {
    ModelLevel level;
    for (const RouteTree::Segment& segment : job.tree.segments) {
        if (segment.is_oniom || !segment.secondary_method.empty() || (!segment.method.empty() && !level.method.empty())) {
            return {};
        }
        if (!segment.method.empty()) {
            level.method = segment.method;
            level.place = job.route_place(segment.place);
        }
        level.basis = segment.basis.empty() ? level.basis : segment.basis;
    }
    for (const std::string_view prefix : {"ro", "u", "r"}) {
        if (level.method.starts_with(prefix) && job.schema.knows_method_exact(level.method.substr(prefix.size()))) {
            level.method.erase(0, prefix.size());
            break;
        }
    }
    return level;
}

// What stands in the input, or in the checkpoint, may be any set.
bool is_named_set(const std::string& basis) {
    return !basis.empty() && basis != "gen" && basis != "genecp" && basis != "chkbasis";
}

bool differ(const ModelLevel& a, const ModelLevel& b) {
    return !a.method.empty() && !b.method.empty() &&
           (a.method != b.method || (is_named_set(a.basis) && is_named_set(b.basis) && a.basis != b.basis));
}

std::string text_of(const ModelLevel& level) { return level.method + (level.basis.empty() ? "" : "/") + level.basis; }

// Names of a Z-matrix in a job that has one with names.
NameSet names_of(const CheckedJob& job) {
    NameSet names = names_in_use(job.job.geom);
    for (const auto* list : {&job.job.geom.variables, &job.job.geom.constants}) {
        for (const ZMatrixVariable& variable : *list) {
            names.insert(to_lower_copy(variable.name));
        }
    }
    return job.job.geom.zmatrix_entries.empty() ? NameSet() : names;
}

// Reports values that geom=modify gives to names which the molecule in the checkpoint does not have.
void check_modified_names(const CheckedJob& job, const NameSet& names, Findings& findings) {
    if (names.empty() || !job.has_option("geom", "modify") || job.layout.charge_line == 0) {
        return;
    }
    std::size_t line = job.layout.charge_line + 1;
    line += is_blank_line(job.line(line)) ? 1 : 0;
    for (; line <= job.layout.lines.last && !is_blank_line(job.line(line)); ++line) {
        std::string text(without_comment(job.line(line)));
        std::replace(text.begin(), text.end(), '=', ' ');
        Fields fields;
        cut_fields(text, fields);
        const bool is_value = (fields.size() == 2 || (fields.size() == 3 && fields[2].size() == 1)) &&
                              fields[1].find('.') != std::string_view::npos && is_number_text(fields[1]) &&
                              to_lower_ascii(fields[0].front()) >= 'a' && to_lower_ascii(fields[0].front()) <= 'z';
        if (is_value && names.count(to_lower_copy(fields[0])) == 0) {
            findings.add("GJF-M020", Severity::Error,
                         "'" + std::string(fields[0]) + "' is no variable of the molecule in the checkpoint", line,
                         "geom=modify changes variables that the earlier job's Z-matrix has");
        }
    }
}

}  // namespace

bool CheckpointChain::Checkpoint::lacks(std::string_view content) const noexcept {
    return content == "orbitals"                    ? !has_orbitals
           : content == "force constants"           ? !has_force_constants
           : content == "Cartesian force constants" ? !has_cartesian_force_constants
           : content == "states"                    ? !has_states
                                                    : false;
}

CheckpointChain::Molecule CheckpointChain::molecule_for(const CheckedJob& job) const {
    const std::vector<Link0Line> lines = link0_lines_of(job);
    const Link0Line* source = source_of(lines);
    if (source == nullptr || !job.molecule_from_checkpoint()) {
        return {};
    }
    const auto known = written_.find(checkpoint_path(source->value));
    Molecule molecule = known == written_.end() ? Molecule() : known->second.molecule;
    for (MoleculeAtom& atom : molecule.atoms) {
        atom.line = place_of_route(job).line;
    }
    std::vector<std::string> levels = oniom_levels(job.route.oniom_expression);
    if (!job.all_from_checkpoint() || levels.size() != molecule.layers.levels.size()) {
        molecule.pairs.clear();  // what a checkpoint holds of other models is not known
    }
    molecule.layers.levels = std::move(levels);
    if (molecule.layers.levels.size() >= 2) {
        add_unlinked_bonds(job, molecule.atoms, molecule.layers);
    }
    return molecule;
}

void CheckpointChain::check_contents(const CheckedJob& job, const Checkpoint& source,
                                     const std::vector<const CheckpointRead*>& requests, Findings& findings) {
    for (const CheckpointRead* reads : requests) {
        if (source.lacks(reads->content)) {
            const std::optional<Span> place = job.find_word(request_of(*reads));
            Finding& finding = findings.add("GJF-L011", severity_by_fact(Severity::Warning, reads->verified),
                                            request_of(*reads) + " reads " + std::string(reads->content) + ", which job " +
                                                std::to_string(source.job) + " does not leave in its checkpoint",
                                            place ? job.route_place(*place) : place_of_route(job));
            relate(source.place, "the job that writes the checkpoint", finding);
        }
    }
    const ModelLevel level = level_of(job);
    if (job.has_keyword("freq") && !optimizes(job) && job.molecule_from_checkpoint() && !job.restarts() &&
        !job.has_option("freq", "readfc") && differ(source.optimized, level)) {
        Finding& finding = findings.add(
            "GJF-L012", Severity::Warning,
            "frequencies at " + text_of(level) + ", but the structure was optimised at " + text_of(source.optimized),
            level.place, "a structure is stationary at its own level alone");
        relate(source.optimized.place, "optimised here", finding);
    }
    check_modified_names(job, source.names, findings);
}

CheckpointChain::Checkpoint CheckpointChain::left_by(const CheckedJob& job, const Checkpoint* source, bool reads_unknown) {
    Checkpoint left{job.layout.number, place_of_route(job)};
    const bool is_composite = job.route.basis_set.empty() && method_has_trait(job.route.method, "needs no basis set");
    left.has_orbitals = reads_unknown || (source != nullptr && source->has_orbitals) ||
                        !has_trait(job.route.method, "is a force field") || !job.route.oniom_expression.empty();
    left.has_cartesian_force_constants =
        reads_unknown || (source != nullptr && source->has_cartesian_force_constants) || is_composite ||
        job.has_any_word("freq opt=calcfc opt=calcall opt=recalcfc irc=calcfc irc=calcall irc=recalcfc nonstd");
    left.has_force_constants = left.has_cartesian_force_constants || (source != nullptr && source->has_force_constants) ||
                               optimizes(job) || job.has_any_word("irc ircmax polar admp bomd");
    left.has_states = reads_unknown || (source != nullptr && source->has_states) ||
                      job.has_any_word("td tda cis zindo eomccsd sac-ci nonstd iop");
    if (optimizes(job)) {
        left.optimized = level_of(job);
    } else if (source != nullptr && job.molecule_from_checkpoint()) {
        left.optimized = source->optimized;
    }
    const bool has_own_molecule = !job.molecule_from_checkpoint() && !job.has_option("geom", "modify");
    left.names = has_own_molecule ? names_of(job) : source != nullptr ? source->names : NameSet();
    return left;
}

const CheckpointChain::Checkpoint* CheckpointChain::check_source(const CheckedJob& job, const Link0Line* source,
                                                                 const std::vector<const CheckpointRead*>& requests,
                                                                 bool is_first, Findings& findings) {
    if (requests.empty()) {
        return nullptr;
    }
    const std::string request = request_of(*requests.front());
    if (source == nullptr) {
        const Severity severity = is_first && requests.front()->fails_without ? Severity::Error : Severity::Warning;
        findings.add("GJF-L008", severity_by_fact(severity, requests.front()->verified),
                     request + " reads a checkpoint, but neither %chk nor %oldchk names one", place_of_route(job).line,
                     "name it with %oldchk or %chk");
        return nullptr;
    }
    const Checkpoint* known = note_read(checkpoint_path(source->value));
    if (known != nullptr) {
        check_contents(job, *known, requests, findings);
    } else if (!is_first) {
        findings.add(
            "GJF-L009", severity_by_fact(Severity::Warning, requests.front()->verified),
            "no job before this one writes the checkpoint '" + std::string(source->value) + "' that " + request + " reads",
            job.place_in(source->line, source->value), "it must be there when the file is run");
    }
    return known;
}

CheckpointChain::OpenEnds CheckpointChain::add(const CheckedJob& job, Molecule molecule, Findings& findings) {
    OpenEnds ends;
    const std::vector<Link0Line> lines = link0_lines_of(job);
    const Link0Line* chk = find_line(lines, {"chk"});
    const Link0Line* source = source_of(lines);
    const std::vector<const CheckpointRead*> requests = reading_requests(job);
    const bool is_first = jobs_++ == 0;
    if (!requests.empty() && requests.front()->keyword == "restart" && find_line(lines, {"rwf", "oldrwf"}) != nullptr) {
        return ends;  // the read-write file has all
    }
    const Checkpoint* known = check_source(job, source, requests, is_first, findings);
    if (is_first && !requests.empty() && source != nullptr && !source->value.empty()) {
        ends.read = named(job, *source);
    }
    if (chk == nullptr) {
        return ends;
    }
    const std::string path = checkpoint_path(chk->value);
    const TextPlace place = job.place_in(chk->line, chk->value);
    const bool is_read = (!requests.empty() || source != chk) && checkpoint_path(source->value) == path;
    const bool is_begun = written_.count(path) == 0 && !is_read;
    Checkpoint left = left_by(job, known, known == nullptr && (!requests.empty() || source != chk));
    left.molecule = std::move(molecule);
    if (left.molecule.layers.levels.size() < 2 && job.job.geom.atom_count() != 0) {
        left.molecule.layers.links = link_atoms_of(job, left.molecule.atoms);  // for a job with layers
    }
    if (findings.tell("GJF-M002")) {
        left.molecule.pairs.clear();
    }
    for (MoleculeAtom& atom : left.molecule.atoms) {
        atom.info = nullptr;
    }
    note_written(path, std::move(left), place, findings);
    if (is_begun) {
        ends.begun = named(job, *chk);
    }
    return ends;
}

const CheckpointChain::Checkpoint* CheckpointChain::note_read(const std::string& path) {
    const auto known = written_.find(path);
    if (known == written_.end()) {
        return nullptr;
    }
    known->second.read_since = true;
    return &known->second;
}

void CheckpointChain::note_written(const std::string& path, Checkpoint left, const TextPlace& place, Findings& findings) {
    const auto known = written_.find(path);
    if (known != written_.end() && !known->second.read_since) {
        Finding& finding = findings.add(
            "GJF-L007", Severity::Warning,
            "this job writes over the checkpoint of job " + std::to_string(known->second.job) + ", which no job has read",
            place, "give each job a checkpoint of its own, or read the first one");
        relate(known->second.place, "the job that wrote it", finding);
    }
    written_.insert_or_assign(path, std::move(left));
}

}  // namespace quor::input::gaussian

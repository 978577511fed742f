// Checks of second and third structures (QST2, QST3) beside the first: that they can be read, and list the same atoms.
#include <gjf/core/check/molecule_view.hpp>

#include <gjf/core/check/fixes.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quor::input::gaussian {
namespace {

// Returns the line of charge and multiplicity, behind the title and its blank line.
std::size_t charge_line_of(const CheckedJob& job, const LineRange& lines) {
    std::size_t line = lines.first;
    while (line <= lines.last && !is_blank_line(job.line(line))) {
        ++line;
    }
    while (line <= lines.last && is_blank_line(job.line(line))) {
        ++line;
    }
    // Without a blank line inside, there is a molecule without a title.
    return line > lines.last ? lines.first : line;
}

// Reads the molecule that begins at a line, as that of a job; reports what cannot be read.
std::optional<GeomSection> read_molecule(const CheckedJob& job, std::size_t line, std::size_t last, Findings& findings) {
    std::string text = "#\n\nt\n\n";
    const auto head = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    for (std::size_t i = line; i <= last && !is_blank_line(job.line(i)); ++i) {
        text.append(job.line(i)).append("\n");
    }
    JobReading reading = read_jobs_with_layout(text).at(0);
    if (!reading.error.empty()) {
        const std::size_t odd = line + std::max(reading.error_line, head + 1) - head - 1;
        Fields fields;
        cut_fields(without_comment(job.line(odd)), fields);
        const bool is_atom = fields.size() >= 4 && species_of_name(fields[0]).kind != SpeciesKind::Unknown;
        findings.add("GJF-S021", is_atom ? Severity::Error : Severity::Warning,
                     "this structure cannot be read: " + reading.error, odd);
        return std::nullopt;
    }
    return reading.atoms_uncertain ? std::nullopt : std::optional<GeomSection>(std::move(reading.job.geom));
}

}  // namespace

void check_structure(const CheckedJob& job, const SectionLayout& section, const std::vector<MoleculeAtom>& atoms,
                     Findings& findings) {
    const std::size_t line = charge_line_of(job, section.lines);
    const std::optional<GeomSection> read =
        atoms.empty() ? std::nullopt : read_molecule(job, line, section.lines.last, findings);
    if (!read) {
        return;
    }
    const GeomSection& geom = *read;
    std::vector<const AtomInfo*> labels;
    for (const AtomCoord& atom : geom.atoms) {
        labels.push_back(&atom.info);
    }
    for (const ZMatrixEntry& row : geom.zmatrix_entries) {
        labels.push_back(&row.info);
    }
    if (labels.size() != atoms.size()) {
        Finding& finding = findings.add(
            "GJF-S019", Severity::Error,
            "this structure has " + std::to_string(labels.size()) + " atoms, the first one " + std::to_string(atoms.size()),
            line);
        relate_line(job, atoms.front().line, "the first structure", finding);
        return;
    }
    check_further_pair(job, geom.charge_spin_pairs(), atoms, line, findings);
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (species_of(*labels[i]).nuclear_charge() != atoms[i].species.nuclear_charge()) {
            Finding& finding = findings.add("GJF-S020", Severity::Warning,
                                            "atom " + std::to_string(i + 1) + " is " + labels[i]->element + " here, and " +
                                                atoms[i].info->element + " in the first structure",
                                            line + 1 + i, "the structures must list the same atoms in the same order");
            relate_line(job, atoms[i].line, "in the first structure", finding);
            return;
        }
    }
}

}  // namespace quor::input::gaussian

// Checks of single atoms and of their distances: elements, freeze codes, atoms on one spot, units.
#include <gjf/core/check/checked_job.hpp>

#include <gjf/core/check/molecule_view.hpp>
#include <gjf/core/job/positions.hpp>
#include <gjf/core/text/number.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <unordered_map>

namespace quor::input::gaussian {
namespace {

constexpr double least_distance = 0.5;        // ångström; Gaussian stops below it
constexpr std::size_t most_close_pairs = 10;  // reported, so that a broken file does not drown the rest

bool has_nucleus(const MoleculeAtom& atom) noexcept {
    return atom.species.kind == SpeciesKind::Atom && atom.position.has_value();
}

void check_elements(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms, Findings& findings) {
    for (const MoleculeAtom& atom : atoms) {
        if (atom.species.kind == SpeciesKind::Unknown) {
            // A label without an element, such as "-3", is shown whole.
            const std::string_view line = job.line(atom.line);
            const std::size_t begin = std::min(line.find_first_not_of(" \t"), line.size());
            const std::string_view label = line.substr(begin, line.find_first_of(" \t,", begin) - begin);
            const std::string_view element = atom.info->element.empty() ? label : std::string_view(atom.info->element);
            const bool is_isotope = atom.species.element == 1;
            findings.add("GJF-M001", is_isotope ? Severity::Warning : Severity::Error,
                         "'" + std::string(element) + "' is no element",
                         TextPlace{atom.line, begin + 1, std::max<std::size_t>(element.size(), 1)},
                         is_isotope ? "write an isotope as in H(Iso=2)" : "");
        }
    }
}

void check_freeze_codes(const CheckedJob& job, Findings& findings) {
    for (std::size_t i = 0; i < job.job.geom.atoms.size() && i < job.layout.atoms.size(); ++i) {
        const AtomCoord& atom = job.job.geom.atoms[i];
        if (!atom.freeze || *atom.freeze <= 0) {
            continue;
        }
        const bool is_atomic_number = species_of(atom.info).element == *atom.freeze;
        findings.add(
            "GJF-M015", Severity::Warning,
            "freeze code " + std::to_string(*atom.freeze) + " is neither 0, -1 nor the number of a rigid block",
            job.layout.atoms[i],
            is_atomic_number ? "it is the atomic number: remove the column" : "use 0 for a free atom, -1 for a frozen one");
    }
}

std::string shown(double value) {
    char text[32];
    return {text, std::to_chars(text, std::end(text), value, std::chars_format::fixed, 2).ptr};
}

void check_close_atoms(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms, Findings& findings) {
    if (job.has_option("geom", "nocrowd")) {
        return;
    }
    Cells cells(least_distance);
    std::size_t count = 0;
    for (std::size_t i = 0; i < atoms.size() && count < most_close_pairs; ++i) {
        if (!has_nucleus(atoms[i])) {
            continue;
        }
        bool close = false;
        cells.for_each_near(*atoms[i].position, [&](std::size_t j) {
            const double length = distance(*atoms[i].position, *atoms[j].position);
            if (close || length >= least_distance) {
                return;
            }
            close = true;
            findings.add(
                "GJF-M005", Severity::Error,
                "atoms " + std::to_string(j + 1) + " and " + std::to_string(i + 1) +
                    (length < 1e-3 ? std::string(" stand on one spot") : " are " + shown(length) + " \xC3\x85 apart"),
                atoms[i].line, "Gaussian stops when atoms are closer than 0.5 \xC3\x85");
        });
        count += close;
        // Atoms on one spot are not put in again, so that no cube grows without bound.
        if (!close) {
            cells.put(*atoms[i].position, i);
        }
    }
}

// Atoms of noble gases are not bonded, so their distances tell nothing.
bool is_noble_gas(int number) noexcept {
    constexpr int gases[] = {2, 10, 18, 36, 54, 86};
    return std::find(std::begin(gases), std::end(gases), number) != std::end(gases);
}

// Compares each of some atoms' nearest neighbour with what a bond would be. About 1 in ångström, 1.9 in bohr.
std::vector<double> bond_ratios(const std::vector<MoleculeAtom>& atoms) {
    constexpr std::size_t sample = 40;
    std::vector<double> ratios;
    for (std::size_t i = 0; i < atoms.size() && ratios.size() < sample; ++i) {
        if (!has_nucleus(atoms[i]) || is_noble_gas(atoms[i].species.element)) {
            continue;
        }
        double best = 0;
        for (std::size_t j = 0; j < atoms.size(); ++j) {
            if (j == i || !has_nucleus(atoms[j])) {
                continue;
            }
            const double bond = covalent_radius(atoms[i].species.element) + covalent_radius(atoms[j].species.element);
            const double ratio = distance(*atoms[i].position, *atoms[j].position) / bond;
            best = best == 0 || ratio < best ? ratio : best;
        }
        if (best > 0) {
            ratios.push_back(best);
        }
    }
    std::sort(ratios.begin(), ratios.end());
    return ratios;
}

void check_units(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms, Findings& findings) {
    constexpr std::size_t fewest_atoms = 3;
    const std::vector<double> ratios = bond_ratios(atoms);
    if (ratios.size() < fewest_atoms || !atoms.front().line) {
        return;
    }
    const double low = ratios[ratios.size() / 4];
    const double middle = ratios[ratios.size() / 2];
    const double high = ratios[ratios.size() * 3 / 4];
    const bool in_bohr = length_unit(job.job) != 1;
    if (!in_bohr && low > 1.65 && middle > 1.7 && middle < 2.1 && high < 2.15) {
        findings.add("GJF-M006", Severity::Warning,
                     "the distances look like bohr: all atoms are almost twice as far apart as bonded atoms are",
                     atoms.front().line, "add units=au, or convert the coordinates to \xC3\xA5ngstr\xC3\xB6m");
    } else if (in_bohr && high < 0.6 && middle > 0.45) {
        findings.add("GJF-M006", Severity::Warning,
                     "the distances look like \xC3\xA5ngstr\xC3\xB6m, but the route says that they are in bohr",
                     atoms.front().line, "remove the units keyword");
    }
}

}  // namespace

void check_atoms(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms, Findings& findings) {
    check_elements(job, atoms, findings);
    check_freeze_codes(job, findings);
    check_close_atoms(job, atoms, findings);
    check_units(job, atoms, findings);
}

}  // namespace quor::input::gaussian

// Checks of ONIOM layers: atoms without one, letters without a level, link atoms and the bonds that are cut.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/check/fixes.hpp>

#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/route/option_syntax.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace quor::input::gaussian {
namespace {

// Counts atoms that share a fault, and remembers the first.
struct Faulty {
    std::size_t count = 0;
    std::size_t first_line = 0;

    void add(std::size_t line) noexcept { first_line = count++ == 0 ? line : first_line; }
    std::string text() const { return std::to_string(count) + (count == 1 ? " atom" : " atoms"); }
};

// Puts a text behind the last field of a line, before its comment.
TextEdit behind_fields(const CheckedJob& job, std::size_t line, std::string text) {
    const std::string_view fields = without_comment(job.line(line));
    const std::size_t end = fields.find_last_not_of(" \t") + 1;
    return job.replacing({line, end + 1, 0}, std::move(text));
}

// Offers the letter of the layer that Gaussian takes atoms without one for.
void offer_high_layer(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms, Finding& finding) {
    std::vector<TextEdit> edits;
    for (const MoleculeAtom& atom : atoms) {
        if (atom.layer == 0) {
            edits.push_back(behind_fields(job, atom.line, " H"));
        }
    }
    offer(finding, "write H, as Gaussian takes it", FixSafety::Safe, std::move(edits));
}

std::size_t count_layers(const std::vector<MoleculeAtom>& atoms) {
    std::array<bool, 3> used{};
    for (const MoleculeAtom& atom : atoms) {
        used[layer_depth(atom)] = true;
    }
    return static_cast<std::size_t>(std::count(used.begin(), used.end(), true));
}

void report_few_layers(std::size_t count, std::size_t levels, std::size_t line, Findings& findings) {
    if (count < levels) {
        findings.add("GJF-M012", Severity::Error,
                     "the atoms stand in " + std::to_string(count) + (count == 1 ? " layer" : " layers") +
                         ", but the route has " + std::to_string(levels) + " levels",
                     line, "write H, M or L behind the coordinates");
    }
}

void check_letters(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms, std::size_t levels, Findings& findings) {
    Faulty missing;
    Faulty medium;
    for (std::size_t i = 0; i < atoms.size(); ++i) {
        const char layer = atoms[i].layer;
        if (layer == 0) {
            missing.add(atoms[i].line);
        } else if (layer == '?') {
            findings.add("GJF-M012", Severity::Warning,
                         "'" + job.job.geom.atoms[i].layer.value_or("") + "' is no ONIOM layer", atoms[i].line,
                         "the layers are H, M and L");
        } else if (layer == 'm' && levels == 2) {
            medium.add(atoms[i].line);
        }
    }
    if (medium.count > 0) {
        findings.add("GJF-M012", Severity::Warning, medium.text() + " in layer M, but the route has two levels",
                     medium.first_line, "two layers are H and L");
    }
    const std::size_t count = count_layers(atoms);
    if (medium.count == 0) {
        report_few_layers(count, levels, atoms.front().line, findings);
    }
    if (missing.count > 0) {
        Finding& finding = findings.add("GJF-M011", Severity::Warning,
                                        missing.text() + " without ONIOM layer: Gaussian takes the high layer",
                                        missing.first_line, "write H, M or L behind the coordinates");
        if (count == levels) {
            offer_high_layer(job, atoms, finding);  // else a layer that is wanted was perhaps not written
        }
    }
}

void check_link_hosts(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms, const LinkAtoms& links,
                      Findings& findings) {
    for (const auto& [i, link] : links) {
        if (link.host_text.empty() || link.host == 0) {
            continue;  // no host is named
        }
        const std::size_t host = link.host_index(atoms.size());
        const TextPlace place = job.place_in(atoms[i].line, link.host_text);
        if (host == atoms.size() || host == i) {
            findings.add("GJF-M014", Severity::Error,
                         "the link atom of atom " + std::to_string(i + 1) + " is bonded to '" + std::string(link.host_text) +
                             "', which is no other atom",
                         place);
        } else if (layer_depth(atoms[host]) >= layer_depth(atoms[i])) {
            Finding& finding = findings.add("GJF-M014", Severity::Warning,
                                            "the link atom of atom " + std::to_string(i + 1) + " is bonded to atom " +
                                                std::string(link.host_text) + ", which is not in a higher layer",
                                            place);
            relate_line(job, atoms[host].line, "the atom that it is bonded to", finding);
        }
    }
}

void check_cut_bonds(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms,
                     const std::vector<UnlinkedBond>& unlinked, Findings& findings) {
    for (const UnlinkedBond& bond : unlinked) {
        Finding& finding = findings.add(
            "GJF-M013", Severity::Warning,
            "the bond between atoms " + std::to_string(bond.upper + 1) + " and " + std::to_string(bond.lower + 1) +
                " is cut by the layers, but atom " + std::to_string(bond.lower + 1) + " names no link atom",
            atoms[bond.lower].line, "write it behind the layer, as in L H " + std::to_string(bond.upper + 1));
        Fields fields;
        cut_fields(without_comment(job.line(atoms[bond.lower].line)), fields);
        if (!fields.empty() && fields.back().size() == 1 &&
            to_lower_ascii(fields.back().front()) == atoms[bond.lower].layer) {
            offer(finding, "write the link atom H " + std::to_string(bond.upper + 1), FixSafety::Unsafe,
                  {behind_fields(job, atoms[bond.lower].line, " H " + std::to_string(bond.upper + 1))});
        }
        relate_line(job, atoms[bond.upper].line, "the other atom of the bond", finding);
    }
}

// Adds a bond when layers cut it without a link atom.
void add_unlinked(const std::vector<MoleculeAtom>& atoms, std::size_t i, std::size_t j, OniomLayers& layers) {
    if (layer_depth(atoms[i]) == layer_depth(atoms[j])) {
        return;
    }
    const bool first_is_lower = layer_depth(atoms[i]) > layer_depth(atoms[j]);
    const std::size_t lower = first_is_lower ? i : j;
    if (layers.links.count(lower) == 0) {
        layers.unlinked.push_back({first_is_lower ? j : i, lower});
    }
}

bool look_bonded(const MoleculeAtom& a, const MoleculeAtom& b) noexcept {
    constexpr double stretch = 1.25;
    return distance(*a.position, *b.position) <
           stretch * (covalent_radius(a.species.element) + covalent_radius(b.species.element));
}

}  // namespace

void add_unlinked_bonds(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms, OniomLayers& layers) {
    if (const ConnectivitySection* connectivity = job.job.connectivity(); connectivity != nullptr) {
        for (const Bond& bond : connectivity->bonds) {
            if (bond.atom2 < atoms.size()) {
                add_unlinked(atoms, static_cast<std::size_t>(bond.atom1), static_cast<std::size_t>(bond.atom2), layers);
            }
        }
        return;
    }
    constexpr double longest_bond = 3.5;
    constexpr double same_spot = 0.3;
    Cells cells(longest_bond, atoms.size());
    for (std::size_t i = 0; i < atoms.size(); ++i) {
        if (atoms[i].species.kind != SpeciesKind::Atom || !atoms[i].position) {
            continue;
        }
        bool on_one_spot = false;
        cells.for_each_near(*atoms[i].position, [&](std::size_t j) {
            on_one_spot = on_one_spot || distance(*atoms[i].position, *atoms[j].position) < same_spot;
            if (look_bonded(atoms[i], atoms[j])) {
                add_unlinked(atoms, j, i, layers);
            }
        });
        // Atoms on one spot are not put in again, so that no cube grows without bound.
        if (!on_one_spot) {
            cells.put(*atoms[i].position, i);
        }
    }
}

std::size_t layer_depth(const MoleculeAtom& atom) noexcept { return atom.layer == 'l' ? 2 : atom.layer == 'm' ? 1 : 0; }

OniomLayers oniom_layers(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms) {
    OniomLayers layers{oniom_levels(job.route.oniom_expression)};
    if (layers.levels.size() >= 2) {
        layers.links = link_atoms_of(job, atoms);
        add_unlinked_bonds(job, atoms, layers);
    }
    return layers;
}

namespace {

void check_layers(const CheckedMolecule& molecule, Findings& findings) {
    const auto& [job, atoms, layers] = molecule;
    const std::size_t levels = layers.levels.size();
    if (levels >= 2 && !atoms.empty() && job.molecule_from_checkpoint()) {
        report_few_layers(count_layers(atoms), levels, atoms.front().line, findings);
    }
    if (levels < 2 || job.job.geom.atoms.empty()) {
        return;
    }
    check_letters(job, atoms, levels, findings);
    check_link_hosts(job, atoms, layers.links, findings);
    check_cut_bonds(job, atoms, layers.unlinked, findings);
}

}  // namespace

const Family layer_family = {Known::Molecule, check_layers, {"GJF-M011", "GJF-M012", "GJF-M013", "GJF-M014"}};

}  // namespace quor::input::gaussian

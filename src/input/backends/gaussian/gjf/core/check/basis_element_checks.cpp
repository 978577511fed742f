// Checks the basis set of the route against the elements of the molecule.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/knowledge/basis_facts.hpp>
#include <gjf/core/knowledge/facts.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <set>

namespace quor::input::gaussian {
namespace {

// Returns the one basis set that the route names, or an empty text: sets given in the input or by layers are seen elsewhere.
std::string_view only_basis(const CheckedJob& job) {
    if (!job.route.oniom_expression.empty() || job.has_any_word(words_with("changes the basis set"))) {
        return {};
    }
    std::string_view basis;
    for (const RouteTree::Segment& segment : job.tree.segments) {
        if (method_has_trait(segment.method, "needs no basis set") || (!basis.empty() && !segment.basis.empty())) {
            return {};
        }
        basis = basis.empty() ? std::string_view(segment.basis) : basis;
    }
    return basis;
}

std::string sets_that_cover(int element) {
    std::string names;
    for (const char* name : {"def2svp", "def2tzvp", "lanl2dz", "cep-121g"}) {
        const BasisElements* known = basis_elements(name);
        names += known != nullptr && known->covers(element) ? (names.empty() ? "" : ", ") + std::string(name) : "";
    }
    return names.empty() ? names : "sets that have it: " + names;
}

// Calls `report` for the first atom of each element that is not covered, down to a depth of layers. Ghosts have functions,
// but no dispersion.
template <class Report>
void for_each_lacking(const ElementSet& elements, const std::vector<MoleculeAtom>& atoms, const Report& report,
                      std::size_t depth = 2) {
    std::set<int> seen;
    for (const MoleculeAtom& atom : atoms) {
        const auto [kind, element, certain] = atom.species;
        if (kind == SpeciesKind::Atom && certain && layer_depth(atom) <= depth && !elements.covers(element) &&
            seen.insert(element).second) {
            report(element, atom.line);
        }
    }
}

void check_composite(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms, Findings& findings) {
    const ParametersElements* known = parameters_elements("composite", job.route.method);
    if (known == nullptr || known->severity == "note") {
        return;
    }
    for_each_lacking(known->elements, atoms, [&](int element, std::size_t line) {
        findings.add("GJF-R013", severity_named(known->severity),
                     std::string(known->name) + " has no functions for " + std::string(element_symbol(element)), line);
    });
}

void check_dispersion(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms, Findings& findings) {
    for (const char* correction : {"gd3", "gd3bj"}) {
        const ParametersElements* known = parameters_elements("dispersion", correction);
        if (known == nullptr || !job.has_option("empiricaldispersion", correction)) {
            continue;
        }
        for_each_lacking(known->elements, atoms, [&](int element, std::size_t line) {
            findings.add("GJF-B002", severity_named(known->severity),
                         std::string(correction) + " has no parameters for " + std::string(element_symbol(element)), line);
        });
        const auto ghost = std::find_if(atoms.begin(), atoms.end(),
                                        [](const MoleculeAtom& atom) { return atom.species.kind == SpeciesKind::Ghost; });
        if (ghost != atoms.end()) {
            findings.add("GJF-B002", severity_named(known->severity),
                         std::string(correction) + " has no parameters for ghost atoms", ghost->line,
                         "Gaussian stops at them with \"No Q value available\"");
        }
    }
}

}  // namespace

void report_lack(std::string_view basis, int element, const TextPlace& place, Findings& findings) {
    const BasisElements* known = basis_elements(basis);
    if (known != nullptr && known->severity != "note" && !known->covers(element)) {
        findings.add(
            "GJF-R013", severity_named(known->severity),
            "the basis set " + std::string(known->basis) + " has no functions for " + std::string(element_symbol(element)),
            place, sets_that_cover(element));
    }
}

namespace {

// Each level of ONIOM has the atoms of its layer and of those above it.
void check_levels(const CheckedMolecule& molecule, Findings& findings) {
    const auto& [job, atoms, layers] = molecule;
    const std::size_t last = layers.levels.size() - 1;
    for (std::size_t level = 0; level < layers.levels.size(); ++level) {
        const std::string text = to_lower_copy(layers.levels[level]);
        const std::size_t slash = text.find('/');
        const std::string set = job.schema.normalize_basis(
            std::string(trim_view(std::string_view(text).substr(std::min(slash, text.size() - 1) + 1))));
        if (const BasisElements* known = slash == std::string::npos ? nullptr : basis_elements(set)) {
            for_each_lacking(
                known->elements, atoms,
                [&](int element, std::size_t line) {
                    report_lack(set, element, TextPlace{line, 0, 0}, findings);
                },
                level == last ? 2 : level);
        }
    }
}

void check_basis_elements(const CheckedMolecule& molecule, Findings& findings) {
    const auto& [job, atoms, layers] = molecule;
    if (!job.schema.is_loaded()) {
        return;
    }
    if (layers.levels.size() >= 2 && !job.has_keyword("iop") && !job.has_any_word(words_with("changes the basis set"))) {
        check_levels(molecule, findings);
    }
    for (const std::string_view set : {only_basis(job), std::string_view(job.route.density_fitting_basis)}) {
        if (const BasisElements* known = basis_elements(set)) {
            for_each_lacking(known->elements, atoms, [&](int element, std::size_t line) {
                report_lack(set, element, TextPlace{line, 0, 0}, findings);
            });
        }
    }
    if (!job.has_keyword("iop")) {
        check_composite(job, atoms, findings);
        check_dispersion(job, atoms, findings);
    }
}

}  // namespace

const Family basis_element_family = {Known::Molecule, check_basis_elements, {"GJF-B002", "GJF-R013"}};

}  // namespace quor::input::gaussian

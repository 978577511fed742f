// Checks the basis set of the route against the elements of the molecule.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/knowledge/basis_facts.hpp>
#include <gjf/core/knowledge/facts.hpp>

#include <algorithm>
#include <set>

namespace quor::input::gaussian {
namespace {

// Words that bring functions or potentials of their own, or change what is read.
constexpr const char* words_that_change_the_basis[] = {"extrabasis", "pseudo", "massage", "iop", "chkbasis", "external"};

// Returns the one basis set that the route names, or an empty text: sets given in the input or by layers are seen elsewhere.
std::string_view only_basis(const CheckedJob& job) {
    if (!job.route.oniom_expression.empty() ||
        std::any_of(std::begin(words_that_change_the_basis), std::end(words_that_change_the_basis),
                    [&](const char* word) { return job.has_keyword(word); })) {
        return {};
    }
    std::string_view basis;
    for (const WrittenSegment& segment : job.segments) {
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

void check_basis_elements(const CheckedMolecule& molecule, Findings& findings) {
    const auto& [job, atoms, layers] = molecule;
    const BasisElements* known = job.schema.is_loaded() ? basis_elements(only_basis(job)) : nullptr;
    std::set<int> seen;
    for (std::size_t i = 0; known != nullptr && known->severity != "note" && i < atoms.size(); ++i) {
        const auto [kind, element, certain] = atoms[i].species;
        if (kind != SpeciesKind::Atom || !certain || known->covers(element) || !seen.insert(element).second) {
            continue;
        }
        findings.add("GJF-R013", known->severity == "error" ? Severity::Error : Severity::Warning,
                     "the basis set " + std::string(known->basis) + " has no functions for " +
                         std::string(element_symbol(element)) + " (atom " + std::to_string(i + 1) + ")",
                     atoms[i].line, sets_that_cover(element));
    }
}

}  // namespace

const Family basis_element_family = {Known::Molecule, check_basis_elements, {"GJF-R013"}};

}  // namespace quor::input::gaussian

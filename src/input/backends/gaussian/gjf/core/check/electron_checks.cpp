// Checks of charge and multiplicity against the electrons that the atoms bring: of the molecule, its ONIOM models, its
// fragments.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/check/fixes.hpp>
#include <gjf/core/knowledge/facts.hpp>
#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>

namespace quor::input::gaussian {
namespace {

// The nuclear charge of some atoms; not known when a label may be read in several ways.
struct NuclearCharge {
    std::int64_t sum = 0;
    bool known = true;

    void add(const Species& species) noexcept {
        known = known && species.certain && species.kind != SpeciesKind::Unknown;
        sum += species.nuclear_charge();
    }
};

// Offers the neighbouring multiplicities and charges of a job's only pair.
void offer_pairs(const CheckedJob& job, const ChargeSpinPair& pair, std::int64_t electrons, std::size_t line,
                 Finding& finding) {
    Fields fields;
    cut_fields(without_comment(job.line(line)), fields);
    if (fields.size() != 2 || pair.multiplicity < 1) {
        return;
    }
    const std::int64_t multiplicity = pair.multiplicity;
    for (const std::int64_t other : {multiplicity - 1, multiplicity + 1}) {
        if (other >= 1 && electrons >= other - 1) {
            offer(finding, "multiplicity " + std::to_string(other), FixSafety::Choice,
                  {job.replacing(job.place_in(line, fields[1]), std::to_string(other))});
        }
    }
    for (const std::int32_t charge : {pair.charge - 1, pair.charge + 1}) {
        if (electrons + pair.charge - charge >= multiplicity - 1) {
            offer(finding, "charge " + std::to_string(charge), FixSafety::Choice,
                  {job.replacing(job.place_in(line, fields[0]), std::to_string(charge))});
        }
    }
}

void check_pair(const CheckedJob& job, const ChargeSpinPair& pair, const NuclearCharge& nuclei, const std::string& whose,
                std::size_t line, Findings& findings, Severity severity = Severity::Error) {
    // Fragments of a broken-symmetry guess have a negative multiplicity where their spin points down.
    const std::int64_t multiplicity = std::abs(static_cast<std::int64_t>(pair.multiplicity));
    if (multiplicity == 0) {
        findings.add("GJF-M002", Severity::Error, "a multiplicity of 0 is impossible" + whose, line,
                     "it is the number of unpaired electrons and one more");
        return;
    }
    if (!nuclei.known) {
        return;
    }
    const std::int64_t electrons = nuclei.sum - pair.charge;
    const std::string text =
        "charge " + std::to_string(pair.charge) + " and multiplicity " + std::to_string(pair.multiplicity);
    if (electrons < 0) {
        findings.add("GJF-M002", severity, text + " leave fewer than no electrons" + whose, line);
    } else if (electrons < multiplicity - 1 || (electrons - multiplicity + 1) % 2 != 0) {
        Finding& finding = findings.add("GJF-M002", severity,
                                        text + " are impossible for " + std::to_string(electrons) +
                                            (electrons == 1 ? " electron" : " electrons") + whose,
                                        line,
                                        electrons % 2 == 0 ? "an even number of electrons has an odd multiplicity"
                                                           : "an odd number of electrons has an even multiplicity");
        if (whose.empty()) {
            offer_pairs(job, pair, electrons, line, finding);
        }
    }
}

NuclearCharge charge_of_all(const std::vector<MoleculeAtom>& atoms) {
    NuclearCharge nuclei;
    for (const MoleculeAtom& atom : atoms) {
        nuclei.add(atom.species);
    }
    return nuclei;
}

// Returns the number that a keyword is given, as in counterpoise=2; 0 for none.
std::int64_t number_given(const CheckedJob& job, const RouteTree::Keyword* keyword) {
    if (keyword != nullptr) {
        for (const RouteTree::Option& option : keyword->options) {
            if (const std::optional<std::int64_t> number = to_int64(job.written(option.name))) {
                return *number;
            }
        }
    }
    return 0;
}

void check_fragments(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms, std::int64_t count, const char* request,
                     Findings& findings) {
    std::vector<std::size_t> sizes(static_cast<std::size_t>(std::min<std::int64_t>(count, 1000)) + 1);
    std::size_t missing = 0;
    std::size_t first_missing = 0;
    for (const MoleculeAtom& atom : atoms) {
        if (atom.species.kind == SpeciesKind::TranslationVector || atom.species.kind == SpeciesKind::Dummy) {
            continue;
        }
        if (!atom.fragment) {
            first_missing = missing++ == 0 ? atom.line : first_missing;
        } else if (*atom.fragment < 1 || *atom.fragment > count) {
            findings.add("GJF-M004", Severity::Error,
                         "fragment " + std::to_string(*atom.fragment) + " is none of the " + std::to_string(count) +
                             " that " + request + " asks for",
                         atom.line);
        } else if (std::cmp_less(*atom.fragment, sizes.size())) {
            ++sizes[static_cast<std::size_t>(*atom.fragment)];
        }
    }
    if (missing > 0) {
        findings.add("GJF-M004", Severity::Error,
                     std::to_string(missing) + (missing == 1 ? " atom has" : " atoms have") + " no fragment, as " + request +
                         " needs",
                     first_missing, "write it with the atom, as in C(Fragment=1)");
    }
    for (std::size_t i = 1; i < sizes.size() && missing == 0; ++i) {
        if (sizes[i] == 0) {
            findings.add("GJF-M004", Severity::Error, "fragment " + std::to_string(i) + " of " + request + " has no atoms",
                         job.layout.charge_line);
        }
    }
}

// Reports charges and spins of fragments that do not make up those of the whole. The spins of a guess have a direction each;
// those of other fragments may be coupled in any way.
void check_sums(const std::vector<ChargeSpinPair>& pairs, bool spins_have_directions, std::size_t line, Findings& findings) {
    std::int64_t charge = 0;
    std::int64_t spins = 0;
    for (std::size_t i = 1; i < pairs.size(); ++i) {
        const std::int64_t multiplicity = pairs[i].multiplicity;
        charge += pairs[i].charge;
        spins += multiplicity < 0 && spins_have_directions ? multiplicity + 1 : std::abs(multiplicity) - 1;
    }
    if (charge != pairs[0].charge) {
        findings.add("GJF-M003", Severity::Warning,
                     "the charges of the fragments add up to " + std::to_string(charge) + ", not to " +
                         std::to_string(pairs[0].charge),
                     line);
    }
    const std::int64_t whole = std::abs(static_cast<std::int64_t>(pairs[0].multiplicity)) - 1;
    if (spins_have_directions ? std::abs(spins) != whole : spins < whole) {
        findings.add("GJF-M003", Severity::Warning,
                     "the multiplicities of the fragments do not make up " + std::to_string(pairs[0].multiplicity), line,
                     spins_have_directions ? "a fragment whose unpaired spins point down has a negative multiplicity" : "");
    }
}

void check_fragment_pairs(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms, std::int64_t count,
                          const std::vector<ChargeSpinPair>& pairs, bool is_guess, Findings& findings) {
    const std::size_t line = job.layout.charge_line;
    const bool one_for_each = std::cmp_equal(pairs.size() - 1, count);
    if (pairs.size() != 1 && !one_for_each) {
        findings.add("GJF-M003", Severity::Warning,
                     std::to_string(pairs.size()) + " pairs of charge and multiplicity stand beside " +
                         std::to_string(count) + " fragments",
                     line, "give one for the whole and one for each fragment");
    }
    if (one_for_each) {
        check_sums(pairs, is_guess, line, findings);
    }
    std::vector<NuclearCharge> nuclei(pairs.size());
    for (const MoleculeAtom& atom : atoms) {
        if (atom.fragment && *atom.fragment >= 1 && std::cmp_less(*atom.fragment, nuclei.size())) {
            nuclei[static_cast<std::size_t>(*atom.fragment)].add(atom.species);
        }
    }
    for (std::size_t i = 1; i < pairs.size() && std::cmp_less_equal(i, count); ++i) {
        check_pair(job, pairs[i], nuclei[i], " in fragment " + std::to_string(i), line, findings,
                   is_guess ? Severity::Warning : Severity::Error);
    }
}

// The region of an ONIOM calculation from the highest layer down to the depth `lowest`, and the level that it is computed
// at.
struct Model {
    std::size_t lowest;
    std::size_t level;
    const char* name;
};

// In the order in which their charges and multiplicities are given.
constexpr Model two_layer_models[] = {{2, 1, "real system, low level"},
                                      {0, 0, "model system, high level"},
                                      {0, 1, "model system, low level"},
                                      {2, 0, "real system, high level"}};
constexpr Model three_layer_models[] = {
    {2, 2, "real system, low level"},         {1, 1, "intermediate system, medium level"},
    {1, 2, "intermediate system, low level"}, {0, 0, "model system, high level"},
    {0, 1, "model system, medium level"},     {0, 2, "model system, low level"}};

// Adds up a model's atoms and the link atoms that close the bonds cut by its boundary.
NuclearCharge charge_of_model(const std::vector<MoleculeAtom>& atoms, const Model& model, const OniomLayers& layers) {
    NuclearCharge nuclei;
    const auto& unlinked = layers.unlinked;
    // What closes a bond that is cut without a link atom cannot be known.
    nuclei.known = std::none_of(unlinked.begin(), unlinked.end(), [&](const UnlinkedBond& bond) {
        return layer_depth(atoms[bond.upper]) <= model.lowest && layer_depth(atoms[bond.lower]) > model.lowest;
    });
    for (const MoleculeAtom& atom : atoms) {
        if (layer_depth(atom) <= model.lowest) {
            nuclei.add(atom.species);
        }
    }
    for (const auto& [i, link] : layers.links) {
        const std::size_t depth = layer_depth(atoms[i]);
        if (depth <= model.lowest) {
            continue;
        }
        const std::size_t host = link.host_index(atoms.size());
        // Which atom a link atom without host in a higher layer closes, and so in which models it stands, is left to
        // Gaussian.
        nuclei.known = nuclei.known && host < atoms.size() && layer_depth(atoms[host]) < depth;
        if (host < atoms.size() && layer_depth(atoms[host]) <= model.lowest) {
            nuclei.add(species_of_name(link.label.substr(0, link.label.find_first_of("-("))));
        }
    }
    return nuclei;
}

template <std::size_t N>
void check_models(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms, const OniomLayers& layers,
                  const Model (&models)[N], const std::vector<ChargeSpinPair>& pairs, std::size_t line, Findings& findings) {
    for (std::size_t i = 0; i < pairs.size() && i < N; ++i) {
        const std::string& level = layers.levels[models[i].level];
        const std::string method = to_lower_copy(std::string_view(level).substr(0, level.find_first_of("/=(")));
        if (has_trait(method, "is a force field")) {
            continue;
        }
        check_pair(job, pairs[i], charge_of_model(atoms, models[i], layers), std::string(" (") + models[i].name + ")", line,
                   findings);
    }
}

void check_oniom_pairs(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms, const OniomLayers& layers,
                       const std::vector<ChargeSpinPair>& pairs, std::size_t line, Findings& findings) {
    const std::size_t levels = layers.levels.size();
    const std::size_t most = levels * levels + (levels == 3 ? 1 : 0);
    if (pairs.size() > most) {
        findings.add("GJF-M003", Severity::Warning,
                     std::to_string(pairs.size()) + " pairs of charge and multiplicity stand beside " +
                         std::to_string(levels) + " layers",
                     line);
    }
    if (levels == 2) {
        check_models(job, atoms, layers, two_layer_models, pairs, line, findings);
    } else if (levels == 3) {
        check_models(job, atoms, layers, three_layer_models, pairs, line, findings);
    }
}

// Checks the electrons of a job without layers; `fragments` is 0 in one without fragments.
void check_pairs(const CheckedMolecule& molecule, std::int64_t fragments, bool spins_have_directions, Findings& findings) {
    const CheckedJob& job = molecule.job;
    const std::vector<MoleculeAtom>& atoms = molecule.atoms;
    const std::vector<ChargeSpinPair> pairs = job.job.geom.charge_spin_pairs();
    const std::size_t line = job.layout.charge_line;
    if (pairs.empty()) {
        findings.add("GJF-M002", Severity::Error, "a multiplicity of 0 is impossible", line,
                     "it is the number of unpaired electrons and one more");
        return;
    }
    if (has_trait(job.route.method, "is a force field")) {
        return;
    }
    NuclearCharge nuclei = charge_of_all(atoms);
    nuclei.known = nuclei.known && !job.has_keyword("massage");  // which may change nuclear charges
    check_pair(job, pairs.front(), nuclei, {}, line, findings);
    if (fragments > 0) {
        check_fragment_pairs(job, atoms, fragments, pairs, spins_have_directions, findings);
    } else if (pairs.size() > 1 && std::none_of(atoms.begin(), atoms.end(),
                                                [](const MoleculeAtom& atom) { return atom.fragment.has_value(); })) {
        findings.add(
            "GJF-M003", Severity::Warning,
            std::to_string(pairs.size()) + " pairs of charge and multiplicity stand in a job without layers and fragments",
            line, "only the first is used");
    }
}

void check_electrons(const CheckedMolecule& molecule, Findings& findings) {
    const auto& [job, atoms, layers] = molecule;
    const std::size_t line = job.layout.charge_line;
    if (line == 0 || atoms.empty()) {
        return;
    }
    const std::int64_t counterpoise = number_given(job, job.find_keyword("counterpoise"));
    const RouteTree::Option* guess = job.find_option("guess", "fragment");
    const std::int64_t guessed = guess == nullptr ? 0 : to_int64(job.written(guess->value)).value_or(0);
    const std::int64_t fragments = std::max(counterpoise, guessed);
    if (job.job.geom.multiplicity < 0 && fragments == 0) {
        findings.add("GJF-M002", Severity::Error,
                     "a multiplicity of " + std::to_string(job.job.geom.multiplicity) + " is impossible", line);
        return;
    }
    if (!layers.levels.empty()) {
        check_oniom_pairs(job, atoms, layers, job.job.geom.charge_spin_pairs(), line, findings);
        return;
    }
    if (fragments > 0) {
        check_fragments(job, atoms, fragments, counterpoise > 0 ? "counterpoise" : "guess=fragment", findings);
    }
    check_pairs(molecule, fragments, counterpoise == 0, findings);
}

}  // namespace

void check_earlier_pairs(const CheckedMolecule& molecule, const std::vector<ChargeSpinPair>& pairs, Findings& findings) {
    const auto& [job, atoms, layers] = molecule;
    if (pairs.empty() || atoms.empty()) {
        return;
    }
    if (!layers.levels.empty()) {
        check_oniom_pairs(job, atoms, layers, pairs, atoms.front().line, findings);
    } else if (!has_trait(job.route.method, "is a force field")) {
        check_pair(job, pairs.front(), charge_of_all(atoms), " that the checkpoint holds", atoms.front().line, findings);
    }
}

void check_further_pair(const CheckedJob& job, const std::vector<ChargeSpinPair>& pairs,
                        const std::vector<MoleculeAtom>& atoms, std::size_t line, Findings& findings) {
    if (!pairs.empty()) {
        check_pair(job, pairs.front(), charge_of_all(atoms), " in this structure", line, findings, Severity::Warning);
    }
}

const Family electron_family = {Known::Molecule, check_electrons, {"GJF-M002", "GJF-M003", "GJF-M004"}};

}  // namespace quor::input::gaussian

// Checks of single atoms and of their distances: elements, freeze codes, atoms on one spot, units.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/check/fixes.hpp>
#include <gjf/core/knowledge/route_facts.hpp>
#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/number_writing.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <utility>

namespace quor::input::gaussian {
namespace {

constexpr double least_stretched = 1.65;      // distances in lengths of a bond, of a molecule given in bohr
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
            const TextPlace place{atom.line, begin + 1, std::max<std::size_t>(element.size(), 1)};
            Finding& finding = findings.add("GJF-M001", is_isotope ? Severity::Warning : Severity::Error,
                                            "'" + std::string(element) + "' is no element", place,
                                            is_isotope ? "write an isotope as in H(Iso=2)" : "");
            if (is_isotope && label == element) {
                const bool is_tritium = to_lower_ascii(element.front()) == 't';
                offer_words(job, place, element, {is_tritium ? "H(Iso=3)" : "H(Iso=2)"}, FixSafety::Unsafe, finding);
            }
        }
    }
}

// Tells a label that a ghost was meant by, as OBq, but that is read as the name of an atom.
bool is_ghost_without_hyphen(std::string_view label) {
    return label.size() > 2 && equals_folded(label.substr(label.size() - 2), "bq") &&
           atomic_number(label.substr(0, label.size() - 2)) != 0;
}

// Reports labels such as Oo and Cc: an element whose letter was struck twice, or a name of its own; and what stands for no
// nucleus although it looks like one, or the other way.
void check_likely_labels(const std::vector<MoleculeAtom>& atoms, Findings& findings) {
    const bool has_symbols = std::any_of(atoms.begin(), atoms.end(), [](const MoleculeAtom& atom) {
        return atom.species.kind == SpeciesKind::Atom && atom.info != nullptr && !atom.info->element.empty() &&
               is_letter(atom.info->element.front());
    });
    for (const MoleculeAtom& atom : atoms) {
        const std::string_view label = atom.info == nullptr ? std::string_view() : std::string_view(atom.info->element);
        if (label == "0" && has_symbols) {
            findings.add("GJF-M001", Severity::Warning, "'0' is the number of no element: a point without nucleus",
                         atom.line, "the symbol of oxygen is the letter O");
        } else if (atom.species.kind == SpeciesKind::Atom && is_ghost_without_hyphen(label)) {
            findings.add("GJF-M001", Severity::Warning, "'" + std::string(label) + "' names an atom, not a ghost", atom.line,
                         "a ghost is written as in " + std::string(label.substr(0, label.size() - 2)) + "-Bq");
        }
        if (atom.species.kind == SpeciesKind::Atom && !atom.species.certain && label.size() == 2 && label[0] != label[1] &&
            to_lower_ascii(label[0]) == label[1]) {
            findings.add("GJF-M001", Severity::Warning, "'" + std::string(label) + "' is no element", atom.line,
                         "an element is " + std::string(symbol_of(atom.species)) + "; names have digits behind it");
        }
    }
}

void check_freeze_codes(const CheckedJob& job, Findings& findings) {
    // In further structures the numbers would stay.
    const bool has_more_structures = job.has_option("opt", "qst2") || job.has_option("opt", "qst3");
    for (std::size_t i = 0; i < job.job.geom.atoms.size() && i < job.layout.atoms.size(); ++i) {
        const AtomCoord& atom = job.job.geom.atoms[i];
        if (!atom.freeze || *atom.freeze <= 0) {
            continue;
        }
        const bool is_atomic_number = species_of(atom.info).element == *atom.freeze;
        Finding& finding = findings.add(
            "GJF-M015", Severity::Warning,
            "freeze code " + std::to_string(*atom.freeze) + " is neither 0, -1 nor the number of a rigid block",
            job.layout.atoms[i],
            is_atomic_number ? "it is the atomic number: remove the column" : "use 0 for a free atom, -1 for a frozen one");
        Fields fields;
        cut_fields(without_comment(job.line(job.layout.atoms[i])), fields);
        if (is_atomic_number && fields.size() > 4 && !has_more_structures) {
            // Up to the next field, so that the columns behind it stay apart.
            const auto length = static_cast<std::size_t>(fields[2].data() - fields[1].data());
            const TextPlace place{job.layout.atoms[i], job.place_in(job.layout.atoms[i], fields[1]).column, length};
            offer(finding, "remove the atomic number", FixSafety::Unsafe, {job.replacing(place, {})});
        }
    }
}

// Reports an optimisation that nothing is left for. Sections of coordinates may free atoms again.
void check_all_frozen(const CheckedJob& job, Findings& findings) {
    const std::vector<AtomCoord>& atoms = job.job.geom.atoms;
    const RouteTree::Keyword* opt = job.find_keyword("opt");
    if (opt == nullptr || atoms.empty() || job.has_keyword("geom")) {
        return;
    }
    const bool may_free = std::any_of(opt->options.begin(), opt->options.end(), [](const RouteTree::Option& option) {
        return option.canonical.find("read") != std::string::npos ||
               option.canonical.find("redundant") != std::string::npos || option.canonical.find("gic") != std::string::npos;
    });
    const bool all_frozen =
        std::all_of(atoms.begin(), atoms.end(), [](const AtomCoord& atom) { return atom.freeze.value_or(0) == -1; });
    if (all_frozen && !may_free) {
        findings.add("GJF-M015", Severity::Warning, "every atom is frozen, so opt has nothing to optimise",
                     line_at(job.layout.atoms, 0), "take the code -1 off the atoms that may move");
    }
}

// The length, area or volume that one, two or three vectors span.
double volume_of(const std::vector<Position>& vectors) noexcept {
    const Position& a = vectors.front();
    if (vectors.size() == 1) {
        return std::hypot(a[0], a[1], a[2]);
    }
    const Position& b = vectors[1];
    const Position across = {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
    if (vectors.size() == 2) {
        return std::hypot(across[0], across[1], across[2]);
    }
    return std::fabs(across[0] * vectors[2][0] + across[1] * vectors[2][1] + across[2] * vectors[2][2]);
}

// Reports a method that knows single molecules alone beside translation vectors.
void check_method_of_cell(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms, Findings& findings) {
    const bool is_periodic = std::any_of(atoms.begin(), atoms.end(), [](const MoleculeAtom& atom) {
        return atom.species.kind == SpeciesKind::TranslationVector;
    });
    for (const RouteTree::Segment& segment : job.tree.segments) {
        if (is_periodic && !segment.is_oniom && method_lacks(segment.method, "periodic boundaries")) {
            findings.add("GJF-R017", Severity::Warning,
                         "translation vectors need periodic boundaries, which " + segment.method + " lacks",
                         job.route_place(segment.place), "Hartree-Fock and functionals have them");
        }
    }
}

// Reports translation vectors that span no cell.
void check_vectors(const std::vector<MoleculeAtom>& atoms, Findings& findings) {
    constexpr double flat = 1e-4;  // the part of the volume that vectors of these lengths could span
    std::vector<Position> vectors;
    for (const MoleculeAtom& atom : atoms) {
        if (atom.species.kind != SpeciesKind::TranslationVector || !atom.position) {
            continue;
        }
        const Position& v = *atom.position;
        const double length = std::hypot(v[0], v[1], v[2]);
        const double scale = length < 1e-6 ? 0 : 1 / length;
        vectors.push_back({v[0] * scale, v[1] * scale, v[2] * scale});
        if (vectors.size() > 3 || volume_of(vectors) < flat) {
            findings.add("GJF-M016", vectors.size() > 3 ? Severity::Warning : Severity::Error,
                         vectors.size() > 3 ? "a fourth translation vector"
                                            : "this translation vector spans no cell with those before",
                         atom.line, "up to three vectors, none of them zero or in a line or plane with the others");
            return;
        }
    }
}

void check_close_atoms(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms, Findings& findings) {
    if (job.has_option("geom", "nocrowd")) {
        return;
    }
    Cells cells(least_distance, atoms.size(), 4);  // of 2 ångström, which hold an atom or two
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
            Finding& finding = findings.add("GJF-M005", Severity::Error,
                                            "atoms " + std::to_string(j + 1) + " and " + std::to_string(i + 1) +
                                                (length < 1e-3 ? std::string(" stand on one spot")
                                                               : " are " + fixed_text(length, 2) + " \xC3\x85 apart"),
                                            atoms[i].line, "Gaussian stops when atoms are closer than 0.5 \xC3\x85");
            relate_line(job, atoms[j].line, "the other atom", finding);
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

// Tells whether atoms of an element may be joined by double and triple bonds.
bool binds_multiply(const MoleculeAtom& atom) noexcept {
    constexpr int elements[] = {5, 6, 7, 8, 15, 16};
    return std::find(std::begin(elements), std::end(elements), atom.species.element) != std::end(elements);
}

// Compares the distance of two atoms with what a bond would be. A double or triple bond that would be one if all lengths
// were `slip` times as long is no shorter than a single one.
double bond_ratio(const MoleculeAtom& a, const MoleculeAtom& b, double slip) {
    constexpr double shortest = 0.77;  // of a triple bond beside a single one
    const double ratio =
        distance(*a.position, *b.position) / (covalent_radius(a.species.element) + covalent_radius(b.species.element));
    const bool is_multiple = binds_multiply(a) && binds_multiply(b) && ratio >= shortest * slip && ratio < slip;
    return is_multiple ? slip : ratio;
}

bool is_within(const Position& place, const Position& low, const Position& high) noexcept {
    return place[0] >= low[0] && place[0] <= high[0] && place[1] >= low[1] && place[1] <= high[1] && place[2] >= low[2] &&
           place[2] <= high[2];
}

// An atom and the smallest bond ratio that it has with another.
struct Nearest {
    const MoleculeAtom* atom;
    double ratio = 0;  // 0 as long as there is none

    // How far away an atom may be that has a smaller one.
    double reach() const noexcept {
        constexpr double largest = 3;  // no covalent radius is larger
        return ratio == 0 ? std::numeric_limits<double>::infinity()
                          : ratio * (covalent_radius(atom->species.element) + largest);
    }
    void look_at(const MoleculeAtom& other, double slip) {
        const Position& a = *atom->position;
        const Position& b = *other.position;
        const double x = a[0] - b[0];
        const double y = a[1] - b[1];
        const double z = a[2] - b[2];
        const double length = reach();
        if (&other != atom && x * x + y * y + z * z <= length * length) {  // which takes no root
            const double found = bond_ratio(*atom, other, slip);
            ratio = ratio == 0 || (found > 0 && found < ratio) ? found : ratio;
        }
    }
};

// Some atoms, of which none is a noble gas.
std::vector<Nearest> sample_of(const std::vector<MoleculeAtom>& atoms) {
    constexpr std::size_t most = 40;
    std::vector<Nearest> sample;
    for (std::size_t i = 0; i < atoms.size() && sample.size() < most; ++i) {
        if (has_nucleus(atoms[i]) && !is_noble_gas(atoms[i].species.element)) {
            sample.push_back({&atoms[i]});
        }
    }
    return sample;
}

// Tells whether more than a quarter of a sample have a neighbour so near that the molecule cannot be twice as large as
// meant: what nearly every job shows after a few looks.
bool has_bonds(const std::vector<Nearest>& sample, double slip) {
    std::size_t bonded = 0;
    for (Nearest nearest : sample) {
        nearest.ratio = least_stretched;
        for (std::size_t i = 0; i < sample.size() && nearest.ratio == least_stretched; ++i) {
            nearest.look_at(*sample[i].atom, slip);
        }
        bonded += nearest.ratio < least_stretched ? 1 : 0;
        if (bonded > sample.size() / 4) {
            return true;
        }
    }
    return false;
}

// The bond ratio of each atom of a sample with its nearest neighbour. About 1 in ångström, 1.9 in bohr.
std::vector<double> bond_ratios(const std::vector<MoleculeAtom>& atoms, std::vector<Nearest> sample, double slip) {
    // What is nearest among them tells how far away others may be: most atoms of a large molecule are farther from all.
    constexpr double infinite = std::numeric_limits<double>::infinity();
    Position low = {infinite, infinite, infinite};
    Position high = {-infinite, -infinite, -infinite};
    for (Nearest& nearest : sample) {
        for (const Nearest& other : sample) {
            nearest.look_at(*other.atom, slip);
        }
        for (std::size_t k = 0; k < 3; ++k) {
            low[k] = std::min(low[k], (*nearest.atom->position)[k] - nearest.reach());
            high[k] = std::max(high[k], (*nearest.atom->position)[k] + nearest.reach());
        }
    }
    for (const MoleculeAtom& atom : atoms) {
        if (has_nucleus(atom) && is_within(*atom.position, low, high)) {
            for (Nearest& nearest : sample) {
                nearest.look_at(atom, slip);
            }
        }
    }
    std::vector<double> ratios;
    for (const Nearest& nearest : sample) {
        if (nearest.ratio > 0) {
            ratios.push_back(nearest.ratio);
        }
    }
    std::sort(ratios.begin(), ratios.end());
    return ratios;
}

void check_units(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms, Findings& findings) {
    constexpr std::size_t fewest_atoms = 3;
    const bool in_bohr = length_unit(job.job) != 1;
    const double slip = in_bohr ? bohr : 1 / bohr;
    std::vector<Nearest> sample = sample_of(atoms);
    if (sample.size() < fewest_atoms || !atoms.front().line || (!in_bohr && has_bonds(sample, slip))) {
        return;
    }
    const std::vector<double> ratios = bond_ratios(atoms, std::move(sample), slip);
    if (ratios.size() < fewest_atoms) {
        return;
    }
    const double low = ratios[ratios.size() / 4];
    const double middle = ratios[ratios.size() / 2];
    const double high = ratios[ratios.size() * 3 / 4];
    if (!in_bohr && low > least_stretched && middle > 1.7 && middle < 2.1 && high < 2.15) {
        Finding& finding =
            findings.add("GJF-M006", Severity::Warning,
                         "the distances look like bohr: all atoms are almost twice as far apart as bonded atoms are",
                         atoms.front().line, "add units=au, or convert the coordinates to \xC3\xA5ngstr\xC3\xB6m");
        offer(finding, "add units=au", FixSafety::Unsafe, with_word(job, "units=au"));
    } else if (in_bohr && high < 0.6 && middle > 0.45) {
        Finding& finding =
            findings.add("GJF-M006", Severity::Warning,
                         "the distances look like \xC3\xA5ngstr\xC3\xB6m, but the route says that they are in bohr",
                         atoms.front().line, "remove the units keyword");
        const RouteTree::Keyword* units = job.find_keyword("units");
        if (units != nullptr && units->options.size() == 1) {
            offer(finding, "remove " + job.written(units->place), FixSafety::Unsafe, without_keyword(job, *units));
        }
    }
}

void check_atoms(const CheckedMolecule& molecule, Findings& findings) {
    const auto& [job, atoms, layers] = molecule;
    check_elements(job, atoms, findings);
    check_likely_labels(atoms, findings);
    check_freeze_codes(job, findings);
    check_all_frozen(job, findings);
    check_method_of_cell(job, atoms, findings);
    check_vectors(atoms, findings);
    check_close_atoms(job, atoms, findings);
    check_units(job, atoms, findings);
}

}  // namespace

const Family atom_family = {
    Known::Labels, check_atoms, {"GJF-M001", "GJF-M005", "GJF-M006", "GJF-M015", "GJF-M016", "GJF-R017"}};

}  // namespace quor::input::gaussian

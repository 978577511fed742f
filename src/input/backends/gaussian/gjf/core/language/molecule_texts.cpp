// Tells atoms and the coordinates between them.
#include <gjf/core/language/molecule_texts.hpp>

#include <gjf/core/chemistry/elements.hpp>
#include <gjf/core/language/hover.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/number_writing.hpp>

#include <algorithm>
#include <cmath>
#include <utility>

namespace quor::input::gaussian {
namespace {

constexpr double degree = 57.29577951308232;
constexpr double bond_slack = 1.3;  // how much longer than the sum of the radii a bond may be
constexpr std::size_t most_neighbours = 12;

Position minus(const Position& a, const Position& b) noexcept { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }

double dot(const Position& a, const Position& b) noexcept { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

Position cross(const Position& a, const Position& b) noexcept {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double angle(const Position& a, const Position& b, const Position& c) noexcept {
    const Position u = minus(a, b);
    const Position v = minus(c, b);
    return std::atan2(std::sqrt(dot(cross(u, v), cross(u, v))), dot(u, v)) * degree;
}

double dihedral(const Position& a, const Position& b, const Position& c, const Position& d) noexcept {
    const Position middle = minus(c, b);
    const Position first = cross(minus(b, a), middle);
    const Position second = cross(middle, minus(d, c));
    return std::atan2(dot(cross(first, second), middle) / std::sqrt(dot(middle, middle)), dot(first, second)) * degree;
}

bool is_bonded(const AtomPosition& a, const AtomPosition& b) noexcept {
    if (!a.position || !b.position || a.species.kind != SpeciesKind::Atom || b.species.kind != SpeciesKind::Atom) {
        return false;
    }
    const double longest = bond_slack * (covalent_radius(a.species.element) + covalent_radius(b.species.element));
    return distance(*a.position, *b.position) < longest;
}

std::vector<std::size_t> neighbours_of(const GJFData& job, const std::vector<AtomPosition>& atoms, std::size_t index) {
    if (const ConnectivitySection* bonds = job.connectivity()) {
        return bonds->get_connected_atoms(index);
    }
    std::vector<std::size_t> near;
    for (std::size_t i = 0; i < atoms.size() && near.size() < most_neighbours; ++i) {
        if (i != index && is_bonded(atoms[index], atoms[i])) {
            near.push_back(i);
        }
    }
    return near;
}

const AtomInfo& info_of(const GJFData& job, std::size_t index) {
    return job.geom.zmatrix_entries.empty() ? job.geom.atoms[index].info : job.geom.zmatrix_entries[index].info;
}

// The fragment of an atom: how many atoms it has, and its charge and multiplicity, which stand behind those of the whole.
std::string fragment_text(const GJFData& job, std::size_t index) {
    const std::string* fragment = find_parameter(info_of(job, index), "fragment");
    if (fragment == nullptr) {
        return {};
    }
    std::size_t count = 0;
    for (std::size_t i = 0; i < job.geom.atom_count(); ++i) {
        const std::string* other = find_parameter(info_of(job, i), "fragment");
        count += other != nullptr && *other == *fragment;
    }
    std::string text =
        "; fragment " + code_span(*fragment) + " of " + std::to_string(count) + (count == 1 ? " atom" : " atoms");
    const std::vector<ChargeSpinPair> pairs = job.geom.charge_spin_pairs();
    const std::int64_t number = to_int64(*fragment).value_or(0);
    if (number > 0 && std::cmp_less(number, pairs.size())) {
        const ChargeSpinPair& pair = pairs[static_cast<std::size_t>(number)];
        text += ", charge " + std::to_string(pair.charge) + ", multiplicity " + std::to_string(pair.multiplicity);
    }
    return text;
}

}  // namespace

std::string_view label_of(const GJFData& job, std::size_t atom) {
    return atom == 0 || atom > job.geom.atom_count() ? std::string_view() : info_of(job, atom - 1).element;
}

std::string atom_text(const GJFData& job, const std::vector<AtomPosition>& atoms, std::size_t number) {
    if (number == 0 || number > atoms.size()) {
        return "no atom " + std::to_string(number) + ": the molecule has " + std::to_string(atoms.size());
    }
    const AtomPosition& atom = atoms[number - 1];
    std::string text =
        "atom " + std::to_string(number) + " of " + std::to_string(atoms.size()) + ", " + code_span(label_of(job, number));
    if (!atom.position) {
        const std::string fault = position_fault_text(atom, number);
        return text + (fault.empty() ? "" : ": " + code_span(fault)) + fragment_text(job, number - 1);
    }
    text += " at";
    for (const double coordinate : *atom.position) {
        text += " " + fixed_text(coordinate, 3);
    }
    std::string bonded;
    for (const std::size_t near : neighbours_of(job, atoms, number - 1)) {
        const bool placed = near < atoms.size() && atoms[near].position;
        bonded += (bonded.empty() ? "" : ", ") + code_span(label_of(job, near + 1)) + " " + std::to_string(near + 1) +
                  (placed ? " (" + fixed_text(distance(*atom.position, *atoms[near].position), 3) + " Å)" : "");
    }
    return text + (bonded.empty() ? "" : "; bonded to " + bonded) + fragment_text(job, number - 1);
}

std::string coordinate_text(const std::vector<AtomPosition>& atoms, std::span<const std::size_t> numbers) {
    if (numbers.size() < 2 || numbers.size() > 4) {
        return {};
    }
    std::string name;
    std::vector<Position> places;
    for (const std::size_t number : numbers) {
        if (number == 0 || number > atoms.size() || !atoms[number - 1].position) {
            return {};
        }
        places.push_back(*atoms[number - 1].position);
        name += (name.empty() ? "" : "-") + std::to_string(number);
    }
    const double value = places.size() == 2   ? distance(places[0], places[1])
                         : places.size() == 3 ? angle(places[0], places[1], places[2])
                                              : dihedral(places[0], places[1], places[2], places[3]);
    const char* const kinds[] = {"distance ", "angle ", "dihedral "};
    return std::isfinite(value)
               ? kinds[places.size() - 2] + name + ": " + fixed_text(value, 3) + (places.size() == 2 ? " Å" : "°")
               : std::string();
}

}  // namespace quor::input::gaussian

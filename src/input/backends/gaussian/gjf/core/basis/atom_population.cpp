// Counts atoms by element, all of them or those that a line of centers names.
#include <gjf/core/basis/atom_population.hpp>

#include <gjf/core/chemistry/elements.hpp>
#include <gjf/core/text/number_range.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

// Ranges that name more atoms than this, all lines together, are not followed.
constexpr std::size_t most_steps = 10'000'000;

}  // namespace

AtomPopulation::AtomPopulation(const GeomSection& geom) {
    atoms_.reserve(geom.atom_count());
    const auto add = [this](const AtomInfo& info) { atoms_.push_back(species_of(info)); };
    std::for_each(geom.atoms.begin(), geom.atoms.end(), [&](const AtomCoord& atom) { add(atom.info); });
    std::for_each(geom.zmatrix_entries.begin(), geom.zmatrix_entries.end(), [&](const ZMatrixEntry& row) { add(row.info); });
    covered_.resize(atoms_.size());
    for (std::size_t i = 0; i < atoms_.size(); ++i) {
        const Species& atom = atoms_[i];
        if (atom.kind == SpeciesKind::Unknown || !atom.certain) {
            problem_ = "the element of atom " + std::to_string(i + 1) + " is not certain";
        }
        ++all_[static_cast<std::size_t>(atom.element)];
        ++nuclei_[static_cast<std::size_t>(atom.nuclear_charge())];
    }
    all_[0] = nuclei_[0] = 0;
    if (atoms_.empty()) {
        problem_ = "the job has no atoms of its own";
    }
}

bool AtomPopulation::count_range(std::string_view text, bool with_ghosts, ElementCounts& counts) {
    const std::optional<NumberRange> range = to_number_range(text, 1);
    const auto last = range ? std::min<std::int64_t>(range->last, std::ssize(atoms_)) : 0;
    for (std::int64_t number = range ? range->first : 1; number <= last && steps_ < most_steps; ++number, ++steps_) {
        const Species& atom = atoms_[static_cast<std::size_t>(number - 1)];
        ++counts[static_cast<std::size_t>(with_ghosts ? atom.element : atom.nuclear_charge())];
        covered_[static_cast<std::size_t>(number - 1)] = true;
    }
    return range && steps_ < most_steps;
}

bool AtomPopulation::count(const SectionReading& section, const SectionLine& line, bool with_ghosts, ElementCounts& counts) {
    counts = {};
    for (const SectionToken& token : section.tokens_of(line)) {
        std::string_view text = section[token.span];
        text.remove_prefix(text.starts_with('-') ? 1 : 0);
        if (token.kind == TokenKind::Element && !equals_folded(text, "bq")) {
            const auto element = static_cast<std::size_t>(atomic_number(text));
            counts[element] += (with_ghosts ? all_ : nuclei_)[element];
            covered_elements_[element] = true;
        } else if (token.kind != TokenKind::End &&
                   !(token.kind == TokenKind::Atoms && count_range(text, with_ghosts, counts))) {
            return false;
        }
    }
    counts[0] = 0;
    return true;
}

bool AtomPopulation::all_covered() const {
    for (std::size_t i = 0; i < atoms_.size(); ++i) {
        const auto element = static_cast<std::size_t>(atoms_[i].element);
        if (element != 0 && !covered_[i] && !covered_elements_[element]) {
            return false;
        }
    }
    return true;
}

}  // namespace quor::input::gaussian

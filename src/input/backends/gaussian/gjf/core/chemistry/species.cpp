// Tells what the name of an atom stands for.
#include <gjf/core/chemistry/species.hpp>

#include <gjf/core/chemistry/elements.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace quor::input::gaussian {
namespace {

struct SpecialName {
    std::string_view letters;
    SpeciesKind kind;
};

constexpr SpecialName special_names[] = {{"bq", SpeciesKind::Ghost},
                                         {"tv", SpeciesKind::TranslationVector},
                                         {"x", SpeciesKind::Dummy},
                                         {"xx", SpeciesKind::Dummy}};

// Elements whose symbols in capitals are names of carbon, hydrogen and nitrogen atoms in amino acids too.
constexpr std::string_view protein_names[] = {"CA", "CD", "CE", "HE", "HG", "ND", "NE"};

bool is_protein_name(std::string_view letters) noexcept {
    return std::find(std::begin(protein_names), std::end(protein_names), letters) != std::end(protein_names);
}

Species species_of_number(std::int32_t number) noexcept {
    if (number == 0) {
        return {SpeciesKind::Ghost, 0, true};
    }
    return *element_symbol(number) == 0 ? Species{} : Species{SpeciesKind::Atom, number, true};
}

}  // namespace

Species species_of_symbol(std::string_view symbol) noexcept {
    const int number = atomic_number(symbol);
    if (number != 0) {
        return {SpeciesKind::Atom, number, true};
    }
    const auto special = std::find_if(std::begin(special_names), std::end(special_names),
                                      [&](const SpecialName& name) { return equals_folded(symbol, name.letters); });
    return special == std::end(special_names) ? Species{} : Species{special->kind, 0, true};
}

Species species_of_name(std::string_view name) noexcept {
    if (!name.empty() && !is_letter(name.front()) && name.front() != '-' && name.front() != '+') {
        if (const std::optional<std::int32_t> number = to_int32(name)) {
            return species_of_number(*number);
        }
    }
    if (name == "-") {
        return {SpeciesKind::Dummy, 0, true};
    }
    const auto end = std::find_if_not(name.begin(), name.end(), is_letter);
    const std::string_view letters = name.substr(0, static_cast<std::size_t>(end - name.begin()));
    if (Species whole = species_of_symbol(letters); whole.kind != SpeciesKind::Unknown) {
        whole.certain = !is_protein_name(letters);
        return whole;
    }
    if (const int two = atomic_number(letters.substr(0, 2)); two != 0) {
        return {SpeciesKind::Atom, two, false};
    }
    // Deuterium and tritium under names of their own: what Gaussian makes of them is not sure.
    if (equals_folded(letters, "d") || equals_folded(letters, "t")) {
        return {SpeciesKind::Unknown, 1, false};
    }
    const int one = letters.empty() ? 0 : atomic_number(letters.substr(0, 1));
    return one == 0 ? Species{} : Species{SpeciesKind::Atom, one, false};
}

std::string_view symbol_of(const Species& species) noexcept {
    switch (species.kind) {
        case SpeciesKind::Atom:
            return element_symbol(species.element);
        case SpeciesKind::Ghost:
            return "Bq";
        case SpeciesKind::Dummy:
            return "X";
        case SpeciesKind::TranslationVector:
            return "Tv";
        default:
            return {};
    }
}

}  // namespace quor::input::gaussian

// What an atom label stands for, and its parameters.
#include <gjf/core/job/atom.hpp>

#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {

const std::string* find_parameter(const AtomInfo& info, std::string_view lower) {
    const auto found = std::find_if(info.params.begin(), info.params.end(),
                                    [&](const auto& entry) { return equals_folded(entry.first, lower); });
    return found == info.params.end() ? nullptr : &found->second;
}

Species species_of(const AtomInfo& info) {
    Species species = species_of_name(trim_view(info.element));
    if (info.mm_type && equals_folded(*info.mm_type, "bq")) {
        return {SpeciesKind::Ghost, species.element, true};
    }
    if (info.element.empty()) {
        const double number = info.mm_charge.value_or(0.0);
        const SpeciesKind kind = number == 1.0   ? SpeciesKind::Dummy
                                 : number == 2.0 ? SpeciesKind::TranslationVector
                                                 : SpeciesKind::Unknown;
        return {kind, 0, kind != SpeciesKind::Unknown};
    }
    species.certain = species.certain && find_parameter(info, "znuc") == nullptr;
    return species;
}

}  // namespace quor::input::gaussian

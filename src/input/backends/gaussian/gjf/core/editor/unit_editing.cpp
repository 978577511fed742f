// Changes what the numbers and labels of atoms are measured by: the unit of length, and elements.
#include <gjf/core/editor/gjf_editor.hpp>

#include <gjf/core/chemistry/elements.hpp>
#include <gjf/core/chemistry/space.hpp>
#include <gjf/core/chemistry/species.hpp>
#include <gjf/core/job/positions.hpp>

#include <algorithm>
#include <iterator>
#include <numeric>

namespace quor::input::gaussian {
namespace {

// Tells whether a section holds lengths in the unit of the molecule.
bool follows_the_unit(const ExtraInputSection& section) {
    using Kind = ExtraInputSectionKind;
    constexpr Kind kinds[] = {Kind::Unknown, Kind::SecondTitleAndMolecule, Kind::ThirdTitleAndTSStructure,
                              Kind::CoordinateModifications, Kind::BackgroundCharge};
    return std::find(std::begin(kinds), std::end(kinds), section.kind) != std::end(kinds);
}

// Says what of a job would not follow another unit; null for nothing.
const char* fixed_lengths(const GJFData& job) {
    const std::vector<AtomCoord>& atoms = job.geom.atoms;
    if (job.geom.format == GeometryFormat::ZMatrix || !job.geom.cartesian_variables.empty()) {
        return "The unit of lengths cannot be changed: rows and variables hold angles too";
    }
    const auto is_number = [](const CoordinateValue& value) { return value.text.empty() || value.value.has_value(); };
    const auto is_variable = [&](const AtomCoord& atom) {
        return !is_number(atom.x_ref) || !is_number(atom.y_ref) || !is_number(atom.z_ref);
    };
    if (atoms.empty() || std::any_of(atoms.begin(), atoms.end(), is_variable)) {
        return "The unit of lengths cannot be changed: not all coordinates are numbers";
    }
    return std::any_of(job.extra_inputs.begin(), job.extra_inputs.end(), follows_the_unit)
               ? "The unit of lengths cannot be changed: a section may hold lengths too"
               : nullptr;
}

}  // namespace

void GJFEditor::set_length_unit(bool in_bohr) {
    ensure_parsed_keywords();
    const bool is_bohr = length_unit(data_) != 1.0;
    if (is_bohr == in_bohr) {
        return;
    }
    if (const char* const reason = fixed_lengths(data_)) {
        throw GJFParseException(reason);
    }
    // What may fail comes first.
    GJFEditor changed = *this;
    changed.remove_keyword_option("units", {in_bohr ? "ang" : "au", std::nullopt});
    if (in_bohr) {
        changed.ensure_keyword_option("units", {"au", std::nullopt});
    } else {
        const std::vector<KeywordInfo> left = changed.get_keywords_by_name("units");
        if (!left.empty() && left.front().options.empty()) {
            changed.remove_keyword_by_name("units");
        }
    }
    std::vector<std::size_t> all(data_.geom.atoms.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    changed.scale_coordinates(all, in_bohr ? 1.0 / bohr : bohr);
    *this = std::move(changed);
}

void GJFEditor::set_element(std::size_t index, const std::string& symbol) {
    validate_atom_index(index);
    if (atomic_number(symbol) == 0) {
        throw GJFParseException("'" + symbol + "' is no element");
    }
    AtomInfo info = data_.geom.atoms[index].info;
    const auto holds_for_element = [&](const auto& entry) {
        constexpr const char* names[] = {"iso", "spin", "zeff", "qmom", "gfac", "znuc", "nmagm"};
        return std::any_of(std::begin(names), std::end(names), [&](const char* name) {
            const std::string* found = find_parameter(info, name);
            return found == &entry.second;
        });
    };
    if (info.mm_type || std::any_of(info.params.begin(), info.params.end(), holds_for_element)) {
        throw GJFParseException("The label of atom " + std::to_string(index + 1) +
                                " says more of its element than the symbol: '" + info.element + "'");
    }
    info.element = symbol;
    atom_to_change(index).info = std::move(info);
}

}  // namespace quor::input::gaussian

// Times the floor, after making sure that it holds the very fields that the library reads of the same text.
#include "floor.hpp"
#include "inputs.hpp"
#include "measuring.hpp"

#include <gjf/gjf.hpp>

namespace quor::benchmarks {
namespace {

using namespace quor::input::gaussian;

// The first place where an atom of the library and the arrays differ is named by the field.
template <typename Text>
const char* difference(const PlainArrays<Text>& arrays, std::size_t i, const AtomCoord& atom, const std::string& line) {
    const bool labelled = !arrays.types.empty();
    const bool same_label = labelled ? atom.info.mm_type == arrays.types[i] && atom.info.mm_charge == arrays.mm_charges[i]
                                     : !atom.info.mm_type && !atom.info.mm_charge;
    const bool same_layer = labelled ? atom.layer == arrays.layers[i] : !atom.layer;
    const bool same_texts =
        atom.x_ref.text == arrays.x_texts[i] && atom.y_ref.text == arrays.y_texts[i] && atom.z_ref.text == arrays.z_texts[i];
    const bool same_numbers = atom.x == arrays.x[i] && atom.y == arrays.y[i] && atom.z == arrays.z[i];
    return atom.info.element != arrays.elements[i]                          ? "elements differ"
           : !same_label                                                    ? "labels differ"
           : atom.freeze.value_or(no_freeze_code) != arrays.freeze_codes[i] ? "freeze codes differ"
           : !same_texts                                                    ? "coordinate texts differ"
           : !same_numbers                                                  ? "coordinates differ"
           : !same_layer                                                    ? "layers differ"
           : line != arrays.lines[i]                                        ? "lines differ"
                                                                            : nullptr;
}

template <typename Text>
const char* bond_difference(const PlainArrays<Text>& arrays, const ConnectivitySection* section) {
    const std::vector<Bond> none;
    const std::vector<Bond>& bonds = section == nullptr ? none : section->bonds;
    if (bonds.size() != arrays.bond_orders.size()) {
        return "numbers of bonds differ";
    }
    for (std::size_t i = 0; i < bonds.size(); ++i) {
        if (bonds[i].atom1 != arrays.bond_atoms1[i] || bonds[i].atom2 != arrays.bond_atoms2[i] ||
            bonds[i].order != arrays.bond_orders[i]) {
            return "bonds differ";
        }
    }
    return nullptr;
}

template <typename Text>
const char* difference(const PlainArrays<Text>& arrays, const GJFData& job) {
    const std::vector<AtomCoord>& atoms = job.geom.atoms;
    if (atoms.empty() || atoms.size() != arrays.lines.size() || job.geom.molecule_lines.size() != atoms.size()) {
        return "numbers of atoms differ";
    }
    for (std::size_t i = 0; i < atoms.size(); ++i) {
        if (const char* found = difference(arrays, i, atoms[i], job.geom.molecule_lines[i])) {
            return found;
        }
    }
    return bond_difference(arrays, job.connectivity());
}

template <typename Text>
void walk(::benchmark::State& state, const std::string& name, PlainArrays<Text> (*walker)(std::string_view)) {
    const std::string& text = input_text(name);
    if (const char* found = difference(walker(text), GJFParser::parse_string(text))) {
        state.SkipWithError(found);
        return;
    }
    measure(state, {text.size(), atoms_of(text)}, [&] { ::benchmark::DoNotOptimize(walker(text)); });
}

BENCHMARK_CAPTURE(walk, floor, "large.gjf", walk_cartesian<std::string>)
    ->Name("floor/large")
    ->Unit(::benchmark::kMicrosecond);
BENCHMARK_CAPTURE(walk, floor, "oniom_large.gjf", walk_oniom<std::string>)
    ->Name("floor/oniom_large")
    ->Unit(::benchmark::kMicrosecond);
BENCHMARK_CAPTURE(walk, views, "large.gjf", walk_cartesian<std::string_view>)
    ->Name("floor_of_views/large")
    ->Unit(::benchmark::kMicrosecond);
BENCHMARK_CAPTURE(walk, views, "oniom_large.gjf", walk_oniom<std::string_view>)
    ->Name("floor_of_views/oniom_large")
    ->Unit(::benchmark::kMicrosecond);

}  // namespace
}  // namespace quor::benchmarks

// A job as plain Python values and back, for pickling. All of the model but the interpretation of the route, which is made
// again when it is asked for. Jobs of one file share its text, in a pickle too.
#include "bindings.hpp"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace quor_python {
namespace {

using namespace quor::input::gaussian;

// The layout of the state below; another one is refused.
constexpr int state_version = 3;

using OptionalText = std::optional<Text>;
using Variable = std::pair<Text, Text>;
using Label = std::tuple<Text, OptionalText, std::optional<double>, std::vector<Variable>>;
using Coordinate = std::tuple<Text, std::optional<double>, double>;
using Atom = std::tuple<Label, std::optional<std::int32_t>, Coordinate, Coordinate, Coordinate, OptionalText>;
using Reference = std::optional<std::pair<std::int32_t, Text>>;
using Row = std::tuple<Label, Reference, Reference, Reference>;
using BondState = std::tuple<std::uint64_t, std::uint64_t, double>;
using Section = std::tuple<std::int32_t, OptionalText, std::vector<BondState>>;
using Control = std::tuple<OptionalText, OptionalText, OptionalText, OptionalText, std::optional<std::int32_t>, OptionalText,
                           std::vector<Text>, std::vector<Text>, std::vector<Text>>;
using Pairs = std::vector<std::pair<std::int32_t, std::int32_t>>;
using Molecule = std::tuple<std::int32_t, std::int32_t, Pairs, std::vector<Atom>, std::int32_t, std::vector<Text>,
                            std::vector<Row>, std::vector<Variable>, std::vector<Variable>, std::vector<Variable>>;
using Origins = std::vector<std::size_t>;
using Numbering = std::pair<std::optional<Origins>, bool>;
using State = std::tuple<int, Source, std::size_t, Origins, Control, OptionalText, Text, Molecule, std::vector<Section>,
                         std::vector<Numbering>>;

// --- To values

OptionalText out(const std::optional<std::string>& text) { return text ? OptionalText(Text{*text}) : std::nullopt; }

std::vector<Text> out(const std::vector<std::string>& texts) {
    std::vector<Text> list;
    list.reserve(texts.size());
    for (const std::string& text : texts) {
        list.push_back({text});
    }
    return list;
}

std::vector<Variable> out(const std::vector<ZMatrixVariable>& variables) {
    std::vector<Variable> list;
    list.reserve(variables.size());
    for (const ZMatrixVariable& variable : variables) {
        list.emplace_back(Text{variable.name}, Text{variable.value});
    }
    return list;
}

Label out(const AtomInfo& info) {
    std::vector<Variable> params;
    for (const auto& [key, value] : info.params) {
        params.emplace_back(Text{key}, Text{value});
    }
    return {Text{info.element}, out(info.mm_type), info.mm_charge, std::move(params)};
}

Atom out(const AtomCoord& atom) {
    const auto coordinate = [](const CoordinateValue& written, double number) {
        return Coordinate{Text{written.text}, written.value, number};
    };
    return {out(atom.info),
            atom.freeze,
            coordinate(atom.x_ref, atom.x),
            coordinate(atom.y_ref, atom.y),
            coordinate(atom.z_ref, atom.z),
            out(atom.layer)};
}

Reference out(const std::optional<ZMatrixReference>& reference) {
    return reference ? Reference({reference->atom, Text{reference->value}}) : std::nullopt;
}

Row out(const ZMatrixEntry& entry) { return {out(entry.info), out(entry.bond), out(entry.angle), out(entry.dihedral)}; }

Section out(const ExtraInputSection& section) {
    std::vector<BondState> bonds;
    const ConnectivitySection* connectivity = section.connectivity();
    if (connectivity == nullptr) {
        return {static_cast<std::int32_t>(section.kind), Text{section.text()}, bonds};
    }
    for (const Bond& bond : connectivity->bonds) {
        bonds.emplace_back(bond.atom1, bond.atom2, bond.order);
    }
    return {static_cast<std::int32_t>(section.kind), std::nullopt, std::move(bonds)};
}

Numbering out(const GJFEditor::SectionNumbering& numbering) {
    return {numbering.origins == nullptr ? std::nullopt : std::optional<Origins>(*numbering.origins), numbering.mixed};
}

template <class Value, class List>
std::vector<Value> out_all(const List& list) {
    std::vector<Value> values;
    values.reserve(list.size());
    for (const auto& entry : list) {
        values.push_back(out(entry));
    }
    return values;
}

Control out(const ControlSection& control) {
    return {out(control.chk),
            out(control.oldchk),
            out(control.rwf),
            out(control.mem),
            control.nproc,
            out(control.cpu),
            out(control.other_link0_lines),
            out(control.route_keywords),
            out(control.raw_lines)};
}

Molecule out(const GeomSection& geom) {
    Pairs pairs;
    for (const ChargeSpinPair& pair : geom.additional_pairs) {
        pairs.emplace_back(pair.charge, pair.multiplicity);
    }
    return {geom.charge,
            geom.multiplicity,
            std::move(pairs),
            out_all<Atom>(geom.atoms),
            static_cast<std::int32_t>(geom.format),
            out(geom.molecule_lines),
            out_all<Row>(geom.zmatrix_entries),
            out(geom.variables),
            out(geom.constants),
            out(geom.cartesian_variables)};
}

State state_of(const JobHandle& job) {
    const GJFData& data = job.editor.get_data();
    return {state_version,
            job.source,
            job.index,
            job.editor.atom_origins(),
            out(data.control),
            out(data.extra_overlays),
            Text{data.title},
            out(data.geom),
            out_all<Section>(data.extra_inputs),
            out_all<Numbering>(job.editor.section_numberings())};
}

// --- From values

std::optional<std::string> in(OptionalText text) {
    return text ? std::optional<std::string>(std::move(text->value)) : std::nullopt;
}

std::vector<ZMatrixVariable> in(std::vector<Variable>&& variables) {
    std::vector<ZMatrixVariable> list;
    list.reserve(variables.size());
    for (auto& [name, value] : variables) {
        list.push_back({std::move(name.value), std::move(value.value)});
    }
    return list;
}

AtomInfo in(Label&& label) {
    auto& [element, type, charge, params] = label;
    AtomInfo info;
    info.element = std::move(element.value);
    info.mm_type = in(std::move(type));
    info.mm_charge = charge;
    for (auto& [key, value] : params) {
        info.params[key.value] = std::move(value.value);
    }
    return info;
}

void in(Coordinate&& state, CoordinateValue& written, double& number) {
    written = {std::move(std::get<0>(state).value), std::get<1>(state)};
    number = std::get<2>(state);
}

AtomCoord in(Atom&& state) {
    auto& [label, freeze, x, y, z, layer] = state;
    AtomCoord atom;
    atom.info = in(std::move(label));
    atom.freeze = freeze;
    in(std::move(x), atom.x_ref, atom.x);
    in(std::move(y), atom.y_ref, atom.y);
    in(std::move(z), atom.z_ref, atom.z);
    atom.layer = in(std::move(layer));
    return atom;
}

std::optional<ZMatrixReference> in(Reference reference) {
    return reference ? std::optional<ZMatrixReference>({reference->first, std::move(reference->second.value)})
                     : std::nullopt;
}

ZMatrixEntry in(Row row) {
    ZMatrixEntry entry;
    entry.info = in(std::move(std::get<0>(row)));
    entry.bond = in(std::move(std::get<1>(row)));
    entry.angle = in(std::move(std::get<2>(row)));
    entry.dihedral = in(std::move(std::get<3>(row)));
    return entry;
}

ExtraInputSection in(Section&& state) {
    auto& [kind, text, bonds] = state;
    ExtraInputSection section;
    section.kind = static_cast<ExtraInputSectionKind>(kind);
    if (text) {
        section.content = std::move(text->value);
        return section;
    }
    ConnectivitySection connectivity;
    for (const auto& [a, b, order] : bonds) {
        connectivity.bonds.push_back({a, b, order});
    }
    section.content = std::move(connectivity);
    return section;
}

GJFEditor::SectionNumbering in(Numbering&& state) {
    auto& [origins, mixed] = state;
    return {origins ? std::make_shared<const Origins>(std::move(*origins)) : nullptr, mixed};
}

template <class Value, class List>
std::vector<Value> in_all(List list) {
    std::vector<Value> values;
    values.reserve(list.size());
    for (auto& entry : list) {
        values.push_back(in(std::move(entry)));
    }
    return values;
}

ControlSection in(Control&& state) {
    auto& [chk, oldchk, rwf, mem, nproc, cpu, others, words, lines] = state;
    ControlSection control;
    control.chk = in(std::move(chk));
    control.oldchk = in(std::move(oldchk));
    control.rwf = in(std::move(rwf));
    control.mem = in(std::move(mem));
    control.nproc = nproc;
    control.cpu = in(std::move(cpu));
    control.other_link0_lines = to_strings(std::move(others));
    control.route_keywords = to_strings(std::move(words));
    control.raw_lines = to_strings(std::move(lines));
    return control;
}

GeomSection in(Molecule&& state) {
    auto& [charge, multiplicity, pairs, atoms, format, lines, rows, variables, constants, cartesian] = state;
    GeomSection geom;
    geom.charge = charge;
    geom.multiplicity = multiplicity;
    for (const auto& [pair_charge, pair_multiplicity] : pairs) {
        geom.additional_pairs.push_back({pair_charge, pair_multiplicity});
    }
    geom.atoms = in_all<AtomCoord>(std::move(atoms));
    geom.format = static_cast<GeometryFormat>(format);
    geom.molecule_lines = to_strings(std::move(lines));
    geom.zmatrix_entries = in_all<ZMatrixEntry>(std::move(rows));
    geom.variables = in(std::move(variables));
    geom.constants = in(std::move(constants));
    geom.cartesian_variables = in(std::move(cartesian));
    return geom;
}

// pybind11 hands a state over by value.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
JobHandle job_from(State state) {
    auto& [version, source, index, origins, control, overlays, title, molecule, sections, numberings] = state;
    if (version != state_version) {
        throw py::value_error("this job was pickled by another version of quor_gjf");
    }
    GJFData data;
    data.control = in(std::move(control));
    data.extra_overlays = in(std::move(overlays));
    data.title = std::move(title.value);
    data.geom = in(std::move(molecule));
    data.extra_inputs = in_all<ExtraInputSection>(std::move(sections));
    if (source != nullptr && index >= std::max<std::size_t>(source->pieces.size(), 1)) {
        throw py::value_error("this pickle is damaged");
    }
    JobHandle job;
    job.editor.set_data(std::move(data), std::move(origins), in_all<GJFEditor::SectionNumbering>(std::move(numberings)));
    job.source = std::move(source);
    job.index = index;
    return job;
}

}  // namespace

void bind_state(JobClass& job) {
    job.def(py::pickle(&state_of, &job_from));
    job.def_property_readonly("source", [](const JobHandle& self) { return self.source; });
    job.def_readonly("index", &JobHandle::index);
    job.def("readable", &JobHandle::readable);
    job.def("refuse_unreadable", &JobHandle::refuse_unreadable);
}

}  // namespace quor_python

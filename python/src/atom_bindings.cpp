// Atoms, labels, positions and bonds of one job.
#include "bindings.hpp"

#include <gjf/core/job/positions.hpp>
#include <gjf/core/selection/selection.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace quor_python {
namespace {

using namespace quor::input::gaussian;
using Indices = std::vector<std::size_t>;
using Positions = py::array_t<double, py::array::c_style | py::array::forcecast>;

constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

const std::vector<AtomCoord>& atoms_of(const JobHandle& job) { return job.editor.get_data().geom.atoms; }

const AtomCoord& atom_at(const JobHandle& job, std::size_t index) {
    if (index >= atoms_of(job).size()) {
        throw py::index_error("there is no atom " + std::to_string(index));
    }
    return atoms_of(job)[index];
}

// Returns indices of which all have an atom; editors pass over others.
const Indices& existing(const JobHandle& job, const Indices& indices) {
    if (!indices.empty() && job.editor.get_data().geom.format == GeometryFormat::ZMatrix) {
        throw py::value_error("the molecule is a Z-matrix: its atoms cannot be edited");
    }
    for (const std::size_t index : indices) {
        atom_at(job, index);
    }
    return indices;
}

// --- Positions

bool is_symbolic(const CoordinateValue& coordinate) { return !coordinate.text.empty() && !coordinate.value; }

bool is_symbolic_atom(const AtomCoord& atom) {
    return is_symbolic(atom.x_ref) || is_symbolic(atom.y_ref) || is_symbolic(atom.z_ref);
}

bool has_symbols(const GeomSection& geom) {
    return geom.format == GeometryFormat::ZMatrix || std::any_of(geom.atoms.begin(), geom.atoms.end(), is_symbolic_atom);
}

Positions array_of(std::size_t count) { return Positions({static_cast<py::ssize_t>(count), py::ssize_t{3}}); }

// The positions that the library finds, in a unit given in ångström; not a number where there is none.
Positions found_positions(const GJFData& data, double unit) {
    const std::vector<AtomPosition> found = positions(data);
    Positions array = array_of(found.size());
    double* out = array.mutable_data();
    for (const AtomPosition& atom : found) {
        for (std::size_t i = 0; i < 3; ++i) {
            *out++ = atom.position ? (*atom.position)[i] / unit : not_a_number;
        }
    }
    return array;
}

// In the job's unit; numbers as they are written, without the detour over ångström.
Positions positions_of(const JobHandle& job) {
    const GJFData& data = job.editor.get_data();
    if (has_symbols(data.geom)) {
        return found_positions(data, length_unit(data));
    }
    Positions array = array_of(data.geom.atoms.size());
    double* out = array.mutable_data();
    for (const AtomCoord& atom : data.geom.atoms) {
        *out++ = atom.x;
        *out++ = atom.y;
        *out++ = atom.z;
    }
    return array;
}

py::tuple position_of(const JobHandle& job, std::size_t index) {
    const AtomCoord& atom = atom_at(job, index);
    if (!is_symbolic_atom(atom)) {
        return py::make_tuple(atom.x, atom.y, atom.z);
    }
    const GJFData& data = job.editor.get_data();
    const std::optional<Position> position = positions(data)[index].position;
    const double unit = length_unit(data);
    return position ? py::make_tuple((*position)[0] / unit, (*position)[1] / unit, (*position)[2] / unit)
                    : py::make_tuple(not_a_number, not_a_number, not_a_number);
}

// Lists the atoms (from 0) that have no position, each with the reason.
std::vector<std::pair<std::size_t, std::string>> lost_atoms_of(const JobHandle& job) {
    std::vector<std::pair<std::size_t, std::string>> lost;
    const std::vector<AtomPosition> found = positions(job.editor.get_data());
    for (std::size_t i = 0; i < found.size(); ++i) {
        if (!found[i].position) {
            lost.emplace_back(i, position_fault_text(found[i], i + 1));
        }
    }
    return lost;
}

void set_positions(JobHandle& job, const Positions& positions) {
    const auto count = static_cast<py::ssize_t>(atoms_of(job).size());
    if (positions.ndim() != 2 || positions.shape(0) != count || positions.shape(1) != 3) {
        throw py::value_error("positions must have the shape (" + std::to_string(count) + ", 3)");
    }
    const double* in = positions.data();
    if (!std::all_of(in, in + 3 * count, [](double value) { return std::isfinite(value); })) {
        throw py::value_error("positions must be finite");
    }
    std::vector<std::array<double, 3>> rows(static_cast<std::size_t>(count));
    for (std::array<double, 3>& row : rows) {
        row = {in[0], in[1], in[2]};
        in += 3;
    }
    job.editor.set_positions(rows);
}

void bind_positions(JobClass& job) {
    job.def_property("positions", &positions_of, &set_positions);
    job.def("position", &position_of);
    job.def("positions_in_angstrom", [](const JobHandle& self) { return found_positions(self.editor.get_data(), 1); });
    job.def("lost_atoms", &lost_atoms_of);
    job.def("set_length_unit", [](JobHandle& self, bool in_bohr) { self.editor.set_length_unit(in_bohr); });
    job.def("set_element",
            [](JobHandle& self, std::size_t index, const Text& symbol) { self.editor.set_element(index, symbol.value); });
    job.def("translate", [](JobHandle& self, const Indices& indices, double x, double y, double z) {
        self.editor.translate_atoms(existing(self, indices), x, y, z);
    });
    job.def("scale", [](JobHandle& self, const Indices& indices, double factor) {
        self.editor.scale_coordinates(existing(self, indices), factor);
    });
    job.def("rotate", [](JobHandle& self, const Indices& indices, double a, double b, double c) {
        self.editor.rotate_atoms(existing(self, indices), a, b, c);
    });
    job.def("is_symbolic", [](const JobHandle& self) {
        return std::any_of(atoms_of(self).begin(), atoms_of(self).end(), is_symbolic_atom);
    });
    job.def("use_numeric_coordinates", [](JobHandle& self) { self.editor.use_numeric_coordinates(); });
    job.def("atoms_with_touching_coordinates",
            [](const JobHandle& self) { return self.editor.atoms_with_touching_coordinates(); });
}

// --- The list of atoms

// Lists what `name` tells of each atom, of a Z-matrix too.
template <typename Name>
py::list names_of(const JobHandle& job, Name name) {
    const GeomSection& geom = job.editor.get_data().geom;
    py::list names;
    for (const AtomCoord& atom : geom.atoms) {
        names.append(to_python(name(atom.info)));
    }
    for (const ZMatrixEntry& entry : geom.zmatrix_entries) {
        names.append(to_python(name(entry.info)));
    }
    return names;
}

void bind_atom_list(JobClass& job) {
    job.def("atom_count", [](const JobHandle& self) { return atoms_of(self).size(); });
    job.def("is_zmatrix",
            [](const JobHandle& self) { return self.editor.get_data().geom.format == GeometryFormat::ZMatrix; });
    job.def("elements",
            [](const JobHandle& self) { return names_of(self, [](const AtomInfo& info) { return info.element; }); });
    job.def("symbols", [](const JobHandle& self) { return names_of(self, &symbol_or_name); });
    job.def("select", [](const JobHandle& self, const Text& text) { return select(self.editor.get_data(), text.value); });
    job.def("atom", [](const JobHandle& self, std::size_t index) { return AtomCoord(atom_at(self, index)); });
    job.def("atom_values", [](const JobHandle& self) { return atoms_of(self); });
    job.def("replace_atom",
            [](JobHandle& self, std::size_t index, const AtomCoord& atom) { self.editor.replace_atom(index, atom); });
    job.def("add_atom",
            [](JobHandle& self, const AtomCoord& atom, const std::vector<std::pair<std::size_t, double>>& bonds) {
                self.editor.add_atom_with_connectivity(atom, bonds);
            });
    job.def("remove_atoms",
            [](JobHandle& self, const Indices& indices) { self.editor.remove_atoms(existing(self, indices)); });
    job.def("move_atom", [](JobHandle& self, std::size_t from, std::size_t to) { self.editor.move_atom(from, to); });
    job.def("clear_atoms", [](JobHandle& self) { self.editor.clear_atoms(); });
    job.def("reorder_atoms",
            [](JobHandle& self, const Indices& order) { self.editor.reorder_atoms_with_connectivity(order); });
    job.def("move_atoms_to_end",
            [](JobHandle& self, const Indices& indices) { self.editor.move_atoms_to_end(existing(self, indices)); });
    job.def("move_atoms_to_beginning",
            [](JobHandle& self, const Indices& indices) { self.editor.move_atoms_to_beginning(existing(self, indices)); });
    job.def("format_index_ranges",
            [](const JobHandle& self, const Indices& indices) { return self.editor.format_index_ranges(indices); });
}

py::list zmatrix_of(const JobHandle& job) {
    py::list rows;
    const auto reference = [](const std::optional<ZMatrixReference>& entry) -> py::object {
        return entry ? py::object(py::make_tuple(entry->atom, to_python(entry->value))) : py::object(py::none());
    };
    for (const ZMatrixEntry& entry : job.editor.get_data().geom.zmatrix_entries) {
        rows.append(py::make_tuple(to_python(entry.info.element), reference(entry.bond), reference(entry.angle),
                                   reference(entry.dihedral)));
    }
    return rows;
}

py::dict variables_dict(const std::vector<ZMatrixVariable>& variables) {
    py::dict dict;
    for (const ZMatrixVariable& variable : variables) {
        dict[to_python(variable.name)] = to_python(variable.value);
    }
    return dict;
}

void bind_molecule(JobClass& job) {
    job.def("zmatrix", &zmatrix_of);
    job.def("variables", [](const JobHandle& self) {
        const GeomSection& geom = self.editor.get_data().geom;
        return variables_dict(geom.format == GeometryFormat::ZMatrix ? geom.variables : geom.cartesian_variables);
    });
    job.def("constants", [](const JobHandle& self) { return variables_dict(self.editor.get_data().geom.constants); });
}

// --- Labels

void bind_labels(JobClass& job) {
    job.def("set_freeze", [](JobHandle& self, const Indices& indices, int code) {
        self.editor.set_freeze_by_index(existing(self, indices), code);
    });
    job.def("clear_freeze", [](JobHandle& self, const Indices& indices) {
        for (const std::size_t index : existing(self, indices)) {
            AtomCoord atom = atom_at(self, index);
            atom.freeze.reset();
            self.editor.replace_atom(index, atom);
        }
    });
    job.def("set_layer", [](JobHandle& self, const Indices& indices, const Text& layer) {
        self.editor.set_oniom_layer_by_index(existing(self, indices), layer.value);
    });
    job.def("ensure_layers", [](JobHandle& self) { self.editor.ensure_oniom_completeness(); });
    job.def("layer_counts", [](const JobHandle& self) {
        py::dict counts;
        for (const auto& [layer, count] : self.editor.get_oniom_layer_counts()) {
            counts[to_python(layer)] = count;
        }
        return counts;
    });
    job.def("set_fragment", [](JobHandle& self, const Indices& indices, const Text& fragment) {
        self.editor.set_fragment_by_index(existing(self, indices), fragment.value);
    });
    job.def("fragment",
            [](const JobHandle& self, std::size_t index) { return to_python_or_none(self.editor.get_fragment(index)); });
    job.def("set_mm_type",
            [](JobHandle& self, std::size_t index, const Text& type) { self.editor.set_atom_type(index, type.value); });
    job.def("set_mm_charge",
            [](JobHandle& self, std::size_t index, double charge) { self.editor.set_atom_mm_charge(index, charge); });
    job.def("clear_mm_charge", [](JobHandle& self, std::size_t index) { self.editor.clear_atom_mm_charge(index); });
}

// --- Bonds

using BondTuple = std::tuple<std::uint64_t, std::uint64_t, double>;

void bind_bonds(JobClass& job) {
    job.def("bonds", [](const JobHandle& self) {
        std::vector<BondTuple> bonds;
        for (const Bond& bond : self.editor.get_all_bonds()) {
            bonds.emplace_back(bond.atom1, bond.atom2, bond.order);
        }
        return bonds;
    });
    job.def("bond_count", [](const JobHandle& self) { return self.editor.get_bond_count(); });
    job.def("bond_order",
            [](const JobHandle& self, std::size_t a, std::size_t b) { return self.editor.get_bond_order(a, b); });
    job.def("set_bond_order",
            [](JobHandle& self, std::size_t a, std::size_t b, double order) { self.editor.set_bond_order(a, b, order); });
    job.def("remove_bond", [](JobHandle& self, std::size_t a, std::size_t b) { self.editor.remove_bond(a, b); });
    job.def("neighbours", [](const JobHandle& self, std::size_t index) { return self.editor.get_connected_atoms(index); });
    job.def("clear_bonds", [](JobHandle& self) { self.editor.clear_connectivity(); });
}

}  // namespace

void bind_atoms(JobClass& job) {
    bind_positions(job);
    bind_atom_list(job);
    bind_molecule(job);
    bind_labels(job);
    bind_bonds(job);
}

}  // namespace quor_python

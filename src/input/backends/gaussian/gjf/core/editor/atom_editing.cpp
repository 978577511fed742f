// Adds, removes, moves and transforms atoms, and renumbers bonds in step.
//
// Every operation checks first and builds what may fail aside, so that a refused or failing edit leaves the job as it was.
#include <gjf/core/editor/gjf_editor.hpp>

#include <core/memory/reserve_one_more.hpp>
#include <gjf/core/editor/bond_checks.hpp>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace quor::input::gaussian {
namespace {

using core::memory::reserve_one_more;

// Calls a function for each index that is in range, with its atom, and drops the atom's coordinate texts.
template <typename Transform>
void transform_atoms(std::vector<AtomCoord>& atoms, const std::vector<std::size_t>& indices, Transform transform) {
    for (const std::size_t index : indices) {
        if (index < atoms.size()) {
            AtomCoord& atom = atoms[index];
            transform(atom);
            atom.x_ref = CoordinateValue();
            atom.y_ref = CoordinateValue();
            atom.z_ref = CoordinateValue();
        }
    }
}

// Tells for each atom whether it is selected; throws for the lowest index out of range.
std::vector<bool> selection_of(const GJFEditor& editor, const std::vector<std::size_t>& indices) {
    const std::size_t count = editor.get_data().geom.atoms.size();
    std::optional<std::size_t> outside;
    for (const std::size_t index : indices) {
        if (index >= count && (!outside || index < *outside)) {
            outside = index;
        }
    }
    if (outside) {
        editor.validate_atom_index(*outside);
    }
    std::vector<bool> selected(count, false);
    for (const std::size_t index : indices) {
        selected[index] = true;
    }
    return selected;
}

// Lists the atoms of one selection state, then those of the other, each in its order.
std::vector<std::size_t> order_by_selection(const std::vector<bool>& selected, bool selected_first) {
    std::vector<std::size_t> order;
    order.reserve(selected.size());
    for (const bool wanted : {selected_first, !selected_first}) {
        for (std::size_t i = 0; i < selected.size(); ++i) {
            if (selected[i] == wanted) {
                order.push_back(i);
            }
        }
    }
    return order;
}

// Drops the elements that are gone, which takes no memory.
template <typename Element>
void drop_gone(std::vector<Element>& list, const std::vector<bool>& gone) noexcept {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (gone[i]) {
            continue;
        }
        if (kept < i) {
            list[kept] = std::move(list[i]);
        }
        ++kept;
    }
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(kept), list.end());
}

// Drops the bonds of atoms that are gone and renumbers the rest, the smaller number first. `places` holds, for each atom and
// for the end of the list, how many atoms before it stay.
void drop_bonds_of_gone(std::vector<Bond>& bonds, const std::vector<bool>& gone, const std::vector<std::size_t>& places) {
    const auto is_gone = [&](std::uint64_t atom) { return atom < gone.size() && gone[static_cast<std::size_t>(atom)]; };
    const auto place = [&](std::uint64_t atom) {
        return atom < gone.size() ? places[static_cast<std::size_t>(atom)] : atom - gone.size() + places.back();
    };
    bonds.erase(std::remove_if(bonds.begin(), bonds.end(),
                               [&](const Bond& bond) { return is_gone(bond.atom1) || is_gone(bond.atom2); }),
                bonds.end());
    for (Bond& bond : bonds) {
        const auto [first, second] = std::minmax({place(bond.atom1), place(bond.atom2)});
        bond.atom1 = first;
        bond.atom2 = second;
    }
}

// Inverts an order into a map from old to new places; throws when it is no permutation.
std::vector<std::size_t> invert(const std::vector<std::size_t>& order) {
    constexpr auto unset = static_cast<std::size_t>(-1);
    std::vector<std::size_t> places(order.size(), unset);
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (order[i] >= order.size() || places[order[i]] != unset) {
            throw GJFParseException("Invalid reorder sequence");
        }
        places[order[i]] = i;
    }
    return places;
}

}  // namespace

const std::vector<std::size_t>& GJFEditor::atom_origins() const noexcept { return atom_origins_; }

bool GJFEditor::is_valid_atom_index(std::size_t index) const noexcept { return index < data_.geom.atoms.size(); }

void GJFEditor::validate_atom_index(std::size_t index) const {
    if (!is_valid_atom_index(index)) {
        throw GJFParseException("Invalid atom index: " + std::to_string(index));
    }
}

void GJFEditor::validate_connectivity_indices() const { check_bonds(data_); }

void GJFEditor::add_atom(const AtomCoord& atom) { add_atom_with_connectivity(atom, {}); }

void GJFEditor::add_atom_with_connectivity(const AtomCoord& atom, const std::vector<std::pair<std::size_t, double>>& bonds) {
    std::vector<AtomCoord>& atoms = data_.geom.atoms;
    const std::size_t index = atoms.size();
    for (const auto& [partner, order] : bonds) {
        if (partner >= index) {
            throw GJFParseException("New atom bond references an atom outside the existing geometry");
        }
        if (!std::isfinite(order)) {
            throw GJFParseException("Bond order must be finite");
        }
    }
    const bool has_bonds = std::any_of(bonds.begin(), bonds.end(), [](const auto& bond) { return bond.second > 0.0; });
    touch_atom_list();
    ConnectivitySection* const moved = bonds_of_the_list();
    reserve_one_more(atom_origins_);
    if (!has_bonds) {
        atoms.push_back(atom);
        atom_origins_.push_back(no_origin);
        if (moved != nullptr) {
            moved->insert_atom(index);
        }
        return;
    }
    const ConnectivitySection* old = std::as_const(data_).connectivity();
    ConnectivitySection connectivity = old != nullptr ? *old : ConnectivitySection();
    if (moved != nullptr) {
        connectivity.insert_atom(index);
    }
    for (const auto& [partner, order] : bonds) {
        if (order > 0.0) {
            connectivity.set_bond_order(partner, index, order);
        }
    }
    AtomCoord copy = atom;
    reserve_one_more(atoms);
    ensure_connectivity_section().bonds.swap(connectivity.bonds);
    atoms.push_back(std::move(copy));
    atom_origins_.push_back(no_origin);
}

void GJFEditor::remove_atom(std::size_t index) {
    validate_atom_index(index);
    touch_atom_list();
    touch_atom(index);
    ConnectivitySection* const connectivity = bonds_of_the_list();
    data_.geom.atoms.erase(data_.geom.atoms.begin() + static_cast<std::ptrdiff_t>(index));
    atom_origins_.erase(atom_origins_.begin() + static_cast<std::ptrdiff_t>(index));
    if (connectivity != nullptr) {
        connectivity->remove_atom(index);
    }
}

void GJFEditor::remove_atom_with_connectivity(std::size_t index) { remove_atom(index); }

void GJFEditor::remove_atoms(const std::vector<std::size_t>& indices) {
    const std::vector<bool> gone = selection_of(*this, indices);
    std::vector<std::size_t> places(gone.size() + 1);
    for (std::size_t i = 0; i < gone.size(); ++i) {
        places[i + 1] = places[i] + (gone[i] ? 0 : 1);
    }
    touch_atom_list();
    touch_atoms(indices);
    ConnectivitySection* const connectivity = bonds_of_the_list();
    drop_gone(data_.geom.atoms, gone);
    drop_gone(atom_origins_, gone);
    if (connectivity != nullptr) {
        drop_bonds_of_gone(connectivity->bonds, gone, places);
    }
}

void GJFEditor::move_atom(std::size_t from, std::size_t to) {
    validate_atom_index(from);
    validate_atom_index(to);
    const auto move = [from, to](auto& list) {
        const auto at = [&list](std::size_t i) { return list.begin() + static_cast<std::ptrdiff_t>(i); };
        if (from < to) {
            std::rotate(at(from), at(from + 1), at(to + 1));
        } else {
            std::rotate(at(to), at(from), at(from + 1));
        }
    };
    touch_atom_list();
    ConnectivitySection* const connectivity = bonds_of_the_list();
    move(data_.geom.atoms);
    move(atom_origins_);
    if (connectivity != nullptr) {
        connectivity->move_atom(from, to);
    }
}

void GJFEditor::move_atom_with_connectivity(std::size_t from, std::size_t to) { move_atom(from, to); }

void GJFEditor::replace_atom(std::size_t index, const AtomCoord& atom) {
    validate_atom_index(index);
    AtomCoord copy = atom;
    touch_atom(index);
    data_.geom.atoms[index] = std::move(copy);
}

void GJFEditor::clear_atoms() {
    touch_atom_list();
    touch_all_atoms();
    data_.geom.atoms.clear();
    atom_origins_.clear();
    clear_connectivity();
}

void GJFEditor::reorder_atoms_with_connectivity(const std::vector<std::size_t>& order) {
    std::vector<AtomCoord>& atoms = data_.geom.atoms;
    if (order.size() != atoms.size()) {
        throw GJFParseException("New order size must match atom count");
    }
    const std::vector<std::size_t> places = invert(order);
    touch_atom_list();
    ConnectivitySection* const connectivity = bonds_of_the_list();
    std::vector<AtomCoord> reordered(atoms.size());
    std::vector<std::size_t> origins(atoms.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        reordered[i] = std::move(atoms[order[i]]);
        origins[i] = atom_origins_[order[i]];
    }
    atoms = std::move(reordered);
    atom_origins_ = std::move(origins);
    if (connectivity != nullptr) {
        const auto place = [&places](std::uint64_t atom) {
            return atom < places.size() ? places[static_cast<std::size_t>(atom)] : atom;
        };
        for (Bond& bond : connectivity->bonds) {
            const std::uint64_t a = place(bond.atom1);
            const std::uint64_t b = place(bond.atom2);
            bond.atom1 = std::min(a, b);
            bond.atom2 = std::max(a, b);
        }
    }
}

void GJFEditor::move_atoms_to_end(const std::vector<std::size_t>& indices) {
    if (!indices.empty()) {
        reorder_atoms_with_connectivity(order_by_selection(selection_of(*this, indices), false));
    }
}

void GJFEditor::move_atoms_to_beginning(const std::vector<std::size_t>& indices) {
    if (!indices.empty()) {
        reorder_atoms_with_connectivity(order_by_selection(selection_of(*this, indices), true));
    }
}

void GJFEditor::set_positions(const std::vector<std::array<double, 3>>& positions) {
    std::vector<AtomCoord>& atoms = data_.geom.atoms;
    if (positions.size() != atoms.size()) {
        throw GJFParseException("There must be one position for each atom");
    }
    touch_all_atoms();
    touch(JobPart::Variables);
    for (std::size_t i = 0; i < atoms.size(); ++i) {
        AtomCoord& atom = atoms[i];
        atom.x = positions[i][0];
        atom.y = positions[i][1];
        atom.z = positions[i][2];
        atom.x_ref = atom.y_ref = atom.z_ref = CoordinateValue();
    }
    data_.geom.cartesian_variables.clear();
}

void GJFEditor::translate_atoms(const std::vector<std::size_t>& indices, double dx, double dy, double dz) {
    touch_atoms(indices);
    transform_atoms(data_.geom.atoms, indices, [=](AtomCoord& atom) {
        atom.x += dx;
        atom.y += dy;
        atom.z += dz;
    });
}

void GJFEditor::scale_coordinates(const std::vector<std::size_t>& indices, double factor) {
    touch_atoms(indices);
    transform_atoms(data_.geom.atoms, indices, [=](AtomCoord& atom) {
        atom.x *= factor;
        atom.y *= factor;
        atom.z *= factor;
    });
}

void GJFEditor::rotate_atoms(const std::vector<std::size_t>& indices, double a, double b, double c) {
    const double cos_a = std::cos(a);
    const double sin_a = std::sin(a);
    const double cos_b = std::cos(b);
    const double sin_b = std::sin(b);
    const double cos_c = std::cos(c);
    const double sin_c = std::sin(c);
    touch_atoms(indices);
    transform_atoms(data_.geom.atoms, indices, [=](AtomCoord& atom) {
        const double y1 = cos_a * atom.y - sin_a * atom.z;
        const double z1 = sin_a * atom.y + cos_a * atom.z;
        const double x2 = cos_b * atom.x + sin_b * z1;
        const double z2 = cos_b * z1 - sin_b * atom.x;
        atom.x = cos_c * x2 - sin_c * y1;
        atom.y = sin_c * x2 + cos_c * y1;
        atom.z = z2;
    });
}

}  // namespace quor::input::gaussian

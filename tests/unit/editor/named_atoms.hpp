// Editors of atoms that are told apart by their names, and what such an editor holds.
#pragma once

#include <gjf/core/editor/gjf_editor.hpp>

#include <cstddef>
#include <string>
#include <tuple>
#include <vector>

#include "../../support/sample_jobs.hpp"

namespace quor::input::gaussian::test {

using BondList = std::vector<std::tuple<std::size_t, std::size_t, double>>;
using Indices = std::vector<std::size_t>;

/// Makes atoms named a, b, c… with the bonds given.
inline GJFEditor make_editor(std::size_t atoms, const std::string& connectivity = "") {
    GJFData data = make_job(atoms);
    for (std::size_t i = 0; i < atoms; ++i) {
        data.geom.atoms[i].info.element = std::string(1, static_cast<char>('a' + i));
    }
    if (!connectivity.empty()) {
        data.extra_inputs.emplace_back(ExtraInputSectionKind::Connectivity, connectivity);
    }
    return GJFEditor(data);
}

/// Returns the names of all atoms in one word.
inline std::string names(const GJFEditor& editor) {
    std::string text;
    for (const AtomCoord& atom : editor.get_data().geom.atoms) {
        text += atom.info.element;
    }
    return text;
}

/// Returns the bonds in their order.
inline BondList bonds(const GJFEditor& editor) {
    BondList list;
    for (const Bond& bond : editor.get_all_bonds()) {
        list.emplace_back(bond.atom1, bond.atom2, bond.order);
    }
    return list;
}

}  // namespace quor::input::gaussian::test

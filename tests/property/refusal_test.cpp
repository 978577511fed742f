// A refused edit leaves the written text as it was, byte for byte, on every job there is.
#include <gjf/core/editor/gjf_editor.hpp>

#include <gtest/gtest.h>

#include <functional>
#include <iostream>
#include <limits>
#include <string>
#include <vector>

#include "many_jobs.hpp"

namespace quor::input::gaussian {
namespace {

using Kind = ExtraInputSectionKind;

const double nan_value = std::numeric_limits<double>::quiet_NaN();

std::vector<std::function<void(GJFEditor&)>> refusals() {
    const AtomCoord atom;
    constexpr std::size_t far = 1'000'000'000;
    return {
        [=](GJFEditor& e) {
            e.add_atom_with_connectivity(atom, {{far, 1.0}});
        },
        [=](GJFEditor& e) {
            e.add_atom_with_connectivity(atom, {{e.get_data().geom.atoms.size(), 1.0}});
        },
        [](GJFEditor& e) { e.remove_atom(e.get_data().geom.atoms.size()); },
        [](GJFEditor& e) { e.remove_atom_with_connectivity(far); },
        [](GJFEditor& e) {
            e.remove_atoms({0, far, 0});
        },
        [](GJFEditor& e) { e.move_atom(0, far); },
        [](GJFEditor& e) { e.move_atom_with_connectivity(far, 0); },
        [=](GJFEditor& e) { e.replace_atom(far, atom); },
        [](GJFEditor& e) {
            e.reorder_atoms_with_connectivity(std::vector<std::size_t>(e.get_data().geom.atoms.size() + 1, 0));
        },
        [](GJFEditor& e) {
            e.move_atoms_to_end({0, far});
        },
        [](GJFEditor& e) { e.move_atoms_to_beginning({far}); },
        [](GJFEditor& e) { e.set_bond_order(0, far, 1.0); },
        [](GJFEditor& e) { e.set_bond_order(0, 0, 1.0); },
        [](GJFEditor& e) { e.remove_bond(far, 0); },
        [](GJFEditor& e) { e.parse_connectivity_from_section(-1); },
        [](GJFEditor& e) { e.parse_connectivity_from_section(1000); },
        [](GJFEditor& e) { e.set_atom_type(far, "CT"); },
        [](GJFEditor& e) { e.clear_atom_type(far); },
        [](GJFEditor& e) { e.set_atom_mm_charge(0, nan_value); },
        [](GJFEditor& e) { e.clear_atom_mm_charge(far); },
        [](GJFEditor& e) { e.set_atom_type_and_mm_charge(0, "CT", nan_value); },
        [](GJFEditor& e) { e.set_model_chemistry_basis(""); },
        [](GJFEditor& e) { e.set_model_chemistry_method(" "); },
        [](GJFEditor& e) { e.add_keyword(""); },
        [](GJFEditor& e) { e.add_keyword_with_options("", {}); },
        [](GJFEditor& e) { e.add_keyword_with_variables("", {}); },
        [](GJFEditor& e) { e.upsert_keyword(""); },
        [](GJFEditor& e) { e.upsert_keyword_with_options(" ", {}); },
        [](GJFEditor& e) {
            e.ensure_keyword_option("", {"x", std::nullopt});
        },
        [](GJFEditor& e) { e.set_keyword_variable("", "x", "1"); },
        [](GJFEditor& e) { e.set_extra_input(1000, Kind::Unknown, ""); },
        [](GJFEditor& e) { e.remove_extra_input(1000); },
        [](GJFEditor& e) { e.insert_extra_input_ordered(Kind::Connectivity, "1 2"); },
        [](GJFEditor& e) { e.insert_extra_input_ordered(Kind::Connectivity, "1 1 1.0"); },
        [](GJFEditor& e) { e.upsert_extra_input_section(Kind::Connectivity, "1 1 1.0", true); },
        [](GJFEditor& e) { e.upsert_extra_input_section(Kind::Connectivity, "x", false); },
        [](GJFEditor& e) {
            GJFData data = e.get_data();
            data.extra_inputs.push_back(ExtraInputSection::from_connectivity({}));
            data.extra_inputs.push_back(ExtraInputSection::from_connectivity({}));
            e.set_data(data);
        },
        [](GJFEditor& e) { e.save_to_file("/no/such/folder/f.gjf"); },
    };
}

TEST(Refusals, LeaveTheWrittenTextAsItWas) {
    std::size_t refused = 0;
    const auto all = refusals();
    for (const test::NamedJob& job : test::all_jobs()) {
        GJFEditor editor(job.data);
        const std::string before = editor.to_gjf_string();
        for (std::size_t i = 0; i < all.size(); ++i) {
            EXPECT_THROW(all[i](editor), GJFParseException) << job.name << ": refusal " << i;
            ++refused;
        }
        EXPECT_EQ(editor.to_gjf_string(), before) << job.name;
    }
    EXPECT_GE(refused, 800u);
    std::cout << refused << " edits refused\n";
}

}  // namespace
}  // namespace quor::input::gaussian

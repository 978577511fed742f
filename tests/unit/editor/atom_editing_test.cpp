// Atoms and bonds: each operation's effect on both, and what it refuses.
#include <gjf/core/editor/gjf_editor.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "../../support/sample_jobs.hpp"
#include "named_atoms.hpp"

namespace quor::input::gaussian {
namespace {

using test::BondList;
using test::bonds;
using test::expect_refused;
using test::Indices;
using test::make_editor;
using test::make_job;
using test::names;
const double infinity = std::numeric_limits<double>::infinity();
const double nan_value = std::numeric_limits<double>::quiet_NaN();

AtomCoord atom_named(const std::string& name) {
    AtomCoord atom;
    atom.info.element = name;
    return atom;
}

TEST(AtomEditing, AddsAtomsWithAndWithoutBonds) {
    GJFEditor plain = make_editor(2);
    plain.add_atom(atom_named("z"));
    EXPECT_EQ(names(plain), "abz");
    EXPECT_TRUE(plain.get_data().extra_inputs.empty());
    plain.add_atom_with_connectivity(atom_named("y"), {{0, 0.0}, {1, -1.0}});
    EXPECT_TRUE(plain.get_data().extra_inputs.empty());

    GJFEditor bonded = make_editor(2, "1 2 1.0");
    bonded.add_extra_input("u");
    bonded.add_atom_with_connectivity(atom_named("z"), {{1, 1.5}, {0, 0.0}, {1, 2.0}});
    EXPECT_EQ(names(bonded), "abz");
    EXPECT_EQ(bonds(bonded), (BondList{{0, 1, 1.0}, {1, 2, 2.0}}));

    GJFEditor first = make_editor(1);
    first.add_extra_input("u");
    first.add_atom_with_connectivity(atom_named("z"), {{0, 3.0}});
    ASSERT_EQ(first.get_data().extra_inputs.size(), 2u);
    EXPECT_TRUE(first.get_data().extra_inputs[0].is_connectivity());
    EXPECT_EQ(bonds(first), (BondList{{0, 1, 3.0}}));
}

TEST(AtomEditing, RefusesBadArgumentsAndKeepsTheJob) {
    GJFEditor editor = make_editor(3, "1 2 1.0");
    editor.add_extra_input("1 9 1.0");
    editor.add_extra_input("2 2 1.0");
    editor.add_extra_input("1 2");
    editor.add_extra_input("1 3 1.0");
    const std::string before = editor.to_gjf_string();
    struct Case {
        std::string message;
        std::function<void()> action;
    };
    const std::string partner = "New atom bond references an atom outside the existing geometry";
    const std::string finite = "Bond order must be finite";
    const AtomCoord atom = atom_named("z");
    const std::vector<Case> cases = {
        {"Invalid atom index: 3", [&] { editor.validate_atom_index(3); }},
        {"Invalid atom index: 18446744073709551615", [&] { editor.validate_atom_index(std::size_t(-1)); }},
        {partner,
         [&] {
             editor.add_atom_with_connectivity(atom, {{0, 1.0}, {3, 1.0}});
         }},
        {partner,
         [&] {
             editor.add_atom_with_connectivity(atom, {{3, nan_value}});
         }},
        {finite,
         [&] {
             editor.add_atom_with_connectivity(atom, {{0, infinity}, {9, 1.0}});
         }},
        {finite,
         [&] {
             editor.add_atom_with_connectivity(atom, {{0, 1.0}, {1, nan_value}});
         }},
        {"Invalid atom index: 3", [&] { editor.remove_atom(3); }},
        {"Invalid atom index: 4", [&] { editor.remove_atom_with_connectivity(4); }},
        {"Invalid atom index: 3", [&] { editor.remove_atoms({3}); }},
        {"Invalid atom index: 3",
         [&] {
             editor.remove_atoms({0, 7, 3, 3, 1});
         }},
        {"Invalid atom index: 7",
         [&] {
             editor.remove_atoms({0, 0, 7});
         }},
        {"Invalid atom index: 18446744073709551615",
         [&] {
             editor.remove_atoms({std::size_t(-1), 0});
         }},
        {"Invalid atom index: 5",
         [&] {
             editor.move_atoms_to_end({1, std::size_t(-1), 5});
         }},
        {"Invalid atom index: 3", [&] { editor.move_atom(3, 5); }},
        {"Invalid atom index: 5", [&] { editor.move_atom(0, 5); }},
        {"Invalid atom index: 7", [&] { editor.move_atom_with_connectivity(7, 7); }},
        {"Invalid atom index: 3", [&] { editor.replace_atom(3, atom); }},
        {"New order size must match atom count",
         [&] {
             editor.reorder_atoms_with_connectivity({0, 1});
         }},
        {"New order size must match atom count",
         [&] {
             editor.reorder_atoms_with_connectivity({0, 1, 2, 3});
         }},
        {"Invalid reorder sequence",
         [&] {
             editor.reorder_atoms_with_connectivity({0, 1, 1});
         }},
        {"Invalid reorder sequence",
         [&] {
             editor.reorder_atoms_with_connectivity({0, 1, 3});
         }},
        {"Invalid atom index: 4",
         [&] {
             editor.move_atoms_to_end({9, 0, 4});
         }},
        {"Invalid atom index: 3", [&] { editor.move_atoms_to_beginning({3}); }},
        {"Invalid atom index: 3", [&] { editor.set_bond_order(0, 3, 1.0); }},
        {"Invalid atom index: 8", [&] { editor.set_bond_order(8, 3, nan_value); }},
        {"Cannot create a bond from an atom to itself", [&] { editor.set_bond_order(1, 1, nan_value); }},
        {finite, [&] { editor.set_bond_order(0, 1, -infinity); }},
        {"Invalid atom index: 3", [&] { editor.remove_bond(3, 0); }},
        {"Invalid atom index: 3", [&] { editor.get_bond_order(0, 3); }},
        {"Invalid atom index: 3", [&] { editor.get_connected_atoms(3); }},
        {"Invalid connectivity section index: -1", [&] { editor.parse_connectivity_from_section(-1); }},
        {"Invalid connectivity section index: 5", [&] { editor.parse_connectivity_from_section(5); }},
        {"Connectivity references an atom outside the geometry", [&] { editor.parse_connectivity_from_section(1); }},
        {"Connectivity contains a self bond", [&] { editor.parse_connectivity_from_section(2); }},
        {"Incomplete connectivity pair in line: 1 2", [&] { editor.parse_connectivity_from_section(3); }},
        {"GJF data contains more than one primary connectivity section", [&] { editor.parse_connectivity_from_section(4); }},
    };
    for (const Case& c : cases) {
        expect_refused(c.message, c.action);
        EXPECT_EQ(editor.to_gjf_string(), before) << c.message;
    }
}

TEST(AtomEditing, RemovesMovesAndReplacesAtoms) {
    const std::string start = "1 2 1.0 4 2.0\n2 3 1.5";
    struct Case {
        std::function<void(GJFEditor&)> action;
        std::string names;
        BondList bonds;
    };
    const Case cases[] = {
        {[](GJFEditor& e) { e.remove_atom(0); }, "bcd", {{0, 1, 1.5}}},
        {[](GJFEditor& e) { e.remove_atom_with_connectivity(1); }, "acd", {{0, 2, 2.0}}},
        {[](GJFEditor& e) { e.remove_atoms({0}); }, "bcd", {{0, 1, 1.5}}},
        {[](GJFEditor& e) {
             e.remove_atoms({2, 0, 2});
         },
         "bd",
         {}},
        {[](GJFEditor& e) { e.remove_atoms({2}); }, "abd", {{0, 1, 1.0}, {0, 2, 2.0}}},
        {[](GJFEditor& e) {
             e.remove_atoms({3, 2, 1, 0});
         },
         "",
         {}},
        {[](GJFEditor& e) { e.remove_atoms({}); }, "abcd", {{0, 1, 1.0}, {0, 3, 2.0}, {1, 2, 1.5}}},
        {[](GJFEditor& e) { e.move_atom(0, 2); }, "bcad", {{0, 2, 1.0}, {2, 3, 2.0}, {0, 1, 1.5}}},
        {[](GJFEditor& e) { e.move_atom_with_connectivity(3, 0); }, "dabc", {{1, 2, 1.0}, {0, 1, 2.0}, {2, 3, 1.5}}},
        {[](GJFEditor& e) { e.move_atom(2, 2); }, "abcd", {{0, 1, 1.0}, {0, 3, 2.0}, {1, 2, 1.5}}},
        {[](GJFEditor& e) { e.replace_atom(1, atom_named("z")); }, "azcd", {{0, 1, 1.0}, {0, 3, 2.0}, {1, 2, 1.5}}},
        {[](GJFEditor& e) { e.replace_atom(3, e.get_data().geom.atoms[0]); },
         "abca",
         {{0, 1, 1.0}, {0, 3, 2.0}, {1, 2, 1.5}}},
        {[](GJFEditor& e) {
             e.reorder_atoms_with_connectivity({3, 2, 1, 0});
         },
         "dcba",
         {{2, 3, 1.0}, {0, 3, 2.0}, {1, 2, 1.5}}},
        {[](GJFEditor& e) {
             e.move_atoms_to_end({2, 0, 2});
         },
         "bdac",
         {{0, 2, 1.0}, {1, 2, 2.0}, {0, 3, 1.5}}},
        {[](GJFEditor& e) {
             e.move_atoms_to_beginning({3, 1});
         },
         "bdac",
         {{0, 2, 1.0}, {1, 2, 2.0}, {0, 3, 1.5}}},
        {[](GJFEditor& e) { e.move_atoms_to_end({}); }, "abcd", {{0, 1, 1.0}, {0, 3, 2.0}, {1, 2, 1.5}}},
        {[](GJFEditor& e) { e.add_atom(e.get_data().geom.atoms[0]); }, "abcda", {{0, 1, 1.0}, {0, 3, 2.0}, {1, 2, 1.5}}},
        {[](GJFEditor& e) { e.clear_atoms(); }, "", {}},
    };
    for (const Case& c : cases) {
        GJFEditor editor = make_editor(4, start);
        c.action(editor);
        EXPECT_EQ(names(editor), c.names);
        EXPECT_EQ(bonds(editor), c.bonds) << c.names;
        EXPECT_EQ(editor.get_data().extra_inputs.size(), 1u);
    }
}

TEST(AtomEditing, SetsAndAsksForBonds) {
    GJFEditor editor = make_editor(3);
    EXPECT_EQ(editor.get_bond_order(0, 1), 0.0);
    EXPECT_EQ(editor.get_bond_count(), 0u);
    EXPECT_TRUE(editor.get_connected_atoms(0).empty());
    EXPECT_EQ(editor.mutable_connectivity(), nullptr);
    EXPECT_EQ(editor.mutable_connectivity_section(), nullptr);
    editor.remove_bond(0, 1);
    editor.clear_connectivity();
    EXPECT_TRUE(editor.get_data().extra_inputs.empty());

    editor.set_bond_order(2, 0, 1.5);
    EXPECT_EQ(bonds(editor), (BondList{{0, 2, 1.5}}));
    editor.set_bond_order(0, 2, 2.0);
    editor.set_bond_order(1, 0, 1.0);
    EXPECT_EQ(bonds(editor), (BondList{{0, 2, 2.0}, {0, 1, 1.0}}));
    EXPECT_EQ(editor.get_connected_atoms(0), (Indices{2, 1}));
    editor.set_bond_order(0, 2, 0.0);
    EXPECT_EQ(editor.get_bond_count(), 1u);
    editor.remove_bond(0, 1);
    EXPECT_EQ(editor.get_bond_count(), 0u);
    EXPECT_EQ(editor.get_data().extra_inputs.size(), 1u);
    EXPECT_NE(editor.mutable_connectivity(), nullptr);
    EXPECT_TRUE(editor.mutable_connectivity_section()->is_connectivity());
}

TEST(AtomEditing, ReadsBondsFromASection) {
    GJFEditor editor = make_editor(3);
    editor.add_extra_input("other");
    editor.add_extra_input("1 2 1.0\n2 3 1.5\n3");
    editor.parse_connectivity_from_section(1);
    EXPECT_EQ(bonds(editor), (BondList{{0, 1, 1.0}, {1, 2, 1.5}}));
    EXPECT_EQ(editor.get_data().extra_inputs[1].kind, ExtraInputSectionKind::Connectivity);
}

TEST(AtomEditing, TransformsCoordinatesAndDropsTheirTexts) {
    constexpr double half_turn = 3.14159265358979323846;
    struct Case {
        std::function<void(GJFEditor&)> action;
        double x, y, z;
    };
    const Case cases[] = {
        {[](GJFEditor& e) { e.translate_atoms({0}, 1, -2, 0.5); }, 2, 0, 3.5},
        {[](GJFEditor& e) {
             e.translate_atoms({0, 9, 0}, 1, 0, 0);
         },
         3, 2, 3},
        {[](GJFEditor& e) { e.scale_coordinates({0}, -2); }, -2, -4, -6},
        {[](GJFEditor& e) { e.rotate_atoms({0}, half_turn / 2, 0, 0); }, 1, -3, 2},
        {[](GJFEditor& e) { e.rotate_atoms({0}, 0, half_turn / 2, 0); }, 3, 2, -1},
        {[](GJFEditor& e) { e.rotate_atoms({0}, 0, 0, half_turn / 2); }, -2, 1, 3},
        {[](GJFEditor& e) { e.rotate_atoms({0}, half_turn / 2, half_turn / 2, 0); }, 2, -3, -1},
        {[](GJFEditor& e) {
             e.rotate_atoms({0, 0}, 0, 0, half_turn / 2);
         },
         -1, -2, 3},
    };
    for (const Case& c : cases) {
        GJFData data = make_job(2);
        data.geom.atoms[0].x = 1;
        data.geom.atoms[0].y = 2;
        data.geom.atoms[0].z = 3;
        GJFEditor editor(data);
        c.action(editor);
        const AtomCoord& atom = editor.get_data().geom.atoms[0];
        EXPECT_NEAR(atom.x, c.x, 1e-12);
        EXPECT_NEAR(atom.y, c.y, 1e-12);
        EXPECT_NEAR(atom.z, c.z, 1e-12);
        EXPECT_EQ(atom.x_ref.text + atom.y_ref.text + atom.z_ref.text, "");
        EXPECT_FALSE(atom.z_ref.value.has_value());
        EXPECT_EQ(editor.get_data().geom.atoms[1].x_ref.text, "1.0");
    }
}

TEST(AtomEditing, StaysLinearForManyAtomsAndBonds) {
    constexpr std::size_t count = 100'000;
    GJFData data = make_job(1);
    data.geom.atoms.resize(count, data.geom.atoms[0]);
    ConnectivitySection chain;
    Indices reversed(count);
    for (std::size_t i = 0; i < count; ++i) {
        reversed[i] = count - 1 - i;
        if (i > 0) {
            chain.bonds.push_back({i - 1, i, 1.0});
        }
    }
    data.extra_inputs.push_back(ExtraInputSection::from_connectivity(chain));
    GJFEditor editor(data);
    editor.reorder_atoms_with_connectivity(reversed);
    EXPECT_EQ(editor.get_all_bonds().front(), (Bond{count - 2, count - 1, 1.0}));
    editor.move_atoms_to_beginning(reversed);
    editor.remove_atom(0);
    EXPECT_EQ(editor.get_bond_count(), count - 2);
    editor.validate_connectivity_indices();
    Indices all_but_ends;
    for (std::size_t i = count - 3; i > 1; --i) {
        all_but_ends.push_back(i);
    }
    editor.remove_atoms(all_but_ends);
    EXPECT_EQ(editor.get_data().geom.atoms.size(), 3u);
    EXPECT_EQ(editor.get_bond_count(), 1u);
    editor.validate_connectivity_indices();
}

TEST(AtomEditing, PutsTheSmallerAtomFirstWhenAtomsAreRemoved) {
    GJFEditor one = make_editor(4, "1 2 1.0");
    one.mutable_connectivity()->bonds.push_back({3, 0, 1.0});
    GJFEditor many = one;
    one.remove_atom(2);
    many.remove_atoms({2});
    EXPECT_EQ(many.to_gjf_string(), one.to_gjf_string());
    EXPECT_NE(many.to_gjf_string().find("1 2 1.0 3 1.0"), std::string::npos);
}

TEST(AtomEditing, RemovesManyAtomsAsOneAfterTheOther) {
    std::mt19937 random(7);
    const auto below = [&](std::size_t limit) { return random() % limit; };
    for (int round = 0; round < 300; ++round) {
        const std::size_t count = 1 + below(9);
        GJFEditor editor = make_editor(count);
        for (std::size_t i = below(12); i > 0; --i) {
            const std::size_t a = below(count);
            const std::size_t b = below(count);
            if (a != b) {
                editor.set_bond_order(a, b, static_cast<double>(1 + below(3)));
            }
        }
        // What is done to the bond list by hand is not checked: atoms that are not there.
        if (ConnectivitySection* section = editor.mutable_connectivity()) {
            section->bonds.push_back({below(count), count + below(3), 1.0});
        }
        editor.move_atom(0, count - 1);
        GJFEditor one_by_one = editor;
        Indices indices;
        for (std::size_t i = below(2 * count); i > 0; --i) {
            indices.push_back(below(count));
        }
        editor.remove_atoms(indices);
        for (std::size_t i = count; i-- > 0;) {
            if (std::find(indices.begin(), indices.end(), i) != indices.end()) {
                one_by_one.remove_atom(i);
            }
        }
        EXPECT_EQ(names(editor), names(one_by_one));
        EXPECT_EQ(bonds(editor), bonds(one_by_one));
        EXPECT_EQ(editor.atom_origins(), one_by_one.atom_origins());
        EXPECT_EQ(editor.get_data().extra_inputs.size(), one_by_one.get_data().extra_inputs.size());
    }
}

TEST(AtomEditing, RemovesNoRowsOfAZMatrix) {
    GJFData data;
    data.geom.format = GeometryFormat::ZMatrix;
    data.geom.zmatrix_entries.resize(2);
    data.extra_inputs.emplace_back(ExtraInputSectionKind::Connectivity, "1 2 1.0");
    GJFEditor editor(data);
    expect_refused("Invalid atom index: 0", [&] { editor.remove_atoms({0}); });
    expect_refused("Invalid atom index: 1", [&] { editor.remove_atoms({2, 1}); });
    editor.remove_atoms({});
    EXPECT_EQ(editor.get_data().geom.zmatrix_entries.size(), 2u);
    EXPECT_EQ(bonds(editor), (BondList{{0, 1, 1.0}}));
}

}  // namespace
}  // namespace quor::input::gaussian

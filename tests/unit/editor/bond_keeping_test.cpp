// Bonds that are kept true: beside other molecules, when atoms come and go, and when they are given as text.
#include <gjf/core/editor/gjf_editor.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../../support/sample_jobs.hpp"
#include "named_atoms.hpp"

namespace quor::input::gaussian {
namespace {

using test::BondList;
using test::bonds;
using test::make_editor;
using test::make_job;

TEST(AtomEditing, KeepsBondsValidBesideAZMatrixOrACheckpoint) {
    const std::string rows = "1 2 1.0\n2 3 2.0\n3\n\n";
    const std::string zmatrix = "# hf/sto-3g geom=connectivity\n\nt\n\n0 1\nO\nH 1 0.96\nH 1 0.96 2 104.5\n\n" + rows;
    const std::string checkpoint = "%chk=a\n# hf/sto-3g geom=(check,connectivity)\n\nt\n\n0 1\n\n" + rows;
    const BondList before = {{0, 1, 1.0}, {1, 2, 2.0}};
    for (const std::string& text : {zmatrix, checkpoint}) {
        GJFEditor editor(GJFParser::parse_string(text));
        editor.add_atom(AtomCoord());
        EXPECT_EQ(bonds(editor), before) << "what is no atom of the list keeps its number";
        EXPECT_NO_THROW(editor.validate_connectivity_indices());
        for (std::size_t i = 1; i < 5; ++i) {
            editor.add_atom_with_connectivity(AtomCoord(), {{i - 1, 1.5}});
            EXPECT_NO_THROW(editor.validate_connectivity_indices()) << i;
        }
        EXPECT_EQ(bonds(editor), (BondList{{0, 1, 1.5}, {1, 2, 1.5}, {2, 3, 1.5}, {3, 4, 1.5}}));
        EXPECT_NO_THROW(GJFEditor(editor.get_data())) << "a job with such bonds can be given";
    }
}

TEST(AtomEditing, RestoresAJobFromWhichTheAddedAtomsAreRemoved) {
    const std::string rows = "1 2 1.0 3 1.0\n2\n3\n\n";
    for (const std::string& text : {"# hf/sto-3g geom=connectivity\n\nt\n\n0 1\nO\nH 1 0.96\nH 1 0.96 2 104.5\n\n" + rows,
                                    "# hf/sto-3g geom=(check,connectivity)\n\nt\n\n0 1\n\n" + rows}) {
        GJFEditor editor(GJFParser::parse_string(text));
        const BondList before = bonds(editor);
        editor.add_atom(AtomCoord());
        editor.add_atom(AtomCoord());
        editor.move_atom(0, 1);
        editor.reorder_atoms_with_connectivity({1, 0});
        editor.remove_atom(0);
        editor.remove_atoms({0});
        EXPECT_EQ(bonds(editor), before) << text;
    }
}

TEST(AtomEditing, StoresBondsWithTheSmallerAtomFirst) {
    GJFData data = make_job(3);
    data.extra_inputs.push_back(ExtraInputSection::from_connectivity({}));
    data.extra_inputs[0].mutable_connectivity()->bonds = {{2, 0, 1.0}};
    GJFEditor given(data);
    GJFEditor set(make_job(3));
    set.set_data(data);
    for (GJFEditor* editor : {&given, &set}) {
        EXPECT_EQ(bonds(*editor), (BondList{{0, 2, 1.0}}));
        EXPECT_EQ(editor->get_bond_order(2, 0), 1.0);
        editor->set_bond_order(0, 2, 2.0);
        EXPECT_EQ(bonds(*editor), (BondList{{0, 2, 2.0}}));
    }
}

TEST(AtomEditing, ReadsBondsThatAreGivenAsText) {
    GJFData data = make_job(3);
    data.extra_inputs.emplace_back();
    data.extra_inputs[0].kind = ExtraInputSectionKind::Connectivity;
    data.extra_inputs[0].content = std::string("1 3 1.0\n2");
    GJFEditor editor(data);
    EXPECT_EQ(bonds(editor), (BondList{{0, 2, 1.0}}));
    editor.set_bond_order(0, 1, 2.0);
    EXPECT_EQ(editor.get_data().extra_inputs.size(), 1U);
    EXPECT_NO_THROW(editor.validate_connectivity_indices());
    data.extra_inputs[0].content = std::string("1 x");
    EXPECT_THROW(GJFEditor refused(data), GJFParseException);
    EXPECT_THROW(editor.set_data(data), GJFParseException);
    EXPECT_EQ(bonds(editor), (BondList{{0, 2, 1.0}, {0, 1, 2.0}}));
}

TEST(AtomEditing, MovesBondsThatNameWhatIsNotThereYet) {
    GJFEditor editor = make_editor(2, "1 2 1.0\n2");
    editor.mutable_connectivity()->bonds.push_back({1, 2, 1.0});
    editor.add_atom(AtomCoord());
    EXPECT_EQ(bonds(editor), (BondList{{0, 1, 1.0}, {1, 3, 1.0}}));
    editor.add_atom_with_connectivity(AtomCoord(), {{0, 2.0}});
    EXPECT_EQ(bonds(editor), (BondList{{0, 1, 1.0}, {1, 4, 1.0}, {0, 3, 2.0}}));
}

}  // namespace
}  // namespace quor::input::gaussian

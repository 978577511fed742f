// Which parts an editor tells to be touched, and what they held before.
#include <gjf/core/editor/gjf_editor.hpp>

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "../../support/sample_jobs.hpp"

namespace quor::input::gaussian::test {
namespace {

using Parts = std::set<JobPart>;
constexpr auto link0_part = JobPart::Link0;
constexpr auto atom_part = JobPart::Atom;
constexpr auto list_part = JobPart::AtomCount;
constexpr auto section_part = JobPart::ExtraInput;

GJFEditor recording_editor() {
    GJFEditor editor(make_job(4, "%mem=1GB\n#p hf/sto-3g geom=connectivity", "1 2 1.0\n2\n3\n4\n\nleft over\n"));
    editor.begin_record();
    return editor;
}

Parts touched_parts(const GJFEditor& editor) {
    Parts parts;
    for (int part = 0; part <= static_cast<int>(JobPart::ExtraInput); ++part) {
        if (editor.record() != nullptr && editor.record()->touched(static_cast<JobPart>(part))) {
            parts.insert(static_cast<JobPart>(part));
        }
    }
    return parts;
}

TEST(EditRecord, TellsThePartsThatAnEditTouched) {
    const struct {
        const char* name;
        std::function<void(GJFEditor&)> edit;
        Parts parts;
    } cases[] = {
        {"a question", [](GJFEditor& e) { e.get_all_bonds(); }, {}},
        {"set_mem", [](GJFEditor& e) { e.set_mem("2GB"); }, {link0_part}},
        {"set_mem to what it was", [](GJFEditor& e) { e.set_mem("1GB"); }, {link0_part}},
        {"remove_cpu", [](GJFEditor& e) { e.remove_cpu(); }, {link0_part}},
        {"set_title", [](GJFEditor& e) { e.set_title("x"); }, {JobPart::Title}},
        {"set_overlays", [](GJFEditor& e) { e.set_overlays("x"); }, {JobPart::Overlays}},
        {"set_nproc", [](GJFEditor& e) { e.set_nproc(2); }, {link0_part}},
        {"remove_checkpoint_file", [](GJFEditor& e) { e.remove_checkpoint_file(); }, {link0_part}},
        {"set_other_link0_lines", [](GJFEditor& e) { e.set_other_link0_lines({}); }, {link0_part}},
        {"set_positions",
         [](GJFEditor& e) { e.set_positions(std::vector<std::array<double, 3>>(4)); },
         {atom_part, JobPart::Variables}},
        {"set_charge_and_spin", [](GJFEditor& e) { e.set_charge_and_spin(1, 2); }, {JobPart::ChargeAndMultiplicity}},
        {"set_charge_spin_pairs", [](GJFEditor& e) { e.set_charge_spin_pairs({}); }, {JobPart::ChargeAndMultiplicity}},
        {"add_keyword", [](GJFEditor& e) { e.add_keyword("freq"); }, {JobPart::Route}},
        {"add_route_keyword", [](GJFEditor& e) { e.add_route_keyword("freq"); }, {JobPart::Route}},
        {"set_route_section",
         [](GJFEditor& e) {
             e.set_route_section({"#", "hf"});
         },
         {JobPart::Route}},
        {"set_parsed_keywords", [](GJFEditor& e) { e.set_parsed_keywords({}); }, {JobPart::Route}},
        {"translate_atoms", [](GJFEditor& e) { e.translate_atoms({1}, 1, 0, 0); }, {atom_part}},
        {"translate_atoms of none", [](GJFEditor& e) { e.translate_atoms({9}, 1, 0, 0); }, {}},
        {"scale_coordinates", [](GJFEditor& e) { e.scale_coordinates({1}, 2); }, {atom_part}},
        {"rotate_atoms", [](GJFEditor& e) { e.rotate_atoms({1}, 2, 0, 0); }, {atom_part}},
        {"use_numeric_coordinates", [](GJFEditor& e) { e.use_numeric_coordinates(); }, {atom_part}},
        {"replace_atom", [](GJFEditor& e) { e.replace_atom(0, AtomCoord()); }, {atom_part}},
        {"set_freeze_all", [](GJFEditor& e) { e.set_freeze_all(-1); }, {atom_part}},
        {"set_freeze_by_element of none", [](GJFEditor& e) { e.set_freeze_by_element("C", -1); }, {}},
        {"set_oniom_layer_by_index", [](GJFEditor& e) { e.set_oniom_layer_by_index({0}, "H"); }, {atom_part}},
        {"set_fragment_all", [](GJFEditor& e) { e.set_fragment_all("1"); }, {atom_part}},
        {"set_atom_type", [](GJFEditor& e) { e.set_atom_type(0, "HC"); }, {atom_part}},
        {"clear_atom_type", [](GJFEditor& e) { e.clear_atom_type(0); }, {atom_part}},
        {"set_atom_mm_charge", [](GJFEditor& e) { e.set_atom_mm_charge(0, 0.1); }, {atom_part}},
        {"clear_atom_mm_charge", [](GJFEditor& e) { e.clear_atom_mm_charge(0); }, {atom_part}},
        {"add_atom", [](GJFEditor& e) { e.add_atom(AtomCoord()); }, {list_part, section_part}},
        {"remove_atom", [](GJFEditor& e) { e.remove_atom(0); }, {list_part, section_part, atom_part}},
        {"remove_atoms",
         [](GJFEditor& e) {
             e.remove_atoms({0, 1});
         },
         {list_part, section_part, atom_part}},
        {"clear_atoms", [](GJFEditor& e) { e.clear_atoms(); }, {list_part, section_part, atom_part}},
        {"move_atom", [](GJFEditor& e) { e.move_atom(0, 2); }, {list_part, section_part}},
        {"move_atoms_to_end", [](GJFEditor& e) { e.move_atoms_to_end({0}); }, {list_part, section_part}},
        {"set_bond_order", [](GJFEditor& e) { e.set_bond_order(0, 1, 2); }, {section_part}},
        {"remove_bond", [](GJFEditor& e) { e.remove_bond(0, 1); }, {section_part}},
        {"clear_connectivity", [](GJFEditor& e) { e.clear_connectivity(); }, {section_part}},
        {"mutable_connectivity", [](GJFEditor& e) { e.mutable_connectivity(); }, {section_part}},
        {"add_extra_input", [](GJFEditor& e) { e.add_extra_input("x"); }, {section_part}},
        {"set_extra_inputs", [](GJFEditor& e) { e.set_extra_inputs({}); }, {section_part}},
        {"set_extra_input", [](GJFEditor& e) { e.set_extra_input(1, ExtraInputSectionKind::Unknown, "x"); }, {section_part}},
        {"insert_extra_input_ordered",
         [](GJFEditor& e) { e.insert_extra_input_ordered(ExtraInputSectionKind::MMParameters, "x"); },
         {section_part}},
        {"remove_extra_input", [](GJFEditor& e) { e.remove_extra_input(1); }, {section_part}},
        {"clear_extra_inputs", [](GJFEditor& e) { e.clear_extra_inputs(); }, {section_part}},
    };
    for (const auto& c : cases) {
        GJFEditor editor = recording_editor();
        c.edit(editor);
        ASSERT_NE(editor.record(), nullptr) << c.name;
        EXPECT_EQ(touched_parts(editor), c.parts) << c.name;
    }
}

TEST(EditRecord, StaysEmptyWhereAnEditIsRefused) {
    const std::pair<const char*, std::function<void(GJFEditor&)>> cases[] = {
        {"remove_atom", [](GJFEditor& e) { e.remove_atom(9); }},
        {"remove_atoms",
         [](GJFEditor& e) {
             e.remove_atoms({0, 9});
         }},
        {"move_atom", [](GJFEditor& e) { e.move_atom(0, 9); }},
        {"set_positions", [](GJFEditor& e) { e.set_positions({}); }},
        {"replace_atom", [](GJFEditor& e) { e.replace_atom(9, AtomCoord()); }},
        {"reorder",
         [](GJFEditor& e) {
             e.reorder_atoms_with_connectivity({0, 0, 1, 2});
         }},
        {"add_atom_with_connectivity",
         [](GJFEditor& e) {
             e.add_atom_with_connectivity(AtomCoord(), {{9, 1.0}});
         }},
        {"set_atom_type", [](GJFEditor& e) { e.set_atom_type(9, "x"); }},
        {"set_bond_order", [](GJFEditor& e) { e.set_bond_order(0, 0, 1); }},
        {"add_keyword", [](GJFEditor& e) { e.add_keyword(" "); }},
        {"remove_extra_input", [](GJFEditor& e) { e.remove_extra_input(9); }},
        {"set_data", [](GJFEditor& e) { e.set_data(e.get_data(), {0}); }},
    };
    for (const auto& [name, edit] : cases) {
        GJFEditor editor = recording_editor();
        EXPECT_THROW(edit(editor), GJFParseException) << name;
        ASSERT_NE(editor.record(), nullptr) << name;
        EXPECT_TRUE(editor.record()->empty()) << name;
    }
}

TEST(EditRecord, KeepsWhatStoodBeforeTheFirstChange) {
    GJFEditor editor = recording_editor();
    for (const char* text : {"2GB", "3GB"}) {
        editor.set_mem(text);
        editor.set_title(text);
        editor.set_route_section({text});
        editor.set_charge_and_spin(text[0] - '0', 7);
        editor.set_extra_inputs({text});
        editor.set_freeze_by_index({2}, text[0] - '0');
    }
    const GJFData& before = editor.record()->before();
    EXPECT_EQ(before.control.mem, "1GB");
    EXPECT_EQ(before.control.route_keywords, (std::vector<std::string>{"#p", "hf/sto-3g", "geom=connectivity"}));
    EXPECT_EQ(before.title, "title");
    EXPECT_EQ(before.geom.charge, 0);
    EXPECT_EQ(before.geom.multiplicity, 1);
    ASSERT_EQ(before.extra_inputs.size(), 2U);
    EXPECT_EQ(before.extra_inputs[1].text(), "left over");
    ASSERT_NE(editor.record()->atom_before(2), nullptr);
    EXPECT_EQ(editor.record()->atom_before(2)->freeze, std::nullopt);
    EXPECT_EQ(editor.record()->atom_before(1), nullptr);
    EXPECT_EQ(editor.record()->atom_before(99), nullptr);
}

TEST(EditRecord, FindsAtomsByTheirOrigins) {
    GJFEditor editor = recording_editor();
    editor.move_atom(3, 0);
    editor.add_atom(AtomCoord());
    editor.translate_atoms({0, 4}, 10, 0, 0);
    editor.remove_atom(1);
    ASSERT_NE(editor.record()->atom_before(3), nullptr);
    EXPECT_EQ(editor.record()->atom_before(3)->x, 3.0);
    ASSERT_NE(editor.record()->atom_before(0), nullptr);
    EXPECT_EQ(editor.record()->atom_before(0)->x, 0.0);
    EXPECT_EQ(editor.record()->atom_before(1), nullptr);
    EXPECT_EQ(editor.record()->atom_before(4), nullptr);
}

TEST(EditRecord, GoesWithCopiesAndEndsWithTheJob) {
    EXPECT_EQ(GJFEditor(make_job(1)).record(), nullptr);
    GJFEditor editor = recording_editor();
    EXPECT_NE(editor.record()->identity(), recording_editor().record()->identity());
    editor.set_mem("2GB");
    GJFEditor copy = editor;
    EXPECT_EQ(copy.record()->identity(), editor.record()->identity());
    EXPECT_EQ(copy.record()->before().control.mem, "1GB");
    copy.set_title("x");
    EXPECT_FALSE(editor.record()->touched(JobPart::Title));
    copy.set_data(make_job(4));
    EXPECT_EQ(copy.record(), nullptr);
    copy.set_title("x");
    EXPECT_EQ(copy.record(), nullptr);
    const std::uint64_t old = editor.record()->identity();
    EXPECT_NE(editor.begin_record(), old);
    EXPECT_TRUE(editor.record()->empty());
}

}  // namespace
}  // namespace quor::input::gaussian::test

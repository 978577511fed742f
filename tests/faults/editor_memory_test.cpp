// Lets every allocation inside edits, reading, writing and saving fail: the exception is that of memory, the job is as it
// was, and nothing leaks.
#include <gjf/gjf.hpp>

#include <gtest/gtest.h>

#include <functional>
#include <iostream>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "../support/failing_calls.hpp"

namespace quor::test {
namespace {

using namespace input::gaussian;
using Kind = ExtraInputSectionKind;

constexpr const char* long_job_text = R"(%mem=a long amount of memory
%chk=a_checkpoint_file_of_a_long_name.chk
#p b3lyp/6-31g(d) geom=connectivity opt=(modredundant,maxcycles=100) iop(6/50=1)

a title that is longer than any short text

0 1
C-CT--0.5(Fragment=1,ResName=ALANINE_WITH_A_LONG_NAME) -1 0.123456789012345 0.0 0.0 Hlayer_of_a_long_name
H-HC(Fragment=2) 0 1.0 0.0 0.0 L
O 0 2.0 0.0 0.0 L

1 2 1.0
2
3

1 2 F

)";

constexpr const char* zmatrix_text = R"(# hf/3-21g opt

a title

0 1
O
H 1 a_variable_of_a_long_name
H 1 a_variable_of_a_long_name 2 another_variable_name

a_variable_of_a_long_name 0.96
another_variable_name 104.5

)";

const std::string long_text = "a_word_that_is_longer_than_short_texts";

struct Edit {
    const char* name;
    std::function<void(GJFEditor&)> apply;
};

AtomCoord new_atom() {
    AtomCoord atom;
    atom.info.element = long_text;
    atom.info.params["Fragment"] = long_text;
    atom.layer = long_text;
    return atom;
}

const std::vector<Edit>& atom_edits() {
    static const std::vector<Edit> all = {
        {"add_atom", [](GJFEditor& e) { e.add_atom(new_atom()); }},
        {"add_atom_with_connectivity",
         [](GJFEditor& e) {
             e.add_atom_with_connectivity(new_atom(), {{0, 1.0}, {1, 2.0}});
         }},
        {"remove_atom", [](GJFEditor& e) { e.remove_atom(1); }},
        {"remove_atoms",
         [](GJFEditor& e) {
             e.remove_atoms({2, 0});
         }},
        {"move_atom", [](GJFEditor& e) { e.move_atom(0, 2); }},
        {"replace_atom", [](GJFEditor& e) { e.replace_atom(0, new_atom()); }},
        {"reorder_atoms_with_connectivity",
         [](GJFEditor& e) {
             e.reorder_atoms_with_connectivity({2, 0, 1});
         }},
        {"move_atoms_to_end",
         [](GJFEditor& e) {
             e.move_atoms_to_end({0, 1});
         }},
        {"translate_atoms",
         [](GJFEditor& e) {
             e.translate_atoms({0, 1}, 1, 1, 1);
         }},
        {"set_bond_order", [](GJFEditor& e) { e.set_bond_order(1, 2, 1.0); }},
        {"set_bond_order without a section", [](GJFEditor& e) { e.set_bond_order(1, 2, 1.0); }},
        {"remove_bond", [](GJFEditor& e) { e.remove_bond(0, 1); }},
        {"parse_connectivity_from_section", [](GJFEditor& e) { e.parse_connectivity_from_section(0); }},
        {"set_freeze_by_index",
         [](GJFEditor& e) {
             e.set_freeze_by_index({0, 2}, 4);
         }},
        {"set_oniom_layer_by_index",
         [](GJFEditor& e) {
             e.set_oniom_layer_by_index({0, 1, 2}, long_text);
         }},
        {"set_fragment_all", [](GJFEditor& e) { e.set_fragment_all(long_text); }},
        {"set_atom_type", [](GJFEditor& e) { e.set_atom_type(0, long_text); }},
        {"set_atom_type_and_mm_charge", [](GJFEditor& e) { e.set_atom_type_and_mm_charge(1, long_text, 0.25); }},
        {"set_title", [](GJFEditor& e) { e.set_title(long_text); }},
        {"set_charge_spin_pairs",
         [](GJFEditor& e) {
             e.set_charge_spin_pairs({{1, 2}, {3, 4}, {5, 6}});
         }},
        {"set_mem", [](GJFEditor& e) { e.set_mem(long_text); }},
        {"set_nproc", [](GJFEditor& e) { e.set_nproc(8); }},
        {"set_other_link0_lines",
         [](GJFEditor& e) {
             e.set_other_link0_lines({long_text, long_text});
         }},
        {"set_overlays", [](GJFEditor& e) { e.set_overlays(long_text); }},
        {"set_positions",
         [](GJFEditor& e) {
             e.set_positions({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
         }},
        {"set_cpu", [](GJFEditor& e) { e.set_cpu(long_text); }},
        {"set_data", [](GJFEditor& e) { e.set_data(e.get_data()); }},
    };
    return all;
}

const std::vector<Edit>& text_edits() {
    static const std::vector<Edit> all = {
        {"set_route_section",
         [](GJFEditor& e) {
             e.set_route_section({"#", long_text, long_text});
         }},
        {"add_route_keyword", [](GJFEditor& e) { e.add_route_keyword(long_text); }},
        {"remove_route_keyword", [](GJFEditor& e) { e.remove_route_keyword("b3lyp/6-31g(d)"); }},
        {"set_output_mode", [](GJFEditor& e) { e.set_output_mode("#" + long_text); }},
        {"set_method", [](GJFEditor& e) { e.set_method(long_text); }},
        {"clear_method", [](GJFEditor& e) { e.clear_method(); }},
        {"set_basis_set", [](GJFEditor& e) { e.set_basis_set(long_text); }},
        {"set_model_chemistry_method_with_options",
         [](GJFEditor& e) {
             e.set_model_chemistry_method_with_options(long_text, {{"full", long_text}});
         }},
        {"add_keyword_with_options",
         [](GJFEditor& e) {
             e.add_keyword_with_options(long_text, {{"a", "1"}, {long_text, {}}});
         }},
        {"upsert_keyword_with_options",
         [](GJFEditor& e) {
             e.upsert_keyword_with_options("opt", {{"tight", {}}});
         }},
        {"ensure_keyword_option",
         [](GJFEditor& e) {
             e.ensure_keyword_option("opt", {"maxcycles", "7"});
         }},
        {"set_keyword_variable", [](GJFEditor& e) { e.set_keyword_variable("scf", "maxcycle", long_text); }},
        {"remove_keyword_by_name", [](GJFEditor& e) { e.remove_keyword_by_name("opt"); }},
        {"update_route_from_parsed_keywords", [](GJFEditor& e) { e.update_route_from_parsed_keywords(); }},
        {"parse_keywords", [](GJFEditor& e) { e.parse_keywords(""); }},
        {"add_extra_input", [](GJFEditor& e) { e.add_extra_input(long_text); }},
        {"set_extra_inputs",
         [](GJFEditor& e) {
             e.set_extra_inputs({long_text, long_text});
         }},
        {"set_extra_input", [](GJFEditor& e) { e.set_extra_input(1, Kind::BasisSet, long_text); }},
        {"remove_extra_input", [](GJFEditor& e) { e.remove_extra_input(0); }},
        {"insert_extra_input_ordered", [](GJFEditor& e) { e.insert_extra_input_ordered(Kind::ECP, long_text); }},
        {"upsert_extra_input_section",
         [](GJFEditor& e) { e.upsert_extra_input_section(Kind::CoordinateModifications, long_text, true); }},
    };
    return all;
}

// All that an editor holds and shows.
std::string state_of(const GJFEditor& editor) {
    return GJFParser::format_full_gjf(editor.get_data()) + editor.to_gjf_string() +
           (editor.has_parsed_keywords() ? "cached" : "not cached");
}

// Runs something that may throw for want of memory alone; tells whether it did.
bool runs_out(const std::function<void()>& operation) {
    try {
        operation();
        return false;
    } catch (const std::bad_alloc&) {
        return true;
    }
}

GJFEditor new_editor(const std::string& name) {
    GJFEditor editor(GJFParser::parse_string(long_job_text));
    if (name == "set_bond_order without a section") {
        editor.remove_extra_inputs_by_kind({Kind::Connectivity});
    }
    return editor;
}

std::size_t fail_in(const Edit& edit, bool recording = false) {
    return fail_each_allocation(edit.name, [&](const Armed& armed) {
        GJFEditor editor = new_editor(edit.name);
        if (recording) {
            editor.begin_record();
        }
        const std::string before = state_of(editor);
        bool ran_out = false;
        const bool failed = armed([&] { ran_out = runs_out([&] { edit.apply(editor); }); });
        EXPECT_EQ(ran_out, failed) << "every failure is told";
        if (failed) {
            EXPECT_EQ(state_of(editor), before);
        }
    });
}

TEST(EditorMemory, IsNeededAllOrNothingByEveryEdit) {
    state_of(GJFEditor(GJFParser::parse_string(long_job_text)));
    new_editor("").set_method(long_text);  // first use of what stays for the life of the process
    std::size_t failures = 0;
    for (const std::vector<Edit>& edits : {atom_edits(), text_edits()}) {
        for (const Edit& edit : edits) {
            failures += fail_in(edit) + fail_in(edit, true);
        }
    }
    EXPECT_GT(failures, 500u);
    std::cout << failures << " failed allocations in edits\n";
}

TEST(EditorMemory, IsNeededByReadingWritingAndReporting) {
    const GJFEditor editor(GJFParser::parse_string(long_job_text));
    const std::string text = editor.to_gjf_string();
    const std::string two_jobs = std::string(long_job_text) + "--Link1--\n" + zmatrix_text;
    const GJFMultiEditor file(GJFParser::parse_string_multi(two_jobs));
    const std::string file_text = file.to_gjf_string();
    const std::vector<Edit> operations = {
        {"parse_string", [&](GJFEditor&) { GJFParser::parse_string(long_job_text); }},
        {"parse_string of a Z-matrix", [&](GJFEditor&) { GJFParser::parse_string(zmatrix_text); }},
        {"parse_string_multi", [&](GJFEditor&) { GJFParser::parse_string_multi(two_jobs); }},
        {"read_jobs_with_layout", [&](GJFEditor&) { read_jobs_with_layout(two_jobs); }},
        {"to_gjf_string", [&](GJFEditor&) { EXPECT_EQ(editor.to_gjf_string(), text); }},
        {"to_gjf_string of a file", [&](GJFEditor&) { EXPECT_EQ(file.to_gjf_string(), file_text); }},
        {"format_full_gjf", [&](GJFEditor&) { GJFParser::format_full_gjf(editor.get_data()); }},
        {"a copy", [&](GJFEditor&) { GJFEditor copy(editor); }},
    };
    std::size_t failures = 0;
    for (const Edit& operation : operations) {
        failures += fail_in(operation);
    }
    EXPECT_GT(failures, 500u);
    std::cout << failures << " failed allocations in reading and writing\n";
}

}  // namespace
}  // namespace quor::test

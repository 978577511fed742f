// Freeze codes, layers, fragments, types and charges: who is selected, what is set, what is told.
#include <gjf/core/editor/gjf_editor.hpp>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "../../support/sample_jobs.hpp"

namespace quor::input::gaussian {
namespace {

using test::expect_refused;
using test::make_job;
using Texts = std::vector<std::string>;

// Elements C, h, C, O, H.
GJFEditor make_editor() {
    GJFData data = make_job(5);
    const char* elements[] = {"C", "h", "C", "O", "H"};
    for (std::size_t i = 0; i < 5; ++i) {
        data.geom.atoms[i].info.element = elements[i];
    }
    return GJFEditor(data);
}

std::string layers(const GJFEditor& editor) {
    std::string text;
    for (const AtomCoord& atom : editor.get_data().geom.atoms) {
        text += (atom.layer ? "[" + *atom.layer + "]" : "-");
    }
    return text;
}

std::string freezes(const GJFEditor& editor) {
    std::string text;
    for (const AtomCoord& atom : editor.get_data().geom.atoms) {
        text += (atom.freeze ? std::to_string(*atom.freeze) : "x") + " ";
    }
    return text;
}

TEST(IndexRanges, CountFromOneAndKeepPairs) {
    const GJFEditor editor = make_editor();
    struct Case {
        std::vector<std::size_t> indices;
        std::string text;
    };
    const Case cases[] = {{{}, ""},
                          {{3}, "4"},
                          {{1, 0}, "1,2"},
                          {{5, 5}, "6"},
                          {{3, 4}, "4,5"},
                          {{3, 4, 5, 6}, "4-7"},
                          {{0, 1, 2, 4, 6, 7}, "1-3,5,7,8"},
                          {{9, 0, 8, 1, 7}, "1,2,8-10"}};
    for (const Case& c : cases) {
        EXPECT_EQ(editor.format_index_ranges(c.indices), c.text);
    }
}

TEST(FreezeCodes, AreSetByEveryKindOfSelection) {
    struct Case {
        std::function<void(GJFEditor&)> action;
        std::string codes;
    };
    const Case cases[] = {
        {[](GJFEditor& e) { e.set_freeze_all(-1); }, "-1 -1 -1 -1 -1 "},
        {[](GJFEditor& e) { e.set_freeze_by_element("C", -1); }, "-1 x -1 x x "},
        {[](GJFEditor& e) { e.set_freeze_by_element("H", 2); }, "x x x x 2 "},
        {[](GJFEditor& e) { e.set_freeze_by_element("", 2); }, "x x x x x "},
        {[](GJFEditor& e) {
             e.set_freeze_by_index({4, 1, 99, 1}, 0);
         },
         "x 0 x x 0 "},
        {[](GJFEditor& e) {
             e.set_freeze_by_selector([](const AtomCoord& a, std::size_t i) { return i > 1 && a.info.element != "O"; }, 3);
         },
         "x x 3 x 3 "},
    };
    for (const Case& c : cases) {
        GJFEditor editor = make_editor();
        c.action(editor);
        EXPECT_EQ(freezes(editor), c.codes);
    }
}

TEST(FreezeCodes, AreCounted) {
    GJFEditor editor = make_editor();
    EXPECT_EQ(editor.count_frozen_atoms(), 0u);
    EXPECT_EQ(editor.get_atoms_by_freeze_value(0), "");
    editor.set_freeze_by_index({0, 1, 2}, -1);
    editor.set_freeze_by_index({4}, 0);
    EXPECT_EQ(editor.count_frozen_atoms(), 3u);
    EXPECT_EQ(editor.get_frozen_atoms(), "1-3");
    EXPECT_EQ(editor.get_atoms_by_freeze_value(0), "5");
    EXPECT_EQ(editor.get_atoms_by_freeze_value(-1), "1-3");
    EXPECT_EQ(editor.get_unique_freeze_values(), (std::vector<int>{-1, 0}));
}

TEST(Selectors, AreCalledOncePerAtomInOrderAndMayFail) {
    GJFEditor editor = make_editor();
    std::vector<std::size_t> asked;
    editor.set_freeze_by_selector(
        [&](const AtomCoord&, std::size_t index) {
            asked.push_back(index);
            return false;
        },
        1);
    EXPECT_EQ(asked, (std::vector<std::size_t>{0, 1, 2, 3, 4}));
    EXPECT_THROW(editor.set_freeze_by_selector(nullptr, 1), std::bad_function_call);
    EXPECT_THROW(editor.set_oniom_layer_by_selector(nullptr, "H"), std::bad_function_call);
    EXPECT_THROW(editor.set_fragment_by_selector(nullptr, "1"), std::bad_function_call);
    GJFEditor empty(make_job(0));
    EXPECT_NO_THROW(empty.set_freeze_by_selector(nullptr, 1));
    const std::string before = editor.to_gjf_string();
    const auto fails = [](const AtomCoord&, std::size_t index) -> bool {
        if (index == 3) {
            throw std::runtime_error("stop");
        }
        return true;
    };
    EXPECT_THROW(editor.set_freeze_by_selector(fails, 1), std::runtime_error);
    EXPECT_THROW(editor.set_oniom_layer_by_selector(fails, "H"), std::runtime_error);
    EXPECT_EQ(editor.to_gjf_string(), before);
}

TEST(OniomLayers, CompleteThemselves) {
    struct Case {
        std::function<void(GJFEditor&)> action;
        std::string result;
    };
    const Case cases[] = {
        {[](GJFEditor& e) { e.set_oniom_layer_by_index({0}, "H"); }, "[H][L][L][L][L]"},
        {[](GJFEditor& e) { e.set_oniom_layer_by_index({0}, ""); }, "[]----"},
        {[](GJFEditor& e) { e.set_oniom_layer_by_index({77}, "H"); }, "-----"},
        {[](GJFEditor& e) { e.set_oniom_layer_all("M"); }, "[M][M][M][M][M]"},
        {[](GJFEditor& e) { e.set_oniom_layer_all(""); }, "[][][][][]"},
        {[](GJFEditor& e) { e.set_oniom_layer_by_element("C", "M"); }, "[M][L][M][L][L]"},
        {[](GJFEditor& e) { e.set_oniom_layer_by_selector([](const AtomCoord&, std::size_t i) { return i == 4; }, "h"); },
         "[L][L][L][L][h]"},
        {[](GJFEditor& e) {
             e.set_oniom_layer_all("");
             e.set_oniom_layer_by_element("O", "H");
         },
         "[L][L][L][H][L]"},
        {[](GJFEditor& e) { e.ensure_oniom_completeness(); }, "-----"},
    };
    for (const Case& c : cases) {
        GJFEditor editor = make_editor();
        c.action(editor);
        EXPECT_EQ(layers(editor), c.result);
    }
}

TEST(OniomLayers, AreCounted) {
    GJFEditor editor = make_editor();
    EXPECT_FALSE(editor.is_oniom_enabled());
    EXPECT_TRUE(editor.get_oniom_layer_counts().empty());
    editor.set_oniom_layer_all("");
    EXPECT_FALSE(editor.is_oniom_enabled());
    EXPECT_TRUE(editor.get_oniom_layer_counts().empty());
    EXPECT_EQ(editor.get_unique_oniom_layers(), Texts{""});
    EXPECT_EQ(editor.count_atoms_by_oniom_layer(""), 5u);
    editor.set_oniom_layer_by_element("C", "H");
    EXPECT_TRUE(editor.is_oniom_enabled());
    EXPECT_EQ(editor.get_unique_oniom_layers(), (Texts{"H", "L"}));
    EXPECT_EQ(editor.get_atoms_by_oniom_layer("L"), "2,4,5");
    EXPECT_EQ(editor.count_atoms_by_oniom_layer("l"), 0u);
    EXPECT_EQ(editor.get_oniom_layer_counts(), (std::map<std::string, std::size_t>{{"H", 2}, {"L", 3}}));
}

TEST(Fragments, ReplaceAnyParameterOfThatName) {
    GJFData data = make_editor().get_data();
    data.geom.atoms[0].info.params = {{"FRAGMENT", "1"}, {"fragment", "2"}, {"ResName", "ALA"}};
    data.geom.atoms[1].info.params = {{"Fragment", "7"}};
    GJFEditor editor(data);
    EXPECT_EQ(editor.get_fragment(0), "1");
    EXPECT_EQ(editor.get_fragment(1), "7");
    EXPECT_FALSE(editor.get_fragment(2).has_value());
    EXPECT_EQ(editor.get_unique_fragments(), (Texts{"1", "7"}));
    editor.set_fragment_by_index({0, 2, 9}, "3");
    EXPECT_EQ(editor.get_data().geom.atoms[0].info.params,
              (std::map<std::string, std::string>{{"Fragment", "3"}, {"ResName", "ALA"}}));
    EXPECT_EQ(editor.get_atoms_by_fragment("3"), "1,3");
    EXPECT_EQ(editor.count_atoms_by_fragment("7"), 1u);
    editor.set_fragment_by_element("O", "x");
    EXPECT_EQ(editor.get_unique_fragments(), (Texts{"3", "7", "x"}));
    editor.set_fragment_by_selector([](const AtomCoord&, std::size_t i) { return i == 4; }, "4");
    EXPECT_EQ(editor.get_fragment(4), "4");
    editor.set_fragment_all("");
    EXPECT_TRUE(editor.get_unique_fragments().empty());
    EXPECT_EQ(editor.get_data().geom.atoms[0].info.params.size(), 1u);
}

TEST(MMLabels, AreSetClearedAndChecked) {
    GJFEditor editor = make_editor();
    editor.set_atom_type(0, " \tCT\n");
    editor.set_atom_mm_charge(0, -0.5);
    EXPECT_EQ(editor.get_data().geom.atoms[0].info.mm_type, "CT");
    EXPECT_EQ(editor.get_data().geom.atoms[0].info.mm_charge, -0.5);
    editor.set_atom_type_and_mm_charge(1, "HC", 0.1);
    EXPECT_EQ(editor.get_data().geom.atoms[1].info.mm_type, "HC");
    editor.set_atom_type_and_mm_charge(1, "  ", 0.2);
    EXPECT_FALSE(editor.get_data().geom.atoms[1].info.mm_type.has_value());
    EXPECT_EQ(editor.get_data().geom.atoms[1].info.mm_charge, 0.2);
    editor.set_atom_type(0, " \r\n ");
    EXPECT_FALSE(editor.get_data().geom.atoms[0].info.mm_type.has_value());
    editor.clear_atom_mm_charge(0);
    editor.clear_atom_type(1);
    EXPECT_FALSE(editor.get_data().geom.atoms[0].info.mm_charge.has_value());
}

TEST(MMLabels, RefuseBadArgumentsAndKeepTheJob) {
    GJFEditor editor = make_editor();
    editor.set_atom_type_and_mm_charge(0, "CT", 0.25);
    const std::string before = editor.to_gjf_string();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    const std::vector<std::pair<std::string, std::function<void()>>> cases = {
        {"Invalid atom index: 5", [&] { editor.set_atom_type(5, "C"); }},
        {"Invalid atom index: 5", [&] { editor.clear_atom_type(5); }},
        {"Invalid atom index: 5", [&] { editor.set_atom_mm_charge(5, nan); }},
        {"Invalid atom index: 5", [&] { editor.clear_atom_mm_charge(5); }},
        {"Invalid atom index: 5", [&] { editor.set_atom_type_and_mm_charge(5, "C", nan); }},
        {"Invalid atom index: 6", [&] { editor.get_fragment(6); }},
        {"Atom MM charge must be finite", [&] { editor.set_atom_mm_charge(0, nan); }},
        {"Atom MM charge must be finite", [&] { editor.set_atom_mm_charge(0, -infinity); }},
        {"Atom MM charge must be finite", [&] { editor.set_atom_type_and_mm_charge(0, "X", infinity); }},
    };
    for (const auto& [message, action] : cases) {
        expect_refused(message, action);
        EXPECT_EQ(editor.to_gjf_string(), before);
    }
}

TEST(Elements, AreListedAndCountedExactly) {
    const GJFEditor editor = make_editor();
    EXPECT_EQ(editor.get_unique_elements(), (Texts{"C", "H", "O", "h"}));
    EXPECT_EQ(editor.count_atoms_by_element("C"), 2u);
    EXPECT_EQ(editor.count_atoms_by_element("c"), 0u);
    EXPECT_EQ(editor.count_atoms_by_element("H"), 1u);
}

}  // namespace
}  // namespace quor::input::gaussian

// Sections after the molecule: order, replacement, removal, merging.
#include <gjf/core/editor/gjf_editor.hpp>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "../../support/sample_jobs.hpp"

namespace quor::input::gaussian {
namespace {

using test::expect_refused;
using test::make_job;
using Kind = ExtraInputSectionKind;
using Sections = std::vector<std::pair<Kind, std::string>>;

GJFEditor editor_with(const Sections& sections) {
    GJFData data = make_job(3);
    for (const auto& [kind, text] : sections) {
        data.extra_inputs.emplace_back(kind, text);
    }
    return GJFEditor(data);
}

Sections sections_of(const GJFEditor& editor) {
    Sections sections;
    for (std::size_t i = 0; i < editor.get_data().extra_inputs.size(); ++i) {
        sections.emplace_back(editor.get_data().extra_inputs[i].kind, editor.get_data().extra_input_text(i));
    }
    return sections;
}

TEST(ExtraInputEditing, AddsAndReplacesUnknownSections) {
    GJFEditor editor = editor_with({{Kind::BasisSet, "b"}});
    editor.add_extra_input("x");
    EXPECT_EQ(sections_of(editor), (Sections{{Kind::BasisSet, "b"}, {Kind::Unknown, "x"}}));
    editor.set_extra_inputs({"1", "", "2\n3"});
    EXPECT_EQ(sections_of(editor), (Sections{{Kind::Unknown, "1"}, {Kind::Unknown, ""}, {Kind::Unknown, "2\n3"}}));
    editor.clear_extra_inputs();
    EXPECT_TRUE(sections_of(editor).empty());
}

TEST(ExtraInputEditing, InsertsBehindItsOwnAndEarlierKinds) {
    const Sections start = {
        {Kind::CoordinateModifications, "m"}, {Kind::BOMDInput, "1"}, {Kind::BOMDInput, "2"}, {Kind::Unknown, "u"}};
    struct Case {
        Kind kind;
        std::size_t index;
    };
    const Case cases[] = {
        {Kind::Connectivity, 0}, {Kind::CoordinateModifications, 1}, {Kind::AtomicMasses, 1}, {Kind::BOMDInput, 3},
        {Kind::BasisSet, 3},     {Kind::MatrixElementFile, 3},       {Kind::Unknown, 4}};
    for (const Case& c : cases) {
        GJFEditor editor = editor_with(start);
        const std::string text = c.kind == Kind::Connectivity ? "1 2 1.0\n2\n3" : "new";
        EXPECT_EQ(editor.insert_extra_input_ordered(c.kind, text), c.index);
        EXPECT_EQ(sections_of(editor)[c.index], std::make_pair(c.kind, text));
        EXPECT_EQ(sections_of(editor).size(), 5u);
    }
}

TEST(ExtraInputEditing, RefusesWhatWouldBreakTheJobAndKeepsIt) {
    GJFEditor editor = editor_with({{Kind::Connectivity, "1 2 1.0"}, {Kind::Unknown, "u"}});
    const std::string before = editor.to_gjf_string();
    const auto refused = [&](const std::string& message, const std::function<void()>& action) {
        expect_refused(message, action);
        EXPECT_EQ(editor.to_gjf_string(), before);
    };
    const std::string second = "GJF data contains more than one primary connectivity section";
    const std::string outside = "Connectivity references an atom outside the geometry";
    refused(second, [&] { editor.insert_extra_input_ordered(Kind::Connectivity, "1 3 1.0"); });
    refused(second, [&] { editor.set_extra_input(1, Kind::Connectivity, "1 3 1.0"); });
    refused(outside, [&] { editor.set_extra_input(0, Kind::Connectivity, "1 4 1.0"); });
    refused(outside, [&] { editor.upsert_extra_input_section(Kind::Connectivity, "1 4 1.0", true); });
    refused("Incomplete connectivity pair in line: 1 2", [&] { editor.set_extra_input(0, Kind::Connectivity, "1 2"); });
    refused("Connectivity contains a self bond",
            [&] { editor.upsert_extra_input_section(Kind::Connectivity, "2 2 1.0", false); });
    refused("Invalid extra input section index: 2", [&] { editor.set_extra_input(2, Kind::Unknown, ""); });
    refused("Invalid extra input section index: 2", [&] { editor.remove_extra_input(2); });
    refused("Invalid extra input section index: 18446744073709551615", [&] { editor.remove_extra_input(std::size_t(-1)); });
}

TEST(ExtraInputEditing, ReplacesAndRemovesSections) {
    GJFEditor editor = editor_with({{Kind::BasisSet, "b"}, {Kind::ECP, "e"}, {Kind::BasisSet, "c"}, {Kind::Unknown, "u"}});
    editor.set_extra_input(1, Kind::PCMSolvation, "p");
    EXPECT_EQ(sections_of(editor)[1], std::make_pair(Kind::PCMSolvation, std::string("p")));
    editor.remove_extra_inputs_by_kind({Kind::BasisSet, Kind::NBOInput});
    EXPECT_EQ(sections_of(editor), (Sections{{Kind::PCMSolvation, "p"}, {Kind::Unknown, "u"}}));
    editor.remove_extra_input(0);
    EXPECT_EQ(sections_of(editor), (Sections{{Kind::Unknown, "u"}}));
    editor.remove_extra_inputs_by_kind({});
    EXPECT_EQ(sections_of(editor).size(), 1u);
}

TEST(ExtraInputEditing, MergesTexts) {
    struct Case {
        std::string old_text;
        std::string addition;
        std::string merged;
    };
    const Case cases[] = {{"A", "B", "A\nB"},   {"A\n", "B", "A\nB"}, {"A", "\n\r\n\nB", "A\nB"},
                          {"", "B", "B"},       {"", "\nB", "\nB"},   {"A", "", "A"},
                          {"A\n", "\n", "A\n"}, {"A", "\n", "A\n"},   {"A", "B\n", "A\nB\n"}};
    for (const Case& c : cases) {
        GJFEditor editor =
            editor_with({{Kind::MMParameters, c.old_text}, {Kind::MMParameters, "second"}, {Kind::Unknown, "u"}});
        editor.append_molecular_mechanics_parameters(c.addition);
        EXPECT_EQ(sections_of(editor),
                  (Sections{{Kind::MMParameters, c.merged}, {Kind::MMParameters, "second"}, {Kind::Unknown, "u"}}));
    }
}

TEST(ExtraInputEditing, SetsAndClearsMolecularMechanicsParameters) {
    GJFEditor editor = editor_with({{Kind::AtomicMasses, "m"}, {Kind::BasisSet, "b"}});
    editor.set_molecular_mechanics_parameters("p");
    EXPECT_EQ(sections_of(editor), (Sections{{Kind::AtomicMasses, "m"}, {Kind::MMParameters, "p"}, {Kind::BasisSet, "b"}}));
    editor.set_molecular_mechanics_parameters("q");
    EXPECT_EQ(sections_of(editor)[1].second, "q");
    editor.clear_molecular_mechanics_parameters();
    EXPECT_EQ(sections_of(editor).size(), 2u);
    editor.append_molecular_mechanics_parameters("r");
    EXPECT_EQ(sections_of(editor)[1], std::make_pair(Kind::MMParameters, std::string("r")));
}

TEST(ExtraInputEditing, MergesConnectivityWithItsText) {
    GJFEditor editor = editor_with({{Kind::Connectivity, "1 2 1.0"}});
    editor.upsert_extra_input_section(Kind::Connectivity, "2 3 2.0", true);
    EXPECT_EQ(sections_of(editor), (Sections{{Kind::Connectivity, "1 2 1.0\n2 3 2.0\n3"}}));
}

}  // namespace
}  // namespace quor::input::gaussian

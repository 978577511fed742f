// What is written reads back, and is written the same again; an edit changes what it names and nothing else.
#include <gjf/core/editor/gjf_editor.hpp>

#include <gtest/gtest.h>

#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "many_jobs.hpp"

namespace quor::input::gaussian {
namespace {

using test::all_jobs;
using test::NamedJob;

// Where this is skipped, the properties are shown for the examples alone.
TEST(RealFiles, AreAmongThoseTried) {
    if (quor::test::real_files_folder().empty()) {
        GTEST_SKIP() << quor::test::no_real_files;
    }
    EXPECT_GE(test::all_job_files().size(), 160u);
    EXPECT_GE(test::all_jobs().size(), 160u);
}

TEST(RoundTrip, WritingAReadJobGivesTheSameTextAgain) {
    std::size_t same = 0;
    std::size_t zmatrices = 0;
    std::size_t touching = 0;
    for (const NamedJob& job : all_jobs()) {
        GJFEditor editor(job.data);
        if (job.data.geom.format == GeometryFormat::ZMatrix) {
            ++zmatrices;  // the fixed layout does not carry them
            continue;
        }
        if (!editor.atoms_with_touching_coordinates().empty()) {
            ++touching;
            editor.use_numeric_coordinates();
        }
        ASSERT_TRUE(editor.atoms_with_touching_coordinates().empty()) << job.name;
        const std::string once = editor.to_gjf_string();
        const GJFEditor again(GJFParser::parse_string(once));
        EXPECT_EQ(again.to_gjf_string(), once) << job.name;
        EXPECT_EQ(again.get_data().geom.atoms.size(), job.data.geom.atoms.size()) << job.name;
        EXPECT_EQ(again.get_data().title, job.data.title) << job.name;
        ++same;
    }
    EXPECT_GE(same, 20u);
    std::cout << same << " jobs written, read and written alike, " << touching
              << " of them with numeric coordinates since their texts touch; " << zmatrices << " Z-matrices not written\n";
}

// A job as parts, so that an edit can be shown to change only what it names.
struct Parts {
    std::string link0, route, title, charge, sections, bonds;
    std::vector<std::string> labels, freezes, coordinates, layers;
};

std::string join(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts) {
        all += text + "\n";
    }
    return all;
}

Parts parts_of(const GJFEditor& editor) {
    const GJFData& data = editor.get_data();
    const ControlSection& control = data.control;
    Parts parts;
    parts.link0 = control.chk.value_or("-") + "|" + control.oldchk.value_or("-") + "|" + control.rwf.value_or("-") + "|" +
                  control.mem.value_or("-") + "|" + (control.nproc ? std::to_string(*control.nproc) : "-") + "|" +
                  control.cpu.value_or("-") + join(control.other_link0_lines);
    parts.route = join(control.route_keywords);
    parts.title = data.title;
    parts.charge = GJFParser::format_charge_spin_line(editor.get_charge_spin_pairs());
    for (std::size_t i = 0; i < data.extra_inputs.size(); ++i) {
        std::string& target = data.extra_inputs[i].is_connectivity() ? parts.bonds : parts.sections;
        target += data.extra_input_text(i) + "\n";
    }
    for (const AtomCoord& atom : data.geom.atoms) {
        std::string label = atom.info.element + "|" + atom.info.mm_type.value_or("-") + "|" +
                            (atom.info.mm_charge ? std::to_string(*atom.info.mm_charge) : "-");
        for (const auto& [key, value] : atom.info.params) {
            label += "|" + key + "=" + value;
        }
        parts.labels.push_back(label);
        parts.freezes.push_back(atom.freeze ? std::to_string(*atom.freeze) : "-");
        parts.coordinates.push_back(atom.x_ref.text + " " + atom.y_ref.text + " " + atom.z_ref.text + " " +
                                    std::to_string(atom.x));
        parts.layers.push_back(atom.layer.value_or("-"));
    }
    return parts;
}

enum Part : unsigned {
    link0 = 1,
    route = 2,
    title = 4,
    charge = 8,
    sections = 16,
    bonds = 32,
    labels = 64,
    freezes = 128,
    coordinates = 256,
    layers = 512
};

unsigned changed_parts(const Parts& a, const Parts& b) {
    return (a.link0 != b.link0 ? link0 : 0u) | (a.route != b.route ? route : 0u) | (a.title != b.title ? title : 0u) |
           (a.charge != b.charge ? charge : 0u) | (a.sections != b.sections ? sections : 0u) |
           (a.bonds != b.bonds ? bonds : 0u) | (a.labels != b.labels ? labels : 0u) |
           (a.freezes != b.freezes ? freezes : 0u) | (a.coordinates != b.coordinates ? coordinates : 0u) |
           (a.layers != b.layers ? layers : 0u);
}

struct Edit {
    const char* name;
    unsigned may_change;
    std::function<void(GJFEditor&)> apply;
};

const std::vector<Edit>& edits() {
    static const std::vector<Edit> all = {
        {"mem", link0, [](GJFEditor& e) { e.set_mem("1234MB"); }},
        {"chk", link0, [](GJFEditor& e) { e.set_checkpoint_file("new.chk"); }},
        {"nproc", link0, [](GJFEditor& e) { e.set_nproc(77); }},
        {"title", title, [](GJFEditor& e) { e.set_title("another title"); }},
        {"charge", charge, [](GJFEditor& e) { e.set_charge_and_spin(3, 4); }},
        {"freeze all", freezes, [](GJFEditor& e) { e.set_freeze_all(-1); }},
        {"freeze element", freezes, [](GJFEditor& e) { e.set_freeze_by_element("C", 5); }},
        {"layer", layers,
         [](GJFEditor& e) {
             e.set_oniom_layer_by_index({0, 2}, "H");
         }},
        {"fragment", labels, [](GJFEditor& e) { e.set_fragment_by_element("H", "9"); }},
        {"translate", coordinates,
         [](GJFEditor& e) {
             e.translate_atoms({0, 1}, 1, 1, 1);
         }},
        {"scale", coordinates, [](GJFEditor& e) { e.scale_coordinates({1}, 2); }},
        {"rotate", coordinates,
         [](GJFEditor& e) {
             e.rotate_atoms({0, 1, 2}, 0.1, 0.2, 0.3);
         }},
        {"numeric coordinates", coordinates, [](GJFEditor& e) { e.use_numeric_coordinates(); }},
        {"section", sections,
         [](GJFEditor& e) { e.insert_extra_input_ordered(ExtraInputSectionKind::BasisSet, "new\ntext"); }},
        {"parameters", sections, [](GJFEditor& e) { e.append_molecular_mechanics_parameters("NonBon 1"); }},
        {"raw keyword", route, [](GJFEditor& e) { e.add_route_keyword("pop=full"); }},
        {"bonds", bonds, [](GJFEditor& e) { e.clear_connectivity(); }},
    };
    return all;
}

TEST(Edits, ChangeWhatTheyNameAndNothingElse) {
    std::size_t applied = 0;
    for (const NamedJob& job : all_jobs()) {
        const GJFEditor original(job.data);
        const Parts before = parts_of(original);
        for (const Edit& edit : edits()) {
            GJFEditor editor = original;
            edit.apply(editor);
            const unsigned changed = changed_parts(before, parts_of(editor));
            EXPECT_EQ(changed & ~edit.may_change, 0u) << job.name << ": " << edit.name;
            applied += changed != 0 ? 1 : 0;
        }
    }
    EXPECT_GE(applied, 200u);
    std::cout << applied << " edits changed something, each only what it names\n";
}

TEST(Edits, OfTheRouteKeepEveryOtherKeyword) {
    std::size_t compared = 0;
    for (const NamedJob& job : all_jobs()) {
        GJFEditor editor(job.data);
        editor.ensure_parsed_keywords();
        const ParsedKeywords before = editor.get_parsed_keywords();
        editor.upsert_keyword_with_options("density", {{"current", std::nullopt}});
        editor.remove_keyword_by_name("density");
        editor.parse_keywords("");
        const ParsedKeywords& after = editor.get_parsed_keywords();
        EXPECT_EQ(after.method, before.method) << job.name;
        EXPECT_EQ(after.basis_set, before.basis_set) << job.name;
        EXPECT_EQ(after.oniom_expression, before.oniom_expression) << job.name;
        std::vector<std::string> expected;
        std::vector<std::string> found;
        for (const KeywordInfo& keyword : before.keywords) {
            if (keyword.name != "density") {
                expected.push_back(keyword.raw);
            }
        }
        for (const KeywordInfo& keyword : after.keywords) {
            found.push_back(keyword.raw);
        }
        if (!before.oniom_expression.empty()) {  // it is written at the head of the route
            std::sort(expected.begin(), expected.end());
            std::sort(found.begin(), found.end());
        }
        EXPECT_EQ(found, expected) << job.name;
        ++compared;
    }
    EXPECT_GE(compared, 20u);
}

}  // namespace
}  // namespace quor::input::gaussian

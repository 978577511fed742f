// The job an editor owns: construction, replacement, route cache, title, charge and Link 0 values.
#include <gjf/core/editor/gjf_editor.hpp>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "../../support/sample_jobs.hpp"

namespace quor::input::gaussian {
namespace {

using test::expect_refused;
using test::make_job;

GJFData with_bonds(std::size_t atoms, const std::vector<Bond>& bonds, std::size_t sections = 1) {
    GJFData data = make_job(atoms);
    ConnectivitySection connectivity;
    connectivity.bonds = bonds;
    for (std::size_t i = 0; i < sections; ++i) {
        data.extra_inputs.push_back(ExtraInputSection::from_connectivity(connectivity));
    }
    return data;
}

struct BadJob {
    GJFData data;
    std::string message;
};

std::vector<BadJob> bad_jobs() {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    const std::string outside = "Connectivity references an atom outside the geometry";
    const std::string self = "Connectivity contains a self bond";
    return {
        {with_bonds(2, {{0, 2, 1}}), outside},
        {with_bonds(2, {{0, 1, 1}, {5, 6, nan}}), outside},
        {with_bonds(0, {{0, 1, 1}}), outside},
        {with_bonds(2, {{1, 1, 1}}), self},
        {with_bonds(2, {{1, 1, nan}, {0, 9, 1}}), self},
        {with_bonds(2, {{0, 1, nan}}), "Connectivity contains a non-finite bond order"},
        {with_bonds(2, {{0, 1, infinity}}), "Connectivity contains a non-finite bond order"},
        {with_bonds(2, {}, 2), "GJF data contains more than one primary connectivity section"},
        {with_bonds(2, {{0, 5, 1}}, 2), "GJF data contains more than one primary connectivity section"},
    };
}

TEST(GJFEditor, RefusesJobsWithBadBonds) {
    for (const BadJob& bad : bad_jobs()) {
        expect_refused(bad.message, [&] { GJFEditor editor(bad.data); });
    }
}

TEST(GJFEditor, KeepsItsJobWhenANewOneIsRefused) {
    GJFEditor editor(make_job(3));
    const std::string before = editor.to_gjf_string();
    for (const BadJob& bad : bad_jobs()) {
        expect_refused(bad.message, [&] { editor.set_data(bad.data); });
        EXPECT_EQ(editor.to_gjf_string(), before);
    }
    editor.set_data(make_job(1));
    EXPECT_EQ(editor.get_data().geom.atoms.size(), 1u);
}

TEST(GJFEditor, IsCopiedByAssignmentWithAllItKnows) {
    GJFEditor original(make_job(3));
    original.add_extra_input("before");
    original.remove_atom(0);
    original.add_extra_input("after");
    GJFEditor copy(make_job(1));
    copy = original;
    original.clear_atoms();
    EXPECT_EQ(copy.get_data().geom.atoms.size(), 2U);
    EXPECT_EQ(copy.atom_origins(), (std::vector<std::size_t>{1, 2}));
    ASSERT_EQ(copy.section_numberings().size(), 2U);
    EXPECT_EQ(copy.section_numberings()[0].origins, nullptr);
    ASSERT_NE(copy.section_numberings()[1].origins, nullptr);
    EXPECT_EQ(*copy.section_numberings()[1].origins, (std::vector<std::size_t>{1, 2}));
}

TEST(GJFEditor, TakesAJobWithTheOriginsOfItsAtoms) {
    using Origins = std::vector<std::size_t>;
    GJFEditor editor(make_job(4));
    editor.set_data(make_job(2), {3, GJFEditor::no_origin});
    EXPECT_EQ(editor.atom_origins(), (Origins{3, GJFEditor::no_origin}));
    const std::string before = editor.to_gjf_string();
    expect_refused("There must be one numbering for each section", [&] {
        editor.set_data(make_job(2), Origins{0, 1}, {GJFEditor::SectionNumbering()});
    });
    for (const Origins& origins : {Origins{}, Origins{0}, Origins{0, 1, 2, 3}}) {
        expect_refused("There must be one origin for each atom", [&] { editor.set_data(make_job(3), origins); });
    }
    for (const BadJob& bad : bad_jobs()) {
        Origins origins(bad.data.geom.atoms.size(), 0);
        expect_refused(bad.message, [&] { editor.set_data(bad.data, origins); });
    }
    EXPECT_EQ(editor.atom_origins(), (Origins{3, GJFEditor::no_origin}));
    EXPECT_EQ(editor.to_gjf_string(), before);
    editor.remove_atom(0);
    EXPECT_EQ(editor.atom_origins(), Origins{GJFEditor::no_origin});
    editor.set_data(make_job(1));
    EXPECT_EQ(editor.atom_origins(), Origins{GJFEditor::no_origin});
}

TEST(GJFEditor, TakesAnyAtomNumberWhereTheMoleculeComesFromACheckpoint) {
    for (const char* route : {"# hf geom=(check,connectivity)", "# hf geom=(allcheck,connectivity)"}) {
        GJFData data = with_bonds(0, {{0, 99, 1}});
        data.control = GJFParser::parse_control_section({route});
        EXPECT_NO_THROW(GJFEditor{data}) << route;
        GJFData beyond = data;
        beyond.extra_inputs[0].mutable_connectivity()->bonds.push_back({0, largest_atom_count, 1});
        expect_refused("Connectivity references an atom outside the geometry", [&] { GJFEditor editor(beyond); });
        data.extra_inputs[0].mutable_connectivity()->bonds.push_back({7, 7, 1});
        expect_refused("Connectivity contains a self bond", [&] { GJFEditor editor(data); });
    }
}

TEST(GJFEditor, CountsTheRowsOfAZMatrixAsAtoms) {
    GJFData data = GJFParser::parse_string("# hf\n\nt\n\n0 1\nO\nH 1 1.0\n");
    data.extra_inputs.emplace_back(ExtraInputSectionKind::Connectivity, "1 2 1.0");
    EXPECT_NO_THROW(GJFEditor{data});
    data.extra_inputs[0] = ExtraInputSection(ExtraInputSectionKind::Connectivity, "1 3 1.0");
    expect_refused("Connectivity references an atom outside the geometry", [&] { GJFEditor editor(data); });
}

TEST(GJFEditor, FillsTheRouteCacheOnRequest) {
    GJFEditor editor(make_job(1));
    EXPECT_TRUE(editor.has_parsed_keywords());
    editor.set_route_section({"#p", "b3lyp/6-31g(d)", "opt"});
    EXPECT_FALSE(editor.has_parsed_keywords());
    expect_refused("Keywords have not been parsed yet. Call parse_keywords() first.", [&] { editor.get_parsed_keywords(); });
    editor.parse_keywords("");
    EXPECT_EQ(editor.get_parsed_keywords().method, "b3lyp");
    editor.set_route_section({"#", "mp2/cc-pvdz"});
    editor.ensure_parsed_keywords();
    EXPECT_EQ(editor.get_parsed_keywords().basis_set, "cc-pvdz");
    editor.ensure_parsed_keywords();
    EXPECT_EQ(editor.get_parsed_keywords().method, "mp2");
}

TEST(GJFEditor, KeepsTheCacheOfAnEmptyRoute) {
    GJFEditor editor(make_job(1));
    ParsedKeywords keywords;
    keywords.method = "kept";
    editor.set_route_section({});
    editor.set_parsed_keywords(keywords);
    editor.parse_keywords("");
    EXPECT_EQ(editor.get_parsed_keywords().method, "kept");
    editor.set_route_section({});
    editor.ensure_parsed_keywords();
    EXPECT_EQ(editor.get_parsed_keywords().method, "");
    EXPECT_TRUE(editor.has_parsed_keywords());
}

TEST(GJFEditor, ParsesWithoutAVocabularyWhenTheNamedOneIsMissing) {
    GJFEditor editor(make_job(1));
    editor.parse_keywords("/no/such/vocabulary.yaml");
    EXPECT_EQ(editor.get_parsed_keywords().method, "");
    EXPECT_FALSE(editor.get_parsed_keywords().keywords.empty());
}

TEST(GJFEditor, SetsTitleAndPairs) {
    GJFEditor editor(make_job(1));
    editor.set_title("new");
    EXPECT_EQ(editor.get_data().title, "new");
    editor.set_charge_spin_pairs({{1, 2}, {0, 1}, {-1, 3}});
    editor.set_charge_and_spin(5, 6);
    std::vector<ChargeSpinPair> pairs = editor.get_charge_spin_pairs();
    ASSERT_EQ(pairs.size(), 3u);
    EXPECT_EQ(pairs[0].charge, 5);
    EXPECT_EQ(pairs[0].multiplicity, 6);
    EXPECT_EQ(pairs[2].multiplicity, 3);
    editor.set_charge_spin_pairs({});
    pairs = editor.get_charge_spin_pairs();
    ASSERT_EQ(pairs.size(), 1u);
    EXPECT_EQ(pairs[0].charge, 0);
    EXPECT_EQ(pairs[0].multiplicity, 0);
}

TEST(GJFEditor, SetsRemovesAndGivesLink0Values) {
    struct Accessors {
        const char* key;
        void (GJFEditor::*set)(const std::string&);
        void (GJFEditor::*remove)();
        std::optional<std::string> (GJFEditor::*get)() const;
    };
    const Accessors all[] = {
        {"%oldchk=", &GJFEditor::set_oldchk_file, &GJFEditor::remove_oldchk_file, &GJFEditor::get_oldchk_file},
        {"%rwf=", &GJFEditor::set_rwf_file, &GJFEditor::remove_rwf_file, &GJFEditor::get_rwf_file},
        {"%mem=", &GJFEditor::set_mem, &GJFEditor::remove_mem, &GJFEditor::get_mem},
        {"%cpu=", &GJFEditor::set_cpu, &GJFEditor::remove_cpu, &GJFEditor::get_cpu},
    };
    GJFEditor editor(make_job(1));
    for (const Accessors& item : all) {
        EXPECT_FALSE((editor.*item.get)().has_value());
        for (const std::string value : {"x y", ""}) {
            (editor.*item.set)(value);
            EXPECT_EQ((editor.*item.get)(), value);
            EXPECT_EQ(editor.to_gjf_string().rfind(item.key + value + "\n", 0), 0u);
        }
        (editor.*item.remove)();
        EXPECT_FALSE((editor.*item.get)().has_value());
        EXPECT_EQ(editor.to_gjf_string().find(item.key), std::string::npos);
    }
    editor.set_nproc(-3);
    EXPECT_EQ(editor.get_nproc(), -3);
    editor.remove_nproc();
    EXPECT_FALSE(editor.get_nproc().has_value());
    editor.set_checkpoint_file("c.chk");
    EXPECT_EQ(editor.get_data().control.chk, "c.chk");
    editor.remove_checkpoint_file();
    EXPECT_EQ(editor.get_data().control.chk, std::nullopt);
    editor.set_other_link0_lines({"%save", ""});
    EXPECT_EQ(editor.get_data().control.other_link0_lines, (std::vector<std::string>{"%save", ""}));
    editor.set_overlays("1/1=1/2;");
    EXPECT_EQ(editor.get_data().extra_overlays, "1/1=1/2;");
    editor.set_overlays(std::nullopt);
    EXPECT_EQ(editor.get_data().extra_overlays, std::nullopt);
}

TEST(GJFEditor, TakesOutOtherSpellingsOfTheProcessorCount) {
    const std::pair<const char*, bool> cases[] = {
        {"%nprocs=4", true},
        {"%NProcSh = 4", true},
        {"% nproc=4", true},
        {"%nprocshare=4", true},
        {"%nproclinda=4", false},
        {"%nprox=4", false},
        {"%nproc", true},
        {"%nprocsharedx=4", false},
        {"%npro=4", false},
        {"%mem=4", false},
        {"%usessh=nproc", false},
        {"%", false},
        {"", false},
    };
    for (const auto& [line, goes] : cases) {
        for (const bool set : {true, false}) {
            GJFEditor editor(make_job(1));
            editor.set_other_link0_lines({line, "%save"});
            set ? editor.set_nproc(8) : editor.remove_nproc();
            EXPECT_EQ(editor.get_data().control.other_link0_lines.size(), goes ? 1U : 2U) << line;
            EXPECT_EQ(editor.get_nproc(), set ? std::optional<int>(8) : std::nullopt) << line;
        }
    }
}

TEST(GJFEditor, SetsAllPositionsOrNone) {
    GJFEditor editor(GJFParser::parse_string("# hf\n\nt\n\n0 1\nH r 0.0 0.0\nH 1.0 0.0 0.0\n\nr=0.5\n\n"));
    for (const std::size_t count : {0U, 1U, 3U}) {
        expect_refused("There must be one position for each atom",
                       [&] { editor.set_positions(std::vector<std::array<double, 3>>(count)); });
    }
    EXPECT_EQ(editor.get_data().geom.atoms[0].x_ref.text, "r");
    editor.set_positions({{1, 2, 3}, {4, 5, 6}});
    EXPECT_EQ(editor.get_data().geom.atoms[0].x_ref.text, "");
    EXPECT_EQ(editor.get_data().geom.atoms[1].z, 6.0);
    EXPECT_TRUE(editor.get_data().geom.cartesian_variables.empty());
}

}  // namespace
}  // namespace quor::input::gaussian

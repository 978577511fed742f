// The written layout of a job, line by line, and that it reads back.
#include <gjf/core/editor/gjf_editor.hpp>

#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/schema/candidate_group.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "../../support/sample_jobs.hpp"
#include "../../support/files.hpp"

namespace quor::input::gaussian {
namespace {

using test::expect_refused;
using test::make_job;

std::string written(const GJFData& data) { return GJFEditor(data).to_gjf_string(); }

std::string atom_line(const AtomCoord& atom) {
    GJFData data;
    data.geom.multiplicity = 1;
    data.geom.atoms.push_back(atom);
    const std::string text = written(data);
    const std::string head = "\n\n0 1\n";
    EXPECT_EQ(text.substr(0, head.size()), head);
    return text.substr(head.size(), text.find('\n', head.size()) - head.size());
}

std::string blanks(std::size_t count) { return std::string(count, ' '); }

TEST(JobWriter, WritesAnEmptyJobAsEmptyLinesAndAChargeLine) {
    GJFData data;
    data.geom.charge = 0;
    data.geom.multiplicity = 1;
    EXPECT_EQ(written(data), "\n\n0 1\n\n\n");
    // Without a charge line nothing is left but line breaks, and these are no text.
    EXPECT_EQ(written(GJFData()), "");
}

TEST(JobWriter, WritesLink0LinesInTheirFixedOrder) {
    GJFData data;
    data.geom.multiplicity = 1;
    ControlSection& control = data.control;
    control.cpu = "0-3";
    control.nproc = 4;
    control.mem = "";
    control.rwf = "r";
    control.chk = "c";
    control.oldchk = "o";
    control.other_link0_lines = {"%nosave", "%kjob l301"};
    EXPECT_EQ(written(data), "%oldchk=o\n%chk=c\n%rwf=r\n%mem=\n%nproc=4\n%cpu=0-3\n%nosave\n%kjob l301\n\n\n0 1\n\n\n");
    control.mem.reset();
    EXPECT_EQ(written(data).find("%mem"), std::string::npos);
}

TEST(JobWriter, WritesTheRouteOnOneLineWithABlankBehindEachWord) {
    GJFData data;
    data.geom.multiplicity = 1;
    data.control.route_keywords = {"#p", "opt", "freq"};
    data.title = "two\nlines";
    data.extra_overlays = "1/2=3/4;";
    EXPECT_EQ(written(data), "#p opt freq \n\n1/2=3/4;\n\ntwo\nlines\n\n0 1\n\n\n");
    data.extra_overlays = "";
    EXPECT_EQ(written(data), "#p opt freq \n\n\n\ntwo\nlines\n\n0 1\n\n\n");
}

TEST(JobWriter, WritesAtomsInFixedColumns) {
    struct Case {
        AtomCoord atom;
        std::string line;
    };
    AtomCoord plain;
    plain.info.element = "C";
    plain.x = 1;
    plain.y = -2.5;
    plain.z = 0.1234567;
    AtomCoord typed = plain;
    typed.info.mm_type = "CA";
    typed.info.mm_charge = 0.1;
    typed.info.params = {{"ResName", "ALA"}, {"Fragment", "1"}};
    typed.freeze = -1;
    typed.layer = "H";
    AtomCoord charged = plain;
    charged.info.mm_charge = -0.4;
    charged.layer = "";
    charged.freeze = 0;
    AtomCoord variable = plain;
    variable.x_ref.text = "rx";
    variable.y_ref.text = "-2.50000000000";
    AtomCoord wide = plain;
    wide.info.element = std::string(45, 'X');
    const std::string numbers = "1.000000    -2.500000   0.123457    ";
    const Case cases[] = {
        {plain, "C" + blanks(39) + "    " + numbers + "   "},
        {typed, "C-CA-0.1000000000(Fragment=1,ResName=ALA) -1 " + numbers + " H "},
        {charged, "C--0.4000000000" + blanks(25) + " 0  " + numbers + "   "},
        {variable, "C" + blanks(39) + "    rx          -2.500000000000.123457    " + "   "},
        {wide, std::string(45, 'X') + "    " + numbers + "   "},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(atom_line(c.atom), c.line);
    }
    AtomCoord fragment = plain;
    fragment.info.mm_type = "CA";
    fragment.info.mm_charge = 0.1;
    fragment.info.params = {{"Fragment", "1"}};
    EXPECT_EQ(atom_line(fragment).substr(0, 41), "C-CA-0.1000000000(Fragment=1)" + blanks(12));
}

TEST(JobWriter, WritesCartesianVariablesAfterAnEmptyLine) {
    GJFData data = make_job(1);
    data.geom.atoms[0].x_ref = {"a", std::nullopt};
    data.geom.cartesian_variables = {{"a", "1.5"}, {"b", "2"}};
    const std::string text = written(data);
    EXPECT_NE(text.find("\n\na=1.5\nb=2\n\n\n"), std::string::npos);
    const GJFData read = GJFParser::parse_string(text);
    ASSERT_EQ(read.geom.cartesian_variables.size(), 2u);
    EXPECT_EQ(read.geom.cartesian_variables[1].value, "2");
    EXPECT_EQ(read.geom.atoms[0].x_ref.text, "a");
    EXPECT_EQ(read.geom.atoms[0].x, 0.0);
}

TEST(JobWriter, SeparatesSectionsByOneEmptyLine) {
    GJFData data = make_job(2, "#p hf/sto-3g geom=connectivity");
    data.extra_inputs = {ExtraInputSection(ExtraInputSectionKind::Connectivity, "1 2 1.5"),
                         ExtraInputSection(ExtraInputSectionKind::Unknown, "a\nb"),
                         ExtraInputSection(ExtraInputSectionKind::Unknown, "c\n\n")};
    const std::string text = written(data);
    EXPECT_EQ(text.substr(text.find("\n\n1 2")), "\n\n1 2 1.5\n2\n\na\nb\n\nc\n\n\n");
}

TEST(JobWriter, WritesNoMoleculeThatComesFromACheckpoint) {
    const GJFData check = GJFParser::parse_string("# hf geom=check\n\nt\n\n-1 2\n");
    GJFData with_atoms = check;
    with_atoms.geom.atoms = make_job(1).geom.atoms;
    with_atoms.extra_inputs.emplace_back(ExtraInputSectionKind::Unknown, "x");
    EXPECT_EQ(written(with_atoms), "# hf geom=check \n\nt\n\n-1 2\n\nx\n\n\n");

    GJFData all = GJFParser::parse_string("%chk=a\n# hf geom=allcheck\n\nx\n\ny\n");
    all.title = "not written";
    all.extra_overlays = "o";
    EXPECT_EQ(written(all), "%chk=a\n# hf geom=allcheck \n\no\n\nx\n\ny\n\n\n");
}

TEST(JobWriter, WritesNoZMatrix) {
    const GJFData data = GJFParser::parse_string("# hf\n\nt\n\n0 1\nO\nH 1 r\n\nr=1\n");
    EXPECT_EQ(written(data), "# hf \n\nt\n\n0 1\n\n\n");
}

TEST(JobWriter, ReadsBackWhatItWrote) {
    const std::string texts[] = {
        "%chk=a\n#p b3lyp/6-31g(d) opt=modredundant geom=connectivity\n\n\n\n0 1 0 1\n"
        "C-CT--0.12(PDBName=CA,ResName=ALA) -1 1.0 2.0 -3.25 H\nH 0 0 0 1 L\n\n1 2 1.0\n2\n\nB 1 2 F\n\nhelix\n",
        "# hf\n\nt\n\n0 1\nH 0 0 0\nH 0 0 .7\n\nleft over\n\nmore\n",
        "# hf/gen opt=qst2\n\nt\n\n0 1\nH 0 0 0\n\nt2\n\n0 1\nH 0 0 1\n\nH 0\nsto-3g\n****\n",
    };
    for (const std::string& text : texts) {
        const GJFData first = GJFParser::parse_string(text);
        const std::string once = written(first);
        const GJFData second = GJFParser::parse_string(once);
        EXPECT_EQ(written(second), once) << once;
        EXPECT_EQ(second.title, first.title);
        ASSERT_EQ(second.geom.atoms.size(), first.geom.atoms.size());
        for (std::size_t i = 0; i < first.geom.atoms.size(); ++i) {
            const AtomCoord& a = first.geom.atoms[i];
            const AtomCoord& b = second.geom.atoms[i];
            EXPECT_EQ(a.info.element, b.info.element);
            EXPECT_EQ(a.info.mm_type, b.info.mm_type);
            EXPECT_EQ(a.info.mm_charge, b.info.mm_charge);
            EXPECT_EQ(a.info.params, b.info.params);
            EXPECT_EQ(a.freeze, b.freeze);
            EXPECT_EQ(a.layer, b.layer);
            EXPECT_EQ(a.z, b.z);
        }
        ASSERT_EQ(second.extra_inputs.size(), first.extra_inputs.size());
        for (std::size_t i = 0; i < first.extra_inputs.size(); ++i) {
            EXPECT_EQ(second.extra_inputs[i].kind, first.extra_inputs[i].kind);
            EXPECT_EQ(second.extra_input_text(i), first.extra_input_text(i));
        }
    }
}

TEST(JobWriter, FindsAtomsWhoseCoordinatesTouch) {
    GJFData data = make_job(4);
    data.geom.atoms[1].x_ref = {"0.1234567890", 0.123456789};  // fills the column
    data.geom.atoms[2].z_ref.text = "0.12345678901234";
    data.geom.atoms[3].x_ref = {};
    data.geom.atoms[3].x = -12345.678901;
    GJFEditor editor(data);
    EXPECT_EQ(editor.atoms_with_touching_coordinates(), (std::vector<std::size_t>{1, 3}));
    editor.use_numeric_coordinates();
    // A number can fill its column too: then six decimals are too many for it.
    EXPECT_EQ(editor.atoms_with_touching_coordinates(), std::vector<std::size_t>{3});
}

TEST(JobWriter, GivesDecimalsToWhatWouldBeReadAsAFreezeCode) {
    const struct {
        std::optional<std::int32_t> freeze;
        std::optional<std::string> layer;
        const char* x;
        const char* written;
    } cases[] = {
        {std::nullopt, "H", "1", "1.000000"},
        {std::nullopt, "H", "-2", "-2.000000"},
        {std::nullopt, "H", "1.0", "1.0"},
        {std::nullopt, "H", "1.", "1."},
        {std::nullopt, "", "1", "1"},
        {std::nullopt, std::nullopt, "1", "1"},
        {0, "H", "1", "1"},
        {-1, std::nullopt, "1", "1"},
    };
    for (const auto& c : cases) {
        AtomCoord atom;
        atom.info.element = "C";
        atom.freeze = c.freeze;
        atom.layer = c.layer;
        atom.x_ref = {c.x, GJFParser::is_number(c.x) ? std::optional<double>(std::stod(c.x)) : std::nullopt};
        atom.x = std::stod(c.x);
        atom.y_ref = atom.z_ref = {"0", 0.0};
        const std::string line = atom_line(atom);
        EXPECT_EQ(line.substr(44, 12), c.written + blanks(12 - std::string(c.written).size())) << c.x;
        const AtomCoord read = GJFParser::parse_geometry_section({"0 1", line}).atoms.at(0);
        EXPECT_EQ(read.x, atom.x) << line;
        EXPECT_EQ(read.freeze, atom.freeze) << line;
    }
}

TEST(JobWriter, FindsLabelsThatAreReadAsOthers) {
    const std::tuple<const char*, const char*, const char*, bool> cases[] = {
        {"C", "CT", "1", true},    {"C", "", "", true},   {"Cl", "O3", "", true},    {"O5'", "", "", true},
        {"C", "C T", "", false},   {"C", "1", "", false}, {"C", "CT", "a,b", false}, {"C", "C!T", "", false},
        {"C", "CT", "a)b", false}, {"", "", "", false},   {"C(x)", "", "", false},   {"C-CT", "", "", false},
        {"C", "CT", " a", false},
    };
    for (const auto& [element, type, fragment, reads_back] : cases) {
        GJFEditor editor(make_job(2));
        AtomCoord atom;
        atom.info.element = element;
        if (*type != '\0') {
            atom.info.mm_type = type;
        }
        if (*fragment != '\0') {
            atom.info.params["Fragment"] = fragment;
        }
        editor.replace_atom(1, atom);
        EXPECT_EQ(editor.labels_that_do_not_read_back(),
                  reads_back ? std::vector<std::size_t>() : std::vector<std::size_t>{1})
            << element << ", " << type << ", " << fragment;
    }
    GJFEditor editor(make_job(1));
    editor.set_atom_mm_charge(0, 0.12345678901234);
    EXPECT_TRUE(editor.labels_that_do_not_read_back().empty()) << "a charge is written with ten decimals";
}

TEST(JobWriter, DropsTheTextsOfNumericCoordinatesAlone) {
    GJFEditor editor(GJFParser::parse_string("# hf\n\nt\n\n0 1\nH 0.12345678901 r -2.00000000000\nr=1\n"));
    EXPECT_EQ(editor.atoms_with_touching_coordinates(), std::vector<std::size_t>{0});
    editor.use_numeric_coordinates();
    EXPECT_TRUE(editor.atoms_with_touching_coordinates().empty());
    const AtomCoord& atom = editor.get_data().geom.atoms[0];
    EXPECT_EQ(atom.x_ref.text, "");
    EXPECT_EQ(atom.y_ref.text, "r");
    EXPECT_EQ(GJFParser::parse_string(editor.to_gjf_string()).geom.atoms[0].x, 0.123457);
}

TEST(JobWriter, SavesToAFileOrSaysWhyNot) {
    const GJFEditor editor(make_job(1));
    const quor::test::TemporaryFolder folder;
    editor.save_to_file(folder / "job.gjf");
    EXPECT_EQ(quor::test::bytes_of(folder / "job.gjf"), editor.to_gjf_string());
    expect_refused("Cannot write file: /nowhere/at/all.gjf", [&] { editor.save_to_file("/nowhere/at/all.gjf"); });
}

TEST(JobWriter, WritesManyAtomsAndBondsInOnePass) {
    constexpr std::size_t count = 100'000;
    GJFData data = make_job(1, "#p hf/sto-3g geom=connectivity");
    data.geom.atoms.resize(count, data.geom.atoms[0]);
    ConnectivitySection bonds;
    for (std::size_t i = 0; i + 1 < count; ++i) {
        bonds.bonds.push_back({i, i + 1, 1.0});
    }
    data.extra_inputs.push_back(ExtraInputSection::from_connectivity(bonds));
    const GJFData read = GJFParser::parse_string(written(data));
    EXPECT_EQ(read.geom.atoms.size(), count);
    EXPECT_EQ(read.connectivity()->bonds, bonds.bonds);
}

// The writer looks for geom only in routes with these letters.
TEST(JobWriter, KnowsGeomByTheLettersOfEachSpelling) {
    const SimpleYAMLParser& schema = default_route_schema();
    const CandidateGroup* geom = schema.identify_keyword("geom").keyword;
    ASSERT_NE(geom, nullptr);
    for (const std::string& form : geom->forms) {
        EXPECT_NE(form.find("ge"), std::string::npos) << form;
    }
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        EXPECT_FALSE(schema.keywords_equivalent(std::string(1, letter), "geom")) << letter;
    }
    const GJFData data = GJFParser::parse_string("# hf Geom=Chk\n\nt\n\n0 1\n");
    EXPECT_EQ(GJFEditor(data).to_gjf_string(), "# hf Geom=Chk \n\nt\n\n0 1\n\n\n");
}

}  // namespace
}  // namespace quor::input::gaussian

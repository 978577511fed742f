// Molecule sections: charge lines, atom labels, Cartesian atoms, Z-matrices and variables.
#include <gjf/core/reader/gjf_parser.hpp>

#include <gtest/gtest.h>

#include <charconv>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace quor::input::gaussian {
namespace {

using Texts = std::vector<std::string>;

// As std::to_string writes it in the C locale.
std::string six_decimals(double number) {
    char text[400];
    return {text, std::to_chars(text, std::end(text), number, std::chars_format::fixed, 6).ptr};
}

std::string refusal_of_molecule(const Texts& lines) {
    try {
        GJFParser::parse_geometry_section(lines);
        return "";
    } catch (const GJFParseException& error) {
        return std::string(error.what()).substr(17);
    }
}

TEST(ChargeLines, HoldPairs) {
    const std::pair<std::string, std::vector<int>> cases[] = {{"0 1", {0, 1}},
                                                              {"0,1", {0, 1}},
                                                              {" -1\t2 ", {-1, 2}},
                                                              {"0 1 0 1 0 1", {0, 1, 0, 1, 0, 1}},
                                                              {"+1, 2 ! cation", {1, 2}},
                                                              {"0 -1", {0, -1}}};
    for (const auto& [line, numbers] : cases) {
        std::vector<int> found;
        for (const ChargeSpinPair& pair : GJFParser::parse_charge_spin_line(line)) {
            found.push_back(pair.charge);
            found.push_back(pair.multiplicity);
        }
        EXPECT_EQ(found, numbers) << line;
    }
    for (const char* line : {"", "0", "0 1 0", "0 x", "0.0 1", "a b", "! 0 1", "(0 1)"}) {
        try {
            GJFParser::parse_charge_spin_line(line);
            ADD_FAILURE() << line;
        } catch (const GJFParseException& error) {
            EXPECT_EQ(error.what(), std::string("GJF Parse Error: Invalid charge/spin line: ") + line);
        }
    }
    for (const char* line : {"0 2147483648", "-2147483649 1", "0 1 99999999999999999999 1"}) {
        EXPECT_THROW(GJFParser::parse_charge_spin_line(line), std::out_of_range) << line;
    }
}

TEST(ChargeLines, OpenAMolecule) {
    for (const char* line : {"0 1", "0,1", "0 1 0 1", " 1 2 ! x"}) {
        EXPECT_TRUE(GJFParser::is_valid_geometry_first_line(line)) << line;
    }
    for (const char* line : {"", "0", "0 1 0", "C 0 0 0", "0 1.0", "title"}) {
        EXPECT_FALSE(GJFParser::is_valid_geometry_first_line(line)) << line;
    }
}

TEST(AtomLabels, AreTakenApart) {
    struct Case {
        std::string label, element, type, charge, params;
    };
    const Case cases[] = {
        {"C", "C", "-", "-", ""},
        {"C-CT", "C", "CT", "-", ""},
        {"O-OW--0.834", "O", "OW", "-0.834000", ""},
        {"C-CT--0.12", "C", "CT", "-0.120000", ""},
        {"C-CT-0.12", "C", "CT", "0.120000", ""},
        {"C--0.4", "C", "-", "-0.400000", ""},
        {"C-0.4", "C", "-", "0.400000", ""},
        {"C-1", "C", "-", "1.000000", ""},
        {"C(Fragment=2)", "C", "-", "-", "Fragment=2;"},
        {"C-CT(PDBName=CA,ResName=ALA, ResNum = 1 )", "C", "CT", "-", "PDBName=CA;ResName=ALA;ResNum=1;"},
        {"C(a=1,a=2,A=3)", "C", "-", "-", "A=3;a=2;"},
        {"C(x)", "C", "-", "-", "x=;"},
        {"C(a=b=c)", "C", "-", "-", "a=b=c;"},
        {"C(a=1)-CT", "C", "-", "-", "a=1;"},
        {"C-", "C", "-", "-", ""},
        {"C(a=1", "C(a=1", "-", "-", ""},
        {" H - HC ", "H", "HC", "-", ""},
        {"H-Bq", "H", "Bq", "-", ""},
        {"C-CT-1e999", "C", "CT-1e999", "-", ""},
        {"C-inf", "C", "inf", "-", ""},
        {"C-N-A-B", "C", "N-A-B", "-", ""},
        {"", "", "-", "-", ""},
        {"6", "6", "-", "-", ""},
    };
    for (const Case& c : cases) {
        const AtomInfo info = GJFParser::parse_atom_info(c.label);
        std::string params;
        for (const auto& [key, value] : info.params) {
            params += key + "=" + value + ";";
        }
        EXPECT_EQ(info.element, c.element) << c.label;
        EXPECT_EQ(info.mm_type.value_or("-"), c.type) << c.label;
        EXPECT_EQ(info.mm_charge ? six_decimals(*info.mm_charge) : "-", c.charge) << c.label;
        EXPECT_EQ(params, c.params) << c.label;
    }
}

TEST(CartesianAtoms, HaveFreezeCodesCoordinatesAndLayers) {
    struct Case {
        std::string line, label, freeze, x, z, layer;
    };
    const Case cases[] = {
        {"C 1.0 2.0 3.0", "C", "-", "1.0", "3.0", "-"},
        {"C 0 1.0 2.0 3.0", "C", "0", "1.0", "3.0", "-"},
        {"C 0 1.0 2.0 3.0 H", "C", "0", "1.0", "3.0", "H"},
        {"C -1 0.0 0.0 0.0 L H 4", "C", "-1", "0.0", "0.0", "L"},
        {"C 1.0 2.0 3.0 M", "C", "-", "1.0", "3.0", "M"},
        {"C,1.0,2.0,3.0", "C", "-", "1.0", "3.0", "-"},
        {"C 0 0 1", "C", "-", "0", "1", "-"},
        {" 6\t+1.5 .5 -1e-3", "6", "-", "+1.5", "-1e-3", "-"},
        {"C r1 -r2 +_x9", "C", "-", "r1", "+_x9", "-"},
        {"C(PDBName=O5',ResNum=1) 0 1.0 2.0 3.0", "C", "0", "1.0", "3.0", "-"},
        {"Tv 0.0 0.0 5.0 ! vector", "Tv", "-", "0.0", "5.0", "-"},
    };
    for (const Case& c : cases) {
        const GeomSection geom = GJFParser::parse_geometry_section({"0 1", "H 0.0 0.0 0.0", c.line});
        ASSERT_EQ(geom.atoms.size(), 2u) << c.line;
        const AtomCoord& atom = geom.atoms[1];
        EXPECT_EQ(atom.info.element, c.label) << c.line;
        EXPECT_EQ(atom.freeze ? std::to_string(*atom.freeze) : "-", c.freeze) << c.line;
        EXPECT_EQ(atom.x_ref.text, c.x) << c.line;
        EXPECT_EQ(atom.z_ref.text, c.z) << c.line;
        EXPECT_EQ(atom.layer.value_or("-"), c.layer) << c.line;
        EXPECT_EQ(geom.molecule_lines[1], c.line);
    }
}

TEST(CartesianAtoms, MayBeSymbolic) {
    const GeomSection geom = GJFParser::parse_geometry_section({"0 1", "C R1 0.5 -R1", "H 0 0 0", "R1=1.5", "b = -2,"});
    EXPECT_EQ(geom.atoms[0].x_ref.text, "R1");
    EXPECT_FALSE(geom.atoms[0].x_ref.value.has_value());
    EXPECT_EQ(geom.atoms[0].x, 0.0);
    EXPECT_EQ(geom.atoms[0].y, 0.5);
    EXPECT_EQ(geom.atoms[0].z_ref.text, "-R1");
    ASSERT_EQ(geom.cartesian_variables.size(), 2u);
    EXPECT_EQ(geom.cartesian_variables[0].name + "=" + geom.cartesian_variables[0].value, "R1=1.5");
    EXPECT_EQ(geom.cartesian_variables[1].name + "=" + geom.cartesian_variables[1].value, "b=-2,");
}

TEST(Molecules, RefuseMalformedLines) {
    const std::pair<Texts, std::string> cases[] = {
        {{}, "Geometry section must have at least 2 lines"},
        {{"0 1"}, "Geometry section must have at least 2 lines"},
        {{"0 1", "! only a comment"}, "Geometry section must have at least 2 lines"},
        {{"0 1 0", "H 0 0 0"}, "Invalid charge/spin line: 0 1 0"},
        {{"0 1", "H 0 0 0", " H 0 0"}, "Invalid coordinate line:  H 0 0"},
        {{"0 1", "H 0 0 0", "H"}, "Invalid coordinate line: H"},
        {{"0 1", "H 0 0 0", "1r=5"}, "Invalid coordinate line: 1r=5"},
        {{"0 1", "H 0 0 0", "r="}, "Invalid coordinate line: r="},
        {{"0 1", "H 0 0 0", "=5"}, "Invalid coordinate line: =5"},
        {{"0 1", "H 0 0 0", "r=,"}, "Invalid Cartesian coordinate variable line: r=,"},
        {{"0 1", "H 0 0 0", ",,"}, "Invalid coordinate line: ,,"},
        {{"0 1", "H 0.0 0.0 1.0d0"}, "Invalid coordinate value: 1.0d0"},
        {{"0 1", "H 0 0 --1"}, "Invalid coordinate value: --1"},
        {{"0 1", "H 0 0 0", "C 0 1.0 2.0 a-b"}, "Invalid coordinate value: a-b"},
        {{"0 1", "H 0 0 nan"}, "Invalid coordinate values: H 0 0 nan"},
        {{"0 1", "H 0 1e999 0"}, "Invalid coordinate values: H 0 1e999 0"},
        {{"0 1", "H 99999999999 0 0 0"}, "Invalid coordinate values: H 99999999999 0 0 0"},
        {{"0 1", "O", "H 99999999999 1.0"}, "Invalid Z-matrix geometry section"},
        {{"0 1", "O", "H 1 r", "Variables:", "r"}, "Invalid Z-matrix variable line: r"},
        {{"0 1", "O", "H 1 r", "r=1", "a"}, "Invalid Z-matrix variable line: a"},
        {{"0 1", "O", "Variables:", "=1"}, "Invalid Z-matrix variable line: =1"},
    };
    for (const auto& [lines, message] : cases) {
        EXPECT_EQ(refusal_of_molecule(lines), message);
    }
}

TEST(Molecules, MayHaveNoAtoms) {
    const GeomSection geom = GJFParser::parse_geometry_section({"-1 2", "", "  "});
    EXPECT_EQ(geom.charge, -1);
    EXPECT_TRUE(geom.atoms.empty());
    EXPECT_EQ(geom.molecule_lines.size(), 2u);
}

std::string rows_of(const GeomSection& geom) {
    std::string text;
    for (const ZMatrixEntry& entry : geom.zmatrix_entries) {
        text += entry.info.element;
        for (const auto* reference : {&entry.bond, &entry.angle, &entry.dihedral}) {
            text += *reference ? " " + std::to_string((*reference)->atom) + ":" + (*reference)->value : "";
        }
        text += "; ";
    }
    return text;
}

std::string variables_of(const std::vector<ZMatrixVariable>& variables) {
    std::string text;
    for (const ZMatrixVariable& variable : variables) {
        text += variable.name + "=" + variable.value + " ";
    }
    return text;
}

TEST(ZMatrices, HaveRowsVariablesAndConstants) {
    struct Case {
        Texts lines;
        std::string rows, variables, constants;
    };
    const Case cases[] = {
        {{"0 1", "C"}, "C; ", "", ""},
        {{"0 1", "O", "H 1 r", "H 1 r 2 a", "H 1 r 2 a 3 -d"}, "O; H 1:r; H 1:r 2:a; H 1:r 2:a 3:-d; ", "", ""},
        {{"0 1", "C 1 1.09"}, "C 1:1.09; ", "", ""},
        {{"0 1", "O", "H,1,r", "variables", "r 0.96 5 0.1", "Constants:", "a=104.5"}, "O; H 1:r; ", "r=0.96 ", "a=104.5 "},
        {{"0 1", "O", "H 1 r", "", "r=0.96", "O", "x 1"}, "", "", ""},
        {{"0 1", "O", "H 1 r", "r = 0.96"}, "O; H 1:r; ", "r=0.96 ", ""},
        {{"0 1", "O", "H 1 r", "r=0.96"}, "O; H 1:r; ", "r=0.96 ", ""},
        {{"0 1", "O", "H 1 r 2 a 3 d 0", "H 1 r 2 a 3 d -1"}, "O; H 1:r 2:a 3:d; H 1:r 2:a 3:d; ", "", ""},
        {{"0 1", "O", "! note", "H 1 r ! bond", "CONSTANTS", "r 1"}, "O; H 1:r; ", "", "r=1 "},
        {{"0 1", "O", "H 1 r", "r 1", "H 1 r"}, "O; H 1:r; ", "r=1 H=1 ", ""},
        {{"0 1", "C(Fragment=1)", "H-HC 1 r"}, "C; H 1:r; ", "", ""},
        {{"0 1", "O", "H 1 0.96", "H 1 0.96 2 104.5", "H 1 0.96 2 104.5 3 120.0"},
         "O; H 1:0.96; H 1:0.96 2:104.5; H 1:0.96 2:104.5 3:120.0; ",
         "",
         ""},
        {{"0 1", "O", "H 1 0.96", "C 0 1.0 2 3.0"}, "O; H 1:0.96; ", "C=0 ", ""},
        {{"0 1", "O", "H 1 0.96", "C 1 1.0 2.0 3.0"}, "O; H 1:0.96; ", "C=1 ", ""},
    };
    for (const Case& c : cases) {
        if (c.rows.empty()) {
            EXPECT_EQ(refusal_of_molecule(c.lines), "Invalid Z-matrix variable line: O");
            continue;
        }
        const GeomSection geom = GJFParser::parse_geometry_section(c.lines);
        EXPECT_EQ(geom.format, GeometryFormat::ZMatrix);
        EXPECT_EQ(rows_of(geom), c.rows);
        EXPECT_EQ(variables_of(geom.variables), c.variables);
        EXPECT_EQ(variables_of(geom.constants), c.constants);
        EXPECT_TRUE(geom.atoms.empty());
    }
}

GJFData job_with(const std::string& route, const std::string& molecule) {
    return GJFParser::parse_string(route + "\n\nt\n\n0 1\n" + molecule);
}

TEST(ZMatrices, TakeTheSectionsThatHoldTheirVariables) {
    struct Case {
        std::string route, molecule, variables, constants;
        std::size_t sections;
    };
    const Case cases[] = {
        {"# hf", "O\nH 1 r\n\nr 0.96\n", "r=0.96 ", "", 0},
        {"# hf", "O\nH 1 r\n\nr=0.96,\n", "r=0.96, ", "", 0},
        {"# hf", "O\nH 1 r\nH 1 r 2 a\n\nr=0.96\n\na 104.5\n", "r=0.96 ", "a=104.5 ", 0},
        {"# hf", "O\nH 1 r\n\nVariables:\nr 0.96\n\nConstants:\nb 1\n", "r=0.96 ", "b=1 ", 0},
        {"# hf scrf=read", "O\nH 1 1.0\n\neps=4.9\n", "", "", 1},
        {"# hf scrf=read", "O\nH 1 R\n\nr=1\n\neps=4.9\n", "r=1 ", "", 1},
        {"# hf opt=modredundant", "O\nH 1 r\n\nr=1\n\nB 1 2 1.5\n", "r=1 ", "", 1},
        {"# hf", "O\nH 1 1.0\n\nx=1\n", "x=1 ", "", 0},
        {"# hf", "O\nH 1 r\n\nleft over\n", "", "", 1},
        {"# hf/gen", "O\nH 1 r\n\nr 1.0\n\nO H 0\n6-31g\n****\n", "r=1.0 ", "", 1},
        {"# hf", "O\nH 1 r\n\n! a comment\n\nr 1.0\n", "r=1.0 ", "", 0},
    };
    for (const Case& c : cases) {
        const GJFData job = job_with(c.route, c.molecule);
        EXPECT_EQ(variables_of(job.geom.variables), c.variables) << c.molecule;
        EXPECT_EQ(variables_of(job.geom.constants), c.constants) << c.molecule;
        EXPECT_EQ(job.extra_inputs.size(), c.sections) << c.molecule;
    }
}

TEST(SymbolicCartesians, TakeTheSectionThatDefinesThem) {
    struct Case {
        std::string route, molecule, variables;
        std::size_t sections;
    };
    const Case cases[] = {
        {"# hf", "H r 0 0\n\nr=1.5\n", "r=1.5 ", 0},
        {"# hf", "H r 0 0\nr=1.5\n\nb=2\n", "r=1.5 ", 1},
        {"# hf", "H 1 0 0\n\nr=1.5\n", "", 1},
        {"# hf", "H r 0 0\n\nVariables:\nr=1.5\nConstants:\nq=2\n", "r=1.5 q=2 ", 0},
        {"# hf", "H r 0 0\n\nr 1.5\n", "", 1},
        {"# hf", "H r 0 0\n\nr=1.5\nno\n", "", 1},
        {"# hf", "H r 0 0\n\nr=1.5,\n", "r=1.5, ", 0},
        {"# hf scrf=(pcm,read)", "H r 0 0\n\nradii=uff\n", "", 1},
        {"# hf scrf=(pcm,read)", "H r 0 0\n\nr=1.5\n\nradii=uff\n", "r=1.5 ", 1},
        {"# hf", "H r 0 0\n\nradii=uff\n", "radii=uff ", 0},
    };
    for (const Case& c : cases) {
        const GJFData job = job_with(c.route, c.molecule);
        EXPECT_EQ(variables_of(job.geom.cartesian_variables), c.variables) << c.molecule;
        EXPECT_EQ(job.extra_inputs.size(), c.sections) << c.molecule;
    }
}

}  // namespace
}  // namespace quor::input::gaussian

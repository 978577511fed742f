// Z-matrix rows and symbolic coordinates in the forms that the class interface does not know: the reading takes them.
#include <gjf/core/reader/job_layout.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quor::input::gaussian {
namespace {

const std::string plain_head = "# hf\n\nt\n\n0 1\n";

std::string text_of(const std::optional<ZMatrixReference>& reference) {
    return reference ? " " + std::to_string(reference->atom) + ":" + reference->value : std::string();
}

// Writes rows as "H 1:r 2:a".
std::string row_texts(const GeomSection& geom) {
    std::string text;
    for (const ZMatrixEntry& row : geom.zmatrix_entries) {
        text +=
            (text.empty() ? "" : ", ") + row.info.element + text_of(row.bond) + text_of(row.angle) + text_of(row.dihedral);
    }
    return text;
}

std::string values_of(const GeomSection& geom) {
    std::string text;
    for (const auto* list : {&geom.variables, &geom.constants, &geom.cartesian_variables}) {
        for (const ZMatrixVariable& variable : *list) {
            text += (text.empty() ? "" : ", ") + variable.name + "=" + variable.value;
        }
    }
    return text;
}

TEST(RowForms, AreReadAsRows) {
    struct Case {
        std::string lines;
        std::string rows;
        std::string values;
    };
    const Case cases[] = {
        {"O1\nH2 O1 0.96\nH3 O1 0.96 H2 104.5\n", "O1, H2 1:0.96, H3 1:0.96 2:104.5", ""},
        {"O\nH2 o r\nH O r h2 a\nr 0.96\na=104.5\n", "O, H2 1:r, H 1:r 2:a", "r=0.96, a=104.5"},
        {"C1(Iso=13)\nX2 C1 1.0\nH3 1 r X2 90.\nH4 C1 r 2 90. H3 d -1\n\nr 1.09\nd 120.0\n",
         "C1, X2 1:1.0, H3 1:r 2:90., H4 1:r 2:90. 3:d", "r=1.09, d=120.0"},
        {"C\nH,1,b\nF,1,b,2,a\nF,3,b,1,a,2,0.0,0,Low,H\n\nb 1.0\na 100.\n", "C, H 1:b, F 1:b 2:a, F 3:b 1:a 2:0.0",
         "b=1.0, a=100."},
        {"O,1\nO,1,ROO,2\nH,1,R,2,A,1\n\nROO 2.8\nR 1.\nA 100.\n", "O, O 1:ROO, H 1:R 2:A", "ROO=2.8, R=1., A=100."},
        {"C H\nC 1 1.5 L H 0\n", "C, C 1:1.5", ""},
        {"O 0 xo 0. zo\nC 0 0. yc 0.\nH 2 r 1 a\nH 2 r 1 a 3 -d\n\nxo 1.\nzo 0.\nyc 1.\nr 1.\na 100.\nd 160.\n",
         "O 0:xo 0:0. 0:zo, C 0:0. 0:yc 0:0., H 2:r 1:a, H 2:r 1:a 3:-d", "xo=1., zo=0., yc=1., r=1., a=100., d=160."},
        {"O 0.0 0.0 0.0\nH 1 0.96\nH 1 0.96 2 104.5\n", "O 0:0.0 0:0.0 0:0.0, H 1:0.96, H 1:0.96 2:104.5", ""},
        {"O\nH 1 r\nC 0 3.0 0.0 0.0\nr 0.96\n", "O, H 1:r, C 0:3.0 0:0.0 0:0.0", "r=0.96"},
        {"-\nO 1 1.0\n", "-, O 1:1.0", ""},
        {"C\nH 1 r'\n\nr' 1.0D0\n", "C, H 1:r'", "r'=1.0D0"},
    };
    for (const Case& form : cases) {
        const JobReading reading = read_jobs_with_layout(plain_head + form.lines + "\n").at(0);
        EXPECT_EQ(reading.error, "") << form.lines;
        EXPECT_EQ(reading.job.geom.format, GeometryFormat::ZMatrix) << form.lines;
        EXPECT_EQ(row_texts(reading.job.geom), form.rows) << form.lines;
        EXPECT_EQ(values_of(reading.job.geom), form.values) << form.lines;
        EXPECT_EQ(reading.layout.zmatrix_rows.size(), reading.job.geom.zmatrix_entries.size()) << form.lines;
        EXPECT_TRUE(reading.job.extra_inputs.empty()) << form.lines;
        EXPECT_TRUE(reading.layout.atoms.empty()) << form.lines;
    }
}

TEST(RowForms, OfNoKindStayWhatTheyWere) {
    struct Case {
        std::string lines;
        std::size_t rows;
        std::size_t atoms;
        std::size_t variables;
    };
    const Case cases[] = {
        {"O\nH C7 0.96\n", 1, 0, 1},              // no row has this label
        {"O\nH 1 0.96\nr 1\n", 2, 0, 1},          // a name and a number
        {"O\nH 1 r\nr 1.0 F\n", 2, 0, 1},         // a frozen variable
        {"O\nH 1 r\nr 0.96 S 5 0.1\n", 2, 0, 1},  // a scanned one
        {"O\nH 1 0.74 x y\n", 1, 0, 1},           // neither fragment nor layer
        {"O 0.0 0.0 0.0\nH 0 0 1\n", 0, 2, 0},    // whole numbers
        {"O 0 x 0. 0.\nH 0 0. 0. y\nx 1.0\ny 2.\n", 0, 2, 2},
        {"O -1 0.0 0.0 0.0 H\nH 1 1.0 2.0 3.0 L H 1\n", 0, 2, 0},  // a layer and a link atom
        {"O 0.0 0.0 x\nx 1 F\n", 0, 1, 1},
    };
    for (const Case& form : cases) {
        const JobReading reading = read_jobs_with_layout(plain_head + form.lines + "\n").at(0);
        const GeomSection& geom = reading.job.geom;
        EXPECT_EQ(reading.error, "") << form.lines;
        EXPECT_EQ(geom.zmatrix_entries.size(), form.rows) << form.lines;
        EXPECT_EQ(geom.atoms.size(), form.atoms) << form.lines;
        EXPECT_EQ(geom.variables.size() + geom.cartesian_variables.size(), form.variables) << form.lines;
    }
}

TEST(RowForms, OfSymbolicCoordinatesTakeTheirValues) {
    const std::pair<std::string, std::string> cases[] = {
        {"H 0. 0. x\nH 0. 0. y\n\nx 1.0 F\ny 2.0\n", "x=1.0, y=2.0"},
        {"H 0. 0. x\nH 0. 0. y\nx 1.0 S 5 0.1\ny 2.0 F\n", "x=1.0, y=2.0"},
        {"H 0. 0. x\nH 0. 0. y\nVariables:\nx=1.0\nConstants:\ny 2.0\n", "x=1.0, y=2.0"},
        {"H 0. 0. x\nH 0. 0. y\n\nx 1.0\n\ny=2.0\n", "x=1.0, y=2.0"},
        {"H 0. 0. x\nH 0. 0. 1.0D0\n\nx -1.0d-1\n", "x=-1.0d-1"},
    };
    for (const auto& [lines, values] : cases) {
        const JobReading reading = read_jobs_with_layout(plain_head + lines + "\n").at(0);
        EXPECT_EQ(reading.error, "") << lines;
        EXPECT_EQ(reading.job.geom.atoms.size(), 2u) << lines;
        EXPECT_EQ(values_of(reading.job.geom), values) << lines;
        EXPECT_TRUE(reading.job.extra_inputs.empty()) << lines;
    }
    const JobReading solvation =
        read_jobs_with_layout("# hf/sto-3g scrf=(pcm,read)\n\nt\n\n0 1\nH 0. 0. x\n\nradii=uff\n\n").at(0);
    EXPECT_TRUE(solvation.job.geom.cartesian_variables.empty());
    EXPECT_EQ(solvation.job.extra_inputs.size(), 1u);
    const JobReading fortran = read_jobs_with_layout(plain_head + "H 0. 0. -2.5D+01\n\n").at(0);
    EXPECT_EQ(fortran.job.geom.atoms.at(0).z, -25.0);
    EXPECT_EQ(fortran.job.geom.atoms.at(0).z_ref.text, "-2.5D+01");
    for (const char* wrong : {"H 0. 0. -2.5D\n", "H 0. 0. 1.0F2\n", "H 0. 0. 1D1D1\n"}) {
        EXPECT_NE(read_jobs_with_layout(plain_head + wrong + "\n").at(0).error, "") << wrong;
    }
}

TEST(RowForms, OfSecondStructuresKeepTheirVariables) {
    const std::string route = "# hf/sto-3g opt=qst2\n\nt\n\n0 1\n";
    for (const std::string& molecule :
         {std::string("O\nH 1 r\n\nr 1.5 F\n"), std::string("O1\nH2 O1 r\n\nr 1.5\n"),
          std::string("O 0. 0. 0.\nH 0. 0. r\n\nr 1.5\n"), std::string("O 0 0. 0. z\nH 1 r\n\nr 1.5\nz 1.\n")}) {
        const JobReading reading = read_jobs_with_layout(route + molecule + "\nt2\n\n0 1\n" + molecule + "\n").at(0);
        EXPECT_EQ(reading.error, "") << molecule;
        ASSERT_EQ(reading.job.extra_inputs.size(), 1u) << molecule;
        EXPECT_EQ(reading.job.extra_inputs[0].text() + "\n", "t2\n\n0 1\n" + molecule) << molecule;
    }
}

TEST(RowForms, OfEmptySectionsBeforeStructures) {
    const std::string route = "# hf/sto-3g opt=(qst3,modredundant)\n\nt\n\n";
    const std::string molecule = "0 1\nO 0. 0. 0.\nH 0. 0. 1.\n";
    const std::string change = "\nB 1 2 F\n";
    struct Case {
        std::string first;
        std::string second;
        std::vector<int> kinds;
    };
    const Case cases[] = {{change, change, {3, 4, 7, 8, 11}},
                          {"\n", change, {4, 7, 8, 11}},
                          {change, "\n", {3, 4, 8, 11}},
                          {"\n", "\n", {4, 8, 11}}};
    for (const Case& form : cases) {
        const JobReading reading = read_jobs_with_layout(route + molecule + form.first + "\nt2\n\n" + molecule +
                                                         form.second + "\nt3\n\n" + molecule + change + "\n")
                                       .at(0);
        std::vector<int> kinds;
        for (const ExtraInputSection& section : reading.job.extra_inputs) {
            kinds.push_back(static_cast<int>(section.kind));
        }
        EXPECT_EQ(kinds, form.kinds);
        EXPECT_EQ(reading.error, "");
        EXPECT_TRUE(reading.layout.missing.empty());
    }
}

}  // namespace
}  // namespace quor::input::gaussian

// The report of a job, text by text.
#include <gjf/core/reader/gjf_parser.hpp>

#include <gtest/gtest.h>

#include <string>

namespace quor::input::gaussian {
namespace {

TEST(Report, ShowsTheControlSection) {
    ControlSection control;
    EXPECT_EQ(GJFParser::format_control_section(control), "Control Section:\n");
    control.chk = "";
    control.oldchk = "o.chk";
    control.mem = "1GB";
    control.route_keywords = {"#p", "hf", "opt=(a, b)"};
    EXPECT_EQ(GJFParser::format_control_section(control),
              "Control Section:\n  Checkpoint file: \n  Old checkpoint file: o.chk\n  Route keywords: #p hf opt=(a, b)\n");
}

TEST(Report, ShowsPairs) {
    EXPECT_EQ(GJFParser::format_charge_spin_line(std::vector<ChargeSpinPair>{}), "");
    EXPECT_EQ(GJFParser::format_charge_spin_line(std::vector<ChargeSpinPair>{{-1, 2}, {0, 1}}), "-1 2 0 1");
    GeomSection geom;
    EXPECT_EQ(GJFParser::format_charge_spin_line(geom), "");
    EXPECT_EQ(GJFParser::format_geometry_section(geom), "Geometry Section:\n  Charge: 0, Spin: 0\n  Atoms (0):\n");
    geom.set_charge_spin_pairs({{1, 2}});
    EXPECT_EQ(GJFParser::format_geometry_section(geom), "Geometry Section:\n  Charge: 1, Spin: 2\n  Atoms (0):\n");
    geom.set_charge_spin_pairs({{1, 2}, {0, 1}, {-1, 1}});
    EXPECT_EQ(GJFParser::format_geometry_section(geom),
              "Geometry Section:\n  Charge/Spin pairs (3): 1 2 0 1 -1 1\n  Primary pair: 1 2\n  Atoms (0):\n");
}

TEST(Report, ShowsAtoms) {
    GeomSection geom = GJFParser::parse_geometry_section({"0 1", "C-CT--0.12(b=2,a=1) -1 1.0 r 3.50 H", "H 0 0 0", "r=1.5"});
    geom.atoms[1].x_ref = {};
    geom.atoms[1].x = 1.23456789;
    geom.atoms[1].y_ref = {};
    geom.atoms[1].y = 1e-7;
    EXPECT_EQ(GJFParser::format_geometry_section(geom),
              "Geometry Section:\n  Charge: 0, Spin: 1\n  Atoms (2):\n"
              "    1. C-CT--0.12 (1.0, r, 3.50) [freeze: -1] [layer: H] {a=1, b=2}\n"
              "    2. H (1.23457, 1e-07, 0)\n"
              "  Cartesian coordinate variables:\n    r = 1.5\n");
}

TEST(Report, ShowsZMatrices) {
    const GeomSection geom =
        GJFParser::parse_geometry_section({"0 1", "O", "H 1 r", "H 1 r 2 a", "Variables:", "r 1", "Constants:", "a 104"});
    EXPECT_EQ(GJFParser::format_geometry_section(geom),
              "Geometry Section:\n  Charge: 0, Spin: 1\n  Molecule specification: Z-matrix\n  Z-matrix entries (3):\n    1. "
              "O\n    2. H  1 r\n"
              "    3. H  1 r  2 a\n  Variables:\n    r = 1\n  Constants:\n    a = 104\n");
}

TEST(Report, ShowsAWholeJob) {
    const GJFData job = GJFParser::parse_string(
        "# hf geom=connectivity extraoverlays\n\n1/2;\n\n\n0 1\nH 0 0 0\nH 0 0 1\n\n1 2 1\n\na\nb\n");
    const std::string report =
        "GJF File Analysis:\n==================\n\n"
        "Control Section:\n  Route keywords: # hf geom=connectivity extraoverlays\n\n"
        "Extra Overlays:\n1/2;\n\n"
        "Title: (empty)\n\n"
        "Geometry Section:\n  Charge: 0, Spin: 1\n  Atoms (2):\n    1. H (0, 0, 0)\n    2. H (0, 0, 1)\n\n"
        "Extra Input Sections (2):\n  Section 1 [Connectivity specifications]:\n    1 2 1.0\n2\n  Section 2 [Unknown]:\n    "
        "a\nb\n";
    EXPECT_EQ(GJFParser::format_full_gjf(job), report);
    GJFMultiData file;
    EXPECT_EQ(GJFParser::format_full_multi_gjf(file),
              "GJF Multi-Job File Analysis:\n============================\nTotal jobs: 0\n\n");
    file.jobs = {job, job};
    EXPECT_EQ(GJFParser::format_full_multi_gjf(file),
              "GJF Multi-Job File Analysis:\n============================\nTotal jobs: 2\n\n--- Job 1 ---\n" + report +
                  "\n--- Job 2 ---\n" + report);
}

}  // namespace
}  // namespace quor::input::gaussian

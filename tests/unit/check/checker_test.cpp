// The checker as a whole: places, where failures come from, order, and reading on behind what cannot be read.
#include <gjf/core/check/checker.hpp>

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "found_places.hpp"

using namespace quor::input::gaussian;
using namespace quor::test;

namespace {

TEST(Checker, TellsThePlace) {
    const std::pair<std::string, std::string> cases[] = {
        {"# hf/sto-3g" + helium, ""},
        {"# hf/sto-3g opt=(calcall,calfc)" + helium, "R001 1:26+5 error\n"},
        {"#p hf/sto-3g\nopt=(tight,\n  calfc)" + helium, "R001 3:3+5 error\n"},
        {"#p\n#bl3yp/sto-3g" + helium, "W005 2:2+5 error\n"},
        {"%mem=x\n# hf/def2-tzvp opt" + helium, "L002 1:6+1 error\nW005 2:6+9 error\n"},
        {"# hf/sto-3g opt=(calcfc" + helium, "T007 1:17+1 error\n"},
        {"# hf/sto-3g/mp2/cc-pvdz" + helium, "R003 1:13+3 warning\nR004 1:17+7 warning\n"},
        {"# hf/6-31g/3-21g/x" + helium, "R004 1:12+5 warning\nW005 1:18+1 error\n"},
        {"# hf/6-31g/x" + helium, "W005 1:12+1 error\n"},
        {"# hf/sto-3g//b3lyp" + helium, "R003 1:14+5 warning\n"},
        {"# hf/sto-3g/b3lyp/6-31g(d)" + helium, "R003 1:13+5 warning\nR004 1:19+8 warning\n"},
        {"# hf/sto-3g//b3lyp/6-31g(d)" + helium, ""},
        {"# hf/sto-3g/auto" + helium, ""},
        {"# hf/sto-3g sfc=(xqc)" + helium, "W005 1:13+3 error\n"},
        {"# hf/sto-3g xxx=freq" + helium, "W005 1:13+3 error\n"},
        {"# hf/6-31g(d) (opt)]" + helium, "W005 1:15+6 warning\nT007 1:20+1 error\n"},
        {"#p hf/sto-3g opt=(tight,\n ! or loose\n calfc,maxcycles=30)" + helium, "R001 3:2+5 error\n"},
        {"# hf/sto-3g opt (calfc)" + helium, "R001 1:18+5 error\n"},
        {"# hf/sto-3g xfoo/foo" + helium, "W005 1:13+4 error\nW005 1:18+3 error\n"},
        {"# hf/sto-3g\n\nt\n\n0 1\nO\nH 1 0.96\nH 1 0.96 7 104.5\n\n", "M009 8:10+1 error\n"},
        {"# hf/sto-3g opt=modredundant\n\nt\n\n0 1\nHe 0.0 0.0 0.0\nHe 0.0 0.0 3.0\nHe 0.0 3.0 3.0\n\nA 1 2 01 F\nD 1 2 3 1 "
         "F\n\n",
         "S023 10:7+2 error\nS023 11:9+1 warning\n"},
        {"# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 r\n\n", "M007 6:12+1 error\n"},
        {"# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 r\nHe 0.0 r s\n\nr=1.5 s=2.0\n\n", "M007 7:10+1 warning\n"},
        {"# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n -CT(Iso=2),0.0,0.0,3.0\n -3 0.0 0.0 6.0\n\n",
         "M001 7:2+10 error\nM001 8:2+2 error\n"},
        {"# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n", "T001 6:0+0 error\n"},
        {"%nprocshared=4\n%cpu=0-3\n# hf/sto-3g" + helium, "L005 2:0+0 note\n"},
        {"# hf/sto-3g opt=modredundant\n\nt\n\n0 1\nHe 0.0 0.0 0.0\nHe 0.0 0.0 3.0\n\nB 1 2 F", "T001 9:0+0 note\n"},
        {"# hf/sto-3g" + helium + "left over", "S002 8:0+0 warning\n"},
        {"%chk=a\n# hf/sto-3g geom=allcheck\n\nt\n\n", "S002 4:0+0 note\n"},
        {"%chk=a\n# hf/sto-3g geom=allcheck\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n", "S002 4:0+0 warning\nS002 6:0+0 warning\n"},
        {"# hf/sto-3g\n\nt\n\n0 1\nO\nH 1 r\nH 1 R 2 a\n\nr=0.9\na=104.0\nR=1.0\n\n", "M008 12:0+0 warning\n"},
        {"# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 .5x\n\n", "P001 6:12+3 error\nT006 6:12+3 error\n"},
        {"# hf/sto-3g opt=modredundant\n\nt\n\n0 1\nHe 0.0 0.0 0.0\nHe 0.0 0.0 3.0\n\nB 1 2 3.1\n! a note\nQ 1 2\nB 1\n\n",
         "S013 11:1+1 error\nS014 12:0+0 error\n"},
        {"# hf/sto-3g opt=qst2\n\nt\n\n0 1\nH\nH 1 0.7\n\nu\n\n0 1\nH\nHe 1 0.9\n\n", "S020 13:0+0 warning\n"},
        {"# hf/sto-3g\n\nt\n\n0 1\nHe\nHe 1 r\n\nr=3.0\n", "T001 9:0+0 note\n"},
        {"# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.\x07\n\n", "P001 6:12+3 error\nT006 6:12+3 error\nT002 6:14+1 warning\n"},
    };
    for (const auto& [text, places] : cases) {
        EXPECT_EQ(places_of(text), places) << text;
    }
}

TEST(Checker, ChecksARouteAlone) {
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"# hf/sto-3g opt", ""},
        {"#p hf/sto-3g\n opt=(tight,\n calfc)", "R001 3:2+5 error\n"},
        {"# hf/sto-3g opt=(ts,qst2,calcfc) frq", "R008 1:21+4 warning\nW005 1:34+3 error\n"},
        {"not a route", ""},
    };
    for (const auto& [route, places] : cases) {
        EXPECT_EQ(places_of(check_route(route)), places) << route;
    }
}

TEST(Checker, SaysWhatAFailureComesFrom) {
    const std::string water = "0 1\nO 0.0 0.0 0.0\nH 0.0 0.76 0.59\nH 0.0 -0.76 0.59\n\n";
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"# hf/sto-3g\n\n" + water, "GJF-P001", "the title is missing: a title and a blank line stand before this line"},
        {"# hf/sto-3g\n\nt\n" + water, "GJF-P001",
         "a blank line is missing before line 4, which is read as a part of the title"},
        {"hf/sto-3g\n\nt\n\n" + water, "GJF-P001", "route lines begin with #, Link 0 lines with %"},
        {"# hf/sto-3g\n\nt\n\nO 0.0 0.0 0.0\nH 0.0 0.0 1.0\n\n", "GJF-P001",
         "this line is read as charge and multiplicity, two whole numbers such as 0 1"},
        {"# hf/sto-3g\n\nt\n\n" + water + "--Link--\n# hf/sto-3g\n\n", "GJF-S002", "the line between two jobs is --Link1--"},
        {"# hf/sto-3g\n\nt\n\n0 1\nO 0 0 0\n\nH 0 0 1.0\n\n", "GJF-S002",
         "it looks like atoms: the blank line before it ends the molecule"},
        {"# hf/sto-3g\n\nt\n\n" + water + "$nbo bndidx $end\n\n", "GJF-S002", "it looks like NBO input (pop=nboread)"},
        {"# hf/sto-3g\n\nt\n\n" + water + "O H 0\nsto-3g\n****\n\n", "GJF-S002", "it looks like a basis set (gen)"},
        {"# hf/sto-3g\n\nt\n\n" + water + "B 1 2 F\n\n", "GJF-S002",
         "it looks like changes of coordinates (opt=modredundant)"},
        {"# hf/sto-3g scrf=(smd,water)" + helium, "GJF-R001", "write solvent=water"},
        {"# hf/sto-3g scrf=(solvent=dmf)" + helium, "GJF-R012", "Gaussian calls it n,n-dimethylformamide"},
        {"# hf/sto-3g d3bj" + helium, "GJF-W005", "write empiricaldispersion=gd3bj"},
        {"# hf/6-31g(d) (tight)" + helium, "GJF-W005",
         "write no blanks around '=' and '/', as in opt=(ts,calcfc) and hf/6-31g"},
    };
    for (const auto& [text, code, hint] : cases) {
        const std::vector<Finding> findings = check_text(text);
        ASSERT_NE(finding_of(findings, code), nullptr) << text;
        EXPECT_EQ(finding_of(findings, code)->hint, hint) << text;
    }
}

TEST(Checker, ReadsOnBehindWhatItCannotRead) {
    EXPECT_EQ(
        places_of("# hf/sto-3g opt=calfc\n\nt\n\n0 1\nHe 0.0 0.0 0.0x\nHe 0 0 1\nHe 0 0 2..\nHe 0 3!\n\n"),
        "R001 1:17+5 error\nP001 6:12+4 error\nT006 6:12+4 error\nP001 8:8+3 error\nT006 8:8+3 error\nP001 9:0+0 error\n");
    EXPECT_EQ(places_of("# hf/sto-3g geom=connectivity\n\nt\n\n0 1\nHe 0 0 0\nHe 0 0 3.0\n\n1 2\n2 x 1.0\n3\n1 4 1.0\n\n"),
              "P001 9:0+0 error\nP001 10:0+0 error\nP001 11:0+0 error\nP001 12:0+0 error\n");
    // Without charge line or title there is nothing to go on with.
    EXPECT_EQ(places_of("# hf/sto-3g\n\nt\n\n0 x\nHe 0 0 0y\n\n"), "P001 5:3+1 error\n");
    EXPECT_EQ(places_of("# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 1.0D+00\n\n"), "");
    EXPECT_EQ(places_of("# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 1.0D+\n\n"), "P001 6:12+5 error\nT006 6:12+5 error\n");
}

TEST(Checker, ChecksEveryJob) {
    const std::string bad = "# hf/sto-3g opt=calfc" + helium;
    const std::vector<Finding> findings = check_text(bad + "--Link1--\n\n--Link1--\n" + bad);
    ASSERT_EQ(findings.size(), 2U);
    EXPECT_EQ(findings[0].job, 1U);
    EXPECT_EQ(findings[0].line, 1U);
    EXPECT_EQ(findings[1].job, 2U);
    EXPECT_EQ(findings[1].line, 11U);
    EXPECT_EQ(finding_of(check_text("\n \n"), "GJF-P001")->message, "No valid jobs found in input");
    EXPECT_EQ(finding_of(check_text("\n \n"), "GJF-P001")->job, 0U);
}

TEST(Checker, ReportsMixedLineEndsOfTheFile) {
    const std::vector<Finding> findings = check_text("# hf/sto-3g\n\nt\r\n\n0 1\nHe 0.0 0.0 0.0\n\n");
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].code, "GJF-T004");
    EXPECT_EQ(findings[0].line, 3U);
    EXPECT_EQ(findings[0].job, 0U);
}

TEST(Checker, BoundsWhatItSaysOfAtomsOnOneSpot) {
    std::string text = "# uff\n\nt\n\n0 1\n";
    for (int i = 0; i < 5000; ++i) {
        text += "He 0.0 0.0 0.0\n";
    }
    EXPECT_LE(check_text(text + "\n").size(), 10U);
}

}  // namespace

// What is told of basis sets, composite methods and dispersion against the elements of the molecule, and where nothing is.
#include <gjf/core/check/checker.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace quor::input::gaussian;

namespace {

const std::string iron_oxide = "0 3\nFe 0.0 0.0 0.0\nO 0.0 0.0 1.62\n";
const std::string iodide = "0 1\nI 0.0 0.0 0.0\nH 0.0 0.0 1.61\n";

// The findings about basis sets, as "code:line", blanks between.
std::string told(const std::string& route, const std::string& molecule, const std::string& sections = {}) {
    std::string text;
    for (const Finding& finding :
         check_text(route + "\n\nt\n\n" + molecule + "\n" + sections + (sections.empty() ? "" : "\n"))) {
        if (finding.code.starts_with("GJF-B") || finding.code == "GJF-R013") {
            text += (text.empty() ? "" : " ") + finding.code.substr(4) + (finding.severity == Severity::Error ? "!" : "") +
                    ":" + std::to_string(finding.line);
        }
    }
    return text;
}

struct Row {
    const char* route;
    std::string molecule;
    const char* sections;
    const char* told;
};

TEST(BasisFacts, CoreElectronsWithoutPotentialAreToldAtTheElement) {
    const Row rows[] = {
        {"# b3lyp/gen", iron_oxide, "Fe 0\nLANL2DZ\n****\nO 0\n6-31G\n****\n", "B001:9"},
        {"# b3lyp/gen", iron_oxide, "O 0\n6-31G\n****\nFe 0\nsdd\n****\n", "B001:12"},
        {"# b3lyp/gen", iron_oxide, "1 0\nlanl2dz\n****\n2 0\n6-31G\n****\n", "B001:9"},
        {"# b3lyp/gen", iron_oxide, "Fe O 0\nlanl2dz\n****\n", "B001:9"},
        {"# b3lyp/gen", iodide, "H I 0\ndef2TZVP\n****\n", "B001:9"},
        {"# b3lyp/gen", iodide, "-Ag H 0\ndef2tzvp\n****\n-I 0\ncep-31g*\n****\n", "B001:12"},
        {"# b3lyp/genecp", iron_oxide, "Fe O 0\nLANL2DZ\n****\n\nO 0\nLANL2DZ\n", "B001:9"},
        {"# b3lyp/genecp", iodide, "I H 0\nsdd\n****\n\nH 0\nMWB46\n", "B001:9"},
        // Silent: a potential is there, or may be, or none is wanted.
        {"# b3lyp/genecp", iron_oxide, "Fe O 0\nLANL2DZ\n****\n\nFe 0\nLANL2DZ\n", ""},
        {"# b3lyp/gen pseudo=read", iron_oxide, "Fe O 0\nLANL2DZ\n****\n\nFe 0\nLANL2DZ\n", ""},
        {"# b3lyp/gen pseudo=lanl2", iron_oxide, "Fe O 0\nLANL2DZ\n****\n", ""},
        {"# b3lyp/genecp", iron_oxide, "Fe O 0\nLANL2DZ\n****\n\n@potentials\n", ""},
        {"# b3lyp/genecp", iron_oxide, "Fe O 0\nLANL2DZ\n****\n\n1 0\nLANL2DZ\n", ""},
        {"# b3lyp/genecp", iron_oxide, "Fe O 0\nLANL2DZ\n****\n\n-Co -Fe 0\nLANL2DZ\n", ""},
        {"# b3lyp/gen iop(3/17=5)", iron_oxide, "Fe O 0\nLANL2DZ\n****\n", ""},
        {"# b3lyp/gen massage", iron_oxide, "Fe O 0\nLANL2DZ\n****\n", ""},
        {"# b3lyp/gen", iron_oxide, "Fe O 0\ndef2TZVP\n****\n", ""},
        {"# b3lyp/gen", iron_oxide, "Fe O 0\nS 1 1.0\n1.0 1.0\n****\n", "B003:5"},
        {"# b3lyp/gen", iron_oxide, "Fe O 0\nMWB10\n****\n", ""},
        {"# b3lyp/gen", "0 1\nC 0.0 0.0 0.0\nO 0.0 0.0 1.13\n", "C O 0\nlanl2dz\n****\n", ""},
        {"# b3lyp/gen", "0 1\nI-Bq 0.0 0.0 0.0\nO 0.0 0.0 1.13\n", "O I 0\nlanl2dz\n****\n", ""},
        {"# b3lyp/gen", "0 1\nC 0.0 0.0 0.0\nO 0.0 0.0 1.13\n", "C O -Fe 0\nlanl2dz\n****\n", ""},
        {"# b3lyp/gen", iron_oxide, "@lanl2dz.gbs\n", ""},
        {"# b3lyp/lanl2dz", iron_oxide, "", ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(told(row.route, row.molecule, row.sections), row.told) << row.route << "\n" << row.sections;
    }
}

TEST(BasisFacts, ElementsThatLackFunctionsAreTold) {
    const Row rows[] = {
        {"# b3lyp/gen", iodide, "I 0\n6-31G*\n****\nH 0\n6-31G\n****\n", "R013!:9"},
        {"# b3lyp/gen", iodide, "2 0\n6-31G*\n****\n1 0\n6-311+G(d,p)\n****\n", "R013!:12"},
        {"# cbs-qb3", iodide, "", "R013!:6"},
        {"# g4", iodide, "", "R013!:6"},
        {"# w1u", iodide, "", "R013:6"},
        {"# cbs-apno", iron_oxide, "", "R013:6"},
        {"# b3lyp/6-31g/dga1", "0 1\nXe 0.0 0.0 0.0\n", "", "R013!:6"},
        {"# b3lyp/def2svp/dga2", iodide, "", "R013:6"},
        {"# b3lyp/sdd em=gd3bj", "0 1\nCm 0.0 0.0 0.0\n", "", "B002!:6"},
        {"# b3lyp/6-31g em=gd3", "0 2\nO 0.0 0.0 0.0\nH 0.0 0.0 1.0\nH-Bq 0.0 1.0 0.0\n", "", "B002!:8"},
        // Silent: covered, doubtful, or changed by other words.
        {"# b3lyp/gen", iodide, "I H 0\n3-21G\n****\n", ""},
        {"# b3lyp/gen", iodide, "I H 0\nsto-6g\n****\n", ""},
        {"# b3lyp/gen", iodide, "H I 0\nmine\n****\n", ""},
        {"# b3lyp/gen", iodide, "H -Cs 0\n6-31g\n****\nI 0\n3-21g\n****\n", ""},
        {"# cbs-qb3", iron_oxide, "", ""},
        {"# g4", "0 1\nZn 0.0 0.0 0.0\n", "", ""},
        {"# w1u", iron_oxide, "", ""},
        {"# cbs-q", iodide, "", ""},
        {"# pm6", iodide, "", ""},
        {"# am1", iron_oxide, "", ""},
        {"# b3lyp/ugbs", "0 1\nRn 0.0 0.0 0.0\n", "", ""},
        {"# b3lyp/sdd em=gd3 iop(3/124=20000000)", "0 1\nCm 0.0 0.0 0.0\n", "", ""},
        {"# b3lyp/sdd em=gd2", "0 1\nCm 0.0 0.0 0.0\n", "", ""},
        {"# b3lyp/sdd em=gd3", "0 1\nPu 0.0 0.0 0.0\n", "", ""},
        {"# b3lyp/6-31g em=gd3", "0 1\nX 0.0 1.0 0.0\nO 0.0 0.0 0.0\nH 0.0 0.0 1.0\nH 1.0 0.0 0.0\n", "", ""},
        {"# apfd/6-31g", iron_oxide, "", ""},
        {"# b3lyp/def2svp/w06", iodide, "", ""},
        {"# b3lyp/def2svp/auto", iodide, "", ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(told(row.route, row.molecule, row.sections), row.told) << row.route << "\n" << row.sections;
    }
}

TEST(BasisFacts, ElectronsNeedRoom) {
    const std::string water = "0 1\nO 0.0 0.0 0.0\nH 0.0 0.76 0.59\nH 0.0 -0.76 0.59\n";
    const std::string oxygen = "0 3\nO 0.0 0.0 0.0\nO 0.0 0.0 1.21\n";
    const Row rows[] = {
        {"# hf/sto-3g", "0 3\nHe 0.0 0.0 0.0\n", "", "B003:5"},
        {"# hf/sto-3g", "-2 1\nHe 0.0 0.0 0.0\n", "", "B003:5"},
        {"# hf/gen", water, "O H 0\nS 1 1.0\n1.0 1.0\n****\n", "B003:5"},
        {"# casscf(5,4)/6-31g", water, "", "B004!:1"},
        {"# casscf(12,8)/6-31g", water, "", "B004!:1"},
        {"# casscf(6,2)/6-31g", water, "", "B004!:1"},
        {"# casscf(2,9)/sto-3g", water, "", "B004:1"},
        {"# casscf(7,6)/6-31g", oxygen, "", "B004!:1"},
        {"# cas(0,2)/6-31g", oxygen, "", "B004!:1"},
        // Silent: there is room, or what there is cannot be known.
        {"# hf/6-31g", "0 3\nHe 0.0 0.0 0.0\n", "", ""},
        {"# hf/sto-3g", "-1 2\nH 0.0 0.0 0.0\nH 0.0 0.0 0.7\n", "", ""},
        {"# hf/gen", water, "O H 0\nS 1 1.0\n1.0 1.0\nS 1 1.0\n0.2 1.0\n****\n", ""},
        {"# hf/gen", water, "O H 0\nmine\n****\n", ""},
        {"# pm6", oxygen, "", ""},
        {"# casscf(6,6)/6-31g", water, "", ""},
        {"# casscf(6,6,nroot=2)/6-31g", water, "", ""},
        {"# casscf(8,6)/sto-3g", oxygen, "", ""},
        {"# casscf(4,4)/gen", water, "O H 0\n6-31g\n****\n", ""},
        {"# casscf(4,4)/cep-121g", water, "", ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(told(row.route, row.molecule, row.sections), row.told) << row.route << "\n" << row.molecule;
    }
}

}  // namespace

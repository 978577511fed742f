// What a route asks of its method: derivatives, properties, dispersion and a guess that the method has or lacks.
#include <gjf/core/check/checker.hpp>
#include <gjf/core/knowledge/route_facts.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "../../support/files.hpp"

using namespace quor::input::gaussian;

namespace {

const std::string water = "\n\ntitle\n\n0 1\nO 0.0 0.0 0.0\nH 0.0 0.76 0.59\nH 0.0 -0.76 0.59\n\n";
const std::string water_in_names = "\n\ntitle\n\n0 1\nO\nH 1 r\nH 1 r 2 a\n\nr 0.96\na 104.5\n\n";

std::vector<Finding> of_method(const std::string& text) {
    std::vector<Finding> findings = check_text(text);
    findings.erase(
        std::remove_if(findings.begin(), findings.end(),
                       [](const Finding& finding) { return finding.code < "GJF-R017" || finding.code > "GJF-R020"; }),
        findings.end());
    return findings;
}

struct MethodCase {
    const char* route;
    const char* code;
    Severity severity;
    const char* message;
};

TEST(MethodChecks, FindWhatTheMethodLacks) {
    const MethodCase cases[] = {
        {"# ccsd(t)/6-31g opt", "GJF-R017", Severity::Error,
         "opt needs analytic gradients, which ccsd(t) lacks, or variables of a Z-matrix, at most 50"},
        {"# uqcisd=(t,maxcyc=50)/6-31g opt", "GJF-R017", Severity::Error,
         "opt needs analytic gradients, which uqcisd(t) lacks, or variables of a Z-matrix, at most 50"},
        {"# romp2/6-31g opt", "GJF-R017", Severity::Warning,
         "opt needs analytic gradients, which romp2 lacks, or variables of a Z-matrix, at most 50"},
        {"# ccsd/6-31g opt=calcfc", "GJF-R017", Severity::Warning,
         "'opt=calcfc' needs analytic second derivatives, which ccsd lacks"},
        {"# mp3/6-31g irc=calcfc", "GJF-R017", Severity::Warning,
         "'irc' needs analytic second derivatives, which mp3 lacks"},
        {"# ccsd/6-31g nmr", "GJF-R017", Severity::Warning, "'nmr' needs shieldings, which ccsd lacks"},
        {"# rpm6 nmr", "GJF-R017", Severity::Warning, "'nmr' needs shieldings, which rpm6 lacks"},
        {"# mp2/6-31g nmr=spinspin", "GJF-R017", Severity::Warning,
         "'nmr=spinspin' needs spin-spin couplings, which mp2 lacks"},
        {"# g96lyp/6-31g freq=raman", "GJF-R017", Severity::Warning,
         "'freq=raman' needs third derivatives, which g96lyp lacks"},
        {"# uohse2pbe/6-31g utd opt", "GJF-R017", Severity::Warning,
         "'td opt' needs third derivatives, which uohse2pbe lacks"},
        {"# mp2/6-31g td", "GJF-R017", Severity::Warning, "'td' needs a Hartree-Fock or DFT reference, which mp2 lacks"},
        {"# mp2/6-31g freq=vcd", "GJF-R017", Severity::Warning, "'freq=vcd' needs rotational strengths, which mp2 lacks"},
        {"# uccsd(t)/6-31g em=gd3", "GJF-R019", Severity::Warning, "uccsd(t) has no parameters for empiricaldispersion=gd3"},
        {"# hf/6-31g em=gd2", "GJF-R019", Severity::Warning, "hf has no parameters for empiricaldispersion=gd2"},
        {"# casscf(4,4)/6-31g polar", "GJF-R017", Severity::Warning,
         "'polar' needs analytic polarizabilities, which casscf lacks"},
        {"# casscf(4,4)/6-31g freq scrf=(solvent=water)", "GJF-R017", Severity::Warning,
         "'scrf freq' needs analytic second derivatives in solution, which casscf lacks"},
        {"# rob3lyp/6-31g scf=qc", "GJF-R017", Severity::Warning,
         "'scf=qc' needs closed or unrestricted shells, which rob3lyp lacks"},
        {"# rohf/6-31g scf=xqc", "GJF-R017", Severity::Note,
         "'scf=xqc' needs closed or unrestricted shells, which rohf lacks"},
        {"# mp4=sdq/6-31g freq", "GJF-R018", Severity::Note,
         "'freq' of mp4(sdq) is numerical: at least 1 + 3N = 10 energies"},
        {"# qcisd(t)/6-31g force", "GJF-R018", Severity::Note,
         "'force' of qcisd(t) is numerical: at least 1 + 3N = 10 energies"},
        {"# b3p86/6-31g empiricaldispersion=gd3bj", "GJF-R019", Severity::Warning,
         "b3p86 has no parameters for empiricaldispersion=gd3bj"},
        {"# um062x/6-31g em=gd3bj", "GJF-R019", Severity::Warning, "um062x has no parameters for empiricaldispersion=gd3bj"},
        {"# mn15/6-31g em=gd3bj", "GJF-R019", Severity::Note,
         "mn15 is not listed with parameters for empiricaldispersion=gd3bj"},
        {"# wb97xd/6-31g em=gd3bj", "GJF-R019", Severity::Warning,
         "wb97xd has a dispersion of its own, beside empiricaldispersion=gd3bj"},
        {"# b3lyp/6-31g guess=mix", "GJF-R020", Severity::Note, "guess=mix does nothing to a restricted singlet"},
        {"# rhf/6-31g guess=(mix,always)", "GJF-R020", Severity::Note, "guess=mix does nothing to a restricted singlet"},
    };
    for (const MethodCase& wanted : cases) {
        const std::vector<Finding> findings = of_method(wanted.route + water);
        ASSERT_EQ(findings.size(), 1U) << wanted.route;
        EXPECT_EQ(findings[0].code, wanted.code) << wanted.route;
        EXPECT_EQ(findings[0].severity, wanted.severity) << wanted.route;
        EXPECT_EQ(findings[0].message, wanted.message) << wanted.route;
        EXPECT_GT(findings[0].column, 1U) << wanted.route;
    }
}

TEST(MethodChecks, AreQuietWhereTheMethodHasIt) {
    for (const char* route : {"# ccsd/6-31g opt",
                              "# mp2/6-31g opt=calcfc freq",
                              "# hf/6-31g freq=anharmonic",
                              "# b3lyp/6-31g opt=(ts,calcfc)",
                              "# mp3/6-31g irc=(calcfc,gradientonly)",
                              "# mp2/6-31g nmr",
                              "# b3lyp/6-31g nmr=(spinspin,mixed)",
                              "# bp86/6-31g freq=raman",
                              "# b3lyp/6-31g td opt freq",
                              "# pbepbe/6-31g tda=(nstates=5) freq",
                              "# pm6 freq",
                              "# casscf(4,4)/6-31g polar=numer",
                              "# casscf(4,4)/6-31g freq",
                              "# casscf(4,4)/6-31g freq=numer scrf=(solvent=water)",
                              "# b3lyp/6-31g scf=qc",
                              "# ub3lyp/6-31g scf=qc",
                              "# ccsd(t)/6-31g",
                              "# ccsd(t)/6-31g//mp2/6-31g opt freq",
                              "# g4",
                              "# cbs-qb3 opt=ts",
                              "# b2plyp/6-31g freq",
                              "# ccsd(t)/6-31g freq=readfc geom=check",
                              "# b3lyp/6-31g em=gd3bj",
                              "# m062x/6-31g em=gd3",
                              "# wb97xd/6-31g",
                              "# apfd/6-31g",
                              "# b97d/6-31g em=gd3bj",
                              "# b3p86/6-31g em=gd3bj iop(3/174=1000000,3/175=2000000)",
                              "# b3p86/6-31g em=gd3bj iop(3/124=3)",
                              "# b3p86/6-31g em=pfd",
                              "# ub3lyp/6-31g guess=mix",
                              "# uhf/6-31g guess=(mix,always)",
                              "# hf/6-31g guess=mix stable=opt",
                              "# casscf(4,4)/6-31g guess=mix",
                              "# hf/6-31g guess=read",
                              "# hf/6-31g freq=vcd",
                              "# hf/6-31g em=pfd",
                              "# ub3lyp/6-31g opt=(calcall,vcd)"}) {
        EXPECT_EQ(of_method("%chk=a\n" + (route + water)).size(), 0U) << route;
    }
    std::string triplet = water;
    triplet.replace(triplet.find("0 1"), 3, "0 3");
    EXPECT_EQ(of_method("# b3lyp/6-31g guess=mix" + triplet).size(), 0U);
}

// Variables with names can be followed without gradients.
TEST(MethodChecks, KnowWhatVariablesAreFollowed) {
    const std::vector<Finding> findings = of_method("# ccsd(t)/6-31g opt" + water_in_names);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].code, "GJF-R018");
    EXPECT_EQ(findings[0].message, "'opt' of ccsd(t) is numerical: at least 1 + 3N = 10 energies");
    const std::vector<Finding> unknown = of_method("%chk=a\n# ccsd(t)/6-31g opt geom=allcheck\n\n");
    ASSERT_EQ(unknown.size(), 1U);
    EXPECT_EQ(unknown[0].message, "'opt' of ccsd(t) is numerical: at least 1 + 3N energies");
}

TEST(MethodChecks, NameTheRevisionAndTheMessage) {
    EXPECT_EQ(of_method("# b3p86/6-31g em=gd3" + water)[0].hint,
              "Gaussian 16 C.02 stops with \"R6DS8: Unable to choose the S8 parameter\"");
    EXPECT_EQ(of_method("# wb97/6-31g em=gd2" + water)[0].hint,
              "Gaussian 16 C.02 may stop with \"R6DS6: Unable to choose the S6 parameter\"");
    EXPECT_EQ(of_method("# apfd/6-31g em=pfd" + water)[0].hint,
              "leave it out: in Gaussian 16 C.02 the name of the functional stands for both");
    EXPECT_EQ(of_method("# rb3lyp/6-31g guess=mix" + water)[0].hint, "write ub3lyp for two sets of orbitals");
}

TEST(MethodChecks, AskForMethodsWithAndWithoutPrefix) {
    EXPECT_TRUE(method_lacks("ccsd(t)", "analytic gradients"));
    EXPECT_TRUE(method_lacks("uccsd(t)", "analytic gradients"));
    EXPECT_TRUE(method_lacks("rohf", "analytic second derivatives"));
    EXPECT_TRUE(method_lacks("roblyp", "closed or unrestricted shells"));
    for (const char* method : {"", "hf", "uhf", "rhf", "ccsd", "b3lyp", "revtpssrevtpss", "rb3lyp", "r", "ro"}) {
        EXPECT_FALSE(method_lacks(method, "analytic gradients")) << method;
    }
    EXPECT_FALSE(method_lacks("ccsd(t)", "something else"));
    EXPECT_EQ(find_dispersion("b3lyp", "gd3"), nullptr);
    EXPECT_EQ(find_dispersion("", "gd3"), nullptr);
    ASSERT_NE(find_dispersion("um11", "gd3"), nullptr);
    EXPECT_EQ(find_dispersion("um11", "gd3")->severity, "note");
}

// What holds in one revision alone is told with it: of every row of the table, and where the code is explained.
TEST(MethodChecks, NameTheRevisionThatDispersionWasMeasuredOn) {
    std::istringstream table(quor::test::bytes_of(QUOR_GJF_SOURCE_DIR "/resources/knowledge/dispersion.tsv"));
    std::string functional;
    std::string correction;
    std::string rest;
    std::getline(table, rest);
    std::size_t rows = 0;
    while (std::getline(table, functional, '\t') && std::getline(table, correction, '\t') && std::getline(table, rest)) {
        const std::vector<Finding> findings =
            of_method("# " + functional + "/6-31g(d) empiricaldispersion=" + correction + water);
        const auto told = std::find_if(findings.begin(), findings.end(),
                                       [](const Finding& finding) { return finding.code == "GJF-R019"; });
        ASSERT_NE(told, findings.end()) << functional << correction;
        EXPECT_NE(told->hint.find("Gaussian 16 C.02"), std::string::npos) << functional << correction << told->hint;
        ++rows;
    }
    EXPECT_GE(rows, 100U);
    const auto& pages = check_descriptions();
    const auto page = std::find_if(pages.begin(), pages.end(), [](const auto& each) { return each.code == "GJF-R019"; });
    EXPECT_NE(page->explanation.find("Gaussian 16 C.02"), std::string::npos);
}

}  // namespace

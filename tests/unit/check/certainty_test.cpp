// What the checker is sure of: what runs raises nothing, what Gaussian may run no error, what stops it an error.
#include <gjf/core/check/checker.hpp>
#include <gjf/core/knowledge/facts.hpp>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "found_places.hpp"

using namespace quor::input::gaussian;
using namespace quor::test;

namespace {

TEST(Checker, RaisesNothingForWhatRuns) {
    const char* const heads[] = {
        "# rzindo",
        "%nprocs=4\n# hf/sto-3g",
        "%NProcs = 4\n%oldrwf=a\n# hf/sto-3g",
        "# uzindo",
        "# hissapbe/sto-3g",
        "# hf/sto-3g g09defaults",
        "# hf/sto-3g symmetry=SaveOrientation",
        "# hf/sto-3g PDENS",
        "# hf/sto-3g genchk",
        "# hf/sto-3g pop=full pop=nbo",
        "# hf/sto-3g scf=qc scf=(maxcycle=99)",
        "# hf/sto-3g scf=noincore",
        "# ccsd=noincore/sto-3g",
        "# hf/sto-3g scfconv=8",
        "# b3lyp/sto-3g utd=(nstates=3)",
        "# b3lyp/sto-3g rtd",
        "# cis/sto-3g density=(cis=1)",
        "# hf/sto-3g scrf=(smd,solvent=generic)",
        "%rwf=a\n#p restart",
        "%chk=a\n# hf/sto-3g scrf=(pcm,check)",
    };
    for (const char* head : heads) {
        EXPECT_EQ(places_of(head + helium), "") << head;
    }
}

// What recognises words where no source is known for them makes notes alone.
TEST(Checker, MakesNotesOfWhatNobodyVerified) {
    std::size_t notes = 0;
    std::size_t warnings = 0;
    for (const std::string& word : solvent_input_words()) {
        const std::string slip = word.substr(0, 2) + word[1] + word.substr(2);
        const std::string text = "# hf/sto-3g scrf=(pcm,read)" + helium + slip + "=1\n" + word + "=x9\n\n";
        for (const Finding& finding : check_text(text)) {
            const bool has_near = finding.hint.rfind("did you mean ", 0) == 0;
            const std::string near = has_near ? finding.hint.substr(13, finding.hint.find_first_of(" ,?", 13) - 13) : word;
            const bool is_known = is_verified_solvent_word(near);
            EXPECT_EQ(finding.severity >= Severity::Warning, is_known) << text << finding.message;
            (is_known ? warnings : notes) += 1;
        }
    }
    EXPECT_GE(notes, 20U);
    EXPECT_GE(warnings, 15U);
    const std::pair<const char*, const char*> heads[] = {
        {"# hf/sto-3g scf=restart", "L008 1:0+0 note\n"},
        {"# hf/sto-3g charge=check", "L008 1:0+0 note\nS001 7:0+0 warning\n"},
        {"# hf/sto-3g density=check", "L008 1:0+0 warning\n"},
        {"# hf/sto-3g scrf=check", "L008 1:0+0 warning\n"},
        {"# hf/sto-3g guess=read", "L008 1:0+0 error\n"},
    };
    for (const auto& [head, places] : heads) {
        EXPECT_EQ(places_of(head + helium), places) << head;
    }
}

TEST(Checker, KnowsWhichElementsABasisSetLacks) {
    const std::string iodine = "\n\nt\n\n0 1\nH 0.0 0.0 0.0\nI 0.0 0.0 1.61\n\n";
    const std::pair<const char*, const char*> cases[] = {
        {"# hf/6-311g(d,p)", "R013 7:0+0 error\n"},
        {"# hf 6-31+g*", "R013 7:0+0 error\n"},
        {"# b3lyp/cc-pvtz", "R013 7:0+0 error\n"},
        {"# hf/shc", "R013 7:0+0 warning\n"},
        {"# hf/3-21g", ""},
        {"# hf/def2tzvp", ""},
        {"# hf/sdd", ""},
        {"# hf/sto-6g", ""},
        {"# pm6", ""},
        {"# hf/6-311g(d,p) iop(3/5=2)", ""},
        {"%oldchk=a\n# hf/chkbasis", ""},
    };
    for (const auto& [head, places] : cases) {
        EXPECT_EQ(places_of(head + iodine), places) << head;
    }
    EXPECT_EQ(finding_of(check_text("# hf/6-311g" + iodine), "GJF-R013")->hint,
              "sets that have it: def2svp, def2tzvp, lanl2dz, cep-121g");
    EXPECT_EQ(places_of("# hf/6-31g\n\nt\n\n0 1\nHg 0 0 0\nHg 0 0 9\nBq 0 0 5\n\n"), "R013 6:0+0 error\n");
}

TEST(Checker, CallsWhatStopsAnError) {
    const std::pair<const char*, const char*> cases[] = {
        {"# hf/sto-3g opt=ts opt=calcfc", "GJF-R002"}, {"# hf/sto-3g opt opt", "GJF-R002"},
        {"# hf/sto-3g sp freq", "GJF-R010"},           {"# hf/sto-3g freq irc=calcfc", "GJF-R010"},
        {"# hf/sto-3g force freq", "GJF-R010"},        {"# hf/sto-3g irc", "GJF-R009"},
    };
    for (const auto& [head, code] : cases) {
        const std::vector<Finding> findings = check_text(head + helium);
        ASSERT_NE(finding_of(findings, code), nullptr) << head;
        EXPECT_EQ(finding_of(findings, code)->severity, Severity::Error) << head;
    }
}

// Returns the errors among the findings, with their codes.
std::string errors_of(const std::string& text) {
    std::string errors;
    for (const Finding& finding : check_text(text)) {
        errors += finding.severity == Severity::Error ? finding.code + " " + finding.message + "\n" : "";
    }
    return errors;
}

TEST(Checker, IsNotSureOfWhatGaussianMayRun) {
    const std::string water = "\n\nt\n\n0 1\nO 0.0 0.0 0.0\nH 0.0 0.76 0.59\nH 0.0 -0.76 0.59\n\n";
    const std::string chk = "%chk=a\n";
    const std::string texts[] = {
        "# hf/6-31g(d') opt" + helium,
        chk + "# hf/6-31g(d') geom=allcheck\n\n",
        chk + "# restart\n\n",
        chk + "# b3lyp/6-31g* opt=restart\n\n",
        chk + "# irc=(restart,maxpoints=60)\n\n",
        "# lc-b97d/6-31g" + helium,
        "# gb3lyp/6-31g" + helium,
        "# hf/sto-3g geom=addredundant" + helium,
        "# pbe0/6-31g" + helium,
        "%mem=1.5GB\n# hf/sto-3g" + helium,
        "%nprocshared=0\n# hf/sto-3g" + helium,
        "$RunGauss\n# hf/sto-3g" + helium,
        "# hf/sto-3g\n\nt\n\n0 1\nD 0 0 0\nH 0 0 0.74\n\n",
        // Rows of forms that are not read: the molecule cannot be counted.
        "# oniom(hf/sto-3g:pm6)\n\nt\n\n0 1 0 1 0 1\nC\nH 1 1.09\nH 1 1.09 2 109.5\nH 1 1.09 2 109.5 3 120.0\n"
        "C 1 1.53 2 109.5 3 240.0 0 L H\nH 5 1.09 1 109.5 2 180.0 0 L\nH 5 1.09 1 109.5 2 60.0 0 L\n"
        "H 5 1.09 1 109.5 2 -60.0 0 L\n\n",
        "# hf/sto-3g opt=modredundant\n\nt\n\n0 1\nN1\nH2 N1 1.0\nH3 N1 1.0 H2 107.0\nH4 N1 1.0 H2 107.0 H3 115.0\n\n"
        "B 1 4 F\n\n",
        // Codes behind the values of variables, as older input has them.
        "# hf/sto-3g opt=(z-matrix,ef,ts)\n\nt\n\n0 1\nH\nH 1 r\n\nr 0.74 D\n\n",
        "# oniom(hf/sto-3g:pm6)\n\nt\n\n0 1\nHe 0 0 0 H\nHe 0 0 4 L\n\n",
        "# hf/gen" + water + "O 0\nSTO 1S 3 7.66\n++++\nH 0\nsto-3g\n****\n\n",
    };
    for (const std::string& text : texts) {
        EXPECT_EQ(errors_of(text), "") << text;
    }
}

TEST(Checker, IsQuietAboutRareButOrdinaryForms) {
    const std::string water = "\n\nt\n\n0 1\nO 0.0 0.0 0.0\nH 0.0 0.76 0.59\nH 0.0 -0.76 0.59\n\n";
    const std::string layers = "\n\nt\n\n0 1 0 1 0 1\nHe 0.0 0.0 0.0 H\nHe 0.0 0.0 4.0 L\n\n";
    const std::string texts[] = {
        "# hf/6-31+g(d',p') opt" + water,
        "# hf/sto-3g scrf=(smd,solvent=n,n-dimethylformamide)" + water,
        "# ircmax(b3lyp/6-31g(d,p):hf/6-31g(d,p))" + water,
        "# nonstd\n1/38=1/1;\n2/17=6,18=5,40=1/2;\n99/5=1/99;" + water,
        "# hf/sto-3g opt=modredundant" + water + "FreezeAll\n\n",
        "# hf/sto-3g freq=(fc,readfcht)" + water + "print=matrix=jk\n\nfinal.chk\n\n",
        "# hf/sto-3g scrf=(read,solvent=water)" + water + "ExtraSph=1\n\n0.0 0.0 1.0 2.0\n\n",
        "# oniom(hf/gen:pm6)" + layers + "He 0\nsto-3g\n****\n\n",
        "# oniom(hf/genecp:pm6)" + layers + "He 0\nsto-3g\n****\n\nHe 0\nlanl2dz\n\n",
        "# blyp/gen/gen" + water + "O H 0\nsto-3g\n****\n\nO H 0\nS 1 1.0\n1.0 1.0\n****\n\n",
        "# hf/gen" + water + "O H 0\nMWB28\n++++\n\n",
        "# hf/gen" + water + "O H Bq 0\nsto-3g\n****\n\n",
        "# hf/gen" + water + "! a note\nO H 0\nsto-3g\n! more\n****\n\n",
        "# hf/sto-3g scrf=(read,solvent=generic)" + water + "solventname=a b, c frob\n\n",
        "%chk=\"a b.chk\"\n%oldchk=\"a b.chk\"\n# hf/sto-3g" + water,
        "# hf/gen pseudo=read" + water + "O H 0\nsto-3g\n****\n\n! by number\n1 0\nlanl2dz\n\n",
        "# hf/sto-3g scrf=(read,solvent=water)" + water + "! the solvent\neps=3.0\n\n",
        "# hf/sto-3g charge" + water + "! the field\n1.0 0.0 4.0 0.5\n@charges.txt\n\n",
        "# hf/sto-3g opt=qst2\n\nt\n\n0 1\nH\nH 1 0.7\n\nu\n\n0 1\nH\nH 1 0.9\n\n",
        "# hf/sto-3g\n\nt\n\n0 1\nHe\nHe 1 1e300\n\n",
        "# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0\nHe 0.0 0.0 1e300\n\n",
        "# hf/sto-3g counterpoise=2\n\nt\n\n0 1 0 1 0 1\nHe(Fragment=1) 0 0 0\nHe(Fragment=2) 0 0 3\nX 0 0 6\n\n",
        "# mp2/sto-3g\n\nt\n\n0 1\nAr 0 0 0\nAr 3.8 0 0\nAr 1.9 3.3 0\nAr 5.7 3.3 0\n\n",
    };
    for (const std::string& text : texts) {
        EXPECT_EQ(places_of(text), "") << text;
    }
}

// Each of these stands beside one hydrogen atom: what is no nucleus brings no electron.
TEST(Checker, CountsNoElectronsOfWhatIsNoNucleus) {
    for (const std::string label : {"X", "Xx", "-1", "-2", "Tv", "0", "Bq", "H-Bq"}) {
        const std::string text = "# hf/sto-3g\n\nt\n\n0 1\nH 0.0 0.0 0.0\n" + label + " 0.0 0.0 3.0\n\n";
        const std::vector<Finding> findings = check_text(text);
        ASSERT_EQ(findings.size(), label == "0" ? 2U : 1U) << label;
        EXPECT_EQ(findings[0].message, "charge 0 and multiplicity 1 are impossible for 1 electron") << label;
    }
}

}  // namespace

// The checker as a whole: places, hints, suppression, order, and reading on behind what cannot be read.
#include <gjf/core/check/checker.hpp>

#include <gjf/core/check/near_names.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using namespace quor::input::gaussian;

namespace {

// "CODE line:column+length severity", one finding a line.
std::string places_of(const std::string& text, const CheckOptions& options = {}) {
    std::string places;
    for (const Finding& finding : check_text(text, options)) {
        places += finding.code.substr(4) + " " + std::to_string(finding.line) + ":" + std::to_string(finding.column) + "+" +
                  std::to_string(finding.length) + " " + severity_name(finding.severity) + "\n";
    }
    return places;
}

const Finding* find(const std::vector<Finding>& findings, const std::string& code) {
    const auto found = std::find_if(findings.begin(), findings.end(), [&](const Finding& f) { return f.code == code; });
    return found == findings.end() ? nullptr : &*found;
}

const std::string helium = "\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n";

TEST(Checker, TellsThePlace) {
    const std::pair<std::string, std::string> cases[] = {
        {"# hf/sto-3g" + helium, ""},
        {"# hf/sto-3g opt=(calcall,calfc)" + helium, "R001 1:26+5 error\n"},
        {"#p hf/sto-3g\nopt=(tight,\n  calfc)" + helium, "R001 3:3+5 error\n"},
        {"#p\n#bl3yp/sto-3g" + helium, "W005 2:2+5 warning\n"},
        {"%mem=x\n# hf/def2-tzvp opt" + helium, "L002 1:6+1 error\nW005 2:6+9 error\n"},
        {"# hf/sto-3g opt=(calcfc" + helium, "T007 1:17+1 error\n"},
        {"# hf/sto-3g/mp2/cc-pvdz" + helium, "R003 1:13+3 warning\nR004 1:17+7 warning\n"},
        {"# hf/6-31g/3-21g/x" + helium, "R004 1:12+5 warning\nW005 1:18+1 warning\n"},
        {"# hf/6-31g/x" + helium, "W005 1:12+1 warning\n"},
        {"# hf/sto-3g//b3lyp" + helium, "R003 1:14+5 warning\n"},
        {"# hf/sto-3g/b3lyp/6-31g(d)" + helium, "R003 1:13+5 warning\nR004 1:19+8 warning\n"},
        {"# hf/sto-3g//b3lyp/6-31g(d)" + helium, ""},
        {"# hf/sto-3g/auto" + helium, ""},
        {"# hf/sto-3g sfc=(xqc)" + helium, "W005 1:13+3 warning\n"},
        {"# hf/sto-3g xxx=freq" + helium, "W005 1:13+3 warning\n"},
        {"# hf/6-31g(d) (opt)]" + helium, "W005 1:15+6 warning\nT007 1:20+1 error\n"},
        {"#p hf/sto-3g opt=(tight,\n ! or loose\n calfc,maxcycles=30)" + helium, "R001 3:2+5 error\n"},
        {"# hf/sto-3g opt (calfc)" + helium, "R001 1:18+5 error\n"},
        {"# hf/sto-3g xfoo/foo" + helium, "W005 1:13+4 warning\nW005 1:18+3 warning\n"},
        {"# hf/sto-3g\n\nt\n\n0 1\nO\nH 1 0.96\nH 1 0.96 7 104.5\n\n", "M009 8:10+1 error\n"},
        {"# hf/sto-3g opt=modredundant\n\nt\n\n0 1\nHe 0.0 0.0 0.0\nHe 0.0 0.0 3.0\nHe 0.0 3.0 3.0\n\nA 1 2 01 F\nD 1 2 3 1 "
         "F\n\n",
         "S023 10:7+2 error\nS023 11:9+1 warning\n"},
        {"# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 r\n\n", "M007 6:12+1 error\n"},
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
        {"# hf/sto-3g opt=(ts,qst2,calcfc) frq", "R008 1:21+4 warning\nW005 1:34+3 warning\n"},
        {"not a route", ""},
    };
    for (const auto& [route, places] : cases) {
        std::string found;
        for (const Finding& finding : check_route(route)) {
            found += finding.code.substr(4) + " " + std::to_string(finding.line) + ":" + std::to_string(finding.column) +
                     "+" + std::to_string(finding.length) + " " + severity_name(finding.severity) + "\n";
        }
        EXPECT_EQ(found, places) << route;
    }
}

TEST(Checker, HintsAtNearNames) {
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"# hf/sto-3g opt=calfc", "GJF-R001", "did you mean calcfc?"},
        {"# m06-2x/sto-3g", "GJF-W005", "did you mean m062x?"},
        {"# hf/def2-tzvp", "GJF-W005", "did you mean def2tzvp?"},
        {"# bl3yp/sto-3g", "GJF-W005", "did you mean b3lyp or blyp?"},
        {"# hf/sto-3g frq", "GJF-W005", "did you mean freq?"},
        {"%nprocshard=2\n# hf/sto-3g", "GJF-L001", "did you mean nprocshared?"},
        {"# hf/sto-3g scrf=(solvent=acetonitril3)", "GJF-R012", "did you mean acetonitrile?"},
        {"# hf/sto-3g qwertzuiop", "GJF-W005", ""},
    };
    for (const auto& [head, code, hint] : cases) {
        const std::vector<Finding> findings = check_text(head + helium);
        ASSERT_NE(find(findings, code), nullptr) << head;
        EXPECT_EQ(find(findings, code)->hint, hint) << head;
    }
}

TEST(Checker, IsSureOnlyOfOneSlipInsideALongName) {
    const std::tuple<const char*, const char*, Severity> cases[] = {
        {"# hf/sto-3g opt(maxcyle=9)", "GJF-R001", Severity::Error},     // missing
        {"# hf/sto-3g opt(maxcycls=9)", "GJF-R001", Severity::Error},    // missing
        {"# hf/sto-3g opt(MaxCycless=9)", "GJF-R001", Severity::Error},  // doubled
        {"# hf/sto-3g opt(maxcylces=9)", "GJF-R001", Severity::Error},   // swapped
        {"# hf/sto-3g opt(maxcicles=9)", "GJF-R001", Severity::Error},   // wrong
        {"# hf/sto-3g opt(calfc)", "GJF-R001", Severity::Error},         // missing, in a name of six
        {"# hf/sto-3g opt(noeigntest)", "GJF-R001", Severity::Error},
        {"# hf/sto-3g geom=conectivity", "GJF-R001", Severity::Error},
        {"# m06-2x/sto-3g", "GJF-W005", Severity::Error},  // a dash
        {"# wB97X-D/sto-3g", "GJF-W005", Severity::Error},
        {"# hf/def2-tzvp", "GJF-W005", Severity::Error},
        {"%nprocshard=2\n# hf/sto-3g", "GJF-L001", Severity::Error},
        {"# hf/sto-3g scrf=(solvent=acetonitrille)", "GJF-R012", Severity::Error},
        {"# hf/sto-3g frq", "GJF-W005", Severity::Warning},  // short
        {"# b3lpy/sto-3g", "GJF-W005", Severity::Warning},
        {"# hf/sto-3g opt(xmaxcycles=9)", "GJF-R001", Severity::Warning},  // added in front
        {"# hf/sto-3g opt(maxcyclesx=9)", "GJF-R001", Severity::Warning},  // added behind
        {"# hf/sto-3g opt(naxcycles=9)", "GJF-R001", Severity::Warning},   // another first letter
        {"# hf/sto-3g opt(mxcyclse=9)", "GJF-R001", Severity::Warning},    // two slips
        {"# hf/sto-3g opt(maxcyxles=9)", "GJF-R001", Severity::Error},
        {"# hf/sto-3g opt(maxcycxles=9)", "GJF-R001", Severity::Warning},  // put in
        {"# hf/def2tzvq", "GJF-W005", Severity::Warning},                  // another last letter
        {"# hf/6-331g", "GJF-W005", Severity::Warning},                    // a digit
        {"# hf/sto-3g qwertzuiop", "GJF-W005", Severity::Warning},
        {"# hf/sto-3g opt=qwertzuiop", "GJF-R001", Severity::Warning},
        {"%chkx=a\n# hf/sto-3g", "GJF-L001", Severity::Warning},
    };
    for (const auto& [head, code, severity] : cases) {
        const std::vector<Finding> findings = check_text(head + helium);
        ASSERT_NE(find(findings, code), nullptr) << head;
        EXPECT_EQ(find(findings, code)->severity, severity) << head;
    }
}

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
    EXPECT_EQ(find(check_text("# hf/6-311g" + iodine), "GJF-R013")->hint,
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
        ASSERT_NE(find(findings, code), nullptr) << head;
        EXPECT_EQ(find(findings, code)->severity, Severity::Error) << head;
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
        ASSERT_EQ(findings.size(), 1U) << label;
        EXPECT_EQ(findings[0].message, "charge 0 and multiplicity 1 are impossible for 1 electron") << label;
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
        ASSERT_NE(find(findings, code), nullptr) << text;
        EXPECT_EQ(find(findings, code)->hint, hint) << text;
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
    EXPECT_EQ(find(check_text("\n \n"), "GJF-P001")->message, "No valid jobs found in input");
    EXPECT_EQ(find(check_text("\n \n"), "GJF-P001")->job, 0U);
}

TEST(Checker, IsSilencedByOptionsAndComments) {
    const std::string route = "# hf/sto-3g opt=calfc scf=vtightlnieq";
    EXPECT_EQ(places_of(route + helium, {{"gjf-r001"}}), "");
    EXPECT_EQ(places_of(route + helium, {{"GJF-R002", ""}}), "R001 1:17+5 error\nR001 1:27+11 error\n");
    EXPECT_EQ(places_of("! quor-gjf: ignore GJF-R001\n" + route + helium), "");
    EXPECT_EQ(places_of("! Quor-GJF: ignore gjf-m001, gjf-r001\n" + route + helium), "X005 1:20+8 note\n");
    EXPECT_EQ(places_of(route + " ! quor-gjf: ignore GJF-R001" + helium), "");
    EXPECT_NE(places_of("! quor-gjf: GJF-R001\n" + route + helium), "");
    EXPECT_NE(places_of("! quor-gjf: ignore\n" + route + helium), "");
    // A comment speaks for its own job.
    const std::string two = route + " ! quor-gjf: ignore GJF-R001" + helium + "--Link1--\n" + route + helium;
    EXPECT_EQ(places_of(two), "R001 9:17+5 error\nR001 9:27+11 error\n");
}

TEST(Checker, TellsOfCommentsThatSilenceNothing) {
    const std::string route = "# hf/sto-3g opt=calfc ! quor-gjf: ignore ";
    EXPECT_EQ(places_of(route + "GJF-R001" + helium), "");
    EXPECT_EQ(places_of(route + "GJF-R001 GJF-M002" + helium), "X005 1:51+8 note\n");
    EXPECT_EQ(places_of(route + "GJF-R001 GJF-R00" + helium), "X005 1:51+7 note\n");
    EXPECT_EQ(places_of(route + "GJF-R001 all" + helium), "X005 1:51+3 note\n");
    // What was not looked for cannot be missed: other codes, other files, what stands behind the end of reading.
    EXPECT_EQ(places_of(route + "GJF-R001 GJF-M002" + helium, {{"GJF-M002"}}), "");
    EXPECT_EQ(places_of(route + "GJF-R001 GJF-M002" + helium, {{"GJF-X005"}}), "");
    EXPECT_EQ(places_of(route + "GJF-R001 GJF-M002 GJF-X005" + helium), "");
    EXPECT_EQ(places_of(route + "GJF-R001 GJF-L010" + helium), "");
    EXPECT_EQ(places_of(route + "GJF-R001 GJF-P001 GJF-M002 GJF-T006\n\nt\n\n0 1\nHe 0.0 0.0 0x\n\n"), "");
    CheckOptions options;
    options.reports = [](const std::string& code) { return code != "GJF-R001"; };
    EXPECT_EQ(places_of("# hf/sto-3g ! quor-gjf: ignore GJF-R001 GJF-M002" + helium, options), "X005 1:41+8 note\n");
}

TEST(Checker, HoldsJobsToTheLimitsOfASite) {
    struct Case {
        const char* head;
        const char* wanted;
    };
    const std::vector<Case> cases = {
        {"%chk=a\n%mem=64GB\n# hf/sto-3g", ""},
        {"%chk=a\n%mem=65GB\n# hf/sto-3g", "X001 2:6+4 warning\n"},
        {"%chk=a\n%mem=8GW\n# hf/sto-3g", ""},
        {"%chk=a\n%mem=9GW\n# hf/sto-3g", "X001 2:6+3 warning\n"},
        {"%chk=a\n%mem=1GB\n%mem=65536MB\n# hf/sto-3g", ""},
        {"%chk=a\n%nprocshared=32\n# hf/sto-3g", ""},
        {"%chk=a\n%nproc=33\n# hf/sto-3g", "X002 2:8+2 warning\n"},
        {"%chk=a\n%cpu=0-31\n# hf/sto-3g", ""},
        {"%chk=a\n%cpu=0-30,40,41\n# hf/sto-3g", "X002 2:6+10 warning\n"},
        {"%chk=a\n# hf/sto-3g scf=xqc", ""},
        {"%chk=a\n# hf/sto-3g scf=qc", "X003 2:17+2 warning\n"},
        {"%chk=a\n# hf/sto-3g scf=(conver=8,qc)", "X003 2:27+2 warning\n"},
        {"%chk=a\n# hf/sto-3g SCF=QC", "X003 2:17+2 warning\n"},
        {"%chk=a\n%RWF=b\n# hf/sto-3g", "X003 2 warning\n"},
        {"# hf/sto-3g", "X004 1 warning\n"},
        {"%oldchk=a\n# hf/sto-3g", "X004 2 warning\n"},
        {"%CHK=a\n# hf/sto-3g", ""},
    };
    CheckOptions options;
    options.limits = {std::int64_t{64} << 30, 32, {"scf=qc", "%rwf"}, {"%chk"}};
    for (const Case& each : cases) {
        std::string found;
        for (const Finding& finding : check_text(each.head + helium, options)) {
            const std::string place =
                std::to_string(finding.line) +
                (finding.column == 0 ? "" : ':' + std::to_string(finding.column) + '+' + std::to_string(finding.length));
            found += finding.code.substr(0, 5) != "GJF-X"
                         ? ""
                         : finding.code.substr(4) + ' ' + place + ' ' + severity_name(finding.severity) + '\n';
        }
        EXPECT_EQ(found, each.wanted) << each.head;
        for (const Finding& finding : check_text(each.head + helium)) {
            EXPECT_NE(finding.code.substr(0, 5), "GJF-X") << each.head;
        }
    }
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

TEST(NearNames, AreAFewLettersAway) {
    const std::vector<std::string> names = {"calcfc", "calcall", "readfc", "ts", "def2tzvp", "b3lyp", "rb3lyp"};
    const std::pair<std::string, std::string> cases[] = {
        {"calfc", "did you mean calcfc?"},
        {"clacfc", "did you mean calcfc?"},
        {"calcfcx", "did you mean calcfc?"},
        {"bl3yp", "did you mean b3lyp?"},
        {"def2-tzvp", "did you mean def2tzvp?"},
        {"xyz", ""},
        {"t", ""},
        {"zzzzzzzz", ""},
        {std::string(100, 'a'), ""},
    };
    for (const auto& [word, hint] : cases) {
        EXPECT_EQ(did_you_mean(near_names(word, names)), hint) << word;
    }
}

TEST(NearNames, AreMisspeltByOneSlip) {
    const std::tuple<std::string, std::string, bool> cases[] = {
        {"calfc", "calcfc", true},
        {"bl3yp", "b3lyp", false},
        {"def2-tzvp", "def2tzvp", true},
        {"utlrafine", "ultrafine", true},
        {"iterative", "iterate", false},
        {"addredundant", "modredundant", false},
        {"efield", "field", false},
        {"maxcyle", "maxcyc", false},
        {"maxcyle", "maxcycles", true},
        {"maxxcy", "maxcyc", false},
        {"modreedund", "modredundant", true},
        {"calcffc", "calcfc", true},
        {"calcf", "calcfc", false},
        {"", "opt", false},
        {"optt", "opt", false},
        {"qpt", "opt", false},
    };
    for (const auto& [word, name, misspelt] : cases) {
        EXPECT_EQ(is_misspelt(word, {name}), misspelt) << word;
    }
    EXPECT_FALSE(is_misspelt("opt", {}));
}

TEST(NearNames, AreJoinedToAQuestion) {
    EXPECT_EQ(did_you_mean({}), "");
    EXPECT_EQ(did_you_mean({"a"}), "did you mean a?");
    EXPECT_EQ(did_you_mean({"a", "b"}), "did you mean a or b?");
    EXPECT_EQ(did_you_mean({"a", "b", "c"}), "did you mean a, b or c?");
}

}  // namespace

// Words of routes that Gaussian takes, and so must raise nothing; and misspelt ones, of which a part is certain.
#include <gjf/core/check/checker.hpp>

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

using namespace quor::input::gaussian;

namespace {

// Returns the worst severity that a route is told of; nothing for none.
std::optional<Severity> worst_of(const std::string& route) {
    std::optional<Severity> worst;
    for (const Finding& finding : check_route(route)) {
        worst = std::max(worst, std::optional(finding.severity));
    }
    return worst;
}

TEST(RouteWords, ThatGaussianTakesRaiseNothing) {
    for (const char* route : {"# b3lyp/6-31g(d) pop=mk pop=nbo",
                              "# b3lyp/6-31g(d) pop=full pop=full",
                              "# b3lyp/6-31g(d) scf=tight scf=xqc",
                              "# rzindo",
                              "# uzindo",
                              "# rzindo(nstates=4)",
                              "# b3lyp/6-31g(d) g09defaults",
                              "# b3lyp/6-31g(d) g03defaults",
                              "# b3lyp/6-31g(d) symmetry=SaveOrientation",
                              "# b3lyp/6-31g(d) PDENS",
                              "# b3lyp/6-31g(d) GenChk",
                              "# b3lyp/6-31g(d)/GenChk",
                              "# b3lyp/6-31g(d) utd",
                              "# b3lyp/6-31g(d) rtd",
                              "# b3lyp/6-31g(d) utd=(nstates=3)",
                              "# b3lyp/6-31g(d) rtda(nstates=4)",
                              "# hissapbe/6-31g(d)",
                              "# uhissapbe/6-31g(d)",
                              "# hissbpbe/6-31g(d)",
                              "# ccsd=noincore/6-31g(d)",
                              "# ccsd(noincore)/6-31g(d)",
                              "# hf/6-31g(d) scf=noincore",
                              "# cis/6-31g(d) density=(cis=1)",
                              "# cis/6-31g(d) density=cis=1",
                              "# hf/6-31g(d) scfconv=8",
                              "# b3lyp/6-31g(d) scrf=(smd,solvent=generic)",
                              "# hf/6-31g(d) nmr=mixed",
                              "# hf/6-31g(d) nmr=(mixed,spinspin)",
                              "# hf/6-31g(d) geom=modify",
                              "# hf/6-31g(d) geom=modela int=sepk",
                              "# hf/6-31g(d) freq=(scale=0.95)",
                              "# mp2(semidirect,maxdisk=2000mw)/6-31g(d)"}) {
        EXPECT_EQ(worst_of(route), std::nullopt) << route;
    }
}

TEST(RouteWords, MisspeltInsideAreErrors) {
    for (const char* route :
         {"# hf/6-31g(d) opt=(maxcyle=50)", "# hf/6-31g(d) opt=(maxcycls=50)", "# hf/6-31g(d) opt=(MaxCycless=50)",
          "# hf/6-31g(d) opt=modredundent", "# hf/6-31g(d) geom=conectivity", "# hf/6-31g(d) geom=connectivty",
          "# hf/6-31g(d) counterpose=2", "# hf/6-31g(d) nossymm", "# hf/6-31g(d) int=ultrafne", "# m06-2x/6-31g(d)",
          "# hf/6-31g(d) opt opt", "# hf/6-31g(d) opt=calcfc opt=ts", "# hf/6-31g(d) conection", "# b3lpyx/6-31g(d)",
          "# hf/6-31g(d) foo=bar"}) {
        EXPECT_EQ(worst_of(route), Severity::Error) << route;
    }
}

TEST(RouteWords, WithALetterMoreInFrontOrBehindAreWarnings) {
    for (const char* route : {"# hf/6-31g(d) xnosymm", "# hf/6-31g(d) opt=(cmaxcycles=50)", "# hf/6-31g(d) pop=hirshfelds",
                              "# hf/6-31g(d) nosymmx"}) {
        EXPECT_EQ(worst_of(route), Severity::Warning) << route;
    }
}

// NZCore stands in the vendor's list as an option of Gen; options of basis sets are not in the vocabulary.
TEST(RouteWords, ThatNeedOthersAreWarnings) {
    for (const char* route :
         {"# hf/6-31g(d) opt=(qst3,path=6)", "# oniom(hf/6-31g(d):uff)=embedcharge opt scrf=(oniompcm=a)",
          "# hf/6-31g(d) opt=noraman", "# hf/6-31g(d) opt=conical", "# hf/6-31g(d) geom=step=3", "# ccsd(e4t)/6-31g(d)",
          "# casscf(4,4)/6-31g(d) opt=conical casscf=stateaverage", "# hf/6-31g(d) pop=(mk,chelpg)"}) {
        EXPECT_EQ(worst_of(route), Severity::Warning) << route;
    }
    for (const char* route :
         {"# hf/6-31g(d) opt=(qst3,path=5)", "# hf/6-31g(d) opt=(qst2,path=6)", "# ccsd(t,e4t)/6-31g(d)",
          "# oniom(hf/6-31g(d):uff)=embedcharge opt scrf=(oniompcm=c)", "# oniom(hf/6-31g(d):uff) scrf=(oniompcm=a)",
          "# hf/6-31g(d) opt=(calcall,noraman)", "# casscf(4,4)/6-31g(d) opt=conical", "# hf/6-31g(d) geom=(check,step=3)",
          "# hf/6-31g(d) pop=(mk,nbo)"}) {
        EXPECT_EQ(worst_of(route), std::nullopt) << route;
    }
}

TEST(RouteWords, WithOptionsOfABasisSetAreNotes) {
    EXPECT_EQ(worst_of("# hf/6-31g(d) gen=(nzcore)"), Severity::Note);
    EXPECT_EQ(worst_of("# hf/6-31g(d) geny=(nzcore)"), Severity::Warning);
}

TEST(RouteWords, OfLevelsAreLookedAt) {
    for (const char* route :
         {"# oniom(b3lyp/6-31g(d):pm6)", "# oniom=(mp2/6-31g(d):hf/3-21g:uff)", "# oniom(b3lyp/gen:uff=qeq)",
          "# oniom(b3lyp/6-31g(d):amber=softonly)=embedcharge", "# oniom(b3lyp/6-31g(d)/auto:pm6)",
          "# oniom(ccsd(t)/cc-pvtz:mp2=full/cc-pvdz:pm6)=(scalecharge=555555)", "# oniom(external='a b':uff)",
          "# oniom(cis=(nstates=3)/6-31g*:hf/sto-3g)", "# oniom(casscf(4,4)/6-31g*:hf/sto-3g)",
          "# oniom(td=(nstates=3)/6-31g*:hf/sto-3g)", "# oniom(b3lyp/6-31g(d) td:pm6) opt"}) {
        EXPECT_EQ(worst_of(route), std::nullopt) << route;
    }
    EXPECT_EQ(worst_of("# oniom(hf/def2-tzvp:uff)"), Severity::Error);
    EXPECT_EQ(worst_of("# oniom(hf/6-31g(d):uff2)"), Severity::Warning);
    EXPECT_EQ(worst_of("# oniom(hf/6-31g(d),uff)"), Severity::Error);
    const std::vector<Finding> findings = check_route("# opt oniom(b3lyp/6-31g(d):wb97x-d/3-21g:uff)");
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].message, "'wb97x-d' is no route keyword, method or basis set");
    EXPECT_EQ(findings[0].column, 28U);
    EXPECT_EQ(findings[0].length, 7U);
}

TEST(RouteWords, WithSignsThatStandForNoFunctionsAreErrors) {
    for (const char* route : {"# hf/6-31g(x)", "# hf/6-31g(d;p)", "# hf/6-311+g(q)", "# hf/cc-pvtz(x)"}) {
        EXPECT_EQ(worst_of(route), Severity::Error) << route;
    }
    for (const char* route : {"# hf/6-31g(dd)", "# hf/6-311g(4df)", "# hf/cc-pvtz(d)", "# hf/def2tzvp(x)"}) {
        EXPECT_EQ(worst_of(route), Severity::Warning) << route;
    }
    for (const char* route : {"# hf/6-31g(d')", "# hf/6-311+g(3df,3pd)", "# hf/6-311g(3d2f,2df,p)", "# hf/cc-pv(t+d)z"}) {
        EXPECT_EQ(worst_of(route), std::nullopt) << route;
    }
}

TEST(RouteWords, OfAPathNeedForceConstantsFromSomewhere) {
    EXPECT_EQ(worst_of("# hf/6-31g(d) irc"), Severity::Error);
    EXPECT_EQ(worst_of("# hf/6-31g(d) irc=maxpoints=10"), Severity::Error);
    EXPECT_EQ(worst_of("# hf/6-31g(d) irc=calcfc"), std::nullopt);
    EXPECT_EQ(worst_of("# hf/6-31g(d) irc=rcfc geom=check"), std::nullopt);
    EXPECT_EQ(worst_of("# hf/6-31g(d) irc geom=check"), Severity::Note);
    EXPECT_EQ(worst_of("# hf/6-31g(d) irc geom=allcheck"), Severity::Note);
}

}  // namespace

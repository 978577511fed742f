// The values of options: what is found wrong with them, how badly, where, and the many forms that are right.
#include <gjf/core/check/checker.hpp>
#include <gjf/core/knowledge/route_facts.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

using namespace quor::input::gaussian;

namespace {

std::vector<Finding> of_values(const std::string& words) {
    std::vector<Finding> findings = check_route("# " + words);
    findings.erase(std::remove_if(findings.begin(), findings.end(),
                                  [](const Finding& finding) {
                                      return finding.code != "GJF-R014" && finding.code != "GJF-R015" &&
                                             finding.code != "GJF-R016";
                                  }),
                   findings.end());
    return findings;
}

struct ValueCase {
    const char* words;
    const char* code;
    Severity severity;
    std::size_t column;  // of "# " and the words, from 1
    std::size_t length;
};

TEST(OptionValues, ThatAreWrongAreFoundAtTheirPlace) {
    const ValueCase cases[] = {
        {"hf/sto-3g opt=maxstep=0.5", "GJF-R014", Severity::Error, 25, 3},
        {"hf/sto-3g opt=(ts,calcfc,maxcycles=abc)", "GJF-R014", Severity::Error, 38, 3},
        {"hf/sto-3g opt=(maxcyc=1e3)", "GJF-R014", Severity::Error, 25, 3},
        {"hf/sto-3g opt=(maxcyc=10.)", "GJF-R014", Severity::Error, 25, 3},
        {"hf/sto-3g opt=maxcyc=0", "GJF-R014", Severity::Warning, 24, 1},
        {"hf/sto-3g opt=(ngoup=-2)", "GJF-R014", Severity::Warning, 24, 2},
        {"hf/sto-3g opt=(updatemethod=berny)", "GJF-R014", Severity::Warning, 31, 5},
        {"hf/sto-3g scf=(maxcycle=many)", "GJF-R014", Severity::Error, 27, 4},
        {"hf/sto-3g scf=vshift=0.3", "GJF-R014", Severity::Error, 24, 3},
        {"hf/sto-3g irc=(calcfc,stepsize=0.1)", "GJF-R014", Severity::Error, 34, 3},
        {"hf/sto-3g irc=(calcfc,recorrect=perhaps)", "GJF-R014", Severity::Warning, 35, 7},
        {"hf/sto-3g td=(nstates=ten)", "GJF-R014", Severity::Error, 25, 3},
        {"hf/sto-3g rtd=(root=1.5)", "GJF-R014", Severity::Error, 23, 3},
        {"uccsd(t,maxcyc=x)/sto-3g", "GJF-R014", Severity::Error, 18, 1},
        {"hf/sto-3g int=(acc2e=12.5)", "GJF-R014", Severity::Error, 24, 4},
        {"hf/sto-3g int=(grid=finest)", "GJF-R014", Severity::Warning, 23, 6},
        {"hf/sto-3g freq=(temp=-3)", "GJF-R014", Severity::Warning, 24, 2},
        {"hf/sto-3g freq=(temp=warm)", "GJF-R014", Severity::Error, 24, 4},
        {"hf/sto-3g temperature=warm", "GJF-R014", Severity::Error, 25, 4},
        {"hf/sto-3g temperature=298K", "GJF-R014", Severity::Error, 25, 4},
        {"hf/sto-3g pressure=1atm", "GJF-R014", Severity::Error, 22, 4},
        {"hf/sto-3g cachesize=big", "GJF-R014", Severity::Note, 23, 3},
        {"hf/sto-3g counterpoise=1", "GJF-R014", Severity::Warning, 26, 1},
        {"hf/sto-3g maxdisk=20xb", "GJF-R014", Severity::Error, 21, 4},
        {"hf/sto-3g scfcyc=many", "GJF-R014", Severity::Error, 20, 4},
        {"hf/sto-3g iop(33=1)", "GJF-R014", Severity::Error, 17, 4},
        {"hf/sto-3g iop(3/33)", "GJF-R014", Severity::Error, 17, 4},
        {"hf/sto-3g iop(3/33=x)", "GJF-R014", Severity::Error, 17, 6},
        {"hf/sto-3g iop(3/33=1,5/x=1)", "GJF-R014", Severity::Error, 24, 5},
        {"hf/sto-3g iop(12/33=1)", "GJF-R014", Severity::Warning, 17, 7},
        {"hf/sto-3g opt=(maxcycles)", "GJF-R015", Severity::Error, 18, 9},
        {"hf/sto-3g opt=(ts,calcfc,recalcfc=)", "GJF-R015", Severity::Error, 28, 8},
        {"hf/sto-3g opt=(calcfc,maxcycles 100)", "GJF-R015", Severity::Warning, 25, 9},
        {"hf/sto-3g int=(grid=ultrafne)", "GJF-R014", Severity::Error, 23, 8},
        {"hf/sto-3g cphf=(grid=fnie)", "GJF-R014", Severity::Warning, 24, 4},
        {"hf/sto-3g field=w+10", "GJF-R014", Severity::Error, 19, 4},
        {"hf/sto-3g field=x+0.001", "GJF-R014", Severity::Warning, 19, 7},
        {"casscf(4.4)/sto-3g", "GJF-R014", Severity::Error, 10, 3},
        {"hf/sto-3g scrf=(smd,solvent)", "GJF-R015", Severity::Error, 23, 7},
        {"hf/sto-3g counterpoise", "GJF-R015", Severity::Warning, 13, 12},
        {"hf/sto-3g counterpoise=newghost", "GJF-R015", Severity::Warning, 13, 12},
        {"hf/sto-3g iop", "GJF-R015", Severity::Warning, 13, 3},
        {"hf/sto-3g opt=(calcfc=1)", "GJF-R016", Severity::Warning, 25, 1},
        {"hf/sto-3g scf=xqc=30", "GJF-R016", Severity::Warning, 21, 2},
        {"hf/sto-3g pop=nbo=3", "GJF-R016", Severity::Warning, 21, 1},
    };
    for (const ValueCase& wanted : cases) {
        const std::vector<Finding> findings = of_values(wanted.words);
        ASSERT_EQ(findings.size(), 1U) << wanted.words;
        EXPECT_EQ(findings[0].code, wanted.code) << wanted.words;
        EXPECT_EQ(findings[0].severity, wanted.severity) << wanted.words;
        EXPECT_EQ(findings[0].column, wanted.column) << wanted.words;
        EXPECT_EQ(findings[0].length, wanted.length) << wanted.words;
    }
}

TEST(OptionValues, ThatAreRightAreLeftAlone) {
    for (const char* words : {"opt=(maxstep=10)",
                              "opt=(ngoup=-1)",
                              "opt=(maxcycle=(50))",
                              "opt=(updatemethod=bofill)",
                              "opt=(qst3,path=5)",
                              "opt=recalcfc=5",
                              "scf=(conver=8,vshift)",
                              "scf=(vshift=-1,maxcycle=512)",
                              "scf=(pdiag=5)",
                              "int=grid=ultrafine",
                              "int=(grid=99590)",
                              "int=(grid=-75302)",
                              "int=(grid=UltraFineGrid,acc2e=12)",
                              "int=(grid=fine)",
                              "cphf=(grid=sg1)",
                              "td=(nstates=10,root=2)",
                              "td=(nstates=read)",
                              "td(window(13,-12))",
                              "td=(goccend=-3)",
                              "irc=(calcfc,stepsize=-10)",
                              "irc=(calcfc,recalcfc(c=1))",
                              "irc=(calcfc,recalcfc=(pred=10))",
                              "irc=(calcfc,phase=(1,2),maxpoints=20)",
                              "irc=(calcfc,report,recorrect)",
                              "irc=(calcfc,recorrect=never,report=read)",
                              "iop(3/33=1)",
                              "iop=(3/33=-1)",
                              "iop(3/76=1000002000,3/77=0720008000)",
                              "iop(99/6=1)",
                              "counterpoise=2",
                              "counterpoise=(3,newghost)",
                              "temperature=298.15 pressure=1.0 scale=0.9806",
                              "temperature=default",
                              "freq=(temp=200)",
                              "freq=(scale=0.95)",
                              "maxdisk=20gb",
                              "maxdisk=250000000",
                              "scrf=(smd,solvent=1,4-dioxane)",
                              "scrf=(solvent=water,read)",
                              "scrf=(dipole,a0=4.00)",
                              "density=(transition=(1,2))",
                              "density=transition",
                              "density=(cis=1)",
                              "casscf(4,4)/sto-3g",
                              "casscf(4,4,nroot=2)/sto-3g",
                              "field=x+10",
                              "geom=(check,step=original)",
                              "geom=(check,step=3)",
                              "field=z-100",
                              "field=read",
                              "external=\"run -a=b\"",
                              "guess=(fragment=2,mix)",
                              "optcyc=30 scfcyc=100",
                              "fmm=(lmax=10)",
                              "polar=(step=10)",
                              "symmetry=(pg=c2v,axis=x)",
                              "pbc=(nkpoint=-20)",
                              "bomd=(nsample=-1,phase=(1,2,3))",
                              "pop=(nbo,orbitals=10,savento)"}) {
        EXPECT_EQ(of_values("hf/sto-3g " + std::string(words)).size(), 0U) << words;
    }
    for (const char* words :
         {"casscf(4,4,nroot=2)/sto-3g", "casscf(6,6,rasscf(1,9,1,9))/sto-3g", "gvb(2)/sto-3g", "ccsd(t,conver=8)/sto-3g",
          "mp2(semidirect,maxdisk=2000mw)/sto-3g", "eomccsd(nstpir=-1)/sto-3g", "zindo(nstates=10,window=(22,46))",
          "sac-ci=(singlet=(nstate=4))/sto-3g"}) {
        EXPECT_EQ(of_values(words).size(), 0U) << words;
    }
}

TEST(OptionValues, TellWhatIsWanted) {
    EXPECT_EQ(of_values("hf/sto-3g opt=maxstep=0.5")[0].message, "'0.5' is no value of opt=maxstep");
    EXPECT_EQ(of_values("hf/sto-3g opt=maxstep=0.5")[0].hint, "it takes a whole number from 1 on");
    EXPECT_EQ(of_values("hf/sto-3g td=(nstates=ten)")[0].hint, "it takes a whole number from 1 on, or one of: read");
    EXPECT_EQ(of_values("hf/sto-3g opt=(maxcycles)")[0].message, "opt=maxcyc stands without its value");
    EXPECT_EQ(of_values("hf/sto-3g opt=(calcfc=1)")[0].hint, "leave '=1' out");
    EXPECT_EQ(of_values("hf/sto-3g iop(3/33)")[0].hint, "it takes overlay/option=number, as in 3/33=1");
}

TEST(OptionValues, AreAskedForByKeyword) {
    EXPECT_EQ(option_values("").size(), 0U);
    EXPECT_EQ(option_values("nokeyword").size(), 0U);
    EXPECT_EQ(option_values("zzz").size(), 0U);
    ASSERT_GT(option_values("opt").size(), 3U);
    EXPECT_EQ(option_values("opt").front().keyword, "opt");
    EXPECT_EQ(option_values("opt").back().keyword, "opt");
    EXPECT_TRUE(lists_word("a bc d", "bc"));
    for (const char* word : {"", "b", "c", "a bc d e", "ab"}) {
        EXPECT_FALSE(lists_word("a bc d", word)) << word;
    }
}

}  // namespace

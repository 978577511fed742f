// Routes as people write them: where each word goes, and that no word that Gaussian accepts is warned about.
#include "vocabulary_tables.hpp"

#include <gjf/core/route/keyword_parser.hpp>

namespace quor::input::gaussian {
namespace {

ParsedKeywords parsed(const std::string& route) {
    G16KeywordParser parser(vocabulary());
    parser.parse(route);
    return parser.get_parsed_keywords();
}

std::string names_of(const ParsedKeywords& route) {
    std::string names;
    for (const KeywordInfo& keyword : route.keywords) {
        names += (names.empty() ? "" : " ") + keyword.name;
    }
    return names;
}

TEST(Routes, FillTheirSlots) {
    const std::vector<TableRow> expected = {
        // route, method, basis set, keywords
        {"#p b3lyp/6-31g(d) opt freq", "b3lyp", "6-31g(d)", "opt freq"},
        {"# UM062X def2TZVP scrf=(smd,solvent=dichloroethane) stable=opt guess=mix", "um062x", "def2tzvp",
         "scrf stable guess"},
        {"# opt=(calcfc,ts,noeigentest,maxcyc=100) freq=noraman gen wb97xd pseudo=read", "wb97xd", "gen", "opt freq pseudo"},
        {"# PBE1PBE/GenECP EmpiricalDispersion=GD3BJ Int=UltraFine SCF=(XQC,MaxCycle=512)", "pbe1pbe", "genecp",
         "empiricaldispersion int scf"},
        {"# emp=gd3bj b3lyp/6-311+g(2d,p) nosym temp=300 pres=2 test", "b3lyp", "6-311+g(2d,p)",
         "empiricaldispersion nosymm temperature pressure test"},
        {"# gvb(4)/6-31g", "", "6-31g", "gvb"},
        {"# ept=(ovgf+p3,readorbitals)/6-31g(d)", "", "6-31g(d)", "ept"},
        {"# external='script -x' opt", "", "", "external opt"},
        {"# td=(nstates=5,root=1) cam-b3lyp/aug-cc-pvdz", "cam-b3lyp", "aug-cc-pvdz", "td"},
        {"# b3lyp/6-31g* tda", "b3lyp", "6-31g*", "tda"},
        {"# casscf(6,6)/6-31g(d) mp2", "casscf", "6-31g(d)", "mp2"},
        {"# casscf=(6,6,stateaverage) 6-31g(d) mp2=full", "casscf", "6-31g(d)", "mp2"},
        {"# sac-ci=(singlet=(nstate=4))/6-31g(d)", "", "6-31g(d)", "sac-ci"},
        {"# zindo=(nstates=5,singlets)", "zindo", "", ""},
        {"# cis(nstates=6)/6-31+g*", "cis", "6-31+g*", ""},
        {"# eomccsd=(nstates=4)/cc-pvdz", "eomccsd", "cc-pvdz", ""},
        {"# dftb=readparameters opt", "dftb", "", "opt"},
        {"# amber=hardfirst geom=connectivity", "amber", "", "geom"},
        {"# uff opt=(cartesian,gdiis)", "uff", "", "opt"},
        {"# mp2=full/6-31g(d)", "mp2", "6-31g(d)", ""},
        {"# mp2-full/6-31g(d)", "mp2", "6-31g(d)", ""},
        {"# ccsd=t1diag cc-pvtz", "ccsd", "cc-pvtz", ""},
        {"# CCSD(T)/cc-pVQZ window=(3,0)", "ccsd(t)", "cc-pvqz", "window"},
        {"# pm6=(print,input)", "pm6", "", ""},
        {"# AM1 Opt=Z-matrix", "am1", "", "opt"},
        {"# g4=(sp,readisotopes)", "g4", "", ""},
        {"# CBS-QB3 opt=maxcyc=200", "cbs-qb3", "", "opt"},
        {"# b2plypd3=full/def2tzvpp", "b2plypd3", "def2tzvpp", ""},
        {"# hf/3-21g* counterpoise=2 charge", "hf", "3-21g*", "counterpoise charge"},
        {"# ub3lyp/EPR-III prop=epr 5d 7f", "ub3lyp", "epr-iii", "prop 5d 7f"},
        {"# blyp/6-31g(d)/auto", "blyp", "6-31g(d)", ""},
        {"# blyp/def2svp/w06 denfit", "blyp", "def2svp", "densityfit"},
        {"# ONIOM(b3lyp/6-31g(d):uff)=embedcharge opt", "", "", "oniom opt"},
        {"# ircmax(b3lyp/6-31g(d):hf/3-21g,zero)", "", "", "ircmax"},
        {"# irc=(calcfc,maxpoints=20,stepsize=5) b3lyp chkbasis guess=tcheck geom=allchk", "b3lyp", "chkbasis",
         "irc guess geom"},
        {"#N Geom=AllCheck Guess=TCheck SCRF=Check GenChk RB3LYP/CBSB7 Freq", "rb3lyp", "cbsb7", "geom guess scrf freq"},
        {"# b3lyp/6-31g(d) pop=(nbo6read,savenbos) output=wfx iop(3/33=1,6/7=3)", "b3lyp", "6-31g(d)", "pop output iop"},
        {"# freq=(roa,readiso) cphf=rdfreq b3lyp/6-311++g(3df,3pd) density=current", "b3lyp", "6-311++g(3df,3pd)",
         "freq cphf density"},
        {"# nmr=(giao,spinspin,mixed) mpw1pw91/6-311+g(2d,p) formcheck gfinput", "mpw1pw91", "6-311+g(2d,p)",
         "nmr formcheck gfinput"},
        {"# bomd(maxpoints=35,ntraj=1) lc-blyp/sto-3g", "lc-blyp", "sto-3g", "bomd"},
        {"# polar=(dcshg,cubic) hf/d95v+* field=x+10", "hf", "d95v+*", "polar field"},
        {"# punch=(mo,coord) units=(au,rad) hf/ugbs2p+ massage", "hf", "ugbs2p+", "punch units massage"},
        {"# basis=6-31g(d) b3lyp sp", "b3lyp", "6-31g(d)", "sp"},
        {"#t ccsd(t)/cc-pvtz//b3lyp/6-31g(d)", "ccsd(t)", "cc-pvtz", ""},
    };
    for (const TableRow& row : expected) {
        const ParsedKeywords route = parsed(row[0]);
        EXPECT_EQ(route.method, row[1]) << row[0];
        EXPECT_EQ(route.basis_set, row[2]) << row[0];
        EXPECT_EQ(names_of(route), row[3]) << row[0];
        for (const ParseWarning& warning : route.warnings) {
            ADD_FAILURE() << row[0] << ": " << warning.code << ' ' << warning.message;
        }
    }
}

TEST(Routes, WithWrongWordsAreWarnedAbout) {
    const std::vector<TableRow> expected = {{"# m06-2x/6-31g(d)", "GJF-W005"},   {"# b3lyp/def2-tzvp", "GJF-W005"},
                                            {"# wb97x-d def2svp", "GJF-W005"},   {"# b3lpy/6-31g(d)", "GJF-W005"},
                                            {"# hf/6-31g feq", "GJF-W005"},      {"# hf/6-31g dens", "GJF-W001"},
                                            {"# hf/6-31g opt=calc", "GJF-W004"}, {"# hf lanl2", "GJF-W003"},
                                            {"# b97/6-31g", "GJF-W002"},         {"# hf/6-31g scf=conv", "GJF-W004"}};
    for (const TableRow& row : expected) {
        const ParsedKeywords route = parsed(row[0]);
        ASSERT_EQ(route.warnings.size(), 1U) << row[0];
        EXPECT_EQ(route.warnings.front().code, row[1]) << row[0];
    }
}

TEST(Routes, NeverReadAnAbbreviationOfADoubleHybridAsTheMethod) {
    const ParsedKeywords route = parsed("# pbe0/6-31g(d)");
    EXPECT_EQ(route.method, "");
    EXPECT_EQ(names_of(route), "pbe0");
}

TEST(Routes, AbbreviateEveryKeywordWithoutAWarning) {
    for (const TableRow& row : read_table("keyword_abbreviations", 2)) {
        const ParsedKeywords route = parsed("# b3lyp/6-31g(d) " + row[1]);
        EXPECT_EQ(names_of(route), row[0]) << row[1];
        EXPECT_TRUE(route.warnings.empty()) << row[1];
    }
}

TEST(Routes, TakeEveryMethodInTheSlashForm) {
    for (const TableRow& row : read_table("methods", 3)) {
        if (row[2] == "keyword") {
            continue;
        }
        const ParsedKeywords route = parsed("# " + row[0] + "/6-31+G(d,p) sp");
        EXPECT_EQ(route.method, row[1]) << row[0];
        EXPECT_EQ(route.basis_set, "6-31+g(d,p)") << row[0];
        EXPECT_EQ(names_of(route), "sp") << row[0];
        EXPECT_TRUE(route.warnings.empty()) << row[0];
    }
}

TEST(Routes, TakeEveryBasisSetWithAndWithoutASlash) {
    for (const TableRow& row : read_table("basis_sets", 1)) {
        const std::string expected = vocabulary().normalize_keyword(row[0]);
        if (row[0].find('=') == std::string::npos) {
            EXPECT_EQ(parsed("# hf/" + row[0]).basis_set, expected) << row[0];
            EXPECT_EQ(parsed("# hf " + row[0]).basis_set, expected) << row[0];
            EXPECT_TRUE(parsed("# hf/" + row[0]).warnings.empty()) << row[0];
        }
        EXPECT_EQ(parsed("# blyp/tzvp/" + row[0]).density_fitting_basis, expected) << row[0];
    }
}

TEST(Routes, TakeEveryOptionWithoutAWarning) {
    for (const TableRow& row : read_table("options", 3)) {
        const ParsedKeywords route = parsed("# hf/6-31g " + row[0] + "=(" + row[2] + ")");
        EXPECT_TRUE(route.warnings.empty()) << row[0] << '=' << row[2];
        ASSERT_EQ(route.keywords.size(), 1U) << row[0];
        if (row[0] != "ONIOM" && row[0] != "CCSD(T)") {  // oniom names layers, ccsd(t) is a method expression
            EXPECT_EQ(route.keywords.front().options.count(SimpleYAMLParser::to_lower(row[2])), 1U)
                << row[0] << '=' << row[2];
        }
    }
}

}  // namespace
}  // namespace quor::input::gaussian

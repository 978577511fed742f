// Sections after the molecule: what a route asks for, and how each kind takes its lines.
#include <gjf/core/reader/gjf_parser.hpp>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace quor::input::gaussian {
namespace {

using Kind = ExtraInputSectionKind;
using Kinds = std::vector<int>;
using Sections = std::vector<std::pair<int, std::string>>;

Kinds as_numbers(const std::vector<Kind>& kinds) {
    Kinds numbers;
    for (const Kind kind : kinds) {
        numbers.push_back(static_cast<int>(kind));
    }
    return numbers;
}

Kinds expected(const std::string& route) {
    return as_numbers(GJFParser::expected_extra_input_order(GJFParser::parse_control_section({route})));
}

Kinds expected_for(const std::string& route, const std::string& charge_line, const std::string& label) {
    GJFData data;
    data.control = GJFParser::parse_control_section({route});
    data.geom = GJFParser::parse_geometry_section({charge_line, label + " 0.0 0.0 0.0"});
    return as_numbers(GJFParser::expected_extra_input_order(data));
}

TEST(ExpectedOrder, FollowsTheRoute) {
    const std::pair<std::string, Kinds> cases[] = {
        {"# b3lyp/6-31g(d) opt freq", {}},
        {"# hf geom=connectivity", {1}},
        {"# hf geom=(connect)", {1}},
        {"# hf geom=modconnect", {}},
        {"# hf modconnect", {1}},
        {"# hf geom=readopt", {2}},
        {"# hf opt=(readoptimize)", {2}},
        {"# hf opt=rdopt", {2}},
        {"# hf opt=modredundant", {3}},
        {"# hf opt=(modred,tight)", {3}},
        {"# hf opt=addgic", {3}},
        {"# hf opt=qst2", {4}},
        {"# hf opt=(qst2,modredundant) geom=connectivity", {1, 3, 4, 5, 7}},
        {"# hf opt=(qst3,modredundant) geom=connectivity", {1, 3, 4, 5, 7, 8, 9, 11}},
        {"# hf opt=(qst3,readopt)", {2, 4, 6, 8, 10}},
        {"# hf freq=readisotopes", {13}},
        {"# hf readisotopes", {13}},
        {"# external='x' external=readinput", {14}},
        {"# hf extralinks=L608", {15}},
        {"# hf extralinks=l607", {}},
        {"# amber=hardfirst", {16}},
        {"# oniom(hf/sto-3g:amber=softonly)", {16}},
        {"# amber=(softfirst)", {16}},
        {"# amber=softfirstx", {}},
        {"# hf freq=roa", {17}},
        {"# hf cphf=rdfreq", {17}},
        {"# hf charge", {18}},
        {"# hf admp", {19}},
        {"# hf bomd", {19}},
        {"# hf admp=readvelocity", {19, 19}},
        {"# hf bomd=(readvelocity,readmwvelocity)", {19, 19, 19}},
        {"# hf scrf=(read,externaliteration)", {20}},
        {"# hf scrf=read", {30}},
        {"# hf scrf=(pcm,solvent=water)", {}},
        {"# hf irc=(report=read)", {21}},
        {"# hf irc=(calcfc,maxpoints=5)", {}},
        {"# hf geom=readharmonic", {22}},
        {"# b3lyp/gen", {25}},
        {"# b3lyp/genecp", {25, 28}},
        {"# b3lyp gen", {25}},
        {"# b3lyp/gen pseudo=read", {25, 28}},
        {"# b3lyp/6-31g(d) extrabasis", {25}},
        {"# hf massage", {26}},
        {"# hf field=read", {27}},
        {"# hf extradensitybasis", {29}},
        {"# dftb", {31}},
        {"# hf guess=input", {32}},
        {"# hf guess=lowsymm", {33}},
        {"# b3lyp guess=(cards,alter)", {34, 35}},
        {"# ub3lyp guess=(cards,alter)", {34, 34, 35, 35}},
        {"# hf guess=permute", {36}},
        {"# uhf guess=permute", {36, 36}},
        {"# gvb(4)/6-31g(d)", {37}},
        {"# casscf(6,6,stateaverage)/6-31g(d)", {38}},
        {"# casscf(6,6,spinorbit)/6-31g(d)", {39}},
        {"# casscf(6,6,stateaveragex)/6-31g(d)", {}},
        {"# mp2=readwindow", {}},
        {"# hf mp2=(readwindow)", {40}},
        {"# ept(readorbitals)/6-31g(d)", {41}},
        {"# hf nmr=(spinspin,readatoms)", {42}},
        {"# hf pop=(mk,readradii)", {43}},
        {"# hf pop=readatradii", {43}},
        {"# hf pop=mk", {}},
        {"# hf pop=mk iop(6/50=1)", {44}},
        {"# hf pop=mk iop(6/50=2)", {}},
        {"# hf prop=(read,opt)", {45, 45}},
        {"# hf pop=nboread", {46}},
        {"# hf pop=(full,nbo6read)", {46}},
        {"# hf freq=selectnormalmodes", {47}},
        {"# hf freq=(hinderedrotor,readhindered)", {48}},
        {"# hf freq=(anharmonic,selectanharmonicmodes)", {49}},
        {"# hf freq=(anharmonic,readanharmonic)", {50}},
        {"# hf freq=(fcht,readfcht)", {51}},
        {"# hf output=pickett", {52}},
        {"# hf nmr=cgst iop(10/93=1)", {53}},
        {"# hf output=wfn", {54}},
        {"# hf output=(matrixelement)", {55}},
        {"# hf output=raw", {55}},
        {"# hf/gen scrf=read guess=lowsymm pop=nboread freq=readisotopes output=wfn", {13, 25, 30, 33, 46, 54}},
    };
    for (const auto& [route, kinds] : cases) {
        EXPECT_EQ(expected(route), kinds) << route;
    }
    EXPECT_TRUE(GJFParser::expected_extra_input_order(ControlSection()).empty());
}

TEST(ExpectedOrder, FollowsTheMolecule) {
    EXPECT_EQ(expected_for("# hf guess=permute", "0 1", "H"), Kinds{36});
    EXPECT_EQ(expected_for("# hf guess=permute", "0 2", "H"), (Kinds{36, 36}));
    EXPECT_EQ(expected_for("# hf guess=permute", "0 1 0 3", "H"), (Kinds{36, 36}));
    EXPECT_EQ(expected_for("# hf guess=cards", "0 2", "H"), Kinds{34});
    for (const char* key : {"ResName", "resnum", "PDBNAME", "Residue", "chainId"}) {
        EXPECT_EQ(expected_for("# hf", "0 1", "H(" + std::string(key) + "=1)"), Kinds{12}) << key;
    }
    EXPECT_EQ(expected_for("# hf", "0 1", "H(Fragment=1)"), Kinds{});
    GJFData no_pairs;
    no_pairs.control = GJFParser::parse_control_section({"# hf guess=permute geom=allcheck"});
    EXPECT_EQ(as_numbers(GJFParser::expected_extra_input_order(no_pairs)), (Kinds{36, 36}));
}

Sections sections_of(const std::string& route, const std::string& rest,
                     const std::string& molecule = "He 0 0 0\nNe 0 0 1\n") {
    const GJFData job = GJFParser::parse_string(route + "\n\nt\n\n0 1\n" + molecule + "\n" + rest);
    Sections sections;
    for (std::size_t i = 0; i < job.extra_inputs.size(); ++i) {
        sections.emplace_back(static_cast<int>(job.extra_inputs[i].kind), job.extra_input_text(i));
    }
    return sections;
}

TEST(Sections, TakeTheirLinesByClass) {
    struct Case {
        std::string route, rest;
        Sections sections;
    };
    const Case cases[] = {
        {"# hf", "a\nb\n\n\nc\n", {{0, "a\nb"}, {0, "c"}}},
        {"# hf opt=modredundant scrf=read", "B 1 2 F\n\n\neps=4\n\nx\n", {{3, "B 1 2 F"}, {30, "eps=4"}, {0, "x"}}},
        {"# hf/genecp", "H 0\n6-31g\n****\n", {{25, "H 0\n6-31g\n****"}}},
        {"# hf guess=lowsymm output=wfn", "one\ntwo\nthree\n", {{33, "one"}, {54, "two"}, {0, "three"}}},
        {"# hf guess=lowsymm output=wfn", "\none\n\n\ntwo\n\nthree\n", {{33, "one"}, {54, "two"}, {0, "three"}}},
        {"# hf output=wfn", "", {}},
        {"# hf pop=nboread", "$nbo a\n\nb $END c\n\n\nx\n", {{46, "$nbo a\n\nb $END c"}, {0, "x"}}},
        {"# hf pop=nboread", "$nbo\nno end\n\nx\n", {{46, "$nbo\nno end\n\nx"}}},
        {"# hf output=pickett", "1 2,3-5\n7\nx 8\n", {{52, "1 2,3-5\n7"}, {0, "x 8"}}},
        {"# hf output=pickett", "1\n\n2\n", {{52, "1"}, {0, "2"}}},
        {"# hf output=pickett", "C 1\n", {{0, "C 1"}}},
        {"# hf output=pickett", "-\n", {{0, "-"}}},
        // Numbers that are no atoms: a wrong list, but the list all the same.
        {"# hf output=pickett", "7-3\n0 -2\n99999999999999999999\n", {{52, "7-3\n0 -2\n99999999999999999999"}}},
        {"# hf output=pickett", "3-\n", {{0, "3-"}}},
        {"# hf output=pickett", "1-2-3\n", {{0, "1-2-3"}}},
        {"# uhf guess=alter", "1 2\n\n3 4\n", {{35, "1 2"}, {35, "3 4"}}},
        {"# hf opt=qst2", "t2\n\n0 1\nHe 0 0 2\n\nx\n", {{4, "t2\n\n0 1\nHe 0 0 2"}, {0, "x"}}},
        {"# hf opt=qst2", "", {}},
        {"# hf opt=qst2", "\n\n0 1\nHe 0 0 2\n", {{4, "\n\n0 1\nHe 0 0 2"}}},
        {"# hf opt=qst2 scrf=read",
         "t2\n\n0 1\nO\nH 1 r\n\nr=1\n\neps=2\n",
         {{4, "t2\n\n0 1\nO\nH 1 r\n\nr=1"}, {30, "eps=2"}}},
        {"# hf geom=connectivity", "! bonds\n\n1 2 1.0\n2 ! no more\n", {{1, "1 2 1.0\n2"}}},
        {"# hf geom=connectivity", "1 2 1.0\n\nx\n", {{1, "1 2 1.0\n2"}, {0, "x"}}},
        {"# hf geom=connectivity opt=qst2",
         "1 2 1.0\n\nt2\n\n0 1\nHe 0 0 2\n\n 1 2 2.0\n",
         {{1, "1 2 1.0\n2"}, {4, "t2\n\n0 1\nHe 0 0 2"}, {5, " 1 2 2.0"}}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(sections_of(c.route, c.rest), c.sections) << c.route << "\n" << c.rest;
    }
}

TEST(Sections, RefuseWhatCannotBe) {
    struct Case {
        std::string route, rest, message;
    };
    const std::string outside = " references atom index outside the geometry atom count";
    const Case cases[] = {
        {"# hf opt=qst2", "t2\n",
         "Incomplete QST2/QST3 second title and molecule section: missing molecule specification block"},
        {"# hf opt=qst3", "t2\n\n0 1\nHe 0 0 0\n\nt3\n",
         "Incomplete QST3 third title and molecule section: missing molecule specification block"},
        {"# hf geom=connectivity", "1 3 1.0\n", "3" + outside},
        {"# hf geom=connectivity", "7 1 1.0\n", "7" + outside},
        {"# hf geom=connectivity", "1\n2\n 3 ! none\n", "3" + outside},
        {"# hf geom=connectivity", "4294967297\n", "4294967297" + outside},
        {"# hf geom=connectivity", "7\n1 9 1.0\n", "9" + outside},
        {"# hf geom=connectivity opt=qst2", "1\n\nt2\n\n0 1\nHe 0 0 0\n\n1\n3\n", "3" + outside},
        {"# hf geom=connectivity", "1 2\n", "Incomplete connectivity pair in line: 1 2"},
        {"# hf geom=connectivity opt=qst2", "1 2 1.0\n\nt2\n\n0 1\nHe 0 0 0\n\n1 9 1.0\n", "9" + outside},
        {"# hf geom=connectivity opt=qst3", "1\n\nt\n\n0 1\nHe 0 0 0\n\n1\n\nt\n\n0 1\nHe 0 0 0\n\n1 2 x\n",
         "Invalid connectivity bond order 'x' in line: 1 2 x"},
    };
    for (const Case& c : cases) {
        try {
            sections_of(c.route, c.rest);
            ADD_FAILURE() << c.message;
        } catch (const GJFParseException& error) {
            EXPECT_EQ(error.what(), "GJF Parse Error: " + c.message);
        }
    }
}

TEST(Connectivity, IsBoundedByTheMoleculeOfTheJob) {
    EXPECT_EQ(sections_of("# hf geom=connectivity", "1 2 1.0\n", "O\nH 1 1.0\n"), (Sections{{1, "1 2 1.0\n2"}}));
    EXPECT_THROW(sections_of("# hf geom=connectivity", "1 3 1.0\n", "O\nH 1 1.0\n"), GJFParseException);
    const GJFData check = GJFParser::parse_string("# hf geom=(check,connectivity)\n\nt\n\n0 1\n\n1 900 1.0\n");
    ASSERT_NE(check.connectivity(), nullptr);
    EXPECT_EQ(check.connectivity()->bonds[0].atom2, 899u);
    EXPECT_THROW(GJFParser::parse_string("# hf geom=(allcheck,connectivity)\n\n1 1000001 1.0\n"), GJFParseException);
    EXPECT_EQ(GJFParser::parse_string("# hf geom=(allcheck,connectivity)\n\n1 5 1.0\n").connectivity()->bonds.size(), 1u);
}

TEST(Sections, HaveNames) {
    EXPECT_STREQ(GJFParser::extra_input_section_kind_name(Kind::BasisSet), "Basis set specification");
    EXPECT_STREQ(GJFParser::extra_input_section_kind_name(Kind::Connectivity), "Connectivity specifications");
}

}  // namespace
}  // namespace quor::input::gaussian

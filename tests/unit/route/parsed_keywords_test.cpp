// Questions asked of an interpreted route, and real routes read with the shipped vocabulary.
#include <gjf/core/route/keyword_parser.hpp>
#include <gjf/core/route/option_syntax.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "small_vocabulary.hpp"

namespace quor::input::gaussian {
namespace {

using test::keywords_of;
using test::warnings_of;

ParsedKeywords read_route(const std::string& text) {
    G16KeywordParser parser(default_route_schema());
    parser.parse(text);
    return parser.get_parsed_keywords();
}

TEST(ParsedKeywords, AnswerThroughTheVocabulary) {
    const ParsedKeywords route = read_route("#p b3lyp/6-31g(d)//hf/sto-3g opt=(maxcycles=5) opt=(tight,maxcycles=9) freq");
    EXPECT_TRUE(route.has_method("B3LYP"));
    EXPECT_TRUE(route.has_method("hf"));
    EXPECT_FALSE(route.has_method("mp2"));
    EXPECT_FALSE(ParsedKeywords().has_method(""));
    EXPECT_TRUE(route.has_keyword("optimize"));
    EXPECT_TRUE(route.has_keyword("optimiz"));
    EXPECT_FALSE(route.has_keyword("irc"));
    EXPECT_EQ(route.get_keywords_by_name("opt").size(), 2u);
    EXPECT_TRUE(route.get_keywords_by_name("scf").empty());
    EXPECT_EQ(route.get_keyword_variable("opt", "maxcycles"), "5");
    EXPECT_EQ(route.get_keyword_variable("Opt", "tight"), "TRUE");
    EXPECT_FALSE(route.get_keyword_variable("opt", "ts").has_value());
    EXPECT_FALSE(route.get_keyword_variable("scf", "tight").has_value());
    const std::string category = route.keywords[0].category;
    std::string upper = category;
    for (char& c : upper) {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
    }
    ASSERT_NE(upper, category);
    EXPECT_TRUE(route.get_keywords_by_category(upper).empty());
    EXPECT_FALSE(route.get_keywords_by_category(category).empty());
}

TEST(Oniom, WarnsOfItsOwnOptions) {
    const std::pair<const char*, const char*> cases[] = {
        {"# oniom(hf/sto-3g:uff)=m", "GJF-W004 ambiguous option 'm' for keyword 'oniom'; candidates: mk, mkuff, mulliken"},
        {"# oniom(hf/sto-3g:uff,m)", "GJF-W004 ambiguous option 'm' for keyword 'oniom'; candidates: mk, mkuff, mulliken"},
        {"# oniom(hf/sto-3g:uff)=(mk,embed,4)", ""},
        {"# oniom(m)", ""},
    };
    for (const auto& [route, warnings] : cases) {
        EXPECT_EQ(warnings_of(read_route(route)), warnings) << route;
    }
}

TEST(RealRoutes, AreReadWithoutWarning) {
    struct Case {
        std::string route;
        std::string model;
        std::string keywords;
    };
    const Case cases[] = {
        {"#p b3lyp/6-31g(d) opt freq", "b3lyp|6-31g(d)", "opt freq"},
        {"# M062X/6-31+G(d,p) Opt=(TS,CalcFC,NoEigenTest) SCRF=(SMD,Solvent=Water) int=ultrafine", "m062x|6-31+g(d,p)",
         "opt{calcfc=TRUE,noeigentest=TRUE,ts=TRUE} scrf{smd=TRUE,solvent=Water} int{ultrafine=TRUE}"},
        {"#N CCSD(T)/cc-pVTZ", "ccsd(t)|cc-pvtz", ""},
        {"# CASSCF(6,6)/6-31G(d)", "casscf|6-31g(d)", ""},
        {"#p MP2=full/6-31G*", "mp2|6-31g*", ""},
        {"# cbs-qb3", "cbs-qb3|", ""},
        {"# b3lyp 6-31g* nmr", "b3lyp|6-31g*", "nmr"},
        {"#p opt wb97xd/gen", "wb97xd|gen", "opt"},
        {"# b3lyp/6-31g(d) td(nstates=5) iop(3/33=1,3/36=-1) scf=(tight,xqc) empiricaldispersion=gd3bj", "b3lyp|6-31g(d)",
         "td{nstates=5} iop{3/33=1,3/36=-1} scf{tight=TRUE,xqc=TRUE} empiricaldispersion{gd3bj=TRUE}"},
        {"# pbe1pbe/def2tzvp TD=(50-50,Nstates=12)", "pbe1pbe|def2tzvp", "td{50-50=TRUE,nstates=12}"},
        {"# hf/3-21g external='script.sh' freq=(readisotopes,hpmodes)", "hf|3-21g",
         "external{'script.sh'=TRUE} freq{hpmodes=TRUE,readisotopes=TRUE}"},
        {"# UB3LYP/6-311++G(3df,3pd) guess=(mix,always) geom=connectivity pop=(nbo,full) nosymm", "ub3lyp|6-311++g(3df,3pd)",
         "guess{always=TRUE,mix=TRUE} geom{connectivity=TRUE} pop{full=TRUE,nbo=TRUE} nosymm"},
        {"# amber=hardfirst geom=connectivity", "amber|", "geom{connectivity=TRUE}"},
        {"# rhf/sto-3g gfinput density=current", "rhf|sto-3g", "gfinput density{current=TRUE}"},
    };
    for (const Case& c : cases) {
        const ParsedKeywords route = read_route(c.route);
        EXPECT_EQ(route.method + "|" + route.basis_set, c.model) << c.route;
        EXPECT_EQ(keywords_of(route), c.keywords) << c.route;
        EXPECT_EQ(warnings_of(route), "") << c.route;
    }
}

TEST(OptionSyntax, WritesKeywords) {
    struct Case {
        std::string name;
        std::vector<RouteOption> options;
        std::string text;
    };
    const Case cases[] = {
        {"opt", {}, "opt"},
        {"opt", {{"tight", std::nullopt}}, "opt=tight"},
        {"opt", {{"tight", std::nullopt}, {"calcfc", std::nullopt}}, "opt=(tight,calcfc)"},
        {"opt", {{"maxcycles", "5"}}, "opt=(maxcycles=5)"},
        {"opt", {{"maxcycles", ""}}, "opt=(maxcycles=)"},
        {"IOp", {{"3/33", "1"}}, "IOp(3/33=1)"},
        {"iop", {{"x", std::nullopt}}, "iop(x)"},
        {"iop", {}, "iop"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(format_keyword(c.name, c.options), c.text);
    }
    const std::vector<RouteOption> options = to_route_options({{"a", "TRUE"}, {"b", ""}, {"c", "5"}, {"d", "true"}});
    EXPECT_EQ(format_keyword("k", options), "k=(a,b,c=5,d=true)");
}

TEST(RouteOptions, AreReadAsTheyAreWritten) {
    const struct {
        const char* text;
        const char* name;
        std::optional<std::string> value;
    } rows[] = {
        {"calcfc", "calcfc", std::nullopt},
        {" MaxCycles = 50 ", "MaxCycles", "50"},
        {"a=", "a", ""},
        {"=5", "", "5"},
        {"a=b=c", "a", "b=c"},
        {"f(x=1)", "f(x=1)", std::nullopt},
        {"f(x=1)=(y=2)", "f(x=1)", "(y=2)"},
        {"", "", std::nullopt},
    };
    for (const auto& row : rows) {
        const RouteOption option = read_route_option(row.text);
        EXPECT_EQ(option.name, row.name) << row.text;
        EXPECT_EQ(option.value, row.value) << row.text;
    }
}

}  // namespace
}  // namespace quor::input::gaussian

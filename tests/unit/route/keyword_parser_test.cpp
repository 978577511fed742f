// Interpreting routes: the head, the dispatch of segments, bare words, options, and the slots they fill.
#include <gjf/core/route/keyword_parser.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "small_vocabulary.hpp"

namespace quor::input::gaussian {
namespace {

using test::keywords_of;
using test::make_parser;
using test::parse_route;
using test::warnings_of;

TEST(RouteHead, SetsThePrintLevel) {
    struct Case {
        std::string route;
        std::string level;
        std::string keywords;
    };
    const Case cases[] = {
        {"", "", ""},
        {"  ", "", ""},
        {"#", "", ""},
        {"#p opt", "p", "opt"},
        {"#P", "p", ""},
        {"#N freq", "n", "freq"},
        {"#T", "t", ""},
        {"#N#P opt", "n#p", "opt"},
        {"#n#p", "n#p", ""},
        {"# opt", "", "opt"},
        {"#x opt", "", "x opt"},
        {"opt freq", "", "opt freq"},
        {" #p opt", "p", "opt"},
        {"#popt", "p", "opt"},
        {"#opt", "", "opt"},
        {"#n#", "n", "#"},
    };
    for (const Case& c : cases) {
        const ParsedKeywords route = parse_route(c.route);
        EXPECT_EQ(route.print_level, c.level) << c.route;
        EXPECT_EQ(keywords_of(route), c.keywords) << c.route;
    }
}

TEST(RouteParser, AddsToItsResultUntilReset) {
    G16KeywordParser parser = make_parser();
    parser.parse("#p hf");
    parser.parse("opt");
    EXPECT_EQ(parser.get_parsed_keywords().print_level, "p");
    EXPECT_EQ(parser.get_parsed_keywords().method, "hf");
    EXPECT_EQ(keywords_of(parser.get_parsed_keywords()), "opt");
    parser.reset();
    EXPECT_EQ(parser.get_parsed_keywords().method + keywords_of(parser.get_parsed_keywords()), "");
    parser.parse("freq");
    EXPECT_EQ(keywords_of(parser.get_parsed_keywords()), "freq");
}

struct SlotCase {
    std::string route;
    std::string method;
    std::string method_options;
    std::string basis;
    std::string keywords;
};

void expect_slots(const std::vector<SlotCase>& cases) {
    for (const SlotCase& c : cases) {
        const ParsedKeywords route = parse_route(c.route);
        EXPECT_EQ(route.method, c.method) << c.route;
        EXPECT_EQ(route.method_options, c.method_options) << c.route;
        EXPECT_EQ(route.basis_set, c.basis) << c.route;
        EXPECT_EQ(keywords_of(route), c.keywords) << c.route;
    }
}

TEST(BareWords, FillTheSlotsInOrder) {
    expect_slots({
        {"# B3LYP 6-31G opt", "b3lyp", "", "631g", "opt"},
        {"# hf", "hf", "", "", ""},
        {"# b3-lyp", "b3lyp", "", "", ""},
        {"# cbs-qb3 freq", "cbs-qb3", "", "", "freq"},
        {"# ccsd(t) sto-3g", "ccsd(t)", "", "sto-3g", ""},
        {"# 6-31g(d)", "", "", "6-31g(d)", ""},
        {"# 6-31G*", "", "", "6-31g*", ""},
        {"# optim", "", "", "", "opt"},
        {"# b3l", "b3lyp", "", "", ""},   // one method alone begins so
        {"# sto", "", "", "sto-3g", ""},  // and one basis set
        {"# hf hf", "hf", "", "", "hf"},  // the slot is taken: kept as it is
        {"# hf uff", "hf", "", "", "uff"},
        {"# sto-3g 6-31g", "", "", "sto-3g", "6-31g"},
        {"# hf mp2", "hf", "", "", "mp2"},  // a word of both roles becomes a keyword
        {"# mp2 hf", "mp2", "", "", "hf"},
        {"# gvb", "", "", "", "gvb"},  // set apart: never a method
        {"# frequency", "", "", "", "freq"},
    });
}

TEST(MethodExpressions, CarryTheirOptionsAsWritten) {
    expect_slots({
        {"# MP2=Full/6-31G(d)", "mp2", "MP2=Full", "6-31g(d)", ""},
        {"# mp2(full) sto-3g", "mp2", "mp2(full)", "sto-3g", ""},
        {"# MP2-FC", "mp2", "MP2-FC", "", ""},
        {"# mp2-nofrozencore", "mp2", "mp2-nofrozencore", "", ""},
        {"# ccsd(t)=full", "ccsd(t)", "ccsd(t)=full", "", ""},
        {"# ccsd(t)(fc)/sto-3g", "ccsd(t)", "ccsd(t)(fc)", "sto-3g", ""},
        {"# CCSD(T,Full)", "ccsd", "CCSD(T,Full)", "", ""},
        {"# ccsd=(t, full)", "ccsd", "ccsd=(t, full)", "", ""},
        {"# mp2-fast", "", "", "", "mp2-fast"},
        {"# mp2(full)x", "", "", "", "mp2(full)x"},
        {"# hf mp2(full)", "hf", "", "", "mp2{full=TRUE}"},
        {"# hf mp2=full", "hf", "", "", "mp2{full=TRUE}"},
    });
}

TEST(SlashForms, FillTheModelChemistry) {
    expect_slots({
        {"# b3lyp/6-31G(d)", "b3lyp", "", "6-31g(d)", ""},
        {"# HF/STO-3G opt", "hf", "", "sto-3g", "opt"},
        {"# hf/gen", "hf", "", "gen", ""},
        {"# hf/def2sv", "hf", "", "def2sv", ""},
        {"# b3l/sto-3g", "b3lyp", "", "sto-3g", ""},  // each piece is placed by itself
        {"# hf/nobasis", "hf", "", "", "nobasis"},
        {"# nomethod/sto-3g", "", "", "sto-3g", "nomethod"},
        {"# opt/tight", "", "", "", "opt{tight=TRUE}"},
        {"# opt/sto-3g", "", "", "sto-3g", "opt"},
        {"# hf/sto-3g b3lyp/6-31g", "hf", "", "sto-3g", "b3lyp 6-31g"},
        {"# aa/bb/cc/dd/ee", "", "", "", "aa bb cc dd ee"},
        {"# hf/", "", "", "", "hf/"},
        {"# /", "", "", "", "/"},
        {"# iop(3/33=1,3/36=-1)", "", "", "", "iop{3/33=1,3/36=-1}"},
    });
}

TEST(SlashForms, TakeFittingSetsAndSecondModels) {
    const ParsedKeywords three = parse_route("# b3lyp/6-31g(d)/Auto");
    EXPECT_EQ(three.density_fitting_basis, "auto");
    EXPECT_EQ(three.method + " " + three.basis_set, "b3lyp 6-31g(d)");
    for (const char* text : {"# MP2=full/6-31g//hf/sto-3g", "# MP2=full/6-31g/auto//hf/sto-3g"}) {
        const ParsedKeywords route = parse_route(text);
        EXPECT_EQ(route.method + "|" + route.method_options + "|" + route.basis_set, "mp2|MP2=full|631g") << text;
        EXPECT_EQ(route.secondary_method + "|" + route.secondary_method_options + "|" + route.secondary_basis_set,
                  "hf||sto-3g")
            << text;
    }
    EXPECT_EQ(parse_route("# hf/sto-3g//mp2(full)/6-31g").secondary_method_options, "mp2(full)");
    const ParsedKeywords unknown = parse_route("# b3lyp/6-31g(d)/nofit");
    EXPECT_EQ(unknown.method + "|" + unknown.basis_set + "|" + unknown.density_fitting_basis, "b3lyp|6-31g(d)|");
    EXPECT_EQ(keywords_of(unknown), "nofit");
    EXPECT_EQ(warnings_of(unknown), "GJF-W005 unknown route keyword/method/basis token 'nofit'; preserved as raw");
}

TEST(BasisAssignments, SetTheBasisOrWarn) {
    struct Case {
        std::string route;
        std::string basis;
        std::string keywords;
        std::string warnings;
    };
    const Case cases[] = {
        {"# basis=6-31G(d)", "6-31g(d)", "", ""},
        {"# anything=sto-3g", "sto-3g", "", ""},
        {"# sto-3g basis=def2tzvp", "def2tzvp", "", ""},
        {"# basis=nothing", "", "", "GJF-W005 unknown route keyword/method/basis token 'nothing'; preserved as raw"},
        {"# opt=tight", "", "opt{tight=TRUE}", ""},
    };
    for (const Case& c : cases) {
        const ParsedKeywords route = parse_route(c.route);
        EXPECT_EQ(route.basis_set, c.basis) << c.route;
        EXPECT_EQ(keywords_of(route), c.keywords) << c.route;
        EXPECT_EQ(warnings_of(route), c.warnings) << c.route;
    }
}

TEST(OptionPatterns, StoreEveryOption) {
    struct Case {
        std::string route;
        std::string keywords;
    };
    const Case cases[] = {
        {"# Opt=(CalcFC,,Tight)", "opt{calcfc=TRUE,tight=TRUE}"},
        {"# opt(MaxCycles=100)", "opt{maxcycles=100}"},
        {"# opt=(maxcycles=1,MAXCYCLES = 2)", "opt{maxcycles=2}"},
        {"# SCRF=PCM(Solvent=Water)", "scrf{pcm=TRUE,solvent=Water}"},
        {"# Opt=(Tight)", "opt{tight=TRUE}"},
        {"# Opt=Tight", "opt{tight=TRUE}"},
        {"# opt=maxcycles=7", "opt{maxcycles=7}"},
        {"# opt=maxcycles=a=b", "opt{maxcycles=a=b}"},
        {"# opt()", "opt"},
        {"# optim(tight)", "opt{tight=TRUE}"},
        {"# Opt(Tight)x", "opt(tight)x"},
        {"# iop(6/50=1)", "iop{6/50=1}"},
        {"# unknown(A=B,c)", "unknown{a=B,c=TRUE}"},
        {"# opt=( CalcFC , MaxCycles = 5 )", "opt{calcfc=TRUE,maxcycles=5}"},
        {"# opt=(a=(b,c),d)", "opt{a=(b,c),d=TRUE}"},
        {"# scf=('a,b','c d')", "scf{'a,b'=TRUE,'c d'=TRUE}"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(keywords_of(parse_route(c.route)), c.keywords) << c.route;
    }
}

TEST(Oniom, KeepsItsExpressionAndItsOptions) {
    struct Case {
        std::string route;
        std::string expression;
        std::string keywords;
    };
    const Case cases[] = {
        {"# ONIOM(b3lyp/6-31g(d):uff) opt", "ONIOM(b3lyp/6-31g(d):uff)", "oniom{layers=b3lyp/6-31g(d):uff} opt"},
        {"# oniom(hf/sto-3g:mp2=full:uff)=EmbedCharge", "oniom(hf/sto-3g:mp2=full:uff)=EmbedCharge",
         "oniom{embedcharge=TRUE,layers=hf/sto-3g:mp2=full:uff}"},
        {"# oniom=(hf:uff, OnlyInputFiles)", "oniom=(hf:uff, OnlyInputFiles)", "oniom{layers=hf:uff,onlyinputfiles=TRUE}"},
        {"# oniom(hf:uff)=(EmbedCharge,ScaleCharge=543210)", "oniom(hf:uff)=(EmbedCharge,ScaleCharge=543210)",
         "oniom{embedcharge=TRUE,layers=hf:uff,scalecharge=543210}"},
        {"# oniom=hf:uff", "oniom=hf:uff", "oniom{layers=hf:uff}"},
        {"# oniom", "", "oniom"},
        {"# oniomx(hf:uff)", "", "oniomx{hf:uff=TRUE}"},
    };
    for (const Case& c : cases) {
        const ParsedKeywords route = parse_route(c.route);
        EXPECT_EQ(route.oniom_expression, c.expression) << c.route;
        EXPECT_EQ(keywords_of(route), c.keywords) << c.route;
        EXPECT_EQ(route.method, "") << c.route;
    }
}

TEST(Keywords, KeepTheirTextAndGetACategory) {
    const ParsedKeywords route = parse_route("#p Opt=(Tight, CalcFC) FREQ hf mp2 sCrF/pcm foo");
    ASSERT_EQ(route.keywords.size(), 5u);
    EXPECT_EQ(route.keywords[0].raw, "Opt=(Tight, CalcFC)");
    EXPECT_EQ(route.keywords[0].category, "job type");
    EXPECT_EQ(route.keywords[1].raw, "FREQ");
    EXPECT_EQ(route.keywords[1].name, "freq");
    EXPECT_EQ(route.keywords[1].category, "other");
    EXPECT_EQ(route.keywords[2].category, "method");
    EXPECT_EQ(route.keywords[3].raw, "sCrF/pcm");
    EXPECT_EQ(route.keywords[4].category, "other");
    EXPECT_EQ(route.keywords[4].name, "foo");
}

TEST(PrintLevel, StaysUntilAnotherOneIsGiven) {
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{"#p hf", "# opt"}, "p"}, {{"#p hf", "opt"}, "p"},      {{"#p hf", "#t opt"}, "t"},
        {{"# hf", "#n opt"}, "n"}, {{"#t", "#", "#n#p"}, "n#p"}, {{"#", "# x"}, ""},
    };
    for (const auto& [routes, level] : cases) {
        G16KeywordParser parser = make_parser();
        for (const std::string& route : routes) {
            parser.parse(route);
        }
        EXPECT_EQ(parser.get_parsed_keywords().print_level, level) << routes[0];
    }
}

TEST(WithoutAVocabulary, EveryWordIsKeptRaw) {
    G16KeywordParser parser;
    parser.parse("#p B3LYP/6-31G(d) Opt=(Tight,CalcFC) Freq scf=xqc hf");
    const ParsedKeywords route = parser.get_parsed_keywords();
    EXPECT_EQ(route.print_level, "p");
    EXPECT_EQ(route.method + route.basis_set, "");
    EXPECT_EQ(keywords_of(route), "B3LYP 6-31g{d=TRUE} opt{calcfc=TRUE,tight=TRUE} Freq scf{xqc=TRUE} hf");
    for (const KeywordInfo& keyword : route.keywords) {
        EXPECT_EQ(keyword.category, "other");
    }
    EXPECT_FALSE(parser.load_config("/no/such/file.yaml"));
    parser.reset();
    parser.parse("hf opt");
    EXPECT_EQ(keywords_of(parser.get_parsed_keywords()), "hf opt");
}

TEST(RoleAcceptance, FollowsExactMatchesThenUniqueAbbreviations) {
    const G16KeywordParser parser = make_parser();
    struct Case {
        std::string token;
        bool keyword, method, basis;
    };
    const Case cases[] = {
        {"", false, false, false},      {"opt", true, false, false},       {"hf", false, true, false},
        {"sto-3g", false, false, true}, {"mp2", true, true, false},        {"op", false, false, false},
        {"optc", true, false, false},   {"b3", false, false, false},       {"b3l", false, true, false},
        {"def2t", false, false, true},  {"def2", false, false, false},     {"6-31g*", false, false, true},
        {"zzz", false, false, false},   {" OPT ", true, false, false},     {"g", false, false, false},
        {"fr", true, false, false},     {"6-31g(p)", false, false, false},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(parser.can_accept_simple_segment_as(c.token, SimpleSegmentKind::Keyword), c.keyword) << c.token;
        EXPECT_EQ(parser.can_accept_simple_segment_as(c.token, SimpleSegmentKind::Method), c.method) << c.token;
        EXPECT_EQ(parser.can_accept_simple_segment_as(c.token, SimpleSegmentKind::Basis), c.basis) << c.token;
    }
    EXPECT_FALSE(G16KeywordParser().can_accept_simple_segment_as("opt", SimpleSegmentKind::Keyword));
}

TEST(Words, AreNormalized) {
    const G16KeywordParser parser;
    EXPECT_EQ(parser.trim(" \ta b\r\n"), "a b");
    EXPECT_EQ(parser.to_lower("A-\xC3\x84"), "a-\xC3\x84");
    EXPECT_EQ(parser.split("a,(b,c)", ','), (std::vector<std::string>{"a", "(b,c)"}));
    EXPECT_EQ(parser.normalize_raw_route_token(" FoO "), "foo");
    EXPECT_EQ(parser.normalize_route_option("ignored", " CalcFC\t"), "calcfc");
    EXPECT_EQ(parser.normalize_route_option("opt", " \n"), "");
}

TEST(RouteParser, TakesTimeInProportion) {
    std::string route = "#p hf";
    for (int i = 0; i < 20'000; ++i) {
        route += " w" + std::to_string(i) + "=a w" + std::to_string(i) + "(b) /";
    }
    G16KeywordParser parser = make_parser();
    parser.parse(route);
    EXPECT_EQ(parser.get_parsed_keywords().method, "hf");
    EXPECT_GE(parser.get_parsed_keywords().warnings.size(), 40'000u);
    parser.reset();
    parser.parse(std::string(200'000, '(') + " " + std::string(200'000, '/'));
    EXPECT_EQ(parser.get_parsed_keywords().keywords.size(), 1u);
}

}  // namespace
}  // namespace quor::input::gaussian

// Route edits: the words that result, what is refused, and that a refusal changes nothing.
#include <gjf/core/editor/gjf_editor.hpp>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "../../support/sample_jobs.hpp"

namespace quor::input::gaussian {
namespace {

using test::expect_refused;
using test::make_job;
using Words = std::vector<std::string>;

std::string route_of(const GJFEditor& editor) {
    std::string text;
    for (const std::string& word : editor.get_data().control.route_keywords) {
        text += (text.empty() ? "" : " | ") + word;
    }
    return text;
}

struct Case {
    std::string before;
    std::function<void(GJFEditor&)> action;
    std::string after;
};

void expect_routes(const std::vector<Case>& cases) {
    for (const Case& c : cases) {
        GJFEditor editor(make_job(1, c.before));
        c.action(editor);
        EXPECT_EQ(route_of(editor), c.after) << c.before;
        EXPECT_TRUE(editor.has_parsed_keywords());
    }
}

TEST(RawRouteEditing, ChangesWordsAndForgetsTheInterpretation) {
    GJFEditor editor(make_job(1, "#p hf/sto-3g opt Opt opt"));
    editor.remove_route_keyword("opt");
    EXPECT_FALSE(editor.has_parsed_keywords());
    EXPECT_EQ(route_of(editor), "#p | hf/sto-3g | Opt");
    editor.ensure_parsed_keywords();
    editor.add_route_keyword("freq=(raman)");
    EXPECT_FALSE(editor.has_parsed_keywords());
    EXPECT_EQ(route_of(editor), "#p | hf/sto-3g | Opt | freq=(raman)");
    editor.remove_route_keyword(editor.get_data().control.route_keywords[0]);
    EXPECT_EQ(route_of(editor), "hf/sto-3g | Opt | freq=(raman)");
}

TEST(RouteQuestions, AnswerFromTheCacheAlone) {
    GJFEditor editor(make_job(1, "#p b3lyp/6-31g(d) opt=(maxcycles=5) freq"));
    EXPECT_EQ(editor.get_method(), "b3lyp");
    EXPECT_EQ(editor.get_basis_set(), "6-31g(d)");
    EXPECT_EQ(editor.get_output_mode(), "p");
    EXPECT_TRUE(editor.has_keyword("optimize"));
    EXPECT_FALSE(editor.has_keyword("irc"));
    EXPECT_EQ(editor.get_keywords_by_name("freq").size(), 1u);
    EXPECT_EQ(editor.get_keyword_variable("opt", "maxcycles"), "5");
    EXPECT_FALSE(editor.get_keyword_variable("opt", "tight").has_value());
    editor.add_route_keyword("scf=tight");
    EXPECT_EQ(editor.get_method() + editor.get_basis_set() + editor.get_output_mode(), "");
    EXPECT_FALSE(editor.has_keyword("opt"));
    EXPECT_TRUE(editor.get_keywords_by_name("opt").empty());
    EXPECT_TRUE(editor.get_keywords_by_category("other").empty());
    EXPECT_FALSE(editor.get_keyword_variable("opt", "maxcycles").has_value());
}

TEST(RouteEditing, RegeneratesTheModelChemistry) {
    expect_routes({
        {"# b3lyp/6-31g(d) opt", [](GJFEditor& e) { e.set_output_mode("#P "); }, "#p b3lyp/6-31g(d) | opt"},
        {"#t b3lyp/6-31g(d) opt", [](GJFEditor& e) { e.set_output_mode(""); }, "# b3lyp/6-31g(d) | opt"},
        {"#p hf/sto-3g opt", [](GJFEditor& e) { e.set_method(" PBE1PBE "); }, "#p pbe1pbe/sto-3g | opt"},
        {"#p mp2(full)/sto-3g", [](GJFEditor& e) { e.set_basis_set("cc-pVDZ"); }, "#p mp2(full)/cc-pvdz"},
        {"#p mp2(full)/sto-3g", [](GJFEditor& e) { e.set_method("hf"); }, "#p hf/sto-3g"},
        {"#p hf/sto-3g", [](GJFEditor& e) { e.clear_basis_set(); }, "#p hf"},
        {"#p hf/sto-3g", [](GJFEditor& e) { e.clear_method(); }, "#p basis=sto-3g"},
        {"#p opt",
         [](GJFEditor& e) {
             e.clear_method();
             e.clear_basis_set();
         },
         "#p | opt"},
        {"#p pbepbe/6-31g(d)/auto", [](GJFEditor& e) { e.update_route_from_parsed_keywords(); }, "#p pbepbe/6-31g(d)/auto"},
        {"#p b3lyp/6-31g(d)//hf/sto-3g freq", [](GJFEditor& e) { e.set_output_mode("n"); },
         "#n b3lyp/6-31g(d)//hf/sto-3g | freq"},
        {"#p b3lyp/6-31g(d)//hf/sto-3g", [](GJFEditor& e) { e.clear_method(); }, "#p basis=6-31g(d)"},
        {"#p ONIOM(b3lyp/6-31g(d):uff) opt", [](GJFEditor& e) { e.set_output_mode("t"); },
         "#t ONIOM(b3lyp/6-31g(d):uff) | opt"},
        {"#p oniom(hf/sto-3g:uff) opt", [](GJFEditor& e) { e.set_method("hf"); }, "#p hf | opt"},
        {"#p oniom(hf/sto-3g:uff) opt", [](GJFEditor& e) { e.remove_keyword_by_name("ONIOM"); }, "#p | opt"},
        {"#p hf/sto-3g", [](GJFEditor& e) { e.set_model_chemistry_basis("6-31G*"); }, "#p hf/6-31g*"},
        {"#p hf/sto-3g", [](GJFEditor& e) { e.set_model_chemistry_method("MP2"); }, "#p mp2/sto-3g"},
        {"#p hf/sto-3g",
         [](GJFEditor& e) {
             e.set_model_chemistry_method_with_options("casscf", {{"6", std::nullopt}, {"nroot", "2"}});
         },
         "#p casscf=(6,nroot=2)/sto-3g"},
        {"#p hf/sto-3g",
         [](GJFEditor& e) {
             e.set_model_chemistry_method_with_options("mp2", {{"full", std::nullopt}});
         },
         "#p mp2=full/sto-3g"},
    });
}

TEST(RouteEditing, WritesTheDensityBasisAsGiven) {
    GJFEditor editor(make_job(1, "#p opt"));
    ParsedKeywords route;
    route.print_level = "p";
    route.method = "B3LYP";
    route.basis_set = "6-31G(d)";
    route.density_fitting_basis = "Auto";
    editor.set_parsed_keywords(route);
    EXPECT_EQ(route_of(editor), "#p | opt");
    editor.update_route_from_parsed_keywords();
    EXPECT_EQ(route_of(editor), "#p B3LYP/6-31G(d)/Auto");
}

TEST(RouteEditing, AddsReplacesAndRemovesKeywords) {
    const RouteOption tight{"tight", std::nullopt};
    const RouteOption calcfc{"CalcFC", std::nullopt};
    const RouteOption cycles{"maxcycles", "5"};
    expect_routes({
        {"# hf opt", [](GJFEditor& e) { e.add_keyword(" Freq "); }, "# hf | opt | freq"},
        {"# hf opt", [](GJFEditor& e) { e.add_keyword("opt"); }, "# hf | opt | opt"},
        {"# hf", [&](GJFEditor& e) { e.add_keyword_with_options("Opt", {tight}); }, "# hf | opt=tight"},
        {"# hf",
         [&](GJFEditor& e) {
             e.add_keyword_with_options("opt", {tight, calcfc});
         },
         "# hf | opt=(tight,CalcFC)"},
        {"# hf", [&](GJFEditor& e) { e.add_keyword_with_options("opt", {cycles}); }, "# hf | opt=(maxcycles=5)"},
        {"# hf",
         [](GJFEditor& e) {
             e.add_keyword_with_options("IOp", {{"3/33", "1"}});
         },
         "# hf | iop(3/33=1)"},
        {"# hf",
         [](GJFEditor& e) {
             e.add_keyword_with_options("iop", {{"x", std::nullopt}});
         },
         "# hf | iop(x)"},
        {"# hf",
         [](GJFEditor& e) {
             e.add_keyword_with_variables("scf", {{"tight", ""}, {"maxcycle", "9"}});
         },
         "# hf | scf=(maxcycle=9,tight)"},
        {"# hf opt=tight freq optimize=qst2",
         [&](GJFEditor& e) {
             e.upsert_keyword_with_options("optimization", {calcfc, cycles});
         },
         "# hf | optimization=(CalcFC,maxcycles=5) | freq"},
        {"# hf freq", [](GJFEditor& e) { e.upsert_keyword("opt"); }, "# hf | freq | opt"},
        {"# hf Opt=Tight", [](GJFEditor& e) { e.upsert_keyword("opt"); }, "# hf | opt"},
        {"# hf freq", [&](GJFEditor& e) { e.ensure_keyword_option("opt", tight); }, "# hf | freq | opt=tight"},
        {"# hf opt=(ts,calcfc)",
         [](GJFEditor& e) {
             e.ensure_keyword_option("Opt", {"noeigentest", std::nullopt});
         },
         "# hf | opt=(calcfc,noeigentest,ts)"},
        {"# hf geom=check",
         [](GJFEditor& e) {
             e.ensure_keyword_option("geom", {"checkpoint", std::nullopt});
         },
         "# hf | geom=checkpoint"},
        {"# hf opt=(maxcycles=5,tight) freq", [](GJFEditor& e) { e.set_keyword_variable("opt", "MaxCycles", "7"); },
         "# hf | opt=(maxcycles=7,tight) | freq"},
        {"# hf Opt=(MaxCycle=5,tight)", [](GJFEditor& e) { e.set_keyword_variable("Opt", "maxcycles", "7"); },
         "# hf | opt=(maxcycle=7,tight)"},
        {"# hf freq", [](GJFEditor& e) { e.set_keyword_variable("opt", "maxcycles", "7"); },
         "# hf | freq | opt=(maxcycles=7)"},
        {"# hf opt freq=raman optimize", [](GJFEditor& e) { e.remove_keyword_by_name("optimise"); },
         "# hf | opt | freq=raman | optimize"},
        {"# hf opt freq=raman optimize", [](GJFEditor& e) { e.remove_keyword_by_name("OPTIMIZE"); }, "# hf | freq=raman"},
        {"# hf Opt=(Tight, CalcFC) SCF(XQC)", [](GJFEditor& e) { e.add_keyword("freq"); },
         "# hf | Opt=(Tight, CalcFC) | SCF(XQC) | freq"},
    });
}

TEST(RouteEditing, GivesOptionsToAnOniomExpression) {
    const auto ensure = [](GJFEditor& e) { e.ensure_keyword_option("oniom", {"embedcharge", std::nullopt}); };
    expect_routes({
        {"#p oniom(b3lyp/6-31g(d):uff) opt", ensure, "#p oniom(b3lyp/6-31g(d):uff)=embedcharge | opt"},
        {"# ONIOM=(hf:uff)=embedcharge", ensure, "# oniom(hf:uff)=embedcharge"},
        {"# oniom(hf:uff,onlyinputfiles)", ensure, "# oniom(hf:uff)=(embedcharge,onlyinputfiles)"},
        {"# oniom(hf:uff)=a opt",
         [](GJFEditor& e) {
             e.upsert_keyword_with_options("oniom", {{"b", "1"}});
         },
         "# oniom(hf:uff)=(b=1) | opt"},
        {"# oniom(hf:uff) opt", [](GJFEditor& e) { e.set_keyword_variable("oniom", "scale", "7"); },
         "# oniom(hf:uff)=(scale=7) | opt"},
        {"# oniom(hf:uff, layers=3)", ensure, "# oniom(hf:uff)=(embedcharge,layers=3)"},
        {"# oniom(hf:uff)=(layers=2, Layers=3)", ensure, "# oniom(hf:uff)=(embedcharge,layers=2,layers=3)"},
        {"# oniom(hf:uff,layers=2)=layers=2", ensure, "# oniom(hf:uff)=(embedcharge,layers=2,layers=2)"},
        {"# oniom(hf:uff)=(layers=2,layers=3)", [](GJFEditor& e) { e.set_keyword_variable("oniom", "layers", "4"); },
         "# oniom(hf:uff)=(layers=4)"},
        {"# oniom(hf:uff)=(layers=2,layers=3)",
         [](GJFEditor& e) {
             e.upsert_keyword_with_options("oniom", {{"b", "1"}});
         },
         "# oniom(hf:uff)=(b=1)"},
        {"# oniom(hf:uff)=embedcharge opt", [](GJFEditor& e) { e.remove_keyword_by_name("oniom"); }, "# | opt"},
    });
}

TEST(RouteEditing, KeepsWhatHasNoPlaceInTheInterpretation) {
    const auto add = [](GJFEditor& e) { e.add_keyword("freq"); };
    expect_routes({
        {"#p hf/sto-3g xxx=freq opt", add, "#p hf/sto-3g | opt | freq | xxx=freq"},
        {"# hf/sto-3g sfc=(xqc, tight) optt=tight", add, "# hf/sto-3g | freq | sfc=(xqc, tight) | optt=tight"},
        {"# hf/sto-3g xxx=freq scf=(xqc, tight", add, "# hf/sto-3g | freq | xxx=freq | scf=(xqc, tight"},
        {"# hf/sto-3g xxx=freq scf=(xqc, tight", [](GJFEditor& e) { e.update_route_from_parsed_keywords(); },
         "# hf/sto-3g | xxx=freq | scf=(xqc, tight"},
        {"# hf/sto-3g basis=3-21g scf=xqc oniom=x", add, "# oniom=x | scf=xqc | freq"},
        {"# hf/sto-3g xxx=freq",
         [](GJFEditor& e) {
             e.set_method("mp2");
             e.set_output_mode("p");
         },
         "#p mp2/sto-3g | xxx=freq"},
    });
}

TEST(RouteEditing, LeavesARouteAloneThatWasNotInterpreted) {
    GJFEditor editor(make_job(1, "#p hf opt"));
    editor.set_route_section({"#p", "hf", "opt"});
    editor.remove_keyword_by_name("opt");
    editor.update_route_from_parsed_keywords();
    EXPECT_EQ(route_of(editor), "#p | hf | opt");
    EXPECT_FALSE(editor.has_parsed_keywords());
}

TEST(RouteEditing, RefusesWhatCannotBeAndChangesNothing) {
    const std::string slot = "Cannot replace the basis slot of ONIOM, dual-layer, or density-basis model chemistry";
    const std::string no_method = "Cannot replace a model-chemistry basis without a primary method";
    const std::string no_keyword = "Route keyword cannot be empty";
    const std::vector<Case> cases = {
        {"# hf/sto-3g", [](GJFEditor& e) { e.set_model_chemistry_basis(" \t"); },
         "Route model-chemistry basis cannot be empty"},
        {"# oniom(hf:uff)", [](GJFEditor& e) { e.set_model_chemistry_basis(""); },
         "Route model-chemistry basis cannot be empty"},
        {"# oniom(hf/sto-3g:uff)", [](GJFEditor& e) { e.set_model_chemistry_basis("cc-pvdz"); }, slot},
        {"# hf/sto-3g//hf/3-21g", [](GJFEditor& e) { e.set_model_chemistry_basis("cc-pvdz"); }, slot},
        {"# pbepbe/sto-3g/auto", [](GJFEditor& e) { e.set_model_chemistry_basis("cc-pvdz"); }, slot},
        {"# opt", [](GJFEditor& e) { e.set_model_chemistry_basis("cc-pvdz"); }, no_method},
        {"# hf/sto-3g", [](GJFEditor& e) { e.set_model_chemistry_method(""); },
         "Route model-chemistry method cannot be empty"},
        {"# hf/sto-3g",
         [](GJFEditor& e) {
             e.set_model_chemistry_method_with_options(" ", {{"full", std::nullopt}});
         },
         "Route model-chemistry method cannot be empty"},
        {"# hf opt", [](GJFEditor& e) { e.add_keyword(""); }, no_keyword},
        {"# hf opt", [](GJFEditor& e) { e.add_keyword_with_options(" ", {}); }, no_keyword},
        {"# hf opt", [](GJFEditor& e) { e.add_keyword_with_variables("\n", {}); }, no_keyword},
        {"# hf opt", [](GJFEditor& e) { e.upsert_keyword(" "); }, no_keyword},
        {"# hf opt",
         [](GJFEditor& e) {
             e.upsert_keyword_with_options("", {{"a", "b"}});
         },
         no_keyword},
        {"# hf opt",
         [](GJFEditor& e) {
             e.ensure_keyword_option("", {"a", std::nullopt});
         },
         no_keyword},
        {"# hf opt", [](GJFEditor& e) { e.set_keyword_variable(" ", "a", "b"); }, no_keyword},
    };
    for (const Case& c : cases) {
        for (const bool interpreted : {true, false}) {
            GJFEditor editor(make_job(1, c.before));
            if (!interpreted) {
                editor.set_route_section(editor.get_data().control.route_keywords);
            }
            const std::string before = editor.to_gjf_string();
            expect_refused(c.after, [&] { c.action(editor); });
            EXPECT_EQ(editor.to_gjf_string(), before);
            EXPECT_EQ(editor.has_parsed_keywords(), interpreted);
        }
    }
}

TEST(RouteEditing, KeepsTheCheckpointThatBondsName) {
    const std::string text = "#p hf/3-21g geom=(check,connectivity)\n\nt\n\n0 1\n\n1 2 1.0\n2 3 1.0\n3\n\n";
    const std::function<void(GJFEditor&)> refused[] = {
        [](GJFEditor& e) {
            e.set_route_section({"#p", "hf/3-21g"});
        },
        [](GJFEditor& e) { e.remove_keyword_by_name("geom"); },
        [](GJFEditor& e) {
            e.upsert_keyword_with_options("geom", {{"connectivity", {}}});
        },
        [](GJFEditor& e) { e.remove_route_keyword("geom=(check,connectivity)"); },
        [](GJFEditor& e) {
            const ParsedKeywords before = e.get_parsed_keywords();
            e.set_parsed_keywords(ParsedKeywords());
            try {
                e.update_route_from_parsed_keywords();
            } catch (const GJFParseException&) {
                e.set_parsed_keywords(before);
                throw;
            }
        },
    };
    for (const auto& edit : refused) {
        GJFEditor editor(GJFParser::parse_string(text));
        expect_refused("The bonds name atoms of the checkpoint, which the changed route would not read",
                       [&] { edit(editor); });
        EXPECT_EQ(editor.get_data().control.route_keywords, GJFParser::parse_string(text).control.route_keywords);
        EXPECT_TRUE(editor.has_keyword("geom"));
        EXPECT_NO_THROW(editor.validate_connectivity_indices());
    }
    GJFEditor editor(GJFParser::parse_string(text));
    EXPECT_NO_THROW(editor.set_method("mp2"));
    editor.clear_connectivity();
    EXPECT_NO_THROW(editor.remove_keyword_by_name("geom"));
}

}  // namespace
}  // namespace quor::input::gaussian

// Edits of units, elements and single options, and how given options are written: texts, and what is refused.
#include "document_edits.hpp"

namespace quor::input::gaussian::test {
namespace {

std::string helium(const std::string& route) { return route + "\n\nt\n\n0 1\nHe 0.0 0.0 1.0\n\n"; }

std::string with_atoms(const std::string& atoms) { return "# hf/sto-3g\n\nt\n\n0 1\n" + atoms + "\n"; }

Edit option(const std::string& keyword, const std::string& name) {
    return [=](GJFEditor& e) { e.ensure_keyword_option(keyword, {name, std::nullopt}); };
}

TEST(Operations, KeepOrderAndLetterCaseOfOptions) {
    const std::vector<RouteOption> given = {{"TS", std::nullopt}, {"NoEigen", std::nullopt}, {"MaxCycles", "9"}};
    check_edits({
        {"a new keyword", helium("# hf"), [=](GJFEditor& e) { e.add_keyword_with_options("opt", given); },
         helium("# hf opt=(TS,NoEigen,MaxCycles=9)")},
        {"one by one", helium("# hf"),
         [](GJFEditor& e) {
             option("scf", "XQC")(e);
             option("scf", "Tight")(e);
             option("scf", "Conver")(e);
         },
         helium("# hf scf=(XQC,Tight,Conver)")},
        {"of one name to two keywords", helium("# hf"),
         [](GJFEditor& e) {
             e.add_keyword_with_options("opt", {{"MaxCycles", "9"}, {"Tight", std::nullopt}});
             e.add_keyword_with_options("scf", {{"tight", std::nullopt}, {"maxcycles", "5"}});
         },
         helium("# hf opt=(MaxCycles=9,Tight) scf=(tight,maxcycles=5)")},
        {"to a keyword in another spelling", helium("# hf Optimization=CalcFC"),
         [](GJFEditor& e) {
             option("scf", "tight")(e);
             option("OPT", "Tight")(e);
             option("opt", "NoEigen")(e);
         },
         helium("# hf Optimization=(CalcFC,Tight,NoEigen) scf=tight")},
        {"beside others", helium("# hf Opt=(Tight,CalcFC)"),
         [](GJFEditor& e) {
             option("opt", "TS")(e);
             option("opt", "NoEigen")(e);
         },
         helium("# hf Opt=(Tight,CalcFC,TS,NoEigen)")},
        {"one that is there", helium("# hf Opt=(Tight,CalcFC)"), option("opt", "CALCFC"), helium("# hf Opt=(Tight,CalcFC)")},
    });
}

TEST(Operations, TakeOptionsAway) {
    const auto without = [](const std::string& keyword, const std::string& name, std::optional<std::string> value = {}) {
        return [=](GJFEditor& e) { e.remove_keyword_option(keyword, {name, value}); };
    };
    check_edits({
        {"by another spelling", helium("# hf Opt=(MaxCycles=50,TS)"), without("opt", "maxcyc"), helium("# hf Opt=(TS)")},
        {"the last one", helium("# hf opt=ts freq"), without("opt", "ts"), helium("# hf opt freq")},
        {"by its value", helium("# hf scf=(maxcyc=50,xqc)"), without("scf", "maxcycle", "50"), helium("# hf scf=(xqc)")},
        {"another value", helium("# hf scf=(maxcyc=50,xqc)"), without("scf", "maxcycle", "5"),
         helium("# hf scf=(maxcyc=50,xqc)")},
        {"none such", helium("# hf opt=ts"), without("opt", "calcfc"), helium("# hf opt=ts")},
        {"no such keyword", helium("# hf opt=ts"), without("freq", "ts"), helium("# hf opt=ts")},
    });
    GJFDocument document(helium("# hf opt=(ts,tight) scf=tight"));
    EXPECT_TRUE(document.job(0).remove_keyword_option("opt", {"tight", std::nullopt}));
    EXPECT_FALSE(document.job(0).remove_keyword_option("opt", {"tight", std::nullopt}));
    EXPECT_FALSE(document.job(0).remove_keyword_option("freq", {"tight", std::nullopt}));
    EXPECT_THROW(document.job(0).remove_keyword_option(" ", {"tight", std::nullopt}), GJFParseException);
}

TEST(Operations, WriteLengthsInAnotherUnit) {
    const auto unit = [](bool in_bohr) { return [=](GJFEditor& e) { e.set_length_unit(in_bohr); }; };
    check_edits({
        {"bohr", helium("# hf"), unit(true), replaced(helium("# hf units=au"), "0.0 1.0\n", "0.0 1.889726\n")},
        {"in the place of ang", helium("# hf units=ang"), unit(true),
         replaced(helium("# hf units=au"), "0.0 1.0\n", "0.0 1.889726\n")},
        {"angstrom", helium("# hf units=bohr"), unit(false), replaced(helium("# hf"), "0.0 1.0\n", "0.0 0.529177\n")},
        {"angles stay", helium("# hf units=(bohr,deg)"), unit(false),
         replaced(helium("# hf units=(deg)"), "0.0 1.0\n", "0.0 0.529177\n")},
        {"bohr already", helium("# hf Units=(AU)"), unit(true), helium("# hf Units=(AU)")},
        {"angstrom already", helium("# hf"), unit(false), helium("# hf")},
    });
    const std::string fixed = "The unit of lengths cannot be changed: ";
    const struct {
        std::string text;
        std::string reason;
    } refused[] = {
        {with_atoms("O\nH 1 0.96\n"), "rows and variables hold angles too"},
        {with_atoms("He 0 0 r\n\nr=1.0\n"), "rows and variables hold angles too"},
        {"%chk=a\n# hf geom=check guess=read\n\nt\n\n0 1\n\n", "not all coordinates are numbers"},
        {"# hf charge\n\nt\n\n0 1\nHe 0 0 0\n\n0 0 5 1\n\n", "a section may hold lengths too"},
        {"# hf opt=modredundant\n\nt\n\n0 1\nH 0 0 0\nH 0 0 0.7\n\nB 1 2 0.8 F\n\n", "a section may hold lengths too"},
        {"# hf opt=qst2\n\na\n\n0 1\nH 0 0 0\nH 0 0 1\n\nb\n\n0 1\nH 0 0 0\nH 0 0 2\n\n", "a section may hold lengths too"},
        {with_atoms("He 0 0 0\n\nleft over\n"), "a section may hold lengths too"},
    };
    for (const auto& row : refused) {
        EXPECT_EQ(refusal(row.text, unit(true)), fixed + row.reason) << row.text;
    }
}

TEST(Operations, GiveAtomsAnotherElement) {
    const auto element = [](std::size_t atom, const std::string& symbol) {
        return [=](GJFEditor& e) { e.set_element(atom, symbol); };
    };
    check_edits({
        {"an atom", with_atoms("He 0 0 0\n"), element(0, "Ne"), with_atoms("Ne 0 0 0\n")},
        {"a fragment", with_atoms("He(Fragment=1) 0 0 0\n"), element(0, "Ne"), with_atoms("Ne(Fragment=1) 0 0 0\n")},
    });
    const struct {
        const char* atoms;
        std::size_t atom;
        const char* symbol;
        const char* reason;
    } refused[] = {
        {"He 0 0 0\n", 1, "Ne", "Invalid atom index: 1"},
        {"He 0 0 0\n", 0, "Qq", "'Qq' is no element"},
        {"He 0 0 0\n", 0, "", "'' is no element"},
        {"He 0 0 0\n", 0, "10", "'10' is no element"},
        {"C-CT 0 0 0\n", 0, "Si", "The label of atom 1 says more of its element than the symbol: 'C'"},
        {"H(Iso=2) 0 0 0\n", 0, "Li", "The label of atom 1 says more of its element than the symbol: 'H'"},
        {"H(ZNuc=1.1) 0 0 0\n", 0, "Li", "The label of atom 1 says more of its element than the symbol: 'H'"},
    };
    for (const auto& row : refused) {
        EXPECT_EQ(refusal(with_atoms(row.atoms), element(row.atom, row.symbol)), row.reason) << row.atoms;
    }
}

TEST(Operations, LeaveLongRoutesOnTheirLine) {
    const std::string words = " opt=(ts,calcfc,noeigentest,maxcycles=200) scf=(xqc,tight)";
    check_edits({
        {"long before", helium("# b3lyp/6-31g(d)" + words + " freq=noraman pop=full"), option("opt", "tight"),
         helium("# b3lyp/6-31g(d)" + replaced(words, "200", "200,tight") + " freq=noraman pop=full")},
        {"short before", helium("# b3lyp/6-31g(d)" + words), option("freq", "noraman"),
         helium("# b3lyp/6-31g(d)" + words + "\n freq=noraman")},
    });
}

TEST(Operations, WriteAnotherRouteInItsOrder) {
    const auto words = [](std::vector<std::string> given) {
        return [given = std::move(given)](GJFEditor& e) { e.set_route_section(given); };
    };
    check_edits({
        {"another model", helium("#p b3lyp/6-31g opt ! a\n freq"), words({"#p", "hf/sto-3g", "opt", "freq"}),
         helium("#p hf/sto-3g opt freq ! a")},
        {"a word between", helium("# hf opt\n freq"), words({"#", "hf", "opt", "pop=full", "freq"}),
         helium("# hf opt pop=full freq")},
        {"a word behind", helium("# hf opt\n freq"), words({"#", "hf", "opt", "freq", "pop=full"}),
         helium("# hf opt\n freq pop=full")},
    });
    EXPECT_EQ(refusal(helium("# hf"),
                      [](GJFEditor& e) {
                          e.upsert_extra_input_section(ExtraInputSectionKind::CoordinateModifications, "B 1 2 F", false);
                      }),
              "The changed text would be read otherwise than meant: the section 'Modifications to coordinates', which would "
              "be read as the section 'Unknown': nothing in the route asks for it, as opt=modredundant does");
}

}  // namespace
}  // namespace quor::input::gaussian::test

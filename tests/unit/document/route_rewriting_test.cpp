// Routes whose words are matched, refused and read back, and the rule by which sections are matched.
#include <gjf/core/document/job_rewriting.hpp>
#include <gjf/core/document/section_rewriting.hpp>

#include <algorithm>
#include <random>

#include "document_edits.hpp"

namespace quor::input::gaussian::test {
namespace {

std::string with_route(const std::string& route) { return route + "\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n"; }

TEST(RouteRewriting, KeepsTheWordsThatStillHold) {
    const auto words = [](std::vector<std::string> given) {
        return [given = std::move(given)](GJFEditor& e) { e.set_route_section(given); };
    };
    const std::vector<EditCase> cases = {
        {"one of equal keywords less", with_route("# hf iop(3/5=1) opt IOp(3/5=1) iop(3/6=2)"), giving([](GJFData& data) {
             GJFEditor editor(data);
             editor.remove_keyword_by_name("opt");
             data = editor.get_data();
         }),
         with_route("# hf iop(3/5=1) IOp(3/5=1) iop(3/6=2)")},
        {"all keywords of a name less", with_route("# hf\n  iop(3/5=1)  iop(3/6=2) pop=full iop(3/7=1)"),
         [](GJFEditor& e) { e.remove_keyword_by_name("iop"); }, with_route("# hf\n  pop=full")},
        {"keywords on lines of their own less", with_route("# hf opt\n iop(3/5=1)\n iop(3/6=2)\n freq"),
         [](GJFEditor& e) { e.remove_keyword_by_name("iop"); }, with_route("# hf opt\n freq")},
        {"the first of equal words less", with_route("# hf opt freq opt"), words({"#", "hf", "freq", "opt"}),
         with_route("# hf freq opt")},
        {"equal words more", with_route("# hf opt freq"), words({"#", "hf", "freq", "opt", "opt"}),
         with_route("# hf freq opt opt")},
        {"no word left of a line", with_route("# hf\n opt\n freq"), words({"#", "hf", "freq"}), with_route("# hf\n freq")},
    };
    check_edits(cases);
}

TEST(RouteRewriting, ChangesTheModelChemistryWhereverItStands) {
    const auto basis = [](GJFEditor& e) { e.set_model_chemistry_basis("cc-pvdz"); };
    const auto method = [](GJFEditor& e) { e.set_model_chemistry_method("mp2"); };
    const std::vector<EditCase> cases = {
        {"basis set behind a method", with_route("# opt HF freq 6-31G(d) pop=full"), basis,
         with_route("# opt HF freq cc-pvdz pop=full")},
        {"basis set before a method", with_route("# opt 6-31G(d) freq HF pop=full"), basis,
         with_route("# opt cc-pvdz freq HF pop=full")},
        {"method behind a basis set", with_route("# opt 6-31G(d) freq HF pop=full"), method,
         with_route("# opt 6-31G(d) freq mp2 pop=full")},
        {"basis set named twice", with_route("# HF/3-21G opt basis=6-31G basis=6-31G"), method,
         with_route("# mp2 opt basis=6-31G basis=6-31G")},
        {"basis set named by turns", with_route("# HF opt basis=6-31G basis=3-21G basis=6-31G freq"), basis,
         with_route("# HF opt basis=cc-pvdz freq")},
        {"method with options", with_route("# opt MP2(Full,MaxDisk=9)/6-31G freq"), basis,
         with_route("# opt MP2(Full,MaxDisk=9)/cc-pvdz freq")},
        {"unknown words stay", with_route("# zz1 HF/6-31G zz2 basis=zz3 zz4"), basis,
         with_route("# zz1 HF/cc-pvdz zz2 basis=zz3 zz4")},
    };
    check_edits(cases);
}

TEST(RouteRewriting, ChangesKeywordsThatStandInSeveralStretches) {
    const auto tight = [](GJFEditor& e) { e.ensure_keyword_option("opt", {"tight", std::nullopt}); };
    const auto without_opt = [](GJFEditor& e) { e.remove_keyword_by_name("opt"); };
    const std::vector<EditCase> cases = {
        {"option for a list over lines", with_route("#p hf/sto-3g opt=(ts,\n calcfc,\n noeigentest) freq"), tight,
         with_route("#p hf/sto-3g opt=(ts,\n calcfc,\n noeigentest,tight) freq")},
        {"option of a list over lines less", with_route("#p hf/sto-3g opt=(ts,\n calcfc,\n noeigentest) freq"),
         giving([](GJFData& data) {
             GJFEditor editor(data);
             editor.upsert_keyword_with_options("opt", {{"ts", std::nullopt}, {"noeigentest", std::nullopt}});
             data = editor.get_data();
         }),
         with_route("#p hf/sto-3g opt=(ts,\n noeigentest) freq")},
        {"the last options of a list over lines less", with_route("#p hf/sto-3g opt=(ts,\n calcfc,\n noeigentest) freq"),
         giving([](GJFData& data) {
             GJFEditor editor(data);
             editor.upsert_keyword_with_options("opt", {{"ts", std::nullopt}, {"tight", std::nullopt}});
             data = editor.get_data();
         }),
         with_route("#p hf/sto-3g opt=(ts,tight\n ) freq")},
        {"none of a list over lines stays", with_route("#p hf/sto-3g opt=(ts,\n calcfc,\n noeigentest) freq"),
         giving([](GJFData& data) {
             GJFEditor editor(data);
             editor.upsert_keyword_with_options("opt", {{"tight", std::nullopt}});
             data = editor.get_data();
         }),
         with_route("#p hf/sto-3g opt=(tight)\n freq")},
        {"value within a list over lines", with_route("#p hf/sto-3g opt=(ts,\n MaxCycles = 5,\n calcfc) freq"),
         [](GJFEditor& e) { e.set_keyword_variable("opt", "maxcycles", "7"); },
         with_route("#p hf/sto-3g opt=(ts,\n MaxCycles = 7,\n calcfc) freq")},
        {"comments between stay", with_route("# hf opt=(ts, ! where to\n ! and how\n calcfc, ! costs\n noeigentest)\n freq"),
         tight, with_route("# hf opt=(ts, ! where to\n ! and how\n calcfc, ! costs\n noeigentest,tight)\n freq")},
        {"comments stay where options go",
         with_route("# hf opt=(ts, ! where to\n ! and how\n calcfc, ! costs\n tight) freq"),
         [](GJFEditor& e) { e.remove_keyword_by_name("opt"); }, with_route("# hf ! where to\n ! and how\n ! costs\n freq")},
        {"blank before the list", with_route("# hf opt (MaxCycle=100) freq"), tight,
         with_route("# hf opt (MaxCycle=100,tight) freq")},
        {"blanks in the list", with_route("# hf scf(xqc  conver=8) freq"),
         [](GJFEditor& e) {
             e.ensure_keyword_option("scf", {"tight", std::nullopt});
         },
         with_route("# hf scf(xqc  conver=8,tight) freq")},
        {"blanks around the sign", with_route("# hf pop = full freq"),
         [](GJFEditor& e) {
             e.ensure_keyword_option("pop", {"nbo", std::nullopt});
         },
         with_route("# hf pop=(full,nbo) freq")},
        {"a list over lines less", with_route("#p hf/sto-3g opt=(ts,\n calcfc,\n noeigentest) freq"), without_opt,
         with_route("#p hf/sto-3g\n freq")},
        {"nothing changes but a list over lines", with_route("#p hf/sto-3g opt=(ts,\n calcfc,\n noeigentest) freq"),
         [](GJFEditor& e) { e.remove_keyword_by_name("freq"); },
         with_route("#p hf/sto-3g opt=(ts,\n calcfc,\n noeigentest)")},
        {"blanks around the equals sign", with_route("# hf opt = loose freq"), without_opt, with_route("# hf freq")},
        {"method on the line before its basis set", with_route("# hf\n /6-31g(d) opt"),
         [](GJFEditor& e) { e.set_model_chemistry_basis("cc-pvdz"); }, with_route("# hf/cc-pvdz\n opt")},
        {"a sign right behind the head", with_route("#p/ b3lyp/6-31g(d) opt"),
         [](GJFEditor& e) { e.set_model_chemistry_basis("def2tzvp"); }, with_route("#p/ b3lyp/def2tzvp opt")},
        {"an option beside a list without a keyword", with_route("# hf/sto-3g =(nboread,full)"), tight,
         with_route("# hf/sto-3g =(nboread,full) opt=tight")},
        {"a list without a keyword", with_route("# hf/sto-3g =(nboread,full)"),
         [](GJFEditor& e) { e.set_model_chemistry_basis("cc-pvdz"); }, with_route("# hf/cc-pvdz =(nboread,full)")},
        {"print level and model chemistry", with_route("# opt"),
         [](GJFEditor& e) {
             e.set_output_mode("p");
             e.set_method("hf");
         },
         with_route("#p hf opt")},
    };
    check_edits(cases);
}

TEST(RouteRewriting, RefusesWordsWithLineBreaks) {
    const std::vector<std::pair<const char*, Edit>> cases = {
        {"line feeds behind a word", [](GJFEditor& e) { e.add_route_keyword("opt\n\n"); }},
        {"line feed within a word", [](GJFEditor& e) { e.add_route_keyword("opt\nfreq"); }},
        {"line feed before a word", [](GJFEditor& e) { e.add_route_keyword("\nopt"); }},
        {"carriage return", [](GJFEditor& e) { e.add_route_keyword("opt\r"); }},
        {"carriage return and line feed", [](GJFEditor& e) { e.add_route_keyword("opt\r\n"); }},
        {"head",
         [](GJFEditor& e) {
             e.set_route_section({"#p\n", "hf", "opt"});
         }},
        {"option",
         [](GJFEditor& e) {
             e.upsert_keyword_with_options("opt", {{"max\ncycles", "5"}});
         }},
        {"value", [](GJFEditor& e) { e.set_keyword_variable("opt", "maxcycles", "5\n"); }},
        {"keyword as it is written", giving([](GJFData& data) {
             GJFEditor editor(data);
             editor.add_keyword("freq");
             data = editor.get_data();
             data.control.parsed_keywords->keywords.back().raw = "freq\n";
             data.control.route_keywords.back() = "freq\n";
         })},
    };
    for (const auto& [name, edit] : cases) {
        EXPECT_EQ(refusal(with_route("# hf opt"), edit), "A route word cannot hold a line break") << name;
    }
}

TEST(RouteRewriting, WritesTrimmedKeywordsOnly) {
    EXPECT_EQ(edited(with_route("# hf opt"), [](GJFEditor& e) { e.add_keyword("freq\n"); }), with_route("# hf opt freq"));
}

// Tells the part in which a job with one route differs from the same job with another.
std::string difference_of_routes(const std::string& read, const std::string& wanted) {
    const GJFDocument document(with_route(wanted));
    const GJFData& job = document.job(0).get_data();
    return difference_between(GJFDocument(with_route(read)).job(0).get_data(), job, &job.extra_inputs);
}

TEST(ReadingBack, TellsMethodOptionsApart) {
    const std::pair<const char*, const char*> cases[] = {
        {"# mp2(full)/sto-3g", "# mp2/sto-3g"},
        {"# mp2(full)/sto-3g", "# mp2(fc)/sto-3g"},
        {"# mp2=full", "# mp2=(full,maxdisk=5)"},
        {"# mp2(maxdisk=5)", "# mp2(maxdisk=6)"},
        {"# mp2-full", "# mp2-fc"},
        {"# ccsd(t)(full)/sto-3g", "# ccsd(t)(fc)/sto-3g"},
        {"# hf/sto-3g//mp2(full)/sto-3g", "# hf/sto-3g//mp2/sto-3g"},
        {"# mp2(full)/sto-3g//mp2(fc)/sto-3g", "# mp2(fc)/sto-3g//mp2(full)/sto-3g"},
    };
    for (const auto& [read, wanted] : cases) {
        EXPECT_EQ(difference_of_routes(read, wanted), "the route") << read << " and " << wanted;
    }
}

TEST(ReadingBack, TakesOtherSpellingsOfMethodOptions) {
    const std::pair<const char*, const char*> cases[] = {
        {"# mp2=full", "# mp2(full)"},
        {"# mp2=full", "# mp2=(full)"},
        {"# mp2-full", "# MP2(Full)"},
        {"# mp2(full,maxdisk=5)", "# mp2=(MaxDisk=5, Full)"},
        {"# MP2( Full )/sto-3g", "# mp2=full/sto-3g"},
        {"# ccsd(t)(full)/sto-3g", "# CCSD(T)=Full/sto-3g"},
        {"# hf/sto-3g//mp2=full/sto-3g", "# hf/sto-3g//MP2(FULL)/sto-3g"},
    };
    for (const auto& [read, wanted] : cases) {
        EXPECT_EQ(difference_of_routes(read, wanted), "") << read << " and " << wanted;
    }
}

using Sections = std::vector<ExtraInputSection>;

// Tells whether a match of `j` with `i` crosses none of those that are there.
bool crosses_none(const std::vector<std::size_t>& match, std::size_t j, std::size_t i) {
    for (std::size_t k = 0; k < match.size(); ++k) {
        if (match[k] != no_section && ((k < j && match[k] >= i) || (k > j && match[k] <= i))) {
            return false;
        }
    }
    return true;
}

bool same_section(const ExtraInputSection& a, const ExtraInputSection& b) {
    const ConnectivitySection* x = a.connectivity();
    const ConnectivitySection* y = b.connectivity();
    if (x == nullptr || y == nullptr) {
        return x == y && a.text() == b.text();
    }
    return x->bonds.size() == y->bonds.size() &&
           std::equal(x->bonds.begin(), x->bonds.end(), y->bonds.begin(),
                      [](const Bond& p, const Bond& q) { return p == q && p.order == q.order; });
}

// The rule in its plainest form: every section is held against every other one.
std::vector<std::size_t> plain_match(const Sections& before, const Sections& after) {
    std::vector<std::size_t> match(after.size(), no_section);
    for (const bool equal : {true, false}) {
        for (std::size_t j = 0; j < after.size(); ++j) {
            for (std::size_t i = 0; i < before.size() && match[j] == no_section; ++i) {
                const bool alike = before[i].kind == after[j].kind && (!equal || same_section(before[i], after[j]));
                match[j] = alike && crosses_none(match, j, i) ? i : no_section;
            }
        }
    }
    return match;
}

ExtraInputSection section_of(unsigned choice) {
    ConnectivitySection bonds;
    switch (choice) {
        case 0:
            return ExtraInputSection::from_connectivity(bonds);
        case 1:
            bonds.bonds = {{0, 1, 1.0}};
            return ExtraInputSection::from_connectivity(bonds);
        case 2:
            bonds.bonds = {{0, 1, 2.0}};
            return ExtraInputSection::from_connectivity(bonds);
        case 3:
            return {ExtraInputSectionKind::BasisSet, "a"};
        case 4:
            return {ExtraInputSectionKind::BasisSet, "b"};
        default:
            return {ExtraInputSectionKind::Unknown, std::string(1, static_cast<char>('a' + choice % 3))};
    }
}

TEST(SectionMatch, IsThatOfThePlainRule) {
    std::mt19937 random(7);
    const auto sections = [&random] {
        Sections all(random() % 9);
        std::generate(all.begin(), all.end(), [&random] { return section_of(static_cast<unsigned>(random() % 8)); });
        return all;
    };
    for (int round = 0; round < 5000; ++round) {
        const Sections before = sections();
        const Sections after = sections();
        ASSERT_EQ(match_sections(before, after), plain_match(before, after)) << "round " << round;
    }
}

TEST(SectionMatch, TakesEqualSectionsFirstAndNeverCrosses) {
    const auto texts = [](const std::string& letters) {
        Sections all;
        for (const char letter : letters) {
            all.emplace_back(ExtraInputSectionKind::Unknown, std::string(1, letter));
        }
        return all;
    };
    const std::size_t none = no_section;
    const struct {
        const char* before;
        const char* after;
        std::vector<std::size_t> match;
    } cases[] = {
        {"", "", {}},
        {"", "a", {none}},
        {"abc", "", {}},
        {"abc", "abc", {0, 1, 2}},
        {"abc", "axc", {0, 1, 2}},
        {"abc", "ac", {0, 2}},
        {"abc", "c", {2}},
        {"abc", "xc", {0, 2}},
        {"ab", "ba", {1, none}},
        {"aaa", "aa", {0, 1}},
        {"ab", "xab", {none, 0, 1}},
        {"ab", "abx", {0, 1, none}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(match_sections(texts(c.before), texts(c.after)), c.match) << c.before << " to " << c.after;
    }
}

}  // namespace
}  // namespace quor::input::gaussian::test

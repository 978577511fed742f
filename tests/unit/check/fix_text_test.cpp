// The fixes of every code that offers one: the mended text, that a second run changes nothing, and what is never applied.
#include <gjf/core/check/fix_text.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

using namespace quor::input::gaussian;

namespace {

const std::string behind_route = "\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n";

FixOptions with_unsafe(bool unsafe) {
    FixOptions options;
    options.unsafe = unsafe;
    return options;
}

struct Mended {
    const char* code;
    FixSafety safety;
    std::string before;
    std::string after;
};

const std::string water_atoms = "0 1\nO 0.0 0.0 0.0\nH 0.0 0.76 0.59\nH 0.0 -0.76 0.59\n";
const std::string hydroxyl = "0 1\nO 0.0 0.0 0.0\nH 0.0 0.76 0.59\n";

// A job with this route, a molecule, and what stands behind it.
std::string job_of(const std::string& route, const std::string& molecule = "0 1\nHe 0.0 0.0 0.0\n",
                   const std::string& rest = "") {
    return route + "\n\nt\n\n" + molecule + "\n" + (rest.empty() ? "" : rest + "\n");
}

// The same job with one route and another.
Mended route_fix(const char* code, FixSafety safety, const std::string& before, const std::string& after) {
    return {code, safety, job_of(before), job_of(after)};
}

const std::string two_layers =
    "0 1 0 1 0 1\nC 0.0 0.0 0.0 H\nH -0.39 1.02 0.0 H\nH -0.39 -0.51 -0.89 H\nH -0.39 -0.51 0.89 H\n"
    "C 1.53 0.0 0.0 L\nH 1.92 -1.02 0.0 L\nH 1.92 0.51 0.89 L\nH 1.92 0.51 -0.89 L\n";

std::string changed(std::string text, const std::string& from, const std::string& to) {
    return text.replace(text.find(from), from.size(), to);
}

const std::vector<Mended>& mended_texts() {
    constexpr auto safe = FixSafety::Safe;
    constexpr auto unsafe = FixSafety::Unsafe;
    static const std::vector<Mended> table = {
        {"GJF-T001", safe, "# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n", "# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n"},
        {"GJF-T001", safe, "# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0", "# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n"},
        {"GJF-T001", safe, "# hf/sto-3g\r\n\r\nt\r\n\r\n0 1\r\nHe 0.0 0.0 0.0",
         "# hf/sto-3g\r\n\r\nt\r\n\r\n0 1\r\nHe 0.0 0.0 0.0\r\n\r\n"},
        {"GJF-T004", safe, "# hf/sto-3g\r\n\nt\n\n0 1\nHe 0.0 0.0 0.0\r\n\n", "# hf/sto-3g" + behind_route},
        {"GJF-T005", safe, "# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n--Link1--\n# hf/sto-3g" + behind_route,
         "# hf/sto-3g" + behind_route + "--Link1--\n# hf/sto-3g" + behind_route},
        {"GJF-T008", safe, "\xEF\xBB\xBF# hf/sto-3g" + behind_route, "# hf/sto-3g" + behind_route},
        {"GJF-P001", safe, "# hf/sto-3g\r\rt\r\r0 1\rHe 0.0 0.0 0.0\r\r", "# hf/sto-3g" + behind_route},
        {"GJF-P001", unsafe, "# hf/sto-3g\n\n0 1\nHe 0.0 0.0 0.0\n\n", "# hf/sto-3g\n\ntitle\n\n0 1\nHe 0.0 0.0 0.0\n\n"},
        {"GJF-P001", unsafe, "# hf/sto-3g\n\nt\n0 1\nHe 0.0 0.0 0.0\n\n", "# hf/sto-3g" + behind_route},
        {"GJF-P001", unsafe, "# hf/gen\n\nt\n0 1\nHe 0.0 0.0 0.0\n\nHe 0\n6-31G\n****\n\n",
         "# hf/gen" + behind_route + "He 0\n6-31G\n****\n\n"},
        {"GJF-P001", unsafe, job_of("# hf/sto-3g", "0 1\n1\nhelium\nHe 0.0 0.0 0.0\n"), job_of("# hf/sto-3g")},
        {"GJF-T002", unsafe, "# hf/sto-3g\f opt" + behind_route, "# hf/sto-3g  opt" + behind_route},
        {"GJF-T003", safe,
         "#\xC2\xA0hf/sto\xE2\x80\x93"
         "3g" +
             behind_route,
         "# hf/sto-3g" + behind_route},
        {"GJF-T003", unsafe,
         job_of("# hf/sto-3g",
                "0 1\nHe 0.0 0.0 \xE2\x88\x92"
                "1.0\n"),
         job_of("# hf/sto-3g", "0 1\nHe 0.0 0.0 -1.0\n")},
        {"GJF-T006", unsafe, job_of("# hf/sto-3g", "0 1\nHe 0.0 0.O 1.l\n"), job_of("# hf/sto-3g", "0 1\nHe 0.0 0.0 1.1\n")},
        {"GJF-T006", unsafe, job_of("# hf/sto-3g", "0 1\nHe O.0 -o.5 0.1\n"),
         job_of("# hf/sto-3g", "0 1\nHe 0.0 -0.5 0.1\n")},
        {"GJF-T006", unsafe, job_of("# hf/sto-3g", "0 1\nHe 0,0 0,0 1,5\nHe 0,0 0,0 4,5\n"),
         job_of("# hf/sto-3g", "0 1\nHe 0.0 0.0 1.5\nHe 0.0 0.0 4.5\n")},
        route_fix("GJF-T007", unsafe, "# hf/sto-3g opt=(calcfc,tight", "# hf/sto-3g opt=(calcfc,tight)"),
        route_fix("GJF-T007", unsafe, "# hf/sto-3g opt=calcfc,tight)", "# hf/sto-3g opt=(calcfc,tight)"),
        route_fix("GJF-T007", unsafe, "# hf/sto-3g scrf=smd,solvent=water) opt", "# hf/sto-3g scrf=(smd,solvent=water) opt"),
        route_fix("GJF-T007", unsafe, "# hf/sto-3g irc=(calcfc,maxpoints=20", "# hf/sto-3g irc=(calcfc,maxpoints=20)"),
        {"GJF-T009", safe, "# hf/sto-3g\n\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n", "# hf/sto-3g" + behind_route},
        {"GJF-T010", unsafe, "# hf/sto-3g\n\nopt freq\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n",
         "# hf/sto-3g\nopt freq" + behind_route},
        {"GJF-T013", safe, "# hf/sto-3g\n\nt\n\n0 1\nHe\nHe 1 r\nr=3.0\n\n",
         "# hf/sto-3g\n\nt\n\n0 1\nHe\nHe 1 r\n\nr=3.0\n\n"},
        {"GJF-L001", safe, "%oldma=a\n" + job_of("# hf/sto-3g"), "%oldmatrix=a\n" + job_of("# hf/sto-3g")},
        {"GJF-L001", unsafe, "%chkk=a\n" + job_of("# hf/sto-3g"), "%chk=a\n" + job_of("# hf/sto-3g")},
        {"GJF-L002", safe, "%mem=4 GB\n" + job_of("# hf/sto-3g"), "%mem=4GB\n" + job_of("# hf/sto-3g")},
        {"GJF-L002", unsafe, "%mem=4G\n" + job_of("# hf/sto-3g"), "%mem=4GB\n" + job_of("# hf/sto-3g")},
        {"GJF-L002", unsafe, "%mem=1.5GB\n" + job_of("# hf/sto-3g"), "%mem=1536MB\n" + job_of("# hf/sto-3g")},
        route_fix("GJF-W005", safe, "# hf/def2-tzvp", "# hf/def2tzvp"),
        route_fix("GJF-W005", safe, "# M06-2X/sto-3g", "# m062x/sto-3g"),
        route_fix("GJF-W005", unsafe, "# b3lpy/sto-3g", "# b3lyp/sto-3g"),
        route_fix("GJF-W005", unsafe, "# hf/sto-3g opt calcfc", "# hf/sto-3g opt=calcfc"),
        route_fix("GJF-W005", unsafe, "# hf/sto-3g calcfc opt=tight freq", "# hf/sto-3g opt=(tight,calcfc) freq"),
        route_fix("GJF-W005", unsafe, "# hf/sto-3g xqc", "# hf/sto-3g scf=xqc"),
        route_fix("GJF-R001", unsafe, "# hf/sto-3g opt=(tight,calfc)", "# hf/sto-3g opt=(tight,calcfc)"),
        route_fix("GJF-R001", unsafe, "# hf/sto-3g scrf=(smd,water)", "# hf/sto-3g scrf=(smd,solvent=water)"),
        route_fix("GJF-R002", safe, "# hf/sto-3g opt freq opt", "# hf/sto-3g opt freq"),
        {"GJF-R002", safe, "# hf/sto-3g opt\nopt\nfreq" + behind_route, "# hf/sto-3g opt\nfreq" + behind_route},
        route_fix("GJF-R002", unsafe, "# hf/sto-3g opt=tight freq opt=calcfc", "# hf/sto-3g opt=(tight,calcfc) freq"),
        route_fix("GJF-R002", unsafe, "# hf/sto-3g opt=tight freq opt", "# hf/sto-3g opt=tight freq"),
        route_fix("GJF-R006", unsafe, "# pm6/6-31g opt", "# pm6 opt"),
        route_fix("GJF-R006", unsafe, "# pm6 6-31g opt", "# pm6 opt"),
        route_fix("GJF-R009", unsafe, "# hf/sto-3g td=(root=5)", "# hf/sto-3g td=(root=5,nstates=5)"),
        route_fix("GJF-R009", unsafe, "# hf/sto-3g irc", "# hf/sto-3g irc=calcfc"),
        route_fix("GJF-R009", unsafe, "# hf/sto-3g opt=ts", "# hf/sto-3g opt=(ts,calcfc)"),
        route_fix("GJF-R011", unsafe, "# pbe0/sto-3g", "# pbe1pbe/sto-3g"),
        route_fix("GJF-R011", safe, "# uhse06/sto-3g", "# uhseh1pbe/sto-3g"),
        route_fix("GJF-R011", unsafe, "# b3lyp-d3/sto-3g opt", "# b3lyp/sto-3g empiricaldispersion=gd3 opt"),
        route_fix("GJF-R011", unsafe, "# pbe0-d3bj/sto-3g opt", "# pbe1pbe/sto-3g empiricaldispersion=gd3bj opt"),
        route_fix("GJF-R012", safe, "# hf/sto-3g scrf=(smd,solvent=dcm)", "# hf/sto-3g scrf=(smd,solvent=dichloromethane)"),
        route_fix("GJF-R012", unsafe, "# hf/sto-3g scrf=(solvent=watr)", "# hf/sto-3g scrf=(solvent=water)"),
        route_fix("GJF-R021", safe, "# hf/sto-3g scf=(tight,maxcycle=9,tight)", "# hf/sto-3g scf=(tight,maxcycle=9)"),
        route_fix("GJF-R021", safe, "# hf/sto-3g opt=(tight,Tight)", "# hf/sto-3g opt=(tight)"),
        route_fix("GJF-R022", safe, "#PM6 opt", "# PM6 opt"),
        route_fix("GJF-R022", safe, "#TD(nstates=3) hf/sto-3g", "# TD(nstates=3) hf/sto-3g"),
        route_fix("GJF-R022", safe, "#pbepbe/sto-3g", "# pbepbe/sto-3g"),
        route_fix("GJF-R023", safe, "# hf/sto-3g scrf=smd,solvent=water", "# hf/sto-3g scrf=(smd,solvent=water)"),
        route_fix("GJF-R023", safe, "# hf/sto-3g opt=ts,calcfc freq", "# hf/sto-3g opt=(ts,calcfc) freq"),
        {"GJF-S002", unsafe, job_of("# hf/gen", "0 1\nKr 0.0 0.0 0.0\n", "Kr 0\nlanl2dz\n****\n\nKr 0\nlanl2dz\n"),
         job_of("# hf/genecp", "0 1\nKr 0.0 0.0 0.0\n", "Kr 0\nlanl2dz\n****\n\nKr 0\nlanl2dz\n")},
        {"GJF-T003", safe,
         job_of("# hf/gen\xC2\xA0pseudo=read", "0 1\nKr 0.0 0.0 0.0\n", "Kr 0\nlanl2dz\n****\n\nKr 0\nlanl2dz\n"),
         job_of("# hf/gen pseudo=read", "0 1\nKr 0.0 0.0 0.0\n", "Kr 0\nlanl2dz\n****\n\nKr 0\nlanl2dz\n")},
        {"GJF-M001", unsafe, job_of("# hf/sto-3g", "0 1\nH 0.0 0.0 0.0\nD 0.0 0.0 0.74\n"),
         job_of("# hf/sto-3g", "0 1\nH 0.0 0.0 0.0\nH(Iso=2) 0.0 0.0 0.74\n")},
        {"GJF-M006", unsafe, job_of("# hf/sto-3g", "0 1\nO 0.0 0.0 0.0\nH 0.0 1.43 1.11\nH 0.0 -1.43 1.11\n"),
         job_of("# hf/sto-3g units=au", "0 1\nO 0.0 0.0 0.0\nH 0.0 1.43 1.11\nH 0.0 -1.43 1.11\n")},
        {"GJF-M011", safe,
         job_of("# oniom(hf/sto-3g:pm6)", changed(changed(two_layers, "0.0 L", "0.0 L H 1"), "0.89 H", "0.89")),
         job_of("# oniom(hf/sto-3g:pm6)", changed(two_layers, "0.0 L", "0.0 L H 1"))},
        {"GJF-M013", unsafe, job_of("# oniom(hf/sto-3g:pm6)", two_layers),
         job_of("# oniom(hf/sto-3g:pm6)", changed(two_layers, "0.0 L", "0.0 L H 1"))},
        {"GJF-M015", unsafe, job_of("# hf/sto-3g", "0 1\nHe 2 0.0 0.0 0.0\n"), job_of("# hf/sto-3g")},
        {"GJF-S001", unsafe, job_of("# hf/sto-3g geom=connectivity", water_atoms), job_of("# hf/sto-3g", water_atoms)},
        {"GJF-S002", unsafe, job_of("# hf/sto-3g", water_atoms, "1 2 1.0 3 1.0\n2\n3\n"),
         job_of("# hf/sto-3g geom=connectivity", water_atoms, "1 2 1.0 3 1.0\n2\n3\n")},
        {"GJF-S002", unsafe, job_of("# hf/sto-3g opt", water_atoms, "B 1 2 F\n"),
         job_of("# hf/sto-3g opt=modredundant", water_atoms, "B 1 2 F\n")},
        {"GJF-S002", unsafe, job_of("# hf/sto-3g", "0 1\nHe 0.0 0.0 0.0\n", "He 0.0 0.0 3.0\n"),
         job_of("# hf/sto-3g", "0 1\nHe 0.0 0.0 0.0\nHe 0.0 0.0 3.0\n")},
        {"GJF-S002", unsafe, "# hf/sto-3g" + behind_route + "--link 1\n# hf/sto-3g" + behind_route,
         "# hf/sto-3g" + behind_route + "--Link1--\n# hf/sto-3g" + behind_route},
        {"GJF-S002", unsafe, "# hf/sto-3g" + behind_route + "# hf/sto-3g" + behind_route,
         "# hf/sto-3g" + behind_route + "--Link1--\n# hf/sto-3g" + behind_route},
        {"GJF-S005", unsafe, job_of("# hf/sto-3g geom=connectivity", water_atoms, "1 2 1.0 3 1.0\n2\n"),
         job_of("# hf/sto-3g geom=connectivity", water_atoms, "1 2 1.0 3 1.0\n2\n 3\n")},
        {"GJF-S009", safe, job_of("# hf/gen", water_atoms, "O H 0\ndef2-TZVP\n****\n"),
         job_of("# hf/gen", water_atoms, "O H 0\ndef2tzvp\n****\n")},
        {"GJF-S010", unsafe, job_of("# hf/gen", water_atoms, "O 0\n6-31G\nH 0\n6-31G\n****\n"),
         job_of("# hf/gen", water_atoms, "O 0\n6-31G\n****\nH 0\n6-31G\n****\n")},
        {"GJF-S010", unsafe, job_of("# hf/gen", water_atoms, "O H 0\n6-31G\n"),
         job_of("# hf/gen", water_atoms, "O H 0\n6-31G\n****\n")},
        {"GJF-S011", unsafe, job_of("# hf/gen", water_atoms, "O H Cl 0\n6-31G\n****\n"),
         job_of("# hf/gen", water_atoms, "O H -Cl 0\n6-31G\n****\n")},
        {"GJF-S016", safe, job_of("# hf/sto-3g pop=nboread", water_atoms, "$nbo bndidx\n"),
         job_of("# hf/sto-3g pop=nboread", water_atoms, "$nbo bndidx\n$END\n")},
        {"GJF-S017", unsafe, job_of("# hf/sto-3g scrf=(pcm,read)", water_atoms, "epsinff=1.8\n"),
         job_of("# hf/sto-3g scrf=(pcm,read)", water_atoms, "epsinf=1.8\n")},
    };
    return table;
}

struct Chosen {
    const char* code;
    std::string text;
    std::vector<std::string> titles;
};

// What looks like a known fault and may be another one: nothing is offered, since a third job would come out.
TEST(Fixes, OfferNothingWhereMoreIsWrong) {
    const std::string rows[] = {
        job_of("# uff geom=connectivity", water_atoms),
        job_of("# oniom(hf/sto-3g:uff) geom=connectivity", changed(two_layers, "0.0 L", "0.0 L H 1")),
        job_of("# hf/genecp", "0 1\nKr 0.0 0.0 0.0\n", "Kr 0\nlanl2dz\n"),
        job_of("# hf/sto-3g opt=(qst2,calcfc)", "0 1\nHe 2 0.0 0.0 0.0\n", "b\n\n0 1\nHe 2 0.0 0.0 0.0\n"),
        job_of("# hf/genecp", "0 1\nKr 0.0 0.0 0.0\n", "Kr 0\nlanl2dz\n\nKr 0\nlanl2dz\n****\n"),
        job_of("# oniom(hf/sto-3g:pm6)", "0 1\nHe 0.0 0.0 0.0 H\nHe 0.0 0.0 4.0\n"),
        job_of("# hf/gen", "0 1\nQ 0.0 0.0 0.0\nH 0.0 0.0 1.0\n", "O H 0\nsto-3g\n****\n"),
        job_of("# hf/sto-3g opt=(ts,calcfc scf=(tight,xqc"),
        job_of("# hf/sto-3g opt=(ts freq"),
        "# hf/sto-3g\n\na\n1 2\nb\n\n0 x\nHe 0 0 0\n\n",
        job_of("# hf/sto-3g irc=(maxpoints=20 freq"),
    };
    for (const std::string& text : rows) {
        EXPECT_EQ(fix_text(text, with_unsafe(true)).text, text);
        EXPECT_FALSE(check_text(text).empty()) << text;
    }
}

// What several texts may mend is shown and never applied.
const std::vector<Chosen>& texts_to_choose_for() {
    static const std::vector<Chosen> table = {
        {"GJF-L003",
         "%mem=400000000\n" + job_of("# hf/sto-3g"),
         {"write 400000000W", "write 400000000MB", "write 400000000GB"}},
        {"GJF-L005", "%nprocshared=4\n%cpu=0-7\n" + job_of("# hf/sto-3g"), {"remove %nprocshared", "remove %cpu"}},
        {"GJF-M002", job_of("# hf/sto-3g", hydroxyl), {"multiplicity 2", "charge -1", "charge 1"}},
        {"GJF-R003", job_of("# hf/sto-3g/mp2"), {"leave out mp2", "leave out hf"}},
        {"GJF-R004", job_of("# hf/sto-3g/6-31g/3-21g"), {"leave out 6-31g", "leave out sto-3g"}},
        {"GJF-R008", job_of("# hf/sto-3g opt=(calcall,calcfc)"), {"leave out calcall", "leave out calcfc"}},
        {"GJF-R009", job_of("# hf/sto-3g td=(root=5,nstates=4)"), {"write nstates=5"}},
        {"GJF-R010", job_of("# hf/sto-3g irc=calcfc opt"), {"leave out irc=calcfc", "leave out opt"}},
    };
    return table;
}

bool found(const std::vector<Finding>& findings, const std::string& code) {
    return std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) { return finding.code == code; });
}

TEST(Fixes, MendWhatEachCodeFinds) {
    for (const Mended& row : mended_texts()) {
        SCOPED_TRACE(std::string(row.code) + ": " + row.before);
        if (!found(check_text(row.before), row.code)) {
            ADD_FAILURE() << "not found";
            continue;
        }
        const FixedText fixed = fix_text(row.before, with_unsafe(row.safety == FixSafety::Unsafe));
        EXPECT_EQ(fixed.text, row.after);
        EXPECT_EQ(fix_text(fixed.text, with_unsafe(row.safety == FixSafety::Unsafe)).text, fixed.text);
        EXPECT_TRUE(std::any_of(fixed.applied.begin(), fixed.applied.end(),
                                [&](const FixReport& fix) { return fix.code == row.code && fix.safety == row.safety; }));
        EXPECT_TRUE(fixed.dropped.empty());
        if (row.safety == FixSafety::Unsafe) {
            EXPECT_FALSE(found(fixed.findings, row.code));
            EXPECT_NE(fix_text(row.before).text, row.after) << "applied without being asked for";
        }
    }
}

TEST(Fixes, MendAtLeastThirtyCodes) {
    std::set<std::string> codes;
    for (const Mended& row : mended_texts()) {
        codes.insert(row.code);
    }
    EXPECT_GE(codes.size(), 30U);
}

TEST(Fixes, LeaveChoicesToPeople) {
    for (const Chosen& row : texts_to_choose_for()) {
        const std::vector<Finding> findings = check_text(row.text);
        const auto finding =
            std::find_if(findings.begin(), findings.end(), [&](const Finding& f) { return f.code == row.code; });
        ASSERT_NE(finding, findings.end()) << row.text;
        std::vector<std::string> titles;
        for (const Fix& fix : finding->fixes) {
            EXPECT_EQ(fix.safety, FixSafety::Choice) << row.text;
            titles.push_back(fix.title);
            // Each of them would mend it.
            EXPECT_FALSE(row.code != std::string("GJF-L003") && found(check_text(with_edits(row.text, fix.edits)), row.code))
                << fix.title << row.text;
        }
        std::sort(titles.begin(), titles.end());
        std::vector<std::string> wanted = row.titles;
        std::sort(wanted.begin(), wanted.end());
        EXPECT_EQ(titles, wanted) << row.text;
        EXPECT_EQ(fix_text(row.text, with_unsafe(true)).text, row.text);
    }
}

TEST(Fixes, AreInOrderAndInsideTheText) {
    for (const Mended& row : mended_texts()) {
        for (const Finding& finding : check_text(row.before)) {
            for (const Fix& fix : finding.fixes) {
                EXPECT_FALSE(fix.title.empty());
                EXPECT_FALSE(fix.edits.empty()) << fix.title;
                std::size_t done = 0;
                for (const TextEdit& edit : fix.edits) {
                    EXPECT_LE(done, edit.begin) << row.before;
                    EXPECT_LE(edit.begin, edit.end);
                    EXPECT_LE(edit.end, row.before.size());
                    EXPECT_NE(row.before.substr(edit.begin, edit.end - edit.begin), edit.text);
                    done = edit.end;
                }
            }
        }
    }
}

TEST(Fixes, AreLeftOutWhereTheyAreNotWanted) {
    const std::string text = "\xEF\xBB\xBF# hf/sto-3g\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n";
    FixOptions options;
    options.applies = [](const Finding& finding) { return finding.code != "GJF-T008"; };
    EXPECT_EQ(fix_text(text, options).text, text + "\n");
    EXPECT_TRUE(found(fix_text(text, options).findings, "GJF-T008"));
    options.applies = nullptr;
    options.check.ignored_codes = {"gjf-t001"};
    EXPECT_EQ(fix_text(text, options).text, text.substr(3));
    EXPECT_EQ(fix_text("", {}).text, "");
}

TEST(Fixes, AreNotAppliedWhenTwoOfOneClassDiffer) {
    const Fix safe{"a", FixSafety::Safe, {}};
    const Fix unsafe{"b", FixSafety::Unsafe, {}};
    const Fix choice{"c", FixSafety::Choice, {}};
    const struct {
        std::vector<Fix> fixes;
        bool with_unsafe;
        const char* title;
    } rows[] = {{{}, true, ""},           {{choice}, true, ""},         {{unsafe}, false, ""},
                {{unsafe}, true, "b"},    {{unsafe, safe}, true, "a"},  {{unsafe, safe}, false, "a"},
                {{safe, safe}, true, ""}, {{unsafe, unsafe}, true, ""}, {{choice, unsafe}, true, "b"}};
    for (const auto& row : rows) {
        Finding finding;
        finding.fixes = row.fixes;
        const Fix* fix = applicable_fix(finding, row.with_unsafe);
        EXPECT_EQ(fix == nullptr ? "" : fix->title, row.title);
    }
}

TEST(FindingPlaces, CountBytesOfTheText) {
    const struct {
        std::string text;
        const char* code;
        const char* found;
    } rows[] = {
        {"\xEF\xBB\xBF%mem=1GB\r\n# hf/sto-3g opt=calfc\r\n\r\nt\r\n\r\n0 1\r\nHe 0 0 0\r\n\r\n", "GJF-R001", "calfc"},
        {"\xEF\xBB\xBF# hf/sto-3g\r\n\r\nt\r\n\r\n0 2\r\nHe 0 0 0\r\n\r\n", "GJF-M002", "0 2"},
        {"\xEF\xBB\xBF# hf/sto-3g" + behind_route, "GJF-T008", "# hf/sto-3g"},
        {"# hf/sto-3g\n\nt\n\n0 1\nHe 0 0 0", "GJF-T001", "He 0 0 0"},
        {"", "GJF-P001", ""},
    };
    for (const auto& row : rows) {
        const std::vector<Finding> findings = check_text(row.text);
        const auto finding =
            std::find_if(findings.begin(), findings.end(), [&](const Finding& f) { return f.code == row.code; });
        ASSERT_NE(finding, findings.end()) << row.text;
        EXPECT_EQ(row.text.substr(finding->begin, finding->end - finding->begin), row.found) << row.code;
    }
}

}  // namespace

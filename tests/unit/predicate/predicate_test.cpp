// Conditions on jobs: which jobs fit, what is not known, and what is told of a text that is no condition.
#include <gjf/core/predicate/predicate.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace quor::input::gaussian;

constexpr const char* ethanol =
    "%chk=runs/Et.chk\n%mem=4GB\n%nprocshared=8\n#p UB3LYP/6-31G(d) opt=(TS,CalcFC,maxcyc=30) scrf(smd,solvent=water) "
    "geom=connectivity\n\nEthanol TS\n\n-1 2\nC 0 0 0\nC 0 0 1.5\nO 0 1.4 2\nX 5 5 5\n\n1 2 1.0\n2 3 1.0\n3\n4\n\n";
constexpr const char* from_checkpoint = "%oldchk=a\n# hf/sto-3g freq geom=check charge\n\nt\n\n0 1\n\n";
constexpr const char* oniom = "# oniom(b3lyp/6-31g*:uff)\n\nt\n\n0 1 0 1 0 1\nC 0 0 0 H\nO 0 0 1.2 L\n\n";

Truth truth(const char* condition, const std::string& text) {
    const JobFile file("dir/Mine.gjf", text);
    EXPECT_FALSE(file.jobs().empty()) << text;
    return JobPredicate(condition).of(file, 0);
}

TEST(JobPredicate, FitsWhatAJobSays) {
    const char* fits[] = {
        "charge = -1",
        "charge=-1",
        "charge < 0",
        "charge <= -1",
        "charge != 0",
        "charge == -1",
        "multiplicity >= 2",
        "atoms = 3",
        "atoms > 2 and atoms < 4",
        "job = 1",
        "jobs = 1",
        "nproc = 8",
        "mem = 4GB",
        "mem = 4096mb",
        "mem > 500MW",
        "mem < 5gb",
        "MEM",
        "chk",
        "not oldchk",
        "oldchk != a",
        "chk = 'RUNS/et.chk'",
        "chk ~ runs/",
        "method = ub3lyp",
        "METHOD = UB3LYP",
        "method ~ b3lyp",
        "basis = 6-31g*",
        "basis = '6-31G(d)'",
        "basis != 6-31g",
        "formula = C2O",
        "formula ~ C2",
        "title = \"ethanol ts\"",
        "title ~ THAN",
        "file ~ mine",
        "file ~ dir/",
        "section = connectivity",
        "section = 1",
        "section != basis",
        "not missing",
        "opt",
        "OPT=ts",
        "opt = ts",
        "opt=(ts,calcfc)",
        "opt=(calcfc, ts)",
        "opt(ts)",
        "opt=maxcycles",
        "opt=maxcycle=30",
        "opt=(maxcyc=30)",
        "opt != tight",
        "freq != raman",
        "not freq",
        "scrf=smd",
        "scrf=(solvent=Water)",
        "scrf=solvent=water",
        "ub3lyp",
        "ub3lyp/6-31g*",
        "6-31g(d)",
        "geom=connect",
        "not route:charge",
        "count(C) = 2",
        "count(C)",
        "count(all) >= 4",
        "count(not (C or X)) = 1",
        "count(bonded to 2) = 2",
        "not count(N)",
        "charge = 0 or charge = -1",
        "charge = -1 or charge = 7 and atoms = 7",
        "(charge = 7 or opt) and not freq",
        "not (charge = 7 or freq)",
        "not not opt",
        "((opt))",
        "opt and(charge=-1)",
    };
    for (const char* condition : fits) {
        EXPECT_EQ(truth(condition, ethanol), Truth::Yes) << condition;
        EXPECT_EQ(truth(("not (" + std::string(condition) + ")").c_str(), ethanol), Truth::No) << condition;
    }
}

TEST(JobPredicate, RefusesOtherJobs) {
    const char* misses[] = {
        "charge = 1",
        "charge > -1",
        "atoms = 4",
        "mem >= 5GB",
        "method = b3lyp",
        "basis = 6-31g**",
        "formula = c2o",
        "title = ethanol",
        "chk = et.chk",
        "section = basis",
        "missing",
        "opt=tight",
        "opt=(ts,tight)",
        "opt=maxcycle=31",
        "scrf=(solvent=ethanol)",
        "freq",
        "b3lyp",
        "ub3lyp/6-31g",
        "count(C) = 3",
        "count(within 1 of 1) > 2",
        "opt and freq",
        "freq or charge = 1",
        "not opt",
        "opt != ts",
    };
    for (const char* condition : misses) {
        EXPECT_EQ(truth(condition, ethanol), Truth::No) << condition;
    }
}

TEST(JobPredicate, LeavesOpenWhatIsNotKnown) {
    const char* open[] = {"atoms > 3",    "not (atoms > 3)",    "atoms <= 3",      "atoms != 3",    "formula = C",
                          "formula != C", "mem < 1GB",          "mem >= 1GB",      "electrons > 1", "count(C)",
                          "count(C) = 0", "freq and atoms > 3", "opt or atoms > 3"};
    for (const char* condition : open) {
        EXPECT_EQ(truth(condition, from_checkpoint), Truth::Unknown) << condition;
    }
    EXPECT_EQ(truth("count(9) = 1", ethanol), Truth::Unknown) << "there is no atom 9";
    EXPECT_EQ(truth("opt and atoms > 3", from_checkpoint), Truth::No);
    EXPECT_EQ(truth("freq or atoms > 3", from_checkpoint), Truth::Yes);
    EXPECT_EQ(truth("atoms > 3 and opt", from_checkpoint), Truth::No);
    EXPECT_EQ(truth("title", "# hf geom=allcheck\n\n"), Truth::Unknown);
    EXPECT_EQ(truth("charge = 0", "# hf geom=allcheck\n\n"), Truth::Unknown);
}

TEST(JobPredicate, TakesAFieldBeforeARouteWord) {
    EXPECT_EQ(truth("charge = 0", from_checkpoint), Truth::Yes);
    EXPECT_EQ(truth("route:charge", from_checkpoint), Truth::Yes);
    EXPECT_EQ(truth("route:charge", ethanol), Truth::No);
}

TEST(JobPredicate, LooksIntoTheLevelsOfOniom) {
    EXPECT_EQ(truth("method = uff", oniom), Truth::Yes);
    EXPECT_EQ(truth("b3lyp", oniom), Truth::Yes);
    EXPECT_EQ(truth("basis = '6-31g(d)'", oniom), Truth::Yes);
    EXPECT_EQ(truth("oniom", oniom), Truth::Yes);
    EXPECT_EQ(truth("method = amber", oniom), Truth::No);
}

TEST(JobPredicate, AsksTheChecker) {
    const std::string wrong = "# b3lyp/6-31g opt=clacfc\n\nt\n\n0 2\nO 0 0 0\nH 0 0 1\nH 0 1 0\n\n";
    const std::string clean = "# b3lyp/6-31g opt\n\nt\n\n0 1\nO 0 0 0\nH 0 0 1\nH 0 1 0\n\n";
    const struct {
        const char* condition;
        Truth of_wrong;
        Truth of_clean;
    } rows[] = {
        {"severity = error", Truth::Yes, Truth::No}, {"severity >= warning", Truth::Yes, Truth::No},
        {"severity < error", Truth::No, Truth::No},  {"severity != error", Truth::No, Truth::Yes},
        {"code = GJF-R001", Truth::Yes, Truth::No},  {"code = gjf-r", Truth::Yes, Truth::No},
        {"code != GJF-R001", Truth::No, Truth::Yes}, {"code", Truth::Yes, Truth::No},
        {"verdict = error", Truth::Yes, Truth::No},  {"verdict = clean", Truth::No, Truth::Yes},
        {"electrons = 10", Truth::Yes, Truth::Yes},  {"functions = 13", Truth::Yes, Truth::Yes},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(truth(row.condition, wrong), row.of_wrong) << row.condition;
        EXPECT_EQ(truth(row.condition, clean), row.of_clean) << row.condition;
    }
}

TEST(JobPredicate, TellsWhereItIsWrong) {
    const struct {
        const char* text;
        const char* message;
    } rows[] = {
        {"", "column 1: the condition is empty"},
        {"   ", "column 4: a condition is missing at the end"},
        {"opt and", "column 8: a condition is missing at the end"},
        {"and opt", "column 1: a condition is missing before 'and'"},
        {"opt and or freq", "column 9: a condition is missing before 'or'"},
        {"(opt", "column 1: the parenthesis is never closed"},
        {"opt)", "column 4: there is no '(' for this ')'"},
        {"()", "column 2: a condition is missing before ')'"},
        {"not", "column 4: a condition is missing at the end"},
        {"opt freq", "column 5: 'and' or 'or' is missing before 'freq'"},
        {"= 3", "column 1: a condition is missing before '='"},
        {"charge =", "column 9: a value is missing after 'charge ='"},
        {"charge = )", "column 10: a value is missing after 'charge ='"},
        {"charge = x", "column 10: 'x' is no number"},
        {"charge = nan", "column 10: 'nan' is no number"},
        {"charge ~ 1", "column 10: '~' looks into texts, and charge is a number"},
        {"mem > 4XB", "column 7: '4XB' is no amount of memory; write a whole number and a unit, as in 8GB"},
        {"title < a", "column 9: title is a text: it takes =, != and ~"},
        {"title = 'a", "column 9: the quote is never closed"},
        {"severity = bad", "column 12: 'bad' is none of note, warning and error"},
        {"section = conectivity", "column 11: 'conectivity' is no kind of section; did you mean connectivity?"},
        {"chrge = 1", "column 1: 'chrge' is neither a field nor a word of routes; did you mean charge?"},
        {"atms > 20", "column 1: 'atms' is neither a field nor a word of routes; did you mean atoms?"},
        {"opt and freqq", "column 9: 'freqq' is neither a field nor a word of routes; did you mean freq?"},
        {"ts", "column 1: 'ts' is neither a field nor a word of routes; write opt=ts"},
        {"opt=clacfc", "column 1: 'clacfc' is no option of opt; did you mean calcfc?"},
        {"opt > 3", "column 1: 'opt' is a word of routes: it takes = and != alone"},
        {"opt=(ts", "column 5: a parenthesis of '(ts' is never closed"},
        {"count(C", "column 6: the parenthesis is never closed"},
        {"count(", "column 6: the parenthesis is never closed"},
        {"count() > 1", "column 7: atoms are missing at the end"},
        {"\xC3\xA9t or count(Fee)", "column 1: '\xC3\xA9t' is neither a field nor a word of routes"},
        {"opt or count(Fee) > 1", "column 14: 'Fee' is neither an element nor a word of selections"},
        {"count(C) > x", "column 12: 'x' is no number"},
        {"count(C) ~ 1", "column 12: '~' looks into texts, and count is a number"},
        {"route:", "column 1: a condition is missing before 'r'"},
    };
    for (const auto& row : rows) {
        try {
            const JobPredicate predicate(row.text);
            ADD_FAILURE() << row.text;
        } catch (const SelectionError& error) {
            EXPECT_EQ(std::string(error.what()), row.message) << row.text;
        }
    }
}

// Any nesting is read without recursion.
TEST(JobPredicate, ReadsDeepNesting) {
    const std::string deep = std::string(100000, '(') + "opt" + std::string(100000, ')');
    EXPECT_EQ(truth(deep.c_str(), ethanol), Truth::Yes);
    std::string many;
    for (int i = 0; i < 20000; ++i) {
        many += "not ";
    }
    EXPECT_EQ(truth((many + "opt").c_str(), ethanol), Truth::Yes);
}

TEST(JobFields, AreAllNamedAndFound) {
    const JobFile file("a", ethanol);
    for (const JobField& field : job_fields()) {
        ASSERT_NE(find_job_field(field.name), nullptr);
        EXPECT_EQ(std::string(find_job_field(field.name)->name), field.name);
        EXPECT_TRUE(field_value(file, 0, field).known || std::string(field.name) == "functions" ||
                    std::string(field.name) == "electrons")
            << field.name;
    }
    EXPECT_EQ(job_fields().size(), 21U);
    EXPECT_EQ(find_job_field("charges"), nullptr);
}

TEST(JobFields, WriteFormulasAsHillDoes) {
    const struct {
        const char* atoms;
        const char* formula;
    } rows[] = {
        {"H 0 0 0\nO 0 0 1\nH 0 0 2\n", "H2O"},
        {"Cl 0 0 0\nH 0 0 1\n", "ClH"},
        {"O 0 0 0\nH 0 0 1\nC 0 0 2\nBr 0 0 4\n", "CHBrO"},
        {"N 0 0 0\nBq 0 0 1\nX 0 0 2\n", "N"},
        {"6 0 0 0\nO-Bq 0 0 2\n", "C"},
    };
    for (const auto& row : rows) {
        const JobFile file("a", "# hf/sto-3g\n\nt\n\n0 1\n" + std::string(row.atoms) + "\n");
        EXPECT_EQ(field_value(file, 0, *find_job_field("formula")).texts, std::vector<std::string>{row.formula})
            << row.atoms;
    }
}

}  // namespace

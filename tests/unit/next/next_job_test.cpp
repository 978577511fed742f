// New jobs made of old ones and their outputs: what changes, what stays byte for byte, and what is refused.
#include <gjf/core/check/checker.hpp>
#include <gjf/core/knowledge/failures.hpp>
#include <gjf/core/next/next_job.hpp>
#include <gjf/core/reader/job_layout.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <unistd.h>
#include <vector>

#include "../output/made_outputs.hpp"

namespace {

using namespace quor::input::gaussian;
namespace fs = std::filesystem;

// A folder of its own with the files of a calculation, written a day ago.
class Calculation {
   public:
    Calculation() : folder_(fs::temp_directory_path() / ("next_job_test_" + std::to_string(getpid()))) {
        fs::remove_all(folder_);
        fs::create_directories(folder_);
    }
    Calculation(const Calculation&) = delete;
    Calculation& operator=(const Calculation&) = delete;
    ~Calculation() { fs::remove_all(folder_); }

    void write(const std::string& name, const std::string& text, int hours_ago = 24) const {
        std::ofstream(folder_ / name, std::ios::binary) << text;
        fs::last_write_time(folder_ / name, fs::file_time_type::clock::now() - std::chrono::hours(hours_ago));
    }
    OldCalculation read(const std::string& name = "opt.log") const {
        return read_old_calculation((folder_ / name).string());
    }

    std::vector<NewJob> next(const std::string& to, bool force = false) const {
        NextWish wish;
        wish.to = to;
        wish.force = force;
        return next_jobs(read(), wish);
    }
    std::string retry(const std::string& name = "opt.log") const {
        const std::vector<NewJob> jobs = retry_jobs(read(name), {});
        return jobs.empty() ? std::string() : jobs.at(0).text;
    }

   private:
    fs::path folder_;
};

std::string refusal(const std::function<void()>& make) {
    try {
        make();
    } catch (const NextJobRefused& error) {
        return error.what();
    }
    return "not refused";
}

const std::string atoms = "O   0.0 0.0 0.117 \nH   0.0 0.757 -0.468\nH   0.0 -0.757 -0.468\n";
const std::string new_atoms = "O 0.100000 0.0 0.117 \nH   0.0 0.757 -0.468\nH   0.0 -0.757 -0.468\n";

std::string job(const std::string& route, const std::string& molecule = atoms, const std::string& behind = "") {
    return "%chk=opt.chk\n%mem=2GB\n" + route + "\n\nA title\n\n0 1\n" + molecule + "\n" + behind;
}

std::string output(const std::string& route, const std::string& steps, const std::string& end) {
    return made::head(" %chk=opt.chk\n") + made::framed(route) + made::molecule() + steps + end;
}

std::string optimized(const std::string& route = "# hf/sto-3g opt") {
    return output(route,
                  made::optimization_step(1, "-75.5", "0.010000", "0.050000") +
                      made::optimization_step(2, "-75.6", "0.000010", "0.100000") +
                      " Optimization completed.\n    -- Stationary point found.\n",
                  made::normal_end());
}

std::string out_of_steps(const std::string& route = "# hf/sto-3g opt") {
    return output(route,
                  made::optimization_step(1, "-75.5", "0.010000", "0.050000", 2) +
                      made::optimization_step(2, "-75.6", "0.002000", "0.100000", 2) +
                      " Optimization stopped.\n    -- Number of steps exceeded,  NStep=   2\n",
                  made::error_end(9999));
}

TEST(NextJob, KeepsAllButRouteGeometryAndCheckpoint) {
    const Calculation files;
    files.write("opt.log", optimized());
    files.write("opt.gjf", job("#P  HF/STO-3G   Opt=(MaxCycles=30) SCF=Tight ! a comment"));
    const std::vector<NewJob> jobs = files.next("freq");
    ASSERT_EQ(jobs.size(), 1U);
    EXPECT_EQ(jobs[0].name, "opt_freq.gjf");
    EXPECT_EQ(jobs[0].text,
              "%chk=opt_freq.chk\n%mem=2GB\n! quor-gjf next: freq from opt.log\n"
              "#P  HF/STO-3G SCF=Tight freq ! a comment\n\nA title\n\n0 1\n" +
                  new_atoms + "\n");
}

TEST(NextJob, NamesTheSectionThatGoesAndKeepsTheOthers) {
    const Calculation files;
    const std::string basis = "O H 0\n6-31G*\n****\n\n";
    files.write("opt.log", optimized("# b3lyp/gen opt=modredundant"));
    files.write("opt.gjf", job("# b3lyp/gen opt=modredundant", atoms, "B 1 2 F\n\n" + basis));
    const NewJob made = files.next("freq").at(0);
    EXPECT_NE(made.text.find("\n\n" + basis), std::string::npos) << made.text;
    EXPECT_EQ(made.text.find("B 1 2 F"), std::string::npos) << made.text;
    EXPECT_TRUE(std::any_of(made.remarks.begin(), made.remarks.end(), [](const std::string& remark) {
        return remark == "the section 'Modifications to coordinates' goes, which the route no longer asks for";
    }));
}

TEST(NextJob, ReadsACheckpointOnlyWhenItIsThereAndNotOlder) {
    const Calculation files;
    files.write("opt.log", optimized());
    files.write("opt.gjf", job("# hf/sto-3g opt"));
    files.write("opt.chk", "x", 48);
    EXPECT_EQ(files.next("sp").at(0).text.find("guess"), std::string::npos);
    files.write("opt.chk", "x", 24);
    const std::string text = files.next("sp").at(0).text;
    EXPECT_NE(text.find("%oldchk=opt.chk"), std::string::npos) << text;
    EXPECT_NE(text.find("guess=read"), std::string::npos) << text;
    EXPECT_NE(text.find("%chk=opt_sp.chk"), std::string::npos) << text;
}

TEST(NextJob, OfACheckpointWithoutFinishedScfReadsNothing) {
    const Calculation files;
    files.write("opt.log", output("# hf/sto-3g opt guess=read", made::geometry() + made::failed_scf("-99.5"),
                                  " Convergence failure -- run terminated.\n" + made::error_end(502)));
    files.write("opt.gjf", job("# hf/sto-3g opt guess=read"));
    files.write("opt.chk", "x", 24);
    const std::string text = files.retry();
    EXPECT_EQ(text.find("guess"), std::string::npos) << text;
    EXPECT_NE(text.find("scf=(maxcycle"), std::string::npos) << text;
    EXPECT_NE(text.find(atoms), std::string::npos) << "the input's geometry, byte for byte";
}

TEST(NextJob, RefusesAtomsThatDiffer) {
    const struct {
        const char* molecule;
        const char* reason;
    } rows[] = {
        {"O 0 0 0\nF 0 0 1\nH 0 1 0\n", "atom 2 is F in the job and H in the output (line 56)"},
        {"O 0 0 0\nH 0 0 1\n", "the output has 3 atoms, the job 2"},
        {"O 0 0 0\nH 0 0 1\nH 0 1 0\nH 1 0 0\n", "the job has an atom 4, the output has 3"},
        {"O 0 0 0\nH 0 0 1\nH-Bq 0 1 0\n", "atom 3 is Bq in the job and H in the output (line 56)"},
        {"H 0 0 0\nO 0 0 1\nH 0 1 0\n", "atom 1 is H in the job and O in the output (line 56)"},
    };
    const Calculation files;
    files.write("opt.log", optimized());
    for (const auto& [molecule, reason] : rows) {
        files.write("opt.gjf", job("# hf/sto-3g opt", molecule));
        const std::string told = refusal([&] { files.next("freq"); });
        EXPECT_EQ(told.substr(0, told.find(" (line")), std::string(reason).substr(0, std::string(reason).find(" (line")));
    }
}

TEST(NextJob, WritesBohrWhereTheJobDoes) {
    const Calculation files;
    files.write("opt.log", optimized());
    files.write("opt.gjf", job("# hf/sto-3g opt units=au", "O 0 0 0.2\nH 0 1.4 -0.9\nH 0 -1.4 -0.9\n"));
    const std::string text = files.next("sp").at(0).text;
    EXPECT_NE(text.find("O 0.188973 0 0.221098\nH 0 1.430523 -0.884392"), std::string::npos) << text;
}

TEST(NextJob, GivesVariablesOfAZMatrixTheirNewValues) {
    const Calculation files;
    files.write("opt.log", output("# hf/sto-3g opt", made::geometry() + made::scf("-75.6"), made::normal_end()));
    const std::string rows = "O\nH 1 r\nH 1 r 2 a\n\n";
    files.write("opt.gjf", job("# hf/sto-3g opt", rows + "r=0.9\na=100.\n"));
    const std::string text = files.next("freq").at(0).text;
    EXPECT_NE(text.find(rows + "r=0.9566995\na=104.6072110\n"), std::string::npos) << text;
    files.write("opt.gjf", job("# hf/sto-3g opt", "O\nH 1 r\nH 1 1.1 2 a\n\nr=0.9\na=100.\n"));
    EXPECT_NE(files.next("freq").at(0).text.find("H 1 0.9566995 2 a\n"), std::string::npos);
}

TEST(NextJob, RefusesAZMatrixThatCannotTakeThePositions) {
    const Calculation files;
    files.write("opt.log", optimized());  // its two bonds differ
    files.write("opt.gjf", job("# hf/sto-3g opt", "O\nH 1 r\nH 1 r 2 a\n\nr=0.9\na=100.\n"));
    EXPECT_EQ(refusal([&] { files.next("freq"); }), "not refused");
    files.write("opt.gjf", job("# hf/sto-3g opt", "O\nX 1 1.0\nH 1 r 2 b\nH 1 r 2 b 3 180.\n\nr=0.9\nb=50.\n"));
    EXPECT_NE(refusal([&] { files.next("freq"); }).find("--cartesian writes Cartesian coordinates"), std::string::npos);
    NextWish wish;
    wish.to = "freq";
    wish.cartesian = true;
    const std::string text = next_jobs(files.read(), wish).at(0).text;
    EXPECT_NE(text.find("\n0 1\n O       0.10000000    0.00000000    0.11700000\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("X "), std::string::npos) << text;
}

TEST(NextJob, BeginsAtTheJobThatDiedAndBringsWhatItRead) {
    const Calculation files;
    const std::string second =
        "--Link1--\n%chk=opt.chk\n# hf/sto-3g opt geom=(check,nocrowd) guess=read\n\nsecond\n\n0 1\n\n";
    const std::string third = "--Link1--\n%chk=opt.chk\n# hf/sto-3g sp geom=allcheck guess=read\n\n";
    files.write("opt.gjf", job("# hf/sto-3g") + second + third);
    files.write("opt.log", output("# hf/sto-3g", made::geometry() + made::scf("-75.5"), made::normal_end()) +
                               out_of_steps("# hf/sto-3g opt geom=check guess=read"));
    const std::string text = files.retry();
    EXPECT_EQ(text,
              "%chk=opt_r1.chk\n! quor-gjf retry: opt_steps attempt 1 from opt.log\n"
              "# hf/sto-3g opt=(maxcycles=4) geom=nocrowd\n\nsecond\n\n0 1\n" +
                  new_atoms + "\n--Link1--\n%chk=opt_r1.chk\n# hf/sto-3g sp geom=allcheck guess=read\n\n")
        << text;
}

TEST(NextJob, RefusesWordsThatReadWhatNothingElseTells) {
    const Calculation files;
    files.write("opt.gjf", job("# hf/chkbasis opt"));
    files.write("opt.log", out_of_steps("# hf/chkbasis opt"));
    EXPECT_NE(refusal([&] { files.retry(); }).find("chkbasis"), std::string::npos);
}

TEST(NextJob, WithoutTheJobIsMadeOfTheEcho) {
    const Calculation files;
    files.write("opt.log", optimized());
    const std::string text = files.next("freq").at(0).text;
    EXPECT_EQ(text,
              "%chk=opt_freq.chk\n! quor-gjf next: freq from opt.log\n# hf/sto-3g freq\n\nwater\n\n0 1\n"
              " O       0.10000000    0.00000000    0.11700000\n H       0.00000000    0.75700000   -0.46800000\n"
              " H       0.00000000   -0.75700000   -0.46800000\n\n");
    for (const char* const route : {"# b3lyp/genecp opt", "# oniom(hf/sto-3g:uff) opt", "# hf/gen opt=ts"}) {
        files.write("opt.log", optimized(route));
        EXPECT_NE(refusal([&] { files.next("freq"); }), "not refused") << route;
    }
}

TEST(NextJob, RefusesBeginningsThatAreNone) {
    const Calculation files;
    files.write("opt.gjf", job("# hf/sto-3g opt"));
    files.write("opt.log", optimized());
    EXPECT_EQ(refusal([&] { files.next("irc"); }),
              "a path begins at one imaginary vibration, and the output has no vibrations");
    EXPECT_EQ(refusal([&] { files.next("restart"); }), "the output ended normally: there is nothing to go on with");
    EXPECT_EQ(refusal([&] { files.next("scan-ts"); }), "the output holds no relaxed scan");
    EXPECT_EQ(refusal([&] { files.next("displace"); }), "the output holds no imaginary vibration to move along");
    files.write("opt.log", out_of_steps());
    EXPECT_NE(refusal([&] { files.next("freq"); }).find("the output did not end normally"), std::string::npos);
    files.write("opt.log", out_of_steps().substr(0, 1500), 0);
    EXPECT_NE(refusal([&] { files.retry(); }).find("it may still be running"), std::string::npos);
}

TEST(Retry, TakesTheNextAttemptAndReplacesTheComment) {
    const Calculation files;
    files.write("opt.gjf", job("# hf/sto-3g opt"));
    files.write("opt.log", out_of_steps());
    const std::string first = files.retry();
    EXPECT_NE(first.find("\n! quor-gjf retry: opt_steps attempt 1 from opt.log\n# hf/sto-3g opt=(maxcycles=4)\n"),
              std::string::npos)
        << first;
    files.write("opt_r1.gjf", first);
    files.write("opt_r1.log", out_of_steps());
    const std::vector<NewJob> second = retry_jobs(files.read("opt_r1.log"), {});
    ASSERT_EQ(second.size(), 1U);
    EXPECT_EQ(second[0].name, "opt_r2.gjf");
    EXPECT_NE(second[0].text.find("attempt 2 from opt_r1.log\n# hf/sto-3g opt=(maxcycles=4,calcfc)"), std::string::npos)
        << second[0].text;
    EXPECT_EQ(second[0].text.find("attempt 1"), std::string::npos);
    std::string last = second[0].text;
    last.replace(last.find("attempt 2"), 9, "attempt 4");
    files.write("opt_r2.gjf", last);
    files.write("opt_r2.log", out_of_steps());
    EXPECT_NE(refusal([&] { files.retry("opt_r2.log"); }).find("no attempt is left after 4"), std::string::npos);
}

TEST(Retry, SaysWhyNothingCanBeDone) {
    const Calculation files;
    files.write("opt.gjf", job("# hf/sto-3g opt"));
    files.write("opt.log",
                output("# hf/sto-3g opt", " The combination of multiplicity  2 and     10 electrons is impossible.\n",
                       made::error_end(301)));
    const std::string reason = refusal([&] { files.retry(); });
    EXPECT_NE(reason.find("mult: "), std::string::npos) << reason;
    EXPECT_NE(reason.find("no program can cure it"), std::string::npos) << reason;
    files.write("opt.log", optimized());
    EXPECT_EQ(files.retry(), "");
}

// --- Each row of the tables

const char* const example_routes[] = {
    "# hf/sto-3g opt",
    "# hf/sto-3g opt=ts freq",
    "# hf/sto-3g opt=qst2",
    "# hf/sto-3g opt=z-matrix",
    "# hf/sto-3g opt=cartesian",
    "# hf/sto-3g irc=calcfc",
    "# hf/sto-3g geom=connectivity",
    "# hf/sto-3g scrf=pcm opt",
    "# hf/sto-3g irc=calcfc freq",
    "# hf/sto-3g opt freq",
};

std::string example_job(const std::string& route) {
    const std::string behind = route.find("qst2") != std::string::npos      ? "product\n\n0 1\n" + atoms + "\n"
                               : route.find("connect") != std::string::npos ? "1 2 1.0 3 1.0\n2\n3\n\n"
                                                                            : "";
    const bool has_variables = route.find("z-matrix") != std::string::npos;
    return job(route, has_variables ? "O\nH 1 r\nH 1 r 2 a\n\nr=0.96\na=104.5\n" : atoms, behind);
}

std::string modes() {
    return "                      1                      2                      3\n                     A                   "
           "   A                "
           "      A\n Frequencies --  -500.0000              -100.0000               900.0000\n Red. masses --      1.0000  "
           "   "
           "            1.0000                 1.0000\n Frc consts  --      1.0000                 1.0000                 "
           "1.0000\n IR Inten    --      1.0000                 1.0000                 1.0000\n  Atom  AN      X      Y     "
           " Z  "
           "      X      Y      Z        X      Y      Z\n     1   8     0.10   0.00   0.00     0.20   0.00   0.00     0.00 "
           "  "
           "0.00   0.10\n     2   1     0.70   0.00   0.00     0.70   0.00   0.00     0.00   0.00   0.70\n     3   1     "
           "0.70   "
           "0.00   0.00    -0.70   0.00   0.00     0.00   0.00   0.70\n\n";
}

// An output that shows a cause, by the row of the table of failures.
std::string example_output(const Recipe& recipe, const std::string& route) {
    const std::string steps = made::optimization_step(1, "-75.5", "0.010000", "0.000000") +
                              made::optimization_step(2, "-75.6", "0.002000", "0.000000");
    const std::string completed = " Optimization completed.\n    -- Stationary point found.\n";
    if (recipe.wanted_for == "imag_min" || recipe.wanted_for == "imag_ts_many" || recipe.wanted_for == "freq_notconv") {
        return output(route, steps + completed, made::normal_end()) + made::internal_step("#N Geom=AllCheck Freq") +
               made::geometry() + made::geometry("Standard") + made::scf("-75.6") + modes() +
               made::convergence("0.000010", recipe.wanted_for == "freq_notconv" ? "NO " : "YES") + made::normal_end();
    }
    const auto rows = failures();
    const auto row =
        std::find_if(rows.begin(), rows.end(), [&](const Failure& each) { return each.id == recipe.wanted_for; });
    const std::string link(row->links.substr(0, row->links.find(' ')));
    std::string lines;
    for (const std::string_view part : {row->any.empty() ? std::string_view() : row->any.front(), row->all}) {
        lines += part.empty() || row->where == "scheduler" ? std::string() : ' ' + std::string(part) + '\n';
    }
    lines += recipe.wanted_for == "oom" ? " Use %mem=11MW to provide the minimum amount of memory required.\n" : "";
    const bool breaks_off = row->ending == "none" || row->where == "none";
    return output(route, steps + lines, breaks_off ? std::string() : made::error_end(link.empty() ? 101 : std::stoi(link)));
}

// The first example to which a recipe is applied; empty where there is none.
std::string applied(const Calculation& files, const Recipe& recipe, std::string& reason, std::string& old) {
    for (const char* const route : example_routes) {
        std::string text = example_job(route);
        if (recipe.when && !recipe.when->fits(JobFile("-", text), 0)) {
            continue;
        }
        if (recipe.wanted_for == "syntax") {
            text.replace(text.find("sto-3g"), 6, "def2-tzvp");
        } else if (recipe.wanted_for == "zsymb" || recipe.wanted_for == "charge_def") {
            text.pop_back();
        } else if (recipe.wanted_for == "route_missing") {
            text.replace(text.find("# "), 2, " #");
        } else if (recipe.wanted_for == "atoms_extra") {
            text.replace(text.find("sto-3g"), 6, "sto-3g geom=check");
        }
        const std::size_t begin = text.find("# ");
        if (recipe.attempt > 1 && begin != std::string::npos) {
            text.insert(begin, "! quor-gjf retry: " + recipe.id + " attempt " + std::to_string(recipe.attempt - 1) +
                                   " from a.log\n");
        }
        old = text;
        files.write("opt.gjf", text);
        files.write("opt.log", example_output(recipe, route));
        files.write("opt.chk", "x", recipe.needs_checkpoint ? 24 : 48);
        const bool asks_scheduler = recipe.wanted_for == "walltime" || recipe.wanted_for == "node_failure" ||
                                    recipe.wanted_for == "cancelled" || recipe.wanted_for == "memory_kill";
        const auto rows = failures();
        const auto row =
            std::find_if(rows.begin(), rows.end(), [&](const Failure& each) { return each.id == recipe.wanted_for; });
        files.write("slurm-1.out", asks_scheduler ? std::string(row->any.front()) + '\n' : "nothing\n");
        NextWish wish;
        wish.recipes = {recipe};
        try {
            const std::vector<NewJob> jobs = retry_jobs(files.read(), wish);
            if (!jobs.empty()) {
                return jobs[0].text;
            }
            reason = "nothing to cure";
        } catch (const NextJobRefused& error) {
            reason = reason + route + ": " + error.what() + '\n';
        }
    }
    return {};
}

// What the document shows of a row: the line of the output, the job before and after.
std::string shown(const Recipe& recipe, const Diagnosis& diagnosis, const std::string& before, const std::string& after) {
    const std::string line = diagnosis.scheduler_text.empty() ? diagnosis.cause_text : diagnosis.scheduler_text;
    std::string text = "### " + recipe.id + ", attempt " + std::to_string(recipe.attempt) + "\n\n";
    text += recipe.says + " (geometry: " + recipe.geometry_text + "; " + recipe.source + ").\n\n";
    text += line.empty() ? "" : "The output says:\n\n```\n" + line + "\n```\n\n";
    return text + "The job before:\n\n```\n" + before + "```\n\nThe job after:\n\n```\n" + after + "```\n\n";
}

// Compares the part of a document behind a line with what it should be, or writes it with QUOR_GJF_RENEW set.
void expect_document(const std::string& path, const std::string& mark, const std::string& wanted) {
    std::ifstream file(path);
    std::string text(std::istreambuf_iterator<char>(file), {});
    const std::size_t begin = text.find(mark);
    ASSERT_NE(begin, std::string::npos) << path << " has no line " << mark;
    if (std::getenv("QUOR_GJF_RENEW") != nullptr) {
        std::ofstream(path) << text.substr(0, begin + mark.size()) << wanted;
        return;
    }
    EXPECT_TRUE(text.substr(begin + mark.size()) == wanted)
        << path << " shows other jobs than are made; QUOR_GJF_RENEW=1 writes it anew";
}

TEST(Retry, EachRowOfTheTableIsAppliedToAnExample) {
    const Calculation files;
    std::size_t count = 0;
    std::string document;
    for (const Recipe& recipe : default_recipes()) {
        if (recipe.kind != RecipeKind::Cure || recipe.is_hint()) {
            continue;
        }
        std::string reason;
        std::string old;
        const std::string text = applied(files, recipe, reason, old);
        ASSERT_FALSE(text.empty()) << recipe.place << '\n' << reason;
        EXPECT_NE(
            text.find("! quor-gjf retry: " + recipe.id + " attempt " + std::to_string(recipe.attempt) + " from opt.log\n"),
            std::string::npos)
            << recipe.place << '\n'
            << text;
        const std::vector<Finding> found = check_text(text);
        EXPECT_TRUE(
            std::none_of(found.begin(), found.end(), [](const Finding& each) { return each.severity == Severity::Error; }))
            << recipe.place << '\n'
            << text;
        for (const RecipeEdit& edit : recipe.edits) {
            const std::string word = edit.value.substr(edit.value.find_first_of("=") + 1);
            const std::string first =
                word.substr(word.find_first_not_of('('), word.find_first_of(",)=", 1) - word.find_first_not_of('('));
            if (edit.option == "--option") {
                EXPECT_NE(text.find(first), std::string::npos) << recipe.place << ' ' << first << '\n' << text;
            }
        }
        document += shown(recipe, files.read().diagnosis, old, text);
        ++count;
    }
    EXPECT_GT(count, 75U);
    expect_document(QUOR_GJF_SOURCE_DIR "/docs/next.md", "## Each cure\n\n", document);
}

}  // namespace

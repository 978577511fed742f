// Why a job failed: each kind of cause by the lines that show it, sentences that look alike in jobs that ended well, and
// what lies beside the output.
#include <gjf/core/output/diagnosis.hpp>

#include <gjf/core/knowledge/failures.hpp>

#include "made_outputs.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <string>

namespace {

using namespace quor::input::gaussian;

Diagnosis diagnosed(const std::string& text) { return diagnose_output(*text_source(text)); }

std::string failing_job(const std::string& lines) {
    return made::head() + made::framed("# hf opt") + made::molecule() + lines;
}

TEST(Diagnosis, NamesTheCause) {
    std::string far = " Optimization stopped.\n    -- Number of steps exceeded,  NStep=   5\n";
    for (int i = 0; i < 500; ++i) {
        far += " ! R1    R(1,2)                  1.4207         -DE/DX =    0.0                 !\n";
    }
    const struct {
        std::string lines;
        const char* cause;
        int link;
    } cases[] = {
        {far + made::error_end(9999), "opt_steps", 9999},
        {made::error_end(9999), "opt_no_reason", 9999},
        {made::failed_scf("-1.5") + " Convergence failure -- run terminated.\n" + made::error_end(502), "scf_502", 502},
        {" Convergence failure.\n" + made::error_end(508), "scf_508", 508},
        {" Bend failed for angle     3 -     4 -     6\n Tors failed for dihedral 1\n FormBX had a problem.\n" +
             made::error_end(103),
         "formbx", 103},
        {" New curvilinear step not converged.\n Error imposing constraints\n" + made::error_end(103), "constr", 103},
        {" *MAX. CYCLES*\n" + made::error_end(913), "cc", 913},
        {" Out-of-memory error in routine RdGeom-1\n Use %mem=11MW to provide the minimum amount\n" + made::error_end(101),
         "oom", 101},
        {" FileIO operation on non-existent file.\n Error termination in NtrErr:\n NtrErr Called from FileIO.\n",
         "chk_missing", 101},
        {" Atomic number out of range for 6-311G basis set.\n" + made::error_end(301), "basis_z", 301},
        {" galloc:  could not allocate memory.\n", "galloc", 101},
        {" SCF Error SCF Error SCF Error SCF Error\n" + made::error_end(801) + "segmentation violation\n", "scf_801", 801},
        {made::error_end(716) + " Segmentation fault\n", "segv", 716},
        {made::scf("-1.5"), "cut_off", 502},
        {made::error_end(716), "", 716},
        // A sentence in a link that it does not end is none.
        {" Convergence failure\n" + made::error_end(716), "", 716},
        {far + made::error_end(502), "", 502},
        {" FormBX had a problem.\n", "cut_off", 101},
        {"slurmstepd: error: *** JOB 17 ON n1 CANCELLED AT 2024-03-14T22:23:40 DUE TO TIME LIMIT ***\n", "walltime", 101},
    };
    for (const auto& each : cases) {
        const Diagnosis found = diagnosed(failing_job(each.lines));
        EXPECT_EQ(found.cause, each.cause) << each.lines.substr(0, 100);
        EXPECT_EQ(found.link, each.link) << each.lines.substr(0, 100);
        EXPECT_EQ(found.says.empty(), found.cause.empty());
    }
    EXPECT_EQ(diagnosed(failing_job(cases[7].lines)).told_mem, "11MW");
}

// Failures that few have an output of: the sentence where it stands, and the same step with another link, or an end that is
// well.
TEST(Diagnosis, NamesRareCausesByTheLinkToo) {
    const struct {
        const char* line;
        const char* cause;
        int link;
        int other_link;  // in which the sentence tells nothing; 0 where any link will do
    } cases[] = {
        {" Wrong number of Negative eigenvalues: Desired= 1 Actual= 0", "opt_negeig", 103, 502},
        {" Error in added coordinate", "addcoord", 101, 0},
        {" Cannot AddRedundant with Cartesian or Z-matrix", "addred", 103, 0},
        {" RedCar failed in NewRed", "redcar", 101, 0},
        {" NRF.ne.NAbs", "nrf", 103, 301},
        {" Inconsistency: ModMin", "modmin", 103, 301},
        {" Problem with the distance matrix.", "dist", 202, 301},
        {" Small interatomic distances encountered:", "dist", 202, 301},
        {" Change in point group or standard orientation.", "pointgroup", 202, 301},
        {" Logic error in ASyTop", "asytop", 202, 301},
        {" SCF is confused.", "diis", 502, 301},
        {" No lower point found -- run aborted.", "nolower", 508, 301},
        {" Unable to project read-in occupied orbitals.", "project", 401, 301},
        {" Route card not found.", "route_missing", 1, 301},
        {" Cannot combine IRC and frequency", "irc_freq", 1, 301},
        {" Internal consistency failure #1 in ROv08", "basis_none", 1, 301},
        {" Input conversion error in IntKMC", "chkpath", 1, 301},
        {" Charge and Multiplicity card seems defective:", "charge_def", 101, 301},
        {" End of file in GetChg.", "getchg", 101, 301},
        {" The combination of multiplicity 1 and     9 electrons is impossible.", "mult", 301, 502},
        {" End of file reading basis center.", "basis_eof", 301, 502},
        {" R6DS8: Unable to choose the S8 parameter", "r6", 301, 502},
        {" MM function not complete", "link_atoms", 402, 502},
        {" GS2 Optimization Failure.", "gs2", 123, 502},
        {" CPHF failed to converge in LinEq2.", "cphf", 1002, 502},
        {" NAOANL could not find a 1s orbital", "nbo", 607, 502},
        {" GetVDW:  no radius for atom", "getvdw", 602, 502},
        {" malloc failed.", "galloc", 502, 0},
        {" Erroneous write. Write        -1 instead of     4096.", "disk", 502, 0},
        {" open-new-file", "newfile", 1, 0},
    };
    for (const auto& each : cases) {
        const std::string line = std::string(each.line) + "\n";
        EXPECT_EQ(diagnosed(failing_job(line + made::error_end(each.link))).cause, each.cause) << each.line;
        EXPECT_EQ(diagnosed(failing_job(line + made::normal_end())).cause, "") << each.line;
        if (each.other_link > 0) {
            EXPECT_NE(diagnosed(failing_job(line + made::error_end(each.other_link))).cause, each.cause) << each.line;
        }
    }
}

TEST(Diagnosis, FindsNothingInJobsThatEndedWell) {
    for (const char* const line :
         {">>>>>>>>>> Convergence criterion not met.", "Convergence failure",
          "Change in point group or standard orientation.", "FormBX had a problem.",
          "Optimization stopped.\n    -- Number of steps exceeded,  NStep=   5", "SCF Error SCF Error",
          "Maximum number of corrector steps exceeded", "*** delta epsilon", "ERROR FAILURE segmentation violation"}) {
        const Diagnosis found = diagnosed(failing_job(std::string(" ") + line + "\n" + made::normal_end()));
        EXPECT_EQ(found.cause, "") << line;
        EXPECT_EQ(found.link, 0) << line;
    }
    // What an earlier run says counts no more.
    EXPECT_EQ(
        diagnosed(failing_job(" Convergence failure\n" + made::error_end(502)) + failing_job(made::error_end(716))).cause,
        "");
}

TEST(Diagnosis, RefusesWhatIsNoOutput) {
    for (const char* const text :
         {"", "\n\n", "%chk=a\n# hf\n\nt\n\n0 1\nH 0 0 0\n\n", "g16: command not found\n", "\0\1\2"}) {
        EXPECT_THROW(diagnosed(text), NoOutput) << text;
    }
}

TEST(Failures, AreWhole) {
    std::set<std::string_view> wheres;
    EXPECT_EQ(missing_failures(), "");
    for (const Failure& failure : failures()) {
        wheres.insert(failure.where);
        EXPECT_FALSE(failure.id.empty() || failure.says.empty() || failure.remedy.empty() || failure.kind.empty())
            << failure.id;
        EXPECT_EQ(failure.any.empty(), failure.where == "none") << failure.id;
        EXPECT_TRUE(failure.ending.empty() || failure.ending == "error" || failure.ending == "none") << failure.id;
        for (const std::string_view fragment : failure.any) {
            EXPECT_GE(fragment.size(), 4U) << failure.id;
        }
    }
    EXPECT_EQ(wheres, (std::set<std::string_view>{"end", "step", "scheduler", "none"}));
    EXPECT_GT(failures().size(), 80U);
}

// Each row is found by a step that it describes.
TEST(Failures, AreFoundByTheirFragments) {
    for (const Failure& failure : failures()) {
        const std::string_view link = failure.links.substr(0, failure.links.find(' '));
        const bool has_end = failure.ending == "error" || (failure.ending.empty() && failure.where != "none");
        for (const std::string_view fragment : failure.any) {
            const std::string lines = " " + std::string(fragment) + "\n " + std::string(failure.all) + "\n";
            const std::string end = has_end ? made::error_end(std::stoi(link.empty() ? "716" : std::string(link))) : "";
            const std::string found = diagnosed(failing_job(lines + end)).cause;
            EXPECT_EQ(found, failure.id) << fragment;
        }
    }
}

class Folder {
   public:
    Folder() : path_(std::filesystem::temp_directory_path() / "quor_gjf_diagnosis_test") {
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    ~Folder() { std::filesystem::remove_all(path_); }
    std::string write(const std::string& name, const std::string& text, int minutes = 60) const {
        std::ofstream(path_ / name) << text;
        std::filesystem::last_write_time(path_ / name,
                                         std::filesystem::file_time_type::clock::now() - std::chrono::minutes(minutes));
        return (path_ / name).string();
    }

   private:
    std::filesystem::path path_;
};

TEST(Diagnosis, AsksTheSchedulersFile) {
    const struct {
        const char* name;
        const char* text;
        const char* cause;
    } cases[] = {
        {"slurm-17.out",
         "hello\nslurmstepd: error: *** JOB 17 ON n1 CANCELLED AT 2024-03-14T22:23:40 DUE TO TIME LIMIT ***\n", "walltime"},
        {"slurm-17.out", "slurmstepd: error: Detected 1 oom-kill event(s) in StepId=17.batch.\n", "memory_kill"},
        {"slurm-17.out", "slurmstepd: error: *** JOB 17 ON n1 CANCELLED AT 2024-03-14T22:23:40 DUE TO NODE FAILURE ***\n",
         "node_failure"},
        {"slurm-17.out", "slurmstepd: error: *** JOB 17 ON n1 CANCELLED AT 2024-03-14T22:23:40 ***\n", "cancelled"},
        {"opt.o4711", "=>> PBS: job killed: walltime 3610 exceeded limit 3600\n", "walltime"},
        {"opt.e4711", "cp: error writing: No space left on device\n", "disk"},
        {"opt.o4711", "all is well\n", "cut_off"},
        {"other.txt", "DUE TO TIME LIMIT\n", "cut_off"},
        {"slurm-.txt", "DUE TO TIME LIMIT\n", "cut_off"},
    };
    for (const auto& each : cases) {
        const Folder folder;
        const std::string path = folder.write("opt.log", failing_job(made::scf("-1.5")));
        folder.write(each.name, each.text);
        const Diagnosis found = diagnose_file(path);
        EXPECT_EQ(found.cause, each.cause) << each.name << ": " << each.text;
        EXPECT_EQ(found.scheduler_file.empty(), found.cause == "cut_off");
        EXPECT_FALSE(found.may_run);
    }
    // With several outputs a file must name the one that it is for.
    const Folder folder;
    const std::string path = folder.write("opt.log", failing_job(made::scf("-1.5")));
    folder.write("b.log", "");
    folder.write("slurm-1.out", "DUE TO TIME LIMIT\n");
    EXPECT_EQ(diagnose_file(path).cause, "cut_off");
    folder.write("slurm-2.out", "g16 opt.gjf\nDUE TO TIME LIMIT\n");
    EXPECT_EQ(diagnose_file(path).cause, "walltime");
    // An output that has an end needs none.
    EXPECT_EQ(diagnose_file(folder.write("opt.log", failing_job(made::normal_end()))).cause, "");
}

TEST(Diagnosis, TellsWhatMayStillRunAndWhatLiesBeside) {
    const Folder folder;
    EXPECT_TRUE(diagnose_file(folder.write("a.log", failing_job(made::scf("-1.5")), 1)).may_run);
    EXPECT_FALSE(diagnose_file(folder.write("a.log", failing_job(made::scf("-1.5")), 11)).may_run);
    EXPECT_FALSE(diagnose_file(folder.write("a.log", failing_job(made::normal_end()), 1)).may_run);
    EXPECT_FALSE(diagnose_file(folder.write("a.log", failing_job(" galloc:  could not allocate memory.\n"), 1)).may_run);
    EXPECT_EQ(diagnose_file(folder.write("a.log", failing_job(""))).job_file, "");
    const std::string beside = folder.write("a.com", "");
    const std::string checkpoint = folder.write("a.chk", "");
    const Diagnosis found = diagnose_file(folder.write("a.log", failing_job("")));
    EXPECT_EQ(found.job_file, beside);
    EXPECT_EQ(found.checkpoint, checkpoint);
    EXPECT_THROW(diagnose_file("/nowhere/a.log"), OutputError);
}

}  // namespace

// What an output comes to: which geometry is last and which best, which energy counts, what became of the optimization.
#include <gjf/core/output/output_summary.hpp>
#include <gjf/core/output/route_requests.hpp>

#include "made_outputs.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace quor::input::gaussian;

OutputSummary summary_of(const std::string& text) { return summarize_output(*text_source(text)); }

std::string job(const std::string& route) { return made::head() + made::framed(route) + made::molecule() + made::counts(); }

// Energies fall, rise and fall; forces are smallest at the second step.
std::string four_steps(int most = 20) {
    return made::optimization_step(1, "-75.10", "0.040000", "0.100000", most) +
           made::optimization_step(2, "-75.30", "0.001000", "0.200000", most) +
           made::optimization_step(3, "-75.20", "0.020000", "0.300000", most) +
           made::optimization_step(4, "-75.31", "0.003000", "0.400000", most);
}

TEST(OutputSummary, TakesTheLowestEnergyOfAMinimumAndTheSmallestForcesOfASaddle) {
    const struct {
        const char* route;
        int best;
    } cases[] = {
        {"# hf opt", 4},
        {"# hf opt=(calcfc,maxcycles=20)", 4},
        {"# hf opt=maxcycles=20 guess=ts", 4},
        {"# hf opt=(ts,calcfc)", 2},
        {"# hf Opt=QST3", 2},
        {"# hf opt=(qst2, redundant) freq", 2},
        {"# hf opt=(saddle=2)", 2},
        {"# hf opt = ( TS )", 2},
    };
    for (const auto& each : cases) {
        const OutputSummary summary = summary_of(job(each.route) + four_steps());
        ASSERT_TRUE(summary.best && summary.last) << each.route;
        EXPECT_EQ(summary.best->step, each.best) << each.route;
        EXPECT_EQ(summary.last->step, 4) << each.route;
        EXPECT_EQ(summary.best->geometry.atoms[0].position[0], 0.1 * each.best) << each.route;
    }
}

TEST(OutputSummary, TellsTheStateOfAnOptimization) {
    const std::string begin = job("# hf opt") + four_steps(4);
    const std::string same = made::geometry("Input", "0.400000") + made::geometry("Standard", "0.400000");
    const OutputSummary stopped = summary_of(
        begin + " Optimization stopped.\n    -- Number of steps exceeded,  NStep=   4\n" + same + made::error_end(9999));
    ASSERT_TRUE(stopped.optimization && stopped.optimization->end);
    EXPECT_EQ(*stopped.optimization->end, OptimizationEnd::Stopped);
    EXPECT_EQ(stopped.optimization->steps, 4);
    EXPECT_EQ(stopped.optimization->max_steps, 4);
    // The optimizer prints its last geometry again: what was found there holds, and the block is the last.
    EXPECT_EQ(stopped.last->energy->value, -75.31);
    EXPECT_GT(stopped.last->geometry.line, stopped.best->geometry.line);
    const OutputSummary running = summary_of(begin);
    EXPECT_FALSE(running.optimization->end);
    EXPECT_EQ(running.termination(), StepTermination::Unfinished);
    const OutputSummary none = summary_of(job("# hf") + made::geometry() + made::scf("-1.5") + made::normal_end());
    EXPECT_FALSE(none.optimization || none.best);
    // Frequencies print one step too, which is no optimization.
    EXPECT_FALSE(summary_of(job("# hf freq") + made::optimization_step(1, "-1.5", "0.001", "0.0", 2)).optimization);
}

TEST(OutputSummary, SaysWhenNothingImproved) {
    const std::string rising =
        made::optimization_step(1, "-75.3", "0.01", "0.1") + made::optimization_step(2, "-75.2", "0.02", "0.2");
    EXPECT_TRUE(summary_of(job("# hf opt") + rising).optimization->has_no_progress);
    EXPECT_FALSE(summary_of(job("# hf opt") + four_steps()).optimization->has_no_progress);
    EXPECT_FALSE(
        summary_of(job("# hf opt") + made::optimization_step(1, "-75.3", "0.01", "0.1")).optimization->has_no_progress);
}

TEST(OutputSummary, NeverHandsOutAnEnergyThatDidNotConverge) {
    const std::string geometry = made::geometry() + made::geometry("Standard");
    const OutputSummary failed = summary_of(job("# hf opt") + geometry + made::failed_scf("-75.9") +
                                            " Convergence failure -- run terminated.\n" + made::error_end(502));
    EXPECT_FALSE(failed.energy || failed.last->energy || failed.best);
    // A quadratic SCF behind it may converge.
    const OutputSummary healed = summary_of(job("# hf opt") + geometry + made::failed_scf("-75.9") + made::scf("-75.5"));
    EXPECT_EQ(healed.energy->value, -75.5);
    // A later link finds out that it did not.
    const OutputSummary refused = summary_of(job("# hf stable") + geometry + made::scf("-75.5") +
                                             " SCF Error SCF Error SCF Error SCF Error\n" + made::error_end(801));
    EXPECT_FALSE(refused.energy || refused.last->energy);
    // Later in an optimization: the last has none, the one before is the best.
    const OutputSummary later = summary_of(job("# hf opt") + four_steps() + made::geometry("Input", "0.5") +
                                           made::failed_scf("-99.9") + made::error_end(502));
    EXPECT_FALSE(later.last->energy);
    EXPECT_EQ(later.best->energy->value, -75.31);
    EXPECT_EQ(later.energy->value, -75.31);
}

TEST(OutputSummary, TakesTheEnergyThatWasAskedFor) {
    const std::string begin = made::geometry() + made::scf("-75.5");
    const struct {
        std::string text;
        double value;
        EnergyKind kind;
    } cases[] = {
        {job("# mp2") + begin + " E2 =    -0.1D+00 EUMP2 =    -0.756D+02\n", -75.6, EnergyKind::MP2},
        {job("# ccsd(t)") + begin +
             " E2 =    -0.1D+00 EUMP2 =    -0.756D+02\n Wavefunction amplitudes converged. E(Corr)=  -75.7\n CCSD(T)= "
             "-0.758D+02\n",
         -75.8, EnergyKind::CCSD_T},
        {job("# hf td") + begin + " Total Energy, E(TD-HF/TD-DFT) =  -75.25\n", -75.25, EnergyKind::TD},
        {job("# oniom(hf:uff)") + begin + " Energy=    2.5E-03 NIter=   0.\n ONIOM: extrapolated energy =    -75.125\n",
         -75.125, EnergyKind::ONIOM},
        {job("# uff") + made::geometry() + " Energy=    2.5E-03 NIter=   0.\n", 0.0025, EnergyKind::MM},
    };
    for (const auto& each : cases) {
        const OutputSummary summary = summary_of(each.text);
        ASSERT_TRUE(summary.energy) << each.text;
        EXPECT_EQ(summary.energy->value, each.value);
        EXPECT_EQ(summary.energy->kind, each.kind);
    }
    // Parts of an ONIOM energy are none, nor is the energy of an earlier job.
    EXPECT_FALSE(summary_of(job("# oniom(hf:uff)") + begin).energy);
    EXPECT_FALSE(summary_of(job("# hf") + begin + made::normal_end() + job("# hf freq")).energy);
}

TEST(OutputSummary, TakesEachPointOfAScanForItself) {
    const auto step = [](int point, int number, const char* energy) {
        return made::optimization_step(number, energy, "0.01", "0." + std::to_string(point) + std::to_string(number), 20,
                                       " on scan point     " + std::to_string(point) + " out of     5");
    };
    const std::string done = " Optimization completed.\n";
    const OutputSummary summary = summary_of(job("# hf opt=modredundant") + step(1, 1, "-75.1") + step(1, 2, "-75.9") +
                                             done + step(2, 1, "-75.2") + step(2, 2, "-75.4") + step(2, 3, "-75.3"));
    ASSERT_EQ(summary.scan.size(), 2U);
    EXPECT_EQ(summary.scan_points, 5);
    EXPECT_TRUE(summary.scan[0].converged);
    EXPECT_EQ(summary.scan[0].energy, -75.9);
    EXPECT_FALSE(summary.scan[1].converged);
    EXPECT_EQ(summary.scan[1].energy, -75.4);
    EXPECT_EQ(summary.scan[1].steps, 3);
    EXPECT_EQ(summary.best->step, 2);
    EXPECT_EQ(summary.best->scan_point, 2);
    const OutputSummary rigid = summary_of(job("# hf scan") + made::geometry("Z-Matrix", "0.1") + made::scf("-75.1") +
                                           made::geometry("Z-Matrix", "0.2") + made::scf("-75.2"));
    ASSERT_EQ(rigid.scan.size(), 2U);
    EXPECT_EQ(rigid.scan[1].energy, -75.2);
}

TEST(OutputSummary, KeepsTheUsersRouteAndTheTotalCharge) {
    const std::string freq = made::internal_step("#N Geom=AllCheck Guess=TCheck SCRF=Check GenChk RHF/STO-3G Freq");
    const OutputSummary summary = summary_of(job("#p hf/sto-3g opt freq") + made::normal_end() + freq + made::normal_end());
    EXPECT_EQ(summary.route, "#p hf/sto-3g opt freq");
    ASSERT_EQ(summary.steps.size(), 2U);
    EXPECT_TRUE(summary.steps[1].is_internal);
    EXPECT_EQ(summary.revision, "C.01");
    EXPECT_EQ(summary.functions, 7);
    EXPECT_EQ(summary.electrons, 10);
    EXPECT_EQ(link0_value(summary, "%mem"), "4GB");
    EXPECT_EQ(link0_value(summary, "%rwf"), "");
    EXPECT_EQ(summary.cpu_seconds, 2 * 658.3);
    const struct {
        const char* lines;
        int charge;
    } charges[] = {
        {" Charge =  2 Multiplicity = 1\n", 2},
        {" Charge =  0 Multiplicity = 2 in fragment      1.\n Charge =  1 Multiplicity = 1 in supermolecule\n", 1},
        {" Charge = -1 Multiplicity = 1 for low   level calculation on real  system.\n Charge =  0 Multiplicity = 1 for "
         "high  level calculation on model system.\n",
         -1},
    };
    for (const auto& each : charges) {
        const OutputSummary one = summary_of(made::head() + made::framed("# hf") + made::molecule("t", each.lines));
        ASSERT_NE(one.total_charge(), nullptr);
        EXPECT_EQ(one.total_charge()->charge, each.charge) << each.lines;
    }
    EXPECT_EQ(summary_of("").total_charge(), nullptr);
}

TEST(OutputSummary, CountsAtomsAndVibrations) {
    const OutputSummary summary =
        summary_of(job("# hf freq") + made::geometry() + made::scf("-75.5") +
                   " Frequencies --   -35.5   10.25\n Frequencies --   100.5   NaN\n Frequencies --   ***** 1.0\n" +
                   made::convergence("0.000001", "YES"));
    ASSERT_TRUE(summary.frequencies);
    EXPECT_EQ(summary.frequencies->count, 3U);
    EXPECT_EQ(summary.frequencies->imaginary, 1U);
    EXPECT_EQ(summary.frequencies->lowest, -35.5);
    EXPECT_EQ(summary.frequencies->is_stationary, true);
    EXPECT_EQ(atom_count(summary), 3U);
    EXPECT_EQ(output_formula(summary), "H2O");
    EXPECT_EQ(atom_count(summary_of("")), 0U);
}

TEST(RouteRequests, FindsKeywordsWithTheirOptions) {
    const struct {
        const char* route;
        const char* keyword;
        const char* options;  // null where it does not stand there
    } cases[] = {
        {"#p hf opt", "opt", ""},
        {"#opt hf", "opt", ""},
        {"# OPT=TS", "opt", "ts"},
        {"# opt=(TS, CalcFC) freq", "opt", "ts, calcfc"},
        {"# opt(ts,maxcycles=(3)) hf", "opt", "ts,maxcycles=(3)"},
        {"# opt = ( ts ) hf", "opt", " ts "},
        {"# opt=(ts", "opt", "ts"},
        {"# opt=", "opt", ""},
        {"# hf scf=(opt)", "opt", nullptr},
        {"# hf popt", "opt", nullptr},
        {"# hf opt-x", "opt", nullptr},
        {"# hf/opt2", "opt", nullptr},
        {"", "opt", nullptr},
    };
    for (const auto& each : cases) {
        const std::optional<std::string> options = options_in(each.route, each.keyword);
        EXPECT_EQ(options.has_value(), each.options != nullptr) << each.route;
        EXPECT_EQ(options.value_or("none"), each.options == nullptr ? "none" : each.options) << each.route;
    }
    EXPECT_TRUE(has_any_option("calcfc,ts", "ts qst2"));
    EXPECT_FALSE(has_any_option("tsx,calcts", "ts qst2"));
}

}  // namespace

// What a visitor is told of an output: each thing in its form, and nothing of what is cut off or only looks alike.
#include <gjf/core/output/output_reader.hpp>
#include <gjf/core/output/output_summary.hpp>

#include "made_outputs.hpp"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace quor::input::gaussian;

// Writes down what it is told, a line each.
class Protocol final : public OutputVisitor {
   public:
    std::string lines;
    std::vector<OutputGeometry> geometries;
    std::vector<OutputModes> modes;

    void on_step(const OutputStep& step) override { add(step.line, step.is_internal ? "internal" : "job"); }
    void on_program(std::size_t line, std::string_view version) override { add(line, version); }
    void on_link0(std::size_t line, std::string_view text) override { add(line, text); }
    void on_route(std::size_t line, std::string_view text) override { add(line, text); }
    void on_title(std::size_t line, std::string_view text) override { add(line, "title " + std::string(text)); }
    void on_charge(const OutputCharge& charge) override {
        add(charge.line, "charge " + std::to_string(charge.charge) + " " + std::to_string(charge.multiplicity) +
                             (charge.of.empty() ? "" : " ") + charge.of);
    }
    void on_geometry(const OutputGeometry& geometry) override {
        constexpr const char* frames[] = {"input", "standard", "zmatrix"};
        add(geometry.line,
            std::string(frames[static_cast<int>(geometry.frame)]) + " " + std::to_string(geometry.atoms.size()));
        geometries.push_back(geometry);
    }
    void on_basis_functions(std::size_t line, int count) override { add(line, "basis " + std::to_string(count)); }
    void on_electrons(std::size_t line, int alpha, int beta) override {
        add(line, "electrons " + std::to_string(alpha) + " " + std::to_string(beta));
    }
    void on_spin(const OutputSpin& spin) override {
        std::ostringstream values;
        values << "spin " << spin.before << " " << spin.after;
        add(spin.line, values.str());
    }
    void on_stability(std::size_t line, bool is_stable) override { add(line, is_stable ? "stable" : "unstable"); }
    void on_path_limit(std::size_t line) override { add(line, "out of points"); }
    void on_energy(const OutputEnergy& energy) override {
        std::ostringstream value;
        value << energy_kind_name(energy.kind) << " " << energy.value << (energy.converged ? "" : " unconverged");
        add(energy.line, value.str());
    }
    void on_failed_scf(std::size_t line) override { add(line, "failed scf"); }
    void on_convergence(const OutputConvergence& table) override {
        std::ostringstream value;
        value << "forces " << table.max_force << " " << table.rms_force << " " << table.max_displacement << " "
              << table.rms_displacement << (table.converged ? " converged" : "");
        add(table.line, value.str());
    }
    void on_optimization_step(const OptimizationStep& step) override {
        add(step.line, "step " + std::to_string(step.step) + " of " + std::to_string(step.max_steps) + " point " +
                           std::to_string(step.scan_point) + " of " + std::to_string(step.scan_points));
    }
    void on_optimization_end(std::size_t line, OptimizationEnd end) override {
        constexpr const char* ends[] = {"completed", "stopped", "aborted"};
        add(line, ends[static_cast<int>(end)]);
    }
    void on_modes(const OutputModes& some) override {
        add(some.line, std::string(some.is_precise ? "precise " : "modes ") + std::to_string(some.frequencies.size()));
        modes.push_back(some);
    }
    void on_path_point(const PathPoint& point) override {
        add(point.line, "point " + std::to_string(point.point) + " path " + std::to_string(point.path));
    }
    void on_times(std::size_t line, const OutputTimes& times) override {
        std::ostringstream value;
        value << "times " << times.cpu_seconds << " " << times.wall_seconds;
        add(line, value.str());
    }
    void on_step_end(const StepEnd& end) override {
        constexpr const char* ends[] = {"normal", "error", "unfinished"};
        add(end.line, std::string(ends[static_cast<int>(end.termination)]) + " " + std::to_string(end.link));
    }

   private:
    void add(std::size_t line, std::string_view text) { lines += std::to_string(line) + ": " + std::string(text) + "\n"; }
};

std::string told(const std::string& text) {
    Protocol protocol;
    read_output(*text_source(text), protocol);
    return protocol.lines;
}

// What is told of lines within a step, without the step itself.
std::string told_within(const std::string& text) {
    std::string lines = told(" Entering Link 1 = /g16/l1.exe PID= 1.\n" + text);
    lines.erase(0, lines.find('\n') + 1);
    lines.erase(lines.rfind('\n', lines.size() - 2) == std::string::npos ? 0 : lines.rfind('\n', lines.size() - 2) + 1);
    return lines;
}

TEST(OutputReader, TellsAJobFromItsHeadToItsEnd) {
    const std::string text = made::head() + made::framed("#P HF/STO-3G freq") + made::molecule() + made::geometry() +
                             made::counts() + made::scf("-74.9659") + made::normal_end();
    EXPECT_EQ(told(text),
              "2: job\n7: ES64L-G16RevC.01\n10: %chk=a.chk\n11: %mem=4GB\n12: %nprocshared=8\n14: #P HF/STO-3G freq\n"
              "18: title water\n21: charge 0 1\n24: input 3\n33: basis 7\n34: electrons 5 5\n36: scf -74.9659\n"
              "39: times 658.3 -1\n40: times -1 86425.5\n41: normal 0\n");
}

TEST(OutputReader, PutsFoldedRoutesTogether) {
    const std::string route =
        "#P B3LYP/6-31+G* Opt=(MaxCycles=100) SCF SCRF=(PCM, Solvent=TetraHydroFuran) geom=connectivity int=ultrafine "
        "empiricaldispersion=gd3bj pop=full density=current scf=xqc";
    EXPECT_NE(told(made::head() + made::framed(route)).find("14: " + route + "\n"), std::string::npos);
    // A blank at the fold is cut off its line.
    const std::string with_blank = "#p hf/sto-3g " + std::string(56, 'x') + " opt";
    ASSERT_EQ(with_blank[69], ' ');
    EXPECT_NE(told(made::head() + made::framed(with_blank)).find(with_blank + "\n"), std::string::npos);
}

TEST(OutputReader, TellsEachStepsEnd) {
    struct Case {
        std::string text;
        const char* ends;
    };
    const std::string job = made::head() + made::framed("# opt freq hf") + made::molecule();
    const std::string freq = made::internal_step("#N Geom=AllCheck Guess=TCheck SCRF=Check GenChk RHF/STO-3G Freq");
    const Case cases[] = {
        {job + made::normal_end(), "job normal 0 "},
        {job + made::normal_end() + freq + made::normal_end(), "job normal 0 internal normal 0 "},
        {job + made::normal_end() + freq, "job normal 0 internal unfinished 0 "},
        {job + made::normal_end() + freq + made::error_end(1002), "job normal 0 internal error 1002 "},
        {job, "job unfinished 101 "},
        {job + made::error_end(502), "job error 502 "},
        {job + made::error_end(9999), "job error 9999 "},
        {job + " (Enter /opt/g16/l301.exe)\n Error termination in NtrErr:\n NtrErr Called from FileIO.\n", "job error 301 "},
        {job + job, "job unfinished 101 job unfinished 101 "},
        {job + made::normal_end() + job + made::error_end(301), "job normal 0 job error 301 "},
        {" SCF Done:  E(RHF) =  -1.5     A.U. after    8 cycles\n", "job unfinished 0 "},
        {"", ""},
        {"no output at all\n# hf\n\nt\n\n0 1\nH 0 0 0\n", ""},
    };
    for (const Case& each : cases) {
        std::istringstream lines(told(each.text));
        std::string ends;
        for (std::string number, word; lines >> number >> word;) {
            std::string rest;
            std::getline(lines, rest);
            const bool is_end = word == "normal" || word == "error" || word == "unfinished";
            ends += is_end ? word + rest + " " : word == "job" || word == "internal" ? word + " " : "";
        }
        EXPECT_EQ(ends, each.ends) << each.text.substr(0, 200);
    }
}

TEST(OutputReader, NamesWhatConvergesByAmplitudesAsItsRouteDoes) {
    const std::string converged = " Wavefunction amplitudes converged. E(Corr)=     -76.75\n";
    for (const auto& [route, kind] : {std::pair("# ccsd/sto-3g", "ccsd"), std::pair("# QCISD(T)/sto-3g", "qcisd"),
                                      std::pair("# bd(t)/sto-3g", "bd"), std::pair("# hf/sto-3g", "ccsd")}) {
        const std::string all = told(made::head() + made::framed(route) + converged);
        EXPECT_NE(all.find(std::string(kind) + " -76.75\n"), std::string::npos) << all;
    }
}

TEST(OutputReader, TakesTheEnergyOfACasscfBehindItsLastIteration) {
    const std::string iterations =
        " ITN=  3 MaxIt= 64 E=    -77.5 DE=-8.08D-04 Acc= 1.00D-05\n"
        " ITN=  4 MaxIt= 64 E=    -77.75 DE=-8.08D-06 Acc= 1.00D-05\n";
    EXPECT_EQ(told_within(iterations), "");
    EXPECT_EQ(told_within(iterations + " ... Do an extra-iteration for final printing\n"), "");
    EXPECT_EQ(told_within(iterations + " ... Do an extra-iteration for final printing\n" + iterations), "5: casscf -77.5\n");
}

TEST(OutputReader, TellsOfSpinStabilityAndTheEndOfPaths) {
    const struct {
        const char* line;
        const char* told;
    } cases[] = {
        {" S**2 before annihilation     0.7525,   after     0.7500", "2: spin 0.7525 0.75\n"},
        {" S**2 before annihilation    12.0207,   after    12.0001", "2: spin 12.0207 12.0001\n"},
        {" S**2 before annihilation     ******,   after    12.0001", ""},
        {" S**2 before annihilation     0.7525", ""},
        {" The wavefunction has an RHF -> UHF instability.", "2: unstable\n"},
        {" The wavefunction has an internal instability.", "2: unstable\n"},
        {" The wavefunction is stable under the perturbations considered.", "2: stable\n"},
        {" The wavefunction is already stable.", "2: stable\n"},
        {" The wavefunction is a text", ""},
        {" Maximum number of steps reached.", "2: out of points\n"},
        {" Maximum number of corrector steps ex", ""},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(told_within(std::string(each.line) + "\n"), each.told) << each.line;
    }
}

TEST(OutputReader, TellsEnergiesByTheirKind) {
    const struct {
        const char* line;
        const char* told;
    } cases[] = {
        {" SCF Done:  E(RB3LYP) =  -308.871350896     A.U. after   10 cycles", "2: scf -308.871\n"},
        {" SCF Done:  E(UB3LYP) =  -2.5     a.u. after   10 cycles", "2: scf -2.5\n"},
        {" SCF Done:  E(RB3LYP) =  ************     A.U. after   10 cycles", ""},
        {" SCF Done:  E(RB3LYP) =  NaN     A.U. after   10 cycles", ""},
        {" E2 =    -0.1318120380D+01 EUMP2 =    -0.45946460725870D+03", "2: mp2 -459.465\n"},
        {" E2 =    -0.1318120380D+01", ""},
        {" E2(B2PLYPD3) =    -0.2D+00 E(B2PLYPD3) =    -0.15125D+03", "2: double-hybrid -151.25\n"},
        {" E3=       -0.1D-01        EUMP3=      -0.765D+02", "2: mp3 -76.5\n"},
        {" E4(SDQ)=  -0.1D-01        UMP4(SDQ)=  -0.7625D+02", "2: mp4 -76.25\n"},
        {" Wavefunction amplitudes converged. E(Corr)=     -76.75", "2: ccsd -76.75\n"},
        {" CCSD(T)= -0.7625D+02", "2: ccsd(t) -76.25\n"},
        {" CCSD(T)", ""},
        {" QCISD(T)= -0.7625D+02", "2: qcisd(t) -76.25\n"},
        {" BD(T)= -0.7625D+02", "2: bd(t) -76.25\n"},
        {" ITN=  4 MaxIt= 64 E=    -77.9675 DE=-8.08D-06 Acc= 1.00D-05", ""},
        {" Total Energy, E(TD-HF/TD-DFT) =  -382.112205281    ", "2: td -382.112\n"},
        {" Total Energy, E(CIS/TDA) =  -382.5", "2: td -382.5\n"},
        {" ONIOM: extrapolated energy =    -401.25", "2: oniom -401.25\n"},
        {" CBS-QB3 (0 K)=              -76.3375   CBS-QB3 Energy=           -76.3346", "2: composite -76.3375\n"},
        {" G4(0 K)=                  -76.25   G4 Energy=                 -76.2", "2: composite -76.25\n"},
        {" G4(MP2) is no energy", ""},
        {" Energy=    2.5E-03 NIter=   0.", "2: mm 0.0025\n"},
        {" Energy= is printed elsewhere", ""},
        {" Predicted change in Energy=-6.864290D-10", ""},
        {" SCF Error SCF Error SCF Error SCF Error", "2: failed scf\n"},
        {" Convergence failure -- run terminated.", "2: failed scf\n"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(told_within(std::string(each.line) + "\n"), each.told) << each.line;
        // Of a line that was cut off no number is told.
        const bool is_number = std::string(each.told).find("failed") == std::string::npos;
        EXPECT_EQ(told_within(each.line), is_number ? "" : each.told) << each.line;
    }
}

TEST(OutputReader, MarksTheEnergyOfAnScfThatDidNotConverge) {
    EXPECT_EQ(told_within(made::failed_scf("-2.5") + made::scf("-3.5")), "5: scf -2.5 unconverged\n8: scf -3.5\n");
}

TEST(OutputReader, ReadsGeometriesWithTheirFrames) {
    const struct {
        const char* frame;
        const char* told;
    } frames[] = {
        {"Input", "2: input 3\n"}, {"Standard", "2: standard 3\n"}, {"Z-Matrix", "2: zmatrix 3\n"}, {"Dipole", ""}};
    for (const auto& each : frames) {
        EXPECT_EQ(told_within(made::geometry(each.frame)), each.told) << each.frame;
    }
    Protocol protocol;
    read_output(*text_source(made::geometry("Input", "-1.234567")), protocol);
    ASSERT_EQ(protocol.geometries.size(), 1U);
    EXPECT_EQ(protocol.geometries[0].atoms[0].number, 8);
    EXPECT_EQ(protocol.geometries[0].atoms[0].position, (std::array<double, 3>{-1.234567, 0, 0.117}));
    EXPECT_EQ(protocol.geometries[0].atoms[2].position, (std::array<double, 3>{0, -0.757, -0.468}));
}

TEST(OutputReader, TellsNoGeometryThatIsCutOff) {
    const std::string table = made::geometry();
    for (std::size_t size = 0; size + 60 < table.size(); ++size) {
        EXPECT_EQ(told_within(table.substr(0, size)), "") << size;
    }
    EXPECT_EQ(told_within(table.substr(0, 500) + "\n" + made::scf("-1.5")), "11: scf -1.5\n");
}

TEST(OutputReader, ReadsTheTableOfConvergence) {
    EXPECT_EQ(told_within(made::convergence("0.000620")), "2: forces 0.01 0.00062 0.02 0.01\n");
    EXPECT_EQ(told_within(made::convergence("0.000020", "YES")), "2: forces 0.01 2e-05 0.02 0.01 converged\n");
    const std::string table = made::convergence("0.000620");
    for (std::size_t size = 0; size + 1 < table.size(); ++size) {
        EXPECT_EQ(told_within(table.substr(0, size)), "") << size;
    }
}

TEST(OutputReader, TellsStepsOfOptimizationsScansAndPaths) {
    const struct {
        const char* line;
        const char* told;
    } cases[] = {
        {" Step number   5 out of a maximum of   50", "2: step 5 of 50 point 0 of 0\n"},
        {" Step number   4 out of a maximum of   50 on scan point     2 out of    13", "2: step 4 of 50 point 2 of 13\n"},
        {" Optimization completed.", "2: completed\n"},
        {" Optimization completed on the basis of negligible forces.", "2: completed\n"},
        {" Optimization stopped.", "2: stopped\n"},
        {" Optimization aborted.", "2: aborted\n"},
        {" Optimization will go on", ""},
        {" Point Number:   7          Path Number:   2", "2: point 7 path 2\n"},
        {" Point Number  3 in FORWARD path direction.", ""},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(told_within(std::string(each.line) + "\n"), each.told) << each.line;
    }
}

TEST(OutputReader, ReadsVibrationsWithTheirModes) {
    const std::string text =
        "                      1                      2\n                      A                      A\n"
        " Frequencies --   -35.5540              1418.9580\n Red. masses --     1.1822                 1.1821\n"
        "  Atom  AN      X      Y      Z        X      Y      Z\n"
        "     1   6     0.08  -0.07   0.07     0.07   0.10   0.03\n"
        "     2   1    -0.36   0.32  -0.36    -0.40  -0.40   0.04\n"
        "                      3\n                      A\n";
    Protocol protocol;
    read_output(*text_source(text), protocol);
    ASSERT_EQ(protocol.modes.size(), 1U);
    EXPECT_EQ(protocol.modes[0].frequencies, (std::vector<double>{-35.554, 1418.958}));
    EXPECT_EQ(protocol.modes[0].atoms, (std::vector<int>{1, 2}));
    EXPECT_EQ(protocol.modes[0].displacements[1][1], (std::array<double, 3>{-0.4, -0.4, 0.04}));
    const std::string precise =
        "       Frequencies ---    53.2048   84.7674\n    Reduced masses ---     3.2273    2.4840\n Coord Atom Element:\n"
        "   1     4     6          0.10000   0.00000\n   2     4     6         -0.20000   0.00000\n"
        "   3     4     6         -0.08076   0.08511\n   1     5     1          0.30000   0.00000\n";
    Protocol second;
    read_output(*text_source(precise), second);
    ASSERT_EQ(second.modes.size(), 1U);
    EXPECT_TRUE(second.modes[0].is_precise);
    EXPECT_EQ(second.modes[0].atoms, (std::vector<int>{4, 5}));
    EXPECT_EQ(second.modes[0].displacements[0][0], (std::array<double, 3>{0.1, -0.2, -0.08076}));
}

TEST(OutputReader, TellsChargesOfLayersAndFragments) {
    const struct {
        const char* line;
        const char* told;
    } cases[] = {
        {" Charge =  0 Multiplicity = 1", "2: charge 0 1\n"},
        {" Charge = -1 Multiplicity = 2", "2: charge -1 2\n"},
        {" Charge =-10 Multiplicity = 1", "2: charge -10 1\n"},
        {" Charge =  1 Multiplicity = 1 in supermolecule", "2: charge 1 1 in supermolecule\n"},
        {" Charge =  0 Multiplicity = 1 for low   level calculation on real  system.",
         "2: charge 0 1 for low   level calculation on real  system.\n"},
        {" Charge=              0.0000 electrons", ""},
        {" Charge =  x Multiplicity = 1", ""},
        {" Charge = Multiplicity", ""},
        {" Charge =  0 Multiplicity =", ""},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(told_within(std::string(each.line) + "\n"), each.told) << each.line;
    }
}

}  // namespace

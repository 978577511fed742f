// Outputs in miniature, in the forms that Gaussian prints: what a step of each kind holds, put together by the tests.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace made {

inline std::string head(const std::string& link0 = " %chk=a.chk\n %mem=4GB\n %nprocshared=8\n") {
    return " Entering Gaussian System, Link 0=g16\n Entering Link 1 = /opt/g16/l1.exe PID=      9995.\n"
           " ---------------------------\n Warning -- of the licence\n ---------------------------\n"
           " ******************************************\n Gaussian 16:  ES64L-G16RevC.01  3-Jul-2019\n"
           "                14-Mar-2024 \n ******************************************\n" +
           link0;
}

/// Text between rows of dashes, folded as routes and titles are.
inline std::string framed(const std::string& text) {
    const std::string dashes = " " + std::string(std::min<std::size_t>(text.size(), 70), '-') + "\n";
    std::string lines;
    for (std::size_t i = 0; i < text.size(); i += 70) {
        std::string line = text.substr(i, 70);
        while (line.back() == ' ') {
            line.pop_back();
        }
        lines += " " + line + "\n";
    }
    return dashes + lines + dashes;
}

inline std::string molecule(const std::string& title = "water",
                            const std::string& charge = " Charge =  0 Multiplicity = 1\n") {
    return " (Enter /opt/g16/l101.exe)\n" + framed(title) + " Symbolic Z-matrix:\n" + charge + " O   0.  0.  0.\n\n";
}

/// A table of an oxygen and two hydrogens; `x` is the oxygen's.
inline std::string geometry(const std::string& frame = "Input", const std::string& x = "0.000000") {
    return "                          " + frame +
           " orientation:                          \n"
           " ---------------------------------------------------------------------\n"
           " Center     Atomic      Atomic             Coordinates (Angstroms)\n"
           " Number     Number       Type             X           Y           Z\n"
           " ---------------------------------------------------------------------\n"
           "      1          8           0        " +
           x +
           "    0.000000    0.117000\n"
           "      2          1           0        0.000000    0.757000   -0.468000\n"
           "      3          1           0        0.000000   -0.757000   -0.468000\n"
           " ---------------------------------------------------------------------\n";
}

inline std::string counts() {
    return "     7 basis functions,    21 primitive gaussians,     7 cartesian basis functions\n"
           "     5 alpha electrons        5 beta electrons\n";
}

inline std::string scf(const std::string& energy) {
    return " (Enter /opt/g16/l502.exe)\n SCF Done:  E(RHF) =  " + energy + "     A.U. after    8 cycles\n";
}

inline std::string failed_scf(const std::string& energy) {
    return " (Enter /opt/g16/l502.exe)\n\n >>>>>>>>>> Convergence criterion not met.\n SCF Done:  E(RHF) =  " + energy +
           "     A.U. after  129 cycles\n            NFock=128  Conv=0.66D-03     -V/T= 2.0078\n";
}

inline std::string convergence(const std::string& rms_force, const char* says = "NO ") {
    return "         Item               Value     Threshold  Converged?\n Maximum Force            0.010000     0.000450    "
           " " +
           std::string(says) + "\n RMS     Force            " + rms_force + "     0.000300     " + says +
           "\n Maximum Displacement     0.020000     0.001800     " + says +
           "\n RMS     Displacement     0.010000     0.001200     " + says + "\n";
}

inline std::string step_number(int step, int most, const std::string& scan = "") {
    return " Berny optimization.\n Step number " + std::to_string(step) + " out of a maximum of " + std::to_string(most) +
           scan + "\n";
}

inline std::string normal_end() {
    return "\n ERROR AND FAILURE ARE WORDS OF QUOTATIONS.\n Job cpu time:       0 days  0 hours 10 minutes 58.3 seconds.\n"
           " Elapsed time:       1 days  0 hours  0 minutes 25.5 seconds.\n"
           " Normal termination of Gaussian 16 at Thu Mar 14 22:24:10 2024.\n";
}

inline std::string error_end(int link) {
    const std::string number = std::to_string(link);
    const std::string by_9999 = link == 9999 ? " Error termination request processed by link 9999.\n" : "";
    return by_9999 + " Error termination via Lnk1e in /opt/g16/l" + number + ".exe at Thu Mar 14 22:23:40 2024.\n" +
           " Job cpu time:       0 days  0 hours  0 minutes  6.0 seconds.\n";
}

inline std::string internal_step(const std::string& route) {
    return " Link1:  Proceeding to internal job step number  2.\n" + framed(route);
}

/// One step of an optimization: geometry, energy, forces.
inline std::string optimization_step(int step, const std::string& energy, const std::string& rms_force, const std::string& x,
                                     int most = 20, const std::string& scan = "") {
    return geometry("Input", x) + geometry("Standard", x) + scf(energy) + " (Enter /opt/g16/l103.exe)\n" +
           step_number(step, most, scan) + convergence(rms_force);
}

}  // namespace made

// Reads energies by their kind, and tells which SCF did not converge.
#include <gjf/core/output/output_scanner.hpp>

#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <cmath>

namespace quor::input::gaussian {

// A value that is no number, as of an overflow, or may be cut off is not told.
void OutputScanner::tell_energy(EnergyKind kind, std::optional<double> value, bool converged) {
    if (value && std::isfinite(*value) && lines_.is_whole()) {
        ensure_step();
        visitor_.on_energy({lines_.number(), kind, *value, converged});
    }
}

// "SCF Done:  E(RB3LYP) =  -308.382757202     A.U. after    4 cycles" stands behind an SCF that failed too.
void OutputScanner::take_scf(std::string_view line) {
    tell_energy(EnergyKind::SCF, value_behind(line, "E("), !has_criterion_missed_);
    has_criterion_missed_ = false;
}

void OutputScanner::take_unconverged(std::string_view /*line*/) { has_criterion_missed_ = true; }

void OutputScanner::take_failed_scf(std::string_view /*line*/) {
    ensure_step();
    visitor_.on_failed_scf(lines_.number());
}

// "Energy=    2.059944177E-03 NIter=   0."
void OutputScanner::take_mm(std::string_view line) {
    if (line.find("NIter=") != std::string_view::npos) {
        tell_energy(EnergyKind::MM, value_behind(line, "Energy"));
    }
}

// "E2 =  -0.13D+01 EUMP2 =  -0.45D+03", of a double hybrid "E2(B2PLYP) =  -0.13D+01 E(B2PLYP) =  -0.45D+03".
void OutputScanner::take_mp2(std::string_view line) {
    const std::size_t second = line.find('E', line.find('='));
    if (second != std::string_view::npos) {
        const std::size_t total = std::min(line.find("EUMP2", second), line.find("E(", second));
        const EnergyKind kind = line.starts_with("E2(") ? EnergyKind::DoubleHybrid : EnergyKind::MP2;
        tell_energy(kind, total == std::string_view::npos ? std::nullopt : value_behind(line.substr(total), "E"));
    }
}

void OutputScanner::take_mp3(std::string_view line) { tell_energy(EnergyKind::MP3, value_behind(line, "EUMP3")); }

// "E4(SDQ)=  -0.1D+00        UMP4(SDQ)=  -0.76D+02": the last is the most complete.
void OutputScanner::take_mp4(std::string_view line) { tell_energy(EnergyKind::MP4, value_behind(line, "UMP4(")); }

void OutputScanner::take_amplitudes(std::string_view line) { tell_energy(amplitudes_, value_behind(line, "E(Corr)")); }

void OutputScanner::take_triples(std::string_view line) { tell_energy(EnergyKind::CCSD_T, value_behind(line, "(T)")); }

void OutputScanner::take_qcisd_triples(std::string_view line) {
    tell_energy(EnergyKind::QCISD_T, value_behind(line, "(T)"));
}

void OutputScanner::take_bd_triples(std::string_view line) { tell_energy(EnergyKind::BD_T, value_behind(line, "(T)")); }

// "ITN=  4 MaxIt= 64 E=   -77.9675137390 DE=-8.08D-06 Acc= 1.00D-05": of the iterations of a CASSCF the one behind their end
// counts.
void OutputScanner::take_last_iteration(std::string_view /*line*/) { is_last_iteration_ = true; }

void OutputScanner::take_casscf(std::string_view line) {
    const std::size_t energy = line.find(" E=");
    if (is_last_iteration_ && energy != std::string_view::npos) {
        tell_energy(EnergyKind::CASSCF, value_behind(line.substr(energy), "E"));
        is_last_iteration_ = false;
    }
}

// "S**2 before annihilation     0.7525,   after     0.7500"
void OutputScanner::take_spin(std::string_view line) {
    const auto number_behind_word = [line](std::string_view word) -> std::optional<double> {
        const std::size_t found = line.find(word);
        if (found == std::string_view::npos) {
            return std::nullopt;
        }
        const std::string_view rest = trim_view(line.substr(found + word.size()));
        return to_number(rest.substr(0, rest.find_first_of(" ,")));
    };
    const std::optional<double> before = number_behind_word("annihilation");
    const std::optional<double> after = number_behind_word("after");
    if (before && after && lines_.is_whole()) {
        ensure_step();
        visitor_.on_spin({lines_.number(), *before, *after});
    }
}

// "The wavefunction has an RHF -> UHF instability.", "... is stable under the perturbations considered.", "... is already
// stable."
void OutputScanner::take_stability(std::string_view line) {
    const bool is_unstable = line.find("instability") != std::string_view::npos;
    if (is_unstable || line.find(" stable") != std::string_view::npos) {
        ensure_step();
        visitor_.on_stability(lines_.number(), !is_unstable);
    }
}

void OutputScanner::take_path_limit(std::string_view /*line*/) {
    ensure_step();
    visitor_.on_path_limit(lines_.number());
}

void OutputScanner::take_oniom(std::string_view line) { tell_energy(EnergyKind::ONIOM, value_behind(line, "energy")); }

void OutputScanner::take_excited(std::string_view line) { tell_energy(EnergyKind::TD, value_behind(line, "E(")); }

// "CBS-QB3 (0 K)=   -76.337   CBS-QB3 Energy=  -76.334", "G4(0 K)= ...".
void OutputScanner::take_composite(std::string_view line) {
    tell_energy(EnergyKind::Composite, value_behind(line, "(0 K)"));
}

}  // namespace quor::input::gaussian

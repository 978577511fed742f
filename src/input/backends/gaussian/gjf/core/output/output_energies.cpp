// Reads energies by their kind, and tells which SCF did not converge.
#include <gjf/core/output/output_scanner.hpp>

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
        tell_energy(EnergyKind::MP2, total == std::string_view::npos ? std::nullopt : value_behind(line.substr(total), "E"));
    }
}

void OutputScanner::take_mp3(std::string_view line) { tell_energy(EnergyKind::MP3, value_behind(line, "EUMP3")); }

// "E4(SDQ)=  -0.1D+00        UMP4(SDQ)=  -0.76D+02": the last is the most complete.
void OutputScanner::take_mp4(std::string_view line) { tell_energy(EnergyKind::MP4, value_behind(line, "UMP4(")); }

void OutputScanner::take_amplitudes(std::string_view line) { tell_energy(EnergyKind::CCSD, value_behind(line, "E(Corr)")); }

void OutputScanner::take_triples(std::string_view line) { tell_energy(EnergyKind::CCSD_T, value_behind(line, "(T)")); }

void OutputScanner::take_oniom(std::string_view line) { tell_energy(EnergyKind::ONIOM, value_behind(line, "energy")); }

void OutputScanner::take_excited(std::string_view line) { tell_energy(EnergyKind::TD, value_behind(line, "E(")); }

// "CBS-QB3 (0 K)=   -76.337   CBS-QB3 Energy=  -76.334", "G4(0 K)= ...".
void OutputScanner::take_composite(std::string_view line) {
    tell_energy(EnergyKind::Composite, value_behind(line, "(0 K)"));
}

}  // namespace quor::input::gaussian

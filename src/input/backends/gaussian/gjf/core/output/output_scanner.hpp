// The reader's state and what it does with each kind of line. Private to the room.
#pragma once

#include <gjf/core/output/output_lines.hpp>
#include <gjf/core/output/output_reader.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quor::input::gaussian {

/// Returns the number behind the first "=" at or behind `label`, or nothing. Stars, as of an overflow, are no number.
std::optional<double> value_behind(std::string_view line, std::string_view label);

class OutputScanner {
   public:
    OutputScanner(OutputLines& lines, OutputVisitor& visitor) : lines_(lines), visitor_(visitor) {}
    void run();

    // What is done with a line that begins with the words of a row of the table in output_scanner.cpp.
    void begin_job(std::string_view line);
    void begin_internal_step(std::string_view line);
    void take_program(std::string_view line);
    void take_link0(std::string_view line);
    void take_dashes(std::string_view line);
    void take_link(std::string_view line);
    void take_charge(std::string_view line);
    void take_counts(std::string_view line);
    void take_normal_end(std::string_view line);
    void take_error_end(std::string_view line);
    void take_cpu_time(std::string_view line);
    void take_wall_time(std::string_view line);

    void take_input_orientation(std::string_view line);
    void take_standard_orientation(std::string_view line);
    void take_zmatrix_orientation(std::string_view line);
    void take_convergence(std::string_view line);
    void take_modes(std::string_view line);

    void take_scf(std::string_view line);
    void take_unconverged(std::string_view line);
    void take_failed_scf(std::string_view line);
    void take_mm(std::string_view line);
    void take_mp2(std::string_view line);
    void take_mp3(std::string_view line);
    void take_mp4(std::string_view line);
    void take_amplitudes(std::string_view line);
    void take_triples(std::string_view line);
    void take_qcisd_triples(std::string_view line);
    void take_bd_triples(std::string_view line);
    void take_last_iteration(std::string_view line);
    void take_casscf(std::string_view line);
    void take_spin(std::string_view line);
    void take_stability(std::string_view line);
    void take_path_limit(std::string_view line);
    void take_oniom(std::string_view line);
    void take_excited(std::string_view line);
    void take_composite(std::string_view line);
    void take_step_number(std::string_view line);
    void take_optimization_end(std::string_view line);
    void take_path_point(std::string_view line);

   private:
    void take_line();
    bool next();
    void begin_step(bool is_internal);
    void end_step();
    void ensure_step();
    void end_at(StepTermination termination, int link);
    void gather(std::string_view line);
    void finish_gathering();
    void take_geometry(OutputFrame frame);
    void take_displacements(OutputModes& modes);
    void tell_energy(EnergyKind kind, std::optional<double> value, bool converged = true);
    void tell_time(std::string_view line, double OutputTimes::*time);

    OutputLines& lines_;
    OutputVisitor& visitor_;
    bool is_taken_ = true;  // whether the current line was handled
    bool is_in_step_ = false;
    StepEnd end_;
    int entered_link_ = 0;
    bool has_told_link_ = false;  // the end itself named its link
    // What stands between two rows of dashes in the heading of a step: first the route, then the title.
    enum class Heading : std::uint8_t { Route, Title, Done } heading_ = Heading::Done;
    bool is_gathering_ = false;
    std::string gathered_;
    std::size_t gathered_line_ = 0;
    std::size_t gathered_lines_ = 0;
    std::size_t last_width_ = 0;
    bool has_criterion_missed_ = false;
    bool is_last_iteration_ = false;            // the next one of a CASSCF is that of the converged orbitals
    EnergyKind amplitudes_ = EnergyKind::CCSD;  // what the step's route calls what converges by amplitudes
};

}  // namespace quor::input::gaussian

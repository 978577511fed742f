// Reads what Gaussian printed, or a formatted checkpoint, line by line, and tells a visitor what stands there.
//
// Nothing is kept of an output but the block that is being read, so memory does not grow with it. Lines count from 1;
// lengths are in ångström, energies in hartree, as printed.
#pragma once

#include <core/export.hpp>
#include <gjf/core/output/output_source.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// A job of the user's, or a step that Gaussian made of one, such as the frequencies after an optimization.
struct OutputStep {
    std::size_t line = 0;
    bool is_internal = false;  ///< Gaussian's own step, with a route that nobody wrote
};

enum class OutputFrame : std::uint8_t { Input, Standard, ZMatrix };

/// One row of a table of coordinates.
struct OutputAtom {
    int number = 0;  ///< atomic number; -1 for a dummy atom, -2 for a translation vector, 0 for a ghost
    std::array<double, 3> position{};
};

struct OutputGeometry {
    std::size_t line = 0;  ///< of its heading
    OutputFrame frame = OutputFrame::Input;
    std::vector<OutputAtom> atoms;
};

/// One line of charge and multiplicity; ONIOM and fragments have several.
struct OutputCharge {
    std::size_t line = 0;
    int charge = 0;
    int multiplicity = 1;
    std::string of;  ///< what is printed behind them, as in "in supermolecule"; mostly empty
};

/// In the order of worth: what a step was asked for is the last of them that it printed.
enum class EnergyKind : std::uint8_t {
    MM,
    SCF,
    CASSCF,
    MP2,
    DoubleHybrid,  ///< with the part that is added behind the SCF
    MP3,
    MP4,
    CCSD,  ///< and CCD
    QCISD,
    BD,
    CCSD_T,
    QCISD_T,
    BD_T,
    TD,
    ONIOM,
    Composite
};

struct OutputEnergy {
    std::size_t line = 0;
    EnergyKind kind = EnergyKind::SCF;
    double value = 0;
    bool converged = true;  ///< false for an SCF that ran out of cycles: its value is no energy
};

/// The table of forces and displacements, in atomic units.
struct OutputConvergence {
    std::size_t line = 0;
    double max_force = 0;
    double rms_force = 0;
    double max_displacement = 0;
    double rms_displacement = 0;
    bool converged = false;  ///< whether all rows say YES
};

/// Which step of an optimization this is, and of which point of a relaxed scan.
struct OptimizationStep {
    std::size_t line = 0;
    int step = 0;
    int max_steps = 0;
    int scan_point = 0;  ///< 0 where there is no scan
    int scan_points = 0;
};

enum class OptimizationEnd : std::uint8_t { Completed, Stopped, Aborted };

/// Some vibrations: as many as stand beside each other.
struct OutputModes {
    std::size_t line = 0;
    bool is_precise = false;          ///< from the table with five decimals, which FREQ=HPMODES prints before the other
    std::vector<double> frequencies;  ///< in 1/cm; below 0 for imaginary ones
    std::vector<int> atoms;           ///< from 1, those that the rows name
    /// For each vibration, a displacement of each of `atoms`.
    std::vector<std::vector<std::array<double, 3>>> displacements;
};

/// A converged point of a reaction path.
struct PathPoint {
    std::size_t line = 0;
    int point = 0;
    int path = 0;
};

/// What an open shell has of S**2, before and after the next spin was projected out.
struct OutputSpin {
    std::size_t line = 0;
    double before = 0;
    double after = 0;
};

/// What a step asked for and used; 0 and empty where it is not told.
struct OutputTimes {
    double cpu_seconds = -1;
    double wall_seconds = -1;
};

/// What a formatted checkpoint tells beside what outputs tell too.
struct CheckpointFacts {
    std::string kind;    ///< of the job that wrote last, as in "FOpt"
    std::string method;  ///< as in "RB3LYP"
    std::string basis;
    bool has_force_constants = false;
    bool is_whole = true;       ///< false where the file ends within an array
    std::optional<int> status;  ///< 1 ended normally, 3 out of steps, -1 died; absent before Gaussian 16
};

enum class StepTermination : std::uint8_t { Normal, Error, Unfinished };

/// How a step ended; `link` is the link in which it did, 0 where none is told.
struct StepEnd {
    std::size_t line = 0;
    StepTermination termination = StepTermination::Unfinished;
    int link = 0;
};

/// Is told what an output holds, in its order. Texts are valid during the call alone.
class QUOR_GJF_API OutputVisitor {
   public:
    OutputVisitor() = default;
    OutputVisitor(const OutputVisitor&) = delete;
    OutputVisitor& operator=(const OutputVisitor&) = delete;
    virtual ~OutputVisitor() = default;

    /// Every line, before anything else is told of it.
    virtual void on_line(std::size_t line, std::string_view text);
    virtual void on_step(const OutputStep& step);
    /// As in "ES64L-G16RevC.01".
    virtual void on_program(std::size_t line, std::string_view version);
    virtual void on_link0(std::size_t line, std::string_view text);
    /// The route as it was given, put together again where it was folded.
    virtual void on_route(std::size_t line, std::string_view text);
    virtual void on_title(std::size_t line, std::string_view text);
    virtual void on_charge(const OutputCharge& charge);
    virtual void on_geometry(const OutputGeometry& geometry);
    virtual void on_basis_functions(std::size_t line, int count);
    virtual void on_electrons(std::size_t line, int alpha, int beta);
    virtual void on_energy(const OutputEnergy& energy);
    /// The SCF that was told of last failed after all: its energy is none.
    virtual void on_failed_scf(std::size_t line);
    virtual void on_convergence(const OutputConvergence& table);
    virtual void on_optimization_step(const OptimizationStep& step);
    virtual void on_optimization_end(std::size_t line, OptimizationEnd end);
    virtual void on_modes(const OutputModes& modes);
    virtual void on_path_point(const PathPoint& point);
    /// As many points were followed as asked for.
    virtual void on_path_limit(std::size_t line);
    virtual void on_spin(const OutputSpin& spin);
    /// What an analysis of the wavefunction's stability found.
    virtual void on_stability(std::size_t line, bool is_stable);
    virtual void on_times(std::size_t line, const OutputTimes& times);
    /// Of a formatted checkpoint alone.
    virtual void on_checkpoint(const CheckpointFacts& facts);
    /// Once for every step, before the next one and at the end.
    virtual void on_step_end(const StepEnd& end);
};

/// Reads an output to its end. Any bytes are taken; throws what the source throws, and what the visitor does.
///
/// A formatted checkpoint is told as one step with a geometry in standard orientation, in ångström; of one that cannot be
/// read `OutputError` is thrown.
QUOR_GJF_API void read_output(OutputSource& source, OutputVisitor& visitor);

}  // namespace quor::input::gaussian

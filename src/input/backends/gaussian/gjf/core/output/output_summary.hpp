// What an output comes to: its steps, how it ended, the last and the best geometry, energies, vibrations, resources.
//
// Of the geometries two are kept, so memory does not grow with the output but by a record for each point of a scan.
#pragma once

#include <core/export.hpp>
#include <gjf/core/output/output_reader.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// A step, with the route that it printed and how it ended.
struct SummarizedStep {
    std::size_t line = 0;
    bool is_internal = false;
    std::string route;
    StepEnd end;
};

/// A geometry at which something was calculated, with what was found there.
struct OutputPoint {
    /// In the frame of the input where that was printed, else in another.
    OutputGeometry geometry;
    /// The same in standard orientation, in which vibrations are given; empty where it was not printed.
    OutputGeometry standard;
    int step = 0;  ///< of the optimization, from 1; 0 outside one
    int scan_point = 0;
    std::optional<OutputEnergy> energy;  ///< absent unless finished: of an SCF that did not converge it is none
    std::optional<double> rms_force;     ///< in atomic units
};

/// A point of a scan: its best step.
struct ScanPoint {
    int point = 0;
    int steps = 0;
    std::size_t line = 0;  ///< of the geometry
    std::optional<double> energy;
    bool converged = false;
};

struct OptimizationSummary {
    /// Absent while it is under way.
    std::optional<OptimizationEnd> end;
    std::size_t end_line = 0;
    int steps = 0;
    int max_steps = 0;
    bool converged = false;  ///< whether the last table of forces and displacements says YES everywhere
    bool is_saddle = false;  ///< whether a saddle was looked for
    /// Whether no step is better than the first.
    bool has_no_progress = false;
};

struct FrequencySummary {
    std::size_t line = 0;
    std::size_t count = 0;
    std::size_t imaginary = 0;
    double lowest = 0;  ///< in 1/cm
    /// Whether the forces at this geometry are those of a stationary point; absent where no table was printed.
    std::optional<bool> is_stationary;
};

struct OutputSummary {
    std::string program;   ///< as in "ES64L-G16RevC.01"; empty when none was printed
    std::string revision;  ///< as in "C.01"
    std::vector<SummarizedStep> steps;
    std::vector<std::string> link0;  ///< of the last job
    std::string route;               ///< the user's last, never one that Gaussian wrote
    std::string title;
    std::vector<OutputCharge> charges;  ///< of the last step that printed any; several for layers and fragments
    std::optional<int> functions;
    std::optional<int> electrons;
    std::optional<OutputPoint> last;
    std::optional<OutputPoint> best;     ///< absent without an optimization, or when no step of it has a finished energy
    std::optional<OutputEnergy> energy;  ///< of the last job: the last finished one
    std::optional<OptimizationSummary> optimization;
    std::optional<FrequencySummary> frequencies;
    std::vector<ScanPoint> scan;
    int scan_points = 0;              ///< that were asked for; 0 where this is not told
    std::optional<OutputSpin> spin;   ///< of the last open shell
    std::size_t unstable_line = 0;    ///< where an instability is told of that none later takes back
    std::size_t path_limit_line = 0;  ///< where a path is said to have run out of points
    std::size_t path_points = 0;
    int paths = 0;
    std::optional<CheckpointFacts> checkpoint;  ///< of a formatted checkpoint alone
    double cpu_seconds = 0;                     ///< of all steps that told it
    double wall_seconds = 0;
    std::size_t lines = 0;

    /// How the last step ended; unfinished when there is none.
    StepTermination termination() const noexcept {
        return steps.empty() ? StepTermination::Unfinished : steps.back().end.termination;
    }
    /// The line that counts for the whole: of a supermolecule, or of ONIOM's real system; null when there is none.
    QUOR_GJF_API const OutputCharge* total_charge() const noexcept;
};

/// Gathers what it is told. A visitor that does more may be derived from it, and passes on what it overrides.
class QUOR_GJF_API SummaryVisitor : public OutputVisitor {
   public:
    SummaryVisitor();
    ~SummaryVisitor() override;

    void on_line(std::size_t line, std::string_view text) override;
    void on_step(const OutputStep& step) override;
    void on_program(std::size_t line, std::string_view version) override;
    void on_link0(std::size_t line, std::string_view text) override;
    void on_route(std::size_t line, std::string_view text) override;
    void on_title(std::size_t line, std::string_view text) override;
    void on_charge(const OutputCharge& charge) override;
    void on_geometry(const OutputGeometry& geometry) override;
    void on_basis_functions(std::size_t line, int count) override;
    void on_electrons(std::size_t line, int alpha, int beta) override;
    void on_energy(const OutputEnergy& energy) override;
    void on_failed_scf(std::size_t line) override;
    void on_convergence(const OutputConvergence& table) override;
    void on_optimization_step(const OptimizationStep& step) override;
    void on_optimization_end(std::size_t line, OptimizationEnd end) override;
    void on_modes(const OutputModes& modes) override;
    void on_path_point(const PathPoint& point) override;
    void on_path_limit(std::size_t line) override;
    void on_spin(const OutputSpin& spin) override;
    void on_stability(std::size_t line, bool is_stable) override;
    void on_times(std::size_t line, const OutputTimes& times) override;
    void on_checkpoint(const CheckpointFacts& facts) override;
    void on_step_end(const StepEnd& end) override;

    /// What was gathered; whole when the output was read to its end.
    const OutputSummary& summary() const noexcept { return summary_; }

   protected:
    /// Is told each point of the last kind of work when nothing more comes to it: before the next, or at the step's end.
    virtual void on_point(const OutputPoint& point);

   private:
    void finish_point();
    void take_over_from_last();
    void compare_with_best();
    void note_scan_point();

    OutputSummary summary_;
    OutputPoint point_;
    bool is_used_ = false;  // something was calculated at the point, so that a geometry begins another
    bool has_failed_scf_ = false;
    bool has_modes_ = false;
    bool has_precise_modes_ = false;
    bool has_charges_ = false;  // of this step of the output
    bool asks_oniom_ = false;
    bool asks_scan_ = false;
    bool asks_optimization_ = false;
    bool asks_saddle_ = false;
    bool has_begun_optimization_ = false;
    int first_step_ = 0;  // the first that can be compared
};

/// The words for them: "normal", "error", "unfinished"; "input", "standard", "zmatrix"; "scf", "ccsd(t)", ...
QUOR_GJF_API const char* termination_name(StepTermination termination) noexcept;
QUOR_GJF_API const char* output_frame_name(OutputFrame frame) noexcept;
QUOR_GJF_API const char* energy_kind_name(EnergyKind kind) noexcept;

/// Returns how many atoms the last geometry has, without dummy atoms, ghosts and translation vectors, and their formula in
/// Hill's order; empty without any.
QUOR_GJF_API std::size_t atom_count(const OutputSummary& summary);
QUOR_GJF_API std::string output_formula(const OutputSummary& summary);

/// Returns the value of a Link 0 line (as in "%mem", in lower case) of the last job; empty when it has none.
QUOR_GJF_API std::string link0_value(const OutputSummary& summary, std::string_view key);

/// Reads an output to its end.
QUOR_GJF_API OutputSummary summarize_output(OutputSource& source);

}  // namespace quor::input::gaussian

// Gathers what an output comes to. A point is a geometry with what is calculated there; it ends where the next begins.
#include <gjf/core/output/output_summary.hpp>

#include <gjf/core/output/route_requests.hpp>

#include <algorithm>
#include <cmath>
#include <utility>

namespace quor::input::gaussian {
namespace {

// Whether two tables hold the same atoms in the same places, as when the optimizer prints its last geometry once more.
bool is_same_place(const OutputGeometry& one, const OutputGeometry& other) {
    constexpr double printed = 1.5e-6;
    return one.frame == other.frame && std::equal(one.atoms.begin(), one.atoms.end(), other.atoms.begin(), other.atoms.end(),
                                                  [](const OutputAtom& a, const OutputAtom& b) {
                                                      return a.number == b.number &&
                                                             std::abs(a.position[0] - b.position[0]) < printed &&
                                                             std::abs(a.position[1] - b.position[1]) < printed &&
                                                             std::abs(a.position[2] - b.position[2]) < printed;
                                                  });
}

// A minimum has the lowest energy, a saddle the smallest forces.
bool is_better_point(const OutputPoint& point, const OutputPoint& than, bool is_saddle) {
    if (is_saddle && (point.rms_force || than.rms_force)) {
        return point.rms_force && (!than.rms_force || *point.rms_force < *than.rms_force);
    }
    return point.energy->kind >= than.energy->kind && point.energy->value < than.energy->value;
}

}  // namespace

const OutputCharge* OutputSummary::total_charge() const noexcept {
    for (const char* const whole : {"supermolecule", "real"}) {
        for (const OutputCharge& each : charges) {
            if (each.of.find(whole) != std::string::npos) {
                return &each;
            }
        }
    }
    return charges.empty() ? nullptr : charges.data();
}

SummaryVisitor::SummaryVisitor() = default;
SummaryVisitor::~SummaryVisitor() = default;
void SummaryVisitor::on_point(const OutputPoint& /*point*/) {}

void SummaryVisitor::on_line(std::size_t line, std::string_view /*text*/) { summary_.lines = line; }

void SummaryVisitor::on_step(const OutputStep& step) {
    finish_point();
    summary_.steps.push_back({step.line, step.is_internal, {}, {}});
    has_charges_ = false;
    asks_oniom_ = asks_scan_ = asks_optimization_ = asks_saddle_ = has_begun_optimization_ = false;
    if (!step.is_internal) {
        summary_.energy.reset();
        summary_.link0.clear();
        summary_.title.clear();
    }
}

void SummaryVisitor::on_program(std::size_t /*line*/, std::string_view version) {
    summary_.program = version;
    const std::size_t found = version.find("Rev");
    summary_.revision = found == std::string_view::npos ? std::string() : std::string(version.substr(found + 3));
}

void SummaryVisitor::on_link0(std::size_t /*line*/, std::string_view text) { summary_.link0.emplace_back(text); }

void SummaryVisitor::on_route(std::size_t /*line*/, std::string_view text) {
    summary_.steps.back().route = text;
    if (!summary_.steps.back().is_internal) {
        summary_.route = text;
    }
    for (const char* const word : {"opt", "fopt", "popt", "optimize"}) {
        if (const std::optional<std::string> options = options_in(text, word)) {
            asks_optimization_ = true;
            asks_saddle_ = asks_saddle_ || has_any_option(*options, "ts saddle qst2 qst3");
        }
    }
    asks_scan_ = options_in(text, "scan").has_value();
    asks_oniom_ = options_in(text, "oniom").has_value();
}

void SummaryVisitor::on_title(std::size_t /*line*/, std::string_view text) { summary_.title = text; }

void SummaryVisitor::on_charge(const OutputCharge& charge) {
    if (!std::exchange(has_charges_, true)) {
        summary_.charges.clear();
    }
    summary_.charges.push_back(charge);
}

void SummaryVisitor::on_geometry(const OutputGeometry& geometry) {
    const bool is_standard = geometry.frame == OutputFrame::Standard;
    const bool is_there = is_standard ? !point_.standard.atoms.empty() : !point_.geometry.atoms.empty();
    if (is_used_ || is_there) {
        finish_point();
    }
    if (is_standard) {
        point_.standard = geometry;
    }
    if (!is_standard || point_.geometry.atoms.empty()) {
        point_.geometry = geometry;
    }
}

void SummaryVisitor::on_basis_functions(std::size_t /*line*/, int count) { summary_.functions = count; }

void SummaryVisitor::on_electrons(std::size_t /*line*/, int alpha, int beta) { summary_.electrons = alpha + beta; }

// What a step was asked for is printed last: values of other kinds lead to it. Of ONIOM all others are parts.
void SummaryVisitor::on_energy(const OutputEnergy& energy) {
    is_used_ = true;
    has_failed_scf_ = !energy.converged;
    if (!energy.converged) {
        point_.energy.reset();
    } else if (!asks_oniom_ || energy.kind >= EnergyKind::ONIOM) {
        const bool is_worth_less = point_.energy && point_.energy->kind > energy.kind;
        point_.energy = is_worth_less ? point_.energy : energy;
    }
}

void SummaryVisitor::on_failed_scf(std::size_t /*line*/) {
    is_used_ = has_failed_scf_ = true;
    point_.energy.reset();
}

void SummaryVisitor::on_convergence(const OutputConvergence& table) {
    is_used_ = true;
    point_.rms_force = table.rms_force;
    if (has_modes_ && summary_.frequencies) {
        summary_.frequencies->is_stationary = table.converged;
    }
    if (has_begun_optimization_ && summary_.optimization) {
        summary_.optimization->converged = table.converged;
    }
}

// Frequencies alone print the table too, as step 1 of 2.
void SummaryVisitor::on_optimization_step(const OptimizationStep& step) {
    if (!asks_optimization_ && step.max_steps <= 2) {
        return;
    }
    if (!std::exchange(has_begun_optimization_, true)) {
        summary_.optimization.emplace();
        summary_.optimization->is_saddle = asks_saddle_;
        summary_.best.reset();
        summary_.scan.clear();
    }
    is_used_ = true;
    point_.step = step.step;
    point_.scan_point = step.scan_point;
    summary_.scan_points = step.scan_points;
    summary_.optimization->steps = step.step;
    summary_.optimization->max_steps = step.max_steps;
    summary_.optimization->end.reset();
}

void SummaryVisitor::on_optimization_end(std::size_t line, OptimizationEnd end) {
    if (has_begun_optimization_) {
        summary_.optimization->end = end;
        summary_.optimization->end_line = line;
    }
    if (point_.scan_point > 0 && end == OptimizationEnd::Completed) {
        note_scan_point();
        summary_.scan.back().converged = true;
    }
}

// Tables of the same vibrations follow each other where more decimals were asked for.
void SummaryVisitor::on_modes(const OutputModes& modes) {
    if (!std::exchange(has_modes_, true)) {
        summary_.frequencies.emplace().line = modes.line;
        has_precise_modes_ = modes.is_precise;
    }
    is_used_ = true;
    if (has_precise_modes_ != modes.is_precise) {
        return;
    }
    FrequencySummary& all = *summary_.frequencies;
    for (const double frequency : modes.frequencies) {
        all.lowest = all.count == 0 ? frequency : std::min(all.lowest, frequency);
        all.imaginary += frequency < 0 ? 1 : 0;
        ++all.count;
    }
}

void SummaryVisitor::on_path_point(const PathPoint& point) {
    ++summary_.path_points;
    summary_.paths = std::max(summary_.paths, point.path);
}

void SummaryVisitor::on_path_limit(std::size_t line) { summary_.path_limit_line = line; }

void SummaryVisitor::on_spin(const OutputSpin& spin) { summary_.spin = spin; }

void SummaryVisitor::on_stability(std::size_t line, bool is_stable) { summary_.unstable_line = is_stable ? 0 : line; }

void SummaryVisitor::on_times(std::size_t /*line*/, const OutputTimes& times) {
    summary_.cpu_seconds += std::max(times.cpu_seconds, 0.0);
    summary_.wall_seconds += std::max(times.wall_seconds, 0.0);
}

void SummaryVisitor::on_checkpoint(const CheckpointFacts& facts) { summary_.checkpoint = facts; }

void SummaryVisitor::on_step_end(const StepEnd& end) {
    finish_point();
    summary_.steps.back().end = end;
}

void SummaryVisitor::take_over_from_last() {
    point_.step = summary_.last->step;
    point_.scan_point = summary_.last->scan_point;
    point_.energy = summary_.last->energy;
    point_.rms_force = point_.rms_force ? point_.rms_force : summary_.last->rms_force;
    if (point_.standard.atoms.empty()) {
        point_.standard = summary_.last->standard;
    }
}

void SummaryVisitor::finish_point() {
    if (point_.energy) {
        summary_.energy = point_.energy;
    }
    if (!point_.geometry.atoms.empty()) {
        if (!point_.energy && !has_failed_scf_ && summary_.last && is_same_place(point_.geometry, summary_.last->geometry)) {
            take_over_from_last();
        } else if (is_used_) {
            compare_with_best();
            note_scan_point();
            on_point(point_);
        }
        summary_.last = std::move(point_);
    }
    point_ = {};
    is_used_ = has_failed_scf_ = has_modes_ = has_precise_modes_ = false;
}

// A step that died before its number was printed counts when its energy was finished. Each point of a scan is for itself.
void SummaryVisitor::compare_with_best() {
    if (!has_begun_optimization_ || !point_.energy) {
        return;
    }
    std::optional<OutputPoint>& best = summary_.best;
    if (point_.step == 0) {
        const bool is_behind_end = summary_.optimization->end.has_value();
        if (is_behind_end && summary_.scan.empty()) {
            return;
        }
        point_.step = is_behind_end ? 1 : summary_.optimization->steps + 1;
        point_.scan_point = summary_.scan.empty() ? 0 : summary_.scan.back().point + (is_behind_end ? 1 : 0);
    }
    if (!best || best->scan_point != point_.scan_point) {
        best = point_;
        first_step_ = point_.step;
    } else if (is_better_point(point_, *best, summary_.optimization->is_saddle)) {
        best = point_;
    }
    summary_.optimization->has_no_progress = best->step == first_step_ && point_.step > first_step_;
}

void SummaryVisitor::note_scan_point() {
    std::vector<ScanPoint>& scan = summary_.scan;
    if (point_.scan_point == 0 && asks_scan_ && !asks_optimization_) {
        point_.scan_point = static_cast<int>(scan.size()) + 1;
    }
    if (point_.scan_point == 0) {
        return;
    }
    if (scan.empty() || scan.back().point != point_.scan_point) {
        scan.emplace_back().point = point_.scan_point;
    }
    ScanPoint& point = scan.back();
    point.steps = std::max(point.steps, point_.step);
    if (point_.energy && (!point.energy || point_.energy->value < *point.energy)) {
        point.energy = point_.energy->value;
        point.line = point_.geometry.line;
    }
}

OutputSummary summarize_output(OutputSource& source) {
    SummaryVisitor visitor;
    read_output(source, visitor);
    return visitor.summary();
}

}  // namespace quor::input::gaussian

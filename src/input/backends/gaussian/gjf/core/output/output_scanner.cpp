// Finds out by the first words of a line what stands there, and reads what frames a step: head, route, title, end.
#include <gjf/core/output/output_scanner.hpp>

#include <gjf/core/output/formatted_checkpoint.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <array>
#include <iterator>
#include <span>

namespace quor::input::gaussian {
namespace {

struct Row {
    std::string_view begin;
    void (OutputScanner::*take)(std::string_view line);
};

// Rows whose words begin alike stand beside each other: the first letter leads to the first of them.
constexpr Row rows[] = {
    {"%", &OutputScanner::take_link0},
    {"(Enter ", &OutputScanner::take_link},
    {"-----", &OutputScanner::take_dashes},
    {"... Do an extra-iteration for final printing", &OutputScanner::take_last_iteration},
    {">>>>>>>>>> Convergence criterion not met", &OutputScanner::take_unconverged},
    {"BD(T)=", &OutputScanner::take_bd_triples},
    {"CBS-", &OutputScanner::take_composite},
    {"CCSD(T)=", &OutputScanner::take_triples},
    {"Charge =", &OutputScanner::take_charge},
    {"Convergence failure", &OutputScanner::take_failed_scf},
    {"E2 =", &OutputScanner::take_mp2},
    {"E2(", &OutputScanner::take_mp2},
    {"E3=", &OutputScanner::take_mp3},
    {"E4(", &OutputScanner::take_mp4},
    {"Elapsed time:", &OutputScanner::take_wall_time},
    {"Energy=", &OutputScanner::take_mm},
    {"Entering Link 1 =", &OutputScanner::begin_job},
    {"Error termination", &OutputScanner::take_error_end},
    {"Frequencies --", &OutputScanner::take_modes},
    {"G1", &OutputScanner::take_composite},
    {"G2", &OutputScanner::take_composite},
    {"G3", &OutputScanner::take_composite},
    {"G4", &OutputScanner::take_composite},
    {"Gaussian ", &OutputScanner::take_program},
    {"ITN=", &OutputScanner::take_casscf},
    {"Input orientation:", &OutputScanner::take_input_orientation},
    {"Item               Value     Threshold", &OutputScanner::take_convergence},
    {"Job cpu time:", &OutputScanner::take_cpu_time},
    {"Link1:  Proceeding to internal job step", &OutputScanner::begin_internal_step},
    {"Maximum number of steps reached", &OutputScanner::take_path_limit},
    {"No lower point found", &OutputScanner::take_failed_scf},
    {"Normal termination of Gaussian", &OutputScanner::take_normal_end},
    {"ONIOM: extrapolated energy", &OutputScanner::take_oniom},
    {"Optimization ", &OutputScanner::take_optimization_end},
    {"Point Number", &OutputScanner::take_path_point},
    {"QCISD(T)=", &OutputScanner::take_qcisd_triples},
    {"S**2 before annihilation", &OutputScanner::take_spin},
    {"SCF Done:", &OutputScanner::take_scf},
    {"SCF Error SCF Error", &OutputScanner::take_failed_scf},
    {"Standard orientation:", &OutputScanner::take_standard_orientation},
    {"Step number ", &OutputScanner::take_step_number},
    {"The wavefunction ", &OutputScanner::take_stability},
    {"Total Energy, E(", &OutputScanner::take_excited},
    {"UMP4(", &OutputScanner::take_mp4},
    {"W1", &OutputScanner::take_composite},
    {"Wavefunction amplitudes converged.", &OutputScanner::take_amplitudes},
    {"Z-Matrix orientation:", &OutputScanner::take_zmatrix_orientation},
};

// Within a title or route all else is text.
constexpr bool ends_gathering(void (OutputScanner::*take)(std::string_view)) {
    for (const auto each : {&OutputScanner::take_dashes, &OutputScanner::begin_job, &OutputScanner::begin_internal_step,
                            &OutputScanner::take_normal_end, &OutputScanner::take_error_end}) {
        if (take == each) {
            return true;
        }
    }
    return false;
}

constexpr auto no_row = static_cast<std::uint8_t>(std::size(rows));
static_assert(std::size(rows) < 256);
static_assert(std::is_sorted(std::begin(rows), std::end(rows),
                             [](const Row& a, const Row& b) { return a.begin.front() < b.begin.front(); }));

constexpr std::array<std::uint8_t, 256> first_rows() {
    std::array<std::uint8_t, 256> first{};
    for (std::uint8_t& each : first) {
        each = no_row;
    }
    for (std::size_t i = std::size(rows); i-- > 0;) {
        first[static_cast<unsigned char>(rows[i].begin.front())] = static_cast<std::uint8_t>(i);
    }
    return first;
}

constexpr std::array<std::uint8_t, 256> first_row = first_rows();

// The number of a link in a path such as /opt/g16/l502.exe; 0 for none.
int link_in(std::string_view text) {
    for (std::size_t dot = text.find(".exe"); dot != std::string_view::npos; dot = text.find(".exe", dot + 1)) {
        std::size_t begin = dot;
        while (begin > 0 && is_digit(text[begin - 1])) {
            --begin;
        }
        if (begin < dot && begin > 0 && to_lower_ascii(text[begin - 1]) == 'l') {
            return to_int32(text.substr(begin, dot - begin)).value_or(0);
        }
    }
    return 0;
}

// Longer ones were never a route or a title.
constexpr std::size_t gathered_limit = 200;

}  // namespace

std::optional<double> value_behind(std::string_view line, std::string_view label) {
    const std::size_t found = line.find(label);
    const std::size_t equals = found == std::string_view::npos ? found : line.find('=', found);
    if (equals == std::string_view::npos) {
        return std::nullopt;
    }
    std::string_view value = trim_view(line.substr(equals + 1));
    value = value.substr(0, value.find_first_of(" \t,"));
    return to_fortran_number(value);
}

bool OutputScanner::next() {
    if (!lines_.next()) {
        return false;
    }
    visitor_.on_line(lines_.number(), lines_.line());
    return true;
}

void OutputScanner::run() {
    while (!is_taken_ || next()) {
        is_taken_ = true;
        take_line();
    }
    end_step();
}

void OutputScanner::take_line() {
    const std::string_view whole = lines_.line();
    std::size_t begin = 0;
    while (begin < whole.size() && whole[begin] == ' ') {
        ++begin;
    }
    if (begin == whole.size()) {
        if (is_gathering_) {
            gather(whole);
        }
        return;
    }
    const std::string_view line = whole.substr(begin);
    if (is_digit(line.front()) && !is_gathering_) {
        take_counts(line);
        return;
    }
    for (const auto& row : std::span(rows).subspan(first_row[static_cast<unsigned char>(line.front())])) {
        if (row.begin.front() != line.front()) {
            break;
        }
        if (line.starts_with(row.begin) && (!is_gathering_ || ends_gathering(row.take))) {
            (this->*row.take)(line);
            return;
        }
    }
    if (is_gathering_) {
        gather(whole);
    }
}

void OutputScanner::begin_step(bool is_internal) {
    end_step();
    is_in_step_ = true;
    end_ = {};
    entered_link_ = 0;
    has_told_link_ = false;
    heading_ = Heading::Route;
    is_gathering_ = false;
    has_criterion_missed_ = is_last_iteration_ = false;
    amplitudes_ = EnergyKind::CCSD;
    visitor_.on_step({lines_.number(), is_internal});
}

// An output whose head was cut off begins in the middle of a step.
void OutputScanner::ensure_step() {
    if (!is_in_step_) {
        begin_step(false);
    }
}

void OutputScanner::end_step() {
    if (!is_in_step_) {
        return;
    }
    if (end_.termination == StepTermination::Unfinished) {
        end_.line = lines_.number();
        end_.link = entered_link_;
    }
    is_in_step_ = false;
    visitor_.on_step_end(end_);
}

void OutputScanner::begin_job(std::string_view /*line*/) { begin_step(false); }

void OutputScanner::begin_internal_step(std::string_view /*line*/) { begin_step(true); }

// "Gaussian 16:  ES64L-G16RevC.01  3-Jul-2019"
void OutputScanner::take_program(std::string_view line) {
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos || colon > std::string_view("Gaussian DV").size()) {
        return;
    }
    const std::string_view version = trim_view(line.substr(colon + 1));
    ensure_step();
    visitor_.on_program(lines_.number(), version.substr(0, version.find(' ')));
}

void OutputScanner::take_link0(std::string_view line) {
    if (is_in_step_ && heading_ == Heading::Route) {
        visitor_.on_link0(lines_.number(), trim_view(line));
    }
}

void OutputScanner::take_dashes(std::string_view line) {
    if (is_gathering_) {
        finish_gathering();
        return;
    }
    const bool is_row = trim_view(line).find_first_not_of('-') == std::string_view::npos;
    if (is_row && (!is_in_step_ || heading_ != Heading::Done)) {
        is_gathering_ = true;
        gathered_.clear();
        gathered_lines_ = 0;
    }
}

// Routes and titles are folded at 70 columns behind one blank, in words too. A line that is shorter lost the blank it ended
// in.
void OutputScanner::gather(std::string_view line) {
    constexpr std::size_t fold = 70;
    if (gathered_lines_ == 0) {
        gathered_line_ = lines_.number();
    } else if (last_width_ < fold) {
        gathered_ += ' ';
    }
    line.remove_prefix(line.starts_with(' ') ? 1 : 0);
    last_width_ = line.size();
    gathered_ += line;
    if (++gathered_lines_ > gathered_limit) {
        is_gathering_ = false;
    }
}

void OutputScanner::finish_gathering() {
    is_gathering_ = false;
    const std::string_view text = trim_view(gathered_);
    if (text.starts_with('#') && (!is_in_step_ || heading_ == Heading::Route)) {
        ensure_step();
        heading_ = Heading::Title;
        amplitudes_ = contains_folded(text, "qcisd")                                 ? EnergyKind::QCISD
                      : contains_folded(text, "bd(") || contains_folded(text, "bd/") ? EnergyKind::BD
                                                                                     : EnergyKind::CCSD;
        visitor_.on_route(gathered_line_, text);
    } else if (is_in_step_ && heading_ == Heading::Title && gathered_lines_ > 0) {
        heading_ = Heading::Done;
        visitor_.on_title(gathered_line_, text);
    }
}

void OutputScanner::take_link(std::string_view line) { entered_link_ = link_in(line); }

void OutputScanner::end_at(StepTermination termination, int link) {
    ensure_step();
    is_gathering_ = false;
    if (end_.termination == StepTermination::Unfinished) {
        end_ = {lines_.number(), termination, termination == StepTermination::Error ? entered_link_ : 0};
    }
    if (termination == StepTermination::Error && link > 0 && !has_told_link_) {
        end_.link = link;
        has_told_link_ = true;
    }
}

void OutputScanner::take_normal_end(std::string_view /*line*/) { end_at(StepTermination::Normal, 0); }

// "Error termination via Lnk1e in /opt/g16/l502.exe at ...", "... request processed by link 9999.", "... in NtrErr:".
void OutputScanner::take_error_end(std::string_view line) {
    constexpr std::string_view by_link = "processed by link ";
    const std::size_t found = line.find(by_link);
    const int link =
        found == std::string_view::npos ? link_in(line) : leading_int32(line.substr(found + by_link.size())).value_or(0);
    end_at(StepTermination::Error, link);
}

// "0 days  0 hours 10 minutes 58.3 seconds."
void OutputScanner::tell_time(std::string_view line, double OutputTimes::*time) {
    constexpr std::pair<std::string_view, double> units[] = {
        {"days", 86400}, {"hours", 3600}, {"minutes", 60}, {"seconds.", 1}};
    std::vector<std::string_view> fields;
    split_fields(line, FieldSeparators::WhiteSpace, true, fields);
    double seconds = 0;
    for (std::size_t i = 1; i < fields.size(); ++i) {
        for (const auto& [unit, length] : units) {
            seconds += fields[i] == unit ? length * to_number(fields[i - 1]).value_or(0) : 0;
        }
    }
    OutputTimes times;
    times.*time = seconds;
    ensure_step();
    visitor_.on_times(lines_.number(), times);
}

void OutputScanner::take_cpu_time(std::string_view line) { tell_time(line, &OutputTimes::cpu_seconds); }

void OutputScanner::take_wall_time(std::string_view line) { tell_time(line, &OutputTimes::wall_seconds); }

void read_output(OutputSource& source, OutputVisitor& visitor) {
    constexpr std::size_t head = 1024;
    OutputLines lines(source);
    if (begins_formatted_checkpoint(lines.beginning(head))) {
        read_formatted_checkpoint(lines, visitor);
    } else {
        OutputScanner(lines, visitor).run();
    }
}

void OutputVisitor::on_line(std::size_t /*line*/, std::string_view /*text*/) {}
void OutputVisitor::on_step(const OutputStep& /*step*/) {}
void OutputVisitor::on_program(std::size_t /*line*/, std::string_view /*version*/) {}
void OutputVisitor::on_link0(std::size_t /*line*/, std::string_view /*text*/) {}
void OutputVisitor::on_route(std::size_t /*line*/, std::string_view /*text*/) {}
void OutputVisitor::on_title(std::size_t /*line*/, std::string_view /*text*/) {}
void OutputVisitor::on_charge(const OutputCharge& /*charge*/) {}
void OutputVisitor::on_geometry(const OutputGeometry& /*geometry*/) {}
void OutputVisitor::on_basis_functions(std::size_t /*line*/, int /*count*/) {}
void OutputVisitor::on_electrons(std::size_t /*line*/, int /*alpha*/, int /*beta*/) {}
void OutputVisitor::on_energy(const OutputEnergy& /*energy*/) {}
void OutputVisitor::on_failed_scf(std::size_t /*line*/) {}
void OutputVisitor::on_convergence(const OutputConvergence& /*table*/) {}
void OutputVisitor::on_optimization_step(const OptimizationStep& /*step*/) {}
void OutputVisitor::on_optimization_end(std::size_t /*line*/, OptimizationEnd /*end*/) {}
void OutputVisitor::on_modes(const OutputModes& /*modes*/) {}
void OutputVisitor::on_path_point(const PathPoint& /*point*/) {}
void OutputVisitor::on_path_limit(std::size_t /*line*/) {}
void OutputVisitor::on_spin(const OutputSpin& /*spin*/) {}
void OutputVisitor::on_stability(std::size_t /*line*/, bool /*is_stable*/) {}
void OutputVisitor::on_times(std::size_t /*line*/, const OutputTimes& /*times*/) {}
void OutputVisitor::on_checkpoint(const CheckpointFacts& /*facts*/) {}
void OutputVisitor::on_step_end(const StepEnd& /*end*/) {}

}  // namespace quor::input::gaussian

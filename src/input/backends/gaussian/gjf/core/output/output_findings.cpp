// Says of an output what is worth saying: how it failed, and results that are not what they seem.
#include <gjf/core/output/diagnosis.hpp>

#include <gjf/core/chemistry/space.hpp>
#include <gjf/core/knowledge/failures.hpp>
#include <gjf/core/output/failure_search.hpp>
#include <gjf/core/output/route_requests.hpp>

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

namespace quor::input::gaussian {
namespace {

void add_finding(Diagnosis& diagnosis, std::string_view id, std::size_t line) {
    for (const OutputCode& row : output_codes()) {
        if (row.id == id) {
            diagnosis.findings.push_back({std::string(row.code), std::string(row.severity), std::string(row.says), line,
                                          std::string(row.remedy), std::string(id)});
        }
    }
}

void add_end(Diagnosis& diagnosis) {
    const StepTermination termination = diagnosis.summary.termination();
    if (termination == StepTermination::Normal) {
        return;
    }
    const StepEnd& end = diagnosis.summary.steps.back().end;
    add_finding(diagnosis, termination == StepTermination::Error ? "failed" : "cut_off",
                diagnosis.cause_line > 0 ? diagnosis.cause_line : end.line);
    if (diagnosis.findings.empty()) {
        return;
    }
    OutputFinding& finding = diagnosis.findings.back();
    finding.severity = diagnosis.may_run ? "note" : finding.severity;
    finding.cause = diagnosis.cause;
    if (!diagnosis.cause.empty()) {
        finding.message = diagnosis.says;
        finding.hint = diagnosis.remedy;
    }
}

// What frequencies show of the structure that was looked for.
void add_imaginary(Diagnosis& diagnosis) {
    constexpr double noise = -30;
    const OutputSummary& summary = diagnosis.summary;
    const FrequencySummary& frequencies = *summary.frequencies;
    const std::optional<std::string> asked = options_in(summary.route, "opt");
    const bool asks_order = asked && asked->find("saddle") != std::string::npos;
    std::string_view id;
    if (!summary.optimization && !asked) {
        id = frequencies.imaginary > 0 ? "imag_alone" : "";
    } else if (summary.optimization ? !summary.optimization->is_saddle : !has_any_option(*asked, "ts saddle qst2 qst3")) {
        id = frequencies.imaginary == 0 ? "" : frequencies.lowest < noise ? "imag_min" : "imag_small";
    } else if (!asks_order) {
        id = frequencies.imaginary == 0 ? "imag_ts_none" : frequencies.imaginary > 1 ? "imag_ts_many" : "";
    }
    add_finding(diagnosis, id, frequencies.line);
}

bool is_linear(const std::vector<OutputAtom>& atoms) {
    constexpr double straight = 0.02;  // in ångström; an optimization without symmetry ends a little bent
    std::vector<Position> places;
    for (const OutputAtom& atom : atoms) {
        if (atom.number > 0) {
            places.push_back(atom.position);
        }
    }
    const auto bends = [&](const Position& place) {
        const Position a = {places[1][0] - places[0][0], places[1][1] - places[0][1], places[1][2] - places[0][2]};
        const Position b = {place[0] - places[0][0], place[1] - places[0][1], place[2] - places[0][2]};
        const double area = std::hypot(a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]);
        return area > straight * std::hypot(a[0], a[1], a[2]);
    };
    return places.size() > 2 && std::none_of(places.begin() + 2, places.end(), bends);
}

void add_frequencies(Diagnosis& diagnosis) {
    const FrequencySummary& frequencies = *diagnosis.summary.frequencies;
    if (frequencies.is_stationary == false) {
        add_finding(diagnosis, "freq_notconv", frequencies.line);
    }
    add_imaginary(diagnosis);
    const std::size_t atoms = atom_count(diagnosis.summary);
    if (frequencies.count + 6 == 3 * atoms && is_linear(diagnosis.summary.last->geometry.atoms)) {
        add_finding(diagnosis, "linear", frequencies.line);
    }
}

void add_wavefunction(Diagnosis& diagnosis) {
    const OutputSummary& summary = diagnosis.summary;
    const OutputCharge* const charge = summary.total_charge();
    if (summary.spin && charge != nullptr && charge->multiplicity > 1) {
        const double spin = (charge->multiplicity - 1) / 2.0;
        const double expected = spin * (spin + 1);
        if (std::abs(summary.spin->before - expected) > 0.1 * expected) {
            add_finding(diagnosis, "spin", summary.spin->line);
        }
    }
    if (summary.unstable_line > 0) {
        add_finding(diagnosis, "unstable", summary.unstable_line);
    }
}

void add_path(Diagnosis& diagnosis) {
    const OutputSummary& summary = diagnosis.summary;
    if (summary.path_limit_line > 0) {
        add_finding(diagnosis, "maxpoints", summary.path_limit_line);
    }
    const bool has_ended = summary.termination() == StepTermination::Normal;
    const auto open = std::find_if(summary.scan.begin(), summary.scan.end(), [&](const ScanPoint& point) {
        return !point.converged && (has_ended || point.point != summary.scan.back().point);
    });
    if (summary.optimization && open != summary.scan.end()) {
        add_finding(diagnosis, "scan_open", open->line);
    }
}

}  // namespace

void find_all(Diagnosis& diagnosis) {
    const OutputSummary& summary = diagnosis.summary;
    diagnosis.findings.clear();
    add_end(diagnosis);
    if (summary.optimization && summary.optimization->has_no_progress) {
        add_finding(diagnosis, "no_progress", summary.best ? summary.best->geometry.line : 0);
    }
    if (summary.frequencies) {
        add_frequencies(diagnosis);
    }
    add_wavefunction(diagnosis);
    add_path(diagnosis);
    if (summary.checkpoint && !summary.checkpoint->status) {
        add_finding(diagnosis, "fchk_silent", 0);
    }
    if (summary.checkpoint && !summary.checkpoint->is_whole) {
        add_finding(diagnosis, "fchk_cut", summary.lines);
    }
}

std::vector<OutputCodeDescription> output_code_descriptions() {
    std::vector<OutputCodeDescription> all;
    for (const OutputCode& row : output_codes()) {
        all.push_back({std::string(row.code), std::string(row.severity), std::string(row.says), std::string(row.explanation),
                       std::string(row.remedy)});
    }
    return all;
}

}  // namespace quor::input::gaussian

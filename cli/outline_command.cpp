// quor-gjf outline: tells for each job which lines hold what, what the route asks for and is not there, and what is left
// over.
#include "commands.hpp"
#include "input.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <memory>
#include <string>
#include <vector>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

std::string lines_text(const LineRange& range) {
    return range.first == range.last ? "line " + std::to_string(range.first)
                                     : "lines " + std::to_string(range.first) + "-" + std::to_string(range.last);
}

void append_range(std::string& text, const LineRange& range, const std::string& what) {
    if (!range.empty()) {
        text += "  " + lines_text(range) + ": " + what + "\n";
    }
}

std::string counted(std::size_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string molecule_text(const GeomSection& geom) {
    const std::size_t rows = geom.zmatrix_entries.size();
    return "molecule, " +
           (geom.format == GeometryFormat::ZMatrix ? counted(rows, "Z-matrix row") : counted(geom.atoms.size(), "atom"));
}

std::string section_text(ExtraInputSectionKind kind) {
    if (kind == ExtraInputSectionKind::Unknown) {
        return "left over";
    }
    return std::string(extra_input_kind_name(kind)) + " (" + extra_input_request(kind) + ")";
}

std::string outline_of(const JobReading& reading) {
    const JobLayout& layout = reading.layout;
    std::string text = "job " + std::to_string(layout.number) + ", " + lines_text(layout.lines) + "\n";
    if (!layout.link0_lines.empty()) {
        append_range(text, {layout.link0_lines.front(), layout.link0_lines.back()}, "Link 0");
    }
    if (!layout.route_words.empty()) {
        append_range(text, {layout.route_words.front().line, layout.route_words.back().line}, "route");
    }
    append_range(text, layout.overlays, "overlays");
    append_range(text, layout.title, "title");
    append_range(text, {layout.charge_line, layout.charge_line}, "charge and multiplicity");
    append_range(text, layout.molecule, molecule_text(reading.job.geom));
    for (const SectionLayout& section : layout.sections) {
        append_range(text, section.lines, section_text(section.kind));
    }
    for (const ExtraInputSectionKind kind : layout.missing) {
        text += "  missing: " + section_text(kind) + "\n";
    }
    if (!reading.error.empty()) {
        text += "  line " + std::to_string(reading.error_line) + ": reading ends: " + reading.error + "\n";
    }
    return text;
}

// Prints the outline of one file; returns whether all of it was read.
bool outline_file(const std::string& path, bool with_heading) {
    const std::vector<JobReading> readings = read_jobs_with_layout(read_text(path));
    std::string text = with_heading ? "==> " + path + " <==\n" : std::string();
    for (const JobReading& reading : readings) {
        text += outline_of(reading);
    }
    std::fputs(text.c_str(), stdout);
    std::fflush(stdout);
    if (readings.empty()) {
        std::fprintf(stderr, "%s: no job was found\n", path.c_str());
    }
    return !readings.empty() &&
           std::all_of(readings.begin(), readings.end(), [](const JobReading& r) { return r.error.empty(); });
}

int outline(const std::vector<std::string>& paths) {
    report_missing_vocabulary();
    int exit_code = exit_success;
    for (const std::string& path : paths) {
        try {
            exit_code = outline_file(path, paths.size() > 1) ? exit_code : exit_failure;
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s: %s\n", path.c_str(), error.what());
            exit_code = exit_failure;
        }
    }
    return exit_code;
}

}  // namespace

void add_outline_command(CLI::App& command, int& exit_code) {
    const auto paths = std::make_shared<std::vector<std::string>>();
    command.add_option("FILE", *paths, "Job files; - reads standard input")->required();
    command.callback([paths, &exit_code] { exit_code = outline(*paths); });
}

}  // namespace quor_gjf

// quor-gjf outline: tells for each job which lines hold what, what the route asks for and is not there, and what is left
// over.
#include "batch.hpp"
#include "commands.hpp"
#include "input.hpp"
#include "plain_text.hpp"
#include "terminal.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
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
    for (std::size_t i = 0; i < reading.faults.size(); ++i) {
        text +=
            "  line " + std::to_string(layout.faults[i].line) + ": not read: " + printable(reading.faults[i].message) + "\n";
    }
    return text;
}

FileResult outline_file(const std::string& path, bool with_heading, bool json) {
    const std::vector<JobReading> readings = read_jobs_with_layout(read_text(path));
    FileResult result;
    if (json) {
        result.out = outline_json(path, readings);
    } else {
        result.out = with_heading ? "==> " + path + " <==\n" : std::string();
        for (const JobReading& reading : readings) {
            result.out += outline_of(reading);
        }
    }
    if (readings.empty()) {
        result.err = path + ": no job was found\n";
    }
    const bool whole = std::all_of(readings.begin(), readings.end(), [](const JobReading& r) { return r.error.empty(); });
    result.code = readings.empty() || !whole ? exit_failure : exit_success;
    return result;
}

int outline(const BatchOptions& options) {
    require_vocabulary(options.json ? options.paths.front() : std::string());
    const bool with_heading = names_several_files(options.paths);
    Batch batch;
    batch.work = [&](const std::string& path) { return outline_file(path, with_heading, options.json); };
    return run_batch(options, batch);
}

}  // namespace

void add_outline_command(CLI::App& command, int& exit_code) {
    const auto options = std::make_shared<BatchOptions>();
    add_batch_options(command, *options);
    command.get_option("FILE")->required();
    command.callback([options, &exit_code] { exit_code = outline(*options); });
}

}  // namespace quor_gjf

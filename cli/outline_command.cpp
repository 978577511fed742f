// quor-gjf outline: tells for each job which lines hold what, what the route asks for and is not there, and what is left
// over.
#include "batch.hpp"
#include "commands.hpp"
#include "faithful.hpp"
#include "input.hpp"
#include "plain_text.hpp"
#include "terminal.hpp"

#include <gjf/gjf.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
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

std::string molecule_text(const GJFData& job) {
    const GeomSection& geom = job.geom;
    if (geom.atom_count() == 0 && changes_checkpoint(ExtraInputSectionKind::MMParameters, job.control)) {
        return section_name(ExtraInputSectionKind::MMParameters, job.control);
    }
    const std::size_t rows = geom.zmatrix_entries.size();
    return "molecule, " +
           (geom.format == GeometryFormat::ZMatrix ? counted(rows, "Z-matrix row") : counted(geom.atoms.size(), "atom"));
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
    append_range(text, layout.molecule, molecule_text(reading.job));
    for (const SectionLayout& section : layout.sections) {
        append_range(
            text, section.lines,
            section.kind == ExtraInputSectionKind::Unknown ? "left over" : section_name(section.kind, reading.job.control));
    }
    for (const ExtraInputSectionKind kind : layout.missing) {
        text += "  missing: " + section_name(kind, reading.job.control) + "\n";
    }
    for (std::size_t i = 0; i < reading.faults.size(); ++i) {
        if (!reading.faults[i].harmless) {
            text += "  line " + std::to_string(layout.faults[i].line) +
                    ": not read: " + printable(reading.faults[i].message) + "\n";
        }
    }
    return text;
}

struct OutlineArguments {
    BatchOptions batch;
    std::optional<Selection> selection;
};

// The atoms that a selection takes, each with its line.
std::string selected_text(const JobReading& reading, const Selection& selection,
                          const std::vector<std::string_view>& lines) {
    const JobLayout& layout = reading.layout;
    const std::vector<std::size_t>& places = layout.atoms.empty() ? layout.zmatrix_rows : layout.atoms;
    const std::vector<std::size_t> atoms = selected_atoms(selection, reading.job);
    std::string text = "job " + std::to_string(layout.number) + ", " + std::to_string(atoms.size()) + " of " +
                       counted(reading.job.geom.atom_count(), "atom") + "\n";
    for (const std::size_t atom : atoms) {
        const std::string line = GJFParser::trim(std::string(lines.at(places.at(atom) - 1)));
        text +=
            "  line " + std::to_string(places[atom]) + ": atom " + std::to_string(atom + 1) + ": " + printable(line) + "\n";
    }
    return text;
}

// Fills in what is said of the jobs of a file.
void tell_jobs(const std::string& path, const std::string& text, const std::vector<JobReading>& readings,
               const OutlineArguments& arguments, FileResult& result) {
    const std::vector<std::string_view> lines = arguments.selection ? lines_of(text) : std::vector<std::string_view>();
    for (const JobReading& reading : readings) {
        try {
            result.out += arguments.selection ? selected_text(reading, *arguments.selection, lines) : outline_of(reading);
        } catch (const SelectionError& error) {
            result.err += path + ": job " + std::to_string(reading.layout.number) + ": " + printable(error.what()) + "\n";
            result.code = exit_failure;
        }
    }
}

FileResult outline_file(const std::string& path, const OutlineArguments& arguments, bool with_heading) {
    const std::string text = read_text(path);
    const std::vector<JobReading> readings = read_jobs_with_layout(text);
    FileResult result;
    result.out = with_heading ? "==> " + path + " <==\n" : std::string();
    tell_jobs(path, text, readings, arguments, result);
    if (arguments.batch.json) {
        result.out =
            arguments.selection ? selection_json(path, readings, *arguments.selection) : outline_json(path, readings);
    }
    if (readings.empty()) {
        result.err = path + ": no job was found\n";
    }
    const bool whole = std::all_of(readings.begin(), readings.end(), [](const JobReading& r) { return r.error.empty(); });
    result.code = readings.empty() || !whole ? exit_failure : result.code;
    return result;
}

int outline(const OutlineArguments& arguments) {
    const std::vector<std::string>& paths = arguments.batch.paths;
    require_vocabulary(arguments.batch.json ? paths.front() : std::string());
    const bool with_heading = names_several_files(paths);
    Batch batch;
    batch.work = [&](const std::string& path) { return outline_file(path, arguments, with_heading); };
    return run_batch(arguments.batch, batch);
}

}  // namespace

void add_outline_command(CLI::App& command, int& exit_code) {
    const auto arguments = std::make_shared<OutlineArguments>();
    add_batch_options(command, arguments->batch);
    command.get_option("FILE")->required();
    const auto read = [arguments](const std::string& text) {
        try {
            arguments->selection = parse_selection(text);
        } catch (const SelectionError& error) {
            throw CLI::ValidationError("--select", printable(error.what()));
        }
    };
    command
        .add_option_function<std::string>("--select", read, "List the atoms that a selection takes, as in 'within 3 of Zn'")
        ->type_name("SELECTION");
    command.callback([arguments, &exit_code] { exit_code = outline(*arguments); });
}

}  // namespace quor_gjf

// Reads any text as job text. Only the documented exceptions may come; reading with places agrees with reading without, of
// which the first fault is thrown; places run parallel to jobs, readable or not, and hold what was read; what is read is
// reported, edited, written and read back as the same job.
#include "fuzzers.hpp"
#include "properties.hpp"

#include <gjf/gjf.hpp>

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quor::fuzz {
namespace {

using namespace input::gaussian;

struct Outcome {
    std::optional<GJFMultiData> file;
    std::string error;
};

Outcome read(const std::string& text) {
    try {
        return {GJFParser::parse_string_multi(text), {}};
    } catch (const GJFParseException& error) {
        return {std::nullopt, error.what()};
    } catch (const std::out_of_range& error) {
        return {std::nullopt, error.what()};
    }
}

void hold_range(const LineRange& range, const LineRange& whole) {
    hold(range.empty() || (whole.first <= range.first && range.first <= range.last && range.last <= whole.last),
         "parts of a job lie inside its lines");
}

void hold_layout(const JobReading& reading) {
    const JobLayout& layout = reading.layout;
    const GJFData& job = reading.job;
    hold(layout.route_words.size() == job.control.route_keywords.size(), "a place for each route word");
    hold(layout.atoms.size() == job.geom.atoms.size(), "a line for each atom");
    hold(layout.zmatrix_rows.size() == job.geom.zmatrix_entries.size(), "a line for each Z-matrix row");
    hold(layout.variables.size() == job.geom.variables.size(), "a line for each variable");
    hold(layout.constants.size() == job.geom.constants.size(), "a line for each constant");
    hold(layout.sections.size() == job.extra_inputs.size(), "lines for each section");
    hold_range(layout.title, layout.lines);
    hold_range(layout.molecule, layout.lines);
    for (const SectionLayout& section : layout.sections) {
        hold(!section.lines.empty(), "no section without lines");
        hold_range(section.lines, layout.lines);
    }
    hold(std::is_sorted(layout.atoms.begin(), layout.atoms.end()), "atoms stand in order");
}

void hold_places(std::string_view text, const JobReading& reading) {
    const JobPlaces& places = reading.places;
    const GJFData& job = reading.job;
    for (std::size_t i = 0; i < places.route_words.size(); ++i) {
        hold(places.route_words[i].in(text) == job.control.route_keywords[i], "a route word stands at its place");
    }
    for (std::size_t i = 0; i < places.atoms.size(); ++i) {
        const AtomCoord& atom = job.geom.atoms[i];
        const AtomLineFields fields = atom_line_fields(text, places.atoms[i]);
        const bool is_there = atom.x_ref.text.empty() || (fields.position[0].in(text) == atom.x_ref.text &&
                                                          fields.position[2].in(text) == atom.z_ref.text);
        hold(is_there, "the coordinates of an atom stand at their places");
    }
    for (std::size_t i = 0; i < places.variables.size(); ++i) {
        const VariableFields fields = zmatrix_variable_fields(text, places.variables[i]);
        hold(fields.name.in(text) == job.geom.variables[i].name && fields.value.in(text) == job.geom.variables[i].value,
             "name and value of a variable stand at their places");
    }
    for (const ReadingFault& fault : reading.faults) {
        hold(fault.place.begin >= places.lines.begin && fault.place.end() <= places.lines.end(),
             "faults lie inside their job");
        hold(!fault.message.empty(), "a fault says something");
    }
    const bool whole = std::all_of(reading.faults.begin(), reading.faults.end(), [](const auto& f) { return f.harmless; });
    hold(whole == reading.error.empty(), "the error is the first fault that matters");
}

void edit_and_write(const GJFData& job) {
    try {
        GJFEditor editor(job);
        hold_round_trip(editor);
        const std::string before = editor.to_gjf_string();
        try {
            editor.remove_atom(job.geom.atoms.size());
            hold(false, "an atom past the end cannot be removed");
        } catch (const GJFParseException&) {
            hold(editor.to_gjf_string() == before, "a refused edit changes nothing");
        }
        editor.upsert_keyword_with_options("opt", {{"tight", std::nullopt}});
        editor.translate_atoms({0}, 1, 1, 1);
        editor.to_gjf_string();
    } catch (const GJFParseException&) {
        return;  // a job whose bonds are not valid
    }
}

}  // namespace

int job_text(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::vector<JobReading> readings = read_jobs_with_layout(text);
    for (const JobReading& reading : readings) {
        hold_layout(reading);
        hold_places(text, reading);
    }
    const auto [file, error] = read(text);
    const auto failed =
        std::find_if(readings.begin(), readings.end(), [](const JobReading& r) { return !r.faults.empty(); });
    if (text.find('@') == std::string::npos) {  // with "@file" lines the two differ by right
        hold(file.has_value() == (failed == readings.end() && !readings.empty()), "both ways of reading agree on failure");
        hold(failed == readings.end() || error.ends_with(failed->faults.front().message.c_str()),
             "both tell the same fault first");
    }
    if (!file || !std::all_of(file->jobs.begin(), file->jobs.end(), is_small)) {
        return 0;
    }
    hold(file->jobs.size() == readings.size(), "both ways of reading agree on the jobs");
    hold(!GJFParser::format_full_multi_gjf(*file).empty(), "what is read is reported");
    std::for_each(file->jobs.begin(), file->jobs.end(), edit_and_write);
    return 0;
}

}  // namespace quor::fuzz

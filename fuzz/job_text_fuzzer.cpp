// Reads any text as job text. Only the documented exceptions may come; reading with a layout agrees with reading without;
// layouts run parallel to jobs; what is read is reported, edited, written and read back as the same job.
#include "fuzzers.hpp"
#include "properties.hpp"

#include <gjf/gjf.hpp>

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace quor::fuzz {
namespace {

using namespace input::gaussian;

std::optional<GJFMultiData> read(const std::string& text) {
    try {
        return GJFParser::parse_string_multi(text);
    } catch (const GJFParseException&) {
        return std::nullopt;
    } catch (const std::out_of_range&) {
        return std::nullopt;
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
    const bool whole = std::all_of(readings.begin(), readings.end(), [](const JobReading& r) { return r.error.empty(); });
    const std::optional<GJFMultiData> file = read(text);
    hold(file.has_value() == (whole && !readings.empty()), "both ways of reading agree on failure");
    if (!file || !std::all_of(file->jobs.begin(), file->jobs.end(), is_small)) {
        return 0;
    }
    hold(file->jobs.size() == readings.size(), "both ways of reading agree on the jobs");
    std::for_each(readings.begin(), readings.end(), hold_layout);
    hold(!GJFParser::format_full_multi_gjf(*file).empty(), "what is read is reported");
    std::for_each(file->jobs.begin(), file->jobs.end(), edit_and_write);
    return 0;
}

}  // namespace quor::fuzz

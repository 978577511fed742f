// Which lines of a file hold what, as JSON.
#include <gjf/core/report/json_values.hpp>

namespace quor::input::gaussian {
namespace {

Json json_of_range(const LineRange& range) { return {range.first, range.last}; }

void set_range(Json& object, const char* key, const LineRange& range) {
    if (!range.empty()) {
        object[key] = json_of_range(range);
    }
}

void set_lines(Json& object, const char* key, const std::vector<std::size_t>& lines) {
    if (!lines.empty()) {
        object[key] = lines;
    }
}

Json json_of_words(const JobReading& reading) {
    Json words = Json::array();
    const std::vector<TextPlace>& places = reading.layout.route_words;
    const std::vector<std::string>& texts = reading.job.control.route_keywords;
    for (std::size_t i = 0; i < places.size(); ++i) {
        Json word = {{"line", places[i].line}, {"column", places[i].column}, {"length", places[i].length}};
        set_text(word, "text", i < texts.size() ? texts[i] : std::string());
        words.push_back(std::move(word));
    }
    return words;
}

Json json_of_part(const SectionLayout& section) {
    Json object = json_of_kind(section.kind);
    object["lines"] = json_of_range(section.lines);
    return object;
}

Json json_of_faults(const JobReading& reading) {
    Json faults = Json::array();
    for (std::size_t i = 0; i < reading.faults.size(); ++i) {
        const TextPlace& place = reading.layout.faults[i];
        Json fault = {{"line", place.line}, {"column", place.column}, {"length", place.length}};
        set_text(fault, "message", reading.faults[i].message);
        faults.push_back(std::move(fault));
    }
    return faults;
}

Json json_of_reading(const JobReading& reading) {
    const JobLayout& layout = reading.layout;
    Json job = {{"number", layout.number}, {"lines", json_of_range(layout.lines)}};
    set_lines(job, "link0", layout.link0_lines);
    job["route"] = json_of_words(reading);
    set_range(job, "overlays", layout.overlays);
    set_range(job, "title", layout.title);
    if (layout.charge_line != 0) {
        job["charge_line"] = layout.charge_line;
    }
    set_range(job, "molecule", layout.molecule);
    set_lines(job, "atoms", layout.atoms);
    set_lines(job, "rows", layout.zmatrix_rows);
    set_lines(job, "variables", layout.variables);
    set_lines(job, "constants", layout.constants);
    set_lines(job, "cartesian_variables", layout.cartesian_variables);
    job["sections"] = list_of(layout.sections, json_of_part);
    job["missing"] = list_of(layout.missing, json_of_kind);
    if (!reading.error.empty()) {
        job["error"] = {{"line", reading.error_line}, {"message", reading.error}};
        job["faults"] = json_of_faults(reading);
    }
    return job;
}

}  // namespace

std::string outline_json(const std::string& path, const std::vector<JobReading>& readings) {
    Json object = about_file(path);
    object["jobs"] = list_of(readings, json_of_reading);
    return json_line(object);
}

}  // namespace quor::input::gaussian

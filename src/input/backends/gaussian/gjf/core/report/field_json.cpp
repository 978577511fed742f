// The jobs that fit a condition, fields of jobs, atoms of selections and differences of files, as JSON.
#include <gjf/core/report/json_values.hpp>

#include <gjf/core/route/joined_route.hpp>

#include <cstdint>

namespace quor::input::gaussian {
namespace {

Json json_of_value(const FieldValue& value, const JobField& field) {
    if (field.is_number()) {
        return value.number ? Json(static_cast<std::int64_t>(*value.number)) : Json();
    }
    const bool is_list = field.form != FieldForm::Text && field.form != FieldForm::Formula;
    if (!value.known || (value.texts.empty() && !is_list)) {
        return nullptr;
    }
    return is_list ? Json(value.texts) : Json(value.texts.front());
}

Json json_of_change(const JobChange& change) {
    Json object = {{"part", change.part}};
    set_text(object, "name", change.name);
    if (change.before) {
        object["before"] = *change.before;
    }
    if (change.after) {
        object["after"] = *change.after;
    }
    if (change.moved) {
        object["moved"] = *change.moved;
    }
    return object;
}

Json json_of_pair(const JobPairChanges& pair) {
    Json object = {{"job", pair.job}};
    if (!pair.in_first || !pair.in_second) {
        object["only"] = pair.in_first ? "first" : "second";
    }
    object["changes"] = list_of(pair.changes, json_of_change);
    return object;
}

Json json_of_selected(const JobReading& reading, const Selection& selection) {
    const JobLayout& layout = reading.layout;
    Json object = {{"job", layout.number}};
    try {
        const std::vector<std::size_t>& lines = layout.atoms.empty() ? layout.zmatrix_rows : layout.atoms;
        object["atoms"] = Json::array();
        object["lines"] = Json::array();
        for (const std::size_t atom : selected_atoms(selection, reading.job)) {
            object["atoms"].push_back(atom + 1);
            object["lines"].push_back(lines.at(atom));
        }
    } catch (const SelectionError& error) {
        return {{"job", layout.number}, {"error", error.what()}};
    }
    return object;
}

}  // namespace

std::string find_json(const JobFile& file, const std::vector<std::size_t>& jobs) {
    Json object = about_file(file.path());
    object["jobs"] = list_of(jobs, [&](std::size_t job) -> Json {
        const JobReading& reading = file.jobs()[job];
        const JobLayout& layout = reading.layout;
        return {{"job", layout.number},
                {"line", layout.route_words.empty() ? layout.lines.first : layout.route_words.front().line},
                {"route", join_route_words(reading.job.control.route_keywords).text},
                {"title", reading.job.title}};
    });
    return json_line(object);
}

std::string fields_json(const JobFile& file, const std::vector<std::size_t>& jobs, const std::vector<JobField>& fields) {
    Json object = about_file(file.path());
    object["jobs"] = list_of(jobs, [&](std::size_t job) {
        Json row;
        for (const JobField& field : fields) {
            row[field.name] = json_of_value(field_value(file, job, field), field);
        }
        return row;
    });
    return json_line(object);
}

std::string diff_json(const std::string& path, const std::string& other, const std::vector<JobPairChanges>& changes) {
    Json object = about_file(path);
    object["other"] = other;
    object["same"] = changes.empty();
    object["jobs"] = list_of(changes, json_of_pair);
    return json_line(object);
}

std::string selection_json(const std::string& path, const std::vector<JobReading>& readings, const Selection& selection) {
    Json object = about_file(path);
    object["jobs"] = list_of(readings, [&](const JobReading& reading) { return json_of_selected(reading, selection); });
    return json_line(object);
}

}  // namespace quor::input::gaussian

// The jobs that fit a condition, and fields of jobs, as JSON.
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

}  // namespace quor::input::gaussian

// New jobs, and why there are none, as JSON.
#include <gjf/core/next/next_job.hpp>
#include <gjf/core/report/json_values.hpp>

namespace quor::input::gaussian {

std::string next_jobs_json(const std::string& path, const std::vector<NewJob>& jobs, bool written) {
    Json object = about_file(path);
    object["jobs"] = list_of(jobs, [&](const NewJob& job) {
        Json each = {{"file", job.name}, {"recipe", job.recipe}, {"written", written}, {"remarks", job.remarks}};
        if (job.attempt > 0) {
            each["attempt"] = job.attempt;
        }
        if (!written) {
            each["text"] = job.text;
        }
        return each;
    });
    return json_line(object);
}

std::string refused_job_json(const std::string& path, const std::string& reason) {
    Json object = about_file(path);
    object["refused"] = reason;
    return json_line(object);
}

}  // namespace quor::input::gaussian

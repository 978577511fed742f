// Reads files and texts, many at once too, and tells where the vocabulary is.
#include "bindings.hpp"
#include "threads.hpp"

#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/report/json.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>

#include <string>
#include <utility>
#include <vector>

namespace quor_python {
namespace {

using namespace quor::input::gaussian;

/// What became of one file: its jobs, or why there are none.
struct Outcome {
    std::vector<JobHandle> jobs;
    std::string error;
    FaultPlace place;  ///< of the error
};

Outcome read_one(const std::string& path, bool all_jobs) noexcept {
    Outcome outcome;
    try {
        std::string text = read_file_text(path);
        if (all_jobs) {
            outcome.jobs = read_all_jobs(std::move(text));
        } else {
            outcome.jobs.push_back(read_first_job(std::move(text)));
        }
    } catch (const MalformedText& error) {
        outcome.error = error.what();
        outcome.place = error.place();
    } catch (const std::exception& error) {
        outcome.error = error.what();
    }
    return outcome;
}

py::list read_many(std::vector<Text> paths, bool all_jobs, unsigned threads) {
    const std::vector<std::string> names = to_strings(std::move(paths));
    std::vector<Outcome> outcomes(names.size());
    {
        const py::gil_scoped_release released;
        in_threads(names.size(), threads, [&](std::size_t i) { outcomes[i] = read_one(names[i], all_jobs); });
    }
    py::list results;
    for (Outcome& outcome : outcomes) {
        results.append(
            py::make_tuple(std::move(outcome.jobs), to_python(outcome.error), outcome.place.line, outcome.place.column));
    }
    return results;
}

// The jobs are copied under Python's lock, which is released while the text is made.
std::vector<JobHandle> copies(const std::vector<JobHandle*>& jobs) {
    std::vector<JobHandle> list;
    list.reserve(jobs.size());
    for (const JobHandle* job : jobs) {
        list.push_back(*job);
    }
    return list;
}

Text file_text_of(const std::vector<JobHandle*>& jobs, bool force) {
    const std::vector<JobHandle> list = copies(jobs);
    const py::gil_scoped_release released;
    JobPointers pointers;
    for (const JobHandle& job : list) {
        pointers.push_back(&job);
    }
    return {file_text(pointers, force)};
}

Source save_handles(const std::vector<JobHandle*>& jobs, const Source& source, const Text& path, bool is_own,
                    bool becomes_own, bool force) {
    std::vector<JobHandle> list = copies(jobs);
    Source now;
    {
        const py::gil_scoped_release released;
        now = save_jobs(list, source, {path.value, is_own, becomes_own, force});
    }
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        *jobs[i] = std::move(list[i]);
    }
    return now;
}

}  // namespace

void bind_reading(py::module_& module) {
    py::class_<SourceText, Source>(module, "Source", "A text that was read.")
        .def("job",
             [](const Source& self, std::size_t index) {
                 JobHandle job = std::move(read_all_jobs(self->text).at(index));
                 job.source = self;
                 return job;
             })
        .def(py::pickle([](const SourceText& source) { return py::make_tuple(Text{source.text}); },
                        [](const py::tuple& state) { return std::make_shared<SourceText>(state[0].cast<Text>().value); }));
    module.def(
        "read_text", [](const Text& path) { return Text{read_file_text(path.value)}; },
        py::call_guard<py::gil_scoped_release>());
    module.def(
        "read", [](const Text& path) { return read_first_job(read_file_text(path.value)); },
        py::call_guard<py::gil_scoped_release>());
    module.def(
        "read_all", [](const Text& path) { return read_all_jobs(read_file_text(path.value)); },
        py::call_guard<py::gil_scoped_release>());
    module.def(
        "loads", [](const Text& text) { return read_first_job(text.value); }, py::call_guard<py::gil_scoped_release>());
    module.def(
        "loads_all", [](const Text& text) { return read_all_jobs(text.value); }, py::call_guard<py::gil_scoped_release>());
    module.def("read_many", &read_many);
    module.def("file_text", &file_text_of);
    module.def("save_jobs", &save_handles);
    module.def("report_json", [](const Text& path, const std::vector<JobHandle*>& jobs) {
        std::vector<JobReading> readings(jobs.size());
        for (std::size_t i = 0; i < jobs.size(); ++i) {
            jobs[i]->editor.ensure_parsed_keywords();
            readings[i].job = jobs[i]->editor.get_data();
            readings[i].error = jobs[i]->fault;
            readings[i].error_line = jobs[i]->fault_place.line;
        }
        std::string line = readings_json(path.value, readings);
        line.pop_back();
        return to_python(line);
    });
    module.def("vocabulary_path", [] { return to_python(default_route_schema_path()); });
}

}  // namespace quor_python

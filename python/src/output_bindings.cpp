// Outputs: the JSON of what happened, and the geometries with their numbers.
#include "bindings.hpp"
#include "threads.hpp"

#include <gjf/core/output/diagnosis.hpp>
#include <gjf/core/report/json.hpp>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quor_python {

using namespace quor::input::gaussian;

namespace {

/// What became of one file: the JSON of its diagnosis, or why it cannot be read.
struct DiagnosedFile {
    std::string json;
    std::string error;
};

py::tuple arrays_of(const OutputGeometry& geometry) {
    const std::size_t count = geometry.atoms.size();
    py::array_t<int> numbers(static_cast<py::ssize_t>(count));
    py::array_t<double> positions({static_cast<py::ssize_t>(count), py::ssize_t{3}});
    for (std::size_t i = 0; i < count; ++i) {
        numbers.mutable_at(static_cast<py::ssize_t>(i)) = geometry.atoms[i].number;
        for (std::size_t j = 0; j < 3; ++j) {
            positions.mutable_at(static_cast<py::ssize_t>(i), static_cast<py::ssize_t>(j)) = geometry.atoms[i].position[j];
        }
    }
    return py::make_tuple(numbers, positions);
}

py::tuple to_tuple(const OutputPoint& point) {
    const py::tuple arrays = arrays_of(point.geometry);
    const py::object energy = point.energy ? py::object(py::float_(point.energy->value)) : py::none();
    const py::object kind = point.energy ? py::object(py::str(energy_kind_name(point.energy->kind))) : py::none();
    const py::object force = point.rms_force ? py::object(py::float_(*point.rms_force)) : py::none();
    return py::make_tuple(point.geometry.line, output_frame_name(point.geometry.frame), point.step, point.scan_point, energy,
                          kind, force, arrays[0], arrays[1]);
}

py::object to_tuple(const std::optional<OutputPoint>& point) { return point ? to_tuple(*point) : py::object(py::none()); }

void require_tables() {
    if (const std::string missing = missing_for_diagnosis(); !missing.empty()) {
        throw std::runtime_error(missing);
    }
}

// The JSON, the last and the best point.
py::tuple read_one(const Text& path) {
    require_tables();
    Diagnosis diagnosis;
    std::string json;
    {
        const py::gil_scoped_release released;
        diagnosis = diagnose_file(path.value);
        json = diagnosis_json(path.value, diagnosis);
    }
    return py::make_tuple(to_python(json), to_tuple(diagnosis.summary.last), to_tuple(diagnosis.summary.best));
}

// Tells a function of each point, in their order, while the file is read: no more than one is kept.
void walk_points(const Text& path, const py::function& tell) {
    require_tables();
    const py::gil_scoped_release released;
    diagnose_file(path.value, [&tell](const OutputPoint& point) {
        const py::gil_scoped_acquire acquired;
        tell(to_tuple(point));
    });
}

py::list diagnose_many(std::vector<Text> paths, unsigned threads) {
    require_tables();
    const std::vector<std::string> names = to_strings(std::move(paths));
    std::vector<DiagnosedFile> files(names.size());
    {
        const py::gil_scoped_release released;
        in_threads(names.size(), threads, [&](std::size_t i) noexcept {
            try {
                files[i].json = diagnosis_json(names[i], diagnose_file(names[i]));
            } catch (const std::exception& error) {
                files[i].error = error.what();
            }
        });
    }
    py::list results;
    for (const DiagnosedFile& file : files) {
        results.append(py::make_tuple(to_python(file.json), to_python(file.error)));
    }
    return results;
}

}  // namespace

void bind_outputs(py::module_& module) {
    module.def("read_output", &read_one);
    module.def("walk_output", &walk_points);
    module.def("diagnose_many", &diagnose_many);
}

}  // namespace quor_python

// The native half of the Python package: the class interface of libquor_g16_gjf, without Pythonic dress.
#include "bindings.hpp"

#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/output/output_source.hpp>

#include <exception>
#include <utility>

PYBIND11_MODULE(_core, module) {
    using namespace quor_python;
    module.doc() = "The class interface of libquor_g16_gjf. Use it through the package quor_gjf.";
    py::register_exception<quor::input::gaussian::GJFParseException>(module, "ParseError", PyExc_ValueError);
    py::register_exception<quor::input::gaussian::OutputError>(module, "OutputError", PyExc_RuntimeError);
    py::register_exception<WriteError>(module, "WriteError", PyExc_ValueError);
    py::register_exception_translator([](std::exception_ptr pointer) {
        try {
            std::rethrow_exception(std::move(pointer));
        } catch (const MalformedText& error) {
            const py::object parse_error = py::module_::import("quor_gjf._core").attr("ParseError");
            const py::object raised = parse_error(to_python(error.what()));
            for (const auto& [name, number] : {std::pair{"line", error.place().line}, {"column", error.place().column}}) {
                raised.attr(name) = number == 0 ? py::object(py::none()) : py::object(py::int_(number));
            }
            PyErr_SetObject(parse_error.ptr(), raised.ptr());
        }
    });
    bind_values(module);
    JobClass job(module, "Job", "One job: its editor, and the text it was read from.");
    bind_job(job);
    bind_atoms(job);
    bind_route(job);
    bind_sections(job);
    bind_state(job);
    bind_reading(module);
    bind_checks(module);
    bind_outputs(module);
}

// What the parts of the Python module share. Each part adds its classes and functions to the module.
#pragma once

#include "job_handle.hpp"
#include "text_caster.hpp"

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

namespace quor_python {

namespace py = pybind11;
using JobClass = py::class_<JobHandle>;

void bind_values(py::module_& module);
void bind_reading(py::module_& module);
void bind_checks(py::module_& module);
void bind_outputs(py::module_& module);
void bind_job(JobClass& job);
void bind_atoms(JobClass& job);
void bind_route(JobClass& job);
void bind_sections(JobClass& job);
void bind_state(JobClass& job);

/// Returns the symbol of an atom's species, or its name as written when that is not known.
std::string symbol_or_name(const quor::input::gaussian::AtomInfo& info);

}  // namespace quor_python

// The operations of quor-gjf edit: one row an option, each read whole before any file is touched.
#pragma once

#include <gjf/gjf.hpp>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace quor_gjf {

/// What an operation works on. Jobs that take this from a checkpoint are passed over.
enum class EditTarget { Head, TitleAndCharge, Atoms };

/// Changes one job; `path` is that of its file. Throws when the change is refused.
using Edit = std::function<void(quor::input::gaussian::GJFEditor& job, const std::string& path)>;

/// One kind of operation.
struct EditOption {
    const char* name;         ///< as on the command line
    const char* value;        ///< what its value is, null for an option without one
    const char* description;  ///< for --help
    EditTarget target;
    Edit (*read)(const std::string& value);  ///< throws `std::runtime_error` for a value that it cannot read
};

/// Lists all operations, those on the head of a job first.
const std::vector<EditOption>& edit_options();

// The rows by topic.
std::vector<EditOption> head_edit_options();
std::vector<EditOption> route_edit_options();
std::vector<EditOption> atom_edit_options();
std::vector<EditOption> section_edit_options();

/// One operation as asked for.
struct EditOperation {
    const EditOption* option = nullptr;
    Edit edit;
};

/// Applies operations in their order, each to all jobs or to one (`job` counts from 1; 0: all).
///
/// Throws `std::runtime_error` when a job refuses, when the job asked for is not there, and when no job of the file has what
/// an operation works on.
void apply_operations(const std::vector<EditOperation>& operations, quor::input::gaussian::GJFDocument& document,
                      const std::string& path, std::size_t job);

}  // namespace quor_gjf

// The operations of quor-gjf edit: one row an option, each read whole before any file is touched.
#pragma once

#include "edit_names.hpp"
#include "edit_remarks.hpp"

#include <gjf/gjf.hpp>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace quor_gjf {

/// What an operation works on. Jobs that take this from a checkpoint are passed over.
enum class EditTarget { Head, TitleAndCharge, Atoms };

/// Changes one job; returns false when the job has nothing of what the edit names. Throws when the change is refused.
using Edit = std::function<bool(quor::input::gaussian::GJFEditor& job, EditContext& context)>;

/// One kind of operation.
struct EditOption {
    const char* name;         ///< as on the command line
    const char* value;        ///< what its value is, null for an option without one
    const char* description;  ///< for --help
    EditTarget target;
    Edit (*read)(const std::string& value);  ///< throws `std::runtime_error` for a value that it cannot read
    /// What makes a route of the value, in front of it, so that its words can be looked up; null for a value without any.
    const char* route_before = nullptr;
};

/// Lists all operations, those on the head of a job first.
const std::vector<EditOption>& edit_options();

// The rows by topic.
std::vector<EditOption> head_edit_options();
std::vector<EditOption> route_edit_options();
std::vector<EditOption> atom_edit_options();
std::vector<EditOption> molecule_edit_options();
std::vector<EditOption> section_edit_options();

/// One operation as asked for.
struct EditOperation {
    const EditOption* option = nullptr;
    std::string value;
    Edit edit;
};

/// Reads an operation; throws `std::runtime_error` for a value that cannot be read, and for one with a word that the
/// vocabulary does not know, unless `unknown_too`.
EditOperation read_operation(const EditOption& option, const std::string& value, bool unknown_too);

/// Which jobs of a file are edited: all, or one, counted from 1; and of these what `chosen` has.
struct EditedJobs {
    std::size_t only = 0;
    const quor::input::gaussian::ChosenJobs& chosen;
};

/// Applies operations in their order, each to all jobs that are edited; returns what is to be said of them: which found
/// nothing to change, and what they did beside what was asked for.
///
/// Throws `std::runtime_error` when a job refuses, when the job asked for is not there, and when no job of the file has what
/// an operation works on.
std::vector<EditRemark> apply_operations(const std::vector<EditOperation>& operations,
                                         quor::input::gaussian::GJFDocument& document, const std::string& path,
                                         const EditedJobs& jobs);

}  // namespace quor_gjf

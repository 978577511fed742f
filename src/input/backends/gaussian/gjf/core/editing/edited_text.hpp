// A text with operations applied to its jobs, and what is to be said of the change.
#pragma once

#include <core/export.hpp>
#include <gjf/core/check/finding.hpp>
#include <gjf/core/editing/edit_operations.hpp>
#include <gjf/core/predicate/predicate.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// What is done to a text.
struct EditPlan {
    std::vector<EditOperation> operations;              ///< in their order, each on all jobs
    std::size_t job = 0;                                ///< changes this job alone, counted from 1; 0: all that can be read
    std::optional<JobPredicate> where;                  ///< and of these what fits
    NamedFiles included_files = NamedFiles::LeftAlone;  ///< for `where`
    bool force = false;                                 ///< as `GJFWriteOptions`
    bool checks = true;                                 ///< looks for what the change brings
    bool strict = false;                                ///< refuses a change that brings any
};

/// A job that cannot be read and stays as it is.
struct UnreadableJob {
    std::size_t job = 0;  ///< from 1
    std::size_t line = 0;
    std::string message;
};

/// What became of a text.
struct EditedText {
    std::string text;  ///< the old one where the change is refused
    bool refused = false;
    std::vector<std::string> remarks;  ///< which operations found nothing to change, and what else they did
    std::vector<UnreadableJob> unreadable;
    std::vector<Finding> findings;  ///< those that the old text did not have, with their places in the new one
};

/// Edits a text; `path` gives names in braces their meaning, "-" has none.
///
/// Throws when no job can be read, when a job refuses an operation, when the job asked for is not there, when no job has
/// what an operation works on, and where a section cannot follow the change.
QUOR_GJF_API EditedText edit_text(const std::string& text, const EditPlan& plan, const std::string& path = "-");

}  // namespace quor::input::gaussian

// Conditions on jobs, as in "opt=ts and atoms > 20 and charge = -1".
//
//     condition = operand { ("and" | "or") operand }         "and" binds more tightly than "or"
//     operand   = "(" condition ")" | "not" operand | FIELD [SIGN VALUE] | "count(" SELECTION ")" [SIGN NUMBER] | ROUTE WORD
//     SIGN      = "=" | "!=" | "<" | "<=" | ">" | ">=" | "~"
//
// A route word may have options, as in opt=(ts,calcfc); "route:" before it tells it from a field of the same name. "~" finds
// a value within a text. A field alone asks whether it is there.
#pragma once

#include <core/export.hpp>
#include <gjf/core/predicate/job_file.hpp>
#include <gjf/core/selection/selection.hpp>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// What a condition is of a job. What is not known fits neither a comparison nor its opposite.
enum class Truth { No, Unknown, Yes };

/// A condition that was read; copies share it, and several threads may ask it.
class QUOR_GJF_API JobPredicate {
   public:
    /// Reads a condition with the default vocabulary. Throws `SelectionError` with the column, and what may have been meant.
    explicit JobPredicate(std::string_view text);
    JobPredicate(const JobPredicate& other);
    JobPredicate& operator=(const JobPredicate& other);
    ~JobPredicate();

    /// Tells what it is of a job, counted from 0. A part that cannot change the answer any more is not looked at.
    Truth of(const JobFile& file, std::size_t job) const;
    /// Tells whether a job surely fits.
    bool fits(const JobFile& file, std::size_t job) const { return of(file, job) == Truth::Yes; }

   private:
    struct Steps;
    std::shared_ptr<const Steps> steps_;
};

/// Returns the jobs of a file that fit a condition, counted from 0; all of them where there is none.
QUOR_GJF_API std::vector<std::size_t> fitting_jobs(const std::optional<JobPredicate>& condition, const JobFile& file);

/// Which jobs of a text are looked at: those that fit a condition, or all where there is none.
class QUOR_GJF_API ChosenJobs {
   public:
    /// As `JobFile`.
    ChosenJobs(const std::optional<JobPredicate>& condition, const std::string& path, const std::string& text,
               NamedFiles files = NamedFiles::LeftAlone);

    /// Tells whether the job of a number is looked at; 0 stands for the file as a whole, which is where any of its jobs is.
    bool has(std::size_t number) const noexcept;

   private:
    std::optional<std::vector<std::size_t>> numbers_;  // ascending; absent for all jobs
};

}  // namespace quor::input::gaussian

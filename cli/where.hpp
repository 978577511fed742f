// The jobs that a condition picks, as in --where 'opt=ts and charge = -1'.
#pragma once

#include <gjf/gjf.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace quor_gjf {

/// A condition on jobs; absent when none was given.
using Where = std::optional<quor::input::gaussian::JobPredicate>;

/// Declares --where.
void add_where_option(CLI::App& command, Where& where);

/// Reads a condition; throws `CLI::ValidationError` with its column.
quor::input::gaussian::JobPredicate read_condition(const std::string& name, const std::string& text);

/// Which jobs of a file a command looks at: all of them, or those that fit.
class ChosenJobs {
   public:
    ChosenJobs(const Where& where, const std::string& path, const std::string& text);

    /// Tells whether the job of a number is looked at; 0 stands for the file as a whole, which is where any of its jobs is.
    bool has(std::size_t number) const noexcept;
    bool none() const noexcept { return numbers_ && numbers_->empty(); }

   private:
    std::optional<std::vector<std::size_t>> numbers_;  // absent for all jobs
};

}  // namespace quor_gjf

// Picks jobs by a condition.
#include "where.hpp"

#include "terminal.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace quor_gjf {

using namespace quor::input::gaussian;

void add_where_option(CLI::App& command, Where& where) {
    command
        .add_option_function<std::string>(
            "--where", [&where](const std::string& text) { where = read_condition("--where", text); },
            "Look at the jobs alone that fit a condition, as in 'opt=ts and charge = -1' (see find)")
        ->type_name("CONDITION");
}

JobPredicate read_condition(const std::string& name, const std::string& text) {
    try {
        return JobPredicate(text);
    } catch (const SelectionError& error) {
        throw CLI::ValidationError(name, printable(error.what()));
    }
}

ChosenJobs::ChosenJobs(const Where& where, const std::string& path, const std::string& text) {
    if (where) {
        const JobFile file(path, text);
        numbers_.emplace();
        for (const std::size_t job : fitting_jobs(where, file)) {
            numbers_->push_back(file.jobs()[job].layout.number);
        }
    }
}

bool ChosenJobs::has(std::size_t number) const noexcept {
    return !numbers_ ||
           (number == 0 ? !numbers_->empty() : std::find(numbers_->begin(), numbers_->end(), number) != numbers_->end());
}

}  // namespace quor_gjf

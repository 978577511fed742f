// Picks jobs by a condition.
#include "where.hpp"

#include "terminal.hpp"

#include <CLI/CLI.hpp>

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

}  // namespace quor_gjf

// Holds the list of operations, and reads them.
#include <gjf/core/editing/edit_operations.hpp>

#include <gjf/core/check/change_checks.hpp>
#include <gjf/core/editing/operation_rows.hpp>

#include <algorithm>
#include <stdexcept>

namespace quor::input::gaussian {

const std::vector<EditOption>& edit_options() {
    static const std::vector<EditOption> all = [] {
        std::vector<EditOption> options;
        for (const auto rows :
             {head_edit_options, route_edit_options, atom_edit_options, molecule_edit_options, section_edit_options}) {
            const std::vector<EditOption> topic = rows();
            options.insert(options.end(), topic.begin(), topic.end());
        }
        return options;
    }();
    return all;
}

const EditOption* find_edit_option(const std::string& name) {
    const std::vector<EditOption>& all = edit_options();
    const auto found = std::find_if(all.begin(), all.end(), [&](const EditOption& option) { return option.name == name; });
    return found == all.end() ? nullptr : &*found;
}

EditOperation read_operation(const EditOption& option, const std::string& value, const EditReading& reading) {
    EditOperation operation{
        &option, value,
        option.read_with_files == nullptr ? option.read(value) : option.read_with_files(value, reading.files)};
    const std::vector<Finding> unknown = option.route_before == nullptr || reading.unknown_words
                                             ? std::vector<Finding>()
                                             : unknown_route_words(option.route_before + value);
    if (!unknown.empty()) {
        const Finding& first = unknown.front();
        throw std::runtime_error(first.message + (first.hint.empty() ? "" : "; " + first.hint) +
                                 " (--allow-unknown takes it)");
    }
    return operation;
}

}  // namespace quor::input::gaussian

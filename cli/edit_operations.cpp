// Applies operations to the jobs of a document, and holds those on Link 0 lines, title and charge.
#include "edit_operations.hpp"

#include "edit_names.hpp"
#include "number_text.hpp"
#include "plain_text.hpp"
#include "terminal.hpp"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

// --- Link 0 lines

const Link0Key& link0_key(const std::string& text) {
    const Link0Key* key = find_link0_key(text.starts_with('%') ? text.substr(1) : text);
    if (key == nullptr) {
        throw std::runtime_error("'" + text + "' is no Link 0 key");
    }
    return *key;
}

Edit read_set(const std::string& value) {
    const std::size_t equals = value.find('=');
    const Link0Key* flag = equals == std::string::npos ? find_link0_key(value) : nullptr;
    if (equals == std::string::npos && (flag == nullptr || flag->form != Link0Form::Flag)) {
        throw std::runtime_error("KEY=VALUE is wanted, not '" + value + "'");
    }
    const Link0Key& key = link0_key(value.substr(0, equals));
    const std::string text = flag == nullptr ? value.substr(equals + 1) : std::string();
    if (flag == nullptr && key.form == Link0Form::Flag) {
        throw std::runtime_error("'" + std::string(key.name) + "' takes no value");
    }
    if (flag == nullptr && text.empty()) {
        throw std::runtime_error("a value is missing; --unset takes out the line");
    }
    const NamedText named(text);
    const auto check = [&key](const std::string& given) {
        if (key.form == Link0Form::Count && number_of<int>(given).value_or(0) < 1) {
            throw std::runtime_error("'" + given + "' is no number of processors");
        }
    };
    if (!named.has_names()) {
        check(text);
    }
    return [&key, named, check](GJFEditor& job, EditContext& context) {
        const std::string value_here = named.text_for(context);
        check(value_here);
        job.set_link0(key, value_here);
        return true;
    };
}

Edit read_unset(const std::string& value) {
    const Link0Key& key = link0_key(value);
    return [&key](GJFEditor& job, EditContext&) {
        const ControlSection& control = job.get_data().control;
        const bool had_value = key.in_model && link0_value(control, key);
        const std::size_t lines = control.other_link0_lines.size();
        job.unset_link0(key);
        return had_value || control.other_link0_lines.size() < lines;
    };
}

Edit read_chk_from_name(const std::string&) {
    return [](GJFEditor& job, EditContext& context) {
        if (context.path == "-") {
            throw std::runtime_error("standard input has no name");
        }
        job.set_checkpoint_file(std::filesystem::path(context.path).stem().string() + ".chk");
        return true;
    };
}

// --- Title and charge

Edit read_title(const std::string& value) {
    return [named = NamedText(value)](GJFEditor& job, EditContext& context) {
        job.set_title(named.text_for(context));
        return true;
    };
}

// Sets one number of the first pair; those of fragments stay.
Edit set_in_first_pair(std::int32_t ChargeSpinPair::*member, int number) {
    return [member, number](GJFEditor& job, EditContext&) {
        std::vector<ChargeSpinPair> pairs = job.get_charge_spin_pairs();
        pairs.front().*member = number;
        job.set_charge_spin_pairs(pairs);
        return true;
    };
}

Edit read_charge(const std::string& value) {
    const std::optional<int> charge = number_of<int>(value);
    if (!charge) {
        throw std::runtime_error("'" + value + "' is no charge");
    }
    return set_in_first_pair(&ChargeSpinPair::charge, *charge);
}

Edit read_multiplicity(const std::string& value) {
    const std::optional<int> multiplicity = number_of<int>(value);
    if (!multiplicity || *multiplicity < 1) {
        throw std::runtime_error("'" + value + "' is no multiplicity");
    }
    return set_in_first_pair(&ChargeSpinPair::multiplicity, *multiplicity);
}

// --- Jobs

// Tells whether a job has in the file what an operation works on.
bool has_target(const GJFDocument& document, std::size_t job, EditTarget target) {
    switch (target) {
        case EditTarget::Head:
            return true;
        case EditTarget::TitleAndCharge:
            return document.layout(job).charge_line != 0;
        default:
            return document.job(job).get_data().geom.atom_count() != 0;
    }
}

std::string lacking(EditTarget target) {
    return target == EditTarget::Atoms ? "there are no atoms: the molecule comes from a checkpoint or another file"
                                       : "there is no title and no charge: they come from a checkpoint";
}

bool apply(const EditOperation& operation, GJFEditor& job, EditContext& context) {
    const bool wants_atoms = operation.option->target == EditTarget::Atoms;
    if (wants_atoms && job.get_data().geom.format == GeometryFormat::ZMatrix) {
        throw std::runtime_error("the molecule is a Z-matrix, and its rows cannot be changed this way");
    }
    return operation.edit(job, context);
}

std::string as_given(const EditOperation& operation) {
    return operation.option->name + (operation.value.empty() ? std::string() : ' ' + printable(operation.value));
}

// Says once a file what an operation found to say of its jobs.
void tell(const EditOperation& operation, const EditContext& context, bool found, std::vector<EditRemark>& remarks) {
    std::set<std::string> texts(context.remarks.begin(), context.remarks.end());
    if (!found) {
        texts.insert("found nothing to change");
    }
    for (const std::string& text : texts) {
        remarks.push_back({as_given(operation) + ": " + text, printable(context.path)});
    }
}

void apply_to_jobs(const EditOperation& operation, GJFDocument& document, const std::string& path, const EditedJobs& jobs,
                   std::vector<EditRemark>& remarks) {
    const std::size_t only = jobs.only;
    const EditTarget target = operation.option->target;
    bool applied = false;
    bool found = false;
    EditContext context{path, 0, {}};
    const std::size_t end = only == 0 ? document.job_count() : only;
    for (std::size_t job = only == 0 ? 0 : only - 1; job < end; ++job) {
        const bool passed_over = (only == 0 && !document.readable(job)) || !jobs.chosen.has(job + 1);
        if (passed_over || !has_target(document, job, target)) {
            continue;
        }
        applied = true;
        context.job = job + 1;
        try {
            found = apply(operation, document.job(job), context) || found;
        } catch (const std::exception& error) {
            const std::string where = document.job_count() > 1 ? "job " + std::to_string(job + 1) + ": " : std::string();
            throw std::runtime_error(where + operation.option->name + ": " + bare_message(error.what()));
        }
    }
    if (!applied) {
        throw std::runtime_error(std::string(operation.option->name) + ": " + lacking(target));
    }
    tell(operation, context, found, remarks);
}

}  // namespace

std::vector<EditOption> head_edit_options() {
    return {
        {"--set", "KEY=VALUE", "Set a Link 0 key; a flag such as save is given without a value", EditTarget::Head, read_set},
        {"--unset", "KEY", "Take out a Link 0 line", EditTarget::Head, read_unset},
        {"--chk-from-name", nullptr, "Name the checkpoint file after the job file", EditTarget::Head, read_chk_from_name},
        {"--title", "TEXT", "Set the title", EditTarget::TitleAndCharge, read_title},
        {"--charge", "NUMBER", "Set the charge", EditTarget::TitleAndCharge, read_charge},
        {"--multiplicity", "NUMBER", "Set the multiplicity", EditTarget::TitleAndCharge, read_multiplicity},
    };
}

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

EditOperation read_operation(const EditOption& option, const std::string& value, bool unknown_too) {
    EditOperation operation{&option, value, option.read(value)};
    const std::vector<Finding> unknown = option.route_before == nullptr || unknown_too
                                             ? std::vector<Finding>()
                                             : unknown_route_words(option.route_before + value);
    if (!unknown.empty()) {
        const Finding& first = unknown.front();
        throw std::runtime_error(first.message + (first.hint.empty() ? "" : "; " + first.hint) +
                                 " (--allow-unknown takes it)");
    }
    return operation;
}

std::vector<EditRemark> apply_operations(const std::vector<EditOperation>& operations, GJFDocument& document,
                                         const std::string& path, const EditedJobs& jobs) {
    const std::size_t job = jobs.only;
    if (job > document.job_count()) {
        throw std::runtime_error("there is no job " + std::to_string(job) + ": the file has " +
                                 std::to_string(document.job_count()));
    }
    if (job != 0 && !document.readable(job - 1)) {
        throw std::runtime_error("job " + std::to_string(job) + " cannot be read: " + document.fault(job - 1).message);
    }
    std::vector<EditRemark> remarks;
    if (!jobs.chosen.has(0) || (job != 0 && !jobs.chosen.has(job))) {
        return remarks;
    }
    for (const EditOperation& operation : operations) {
        apply_to_jobs(operation, document, path, jobs, remarks);
    }
    return remarks;
}

}  // namespace quor_gjf

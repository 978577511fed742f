// The operations on Link 0 lines, title and charge.
#include <gjf/core/editing/operation_rows.hpp>

#include <gjf/core/editing/named_text.hpp>
#include <gjf/core/editing/number_text.hpp>
#include <gjf/core/job/link0_keys.hpp>

#include <filesystem>
#include <stdexcept>

namespace quor::input::gaussian {
namespace {

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

}  // namespace quor::input::gaussian

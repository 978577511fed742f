// Requests: one row a command, with the options that it knows.
#include <gjf/core/report/request.hpp>

#include <gjf/core/check/fix_text.hpp>
#include <gjf/core/configuration/check_rules.hpp>
#include <gjf/core/editing/edited_text.hpp>
#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/predicate/predicate.hpp>
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/reader/route_lines.hpp>
#include <gjf/core/report/json_values.hpp>

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quor::input::gaussian {
namespace {

struct Request {
    std::string text;
    Json options;
    std::string path;
    std::string* changed = nullptr;  ///< the text that the command makes

    void tell_changed(const std::string& new_text) const {
        if (changed != nullptr) {
            *changed = new_text;
        }
    }
    std::size_t number_option(const char* name) const;  ///< 0 without one
    std::string text_option(const char* name) const;
    std::vector<std::string> list_option(const char* name) const;
    bool flag(const char* name) const;
};

[[noreturn]] void refuse(const char* option, const char* wanted) {
    throw RequestError("option '" + std::string(option) + "' takes " + wanted);
}

std::size_t Request::number_option(const char* name) const {
    const auto found = options.find(name);
    if (found != options.end() && (!found->is_number_unsigned() || found->get<std::size_t>() == 0)) {
        refuse(name, "a number from 1 on");
    }
    return found == options.end() ? 0 : found->get<std::size_t>();
}

std::string Request::text_option(const char* name) const {
    const auto found = options.find(name);
    if (found != options.end() && !found->is_string()) {
        refuse(name, "a text");
    }
    return found == options.end() ? std::string() : found->get<std::string>();
}

std::vector<std::string> Request::list_option(const char* name) const {
    const auto found = options.find(name);
    if (found == options.end()) {
        return {};
    }
    if (!found->is_array() ||
        !std::all_of(found->begin(), found->end(), [](const Json& item) { return item.is_string(); })) {
        refuse(name, "a list of texts");
    }
    return found->get<std::vector<std::string>>();
}

bool Request::flag(const char* name) const {
    const auto found = options.find(name);
    if (found != options.end() && !found->is_boolean()) {
        refuse(name, "true or false");
    }
    return found != options.end() && found->get<bool>();
}

// --- Jobs that fit a condition

std::optional<JobPredicate> condition_of(const Request& request) {
    const std::string condition = request.text_option("where");
    return condition.empty() ? std::nullopt : std::optional(JobPredicate(condition));
}

// --- Commands

// Tells of a finding whether it concerns a job that fits.
std::function<bool(const Finding&)> wanted_findings(const Request& request) {
    return [jobs = ChosenJobs(condition_of(request), request.path, request.text)](const Finding& finding) {
        return jobs.has(finding.job);
    };
}

std::vector<Finding> only(std::vector<Finding> findings, const std::function<bool(const Finding&)>& wanted) {
    std::erase_if(findings, [&](const Finding& each) { return !wanted(each); });
    return findings;
}

// Returns codes, whole or cut short; refuses what begins none.
std::vector<std::string> codes_option(const Request& request, const char* name) {
    std::vector<std::string> codes = request.list_option(name);
    if (const std::string* unknown = find_unknown_code(codes)) {
        throw RequestError("there is no check " + *unknown);
    }
    return codes;
}

// What is reported: what the configuration says that is given as a text; codes of the request stand before its own.
CheckRules rules_of(const Request& request) {
    Configuration configuration;
    CheckRules rules;
    try {
        configuration.add(read_configuration(request.text_option("config"), "config"));
        rules = check_rules(configuration, request.path);
    } catch (const ConfigurationError& error) {
        throw RequestError(error.what());
    }
    for (const auto& [name, codes] : {std::pair("select", &rules.selected), std::pair("ignore", &rules.ignored)}) {
        if (std::vector<std::string> given = codes_option(request, name); !given.empty()) {
            *codes = std::move(given);
        }
    }
    return rules;
}

std::string check_request(const Request& request) {
    return check_json(request.path, only(rules_of(request).check(request.path, request.text, {}), wanted_findings(request)));
}

std::string fix_request(const Request& request) {
    const std::function<bool(const Finding&)> wanted = wanted_findings(request);
    FixOptions options;
    options.unsafe = request.flag("unsafe-fixes");
    options.applies = [&wanted, fixable = codes_option(request, "fixable"), unfixable = codes_option(request, "unfixable")](
                          const Finding& finding) { return wanted(finding) && is_chosen(finding.code, fixable, unfixable); };
    const CheckRules rules = rules_of(request);
    options.check = rules.put_into({});
    FixedText fixed = fix_text(request.text, options);
    rules.judge(request.path, fixed.text, fixed.findings);
    fixed.findings = only(std::move(fixed.findings), wanted);
    request.tell_changed(fixed.text);
    return fix_json(request.path, fixed);
}

std::string report_request(const Request& request) {
    const JobFile file(request.path, request.text);
    const std::vector<std::size_t> jobs = fitting_jobs(condition_of(request), file);
    std::vector<JobField> fields;
    for (const std::string& name : request.list_option("fields")) {
        const JobField* field = find_job_field(name);
        if (field == nullptr) {
            throw RequestError("'" + name + "' is no field");
        }
        fields.push_back(*field);
    }
    return fields.empty() ? readings_json(file, jobs) : fields_json(file, jobs, fields);
}

std::string route_request(const Request& request) {
    ControlSection control;
    control.route_keywords = route_words_of(request.text);
    if (control.route_keywords.empty()) {
        throw RequestError("the text holds no route");
    }
    control.parsed_keywords = GJFParser::parse_keywords(control.route_keywords, {});
    const std::string joined = join_route_words(control.route_keywords).text;
    return route_json(joined, *control.parsed_keywords, GJFParser::expected_extra_input_order(control), check_route(joined));
}

std::string complete_request(const Request& request) {
    const RouteContext context = context_at_end(request.text);
    return completion_json(context, completions_of(context));
}

std::string outline_request(const Request& request) {
    return outline_json(request.path, read_jobs_with_layout(request.text));
}

std::string select_request(const Request& request) {
    return selection_json(request.path, read_jobs_with_layout(request.text), parse_selection(request.text_option("select")));
}

std::string diff_request(const Request& request) {
    const std::string other = request.text_option("other");
    const std::string name = request.text_option("other-filename");
    return diff_json(request.path, name.empty() ? "other" : name,
                     file_changes(read_jobs_with_layout(request.text), read_jobs_with_layout(other)));
}

std::string find_request(const Request& request) {
    const JobFile file(request.path, request.text);
    return find_json(file, fitting_jobs(condition_of(request), file));
}

// What lies beside the output is not looked at.
std::string diagnose_request(const Request& request) {
    if (const std::string missing = missing_for_diagnosis(); !missing.empty()) {
        throw RequestError(missing);
    }
    std::vector<OutputPoint> points;
    const bool wants_steps = request.flag("steps");
    const Diagnosis diagnosis = diagnose_output(*text_source(request.text), [&](const OutputPoint& point) {
        if (wants_steps) {
            points.push_back(point);
        }
    });
    return diagnosis_json(request.path, diagnosis, wants_steps ? &points : nullptr);
}

// --- Edits

// Returns the values of an operation in the order in which they are given: none for one without, which is given as true.
std::vector<std::string> values_of(const EditOption& option, const Json& given) {
    if (option.value == nullptr) {
        if (!given.is_boolean()) {
            refuse(option.name, "true or false");
        }
        return given.get<bool>() ? std::vector<std::string>(1) : std::vector<std::string>();
    }
    const Json list = given.is_array() ? given : Json::array({given});
    if (!std::all_of(list.begin(), list.end(), [](const Json& item) { return item.is_string(); })) {
        refuse(option.name, "a text or a list of texts");
    }
    return list.get<std::vector<std::string>>();
}

std::vector<EditOperation> operations_of(const Request& request) {
    EditReading reading;
    reading.unknown_words = request.flag("allow-unknown");
    std::vector<EditOperation> operations;
    for (const auto& [name, given] : request.options.items()) {
        const EditOption* option = find_edit_option("--" + name);
        if (option == nullptr) {
            continue;  // an option of the request
        }
        for (const std::string& value : values_of(*option, given)) {
            try {
                operations.push_back(read_operation(*option, value, reading));
            } catch (const std::exception& error) {
                throw RequestError(std::string(option->name) + ": " + bare_message(error.what()));
            }
        }
    }
    if (operations.empty()) {
        throw RequestError("no operation is given");
    }
    return operations;
}

std::string edit_request(const Request& request) {
    EditPlan plan;
    plan.operations = operations_of(request);
    plan.job = request.number_option("job");
    plan.where = condition_of(request);
    plan.force = request.flag("force");
    plan.strict = request.flag("strict");
    plan.checks = !request.flag("no-check");
    if (plan.strict && !plan.checks) {
        throw RequestError("'strict' excludes 'no-check'");
    }
    const EditedText edited = edit_text(request.text, plan, request.path);
    request.tell_changed(edited.text);
    return edit_json(request.path, request.text, edited);
}

struct Command {
    std::string_view name;
    std::string (*run)(const Request& request);
    std::array<std::string_view, 8> options;  ///< empty behind the last
};

constexpr Command commands[] = {
    {"check", check_request, {"config", "ignore", "select", "stdin-filename", "where"}},
    {"fix", fix_request, {"config", "fixable", "ignore", "select", "stdin-filename", "unfixable", "unsafe-fixes", "where"}},
    {"report", report_request, {"fields", "stdin-filename", "where"}},
    {"route", route_request, {}},
    {"complete", complete_request, {}},
    {"outline", outline_request, {"stdin-filename"}},
    {"select", select_request, {"select", "stdin-filename"}},
    {"diff", diff_request, {"other", "other-filename", "stdin-filename"}},
    {"edit", edit_request, {"allow-unknown", "force", "job", "no-check", "stdin-filename", "strict", "where"}},
    {"find", find_request, {"stdin-filename", "where"}},
    {"diagnose", diagnose_request, {"stdin-filename", "steps"}},
};

template <typename Names, typename NameOf>
std::string listed(const Names& names, NameOf name_of) {
    std::string text;
    for (const auto& each : names) {
        const std::string name(name_of(each));
        text += text.empty() || name.empty() ? name : ", " + name;
    }
    return text.empty() ? "none" : text;
}

const Command& command_named(std::string_view name) {
    const auto found =
        std::find_if(std::begin(commands), std::end(commands), [&](const Command& each) { return each.name == name; });
    if (found == std::end(commands)) {
        throw RequestError("no command '" + std::string(name) + "'; there are " +
                           listed(commands, [](const Command& each) { return each.name; }));
    }
    return *found;
}

Json options_of(std::string_view text, const Command& command) {
    Json options = text.empty() ? Json::object() : Json::parse(text, nullptr, false);
    if (!options.is_object()) {
        throw RequestError("the options are no JSON object");
    }
    for (const auto& [name, value] : options.items()) {
        const bool is_operation = command.run == edit_request && find_edit_option("--" + name) != nullptr;
        const bool is_known = std::find(command.options.begin(), command.options.end(), name) != command.options.end();
        if (name.empty() || (!is_known && !is_operation)) {
            throw RequestError("'" + std::string(command.name) + "' has no option '" + name + "'; it has " +
                               (command.run == edit_request ? "the operations of quor-gjf edit, and " : "") +
                               listed(command.options, [](auto each) { return each; }));
        }
    }
    return options;
}

}  // namespace

RequestError::~RequestError() = default;

std::string request_json(std::string_view command, std::string_view text, std::string_view options, std::string* changed) {
    const Command& wanted = command_named(command);
    Request request{std::string(text), options_of(options, wanted), {}, changed};
    request.path = request.text_option("stdin-filename");
    request.path = request.path.empty() ? "-" : request.path;
    return wanted.run(request);
}

std::string request_error_json(const std::string& message) {
    Json object = versioned();
    object["error"] = message;
    return json_line(object);
}

}  // namespace quor::input::gaussian

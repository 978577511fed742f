// The checker.
#include "bindings.hpp"
#include "threads.hpp"

#include <gjf/core/check/change_checks.hpp>
#include <gjf/core/check/fix_text.hpp>
#include <gjf/core/configuration/check_rules.hpp>
#include <gjf/core/report/request.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>

#include <string>
#include <utility>
#include <vector>

namespace quor_python {

using namespace quor::input::gaussian;

namespace {

py::tuple to_tuple(const TextEdit& edit) { return py::make_tuple(edit.begin, edit.end, to_python(edit.text)); }

py::tuple to_tuple(const RelatedPlace& place) {
    return py::make_tuple(to_python(place.message), place.line, place.column, place.length);
}

py::tuple to_tuple(const Fix& fix);
py::tuple to_tuple(const FixReport& fix);
py::tuple to_tuple(const Finding& finding);

// Returns a tuple of the tuples of all items.
template <typename Items>
py::tuple to_tuples(const Items& items) {
    py::list list;
    for (const auto& item : items) {
        list.append(to_tuple(item));
    }
    return list;
}

py::tuple to_tuple(const Fix& fix) {
    return py::make_tuple(to_python(fix.title), fix_safety_name(fix.safety), to_tuples(fix.edits));
}

py::tuple to_tuple(const FixReport& fix) {
    return py::make_tuple(to_python(fix.code), fix.line, to_python(fix.title), fix_safety_name(fix.safety));
}

py::tuple to_tuple(const Finding& finding) {
    return py::make_tuple(to_python(finding.code), severity_name(finding.severity), to_python(finding.message), finding.job,
                          finding.line, finding.column, finding.length, to_python(finding.hint), finding.begin, finding.end,
                          to_tuples(finding.related), to_tuples(finding.fixes));
}

/// What became of one file: what was found in it, or why it cannot be read.
struct CheckedFile {
    std::vector<Finding> findings;
    std::string error;
};

// What a caller wants of checks: codes that are not reported, and what a configuration says, whose file is named in faults.
struct Wishes {
    std::vector<std::string> ignored;
    Configuration configuration;

    Wishes(std::vector<Text> ignored_codes, const Text& config, const Text& config_name)
        : ignored(to_strings(std::move(ignored_codes))) {
        try {
            configuration.add(read_configuration(config.value, config_name.value));
            check_rules(configuration, {});
        } catch (const ConfigurationError& error) {
            throw py::value_error(error.what());
        }
    }

    CheckRules rules_for(const std::string& path) const {
        CheckRules rules = check_rules(configuration, path);
        rules.left_out.insert(rules.left_out.end(), ignored.begin(), ignored.end());
        return rules;
    }

    std::vector<Finding> check(const std::string& path, const std::string& text) const {
        CheckOptions options;
        options.path = path;
        return rules_for(path).check(path, text, std::move(options));
    }
};

CheckedFile check_file(const std::string& path, const Wishes& wishes) noexcept {
    CheckedFile checked;
    try {
        checked.findings = wishes.check(path, read_file_text(path));
    } catch (const std::exception& error) {
        checked.error = error.what();
    }
    return checked;
}

py::list check_many(std::vector<Text> paths, std::vector<Text> ignored_codes, unsigned threads, const Text& config,
                    const Text& config_name) {
    const std::vector<std::string> names = to_strings(std::move(paths));
    const Wishes wishes(std::move(ignored_codes), config, config_name);
    std::vector<CheckedFile> files(names.size());
    {
        const py::gil_scoped_release released;
        in_threads(names.size(), threads, [&](std::size_t i) { files[i] = check_file(names[i], wishes); });
    }
    py::list results;
    for (const CheckedFile& file : files) {
        results.append(py::make_tuple(to_tuples(file.findings), to_python(file.error)));
    }
    return results;
}

py::tuple check_one(const Text& text, std::vector<Text> ignored_codes, const Text& config, const Text& config_name) {
    std::vector<Finding> findings;
    {
        const Wishes wishes(std::move(ignored_codes), config, config_name);
        const py::gil_scoped_release released;
        findings = wishes.check({}, text.value);
    }
    return to_tuples(findings);
}

py::tuple fix_one(const Text& text, bool unsafe, std::vector<Text> ignored_codes, const Text& config,
                  const Text& config_name) {
    FixedText fixed;
    {
        const Wishes wishes(std::move(ignored_codes), config, config_name);
        const py::gil_scoped_release released;
        const CheckRules rules = wishes.rules_for({});
        FixOptions options;
        options.unsafe = unsafe;
        options.check = rules.put_into({});
        fixed = fix_text(text.value, options);
        rules.judge({}, fixed.text, fixed.findings);
    }
    return py::make_tuple(to_python(fixed.text), to_tuples(fixed.findings), to_tuples(fixed.applied),
                          to_tuples(fixed.dropped));
}

py::list described_codes() {
    py::list list;
    for (const CheckDescription& description : check_descriptions()) {
        list.append(py::make_tuple(to_python(description.code), to_python(description.title)));
    }
    return list;
}

py::object answer_to(const Text& command, const Text& text, const Text& options) {
    std::string answer;
    {
        const py::gil_scoped_release released;
        answer = request_json(command.value, text.value, options.value);
    }
    return to_python(answer);
}

}  // namespace

void bind_checks(py::module_& module) {
    module.def("missing_for_checks", [] { return to_python(missing_for_checks()); });
    module.def("vocabulary_warning", [] { return to_python(default_route_schema_warning()); });
    module.def("check_many", &check_many);
    module.def("check_text", &check_one);
    module.def("findings_of_change", [](const Text& before, const Text& after) {
        std::vector<Finding> findings;
        {
            const py::gil_scoped_release released;
            findings = findings_of_change(before.value, after.value);
        }
        return to_tuples(findings);
    });
    module.def("request_json", &answer_to);
    module.def("unknown_route_words", [](const Text& route) { return to_tuples(unknown_route_words(route.value)); });
    module.def("fix_text", &fix_one);
    module.def("check_descriptions", &described_codes);
}

}  // namespace quor_python

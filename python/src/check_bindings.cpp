// The checker.
#include "bindings.hpp"

#include <gjf/core/check/checker.hpp>

#include <string>
#include <utility>
#include <vector>

namespace quor_python {

using namespace quor::input::gaussian;

void bind_checks(py::module_& module) {
    module.def("check_text", [](const Text& text, std::vector<Text> ignored_codes) {
        std::vector<Finding> findings;
        {
            const CheckOptions options{to_strings(std::move(ignored_codes))};
            const py::gil_scoped_release released;
            findings = check_text(text.value, options);
        }
        py::list list;
        for (const Finding& finding : findings) {
            list.append(py::make_tuple(to_python(finding.code), severity_name(finding.severity), to_python(finding.message),
                                       finding.job, finding.line, finding.column, finding.length, to_python(finding.hint)));
        }
        return list;
    });
    module.def("check_descriptions", [] {
        py::list list;
        for (const CheckDescription& description : check_descriptions()) {
            list.append(py::make_tuple(description.code, description.title));
        }
        return list;
    });
}

}  // namespace quor_python

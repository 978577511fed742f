// Link 0, title, charge and multiplicity, text and files of one job.
#include "bindings.hpp"

#include "same_job.hpp"

#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/basis/job_size.hpp>
#include <gjf/core/job/link0_keys.hpp>
#include <gjf/core/report/json.hpp>
#include <gjf/core/route_schema_paths.hpp>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quor_python {
namespace {

using namespace quor::input::gaussian;
using Pair = std::pair<int, int>;

std::vector<Pair> pairs_of(const JobHandle& job) {
    std::vector<Pair> pairs;
    for (const ChargeSpinPair& pair : job.editor.get_data().geom.charge_spin_pairs()) {
        pairs.emplace_back(pair.charge, pair.multiplicity);
    }
    return pairs;
}

void set_pairs(JobHandle& job, const std::vector<Pair>& pairs) {
    std::vector<ChargeSpinPair> list;
    list.reserve(pairs.size());
    for (const auto& [charge, multiplicity] : pairs) {
        list.push_back({charge, multiplicity});
    }
    job.editor.set_charge_spin_pairs(list);
}

// Binds a Link 0 value that is a text: None takes it away.
void bind_link0_text(JobClass& job, const char* name, void (GJFEditor::*set)(const std::string&),
                     void (GJFEditor::*remove)()) {
    job.def_property(
        name,
        [key = find_link0_key(name)](const JobHandle& self) {
            return to_python_or_none(find_link0_value(self.editor.get_data().control, *key));
        },
        [set, remove](JobHandle& self, std::optional<Text> value) {
            value ? (self.editor.*set)(value->value) : (self.editor.*remove)();
        });
}

void bind_link0(JobClass& job) {
    bind_link0_text(job, "chk", &GJFEditor::set_checkpoint_file, &GJFEditor::remove_checkpoint_file);
    bind_link0_text(job, "oldchk", &GJFEditor::set_oldchk_file, &GJFEditor::remove_oldchk_file);
    bind_link0_text(job, "rwf", &GJFEditor::set_rwf_file, &GJFEditor::remove_rwf_file);
    bind_link0_text(job, "mem", &GJFEditor::set_mem, &GJFEditor::remove_mem);
    bind_link0_text(job, "cpu", &GJFEditor::set_cpu, &GJFEditor::remove_cpu);
    job.def_property(
        "nproc",
        [](const JobHandle& self) -> std::optional<int> {
            const auto count = find_link0_value(self.editor.get_data().control, *find_link0_key("nproc"));
            return count ? std::optional(std::stoi(*count)) : std::nullopt;
        },
        [](JobHandle& self, std::optional<int> count) {
            count ? self.editor.set_nproc(*count) : self.editor.remove_nproc();
        });
    job.def_property(
        "other_link0_lines",
        [](const JobHandle& self) { return to_python(self.editor.get_data().control.other_link0_lines); },
        [](JobHandle& self, std::vector<Text> lines) { self.editor.set_other_link0_lines(to_strings(std::move(lines))); });
}

void bind_head(JobClass& job) {
    job.def_property(
        "title", [](const JobHandle& self) { return to_python(self.editor.get_data().title); },
        [](JobHandle& self, const Text& title) { self.editor.set_title(title.value); });
    job.def_property(
        "overlays", [](const JobHandle& self) { return to_python_or_none(self.editor.get_data().extra_overlays); },
        [](JobHandle& self, std::optional<Text> text) {
            self.editor.set_overlays(text ? std::optional<std::string>(std::move(text->value)) : std::nullopt);
        });
    job.def_property_readonly("charge", [](const JobHandle& self) { return self.editor.get_data().geom.charge; });
    job.def_property_readonly("multiplicity",
                              [](const JobHandle& self) { return self.editor.get_data().geom.multiplicity; });
    job.def("set_charge_and_multiplicity",
            [](JobHandle& self, int charge, int multiplicity) { self.editor.set_charge_and_spin(charge, multiplicity); });
    job.def_property("pairs", &pairs_of, &set_pairs);
}

}  // namespace

void bind_job(JobClass& job) {
    job.def(py::init<>());
    job.def("copy", [](const JobHandle& self) { return JobHandle(self); });
    job.def("assign", [](JobHandle& self, const JobHandle& other) { self = other; });
    job.def("text", [](const JobHandle& self, bool force) {
        const JobHandle copy = self;
        return Text{[&] {
            const py::gil_scoped_release released;
            return job_text(copy, force);
        }()};
    });
    job.def("save", [](JobHandle& self, const Text& path, bool is_own, bool becomes_own, bool force) {
        JobHandle copy = self;
        {
            const py::gil_scoped_release released;
            copy = save_job(copy, {path.value, is_own, becomes_own, force});
        }
        self = std::move(copy);
    });
    job.def("is_as_read", [](const JobHandle& self) { return is_as_read(self); });
    job.def("fixed_layout", [](const JobHandle& self) { return to_python(self.editor.to_gjf_string()); });
    job.def("report", [](const JobHandle& self) { return to_python(GJFParser::format_full_gjf(self.editor.get_data())); });
    job.def("json", [](JobHandle& self) {
        self.editor.ensure_parsed_keywords();
        return job_json(self.editor.get_data());
    });
    job.def("size", [](JobHandle& self) {
        self.editor.ensure_parsed_keywords();
        const JobSize size = job_size(self.editor.get_data());
        return std::pair(size.functions, size.electrons);
    });
    job.def("first_difference", [](const JobHandle& self, const JobHandle& other) -> std::optional<std::string> {
        const char* part =
            first_difference(self.editor.get_data(), other.editor.get_data(), JobComparison::Coordinates::AsNumber);
        return part == nullptr ? std::nullopt : std::optional<std::string>(part);
    });
    bind_link0(job);
    bind_head(job);
}

}  // namespace quor_python

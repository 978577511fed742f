// The extra input sections of one job.
#include "bindings.hpp"

#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/sections/section_kinds.hpp>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quor_python {
namespace {

using namespace quor::input::gaussian;

ExtraInputSectionKind to_kind(int value) { return static_cast<ExtraInputSectionKind>(value); }

int to_int(ExtraInputSectionKind kind) { return static_cast<int>(kind); }

std::vector<ExtraInputSectionKind> to_kinds(const std::vector<int>& values) {
    std::vector<ExtraInputSectionKind> kinds;
    kinds.reserve(values.size());
    for (const int value : values) {
        kinds.push_back(to_kind(value));
    }
    return kinds;
}

const std::vector<ExtraInputSection>& sections_of(const JobHandle& job) { return job.editor.get_data().extra_inputs; }

const ExtraInputSection& section_at(const JobHandle& job, std::size_t index) {
    if (index >= sections_of(job).size()) {
        throw py::index_error("there is no section " + std::to_string(index));
    }
    return sections_of(job)[index];
}

}  // namespace

void bind_sections(JobClass& job) {
    job.def_static("section_kind_name",
                   [](int kind) { return to_python(GJFParser::extra_input_section_kind_name(to_kind(kind))); });
    job.def_static("find_section_kind", [](const std::string& text) -> std::optional<int> {
        const std::optional<ExtraInputSectionKind> kind = find_extra_input_kind(text);
        return kind ? std::optional(to_int(*kind)) : std::nullopt;
    });
    job.def("section_count", [](const JobHandle& self) { return sections_of(self).size(); });
    job.def("section_kind", [](const JobHandle& self, std::size_t index) { return to_int(section_at(self, index).kind); });
    job.def("section_text", [](const JobHandle& self, std::size_t index) {
        section_at(self, index);
        return to_python(self.editor.get_data().extra_input_text(index));
    });
    job.def("add_section", [](JobHandle& self, const Text& text) { self.editor.add_extra_input(text.value); });
    job.def("set_sections",
            [](JobHandle& self, std::vector<Text> texts) { self.editor.set_extra_inputs(to_strings(std::move(texts))); });
    job.def("set_section", [](JobHandle& self, std::size_t index, int kind, const Text& text) {
        self.editor.set_extra_input(index, to_kind(kind), text.value);
    });
    job.def("remove_section", [](JobHandle& self, std::size_t index) { self.editor.remove_extra_input(index); });
    job.def("remove_sections_of", [](JobHandle& self, const std::vector<int>& kinds) {
        self.editor.remove_extra_inputs_by_kind(to_kinds(kinds));
    });
    job.def("clear_sections", [](JobHandle& self) { self.editor.clear_extra_inputs(); });
    job.def("insert_section", [](JobHandle& self, int kind, const Text& text) {
        return self.editor.insert_extra_input_ordered(to_kind(kind), text.value);
    });
    job.def("upsert_section", [](JobHandle& self, int kind, const Text& text, bool append) {
        self.editor.upsert_extra_input_section(to_kind(kind), text.value, append);
    });
    job.def("connect_section", [](JobHandle& self, int index) { self.editor.parse_connectivity_from_section(index); });
    job.def("expected_sections", [](const JobHandle& self) {
        std::vector<int> kinds;
        for (const ExtraInputSectionKind kind : GJFParser::expected_extra_input_order(self.editor.get_data())) {
            kinds.push_back(to_int(kind));
        }
        return kinds;
    });
}

}  // namespace quor_python

// The body of one extra input section, as text or as a bond list.
#include <gjf/core/job/extra_input_section.hpp>

#include <gjf/core/text/text.hpp>

#include <utility>
#include <vector>

namespace quor::input::gaussian {

ExtraInputSection::ExtraInputSection(ExtraInputSectionKind section_kind, const std::string& section_text) {
    assign_text(section_kind, section_text);
}

ExtraInputSection ExtraInputSection::from_connectivity(ConnectivitySection connectivity) {
    ExtraInputSection section;
    section.assign_connectivity(std::move(connectivity));
    return section;
}

void ExtraInputSection::assign_text(ExtraInputSectionKind section_kind, const std::string& section_text) {
    if (section_kind != ExtraInputSectionKind::Connectivity) {
        std::string copy = section_text;
        kind = section_kind;
        content = std::move(copy);
        return;
    }
    const std::vector<std::string_view> lines = split_lines(section_text);
    ConnectivitySection connectivity;
    connectivity.parse_from_lines(std::vector<std::string>(lines.begin(), lines.end()));
    assign_connectivity(std::move(connectivity));
}

void ExtraInputSection::assign_connectivity(ConnectivitySection connectivity) {
    content = std::move(connectivity);
    kind = ExtraInputSectionKind::Connectivity;
}

bool ExtraInputSection::is_connectivity() const noexcept { return kind == ExtraInputSectionKind::Connectivity; }

const ConnectivitySection* ExtraInputSection::connectivity() const noexcept {
    return std::get_if<ConnectivitySection>(&content);
}

ConnectivitySection* ExtraInputSection::mutable_connectivity() noexcept {
    return std::get_if<ConnectivitySection>(&content);
}

std::string ExtraInputSection::text() const { return text(0); }

std::string ExtraInputSection::text(std::size_t atom_count) const {
    const ConnectivitySection* bonds = connectivity();
    if (bonds == nullptr) {
        return std::get<std::string>(content);
    }
    const std::vector<std::string> lines = bonds->to_lines_with_atom_count(atom_count);
    const std::vector<std::string_view> views(lines.begin(), lines.end());
    return join_lines(views.data(), views.size());
}

}  // namespace quor::input::gaussian

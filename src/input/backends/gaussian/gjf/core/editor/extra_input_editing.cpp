// Adds, replaces, removes and orders the sections after the molecule.
#include <gjf/core/editor/gjf_editor.hpp>

#include <core/memory/reserve_one_more.hpp>
#include <gjf/core/editor/bond_checks.hpp>

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

namespace quor::input::gaussian {
namespace {

// Sections belong in the order of their kinds; what is not known comes last.
std::int64_t rank_of(ExtraInputSectionKind kind) noexcept {
    constexpr std::int64_t unknown_rank = 1000000;
    return kind == ExtraInputSectionKind::Unknown ? unknown_rank : static_cast<std::int64_t>(kind);
}

// Joins two texts by a line break, unless one is empty.
std::string join_texts(std::string text, std::string_view addition) {
    if (text.empty() || addition.empty()) {
        return text.empty() ? std::string(addition) : text;
    }
    if (text.back() != '\n') {
        text += '\n';
    }
    const std::size_t begin = std::min(addition.find_first_not_of("\r\n"), addition.size());
    return text.append(addition.substr(begin));
}

bool same_numbering(const GJFEditor::SectionNumbering& a, const GJFEditor::SectionNumbering& b) noexcept {
    return a.origins == b.origins || (a.origins != nullptr && b.origins != nullptr && *a.origins == *b.origins);
}

}  // namespace

void GJFEditor::add_extra_input(const std::string& text) {
    SectionNumbering now = numbering_of(atom_origins_);
    core::memory::reserve_one_more(section_numberings_);
    touch(JobPart::ExtraInput);
    data_.extra_inputs.emplace_back(ExtraInputSectionKind::Unknown, text);
    section_numberings_.push_back(std::move(now));
}

void GJFEditor::set_extra_inputs(const std::vector<std::string>& texts) {
    std::vector<ExtraInputSection> sections;
    sections.reserve(texts.size());
    for (const std::string& text : texts) {
        sections.emplace_back(ExtraInputSectionKind::Unknown, text);
    }
    touch(JobPart::ExtraInput);
    section_numberings_ = std::vector<SectionNumbering>(texts.size(), numbering_of(atom_origins_));
    data_.extra_inputs = std::move(sections);
}

void GJFEditor::validate_extra_input_index(std::size_t index) const {
    if (index >= data_.extra_inputs.size()) {
        throw GJFParseException("Invalid extra input section index: " + std::to_string(index));
    }
}

// Puts sections in the place of all; refused when their bonds are not valid.
void GJFEditor::install_sections(std::vector<ExtraInputSection> sections, std::vector<SectionNumbering> numberings) {
    touch(JobPart::ExtraInput);
    data_.extra_inputs.swap(sections);
    try {
        settle_bonds(data_);
        check_bonds(data_);
    } catch (...) {
        data_.extra_inputs.swap(sections);
        throw;
    }
    section_numberings_ = std::move(numberings);
}

void GJFEditor::set_extra_input(std::size_t index, ExtraInputSectionKind kind, const std::string& text) {
    validate_extra_input_index(index);
    std::vector<ExtraInputSection> sections = data_.extra_inputs;
    sections[index] = ExtraInputSection(kind, text);
    std::vector<SectionNumbering> numberings = section_numberings_;
    numberings[index] = numbering_of(atom_origins_);
    install_sections(std::move(sections), std::move(numberings));
}

void GJFEditor::remove_extra_input(std::size_t index) {
    validate_extra_input_index(index);
    touch(JobPart::ExtraInput);
    data_.extra_inputs.erase(data_.extra_inputs.begin() + static_cast<std::ptrdiff_t>(index));
    section_numberings_.erase(section_numberings_.begin() + static_cast<std::ptrdiff_t>(index));
}

void GJFEditor::remove_extra_inputs_by_kind(const std::vector<ExtraInputSectionKind>& kinds) {
    const auto listed = [&kinds](const ExtraInputSection& section) {
        return std::find(kinds.begin(), kinds.end(), section.kind) != kinds.end();
    };
    touch(JobPart::ExtraInput);
    std::vector<ExtraInputSection>& sections = data_.extra_inputs;
    std::size_t kept = 0;
    for (std::size_t i = 0; i < sections.size(); ++i) {
        if (listed(sections[i])) {
            continue;
        }
        if (kept < i) {
            sections[kept] = std::move(sections[i]);
            section_numberings_[kept] = std::move(section_numberings_[i]);
        }
        ++kept;
    }
    sections.erase(sections.begin() + static_cast<std::ptrdiff_t>(kept), sections.end());
    section_numberings_.resize(kept);
}

void GJFEditor::clear_extra_inputs() {
    touch(JobPart::ExtraInput);
    data_.extra_inputs.clear();
    section_numberings_.clear();
}

std::size_t GJFEditor::insert_extra_input_ordered(ExtraInputSectionKind kind, const std::string& text) {
    std::vector<ExtraInputSection> sections = data_.extra_inputs;
    const auto place = std::find_if(sections.begin(), sections.end(), [kind](const ExtraInputSection& section) {
        return rank_of(section.kind) > rank_of(kind);
    });
    const auto index = static_cast<std::size_t>(place - sections.begin());
    sections.emplace(place, kind, text);
    std::vector<SectionNumbering> numberings = section_numberings_;
    numberings.insert(numberings.begin() + static_cast<std::ptrdiff_t>(index), numbering_of(atom_origins_));
    install_sections(std::move(sections), std::move(numberings));
    return index;
}

void GJFEditor::upsert_extra_input_section(ExtraInputSectionKind kind, const std::string& text, bool append) {
    const std::int32_t found = data_.find_extra_input_index(kind);
    if (found < 0) {
        insert_extra_input_ordered(kind, text);
        return;
    }
    const auto index = static_cast<std::size_t>(found);
    if (!append) {
        set_extra_input(index, kind, text);
        return;
    }
    const std::string old_text = data_.extra_input_text(index);
    const SectionNumbering old = section_numberings_[index];
    set_extra_input(index, kind, join_texts(old_text, text));
    section_numberings_[index].mixed = old.mixed || (!old_text.empty() && !same_numbering(old, section_numberings_[index]));
}

void GJFEditor::set_molecular_mechanics_parameters(const std::string& text) {
    upsert_extra_input_section(ExtraInputSectionKind::MMParameters, text, false);
}

void GJFEditor::append_molecular_mechanics_parameters(const std::string& text) {
    upsert_extra_input_section(ExtraInputSectionKind::MMParameters, text, true);
}

void GJFEditor::clear_molecular_mechanics_parameters() {
    remove_extra_inputs_by_kind({ExtraInputSectionKind::MMParameters});
}

}  // namespace quor::input::gaussian

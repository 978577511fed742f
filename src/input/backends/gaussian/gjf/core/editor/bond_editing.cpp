// Sets, removes and lists bonds, and makes the section that holds them.
#include <gjf/core/editor/gjf_editor.hpp>

#include <core/memory/reserve_one_more.hpp>
#include <gjf/core/editor/bond_checks.hpp>

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>

namespace quor::input::gaussian {

ExtraInputSection* GJFEditor::mutable_connectivity_section() noexcept {
    try {
        touch(JobPart::ExtraInput);
    } catch (const std::bad_alloc&) {
        record_.reset();  // so that all is compared
    }
    const auto section = std::find_if(data_.extra_inputs.begin(), data_.extra_inputs.end(),
                                      [](const ExtraInputSection& candidate) { return candidate.is_connectivity(); });
    return section == data_.extra_inputs.end() ? nullptr : &*section;
}

ConnectivitySection* GJFEditor::mutable_connectivity() noexcept {
    ExtraInputSection* section = mutable_connectivity_section();
    return section == nullptr ? nullptr : section->mutable_connectivity();
}

ConnectivitySection* GJFEditor::bonds_of_the_list() {
    ConnectivitySection* connectivity = mutable_connectivity();
    return connectivity == nullptr || name_atoms_elsewhere(data_, connectivity->bonds) ? nullptr : connectivity;
}

ConnectivitySection& GJFEditor::ensure_connectivity_section() {
    if (ConnectivitySection* connectivity = mutable_connectivity()) {
        return *connectivity;
    }
    const auto place = std::find_if(data_.extra_inputs.begin(), data_.extra_inputs.end(),
                                    [](const ExtraInputSection& section) { return !section.is_connectivity(); });
    const auto index = place - data_.extra_inputs.begin();
    core::memory::reserve_one_more(section_numberings_);
    ConnectivitySection& made =
        *data_.extra_inputs.insert(place, ExtraInputSection::from_connectivity({}))->mutable_connectivity();
    section_numberings_.insert(section_numberings_.begin() + index, SectionNumbering());
    return made;
}

void GJFEditor::set_bond_order(std::size_t a, std::size_t b, double order) {
    validate_atom_index(a);
    validate_atom_index(b);
    if (a == b) {
        throw GJFParseException("Cannot create a bond from an atom to itself");
    }
    if (!std::isfinite(order)) {
        throw GJFParseException("Bond order must be finite");
    }
    touch(JobPart::ExtraInput);
    if (ConnectivitySection* connectivity = mutable_connectivity()) {
        connectivity->set_bond_order(a, b, order);
        return;
    }
    // The bond is made first: a section without it must not stay when memory runs out.
    ConnectivitySection bond;
    bond.set_bond_order(a, b, order);
    ensure_connectivity_section().bonds.swap(bond.bonds);
}

void GJFEditor::remove_bond(std::size_t a, std::size_t b) {
    validate_atom_index(a);
    validate_atom_index(b);
    touch(JobPart::ExtraInput);
    if (ConnectivitySection* connectivity = mutable_connectivity()) {
        connectivity->remove_bond(a, b);
    }
}

double GJFEditor::get_bond_order(std::size_t a, std::size_t b) const {
    validate_atom_index(a);
    validate_atom_index(b);
    const ConnectivitySection* connectivity = data_.connectivity();
    return connectivity == nullptr ? 0.0 : connectivity->get_bond_order(a, b);
}

std::vector<std::size_t> GJFEditor::get_connected_atoms(std::size_t index) const {
    validate_atom_index(index);
    const ConnectivitySection* connectivity = data_.connectivity();
    return connectivity == nullptr ? std::vector<std::size_t>() : connectivity->get_connected_atoms(index);
}

std::vector<Bond> GJFEditor::get_all_bonds() const {
    const ConnectivitySection* connectivity = data_.connectivity();
    return connectivity == nullptr ? std::vector<Bond>() : connectivity->bonds;
}

std::size_t GJFEditor::get_bond_count() const noexcept {
    const ConnectivitySection* connectivity = data_.connectivity();
    return connectivity == nullptr ? 0 : connectivity->bonds.size();
}

void GJFEditor::clear_connectivity() {
    touch(JobPart::ExtraInput);
    if (ConnectivitySection* connectivity = mutable_connectivity()) {
        connectivity->bonds.clear();
    }
}

void GJFEditor::parse_connectivity_from_section(int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= data_.extra_inputs.size()) {
        throw GJFParseException("Invalid connectivity section index: " + std::to_string(index));
    }
    const auto place = static_cast<std::size_t>(index);
    ExtraInputSection section(ExtraInputSectionKind::Connectivity, data_.extra_input_text(place));
    check_bond_atoms(data_, section.connectivity()->bonds);
    std::vector<ExtraInputSection> sections = data_.extra_inputs;
    sections[place] = std::move(section);
    std::vector<SectionNumbering> numberings = section_numberings_;
    numberings[place] = numbering_of(atom_origins_);
    install_sections(std::move(sections), std::move(numberings));
}

}  // namespace quor::input::gaussian

// Sets and asks for freeze codes, ONIOM layers, fragments, MM types and charges.
//
// The four forms of selection are one: a test of an atom and its index. New texts are made before any atom changes, so that
// a failure leaves the job as it was.
#include <gjf/core/editor/gjf_editor.hpp>

#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace quor::input::gaussian {
namespace {

using AtomSelector = GJFEditor::AtomSelector;

constexpr const char* fragment_key = "Fragment";
constexpr const char* low_layer = "L";

AtomSelector has_element(const std::string& element) {
    return [&element](const AtomCoord& atom, std::size_t) { return atom.info.element == element; };
}

bool any_atom(const AtomCoord& /*atom*/, std::size_t /*index*/) { return true; }

// Marks the atoms of a list; indices past the end are skipped.
std::vector<bool> marks_of(const std::vector<std::size_t>& indices, std::size_t atom_count) {
    std::vector<bool> marks(atom_count, false);
    for (const std::size_t index : indices) {
        if (index < atom_count) {
            marks[index] = true;
        }
    }
    return marks;
}

// Asks the selector once for each atom, in order, before anything changes.
std::vector<std::size_t> selected_by(const std::vector<AtomCoord>& atoms, const AtomSelector& selector) {
    std::vector<std::size_t> selected;
    for (std::size_t i = 0; i < atoms.size(); ++i) {
        if (selector(atoms[i], i)) {
            selected.push_back(i);
        }
    }
    return selected;
}

template <typename Matches>
std::vector<std::size_t> indices_where(const std::vector<AtomCoord>& atoms, Matches matches) {
    std::vector<std::size_t> indices;
    for (std::size_t i = 0; i < atoms.size(); ++i) {
        if (matches(atoms[i])) {
            indices.push_back(i);
        }
    }
    return indices;
}

bool is_frozen(const AtomCoord& atom) noexcept { return atom.freeze && *atom.freeze != 0; }

bool has_layer(const AtomCoord& atom) noexcept { return atom.layer && !atom.layer->empty(); }

bool is_fragment_key(const std::string& key) noexcept { return equals_folded(key, "fragment"); }

const std::string* fragment_of(const AtomCoord& atom) { return find_parameter(atom.info, "fragment"); }

bool has_fragment(const AtomCoord& atom, const std::string& fragment) {
    const std::string* text = fragment_of(atom);
    return text != nullptr && *text == fragment;
}

std::map<std::string, std::string> params_with_fragment(const std::map<std::string, std::string>& params,
                                                        const std::string& fragment) {
    std::map<std::string, std::string> result;
    for (const auto& entry : params) {
        if (!is_fragment_key(entry.first)) {
            result.insert(entry);
        }
    }
    if (!fragment.empty()) {
        result[fragment_key] = fragment;
    }
    return result;
}

}  // namespace

// --- Freeze codes
// ---------------------------------------------------------------------------------------------------------------------

void GJFEditor::set_freeze_all(int code) { set_freeze_by_selector(any_atom, code); }

void GJFEditor::set_freeze_by_element(const std::string& element, int code) {
    set_freeze_by_selector(has_element(element), code);
}

void GJFEditor::set_freeze_by_index(const std::vector<std::size_t>& indices, int code) {
    const std::vector<bool> marks = marks_of(indices, data_.geom.atoms.size());
    set_freeze_by_selector([&marks](const AtomCoord&, std::size_t index) { return marks[index]; }, code);
}

void GJFEditor::set_freeze_by_selector(const AtomSelector& selector, int code) {
    const std::vector<std::size_t> selected = selected_by(data_.geom.atoms, selector);
    touch_atoms(selected);
    for (const std::size_t index : selected) {
        data_.geom.atoms[index].freeze = code;
    }
}

std::size_t GJFEditor::count_frozen_atoms() const {
    return static_cast<std::size_t>(std::count_if(data_.geom.atoms.begin(), data_.geom.atoms.end(), is_frozen));
}

std::string GJFEditor::get_frozen_atoms() const { return format_index_ranges(indices_where(data_.geom.atoms, is_frozen)); }

std::string GJFEditor::get_atoms_by_freeze_value(int value) const {
    return format_index_ranges(
        indices_where(data_.geom.atoms, [value](const AtomCoord& atom) { return atom.freeze == value; }));
}

std::vector<int> GJFEditor::get_unique_freeze_values() const {
    std::set<int> values;
    for (const AtomCoord& atom : data_.geom.atoms) {
        if (atom.freeze) {
            values.insert(*atom.freeze);
        }
    }
    return {values.begin(), values.end()};
}

// --- ONIOM layers
// ---------------------------------------------------------------------------------------------------------------------

void GJFEditor::set_layers(const AtomSelector& selector, const std::string& layer, bool complete) {
    std::vector<AtomCoord>& atoms = data_.geom.atoms;
    std::vector<std::pair<std::size_t, std::string>> layers;
    for (const std::size_t index : selected_by(atoms, selector)) {
        layers.emplace_back(index, layer);
    }
    for (const auto& [index, text] : layers) {
        touch_atom(index);
    }
    if (complete) {
        touch_atoms_without_layer();
    }
    for (auto& [index, text] : layers) {
        atoms[index].layer = std::move(text);
    }
    if (complete) {
        ensure_oniom_completeness();
    }
}

void GJFEditor::set_oniom_layer_all(const std::string& layer) { set_layers(any_atom, layer, false); }

void GJFEditor::set_oniom_layer_by_element(const std::string& element, const std::string& layer) {
    set_layers(has_element(element), layer, true);
}

void GJFEditor::set_oniom_layer_by_index(const std::vector<std::size_t>& indices, const std::string& layer) {
    const std::vector<bool> marks = marks_of(indices, data_.geom.atoms.size());
    set_layers([&marks](const AtomCoord&, std::size_t index) { return marks[index]; }, layer, true);
}

void GJFEditor::set_oniom_layer_by_selector(const AtomSelector& selector, const std::string& layer) {
    set_layers(selector, layer, true);
}

bool GJFEditor::is_oniom_enabled() const noexcept {
    return std::any_of(data_.geom.atoms.begin(), data_.geom.atoms.end(), has_layer);
}

void GJFEditor::touch_atoms_without_layer() {
    for (std::size_t i = 0; i < data_.geom.atoms.size(); ++i) {
        if (!has_layer(data_.geom.atoms[i])) {
            touch_atom(i);
        }
    }
}

void GJFEditor::ensure_oniom_completeness() {
    if (!is_oniom_enabled()) {
        return;
    }
    touch_atoms_without_layer();
    for (AtomCoord& atom : data_.geom.atoms) {
        if (!has_layer(atom)) {
            atom.layer.emplace(low_layer);
        }
    }
}

std::vector<std::string> GJFEditor::get_unique_oniom_layers() const {
    std::set<std::string> layers;
    for (const AtomCoord& atom : data_.geom.atoms) {
        if (atom.layer) {
            layers.insert(*atom.layer);
        }
    }
    return {layers.begin(), layers.end()};
}

std::size_t GJFEditor::count_atoms_by_oniom_layer(const std::string& layer) const {
    return indices_where(data_.geom.atoms, [&](const AtomCoord& atom) { return atom.layer == layer; }).size();
}

std::string GJFEditor::get_atoms_by_oniom_layer(const std::string& layer) const {
    return format_index_ranges(indices_where(data_.geom.atoms, [&](const AtomCoord& atom) { return atom.layer == layer; }));
}

std::map<std::string, std::size_t> GJFEditor::get_oniom_layer_counts() const {
    std::map<std::string, std::size_t> counts;
    for (const AtomCoord& atom : data_.geom.atoms) {
        if (has_layer(atom)) {
            ++counts[*atom.layer];
        }
    }
    return counts;
}

// --- Fragments
// ------------------------------------------------------------------------------------------------------------------------

void GJFEditor::set_fragment_all(const std::string& fragment) { set_fragment_by_selector(any_atom, fragment); }

void GJFEditor::set_fragment_by_element(const std::string& element, const std::string& fragment) {
    set_fragment_by_selector(has_element(element), fragment);
}

void GJFEditor::set_fragment_by_index(const std::vector<std::size_t>& indices, const std::string& fragment) {
    const std::vector<bool> marks = marks_of(indices, data_.geom.atoms.size());
    set_fragment_by_selector([&marks](const AtomCoord&, std::size_t index) { return marks[index]; }, fragment);
}

void GJFEditor::set_fragment_by_selector(const AtomSelector& selector, const std::string& fragment) {
    std::vector<AtomCoord>& atoms = data_.geom.atoms;
    std::vector<std::pair<std::size_t, std::map<std::string, std::string>>> changed;
    for (const std::size_t index : selected_by(atoms, selector)) {
        changed.emplace_back(index, params_with_fragment(atoms[index].info.params, fragment));
    }
    for (const auto& [index, params] : changed) {
        touch_atom(index);
    }
    for (auto& [index, params] : changed) {
        atoms[index].info.params = std::move(params);
    }
}

std::optional<std::string> GJFEditor::get_fragment(std::size_t index) const {
    validate_atom_index(index);
    const std::string* fragment = fragment_of(data_.geom.atoms[index]);
    return fragment == nullptr ? std::nullopt : std::optional<std::string>(*fragment);
}

std::vector<std::string> GJFEditor::get_unique_fragments() const {
    std::set<std::string> fragments;
    for (const AtomCoord& atom : data_.geom.atoms) {
        if (const std::string* fragment = fragment_of(atom)) {
            fragments.insert(*fragment);
        }
    }
    return {fragments.begin(), fragments.end()};
}

std::size_t GJFEditor::count_atoms_by_fragment(const std::string& fragment) const {
    return indices_where(data_.geom.atoms, [&](const AtomCoord& atom) { return has_fragment(atom, fragment); }).size();
}

std::string GJFEditor::get_atoms_by_fragment(const std::string& fragment) const {
    return format_index_ranges(
        indices_where(data_.geom.atoms, [&](const AtomCoord& atom) { return has_fragment(atom, fragment); }));
}

// --- MM type and charge
// ---------------------------------------------------------------------------------------------------------------

void GJFEditor::set_atom_type(std::size_t index, const std::string& type) {
    validate_atom_index(index);
    std::optional<std::string> value;
    if (std::string trimmed = GJFParser::trim(type); !trimmed.empty()) {
        value = std::move(trimmed);
    }
    atom_to_change(index).info.mm_type = std::move(value);
}

void GJFEditor::clear_atom_type(std::size_t index) {
    validate_atom_index(index);
    atom_to_change(index).info.mm_type.reset();
}

void GJFEditor::set_atom_mm_charge(std::size_t index, double charge) {
    validate_atom_index(index);
    if (!std::isfinite(charge)) {
        throw GJFParseException("Atom MM charge must be finite");
    }
    atom_to_change(index).info.mm_charge = charge;
}

void GJFEditor::clear_atom_mm_charge(std::size_t index) {
    validate_atom_index(index);
    atom_to_change(index).info.mm_charge.reset();
}

void GJFEditor::set_atom_type_and_mm_charge(std::size_t index, const std::string& type, double charge) {
    validate_atom_index(index);
    if (!std::isfinite(charge)) {
        throw GJFParseException("Atom MM charge must be finite");
    }
    set_atom_type(index, type);
    atom_to_change(index).info.mm_charge = charge;
}

// --- Elements and index text
// ----------------------------------------------------------------------------------------------------------

std::vector<std::string> GJFEditor::get_unique_elements() const {
    std::set<std::string> elements;
    for (const AtomCoord& atom : data_.geom.atoms) {
        elements.insert(atom.info.element);
    }
    return {elements.begin(), elements.end()};
}

std::size_t GJFEditor::count_atoms_by_element(const std::string& element) const {
    return indices_where(data_.geom.atoms, [&](const AtomCoord& atom) { return atom.info.element == element; }).size();
}

std::string GJFEditor::format_index_ranges(const std::vector<std::size_t>& indices) const {
    std::vector<std::size_t> sorted = indices;
    std::sort(sorted.begin(), sorted.end());
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    std::string text;
    for (std::size_t first = 0; first < sorted.size();) {
        std::size_t last = first;
        while (last + 1 < sorted.size() && sorted[last + 1] == sorted[last] + 1) {
            ++last;
        }
        text += text.empty() ? "" : ",";
        text += std::to_string(sorted[first] + 1);
        if (last > first) {
            text += last == first + 1 ? "," : "-";
            text += std::to_string(sorted[last] + 1);
        }
        first = last + 1;
    }
    return text;
}

}  // namespace quor::input::gaussian

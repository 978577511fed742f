// The C functions on one job: each is its argument checks and one call of the editor.
#include <gjf/c_api/error_frame.hpp>
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/selection/selection.hpp>

#include <algorithm>
#include <memory>

namespace {

using namespace quor::input::gaussian;
using namespace quor::input::gaussian::c_api;

constexpr int no_freeze_code = -999;
constexpr int no_layer = 1;

const AtomCoord& atom_at(const GJFEditor& editor, int index) {
    require(index >= 0, "atom index must not be negative");
    require(editor.is_valid_atom_index(static_cast<std::size_t>(index)), "atom index is out of range");
    return editor.get_data().geom.atoms[static_cast<std::size_t>(index)];
}

OutputBuffer element_buffer(char* data, int size) {
    return {data, size, "element output buffer is invalid", "element output buffer is too small"};
}

OutputBuffer layer_buffer(char* data, int size) {
    return {data, size, "ONIOM layer output buffer is invalid", "ONIOM layer output buffer is too small"};
}

std::vector<std::pair<std::size_t, double>> bonds_from(const int* partners, const double* orders, int count) {
    require(count >= 0, "bond count must not be negative");
    require(count == 0 || (partners != nullptr && orders != nullptr), "bond partner or order array is null");
    std::vector<std::pair<std::size_t, double>> bonds;
    for (int i = 0; i < count; ++i) {
        require(partners[i] >= 0, "atom index must not be negative");
        bonds.emplace_back(static_cast<std::size_t>(partners[i]), orders[i]);
    }
    return bonds;
}

}  // namespace

extern "C" {

quor_gjf_editor* gjf_editor_create_from_string(const char* content) noexcept {
    return guarded<quor_gjf_editor*>(nullptr, nullptr, [&] {
        require(content != nullptr, "content is null");
        return std::make_unique<quor_gjf_editor>(GJFParser::parse_string(content)).release();
    });
}

quor_gjf_editor* gjf_editor_create_from_file(const char* filename) noexcept {
    return guarded<quor_gjf_editor*>(nullptr, nullptr, [&] {
        require(filename != nullptr, "filename is null");
        return std::make_unique<quor_gjf_editor>(GJFParser::parse_file(filename)).release();
    });
}

void gjf_editor_destroy(quor_gjf_editor* editor) noexcept {
    if (editor != nullptr && editor->own != nullptr) {
        delete editor;
    }
}

const char* gjf_editor_last_error(const quor_gjf_editor* editor) noexcept { return last_error_of(editor); }

int gjf_editor_get_atom_count(quor_gjf_editor* editor) noexcept {
    return with_editor(editor, -1, [](const GJFEditor& job) {
        return to_int(job.get_data().geom.atoms.size(), "atom count does not fit in int");
    });
}

int gjf_editor_get_charge(quor_gjf_editor* editor) noexcept {
    return with_editor(editor, 0, [](const GJFEditor& job) { return job.get_data().geom.charge; });
}

int gjf_editor_get_spin(quor_gjf_editor* editor) noexcept {
    return with_editor(editor, 0, [](const GJFEditor& job) { return job.get_data().geom.multiplicity; });
}

int gjf_editor_get_atom_element(quor_gjf_editor* editor, int index, char* buffer, int buffer_size) noexcept {
    return with_editor(editor, -1, [&](const GJFEditor& job) {
        const OutputBuffer output = element_buffer(buffer, buffer_size);
        output.check();
        output.fill(atom_at(job, index).info.element);
        return 0;
    });
}

int gjf_editor_get_atom_coords(quor_gjf_editor* editor, int index, double* x, double* y, double* z) noexcept {
    return with_editor(editor, -1, [&](const GJFEditor& job) {
        require(index >= 0 && x != nullptr && y != nullptr && z != nullptr,
                "atom index or coordinate output pointer is invalid");
        const AtomCoord& atom = atom_at(job, index);
        *x = atom.x;
        *y = atom.y;
        *z = atom.z;
        return 0;
    });
}

int gjf_editor_get_atom_freeze(quor_gjf_editor* editor, int index) noexcept {
    return with_editor(editor, no_freeze_code,
                       [&](const GJFEditor& job) { return atom_at(job, index).freeze.value_or(no_freeze_code); });
}

int gjf_editor_get_atom_oniom_layer(quor_gjf_editor* editor, int index, char* buffer, int buffer_size) noexcept {
    return with_editor(editor, -1, [&](const GJFEditor& job) {
        const OutputBuffer output = layer_buffer(buffer, buffer_size);
        output.check();
        const AtomCoord& atom = atom_at(job, index);
        if (!atom.layer) {
            return no_layer;
        }
        output.fill(*atom.layer);
        return 0;
    });
}

int gjf_editor_select(quor_gjf_editor* editor, const char* selection, int* indices, int capacity) noexcept {
    return with_editor(editor, -1, [&](const GJFEditor& job) {
        require(selection != nullptr, "selection is null");
        require(capacity >= 0, "capacity must not be negative");
        require(capacity == 0 || indices != nullptr, "index output array is null");
        const std::vector<std::size_t> selected = select(job.get_data(), selection);
        const int count = to_int(selected.size(), "atom count does not fit in int");
        std::transform(selected.begin(), selected.begin() + std::min(count, capacity), indices,
                       [](std::size_t index) { return static_cast<int>(index); });
        return count;
    });
}

void gjf_editor_set_freeze_all(quor_gjf_editor* editor, int code) noexcept {
    change_editor(editor, [&](GJFEditor& job) { job.set_freeze_all(code); });
}

void gjf_editor_set_freeze_by_element(quor_gjf_editor* editor, const char* element, int code) noexcept {
    change_editor(editor, [&](GJFEditor& job) {
        require(element != nullptr, "element is null");
        job.set_freeze_by_element(element, code);
    });
}

void gjf_editor_set_oniom_layer_all(quor_gjf_editor* editor, const char* layer) noexcept {
    change_editor(editor, [&](GJFEditor& job) {
        require(layer != nullptr, "ONIOM layer is null");
        job.set_oniom_layer_all(layer);
    });
}

void gjf_editor_set_oniom_layer_by_element(quor_gjf_editor* editor, const char* element, const char* layer) noexcept {
    change_editor(editor, [&](GJFEditor& job) {
        require(element != nullptr && layer != nullptr, "element or ONIOM layer is null");
        job.set_oniom_layer_by_element(element, layer);
    });
}

void gjf_editor_set_charge_and_spin(quor_gjf_editor* editor, int charge, int multiplicity) noexcept {
    change_editor(editor, [&](GJFEditor& job) { job.set_charge_and_spin(charge, multiplicity); });
}

int gjf_editor_to_string(quor_gjf_editor* editor, char* buffer, int buffer_size) noexcept {
    return with_editor(editor, -1, [&](const GJFEditor& job) {
        const OutputBuffer output = job_text_buffer(buffer, buffer_size);
        output.check();
        output.fill(job.to_gjf_string());
        return 0;
    });
}

int gjf_editor_save_to_file(quor_gjf_editor* editor, const char* filename) noexcept {
    return with_editor(editor, -1, [&](const GJFEditor& job) {
        require(filename != nullptr, "filename is null");
        job.save_to_file(filename);
        return 0;
    });
}

int gjf_editor_set_atom_oniom_layer(quor_gjf_editor* editor, int index, const char* layer) noexcept {
    return with_editor(editor, -1, [&](GJFEditor& job) {
        require(layer != nullptr, "ONIOM layer is null");
        atom_at(job, index);
        job.set_oniom_layer_by_index({static_cast<std::size_t>(index)}, layer);
        return 0;
    });
}

int gjf_editor_add_atom(quor_gjf_editor* editor, const char* element, double x, double y, double z, const int* partners,
                        const double* orders, int bond_count) noexcept {
    return with_editor(editor, -1, [&](GJFEditor& job) {
        require(element != nullptr, "element is null");
        const int index = to_int(job.get_data().geom.atoms.size(), "atom count does not fit in int");
        AtomCoord atom;
        atom.info.element = element;
        atom.x = x;
        atom.y = y;
        atom.z = z;
        job.add_atom_with_connectivity(atom, bonds_from(partners, orders, bond_count));
        return index;
    });
}

int gjf_editor_set_model_chemistry_method(quor_gjf_editor* editor, const char* method) noexcept {
    return with_editor(editor, -1, [&](GJFEditor& job) {
        require(method != nullptr, "method is null");
        job.set_model_chemistry_method(method);
        return 0;
    });
}

int gjf_editor_set_model_chemistry_basis(quor_gjf_editor* editor, const char* basis) noexcept {
    return with_editor(editor, -1, [&](GJFEditor& job) {
        require(basis != nullptr, "basis is null");
        job.set_model_chemistry_basis(basis);
        return 0;
    });
}

}  // extern "C"

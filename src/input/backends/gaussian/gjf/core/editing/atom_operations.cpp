// The operations on atoms that a selection names.
#include <gjf/core/editing/operation_rows.hpp>

#include <gjf/core/chemistry/layers.hpp>
#include <gjf/core/chemistry/species.hpp>
#include <gjf/core/editing/number_text.hpp>
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/selection/selection.hpp>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace quor::input::gaussian {
namespace {

struct AtomsAndValue {
    Selection selection;
    std::string value;
};

// The last "=" parts them; a selection holds none.
AtomsAndValue atoms_and_value(const std::string& text, const char* what) {
    const std::size_t equals = text.rfind('=');
    if (equals == std::string::npos) {
        throw std::runtime_error(std::string("SELECTION=") + what + " is wanted, not '" + text + "'");
    }
    return {parse_selection(std::string_view(text).substr(0, equals)), text.substr(equals + 1)};
}

Edit read_freeze(const std::string& text) {
    AtomsAndValue wanted = atoms_and_value(text, "CODE");
    const std::optional<int> code = number_of<int>(wanted.value);
    if (!code) {
        throw std::runtime_error("'" + wanted.value + "' is no freeze code");
    }
    return [selection = std::move(wanted.selection), code = *code](GJFEditor& job, EditContext&) {
        const std::vector<std::size_t> atoms = selected_atoms(selection, job.get_data());
        job.set_freeze_by_index(atoms, code);
        return !atoms.empty();
    };
}

Edit read_layer(const std::string& text) {
    AtomsAndValue wanted = atoms_and_value(text, "LAYER");
    if (const char layer = layer_letter(wanted.value); layer == 0 || layer == '?') {
        throw std::runtime_error("'" + wanted.value + "' is not one of the layers H, M and L");
    }
    return [wanted = std::move(wanted)](GJFEditor& job, EditContext&) {
        const std::vector<std::size_t> atoms = selected_atoms(wanted.selection, job.get_data());
        job.set_oniom_layer_by_index(atoms, wanted.value);
        return !atoms.empty();
    };
}

Edit read_fragment(const std::string& text) {
    AtomsAndValue wanted = atoms_and_value(text, "FRAGMENT");
    if (!wanted.value.empty() && number_of<int>(wanted.value).value_or(0) < 1) {
        throw std::runtime_error("'" + wanted.value + "' is no fragment number");
    }
    return [wanted = std::move(wanted)](GJFEditor& job, EditContext&) {
        const std::vector<std::size_t> atoms = selected_atoms(wanted.selection, job.get_data());
        job.set_fragment_by_index(atoms, wanted.value);
        return !atoms.empty();
    };
}

std::array<double, 3> vector_of(const std::string& text) {
    std::array<double, 3> vector{};
    std::string_view rest = text;
    for (double& component : vector) {
        const bool last = &component == &vector.back();
        const std::size_t comma = rest.find(',');
        const std::string field = GJFParser::trim(std::string(rest.substr(0, comma)));
        const std::optional<double> number = number_of<double>(field);
        if (!number || (comma == std::string_view::npos) != last) {
            throw std::runtime_error("'" + text + "' is no shift DX,DY,DZ");
        }
        component = *number;
        rest.remove_prefix(last ? rest.size() : comma + 1);
    }
    return vector;
}

Edit read_translate(const std::string& text) {
    const AtomsAndValue wanted = atoms_and_value(text.find('=') == std::string::npos ? "all=" + text : text, "DX,DY,DZ");
    return [selection = wanted.selection, shift = vector_of(wanted.value)](GJFEditor& job, EditContext&) {
        std::vector<std::size_t> indices = selected_atoms(selection, job.get_data());
        const std::vector<AtomCoord>& atoms = job.get_data().geom.atoms;
        // The repeat of a molecule stays what it is wherever the molecule stands.
        indices.erase(std::remove_if(indices.begin(), indices.end(),
                                     [&](std::size_t index) {
                                         return species_of(atoms[index].info).kind == SpeciesKind::TranslationVector;
                                     }),
                      indices.end());
        if (shift != std::array<double, 3>{}) {
            job.translate_atoms(indices, shift[0], shift[1], shift[2]);
        }
        return !indices.empty();
    };
}

Edit read_remove_atoms(const std::string& text) {
    return [selection = parse_selection(text)](GJFEditor& job, EditContext&) {
        const std::vector<std::size_t> indices = selected_atoms(selection, job.get_data());
        if (indices.size() == job.get_data().geom.atoms.size()) {
            throw std::runtime_error("no atom would be left");
        }
        job.remove_atoms(indices);
        return !indices.empty();
    };
}

}  // namespace

std::vector<EditOption> atom_edit_options() {
    return {
        {"--freeze", "SELECTION=CODE", "Set the freeze code of atoms: -1 frozen, 0 free", EditTarget::Atoms, read_freeze},
        {"--layer", "SELECTION=LAYER", "Set the ONIOM layer of atoms: H, M or L", EditTarget::Atoms, read_layer},
        {"--fragment", "SELECTION=NUMBER", "Set the fragment of atoms; without a number, take it away", EditTarget::Atoms,
         read_fragment},
        {"--translate", "[SELECTION=]DX,DY,DZ", "Shift atoms, or all of them, in the units of the coordinates",
         EditTarget::Atoms, read_translate},
        {"--remove-atoms", "SELECTION", "Remove atoms, and renumber what names atoms", EditTarget::Atoms, read_remove_atoms},
    };
}

}  // namespace quor::input::gaussian

// The operations on the molecule as a list: unit, order, new atoms, other elements.
#include <gjf/core/editing/operation_rows.hpp>

#include <gjf/core/chemistry/elements.hpp>
#include <gjf/core/chemistry/species.hpp>
#include <gjf/core/editing/number_text.hpp>
#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/schema/simple_yaml_parser.hpp>
#include <gjf/core/selection/selection.hpp>

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace quor::input::gaussian {
namespace {

Edit read_units(const std::string& text) {
    const std::string unit = SimpleYAMLParser::to_lower(text);
    const bool in_bohr = unit == "bohr" || unit == "au";
    if (!in_bohr && unit != "angstrom" && unit != "ang") {
        throw std::runtime_error("'" + text + "' is none of the units bohr and angstrom");
    }
    return [in_bohr](GJFEditor& job, EditContext&) {
        job.set_length_unit(in_bohr);
        return true;
    };
}

// Reads an atom as a job file has it, by a file of one atom.
AtomCoord atom_of(const std::string& text) {
    const auto refuse = [&] { throw std::runtime_error("'" + text + "' is no atom: SYMBOL X Y Z is wanted"); };
    GJFData job;
    try {
        job = text.find_first_of("\r\n!@") == std::string::npos
                  ? GJFParser::parse_string("# hf/sto-3g\n\nt\n\n0 1\n" + text + "\n\n")
                  : GJFData();
    } catch (const GJFParseException&) {
        refuse();
    }
    const std::vector<AtomCoord>& atoms = job.geom.atoms;
    const auto is_number = [](const CoordinateValue& value) { return value.text.empty() || value.value.has_value(); };
    const bool is_atom = atoms.size() == 1 && job.extra_inputs.empty() && is_number(atoms[0].x_ref) &&
                         is_number(atoms[0].y_ref) && is_number(atoms[0].z_ref) &&
                         species_of(atoms[0].info).kind != SpeciesKind::Unknown;
    if (!is_atom) {
        refuse();
    }
    return atoms[0];
}

bool is_vector(const AtomCoord& atom) { return species_of(atom.info).kind == SpeciesKind::TranslationVector; }

Edit read_add_atom(const std::string& text) {
    return [atom = atom_of(text)](GJFEditor& job, EditContext&) {
        const std::vector<AtomCoord>& atoms = job.get_data().geom.atoms;
        const auto first = static_cast<std::size_t>(std::find_if(atoms.begin(), atoms.end(), is_vector) - atoms.begin());
        job.add_atom(atom);
        // Translation vectors stay behind the atoms.
        if (first + 1 < atoms.size() && !is_vector(atom)) {
            job.move_atom(atoms.size() - 1, first);
        }
        return true;
    };
}

Edit read_replace_element(const std::string& text) {
    const std::size_t equals = text.rfind('=');
    const std::string symbol = equals == std::string::npos ? std::string() : text.substr(equals + 1);
    if (atomic_number(symbol) == 0) {
        throw std::runtime_error(equals == std::string::npos ? "SELECTION=ELEMENT is wanted, not '" + text + "'"
                                                             : "'" + symbol + "' is no element");
    }
    return [selection = parse_selection(std::string_view(text).substr(0, equals)), symbol](GJFEditor& job, EditContext&) {
        const std::vector<std::size_t> atoms = selected_atoms(selection, job.get_data());
        for (const std::size_t atom : atoms) {
            job.set_element(atom, symbol);
        }
        return !atoms.empty();
    };
}

// Reads "3,1-2" into places from 0; each is named once.
std::vector<std::size_t> order_of(const std::string& text) {
    const auto refuse = [&] { throw std::runtime_error("'" + text + "' is no order of atoms, as 3,1-2"); };
    constexpr std::size_t most_atoms = 10'000'000;
    std::vector<std::size_t> order;
    for (const std::string& item : GJFParser::split_string(text, ',')) {
        const std::size_t dash = item.find('-');
        const std::optional<int> first = number_of<int>(GJFParser::trim(item.substr(0, dash)));
        const std::optional<int> last =
            dash == std::string::npos ? first : number_of<int>(GJFParser::trim(item.substr(dash + 1)));
        if (!first || !last || *first < 1 || *last < *first || order.size() + static_cast<std::size_t>(*last) > most_atoms) {
            refuse();
        }
        for (int atom = *first; atom <= *last; ++atom) {
            order.push_back(static_cast<std::size_t>(atom) - 1);
        }
    }
    std::vector<std::size_t> sorted = order;
    std::sort(sorted.begin(), sorted.end());
    if (order.empty() || text.ends_with(',')) {
        refuse();
    }
    if (const auto twice = std::adjacent_find(sorted.begin(), sorted.end()); twice != sorted.end()) {
        throw std::runtime_error("atom " + std::to_string(*twice + 1) + " is named twice");
    }
    return order;
}

Edit read_reorder(const std::string& text) {
    return [order = order_of(text)](GJFEditor& job, EditContext&) {
        const std::size_t count = job.get_data().geom.atoms.size();
        const std::size_t last = *std::max_element(order.begin(), order.end()) + 1;
        if (order.size() != count || last > count) {
            throw std::runtime_error("the order names " + std::to_string(order.size()) +
                                     (order.size() == 1 ? " atom" : " atoms") + " up to " + std::to_string(last) +
                                     ", the job has " + std::to_string(count));
        }
        job.reorder_atoms_with_connectivity(order);
        return true;
    };
}

}  // namespace

std::vector<EditOption> molecule_edit_options() {
    return {
        {"--units", "UNIT", "Write coordinates in bohr or angstrom, and set units=au or take it out", EditTarget::Atoms,
         read_units},
        {"--add-atom", "ATOM", "Add an atom, as 'H 0 0 1', behind the others", EditTarget::Atoms, read_add_atom},
        {"--replace-element", "SELECTION=ELEMENT", "Give atoms another element", EditTarget::Atoms, read_replace_element},
        {"--reorder", "NUMBERS", "Put the atoms in this order, as 3,1-2, and renumber what names atoms", EditTarget::Atoms,
         read_reorder},
    };
}

}  // namespace quor::input::gaussian

// The table of the editor's operations. Single atoms are taken in the middle, where most is to be moved.
#include "editor_operations.hpp"

#include "inputs.hpp"

#include <benchmark/benchmark.h>

#include <initializer_list>
#include <span>
#include <string>
#include <utility>

namespace quor::benchmarks {
namespace {

using namespace quor::input::gaussian;
using ::benchmark::DoNotOptimize;
using B = Workbench;
using Turn = std::size_t;

const GJFEditor::AtomSelector odd = [](const AtomCoord&, std::size_t index) { return index % 2 == 1; };
const std::string basis_text = "C H O N 0\n6-31G(d)\n****";
const std::string parameters_text = "NonBon 3 1 0 0 0.0 0.0 0.5 0.0 0.0 -1.2";

std::size_t middle(const B& b) { return b.editor.get_data().geom.atoms.size() / 2; }

constexpr EditorOperation whole_job_operations[] = {
    {"construct", Before::Spare, [](B& b, Turn) { b.editor = GJFEditor(std::move(b.spare)); }},
    {"copy", Before::Nothing, [](B& b, Turn) { DoNotOptimize(GJFEditor(b.editor)); }},
    {"set_data", Before::Spare, [](B& b, Turn) { b.editor.set_data(std::move(b.spare)); }},
    {"set_title", Before::Nothing, [](B& b, Turn) { b.editor.set_title("another title"); }},
    {"set_charge_and_spin", Before::Nothing, [](B& b, Turn) { b.editor.set_charge_and_spin(1, 2); }},
    {"set_charge_spin_pairs", Before::Nothing,
     [](B& b, Turn) {
         b.editor.set_charge_spin_pairs({{0, 1}, {0, 1}, {0, 1}});
     }},
    {"get_charge_spin_pairs", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_charge_spin_pairs()); }},
    {"set_checkpoint_file", Before::Nothing, [](B& b, Turn) { b.editor.set_checkpoint_file("a.chk"); }},
    {"set_oldchk_file", Before::Nothing, [](B& b, Turn) { b.editor.set_oldchk_file("b.chk"); }},
    {"get_oldchk_file", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_oldchk_file()); }},
    {"remove_oldchk_file", Before::Nothing, [](B& b, Turn) { b.editor.remove_oldchk_file(); }},
    {"set_rwf_file", Before::Nothing, [](B& b, Turn) { b.editor.set_rwf_file("a.rwf"); }},
    {"get_rwf_file", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_rwf_file()); }},
    {"remove_rwf_file", Before::Nothing, [](B& b, Turn) { b.editor.remove_rwf_file(); }},
    {"set_mem", Before::Nothing, [](B& b, Turn) { b.editor.set_mem("4GB"); }},
    {"get_mem", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_mem()); }},
    {"remove_mem", Before::Nothing, [](B& b, Turn) { b.editor.remove_mem(); }},
    {"set_nproc", Before::Nothing, [](B& b, Turn) { b.editor.set_nproc(4); }},
    {"get_nproc", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_nproc()); }},
    {"remove_nproc", Before::Nothing, [](B& b, Turn) { b.editor.remove_nproc(); }},
    {"set_cpu", Before::Nothing, [](B& b, Turn) { b.editor.set_cpu("0-3"); }},
    {"get_cpu", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_cpu()); }},
    {"remove_cpu", Before::Nothing, [](B& b, Turn) { b.editor.remove_cpu(); }},
    {"to_gjf_string", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.to_gjf_string()); }},
    {"save_to_file", Before::Nothing, [](B& b, Turn) { b.editor.save_to_file(input_path("saved.gjf")); }},
    {"atoms_with_touching_coordinates", Before::Nothing,
     [](B& b, Turn) { DoNotOptimize(b.editor.atoms_with_touching_coordinates()); }},
    {"use_numeric_coordinates", Before::Everything, [](B& b, Turn) { b.editor.use_numeric_coordinates(); }},
};

constexpr EditorOperation atom_operations[] = {
    {"validate_atom_index", Before::Nothing, [](B& b, Turn) { b.editor.validate_atom_index(middle(b)); }},
    {"validate_connectivity_indices", Before::Nothing, [](B& b, Turn) { b.editor.validate_connectivity_indices(); }},
    {"add_atom", Before::Nothing, [](B& b, Turn) { b.editor.add_atom(b.atom); }},
    {"add_atom_with_connectivity", Before::Nothing,
     [](B& b, Turn) {
         b.editor.add_atom_with_connectivity(b.atom, {{middle(b), 1.0}, {3, 1.5}});
     }},
    {"remove_atom", Before::Nothing, [](B& b, Turn) { b.editor.remove_atom(middle(b)); }},
    {"remove_atom_with_connectivity", Before::Nothing,
     [](B& b, Turn) { b.editor.remove_atom_with_connectivity(middle(b)); }},
    {"remove_atoms", Before::Everything,
     [](B& b, Turn) {
         std::vector<std::size_t> every_second;
         for (std::size_t i = 0; i < b.count; i += 2) {
             every_second.push_back(i);
         }
         b.editor.remove_atoms(every_second);
     }},
    {"move_atom", Before::Nothing, [](B& b, Turn) { b.editor.move_atom(3, b.count - 3); }},
    {"move_atom_with_connectivity", Before::Nothing,
     [](B& b, Turn) { b.editor.move_atom_with_connectivity(3, b.count - 3); }},
    {"replace_atom", Before::Nothing, [](B& b, Turn) { b.editor.replace_atom(middle(b), b.atom); }},
    {"clear_atoms", Before::Everything, [](B& b, Turn) { b.editor.clear_atoms(); }},
    {"reorder_atoms_with_connectivity", Before::Nothing,
     [](B& b, Turn) { b.editor.reorder_atoms_with_connectivity(b.reversed); }},
    {"move_atoms_to_end", Before::Nothing, [](B& b, Turn) { b.editor.move_atoms_to_end(b.every_third); }},
    {"move_atoms_to_beginning", Before::Nothing, [](B& b, Turn) { b.editor.move_atoms_to_beginning(b.every_third); }},
    {"translate_atoms", Before::Nothing, [](B& b, Turn) { b.editor.translate_atoms(b.every_third, 0.1, 0.2, 0.3); }},
    {"scale_coordinates", Before::Nothing, [](B& b, Turn) { b.editor.scale_coordinates(b.every_third, 1.01); }},
    {"rotate_atoms", Before::Nothing, [](B& b, Turn) { b.editor.rotate_atoms(b.every_third, 0.1, 0.2, 0.3); }},
    {"atom_origins", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.atom_origins().data()); }},
};

constexpr EditorOperation bond_operations[] = {
    {"set_bond_order", Before::Nothing, [](B& b, Turn turn) { b.editor.set_bond_order(turn, b.count - 1, 1.5); }},
    {"remove_bond", Before::Nothing, [](B& b, Turn) { b.editor.remove_bond(middle(b), middle(b) + 1); }},
    {"get_bond_order", Before::Nothing,
     [](B& b, Turn) { DoNotOptimize(b.editor.get_bond_order(middle(b), middle(b) + 1)); }},
    {"get_connected_atoms", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_connected_atoms(middle(b))); }},
    {"get_all_bonds", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_all_bonds()); }},
    {"get_bond_count", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_bond_count()); }},
    {"clear_connectivity", Before::Everything, [](B& b, Turn) { b.editor.clear_connectivity(); }},
    {"mutable_connectivity", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.mutable_connectivity()); }},
    {"mutable_connectivity_section", Before::Nothing,
     [](B& b, Turn) { DoNotOptimize(b.editor.mutable_connectivity_section()); }},
    {"parse_connectivity_from_section", Before::TextOfBonds,
     [](B& b, Turn) { b.editor.parse_connectivity_from_section(0); }},
};

constexpr EditorOperation label_operations[] = {
    {"set_freeze_all", Before::Nothing, [](B& b, Turn) { b.editor.set_freeze_all(-1); }},
    {"set_freeze_by_element", Before::Nothing, [](B& b, Turn) { b.editor.set_freeze_by_element("C", 0); }},
    {"set_freeze_by_index", Before::Nothing, [](B& b, Turn) { b.editor.set_freeze_by_index(b.every_third, 0); }},
    {"set_freeze_by_selector", Before::Nothing, [](B& b, Turn) { b.editor.set_freeze_by_selector(odd, 0); }},
    {"count_frozen_atoms", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.count_frozen_atoms()); }},
    {"get_frozen_atoms", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_frozen_atoms()); }},
    {"get_atoms_by_freeze_value", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_atoms_by_freeze_value(0)); }},
    {"get_unique_freeze_values", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_unique_freeze_values()); }},
    {"set_oniom_layer_all", Before::Nothing, [](B& b, Turn) { b.editor.set_oniom_layer_all("L"); }},
    {"set_oniom_layer_by_element", Before::Nothing, [](B& b, Turn) { b.editor.set_oniom_layer_by_element("O", "H"); }},
    {"set_oniom_layer_by_index", Before::Nothing, [](B& b, Turn) { b.editor.set_oniom_layer_by_index(b.every_third, "M"); }},
    {"set_oniom_layer_by_selector", Before::Nothing, [](B& b, Turn) { b.editor.set_oniom_layer_by_selector(odd, "H"); }},
    {"is_oniom_enabled", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.is_oniom_enabled()); }},
    {"ensure_oniom_completeness", Before::Nothing, [](B& b, Turn) { b.editor.ensure_oniom_completeness(); }},
    {"get_unique_oniom_layers", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_unique_oniom_layers()); }},
    {"count_atoms_by_oniom_layer", Before::Nothing,
     [](B& b, Turn) { DoNotOptimize(b.editor.count_atoms_by_oniom_layer("H")); }},
    {"get_atoms_by_oniom_layer", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_atoms_by_oniom_layer("H")); }},
    {"get_oniom_layer_counts", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_oniom_layer_counts()); }},
    {"set_fragment_all", Before::Nothing, [](B& b, Turn) { b.editor.set_fragment_all("1"); }},
    {"set_fragment_by_element", Before::Nothing, [](B& b, Turn) { b.editor.set_fragment_by_element("C", "2"); }},
    {"set_fragment_by_index", Before::Nothing, [](B& b, Turn) { b.editor.set_fragment_by_index(b.every_third, "2"); }},
    {"set_fragment_by_selector", Before::Nothing, [](B& b, Turn) { b.editor.set_fragment_by_selector(odd, "2"); }},
    {"get_fragment", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_fragment(middle(b))); }},
    {"get_unique_fragments", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_unique_fragments()); }},
    {"count_atoms_by_fragment", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.count_atoms_by_fragment("2")); }},
    {"get_atoms_by_fragment", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_atoms_by_fragment("2")); }},
    {"set_atom_type", Before::Nothing, [](B& b, Turn) { b.editor.set_atom_type(middle(b), "CA"); }},
    {"clear_atom_type", Before::Nothing, [](B& b, Turn) { b.editor.clear_atom_type(middle(b)); }},
    {"set_atom_mm_charge", Before::Nothing, [](B& b, Turn) { b.editor.set_atom_mm_charge(middle(b), 0.25); }},
    {"clear_atom_mm_charge", Before::Nothing, [](B& b, Turn) { b.editor.clear_atom_mm_charge(middle(b)); }},
    {"set_atom_type_and_mm_charge", Before::Nothing,
     [](B& b, Turn) { b.editor.set_atom_type_and_mm_charge(middle(b), "CA", 0.25); }},
    {"get_unique_elements", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_unique_elements()); }},
    {"count_atoms_by_element", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.count_atoms_by_element("C")); }},
    {"format_index_ranges", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.format_index_ranges(b.every_third)); }},
};

constexpr EditorOperation route_operations[] = {
    {"parse_keywords", Before::Nothing, [](B& b, Turn) { b.editor.parse_keywords(""); }},
    {"ensure_parsed_keywords", Before::Nothing, [](B& b, Turn) { b.editor.ensure_parsed_keywords(); }},
    {"get_parsed_keywords", Before::Nothing, [](B& b, Turn) { DoNotOptimize(&b.editor.get_parsed_keywords()); }},
    {"set_parsed_keywords", Before::Nothing,
     [](B& b, Turn) { b.editor.set_parsed_keywords(b.editor.get_parsed_keywords()); }},
    {"set_route_section", Before::Route,
     [](B& b, Turn) {
         b.editor.set_route_section({"#p", "b3lyp/6-31g(d)", "opt"});
     }},
    {"add_route_keyword", Before::Route, [](B& b, Turn) { b.editor.add_route_keyword("freq"); }},
    {"remove_route_keyword", Before::Route, [](B& b, Turn) { b.editor.remove_route_keyword("geom=connectivity"); }},
    {"get_method", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_method()); }},
    {"get_basis_set", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_basis_set()); }},
    {"get_output_mode", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_output_mode()); }},
    {"has_keyword", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.has_keyword("geom")); }},
    {"get_keywords_by_name", Before::Nothing, [](B& b, Turn) { DoNotOptimize(b.editor.get_keywords_by_name("geom")); }},
    {"get_keywords_by_category", Before::Nothing,
     [](B& b, Turn) { DoNotOptimize(b.editor.get_keywords_by_category("job type")); }},
    {"get_keyword_variable", Before::Nothing,
     [](B& b, Turn) { DoNotOptimize(b.editor.get_keyword_variable("geom", "connectivity")); }},
    {"set_output_mode", Before::Route, [](B& b, Turn) { b.editor.set_output_mode("t"); }},
    {"set_method", Before::Route, [](B& b, Turn) { b.editor.set_method("pbepbe"); }},
    {"clear_method", Before::Route, [](B& b, Turn) { b.editor.clear_method(); }},
    {"set_basis_set", Before::Route, [](B& b, Turn) { b.editor.set_basis_set("def2svp"); }},
    {"clear_basis_set", Before::Route, [](B& b, Turn) { b.editor.clear_basis_set(); }},
    {"set_model_chemistry_basis", Before::PlainRoute, [](B& b, Turn) { b.editor.set_model_chemistry_basis("def2svp"); }},
    {"set_model_chemistry_method", Before::PlainRoute, [](B& b, Turn) { b.editor.set_model_chemistry_method("pbepbe"); }},
    {"set_model_chemistry_method_with_options", Before::PlainRoute,
     [](B& b, Turn) {
         b.editor.set_model_chemistry_method_with_options("ccsd", {{"t", std::nullopt}});
     }},
    {"add_keyword", Before::Route, [](B& b, Turn) { b.editor.add_keyword("freq"); }},
    {"add_keyword_with_variables", Before::Route,
     [](B& b, Turn) {
         b.editor.add_keyword_with_variables("scrf", {{"solvent", "water"}});
     }},
    {"add_keyword_with_options", Before::Route,
     [](B& b, Turn) {
         b.editor.add_keyword_with_options("opt", {{"ts", std::nullopt}});
     }},
    {"upsert_keyword", Before::Route, [](B& b, Turn) { b.editor.upsert_keyword("freq"); }},
    {"upsert_keyword_with_options", Before::Route,
     [](B& b, Turn) {
         b.editor.upsert_keyword_with_options("opt", {{"maxcycles", "50"}});
     }},
    {"ensure_keyword_option", Before::Route,
     [](B& b, Turn) {
         b.editor.ensure_keyword_option("opt", {"calcfc", std::nullopt});
     }},
    {"set_keyword_variable", Before::Route, [](B& b, Turn) { b.editor.set_keyword_variable("scrf", "solvent", "water"); }},
    {"remove_keyword_by_name", Before::Route, [](B& b, Turn) { b.editor.remove_keyword_by_name("geom"); }},
    {"update_route_from_parsed_keywords", Before::Route, [](B& b, Turn) { b.editor.update_route_from_parsed_keywords(); }},
};

constexpr EditorOperation section_operations[] = {
    {"add_extra_input", Before::Everything, [](B& b, Turn) { b.editor.add_extra_input(basis_text); }},
    {"set_extra_inputs", Before::Everything,
     [](B& b, Turn) {
         b.editor.set_extra_inputs({basis_text, parameters_text});
     }},
    {"set_extra_input", Before::Everything,
     [](B& b, Turn) { b.editor.set_extra_input(0, ExtraInputSectionKind::BasisSet, basis_text); }},
    {"remove_extra_input", Before::Everything, [](B& b, Turn) { b.editor.remove_extra_input(0); }},
    {"remove_extra_inputs_by_kind", Before::Everything,
     [](B& b, Turn) { b.editor.remove_extra_inputs_by_kind({ExtraInputSectionKind::Connectivity}); }},
    {"clear_extra_inputs", Before::Everything, [](B& b, Turn) { b.editor.clear_extra_inputs(); }},
    {"insert_extra_input_ordered", Before::Everything,
     [](B& b, Turn) { b.editor.insert_extra_input_ordered(ExtraInputSectionKind::BasisSet, basis_text); }},
    {"upsert_extra_input_section", Before::Everything,
     [](B& b, Turn) { b.editor.upsert_extra_input_section(ExtraInputSectionKind::BasisSet, basis_text, true); }},
    {"set_molecular_mechanics_parameters", Before::Nothing,
     [](B& b, Turn) { b.editor.set_molecular_mechanics_parameters(parameters_text); }},
    {"append_molecular_mechanics_parameters", Before::Nothing,
     [](B& b, Turn) { b.editor.append_molecular_mechanics_parameters(parameters_text); }},
    {"clear_molecular_mechanics_parameters", Before::Nothing,
     [](B& b, Turn) { b.editor.clear_molecular_mechanics_parameters(); }},
};

}  // namespace

Workbench::Workbench(const GJFData& job) : editor(job), count(job.geom.atoms.size()) {
    atom.info.element = "C";
    atom.x = 1.25;
    atom.y = -2.5;
    atom.z = 1000;
    for (std::size_t i = 0; i < count; ++i) {
        reversed.push_back(count - 1 - i);
        if (i % 3 == 0) {
            every_third.push_back(i);
        }
    }
}

const std::vector<EditorOperation>& editor_operations() {
    static const std::vector<EditorOperation> all = [] {
        std::vector<EditorOperation> joined;
        for (const std::span<const EditorOperation> part : std::initializer_list<std::span<const EditorOperation>>{
                 whole_job_operations, atom_operations, bond_operations, label_operations, route_operations,
                 section_operations}) {
            joined.insert(joined.end(), part.begin(), part.end());
        }
        return joined;
    }();
    return all;
}

void prepare(Workbench& bench, Before before, const GJFData& job) {
    switch (before) {
        case Before::Nothing:
            break;
        case Before::Route:
            bench.editor.set_route_section(job.control.route_keywords);
            bench.editor.ensure_parsed_keywords();
            break;
        case Before::PlainRoute:
            bench.editor.set_route_section({"#p", "b3lyp/6-31g(d)", "geom=connectivity"});
            bench.editor.ensure_parsed_keywords();
            break;
        case Before::Everything:
            bench.editor = GJFEditor(job);
            break;
        case Before::Spare:
            bench.spare = job;
            break;
        case Before::TextOfBonds:
            bench.editor.set_extra_inputs({bench.editor.get_data().extra_input_text(0)});
            break;
    }
}

}  // namespace quor::benchmarks

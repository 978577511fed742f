// Applies a sequence of editor operations decoded from the input to one of a few jobs. A refused operation changes nothing;
// bonds stay valid; the record tells all that was changed; a copy writes what the original writes; and the job that results
// is written and read alike.
#include "fuzzers.hpp"
#include "properties.hpp"

#include <gjf/gjf.hpp>

#include <optional>
#include <span>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace quor::fuzz {
namespace {

using namespace input::gaussian;
using Kind = ExtraInputSectionKind;

constexpr const char* water = R"(# hf/sto-3g

water

0 1
O 0.0 0.0 0.1
H 0.0 0.7 -0.4
H 0.0 -0.7 -0.4

)";

constexpr const char* labels_and_bonds = R"(%mem=1GB
#p b3lyp/6-31g(d) geom=connectivity opt=modredundant

t

0 1
C-CT-0.5(Fragment=1) -1 0.0 0.0 0.0 H
H-HC(Fragment=2) 0 1.0 0.0 0.0 L
H 0 0.0 1.0 0.0 L

1 2 1.0 3 1.0
2
3

1 2 F

)";

constexpr const char* layers = R"(# oniom(b3lyp/6-31g(d):uff) scrf=read

t

0 1 0 1
C 0.0 0.0 0.0 H
C 1.5 0.0 0.0 L H 1

eps=4.9

)";

constexpr const char* variables_and_sections = R"(#p m06l/gen pop=nboread

t

1 2
Fe 0.0 0.0 0.0
O r 0.0 0.0
r=1.6

Fe 0
6-31g
****

$nbo bndidx $end

)";

constexpr const char* zmatrix = R"(# hf/3-21g opt

t

0 1
O
H 1 r
H 1 r 2 a

r 0.96
a 104.5

)";

constexpr const char* bonded_zmatrix = R"(# hf/3-21g geom=connectivity

t

0 1
O
H 1 0.96
H 1 0.96 2 104.5

1 2 1.0 3 1.0
2
3

)";

constexpr const char* checkpoint = R"(%chk=a
#p hf/3-21g geom=(check,connectivity)

t

0 1

1 2 1.0
2 3 1.0
3

)";

constexpr const char* jobs[] = {water,   labels_and_bonds, layers,    variables_and_sections,
                                zmatrix, bonded_zmatrix,   checkpoint};

using Operation = void (*)(GJFEditor& editor, Choices& choices);

// Decodes the arguments of a method, in order, and calls it. (Arguments decoded in a call itself would come in any order.)
template <auto Method, auto... Decode>
void call(GJFEditor& editor, Choices& choices) {
    const std::tuple arguments{Decode(choices)...};
    std::apply([&editor](const auto&... values) { (editor.*Method)(values...); }, arguments);
}

template <std::size_t Longest>
std::string text(Choices& choices) {
    return choices.text(Longest);
}

bool flag(Choices& choices) { return choices.below(2) == 1; }

double number(Choices& choices) { return choices.number(); }

int integer(Choices& choices) { return choices.integer(); }

std::size_t index(Choices& choices) { return static_cast<std::size_t>(choices.integer()); }

Kind kind(Choices& choices) { return static_cast<Kind>(choices.below(58)); }

template <auto Decode, std::size_t Most>
auto list(Choices& choices) {
    std::vector<decltype(Decode(choices))> values;
    for (std::size_t i = choices.below(Most + 1); i-- > 0;) {
        values.push_back(Decode(choices));
    }
    return values;
}

constexpr auto indices = list<index, 4>;

AtomCoord atom(Choices& choices) {
    AtomCoord atom;
    atom.info = GJFParser::parse_atom_info(choices.text(12));
    atom.x = choices.number();
    atom.y = choices.number();
    return atom;
}

std::pair<std::size_t, double> bond(Choices& choices) {
    const std::size_t partner = index(choices);
    return {partner, choices.number()};
}

ChargeSpinPair charge_and_spin(Choices& choices) { return ChargeSpinPair{choices.integer(), choices.integer()}; }

RouteOption option(Choices& choices) {
    std::string name = choices.text(8);
    return {std::move(name), flag(choices) ? std::optional<std::string>(choices.text(8)) : std::nullopt};
}

constexpr auto options = list<option, 3>;

using E = GJFEditor;

constexpr Operation atom_operations[] = {
    call<&E::add_atom, atom>,
    call<&E::add_atom_with_connectivity, atom, list<bond, 4>>,
    call<&E::remove_atom, index>,
    call<&E::remove_atoms, indices>,
    call<&E::move_atom, index, index>,
    call<&E::replace_atom, index, atom>,
    call<&E::clear_atoms>,
    call<&E::use_numeric_coordinates>,
    call<&E::reorder_atoms_with_connectivity, indices>,
    call<&E::move_atoms_to_end, indices>,
    call<&E::move_atoms_to_beginning, indices>,
    call<&E::translate_atoms, indices, number, number, number>,
    call<&E::scale_coordinates, indices, number>,
    call<&E::rotate_atoms, indices, number, number, number>,
    call<&E::set_bond_order, index, index, number>,
    call<&E::remove_bond, index, index>,
    call<&E::get_bond_order, index, index>,
    call<&E::get_connected_atoms, index>,
    call<&E::clear_connectivity>,
    call<&E::parse_connectivity_from_section, integer>,
};

constexpr Operation label_operations[] = {
    call<&E::set_freeze_all, integer>,
    call<&E::set_freeze_by_element, text<2>, integer>,
    call<&E::set_freeze_by_index, indices, integer>,
    call<&E::get_atoms_by_freeze_value, integer>,
    call<&E::set_oniom_layer_all, text<3>>,
    call<&E::set_oniom_layer_by_element, text<2>, text<3>>,
    call<&E::set_oniom_layer_by_index, indices, text<3>>,
    call<&E::ensure_oniom_completeness>,
    call<&E::set_fragment_all, text<3>>,
    call<&E::set_fragment_by_element, text<2>, text<3>>,
    call<&E::set_fragment_by_index, indices, text<3>>,
    call<&E::get_fragment, index>,
    call<&E::set_atom_type, index, text<4>>,
    call<&E::clear_atom_type, index>,
    call<&E::set_atom_mm_charge, index, number>,
    call<&E::clear_atom_mm_charge, index>,
    call<&E::set_atom_type_and_mm_charge, index, text<4>, number>,
    call<&E::format_index_ranges, indices>,
    call<&E::set_title, text<24>>,
    call<&E::set_charge_and_spin, integer, integer>,
    call<&E::set_charge_spin_pairs, list<charge_and_spin, 3>>,
    call<&E::set_mem, text<6>>,
    call<&E::remove_mem>,
    call<&E::set_nproc, integer>,
    call<&E::set_checkpoint_file, text<6>>,
    call<&E::set_cpu, text<6>>,
};

constexpr Operation route_operations[] = {
    call<&E::set_route_section, list<text<12>, 3>>,
    call<&E::add_route_keyword, text<24>>,
    call<&E::remove_route_keyword, text<6>>,
    call<&E::set_output_mode, text<3>>,
    call<&E::set_method, text<8>>,
    call<&E::clear_method>,
    call<&E::set_basis_set, text<8>>,
    call<&E::clear_basis_set>,
    call<&E::set_model_chemistry_basis, text<8>>,
    call<&E::set_model_chemistry_method_with_options, text<8>, options>,
    call<&E::add_keyword_with_options, text<8>, options>,
    call<&E::upsert_keyword_with_options, text<8>, options>,
    call<&E::ensure_keyword_option, text<8>, option>,
    call<&E::set_keyword_variable, text<8>, text<8>, text<8>>,
    call<&E::remove_keyword_by_name, text<8>>,
    call<&E::get_keyword_variable, text<8>, text<8>>,
    call<&E::ensure_parsed_keywords>,
    call<&E::update_route_from_parsed_keywords>,
};

constexpr Operation section_operations[] = {
    call<&E::add_extra_input, text<24>>,
    call<&E::set_extra_inputs, list<text<24>, 3>>,
    call<&E::set_extra_input, index, kind, text<24>>,
    call<&E::remove_extra_input, index>,
    call<&E::remove_extra_inputs_by_kind, list<kind, 3>>,
    call<&E::clear_extra_inputs>,
    call<&E::insert_extra_input_ordered, kind, text<24>>,
    call<&E::upsert_extra_input_section, kind, text<24>, flag>,
    call<&E::set_molecular_mechanics_parameters, text<24>>,
    call<&E::append_molecular_mechanics_parameters, text<24>>,
    call<&E::clear_molecular_mechanics_parameters>,
};

Operation choose(Choices& choices) {
    constexpr std::span<const Operation> tables[] = {atom_operations, label_operations, route_operations,
                                                     section_operations};
    const std::span<const Operation> table = tables[choices.below(std::size(tables))];
    return table[choices.below(table.size())];
}

// All that an editor holds and shows, the route cache included.
std::string state_of(const GJFEditor& editor) {
    return all_of_job(editor.get_data()) + (editor.has_parsed_keywords() ? "cached" : "") + editor.to_gjf_string();
}

void hold_valid_bonds(const GJFEditor& editor) {
    try {
        editor.validate_connectivity_indices();
    } catch (const GJFParseException&) {
        hold(false, "no operation makes a bond that is not valid");
    }
}

}  // namespace

int editor_operations(const std::uint8_t* data, std::size_t size) {
    Choices choices(data, size);
    GJFEditor editor(GJFParser::parse_string(jobs[choices.below(std::size(jobs))]));
    const GJFData taken = editor.get_data();
    editor.begin_record();
    for (int step = 0; step < 40 && !choices.empty(); ++step) {
        const std::string before = state_of(editor);
        try {
            choose(choices)(editor, choices);
        } catch (const GJFParseException&) {
            hold(state_of(editor) == before, "a refused operation changes nothing");
        }
        hold_valid_bonds(editor);
        hold_record(editor, taken);
        if (!is_small(editor.get_data())) {
            return 0;
        }
    }
    hold(state_of(GJFEditor(editor)) == state_of(editor), "a copy is the same job");
    hold_round_trip(editor);
    return 0;
}

}  // namespace quor::fuzz

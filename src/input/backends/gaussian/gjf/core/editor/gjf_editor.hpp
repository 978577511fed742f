// Edits one job and writes it as job text.
//
// Members are defined by topic: gjf_editor.cpp (job, Link 0, title, charge), job_writer.cpp (text), atom_editing.cpp,
// bond_editing.cpp, label_editing.cpp (freeze codes, layers, fragments, types), route_editing.cpp and
// extra_input_editing.cpp.
#pragma once

#include <core/export.hpp>
#include <gjf/core/job/gjf_data.hpp>
#include <gjf/core/job/gjf_parse_exception.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quor::input::gaussian {

/// Owns one job and offers the edits on it. A refused edit throws `GJFParseException` and leaves the job as it was.
///
/// Atom indices count from 0. One editor is used by one thread at a time; copies are independent.
class QUOR_GJF_API GJFEditor {
   public:
    using AtomSelector = std::function<bool(const AtomCoord& atom, std::size_t index)>;

    /// Takes a job; throws when its bonds are not valid (see `validate_connectivity_indices`).
    explicit GJFEditor(GJFData data);
    GJFEditor(const GJFEditor& other);
    GJFEditor(GJFEditor&& other) noexcept;
    GJFEditor& operator=(const GJFEditor& other);
    GJFEditor& operator=(GJFEditor&& other) noexcept;
    ~GJFEditor();

    /// Returns the job; the reference is valid until the editor is assigned to or destroyed.
    const GJFData& get_data() const noexcept;
    /// Replaces the job; one whose bonds are not valid is refused.
    void set_data(GJFData data);
    /// The same, where the caller knows what `atom_origins` should return then; another number of them than of atoms is
    /// refused.
    void set_data(GJFData data, std::vector<std::size_t> atom_origins);

    // --- Route cache
    // -------------------------------------------------------------------------------------------------------------
    /// Interprets the route with the vocabulary at `schema_path` (empty: the default one); does nothing when there is no
    /// route.
    void parse_keywords(const std::string& schema_path);
    bool has_parsed_keywords() const noexcept;
    void ensure_parsed_keywords();
    /// Returns the interpreted route; throws "Keywords have not been parsed yet. Call parse_keywords() first." when there is
    /// none.
    const ParsedKeywords& get_parsed_keywords() const;
    /// Stores an interpreted route; the route itself changes with `update_route_from_parsed_keywords`.
    void set_parsed_keywords(ParsedKeywords keywords);
    /// Replaces the route words and forgets their interpretation.
    void set_route_section(const std::vector<std::string>& route_keywords);

    // --- Title, charge and multiplicity
    // --------------------------------------------------------------------------------------------
    void set_title(const std::string& title);
    void set_charge_and_spin(int charge, int multiplicity);
    void set_charge_spin_pairs(const std::vector<ChargeSpinPair>& pairs);
    /// Returns the primary pair followed by the others; never empty.
    std::vector<ChargeSpinPair> get_charge_spin_pairs() const;

    // --- Link 0
    // --------------------------------------------------------------------------------------------------------------------
    void set_checkpoint_file(const std::string& path);
    void set_oldchk_file(const std::string& path);
    void remove_oldchk_file();
    std::optional<std::string> get_oldchk_file() const;
    void set_rwf_file(const std::string& path);
    void remove_rwf_file();
    std::optional<std::string> get_rwf_file() const;
    void set_mem(const std::string& memory);
    void remove_mem();
    std::optional<std::string> get_mem() const;
    void set_nproc(int count);
    void remove_nproc();
    std::optional<int> get_nproc() const;
    void set_cpu(const std::string& processors);
    void remove_cpu();
    std::optional<std::string> get_cpu() const;

    // --- Output
    // --------------------------------------------------------------------------------------------------------------------
    /// Writes the job as text: fixed order, fixed columns, line feeds, three line breaks at the end. Z-matrices are not
    /// written.
    std::string to_gjf_string() const;
    /// Writes the text to a file, whole or not at all; throws "Cannot write file: PATH".
    void save_to_file(const std::string& path) const;
    /// Returns the atoms whose written coordinates touch, since a coordinate text fills its column of 12: such lines do not
    /// read back.
    std::vector<std::size_t> atoms_with_touching_coordinates() const;
    /// Drops the texts of numeric coordinates, so that the numbers are written with six decimals.
    void use_numeric_coordinates();

    // --- Atoms
    // ---------------------------------------------------------------------------------------------------------------------
    bool is_valid_atom_index(std::size_t index) const noexcept;
    /// Throws "Invalid atom index: N" for an index that is not below the number of atoms.
    void validate_atom_index(std::size_t index) const;
    /// Throws for a second connectivity section, and for a bond outside the molecule, to itself or with an order that is not
    /// finite.
    void validate_connectivity_indices() const;
    void add_atom(const AtomCoord& atom);
    /// Adds an atom with bonds to existing atoms, given as index and order; an order that is not above 0 makes no bond.
    void add_atom_with_connectivity(const AtomCoord& atom, const std::vector<std::pair<std::size_t, double>>& bonds);
    void remove_atom(std::size_t index);
    void remove_atom_with_connectivity(std::size_t index);
    /// Removes several atoms, as `remove_atom` does each, in one pass. Indices are those before the call, in any order; one
    /// given twice counts once. Throws "Invalid atom index: N" for the lowest that is not below the number of atoms.
    void remove_atoms(const std::vector<std::size_t>& indices);
    void move_atom(std::size_t from, std::size_t to);
    void move_atom_with_connectivity(std::size_t from, std::size_t to);
    void replace_atom(std::size_t index, const AtomCoord& atom);
    /// Removes all atoms and bonds; an empty connectivity section stays.
    void clear_atoms();
    /// Puts the old atom `order[i]` at place i.
    void reorder_atoms_with_connectivity(const std::vector<std::size_t>& order);
    void move_atoms_to_end(const std::vector<std::size_t>& indices);
    void move_atoms_to_beginning(const std::vector<std::size_t>& indices);
    /// Shifts atoms. Indices past the end are skipped, one given twice counts twice; coordinate texts are dropped.
    void translate_atoms(const std::vector<std::size_t>& indices, double dx, double dy, double dz);
    void scale_coordinates(const std::vector<std::size_t>& indices, double factor);
    /// Rotates atoms about the coordinate origin by `a`, `b`, `c` radians: about x, then y, then z.
    void rotate_atoms(const std::vector<std::size_t>& indices, double a, double b, double c);

    /// Stands for an atom that the editor did not have when it took the job.
    static constexpr std::size_t no_origin = static_cast<std::size_t>(-1);
    /// Returns for each atom its index when the editor took the job, or `no_origin`. Replacing the whole job by one with
    /// another number of atoms leaves none with an origin.
    const std::vector<std::size_t>& atom_origins() const noexcept;

    // --- Bonds
    // ---------------------------------------------------------------------------------------------------------------------
    void set_bond_order(std::size_t a, std::size_t b, double order);
    void remove_bond(std::size_t a, std::size_t b);
    double get_bond_order(std::size_t a, std::size_t b) const;
    std::vector<std::size_t> get_connected_atoms(std::size_t index) const;
    std::vector<Bond> get_all_bonds() const;
    std::size_t get_bond_count() const noexcept;
    /// Removes all bonds; an empty connectivity section stays.
    void clear_connectivity();
    /// Gives the bond list for direct editing, or null; what is done to it is not checked.
    ConnectivitySection* mutable_connectivity() noexcept;
    ExtraInputSection* mutable_connectivity_section() noexcept;
    /// Turns the text of an extra section into the connectivity section.
    void parse_connectivity_from_section(int index);

    // --- Labels and selections
    // -----------------------------------------------------------------------------------------------------
    void set_freeze_all(int code);
    void set_freeze_by_element(const std::string& element, int code);
    void set_freeze_by_index(const std::vector<std::size_t>& indices, int code);
    void set_freeze_by_selector(const AtomSelector& selector, int code);
    std::size_t count_frozen_atoms() const;
    std::string get_frozen_atoms() const;
    std::string get_atoms_by_freeze_value(int value) const;
    std::vector<int> get_unique_freeze_values() const;

    void set_oniom_layer_all(const std::string& layer);
    void set_oniom_layer_by_element(const std::string& element, const std::string& layer);
    void set_oniom_layer_by_index(const std::vector<std::size_t>& indices, const std::string& layer);
    void set_oniom_layer_by_selector(const AtomSelector& selector, const std::string& layer);
    bool is_oniom_enabled() const noexcept;
    void ensure_oniom_completeness();
    std::vector<std::string> get_unique_oniom_layers() const;
    std::size_t count_atoms_by_oniom_layer(const std::string& layer) const;
    std::string get_atoms_by_oniom_layer(const std::string& layer) const;
    std::map<std::string, std::size_t> get_oniom_layer_counts() const;

    void set_fragment_all(const std::string& fragment);
    void set_fragment_by_element(const std::string& element, const std::string& fragment);
    void set_fragment_by_index(const std::vector<std::size_t>& indices, const std::string& fragment);
    void set_fragment_by_selector(const AtomSelector& selector, const std::string& fragment);
    std::optional<std::string> get_fragment(std::size_t index) const;
    std::vector<std::string> get_unique_fragments() const;
    std::size_t count_atoms_by_fragment(const std::string& fragment) const;
    std::string get_atoms_by_fragment(const std::string& fragment) const;

    void set_atom_type(std::size_t index, const std::string& type);
    void clear_atom_type(std::size_t index);
    void set_atom_mm_charge(std::size_t index, double charge);
    void clear_atom_mm_charge(std::size_t index);
    void set_atom_type_and_mm_charge(std::size_t index, const std::string& type, double charge);

    std::vector<std::string> get_unique_elements() const;
    std::size_t count_atoms_by_element(const std::string& element) const;
    /// Writes indices (from 0, in any order) as ranges counted from 1: 0, 1, 2, 4 give "1-3,5"; two in a row stay a pair.
    std::string format_index_ranges(const std::vector<std::size_t>& indices) const;

    // --- Route
    // ---------------------------------------------------------------------------------------------------------------------
    void add_route_keyword(const std::string& keyword);
    void remove_route_keyword(const std::string& keyword);
    std::string get_method() const;
    std::string get_basis_set() const;
    std::string get_output_mode() const;
    bool has_keyword(const std::string& name) const;
    std::vector<KeywordInfo> get_keywords_by_name(const std::string& name) const;
    std::vector<KeywordInfo> get_keywords_by_category(const std::string& category) const;
    std::optional<std::string> get_keyword_variable(const std::string& keyword, const std::string& variable) const;
    void set_output_mode(const std::string& mode);
    void set_method(const std::string& method);
    void clear_method();
    void set_basis_set(const std::string& basis);
    void clear_basis_set();
    void set_model_chemistry_basis(const std::string& basis);
    void set_model_chemistry_method(const std::string& method);
    void set_model_chemistry_method_with_options(const std::string& method, const std::vector<RouteOption>& options);
    void add_keyword(const std::string& name);
    void add_keyword_with_variables(const std::string& name, const std::map<std::string, std::string>& variables);
    void add_keyword_with_options(const std::string& name, const std::vector<RouteOption>& options);
    void upsert_keyword(const std::string& name);
    void upsert_keyword_with_options(const std::string& name, const std::vector<RouteOption>& options);
    void ensure_keyword_option(const std::string& keyword, const RouteOption& option);
    void set_keyword_variable(const std::string& keyword, const std::string& variable, const std::string& value);
    void remove_keyword_by_name(const std::string& name);
    void update_route_from_parsed_keywords();

    // --- Extra input sections
    // ------------------------------------------------------------------------------------------------------
    void add_extra_input(const std::string& text);
    void set_extra_inputs(const std::vector<std::string>& texts);
    void set_extra_input(std::size_t index, ExtraInputSectionKind kind, const std::string& text);
    void remove_extra_input(std::size_t index);
    void remove_extra_inputs_by_kind(const std::vector<ExtraInputSectionKind>& kinds);
    void clear_extra_inputs();
    /// Inserts a section behind all of its own or an earlier kind; returns its index.
    std::size_t insert_extra_input_ordered(ExtraInputSectionKind kind, const std::string& text);
    void upsert_extra_input_section(ExtraInputSectionKind kind, const std::string& text, bool append);
    void set_molecular_mechanics_parameters(const std::string& text);
    void append_molecular_mechanics_parameters(const std::string& text);
    void clear_molecular_mechanics_parameters();

   private:
    ConnectivitySection& ensure_connectivity_section();
    void set_layers(const AtomSelector& selector, const std::string& layer, bool complete);
    void validate_extra_input_index(std::size_t index) const;
    ParsedKeywords interpreted_route() const;
    void install_route(ParsedKeywords route);

    GJFData data_;
    std::vector<std::size_t> atom_origins_;
};

}  // namespace quor::input::gaussian

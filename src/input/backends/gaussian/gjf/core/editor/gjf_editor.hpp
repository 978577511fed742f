// Edits one job and writes it as job text.
//
// Members are defined by topic: gjf_editor.cpp (job, Link 0, title, charge), job_writer.cpp (text), atom_editing.cpp,
// bond_editing.cpp, label_editing.cpp (freeze codes, layers, fragments, types), unit_editing.cpp, route_editing.cpp
// and extra_input_editing.cpp.
#pragma once

#include <core/export.hpp>
#include <gjf/core/editor/edit_record.hpp>
#include <gjf/core/job/gjf_data.hpp>
#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/job/link0_keys.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quor::input::gaussian {

/// Owns one job and offers the edits on it. A refused edit throws `GJFParseException` and leaves the job as it was.
///
/// Atom indices count from 0; one that is not below the number of atoms throws "Invalid atom index: N", unless a member says
/// that it is skipped. Texts that name atoms count from 1, as Gaussian does. One editor is used by one thread at a time;
/// copies are independent.
class QUOR_GJF_API GJFEditor {
   public:
    using AtomSelector = std::function<bool(const AtomCoord& atom, std::size_t index)>;

    /// What the atom numbers in the text of a section count.
    struct SectionNumbering {
        /// The origins of the atoms when the text was given; null for the atoms of the job as it was taken.
        std::shared_ptr<const std::vector<std::size_t>> origins;
        bool mixed = false;  ///< text was added to one that counts other atoms
    };

    /// Takes a job; throws when its bonds are not valid (see `validate_connectivity_indices`). Bonds are stored with the
    /// smaller atom first.
    explicit GJFEditor(GJFData data);
    GJFEditor(const GJFEditor& other);
    GJFEditor(GJFEditor&& other) noexcept;
    GJFEditor& operator=(const GJFEditor& other);
    GJFEditor& operator=(GJFEditor&& other) noexcept;
    ~GJFEditor();

    /// Returns the job; the reference is valid until the editor is assigned to or destroyed.
    const GJFData& get_data() const noexcept;
    /// Replaces the job; one whose bonds are not valid is refused. With another number of atoms none has an origin then. A
    /// record of edits ends.
    void set_data(GJFData data);
    /// The same, where the caller knows what `atom_origins` should return then, and `section_numberings`; another number of
    /// them than of atoms, or of sections, is refused. Without numberings, the sections whose texts stay keep theirs.
    void set_data(GJFData data, std::vector<std::size_t> atom_origins);
    void set_data(GJFData data, std::vector<std::size_t> atom_origins, std::vector<SectionNumbering> section_numberings);

    // --- Route cache
    // -------------------------------------------------------------------------------------------------------------
    /// Interprets the route with the vocabulary at `schema_path` (empty: the default one); does nothing when there is no
    /// route.
    void parse_keywords(const std::string& schema_path);
    bool has_parsed_keywords() const noexcept;
    /// Interprets the route with the default vocabulary, unless that was done.
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
    // What is given here and below for Link 0 is stored as it is, without a check; a document checks it when it is written.
    void set_title(const std::string& title);
    /// Sets the overlay input of a non-standard route; nothing removes it.
    void set_overlays(const std::optional<std::string>& text);
    /// Sets the primary pair; the others stay.
    void set_charge_and_spin(int charge, int multiplicity);
    /// Replaces all pairs; the first is the primary one. An empty list leaves 0 and 0.
    void set_charge_spin_pairs(const std::vector<ChargeSpinPair>& pairs);
    /// Returns the primary pair followed by the others; never empty.
    std::vector<ChargeSpinPair> get_charge_spin_pairs() const;

    // --- Link 0
    // --------------------------------------------------------------------------------------------------------------------
    void set_checkpoint_file(const std::string& path);
    void remove_checkpoint_file();
    void set_oldchk_file(const std::string& path);
    void remove_oldchk_file();
    std::optional<std::string> get_oldchk_file() const;
    void set_rwf_file(const std::string& path);
    void remove_rwf_file();
    std::optional<std::string> get_rwf_file() const;
    void set_mem(const std::string& memory);
    void remove_mem();
    std::optional<std::string> get_mem() const;
    /// Sets, or removes, the processor count; lines that are kept whole and set it by another spelling ("%nprocs=4") go.
    void set_nproc(int count);
    void remove_nproc();
    std::optional<int> get_nproc() const;
    void set_cpu(const std::string& processors);
    void remove_cpu();
    std::optional<std::string> get_cpu() const;
    /// Sets, or takes out, any Link 0 key, whose value is not examined; `key` is one of `link0_keys()`.
    void set_link0(const Link0Key& key, const std::string& value);
    void unset_link0(const Link0Key& key);
    /// Replaces the Link 0 lines that are kept whole.
    void set_other_link0_lines(const std::vector<std::string>& lines);

    // --- Output
    // --------------------------------------------------------------------------------------------------------------------
    /// Writes the job as text: fixed order, fixed columns, line feeds, three line breaks at the end. A Z-matrix is
    /// left out, without an error; `GJFDocument` keeps it.
    std::string to_gjf_string() const;
    /// Writes the text to a file, whole or not at all; throws "Cannot write file: PATH".
    void save_to_file(const std::string& path) const;
    /// Returns the atoms whose written coordinates touch, since a coordinate text fills its column of 12: such lines do not
    /// read back.
    std::vector<std::size_t> atoms_with_touching_coordinates() const;
    /// Returns the atoms whose labels, as they are written, are read as others: a type "C T" or "1", a fragment "a,b".
    std::vector<std::size_t> labels_that_do_not_read_back() const;
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
    /// Adds an atom behind the others, without bonds.
    void add_atom(const AtomCoord& atom);
    /// Adds an atom with bonds to existing atoms, given as index and order; an order that is not above 0 makes no bond.
    /// Throws for a partner that is no existing atom and for an order that is not finite.
    void add_atom_with_connectivity(const AtomCoord& atom, const std::vector<std::pair<std::size_t, double>>& bonds);
    /// Removes an atom with its bonds, and renumbers the others. Both names do the same, as for moving.
    void remove_atom(std::size_t index);
    void remove_atom_with_connectivity(std::size_t index);
    /// Removes several atoms, as `remove_atom` does each, in one pass. Indices are those before the call, in any order; one
    /// given twice counts once. Throws "Invalid atom index: N" for the lowest that is not below the number of atoms.
    void remove_atoms(const std::vector<std::size_t>& indices);
    /// Takes an atom out and puts it where its index is `to`; bonds follow.
    void move_atom(std::size_t from, std::size_t to);
    void move_atom_with_connectivity(std::size_t from, std::size_t to);
    /// Puts another atom in the place of one; its bonds stay.
    void replace_atom(std::size_t index, const AtomCoord& atom);
    /// Removes all atoms and bonds; an empty connectivity section stays.
    void clear_atoms();
    /// Puts the old atom `order[i]` at place i; bonds follow. Throws "New order size must match atom count" and "Invalid
    /// reorder sequence" for what is no permutation.
    void reorder_atoms_with_connectivity(const std::vector<std::size_t>& order);
    /// Moves atoms behind, or before, all others, in ascending order; one given twice counts once.
    void move_atoms_to_end(const std::vector<std::size_t>& indices);
    void move_atoms_to_beginning(const std::vector<std::size_t>& indices);
    // Lengths are in the unit of the job: ångström, or bohr with units=au. Indices past the end are skipped, one given twice
    // counts twice; coordinate texts are dropped.

    /// Sets the coordinates of all atoms; those that were names of variables are numbers then, and the variables go. Throws
    /// "There must be one position for each atom".
    void set_positions(const std::vector<std::array<double, 3>>& positions);
    /// Writes all lengths of the molecule in another unit: multiplies the coordinates, and sets units=au or takes it away.
    /// Does nothing where the unit is that already. Throws where lengths stand that would not follow: a Z-matrix, variables,
    /// a second structure, background charges, and where the molecule comes from elsewhere.
    void set_length_unit(bool in_bohr);
    /// Gives an atom another element. Throws for a symbol that is none, and for an atom whose label says what holds for its
    /// element alone: a molecular mechanics type, isotope, spin or nuclear charge.
    void set_element(std::size_t index, const std::string& symbol);
    /// Shifts atoms.
    void translate_atoms(const std::vector<std::size_t>& indices, double dx, double dy, double dz);
    /// Multiplies all three coordinates, which scales distances from the origin.
    void scale_coordinates(const std::vector<std::size_t>& indices, double factor);
    /// Rotates atoms about the coordinate origin by `a`, `b`, `c` radians: about x, then y, then z.
    void rotate_atoms(const std::vector<std::size_t>& indices, double a, double b, double c);

    /// Stands for an atom that the editor did not have when it took the job.
    static constexpr std::size_t no_origin = static_cast<std::size_t>(-1);
    /// Returns for each atom its index when the editor took the job, or `no_origin`. Replacing the whole job by one with
    /// another number of atoms leaves none with an origin.
    const std::vector<std::size_t>& atom_origins() const noexcept;

    /// Returns for each extra input section what its atom numbers count. Editing atoms does not change those texts: a writer
    /// that renumbers them, as `GJFDocument` does, begins here.
    const std::vector<SectionNumbering>& section_numberings() const noexcept;

    /// Begins to record what edits change, from the job as it is now, of which atom origins and section numberings tell
    /// then; returns the identity of the record, which no other one has but those of copies.
    std::uint64_t begin_record();
    /// Returns the record of edits, or null when there is none: none was begun, or it ended, since the job was replaced.
    const EditRecord* record() const noexcept;

    // --- Bonds
    // ---------------------------------------------------------------------------------------------------------------------
    /// Sets the order of a bond, which is made when it is not there; an order that is not above 0 removes it. The first bond
    /// makes the connectivity section, as the first of all sections; the route stays. Throws for a bond of an atom to itself
    /// and for an order that is not finite.
    void set_bond_order(std::size_t a, std::size_t b, double order);
    void remove_bond(std::size_t a, std::size_t b);
    /// Returns the order of a bond, 0 when there is none.
    double get_bond_order(std::size_t a, std::size_t b) const;
    std::vector<std::size_t> get_connected_atoms(std::size_t index) const;
    std::vector<Bond> get_all_bonds() const;
    std::size_t get_bond_count() const noexcept;
    /// Removes all bonds; an empty connectivity section stays.
    void clear_connectivity();
    /// Gives the bond list for direct editing, or null; what is done to it is not checked. Whatever the bonds are later
    /// counts as recorded.
    ConnectivitySection* mutable_connectivity() noexcept;
    ExtraInputSection* mutable_connectivity_section() noexcept;
    /// Turns the text of an extra section into the connectivity section; throws for an index out of range and for bonds that
    /// are not valid, or when there is a connectivity section already.
    void parse_connectivity_from_section(int index);

    // --- Labels and selections
    // -----------------------------------------------------------------------------------------------------
    // Elements are compared letter by letter: "c" is not "C". Indices past the end are skipped, one given twice counts once.
    // A selector is asked once for each atom, in order, before anything changes. A Z-matrix has no atoms here.

    void set_freeze_all(int code);
    void set_freeze_by_element(const std::string& element, int code);
    void set_freeze_by_index(const std::vector<std::size_t>& indices, int code);
    void set_freeze_by_selector(const AtomSelector& selector, int code);
    /// Counts, or lists as "1-3,5", the atoms with a code other than 0.
    std::size_t count_frozen_atoms() const;
    std::string get_frozen_atoms() const;
    /// Lists the atoms with this code as "1-3,5".
    std::string get_atoms_by_freeze_value(int value) const;
    /// Returns all codes in ascending order.
    std::vector<int> get_unique_freeze_values() const;

    void set_oniom_layer_all(const std::string& layer);
    /// Sets the layer of some atoms; as these do by index and by selector, it then gives "L" to all atoms that have none.
    void set_oniom_layer_by_element(const std::string& element, const std::string& layer);
    void set_oniom_layer_by_index(const std::vector<std::size_t>& indices, const std::string& layer);
    void set_oniom_layer_by_selector(const AtomSelector& selector, const std::string& layer);
    /// Tells whether an atom has a layer.
    bool is_oniom_enabled() const noexcept;
    /// Gives "L" to the atoms without a layer, if any atom has one.
    void ensure_oniom_completeness();
    /// Returns all layers in the order of their letters.
    std::vector<std::string> get_unique_oniom_layers() const;
    std::size_t count_atoms_by_oniom_layer(const std::string& layer) const;
    /// Lists the atoms of a layer as "1-3,5".
    std::string get_atoms_by_oniom_layer(const std::string& layer) const;
    std::map<std::string, std::size_t> get_oniom_layer_counts() const;

    /// Sets the label parameter "Fragment"; an empty text removes it.
    void set_fragment_all(const std::string& fragment);
    void set_fragment_by_element(const std::string& element, const std::string& fragment);
    void set_fragment_by_index(const std::vector<std::size_t>& indices, const std::string& fragment);
    void set_fragment_by_selector(const AtomSelector& selector, const std::string& fragment);
    std::optional<std::string> get_fragment(std::size_t index) const;
    /// Returns all fragments, as texts in the order of their characters.
    std::vector<std::string> get_unique_fragments() const;
    std::size_t count_atoms_by_fragment(const std::string& fragment) const;
    /// Lists the atoms of a fragment as "1-3,5".
    std::string get_atoms_by_fragment(const std::string& fragment) const;

    /// Sets the molecular mechanics type of an atom; an empty text removes it.
    void set_atom_type(std::size_t index, const std::string& type);
    void clear_atom_type(std::size_t index);
    /// Sets the molecular mechanics charge of an atom; one that is not finite is refused.
    void set_atom_mm_charge(std::size_t index, double charge);
    void clear_atom_mm_charge(std::size_t index);
    void set_atom_type_and_mm_charge(std::size_t index, const std::string& type, double charge);

    /// Returns all elements in the order of their letters.
    std::vector<std::string> get_unique_elements() const;
    std::size_t count_atoms_by_element(const std::string& element) const;
    /// Writes indices (from 0, in any order) as ranges counted from 1: 0, 1, 2, 4 give "1-3,5"; two in a row stay a pair.
    std::string format_index_ranges(const std::vector<std::size_t>& indices) const;

    // --- Route
    // ---------------------------------------------------------------------------------------------------------------------
    // Words as they stand: the interpretation of the route is forgotten.

    void add_route_keyword(const std::string& keyword);
    /// Removes each word that is exactly this one.
    void remove_route_keyword(const std::string& keyword);

    // Questions to the interpreted route: empty, or false, while it is not interpreted (`ensure_parsed_keywords`). A job
    // that was read is.

    std::string get_method() const;
    std::string get_basis_set() const;
    std::string get_output_mode() const;
    bool has_keyword(const std::string& name) const;
    std::vector<KeywordInfo> get_keywords_by_name(const std::string& name) const;
    std::vector<KeywordInfo> get_keywords_by_category(const std::string& category) const;
    std::optional<std::string> get_keyword_variable(const std::string& keyword, const std::string& variable) const;

    // Edits of the interpreted route, which is interpreted first, and whose words are then written anew. Names are trimmed
    // and stored in lower case; an empty keyword is refused.

    /// Sets the print level: "p", "#p", "n", "t" or, for none, an empty text.
    void set_output_mode(const std::string& mode);
    /// Sets method, or basis set, whatever the model chemistry; an empty text removes it.
    void set_method(const std::string& method);
    void clear_method();
    void set_basis_set(const std::string& basis);
    /// Removes all basis sets, density fitting ones too.
    void clear_basis_set();
    /// Sets the basis set beside a method; refuses an empty text, a route without a method, and ONIOM, two-level and density
    /// fitting model chemistries.
    void set_model_chemistry_basis(const std::string& basis);
    /// Sets the method, with options; an empty text is refused.
    void set_model_chemistry_method(const std::string& method);
    void set_model_chemistry_method_with_options(const std::string& method, const std::vector<RouteOption>& options);
    /// Adds a keyword at the end, even when it is there already.
    void add_keyword(const std::string& name);
    void add_keyword_with_variables(const std::string& name, const std::map<std::string, std::string>& variables);
    void add_keyword_with_options(const std::string& name, const std::vector<RouteOption>& options);
    /// Puts a keyword in the place of the first equivalent one and removes the others, or adds it.
    void upsert_keyword(const std::string& name);
    void upsert_keyword_with_options(const std::string& name, const std::vector<RouteOption>& options);
    /// Gives an option to the first keyword of a name, in place of an equivalent one; the keyword is added when missing.
    void ensure_keyword_option(const std::string& keyword, const RouteOption& option);
    void set_keyword_variable(const std::string& keyword, const std::string& variable, const std::string& value);
    /// Takes an option from every keyword of a name, whichever way it is spelt; with a value, only where it has that value.
    /// Returns whether there was one; a keyword without options stays.
    bool remove_keyword_option(const std::string& keyword, const RouteOption& option);
    /// Returns the options that were given to keywords, in their letter case and order: an interpreted route has them sorted
    /// and in lower case.
    const std::vector<GivenOption>& given_options() const noexcept;
    /// Removes all keywords equivalent to a name; does nothing while the route is not interpreted.
    void remove_keyword_by_name(const std::string& name);
    /// Writes the words from an interpretation given by `set_parsed_keywords`.
    void update_route_from_parsed_keywords();

    // --- Extra input sections
    // ------------------------------------------------------------------------------------------------------
    // Sections count from 0; "Invalid extra input section index: N" is thrown for others.

    /// Adds a section of unknown kind at the end.
    void add_extra_input(const std::string& text);
    void set_extra_inputs(const std::vector<std::string>& texts);
    void set_extra_input(std::size_t index, ExtraInputSectionKind kind, const std::string& text);
    void remove_extra_input(std::size_t index);
    void remove_extra_inputs_by_kind(const std::vector<ExtraInputSectionKind>& kinds);
    void clear_extra_inputs();
    /// Inserts a section behind all of its own or an earlier kind; returns its index.
    std::size_t insert_extra_input_ordered(ExtraInputSectionKind kind, const std::string& text);
    /// Replaces the text of the first section of a kind, or adds to it on a line of its own, or inserts the section.
    void upsert_extra_input_section(ExtraInputSectionKind kind, const std::string& text, bool append);
    void set_molecular_mechanics_parameters(const std::string& text);
    void append_molecular_mechanics_parameters(const std::string& text);
    void clear_molecular_mechanics_parameters();

   private:
    void touch(JobPart part);
    void touch_atom(std::size_t index);
    void touch_atoms(const std::vector<std::size_t>& indices);
    void touch_all_atoms();
    void touch_atoms_without_layer();
    void touch_atom_list();
    AtomCoord& atom_to_change(std::size_t index);
    void take_as_origin();
    ControlSection& link0();
    ConnectivitySection& ensure_connectivity_section();
    void set_layers(const AtomSelector& selector, const std::string& layer, bool complete);
    void validate_extra_input_index(std::size_t index) const;
    void install_sections(std::vector<ExtraInputSection> sections, std::vector<SectionNumbering> numberings);
    ParsedKeywords interpreted_route() const;
    void install_route(ParsedKeywords route);
    void install_route(ParsedKeywords route, const std::string& keyword, const std::vector<RouteOption>& given);
    void install_control(std::vector<std::string> words, std::optional<ParsedKeywords> route);
    ConnectivitySection* bonds_of_the_list();
    SectionNumbering numbering_of(const std::vector<std::size_t>& atom_origins) const;
    std::vector<SectionNumbering> numberings_of(const GJFData& data, const std::vector<std::size_t>& atom_origins) const;

    GJFData data_;
    std::vector<std::size_t> atom_origins_;
    std::size_t taken_atoms_;
    std::vector<SectionNumbering> section_numberings_;  // one for each extra input section
    std::vector<GivenOption> given_options_;
    std::optional<EditRecord> record_;
};

}  // namespace quor::input::gaussian

// The molecule as the checks see it: species, layers, fragments and positions of all atoms, Cartesian or Z-matrix. Private
// to the room.
#pragma once

#include <gjf/core/check/checked_job.hpp>
#include <gjf/core/chemistry/cells.hpp>
#include <gjf/core/chemistry/elements.hpp>
#include <gjf/core/job/positions.hpp>
#include <gjf/core/reader/molecule_fields.hpp>

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quor::input::gaussian {

struct MoleculeAtom : AtomPosition {
    const AtomInfo* info = nullptr;
    std::size_t line = 0;  ///< of the text
    char layer = 0;        ///< 'h', 'm', 'l', 0 for none, '?' for anything else
    std::optional<std::int64_t> fragment;
};

/// Returns the line of the i-th part of a job from one of its layout's lists; 0 where it has none.
std::size_t line_at(const std::vector<std::size_t>& lines, std::size_t i) noexcept;

/// Looks at every atom of a job's molecule.
std::vector<MoleculeAtom> atoms_of(const CheckedJob& job);

/// Tells which lines among a Z-matrix's variables (or constants) are rather rows that the reader does not know, such as
/// "H 1 0.96 L" or "H C1 1.09": used by no row and with the look of one. As many as `variables`.
std::vector<bool> lines_like_rows(const CheckedJob& job, const std::vector<ZMatrixVariable>& variables,
                                  const std::vector<std::size_t>& lines);

/// Tells whether the molecule may have atoms that the reader took for variables, so that nothing can be counted.
bool has_unread_rows(const CheckedJob& job);

/// The fields behind the layer of an ONIOM atom: the link atom that takes its place in the model, and the atom it is bonded
/// to.
struct LinkAtom {
    std::string_view label;
    std::optional<std::int64_t> host;  ///< from 1; absent when it is no number or not given
    std::string_view host_text;

    /// Returns the place of the host (from 0) among so many atoms; their count when it is none of them.
    std::size_t host_index(std::size_t atom_count) const noexcept {
        const bool in_range = host && *host >= 1 && std::cmp_less_equal(*host, atom_count);
        return in_range ? static_cast<std::size_t>(*host) - 1 : atom_count;
    }
};

/// The link atoms of a molecule, by the atoms (from 0) whose place they take. They view the text.
using LinkAtoms = std::map<std::size_t, LinkAtom>;

/// Returns the link atoms that the lines of a job's atoms name.
LinkAtoms link_atoms_of(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms);

/// A bond between two atoms (from 0) in different layers, whose lower atom names no link atom.
struct UnlinkedBond {
    std::size_t upper = 0;
    std::size_t lower = 0;
};

/// What the checks share of an ONIOM job; all are empty in any other job.
struct OniomLayers {
    std::vector<std::string> levels = {};  ///< as of `oniom_levels`
    LinkAtoms links = {};
    std::vector<UnlinkedBond> unlinked = {};
};

/// Looks at the layers of a job.
OniomLayers oniom_layers(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms);

/// Adds the bonds that layers cut without one of the link atoms: by connectivity where the job has it, else by distance.
void add_unlinked_bonds(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms, OniomLayers& layers);

/// Returns how deep an atom's layer lies: 0 for the high one, which also holds the atoms without a layer, 1 for the medium
/// and 2 for the low one, whether or not the job has a medium one.
std::size_t layer_depth(const MoleculeAtom& atom) noexcept;

/// Reports an element that a basis set is known to lack.
void report_lack(std::string_view basis, int element, const TextPlace& place, Findings& findings);

/// Checks charge and multiplicity of a further structure of the same atoms.
void check_further_pair(const CheckedJob& job, const std::vector<ChargeSpinPair>& pairs,
                        const std::vector<MoleculeAtom>& atoms, std::size_t line, Findings& findings);

/// Compares a second or third structure with the first: as many atoms, in the same order.
void check_structure(const CheckedJob& job, const SectionLayout& section, const std::vector<MoleculeAtom>& atoms,
                     Findings& findings);

/// Checks a section of core potentials.
void check_potentials(const CheckedJob& job, const SectionLayout& layout, const std::vector<MoleculeAtom>& atoms,
                      Findings& findings);

/// Reports a basis set and core potentials that stand in each other's place.
void check_order_of_potentials(const CheckedJob& job, Findings& findings);

/// Checks a line of generalised internal coordinates; numbers up to `atom_count` may be named.
void check_expression(const CheckedJob& job, std::size_t line, std::size_t atom_count, Findings& findings);

}  // namespace quor::input::gaussian

// The rules of the checker: families, each of which finds what some codes stand for in one walk over a job. Private to the
// room.
//
// A rule is a code in its family's list here, and its title, explanation and jobs in resources/knowledge/checks.md; the two
// are joined in `check_descriptions`.
#pragma once

#include <gjf/core/check/molecule_view.hpp>

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// How much of a job is known for sure; each holds those before it.
enum class Known : std::uint8_t {
    Nothing,
    Route,     ///< the words of the route
    Control,   ///< the lines, Link 0 and the route
    Labels,    ///< the labels of the atoms that are there
    Rows,      ///< the rows of the molecule, though some may not have been read
    Molecule,  ///< all of it: atoms can be counted
};

/// A job and its molecule, which is empty as long as no more than `Known::Control` is known.
struct CheckedMolecule {
    const CheckedJob& job;
    std::vector<MoleculeAtom> atoms;
    OniomLayers layers;
};

/// Rules that one walk over a job finds.
struct Family {
    Known needs;
    void (*find)(const CheckedMolecule& molecule, Findings& findings);
    std::initializer_list<const char*> codes;
    std::initializer_list<const char*> of_other_files = {};  ///< those of them that a text alone cannot tell
};

/// Checks charges and multiplicities that a job takes from a checkpoint with its molecule.
void check_earlier_pairs(const CheckedMolecule& molecule, const std::vector<ChargeSpinPair>& pairs, Findings& findings);

/// Returns all families, in the order in which they are asked.
std::span<const Family* const> families() noexcept;
/// Tells whether other files have a say in what a code stands for.
bool is_of_other_files(std::string_view code) noexcept;

// Each stands at the end of its source.
extern const Family text_family;
extern const Family blank_line_family;
extern const Family link0_family;
extern const Family glued_word_family;
extern const Family route_word_family;
extern const Family option_value_family;
extern const Family route_sense_family;
extern const Family method_family;
extern const Family reading_family;
extern const Family later_blank_line_family;
extern const Family molecule_form_family;
extern const Family atom_family;
extern const Family electron_family;
extern const Family zmatrix_family;
extern const Family layer_family;
extern const Family connectivity_family;
extern const Family basis_section_family;
extern const Family basis_element_family;
extern const Family named_block_family;
extern const Family size_family;
extern const Family section_family;
extern const Family section_content_family;
extern const Family limit_family;
extern const Family included_file_family;

}  // namespace quor::input::gaussian

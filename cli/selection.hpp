// The selection language of quor-gjf edit: which atoms of a job are meant, as in "C and not layer:H" or "within 5.0 of 12".
//
//     selection = operand { ("and" | "or") operand }             "and" binds more tightly than "or"
//     operand   = "(" selection ")" | "not" operand | "within" DISTANCE "of" operand | "bonded" "to" operand | test
//     test      = "all" | "frozen" | SYMBOL | NUMBERS | "element:" | "layer:" | "fragment:" | "type:" | "resname:" NAME
#pragma once

#include <gjf/gjf.hpp>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quor_gjf {

/// Tells what is wrong with the text of a selection; the message names the column, counted from 1.
class SelectionError : public std::runtime_error {
   public:
    SelectionError(std::size_t column, const std::string& message)
        : std::runtime_error("column " + std::to_string(column) + ": " + message) {}
};

/// What one step of a selection does: tests of atoms, then what combines the results of steps before it.
enum class SelectionTest {
    All,
    Frozen,
    Element,   ///< by symbol, or by the whole label
    Numbers,   ///< atom numbers, from 1
    Layer,     ///< ONIOM layer
    Fragment,  ///< fragment number
    Type,      ///< MM atom type
    Residue,   ///< residue name
    Not,
    Within,
    BondedTo,
    And,
    Or,
};

/// A range of atom numbers counted from 1, both ends included.
using NumberRange = std::pair<std::size_t, std::size_t>;

/// One step of a selection in postfix order.
struct SelectionStep {
    SelectionTest test = SelectionTest::All;
    std::string name;                  ///< what a test compares with
    std::vector<NumberRange> numbers;  ///< of `Numbers`
    double distance = 0;               ///< of `Within`, in the job's own units
};

/// A selection that was read: its steps, each after those it combines.
struct Selection {
    std::vector<SelectionStep> steps;
};

/// Reads a selection; throws `SelectionError`. Words are read in any letter case.
Selection parse_selection(std::string_view text);

/// Returns the indices (from 0, ascending) of a job's atoms that are selected.
///
/// Throws `std::runtime_error` for a number past the last atom, for "bonded to" in a job without connectivity, and for
/// "within" where a coordinate is a variable without a value.
std::vector<std::size_t> selected_atoms(const Selection& selection, const quor::input::gaussian::GJFEditor& job);

/// Tells whether a text is the symbol of an element, or Bq, X, Xx or Tv, letter case aside.
bool is_element_symbol(std::string_view text);

/// Tells whether an atom is a translation vector: no place in the molecule, but a repeat of it.
bool is_translation_vector(const quor::input::gaussian::AtomCoord& atom);

/// Returns the symbol that a label begins with, in lower case: of C, c5 and 6 that is "c".
std::string element_of_label(const std::string& label);

}  // namespace quor_gjf

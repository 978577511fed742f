// The selection language: which atoms of a job are meant, as in "C and not layer:H" or "within 5.0 of 12".
//
//     selection = operand { ("and" | "or") operand }             "and" binds more tightly than "or"
//     operand   = "(" selection ")" | "not" operand | "within" DISTANCE "of" operand | "bonded" "to" operand | test
//     test      = "all" | "frozen" | SYMBOL | NUMBERS | "element:" | "layer:" | "fragment:" | "type:" | "resname:" NAME
#pragma once

#include <core/export.hpp>
#include <gjf/core/job/gjf_data.hpp>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quor::input::gaussian {

/// Tells what is wrong with a selection: with its text, or with it in a job that it does not fit.
class QUOR_GJF_API SelectionError : public std::invalid_argument {
   public:
    explicit SelectionError(const std::string& message);
    /// For a fault of the text; the message begins with the column, a character each, counted from 1.
    SelectionError(std::size_t column, const std::string& message);
    ~SelectionError() override;
};

/// What one step of a selection does: tests of atoms, then what combines the results of steps before it.
enum class SelectionTest {
    All,
    Frozen,
    Element,   ///< by species: symbol or atomic number; any other name is that of a whole label
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
QUOR_GJF_API Selection parse_selection(std::string_view text);

/// Returns the indices (from 0, ascending) of a job's atoms that are selected.
///
/// The rows of a Z-matrix count as atoms; translation vectors are named by their symbol or number alone. Throws
/// `SelectionError` for a number past the last atom, for "bonded to" in a job without connectivity, and for "within" where
/// an atom has no position, with the reason.
QUOR_GJF_API std::vector<std::size_t> selected_atoms(const Selection& selection, const GJFData& job);

/// The two at once: returns the indices of the atoms that a text names.
QUOR_GJF_API std::vector<std::size_t> select(const GJFData& job, std::string_view text);

}  // namespace quor::input::gaussian

// How the fields of a Z-matrix row are meant: in the form that the class interface takes, and in every form that Gaussian
// reads. Private to the library.
#pragma once

#include <gjf/core/reader/molecule_fields.hpp>

#include <cstddef>
#include <optional>

namespace quor::input::gaussian {

/// A row: a label, then up to three pairs of an atom and a value, or three coordinates; perhaps a code that tells how the
/// dihedral is meant; perhaps a fragment, a layer and a link atom. Numbers are indices of fields.
struct RowForm {
    std::size_t values = 0;     ///< how many pairs, or 3 coordinates
    std::size_t first = 2;      ///< the first value
    bool cartesian = false;     ///< the values are coordinates, one field behind the other
    std::size_t code = 0;       ///< 0 when there is none
    std::size_t rest = 1;       ///< the first field behind all this
    bool has_fragment = false;  ///< `rest` is a fragment
    std::size_t layer = 0;      ///< 0 when there is none

    std::size_t atom(std::size_t i) const noexcept { return first + 2 * i - 1; }
    std::size_t value(std::size_t i) const noexcept { return first + (cartesian ? 1 : 2) * i; }
};

/// Tells whether fields, the first of a molecule, are a Z-matrix row: a label and up to three pairs of an atom number and a
/// value, and no Cartesian atom.
bool is_zmatrix_line(const Fields& fields) noexcept;

/// Finds how fields are meant as the `first` or a later row of pairs with atom numbers, and perhaps a code; absent for all
/// others.
std::optional<RowForm> find_plain_row_form(Fields fields, bool first);

/// Finds how fields are meant as a row of any form; absent when they cannot be one. A field that names an atom is a number
/// above 0 or a word, which may be the label of an earlier row.
std::optional<RowForm> find_row_form(const Fields& fields);

}  // namespace quor::input::gaussian

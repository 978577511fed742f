// Reads the lines of a Z-matrix. Private to the room.
#pragma once

#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/reader/reading.hpp>

namespace quor::input::gaussian {

/// Tells whether fields, the first of a molecule, are a Z-matrix row: a label and up to three pairs of an atom number and a
/// value, and no Cartesian atom.
bool is_zmatrix_line(const Fields& fields) noexcept;

/// Tells whether the last of eight fields is a code that tells how the dihedral field is meant.
bool has_dihedral_code(const Fields& fields) noexcept;

/// Reads Z-matrix rows until something else comes, and variables from there on, into the list that the last header names.
class ZMatrixReader {
   public:
    ZMatrixReader(MoleculeReading& molecule, ReadingRecorder* recorder) noexcept
        : molecule_(molecule), recorder_(recorder) {}

    void take(std::string_view line);
    /// Begins a section of its own, of variables or constants.
    void begin_section(VariableHeader header) noexcept;

   private:
    void begin_variables(VariableHeader header) noexcept;
    void read_row();
    void read_variable(std::string_view text, std::string_view line);

    MoleculeReading& molecule_;
    ReadingRecorder* recorder_;
    bool constants_ = false;  // variables go to the constants
    bool rows_ = true;
    bool in_section_ = false;
    Fields fields_;
};

}  // namespace quor::input::gaussian

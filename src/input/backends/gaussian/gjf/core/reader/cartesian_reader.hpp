// Reads the lines of Cartesian coordinates. Private to the room.
#pragma once

#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/reader/reading.hpp>

#include <optional>

namespace quor::input::gaussian {

/// Reads the lines of Cartesian coordinates into a molecule: atoms, and the values of variables.
class CartesianReader {
   public:
    CartesianReader(MoleculeReading& molecule, ReadingRecorder* recorder) noexcept
        : molecule_(molecule), recorder_(recorder) {}

    /// Tells whether a coordinate read so far is a variable.
    bool has_variables() const noexcept { return has_variables_; }
    /// Tells whether a row of a Z-matrix stood behind an atom; reading stopped there.
    bool has_rows() const noexcept { return has_rows_; }

    void read(LineSpan lines);
    /// Reads the line of a variable in a section of its own; `text` is the line without its comment.
    void take_section_variable(std::string_view text, std::string_view line);

   private:
    void take_variable(std::string_view text, std::string_view line);
    void take(std::string_view line);
    void read_atom(std::string_view line, AtomCoord& atom);
    void note_atom(AtomCoord& atom);
    void leave_out(const char* what, std::string_view line);
    bool is_in_use(std::string_view name) const;
    bool is_row() const;
    bool is_variable(std::string_view text) const;

    MoleculeReading& molecule_;
    ReadingRecorder* recorder_;
    Fields fields_;
    bool has_variables_ = false;
    bool has_rows_ = false;
    bool has_header_ = false;  // of variables
    NameSet names_in_use_;     // in lower case; of the reading alone
};

}  // namespace quor::input::gaussian

// Reads the lines of Cartesian coordinates. Private to the room.
#pragma once

#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/reader/reading.hpp>

namespace quor::input::gaussian {

/// Reads the lines of Cartesian coordinates into a molecule: atoms, and the values of variables.
class CartesianReader {
   public:
    CartesianReader(MoleculeReading& molecule, ReadingRecorder* recorder) noexcept
        : molecule_(molecule), recorder_(recorder) {}

    /// Tells whether a coordinate read so far is a variable.
    bool has_variables() const noexcept { return has_variables_; }

    void read(LineSpan lines);
    /// Reads the line of a variable; `text` is the line without its comment.
    void take_variable(std::string_view text, std::string_view line);

   private:
    void take(std::string_view line);
    void note_atom(const AtomCoord& atom);

    MoleculeReading& molecule_;
    ReadingRecorder* recorder_;
    Fields fields_;
    bool has_variables_ = false;
};

}  // namespace quor::input::gaussian

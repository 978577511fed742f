// Reads the lines of a Z-matrix. Private to the room.
#pragma once

#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/reader/reading.hpp>
#include <gjf/core/reader/row_form.hpp>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// Reads Z-matrix rows until something else comes, and variables from there on, into the list that the last header names.
class ZMatrixReader {
   public:
    ZMatrixReader(MoleculeReading& molecule, ReadingRecorder* recorder) noexcept
        : molecule_(molecule), recorder_(recorder) {}

    void take(std::string_view line);
    /// Tells whether a row has a form that the class interface does not take for one.
    bool has_other_forms() const noexcept { return has_other_forms_; }
    /// Begins a section of its own, of variables or constants.
    void begin_section(VariableHeader header) noexcept;

   private:
    void begin_variables(VariableHeader header) noexcept;
    std::optional<std::int32_t> atom_of(std::string_view field);
    std::optional<RowForm> find_row();
    void read_row(const RowForm& form);
    void read_variable(std::string_view text, std::string_view line);

    MoleculeReading& molecule_;
    ReadingRecorder* recorder_;
    bool constants_ = false;  // variables go to the constants
    bool rows_ = true;
    bool in_section_ = false;
    bool has_other_forms_ = false;
    Fields fields_;
    std::vector<std::string_view> row_labels_;
    std::map<std::string, std::int32_t, std::less<>> row_of_label_;  // of the first rows, in lower case
    std::size_t labels_known_ = 0;
};

}  // namespace quor::input::gaussian

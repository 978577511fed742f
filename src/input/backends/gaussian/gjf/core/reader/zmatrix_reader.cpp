// Reads Z-matrix rows, and the variables and constants behind them.
#include <gjf/core/reader/zmatrix_reader.hpp>

#include <gjf/core/sections/route_questions.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <array>

namespace quor::input::gaussian {
namespace {

// A field such as r=0.96 is a variable and no atom; a label has "=" among its parameters alone.
bool is_assignment(std::string_view field) noexcept {
    return field.substr(0, field.find('(')).find('=') != std::string_view::npos;
}

// A label, and up to three pairs of an atom number and a value.
bool has_row_shape(const Fields& fields) noexcept {
    if (fields.size() % 2 == 0 || fields.size() > 7 || is_assignment(fields[0])) {
        return false;
    }
    for (std::size_t i = 1; i < fields.size(); i += 2) {
        if (!is_integer_text(fields[i])) {
            return false;
        }
    }
    return true;
}

// Below other rows, H 1 0.96 2 104.5 is a row too, though alone it might be an atom with a freeze code: it names atoms.
bool is_row_below_others(const Fields& fields) noexcept {
    if (!has_row_shape(fields)) {
        return false;
    }
    for (std::size_t i = 1; i < fields.size(); i += 2) {
        if (to_int64(fields[i]).value_or(0) < 1) {
            return !is_cartesian_line(fields);
        }
    }
    return true;
}

}  // namespace

bool is_zmatrix_line(const Fields& fields) noexcept { return has_row_shape(fields) && !is_cartesian_line(fields); }

bool has_dihedral_code(const Fields& fields) noexcept {
    return fields.size() == 8 && (fields[7] == "0" || fields[7] == "1" || fields[7] == "-1");
}

NameAndValue cut_zmatrix_variable(std::string_view text, const Fields& fields) noexcept {
    const std::size_t equals = text.find('=');
    if (equals != std::string_view::npos) {
        return cut_at_equals(text, equals);
    }
    return fields.size() >= 2 ? NameAndValue{fields[0], fields[1]} : NameAndValue{};
}

void ZMatrixReader::take(std::string_view line) {
    if (recorder_ != nullptr) {
        recorder_->at(line);
    }
    const std::string_view text = without_comment(line);
    if (is_blank_line(text)) {
        rows_ = rows_ && is_comment_line(line);
        return;
    }
    if (const VariableHeader header = variable_header(text, recorder_ != nullptr); header != VariableHeader::None) {
        if (!rows_ && !in_section_ && variable_header(text) == VariableHeader::None) {
            report_departure(recorder_, {}, "Invalid Z-matrix variable line: " + std::string(line));
        }
        begin_variables(header);
        return;
    }
    if (recorder_ != nullptr && is_include_line(text)) {
        note_doubt(recorder_, &JobReading::atoms_uncertain);
        return;
    }
    cut_fields(text, fields_);
    if (rows_ && has_dihedral_code(fields_)) {
        fields_.pop_back();
    }
    const bool first = molecule_.geom.zmatrix_entries.empty();
    if (rows_ && (first ? is_zmatrix_line(fields_) : is_row_below_others(fields_))) {
        read_row();
    } else {
        read_variable(text, line);
    }
}

void ZMatrixReader::begin_variables(VariableHeader header) noexcept {
    constants_ = header == VariableHeader::Constants;
    rows_ = false;
}

void ZMatrixReader::begin_section(VariableHeader header) noexcept {
    begin_variables(header);
    in_section_ = true;
}

void ZMatrixReader::read_row() {
    ZMatrixEntry& entry = molecule_.geom.zmatrix_entries.emplace_back();
    note_line(recorder_, &JobPlaces::zmatrix_rows);
    read_atom_label(fields_[0], entry.info);
    molecule_.has_residues = molecule_.has_residues || has_residue(entry.info);
    const std::array<std::optional<ZMatrixReference>*, 3> references = {&entry.bond, &entry.angle, &entry.dihedral};
    for (std::size_t i = 0; i < references.size() && 2 * i + 2 < fields_.size(); ++i) {
        const std::optional<std::int32_t> atom = to_int32(fields_[2 * i + 1]);
        if (!atom) {
            report_fault(recorder_, fields_[2 * i + 1], "Invalid Z-matrix geometry section");
            note_doubt(recorder_, &JobReading::atoms_uncertain);
            return;
        }
        *references[i] = ZMatrixReference{*atom, std::string(fields_[2 * i + 2])};
    }
}

void ZMatrixReader::read_variable(std::string_view text, std::string_view line) {
    rows_ = false;
    const NameAndValue entry = cut_zmatrix_variable(text, fields_);
    if (entry.name.empty()) {
        report_fault(recorder_, {}, "Invalid Z-matrix variable line: " + std::string(line));
        note_doubt(recorder_, &JobReading::atoms_uncertain);
        return;
    }
    GeomSection& geom = molecule_.geom;
    (constants_ ? geom.constants : geom.variables).push_back({std::string(entry.name), std::string(entry.value)});
    note_line(recorder_, constants_ ? &JobPlaces::constants : &JobPlaces::variables);
}

}  // namespace quor::input::gaussian

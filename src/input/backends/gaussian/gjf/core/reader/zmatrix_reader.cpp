// Reads Z-matrix rows, and the variables and constants behind them.
#include <gjf/core/reader/zmatrix_reader.hpp>

#include <gjf/core/reader/row_form.hpp>
#include <gjf/core/sections/route_questions.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <array>

namespace quor::input::gaussian {
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
    if (const std::optional<RowForm> form = rows_ ? find_row() : std::nullopt) {
        read_row(*form);
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

// Returns the number of the atom that a field names, by its number or by the label of its row.
std::optional<std::int32_t> ZMatrixReader::atom_of(std::string_view field) {
    if (is_integer_text(field)) {
        return to_int32(field);
    }
    for (; labels_known_ < row_labels_.size(); ++labels_known_) {
        const std::string_view label = row_labels_[labels_known_];
        row_of_label_.emplace(to_lower_copy(label.substr(0, label.find('('))), static_cast<std::int32_t>(labels_known_ + 1));
    }
    const auto row = row_of_label_.find(to_lower_copy(field));
    return row == row_of_label_.end() ? std::nullopt : std::optional(row->second);
}

// A fragment or a layer may follow the first label; anywhere else, a name and a number are a variable.
std::optional<RowForm> ZMatrixReader::find_row() {
    const bool first = molecule_.geom.zmatrix_entries.empty();
    std::optional<RowForm> form = recorder_ == nullptr ? std::nullopt : find_row_form(fields_);
    bool known = form && (first || form->values > 0 || form->rest == fields_.size());
    for (std::size_t i = 0; known && !form->cartesian && i < form->values; ++i) {
        const std::string_view field = fields_[form->atom(i)];
        known = is_integer_text(field) || atom_of(field);
    }
    std::optional<RowForm> plain = find_plain_row_form(fields_, first);
    has_other_forms_ = has_other_forms_ || (known && !plain);
    return known ? form : plain;
}

void ZMatrixReader::read_row(const RowForm& form) {
    ZMatrixEntry& entry = molecule_.geom.zmatrix_entries.emplace_back();
    note_line(recorder_, &JobPlaces::zmatrix_rows);
    read_atom_label(fields_[0], entry.info);
    molecule_.has_residues = molecule_.has_residues || has_residue(entry.info);
    const std::array<std::optional<ZMatrixReference>*, 3> references = {&entry.bond, &entry.angle, &entry.dihedral};
    for (std::size_t i = 0; i < form.values; ++i) {
        const std::optional<std::int32_t> atom = form.cartesian ? 0 : atom_of(fields_[form.atom(i)]);
        if (!atom) {
            report_fault(recorder_, fields_[form.atom(i)], "Invalid Z-matrix geometry section");
            note_doubt(recorder_, &JobReading::atoms_uncertain);
            break;
        }
        *references[i] = ZMatrixReference{*atom, std::string(fields_[form.value(i)])};
    }
    if (recorder_ != nullptr) {
        name_dummy(entry.info);
        row_labels_.push_back(fields_[0]);
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

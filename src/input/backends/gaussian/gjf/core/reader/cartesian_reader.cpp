// Reads Cartesian atoms, and the variables that their coordinates may be.
#include <gjf/core/reader/cartesian_reader.hpp>

#include <core/memory/reserve_large.hpp>
#include <gjf/core/reader/row_form.hpp>
#include <gjf/core/sections/route_questions.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace quor::input::gaussian {
namespace {

// Reads one coordinate; tells whether it is a finite number or the name of a variable, and keeps it only then.
bool read_coordinate(std::string_view field, bool fortran, double& number, CoordinateValue& coordinate) {
    const std::string_view text = trim_view(field);
    const std::optional<double> value = fortran ? to_fortran_number(text) : to_number(text);
    if (value ? !std::isfinite(*value) : !is_variable_name(without_sign(text))) {
        return false;
    }
    coordinate.value = value;
    coordinate.text = text;
    number = value.value_or(0.0);
    return true;
}

// Tells whether a code of one letter, and perhaps numbers, stand behind the value of a variable.
bool has_code(const Fields& fields) {
    return fields[2].size() == 1 && is_variable_name(fields[2]) &&
           std::all_of(fields.begin() + 3, fields.end(), [](std::string_view field) { return to_fortran_number(field); });
}

UnreadField unread_coordinate(std::string_view field, std::string_view line) {
    const bool beyond_numbers = is_number_text(trim_view(field));
    return {field, beyond_numbers ? "Invalid coordinate values: " + std::string(line)
                                  : "Invalid coordinate value: " + std::string(field)};
}

}  // namespace

std::size_t coordinate_begin(const Fields& fields) noexcept {
    return fields.size() >= 5 && is_integer_text(fields[1]) ? 2 : 1;
}

bool is_cartesian_line(const Fields& fields) noexcept {
    if (fields.size() < 4) {
        return false;
    }
    const std::size_t begin = coordinate_begin(fields);
    return is_number_text(fields[begin]) && is_number_text(fields[begin + 1]) && is_number_text(fields[begin + 2]);
}

std::optional<UnreadField> read_atom_fields(const Fields& fields, std::string_view line, AtomCoord& atom, bool fortran) {
    read_atom_label(fields[0], atom.info);
    const std::size_t begin = coordinate_begin(fields);
    if (begin == 2) {
        atom.freeze = to_int32(fields[1]);
        if (!atom.freeze) {
            return UnreadField{fields[1], "Invalid coordinate values: " + std::string(line)};
        }
    }
    const std::array<std::pair<double*, CoordinateValue*>, 3> coordinates = {
        {{&atom.x, &atom.x_ref}, {&atom.y, &atom.y_ref}, {&atom.z, &atom.z_ref}}};
    for (std::size_t i = 0; i < coordinates.size(); ++i) {
        if (!read_coordinate(fields[begin + i], fortran, *coordinates[i].first, *coordinates[i].second)) {
            AtomCoord label_alone;
            label_alone.info = std::move(atom.info);
            atom = std::move(label_alone);
            return unread_coordinate(fields[begin + i], line);
        }
    }
    if (fields.size() > begin + 3) {
        atom.layer = fields[begin + 3];
    }
    return std::nullopt;
}

NameAndValue cut_cartesian_variable(std::string_view text) {
    Fields fields;
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) {
        cut_fields(text, fields);
        const bool is_variable = fields.size() >= 2 && is_variable_name(fields[0]) && to_fortran_number(fields[1]) &&
                                 (fields.size() == 2 || has_code(fields));
        return is_variable ? NameAndValue{fields[0], fields[1]} : NameAndValue{};
    }
    NameAndValue entry = cut_at_equals(text, equals);
    if (!is_variable_name(entry.name) || entry.value.empty()) {
        return {};
    }
    cut_fields(entry.value, fields);
    return fields.empty() ? NameAndValue{entry.name, {}} : entry;
}

void CartesianReader::read(LineSpan lines) {
    std::vector<AtomCoord>& atoms = molecule_.geom.atoms;
    core::memory::reserve_large(atoms, lines.size());
    for (const std::string_view& line : lines) {
        if (recorder_ != nullptr) {
            recorder_->at(line);
        }
        if (read_plain_atom_line(line, atoms.emplace_back())) {
            note_atom(atoms.back());
            continue;
        }
        atoms.pop_back();
        take(line);
        if (has_rows_) {
            return;
        }
    }
}

void CartesianReader::leave_out(const char* what, std::string_view line) {
    report_fault(recorder_, {}, what + std::string(line));
    note_doubt(recorder_, &JobReading::atoms_uncertain);
}

bool CartesianReader::is_in_use(std::string_view name) const { return names_in_use_.count(to_lower_copy(name)) > 0; }

// Tells whether fields are a row of a Z-matrix behind coordinates. Numbers that may be an atom with a freeze code are none.
bool CartesianReader::is_row() const {
    const std::size_t count = molecule_.geom.atoms.size();
    const std::optional<RowForm> form = count == 0 || is_cartesian_line(fields_) ? std::nullopt : find_row_form(fields_);
    if (!form || form->cartesian || form->values == 0) {
        return false;
    }
    for (std::size_t i = 0; i < form->values; ++i) {
        const std::optional<std::int64_t> atom = to_int64(fields_[form->atom(i)]);
        if (!atom || std::cmp_greater(*atom, count)) {
            return false;
        }
    }
    return !is_in_use(fields_[0]);
}

// Tells whether a line gives a value to a variable, with more fields than these lines have in the class interface.
bool CartesianReader::is_variable(std::string_view text) const {
    const NameAndValue entry = cut_cartesian_variable(text);
    return !entry.name.empty() && (text.find('=') != std::string_view::npos || is_in_use(entry.name));
}

void CartesianReader::take_variable(std::string_view text, std::string_view line) {
    const bool by_blank = text.find('=') == std::string_view::npos;
    if (by_blank && (recorder_ == nullptr || (!has_header_ && !is_in_use(cut_cartesian_variable(text).name)))) {
        leave_out("Invalid coordinate line: ", line);
        return;
    }
    if (by_blank || fields_.size() > 3) {
        report_departure(recorder_, {}, "Invalid coordinate line: " + std::string(line));
    }
    take_section_variable(text, line);
}

void CartesianReader::take_section_variable(std::string_view text, std::string_view line) {
    const NameAndValue entry = cut_cartesian_variable(text);
    if (entry.value.empty()) {
        leave_out(entry.name.empty() ? "Invalid coordinate line: " : "Invalid Cartesian coordinate variable line: ", line);
        return;
    }
    molecule_.geom.cartesian_variables.push_back({std::string(entry.name), std::string(entry.value)});
    note_line(recorder_, &JobPlaces::cartesian_variables);
}

// Takes a line of any form.
void CartesianReader::take(std::string_view line) {
    const std::string_view text = without_comment(line);
    cut_fields(text, fields_);
    if (recorder_ != nullptr && is_include_line(text)) {
        report_departure(recorder_, {}, "Invalid coordinate line: " + std::string(line));
        note_doubt(recorder_, &JobReading::atoms_uncertain);
        return;
    }
    if (recorder_ != nullptr && is_row()) {
        has_rows_ = true;
        return;
    }
    if (recorder_ != nullptr && has_variables_ && variable_header(text, true) != VariableHeader::None) {
        report_departure(recorder_, {}, "Invalid coordinate line: " + std::string(line));
        has_header_ = true;
        return;
    }
    if (fields_.size() <= 3 || (recorder_ != nullptr && is_variable(text))) {
        if (!is_blank_line(text)) {
            take_variable(text, line);
        }
        return;
    }
    AtomCoord& atom = molecule_.geom.atoms.emplace_back();
    read_atom(line, atom);
    for (const CoordinateValue* coordinate : {&atom.x_ref, &atom.y_ref, &atom.z_ref}) {
        has_variables_ = has_variables_ || !coordinate->value;
        if (!coordinate->value && !coordinate->text.empty() && recorder_ != nullptr) {
            names_in_use_.insert(to_lower_copy(without_sign(coordinate->text)));
        }
    }
    note_atom(atom);
}

// Numbers with D exponents are read where the class interface refuses them.
void CartesianReader::read_atom(std::string_view line, AtomCoord& atom) {
    std::optional<UnreadField> unread = read_atom_fields(fields_, line, atom);
    if (!unread) {
        return;
    }
    if (recorder_ != nullptr) {
        AtomCoord again;
        if (!read_atom_fields(fields_, line, again, true)) {
            atom = std::move(again);
            report_departure(recorder_, unread->field, std::move(unread->message));
            return;
        }
    }
    report_fault(recorder_, unread->field, std::move(unread->message));
}

void CartesianReader::note_atom(AtomCoord& atom) {
    if (recorder_ != nullptr) {
        name_dummy(atom.info);
    }
    molecule_.has_residues = molecule_.has_residues || has_residue(atom.info);
    note_line(recorder_, &JobPlaces::atoms);
}

}  // namespace quor::input::gaussian

// Reads the molecule section: charge and multiplicity pairs, atom labels, Cartesian atoms and Z-matrix rows, and their
// variables.
#include <gjf/core/reader/gjf_parser.hpp>

#include <core/memory/reserve_large.hpp>
#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/reader/reading.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <stdexcept>

namespace quor::input::gaussian {
namespace {

using core::memory::reserve_large;

[[noreturn]] void fail(const char* what, std::string_view text) { throw GJFParseException(what + std::string(text)); }

// Tells whether a line holds something once its comment is taken away.
bool holds_text(std::string_view line) noexcept { return !is_blank_line(without_comment(line)); }

// Notes the line being read in one of the layout's lists.
void note_line(LayoutRecorder* recorder, std::vector<std::size_t> JobLayout::*list) {
    if (recorder != nullptr) {
        (recorder->layout.*list).push_back(recorder->current_line);
    }
}

std::int32_t charge_field(std::string_view field, std::string_view line) {
    if (!is_integer_text(field)) {
        fail("Invalid charge/spin line: ", line);
    }
    const std::optional<std::int32_t> number = to_int32(field);
    if (!number) {
        throw std::out_of_range("charge or multiplicity beyond 32 bits");
    }
    return *number;
}

std::vector<ChargeSpinPair> read_charge_line(std::string_view line) {
    Fields fields;
    cut_fields(without_comment(line), fields);
    if (fields.size() < 2 || fields.size() % 2 != 0) {
        fail("Invalid charge/spin line: ", line);
    }
    std::vector<ChargeSpinPair> pairs;
    pairs.reserve(fields.size() / 2);
    for (std::size_t i = 0; i < fields.size(); i += 2) {
        const std::int32_t charge = charge_field(fields[i], line);
        pairs.push_back({charge, charge_field(fields[i + 1], line)});
    }
    return pairs;
}

// Returns the index of the first coordinate field: 2 behind a freeze code, else 1.
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

bool is_zmatrix_line(const Fields& fields) noexcept { return has_row_shape(fields) && !is_cartesian_line(fields); }

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

// A row may end in a code that tells how its dihedral field is meant: 0, or 1 and -1 for a second angle.
bool has_dihedral_code(const Fields& fields) noexcept {
    return fields.size() == 8 && (fields[7] == "0" || fields[7] == "1" || fields[7] == "-1");
}

// Stores one coordinate; returns its number, 0 for a variable.
double read_coordinate(std::string_view field, std::string_view line, CoordinateValue& coordinate) {
    const std::string_view text = trim_view(field);
    coordinate.value = to_number(text);
    if (!coordinate.value && !is_variable_name(without_sign(text))) {
        fail("Invalid coordinate value: ", field);
    }
    if (coordinate.value && !std::isfinite(*coordinate.value)) {
        fail("Invalid coordinate values: ", line);
    }
    coordinate.text = text;
    return coordinate.value.value_or(0.0);
}

}  // namespace

void read_atom_fields(const Fields& fields, std::string_view line, AtomCoord& atom) {
    read_atom_label(fields[0], atom.info);
    const std::size_t begin = coordinate_begin(fields);
    if (begin == 2) {
        atom.freeze = to_int32(fields[1]);
        if (!atom.freeze) {
            fail("Invalid coordinate values: ", line);
        }
    }
    atom.x = read_coordinate(fields[begin], line, atom.x_ref);
    atom.y = read_coordinate(fields[begin + 1], line, atom.y_ref);
    atom.z = read_coordinate(fields[begin + 2], line, atom.z_ref);
    if (fields.size() > begin + 3) {
        atom.layer = fields[begin + 3];
    }
}

namespace {

// Reads "name=value"; commas around the value are separators and no part of it.
ZMatrixVariable read_cartesian_variable(std::string_view text, std::string_view line) {
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) {
        fail("Invalid coordinate line: ", line);
    }
    const NameAndValue entry = cut_at_equals(text, equals);
    if (!is_variable_name(entry.name) || entry.value.empty()) {
        fail("Invalid coordinate line: ", line);
    }
    Fields fields;
    cut_fields(entry.value, fields);
    if (fields.empty()) {
        fail("Invalid Cartesian coordinate variable line: ", line);
    }
    const std::size_t length = static_cast<std::size_t>(fields.back().data() + fields.back().size() - fields.front().data());
    return {std::string(entry.name), std::string(fields.front().data(), length)};
}

// Reads the lines of Cartesian coordinates: atoms, and the values of variables.
class CartesianReader {
   public:
    CartesianReader(MoleculeReading& molecule, LayoutRecorder* recorder) noexcept
        : molecule_(molecule), recorder_(recorder) {}

    bool has_variables = false;  // a coordinate is a variable

    void read(LineSpan lines) {
        std::vector<AtomCoord>& atoms = molecule_.geom.atoms;
        reserve_large(atoms, lines.size());
        const bool plain_lines = rounds_to_nearest();
        for (const std::string_view& line : lines) {
            if (recorder_ != nullptr) {
                recorder_->at(line);
            }
            if (plain_lines && read_plain_atom_line(line, atoms.emplace_back())) {
                note_atom(atoms.back());
                continue;
            }
            if (plain_lines) {
                atoms.pop_back();
            }
            take(line);
        }
    }

    void take_variable(std::string_view text, std::string_view line) {
        molecule_.geom.cartesian_variables.push_back(read_cartesian_variable(text, line));
        note_line(recorder_, &JobLayout::cartesian_variables);
    }

   private:
    // Takes a line of any form.
    void take(std::string_view line) {
        const std::string_view text = without_comment(line);
        cut_fields(text, fields_);
        if (fields_.empty() && !is_blank_line(text)) {
            fail("Invalid coordinate line: ", line);
        }
        if (fields_.empty()) {
            return;
        }
        if (fields_.size() <= 3) {
            take_variable(text, line);
            return;
        }
        AtomCoord& atom = molecule_.geom.atoms.emplace_back();
        read_atom_fields(fields_, line, atom);
        has_variables = has_variables || !atom.x_ref.value || !atom.y_ref.value || !atom.z_ref.value;
        note_atom(atom);
    }

    void note_atom(const AtomCoord& atom) {
        molecule_.has_residues = molecule_.has_residues || has_residue(atom.info);
        note_line(recorder_, &JobLayout::atoms);
    }

    MoleculeReading& molecule_;
    LayoutRecorder* recorder_;
    Fields fields_;
};

ZMatrixReference read_reference(std::string_view atom, std::string_view value) {
    const std::optional<std::int32_t> number = to_int32(atom);
    if (!number) {
        throw GJFParseException("Invalid Z-matrix geometry section");
    }
    return {*number, std::string(value)};
}

// Reads Z-matrix rows until something else comes, and variables from there on, into the list that the last header names.
class ZMatrixReader {
   public:
    ZMatrixReader(MoleculeReading& molecule, LayoutRecorder* recorder) noexcept
        : molecule_(molecule), geom_(molecule.geom), recorder_(recorder) {}

    void take(const std::string_view& line) {
        if (recorder_ != nullptr) {
            recorder_->at(line);
        }
        const std::string_view text = without_comment(line);
        if (is_blank_line(text)) {
            rows_ = rows_ && is_comment_line(line);
            return;
        }
        if (const VariableHeader header = variable_header(text); header != VariableHeader::None) {
            begin_variables(header);
            return;
        }
        cut_fields(text, fields_);
        if (rows_ && has_dihedral_code(fields_)) {
            fields_.pop_back();
        }
        if (rows_ && (geom_.zmatrix_entries.empty() ? is_zmatrix_line(fields_) : is_row_below_others(fields_))) {
            read_row();
        } else {
            read_variable(text, line);
        }
    }

    void begin_variables(VariableHeader header) noexcept {
        constants_ = header == VariableHeader::Constants;
        rows_ = false;
    }

   private:
    void read_row() {
        ZMatrixEntry& entry = geom_.zmatrix_entries.emplace_back();
        note_line(recorder_, &JobLayout::zmatrix_rows);
        read_atom_label(fields_[0], entry.info);
        molecule_.has_residues = molecule_.has_residues || has_residue(entry.info);
        const std::array<std::optional<ZMatrixReference>*, 3> references = {&entry.bond, &entry.angle, &entry.dihedral};
        for (std::size_t i = 0; i < references.size() && 2 * i + 2 < fields_.size(); ++i) {
            *references[i] = read_reference(fields_[2 * i + 1], fields_[2 * i + 2]);
        }
    }

    void read_variable(std::string_view text, std::string_view line) {
        rows_ = false;
        const std::size_t equals = text.find('=');
        NameAndValue entry;
        if (equals != std::string_view::npos) {
            entry = cut_at_equals(text, equals);
        } else if (fields_.size() >= 2) {
            entry = {fields_[0], fields_[1]};
        }
        if (entry.name.empty()) {
            fail("Invalid Z-matrix variable line: ", line);
        }
        (constants_ ? geom_.constants : geom_.variables).push_back({std::string(entry.name), std::string(entry.value)});
        note_line(recorder_, constants_ ? &JobLayout::constants : &JobLayout::variables);
    }

    MoleculeReading& molecule_;
    GeomSection& geom_;
    LayoutRecorder* recorder_;
    bool constants_ = false;  // variables go to the constants
    bool rows_ = true;
    Fields fields_;
};

// Reads a molecule section, and the sections after it that belong to it.
class MoleculeReader {
   public:
    explicit MoleculeReader(LayoutRecorder* recorder) noexcept
        : recorder_(recorder), cartesian_(molecule, recorder), zmatrix_(molecule, recorder) {}
    MoleculeReader(const MoleculeReader&) = delete;
    MoleculeReader& operator=(const MoleculeReader&) = delete;

    MoleculeReading molecule;

    void read_section(LineSpan section) {
        const auto charge_line = std::find_if_not(section.begin(), section.end(), is_comment_line);
        if (charge_line == section.end() || std::all_of(charge_line + 1, section.end(), is_comment_line)) {
            throw GJFParseException("Geometry section must have at least 2 lines");
        }
        if (recorder_ != nullptr) {
            recorder_->at(*charge_line);
            recorder_->layout.charge_line = recorder_->current_line;
        }
        geom_.set_charge_spin_pairs(read_charge_line(*charge_line));
        const LineSpan lines = section.subspan(static_cast<std::size_t>(charge_line - section.begin()) + 1);
        reserve_large(geom_.molecule_lines, lines.size());
        keep_lines(lines);
        const auto first = std::find_if(lines.begin(), lines.end(), holds_text);
        if (first != lines.end()) {
            read_specification(lines.subspan(static_cast<std::size_t>(first - lines.begin())));
        }
    }

    // Takes the sections at the cursor that give values to the molecule's variables.
    void take_variable_sections(LineCursor& cursor, const SectionsExpected& sections_expected) {
        if (geom_.format == GeometryFormat::ZMatrix) {
            take_zmatrix_sections(cursor, sections_expected);
        } else {
            take_cartesian_section(cursor);
        }
    }

   private:
    void keep_lines(LineSpan lines) {
        geom_.molecule_lines.insert(geom_.molecule_lines.end(), lines.begin(), lines.end());
        if (recorder_ == nullptr || lines.empty()) {
            return;
        }
        LineRange& range = recorder_->layout.molecule;
        range = {range.empty() ? recorder_->number_of(lines.front()) : range.first, recorder_->number_of(lines.back())};
    }

    // Reads the lines from the first row or atom on; that line tells a Z-matrix from Cartesian coordinates.
    void read_specification(LineSpan lines) {
        Fields fields;
        cut_fields(without_comment(lines.front()), fields);
        if (!is_zmatrix_line(fields)) {
            cartesian_.read(lines);
            return;
        }
        geom_.format = GeometryFormat::ZMatrix;
        for (const std::string_view& line : lines) {
            zmatrix_.take(line);
        }
        if (geom_.zmatrix_entries.empty()) {
            throw GJFParseException("Invalid Z-matrix geometry section");
        }
    }

    // The first section holds variables, the next constants, unless headers say otherwise; one that neither has a header nor
    // gives a value to a name in use is left when the route asks for sections.
    void take_zmatrix_sections(LineCursor& cursor, const SectionsExpected& sections_expected) {
        for (bool first = geom_.variables.empty();; first = false) {
            const std::size_t begin = cursor.position();
            const LineSpan section = cursor.take_section_past_comments();
            if (section.empty()) {
                cursor.move_to(begin);
                return;
            }
            const VariableBlock block = examine_variables(section, true, undefined_names(geom_));
            const bool belongs = block.has_header || block.defines_wanted_name || (first && !sections_expected());
            if (!block.well_formed || !belongs) {
                cursor.move_to(begin);
                return;
            }
            keep_lines(cursor.range(begin, cursor.position()));
            zmatrix_.begin_variables(first ? VariableHeader::Variables : VariableHeader::Constants);
            for (const std::string_view& line : section) {
                zmatrix_.take(line);
            }
        }
    }

    void take_cartesian_section(LineCursor& cursor) {
        if (!cartesian_.has_variables || undefined_names(geom_).empty()) {
            return;
        }
        const std::size_t begin = cursor.position();
        const LineSpan section = cursor.take_section_past_comments();
        if (section.empty() || !examine_variables(section, false, {}).well_formed) {
            cursor.move_to(begin);
            return;
        }
        keep_lines(cursor.range(begin, cursor.position()));
        for (const std::string_view& line : section) {
            const std::string_view text = without_comment(line);
            if (holds_text(line) && variable_header(text) == VariableHeader::None) {
                if (recorder_ != nullptr) {
                    recorder_->at(line);
                }
                cartesian_.take_variable(text, line);
            }
        }
    }

    GeomSection& geom_ = molecule.geom;
    LayoutRecorder* recorder_;
    CartesianReader cartesian_;
    ZMatrixReader zmatrix_;
};

}  // namespace

MoleculeReading read_molecule(LineCursor& cursor, LineSpan section, const SectionsExpected& sections_expected,
                              LayoutRecorder* recorder) {
    MoleculeReader reader(recorder);
    reader.read_section(section);
    reader.take_variable_sections(cursor, sections_expected);
    return std::move(reader.molecule);
}

void take_variable_sections(LineCursor& cursor, LineSpan section, const SectionsExpected& sections_expected) {
    MoleculeReader reader(nullptr);
    try {
        reader.read_section(section);
    } catch (const std::runtime_error&) {
        return;
    } catch (const std::out_of_range&) {
        return;
    }
    if (reader.molecule.geom.format == GeometryFormat::ZMatrix) {
        reader.take_variable_sections(cursor, sections_expected);
    }
}

bool is_valid_geometry_first_line(std::string_view line) {
    Fields fields;
    cut_fields(without_comment(line), fields);
    return fields.size() >= 2 && fields.size() % 2 == 0 && std::all_of(fields.begin(), fields.end(), is_integer_text);
}

std::vector<ChargeSpinPair> GJFParser::parse_charge_spin_line(const std::string& line) { return read_charge_line(line); }

GeomSection GJFParser::parse_geometry_section(const std::vector<std::string>& lines) {
    const std::vector<std::string_view> views = views_of(lines);
    MoleculeReader reader(nullptr);
    reader.read_section(views);
    return std::move(reader.molecule.geom);
}

bool GJFParser::is_valid_geometry_first_line(const std::string& line) {
    return gaussian::is_valid_geometry_first_line(line);
}

}  // namespace quor::input::gaussian

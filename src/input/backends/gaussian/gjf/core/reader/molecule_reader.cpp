// Reads the molecule section: charge and multiplicity pairs, atom labels, Cartesian atoms and Z-matrix rows, and their
// variables.
#include <gjf/core/reader/gjf_parser.hpp>

#include <gjf/core/reader/reading.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <set>
#include <stdexcept>

namespace quor::input::gaussian {
namespace {

using Fields = std::vector<std::string_view>;

[[noreturn]] void fail(const char* what, std::string_view text) { throw GJFParseException(what + std::string(text)); }

void cut_fields(std::string_view line, Fields& fields) {
    split_fields(line, FieldSeparators::WhiteSpaceAndComma, true, fields);
}

// Tells whether a line holds something once its comment is taken away.
bool holds_text(std::string_view line) noexcept { return !is_blank_line(without_comment(line)); }

// A letter or underscore, then letters, digits and underscores.
bool is_variable_name(std::string_view name) noexcept {
    const auto is_letter = [](char c) { return (to_lower_ascii(c) >= 'a' && to_lower_ascii(c) <= 'z') || c == '_'; };
    return !name.empty() && is_letter(name.front()) &&
           std::all_of(name.begin(), name.end(), [&](char c) { return is_letter(c) || (c >= '0' && c <= '9'); });
}

std::string_view without_sign(std::string_view text) noexcept {
    return text.substr(!text.empty() && (text.front() == '-' || text.front() == '+') ? 1 : 0);
}

// A variable's name and value as they stand around the first "=".
struct NameAndValue {
    std::string_view name;
    std::string_view value;
};

NameAndValue cut_at_equals(std::string_view text, std::size_t equals) noexcept {
    return {trim_view(text.substr(0, equals)), trim_view(text.substr(equals + 1))};
}

enum class VariableHeader { None, Variables, Constants };

VariableHeader variable_header(std::string_view line) noexcept {
    const std::string_view text = trim_view(line);
    if (equals_folded(text, "variables") || equals_folded(text, "variables:")) {
        return VariableHeader::Variables;
    }
    const bool constants = equals_folded(text, "constants") || equals_folded(text, "constants:");
    return constants ? VariableHeader::Constants : VariableHeader::None;
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

void read_label_parameters(std::string_view list, AtomInfo& info) {
    while (!list.empty()) {
        const std::size_t comma = std::min(list.find(','), list.size());
        const std::string_view item = list.substr(0, comma);
        list.remove_prefix(std::min(comma + 1, list.size()));
        const std::size_t equals = item.find('=');
        if (equals == std::string_view::npos) {
            const std::string_view key = trim_view(item);
            if (!key.empty()) {
                info.params[std::string(key)].clear();
            }
            continue;
        }
        const NameAndValue entry = cut_at_equals(item, equals);
        info.params[std::string(entry.name)] = entry.value;
    }
}

// Finds the first "-" after which the rest of the head is a finite number.
std::size_t find_charge_dash(std::string_view head, double& charge) noexcept {
    for (std::size_t dash = head.find('-'); dash != std::string_view::npos; dash = head.find('-', dash + 1)) {
        const std::optional<double> number = to_number(trim_view(head.substr(dash + 1)));
        if (number && std::isfinite(*number)) {
            charge = *number;
            return dash;
        }
    }
    return std::string_view::npos;
}

void read_atom_label(std::string_view label, AtomInfo& info) {
    const std::size_t open = label.find('(');
    const std::size_t close = open == std::string_view::npos ? open : label.find(')', open);
    if (close != std::string_view::npos) {
        read_label_parameters(label.substr(open + 1, close - open - 1), info);
        label = label.substr(0, open);
    }
    std::string_view head = trim_view(label);
    double charge = 0;
    const std::size_t charge_dash = find_charge_dash(head, charge);
    if (charge_dash != std::string_view::npos) {
        info.mm_charge = charge;
        head = head.substr(0, charge_dash);
    }
    const std::size_t dash = head.find('-');
    if (dash == std::string_view::npos) {
        info.element = head;
        return;
    }
    info.element = trim_view(head.substr(0, dash));
    const std::string_view type = trim_view(head.substr(dash + 1));
    if (!type.empty()) {
        info.mm_type = type;
    }
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

bool is_zmatrix_line(const Fields& fields) noexcept {
    if (fields.size() % 2 == 0 || fields.size() > 7 || is_cartesian_line(fields)) {
        return false;
    }
    for (std::size_t i = 1; i < fields.size(); i += 2) {
        if (!is_integer_text(fields[i])) {
            return false;
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

void read_atom_line(const Fields& fields, std::string_view line, AtomCoord& atom) {
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

void read_cartesian_lines(LineSpan lines, GeomSection& geom) {
    geom.atoms.reserve(lines.size());
    Fields fields;
    for (const std::string_view line : lines) {
        const std::string_view text = without_comment(line);
        cut_fields(text, fields);
        if (fields.empty()) {
            if (!is_blank_line(text)) {
                fail("Invalid coordinate line: ", line);
            }
            continue;
        }
        if (fields.size() <= 3) {
            geom.cartesian_variables.push_back(read_cartesian_variable(text, line));
        } else {
            read_atom_line(fields, line, geom.atoms.emplace_back());
        }
    }
}

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
    explicit ZMatrixReader(GeomSection& geom) noexcept : geom_(geom), target_(&geom.variables) {}

    void take(std::string_view line) {
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
        if (rows_ && is_zmatrix_line(fields_)) {
            read_row();
        } else {
            read_variable(text, line);
        }
    }

    void begin_variables(VariableHeader header) noexcept {
        target_ = header == VariableHeader::Constants ? &geom_.constants : &geom_.variables;
        rows_ = false;
    }

   private:
    void read_row() {
        ZMatrixEntry& entry = geom_.zmatrix_entries.emplace_back();
        read_atom_label(fields_[0], entry.info);
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
        target_->push_back({std::string(entry.name), std::string(entry.value)});
    }

    GeomSection& geom_;
    std::vector<ZMatrixVariable>* target_;
    bool rows_ = true;
    Fields fields_;
};

using NameSet = std::set<std::string, std::less<>>;

void add_name(std::string_view text, NameSet& names) {
    const std::string_view name = without_sign(trim_view(text));
    if (!is_number_text(name) && is_variable_name(name)) {
        names.insert(to_lower_copy(name));
    }
}

void remove_names(const std::vector<ZMatrixVariable>& variables, NameSet& names) {
    for (const ZMatrixVariable& variable : variables) {
        names.erase(to_lower_copy(variable.name));
    }
}

// Collects the names, in lower case, that stand for coordinates and that nothing read so far gives a value.
NameSet undefined_names(const GeomSection& geom) {
    NameSet names;
    for (const ZMatrixEntry& entry : geom.zmatrix_entries) {
        for (const auto* reference : {&entry.bond, &entry.angle, &entry.dihedral}) {
            if (*reference) {
                add_name((*reference)->value, names);
            }
        }
    }
    for (const AtomCoord& atom : geom.atoms) {
        for (const CoordinateValue* coordinate : {&atom.x_ref, &atom.y_ref, &atom.z_ref}) {
            if (!coordinate->value) {
                add_name(coordinate->text, names);
            }
        }
    }
    remove_names(geom.variables, names);
    remove_names(geom.constants, names);
    remove_names(geom.cartesian_variables, names);
    return names;
}

// What a section that may hold variables is made of.
struct VariableBlock {
    bool well_formed = true;
    bool has_header = false;
    bool defines_wanted_name = false;
};

// Returns the name of a variable line, or nothing: "name=value", or a name followed by numbers.
std::string_view variable_line_name(std::string_view text, bool blanks_may_separate, Fields& fields) {
    const std::size_t equals = text.find('=');
    if (equals != std::string_view::npos) {
        const NameAndValue entry = cut_at_equals(text, equals);
        return is_variable_name(entry.name) && !entry.value.empty() ? entry.name : std::string_view{};
    }
    cut_fields(text, fields);
    const bool is_line = blanks_may_separate && fields.size() >= 2 && is_variable_name(fields[0]) &&
                         std::all_of(fields.begin() + 1, fields.end(), is_number_text);
    return is_line ? fields[0] : std::string_view{};
}

VariableBlock examine_variables(LineSpan section, bool blanks_may_separate, const NameSet& wanted) {
    VariableBlock block;
    Fields fields;
    for (const std::string_view line : section) {
        const std::string_view text = without_comment(line);
        if (is_blank_line(text)) {
            continue;
        }
        if (variable_header(text) != VariableHeader::None) {
            block.has_header = true;
            continue;
        }
        const std::string_view name = variable_line_name(text, blanks_may_separate, fields);
        if (name.empty()) {
            block.well_formed = false;
            return block;
        }
        block.defines_wanted_name = block.defines_wanted_name || wanted.count(to_lower_copy(name)) > 0;
    }
    return block;
}

void keep_lines(LineSpan lines, GeomSection& geom) {
    geom.molecule_lines.insert(geom.molecule_lines.end(), lines.begin(), lines.end());
}

// Reads the lines of a molecule section into `geom`; the Z-matrix reader is told apart by the first line behind the charge
// line.
void read_specification(LineSpan section, GeomSection& geom, ZMatrixReader& zmatrix) {
    const auto counts = [](std::string_view line) { return !is_comment_line(line); };
    if (std::count_if(section.begin(), section.end(), counts) < 2) {
        throw GJFParseException("Geometry section must have at least 2 lines");
    }
    const auto charge_line = std::find_if(section.begin(), section.end(), counts);
    geom.set_charge_spin_pairs(read_charge_line(*charge_line));
    const LineSpan lines = section.subspan(static_cast<std::size_t>(charge_line - section.begin()) + 1);
    geom.molecule_lines.reserve(lines.size());
    keep_lines(lines, geom);
    const auto first = std::find_if(lines.begin(), lines.end(), holds_text);
    if (first == lines.end()) {
        return;
    }
    Fields fields;
    cut_fields(without_comment(*first), fields);
    const LineSpan rows = lines.subspan(static_cast<std::size_t>(first - lines.begin()));
    if (!is_zmatrix_line(fields)) {
        read_cartesian_lines(rows, geom);
        return;
    }
    geom.format = GeometryFormat::ZMatrix;
    for (const std::string_view line : rows) {
        zmatrix.take(line);
    }
    if (geom.zmatrix_entries.empty()) {
        throw GJFParseException("Invalid Z-matrix geometry section");
    }
}

// Takes the sections after a Z-matrix that hold its variables. The first holds variables, the next constants, unless headers
// say otherwise; one that neither has a header nor gives a value to a name in use is left when the route asks for sections.
void read_zmatrix_sections(LineCursor& cursor, GeomSection& geom, ZMatrixReader& zmatrix, bool sections_expected) {
    for (VariableHeader target = VariableHeader::Variables;; target = VariableHeader::Constants) {
        const std::size_t begin = cursor.position();
        const LineSpan section = cursor.take_section_past_comments();
        const NameSet wanted = undefined_names(geom);
        const VariableBlock block = examine_variables(section, true, wanted);
        const bool first = target == VariableHeader::Variables && geom.variables.empty();
        const bool belongs = block.has_header || block.defines_wanted_name || (first && !sections_expected);
        if (section.empty() || !block.well_formed || !belongs) {
            cursor.move_to(begin);
            return;
        }
        keep_lines(cursor.range(begin, cursor.position()), geom);
        zmatrix.begin_variables(first ? VariableHeader::Variables : VariableHeader::Constants);
        for (const std::string_view line : section) {
            zmatrix.take(line);
        }
    }
}

// Takes the section of name=value lines after symbolic Cartesian coordinates.
void read_cartesian_section(LineCursor& cursor, GeomSection& geom) {
    if (undefined_names(geom).empty()) {
        return;
    }
    const std::size_t begin = cursor.position();
    const LineSpan section = cursor.take_section_past_comments();
    if (section.empty() || !examine_variables(section, false, {}).well_formed) {
        cursor.move_to(begin);
        return;
    }
    keep_lines(cursor.range(begin, cursor.position()), geom);
    for (const std::string_view line : section) {
        const std::string_view text = without_comment(line);
        if (holds_text(line) && variable_header(text) == VariableHeader::None) {
            geom.cartesian_variables.push_back(read_cartesian_variable(text, line));
        }
    }
}

}  // namespace

GeomSection read_geometry_section(LineSpan lines) {
    GeomSection geom;
    ZMatrixReader zmatrix(geom);
    read_specification(lines, geom, zmatrix);
    return geom;
}

GeomSection read_molecule(LineCursor& cursor, LineSpan section, bool sections_expected) {
    GeomSection geom;
    ZMatrixReader zmatrix(geom);
    read_specification(section, geom, zmatrix);
    if (geom.format == GeometryFormat::ZMatrix) {
        read_zmatrix_sections(cursor, geom, zmatrix, sections_expected);
    } else {
        read_cartesian_section(cursor, geom);
    }
    return geom;
}

void take_variable_sections(LineCursor& cursor, LineSpan section, bool sections_expected) {
    GeomSection geom;
    ZMatrixReader zmatrix(geom);
    try {
        read_specification(section, geom, zmatrix);
    } catch (const std::runtime_error&) {
        return;
    } catch (const std::out_of_range&) {
        return;
    }
    if (geom.format == GeometryFormat::ZMatrix) {
        read_zmatrix_sections(cursor, geom, zmatrix, sections_expected);
    }
}

bool is_valid_geometry_first_line(std::string_view line) {
    Fields fields;
    cut_fields(without_comment(line), fields);
    return fields.size() >= 2 && fields.size() % 2 == 0 && std::all_of(fields.begin(), fields.end(), is_integer_text);
}

std::vector<ChargeSpinPair> GJFParser::parse_charge_spin_line(const std::string& line) { return read_charge_line(line); }

AtomInfo GJFParser::parse_atom_info(const std::string& label) {
    AtomInfo info;
    read_atom_label(label, info);
    return info;
}

GeomSection GJFParser::parse_geometry_section(const std::vector<std::string>& lines) {
    const std::vector<std::string_view> views = views_of(lines);
    return read_geometry_section(views);
}

bool GJFParser::is_valid_geometry_first_line(const std::string& line) {
    return gaussian::is_valid_geometry_first_line(line);
}

}  // namespace quor::input::gaussian

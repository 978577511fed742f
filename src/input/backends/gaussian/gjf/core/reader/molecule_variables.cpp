// Fields of molecule lines, and the variables that symbolic coordinates refer to.
#include <gjf/core/reader/molecule_fields.hpp>

#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {

void cut_fields(std::string_view line, Fields& fields) {
    split_fields(line, FieldSeparators::WhiteSpaceAndComma, true, fields);
}

bool is_variable_name(std::string_view name) noexcept {
    const auto begins_name = [](char c) { return is_letter(c) || c == '_'; };
    return !name.empty() && begins_name(name.front()) &&
           std::all_of(name.begin(), name.end(), [&](char c) { return begins_name(c) || is_digit(c); });
}

std::string_view without_sign(std::string_view text) noexcept {
    return text.substr(!text.empty() && (text.front() == '-' || text.front() == '+') ? 1 : 0);
}

NameAndValue cut_at_equals(std::string_view text, std::size_t equals) noexcept {
    return {trim_view(text.substr(0, equals)), trim_view(text.substr(equals + 1))};
}

VariableHeader variable_header(std::string_view line, bool singular) noexcept {
    std::string_view text = trim_view(line);
    if (text.empty() || (to_lower_ascii(text.front()) != 'v' && to_lower_ascii(text.front()) != 'c')) {
        return VariableHeader::None;  // as most lines are
    }
    text.remove_suffix(text.back() == ':' ? 1 : 0);
    if (equals_folded(text, "variables") || (singular && equals_folded(text, "variable"))) {
        return VariableHeader::Variables;
    }
    const bool constants = equals_folded(text, "constants") || (singular && equals_folded(text, "constant"));
    return constants ? VariableHeader::Constants : VariableHeader::None;
}

namespace {

void add_name(std::string_view text, NameSet& names) {
    const std::string_view name = without_sign(trim_view(text));
    if (!name.empty() && is_variable_name(name.substr(0, 1)) && !is_number_text(name)) {
        names.insert(to_lower_copy(name));
    }
}

void remove_names(const std::vector<ZMatrixVariable>& variables, NameSet& names) {
    for (const ZMatrixVariable& variable : variables) {
        names.erase(to_lower_copy(variable.name));
    }
}

bool is_fortran_number(std::string_view field) { return to_fortran_number(field).has_value(); }

bool is_number_or_code(std::string_view field) {
    const bool is_code = field.size() == 1 && is_letter(field[0]);
    return is_code || is_fortran_number(field);
}

// Returns the name of a variable line, or nothing. With codes, a name in use may hold any character.
std::string_view variable_line_name(std::string_view text, VariableLines forms, const NameSet& wanted, Fields& fields) {
    const bool any_form = forms == VariableLines::WithCodes;
    const auto is_name = [&](std::string_view name) {
        return is_variable_name(name) || (any_form && wanted.count(to_lower_copy(name)) > 0);
    };
    const std::size_t equals = text.find('=');
    if (equals != std::string_view::npos) {
        const NameAndValue entry = cut_at_equals(text, equals);
        return is_name(entry.name) && !entry.value.empty() ? entry.name : std::string_view{};
    }
    cut_fields(text, fields);
    const auto is_number = any_form ? is_fortran_number : [](std::string_view field) { return is_number_text(field); };
    if (forms == VariableLines::WithEquals || fields.size() < 2 || !is_name(fields[0]) || !is_number(fields[1])) {
        return {};
    }
    const auto may_follow = any_form ? is_number_or_code : is_number;
    return std::all_of(fields.begin() + 2, fields.end(), may_follow) ? fields[0] : std::string_view{};
}

}  // namespace

NameSet names_in_use(const GeomSection& geom) {
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
    return names;
}

NameSet undefined_names(const GeomSection& geom) {
    NameSet names = names_in_use(geom);
    remove_names(geom.variables, names);
    remove_names(geom.constants, names);
    remove_names(geom.cartesian_variables, names);
    return names;
}

VariableBlock examine_variables(LineSpan section, VariableLines forms, const NameSet& wanted) {
    VariableBlock block;
    Fields fields;
    for (const std::string_view line : section) {
        const std::string_view text = without_comment(line);
        if (is_blank_line(text)) {
            continue;
        }
        if (variable_header(text, forms == VariableLines::WithCodes) != VariableHeader::None) {
            block.has_header = true;
            continue;
        }
        const std::string_view name = variable_line_name(text, forms, wanted, fields);
        if (name.empty()) {
            block.well_formed = false;
            return block;
        }
        block.defines_wanted_name = block.defines_wanted_name || wanted.count(to_lower_copy(name)) > 0;
    }
    return block;
}

}  // namespace quor::input::gaussian

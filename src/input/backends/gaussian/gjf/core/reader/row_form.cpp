// Finds how the fields of a Z-matrix row are meant: first its pairs or coordinates, then what stands behind them.
#include <gjf/core/reader/row_form.hpp>

#include <gjf/core/chemistry/layers.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

// A field such as r=0.96 is a variable and no atom; a label has "=" among its parameters alone.
bool is_assignment(std::string_view field) noexcept {
    return field.substr(0, field.find('(')).find('=') != std::string_view::npos;
}

bool is_code(std::string_view field) noexcept { return field == "0" || field == "1" || field == "-1"; }

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

bool is_layer(std::string_view field) noexcept { return layer_letter(field) != '?'; }

bool is_value(std::string_view field) noexcept {
    return to_fortran_number(field) || (is_variable_name(without_sign(field)) && !(is_layer(field) && field.size() > 1));
}

// A layer's letter may be an element too, which then names an atom only before a number.
bool names_atom(std::string_view field, std::string_view next) noexcept {
    if (is_integer_text(field)) {
        return to_int64(field).value_or(1) > 0;
    }
    return !field.empty() && !to_fortran_number(field) && (!is_layer(field) || to_fortran_number(next));
}

bool are_values(const Fields& fields, std::size_t first) {
    return fields.size() >= first + 3 && std::all_of(fields.begin() + static_cast<std::ptrdiff_t>(first),
                                                     fields.begin() + static_cast<std::ptrdiff_t>(first) + 3, is_value);
}

bool are_numbers(const Fields& fields) {
    return fields.size() >= 4 && std::all_of(fields.begin() + 1, fields.begin() + 4,
                                             [](std::string_view field) { return to_fortran_number(field).has_value(); });
}

// Coordinates stand behind a code of 0 or below; or they are three numbers, of which the first has a point, or a layer
// follows.
bool take_coordinates(const Fields& fields, RowForm& form) {
    const bool layered = fields.size() >= 5 && are_numbers(fields) && is_layer(fields[4]);
    const bool coded = !layered && fields.size() >= 5 && is_integer_text(fields[1]) && to_int64(fields[1]).value_or(1) < 1;
    if (coded ? !are_values(fields, 2) : !layered && (!are_numbers(fields) || is_integer_text(fields[1]))) {
        return false;
    }
    form.cartesian = true;
    form.values = 3;
    form.first = coded ? 2 : 1;
    form.rest = form.first + 3;
    return true;
}

void take_pairs(const Fields& fields, RowForm& form) {
    while (form.values < 3 && form.rest + 1 < fields.size() && names_atom(fields[form.rest], fields[form.rest + 1]) &&
           is_value(fields[form.rest + 1])) {
        ++form.values;
        form.rest += 2;
    }
    const bool coded = form.values == 3 && form.rest < fields.size() && is_code(fields[form.rest]);
    form.code = coded ? form.rest++ : 0;
}

}  // namespace

bool is_zmatrix_line(const Fields& fields) noexcept { return has_row_shape(fields) && !is_cartesian_line(fields); }

std::optional<RowForm> find_plain_row_form(Fields fields, bool first) {
    RowForm form;
    if (fields.size() == 8 && is_code(fields[7])) {
        form.code = 7;
        fields.pop_back();
    }
    if (first ? !is_zmatrix_line(fields) : !is_row_below_others(fields)) {
        return std::nullopt;
    }
    form.values = fields.size() / 2;
    form.rest = fields.size() + (form.code != 0);
    return form;
}

std::optional<RowForm> find_row_form(const Fields& fields) {
    if (fields.empty() || is_assignment(fields[0])) {
        return std::nullopt;
    }
    RowForm form;
    if (!take_coordinates(fields, form)) {
        take_pairs(fields, form);
    }
    std::size_t next = form.rest;
    form.has_fragment = next < fields.size() && to_int64(fields[next]).value_or(-1) >= 0;
    next += form.has_fragment ? 1 : 0;
    form.layer = next < fields.size() && is_layer(fields[next]) ? next : 0;
    const bool understood = next == fields.size() || form.layer != 0;
    return understood ? std::optional(form) : std::nullopt;
}

}  // namespace quor::input::gaussian

// Reads the form that nearly every atom line has in one pass: a label, perhaps a freeze code, three decimals, perhaps a
// layer. Lines of any other form are left to the general reading, which gives the same for these.
#include <gjf/core/reader/molecule_fields.hpp>

#include <gjf/core/text/field_walk.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <array>
#include <optional>

namespace quor::input::gaussian {
namespace {

constexpr bool is_letter_or_digit(char c) noexcept { return is_digit(c) || is_letter(c); }

// What may stand in a label, a bracketed list of parameters aside, and neither nests nor begins a comment.
constexpr bool is_label_character(char c) noexcept { return is_letter_or_digit(c) || c == '-' || c == '.' || c == '_'; }

constexpr bool is_parameter_character(char c) noexcept {
    return is_label_character(c) || c == '=' || c == ',' || c == ' ' || c == '+' || c == '*';
}

// Takes a label with or without parameters; empty when there is none.
std::string_view take_label(FieldWalk& walk) noexcept {
    if (walk.at_end()) {
        return {};
    }
    std::size_t length = walk.count(0, is_label_character);
    if (length > 0 && walk.has(length, '(')) {
        length += 1 + walk.count(length + 1, is_parameter_character);
        length = walk.has(length, ')') ? length + 1 : 0;
    }
    return walk.take(length);
}

std::string_view take_word(FieldWalk& walk) noexcept {
    return walk.at_end() ? std::string_view() : walk.take(walk.count(0, is_letter_or_digit));
}

void read_label(std::string_view label, AtomInfo& info) {
    if (std::all_of(label.begin(), label.end(), is_letter_or_digit)) {
        info.element = label;
    } else {
        read_atom_label(label, info);
    }
}

void store(const FieldWalk::Decimal& decimal, double& number, CoordinateValue& coordinate) {
    number = decimal.value;
    coordinate.value = number;
    coordinate.text = decimal.text;
}

}  // namespace

bool read_plain_atom_line(std::string_view line, AtomCoord& atom) {
    FieldWalk walk(line, FieldSeparators::WhiteSpaceAndComma);
    const std::string_view label = take_label(walk);
    std::array<FieldWalk::Decimal, 3> place;
    if (label.empty()) {
        return false;
    }
    for (FieldWalk::Decimal& coordinate : place) {
        coordinate = walk.take_decimal();
        if (coordinate.text.empty()) {
            return false;
        }
    }
    std::optional<std::int32_t> freeze;
    std::string_view layer;
    if (!walk.at_end() && is_integer_text(place[0].text)) {  // with five fields or more, a whole number is a freeze code
        freeze = to_int32(place[0].text);
        place = {place[1], place[2], walk.take_decimal()};
        if (!freeze || place[2].text.empty()) {
            return false;
        }
    }
    if (!walk.at_end()) {
        layer = take_word(walk);
        if (layer.empty()) {
            return false;
        }
    }
    read_label(label, atom.info);
    atom.freeze = freeze;
    store(place[0], atom.x, atom.x_ref);
    store(place[1], atom.y, atom.y_ref);
    store(place[2], atom.z, atom.z_ref);
    if (!layer.empty()) {
        atom.layer = layer;
    }
    return true;
}

}  // namespace quor::input::gaussian

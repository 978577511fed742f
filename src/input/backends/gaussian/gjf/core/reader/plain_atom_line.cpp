// Reads the form that nearly every atom line has in one pass: a label, perhaps a freeze code, three decimals, perhaps a
// layer. Lines of any other form are left to the general reading, which gives the same for these.
#include <gjf/core/reader/molecule_fields.hpp>

#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <array>
#include <optional>

namespace quor::input::gaussian {
namespace {

constexpr bool is_letter_or_digit(char c) noexcept {
    return (c >= '0' && c <= '9') || (to_lower_ascii(c) >= 'a' && to_lower_ascii(c) <= 'z');
}

constexpr bool is_separator(char c) noexcept { return c == ' ' || c == ',' || is_white_space(c); }

// What may stand in a label, a bracketed list of parameters aside, and neither nests nor begins a comment.
constexpr bool is_label_character(char c) noexcept { return is_letter_or_digit(c) || c == '-' || c == '.' || c == '_'; }

constexpr bool is_parameter_character(char c) noexcept {
    return is_label_character(c) || c == '=' || c == ',' || c == ' ' || c == '+' || c == '*';
}

// Walks a line, one field after another. A field that is not what was asked for is not taken.
class FieldWalk {
   public:
    explicit FieldWalk(std::string_view line) noexcept : rest_(line) {}

    bool at_end() noexcept {
        std::size_t blanks = 0;
        while (blanks < rest_.size() && is_separator(rest_[blanks])) {
            ++blanks;
        }
        rest_.remove_prefix(blanks);
        return rest_.empty();
    }

    // Takes a label with or without parameters; empty when there is none.
    std::string_view take_label() noexcept {
        if (at_end()) {
            return {};
        }
        std::size_t length = count(0, is_label_character);
        if (length > 0 && length < rest_.size() && rest_[length] == '(') {
            length += 1 + count(length + 1, is_parameter_character);
            length = length < rest_.size() && rest_[length] == ')' ? length + 1 : 0;
        }
        return take(length);
    }

    std::string_view take_word() noexcept { return at_end() ? std::string_view() : take(count(0, is_letter_or_digit)); }

    // Takes a decimal; its text is empty when there is none.
    struct Decimal {
        std::string_view text;
        PlainDecimal number;
    };
    Decimal take_decimal() noexcept {
        if (at_end()) {
            return {};
        }
        const PlainDecimal number = leading_plain_decimal(rest_);
        return {take(number.length), number};
    }

   private:
    template <typename Accepts>
    std::size_t count(std::size_t begin, Accepts accepts) const noexcept {
        std::size_t end = begin;
        while (end < rest_.size() && accepts(rest_[end])) {
            ++end;
        }
        return end - begin;
    }

    // Takes a field of this length, if that is where the field ends.
    std::string_view take(std::size_t length) noexcept {
        if (length < rest_.size() && !is_separator(rest_[length])) {
            return {};
        }
        const std::string_view field = rest_.substr(0, length);
        rest_.remove_prefix(length);
        return field;
    }

    std::string_view rest_;
};

void store(const FieldWalk::Decimal& decimal, double& number, CoordinateValue& coordinate) {
    number = decimal.number.value;
    coordinate.value = number;
    coordinate.text = decimal.text;
}

}  // namespace

bool read_plain_atom_line(std::string_view line, AtomCoord& atom) {
    FieldWalk walk(line);
    const std::string_view label = walk.take_label();
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
    if (!walk.at_end() && place[0].number.whole) {  // with five fields or more, a whole number is a freeze code
        freeze = to_int32(place[0].text);
        place = {place[1], place[2], walk.take_decimal()};
        if (!freeze || place[2].text.empty()) {
            return false;
        }
    }
    if (!walk.at_end()) {
        layer = walk.take_word();
        if (layer.empty()) {
            return false;
        }
    }
    read_atom_label(label, atom.info);
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

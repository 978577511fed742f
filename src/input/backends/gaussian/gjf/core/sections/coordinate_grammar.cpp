// Changes of internal coordinates, one a line: a letter for the type, atoms, values, and what is to be done.
#include <gjf/core/sections/section_tokens.hpp>

#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>

namespace quor::input::gaussian {
namespace {

constexpr CoordinateType types[] = {{'x', 1, 1}, {'b', 2, 2}, {'a', 3, 3}, {'d', 4, 4}, {'l', 3, 4}, {'o', 4, 4}};

// Without a type, the number of atoms tells it.
constexpr std::size_t most_atoms = 4;

// Generalised internal coordinates are written as expressions.
bool is_expression(const SectionScanner& scan) {
    return without_comment(scan.line()).find('(') != std::string_view::npos ||
           scan.field(0).find('=') != std::string_view::npos;
}

// Words such as FreezeAll, of the same language, concern all coordinates.
bool is_for_all(const SectionScanner& scan) {
    const std::string_view word = scan.field(0);
    return scan.size() == 1 && word.size() > 3 && equals_folded(word.substr(word.size() - 3), "all");
}

void read_coordinate(SectionScanner& scan, SectionReading& section) {
    scan.begin(LineForm::Coordinate);
    const bool typed = !is_atom_field(scan.field(0));
    const CoordinateType* type = typed ? find_coordinate_type(scan.field(0)) : nullptr;
    std::size_t i = typed ? 1 : 0;
    if (typed) {
        scan.add(scan.field(0), TokenKind::Word);
    }
    if (typed && type == nullptr && section.unclear.empty()) {
        section.unclear = "'" + std::string(scan.field(0)) + "' is no type of coordinate";
    }
    const std::size_t end = i + (type != nullptr ? type->most : most_atoms);
    for (; i < std::min(end, scan.size()) && is_atom_field(scan.field(i)); ++i) {
        scan.add(scan.field(i), scan.field(i) == "*" ? TokenKind::AnyAtom : TokenKind::Atom);
    }
    scan.add_rest(i);
}

}  // namespace

const CoordinateType* find_coordinate_type(std::string_view field) noexcept {
    const auto type = std::find_if(std::begin(types), std::end(types), [&](const CoordinateType& t) {
        return field.size() == 1 && t.letter == to_lower_ascii(field.front());
    });
    return type == std::end(types) ? nullptr : type;
}

bool is_atom_field(std::string_view field) noexcept { return field == "*" || is_integer_text(field); }

void read_coordinates(SectionReading& section) {
    section.includes_name_atoms = true;
    for (SectionScanner scan(section); scan.next();) {
        if (is_expression(scan)) {
            scan.begin(LineForm::Expression);
            section.unclear = section.unclear.empty() ? "it holds expressions" : section.unclear;
        } else if (!is_for_all(scan)) {
            read_coordinate(scan, section);
        }
    }
}

}  // namespace quor::input::gaussian

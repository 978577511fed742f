// Walks the text of one job in the plainest way that stores all fields.
#include "floor.hpp"

#include <algorithm>
#include <charconv>
#include <type_traits>

namespace quor::benchmarks {
namespace {

// Hands out lines; an empty one ends a section.
struct Walk {
    std::string_view text;
    std::size_t position = 0;

    std::string_view line() {
        const std::size_t end = std::min(text.find('\n', position), text.size());
        const std::string_view found = text.substr(position, end - position);
        position = std::min(end + 1, text.size());
        return found;
    }
    // A bound for the lines to come, so that arrays need not grow; `sample` is one of them.
    std::size_t lines_left(std::string_view sample) const { return (text.size() - position) / (sample.size() + 1) + 1; }
};

// Takes the next field off a line; empty when there is none.
std::string_view take_field(std::string_view& line) {
    const char* begin = line.data();
    const char* const stop = begin + line.size();
    while (begin != stop && *begin == ' ') {
        ++begin;
    }
    const char* end = begin;
    while (end != stop && *end != ' ') {
        ++end;
    }
    line.remove_prefix(static_cast<std::size_t>(end - line.data()));
    return {begin, static_cast<std::size_t>(end - begin)};
}

template <typename Number>
Number number_of(std::string_view text) {
    Number value{};
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

// A decimal as they stand in the inputs: fewer digits than a number holds, so that one division gives the nearest.
template <>
double number_of<double>(std::string_view text) {
    constexpr double powers[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const bool minus = !text.empty() && text.front() == '-';
    std::int64_t digits = 0;
    std::size_t point = text.size() - 1;
    for (std::size_t i = minus ? 1 : 0; i < text.size(); ++i) {
        if (text[i] == '.') {
            point = i;
        } else {
            digits = 10 * digits + (text[i] - '0');
        }
    }
    const double value = static_cast<double>(digits) / powers[text.size() - 1 - point];
    return minus ? -value : value;
}

template <typename Text>
void walk_head(Walk& walk, PlainArrays<Text>& arrays) {
    for (int section = 0; section < 2; ++section) {  // control section, title
        for (std::string_view line = walk.line(); !line.empty(); line = walk.line()) {
            arrays.head.emplace_back(line);
        }
    }
    std::string_view pairs = walk.line();
    for (std::string_view field = take_field(pairs); !field.empty(); field = take_field(pairs)) {
        arrays.charges.push_back(number_of<std::int32_t>(field));
    }
}

template <typename Text>
void store_position(std::string_view x, std::string_view y, std::string_view z, PlainArrays<Text>& arrays) {
    arrays.x_texts.emplace_back(x);
    arrays.y_texts.emplace_back(y);
    arrays.z_texts.emplace_back(z);
    arrays.x.push_back(number_of<double>(x));
    arrays.y.push_back(number_of<double>(y));
    arrays.z.push_back(number_of<double>(z));
}

template <typename Text>
void reserve_atoms(std::size_t count, PlainArrays<Text>& arrays) {
    for (std::vector<Text>* texts : {&arrays.lines, &arrays.elements, &arrays.x_texts, &arrays.y_texts, &arrays.z_texts}) {
        texts->reserve(count);
    }
    for (std::vector<double>* numbers : {&arrays.x, &arrays.y, &arrays.z}) {
        numbers->reserve(count);
    }
    arrays.freeze_codes.reserve(count);
}

template <typename Text>
void walk_bonds(Walk& walk, PlainArrays<Text>& arrays) {
    for (std::string_view line = walk.line(); !line.empty(); line = walk.line()) {
        const auto first = number_of<std::uint64_t>(take_field(line)) - 1;
        for (std::string_view other = take_field(line); !other.empty(); other = take_field(line)) {
            arrays.bond_atoms1.push_back(first);
            arrays.bond_atoms2.push_back(number_of<std::uint64_t>(other) - 1);
            arrays.bond_orders.push_back(number_of<double>(take_field(line)));
        }
    }
}

// Keeps the text that views are to look into.
template <typename Text>
Walk start(std::string_view text, PlainArrays<Text>& arrays) {
    if constexpr (std::is_same_v<Text, std::string_view>) {
        arrays.copy = text;
        return {arrays.copy};
    }
    return {text};
}

}  // namespace

template <typename Text>
PlainArrays<Text> walk_cartesian(std::string_view text) {
    PlainArrays<Text> arrays;
    Walk walk = start(text, arrays);
    walk_head(walk, arrays);
    for (std::string_view line = walk.line(); !line.empty(); line = walk.line()) {
        if (arrays.lines.empty()) {
            reserve_atoms(walk.lines_left(line) + 1, arrays);
        }
        arrays.lines.emplace_back(line);
        std::string_view fields[5];
        for (std::string_view& field : fields) {
            field = take_field(line);
        }
        const std::size_t frozen = fields[4].empty() ? 0 : 1;
        arrays.elements.emplace_back(fields[0]);
        arrays.freeze_codes.push_back(frozen == 1 ? number_of<std::int32_t>(fields[1]) : no_freeze_code);
        store_position(fields[frozen + 1], fields[frozen + 2], fields[frozen + 3], arrays);
    }
    return arrays;
}

template <typename Text>
PlainArrays<Text> walk_oniom(std::string_view text) {
    PlainArrays<Text> arrays;
    Walk walk = start(text, arrays);
    walk_head(walk, arrays);
    for (std::string_view line = walk.line(); !line.empty(); line = walk.line()) {
        if (arrays.lines.empty()) {
            const std::size_t count = walk.lines_left(line) + 1;
            reserve_atoms(count, arrays);
            arrays.types.reserve(count);
            arrays.mm_charges.reserve(count);
            arrays.layers.reserve(count);
        }
        arrays.lines.emplace_back(line);
        const std::string_view label = take_field(line);
        const std::size_t type = label.find('-') + 1;
        const std::size_t charge = label.find('-', type) + 1;
        arrays.elements.emplace_back(label.substr(0, type - 1));
        arrays.types.emplace_back(label.substr(type, charge - 1 - type));
        arrays.mm_charges.push_back(number_of<double>(label.substr(charge)));
        arrays.freeze_codes.push_back(number_of<std::int32_t>(take_field(line)));
        const std::string_view x = take_field(line);
        const std::string_view y = take_field(line);
        const std::string_view z = take_field(line);
        store_position(x, y, z, arrays);
        arrays.layers.emplace_back(take_field(line));
    }
    walk_bonds(walk, arrays);
    return arrays;
}

template PlainArrays<std::string> walk_cartesian(std::string_view);
template PlainArrays<std::string_view> walk_cartesian(std::string_view);
template PlainArrays<std::string> walk_oniom(std::string_view);
template PlainArrays<std::string_view> walk_oniom(std::string_view);

}  // namespace quor::benchmarks

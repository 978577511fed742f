// Walks the text of one job in the plainest way that stores all fields.
#include "floor.hpp"

#include <algorithm>
#include <array>
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

struct Fields {
    std::array<std::string_view, 32> items;
    std::size_t count = 0;

    explicit Fields(std::string_view line) {
        std::size_t begin = 0;
        while (count < items.size()) {
            while (begin < line.size() && line[begin] == ' ') {
                ++begin;
            }
            if (begin == line.size()) {
                return;
            }
            std::size_t end = begin;
            while (end < line.size() && line[end] != ' ') {
                ++end;
            }
            items[count++] = line.substr(begin, end - begin);
            begin = end;
        }
    }
};

template <typename Number>
Number number_of(std::string_view text) {
    Number value{};
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

template <typename Text>
void walk_head(Walk& walk, PlainArrays<Text>& arrays) {
    for (int section = 0; section < 2; ++section) {  // control section, title
        for (std::string_view line = walk.line(); !line.empty(); line = walk.line()) {
            arrays.head.emplace_back(line);
        }
    }
    const Fields pairs(walk.line());
    for (std::size_t i = 0; i < pairs.count; ++i) {
        arrays.charges.push_back(number_of<std::int32_t>(pairs.items[i]));
    }
}

template <typename Text>
void store_position(const std::string_view* fields, PlainArrays<Text>& arrays) {
    arrays.x_texts.emplace_back(fields[0]);
    arrays.y_texts.emplace_back(fields[1]);
    arrays.z_texts.emplace_back(fields[2]);
    arrays.x.push_back(number_of<double>(fields[0]));
    arrays.y.push_back(number_of<double>(fields[1]));
    arrays.z.push_back(number_of<double>(fields[2]));
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
        const Fields fields(line);
        const auto first = number_of<std::uint64_t>(fields.items[0]) - 1;
        for (std::size_t i = 1; i + 1 < fields.count; i += 2) {
            arrays.bond_atoms1.push_back(first);
            arrays.bond_atoms2.push_back(number_of<std::uint64_t>(fields.items[i]) - 1);
            arrays.bond_orders.push_back(number_of<double>(fields.items[i + 1]));
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
        const Fields fields(line);
        const bool frozen = fields.count > 4;
        arrays.lines.emplace_back(line);
        arrays.elements.emplace_back(fields.items[0]);
        arrays.freeze_codes.push_back(frozen ? number_of<std::int32_t>(fields.items[1]) : no_freeze_code);
        store_position(&fields.items[frozen ? 2 : 1], arrays);
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
        const Fields fields(line);
        const std::string_view label = fields.items[0];
        const std::size_t type = label.find('-') + 1;
        const std::size_t charge = label.find('-', type) + 1;
        arrays.lines.emplace_back(line);
        arrays.elements.emplace_back(label.substr(0, type - 1));
        arrays.types.emplace_back(label.substr(type, charge - 1 - type));
        arrays.mm_charges.push_back(number_of<double>(label.substr(charge)));
        arrays.freeze_codes.push_back(number_of<std::int32_t>(fields.items[1]));
        store_position(&fields.items[2], arrays);
        arrays.layers.emplace_back(fields.items[5]);
    }
    walk_bonds(walk, arrays);
    return arrays;
}

template PlainArrays<std::string> walk_cartesian(std::string_view);
template PlainArrays<std::string_view> walk_cartesian(std::string_view);
template PlainArrays<std::string> walk_oniom(std::string_view);
template PlainArrays<std::string_view> walk_oniom(std::string_view);

}  // namespace quor::benchmarks

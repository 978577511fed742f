// Answers what is known of basis sets. Of the table of functions only the rows of the set in question are taken apart.
#include <gjf/core/knowledge/basis_facts.hpp>

#include <gjf/core/knowledge/fact_table.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/number_range.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <string>

namespace quor::input::gaussian {
namespace {

constexpr int most_elements = 118;

const FactTable& element_table() {
    static const FactTable table("basis_elements", {"basis", "elements", "severity", "core_electrons"});
    return table;
}

const FactTable& function_table() {
    static const FactTable table("basis_functions", {"basis", "shells", "certainty", "d"});
    return table;
}

const FactTable& polarization_table() {
    static const FactTable table("polarization_functions", {"family", "field", "word", "shells", "certainty"});
    return table;
}

const FactTable& parameter_table() {
    static const FactTable table("parameters_elements", {"kind", "name", "elements", "severity", "first_basis"});
    return table;
}

// Finds what a list such as "1-2:2s;3-10:3s2p" gives an element; empty for nothing.
std::string_view of_element(std::string_view list, int element) {
    while (!list.empty()) {
        std::string_view item = take(list, ';');
        const std::optional<NumberRange> range = to_number_range(take(item, ':'), 1, most_elements);
        if (range && range->first <= element && element <= range->last) {
            return item;
        }
    }
    return {};
}

// Writes stars as polarization functions in brackets, and primed functions, which are as many, without their mark.
std::string plain_name(std::string_view basis) {
    std::string name(basis);
    name.erase(std::remove(name.begin(), name.end(), '\''), name.end());
    if (name.ends_with("**")) {
        name.replace(name.size() - 2, 2, "(d,p)");
    } else if (name.ends_with('*')) {
        name.replace(name.size() - 1, 1, "(d)");
    }
    return name;
}

// Adds the shells that a table gives an element in the rows that begin with these cells, behind which the shells stand.
// Returns whether there were any; `named` tells whether there are such rows at all.
bool add_shells(const FactTable& table, std::initializer_list<std::string_view> cells, int element, ShellCounts& counts,
                bool& named) {
    named = false;
    for (std::size_t i = 0; i < table.size(); ++i) {
        const std::string_view* row = table.row(i);
        if (!std::equal(cells.begin(), cells.end(), row)) {
            continue;
        }
        named = true;
        const std::string_view shells = of_element(row[cells.size()], element);
        if (!shells.empty() && counts.add(shells)) {
            counts.certain = counts.certain && row[cells.size() + 1] == "certain";
            return true;
        }
    }
    return false;
}

// Adds polarization functions: one field for all, two for heavy and light elements, three for the second row, the first and
// the light. A word that stands in no row adds nothing that is known.
bool add_polarization(std::string_view basis, std::string_view words, int element, ShellCounts& counts) {
    const auto fields = std::count(words.begin(), words.end(), ',') + 1;
    std::size_t field = 0;
    constexpr std::string_view names[] = {"heavy", "light"};
    constexpr std::string_view three_names[] = {"second", "first", "light"};
    for (; !words.empty() && fields <= 3; ++field) {
        const std::string_view word = take(words, ',');
        bool named = false;
        for (const std::string_view family : {"6-311", "6-31", "mc-311", "d95"}) {
            if (basis.starts_with(family) && !named) {
                add_shells(polarization_table(), {family, fields == 3 ? three_names[field] : names[field], word}, element,
                           counts, named);
            }
        }
        if (!named) {
            return false;
        }
    }
    return field > 0;
}

const std::string_view* find_row(const FactTable& table, std::string_view first, std::string_view second = {}) {
    for (std::size_t i = 0; i < table.size(); ++i) {
        const std::string_view* row = table.row(i);
        if (row[0] == first && (second.empty() || row[1] == second)) {
            return row;
        }
    }
    return nullptr;
}

std::string_view without_polarization(std::string_view basis) { return basis.substr(0, basis.find_first_of("(*")); }

template <class Row, class Make>
std::vector<Row> rows_of(const FactTable& table, const Make& make) {
    std::vector<Row> rows;
    rows.reserve(table.size());
    for (std::size_t i = 0; i < table.size(); ++i) {
        rows.push_back(make(table.row(i)));
    }
    return rows;
}

}  // namespace

ElementSet::ElementSet(std::string_view ranges) : covered_(most_elements + 1) {
    while (!ranges.empty()) {
        if (const std::optional<NumberRange> range = to_number_range(take(ranges, ','), 1, most_elements)) {
            std::fill(covered_.begin() + static_cast<std::ptrdiff_t>(range->first),
                      covered_.begin() + static_cast<std::ptrdiff_t>(range->last) + 1, true);
        }
    }
}

const BasisElements* basis_elements(std::string_view basis) {
    static const std::vector<BasisElements> rows = rows_of<BasisElements>(element_table(), [](const std::string_view* row) {
        return BasisElements{row[0], ElementSet(row[1]), row[2]};
    });
    for (const std::string_view name : {basis, without_polarization(basis)}) {
        const auto found =
            std::find_if(rows.begin(), rows.end(), [&](const BasisElements& row) { return row.basis == name; });
        if (found != rows.end()) {
            return &*found;
        }
    }
    return nullptr;
}

std::optional<int> core_electrons(std::string_view basis, int element) {
    const std::string_view* row = find_row(element_table(), basis);
    row = row == nullptr ? find_row(element_table(), without_polarization(basis)) : row;
    if (row == nullptr) {
        return stuttgart_core(basis);
    }
    return static_cast<int>(to_int64(of_element(row[3], element)).value_or(0));
}

std::optional<int> stuttgart_core(std::string_view name) noexcept {
    constexpr std::string_view kinds[] = {"hf", "wb", "df"};
    if (name.size() < 4 || !(equals_folded(name.substr(0, 1), "m") || equals_folded(name.substr(0, 1), "s")) ||
        std::none_of(std::begin(kinds), std::end(kinds),
                     [&](std::string_view kind) { return equals_folded(name.substr(1, 2), kind); }) ||
        name.find_first_not_of("0123456789", 3) != std::string_view::npos) {
        return std::nullopt;
    }
    return static_cast<int>(std::min<std::int64_t>(to_int64(name.substr(3)).value_or(0), most_elements));
}

bool ShellCounts::add(std::string_view text) noexcept {
    while (!text.empty()) {
        const std::size_t letter = text.find_first_of(shell_letters);
        const std::optional<std::int64_t> count = to_int64(text.substr(0, letter));
        if (letter == std::string_view::npos || !count) {
            return false;
        }
        shells[shell_letters.find(text[letter])] += *count;
        text.remove_prefix(letter + 1);
    }
    return true;
}

void ShellCounts::add(const ShellCounts& other, long long times) noexcept {
    std::transform(shells.begin(), shells.end(), other.shells.begin(), shells.begin(),
                   [times](long long sum, long long more) { return sum + times * more; });
    certain = certain && other.certain;
}

long long ShellCounts::functions(bool six_d, bool cartesian_f) const noexcept {
    long long sum = 0;
    for (std::size_t l = 0; l < shells.size(); ++l) {
        const bool cartesian = l == 2 ? six_d : l > 2 && cartesian_f;
        sum += shells[l] * static_cast<long long>(cartesian ? (l + 1) * (l + 2) / 2 : 2 * l + 1);
    }
    return sum;
}

std::optional<ShellCounts> basis_shells(std::string_view basis, int element) {
    const std::string name = plain_name(basis);
    ShellCounts counts;
    bool named = false;
    if (add_shells(function_table(), {name}, element, counts, named)) {
        return counts;
    }
    const std::size_t open = name.find('(');
    if (named || open == std::string::npos || name.back() != ')' ||
        !add_shells(function_table(), {std::string_view(name).substr(0, open)}, element, counts, named) ||
        !add_polarization(name, std::string_view(name).substr(open + 1, name.size() - open - 2), element, counts)) {
        return std::nullopt;
    }
    return counts;
}

bool has_six_d_functions(std::string_view basis) {
    const std::string_view* row = find_row(function_table(), basis);
    row = row == nullptr ? find_row(function_table(), without_polarization(basis)) : row;
    return row != nullptr && row[3] == "6";
}

const ParametersElements* parameters_elements(std::string_view kind, std::string_view name) {
    static const std::vector<ParametersElements> rows =
        rows_of<ParametersElements>(parameter_table(), [](const std::string_view* row) {
            return ParametersElements{row[0], row[1], ElementSet(row[2]), row[3], row[4]};
        });
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [&](const ParametersElements& row) { return row.kind == kind && row.name == name; });
    return found == rows.end() ? nullptr : &*found;
}

std::string missing_basis_facts() {
    return first_problem({&element_table(), &function_table(), &polarization_table(), &parameter_table()});
}

}  // namespace quor::input::gaussian

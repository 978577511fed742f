// Checks of generalised internal coordinates: the atoms that their functions name, and their brackets.
#include <gjf/core/check/molecule_view.hpp>

#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>
#include <utility>

namespace quor::input::gaussian {
namespace {

// Functions of single atoms, and how many they take.
constexpr struct {
    std::string_view name;
    std::size_t atoms;
} functions[] = {{"r", 2},    {"b", 2}, {"bond", 2},     {"stretch", 2}, {"a", 3}, {"angle", 3},
                 {"bend", 3}, {"d", 4}, {"dihedral", 4}, {"torsion", 4}, {"l", 4}, {"linear", 4}};

// One function and its arguments; other things stand in brackets too, as in OO(Frozen,Value=1.2).
void check_function(const CheckedJob& job, std::size_t line, std::string_view name, std::string_view inner,
                    std::size_t atom_count, Findings& findings) {
    const auto* function = std::find_if(std::begin(functions), std::end(functions),
                                        [&](const auto& known) { return equals_folded(name, known.name); });
    std::vector<std::string_view> arguments;
    split_fields(inner, FieldSeparators::WhiteSpaceAndComma, true, arguments);
    if (function == std::end(functions) || arguments.empty() ||
        !std::all_of(arguments.begin(), arguments.end(), is_integer_text)) {
        return;
    }
    if (arguments.size() < function->atoms) {
        findings.add("GJF-S014", Severity::Error,
                     std::string(name) + " is a function of " + std::to_string(function->atoms) + " atoms, not " +
                         std::to_string(arguments.size()),
                     job.place_in(line, name));
        return;
    }
    for (std::size_t i = 0; i < function->atoms; ++i) {
        const std::int64_t atom = to_int64(arguments[i]).value_or(0);
        if (std::cmp_greater(atom, atom_count)) {
            findings.add("GJF-S015", Severity::Error,
                         "atom " + std::to_string(atom) + " is not in the molecule of " + std::to_string(atom_count),
                         job.place_in(line, arguments[i]));
        }
        if (i > 0 && to_int64(arguments[i - 1]) == atom) {
            findings.add("GJF-S023", Severity::Error, "the coordinate names atom " + std::to_string(atom) + " twice",
                         job.place_in(line, arguments[i]));
        }
    }
}

}  // namespace

void check_expression(const CheckedJob& job, std::size_t line, std::size_t atom_count, Findings& findings) {
    const std::string_view text = without_comment(job.line(line));
    if (std::count(text.begin(), text.end(), '(') != std::count(text.begin(), text.end(), ')')) {
        findings.add("GJF-T007", Severity::Error, "a bracket of this expression has no partner", line);
        return;
    }
    for (std::size_t open = text.find('('); open != std::string_view::npos; open = text.find('(', open + 1)) {
        std::size_t begin = open;
        while (begin > 0 && is_letter(text[begin - 1])) {
            --begin;
        }
        const std::size_t close = std::min(text.find_first_of("()", open + 1), text.size());
        check_function(job, line, text.substr(begin, open - begin), text.substr(open + 1, close - open - 1), atom_count,
                       findings);
    }
}

}  // namespace quor::input::gaussian

// Checks of generalised internal coordinates: their words, the atoms that functions name, and brackets.
#include <gjf/core/check/molecule_view.hpp>

#include <gjf/core/check/fixes.hpp>
#include <gjf/core/check/near_names.hpp>
#include <gjf/core/knowledge/facts.hpp>
#include <gjf/core/sections/section_tokens.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace quor::input::gaussian {
namespace {

// The known words of a kind.
std::vector<std::string> known_words(std::string_view kind) {
    std::vector<std::string> words;
    for (const CoordinateWord& known : coordinate_words()) {
        if (known.kind == kind) {
            words.emplace_back(known.word);
        }
    }
    return words;
}

const CoordinateWord* find_coordinate_word(std::string_view kind, std::string_view word) {
    const auto words = coordinate_words();
    const auto found = std::find_if(words.begin(), words.end(), [&](const CoordinateWord& known) {
        return known.kind == kind && equals_folded(word, known.word);
    });
    return found == words.end() ? nullptr : &*found;
}

// Reports a word that is nearly a known one: no list of them is complete.
void check_coordinate_word(const CheckedJob& job, std::size_t line, std::string_view kind, std::string_view word,
                           Findings& findings) {
    if (word.size() == 1 && kind == "function" && find_coordinate_word(kind, word) == nullptr) {
        findings.add("GJF-S022", Severity::Warning, "'" + std::string(word) + "' is no function of coordinates",
                     job.place_in(line, word), "a bond is B or R, an angle A, a dihedral D");
    }
    if (word.size() < 3 || find_coordinate_word(kind, word) != nullptr || !findings.may_look_for_names()) {
        return;
    }
    const std::vector<std::string> near = near_names(to_lower_copy(word), known_words(kind));
    if (!near.empty()) {
        const TextPlace place = job.place_in(line, word);
        Finding& finding = findings.add("GJF-S022", Severity::Warning,
                                        "'" + std::string(word) + "' is no " + std::string(kind) + " of coordinates", place,
                                        did_you_mean(near));
        offer_near(job, place, word, near, finding);
    }
}

// What stands behind the name of a coordinate that is defined, as in OO(Freeze,Value=1.2).
void check_definition(const CheckedJob& job, std::size_t line, std::string_view list, Findings& findings) {
    std::vector<std::string_view> options;
    split_fields(list, FieldSeparators::WhiteSpaceAndComma, true, options);
    for (const std::string_view option : options) {
        const std::size_t sign = std::min(option.find('='), option.size());
        const std::string_view value = option.substr(std::min(sign + 1, option.size()));
        const CoordinateWord* known = find_coordinate_word("option", option.substr(0, sign));
        if (known == nullptr) {
            check_coordinate_word(job, line, "option", option.substr(0, sign), findings);
        } else if (!value.empty() && ((known->takes == "number" && !is_fortran_or_c_number(value)) ||
                                      (known->takes == "whole number" && !is_integer_text(value)))) {
            findings.add("GJF-S022", Severity::Warning,
                         "'" + std::string(value) + "' is no value of " + std::string(known->word),
                         job.place_in(line, value), "it takes a " + std::string(known->takes));
        }
    }
}

// One function and its arguments; other things stand in brackets too, as in OO(Frozen,Value=1.2).
void check_function(const CheckedJob& job, std::size_t line, std::string_view name, std::string_view inner,
                    std::size_t atom_count, Findings& findings) {
    const CoordinateWord* function = find_coordinate_word("function", name);
    std::vector<std::string_view> arguments;
    split_fields(inner, FieldSeparators::WhiteSpaceAndComma, true, arguments);
    const auto wanted =
        function == nullptr
            ? 0
            : static_cast<std::size_t>(to_int64(function->takes.substr(0, function->takes.find(' '))).value_or(0));
    if (wanted == 0 || arguments.empty() || !std::all_of(arguments.begin(), arguments.end(), is_integer_text)) {
        return;
    }
    if (arguments.size() < wanted) {
        // What is said of linear bends may have other forms.
        const bool is_fixed = to_lower_ascii(name.front()) != 'l';
        findings.add("GJF-S014", is_fixed ? Severity::Error : Severity::Warning,
                     std::string(name) + " is a function of " + std::string(function->takes) + ", not " +
                         std::to_string(arguments.size()),
                     job.place_in(line, name));
        return;
    }
    for (std::size_t i = 0; i < wanted; ++i) {
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

// Returns where the sign stands that gives a name its expression, as in OO(Freeze)=B(2,3); 0 for none.
std::size_t end_of_name(std::string_view text) noexcept {
    std::size_t depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        depth += text[i] == '(';
        depth -= text[i] == ')' && depth > 0;
        if (text[i] == '=' && depth == 0) {
            return i;
        }
    }
    return 0;
}

}  // namespace

void check_expression(const CheckedJob& job, std::size_t line, std::size_t atom_count, Findings& findings) {
    const std::string_view text = without_comment(job.line(line));
    if (std::count(text.begin(), text.end(), '(') != std::count(text.begin(), text.end(), ')')) {
        findings.add("GJF-T007", Severity::Error, "a bracket of this expression has no partner", line);
        return;
    }
    const std::size_t defined = end_of_name(text);
    for (std::size_t open = text.find('('); open != std::string_view::npos; open = text.find('(', open + 1)) {
        std::size_t begin = open;
        while (begin > 0 && is_letter(text[begin - 1])) {
            --begin;
        }
        const std::size_t close = std::min(text.find_first_of("()", open + 1), text.size());
        if (open < defined) {
            check_definition(job, line, text.substr(open + 1, close - open - 1), findings);
            continue;
        }
        if (defined != 0) {
            check_coordinate_word(job, line, "function", text.substr(begin, open - begin), findings);
        }
        check_function(job, line, text.substr(begin, open - begin), text.substr(open + 1, close - open - 1), atom_count,
                       findings);
    }
}

}  // namespace quor::input::gaussian

// Checks of what stands in single kinds of section: coordinate changes, NBO and solvent input, charges, isotopes.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/check/fixes.hpp>
#include <gjf/core/check/near_names.hpp>
#include <gjf/core/knowledge/facts.hpp>
#include <gjf/core/sections/section_tokens.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/number_range.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>
#include <limits>
#include <span>
#include <utility>

namespace quor::input::gaussian {
namespace {

using Kind = ExtraInputSectionKind;

using Tokens = std::span<const SectionToken>;

// A line of a section, as its grammar reads it.
struct SectionText {
    const CheckedJob& job;
    SectionReading reading;
    std::size_t first_line;

    SectionText(const CheckedJob& checked, const SectionLayout& section)
        : job(checked), reading(read_section(section.kind, checked.text(section.lines))), first_line(section.lines.first) {}

    std::string_view operator[](const SectionToken& token) const noexcept { return reading[token.span]; }
    TextPlace place(std::size_t line, const SectionToken& token) const { return job.place_in(line, (*this)[token]); }

    // Calls `take` with the number and the tokens of every line of some form.
    template <typename Take>
    void for_each(LineForm form, Take take) const {
        for (std::size_t i = 0; i < reading.lines.size(); ++i) {
            if (reading.lines[i].form == form && reading.lines[i].count > 0) {
                take(first_line + i, reading.tokens_of(reading.lines[i]));
            }
        }
    }
};

void check_atom_numbers(const SectionText& text, std::size_t line, Tokens atoms, std::size_t atom_count,
                        Findings& findings) {
    for (const SectionToken& token : atoms) {
        const std::optional<std::int64_t> atom = to_int64(text[token]);
        if (token.kind == TokenKind::Atom && (!atom || *atom < 1 || std::cmp_greater(*atom, atom_count))) {
            findings.add("GJF-S015", Severity::Error,
                         "atom " + std::string(text[token]) + " is not in the molecule of " + std::to_string(atom_count),
                         text.place(line, token));
        }
    }
}

// Reports an atom that a coordinate names twice. Two atoms apart or nearer it has no value; a dihedral that ends where it
// begins still has one.
void check_repeated_atoms(const SectionText& text, std::size_t line, Tokens atoms, Findings& findings) {
    for (std::size_t i = 1; i < atoms.size(); ++i) {
        const std::optional<std::int64_t> atom = to_int64(text[atoms[i]]);
        for (std::size_t j = 0; atom && j < i; ++j) {
            if (to_int64(text[atoms[j]]) == atom) {
                findings.add("GJF-S023", i - j <= 2 ? Severity::Error : Severity::Warning,
                             "the coordinate names atom " + std::to_string(*atom) + " twice", text.place(line, atoms[i]));
                return;
            }
        }
    }
}

// What may be done to a coordinate: add, freeze, activate, kill, remove, derivative, second derivative, scan.
constexpr std::string_view coordinate_actions = "afbkrdhs";

// Checks what stands behind the atoms of a coordinate: values, and one action; a scan goes on with its steps and their size.
void check_action(const SectionText& text, std::size_t line, Tokens rest, Findings& findings) {
    const auto is_value = [&](const SectionToken& token) {
        const std::string_view field = text[token];
        return is_number_text(field) || field.front() == '=' || field.front() == '+' || field == "*";
    };
    const auto found = std::find_if_not(rest.begin(), rest.end(), is_value);
    if (found == rest.end()) {
        return;
    }
    const std::string_view field = text[*found];
    const char action = to_lower_ascii(field.front());
    if (field.size() != 1 || coordinate_actions.find(action) == std::string_view::npos) {
        // Of a longer word the first letter may be all that is read.
        findings.add("GJF-S022", field.size() == 1 ? Severity::Error : Severity::Warning,
                     "'" + std::string(field) + "' is nothing that can be done to a coordinate", text.place(line, *found),
                     "the actions are A, F, B, K, R, D, H and S");
    } else if (action == 's' &&
               (rest.end() - found < 3 || !is_integer_text(text[found[1]]) || !is_number_text(text[found[2]]))) {
        findings.add("GJF-S022", Severity::Error, "a scan has a number of steps and their size", text.place(line, *found),
                     "as in B 1 2 S 10 0.1");
    } else if (action == 's' && to_int64(text[found[1]]).value_or(0) < 1) {
        findings.add("GJF-S022", Severity::Warning, "'" + std::string(text[found[1]]) + "' is no number of steps",
                     text.place(line, found[1]), "as in B 1 2 S 10 0.1");
    } else if (std::string_view("abfkr").find(action) != std::string_view::npos && rest.end() - found > 1 &&
               is_number_text(text[found[1]])) {
        findings.add("GJF-S022", Severity::Warning,
                     "'" + std::string(text[found[1]]) + "' stands behind the action " + std::string(field) +
                         ", which takes no value",
                     text.place(line, found[1]),
                     "a value of the coordinate stands before the action, as in D 1 2 3 4 115.0 F");
    } else if (const auto word = std::find_if_not(found + 1, rest.end(), is_value); word != rest.end()) {
        findings.add("GJF-S022", Severity::Warning,
                     "'" + std::string(text[*word]) + "' stands behind all that this line may say", text.place(line, *word),
                     "a comment begins with !");
    }
}

// A bond, angle or dihedral is read with all whole numbers that stand behind its letter, as its atoms.
bool has_atoms_too_many(const SectionText& text, std::size_t line, const CoordinateType& type, Tokens rest,
                        std::size_t atom_count, Findings& findings) {
    if (rest.empty() || type.least != type.most || type.most == 1 || !is_integer_text(text[rest[0]])) {
        return false;
    }
    const std::int64_t number = to_int64(text[rest[0]]).value_or(0);
    // Others were rather meant as values, and so may be those behind a bond.
    if (number < 1 || std::cmp_greater(number, atom_count)) {
        return false;
    }
    findings.add("GJF-S014", type.most > 2 ? Severity::Error : Severity::Warning,
                 "'" + std::string(text[rest[0]]) + "' is one atom too many for this coordinate", text.place(line, rest[0]),
                 "a value is written with a decimal point, as in D 1 2 3 4 180.0 F");
    return true;
}

void check_coordinate(const SectionText& text, std::size_t line, Tokens tokens, std::size_t atom_count, Findings& findings) {
    const auto is_atom = [](const SectionToken& token) {
        return token.kind == TokenKind::Atom || token.kind == TokenKind::AnyAtom;
    };
    const bool typed = !is_atom(tokens[0]);
    const CoordinateType* type = typed ? find_coordinate_type(text[tokens[0]]) : nullptr;
    if (typed && type == nullptr) {
        findings.add("GJF-S013", text[tokens[0]].size() == 1 ? Severity::Error : Severity::Warning,
                     "'" + std::string(text[tokens[0]]) + "' is no type of coordinate", text.place(line, tokens[0]),
                     "the types are X, B, A, D, L and O");
        return;
    }
    const Tokens behind = tokens.subspan(typed ? 1 : 0);
    const auto end = std::find_if_not(behind.begin(), behind.end(), is_atom);
    const Tokens atoms = behind.first(static_cast<std::size_t>(end - behind.begin()));
    if (typed && atoms.size() < type->least) {
        findings.add("GJF-S014", Severity::Error,
                     "a coordinate of type " + std::string(text[tokens[0]]) + " has " + std::to_string(type->least) +
                         (type->least == 1 ? " atom" : " atoms") + ", not " + std::to_string(atoms.size()),
                     line);
        return;
    }
    // Behind the first two of a coordinate without type, a whole number may be a value.
    const std::size_t certain = typed ? type->least : std::min<std::size_t>(atoms.size(), 2);
    check_atom_numbers(text, line, typed ? atoms.first(certain) : atoms, atom_count, findings);
    check_repeated_atoms(text, line, atoms.first(certain), findings);
    if (typed && has_atoms_too_many(text, line, *type, behind.subspan(atoms.size()), atom_count, findings)) {
        return;
    }
    check_action(text, line, behind.subspan(atoms.size()), findings);
}

// How many atoms a section may name: beside translation vectors also those of the next cells.
std::size_t nameable_atoms(const std::vector<MoleculeAtom>& atoms) {
    const bool is_periodic = std::any_of(atoms.begin(), atoms.end(), [](const MoleculeAtom& atom) {
        return atom.species.kind == SpeciesKind::TranslationVector;
    });
    return is_periodic ? std::numeric_limits<std::size_t>::max() : atoms.size();
}

void check_modifications(const CheckedJob& job, const SectionLayout& section, const std::vector<MoleculeAtom>& atoms,
                         Findings& findings) {
    if (atoms.empty()) {
        return;
    }
    const SectionText text(job, section);
    const std::size_t nameable = nameable_atoms(atoms);
    const bool is_of_expressions = job.has_option("opt", "addgic") || job.has_option("geom", "addgic");
    const bool is_of_atoms = !is_of_expressions && job.has_option("opt", "modredundant");
    for (std::size_t i = 0; i < text.reading.lines.size(); ++i) {
        if (text.reading.lines[i].form == LineForm::Expression) {
            const std::string_view line = trim_view(job.line(section.lines.first + i));
            // Behind a letter of opt=modredundant stand blanks.
            if (is_of_atoms && line.size() > 1 && line[1] == '(' && find_coordinate_type(line.substr(0, 1)) != nullptr) {
                findings.add("GJF-S022", Severity::Warning, "this line has the form of opt=addgic, beside opt=modredundant",
                             section.lines.first + i, "write the atoms behind blanks, as in D 1 2 3 4 F");
            }
            check_expression(job, section.lines.first + i, nameable, findings);
        }
    }
    if (is_of_expressions) {
        text.for_each(LineForm::Coordinate, [&](std::size_t line, Tokens tokens) {
            if (tokens.size() > 2 && find_coordinate_type(text[tokens[0]]) != nullptr) {
                findings.add("GJF-S022", Severity::Warning, "this line has the form of opt=modredundant, beside opt=addgic",
                             line, "write an expression, as in OO(Freeze)=B(2,3), or use opt=modredundant");
            }
        });
        return;
    }
    text.for_each(LineForm::Coordinate,
                  [&](std::size_t line, Tokens tokens) { check_coordinate(text, line, tokens, nameable, findings); });
}

void check_nbo(const CheckedJob& job, const SectionLayout& section, const std::vector<MoleculeAtom>&, Findings& findings) {
    const LineRange& lines = section.lines;
    for (std::size_t line = lines.first; line <= lines.last; ++line) {
        if (contains_folded(job.line(line), "$end")) {
            return;
        }
    }
    Finding& finding =
        findings.add("GJF-S016", Severity::Error, "the NBO input has no $end", lines.last, "close each $NBO list with $END");
    offer(finding, "close it with $END", FixSafety::Safe, {job.behind_line(lines.last, "\n$END")});
}

void check_solvation_value(const SectionText& text, std::size_t line, std::string_view field, Findings& findings) {
    const std::size_t equals = std::min(field.find('='), field.size());
    const std::string_view value = trim_view(field.substr(std::min(equals + 1, field.size())));
    const std::string_view word = trim_view(field.substr(0, equals));
    const bool is_verified = is_verified_solvent_word(word);
    const Severity severity = severity_by_fact(Severity::Warning, is_verified);
    if (!value.empty() && takes_number(word) && !is_fortran_or_c_number(value)) {
        findings.add("GJF-S017", severity, "'" + std::string(value) + "' is no number", text.job.place_in(line, value));
    }
    // The list of names may have gaps, so only what is near to one is told.
    std::vector<std::string> names;
    std::vector<std::string_view> words;
    split_fields(names_taken(word), FieldSeparators::WhiteSpaceAndComma, true, words);
    names.assign(words.begin(), words.end());
    const std::string lower = to_lower_copy(value);
    const bool is_known = value.empty() || std::find(names.begin(), names.end(), lower) != names.end();
    if (!is_known && !names.empty() && findings.may_look_for_names()) {
        if (const std::vector<std::string> near = near_names(lower, names); !near.empty()) {
            const TextPlace place = text.job.place_in(line, value);
            Finding& finding =
                findings.add("GJF-S017", severity_by_fact(Severity::Error, is_verified),
                             "'" + std::string(value) + "' is no name that is known here", place, did_you_mean(near));
            offer_near(text.job, place, value, near, finding);
        }
    }
}

void check_solvation_words(const SectionText& text, std::size_t line, Tokens tokens, Findings& findings) {
    if (is_number_text(text[tokens[0]])) {
        return;
    }
    for (const SectionToken& token : tokens) {
        const std::string_view field = text[token];
        const std::string_view word = trim_view(field.substr(0, field.find_first_of("=(")));
        // A name may hold blanks and commas.
        if (equals_folded(word, "solventname")) {
            return;
        }
        check_solvation_value(text, line, field, findings);
        const std::vector<std::string>& words = solvent_input_words();
        const std::string lower = to_lower_copy(word);
        if (!word.empty() && !is_number_text(field) && std::find(words.begin(), words.end(), lower) == words.end()) {
            const std::vector<std::string> near =
                findings.may_look_for_names() ? near_names(lower, words) : std::vector<std::string>();
            const TextPlace place = text.job.place_in(line, word);
            const bool is_known_slip = !near.empty() && is_verified_solvent_word(near.front());
            const Severity least = is_known_slip && is_misspelt(word, near) ? Severity::Error : Severity::Warning;
            Finding& finding =
                findings.add("GJF-S017", severity_by_fact(least, near.empty() || is_known_slip),
                             "'" + std::string(word) + "' is no word of the solvent input", place, did_you_mean(near));
            offer_near(text.job, place, word, near, finding);
        }
    }
}

void check_solvation(const CheckedJob& job, const SectionLayout& section, const std::vector<MoleculeAtom>&,
                     Findings& findings) {
    const SectionText text(job, section);
    text.for_each(LineForm::Plain,
                  [&](std::size_t line, Tokens tokens) { check_solvation_words(text, line, tokens, findings); });
}

void check_charge(const SectionText& text, std::size_t line, Tokens tokens, Findings& findings) {
    constexpr std::size_t columns = 4;
    const auto odd = std::find_if_not(tokens.begin(), tokens.end(),
                                      [&](const SectionToken& token) { return to_fortran_number(text[token]).has_value(); });
    if (odd != tokens.end()) {
        findings.add("GJF-S018", Severity::Error, "'" + std::string(text[*odd]) + "' is no number", text.place(line, *odd),
                     "a background charge is x, y, z and the charge");
    } else if (tokens.size() != columns) {
        findings.add("GJF-S018", tokens.size() < columns ? Severity::Error : Severity::Warning,
                     "a background charge has 4 columns, not " + std::to_string(tokens.size()), line,
                     "they are x, y, z and the charge");
    }
}

void check_charges(const CheckedJob& job, const SectionLayout& section, const std::vector<MoleculeAtom>&,
                   Findings& findings) {
    const SectionText text(job, section);
    text.for_each(LineForm::Plain, [&](std::size_t line, Tokens tokens) { check_charge(text, line, tokens, findings); });
}

// Orbitals are exchanged in pairs, one a line; they are counted from 1.
void check_alterations(const CheckedJob& job, const SectionLayout& section, const std::vector<MoleculeAtom>&,
                       Findings& findings) {
    std::vector<std::string_view> fields;
    for (std::size_t line = section.lines.first; line <= section.lines.last; ++line) {
        cut_section_line(job.line(line), fields);
        const auto odd = std::find_if_not(fields.begin(), fields.end(), is_integer_text);
        if (fields.empty() || fields[0].front() == '@') {
            continue;
        }
        if (odd != fields.end()) {
            findings.add("GJF-S031", Severity::Error, "'" + std::string(*odd) + "' is no number of an orbital",
                         job.place_in(line, *odd), "two orbitals are exchanged as in 7 8");
        } else if (fields.size() != 2 || to_int64(fields[0]) == to_int64(fields[1])) {
            findings.add("GJF-S031", Severity::Warning,
                         fields.size() == 2 ? "the orbital is exchanged with itself"
                                            : "a pair of orbitals stands on each line, not " + std::to_string(fields.size()),
                         line, "as in 7 8, and the next pair on the next line");
        }
    }
}

// A selection of atoms, as in "noatoms atoms=1-4,C".
void check_selection(const CheckedJob& job, const SectionLayout& section, const std::vector<MoleculeAtom>& atoms,
                     Findings& findings) {
    const SectionText text(job, section);
    text.for_each(LineForm::Selection, [&](std::size_t line, Tokens tokens) {
        for (const SectionToken& token : tokens) {
            const std::optional<NumberRange> range = to_number_range(text[token], 1);
            if (token.kind == TokenKind::Atoms && range && !atoms.empty() &&
                std::cmp_greater(range->last, nameable_atoms(atoms))) {
                findings.add(
                    "GJF-S015", Severity::Warning,
                    "atom " + std::to_string(range->last) + " is not in the molecule of " + std::to_string(atoms.size()),
                    text.place(line, token));
            }
        }
    });
    constexpr std::string_view keys[] = {"atoms", "notatoms", "noatoms"};
    for (const SelectionList& list : text.reading.lists) {
        const std::string_view written = list.key.empty() && list.count == 1 ? text.reading[list.span] : list.key;
        const std::string key = to_lower_copy(trim_view(written));
        const bool is_cut = std::any_of(std::begin(keys), std::end(keys), [&](std::string_view known) {
            return known.size() == key.size() + 1 && known.starts_with(key);
        });
        if (is_cut) {
            findings.add("GJF-S022", Severity::Warning, "'" + key + "' is no word of an atom list",
                         section.lines.first + list.line, "they are atoms, notatoms and noatoms");
        }
    }
}

// The first line of isotopes: temperature and pressure, and perhaps a scale factor, all plain numbers.
void check_conditions(const SectionText& text, std::size_t number, Findings& findings) {
    std::vector<std::string_view> fields;
    cut_section_line(text.reading[text.reading.lines.front().span], fields);
    const auto odd = std::find_if_not(fields.begin(), fields.end(), is_fortran_or_c_number);
    if (odd != fields.end()) {
        findings.add("GJF-S027", Severity::Error, "'" + std::string(*odd) + "' is no number",
                     text.job.place_in(number, *odd), "temperature in kelvin and pressure in atmospheres, without units");
    } else if (fields.size() == 1) {
        findings.add("GJF-S027", Severity::Warning, "a line of temperature and pressure is missing before the isotopes",
                     number, "as in 298.15 1.0");
    }
}

// Isotopes are mass numbers, or masses.
void check_masses(const SectionText& text, std::size_t first_line, Findings& findings) {
    std::vector<std::string_view> fields;
    for (std::size_t i = 0; i < text.reading.lines.size(); ++i) {
        const SectionLine& line = text.reading.lines[i];
        if (line.form != LineForm::OfAtom) {
            continue;
        }
        cut_section_line(trim_view(without_comment(text.reading[line.span])), fields);
        const auto odd = std::find_if_not(fields.begin(), fields.end(), is_fortran_or_c_number);
        if (odd != fields.end()) {
            findings.add("GJF-S025", Severity::Error, "'" + std::string(*odd) + "' is no mass",
                         text.job.place_in(first_line + i, *odd), "mass numbers alone, as in 18, one for each atom");
        }
    }
}

// Masses stand behind a first line of temperature and pressure.
void check_isotopes(const CheckedJob& job, const SectionLayout& section, const std::vector<MoleculeAtom>& atoms,
                    Findings& findings) {
    const SectionText text(job, section);
    std::size_t given = 0;
    for (const SectionLine& line : text.reading.lines) {
        const std::string_view mass = trim_view(without_comment(text.reading[line.span]));
        if (mass.substr(0, 1) == "@") {
            return;
        }
        std::vector<std::string_view> fields;
        cut_section_line(mass, fields);
        given += line.form == LineForm::OfAtom ? fields.size() : 0;
    }
    check_conditions(text, section.lines.first, findings);
    check_masses(text, section.lines.first, findings);
    const auto wanted = static_cast<std::size_t>(std::count_if(
        atoms.begin(), atoms.end(), [](const MoleculeAtom& atom) { return atom.species.kind == SpeciesKind::Atom; }));
    // A molecule from a checkpoint is not known here.
    if (given < wanted || (given > wanted && wanted > 0)) {
        findings.add("GJF-S025", Severity::Warning,
                     std::to_string(given) + " isotopes are given for " + std::to_string(wanted) + " atoms",
                     section.lines.last, "one for each atom, behind a line of temperature and pressure");
    }
}

// The kinds whose content is checked here.
struct ContentCheck {
    Kind kind;
    void (*check)(const CheckedJob&, const SectionLayout&, const std::vector<MoleculeAtom>&, Findings&);
};

constexpr ContentCheck content_checks[] = {
    {Kind::CoordinateModifications, check_modifications},
    {Kind::SecondCoordinateModifications, check_modifications},
    {Kind::ThirdCoordinateModifications, check_modifications},
    {Kind::FrozenAtomAlterations, check_selection},
    {Kind::OrbitalAlterations, check_alterations},
    {Kind::AtomicMasses, check_isotopes},
    {Kind::NBOInput, check_nbo},
    {Kind::PCMInput, check_solvation},
    {Kind::PCMSolvation, check_solvation},
    {Kind::BackgroundCharge, check_charges},
    {Kind::SecondTitleAndMolecule, check_structure},
    {Kind::ThirdTitleAndTSStructure, check_structure},
};

void check_section_contents(const CheckedMolecule& molecule, Findings& findings) {
    const auto& [job, atoms, layers] = molecule;
    for (const SectionLayout& section : job.layout.sections) {
        for (const ContentCheck& row : content_checks) {
            if (row.kind == section.kind) {
                row.check(job, section, atoms, findings);
            }
        }
    }
}

}  // namespace

const Family section_content_family = {Known::Molecule,
                                       check_section_contents,
                                       {"GJF-S013", "GJF-S014", "GJF-S015", "GJF-S016", "GJF-S017", "GJF-S018", "GJF-S019",
                                        "GJF-S020", "GJF-S021", "GJF-S022", "GJF-S023", "GJF-S025", "GJF-S027", "GJF-S031"}};

}  // namespace quor::input::gaussian

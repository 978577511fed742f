// Checks of Z-matrix rows, their references, and the variables of symbolic coordinates.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/chemistry/layers.hpp>
#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <utility>

namespace quor::input::gaussian {
namespace {

constexpr const char* reference_names[] = {"bond length", "angle", "dihedral"};

// Returns where a field of a line stands; the whole line when it has fewer.
TextPlace field_place(const CheckedJob& job, std::size_t line, std::size_t field) {
    Fields fields;
    cut_fields(without_comment(job.line(line)), fields);
    return field < fields.size() ? job.place_in(line, fields[field]) : TextPlace{line, 0, 0};
}

void check_row(const CheckedJob& job, std::size_t row, Findings& findings) {
    const ZMatrixEntry& entry = job.job.geom.zmatrix_entries[row];
    const std::size_t line = line_at(job.layout.zmatrix_rows, row);
    const std::optional<ZMatrixReference>* references[] = {&entry.bond, &entry.angle, &entry.dihedral};
    const std::string number = std::to_string(row + 1);
    if (is_cartesian(entry)) {
        return;
    }
    for (std::size_t i = 0; i < 3; ++i) {
        const TextPlace place = field_place(job, line, 2 * i + 1);
        if (!*references[i]) {
            if (i < row) {
                findings.add("GJF-M009", Severity::Error, "row " + number + " has no " + reference_names[i],
                             TextPlace{line, 0, 0});
            }
            return;
        }
        const std::int32_t atom = (*references[i])->atom;
        if (i >= row) {
            findings.add("GJF-M009", Severity::Error,
                         "row " + number + " has a " + reference_names[i] + ", but too few atoms stand before it", place);
            return;
        }
        if (atom < 1 || static_cast<std::size_t>(atom) > row) {
            findings.add("GJF-M009", Severity::Error,
                         "row " + number + " refers to atom " + std::to_string(atom) + ", which is not before it", place);
        }
        for (std::size_t j = 0; j < i; ++j) {
            if ((*references[j])->atom == atom) {
                findings.add("GJF-M009", Severity::Error,
                             "row " + number + " refers to atom " + std::to_string(atom) + " twice", place);
            }
        }
    }
}

// Reports a number that stands alone behind the references and values of a row: nothing reads it. Behind a dihedral, 1 and
// -1 tell that it is a second angle.
void check_row_end(const CheckedJob& job, std::size_t row, Findings& findings) {
    const ZMatrixEntry& entry = job.job.geom.zmatrix_entries[row];
    const std::size_t line = line_at(job.layout.zmatrix_rows, row);
    const std::size_t values = !entry.bond ? 0 : !entry.angle ? 1 : !entry.dihedral ? 2 : 3;
    Fields fields;
    cut_fields(without_comment(job.line(line)), fields);
    if (is_cartesian(entry) || fields.size() != 2 * values + 2 || values != std::min<std::size_t>(row, 3)) {
        return;
    }
    const std::int64_t number = is_integer_text(fields.back()) ? to_int64(fields.back()).value_or(0) : 0;
    if (number > 1 || number < -1 || (number == 1 && values < 3)) {
        findings.add("GJF-M009", Severity::Warning,
                     "'" + std::string(fields.back()) + "' stands behind all that row " + std::to_string(row + 1) + " has",
                     job.place_in(line, fields.back()),
                     values == 3 ? "the last column is 0, or 1 or -1 for a second angle"
                                 : "a row refers to as many atoms as stand before it, three at most");
    }
}

// Returns the line where a variable of this name, perhaps with a sign, gets its value; 0 for none.
std::size_t line_of_variable(const CheckedJob& job, std::string_view name) {
    const GeomSection& geom = job.job.geom;
    const std::string wanted = to_lower_copy(without_sign(trim_view(name)));
    for (const auto& [list, lines] :
         {std::pair(&geom.variables, &job.layout.variables), std::pair(&geom.constants, &job.layout.constants)}) {
        for (std::size_t i = 0; i < list->size(); ++i) {
            if (equals_folded((*list)[i].name, wanted)) {
                return line_at(*lines, i);
            }
        }
    }
    return 0;
}

// Reports rows whose references can be followed, but lead nowhere; an angle where its value stands.
void check_places(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms, Findings& findings) {
    constexpr PositionFault faults[] = {PositionFault::SelfReference, PositionFault::AngleRange, PositionFault::Collinear,
                                        PositionFault::ImpossibleAngles};
    for (std::size_t i = 0; i < atoms.size(); ++i) {
        if (std::find(std::begin(faults), std::end(faults), atoms[i].fault) != std::end(faults)) {
            const bool is_angle = atoms[i].fault == PositionFault::AngleRange;
            const std::size_t of_variable = is_angle ? line_of_variable(job, atoms[i].cause) : 0;
            findings.add("GJF-M009", is_angle ? Severity::Error : Severity::Warning, position_fault_text(atoms[i], i + 1),
                         of_variable != 0 ? of_variable : atoms[i].line);
        }
    }
}

// A number of a row, and the line where it is written: the row's own, or that of a variable.
struct WrittenValue {
    std::optional<double> number;
    std::size_t line = 0;
};

// The values of all variables and constants, by their names in lower case.
std::map<std::string, WrittenValue> written_values(const CheckedJob& job) {
    const GeomSection& geom = job.job.geom;
    std::map<std::string, WrittenValue> values;
    for (const auto& [list, lines] :
         {std::pair(&geom.variables, &job.layout.variables), std::pair(&geom.constants, &job.layout.constants)}) {
        for (std::size_t i = 0; i < list->size(); ++i) {
            const std::string& value = (*list)[i].value;
            values.try_emplace(
                to_lower_copy((*list)[i].name),
                WrittenValue{to_fortran_number(value.substr(0, value.find_first_of(" \t,"))), line_at(*lines, i)});
        }
    }
    return values;
}

// Returns the number that a field of a row stands for; below zero, what the sign before a variable makes so is the row's.
WrittenValue value_of(const std::string& field, std::size_t line, const std::map<std::string, WrittenValue>& values) {
    const auto variable = values.find(to_lower_copy(without_sign(field)));
    if (variable == values.end() || !variable->second.number) {
        return {to_fortran_number(field), line};
    }
    const bool is_turned = field.starts_with('-');
    const double number = *variable->second.number;
    return {is_turned ? -number : number, is_turned && number > 0 ? line : variable->second.line};
}

// Reports bond lengths and angles that cannot be, each where it is written.
void check_values(const CheckedJob& job, Findings& findings) {
    constexpr double two_halves = 3.15;  // an angle of 180 degrees, in radians
    const GeomSection& geom = job.job.geom;
    const std::map<std::string, WrittenValue> values = written_values(job);
    std::set<std::size_t> told;
    const auto tell = [&](std::size_t line, Severity severity, std::string message, const char* hint) {
        if (told.insert(line).second) {
            findings.add("GJF-M009", severity, std::move(message), line, hint);
        }
    };
    for (std::size_t row = 0; row < geom.zmatrix_entries.size(); ++row) {
        const ZMatrixEntry& entry = geom.zmatrix_entries[row];
        if (!entry.bond || is_cartesian(entry)) {
            continue;
        }
        const std::string number = std::to_string(row + 1);
        const std::size_t of_row = line_at(job.layout.zmatrix_rows, row);
        const WrittenValue length = value_of(entry.bond->value, of_row, values);
        if (length.number && *length.number <= 0) {
            tell(length.line, *length.number < 0 ? Severity::Warning : Severity::Error,
                 "the bond length of row " + number + (*length.number < 0 ? " is negative" : " is 0"), "");
        }
        const WrittenValue angle = entry.angle ? value_of(entry.angle->value, of_row, values) : WrittenValue();
        if (angle.number && *angle.number == 0) {
            tell(angle.line, Severity::Error, "the angle of row " + number + " is 0",
                 "an angle is above 0, at most 180 degrees");
        } else if (angle.number && *angle.number > 0 && *angle.number < two_halves) {
            tell(angle.line, Severity::Warning, "the angle of row " + number + " looks like radians",
                 "angles are in degrees");
        }
    }
}

// Returns the label of an atom that a line names as a row's reference and no row before it has; empty where the line may be
// anything else. It stands directly behind a row, so that no variable can be meant.
std::string_view unknown_center(const CheckedJob& job, std::size_t line) {
    const std::vector<std::size_t>& rows = job.layout.zmatrix_rows;
    if (std::find(rows.begin(), rows.end(), line - 1) == rows.end()) {
        return {};
    }
    Fields fields;
    cut_fields(without_comment(job.line(line)), fields);
    const auto is_row_before = [&](std::string_view label) {
        return std::any_of(job.job.geom.zmatrix_entries.begin(), job.job.geom.zmatrix_entries.end(),
                           [&](const ZMatrixEntry& row) { return equals_folded(row.info.element, label); });
    };
    for (std::size_t i = 1; i < std::min<std::size_t>(fields.size(), 6); i += 2) {
        if (is_integer_text(fields[i]) || is_row_before(fields[i])) {
            continue;
        }
        // Three names behind a label are coordinates; a layer's letter stands behind them, or behind the row.
        const bool is_reference = i > 1 || (fields.size() >= 5 && is_integer_text(fields[3]));
        return is_reference && !to_fortran_number(fields[i]) && layer_letter(fields[i]) == '?' ? fields[i]
                                                                                               : std::string_view();
    }
    return {};
}

// Reports lines among variables that were rather meant as rows.
void check_variable_lines(const CheckedJob& job, const std::vector<ZMatrixVariable>& variables,
                          const std::vector<std::size_t>& lines, Findings& findings) {
    const std::vector<bool> rows = lines_like_rows(job, variables, lines);
    for (std::size_t i = 0; i < variables.size(); ++i) {
        const std::size_t line = line_at(lines, i);
        if (const std::string_view center = rows[i] ? unknown_center(job, line) : std::string_view(); !center.empty()) {
            findings.add("GJF-M009", Severity::Error, "'" + std::string(center) + "' is no atom before this one",
                         job.place_in(line, center), "a row names earlier atoms by their numbers or labels");
        } else if (rows[i]) {
            findings.add("GJF-M010", Severity::Warning,
                         "this line is read as variable '" + variables[i].name + "', not as an atom", line_at(lines, i),
                         "rows have 1, 3, 5 or 7 fields, and refer to atoms by number or by the label of an earlier row");
        }
    }
}

// Names whose values may be there in a form that is not read: those that stand first in a line that nothing asked for, and
// those behind the value of another, as in "r=0.96 a=104.5".
NameSet names_left_over(const CheckedJob& job) {
    NameSet names;
    Fields fields;
    const GeomSection& geom = job.job.geom;
    for (const auto* list : {&geom.variables, &geom.constants, &geom.cartesian_variables}) {
        for (const ZMatrixVariable& variable : *list) {
            cut_fields(variable.value, fields);
            for (const std::string_view field : fields) {
                names.insert(to_lower_copy(field.substr(0, field.find('='))));
            }
        }
    }
    for (const SectionLayout& section : job.layout.sections) {
        for (std::size_t line = section.lines.first; line <= section.lines.last; ++line) {
            cut_fields(without_comment(job.line(line)), fields);
            if (section.kind != ExtraInputSectionKind::Unknown || fields.empty()) {
                continue;
            }
            const std::size_t sign = fields[0].find('=');
            if (fields.size() > 1 || (sign != std::string_view::npos && sign + 1 < fields[0].size())) {
                names.insert(to_lower_copy(fields[0].substr(0, sign)));
            }
        }
    }
    return names;
}

// Reports lines that name such a variable and give it nothing, as "a=".
void check_empty_values(const CheckedJob& job, const NameSet& names, Findings& findings) {
    for (const SectionLayout& section : job.layout.sections) {
        for (std::size_t line = section.lines.first; line <= section.lines.last; ++line) {
            std::string_view text = trim_view(without_comment(job.line(line)));
            text = trim_view(text.substr(0, text.size() - (text.ends_with('=') ? 1 : 0)));
            if (section.kind == ExtraInputSectionKind::Unknown && names.count(to_lower_copy(text)) > 0) {
                findings.add("GJF-M007", Severity::Error, "variable '" + std::string(text) + "' has no value here", line);
            }
        }
    }
}

void check_undefined(const CheckedJob& job, Findings& findings) {
    const NameSet names = undefined_names(job.job.geom);
    if (names.empty()) {
        return;
    }
    check_empty_values(job, names, findings);
    const LineRange& molecule = job.layout.molecule;
    const NameSet left_over = names_left_over(job);
    Fields fields;
    NameSet found;
    for (std::size_t line = molecule.first; !molecule.empty() && line <= molecule.last; ++line) {
        cut_fields(without_comment(job.line(line)), fields);
        for (const std::string_view field : fields) {
            const std::string name = to_lower_copy(without_sign(field));
            if (names.count(name) > 0 && found.insert(name).second) {
                // A layer behind whole numbers is read as a name.
                const bool is_layer = !job.route.oniom_expression.empty() && layer_letter(name) != '?';
                findings.add("GJF-M007", is_layer || left_over.count(name) > 0 ? Severity::Warning : Severity::Error,
                             "variable '" + std::string(without_sign(field)) + "' has no value", job.place_in(line, field));
            }
        }
    }
}

void check_unused(const CheckedJob& job, const std::vector<ZMatrixVariable>& variables,
                  const std::vector<std::size_t>& lines, const NameSet& used, NameSet& defined, Findings& findings) {
    const std::vector<bool> rows = lines_like_rows(job, variables, lines);
    for (std::size_t i = 0; i < variables.size(); ++i) {
        if (rows[i]) {
            continue;
        }
        const std::string name = to_lower_copy(variables[i].name);
        if (used.count(name) == 0) {
            // Beside lines that may be rows, or go unread, a name may be used there.
            const bool is_certain = job.layout.sections.empty() && !has_unread_rows(job);
            findings.add("GJF-M008", is_certain ? Severity::Error : Severity::Warning,
                         "variable '" + variables[i].name + "' is used nowhere", line_at(lines, i));
        }
        if (!defined.insert(name).second) {
            findings.add("GJF-M008", Severity::Warning, "variable '" + variables[i].name + "' is given a value twice",
                         line_at(lines, i));
        }
    }
}

void check_zmatrix(const CheckedMolecule& molecule, Findings& findings) {
    const auto& [job, atoms, layers] = molecule;
    const GeomSection& geom = job.job.geom;
    for (std::size_t row = 0; row < geom.zmatrix_entries.size(); ++row) {
        check_row(job, row, findings);
        check_row_end(job, row, findings);
    }
    if (!geom.zmatrix_entries.empty()) {
        check_places(job, atoms, findings);
        check_values(job, findings);
    }
    check_variable_lines(job, geom.variables, job.layout.variables, findings);
    check_variable_lines(job, geom.constants, job.layout.constants, findings);
    check_undefined(job, findings);
    const NameSet used = names_in_use(geom);
    NameSet defined;
    check_unused(job, geom.variables, job.layout.variables, used, defined, findings);
    check_unused(job, geom.constants, job.layout.constants, used, defined, findings);
    check_unused(job, geom.cartesian_variables, job.layout.cartesian_variables, used, defined, findings);
}

}  // namespace

const Family zmatrix_family = {Known::Rows, check_zmatrix, {"GJF-M007", "GJF-M008", "GJF-M009", "GJF-M010"}};

}  // namespace quor::input::gaussian

// Checks of what stands in single kinds of section: coordinate changes, NBO and solvent input, charges, further structures.
#include <gjf/core/check/molecule_view.hpp>

#include <gjf/core/check/near_names.hpp>
#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>

namespace quor::input::gaussian {
namespace {

using Kind = ExtraInputSectionKind;

// A type of internal coordinate, and how many atoms it has at least.
struct CoordinateType {
    char letter;
    std::size_t atoms;
};

constexpr CoordinateType coordinate_types[] = {{'x', 1}, {'b', 2}, {'a', 3}, {'d', 4}, {'l', 3}, {'o', 4}};

bool is_atom_field(std::string_view field) { return field == "*" || is_integer_text(field); }

void check_atom_fields(const CheckedJob& job, std::size_t line, const Fields& fields, std::size_t first, std::size_t count,
                       std::size_t atom_count, Findings& findings) {
    for (std::size_t i = first; i < first + count; ++i) {
        const std::optional<std::int64_t> atom = to_int64(fields[i]);
        if (fields[i] != "*" && (!atom || *atom < 1 || static_cast<std::size_t>(*atom) > atom_count)) {
            findings.add("GJF-S015", Severity::Error,
                         "atom " + std::string(fields[i]) + " is not in the molecule of " + std::to_string(atom_count),
                         job.place_in(line, fields[i]));
        }
    }
}

// Reports an atom that a coordinate names twice. Two atoms apart or nearer it has no value; a dihedral that ends where it
// begins still has one.
void check_repeated_atoms(const CheckedJob& job, std::size_t line, const Fields& fields, std::size_t first,
                          std::size_t count, Findings& findings) {
    for (std::size_t i = first + 1; i < first + count; ++i) {
        const std::optional<std::int64_t> atom = to_int64(fields[i]);
        for (std::size_t j = first; atom && j < i; ++j) {
            if (to_int64(fields[j]) == atom) {
                findings.add("GJF-S023", i - j <= 2 ? Severity::Error : Severity::Warning,
                             "the coordinate names atom " + std::to_string(*atom) + " twice", job.place_in(line, fields[i]));
                return;
            }
        }
    }
}

// What may be done to a coordinate: add, freeze, activate, kill, remove, derivative, second derivative, scan.
constexpr std::string_view coordinate_actions = "afbkrdhs";

// Checks what stands behind the atoms of a coordinate: values, and one action; a scan goes on with its steps and their size.
void check_action(const CheckedJob& job, std::size_t line, const Fields& fields, std::size_t first, Findings& findings) {
    std::size_t i = first;
    while (i < fields.size() && (is_number_text(fields[i]) || fields[i].front() == '=' || fields[i].front() == '+')) {
        ++i;
    }
    if (i == fields.size()) {
        return;
    }
    const char action = to_lower_ascii(fields[i].front());
    if (fields[i].size() != 1 || coordinate_actions.find(action) == std::string_view::npos) {
        findings.add("GJF-S022", Severity::Warning,
                     "'" + std::string(fields[i]) + "' is nothing that can be done to a coordinate",
                     job.place_in(line, fields[i]), "the actions are A, F, B, K, R, D, H and S");
    } else if (action == 's' &&
               (i + 2 >= fields.size() || !is_integer_text(fields[i + 1]) || !is_number_text(fields[i + 2]))) {
        findings.add("GJF-S022", Severity::Warning, "a scan has a number of steps and their size",
                     job.place_in(line, fields[i]), "as in B 1 2 S 10 0.1");
    }
}

void check_coordinate_line(const CheckedJob& job, std::size_t line, std::size_t atom_count, Findings& findings) {
    const std::string_view text = without_comment(job.line(line));
    Fields fields;
    cut_fields(text, fields);
    // Generalised internal coordinates are written as expressions.
    const bool is_expression =
        text.find('(') != std::string_view::npos || (!fields.empty() && fields[0].find('=') != std::string_view::npos);
    // Words such as FreezeAll, of the same language, concern all coordinates.
    const bool is_for_all =
        fields.size() == 1 && fields[0].size() > 3 && equals_folded(fields[0].substr(fields[0].size() - 3), "all");
    if (fields.empty() || is_expression || is_for_all) {
        return;
    }
    const bool typed = !is_atom_field(fields[0]);
    const auto atoms_end = std::find_if_not(fields.begin() + (typed ? 1 : 0), fields.end(), is_atom_field);
    const auto given = static_cast<std::size_t>(atoms_end - fields.begin()) - (typed ? 1 : 0);
    if (!typed) {
        check_atom_fields(job, line, fields, 0, std::min<std::size_t>(given, 4), atom_count, findings);
        // Behind the first two, a whole number may be a value.
        check_repeated_atoms(job, line, fields, 0, std::min<std::size_t>(given, 2), findings);
        check_action(job, line, fields, given, findings);
        return;
    }
    const char letter = to_lower_ascii(fields[0].front());
    const auto type = std::find_if(std::begin(coordinate_types), std::end(coordinate_types),
                                   [&](const CoordinateType& t) { return t.letter == letter; });
    if (fields[0].size() != 1 || type == std::end(coordinate_types)) {
        findings.add("GJF-S013", fields[0].size() == 1 ? Severity::Error : Severity::Warning,
                     "'" + std::string(fields[0]) + "' is no type of coordinate", job.place_in(line, fields[0]),
                     "the types are X, B, A, D, L and O");
        return;
    }
    if (given < type->atoms) {
        findings.add("GJF-S014", Severity::Error,
                     "a coordinate of type " + std::string(fields[0]) + " has " + std::to_string(type->atoms) +
                         (type->atoms == 1 ? " atom" : " atoms") + ", not " + std::to_string(given),
                     line);
        return;
    }
    check_atom_fields(job, line, fields, 1, type->atoms, atom_count, findings);
    check_repeated_atoms(job, line, fields, 1, type->atoms, findings);
    check_action(job, line, fields, 1 + given, findings);
}

void check_modifications(const CheckedJob& job, const LineRange& lines, const std::vector<MoleculeAtom>& atoms,
                         Findings& findings) {
    if (atoms.empty() || job.has_option("opt", "addgic") || job.has_option("geom", "addgic")) {
        return;
    }
    for (std::size_t line = lines.first; line <= lines.last; ++line) {
        check_coordinate_line(job, line, atoms.size(), findings);
    }
}

void check_nbo(const CheckedJob& job, const LineRange& lines, Findings& findings) {
    for (std::size_t line = lines.first; line <= lines.last; ++line) {
        if (contains_folded(job.line(line), "$end")) {
            return;
        }
    }
    findings.add("GJF-S016", Severity::Error, "the NBO input has no $end", lines.last, "close each $NBO list with $END");
}

// What may stand in the input of SCRF=Read.
constexpr const char* solvation_words[] = {"eps",
                                           "epsinf",
                                           "epsinfinity",
                                           "rsolv",
                                           "density",
                                           "radii",
                                           "alpha",
                                           "vmol",
                                           "ofac",
                                           "rmin",
                                           "surface",
                                           "tsnum",
                                           "tsare",
                                           "addsph",
                                           "noaddsph",
                                           "extrasph",
                                           "modifysph",
                                           "nsph",
                                           "norad",
                                           "read",
                                           "cav",
                                           "nocav",
                                           "dis",
                                           "nodis",
                                           "rep",
                                           "norep",
                                           "scaled",
                                           "smd",
                                           "iterative",
                                           "inversion",
                                           "noniterative",
                                           "qconv",
                                           "mxiter",
                                           "maxiter",
                                           "noneq",
                                           "noneq=write",
                                           "noneq=read",
                                           "neq",
                                           "geomview",
                                           "dcav",
                                           "ddis",
                                           "drep",
                                           "molvol",
                                           "hbondacidity",
                                           "hbondbasicity",
                                           "surfacetensionatinterface",
                                           "carbonaromaticity",
                                           "electronegativehalogenicity",
                                           "symcav",
                                           "nosymcav",
                                           "fitpot",
                                           "outerlayer",
                                           "ret",
                                           "icomp",
                                           "scrftype",
                                           "rnumden",
                                           "tabs",
                                           "skipvdw",
                                           "pcmdoc",
                                           "absolute",
                                           "relative",
                                           "cavity",
                                           "lastkeyword",
                                           "stoichiometry",
                                           "external",
                                           "fixgrad",
                                           "nofixgrad",
                                           "sas",
                                           "ses",
                                           "vdw",
                                           "dcosmo",
                                           "nostage"};

void check_solvation_line(const CheckedJob& job, std::size_t line, Findings& findings) {
    Fields fields;
    cut_fields(without_comment(job.line(line)), fields);
    if (fields.empty() || is_number_text(fields[0])) {
        return;
    }
    for (const std::string_view field : fields) {
        const std::string_view word = trim_view(field.substr(0, field.find_first_of("=(")));
        // A name may hold blanks and commas.
        if (equals_folded(word, "solventname")) {
            return;
        }
        const bool known = word.empty() || is_number_text(field) ||
                           std::any_of(std::begin(solvation_words), std::end(solvation_words),
                                       [&](const char* w) { return equals_folded(word, w); });
        if (!known) {
            std::vector<std::string> names;
            if (findings.may_look_for_names()) {
                names.assign(std::begin(solvation_words), std::end(solvation_words));
            }
            findings.add("GJF-S017", Severity::Warning, "'" + std::string(word) + "' is no word of the solvent input",
                         job.place_in(line, word), did_you_mean(near_names(to_lower_copy(word), names)));
        }
    }
}

void check_solvation(const CheckedJob& job, const LineRange& lines, Findings& findings) {
    for (std::size_t line = lines.first; line <= lines.last; ++line) {
        check_solvation_line(job, line, findings);
    }
}

void check_charges(const CheckedJob& job, const LineRange& lines, Findings& findings) {
    constexpr std::size_t columns = 4;
    Fields fields;
    for (std::size_t line = lines.first; line <= lines.last; ++line) {
        cut_fields(without_comment(job.line(line)), fields);
        if (fields.empty() || fields[0].front() == '@') {
            continue;
        }
        const auto odd = std::find_if_not(fields.begin(), fields.end(),
                                          [](std::string_view f) { return is_number_text(f) || is_fortran_number(f); });
        if (odd != fields.end()) {
            findings.add("GJF-S018", Severity::Error, "'" + std::string(*odd) + "' is no number", job.place_in(line, *odd),
                         "a background charge is x, y, z and the charge");
        } else if (fields.size() != columns) {
            findings.add("GJF-S018", fields.size() < columns ? Severity::Error : Severity::Warning,
                         "a background charge has 4 columns, not " + std::to_string(fields.size()), line,
                         "they are x, y, z and the charge");
        }
    }
}

// Compares a second or third structure with the first: as many atoms, in the same order.
void check_structure(const CheckedJob& job, const LineRange& lines, const std::vector<MoleculeAtom>& atoms,
                     Findings& findings) {
    std::size_t line = lines.first;
    while (line <= lines.last && !is_blank_line(job.line(line))) {
        ++line;
    }
    while (line <= lines.last && is_blank_line(job.line(line))) {
        ++line;
    }
    // Without a blank line inside, there is a molecule without a title.
    line = line > lines.last ? lines.first : line;
    std::vector<std::string> text;
    for (std::size_t i = line; i <= lines.last && !is_blank_line(job.line(i)); ++i) {
        text.emplace_back(job.line(i));
    }
    std::vector<const AtomInfo*> labels;
    GeomSection geom;
    try {
        geom = GJFParser::parse_geometry_section(text);
    } catch (const std::exception& error) {
        findings.add("GJF-S021", Severity::Warning, std::string("this structure cannot be read: ") + error.what(), line);
        return;
    }
    for (const AtomCoord& atom : geom.atoms) {
        labels.push_back(&atom.info);
    }
    for (const ZMatrixEntry& row : geom.zmatrix_entries) {
        labels.push_back(&row.info);
    }
    if (labels.size() != atoms.size()) {
        findings.add(
            "GJF-S019", Severity::Error,
            "this structure has " + std::to_string(labels.size()) + " atoms, the first one " + std::to_string(atoms.size()),
            line);
        return;
    }
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (species_of(*labels[i]).nuclear_charge() != atoms[i].species.nuclear_charge()) {
            findings.add("GJF-S020", Severity::Warning,
                         "atom " + std::to_string(i + 1) + " is " + labels[i]->element + " here, and " +
                             atoms[i].info->element + " in the first structure",
                         line, "the structures must list the same atoms in the same order");
            return;
        }
    }
}

}  // namespace

void check_section_contents(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms, Findings& findings) {
    for (const SectionLayout& section : job.layout.sections) {
        switch (section.kind) {
            case Kind::CoordinateModifications:
            case Kind::SecondCoordinateModifications:
            case Kind::ThirdCoordinateModifications:
                check_modifications(job, section.lines, atoms, findings);
                break;
            case Kind::NBOInput:
                check_nbo(job, section.lines, findings);
                break;
            case Kind::PCMInput:
            case Kind::PCMSolvation:
                check_solvation(job, section.lines, findings);
                break;
            case Kind::BackgroundCharge:
                check_charges(job, section.lines, findings);
                break;
            case Kind::SecondTitleAndMolecule:
            case Kind::ThirdTitleAndTSStructure:
                if (!atoms.empty()) {
                    check_structure(job, section.lines, atoms, findings);
                }
                break;
            default:
                break;
        }
    }
}

}  // namespace quor::input::gaussian

// Checks of what stands where a molecule is read: atoms that the checkpoint brings already, a number too many, and
// coordinates that leave nothing to vary.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/chemistry/layers.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

// With geom=check nothing but charge and multiplicity is read; a line directly behind them must be blank or a comment.
void check_atoms_beside_checkpoint(const CheckedJob& job, Findings& findings) {
    const std::size_t line = job.layout.charge_line + 1;
    if (job.layout.charge_line == 0 || !job.molecule_from_checkpoint() || job.all_from_checkpoint() || job.restarts() ||
        job.has_option("geom", "modify")) {
        return;
    }
    Fields fields;
    cut_fields(without_comment(job.line(line)), fields);
    if (!fields.empty()) {
        const bool is_atom = species_of_name(fields[0]).kind != SpeciesKind::Unknown;
        findings.add("GJF-M017", is_atom ? Severity::Error : Severity::Warning,
                     "atoms stand here, but geom=check takes them from the checkpoint", line,
                     "remove the atoms, or geom=check");
    }
}

// Behind the coordinates stand a layer, or the number of a fragment; no number with a decimal point.
void check_fourth_numbers(const CheckedJob& job, Findings& findings) {
    const std::vector<AtomCoord>& atoms = job.job.geom.atoms;
    for (std::size_t i = 0; i < atoms.size(); ++i) {
        const std::optional<std::string>& layer = atoms[i].layer;
        if (layer && job.route.oniom_expression.empty() && !layer->empty() && layer_letter(*layer) == '?' &&
            !is_number_text(*layer)) {
            findings.add("GJF-M018", Severity::Warning, "'" + *layer + "' stands behind the coordinates of an atom",
                         line_at(job.layout.atoms, i), "a comment begins with !");
            return;
        }
        if (layer && layer->find('.') != std::string::npos && is_number_text(*layer)) {
            findings.add("GJF-M018", Severity::Warning, "'" + *layer + "' is a fourth number behind the name of an atom",
                         line_at(job.layout.atoms, i),
                         "an atom has three coordinates, and before them perhaps a freeze code");
            return;
        }
    }
}

// What stands behind the value on the line of a variable: the steps of a scan and their size.
Fields fields_behind_value(std::string_view line) {
    std::string text(without_comment(line));
    std::replace(text.begin(), text.end(), '=', ' ');
    Fields fields;
    cut_fields(text, fields);
    const std::size_t count = std::min<std::size_t>(fields.size(), 2);
    Fields rest;
    for (std::size_t i = count; i < fields.size(); ++i) {
        // The copy ends with this function.
        rest.push_back(line.substr(static_cast<std::size_t>(fields[i].data() - text.data()), fields[i].size()));
    }
    return rest;
}

// A scan goes along variables that have a number of steps and their size behind their value.
void check_scan(const CheckedJob& job, const RouteTree::Keyword& scan, Findings& findings) {
    const GeomSection& geom = job.job.geom;
    bool any = false;
    for (const auto* list : {&geom.variables, &geom.cartesian_variables}) {
        const std::vector<std::size_t>& lines =
            list == &geom.variables ? job.layout.variables : job.layout.cartesian_variables;
        for (std::size_t i = 0; i < list->size(); ++i) {
            const Fields rest = fields_behind_value(job.line(line_at(lines, i)));
            any = any || !rest.empty();
            const bool is_count = !rest.empty() && is_integer_text(rest[0]) && to_int64(rest[0]).value_or(0) >= 0;
            if (rest.size() == 2 && to_fortran_number(rest[0]) && !is_count) {
                findings.add("GJF-M019", Severity::Error, "'" + std::string(rest[0]) + "' is no number of steps",
                             job.place_in(line_at(lines, i), rest[0]), "as in r 0.96 4 0.05");
            }
            if (rest.size() == 1 && is_integer_text(rest[0])) {
                findings.add("GJF-M019", Severity::Warning,
                             "variable '" + (*list)[i].name + "' has a number of steps, but no step size", line_at(lines, i),
                             "a value, the number of steps and their size, as in r 0.96 4 0.05");
            }
        }
    }
    if (!any) {
        findings.add("GJF-M019", Severity::Error, "scan has no variable with a number of steps and their size",
                     job.route_place(scan.head), "write them behind the variable's value, as in r 0.96 4 0.05");
    }
}

// In an optimization by variables, S behind a value begins a scan: the number of steps and their size.
void check_scanned_variables(const CheckedJob& job, Findings& findings) {
    const std::vector<std::size_t>& lines = job.layout.variables;
    for (std::size_t i = 0; i < job.job.geom.variables.size(); ++i) {
        const Fields rest = fields_behind_value(job.line(line_at(lines, i)));
        if (!rest.empty() && equals_folded(rest[0], "s") &&
            (rest.size() < 3 || !is_integer_text(rest[1]) || !to_fortran_number(rest[2]))) {
            findings.add("GJF-M019", Severity::Error, "a scan has a number of steps and their size",
                         job.place_in(line_at(lines, i), rest[0]), "as in D4=115.0 S 10 10.0");
        }
    }
}

// A full optimization by variables has as many of them as the molecule has degrees of freedom; symmetry makes these fewer,
// and a linear molecule has one more than others.
void check_full_optimization(const CheckedJob& job, Findings& findings) {
    const GeomSection& geom = job.job.geom;
    const RouteTree::Keyword* full = job.find_keyword("fopt");
    if (full == nullptr) {
        return;
    }
    const NameSet used = names_in_use(geom);
    std::size_t free = 0;
    for (std::size_t i = 0; i < geom.variables.size(); ++i) {
        free += used.count(to_lower_copy(geom.variables[i].name)) > 0 &&
                fields_behind_value(job.line(line_at(job.layout.variables, i))).empty();
    }
    const auto atoms = static_cast<std::size_t>(
        std::count_if(geom.zmatrix_entries.begin(), geom.zmatrix_entries.end(),
                      [](const ZMatrixEntry& row) { return species_of(row.info).kind != SpeciesKind::Dummy; }));
    if (atoms > 2 && free > 3 * atoms - 5) {
        findings.add("GJF-M019", Severity::Error,
                     "fopt has " + std::to_string(free) + " variables, but " + std::to_string(atoms) +
                         " atoms have no more than " + std::to_string(3 * atoms - 5) + " degrees of freedom",
                     job.route_place(full->head), "write opt, which needs no such count, or make some of them constants");
    }
}

void check_anything_to_vary(const CheckedJob& job, Findings& findings) {
    const GeomSection& geom = job.job.geom;
    if (geom.atom_count() == 0 || job.restarts() || job.molecule_from_checkpoint() || job.has_keyword("geom")) {
        return;
    }
    for (const char* by_variables : {"opt=z-matrix", "fopt", "popt"}) {
        const std::optional<Span> place = job.find_word(by_variables);
        if (place && geom.zmatrix_entries.empty() && geom.cartesian_variables.empty()) {
            findings.add("GJF-M019", Severity::Error,
                         std::string(by_variables) + " has no variables: the molecule is in Cartesian coordinates",
                         job.route_place(*place), "write it as a Z-matrix with variables, or write opt alone");
        }
    }
    check_full_optimization(job, findings);
    check_scanned_variables(job, findings);
    const RouteTree::Keyword* scan = job.find_keyword("scan");
    if (scan != nullptr && scan->options.empty() && !job.has_keyword("opt")) {
        check_scan(job, *scan, findings);
    }
}

void check_molecule_form(const CheckedMolecule& molecule, Findings& findings) {
    const CheckedJob& job = molecule.job;
    check_atoms_beside_checkpoint(job, findings);
    check_fourth_numbers(job, findings);
    check_anything_to_vary(job, findings);
}

}  // namespace

const Family molecule_form_family = {Known::Molecule, check_molecule_form, {"GJF-M017", "GJF-M018", "GJF-M019"}};

}  // namespace quor::input::gaussian

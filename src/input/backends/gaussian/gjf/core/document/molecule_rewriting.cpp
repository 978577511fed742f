// Writes changed atoms, variables and Z-matrix rows into their lines.
#include <gjf/core/document/job_rewriting.hpp>

#include <gjf/core/document/field_line.hpp>
#include <gjf/core/editor/job_writer.hpp>
#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/job/job_comparison.hpp>
#include <gjf/core/reader/job_places.hpp>
#include <gjf/core/reader/reading.hpp>
#include <gjf/core/reader/row_form.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/number_writing.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>
#include <utility>

namespace quor::input::gaussian {
namespace {

constexpr int fewest_decimals = 6;
constexpr std::size_t most_decimals = 60;

int decimals_of(std::string_view text) noexcept {
    const std::size_t point = std::min(text.find('.'), text.size() - 1);
    const std::size_t end = std::min(text.find_first_not_of("0123456789", point + 1), text.size());
    return static_cast<int>(std::min(end - point - 1, most_decimals));
}

// Writes label parameters in the order in which they stood, new ones behind.
std::string parameter_text(std::string_view old_list, const std::map<std::string, std::string>& params) {
    std::vector<std::string> items;
    std::map<std::string, std::string> left = params;
    while (!old_list.empty()) {
        const std::size_t comma = std::min(old_list.find(','), old_list.size());
        const std::string_view item = old_list.substr(0, comma);
        old_list.remove_prefix(std::min(comma + 1, old_list.size()));
        const std::string key(trim_view(item.substr(0, item.find('='))));
        const auto found = left.find(key);
        if (found == left.end()) {
            continue;
        }
        const bool has_equals = item.find('=') != std::string_view::npos;
        const std::string_view old_value = has_equals ? trim_view(item.substr(item.find('=') + 1)) : std::string_view();
        items.push_back(old_value == found->second ? std::string(item) : key + "=" + found->second);
        left.erase(found);
    }
    for (const auto& [key, value] : left) {
        items.push_back(key + "=" + value);
    }
    std::string text;
    for (const std::string& item : items) {
        text += (text.empty() ? "" : ",") + item;
    }
    return text.empty() ? text : "(" + text + ")";
}

// Writes an atom label anew, with as much of the old one as still holds.
std::string label_text(std::string_view old, const AtomInfo& before, const AtomInfo& after) {
    const std::size_t open = old.find('(');
    const std::size_t close = open == std::string_view::npos ? open : old.find(')', open);
    const bool has_list = close != std::string_view::npos;
    std::string head(has_list ? old.substr(0, open) : old);
    if (before.element != after.element || before.mm_type != after.mm_type || before.mm_charge != after.mm_charge) {
        head = after.element;
        if (after.mm_type) {
            head += "-" + *after.mm_type;
        }
        if (after.mm_charge) {
            head += "-" + shortest_text(*after.mm_charge);
        }
    }
    const std::string list =
        before.params == after.params && has_list
            ? std::string(old.substr(open, close - open + 1))
            : parameter_text(has_list ? old.substr(open + 1, close - open - 1) : std::string_view(), after.params);
    return head + list;
}

// Returns the new text of a coordinate; empty when the old one still holds.
std::string coordinate_text(const CoordinateValue& old, double old_value, const CoordinateValue& wanted, double value,
                            std::size_t atom) {
    if (wanted.text == old.text || (wanted.text.empty() && old.value && value == old_value)) {
        return {};
    }
    if (!wanted.text.empty()) {
        return wanted.text;
    }
    if (!old.value) {
        throw GJFParseException("A coordinate of atom " + std::to_string(atom + 1) + " is a variable and cannot be moved");
    }
    return fixed_text(value, std::max(decimals_of(old.text), fewest_decimals));
}

bool has_freeze_field(const FieldLine& line) { return line.size() >= 5 && is_integer_text(line.field(1)); }

void rewrite_freeze(FieldLine& line, const std::optional<std::int32_t>& before, const std::optional<std::int32_t>& after) {
    if (before == after) {
        return;
    }
    if (!after) {
        line.blank_out(1);
    } else if (before) {
        line.set_number(1, std::to_string(*after));
    } else {
        line.insert_after(0, std::to_string(*after));
    }
}

void rewrite_layer(FieldLine& line, std::size_t layer, const std::optional<std::string>& before,
                   const std::optional<std::string>& after) {
    if (before == after) {
        return;
    }
    if (!after) {
        line.truncate(layer);
    } else if (line.size() > layer) {
        line.set_text(layer, *after);
    } else {
        line.insert_after(layer - 1, *after);
    }
}

// Writes an atom into the line of the one that it was made from.
std::string atom_line(std::string_view old_line, const AtomCoord& before, const AtomCoord& after, std::size_t atom) {
    FieldLine line(old_line);
    // From the last field to the first, since an inserted freeze code moves the others.
    const std::size_t first = before.freeze ? 2 : 1;
    rewrite_layer(line, first + 3, before.layer, after.layer);
    const CoordinateValue* old_texts[] = {&before.x_ref, &before.y_ref, &before.z_ref};
    const CoordinateValue* new_texts[] = {&after.x_ref, &after.y_ref, &after.z_ref};
    const double old_values[] = {before.x, before.y, before.z};
    const double new_values[] = {after.x, after.y, after.z};
    for (std::size_t i = 0; i < 3; ++i) {
        const std::string text = coordinate_text(*old_texts[i], old_values[i], *new_texts[i], new_values[i], atom);
        if (!text.empty()) {
            line.set_number(first + i, text);
        }
    }
    if (needs_decimals(after) && is_integer_text(line.field(first))) {
        line.set_number(first, fixed_text(after.x, fewest_decimals));
    }
    rewrite_freeze(line, before.freeze, after.freeze);
    if (!same_label(before.info, after.info)) {
        line.set_text(0, label_text(line.field(0), before.info, after.info));
    }
    return line.text();
}

// Renumbers the atom that a link atom is bonded to: the second field behind the layer.
std::string with_link_host(const std::string& text, const AtomPlaces& places, std::size_t atom, bool force) {
    FieldLine line(text);
    const std::size_t host_field = (has_freeze_field(line) ? 5U : 4U) + 2;
    const std::optional<std::int64_t> host = line.size() > host_field ? to_int64(line.field(host_field)) : std::nullopt;
    if (!host || *host < 1 || std::cmp_greater(*host, places.old_count())) {
        return text;
    }
    const std::size_t place = places.places[static_cast<std::size_t>(*host) - 1];
    if (place == AtomPlaces::gone) {
        if (force) {
            return text;
        }
        throw GJFParseException("The link atom of atom " + std::to_string(atom + 1) +
                                " is bonded to an atom that was removed");
    }
    if (std::cmp_not_equal(place + 1, *host)) {
        line.set_text(host_field, std::to_string(place + 1));
    }
    return line.text();
}

// Drops what a copied line holds beyond its atom: link atom fields and comment.
std::string bare_atom_line(std::string_view line) {
    FieldLine fields(without_comment(line));
    fields.truncate(has_freeze_field(fields) ? 6 : 5);
    return std::string(fields.text().substr(0, fields.text().find_last_not_of(" \t") + 1));
}

std::string new_atom_line(const JobRewriting& job, std::size_t atom) {
    const std::vector<AtomCoord>& atoms = job.after.geom.atoms;
    const auto in_line_of = [&](std::size_t origin, const AtomCoord& untouched) {
        const AtomCoord* const before = job.before.atom(origin);
        return atom_line(bare_atom_line(job.lines.line(job.before.layout.atoms[origin])),
                         before != nullptr ? *before : untouched, atoms[atom], atom);
    };
    // The nearest atom that was there gives the columns: the one before, else the first, which is behind it or gone.
    for (std::size_t i = atom; i-- > 0;) {
        if (job.origins[i] < job.before.atom_count()) {
            return in_line_of(job.origins[i], atoms[i]);
        }
    }
    if (job.before.atom_count() > 0) {
        const std::size_t place = job.places.places.front();
        return in_line_of(0, atoms[place != AtomPlaces::gone ? place : atom]);
    }
    const AtomCoord& made = atoms[atom];
    AtomCoord blank;
    blank.info = made.info;
    blank.x_ref = blank.y_ref = blank.z_ref = {"0.0", 0.0};
    return atom_line(" " + label_text({}, AtomInfo(), made.info) + "   0.0   0.0   0.0", blank, made, atom);
}

// Returns the line of an atom of the job as it should be.
std::string line_of_atom(const JobRewriting& job, std::size_t atom) {
    const std::size_t origin = job.origins[atom];
    if (origin >= job.before.atom_count()) {
        return new_atom_line(job, atom);
    }
    const AtomCoord& wanted = job.after.geom.atoms[atom];
    const AtomCoord* const before = job.before.atom(origin);
    const std::string_view old_line = job.lines.line(job.before.layout.atoms[origin]);
    std::string text = before == nullptr ? std::string(old_line) : atom_line(old_line, *before, wanted, atom);
    return job.places.renumbered && wanted.layer ? with_link_host(text, job.places, atom, job.force) : text;
}

// Tells whether the atoms that were there before still stand in their order.
bool keep_their_order(const JobRewriting& job) {
    std::size_t next = 0;
    for (const std::size_t origin : job.origins) {
        if (origin >= job.places.old_count()) {
            continue;
        }
        if (origin < next) {
            return false;
        }
        next = origin + 1;
    }
    return true;
}

void set_line(JobRewriting& job, std::size_t number, std::string text) {
    if (job.lines.line(number) != text) {
        job.edits.replace(number, std::move(text));
    }
}

// Each atom that was there before keeps its line; new ones are put behind the atom before them.
void rewrite_atoms_in_place(JobRewriting& job) {
    const std::vector<std::size_t>& lines = job.before.layout.atoms;
    for (std::size_t old = 0; old < lines.size(); ++old) {
        if (job.places.places[old] == AtomPlaces::gone) {
            job.edits.remove(lines[old]);
        }
    }
    std::size_t last_line = job.before.layout.charge_line;
    for (std::size_t atom = 0; atom < job.after.geom.atoms.size(); ++atom) {
        const std::size_t origin = job.origins[atom];
        if (origin >= lines.size()) {
            job.edits.insert_after(last_line, line_of_atom(job, atom));
            continue;
        }
        last_line = lines[origin];
        if (job.places.renumbered || job.before.atom(origin) != nullptr) {
            set_line(job, last_line, line_of_atom(job, atom));
        }
    }
}

// The lines that hold atoms are filled with the atoms in their new order.
void rewrite_atoms_in_new_order(JobRewriting& job) {
    const std::vector<std::size_t>& lines = job.before.layout.atoms;
    for (std::size_t atom = 0; atom < job.after.geom.atoms.size(); ++atom) {
        std::string text = line_of_atom(job, atom);
        if (atom < lines.size()) {
            set_line(job, lines[atom], std::move(text));
        } else {
            job.edits.insert_after(lines.back(), std::move(text));
        }
    }
    for (std::size_t i = job.after.geom.atoms.size(); i < lines.size(); ++i) {
        job.edits.remove(lines[i]);
    }
}

void rewrite_variables(JobRewriting& job, const std::vector<ZMatrixVariable>& before,
                       const std::vector<ZMatrixVariable>& after, const std::vector<std::size_t>& lines,
                       VariableFields (*fields_of)(std::string_view, std::uint32_t) = zmatrix_variable_fields) {
    if (std::equal(before.begin(), before.end(), after.begin(), after.end(), same_variable)) {
        return;
    }
    const auto same_name = [](const ZMatrixVariable& a, const ZMatrixVariable& b) { return a.name == b.name; };
    if (lines.size() != before.size() || !std::equal(before.begin(), before.end(), after.begin(), after.end(), same_name)) {
        throw GJFParseException("Variables can be given other values, but neither be added nor removed, in a document");
    }
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (before[i].value == after[i].value) {
            continue;
        }
        std::string line(job.lines.line(lines[i]));
        const Span value = fields_of(line, 0).value;
        if (value.in(line) != before[i].value) {
            throw GJFParseException("The line of variable " + before[i].name + " cannot be changed");
        }
        job.edits.replace(lines[i], line.replace(value.begin, value.length, after[i].value));
    }
}

void rewrite_row(JobRewriting& job, std::size_t row) {
    const ZMatrixEntry& before = job.before.job.geom.zmatrix_entries[row];
    const ZMatrixEntry& after = job.after.geom.zmatrix_entries[row];
    const std::optional<ZMatrixReference>* old_references[] = {&before.bond, &before.angle, &before.dihedral};
    const std::optional<ZMatrixReference>* new_references[] = {&after.bond, &after.angle, &after.dihedral};
    const std::string_view old_line = job.lines.line(job.before.layout.zmatrix_rows[row]);
    Fields fields;
    cut_fields(without_comment(old_line), fields);
    const RowForm form = find_row_form(fields).value_or(RowForm());
    FieldLine line(old_line);
    for (std::size_t i = 0; i < 3; ++i) {
        if (old_references[i]->has_value() != new_references[i]->has_value()) {
            throw GJFParseException("The references of a Z-matrix row can be changed, but neither be added nor removed");
        }
        if (!*old_references[i]) {
            continue;
        }
        if ((*old_references[i])->atom != (*new_references[i])->atom) {
            line.set_text(form.atom(i), std::to_string((*new_references[i])->atom));
        }
        if ((*old_references[i])->value != (*new_references[i])->value) {
            line.set_number(form.value(i), (*new_references[i])->value);
        }
    }
    if (!same_label(before.info, after.info)) {
        line.set_text(0, label_text(line.field(0), before.info, after.info));
    }
    set_line(job, job.before.layout.zmatrix_rows[row], line.text());
}

void rewrite_zmatrix(JobRewriting& job) {
    const GeomSection& after = job.after.geom;
    if (!after.atoms.empty()) {
        throw GJFParseException("Atoms with Cartesian coordinates cannot be added to a Z-matrix");
    }
    if (!job.before.may_differ(JobPart::ZMatrix)) {
        return;
    }
    if (after.zmatrix_entries.size() != job.before.job.geom.zmatrix_entries.size()) {
        throw GJFParseException("Rows can neither be added to a Z-matrix nor removed from it");
    }
    for (std::size_t row = 0; row < after.zmatrix_entries.size(); ++row) {
        rewrite_row(job, row);
    }
}

bool has_atoms_in_a_file(const JobRewriting& job) {
    const LineRange& molecule = job.before.layout.molecule;
    for (std::size_t line = molecule.first; !molecule.empty() && line <= molecule.last; ++line) {
        if (is_include_line(job.lines.line(line))) {
            return true;
        }
    }
    return false;
}

}  // namespace

void rewrite_molecule(JobRewriting& job) {
    const GeomSection& after = job.after.geom;
    if (job.before.may_differ(JobPart::Format) && job.before.job.geom.format != after.format) {
        throw GJFParseException(
            "A molecule cannot be turned from Cartesian coordinates into a Z-matrix, nor back, in a document");
    }
    if ((job.before.may_differ(JobPart::AtomCount) || !keep_their_order(job)) && has_atoms_in_a_file(job)) {
        throw GJFParseException("A part of the molecule stands in another file: its atoms can neither be added nor removed");
    }
    if (after.format == GeometryFormat::ZMatrix) {
        rewrite_zmatrix(job);
    } else if (job.before.atom_count() == 0 && !after.atoms.empty()) {
        throw GJFParseException("Atoms cannot be added to a job that takes its molecule from a checkpoint");
    } else if (keep_their_order(job)) {
        rewrite_atoms_in_place(job);
    } else {
        rewrite_atoms_in_new_order(job);
    }
    if (job.before.may_differ(JobPart::Variables)) {
        const GeomSection& before = job.before.job.geom;
        rewrite_variables(job, before.variables, after.variables, job.before.layout.variables);
        rewrite_variables(job, before.constants, after.constants, job.before.layout.constants);
        rewrite_variables(job, before.cartesian_variables, after.cartesian_variables, job.before.layout.cartesian_variables,
                          cartesian_variable_fields);
    }
}

}  // namespace quor::input::gaussian

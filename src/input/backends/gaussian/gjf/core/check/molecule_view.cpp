// The atoms of a job as the checks see them: species, positions, layers, fragments, link atoms.
#include <gjf/core/check/molecule_view.hpp>

#include <gjf/core/chemistry/layers.hpp>
#include <gjf/core/reader/row_form.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <utility>

namespace quor::input::gaussian {
namespace {

std::optional<std::int64_t> fragment_of(const AtomInfo& info) {
    const std::string* fragment = find_parameter(info, "fragment");
    return fragment == nullptr ? std::nullopt : std::optional<std::int64_t>(to_int64(*fragment).value_or(0));
}

// Looks at what stands behind a Z-matrix row: fragment and layer, which the job model has no place for.
void look_behind_row(const CheckedJob& job, MoleculeAtom& atom) {
    Fields fields;
    cut_fields(without_comment(job.line(atom.line)), fields);
    const std::optional<RowForm> form = find_row_form(fields);
    if (form && form->layer != 0) {
        atom.layer = layer_letter(fields[form->layer]);
    }
    if (form && form->has_fragment && !atom.fragment) {
        atom.fragment = to_int64(fields[form->rest]);
    }
}

// Tells whether a line that gives a variable its value has the look of a Z-matrix row.
bool looks_like_row(std::string_view line) {
    Fields fields;
    cut_fields(without_comment(line), fields);
    if (fields.size() < 2 || line.find('=') != std::string_view::npos) {
        return false;
    }
    const bool refers_by_label = without_sign(fields[1]).find_first_not_of("0123456789.") == 0;
    return refers_by_label || (fields.size() >= 3 && species_of_name(fields[0]).kind != SpeciesKind::Unknown);
}

// Returns the link atom of an atom's line; absent when there is none.
std::optional<LinkAtom> link_atom_of(const CheckedJob& job, const MoleculeAtom& atom) {
    Fields fields;
    cut_fields(without_comment(job.line(atom.line)), fields);
    const std::optional<RowForm> row = job.job.geom.atoms.empty() ? find_row_form(fields) : std::nullopt;
    const std::ptrdiff_t before_layer = row ? static_cast<std::ptrdiff_t>(row->rest) : 4;
    const auto layer =
        std::find_if(fields.begin() + std::min(before_layer, std::ssize(fields)), fields.end(), [](std::string_view field) {
            const char letter = layer_letter(field);
            return letter != 0 && letter != '?';
        });
    if (layer == fields.end() || layer + 1 == fields.end()) {
        return std::nullopt;
    }
    LinkAtom link;
    link.label = *(layer + 1);
    if (layer + 2 != fields.end()) {
        link.host_text = *(layer + 2);
        link.host = to_int64(link.host_text);
    }
    return link;
}

}  // namespace

std::size_t line_at(const std::vector<std::size_t>& lines, std::size_t i) noexcept {
    return i < lines.size() ? lines[i] : 0;
}

std::vector<bool> lines_like_rows(const CheckedJob& job, const std::vector<ZMatrixVariable>& variables,
                                  const std::vector<std::size_t>& lines) {
    const NameSet used = variables.empty() ? NameSet() : names_in_use(job.job.geom);
    std::vector<bool> rows(variables.size());
    for (std::size_t i = 0; i < variables.size(); ++i) {
        rows[i] = used.count(to_lower_copy(variables[i].name)) == 0 && looks_like_row(job.line(line_at(lines, i)));
    }
    return rows;
}

bool has_unread_rows(const CheckedJob& job) {
    const auto any = [&](const std::vector<ZMatrixVariable>& variables, const std::vector<std::size_t>& lines) {
        const std::vector<bool> rows = lines_like_rows(job, variables, lines);
        return std::find(rows.begin(), rows.end(), true) != rows.end();
    };
    const GeomSection& geom = job.job.geom;
    return any(geom.variables, job.layout.variables) || any(geom.constants, job.layout.constants);
}

std::vector<MoleculeAtom> atoms_of(const CheckedJob& job) {
    const GeomSection& geom = job.job.geom;
    std::vector<AtomPosition> found = positions(job.job);
    std::vector<MoleculeAtom> atoms(found.size());
    for (std::size_t i = 0; i < atoms.size(); ++i) {
        static_cast<AtomPosition&>(atoms[i]) = std::move(found[i]);
        const bool is_row = i >= geom.atoms.size();
        atoms[i].info = is_row ? &geom.zmatrix_entries[i - geom.atoms.size()].info : &geom.atoms[i].info;
        atoms[i].line = is_row ? line_at(job.layout.zmatrix_rows, i - geom.atoms.size()) : line_at(job.layout.atoms, i);
        atoms[i].fragment = fragment_of(*atoms[i].info);
        if (is_row) {
            look_behind_row(job, atoms[i]);
            continue;
        }
        const std::optional<std::string>& layer = geom.atoms[i].layer;
        atoms[i].layer = layer ? layer_letter(*layer) : '\0';
        // Older counterpoise input has the fragment's number where the layer stands.
        if (!atoms[i].fragment && layer) {
            atoms[i].fragment = to_int64(*layer);
        }
    }
    return atoms;
}

LinkAtoms link_atoms_of(const CheckedJob& job, const std::vector<MoleculeAtom>& atoms) {
    LinkAtoms links;
    for (std::size_t i = 0; i < atoms.size(); ++i) {
        if (const std::optional<LinkAtom> link = atoms[i].layer == 0 ? std::nullopt : link_atom_of(job, atoms[i])) {
            links.emplace(i, *link);
        }
    }
    return links;
}

}  // namespace quor::input::gaussian

// Positions of atoms, from Cartesian coordinates with variables or along a Z-matrix; their layers and fragments.
#include <gjf/core/check/molecule_view.hpp>

#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/route/route_scanner.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <cmath>
#include <unordered_map>

namespace quor::input::gaussian {
namespace {

constexpr double bohr = 0.529177210903;  // in ångström

using Values = std::unordered_map<std::string, double>;

Values values_of(const GeomSection& geom) {
    Values values;
    Fields fields;
    for (const auto* list : {&geom.variables, &geom.constants, &geom.cartesian_variables}) {
        for (const ZMatrixVariable& variable : *list) {
            cut_fields(variable.value, fields);
            if (const std::optional<double> number = fields.empty() ? std::nullopt : to_number(fields[0])) {
                values[to_lower_copy(variable.name)] = *number;
            }
        }
    }
    return values;
}

std::optional<double> value_of(std::string_view text, const Values& values) {
    if (const std::optional<double> number = to_number(text)) {
        return number;
    }
    const auto found = values.find(to_lower_copy(without_sign(text)));
    if (found == values.end()) {
        return std::nullopt;
    }
    return text.front() == '-' ? -found->second : found->second;
}

std::optional<double> coordinate_of(const CoordinateValue& coordinate, double number, const Values& values) {
    return coordinate.text.empty() || coordinate.value ? std::optional<double>(number) : value_of(coordinate.text, values);
}

Position minus(const Position& a, const Position& b) noexcept { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }

Position cross(const Position& a, const Position& b) noexcept {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

// Scales a vector to length one; a null vector becomes the x axis.
Position unit(const Position& a) noexcept {
    const double length = std::hypot(a[0], a[1], a[2]);
    return length < 1e-10 ? Position{1, 0, 0} : Position{a[0] / length, a[1] / length, a[2] / length};
}

// Places an atom by a distance to `a`, an angle with `b` and a dihedral with `c`, both in radians.
Position place(const Position& a, const Position& b, const Position& c, double distance, double angle,
               double dihedral) noexcept {
    const Position along = unit(minus(b, a));
    Position normal = cross(minus(c, b), along);
    if (std::hypot(normal[0], normal[1], normal[2]) < 1e-8) {
        normal = cross(std::fabs(along[2]) < 0.9 ? Position{0, 0, 1} : Position{0, 1, 0}, along);
    }
    normal = unit(normal);
    const Position side = cross(along, normal);
    const double u = std::cos(angle);
    const double v = std::sin(angle) * std::cos(dihedral);
    const double w = std::sin(angle) * std::sin(dihedral);
    Position result;
    for (std::size_t i = 0; i < 3; ++i) {
        result[i] = a[i] + distance * (u * along[i] + v * side[i] + w * normal[i]);
    }
    return result;
}

// Tells whether a position can be compared with others: numbers that no molecule has would all fall into one place.
bool is_in_reach(const Position& position) noexcept {
    constexpr double furthest = 1e7;
    return std::all_of(position.begin(), position.end(), [](double x) { return std::fabs(x) < furthest; });
}

// A reference of a row that can be followed: the position it names, and its value.
struct Followed {
    Position position;
    double value;
};

std::optional<Followed> follow(const std::optional<ZMatrixReference>& reference, const std::vector<MoleculeAtom>& atoms,
                               const Values& values) {
    const auto row = reference ? static_cast<std::size_t>(reference->atom) - 1 : atoms.size();
    const std::optional<double> value = reference ? value_of(reference->value, values) : std::nullopt;
    if (row >= atoms.size() || !atoms[row].position || !value) {
        return std::nullopt;
    }
    return Followed{*atoms[row].position, *value};
}

std::optional<Position> position_of_row(const ZMatrixEntry& row, const std::vector<MoleculeAtom>& atoms,
                                        const Values& values, double unit_length) {
    constexpr double degree = 3.14159265358979323846 / 180;
    if (atoms.empty()) {
        return Position{0, 0, 0};
    }
    const std::optional<Followed> bond = follow(row.bond, atoms, values);
    if (!bond) {
        return std::nullopt;
    }
    const double distance = bond->value * unit_length;
    if (atoms.size() == 1) {
        return Position{bond->position[0], bond->position[1], bond->position[2] + distance};
    }
    const std::optional<Followed> angle = follow(row.angle, atoms, values);
    if (!angle) {
        return std::nullopt;
    }
    if (atoms.size() == 2) {
        return place(bond->position, angle->position, {angle->position[0] + 1, angle->position[1], angle->position[2]},
                     distance, angle->value * degree, 0);
    }
    const std::optional<Followed> dihedral = follow(row.dihedral, atoms, values);
    if (!dihedral) {
        return std::nullopt;
    }
    return place(bond->position, angle->position, dihedral->position, distance, angle->value * degree,
                 dihedral->value * degree);
}

// Tells whether a row ends in a code that makes its dihedral a second angle; its position is then not worked out.
bool has_second_angle(const CheckedJob& job, std::size_t line) {
    Fields fields;
    cut_fields(without_comment(job.line(line)), fields);
    return fields.size() == 8 && fields[7] != "0";
}

char layer_letter(const std::optional<std::string>& layer) noexcept {
    if (!layer || layer->empty()) {
        return 0;
    }
    for (const std::string_view name : {"h", "high", "m", "medium", "l", "low"}) {
        if (equals_folded(*layer, name)) {
            return name.front();
        }
    }
    return '?';
}

std::optional<std::int64_t> fragment_of(const AtomInfo& info) {
    for (const auto& entry : info.params) {
        if (equals_folded(entry.first, "fragment")) {
            return to_int64(entry.second).value_or(0);
        }
    }
    return std::nullopt;
}

void note_names(const std::string& text, NameSet& names) { names.insert(to_lower_copy(without_sign(trim_view(text)))); }

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

}  // namespace

std::size_t line_at(const std::vector<std::size_t>& lines, std::size_t i) noexcept {
    return i < lines.size() ? lines[i] : 0;
}

NameSet names_in_use(const GeomSection& geom) {
    NameSet names;
    for (const ZMatrixEntry& entry : geom.zmatrix_entries) {
        for (const auto* reference : {&entry.bond, &entry.angle, &entry.dihedral}) {
            if (*reference) {
                note_names((*reference)->value, names);
            }
        }
    }
    for (const AtomCoord& atom : geom.atoms) {
        for (const CoordinateValue* coordinate : {&atom.x_ref, &atom.y_ref, &atom.z_ref}) {
            if (!coordinate->value) {
                note_names(coordinate->text, names);
            }
        }
    }
    return names;
}

std::vector<bool> lines_like_rows(const CheckedJob& job, const std::vector<ZMatrixVariable>& variables,
                                  const std::vector<std::size_t>& lines) {
    const NameSet used = names_in_use(job.job.geom);
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
    const Values values = values_of(geom);
    const double length = uses_bohr(job) ? bohr : 1.0;
    std::vector<MoleculeAtom> atoms;
    atoms.reserve(geom.atom_count());
    for (const AtomCoord& atom : geom.atoms) {
        MoleculeAtom& seen = atoms.emplace_back();
        seen.info = &atom.info;
        seen.species = species_of(atom.info);
        seen.line = line_at(job.layout.atoms, atoms.size() - 1);
        const auto x = coordinate_of(atom.x_ref, atom.x, values);
        const auto y = coordinate_of(atom.y_ref, atom.y, values);
        const auto z = coordinate_of(atom.z_ref, atom.z, values);
        if (x && y && z) {
            seen.position = Position{*x * length, *y * length, *z * length};
        }
        if (seen.position && !is_in_reach(*seen.position)) {
            seen.position.reset();
        }
        seen.layer = layer_letter(atom.layer);
        seen.fragment = fragment_of(atom.info);
        // Older counterpoise input has the fragment's number where the layer stands.
        if (!seen.fragment && atom.layer) {
            seen.fragment = to_int64(*atom.layer);
        }
    }
    bool followed = true;
    for (const ZMatrixEntry& row : geom.zmatrix_entries) {
        MoleculeAtom seen;
        seen.info = &row.info;
        seen.species = species_of(row.info);
        seen.line = line_at(job.layout.zmatrix_rows, atoms.size());
        followed = followed && !has_second_angle(job, seen.line);
        seen.position = followed ? position_of_row(row, atoms, values, length) : std::nullopt;
        if (seen.position && !is_in_reach(*seen.position)) {
            seen.position.reset();
        }
        seen.fragment = fragment_of(row.info);
        atoms.push_back(seen);
    }
    return atoms;
}

bool uses_bohr(const CheckedJob& job) {
    const WrittenKeyword* units = job.find_keyword("units");
    return units != nullptr && std::any_of(units->options.begin(), units->options.end(), [](const WrittenOption& option) {
               return equals_folded(option.name, "au") || equals_folded(option.name, "bohr");
           });
}

std::vector<std::string> oniom_levels(const CheckedJob& job) {
    const std::string& text = job.route.oniom_expression;
    const int open = find_top_level_char(text, '(');
    const int close = open < 0 ? -1 : find_matching_paren(text, static_cast<std::size_t>(open));
    if (close < 0) {
        return {};
    }
    const std::string inner = text.substr(static_cast<std::size_t>(open) + 1, static_cast<std::size_t>(close - open) - 1);
    for (const std::string& item : split_top_level_list(inner, ',')) {
        std::vector<std::string> levels = split_top_level_list(item, ':');
        if (levels.size() > 1) {
            return levels;
        }
    }
    return {};
}

std::optional<LinkAtom> link_atom_of(const CheckedJob& job, const MoleculeAtom& atom) {
    Fields fields;
    cut_fields(without_comment(job.line(atom.line)), fields);
    const auto layer = std::find_if(fields.begin() + std::min<std::ptrdiff_t>(4, std::ssize(fields)), fields.end(),
                                    [](std::string_view field) {
                                        const char letter = layer_letter(std::string(field));
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

}  // namespace quor::input::gaussian

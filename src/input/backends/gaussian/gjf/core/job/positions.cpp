// Finds where atoms stand: names give way to their values, and Z-matrix rows are followed one after another.
#include <gjf/core/job/positions.hpp>

#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <map>
#include <string_view>
#include <utility>

namespace quor::input::gaussian {
namespace {

using Fields = std::vector<std::string_view>;

constexpr double pi = 3.14159265358979323846;
constexpr double nearly_nothing = 1e-8;  // sines and lengths below it have no direction

// A number, or the reason why there is none.
struct Resolved {
    double number = 0;
    PositionFault fault = PositionFault::None;
    std::string cause = {};
};

Fields fields_of(std::string_view line) {
    Fields fields;
    split_fields(line, FieldSeparators::WhiteSpaceAndComma, true, fields);
    return fields;
}

// The values of a job's names. Sorted, since a job chooses its names.
class Values {
   public:
    explicit Values(const GeomSection& geom) {
        for (const auto* list : {&geom.variables, &geom.constants, &geom.cartesian_variables}) {
            for (const ZMatrixVariable& variable : *list) {
                // A scan's number of steps and its step may stand behind the value.
                const Fields fields = fields_of(variable.value);
                values_[to_lower_copy(variable.name)] = fields.empty() ? std::string_view() : fields[0];
            }
        }
    }

    Resolved resolve(std::string_view text) const {
        double sign = 1;
        std::string_view name;
        text = trim_view(text);
        for (std::size_t steps = 0; steps <= values_.size(); ++steps) {
            if (const std::optional<double> number = to_fortran_number(text)) {
                return finite(sign * *number, text);
            }
            const bool has_sign = !text.empty() && (text.front() == '-' || text.front() == '+');
            sign = has_sign && text.front() == '-' ? -sign : sign;
            name = text.substr(has_sign ? 1 : 0);
            const auto found = values_.find(to_lower_copy(name));
            if (found == values_.end()) {
                return {0, PositionFault::NoValue, std::string(name)};
            }
            text = found->second;
        }
        return {0, PositionFault::SelfReference, std::string(name)};
    }

    static Resolved finite(double number, std::string_view text) {
        return std::isfinite(number) ? Resolved{number} : Resolved{0, PositionFault::NotFinite, std::string(text)};
    }

   private:
    std::map<std::string, std::string_view, std::less<>> values_;
};

Position scaled(const Position& a, double factor) noexcept { return {a[0] * factor, a[1] * factor, a[2] * factor}; }
Position plus(const Position& a, const Position& b) noexcept { return {a[0] + b[0], a[1] + b[1], a[2] + b[2]}; }
Position minus(const Position& a, const Position& b) noexcept { return plus(a, scaled(b, -1)); }
double length_of(const Position& a) noexcept { return std::hypot(a[0], a[1], a[2]); }
double dot(const Position& a, const Position& b) noexcept { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
Position cross(const Position& a, const Position& b) noexcept {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

// Returns the direction from one place to another; absent when they are one.
std::optional<Position> direction(const Position& from, const Position& to) noexcept {
    const Position way = minus(to, from);
    const double length = length_of(way);
    return length < nearly_nothing ? std::nullopt : std::optional<Position>(scaled(way, 1 / length));
}

// A direction, or the reason why there is none.
using Direction = std::pair<Position, PositionFault>;

// The direction from `a` that has an angle with `b` and a dihedral with `c`, in radians.
Direction by_dihedral(const Position& a, const Position& b, const Position& c, double angle, double dihedral) noexcept {
    const std::optional<Position> along = direction(a, b);
    if (!along) {
        return {{}, PositionFault::Collinear};
    }
    // Straight on or straight back, no dihedral matters.
    if (std::fabs(std::sin(angle)) < nearly_nothing) {
        return {scaled(*along, std::cos(angle)), PositionFault::None};
    }
    const std::optional<Position> onward = direction(b, c);
    const Position normal = onward ? cross(*onward, *along) : Position{};
    const double length = length_of(normal);
    if (length < nearly_nothing) {
        return {{}, PositionFault::Collinear};
    }
    const Position across = scaled(normal, 1 / length);
    const Position side = cross(*along, across);
    return {plus(scaled(*along, std::cos(angle)),
                 scaled(plus(scaled(side, std::cos(dihedral)), scaled(across, std::sin(dihedral))), std::sin(angle))),
            PositionFault::None};
}

// The direction from `a` that has one angle with `b` and another with `c`, on the side that `hand` tells: 1 where the three
// directions to `b`, `c` and the new atom are right-handed, -1 where they are left-handed.
Direction by_two_angles(const Position& a, const Position& b, const Position& c, double angle, double second,
                        double hand) noexcept {
    const std::optional<Position> u = direction(a, b);
    const std::optional<Position> v = direction(a, c);
    const Position across = u && v ? cross(*u, *v) : Position{};
    const double square = dot(across, across);
    if (square < nearly_nothing * nearly_nothing) {
        return {{}, PositionFault::Collinear};
    }
    const double between = dot(*u, *v);
    const double along_u = (std::cos(angle) - between * std::cos(second)) / square;
    const double along_v = (std::cos(second) - between * std::cos(angle)) / square;
    const double rest = 1 - along_u * std::cos(angle) - along_v * std::cos(second);
    if (rest < -1e-6) {
        return {{}, PositionFault::ImpossibleAngles};
    }
    const Position flat = plus(scaled(*u, along_u), scaled(*v, along_v));
    return {plus(flat, scaled(across, hand * std::sqrt(std::max(rest, 0.0) / square))), PositionFault::None};
}

// Tells how each row's dihedral field is meant: 0 for a dihedral, 1 or -1 for a second angle. The job model has no place for
// it, so it is read from the rows' lines.
std::vector<int> dihedral_codes(const GeomSection& geom) {
    std::vector<int> codes(geom.zmatrix_entries.size());
    std::size_t row = 0;
    for (const std::string& line : geom.molecule_lines) {
        const Fields fields = fields_of(without_comment(line));
        if (fields.empty()) {
            continue;
        }
        if (row == codes.size()) {
            break;
        }
        const std::optional<ZMatrixReference>& dihedral = geom.zmatrix_entries[row].dihedral;
        if (fields.size() >= 8 && dihedral && fields[6] == dihedral->value) {
            codes[row] = to_int32(fields[7]).value_or(0);
        }
        ++row;
    }
    return codes;
}

// Tells whether a row's field (1 and 2 behind the length) is an angle, not a dihedral.
bool is_angle(std::size_t field, int code) noexcept { return field == 1 || (field == 2 && (code == 1 || code == -1)); }

// How the route measures lengths and angles.
struct Units {
    double length = 1;
    double angle = pi / 180;
};

Units units_of(const GJFData& job) {
    Units units;
    if (!job.control.parsed_keywords) {
        return units;
    }
    for (const KeywordInfo& keyword : job.control.parsed_keywords->keywords) {
        const auto says = [&](std::initializer_list<const char*> options) {
            return std::any_of(options.begin(), options.end(),
                               [&](const char* name) { return keyword.options.count(name) > 0; });
        };
        if (keyword.name == "units") {
            units.length = says({"au", "bohr", "bohrs"}) ? bohr : units.length;
            units.angle = says({"rad", "radian", "radians"}) ? 1 : units.angle;
        }
    }
    return units;
}

class PositionFinder {
   public:
    explicit PositionFinder(const GJFData& job) : geom_(job.geom), values_(job.geom), units_(units_of(job)) {}

    std::vector<AtomPosition> find() {
        found_.reserve(geom_.atoms.size() + geom_.zmatrix_entries.size());
        for (const AtomCoord& atom : geom_.atoms) {
            begin(atom.info);
            place({coordinate(atom.x_ref, atom.x), coordinate(atom.y_ref, atom.y), coordinate(atom.z_ref, atom.z)});
        }
        const std::vector<int> codes = dihedral_codes(geom_);
        for (std::size_t row = 0; row < geom_.zmatrix_entries.size(); ++row) {
            begin(geom_.zmatrix_entries[row].info);
            follow(row, codes[row]);
        }
        return std::move(found_);
    }

   private:
    void begin(const AtomInfo& info) { found_.emplace_back().species = species_of(info); }

    void refuse(PositionFault fault, std::string cause = {}) {
        found_.back().fault = fault;
        found_.back().cause = std::move(cause);
    }

    // Takes a position, unless it is one that no molecule has.
    void put(const Position& position) {
        constexpr double farthest = 1e7;
        if (std::all_of(position.begin(), position.end(), [](double x) { return std::fabs(x) < farthest; })) {
            found_.back().position = position;
        } else {
            refuse(PositionFault::NotFinite);
        }
    }

    Resolved coordinate(const CoordinateValue& written, double number) const {
        return written.text.empty() || written.value ? Values::finite(number, written.text) : values_.resolve(written.text);
    }

    void place(const std::array<Resolved, 3>& coordinates) {
        for (const Resolved& resolved : coordinates) {
            if (resolved.fault != PositionFault::None) {
                return refuse(resolved.fault, resolved.cause);
            }
        }
        put(scaled({coordinates[0].number, coordinates[1].number, coordinates[2].number}, units_.length));
    }

    using References = std::array<const ZMatrixReference*, 3>;

    // What a row hangs on: the places of the atoms that it refers to, and the values of its fields.
    struct Hold {
        std::array<Position, 3> at{};
        std::array<double, 3> value{};
    };

    void follow(std::size_t row, int code) {
        const ZMatrixEntry& entry = geom_.zmatrix_entries[row];
        const auto at = [](const std::optional<ZMatrixReference>& reference) { return reference ? &*reference : nullptr; };
        const References references = {at(entry.bond), at(entry.angle), at(entry.dihedral)};
        if (is_cartesian(entry)) {
            return place({values_.resolve(entry.bond->value), values_.resolve(entry.angle->value),
                          values_.resolve(entry.dihedral->value)});
        }
        if (references[0] != nullptr && references[0]->atom == 0 && references[1] != nullptr) {
            // As the class interface reads coordinates of which y is a whole number.
            const Resolved y{static_cast<double>(references[1]->atom)};
            return place({values_.resolve(references[0]->value), y, values_.resolve(references[1]->value)});
        }
        Hold hold;
        const std::size_t needed = std::min<std::size_t>(row, 3);
        for (std::size_t i = 0; i < needed; ++i) {
            if (!take(row, references, i, code, hold)) {
                return;
            }
        }
        put_row(row, hold, code);
    }

    // Takes one reference of a row; returns false, with the reason noted, when it cannot be followed.
    bool take(std::size_t row, const References& references, std::size_t i, int code, Hold& hold) {
        const ZMatrixReference* reference = references[i];
        if (reference == nullptr) {
            refuse(PositionFault::MissingField);
            return false;
        }
        const auto atom = static_cast<std::size_t>(reference->atom) - 1;
        const bool is_above = reference->atom >= 1 && atom < row;
        const bool is_repeated = std::any_of(references.begin(), references.begin() + static_cast<std::ptrdiff_t>(i),
                                             [&](const ZMatrixReference* other) { return other->atom == reference->atom; });
        const Resolved resolved = values_.resolve(reference->value);
        if (!is_above || is_repeated) {
            refuse(is_above ? PositionFault::RepeatedRow : PositionFault::LaterRow, std::to_string(reference->atom));
        } else if (resolved.fault != PositionFault::None) {
            refuse(resolved.fault, resolved.cause);
        } else if (is_angle(i, code) &&
                   (resolved.number * units_.angle < -1e-9 || resolved.number * units_.angle > pi + 1e-9)) {
            refuse(PositionFault::AngleRange, reference->value);
        } else if (!found_[atom].position) {
            refuse(PositionFault::LostReference, std::to_string(reference->atom));
        } else {
            hold.at[i] = *found_[atom].position;
            hold.value[i] = resolved.number * (i == 0 ? units_.length : units_.angle);
            return true;
        }
        return false;
    }

    void put_row(std::size_t row, const Hold& hold, int code) {
        const auto& [at, value] = hold;
        Direction way{{0, 0, 1}, PositionFault::None};
        if (row == 2) {
            way = by_dihedral(at[0], at[1], plus(at[1], {1, 0, 0}), value[1], 0);
        } else if (row > 2) {
            way = is_angle(2, code) ? by_two_angles(at[0], at[1], at[2], value[1], value[2], code)
                                    : by_dihedral(at[0], at[1], at[2], value[1], value[2]);
        }
        if (way.second != PositionFault::None) {
            return refuse(way.second);
        }
        put(plus(at[0], scaled(way.first, value[0])));
    }

    const GeomSection& geom_;
    Values values_;
    Units units_;
    std::vector<AtomPosition> found_;
};

}  // namespace

std::string position_fault_text(const AtomPosition& atom, std::size_t number) {
    constexpr const char* texts[] = {"",
                                     " has no value",
                                     " refers to itself",
                                     " is no number that a molecule has",
                                     " lacks a length, an angle or a dihedral",
                                     " refers to a row that is not above it",
                                     " refers to a row twice",
                                     " has an angle outside 0 to 180 degrees",
                                     " refers to an atom without position",
                                     " has a dihedral with atoms in one line",
                                     " has two angles that no direction makes"};
    if (atom.fault == PositionFault::None) {
        return {};
    }
    const bool is_about_value = atom.fault <= PositionFault::NotFinite && !atom.cause.empty();
    return (is_about_value ? atom.cause : "atom " + std::to_string(number)) + texts[static_cast<std::size_t>(atom.fault)];
}

std::vector<AtomPosition> positions(const GJFData& job) { return PositionFinder(job).find(); }

double length_unit(const GJFData& job) { return units_of(job).length; }

}  // namespace quor::input::gaussian

// Measures lengths, angles and dihedrals, and writes them where the Z-matrix has them.
//
// What a row measures is tried on the old positions first: a row that means something else by its numbers, as a second
// angle, is seen by that its old value does not come out.
#include <gjf/core/next/zmatrix_values.hpp>

#include <gjf/core/chemistry/space.hpp>
#include <gjf/core/job/positions.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <map>
#include <numbers>
#include <optional>
#include <stdexcept>

namespace quor::input::gaussian {
namespace {

constexpr double same_value = 2e-4;
constexpr const char* way_out = "; --cartesian writes Cartesian coordinates in its place";

[[noreturn]] void refuse(const std::string& why) {
    throw std::runtime_error("the Z-matrix cannot take it: " + why + way_out);
}

Position difference(const Position& a, const Position& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }
double product(const Position& a, const Position& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }
Position cross_product(const Position& a, const Position& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
double degrees(double radians) { return radians * 180 / std::numbers::pi; }

double angle_between(const Position& a, const Position& b) {
    const Position normal = cross_product(a, b);
    return degrees(std::atan2(std::sqrt(product(normal, normal)), product(a, b)));
}

double dihedral(const Position& a, const Position& b, const Position& c, const Position& d) {
    const Position first = difference(b, a);
    const Position axis = difference(c, b);
    const Position last = difference(d, c);
    const Position left = cross_product(first, axis);
    const Position right = cross_product(axis, last);
    return degrees(std::atan2(std::sqrt(product(axis, axis)) * product(first, right), product(left, right)));
}

using Positions = std::vector<Position>;

// What the value of a row is at some positions: 0 the length, 1 the angle, 2 the dihedral; lengths in the job's unit.
double measured(const ZMatrixEntry& row, std::size_t at, std::size_t what, const Positions& positions, double unit) {
    const auto place = [&](const std::optional<ZMatrixReference>& reference) -> const Position& {
        return positions.at(static_cast<std::size_t>(reference->atom) - 1);
    };
    const Position& own = positions[at];
    if (what == 0) {
        const Position bond = difference(own, place(row.bond));
        return std::sqrt(product(bond, bond)) / unit;
    }
    if (what == 1) {
        return angle_between(difference(own, place(row.bond)), difference(place(row.angle), place(row.bond)));
    }
    return dihedral(own, place(row.bond), place(row.angle), place(row.dihedral));
}

double apart(double a, double b, std::size_t what) {
    const double distance = std::abs(a - b);
    return what == 2 ? std::min(std::fmod(distance, 360.0), 360.0 - std::fmod(distance, 360.0)) : distance;
}

std::optional<double> number_of_text(std::string_view text) {
    text.remove_prefix(text.starts_with('+') ? 1 : 0);
    double number = 0;
    const auto [end, error] = read_number(text, number, std::chars_format::general);
    return error == std::errc() && end == text.data() + text.size() ? std::optional<double>(number) : std::nullopt;
}

// Writes the values of rows, and remembers those of variables.
class ValueWriter {
   public:
    ValueWriter(const std::string& text, const JobReading& reading) : text_(text) {
        note_variables(reading.job.geom.variables, reading.places.variables);
        note_variables(reading.job.geom.constants, reading.places.constants);
    }

    void take(Span field, double before, double after, std::size_t what) {
        const std::string written(field.in(text_));
        const std::optional<double> number = number_of_text(written);
        if (number) {
            check_old(*number, before, what, written);
            add_edit(field, apart(*number, after, what) > 1e-7 ? decimals(after) : written);
            return;
        }
        const bool is_negative = written.starts_with('-');
        const std::string name = to_lower_copy(written.substr(is_negative || written.starts_with('+') ? 1 : 0));
        const auto found = variables_.find(name);
        if (found == variables_.end() || !found->second.old) {
            refuse("'" + written + "' has no single number");
        }
        Variable& variable = found->second;
        const double sign = is_negative ? -1 : 1;
        check_old(sign * *variable.old, before, what, written);
        if (variable.value && apart(*variable.value, sign * after, what) > same_value) {
            refuse("the variable " + name + " would have the values " + decimals(*variable.value) + " and " +
                   decimals(sign * after));
        }
        if (!variable.value) {
            variable.value = sign * after;
            add_edit(variable.place, apart(*variable.old, sign * after, what) > 1e-7
                                         ? decimals(sign * after)
                                         : std::string(variable.place.in(text_)));
        }
    }

    std::string result() {
        std::sort(edits_.begin(), edits_.end(), [](const TextEdit& a, const TextEdit& b) { return a.begin < b.begin; });
        return with_edits(text_, edits_);
    }

   private:
    struct Variable {
        Span place;
        std::optional<double> old;
        std::optional<double> value;
    };

    void note_variables(const std::vector<ZMatrixVariable>& list, const std::vector<std::uint32_t>& lines) {
        for (std::size_t i = 0; i < list.size() && i < lines.size(); ++i) {
            const Span value = zmatrix_variable_fields(text_, lines[i]).value;
            variables_[to_lower_copy(list[i].name)] = {value, number_of_text(value.in(text_)), std::nullopt};
        }
    }

    static void check_old(double written, double measured_before, std::size_t what, const std::string& name) {
        if (apart(written, measured_before, what) > same_value) {
            refuse("'" + name + "' is no plain length, angle or dihedral");
        }
    }

    static std::string decimals(double value) {
        char text[48];
        std::snprintf(text, sizeof text, "%.7f", value);
        return text;
    }

    void add_edit(Span place, std::string value) { edits_.push_back({place.begin, place.end(), std::move(value)}); }

    const std::string& text_;
    std::map<std::string, Variable> variables_;
    std::vector<TextEdit> edits_;
};

Positions old_positions(const GJFData& job) {
    Positions result;
    for (const AtomPosition& atom : positions(job)) {
        if (!atom.position) {
            refuse("the old positions are not known");
        }
        result.push_back(*atom.position);
    }
    return result;
}

}  // namespace

std::string with_zmatrix_values(const std::string& text, const JobReading& reading,
                                const std::vector<const OutputAtom*>& places) {
    const std::vector<ZMatrixEntry>& rows = reading.job.geom.zmatrix_entries;
    const Positions before = old_positions(reading.job);
    Positions after;
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (places[i] == nullptr) {
            refuse("the output does not tell where the dummy atom " + std::to_string(i + 1) + " is");
        }
        after.push_back(places[i]->position);
    }
    const double unit = length_unit(reading.job);
    ValueWriter writer(text, reading);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].bond && is_cartesian(rows[i])) {
            refuse("row " + std::to_string(i + 1) + " gives coordinates");
        }
        const RowFields fields = row_fields(text, reading.places.zmatrix_rows[i]);
        const std::optional<ZMatrixReference>* const references[] = {&rows[i].bond, &rows[i].angle, &rows[i].dihedral};
        for (std::size_t what = 0; what < 3 && references[what]->has_value(); ++what) {
            writer.take(fields.references[what].value, measured(rows[i], i, what, before, unit),
                        measured(rows[i], i, what, after, unit), what);
        }
    }
    return writer.result();
}

}  // namespace quor::input::gaussian

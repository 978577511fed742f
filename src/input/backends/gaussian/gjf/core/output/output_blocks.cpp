// Reads the blocks of a step: coordinates, the table of convergence, vibrations, counts, and steps of an optimization.
//
// A block ends at the first line that has not its form; that line is then looked at as any other.
#include <gjf/core/output/output_scanner.hpp>

#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace quor::input::gaussian {
namespace {

// Walks the fields of a line.
class Fields {
   public:
    explicit Fields(std::string_view line) : rest_(line) {}
    std::string_view next() {
        std::size_t begin = 0;
        while (begin < rest_.size() && rest_[begin] == ' ') {
            ++begin;
        }
        std::size_t end = begin;
        while (end < rest_.size() && rest_[end] != ' ') {
            ++end;
        }
        const std::string_view field = rest_.substr(begin, end - begin);
        rest_.remove_prefix(end);
        return field;
    }
    bool take(int& value) {
        const std::optional<std::int32_t> number = to_int32(next());
        value = number.value_or(0);
        return number.has_value();
    }
    bool take(double& value) {
        const std::string_view field = next();
        const PlainDecimal number = leading_plain_decimal(field);
        value = number.value;
        return number.length > 0 && number.length == field.size();
    }

   private:
    std::string_view rest_;
};

bool read_atom(std::string_view line, OutputAtom& atom) {
    Fields fields(line);
    int center = 0;
    int type = 0;
    return fields.take(center) && fields.take(atom.number) && fields.take(type) && fields.take(atom.position[0]) &&
           fields.take(atom.position[1]) && fields.take(atom.position[2]) && fields.next().empty();
}

bool is_dashes(std::string_view line) {
    const std::string_view text = trim_view(line);
    return text.size() >= 10 && text.find_first_not_of('-') == std::string_view::npos;
}

// The number behind a word of a line; 0 for none.
int number_behind(std::string_view line, std::string_view word) {
    const std::size_t found = line.find(word);
    return found == std::string_view::npos ? 0 : leading_int32(trim_view(line.substr(found + word.size()))).value_or(0);
}

// "   1   6     0.08  -0.07   0.07     0.07 ...": an atom and three numbers for each vibration.
bool read_displacements(std::string_view line, OutputModes& modes) {
    Fields fields(line);
    int atom = 0;
    int number = 0;
    std::vector<std::array<double, 3>> row(modes.frequencies.size());
    if (!fields.take(atom) || !fields.take(number)) {
        return false;
    }
    for (std::array<double, 3>& one : row) {
        if (!fields.take(one[0]) || !fields.take(one[1]) || !fields.take(one[2])) {
            return false;
        }
    }
    modes.atoms.push_back(atom);
    for (std::size_t i = 0; i < row.size(); ++i) {
        modes.displacements[i].push_back(row[i]);
    }
    return fields.next().empty();
}

// "   1     1     6          0.00000   0.00000 ...": a direction, an atom and a number for each vibration.
bool read_precise_displacements(std::string_view line, OutputModes& modes) {
    Fields fields(line);
    int direction = 0;
    int atom = 0;
    int number = 0;
    if (!fields.take(direction) || !fields.take(atom) || !fields.take(number) || direction < 1 || direction > 3) {
        return false;
    }
    std::vector<double> row(modes.frequencies.size());
    for (double& one : row) {
        if (!fields.take(one)) {
            return false;
        }
    }
    if (modes.atoms.empty() || modes.atoms.back() != atom) {
        modes.atoms.push_back(atom);
    }
    for (std::size_t i = 0; i < row.size(); ++i) {
        modes.displacements[i].resize(modes.atoms.size());
        modes.displacements[i].back()[static_cast<std::size_t>(direction - 1)] = row[i];
    }
    return fields.next().empty();
}

}  // namespace

void OutputScanner::take_geometry(OutputFrame frame) {
    OutputGeometry geometry;
    geometry.line = lines_.number();
    geometry.frame = frame;
    ensure_step();
    heading_ = Heading::Done;
    std::size_t rules = 0;
    std::size_t heads = 0;
    OutputAtom atom;
    while (next()) {
        const std::string_view line = lines_.line();
        if (rules < 2 && (is_dashes(line) ? ++rules : ++heads) < 4) {
            continue;  // two rows of dashes with the two lines of names between them
        }
        if (!read_atom(line, atom)) {
            is_taken_ = is_dashes(line);
            break;
        }
        geometry.atoms.push_back(atom);
    }
    // A table without its last rule was cut off.
    if (rules == 2 && is_taken_ && is_dashes(lines_.line()) && !geometry.atoms.empty()) {
        visitor_.on_geometry(geometry);
    }
}

void OutputScanner::take_input_orientation(std::string_view /*line*/) { take_geometry(OutputFrame::Input); }

void OutputScanner::take_standard_orientation(std::string_view /*line*/) { take_geometry(OutputFrame::Standard); }

void OutputScanner::take_zmatrix_orientation(std::string_view /*line*/) { take_geometry(OutputFrame::ZMatrix); }

void OutputScanner::take_convergence(std::string_view /*line*/) {
    constexpr std::pair<std::string_view, double OutputConvergence::*> items[] = {
        {"Maximum Force ", &OutputConvergence::max_force},
        {"RMS     Force ", &OutputConvergence::rms_force},
        {"Maximum Displacement ", &OutputConvergence::max_displacement},
        {"RMS     Displacement ", &OutputConvergence::rms_displacement},
    };
    OutputConvergence table;
    table.line = lines_.number();
    table.converged = true;
    std::size_t count = 0;
    for (const auto& [begin, member] : items) {
        if (!next()) {
            break;
        }
        const std::string_view line = trim_view(lines_.line());
        if (!line.starts_with(begin)) {
            is_taken_ = false;
            break;
        }
        Fields fields(line.substr(begin.size()));
        if (!fields.take(table.*member) || !lines_.is_whole()) {
            break;
        }
        ++count;
        table.converged = table.converged && line.ends_with("YES");
    }
    if (count == std::size(items)) {
        ensure_step();
        visitor_.on_convergence(table);
    }
}

void OutputScanner::take_displacements(OutputModes& modes) {
    const std::string_view heading = modes.is_precise ? "Coord Atom Element:" : "Atom  AN";
    modes.displacements.resize(modes.frequencies.size());
    bool is_in_table = false;
    while (next()) {
        const std::string_view line = trim_view(lines_.line());
        if (!is_in_table) {
            is_in_table = line.starts_with(heading);
            // What stands between frequencies and rows: masses, intensities and the like, each "NAME -- NUMBERS".
            if (is_in_table || (line.find("--") != std::string_view::npos && !line.starts_with("Frequencies"))) {
                continue;
            }
            is_taken_ = false;
            return;
        }
        if (!(modes.is_precise ? read_precise_displacements(line, modes) : read_displacements(line, modes))) {
            is_taken_ = false;
            return;
        }
    }
}

// "Frequencies --  1415.5540  1418.9580", with three dashes and five columns before the table with five decimals.
void OutputScanner::take_modes(std::string_view line) {
    OutputModes modes;
    modes.line = lines_.number();
    modes.is_precise = line.starts_with("Frequencies ---");
    Fields fields(line.substr(line.find("--")));
    fields.next();
    for (double value = 0; fields.take(value);) {
        modes.frequencies.push_back(value);
    }
    if (modes.frequencies.empty() || !lines_.is_whole()) {
        return;
    }
    ensure_step();
    take_displacements(modes);
    visitor_.on_modes(modes);
}

// "Charge =  0 Multiplicity = 1 in supermolecule"
void OutputScanner::take_charge(std::string_view line) {
    constexpr std::string_view word = "Multiplicity";
    const std::size_t second = line.find(word);
    const std::size_t equals = line.find('=');
    if (second == std::string_view::npos || equals > second) {
        return;
    }
    OutputCharge charge;
    charge.line = lines_.number();
    const std::string_view first_value = trim_view(line.substr(equals + 1, second - equals - 1));
    std::string_view rest = trim_view(line.substr(second + word.size()));
    rest = trim_view(rest.substr(rest.starts_with('=') ? 1 : 0));
    const std::string_view second_value = rest.substr(0, rest.find(' '));
    if (!is_integer_text(first_value) || !is_integer_text(second_value)) {
        return;
    }
    charge.charge = to_int32(first_value).value_or(0);
    charge.multiplicity = to_int32(second_value).value_or(0);
    charge.of = trim_view(rest.substr(second_value.size()));
    ensure_step();
    heading_ = Heading::Done;
    visitor_.on_charge(charge);
}

// "123 basis functions,  200 primitive gaussians, ..." and "21 alpha electrons  21 beta electrons".
void OutputScanner::take_counts(std::string_view line) {
    Fields fields(line);
    int first = 0;
    int second = 0;
    const std::string_view number = fields.next();
    const std::string_view word = fields.next();
    if (word == "basis" && fields.next() == "functions,") {
        first = to_int32(number).value_or(0);
        ensure_step();
        visitor_.on_basis_functions(lines_.number(), first);
    } else if (word == "alpha" && fields.next() == "electrons" && fields.take(second)) {
        first = to_int32(number).value_or(0);
        ensure_step();
        visitor_.on_electrons(lines_.number(), first, second);
    }
}

// "Step number   4 out of a maximum of   50 on scan point     2 out of    13"
void OutputScanner::take_step_number(std::string_view line) {
    OptimizationStep step;
    step.line = lines_.number();
    step.step = number_behind(line, "Step number");
    step.max_steps = number_behind(line, "a maximum of");
    step.scan_point = number_behind(line, "on scan point");
    if (step.scan_point > 0) {
        step.scan_points = number_behind(line.substr(line.find("on scan point")), "out of");
    }
    ensure_step();
    visitor_.on_optimization_step(step);
}

void OutputScanner::take_optimization_end(std::string_view line) {
    constexpr std::pair<std::string_view, OptimizationEnd> ends[] = {
        {"Optimization completed", OptimizationEnd::Completed},
        {"Optimization stopped", OptimizationEnd::Stopped},
        {"Optimization aborted", OptimizationEnd::Aborted},
    };
    for (const auto& [begin, end] : ends) {
        if (line.starts_with(begin)) {
            ensure_step();
            visitor_.on_optimization_end(lines_.number(), end);
        }
    }
}

// "Point Number:   1          Path Number:   1"
void OutputScanner::take_path_point(std::string_view line) {
    PathPoint point;
    point.line = lines_.number();
    point.point = number_behind(line, "Point Number:");
    point.path = number_behind(line, "Path Number:");
    if (point.path > 0) {
        ensure_step();
        visitor_.on_path_point(point);
    }
}

}  // namespace quor::input::gaussian

// Reads formatted checkpoints: headings in fixed columns, each with a value or with the lines of an array behind it.
//
// Arrays that nobody asks for are passed over, whatever their size. Those of the steps of an optimization are among them: in
// a checkpoint that was used again they may be left over from an older job. An exponent of three digits has lost its E.
#include <gjf/core/output/formatted_checkpoint.hpp>

#include <gjf/core/chemistry/elements.hpp>
#include <gjf/core/chemistry/space.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace quor::input::gaussian {
namespace {

constexpr std::size_t label_width = 40;
constexpr std::size_t type_column = 43;
constexpr std::size_t value_column = 49;

struct FchkHeading {
    std::string_view label;
    char type = ' ';
    bool is_array = false;
    std::string_view value;  ///< for an array how many follow
};

// "Charge                                     I                0", "Atomic numbers          I   N=           4".
std::optional<FchkHeading> heading_in(std::string_view line) {
    constexpr std::string_view types = "IRCHL";
    if (line.size() <= value_column || line.front() == ' ' || types.find(line[type_column]) == std::string_view::npos ||
        !trim_view(line.substr(label_width, type_column - label_width)).empty() || line[type_column + 1] != ' ') {
        return std::nullopt;
    }
    FchkHeading heading{trim_view(line.substr(0, label_width)), line[type_column], false, {}};
    std::string_view rest = line.substr(type_column + 1);
    const std::size_t count = rest.find("N=");
    heading.is_array = count != std::string_view::npos && trim_view(rest.substr(0, count)).empty();
    rest.remove_prefix(heading.is_array ? count + 2 : 0);
    heading.value = trim_view(rest);
    return heading;
}

// What is read of all that stands there.
constexpr std::string_view wanted_integers[] = {"Charge",
                                                "Multiplicity",
                                                "Number of alpha electrons",
                                                "Number of beta electrons",
                                                "Number of basis functions",
                                                "Number of Normal Modes",
                                                "Job Status"};
constexpr std::string_view wanted_texts[] = {"Full Title", "Route", "Gaussian Version"};
constexpr std::string_view wanted_arrays[] = {"Atomic numbers", "Nuclear charges", "Current cartesian coordinates", "Vib-E2",
                                              "Vib-Modes"};

template <std::size_t count>
bool is_wanted(const std::string_view (&labels)[count], std::string_view label) {
    return std::find(std::begin(labels), std::end(labels), label) != std::end(labels);
}

template <class Value>
struct FchkEntry {
    std::size_t line = 0;  ///< of its heading; 0 where it was not met
    Value value = Value();
};

template <class Value>
using FchkEntries = std::map<std::string, FchkEntry<Value>, std::less<>>;

template <class Value>
FchkEntry<Value> entry_of(const FchkEntries<Value>& entries, std::string_view label) {
    const auto found = entries.find(label);
    return found == entries.end() ? FchkEntry<Value>() : found->second;
}

// "1.00000000-100" stands for 1E-100.
std::optional<double> fchk_number(std::string_view text) {
    std::optional<double> number = to_fortran_number(text);
    const std::size_t sign = text.find_last_of("+-");
    if (!number && sign != std::string_view::npos && sign > 0) {
        number = to_number(std::string(text.substr(0, sign)) + "E" + std::string(text.substr(sign)));
    }
    return number && std::isfinite(*number) ? number : std::nullopt;
}

class CheckpointReader {
   public:
    CheckpointReader(OutputLines& lines, OutputVisitor& visitor) : lines_(lines), visitor_(visitor) {}

    void run() {
        read_head();
        while (is_held_ || next()) {
            is_held_ = false;
            if (const std::optional<FchkHeading> heading = heading_in(lines_.line())) {
                read_entry(*heading);
            }
        }
        facts_.is_whole = facts_.is_whole && lines_.is_whole();
        tell();
    }

   private:
    bool next() {
        if (!lines_.next()) {
            return false;
        }
        visitor_.on_line(lines_.number(), lines_.line());
        return true;
    }

    [[noreturn]] static void refuse(std::string_view label, std::size_t line, const std::string& what) {
        throw OutputError("formatted checkpoint: '" + std::string(label) + "' (line " + std::to_string(line) + ") " + what);
    }

    void read_head() {
        constexpr std::size_t kind_width = 10;
        constexpr std::size_t method_width = 30;
        next();
        title_ = trim_view(lines_.line());
        next();
        const std::string_view line = lines_.line();
        facts_.kind = trim_view(line.substr(0, kind_width));
        facts_.method = line.size() > kind_width ? trim_view(line.substr(kind_width, method_width)) : std::string_view();
        facts_.basis =
            line.size() > kind_width + method_width ? trim_view(line.substr(kind_width + method_width)) : std::string_view();
    }

    void read_entry(const FchkHeading& heading) {
        const std::size_t line = lines_.number();
        const std::string label(heading.label);
        if (!lines_.is_whole()) {
            return;  // its value may be cut off
        }
        if (!heading.is_array) {
            read_value(heading, label, line);
            return;
        }
        const std::optional<std::int64_t> count = to_int64(heading.value);
        if (!count || *count < 0) {
            refuse(label, line, "does not say how many values it has");
        }
        facts_.has_force_constants = facts_.has_force_constants || label == "Cartesian Force Constants";
        if (heading.type == 'C' || heading.type == 'H') {
            read_text(label, line, static_cast<std::uint64_t>(*count), heading.type == 'H');
        } else {
            read_numbers(label, line, static_cast<std::uint64_t>(*count), heading.type);
        }
    }

    void read_value(const FchkHeading& heading, const std::string& label, std::size_t line) {
        if (is_wanted(wanted_integers, label)) {
            const std::optional<int> value = to_int32(heading.value);
            if (!value) {
                refuse(label, line, "is no integer");
            }
            integers_[label] = {line, *value};
        }
        if (heading.type == 'R' && label.ends_with(" Energy")) {
            if (const std::optional<double> energy = fchk_number(heading.value)) {
                energies_[label] = {line, *energy};
            }
        }
    }

    // Five pieces of twelve letters a line, or nine of eight; blanks at the end of a line may be gone.
    void read_text(const std::string& label, std::size_t line, std::uint64_t count, bool is_narrow) {
        const std::uint64_t a_line = is_narrow ? 9 : 5;
        const std::size_t width = is_narrow ? 72 : 60;
        std::string* const text = is_wanted(wanted_texts, label) ? &texts_[label].value : nullptr;
        for (std::uint64_t left = count; left > 0; left -= std::min(left, a_line)) {
            if (!next()) {
                facts_.is_whole = false;
                return;
            }
            if (text != nullptr) {
                *text += lines_.line();
                text->append(width - std::min(width, lines_.line().size()), ' ');
            }
        }
        if (text != nullptr) {
            *text = std::string(trim_view(*text));
            texts_[label].line = line;
        }
    }

    void read_numbers(const std::string& label, std::size_t line, std::uint64_t count, char type) {
        const std::uint64_t a_line = type == 'I' ? 6 : type == 'R' ? 5 : 72;
        std::uint64_t left = count / a_line + (count % a_line > 0 ? 1 : 0);
        std::vector<double>* values = nullptr;
        if (is_wanted(wanted_arrays, label)) {
            arrays_[label] = {line, {}};
            values = &arrays_[label].value;
        }
        while (next()) {
            if (!lines_.line().empty() && lines_.line().front() != ' ') {
                is_held_ = true;
                break;
            }
            left -= left > 0 ? 1 : 0;
            if (values != nullptr && lines_.is_whole()) {
                append_numbers(*values, label, line);
            }
        }
        facts_.is_whole = facts_.is_whole && (left == 0 || is_held_);
        if (values != nullptr && values->size() != count) {
            refuse(label, line, "has " + std::to_string(values->size()) + " of " + std::to_string(count) + " values");
        }
    }

    void append_numbers(std::vector<double>& values, const std::string& label, std::size_t line) {
        std::vector<std::string_view> fields;
        split_fields(lines_.line(), FieldSeparators::WhiteSpace, true, fields);
        for (const std::string_view field : fields) {
            const std::optional<double> number = fchk_number(field);
            if (!number) {
                refuse(label, line, "holds what is no number: line " + std::to_string(lines_.number()));
            }
            values.push_back(*number);
        }
    }

    OutputGeometry geometry() const {
        const auto numbers = entry_of(arrays_, "Atomic numbers");
        const auto charges = entry_of(arrays_, "Nuclear charges");
        const auto places = entry_of(arrays_, "Current cartesian coordinates");
        if (numbers.line == 0 || places.line == 0) {
            throw OutputError("formatted checkpoint: it ends before the coordinates of the atoms");
        }
        if (places.value.size() != 3 * numbers.value.size()) {
            refuse("Current cartesian coordinates", places.line, "does not have three values for each atom");
        }
        OutputGeometry geometry;
        geometry.line = places.line;
        geometry.frame = OutputFrame::Standard;
        for (std::size_t i = 0; i < numbers.value.size(); ++i) {
            const double number = numbers.value[i];
            if (number < -2 || number > 118 || number != std::floor(number)) {
                refuse("Atomic numbers", numbers.line, "holds what is no atomic number");
            }
            const bool is_ghost = number > 0 && i < charges.value.size() && charges.value[i] == 0;
            geometry.atoms.push_back(
                {is_ghost ? 0 : static_cast<int>(number),
                 {places.value[3 * i] * bohr, places.value[3 * i + 1] * bohr, places.value[3 * i + 2] * bohr}});
        }
        return geometry;
    }

    // Of the energies that are told apart by name the total is one: the last that equals it names it.
    void tell_energy() const {
        constexpr std::pair<const char*, EnergyKind> names[] = {
            {"SCF Energy", EnergyKind::SCF},      {"MP2 Energy", EnergyKind::MP2},
            {"MP3 Energy", EnergyKind::MP3},      {"MP4 Energy", EnergyKind::MP4},
            {"Cluster Energy", EnergyKind::CCSD}, {"Cluster Energy with triples", EnergyKind::CCSD_T},
            {"CIS Energy", EnergyKind::TD},
        };
        // What old files have alone: as in "UCCSD(T)-FC".
        constexpr std::pair<const char*, EnergyKind> methods[] = {
            {"mp2", EnergyKind::MP2},  {"mp3", EnergyKind::MP3},     {"mp4", EnergyKind::MP4},
            {"ccd", EnergyKind::CCSD}, {"ccsd", EnergyKind::CCSD},   {"ccsd(t)", EnergyKind::CCSD_T},
            {"cis", EnergyKind::TD},   {"qcisd", EnergyKind::QCISD}, {"qcisd(t)", EnergyKind::QCISD_T},
        };
        const FchkEntry<double> total = entry_of(energies_, "Total Energy");
        if (total.line == 0) {
            return;
        }
        OutputEnergy energy{total.line, EnergyKind::SCF, total.value, true};
        for (const auto& [name, kind] : methods) {
            energy.kind = contains_folded(facts_.method, name) ? kind : energy.kind;
        }
        for (const auto& [name, kind] : names) {
            const FchkEntry<double> part = entry_of(energies_, name);
            energy.kind = part.line > 0 && part.value == energy.value ? kind : energy.kind;
        }
        visitor_.on_energy(energy);
    }

    // Only of the job that the file is of: others may be left over.
    void tell_modes(std::size_t atoms) const {
        const auto numbers = entry_of(arrays_, "Vib-E2");
        const auto rows = entry_of(arrays_, "Vib-Modes");
        const auto count = static_cast<std::size_t>(std::max(entry_of(integers_, "Number of Normal Modes").value, 0));
        if (facts_.kind != "Freq" || count == 0 || numbers.value.size() < count || rows.value.size() != 3 * atoms * count) {
            return;
        }
        OutputModes modes;
        modes.line = numbers.line;
        modes.is_precise = true;
        modes.frequencies.assign(numbers.value.begin(), numbers.value.begin() + static_cast<std::ptrdiff_t>(count));
        modes.displacements.resize(count);
        for (std::size_t atom = 0; atom < atoms; ++atom) {
            modes.atoms.push_back(static_cast<int>(atom) + 1);
            for (std::size_t mode = 0; mode < count; ++mode) {
                const double* const row = &rows.value[3 * (mode * atoms + atom)];
                modes.displacements[mode].push_back({row[0], row[1], row[2]});
            }
        }
        visitor_.on_modes(modes);
    }

    void tell_text(std::string_view label, void (OutputVisitor::*told)(std::size_t, std::string_view)) const {
        if (const FchkEntry<std::string> text = entry_of(texts_, label); text.line > 0) {
            (visitor_.*told)(text.line, text.value);
        }
    }

    void tell_head() const {
        visitor_.on_step({1, false});
        tell_text("Gaussian Version", &OutputVisitor::on_program);
        tell_text("Route", &OutputVisitor::on_route);
        visitor_.on_title(1, title_);
        tell_text("Full Title", &OutputVisitor::on_title);
        visitor_.on_checkpoint(facts_);
        const FchkEntry<int> charge = entry_of(integers_, "Charge");
        const FchkEntry<int> multiplicity = entry_of(integers_, "Multiplicity");
        if (charge.line > 0 && multiplicity.line > 0) {
            visitor_.on_charge({charge.line, charge.value, multiplicity.value, {}});
        }
        if (const FchkEntry<int> functions = entry_of(integers_, "Number of basis functions"); functions.line > 0) {
            visitor_.on_basis_functions(functions.line, functions.value);
        }
        const FchkEntry<int> alpha = entry_of(integers_, "Number of alpha electrons");
        const FchkEntry<int> beta = entry_of(integers_, "Number of beta electrons");
        if (alpha.line > 0 && beta.line > 0) {
            visitor_.on_electrons(alpha.line, alpha.value, beta.value);
        }
    }

    // Without a word of how the job ended nothing says that it failed.
    void tell() {
        const OutputGeometry atoms = geometry();
        const FchkEntry<int> status = entry_of(integers_, "Job Status");
        facts_.status = status.line > 0 ? std::optional<int>(status.value) : std::nullopt;
        tell_head();
        visitor_.on_geometry(atoms);
        tell_energy();
        tell_modes(atoms.atoms.size());
        StepEnd end{lines_.number(), StepTermination::Normal, 0};
        if (facts_.status && *facts_.status != 1) {
            end = {status.line, StepTermination::Error, 0};
        }
        visitor_.on_step_end(end);
    }

    OutputLines& lines_;
    OutputVisitor& visitor_;
    bool is_held_ = false;  // the current line is a heading that was not looked at yet
    std::string title_;
    CheckpointFacts facts_;
    FchkEntries<int> integers_;
    FchkEntries<double> energies_;
    FchkEntries<std::string> texts_;
    FchkEntries<std::vector<double>> arrays_;
};

}  // namespace

bool begins_formatted_checkpoint(std::string_view text) {
    std::string_view lines[3];
    for (std::string_view& line : lines) {
        const std::size_t feed = text.find('\n');
        if (feed == std::string_view::npos) {
            return false;
        }
        line = text.substr(0, feed);
        text.remove_prefix(feed + 1);
    }
    constexpr std::size_t kind_width = 10;
    const std::string_view kind = trim_view(lines[1].substr(0, kind_width));
    return !kind.empty() && lines[1].front() != ' ' && std::all_of(kind.begin(), kind.end(), is_letter) &&
           heading_in(lines[2]).has_value();
}

void read_formatted_checkpoint(OutputLines& lines, OutputVisitor& visitor) { CheckpointReader(lines, visitor).run(); }

}  // namespace quor::input::gaussian

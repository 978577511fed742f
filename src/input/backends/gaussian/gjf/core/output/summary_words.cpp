// Says in words what a summary holds: names of kinds, formula, Link 0 values.
#include <gjf/core/output/output_summary.hpp>

#include <gjf/core/chemistry/elements.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <map>

namespace quor::input::gaussian {

const char* termination_name(StepTermination termination) noexcept {
    constexpr const char* names[] = {"normal", "error", "unfinished"};
    return names[static_cast<std::size_t>(termination)];
}

const char* output_frame_name(OutputFrame frame) noexcept {
    constexpr const char* names[] = {"input", "standard", "zmatrix"};
    return names[static_cast<std::size_t>(frame)];
}

const char* energy_kind_name(EnergyKind kind) noexcept {
    constexpr const char* names[] = {"mm",    "scf", "casscf",  "mp2",      "double-hybrid", "mp3", "mp4",   "ccsd",
                                     "qcisd", "bd",  "ccsd(t)", "qcisd(t)", "bd(t)",         "td",  "oniom", "composite"};
    return names[static_cast<std::size_t>(kind)];
}

std::size_t atom_count(const OutputSummary& summary) {
    if (!summary.last) {
        return 0;
    }
    const std::vector<OutputAtom>& atoms = summary.last->geometry.atoms;
    return static_cast<std::size_t>(
        std::count_if(atoms.begin(), atoms.end(), [](const OutputAtom& atom) { return atom.number > 0; }));
}

// Carbon and hydrogen first where there is carbon, then by the alphabet.
std::string output_formula(const OutputSummary& summary) {
    std::map<std::string, std::size_t> counts;
    for (const OutputAtom& atom : summary.last ? summary.last->geometry.atoms : std::vector<OutputAtom>()) {
        if (atom.number > 0) {
            ++counts[element_symbol(atom.number)];
        }
    }
    std::string formula;
    const auto take = [&](const std::string& symbol) {
        const auto found = counts.find(symbol);
        if (found != counts.end()) {
            formula += symbol + (found->second == 1 ? "" : std::to_string(found->second));
            counts.erase(found);
        }
    };
    if (counts.count("C") > 0) {
        take("C");
        take("H");
    }
    while (!counts.empty()) {
        take(std::string(counts.begin()->first));
    }
    return formula;
}

std::string link0_value(const OutputSummary& summary, std::string_view key) {
    std::string value;
    for (const std::string& line : summary.link0) {
        const std::size_t equals = line.find('=');
        if (equals != std::string::npos && equals_folded(trim_view(std::string_view(line).substr(0, equals)), key)) {
            value = trim_view(std::string_view(line).substr(equals + 1));
        }
    }
    return value;
}

}  // namespace quor::input::gaussian

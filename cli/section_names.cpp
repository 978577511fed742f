// The table of short names: row i is kind i.
#include "section_names.hpp"

#include "number_text.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

constexpr std::string_view short_names[] = {
    "unknown",      "connectivity",
    "frozen",       "modredundant",
    "molecule2",    "connectivity2",
    "frozen2",      "modredundant2",
    "molecule3",    "connectivity3",
    "frozen3",      "modredundant3",
    "pdb",          "masses",
    "external",     "link",
    "mm",           "frequency",
    "charges",      "bomd",
    "pcm-external", "irc",
    "constraints",  "semiempirical",
    "mopac",        "basis",
    "massage",      "field",
    "ecp",          "fitting",
    "pcm",          "dftb",
    "guess",        "symmetry",
    "orbitals",     "alter",
    "permute",      "gvb",
    "cas-weights",  "spin-orbit",
    "window",       "ept",
    "spinspin",     "radii",
    "antechamber",  "prop",
    "nbo",          "modes",
    "rotor",        "anharmonic-modes",
    "anharmonic",   "fcht",
    "pickett",      "acid",
    "wfn",          "matrix",
};
constexpr std::size_t last_kind = 55;
static_assert(std::size(short_names) == last_kind + 1);

ExtraInputSectionKind kind_of(std::size_t number) { return static_cast<ExtraInputSectionKind>(number); }

std::string padded(std::string_view text, std::size_t width) {
    std::string result(text);
    result.append(width > text.size() ? width - text.size() : 0, ' ');
    return result;
}

}  // namespace

std::optional<ExtraInputSectionKind> section_kind_named(const std::string& text) {
    if (const std::optional<std::size_t> number = number_of<std::size_t>(text)) {
        return *number <= last_kind ? std::optional(kind_of(*number)) : std::nullopt;
    }
    const std::string name = SimpleYAMLParser::to_lower(text);
    for (std::size_t i = 0; i <= last_kind; ++i) {
        if (name == short_names[i] || name == SimpleYAMLParser::to_lower(extra_input_kind_name(kind_of(i)))) {
            return kind_of(i);
        }
    }
    return std::nullopt;
}

std::string section_kind_list() {
    std::string list;
    for (std::size_t i = 0; i <= last_kind; ++i) {
        const std::string request = extra_input_request(kind_of(i));
        list += padded(std::to_string(i), 4) + padded(short_names[i], 18) + extra_input_kind_name(kind_of(i));
        list += request.empty() ? "\n" : " (" + request + ")\n";
    }
    return list;
}

}  // namespace quor_gjf

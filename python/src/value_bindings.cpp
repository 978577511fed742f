// Plain values: atoms, bonds, keywords, warnings.
#include "bindings.hpp"

#include <gjf/core/job/atom.hpp>
#include <gjf/core/job/connectivity_section.hpp>
#include <gjf/core/route/parsed_keywords.hpp>

#include <array>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <tuple>

namespace quor_python {
namespace {

using namespace quor::input::gaussian;

py::dict to_dict(const std::map<std::string, std::string>& map) {
    py::dict dict;
    for (const auto& [key, value] : map) {
        dict[to_python(key)] = to_python(value);
    }
    return dict;
}

void set_position(AtomCoord& atom, const std::array<double, 3>& position) {
    std::tie(atom.x, atom.y, atom.z) = std::tie(position[0], position[1], position[2]);
    atom.x_ref = atom.y_ref = atom.z_ref = CoordinateValue{};
}

// The value of a coordinate that is a name is not known to the atom alone.
double number_of(const CoordinateValue& written, double number) {
    return written.text.empty() || written.value ? number : std::numeric_limits<double>::quiet_NaN();
}

py::tuple position_texts(const AtomCoord& atom) {
    return py::make_tuple(to_python(atom.x_ref.text), to_python(atom.y_ref.text), to_python(atom.z_ref.text));
}

std::optional<std::string> to_optional(std::optional<Text> text) {
    return text ? std::optional<std::string>(std::move(text->value)) : std::nullopt;
}

void bind_atom(py::module_& module) {
    py::class_<AtomCoord>(module, "AtomValue", "One atom line, by value.")
        .def(py::init<>())
        .def_property(
            "element", [](const AtomCoord& atom) { return to_python(atom.info.element); },
            [](AtomCoord& atom, Text element) { atom.info.element = std::move(element.value); })
        .def_property_readonly("symbol", [](const AtomCoord& atom) { return to_python(symbol_or_name(atom.info)); })
        .def_property(
            "position",
            [](const AtomCoord& atom) {
                return py::make_tuple(number_of(atom.x_ref, atom.x), number_of(atom.y_ref, atom.y),
                                      number_of(atom.z_ref, atom.z));
            },
            &set_position)
        .def_property_readonly("position_texts", &position_texts)
        .def_property(
            "freeze", [](const AtomCoord& atom) { return atom.freeze; },
            [](AtomCoord& atom, std::optional<std::int32_t> code) { atom.freeze = code; })
        .def_property(
            "layer", [](const AtomCoord& atom) { return to_python_or_none(atom.layer); },
            [](AtomCoord& atom, std::optional<Text> layer) { atom.layer = to_optional(std::move(layer)); })
        .def_property(
            "mm_type", [](const AtomCoord& atom) { return to_python_or_none(atom.info.mm_type); },
            [](AtomCoord& atom, std::optional<Text> type) { atom.info.mm_type = to_optional(std::move(type)); })
        .def_property(
            "mm_charge", [](const AtomCoord& atom) { return atom.info.mm_charge; },
            [](AtomCoord& atom, std::optional<double> charge) { atom.info.mm_charge = charge; })
        .def_property(
            "params", [](const AtomCoord& atom) { return to_dict(atom.info.params); },
            [](AtomCoord& atom, const py::dict& params) {
                std::map<std::string, std::string> map;
                for (const auto& [key, value] : params) {
                    map[py::cast<Text>(key).value] = py::cast<Text>(value).value;
                }
                atom.info.params = std::move(map);
            })
        .def("copy", [](const AtomCoord& atom) { return AtomCoord(atom); });
}

void bind_route_values(py::module_& module) {
    py::class_<KeywordInfo>(module, "Keyword", "One keyword of a route.")
        .def_property_readonly(
            "name", [](const KeywordInfo& keyword) { return to_python(keyword.name); },
            "The vocabulary's spelling, or the word in lower case when it is not known.")
        .def_property_readonly(
            "options", [](const KeywordInfo& keyword) { return to_dict(keyword.options); },
            "Lower-case names and values; ``\"TRUE\"`` for an option written without a value.")
        .def_property_readonly(
            "category", [](const KeywordInfo& keyword) { return to_python(keyword.category); },
            "The vocabulary's category, ``\"other\"`` for a word it does not know.")
        .def_property_readonly(
            "text", [](const KeywordInfo& keyword) { return to_python(keyword.raw); }, "The keyword as written.")
        .def("__repr__", [](const KeywordInfo& keyword) { return to_python("<Keyword " + keyword.raw + ">"); });
    py::class_<ParseWarning>(module, "RouteWarning", "A coded remark about one word of a route.")
        .def_property_readonly(
            "code", [](const ParseWarning& warning) { return to_python(warning.code); }, "As in ``GJF-W005``.")
        .def_property_readonly("message", [](const ParseWarning& warning) { return to_python(warning.message); })
        .def_property_readonly(
            "span",
            [](const ParseWarning& warning) -> std::optional<std::pair<std::uint64_t, std::uint64_t>> {
                return warning.span ? std::make_optional(std::make_pair(warning.span->begin, warning.span->end))
                                    : std::nullopt;
            },
            "First byte and the one behind the last, from 0, in the route joined with blanks; or None.")
        .def("__repr__", [](const ParseWarning& warning) {
            return to_python("<RouteWarning " + warning.code + ": " + warning.message + ">");
        });
}

}  // namespace

std::string symbol_or_name(const AtomInfo& info) {
    const std::string_view symbol = symbol_of(species_of(info));
    return symbol.empty() ? info.element : std::string(symbol);
}

void bind_values(py::module_& module) {
    bind_atom(module);
    bind_route_values(module);
}

}  // namespace quor_python

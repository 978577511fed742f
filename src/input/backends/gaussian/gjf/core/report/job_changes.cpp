// Lists the differences of two jobs part by part. Whether they are the same at all, `find_difference` has the last word.
#include <gjf/core/report/job_changes.hpp>

#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/job/job_comparison.hpp>
#include <gjf/core/job/link0_keys.hpp>
#include <gjf/core/job/positions.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/sections/section_kinds.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <tuple>
#include <utility>

namespace quor::input::gaussian {
namespace {

using Changes = std::vector<JobChange>;
using NamedTexts = std::map<std::string, std::string>;
using MaybeText = std::optional<std::string>;

constexpr double least_move = 1e-6;  // ångström: below is the rounding of written coordinates

void add(Changes& changes, const char* part, std::string name, MaybeText before, MaybeText after) {
    if (before != after) {
        changes.push_back({part, std::move(name), std::move(before), std::move(after), std::nullopt});
    }
}

MaybeText text_in(const NamedTexts& texts, const std::string& name) {
    const auto found = texts.find(name);
    return found == texts.end() ? MaybeText() : found->second;
}

// Compares texts by their names, those of the first job first.
void add_named(Changes& changes, const char* part, const NamedTexts& before, const NamedTexts& after) {
    for (const auto& [name, text] : before) {
        add(changes, part, name, text, text_in(after, name));
    }
    for (const auto& [name, text] : after) {
        if (before.find(name) == before.end()) {
            add(changes, part, name, std::nullopt, text);
        }
    }
}

// --- Link 0

NamedTexts link0_of(const ControlSection& control) {
    NamedTexts texts;
    for (const Link0Key& key : link0_keys()) {
        if (const MaybeText value = key.in_model ? link0_value(control, key) : std::nullopt) {
            texts[std::string(key.name)] = *value;
        }
    }
    for (const std::string& line : control.other_link0_lines) {
        const std::size_t equals = std::min(line.find('='), line.size());
        const std::string key = to_lower_copy(trim_view(std::string_view(line).substr(0, equals)));
        texts[key.substr(key.starts_with('%') ? 1 : 0)] += std::string(trim_view(std::string_view(line).substr(equals)));
    }
    return texts;
}

// --- Route

std::string option_text(const std::string& keyword, const std::string& name, const std::string& value) {
    const std::string option = default_route_schema().normalize_option(keyword, name);
    return value == "TRUE" || value.empty() ? option : option + '=' + to_lower_copy(value);
}

// Every keyword under its preferred name, with its options in one order and spelling.
NamedTexts route_of(const std::optional<ParsedKeywords>& route) {
    NamedTexts texts;
    if (!route) {
        return texts;
    }
    const std::pair<const char*, const std::string*> words[] = {{"print level", &route->print_level},
                                                                {"method", &route->method},
                                                                {"method options", &route->method_options},
                                                                {"basis", &route->basis_set},
                                                                {"fitting basis", &route->density_fitting_basis},
                                                                {"second method", &route->secondary_method},
                                                                {"second method options", &route->secondary_method_options},
                                                                {"second basis", &route->secondary_basis_set}};
    for (const auto& [name, text] : words) {
        if (!text->empty()) {
            texts[name] = *text;
        }
    }
    std::map<std::string, std::vector<std::string>> options;
    for (const KeywordInfo& keyword : route->keywords) {
        std::vector<std::string>& list = options[default_route_schema().normalize_keyword(keyword.name)];
        for (const auto& [name, value] : keyword.options) {
            list.push_back(option_text(keyword.name, name, value));
        }
    }
    for (auto& [keyword, list] : options) {
        std::sort(list.begin(), list.end());
        std::string text;
        for (const std::string& option : list) {
            text += (text.empty() ? "" : ",") + option;
        }
        texts[keyword] = keyword + (list.empty() ? "" : list.size() == 1 ? "=" + text : "=(" + text + ")");
    }
    return texts;
}

// --- The molecule

std::string pairs_of(const GeomSection& geom) {
    std::string text;
    for (const ChargeSpinPair& pair : geom.charge_spin_pairs()) {
        text += (text.empty() ? "" : " ") + std::to_string(pair.charge) + ' ' + std::to_string(pair.multiplicity);
    }
    return text;
}

struct ComparedAtom {
    std::string label;  // all but the position
    std::optional<Position> position;
};

std::string label_of(const AtomInfo& info) {
    const std::string_view symbol = symbol_of(species_of(info));
    std::string text = symbol.empty() ? info.element : std::string(symbol);
    text += info.mm_type ? '-' + *info.mm_type : "";
    text += info.mm_charge ? '-' + std::to_string(*info.mm_charge) : "";
    for (const auto& [key, value] : info.params) {
        text += '(' + to_lower_copy(key) + '=' + value + ')';
    }
    return text;
}

std::vector<ComparedAtom> atoms_in(const GJFData& job) {
    std::vector<ComparedAtom> atoms;
    for (const AtomCoord& atom : job.geom.atoms) {
        std::string label = label_of(atom.info);
        label += atom.freeze.value_or(0) != 0 ? " " + std::to_string(*atom.freeze) : "";
        label += atom.layer && !atom.layer->empty() ? " " + *atom.layer : "";
        atoms.push_back({std::move(label), std::nullopt});
    }
    for (const ZMatrixEntry& row : job.geom.zmatrix_entries) {
        atoms.push_back({label_of(row.info), std::nullopt});
    }
    const std::vector<AtomPosition> places = positions(job);
    for (std::size_t i = 0; i < atoms.size() && i < places.size(); ++i) {
        atoms[i].position = places[i].position;
    }
    return atoms;
}

void compare_atoms(const std::vector<ComparedAtom>& before, const std::vector<ComparedAtom>& after, Changes& changes) {
    for (std::size_t i = 0; i < before.size(); ++i) {
        const ComparedAtom& a = before[i];
        const ComparedAtom& b = after[i];
        const bool both_placed = a.position && b.position;
        const double apart = both_placed ? distance(*a.position, *b.position) : 0;
        const bool is_moved = apart > least_move || a.position.has_value() != b.position.has_value();
        if (a.label != b.label || is_moved) {
            const std::optional<double> moved =
                both_placed && apart > least_move ? std::optional<double>(apart) : std::nullopt;
            changes.push_back({"atoms", std::to_string(i + 1), a.label, b.label, moved});
        }
    }
}

using AtomKey = std::tuple<std::string, long long, long long, long long>;

AtomKey key_of(const ComparedAtom& atom) {
    const auto step = [](double x) { return std::llround(x * 1e4); };
    const Position place = atom.position.value_or(Position{});
    return {atom.label, step(place[0]), step(place[1]), step(place[2])};
}

// Lists the atoms of one job that the other has nowhere.
void list_atoms(const std::vector<ComparedAtom>& atoms, const std::vector<ComparedAtom>& others, bool is_first,
                Changes& changes) {
    std::map<AtomKey, std::size_t> left;
    for (const ComparedAtom& atom : others) {
        ++left[key_of(atom)];
    }
    for (std::size_t i = 0; i < atoms.size(); ++i) {
        std::size_t& count = left[key_of(atoms[i])];
        if (count == 0) {
            add(changes, "atoms", std::to_string(i + 1), is_first ? MaybeText(atoms[i].label) : std::nullopt,
                is_first ? std::nullopt : MaybeText(atoms[i].label));
        }
        count -= count == 0 ? 0 : 1;
    }
}

NamedTexts variables_of(const GeomSection& geom) {
    NamedTexts texts;
    for (const auto* list : {&geom.variables, &geom.constants, &geom.cartesian_variables}) {
        for (const ZMatrixVariable& variable : *list) {
            texts[to_lower_copy(variable.name)] = variable.value;
        }
    }
    return texts;
}

void add_molecule(const GJFData& first, const GJFData& second, Changes& changes) {
    const std::vector<ComparedAtom> before = atoms_in(first);
    const std::vector<ComparedAtom> after = atoms_in(second);
    if (before.size() == after.size()) {
        compare_atoms(before, after, changes);
    } else {
        add(changes, "atoms", "", std::to_string(before.size()), std::to_string(after.size()));
        list_atoms(before, after, true, changes);
        list_atoms(after, before, false, changes);
    }
    add_named(changes, "variables", variables_of(first.geom), variables_of(second.geom));
}

// --- Sections

void add_sections(const GJFData& first, const GJFData& second, const JobComparison& comparison, Changes& changes) {
    using ByKind = std::map<ExtraInputSectionKind, std::array<std::vector<ExtraInputSection>, 2>>;
    ByKind kinds;
    for (const ExtraInputSection& section : first.extra_inputs) {
        kinds[section.kind][0].push_back(section);
    }
    for (const ExtraInputSection& section : second.extra_inputs) {
        kinds[section.kind][1].push_back(section);
    }
    const auto text_of = [](const std::vector<ExtraInputSection>& sections) {
        std::string text;
        for (const ExtraInputSection& section : sections) {
            text += (text.empty() ? "" : "\n\n") + section.text();
        }
        return sections.empty() ? MaybeText() : MaybeText(text);
    };
    for (const auto& [kind, lists] : kinds) {
        if (find_section_difference(lists[0], lists[1], comparison)) {
            changes.push_back({"section", extra_input_short_name(kind), text_of(lists[0]), text_of(lists[1]), std::nullopt});
        }
    }
}

// What is the same written in another way counts as the same.
JobComparison by_meaning() {
    JobComparison comparison;
    comparison.coordinates = JobComparison::Coordinates::AsNumber;
    comparison.order_of_link0_lines = false;
    comparison.empty_values = false;
    return comparison;
}

MaybeText text_or_nothing(std::string_view text) {
    const std::string_view trimmed = trim_view(text);
    return trimmed.empty() ? MaybeText() : std::string(trimmed);
}

}  // namespace

std::vector<JobChange> job_changes(const GJFData& first, const GJFData& second) {
    const JobComparison comparison = by_meaning();
    Changes changes;
    if (!find_difference(first, second, comparison)) {
        return changes;
    }
    add_named(changes, "link0", link0_of(first.control), link0_of(second.control));
    add_named(changes, "route", route_of(first.control.parsed_keywords), route_of(second.control.parsed_keywords));
    add(changes, "overlays", "", text_or_nothing(first.extra_overlays.value_or("")),
        text_or_nothing(second.extra_overlays.value_or("")));
    add(changes, "title", "", text_or_nothing(first.title), text_or_nothing(second.title));
    add(changes, "charge", "", text_or_nothing(pairs_of(first.geom)), text_or_nothing(pairs_of(second.geom)));
    add_molecule(first, second, changes);
    add_sections(first, second, comparison, changes);
    return changes;
}

std::vector<JobPairChanges> file_changes(const std::vector<JobReading>& first, const std::vector<JobReading>& second) {
    for (const std::vector<JobReading>* readings : {&first, &second}) {
        for (const JobReading& reading : *readings) {
            if (!reading.error.empty()) {
                throw GJFParseException((readings == &first ? "the first file, line " : "the second file, line ") +
                                        std::to_string(reading.error_line) + ": " + reading.error);
            }
        }
    }
    std::vector<JobPairChanges> found;
    for (std::size_t job = 0; job < std::max(first.size(), second.size()); ++job) {
        JobPairChanges pair{job + 1, job < first.size(), job < second.size(), {}};
        if (pair.in_first && pair.in_second) {
            pair.changes = job_changes(first[job].job, second[job].job);
        }
        if (!pair.changes.empty() || !pair.in_first || !pair.in_second) {
            found.push_back(std::move(pair));
        }
    }
    return found;
}

}  // namespace quor::input::gaussian

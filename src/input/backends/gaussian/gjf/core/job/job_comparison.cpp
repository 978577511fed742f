// Compares two jobs part by part. What counts is asked where it matters, so that each rule stands once.
#include <gjf/core/job/job_comparison.hpp>

#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>
#include <tuple>

namespace quor::input::gaussian {
namespace {

using Coordinates = JobComparison::Coordinates;
using UnknownSections = JobComparison::UnknownSections;

// Half of the last decimal written, and a little for the rounding of binary numbers.
constexpr double written_coordinate_step = 0.5000001e-6;

// Returns the index of the first elements that differ; the size of the shorter list where it ends first.
template <typename List, typename Same>
std::optional<std::size_t> first_mismatch(const List& a, const List& b, Same same) {
    const auto [in_a, in_b] = std::mismatch(a.begin(), a.end(), b.begin(), b.end(), same);
    return in_a == a.end() && in_b == b.end() ? std::nullopt
                                              : std::optional<std::size_t>(static_cast<std::size_t>(in_a - a.begin()));
}

template <typename List, typename Same>
bool same_list(const List& a, const List& b, Same same) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), same);
}

// --- Link 0, route and texts

bool same_link0(const ControlSection& a, const ControlSection& b, bool order_counts) {
    if (std::tie(a.chk, a.oldchk, a.rwf, a.mem, a.nproc, a.cpu) != std::tie(b.chk, b.oldchk, b.rwf, b.mem, b.nproc, b.cpu)) {
        return false;
    }
    const std::vector<std::string>& lines = a.other_link0_lines;
    const std::vector<std::string>& others = b.other_link0_lines;
    if (order_counts || lines == others) {
        return lines == others;
    }
    std::vector<std::string_view> sorted(lines.begin(), lines.end());
    std::vector<std::string_view> sorted_others(others.begin(), others.end());
    std::sort(sorted.begin(), sorted.end());
    std::sort(sorted_others.begin(), sorted_others.end());
    return sorted == sorted_others;
}

std::string joined_route(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text += word;
        text += ' ';
    }
    return text;
}

bool same_grouping_aside(const std::vector<std::string>& a, const std::vector<std::string>& b) {
    const std::string text = joined_route(a);
    const std::string other = joined_route(b);
    // Behind a "!" and beyond a line end nothing would be read again: such words are compared as they stand.
    constexpr std::string_view ends = "!\r\n";
    if (text == other || text.find_first_of(ends) != std::string::npos || other.find_first_of(ends) != std::string::npos) {
        return text == other;
    }
    std::vector<std::string_view> words;
    std::vector<std::string_view> other_words;
    split_fields(text, FieldSeparators::WhiteSpaceAndComma, false, words);
    split_fields(other, FieldSeparators::WhiteSpaceAndComma, false, other_words);
    return words == other_words;
}

bool same_route(const std::vector<std::string>& a, const std::vector<std::string>& b, const JobComparison& comparison) {
    return a == b || (comparison.same_route ? comparison.same_route(a, b) : same_grouping_aside(a, b));
}

std::string_view without_last_blanks(std::string_view text) noexcept {
    return text.substr(0, text.find_last_not_of(" \t\r\n") + 1);
}

bool same_text(std::string_view a, std::string_view b, const JobComparison& comparison) noexcept {
    return comparison.empty_values ? a == b : without_last_blanks(a) == without_last_blanks(b);
}

bool same_overlays(const std::optional<std::string>& a, const std::optional<std::string>& b,
                   const JobComparison& comparison) {
    const bool presence = !comparison.empty_values || a.has_value() == b.has_value();
    return presence && same_text(a ? *a : std::string_view(), b ? *b : std::string_view(), comparison);
}

// --- The molecule

bool same_pair(const ChargeSpinPair& a, const ChargeSpinPair& b) noexcept {
    return a.charge == b.charge && a.multiplicity == b.multiplicity;
}

bool same_pairs(const GeomSection& a, const GeomSection& b, const JobComparison& comparison) {
    if (!comparison.empty_values) {
        return same_list(a.charge_spin_pairs(), b.charge_spin_pairs(), same_pair);
    }
    return a.charge == b.charge && a.multiplicity == b.multiplicity &&
           same_list(a.additional_pairs, b.additional_pairs, same_pair);
}

bool same_label_but_for_rounding(const AtomInfo& a, const AtomInfo& b, double tolerance) {
    if (std::tie(a.element, a.mm_type, a.params) != std::tie(b.element, b.mm_type, b.params)) {
        return false;
    }
    return a.mm_charge == b.mm_charge || (a.mm_charge && b.mm_charge && std::fabs(*a.mm_charge - *b.mm_charge) <= tolerance);
}

bool is_variable(const CoordinateValue& coordinate) noexcept { return !coordinate.text.empty() && !coordinate.value; }

bool same_coordinate(const CoordinateValue& a, double x, const CoordinateValue& b, double y, Coordinates mode) noexcept {
    if (mode == Coordinates::AsWritten && !a.text.empty()) {
        return a.text == b.text || (is_integer_text(a.text) && b.value && x == y);
    }
    if (mode == Coordinates::AsText || is_variable(a) || is_variable(b)) {
        return a.text == b.text && x == y;
    }
    return x == y || (mode == Coordinates::AsWritten && std::fabs(x - y) <= written_coordinate_step + 1e-15 * std::fabs(x));
}

bool same_layer(const std::optional<std::string>& a, const std::optional<std::string>& b, bool empty_counts) noexcept {
    const auto is_empty = [](const std::optional<std::string>& layer) { return !layer || layer->empty(); };
    return a == b || (!empty_counts && is_empty(a) && is_empty(b));
}

bool same_atom(const AtomCoord& a, const AtomCoord& b, const JobComparison& comparison) {
    const Coordinates mode = comparison.coordinates;
    return a.freeze == b.freeze && same_layer(a.layer, b.layer, comparison.empty_values) &&
           same_coordinate(a.x_ref, a.x, b.x_ref, b.x, mode) && same_coordinate(a.y_ref, a.y, b.y_ref, b.y, mode) &&
           same_coordinate(a.z_ref, a.z, b.z_ref, b.z, mode) &&
           same_label_but_for_rounding(a.info, b.info, comparison.mm_charge_tolerance);
}

bool same_reference(const std::optional<ZMatrixReference>& a, const std::optional<ZMatrixReference>& b) {
    return a.has_value() == b.has_value() && (!a || (a->atom == b->atom && a->value == b->value));
}

std::optional<JobDifference> molecule_difference(const GeomSection& a, const GeomSection& b,
                                                 const JobComparison& comparison) {
    if (a.format != b.format) {
        return JobDifference{JobPart::Format, 0};
    }
    const auto same_row = [&](const ZMatrixEntry& row, const ZMatrixEntry& other) {
        return same_label_but_for_rounding(row.info, other.info, comparison.mm_charge_tolerance) &&
               same_reference(row.bond, other.bond) && same_reference(row.angle, other.angle) &&
               same_reference(row.dihedral, other.dihedral);
    };
    if (const auto row = first_mismatch(a.zmatrix_entries, b.zmatrix_entries, same_row)) {
        return JobDifference{JobPart::ZMatrix, *row};
    }
    if (a.atoms.size() != b.atoms.size()) {
        return JobDifference{JobPart::AtomCount, 0};
    }
    const auto same = [&](const AtomCoord& atom, const AtomCoord& other) { return same_atom(atom, other, comparison); };
    if (const auto atom = first_mismatch(a.atoms, b.atoms, same)) {
        return JobDifference{JobPart::Atom, *atom};
    }
    const bool same_variables = same_list(a.variables, b.variables, same_variable) &&
                                same_list(a.constants, b.constants, same_variable) &&
                                same_list(a.cartesian_variables, b.cartesian_variables, same_variable);
    return same_variables ? std::nullopt : std::optional<JobDifference>({JobPart::Variables, 0});
}

// --- Extra input

// Bonds are written by atoms, so their order does not count.
bool same_bonds(std::vector<Bond> a, std::vector<Bond> b) {
    const auto key = [](const Bond& bond) {
        const bool is_number = !std::isnan(bond.order);  // what is none must not break the sorting
        return std::tuple(bond.atom1, bond.atom2, is_number, is_number ? bond.order : 0.0);
    };
    const auto before = [&key](const Bond& bond, const Bond& other) { return key(bond) < key(other); };
    std::sort(a.begin(), a.end(), before);
    std::sort(b.begin(), b.end(), before);
    return same_list(a, b, [](const Bond& bond, const Bond& other) { return bond == other && bond.order == other.order; });
}

bool lists_bonds(const std::string& text, const ConnectivitySection& section) {
    try {
        const ExtraInputSection read(ExtraInputSectionKind::Connectivity, text);
        return same_bonds(read.connectivity()->bonds, section.bonds);
    } catch (const GJFParseException&) {
        return false;
    }
}

bool may_be_same_kind(ExtraInputSectionKind a, ExtraInputSectionKind b, UnknownSections unknown) noexcept {
    constexpr auto no_kind = ExtraInputSectionKind::Unknown;
    return a == b || (a == no_kind && unknown != UnknownSections::None) ||
           (b == no_kind && unknown == UnknownSections::OfBoth);
}

bool same_section(const ExtraInputSection& a, const ExtraInputSection& b, const JobComparison& comparison) {
    if (!may_be_same_kind(a.kind, b.kind, comparison.unknown_sections)) {
        return false;
    }
    const ConnectivitySection* bonds = a.connectivity();
    const ConnectivitySection* other_bonds = b.connectivity();
    if (bonds != nullptr && other_bonds != nullptr) {
        return same_bonds(bonds->bonds, other_bonds->bonds);
    }
    if (bonds != nullptr || other_bonds != nullptr) {
        return bonds != nullptr ? lists_bonds(b.text(), *bonds) : lists_bonds(a.text(), *other_bonds);
    }
    return same_text(std::get<std::string>(a.content), std::get<std::string>(b.content), comparison);
}

}  // namespace

const char* job_part_name(JobPart part) noexcept {
    constexpr const char* names[] = {
        "Link 0 lines", "route", "overlay input", "title",     "charge and multiplicity", "Z-matrix",
        "Z-matrix",     "atoms", "atoms",         "variables", "extra input sections"};
    const auto index = static_cast<std::size_t>(part);
    return index < std::size(names) ? names[index] : "job";
}

bool same_label(const AtomInfo& a, const AtomInfo& b) { return same_label_but_for_rounding(a, b, 0.0); }

bool same_variable(const ZMatrixVariable& a, const ZMatrixVariable& b) { return a.name == b.name && a.value == b.value; }

std::optional<std::size_t> find_section_difference(const std::vector<ExtraInputSection>& first,
                                                   const std::vector<ExtraInputSection>& second,
                                                   const JobComparison& comparison) {
    return first_mismatch(first, second, [&](const ExtraInputSection& a, const ExtraInputSection& b) {
        return same_section(a, b, comparison);
    });
}

std::optional<JobDifference> find_difference(const GJFData& first, const GJFData& second, const JobComparison& comparison) {
    const auto differ = [](JobPart part) { return JobDifference{part, 0}; };
    if (!same_link0(first.control, second.control, comparison.order_of_link0_lines)) {
        return differ(JobPart::Link0);
    }
    if (!same_route(first.control.route_keywords, second.control.route_keywords, comparison)) {
        return differ(JobPart::Route);
    }
    if (!same_overlays(first.extra_overlays, second.extra_overlays, comparison)) {
        return differ(JobPart::Overlays);
    }
    if (!same_text(first.title, second.title, comparison)) {
        return differ(JobPart::Title);
    }
    if (!same_pairs(first.geom, second.geom, comparison)) {
        return differ(JobPart::ChargeAndMultiplicity);
    }
    if (const std::optional<JobDifference> molecule = molecule_difference(first.geom, second.geom, comparison)) {
        return molecule;
    }
    const auto section =
        comparison.sections ? find_section_difference(first.extra_inputs, second.extra_inputs, comparison) : std::nullopt;
    return section ? std::optional<JobDifference>({JobPart::ExtraInput, *section}) : std::nullopt;
}

}  // namespace quor::input::gaussian

// Finds what writing in the fixed layout would lose: first what it never carries, then by reading back what is written.
#include <gjf/core/document/fixed_layout.hpp>

#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <exception>
#include <new>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {
namespace {

LayoutLoss loss_of(JobPart part, const std::string& what) { return {part, "the fixed layout cannot carry its " + what}; }

// Link atoms stand behind the layer, where the job model does not look.
bool has_link_atom(const std::string& line) {
    std::vector<std::string_view> fields;
    split_fields(without_comment(line), FieldSeparators::WhiteSpaceAndComma, true, fields);
    if (fields.size() <= 5) {
        return false;
    }
    try {
        const GeomSection geom = GJFParser::parse_geometry_section({"0 1", line});
        return geom.atoms.size() == 1 && geom.atoms.front().layer && fields.size() > (geom.atoms.front().freeze ? 6U : 5U);
    } catch (const std::exception&) {
        return false;  // no atom line
    }
}

std::optional<LayoutLoss> loss_of_molecule(const GJFEditor& editor) {
    const GeomSection& geom = editor.get_data().geom;
    if (geom.format == GeometryFormat::ZMatrix) {
        return loss_of(JobPart::Format, "Z-matrix");
    }
    const bool layered = std::any_of(geom.atoms.begin(), geom.atoms.end(), [](const AtomCoord& atom) { return atom.layer; });
    if (layered && std::any_of(geom.molecule_lines.begin(), geom.molecule_lines.end(), has_link_atom)) {
        return loss_of(JobPart::Atom, "link atoms");
    }
    if (const std::size_t count = editor.atoms_with_touching_coordinates().size(); count > 0) {
        return LayoutLoss{JobPart::Atom, "the coordinates of " + std::to_string(count) +
                                             " atoms are too wide for their columns; use_numeric_coordinates() writes "
                                             "them with six decimals"};
    }
    if (const std::vector<std::size_t> atoms = editor.labels_that_do_not_read_back(); !atoms.empty()) {
        return LayoutLoss{JobPart::Atom,
                          "the label of atom " + std::to_string(atoms.front() + 1) + " would be read as another one"};
    }
    return std::nullopt;
}

JobComparison of_what_is_written() {
    JobComparison comparison;
    comparison.coordinates = JobComparison::Coordinates::AsWritten;
    comparison.unknown_sections = JobComparison::UnknownSections::OfBoth;
    comparison.empty_values = false;
    // Half of the last decimal written, and a little for the rounding of binary numbers.
    comparison.mm_charge_tolerance = 0.5000001e-10;
    return comparison;
}

}  // namespace

std::optional<LayoutLoss> find_layout_loss(const GJFEditor& editor) {
    if (std::optional<LayoutLoss> loss = loss_of_molecule(editor)) {
        return loss;
    }
    try {
        const GJFData again = GJFParser::parse_string(editor.to_gjf_string());
        const std::optional<JobDifference> difference = find_difference(editor.get_data(), again, of_what_is_written());
        return difference ? std::optional<LayoutLoss>(loss_of(difference->part, job_part_name(difference->part)))
                          : std::nullopt;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        return LayoutLoss{JobPart::Format, std::string("its text would not read back (") + error.what() + ")"};
    }
}

}  // namespace quor::input::gaussian

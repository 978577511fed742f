// Reads the molecule section: the charge line, then Cartesian coordinates or a Z-matrix, and the sections that give values
// to its variables.
#include <gjf/core/reader/gjf_parser.hpp>

#include <core/memory/reserve_large.hpp>
#include <gjf/core/reader/cartesian_reader.hpp>
#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/reader/reading.hpp>
#include <gjf/core/reader/zmatrix_reader.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <stdexcept>

namespace quor::input::gaussian {

bool holds_text(std::string_view line) noexcept { return !is_blank_line(without_comment(line)); }

namespace {

// Reads a molecule section, and the sections after it that belong to it.
class MoleculeReader {
   public:
    explicit MoleculeReader(ReadingRecorder* recorder) noexcept
        : recorder_(recorder), cartesian_(molecule, recorder), zmatrix_(molecule, recorder) {}
    MoleculeReader(const MoleculeReader&) = delete;
    MoleculeReader& operator=(const MoleculeReader&) = delete;

    MoleculeReading molecule;

    void read_section(LineSpan section) {
        const auto charge_line = std::find_if_not(section.begin(), section.end(), is_comment_line);
        if (charge_line == section.end() || std::all_of(charge_line + 1, section.end(), is_comment_line)) {
            report_fault(recorder_, {}, "Geometry section must have at least 2 lines");
            note_doubt(recorder_, &JobReading::structure_uncertain);
            if (charge_line == section.end() || !is_valid_geometry_first_line(*charge_line)) {
                return;
            }
        }
        note_charge_line(recorder_, *charge_line);
        geom_.set_charge_spin_pairs(read_charge_line(*charge_line, recorder_));
        const LineSpan lines = section.subspan(static_cast<std::size_t>(charge_line - section.begin()) + 1);
        core::memory::reserve_large(geom_.molecule_lines, lines.size());
        keep_lines(lines);
        const auto first = std::find_if(lines.begin(), lines.end(), holds_text);
        if (first != lines.end()) {
            read_specification(lines.subspan(static_cast<std::size_t>(first - lines.begin())));
        }
    }

    // Takes the sections at the cursor that give values to the molecule's variables.
    void take_variable_sections(LineCursor& cursor, const SectionsExpected& sections_expected) {
        if (geom_.format == GeometryFormat::ZMatrix) {
            take_zmatrix_sections(cursor, sections_expected);
        } else {
            take_cartesian_section(cursor);
        }
    }

   private:
    void keep_lines(LineSpan lines) {
        geom_.molecule_lines.insert(geom_.molecule_lines.end(), lines.begin(), lines.end());
        if (recorder_ == nullptr || lines.empty()) {
            return;
        }
        Span& place = recorder_->reading.places.molecule;
        const Span added = recorder_->place_of(lines);
        place = place.empty() ? added : Span{place.begin, added.end() - place.begin};
    }

    // Reads the lines from the first row or atom on; that line tells a Z-matrix from Cartesian coordinates.
    void read_specification(LineSpan lines) {
        Fields fields;
        cut_fields(without_comment(lines.front()), fields);
        if (!is_zmatrix_line(fields) || (recorder_ != nullptr && is_include_line(lines.front()))) {
            cartesian_.read(lines);
            return;
        }
        geom_.format = GeometryFormat::ZMatrix;
        for (const std::string_view line : lines) {
            zmatrix_.take(line);
        }
        if (geom_.zmatrix_entries.empty()) {
            report_fault(recorder_, {}, "Invalid Z-matrix geometry section");
            note_doubt(recorder_, &JobReading::structure_uncertain);
        }
    }

    // The first section holds variables, the next constants, unless headers say otherwise; one that neither has a header nor
    // gives a value to a name in use is left when the route asks for sections.
    void take_zmatrix_sections(LineCursor& cursor, const SectionsExpected& sections_expected) {
        for (bool first = geom_.variables.empty();; first = false) {
            const std::size_t begin = cursor.position();
            const LineSpan section = cursor.take_section_past_comments();
            if (section.empty()) {
                cursor.move_to(begin);
                return;
            }
            const VariableBlock block = examine_variables(section, forms_, undefined_names(geom_));
            const bool belongs = block.has_header || block.defines_wanted_name || (first && !sections_expected());
            if (!block.well_formed || !belongs) {
                cursor.move_to(begin);
                return;
            }
            keep_lines(cursor.range(begin, cursor.position()));
            zmatrix_.begin_section(first ? VariableHeader::Variables : VariableHeader::Constants);
            for (const std::string_view line : section) {
                zmatrix_.take(line);
            }
        }
    }

    bool holds_cartesian_variables(LineSpan section) {
        const NameSet wanted = undefined_names(geom_);
        const auto defines_wanted_name = [&wanted](std::string_view line) {
            const std::string_view text = without_comment(line);
            return is_blank_line(text) || wanted.count(to_lower_copy(cut_cartesian_variable(text).name)) > 0;
        };
        return examine_variables(section, VariableLines::WithEquals, wanted).well_formed ||
               (recorder_ != nullptr && std::all_of(section.begin(), section.end(), defines_wanted_name));
    }

    void take_cartesian_section(LineCursor& cursor) {
        if (!cartesian_.has_variables() || undefined_names(geom_).empty()) {
            return;
        }
        const std::size_t begin = cursor.position();
        const LineSpan section = cursor.take_section_past_comments();
        if (section.empty() || !holds_cartesian_variables(section)) {
            cursor.move_to(begin);
            return;
        }
        keep_lines(cursor.range(begin, cursor.position()));
        for (const std::string_view line : section) {
            const std::string_view text = without_comment(line);
            if (holds_text(line) && variable_header(text) == VariableHeader::None) {
                if (recorder_ != nullptr) {
                    recorder_->at(line);
                }
                cartesian_.take_section_variable(text, line);
            }
        }
    }

    GeomSection& geom_ = molecule.geom;
    ReadingRecorder* recorder_;
    VariableLines forms_ = recorder_ == nullptr ? VariableLines::WithNumbers : VariableLines::WithCodes;
    CartesianReader cartesian_;
    ZMatrixReader zmatrix_;
};

}  // namespace

MoleculeReading read_molecule(LineCursor& cursor, LineSpan section, const SectionsExpected& sections_expected,
                              ReadingRecorder* recorder) {
    MoleculeReader reader(recorder);
    reader.read_section(section);
    reader.take_variable_sections(cursor, sections_expected);
    return std::move(reader.molecule);
}

bool opens_like_molecule(LineSpan section) {
    const auto charge_line = std::find_if_not(section.begin(), section.end(), is_comment_line);
    if (charge_line == section.end() || !is_valid_geometry_first_line(*charge_line)) {
        return false;
    }
    const auto atom = std::find_if(charge_line + 1, section.end(), holds_text);
    if (atom == section.end()) {
        return false;
    }
    Fields fields;
    cut_fields(without_comment(*atom), fields);
    AtomCoord read;
    return is_zmatrix_line(fields) || (fields.size() >= 4 && !read_atom_fields(fields, *atom, read));
}

void take_variable_sections(LineCursor& cursor, LineSpan section, const SectionsExpected& sections_expected) {
    MoleculeReader reader(nullptr);
    try {
        reader.read_section(section);
    } catch (const std::runtime_error&) {
        return;
    } catch (const std::out_of_range&) {
        return;
    }
    if (reader.molecule.geom.format == GeometryFormat::ZMatrix) {
        reader.take_variable_sections(cursor, sections_expected);
    }
}

GeomSection GJFParser::parse_geometry_section(const std::vector<std::string>& lines) {
    const std::vector<std::string_view> views = views_of(lines);
    MoleculeReader reader(nullptr);
    reader.read_section(views);
    return std::move(reader.molecule.geom);
}

}  // namespace quor::input::gaussian

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
        if (zmatrix_.has_other_forms()) {
            note_refusal(*recorder_, [section] { MoleculeReader(nullptr).read_section(section); });
        }
    }

    // Takes the sections at the cursor that give values to the molecule's variables.
    void take_variable_sections(LineCursor& cursor, const SectionsExpected& sections_expected) {
        if (geom_.format == GeometryFormat::ZMatrix) {
            take_zmatrix_sections(cursor, sections_expected);
        } else {
            take_cartesian_sections(cursor, sections_expected);
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

    // Reads the lines from the first row or atom on. That line tells a Z-matrix from Cartesian coordinates; but coordinates
    // are rows of a Z-matrix too where other rows follow them.
    void read_specification(LineSpan lines) {
        if (opens_zmatrix(lines.front()) || !read_cartesian(lines)) {
            read_zmatrix(lines);
        }
    }

    // A first row may have a fragment or a layer behind its label, which no atom has.
    bool opens_zmatrix(std::string_view line) const {
        Fields fields;
        cut_fields(without_comment(line), fields);
        if (recorder_ == nullptr) {
            return is_zmatrix_line(fields);
        }
        return !is_include_line(line) && (is_zmatrix_line(fields) || (fields.size() == 2 && find_row_form(fields)));
    }

    // Returns false, with nothing read, where rows of a Z-matrix follow coordinates.
    bool read_cartesian(LineSpan lines) {
        const std::size_t faults = recorder_ == nullptr ? 0 : recorder_->reading.faults.size();
        cartesian_.read(lines);
        if (!cartesian_.has_rows()) {
            return true;
        }
        geom_.atoms.clear();
        geom_.cartesian_variables.clear();
        JobReading& reading = recorder_->reading;
        reading.places.atoms.clear();
        reading.places.cartesian_variables.clear();
        reading.faults.resize(faults);
        reading.atoms_uncertain = false;
        return false;
    }

    void read_zmatrix(LineSpan lines) {
        geom_.format = GeometryFormat::ZMatrix;
        for (const std::string_view line : lines) {
            zmatrix_.take(line);
        }
        if (geom_.zmatrix_entries.empty()) {
            report_fault(recorder_, {}, "Invalid Z-matrix geometry section");
            note_doubt(recorder_, &JobReading::structure_uncertain);
        }
    }

    // Tells whether a section is the name of a file, which gives values to the names that have none.
    bool holds_values_in_file(LineSpan section) const {
        return recorder_ != nullptr && is_include_line(section.front()) && !undefined_names(geom_).empty();
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
            const bool belongs = holds_values_in_file(section) || block.has_header || block.defines_wanted_name ||
                                 (first && !sections_expected());
            if ((!block.well_formed && !holds_values_in_file(section)) || !belongs) {
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

    // A section that neither has a header nor gives a value to a name in use is left when the route asks for sections. In
    // the reading, values may stand behind blanks where all lines give one to a name in use.
    bool holds_cartesian_variables(LineSpan section, const SectionsExpected& sections_expected) {
        const NameSet wanted = undefined_names(geom_);
        const VariableBlock block = examine_variables(section, VariableLines::WithEquals, wanted);
        if (holds_values_in_file(section)) {
            return true;
        }
        const auto defines_wanted_name = [&wanted](std::string_view line) {
            const std::string_view text = without_comment(line);
            return is_blank_line(text) || variable_header(text, true) != VariableHeader::None ||
                   wanted.count(to_lower_copy(cut_cartesian_variable(text).name)) > 0;
        };
        return (block.well_formed && (block.has_header || block.defines_wanted_name || !sections_expected())) ||
               (recorder_ != nullptr && std::all_of(section.begin(), section.end(), defines_wanted_name));
    }

    bool take_cartesian_section(LineCursor& cursor, const SectionsExpected& sections_expected) {
        const std::size_t begin = cursor.position();
        const LineSpan section = cursor.take_section_past_comments();
        if (section.empty() || !holds_cartesian_variables(section, sections_expected)) {
            cursor.move_to(begin);
            return false;
        }
        keep_lines(cursor.range(begin, cursor.position()));
        for (const std::string_view line : section) {
            const std::string_view text = without_comment(line);
            if (holds_text(line) && variable_header(text, recorder_ != nullptr) == VariableHeader::None) {
                if (recorder_ != nullptr) {
                    recorder_->at(line);
                }
                if (recorder_ != nullptr && is_include_line(text)) {
                    recorder_->reading.atoms_uncertain = true;
                } else {
                    cartesian_.take_section_variable(text, line);
                }
            }
        }
        return true;
    }

    // The class interface takes one section, the reading all that give values to names in use.
    void take_cartesian_sections(LineCursor& cursor, const SectionsExpected& sections_expected) {
        while (cartesian_.has_variables() && !undefined_names(geom_).empty() &&
               take_cartesian_section(cursor, sections_expected) && recorder_ != nullptr) {
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
    return is_zmatrix_line(fields) || (fields.size() >= 4 && !read_atom_fields(fields, *atom, read, true));
}

void take_variable_sections(LineCursor& cursor, LineSpan section, const SectionsExpected& sections_expected,
                            const ReadingRecorder* recorder) {
    if (recorder != nullptr) {
        JobReading unheard;
        ReadingRecorder aside = recorder->beside(unheard);
        read_molecule(cursor, section, sections_expected, &aside);
        return;
    }
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

// The fixed layout of a written job. One string grows from the first line to the last.
#include <gjf/core/editor/job_writer.hpp>

#include <core/fs/write_text_file.hpp>
#include <gjf/core/editor/gjf_editor.hpp>
#include <gjf/core/job/link0_keys.hpp>
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/reader/reading.hpp>
#include <gjf/core/sections/route_questions.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/number_writing.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace quor::input::gaussian {
namespace {

constexpr std::size_t label_width = 40;
constexpr std::size_t freeze_width = 2;
constexpr std::size_t layer_width = 2;
constexpr int charge_decimals = 10;
constexpr int coordinate_decimals = 6;

// Pads what was appended since `begin` with blanks to a width.
void pad(std::string& text, std::size_t begin, std::size_t width) {
    const std::size_t written = text.size() - begin;
    if (written < width) {
        text.append(width - written, ' ');
    }
}

void append_integer(std::string& text, long long number) {
    char digits[24];
    text.append(digits, std::to_chars(digits, std::end(digits), number).ptr);
}

void append_link0_lines(std::string& text, const ControlSection& control) {
    for (const Link0Key& key : link0_keys()) {
        if (const std::optional<std::string> value = key.in_model ? link0_value(control, key) : std::nullopt) {
            text += '%';
            text += key.layout_name;
            text += '=';
            text += *value;
            text += '\n';
        }
    }
    for (const std::string& line : control.other_link0_lines) {
        text += line;
        text += '\n';
    }
}

void append_route(std::string& text, const std::vector<std::string>& words) {
    for (const std::string& word : words) {
        text += word;
        text += ' ';
    }
    text += words.empty() ? "\n" : "\n\n";
}

void append_label(std::string& text, const AtomInfo& info) {
    const std::size_t begin = text.size();
    text += info.element;
    if (info.mm_type) {
        text += '-';
        text += *info.mm_type;
    }
    if (info.mm_charge) {
        text += '-';
        append_fixed(text, *info.mm_charge, charge_decimals);
    }
    char separator = '(';
    for (const auto& [key, value] : info.params) {
        text += separator;
        text += key;
        text += '=';
        text += value;
        separator = ',';
    }
    if (!info.params.empty()) {
        text += ')';
    }
    pad(text, begin, label_width);
}

void append_coordinate(std::string& text, const CoordinateValue& coordinate, double value) {
    const std::size_t begin = text.size();
    if (coordinate.text.empty()) {
        append_fixed(text, value, coordinate_decimals);
    } else {
        text += coordinate.text;
    }
    pad(text, begin, coordinate_width);
}

void append_atom(std::string& text, const AtomCoord& atom) {
    append_label(text, atom.info);
    text += ' ';
    std::size_t begin = text.size();
    if (atom.freeze) {
        append_integer(text, *atom.freeze);
    }
    pad(text, begin, freeze_width);
    text += ' ';
    const bool needs_number = needs_decimals(atom) && is_integer_text(atom.x_ref.text);
    append_coordinate(text, needs_number ? CoordinateValue() : atom.x_ref, atom.x);
    append_coordinate(text, atom.y_ref, atom.y);
    append_coordinate(text, atom.z_ref, atom.z);
    text += ' ';
    begin = text.size();
    if (atom.layer) {
        text += *atom.layer;
    }
    pad(text, begin, layer_width);
    text += '\n';
}

void append_molecule(std::string& text, const GeomSection& geom) {
    constexpr std::size_t usual_line = label_width + 3 * coordinate_width + 10;
    text.reserve(text.size() + geom.atoms.size() * usual_line);
    for (const AtomCoord& atom : geom.atoms) {
        append_atom(text, atom);
    }
    if (geom.cartesian_variables.empty()) {
        return;
    }
    text += '\n';
    for (const ZMatrixVariable& variable : geom.cartesian_variables) {
        text += variable.name;
        text += '=';
        text += variable.value;
        text += '\n';
    }
}

// Appends every section between two texts.
void append_sections(std::string& text, const GJFData& data, const char* before, const char* after) {
    for (std::size_t i = 0; i < data.extra_inputs.size(); ++i) {
        text += before;
        text += data.extra_input_text(i);
        text += after;
    }
}

void append_title_and_molecule(std::string& text, const GJFData& data, bool from_checkpoint) {
    if (!data.title.empty()) {
        text += data.title;
        text += '\n';
    }
    text += '\n';
    text += GJFParser::format_charge_spin_line(data.geom);
    text += '\n';
    if (!from_checkpoint) {
        append_molecule(text, data.geom);
    }
    append_sections(text, data, "\n", "\n");
}

bool touches_next(const CoordinateValue& coordinate, double value) {
    return !coordinate.text.empty() ? coordinate.text.size() >= coordinate_width
                                    : coordinate_text(coordinate, value).size() >= coordinate_width;
}

}  // namespace

std::string coordinate_text(const CoordinateValue& coordinate, double value) {
    std::string text = coordinate.text;
    if (text.empty()) {
        append_fixed(text, value, coordinate_decimals);
    }
    return text;
}

std::string_view without_trailing_breaks(std::string_view text) noexcept {
    const std::size_t last = text.find_last_not_of("\r\n");
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

void end_job_text(std::string& text) {
    text.resize(without_trailing_breaks(text).size());
    if (!text.empty()) {
        text += "\n\n\n";
    }
}

// Tells whether a route word may hold the keyword geom, all spellings of which have these letters.
bool may_be_geom(const std::string& word) { return contains_folded(word, "ge"); }

std::string write_job(const GJFData& data) {
    const std::vector<std::string>& words = data.control.route_keywords;
    // The route is asked for geom alone; few have a word that may be it, and interpreting one takes as long as all else.
    const bool may_have_geom = std::any_of(words.begin(), words.end(), may_be_geom);
    const ParsedKeywords route = may_have_geom ? GJFParser::parse_keywords(words, {}) : ParsedKeywords();
    std::string text;
    append_link0_lines(text, data.control);
    append_route(text, data.control.route_keywords);
    if (data.extra_overlays) {
        text += *data.extra_overlays;
        text += "\n\n";
    }
    const RouteQuestions questions(route);
    if (questions.option("geom", {"allcheck", "allchk"})) {
        append_sections(text, data, "", "\n\n");
    } else {
        append_title_and_molecule(text, data, questions.option("geom", {"check", "chk"}));
    }
    end_job_text(text);
    return text;
}

std::string GJFEditor::to_gjf_string() const { return write_job(data_); }

void GJFEditor::save_to_file(const std::string& path) const {
    if (!quor::core::fs::write_text_file(path, to_gjf_string())) {
        throw GJFParseException("Cannot write file: " + path);
    }
}

std::vector<std::size_t> GJFEditor::atoms_with_touching_coordinates() const {
    std::vector<std::size_t> indices;
    for (std::size_t i = 0; i < data_.geom.atoms.size(); ++i) {
        const AtomCoord& atom = data_.geom.atoms[i];
        // The last coordinate is followed by a blank in any case.
        if (touches_next(atom.x_ref, atom.x) || touches_next(atom.y_ref, atom.y)) {
            indices.push_back(i);
        }
    }
    return indices;
}

std::vector<std::size_t> GJFEditor::labels_that_do_not_read_back() const {
    // Half of the last decimal written, and a little for the rounding of binary numbers.
    constexpr double tolerance = 0.5000001e-10;
    std::vector<std::size_t> indices;
    std::vector<std::string_view> fields;
    std::string text;
    for (std::size_t i = 0; i < data_.geom.atoms.size(); ++i) {
        AtomInfo wanted = data_.geom.atoms[i].info;
        text.clear();
        append_label(text, wanted);
        split_fields(without_comment(text), FieldSeparators::WhiteSpaceAndComma, true, fields);
        const AtomInfo read = fields.size() == 1 ? GJFParser::parse_atom_info(std::string(fields.front())) : AtomInfo();
        if (read.mm_charge && wanted.mm_charge && std::fabs(*read.mm_charge - *wanted.mm_charge) <= tolerance) {
            wanted.mm_charge = read.mm_charge;
        }
        if (fields.size() != 1 || !same_label(read, wanted)) {
            indices.push_back(i);
        }
    }
    return indices;
}

void GJFEditor::use_numeric_coordinates() {
    touch_all_atoms();
    for (AtomCoord& atom : data_.geom.atoms) {
        for (CoordinateValue* coordinate : {&atom.x_ref, &atom.y_ref, &atom.z_ref}) {
            if (coordinate->value) {
                *coordinate = CoordinateValue();
            }
        }
    }
}

}  // namespace quor::input::gaussian

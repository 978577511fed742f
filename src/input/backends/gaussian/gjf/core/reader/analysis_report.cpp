// Renders a job, or a file of jobs, as text for people to read.
#include <gjf/core/reader/gjf_parser.hpp>

#include <gjf/core/sections/section_kinds.hpp>
#include <gjf/core/text/number_writing.hpp>

#include <iterator>

namespace quor::input::gaussian {
namespace {

void append_number(std::string& text, std::size_t number) { text += std::to_string(number); }

void append_number(std::string& text, double number) { text += general_text(number); }

void append_line(std::string& text, const char* label, const std::optional<std::string>& value) {
    if (value) {
        text += label + *value + "\n";
    }
}

void append_coordinate(std::string& text, const CoordinateValue& written, double number) {
    if (written.text.empty()) {
        append_number(text, number);
    } else {
        text += written.text;
    }
}

void append_parameters(std::string& text, const std::map<std::string, std::string>& params) {
    if (params.empty()) {
        return;
    }
    const char* separator = " {";
    for (const auto& [key, value] : params) {
        text += separator + key + "=" + value;
        separator = ", ";
    }
    text += "}";
}

void append_atom(std::string& text, std::size_t number, const AtomCoord& atom) {
    text += "    ";
    append_number(text, number);
    text += ". " + atom.info.element;
    if (atom.info.mm_type) {
        text += "-" + *atom.info.mm_type;
    }
    if (atom.info.mm_charge) {
        text += "-";
        append_number(text, *atom.info.mm_charge);
    }
    text += " (";
    append_coordinate(text, atom.x_ref, atom.x);
    text += ", ";
    append_coordinate(text, atom.y_ref, atom.y);
    text += ", ";
    append_coordinate(text, atom.z_ref, atom.z);
    text += ")";
    if (atom.freeze) {
        text += " [freeze: " + std::to_string(*atom.freeze) + "]";
    }
    if (atom.layer) {
        text += " [layer: " + *atom.layer + "]";
    }
    append_parameters(text, atom.info.params);
    text += "\n";
}

void append_zmatrix_row(std::string& text, std::size_t number, const ZMatrixEntry& entry) {
    text += "    ";
    append_number(text, number);
    text += ". " + entry.info.element;
    for (const auto* reference : {&entry.bond, &entry.angle, &entry.dihedral}) {
        if (*reference) {
            text += "  " + std::to_string((*reference)->atom) + " " + (*reference)->value;
        }
    }
    text += "\n";
}

void append_variables(std::string& text, const char* label, const std::vector<ZMatrixVariable>& variables) {
    if (variables.empty()) {
        return;
    }
    text += label;
    for (const ZMatrixVariable& variable : variables) {
        text += "    " + variable.name + " = " + variable.value + "\n";
    }
}

void append_zmatrix(std::string& text, const GeomSection& geom) {
    text += "  Molecule specification: Z-matrix\n  Z-matrix entries (";
    append_number(text, geom.zmatrix_entries.size());
    text += "):\n";
    for (std::size_t i = 0; i < geom.zmatrix_entries.size(); ++i) {
        append_zmatrix_row(text, i + 1, geom.zmatrix_entries[i]);
    }
    append_variables(text, "  Variables:\n", geom.variables);
    append_variables(text, "  Constants:\n", geom.constants);
}

void append_cartesian(std::string& text, const GeomSection& geom) {
    text += "  Atoms (";
    append_number(text, geom.atoms.size());
    text += "):\n";
    for (std::size_t i = 0; i < geom.atoms.size(); ++i) {
        append_atom(text, i + 1, geom.atoms[i]);
    }
    append_variables(text, "  Cartesian coordinate variables:\n", geom.cartesian_variables);
}

void append_extra_inputs(std::string& text, const GJFData& data) {
    if (data.extra_inputs.empty()) {
        return;
    }
    text += "Extra Input Sections (";
    append_number(text, data.extra_inputs.size());
    text += "):\n";
    for (std::size_t i = 0; i < data.extra_inputs.size(); ++i) {
        text += "  Section ";
        append_number(text, i + 1);
        text += std::string(" [") + extra_input_kind_name(data.extra_inputs[i].kind) + "]:\n";
        text += "    " + data.extra_input_text(i) + "\n";
    }
}

}  // namespace

std::string GJFParser::format_charge_spin_line(const std::vector<ChargeSpinPair>& pairs) {
    std::string text;
    for (const ChargeSpinPair& pair : pairs) {
        text += text.empty() ? "" : " ";
        text += std::to_string(pair.charge) + " " + std::to_string(pair.multiplicity);
    }
    return text;
}

std::string GJFParser::format_charge_spin_line(const GeomSection& geom) {
    return format_charge_spin_line(geom.charge_spin_pairs());
}

std::string GJFParser::format_control_section(const ControlSection& control) {
    std::string text = "Control Section:\n";
    append_line(text, "  Checkpoint file: ", control.chk);
    append_line(text, "  Old checkpoint file: ", control.oldchk);
    if (!control.route_keywords.empty()) {
        text += "  Route keywords:";
        for (const std::string& word : control.route_keywords) {
            text += " " + word;
        }
        text += "\n";
    }
    return text;
}

std::string GJFParser::format_geometry_section(const GeomSection& geom) {
    std::string text = "Geometry Section:\n";
    const std::vector<ChargeSpinPair> pairs = geom.charge_spin_pairs();
    if (pairs.size() <= 1) {
        text += "  Charge: " + std::to_string(geom.charge) + ", Spin: " + std::to_string(geom.multiplicity) + "\n";
    } else {
        text += "  Charge/Spin pairs (" + std::to_string(pairs.size()) + "): " + format_charge_spin_line(pairs) + "\n";
        text += "  Primary pair: " + std::to_string(geom.charge) + " " + std::to_string(geom.multiplicity) + "\n";
    }
    if (geom.format == GeometryFormat::ZMatrix) {
        append_zmatrix(text, geom);
    } else {
        append_cartesian(text, geom);
    }
    return text;
}

std::string GJFParser::format_full_gjf(const GJFData& data) {
    std::string text = "GJF File Analysis:\n==================\n\n";
    text += format_control_section(data.control) + "\n";
    if (data.extra_overlays) {
        text += "Extra Overlays:\n" + *data.extra_overlays + "\n\n";
    }
    text += "Title: " + (data.title.empty() ? std::string("(empty)") : data.title) + "\n\n";
    text += format_geometry_section(data.geom) + "\n";
    append_extra_inputs(text, data);
    return text;
}

std::string GJFParser::format_full_multi_gjf(const GJFMultiData& data) {
    std::string text = "GJF Multi-Job File Analysis:\n============================\nTotal jobs: ";
    append_number(text, data.jobs.size());
    text += "\n\n";
    for (std::size_t i = 0; i < data.jobs.size(); ++i) {
        text += i == 0 ? "" : "\n";
        text += "--- Job " + std::to_string(i + 1) + " ---\n" + format_full_gjf(data.jobs[i]);
    }
    return text;
}

}  // namespace quor::input::gaussian

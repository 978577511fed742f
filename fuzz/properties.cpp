// The property of the round trip, and the jobs it is asked of.
#include "properties.hpp"

#include <gjf/core/reader/gjf_parser.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <optional>

namespace quor::fuzz {

using namespace input::gaussian;

void hold(bool condition, const char* property) {
    if (!condition) {
        std::fprintf(stderr, "does not hold: %s\n", property);
        std::abort();
    }
}

std::uint8_t Choices::byte() {
    if (rest_.empty()) {
        return 0;
    }
    const auto byte = static_cast<std::uint8_t>(rest_.front());
    rest_.remove_prefix(1);
    return byte;
}

std::string Choices::text(std::size_t longest) {
    const std::size_t wanted = below(longest + 1);
    const std::size_t length = std::min(wanted, rest_.size());
    std::string text(rest_.substr(0, length));
    rest_.remove_prefix(length);
    return text;
}

double Choices::number() {
    constexpr double odd[] = {1e300,
                              -1e300,
                              1e-300,
                              std::numeric_limits<double>::infinity(),
                              -std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN(),
                              1234567.890123,
                              -0.0};
    const std::uint8_t choice = byte();
    return choice >= 248 ? odd[choice - 248] : (choice - 100) / 4.0;
}

int Choices::integer() {
    constexpr int odd[] = {std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), -1000, 1000};
    const std::uint8_t choice = byte();
    return choice >= 252 ? odd[choice - 252] : choice % 12 - 2;
}

namespace {

bool is_plain(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_'; }

bool is_plain_text(std::string_view text, std::string_view others) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [&](char c) { return is_plain(c) || others.find(c) != others.npos; });
}

// Lines of which none is blank, begins with a blank or holds a carriage return, a comment mark or a quote.
bool are_plain_lines(std::string_view text) {
    const auto is_printable = [](char c) {
        return (c > ' ' && c < 127 && c != '!' && c != '"' && c != '\'') || c == ' ' || c == '\n';
    };
    const auto breaks_at = [&](std::size_t i) { return i == text.size() || text[i] == '\n'; };
    for (std::size_t begin = 0; begin <= text.size(); begin = text.find('\n', begin) + 1) {
        if (breaks_at(begin) || text[begin] == ' ' || text[begin] == '-') {
            return false;
        }
        if (text.find('\n', begin) == text.npos) {
            break;
        }
    }
    return std::all_of(text.begin(), text.end(), is_printable);
}

bool is_number_in(const CoordinateValue& coordinate, bool integers_too) {
    return GJFParser::is_number(coordinate.text) && (integers_too || !GJFParser::is_integer(coordinate.text));
}

bool is_plain_atom(const AtomCoord& atom) {
    const AtomInfo& info = atom.info;
    const bool parameters = std::all_of(info.params.begin(), info.params.end(), [](const auto& entry) {
        return is_plain_text(entry.first, "") && is_plain_text(entry.second, "*");
    });
    // A number behind a "-" would be read as a charge.
    const bool type = !info.mm_type || (is_plain_text(*info.mm_type, "*") && !GJFParser::is_number(*info.mm_type));
    const bool charge = !info.mm_charge || std::isfinite(*info.mm_charge);
    const bool layer = !atom.layer || is_plain_text(*atom.layer, "");
    const bool numbers = std::isfinite(atom.x) && std::isfinite(atom.y) && std::isfinite(atom.z);
    const bool coordinates = (atom.x_ref.text.empty() || is_number_in(atom.x_ref, atom.freeze.has_value() || !atom.layer)) &&
                             (atom.y_ref.text.empty() || is_number_in(atom.y_ref, true)) &&
                             (atom.z_ref.text.empty() || is_number_in(atom.z_ref, true));
    return is_plain_text(info.element, "") && parameters && type && charge && layer && numbers && coordinates;
}

bool is_plain_molecule(const GJFData& job) {
    const GeomSection& geom = job.geom;
    return geom.format == GeometryFormat::Cartesian && geom.multiplicity >= 1 && !geom.atoms.empty() &&
           geom.cartesian_variables.empty() && std::all_of(geom.atoms.begin(), geom.atoms.end(), is_plain_atom);
}

bool is_plain_value(const std::optional<std::string>& value) { return !value || is_plain_text(*value, "./-,"); }

// A word with its brackets closed, since an option list that one route line leaves open is closed by the next, and commas
// in brackets alone, since elsewhere one ends a word.
bool is_plain_word(const std::string& word) {
    const auto count = [&](char c) { return std::count(word.begin(), word.end(), c); };
    const bool comma_in_list = word.find(',') == word.npos || (word.find(',') > word.find('(') && word.back() == ')');
    return is_plain_text(word, "#=/+-*.,:()") && comma_in_list && count('(') == count(')') &&
           word.find(')') >= word.find('(') && (word.find('(') == word.npos || word.rfind('(') < word.rfind(')'));
}

bool is_plain_control(const ControlSection& control) {
    const bool values = is_plain_value(control.chk) && is_plain_value(control.oldchk) && is_plain_value(control.rwf) &&
                        is_plain_value(control.mem) && is_plain_value(control.cpu);
    const auto is_plain_line = [](const std::string& line) {
        return line.front() == '%' && is_plain_text(line.substr(1), "=./-");
    };
    const std::vector<std::string>& words = control.route_keywords;
    return values && std::all_of(control.other_link0_lines.begin(), control.other_link0_lines.end(), is_plain_line) &&
           !words.empty() && words.front().front() == '#' && std::all_of(words.begin(), words.end(), is_plain_word);
}

// Sections as the route asks for them, in order; the rest of unknown kind behind them.
bool are_expected_sections(const GJFData& job) {
    std::vector<ExtraInputSectionKind> kinds;
    for (const ExtraInputSection& section : job.extra_inputs) {
        kinds.push_back(section.kind);
    }
    std::vector<ExtraInputSectionKind> expected = GJFParser::expected_extra_input_order(job);
    if (kinds.size() < expected.size()) {
        return kinds.empty();
    }
    expected.resize(kinds.size(), ExtraInputSectionKind::Unknown);
    return kinds == expected;
}

bool is_plain_section(const GJFData& job, const ExtraInputSection& section) {
    using Kind = ExtraInputSectionKind;
    const bool structured = section.kind == Kind::SecondTitleAndMolecule || section.kind == Kind::ThirdTitleAndTSStructure ||
                            section.kind == Kind::PickettAtoms;
    const std::string text = section.text(job.geom.atoms.size());
    const bool single = !GJFParser::extra_input_section_requires_blank_line(section.kind) && section.kind != Kind::NBOInput;
    const bool ended = section.kind != Kind::NBOInput || text.find("$end") + 4 == text.size();
    return !structured && ended && (section.is_connectivity() || are_plain_lines(text)) &&
           (!single || text.find('\n') == text.npos);
}

void append(std::string& text, const std::optional<std::string>& value) { text += value ? "|" + *value : "-"; }

void append_atom(std::string& text, const AtomCoord& atom) {
    text += "\natom " + atom.info.element;
    append(text, atom.info.mm_type);
    text += atom.info.mm_charge ? "|" + std::to_string(*atom.info.mm_charge) : "-";
    for (const auto& [key, value] : atom.info.params) {
        text += "|" + key + "=" + value;
    }
    text += atom.freeze ? "|" + std::to_string(*atom.freeze) : "-";
    append(text, atom.layer);
    for (const double number : {atom.x, atom.y, atom.z}) {
        text += "|" + std::to_string(number);
    }
}

}  // namespace

std::string all_of_job(const GJFData& job) {
    const ControlSection& control = job.control;
    std::string text = "link0 ";
    for (const auto* value : {&control.oldchk, &control.chk, &control.rwf, &control.mem, &control.cpu}) {
        append(text, *value);
    }
    text += control.nproc ? std::to_string(*control.nproc) : "-";
    for (const std::string& line : control.other_link0_lines) {
        text += "\nother " + line;
    }
    for (const std::string& word : control.route_keywords) {
        text += "\nroute " + word;
    }
    text += "\ntitle " + job.title + "\ncharge " + GJFParser::format_charge_spin_line(job.geom);
    append(text, job.extra_overlays);
    for (const AtomCoord& atom : job.geom.atoms) {
        append_atom(text, atom);
    }
    for (std::size_t i = 0; i < job.extra_inputs.size(); ++i) {
        text += "\nsection " + std::to_string(static_cast<int>(job.extra_inputs[i].kind)) + " " + job.extra_input_text(i);
    }
    return text;
}

bool is_small(const GJFData& job) {
    constexpr std::uint64_t small = 2000;
    const ConnectivitySection* connectivity = job.connectivity();
    return connectivity == nullptr || std::all_of(connectivity->bonds.begin(), connectivity->bonds.end(),
                                                  [](const Bond& bond) { return bond.atom2 < small; });
}

bool writer_carries(const GJFEditor& editor) {
    const GJFData& job = editor.get_data();
    const bool whole = !GJFParser::is_geom_check(job.control) && !GJFParser::is_geom_allchk(job.control);
    const auto is_plain = [&](const ExtraInputSection& section) { return is_plain_section(job, section); };
    return whole && is_plain_control(job.control) && are_plain_lines(job.title) && is_plain_molecule(job) &&
           (!job.extra_overlays || are_plain_lines(*job.extra_overlays)) && are_expected_sections(job) &&
           std::all_of(job.extra_inputs.begin(), job.extra_inputs.end(), is_plain) &&
           editor.atoms_with_touching_coordinates().empty();
}

void hold_record(const GJFEditor& editor, const GJFData& taken) {
    const EditRecord* const record = editor.record();
    if (record == nullptr) {
        return;
    }
    const GJFData& before = record->before();
    GJFData job = editor.get_data();
    if (record->touched(JobPart::Link0) || record->touched(JobPart::Route)) {
        job.control = before.control;
    }
    if (record->touched(JobPart::Title)) {
        job.title = before.title;
    }
    if (record->touched(JobPart::ChargeAndMultiplicity)) {
        job.geom.charge = before.geom.charge;
        job.geom.multiplicity = before.geom.multiplicity;
        job.geom.additional_pairs = before.geom.additional_pairs;
    }
    if (record->touched(JobPart::ExtraInput)) {
        job.extra_inputs = before.extra_inputs;
    }
    job.geom.atoms = std::vector<AtomCoord>(taken.geom.atoms.size());
    const std::vector<std::size_t>& origins = editor.atom_origins();
    for (std::size_t i = 0; i < origins.size(); ++i) {
        if (origins[i] < job.geom.atoms.size()) {
            job.geom.atoms[origins[i]] = editor.get_data().geom.atoms[i];
        }
    }
    for (std::size_t origin = 0; origin < job.geom.atoms.size(); ++origin) {
        if (const AtomCoord* const atom = record->atom_before(origin)) {
            job.geom.atoms[origin] = *atom;
        }
    }
    hold(all_of_job(job) == all_of_job(taken), "the record tells what was changed, and all of it");
}

void hold_round_trip(const GJFEditor& editor) {
    if (!is_small(editor.get_data()) || !writer_carries(editor)) {
        return;
    }
    const std::string once = editor.to_gjf_string();
    const GJFEditor again(GJFParser::parse_string(once));
    const std::string before = all_of_job(editor.get_data());
    const std::string after = all_of_job(again.get_data());
    if (after != before) {
        std::fprintf(stderr, "%s\n--- reads back as\n%s\n--- written\n%s", before.c_str(), after.c_str(), once.c_str());
    }
    hold(after == before, "a written job reads back as the same job");
    hold(again.to_gjf_string() == once, "a job is written, read and written alike");
}

}  // namespace quor::fuzz

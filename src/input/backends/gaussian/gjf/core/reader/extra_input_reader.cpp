// Gives each kind of section that the route asks for its lines, by the kind's class, and keeps what is left over.
#include <gjf/core/reader/reading.hpp>

#include <gjf/core/sections/section_row.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/number_range.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace quor::input::gaussian {
namespace {

using Kind = ExtraInputSectionKind;

bool is_connectivity_kind(Kind kind) noexcept {
    return kind == Kind::Connectivity || kind == Kind::SecondConnectivity || kind == Kind::ThirdConnectivity;
}

[[noreturn]] void refuse_atom(std::uint64_t number) {
    throw GJFParseException(std::to_string(number) + " references atom index outside the geometry atom count");
}

// Returns the number that a row of connectivity begins with; 0 for none. Nearly all rows begin with plain digits.
std::int64_t first_number(std::string_view line) {
    constexpr std::string_view ends = " \t\v\f!";
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), number);
    if (error == std::errc() && (end == line.data() + line.size() || *end == ' ')) {
        return number;
    }
    const std::string_view row = trim_view(line);
    return to_int64(row.substr(0, row.find_first_of(ends))).value_or(0);
}

// Refuses bonds, and then rows without any, of atoms that are not there. The lines are read already.
void check_atom_numbers(const ConnectivitySection& connectivity, LineSpan lines, std::size_t atom_count) {
    for (const Bond& bond : connectivity.bonds) {
        if (bond.atom2 >= atom_count) {
            refuse_atom((bond.atom1 >= atom_count ? bond.atom1 : bond.atom2) + 1);
        }
    }
    for (const std::string_view line : lines) {
        const std::int64_t atom = first_number(line);
        if (std::cmp_greater(atom, atom_count)) {
            refuse_atom(static_cast<std::uint64_t>(atom));
        }
    }
}

// Reads a connectivity block line by line. Lines that cannot be read are reported first, those that name other atoms than
// the job's next, as when the block is read at once; all these are left out.
ConnectivitySection read_readable_lines(LineSpan lines, std::size_t atom_count, ReadingRecorder& recorder) {
    struct ReadLine {
        std::string_view line;
        ConnectivitySection bonds;
    };
    const auto report = [&recorder](std::string_view line, const GJFParseException& error) {
        report_fault(&recorder, line, message_of(error));
    };
    std::vector<ReadLine> readable;
    for (const std::string_view& line : lines) {
        ReadLine read{line, {}};
        try {
            read.bonds.parse_from_views(&line, 1);
            readable.push_back(std::move(read));
        } catch (const GJFParseException& error) {
            report(line, error);
        }
    }
    ConnectivitySection connectivity;
    for (const ReadLine& read : readable) {
        try {
            check_atom_numbers(read.bonds, {&read.line, 1}, atom_count);
            connectivity.bonds.insert(connectivity.bonds.end(), read.bonds.bonds.begin(), read.bonds.bonds.end());
        } catch (const GJFParseException& error) {
            report(read.line, error);
        }
    }
    return connectivity;
}

// Puts its own number before each row that names its neighbours alone, each with an order; returns none when a row has
// another form.
std::vector<std::string> numbered_rows(LineSpan lines) {
    std::vector<std::string> rows;
    std::vector<std::string_view> fields;
    for (const std::string_view line : lines) {
        if (is_comment_line(line)) {
            continue;
        }
        split_fields(without_comment(line), FieldSeparators::WhiteSpaceAndComma, true, fields);
        if (fields.empty() || fields.size() % 2 != 0 || fields[1].find('.') == std::string_view::npos) {
            return {};
        }
        rows.push_back(std::to_string(rows.size() + 1) + " " + std::string(line));
    }
    return rows;
}

// Reads what stands in a connectivity block that the class interface refuses with a message: a file, rows without their own
// number, or rows of which some cannot be read.
ConnectivitySection read_refused_lines(LineSpan lines, std::size_t atom_count, const std::string& message,
                                       ReadingRecorder& recorder) {
    const auto include = std::find_if(lines.begin(), lines.end(), is_include_line);
    const std::vector<std::string> rows = numbered_rows(lines);
    try {
        ConnectivitySection connectivity;
        if (include == lines.end()) {
            const std::vector<std::string_view> views = views_of(rows);
            connectivity.parse_from_views(views.data(), views.size());
            check_atom_numbers(connectivity, views, atom_count);
        }
        if (include != lines.end() || !rows.empty()) {
            report_departure(&recorder, include != lines.end() ? *include : lines.front(), message);
            return connectivity;
        }
    } catch (const GJFParseException&) {
    }
    return read_readable_lines(lines, atom_count, recorder);
}

// Reads a connectivity block. Bonds of the molecule itself are kept as bonds; those of a second or third one are checked and
// kept as text.
void add_connectivity(LineSpan lines, Kind kind, GJFData& job, bool atoms_known, ReadingRecorder* recorder) {
    const std::size_t atom_count = atoms_known ? job.geom.atom_count() : largest_atom_count;
    ConnectivitySection connectivity;
    try {
        connectivity.parse_from_views(lines.data(), lines.size());
        check_atom_numbers(connectivity, lines, atom_count);
    } catch (const GJFParseException& error) {
        if (recorder == nullptr) {
            throw;
        }
        connectivity = read_refused_lines(lines, atom_count, message_of(error), *recorder);
    }
    // Bonds that stand in a file are not known: their section is kept as text.
    const bool in_file = std::any_of(lines.begin(), lines.end(), is_include_line);
    if (kind == Kind::Connectivity && !in_file) {
        job.extra_inputs.push_back(ExtraInputSection::from_connectivity(std::move(connectivity)));
    } else {
        job.extra_inputs.emplace_back(in_file ? Kind::Unknown : kind, joined(lines));
    }
}

// Reads the title and the molecule of a second or third structure; a Z-matrix takes its variable sections with it.
std::optional<std::string> take_title_and_molecule(LineCursor& cursor, Kind kind, bool sections_expected,
                                                   ReadingRecorder* recorder) {
    const std::size_t begin = cursor.position();
    const std::size_t blank_lines = cursor.skip_blank_lines();
    if (cursor.at_end()) {
        return std::nullopt;
    }
    const bool untitled = opens_molecule_without_title(cursor, blank_lines);
    std::string text = untitled ? std::string() : joined(cursor.take_section());
    const bool is_file = recorder != nullptr && !untitled && is_include_line(text);
    const LineSpan molecule = is_file ? LineSpan() : cursor.take_section_past_comments();
    if (is_file) {
        return text;  // title and molecule
    }
    if (molecule.empty()) {
        const char* name = kind == Kind::ThirdTitleAndTSStructure ? "QST3 third title and molecule section"
                                                                  : "QST2/QST3 second title and molecule section";
        report_fault(recorder, {}, std::string("Incomplete ") + name + ": missing molecule specification block");
        note_doubt(recorder, &JobReading::structure_uncertain);
        cursor.move_to(begin);  // what stands there is left over
        return std::nullopt;
    }
    text += "\n\n";
    text += joined(molecule);
    const std::size_t end = cursor.position();
    take_variable_sections(
        cursor, molecule, [sections_expected] { return sections_expected; }, recorder);
    const LineSpan variables = cursor.range(end, cursor.position());
    return variables.empty() ? text : text + '\n' + joined(variables);
}

// The form alone counts: a line of numbers that are no atoms is a wrong list, not another section.
bool is_atom_list_line(std::string_view line) {
    std::vector<std::string_view> fields;
    split_fields(line, FieldSeparators::WhiteSpaceAndComma, true, fields);
    return !fields.empty() && std::all_of(fields.begin(), fields.end(), is_number_range_text);
}

LineSpan take_lines(LineCursor& cursor, ExtraInputClass input_class) {
    cursor.skip_blank_lines();
    const std::size_t begin = cursor.position();
    if (input_class == ExtraInputClass::SingleLine && !cursor.at_end()) {
        cursor.take_line();
    }
    if (input_class == ExtraInputClass::AtomList) {
        while (!cursor.at_end() && is_atom_list_line(cursor.peek_line())) {
            cursor.take_line();
        }
    }
    if (input_class == ExtraInputClass::UpToEnd) {
        while (!cursor.at_end() && !contains_folded(cursor.take_line(), "$end")) {
        }
    }
    const LineSpan lines = cursor.range(begin, cursor.position());
    if (input_class == ExtraInputClass::UpToEnd) {
        cursor.skip_blank_lines();
    }
    return lines;
}

// Reads the section of one kind, if there is one left.
void read_expected(LineCursor& cursor, GJFData& job, Kind kind, bool atoms_known, bool more_expected,
                   ReadingRecorder* recorder) {
    const ExtraInputClass input_class = extra_input_class(kind);
    if (input_class == ExtraInputClass::TitleAndMolecule) {
        if (std::optional<std::string> text = take_title_and_molecule(cursor, kind, more_expected, recorder)) {
            job.extra_inputs.emplace_back(kind, *text);
        }
        return;
    }
    if (is_connectivity_kind(kind)) {
        if (const LineSpan lines = cursor.take_section_past_comments(); !lines.empty()) {
            add_connectivity(lines, kind, job, atoms_known, recorder);
        }
        return;
    }
    const bool block = input_class == ExtraInputClass::Block;
    const LineSpan lines = block ? cursor.take_section() : take_lines(cursor, input_class);
    if (!lines.empty()) {
        job.extra_inputs.emplace_back(kind, joined(lines));
    }
}

// Tells whether a section before a structure is empty: two blank lines stand there, and behind them title and molecule, of
// which one would be missing otherwise.
bool is_empty_before_structure(LineCursor cursor, const std::vector<Kind>& kinds, std::size_t i) {
    const auto is_structure = [](Kind kind) { return extra_input_class(kind) == ExtraInputClass::TitleAndMolecule; };
    const auto structure = std::find_if(kinds.begin() + static_cast<std::ptrdiff_t>(i), kinds.end(), is_structure);
    if (is_structure(kinds[i]) || structure == kinds.end() || cursor.skip_blank_lines() < 2) {
        return false;
    }
    cursor.take_section();
    return opens_like_molecule(cursor.take_section_past_comments()) &&
           !opens_like_molecule(cursor.take_section_past_comments());
}

// Notes the lines of the sections read since `begin`, from the first line that is not blank to the last.
void note_section(const LineCursor& cursor, std::size_t begin, Kind kind, ReadingRecorder& recorder) {
    LineCursor walk = cursor;
    walk.move_to(begin);
    walk.skip_blank_lines();
    LineSpan lines = cursor.range(walk.position(), cursor.position());
    while (!lines.empty() && is_blank_line(lines.back())) {
        lines = lines.first(lines.size() - 1);
    }
    recorder.reading.places.sections.push_back({kind, recorder.place_of(lines)});
}

// Tells whether a list of NBO keys that may follow, beside the one that is expected, is not there.
bool ends_key_lists(LineCursor cursor, const std::vector<Kind>& kinds, std::size_t i, const std::vector<Kind>& expected) {
    const auto is_keys = [](Kind kind) { return kind == Kind::NBOInput; };
    const bool is_first = i == 0 || !is_keys(kinds[i - 1]);
    if (!is_keys(kinds[i]) || (is_first && std::any_of(expected.begin(), expected.end(), is_keys))) {
        return false;
    }
    cursor.skip_blank_lines();
    return cursor.at_end() || trim_view(cursor.peek_line()).substr(0, 1) != "$";
}

// Lists the kinds of the blocks that there are: where some would be left over, others than the expected ones are among them.
std::vector<Kind> kinds_of_blocks(LineCursor cursor, const GJFData& job, const KindsOfRoute& asked, bool atoms_known,
                                  const ReadingRecorder& recorder) {
    std::vector<Kind> kinds = asked.expected;
    if (asked.for_left_over.empty()) {
        return kinds;
    }
    GJFData trial;
    trial.geom = job.geom;
    JobReading unheard;
    ReadingRecorder aside = recorder.beside(unheard);
    read_extra_inputs(cursor, trial, {asked.expected, {}}, atoms_known, &aside);
    auto left_over = std::count_if(trial.extra_inputs.begin(), trial.extra_inputs.end(),
                                   [](const ExtraInputSection& section) { return section.kind == Kind::Unknown; });
    const bool any = left_over > 0;
    for (const Kind kind : asked.for_left_over) {
        // Lists of NBO keys are told by their first character, and several may be one block.
        const bool is_keys = kind == Kind::NBOInput;
        if (left_over > 0 || (is_keys && any)) {
            kinds.push_back(kind);
            left_over -= is_keys ? 0 : 1;
        }
    }
    std::stable_sort(kinds.begin(), kinds.end());
    return kinds;
}

// A fault of which no other line can be told stands at the next one that is not blank.
void note_next_line(LineCursor cursor, ReadingRecorder* recorder) {
    cursor.skip_blank_lines();
    if (recorder != nullptr && !cursor.at_end()) {
        recorder->at(cursor.peek_line());
    }
}

// Takes the sections that nothing asked for.
void keep_left_over(LineCursor& cursor, GJFData& job, ReadingRecorder* recorder) {
    for (LineSpan lines = cursor.take_section(); !lines.empty(); lines = cursor.take_section()) {
        job.extra_inputs.emplace_back(Kind::Unknown, joined(lines));
        if (recorder != nullptr) {
            recorder->reading.places.sections.push_back({Kind::Unknown, recorder->place_of(lines)});
        }
    }
}

ParsedKeywords interpret(const ControlSection& control) {
    return control.route_keywords.empty() ? ParsedKeywords() : GJFParser::parse_keywords(control.route_keywords, {});
}

}  // namespace

void read_extra_inputs(LineCursor& cursor, GJFData& job, const KindsOfRoute& asked, bool atoms_known,
                       ReadingRecorder* recorder) {
    const std::vector<Kind> kinds =
        recorder == nullptr ? asked.expected : kinds_of_blocks(cursor, job, asked, atoms_known, *recorder);
    const LineCursor start = cursor;
    bool any_empty = false;  // one section may be, and then others
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        const std::size_t begin = cursor.position();
        const std::size_t count = job.extra_inputs.size();
        note_next_line(cursor, recorder);
        if (recorder != nullptr && is_empty_before_structure(cursor, kinds, i)) {
            if (!any_empty && recorder->reading.faults.empty()) {
                note_refusal(*recorder, [&, cursor = start]() mutable {
                    GJFData trial;
                    trial.geom = job.geom;
                    read_extra_inputs(cursor, trial, {asked.expected, {}}, atoms_known, nullptr);
                });
            }
            any_empty = true;
            continue;
        }
        if (recorder != nullptr && ends_key_lists(cursor, kinds, i, asked.expected)) {
            continue;
        }
        read_expected(cursor, job, kinds[i], atoms_known, i + 1 < kinds.size(), recorder);
        if (recorder == nullptr) {
            continue;
        }
        if (job.extra_inputs.size() > count) {
            note_section(cursor, begin, job.extra_inputs.back().kind, *recorder);
        } else if (!any_empty || extra_input_class(kinds[i]) != ExtraInputClass::Block) {
            recorder->reading.layout.missing.push_back(kinds[i]);
        }
    }
    keep_left_over(cursor, job, recorder);
}

std::vector<Kind> GJFParser::expected_extra_input_order(const ControlSection& control) {
    const ParsedKeywords route = interpret(control);
    return expected_kinds(RouteQuestions(route));
}

std::vector<Kind> GJFParser::expected_extra_input_order(const GJFData& data) {
    const auto residues = [](const auto& atom) { return has_residue(atom.info); };
    const GeomSection& geom = data.geom;
    const ParsedKeywords route = interpret(data.control);
    RouteQuestions questions(route);
    questions.set_molecule(
        {is_open_shell(geom), std::any_of(geom.atoms.begin(), geom.atoms.end(), residues) ||
                                  std::any_of(geom.zmatrix_entries.begin(), geom.zmatrix_entries.end(), residues)});
    return expected_kinds(questions);
}

const char* GJFParser::extra_input_section_kind_name(Kind kind) { return extra_input_kind_name(kind); }

bool GJFParser::extra_input_section_requires_blank_line(Kind kind) { return extra_input_requires_blank_line(kind); }

}  // namespace quor::input::gaussian

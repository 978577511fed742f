// Reads files and job texts: cuts them at --Link1-- lines, cuts each job into lines and sections, and reads these in their
// order.
#include <gjf/core/reader/gjf_parser.hpp>

#include <core/memory/reserve_large.hpp>
#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/reader/reading.hpp>
#include <gjf/core/sections/section_row.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {

bool opens_molecule_without_title(const LineCursor& cursor, std::size_t blank_lines) {
    LineCursor ahead = cursor;
    if (blank_lines < 2 || !opens_like_molecule(ahead.take_section())) {
        return false;
    }
    return !opens_like_molecule(ahead.take_section_past_comments());
}

bool opens_charge_line_without_title(const LineCursor& cursor, std::size_t blank_lines, std::size_t sections_expected) {
    LineCursor ahead = cursor;
    const LineSpan section = ahead.take_section();
    if (blank_lines < 2 || section.empty() || !is_valid_geometry_first_line(section.front())) {
        return false;
    }
    const LineSpan next = ahead.take_section_past_comments();
    const auto line = std::find_if_not(next.begin(), next.end(), is_comment_line);
    std::size_t left = 0;
    while (left < sections_expected && !ahead.take_section().empty()) {
        ++left;
    }
    return line == next.end() || !is_valid_geometry_first_line(*line) || left < sections_expected;
}

namespace {

// The conditions of the route that decide how a job is cut into sections.
struct RouteShape {
    bool has_overlays = false;
    bool molecule_from_checkpoint = false;  // geom=check: charge and multiplicity alone are read
    bool all_from_checkpoint = false;       // geom=allcheck: neither title nor molecule is read
    bool changes_checkpoint = false;        // geom=modify: changes of the checkpoint's molecule stand behind the charge
    bool builds_model = false;              // geom=modela and modelb: atoms by their bonds stand behind the charge
};

RouteShape shape_of(const ParsedKeywords& route, const RouteQuestions& questions) {
    RouteShape shape;
    shape.has_overlays = route.has_keyword("extraoverlays");
    shape.molecule_from_checkpoint = questions.option("geom", {"check", "chk"});
    shape.all_from_checkpoint = questions.option("geom", {"allcheck", "allchk"});
    shape.changes_checkpoint = questions.option("geom", {"modify"});
    shape.builds_model = questions.option("geom", {"modela", "modelb"});
    return shape;
}

// Words that no vocabulary has: LST=Restart, and the IOp(1/29) of a non-standard route that reads the molecule.
bool names_checkpoint(const std::string& word) {
    const std::string text = to_lower_copy(word);
    const std::string_view setting = std::string_view(text).substr(text.starts_with("1/") ? 2 : 0);
    return text == "lst=restart" || text == "lst(restart)" || (setting.starts_with("29=") && setting != "29=0");
}

// Tells whether the route goes on with what a checkpoint holds: it may then stand alone, or with a title, or with a title
// and a charge line. A job that gives more is read as it stands.
bool goes_on_from_checkpoint(const ControlSection& control, const ParsedKeywords& route, const RouteQuestions& questions) {
    const Words words = {"restart", "startmp2", "startfreq"};
    return std::any_of(control.route_keywords.begin(), control.route_keywords.end(), names_checkpoint) ||
           route.has_keyword("restart") || route.has_keyword("rearchive") || questions.any_option(words) ||
           questions.word_in_method_options(words) || questions.option("geom", {"modify"});
}

bool is_charge_line_alone(LineSpan section) {
    const auto line = std::find_if_not(section.begin(), section.end(), is_comment_line);
    return line != section.end() && is_valid_geometry_first_line(*line) &&
           std::all_of(line + 1, section.end(), is_comment_line);
}

// Reads the charge line of a job whose molecule comes from a checkpoint. Lines after it are kept, not read.
GeomSection read_charge_line_alone(LineSpan section, ReadingRecorder* recorder) {
    GeomSection geom;
    const auto line = std::find_if_not(section.begin(), section.end(), is_comment_line);
    if (line == section.end()) {
        report_fault(recorder, {}, "Missing charge/spin line for geom=check");
        note_doubt(recorder, &JobReading::structure_uncertain);
        return geom;
    }
    note_charge_line(recorder, *line);
    const auto behind = section.subspan(static_cast<std::size_t>(line - section.begin()) + 1);
    if (recorder != nullptr) {
        recorder->reading.places.molecule = recorder->place_of(behind);
    }
    geom.set_charge_spin_pairs(read_charge_line(*line, recorder));
    geom.molecule_lines.assign(behind.begin(), behind.end());
    return geom;
}

// Tells whether atoms stand behind the charge line, not changes of coordinates such as "B 1 2 F" or "r1 0.96".
bool holds_atoms(LineSpan section) {
    const auto charge_line = std::find_if_not(section.begin(), section.end(), is_comment_line);
    const auto first = charge_line == section.end() ? charge_line : std::find_if(charge_line + 1, section.end(), holds_text);
    Fields fields;
    if (first != section.end()) {
        cut_fields(without_comment(*first), fields);
    }
    return fields.size() == 1 || (is_cartesian_line(fields) && !is_integer_text(fields[2]));
}

bool begins_with(std::string_view line, char mark) noexcept {
    const std::string_view text = trim_view(line);
    return !text.empty() && text.front() == mark;
}

bool opens_control(std::string_view line) noexcept { return begins_with(line, '#') || begins_with(line, '%'); }

// Passes over the sections before the first one that opens like a control section; tells whether there is one.
bool skip_to_control(LineCursor& cursor) {
    LineCursor ahead = cursor;
    for (LineSpan section = ahead.take_section(); !section.empty(); section = ahead.take_section()) {
        if (opens_control(section.front())) {
            cursor.move_to(ahead.position() - section.size());
            return true;
        }
    }
    return false;
}

// Takes the lines of the control section. Blank lines among Link 0 lines, or between these and the route, do not end it;
// nor, when reading goes on behind what it cannot read, do those between lines of which none can be read.
LineSpan take_control_lines(LineCursor& cursor, bool goes_on) {
    LineSpan section = cursor.take_section_past_comments();
    const std::size_t begin = cursor.position() - section.size();
    if (goes_on && std::none_of(section.begin(), section.end(), opens_control) && skip_to_control(cursor)) {
        section = cursor.take_section_past_comments();
    }
    std::size_t end = cursor.position();
    const auto is_link0 = [](std::string_view line) {
        return begins_with(line, '%') || is_comment_line(line) || equals_folded(trim_view(line), "$rungauss");
    };
    while (!section.empty() && std::all_of(section.begin(), section.end(), is_link0)) {
        section = cursor.take_section_past_comments();
        const auto first = std::find_if_not(section.begin(), section.end(), is_comment_line);
        if (first == section.end() || !opens_control(*first)) {
            cursor.move_to(end);
            break;
        }
        end = cursor.position();
    }
    return cursor.range(begin, end);
}

// Reads one job, section by section.
class JobReader {
   public:
    JobReader(LineSpan lines, ReadingRecorder* recorder) noexcept : lines_(lines), cursor_(lines), recorder_(recorder) {}

    GJFData job;

    void read() {
        const LineSpan control = take_control_lines(cursor_, recorder_ != nullptr);
        if (control.empty()) {
            fail("Empty file or invalid format");
            return;
        }
        job.control = read_control_section(control, true, recorder_);
        RouteQuestions questions(route());
        const RouteShape shape = shape_of(route(), questions);
        if (shape.has_overlays) {
            read_overlays();
        }
        if (!shape.all_from_checkpoint && read_title(shape, questions)) {
            read_molecule_section(shape, questions);
        }
        const bool from_checkpoint = shape.all_from_checkpoint || shape.molecule_from_checkpoint || charge_line_alone_;
        const bool atoms_known = (!from_checkpoint || job.geom.atom_count() > 0) && !in_doubt();
        questions.set_molecule({is_open_shell(job.geom), has_residues_});
        read_extra_inputs(cursor_, job, kinds_of(questions), atoms_known, recorder_);
        if (recorder_ != nullptr && shape.changes_checkpoint && !job.geom.molecule_lines.empty()) {
            // The changes stand behind the charge line already.
            std::vector<ExtraInputSectionKind>& missing = recorder_->reading.layout.missing;
            missing.erase(std::remove(missing.begin(), missing.end(), ExtraInputSectionKind::MMParameters), missing.end());
        }
        if (recorder_ != nullptr && ends_early_) {
            recorder_->reading.layout.missing.clear();  // all of it is in the checkpoint
        }
    }

   private:
    // Reports that something is missing, of which nothing behind it can be told. It may stand in a file that is named.
    void fail(const char* message) {
        if (recorder_ != nullptr && std::any_of(lines_.begin(), lines_.end(), is_include_line)) {
            report_departure(recorder_, {}, message);
        } else {
            report_fault(recorder_, {}, message);
        }
        note_doubt(recorder_, &JobReading::structure_uncertain);
    }

    const ParsedKeywords& route() const noexcept {
        static const ParsedKeywords none;
        return job.control.parsed_keywords ? *job.control.parsed_keywords : none;
    }

    KindsOfRoute kinds_of(const RouteQuestions& questions) const {
        return {expected_kinds(questions),
                recorder_ == nullptr ? std::vector<ExtraInputSectionKind>() : kinds_for_blocks_left_over(questions)};
    }

    // Reports that something is missing, which matters only where no checkpoint holds it.
    void miss(const char* message, const RouteQuestions& questions) {
        if (goes_on_from_checkpoint(job.control, route(), questions)) {
            report_departure(recorder_, {}, message);
            ends_early_ = true;
        } else {
            fail(message);
        }
    }

    bool in_doubt() const noexcept {
        return recorder_ != nullptr && (recorder_->reading.atoms_uncertain || recorder_->reading.structure_uncertain);
    }

    // Takes the next section, which a failure until the next step is about.
    LineSpan take(LineSpan (LineCursor::*take_section)() noexcept) {
        const LineSpan section = (cursor_.*take_section)();
        if (recorder_ != nullptr && !section.empty()) {
            recorder_->at(section.front());
        }
        return section;
    }

    void read_overlays() {
        const LineSpan overlays = take(&LineCursor::take_section);
        if (overlays.empty()) {
            return;
        }
        job.extra_overlays = joined(overlays);
        if (recorder_ != nullptr) {
            recorder_->reading.places.overlays = recorder_->place_of(overlays);
        }
    }

    // Tells whether anything follows that a molecule may be read from.
    bool read_title(const RouteShape& shape, const RouteQuestions& questions) {
        const std::size_t blank_lines = cursor_.skip_blank_lines();
        if (shape.molecule_from_checkpoint
                ? opens_charge_line_without_title(cursor_, blank_lines, expected_kinds(questions).size())
                : opens_molecule_without_title(cursor_, blank_lines)) {
            return true;
        }
        const LineSpan title = take(&LineCursor::take_section);
        if (title.empty()) {
            miss("Missing title section", questions);
            return false;
        }
        job.title = joined(title);
        if (recorder_ != nullptr) {
            recorder_->reading.places.title = recorder_->place_of(title);
        }
        return true;
    }

    // Takes a molecule section that begins with a file: its charge and its atoms are not known.
    void keep_molecule_of_file(LineSpan section) {
        report_departure(recorder_, section.front(), "Geometry section must have at least 2 lines");
        recorder_->reading.atoms_uncertain = true;
        recorder_->reading.places.molecule = recorder_->place_of(section);
        job.geom.molecule_lines.assign(section.begin(), section.end());
    }

    // Tells whether a section holds a charge line, and what a checkpoint or a model builder makes a molecule of.
    bool stands_for_molecule(LineSpan section, const RouteShape& shape, const RouteQuestions& questions) const {
        return shape.builds_model || (shape.changes_checkpoint && !holds_atoms(section)) ||
               (is_charge_line_alone(section) && goes_on_from_checkpoint(job.control, route(), questions));
    }

    void read_molecule_section(const RouteShape& shape, const RouteQuestions& questions) {
        const LineSpan section = take(&LineCursor::take_section_past_comments);
        if (shape.molecule_from_checkpoint) {
            job.geom = read_charge_line_alone(section, recorder_);
            return;
        }
        if (section.empty()) {
            miss("Missing geometry section", questions);
            return;
        }
        if (recorder_ != nullptr && is_include_line(section.front())) {
            keep_molecule_of_file(section);
            return;
        }
        if (recorder_ != nullptr && stands_for_molecule(section, shape, questions)) {
            note_refusal(*recorder_, [&] {
                LineCursor ahead = cursor_;
                read_molecule(
                    ahead, section, [] { return true; }, nullptr);
            });
            job.geom = read_charge_line_alone(section, recorder_);
            charge_line_alone_ = true;
            recorder_->reading.atoms_uncertain = shape.builds_model;
            return;
        }
        const SectionsExpected sections_expected = [&] {
            const KindsOfRoute kinds = kinds_of(questions);
            return !kinds.expected.empty() || !kinds.for_left_over.empty();
        };
        MoleculeReading molecule = read_molecule(cursor_, section, sections_expected, recorder_);
        job.geom = std::move(molecule.geom);
        has_residues_ = molecule.has_residues;
    }

    LineSpan lines_;
    LineCursor cursor_;
    ReadingRecorder* recorder_;
    bool has_residues_ = false;
    bool charge_line_alone_ = false;
    bool ends_early_ = false;  // behind the route or the title of a job that goes on from a checkpoint
};

GJFData read_job(LineSpan lines) {
    JobReader reader(lines, nullptr);
    reader.read();
    return std::move(reader.job);
}

}  // namespace

JobReading read_job_piece(const JobPiece& piece) {
    JobReading reading;
    ReadingRecorder recorder(piece.text, reading);
    reading.places.lines = recorder.place_of(LineSpan(piece.lines));
    recorder.current_line = {reading.places.lines.begin, 0};
    JobReader reader(piece.lines, &recorder);
    reader.read();
    reading.job = std::move(reader.job);
    number_lines(piece, reading);
    if (reading.structure_uncertain) {
        reading.layout.missing.clear();
    }
    const auto fault = std::find_if_not(reading.faults.begin(), reading.faults.end(),
                                        [](const ReadingFault& found) { return found.harmless; });
    if (fault != reading.faults.end()) {
        reading.error = fault->message;
        const TextPlace& place = reading.layout.faults[static_cast<std::size_t>(fault - reading.faults.begin())];
        reading.error_line = place.line;
        reading.error_column = place.column;
    }
    return reading;
}

std::vector<JobReading> read_jobs_with_layout(std::string_view text) {
    if (text.size() > largest_text) {
        throw GJFParseException("A text of 4 GiB or more cannot be read");
    }
    std::vector<JobReading> readings;
    for_each_job_piece(text, [&](const JobPiece& piece) { readings.push_back(read_job_piece(piece)); });
    return readings;
}

GJFData GJFParser::parse_string(const std::string& text) {
    constexpr std::size_t usual_line = 48;
    std::string_view rest = skip_byte_order_mark(text);
    std::vector<std::string_view> lines;
    core::memory::reserve_large(lines, rest.size() / usual_line);
    bool separated = false;
    take_job_lines(rest, separated, lines);
    return read_job(lines);
}

GJFData GJFParser::parse_file(const std::string& path) { return parse_string(read_whole_file(path)); }

GJFMultiData GJFParser::parse_string_multi(const std::string& text) {
    std::string_view rest = skip_byte_order_mark(text);
    GJFMultiData result;
    std::vector<std::string_view> lines;
    bool separated = true;
    for (std::size_t number = 1; separated || !rest.empty(); ++number) {
        lines.clear();
        take_job_lines(rest, separated, lines);
        if (are_blank(lines)) {
            continue;
        }
        try {
            result.jobs.push_back(read_job(lines));
        } catch (const GJFParseException& error) {
            throw GJFParseException("Job " + std::to_string(number) + ": " + error.what());
        }
    }
    if (result.jobs.empty()) {
        throw GJFParseException("No valid jobs found in input");
    }
    return result;
}

GJFMultiData GJFParser::parse_file_multi(const std::string& path) { return parse_string_multi(read_whole_file(path)); }

std::vector<std::string> GJFParser::split_by_empty_lines(const std::string& text) {
    const std::vector<std::string_view> lines = split_lines(text);
    LineCursor cursor{LineSpan(lines)};
    std::vector<std::string> sections;
    for (LineSpan section = cursor.take_section(); !section.empty(); section = cursor.take_section()) {
        sections.push_back(joined(section));
    }
    return sections;
}

std::vector<std::string> GJFParser::split_string(const std::string& text, char delimiter) {
    std::vector<std::string> pieces;
    std::size_t begin = 0;
    while (begin < text.size()) {
        const std::size_t end = std::min(text.find(delimiter, begin), text.size());
        pieces.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return pieces;
}

std::string GJFParser::trim(const std::string& text) { return std::string(trim_view(text)); }

bool GJFParser::is_number(const std::string& text) { return is_number_text(text); }

bool GJFParser::is_integer(const std::string& text) { return is_integer_text(text); }

}  // namespace quor::input::gaussian

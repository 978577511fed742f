// Reads files and job texts: cuts them at --Link1-- lines, cuts each job into lines and sections, and reads these in their
// order.
#include <gjf/core/reader/gjf_parser.hpp>

#include <core/memory/reserve_large.hpp>
#include <gjf/core/reader/extra_input_rules.hpp>
#include <gjf/core/reader/reading.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <array>
#include <fstream>
#include <stdexcept>

namespace quor::input::gaussian {

bool opens_molecule_without_title(const LineCursor& cursor, std::size_t blank_lines, bool charge_line_suffices) {
    LineCursor ahead = cursor;
    const LineSpan section = ahead.take_section();
    return blank_lines >= 2 && !section.empty() && (section.size() > 1 || charge_line_suffices) &&
           is_valid_geometry_first_line(section.front());
}

namespace {

constexpr std::string_view job_separator = "--link1--";

bool is_job_separator(std::string_view line) noexcept {
    // Most lines are told apart by their first character.
    const auto first = std::find_if_not(line.begin(), line.end(), is_trim_character);
    return first != line.end() && *first == job_separator.front() && equals_folded(trim_view(line), job_separator);
}

// Takes the lines before the next separator line off `text` and hands each to `take`; returns the text they stand in.
// `separated` tells whether there was a separator line.
template <typename Take>
std::string_view take_job(std::string_view& text, bool& separated, Take take) {
    const std::string_view all = text;
    separated = false;
    while (!text.empty()) {
        const std::size_t begin = all.size() - text.size();
        const std::string_view line = take_line(text);
        if (is_job_separator(line)) {
            separated = true;
            return all.substr(0, begin);
        }
        take(line);
    }
    return all;
}

void take_job_lines(std::string_view& text, bool& separated, std::vector<std::string_view>& lines) {
    take_job(text, separated, [&lines](std::string_view line) { lines.push_back(line); });
}

bool are_blank(LineSpan lines) noexcept { return std::all_of(lines.begin(), lines.end(), is_blank_line); }

// The conditions of the route that decide how a job is cut into sections.
struct RouteShape {
    bool has_overlays = false;
    bool molecule_from_checkpoint = false;  // geom=check: charge and multiplicity alone are read
    bool all_from_checkpoint = false;       // geom=allcheck: neither title nor molecule is read
};

RouteShape shape_of(const ParsedKeywords& route, const RouteQuestions& questions) {
    RouteShape shape;
    shape.has_overlays = route.has_keyword("extraoverlays");
    shape.molecule_from_checkpoint = questions.option("geom", {"chk"});
    shape.all_from_checkpoint = questions.option("geom", {"allchk"});
    return shape;
}

// Reads the charge line of a job whose molecule comes from a checkpoint. Lines after it are kept, not read.
GeomSection read_charge_line_alone(LineSpan section, LayoutRecorder* recorder) {
    const auto line = std::find_if_not(section.begin(), section.end(), is_comment_line);
    if (line == section.end()) {
        throw GJFParseException("Missing charge/spin line for geom=check");
    }
    if (recorder != nullptr) {
        recorder->at(*line);
        recorder->layout.charge_line = recorder->current_line;
        recorder->layout.molecule =
            recorder->range_of(section.subspan(static_cast<std::size_t>(line - section.begin()) + 1));
    }
    GeomSection geom;
    geom.set_charge_spin_pairs(GJFParser::parse_charge_spin_line(std::string(*line)));
    geom.molecule_lines.assign(line + 1, section.end());
    return geom;
}

bool begins_with(std::string_view line, char mark) noexcept {
    const std::string_view text = trim_view(line);
    return !text.empty() && text.front() == mark;
}

// Takes the lines of the control section. Blank lines among Link 0 lines, or between these and the route, do not end it.
LineSpan take_control_lines(LineCursor& cursor) {
    LineSpan section = cursor.take_section_past_comments();
    const std::size_t begin = cursor.position() - section.size();
    std::size_t end = cursor.position();
    const auto is_link0 = [](std::string_view line) { return begins_with(line, '%') || is_comment_line(line); };
    while (!section.empty() && std::all_of(section.begin(), section.end(), is_link0)) {
        section = cursor.take_section_past_comments();
        const auto first = std::find_if_not(section.begin(), section.end(), is_comment_line);
        if (first == section.end() || (!begins_with(*first, '#') && !begins_with(*first, '%'))) {
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
    JobReader(LineSpan lines, LayoutRecorder* recorder) noexcept : cursor_(lines), recorder_(recorder) {}

    GJFData job;

    void read() {
        const LineSpan control = take_control_lines(cursor_);
        if (control.empty()) {
            throw GJFParseException("Empty file or invalid format");
        }
        job.control = read_control_section(control, true, recorder_);
        const ParsedKeywords no_route;
        const ParsedKeywords& route = job.control.parsed_keywords ? *job.control.parsed_keywords : no_route;
        RouteQuestions questions(route);
        const RouteShape shape = shape_of(route, questions);
        if (shape.has_overlays) {
            read_overlays();
        }
        if (!shape.all_from_checkpoint) {
            read_title(shape);
            read_molecule_section(shape, [&questions] { return !expected_kinds(questions).empty(); });
        }
        const bool from_checkpoint = shape.all_from_checkpoint || shape.molecule_from_checkpoint;
        const bool atoms_known = !from_checkpoint || job.geom.atom_count() > 0;
        questions.set_molecule({is_open_shell(job.geom), has_residues_});
        read_extra_inputs(cursor_, job, expected_kinds(questions), atoms_known, recorder_);
    }

   private:
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
            recorder_->layout.overlays = recorder_->range_of(overlays);
        }
    }

    void read_title(const RouteShape& shape) {
        const std::size_t blank_lines = cursor_.skip_blank_lines();
        if (opens_molecule_without_title(cursor_, blank_lines, shape.molecule_from_checkpoint)) {
            return;
        }
        const LineSpan title = take(&LineCursor::take_section);
        if (title.empty()) {
            throw GJFParseException("Missing title section");
        }
        job.title = joined(title);
        if (recorder_ != nullptr) {
            recorder_->layout.title = recorder_->range_of(title);
        }
    }

    void read_molecule_section(const RouteShape& shape, const SectionsExpected& sections_expected) {
        const LineSpan section = take(&LineCursor::take_section_past_comments);
        if (shape.molecule_from_checkpoint) {
            job.geom = read_charge_line_alone(section, recorder_);
            return;
        }
        if (section.empty()) {
            throw GJFParseException("Missing geometry section");
        }
        MoleculeReading molecule = read_molecule(cursor_, section, sections_expected, recorder_);
        job.geom = std::move(molecule.geom);
        has_residues_ = molecule.has_residues;
    }

    LineCursor cursor_;
    LayoutRecorder* recorder_;
    bool has_residues_ = false;
};

GJFData read_job(LineSpan lines) {
    JobReader reader(lines, nullptr);
    reader.read();
    return std::move(reader.job);
}

}  // namespace

// Reads by block into the text itself: what a stream buffer cannot hold for want of memory it would drop in silence.
std::string read_whole_file(const std::string& path) {
    std::ifstream file(path, std::ios::in | std::ios::binary);
    std::string text;
    std::array<char, 1 << 14> block;
    do {
        file.read(block.data(), block.size());
        text.append(block.data(), static_cast<std::size_t>(file.gcount()));
    } while (file);
    // A folder opens but does not read.
    if (!file.is_open() || file.bad()) {
        throw GJFParseException("Cannot open file: " + path);
    }
    return text;
}

void for_each_job_piece(std::string_view text, const std::function<void(JobPiece)>& take) {
    bool separated = true;
    std::size_t first_line = 1;
    for (std::size_t number = 1; separated || !text.empty(); ++number) {
        std::vector<std::string_view> lines;
        take_job_lines(text, separated, lines);
        const std::size_t count = lines.size();
        if (!are_blank(lines)) {
            take({number, first_line, separated, std::move(lines)});
        }
        first_line += count + 1;
    }
}

JobReading read_job_piece(const JobPiece& piece) {
    JobReading reading;
    reading.layout.number = piece.number;
    reading.layout.lines = {piece.first_line, piece.first_line + piece.lines.size() - 1};
    LayoutRecorder recorder(reading.layout, piece.lines.data());
    JobReader reader(piece.lines, &recorder);
    try {
        reader.read();
    } catch (const GJFParseException& error) {
        reading.error = std::string_view(error.what()).substr(std::string_view("GJF Parse Error: ").size());
        reading.error_line = recorder.current_line;
    } catch (const std::out_of_range& error) {
        reading.error = error.what();
        reading.error_line = recorder.current_line;
    }
    reading.job = std::move(reader.job);
    return reading;
}

std::vector<JobReading> read_jobs_with_layout(std::string_view text) {
    std::vector<JobReading> readings;
    for_each_job_piece(skip_byte_order_mark(text),
                       [&](const JobPiece& piece) { readings.push_back(read_job_piece(piece)); });
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

std::vector<std::string> GJFParser::split_by_link1(const std::string& text) {
    std::vector<std::string> pieces;
    std::string_view rest = text;
    bool separated = false;
    while (!rest.empty()) {
        const std::string_view piece = take_job(rest, separated, [](std::string_view) {});
        if (separated || !piece.empty()) {
            pieces.emplace_back(piece);
            if (!piece.empty() && piece.back() != '\n') {
                pieces.back() += '\n';
            }
        }
    }
    return pieces;
}

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

const char* GJFParser::extra_input_section_kind_name(ExtraInputSectionKind kind) { return extra_input_kind_name(kind); }

bool GJFParser::extra_input_section_requires_blank_line(ExtraInputSectionKind kind) {
    return extra_input_requires_blank_line(kind);
}

}  // namespace quor::input::gaussian

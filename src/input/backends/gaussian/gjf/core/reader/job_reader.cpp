// Reads files and job texts: cuts them at --Link1-- lines, cuts each job into lines and sections, and reads these in their
// order.
#include <gjf/core/reader/gjf_parser.hpp>

#include <gjf/core/reader/reading.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <system_error>

namespace quor::input::gaussian {

bool is_blank_line(std::string_view line) noexcept { return std::all_of(line.begin(), line.end(), is_trim_character); }

std::string joined(LineSpan lines) { return join_lines(lines.data(), lines.size()); }

std::vector<std::string_view> views_of(const std::vector<std::string>& lines) {
    return std::vector<std::string_view>(lines.begin(), lines.end());
}

std::size_t LineCursor::skip_blank_lines() noexcept {
    const std::size_t begin = next_;
    while (!at_end() && is_blank_line(lines_[next_])) {
        ++next_;
    }
    return next_ - begin;
}

LineSpan LineCursor::take_section() noexcept {
    skip_blank_lines();
    const std::size_t begin = next_;
    while (!at_end() && !is_blank_line(lines_[next_])) {
        ++next_;
    }
    return range(begin, next_);
}

LineSpan LineCursor::take_section_past_comments() noexcept {
    LineSpan section = take_section();
    while (!section.empty() && std::all_of(section.begin(), section.end(), is_comment_line)) {
        section = take_section();
    }
    return section;
}

bool opens_molecule_without_title(const LineCursor& cursor, std::size_t blank_lines, bool charge_line_suffices) {
    LineCursor ahead = cursor;
    const LineSpan section = ahead.take_section();
    return blank_lines >= 2 && !section.empty() && (section.size() > 1 || charge_line_suffices) &&
           is_valid_geometry_first_line(section.front());
}

namespace {

constexpr std::string_view job_separator = "--link1--";

bool is_job_separator(std::string_view line) noexcept {
    // Most lines are told apart by their first character, without trimming.
    return !line.empty() && (line.front() == '-' || is_trim_character(line.front())) &&
           equals_folded(trim_view(line), job_separator);
}

// Takes the text before the next separator line off `text`; `separated` tells whether there was one.
std::string_view take_job(std::string_view& text, bool& separated) {
    const std::string_view all = text;
    separated = false;
    while (!text.empty() && !separated) {
        const std::size_t begin = all.size() - text.size();
        separated = is_job_separator(take_line(text));
        if (separated) {
            return all.substr(0, begin);
        }
    }
    return all;
}

// The conditions of the route that decide how a job is cut into sections.
struct RouteShape {
    bool has_overlays = false;
    bool molecule_from_checkpoint = false;  // geom=check: charge and multiplicity alone are read
    bool all_from_checkpoint = false;       // geom=allcheck: neither title nor molecule is read
};

RouteShape shape_of(const ParsedKeywords& route) {
    const SimpleYAMLParser& schema = default_route_schema();
    RouteShape shape;
    shape.has_overlays = route.has_keyword("extraoverlays");
    shape.molecule_from_checkpoint = has_geom_option(route, schema, "chk");
    shape.all_from_checkpoint = has_geom_option(route, schema, "allchk");
    return shape;
}

// Reads the charge line of a job whose molecule comes from a checkpoint. Lines after it are kept, not read.
GeomSection read_charge_line_alone(LineSpan section) {
    const auto line = std::find_if_not(section.begin(), section.end(), is_comment_line);
    if (line == section.end()) {
        throw GJFParseException("Missing charge/spin line for geom=check");
    }
    GeomSection geom;
    geom.set_charge_spin_pairs(GJFParser::parse_charge_spin_line(std::string(*line)));
    geom.molecule_lines.assign(line + 1, section.end());
    return geom;
}

// Reads title and molecule, unless both come from a checkpoint.
void read_title_and_molecule(LineCursor& cursor, const RouteShape& shape, bool sections_expected, GJFData& job) {
    const std::size_t blank_lines = cursor.skip_blank_lines();
    if (!opens_molecule_without_title(cursor, blank_lines, shape.molecule_from_checkpoint)) {
        const LineSpan title = cursor.take_section();
        if (title.empty()) {
            throw GJFParseException("Missing title section");
        }
        job.title = joined(title);
    }
    const LineSpan section = cursor.take_section_past_comments();
    if (shape.molecule_from_checkpoint) {
        job.geom = read_charge_line_alone(section);
        return;
    }
    if (section.empty()) {
        throw GJFParseException("Missing geometry section");
    }
    job.geom = read_molecule(cursor, section, sections_expected);
}

bool begins_with(std::string_view line, char mark) noexcept {
    const std::string_view text = trim_view(line);
    return !text.empty() && text.front() == mark;
}

// Takes the lines of the control section. Blank lines among Link 0 lines, or between these and the route, do not end it.
std::vector<std::string_view> take_control_lines(LineCursor& cursor) {
    LineSpan section = cursor.take_section_past_comments();
    std::vector<std::string_view> lines(section.begin(), section.end());
    const auto is_link0 = [](std::string_view line) { return begins_with(line, '%') || is_comment_line(line); };
    while (!section.empty() && std::all_of(section.begin(), section.end(), is_link0)) {
        const std::size_t end = cursor.position();
        section = cursor.take_section_past_comments();
        const auto first = std::find_if_not(section.begin(), section.end(), is_comment_line);
        if (first == section.end() || (!begins_with(*first, '#') && !begins_with(*first, '%'))) {
            cursor.move_to(end);
            break;
        }
        lines.insert(lines.end(), section.begin(), section.end());
    }
    return lines;
}

GJFData read_job(std::string_view text) {
    const std::vector<std::string_view> lines = split_lines(text);
    LineCursor cursor{LineSpan(lines)};
    const std::vector<std::string_view> control = take_control_lines(cursor);
    if (control.empty()) {
        throw GJFParseException("Empty file or invalid format");
    }
    GJFData job;
    job.control = read_control_section(control);
    const ParsedKeywords no_route;
    const ParsedKeywords& route = job.control.parsed_keywords ? *job.control.parsed_keywords : no_route;
    const RouteShape shape = shape_of(route);
    if (shape.has_overlays) {
        const LineSpan overlays = cursor.take_section();
        if (!overlays.empty()) {
            job.extra_overlays = joined(overlays);
        }
    }
    if (!shape.all_from_checkpoint) {
        read_title_and_molecule(cursor, shape, !expected_kinds(route, nullptr).empty(), job);
    }
    const bool from_checkpoint = shape.all_from_checkpoint || shape.molecule_from_checkpoint;
    read_extra_inputs(cursor, job, expected_kinds(route, &job.geom), !from_checkpoint || job.geom.atom_count() > 0);
    return job;
}

std::string read_file(const std::string& path) {
    std::ifstream file(path, std::ios::in | std::ios::binary);
    std::ostringstream text;
    // A folder opens but does not read, and an empty file puts nothing into the stream.
    if (!file || file.peek() == std::ifstream::traits_type::eof()) {
        if (!file.is_open() || file.bad()) {
            throw GJFParseException("Cannot open file: " + path);
        }
        return {};
    }
    text << file.rdbuf();
    if (file.bad() || text.bad()) {
        throw GJFParseException("Cannot open file: " + path);
    }
    return std::move(text).str();
}

}  // namespace

GJFData GJFParser::parse_string(const std::string& text) {
    std::string_view rest = skip_byte_order_mark(text);
    bool separated = false;
    return read_job(take_job(rest, separated));
}

GJFData GJFParser::parse_file(const std::string& path) { return parse_string(read_file(path)); }

GJFMultiData GJFParser::parse_string_multi(const std::string& text) {
    std::string_view rest = skip_byte_order_mark(text);
    GJFMultiData result;
    bool separated = true;
    for (std::size_t number = 1; separated || !rest.empty(); ++number) {
        const std::string_view piece = take_job(rest, separated);
        if (is_blank_line(piece)) {
            continue;
        }
        try {
            result.jobs.push_back(read_job(piece));
        } catch (const GJFParseException& error) {
            throw GJFParseException("Job " + std::to_string(number) + ": " + error.what());
        }
    }
    if (result.jobs.empty()) {
        throw GJFParseException("No valid jobs found in input");
    }
    return result;
}

GJFMultiData GJFParser::parse_file_multi(const std::string& path) { return parse_string_multi(read_file(path)); }

std::vector<std::string> GJFParser::split_by_link1(const std::string& text) {
    std::vector<std::string> pieces;
    std::string_view rest = text;
    bool separated = false;
    while (!rest.empty()) {
        const std::string_view piece = take_job(rest, separated);
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

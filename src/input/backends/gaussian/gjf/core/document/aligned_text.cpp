// Aligns the columns of atom lines: each line is cut into cells, each column takes the room of its widest cell.
#include <gjf/core/document/aligned_text.hpp>

#include <gjf/core/job/job_comparison.hpp>
#include <gjf/core/reader/job_layout.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/span.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace quor::input::gaussian {
namespace {

// A line of the molecule: its fields by columns, some of which may be empty, and its comment.
struct AlignedLine {
    std::string_view line;
    std::vector<std::string_view> cells;
    std::string_view comment;
};

// The room that a column takes before and behind the points of its numbers; other words begin where it begins.
struct Column {
    std::size_t before = 0;
    std::size_t behind = 0;
    std::size_t word = 0;

    std::size_t width() const noexcept { return std::max(before + behind, word); }
};

std::size_t point_of(std::string_view number) noexcept { return std::min(number.find_first_of(".eEdD"), number.size()); }

bool is_number(std::string_view cell) { return to_fortran_number(cell).has_value(); }

// Tells whether a comma stands outside of brackets, and so between fields.
bool has_comma(std::string_view field) {
    NestingTracker nesting;
    return std::any_of(field.begin(), field.end(), [&](char c) { return nesting.advance(c) && c == ','; });
}

// Cuts a line into cells; nothing where its fields are not cut by blanks alone.
std::optional<AlignedLine> cut_line(std::string_view line) {
    AlignedLine found;
    found.line = line;
    const std::string_view content = without_comment(line);
    found.comment = line.substr(content.size());
    split_fields(content, FieldSeparators::WhiteSpace, true, found.cells);
    found.comment.remove_suffix(found.comment.size() - (found.comment.find_last_not_of(" \t\r\v\f") + 1));
    const bool is_plain = !found.cells.empty() && std::none_of(found.cells.begin(), found.cells.end(), has_comma);
    return is_plain ? std::optional<AlignedLine>(std::move(found)) : std::nullopt;
}

std::vector<Column> columns_of(const std::vector<AlignedLine>& lines) {
    std::vector<Column> columns;
    for (const AlignedLine& line : lines) {
        columns.resize(std::max(columns.size(), line.cells.size()));
        for (std::size_t i = 0; i < line.cells.size(); ++i) {
            const std::string_view cell = line.cells[i];
            const std::size_t point = point_of(cell);
            if (i > 0 && is_number(cell)) {
                columns[i].before = std::max(columns[i].before, point);
                columns[i].behind = std::max(columns[i].behind, cell.size() - point);
            } else {
                columns[i].word = std::max(columns[i].word, cell.size());
            }
        }
    }
    return columns;
}

std::string without_last_blanks(std::string text) {
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

std::string text_of(const AlignedLine& line, const std::vector<Column>& columns) {
    std::string text;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::string_view cell = i < line.cells.size() ? line.cells[i] : std::string_view();
        const bool by_point = i > 0 && is_number(cell);
        text += i == 0 ? " " : "  ";
        const std::size_t end = text.size() + columns[i].width();
        text.append(by_point ? columns[i].before - point_of(cell) : 0, ' ');
        text += cell;
        text.append(end > text.size() ? end - text.size() : 0, ' ');
    }
    return line.comment.empty() ? without_last_blanks(std::move(text)) : text + "  " + std::string(line.comment);
}

// Where some atoms have a freeze code, the others leave its column empty.
void leave_room_for_codes(const GJFData& job, std::vector<std::optional<AlignedLine>>& lines) {
    const std::vector<AtomCoord>& atoms = job.geom.atoms;
    const bool any = std::any_of(atoms.begin(), atoms.end(), [](const AtomCoord& atom) { return atom.freeze.has_value(); });
    for (std::size_t i = 0; any && i < atoms.size() && i < lines.size(); ++i) {
        if (!atoms[i].freeze && lines[i]) {
            lines[i]->cells.insert(lines[i]->cells.begin() + 1, std::string_view());
        }
    }
}

void align_job(std::string_view text, const std::vector<std::string_view>& all, const JobReading& reading,
               std::vector<TextEdit>& edits) {
    std::vector<std::size_t> numbers = reading.layout.atoms;
    numbers.insert(numbers.end(), reading.layout.zmatrix_rows.begin(), reading.layout.zmatrix_rows.end());
    std::vector<std::optional<AlignedLine>> cut;
    cut.reserve(numbers.size());
    for (const std::size_t number : numbers) {
        cut.push_back(cut_line(all.at(number - 1)));
    }
    leave_room_for_codes(reading.job, cut);
    std::vector<AlignedLine> lines;
    for (std::optional<AlignedLine>& line : cut) {
        if (line) {
            lines.push_back(*std::move(line));
        }
    }
    const std::vector<Column> columns = columns_of(lines);
    for (const AlignedLine& line : lines) {
        std::string aligned = text_of(line, columns);
        if (aligned != line.line) {
            const Span place = span_of(text, line.line);
            edits.push_back({place.begin, place.end(), std::move(aligned)});
        }
    }
}

bool reads_the_same(const std::vector<JobReading>& before, const std::vector<JobReading>& after) {
    return std::equal(
        before.begin(), before.end(), after.begin(), after.end(),
        [](const JobReading& a, const JobReading& b) { return a.error == b.error && !find_difference(a.job, b.job); });
}

}  // namespace

std::string aligned_text(std::string_view text) {
    const std::vector<JobReading> readings = read_jobs_with_layout(text);
    const std::vector<std::string_view> lines = split_lines(text);
    std::vector<TextEdit> edits;
    for (const JobReading& reading : readings) {
        if (reading.error.empty() && !reading.atoms_uncertain) {
            align_job(text, lines, reading, edits);
        }
    }
    std::sort(edits.begin(), edits.end(), [](const TextEdit& a, const TextEdit& b) { return a.begin < b.begin; });
    std::string aligned = with_edits(text, edits);
    // Blanks alone have changed; a form in which they count is left as it is.
    return reads_the_same(readings, read_jobs_with_layout(aligned)) ? aligned : std::string(text);
}

}  // namespace quor::input::gaussian

// Recognises texts that are no job files, so that one finding says what they are instead of many about their lines.
#include <gjf/core/check/foreign_texts.hpp>

#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>
#include <vector>

namespace quor::input::gaussian {
namespace {

// Enough to hold what programs print first.
constexpr std::size_t lines_looked_at = 200;

using LineList = std::vector<std::string_view>;

LineList first_lines(std::string_view text) {
    LineList lines;
    while (!text.empty() && lines.size() < lines_looked_at) {
        lines.push_back(take_line(text));
    }
    return lines;
}

// Exactly four fields: a row of a Z-matrix whose labels are atomic numbers has more.
bool is_atom_of_xyz(std::string_view line) {
    Fields fields;
    cut_fields(line, fields);
    return fields.size() == 4 && is_cartesian_line(fields);
}

bool begins_in_utf16(std::string_view text) {
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF") ||
           (text.size() > 3 && ((text[1] == '\0' && text[3] == '\0') || (text[0] == '\0' && text[2] == '\0')));
}

bool has_lone_returns(std::string_view text) {
    const std::size_t first = text.find('\r');
    return first != std::string_view::npos && text.find('\n') == std::string_view::npos && first + 1 < text.size();
}

// Each tells the index of the line that shows what a text is, or the number of lines.
std::size_t line_of_output(const LineList& lines) {
    const auto found = std::find_if(lines.begin(), lines.end(), [](std::string_view line) {
        return line.starts_with(" Entering Gaussian System") || line.starts_with(" Entering Link 1 = ");
    });
    return static_cast<std::size_t>(found - lines.begin());
}

std::size_t line_of_xyz(const LineList& lines) {
    return lines.size() >= 3 && opens_like_xyz(lines[0], lines[2]) ? 0 : lines.size();
}

std::size_t line_of_pdb(const LineList& lines) {
    constexpr std::string_view records[] = {"HEADER ", "ATOM   ", "HETATM ", "CRYST1 ", "COMPND "};
    const bool is_pdb = !lines.empty() && std::any_of(std::begin(records), std::end(records),
                                                      [&](std::string_view record) { return lines[0].starts_with(record); });
    return is_pdb ? 0 : lines.size();
}

// ORCA's keywords stand behind "!", its coordinates behind "* xyz CHARGE MULTIPLICITY", or in a file that is named there.
std::size_t line_of_orca(const LineList& lines) {
    const auto is_coordinates = [](std::string_view line) {
        if (line.find('*') == std::string_view::npos) {
            return false;
        }
        Fields fields;
        cut_fields(line, fields);
        const std::size_t kind = !fields.empty() && fields[0] == "*" ? 1 : 0;
        if (fields.size() < kind + 3 || !is_integer_text(fields[kind + 1]) || !is_integer_text(fields[kind + 2])) {
            return false;
        }
        const std::string name = to_lower_copy(fields[kind].substr(kind == 0 ? 1 : 0));
        return fields[0][0] == '*' && (name == "xyz" || name == "xyzfile" || name == "int" || name == "gzmt");
    };
    const auto found = std::find_if(lines.begin(), lines.end(), is_coordinates);
    const bool has_keywords =
        std::any_of(lines.begin(), found, [](std::string_view line) { return trim_view(line).substr(0, 1) == "!"; });
    return has_keywords ? static_cast<std::size_t>(found - lines.begin()) : lines.size();
}

constexpr struct {
    std::size_t (*line)(const LineList& lines);
    const char* message;
    const char* hint;
} foreign_kinds[] = {
    {line_of_output, "this is an output of Gaussian, not a job file", "check the job file that it was made from"},
    {line_of_xyz, "this is an .xyz file, not a job file",
     "write a route, a blank line, a title, a blank line and charge and multiplicity in place of its first two lines"},
    {line_of_pdb, "this is a PDB file, not a job file",
     "make a job file of it: a route, a title, charge and multiplicity, atoms"},
    {line_of_orca, "this is input of ORCA, not a job file for Gaussian",
     "its keywords have other names: write a route, a title, charge and multiplicity, atoms"},
};

}  // namespace

bool opens_like_xyz(std::string_view count, std::string_view atom) {
    const std::string_view number = trim_view(count);
    return is_integer_text(number) && to_int64(number).value_or(0) > 0 && is_atom_of_xyz(atom);
}

std::optional<ForeignText> find_foreign_text(std::string_view text) {
    if (begins_in_utf16(text)) {
        return ForeignText{"this text is encoded in UTF-16, which Gaussian does not read", "save it as plain ASCII or UTF-8",
                           1};
    }
    if (has_lone_returns(text)) {
        return ForeignText{"the lines end in carriage returns alone, so that all is one line",
                           "convert all line ends to line feeds", 1, true};
    }
    const LineList lines = first_lines(skip_byte_order_mark(text));
    for (const auto& kind : foreign_kinds) {
        if (const std::size_t line = kind.line(lines); line < lines.size()) {
            return ForeignText{kind.message, kind.hint, line + 1};
        }
    }
    return std::nullopt;
}

}  // namespace quor::input::gaussian

// Finds the fields of lines again, by the functions that the reading cuts them with.
#include <gjf/core/reader/job_places.hpp>

#include <gjf/core/reader/row_form.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>

namespace quor::input::gaussian {
namespace {

// Returns the line that begins at an offset, without its comment.
std::string_view line_at(std::string_view text, std::uint32_t offset) noexcept {
    std::string_view rest = text.substr(offset);
    return without_comment(take_line(rest));
}

// The fields of a line, and where they stand.
class PlacedFields {
   public:
    PlacedFields(std::string_view text, std::string_view line) : text_(text) { cut_fields(line, fields); }

    /// Returns the place of a field; an empty one for a field that is not there.
    Span operator[](std::size_t i) const noexcept { return i < fields.size() ? span_of(text_, fields[i]) : Span(); }

    Fields fields;

   private:
    std::string_view text_;
};

VariableFields placed(std::string_view text, NameAndValue entry) noexcept {
    return entry.name.empty() ? VariableFields() : VariableFields{span_of(text, entry.name), span_of(text, entry.value)};
}

}  // namespace

std::vector<Span> line_places(std::string_view text, Span lines) {
    std::vector<Span> places;
    for (const std::string_view line : split_lines(lines.in(text))) {
        places.push_back(span_of(text, line));
    }
    return places;
}

std::vector<Span> charge_places(std::string_view text, Span charge_line) {
    Fields fields;
    cut_charge_fields(without_comment(charge_line.in(text)), fields);
    std::vector<Span> places;
    std::transform(fields.begin(), fields.end(), std::back_inserter(places),
                   [text](std::string_view field) { return span_of(text, field); });
    return places;
}

AtomLineFields atom_line_fields(std::string_view text, std::uint32_t line) {
    const PlacedFields placed(text, line_at(text, line));
    const std::size_t begin = coordinate_begin(placed.fields);
    AtomLineFields atom{placed[0],
                        begin == 2 ? placed[1] : Span(),
                        {placed[begin], placed[begin + 1], placed[begin + 2]},
                        placed[begin + 3],
                        {}};
    for (std::size_t i = begin + 4; i < placed.fields.size(); ++i) {
        atom.rest.push_back(placed[i]);
    }
    return atom;
}

RowFields row_fields(std::string_view text, std::uint32_t line) {
    const PlacedFields placed(text, line_at(text, line));
    RowFields row;
    row.label = placed[0];
    const std::optional<RowForm> form = find_row_form(placed.fields);
    if (!form) {
        return row;
    }
    for (std::size_t i = 0; i < form->values; ++i) {
        row.references[i] = {form->cartesian ? Span() : placed[form->atom(i)], placed[form->value(i)]};
    }
    row.code = form->code == 0 ? Span() : placed[form->code];
    for (std::size_t i = form->rest; i < placed.fields.size(); ++i) {
        row.rest.push_back(placed[i]);
    }
    return row;
}

VariableFields zmatrix_variable_fields(std::string_view text, std::uint32_t line) {
    const std::string_view found = line_at(text, line);
    Fields fields;
    cut_fields(found, fields);
    return placed(text, cut_zmatrix_variable(found, fields));
}

VariableFields cartesian_variable_fields(std::string_view text, std::uint32_t line) {
    return placed(text, cut_cartesian_variable(line_at(text, line)));
}

}  // namespace quor::input::gaussian

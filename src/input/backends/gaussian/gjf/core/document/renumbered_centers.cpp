// Renumbers the centers of basis sets and potentials.
#include <gjf/core/document/renumbering.hpp>

#include <gjf/core/chemistry/elements.hpp>
#include <gjf/core/document/field_line.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/number_range.hpp>

#include <algorithm>
#include <optional>
#include <vector>

namespace quor::input::gaussian {
namespace {

// Renumbers the atoms that a line of centers names beside elements, before the zero that ends it.
std::string centers_line(FieldLine fields, const AtomPlaces& places) {
    const bool has_zero = fields.field(fields.size() - 1) == "0";
    std::size_t names = 0;
    for (std::size_t i = fields.size() - (has_zero ? 1 : 0); i-- > 0;) {
        if (!is_number_range_text(fields.field(i))) {
            ++names;
            continue;
        }
        const std::string now = renumbered_range(fields.field(i), places);
        names += now.empty() ? 0 : 1;
        if (now.empty()) {
            fields.remove(i);
        } else if (now != fields.field(i)) {
            fields.set_text(i, now);
        }
    }
    if (names == 0) {
        throw CannotRenumber("no atom of a block is left");
    }
    return fields.text();
}

// What a line of centers names: elements alone, or atoms by number too.
enum class Centers { None, Elements, Numbers };

// Reads a line as one of centers: elements and atom numbers with a zero behind them.
Centers centers_of(const FieldLine& fields) {
    if (fields.size() < 2 || fields.field(fields.size() - 1) != "0") {
        return Centers::None;
    }
    Centers centers = Centers::Elements;
    for (std::size_t i = 0; i + 1 < fields.size(); ++i) {
        const std::string_view field = fields.field(i);
        // A minus sign before the element allows for its absence.
        const std::string_view name = field.front() == '-' ? field.substr(1) : field;
        if (is_number_range_text(field)) {
            centers = Centers::Numbers;
        } else if (atomic_number(name) == 0 && !equals_folded(name, "bq")) {
            return Centers::None;
        }
    }
    return centers;
}

// Tells whether a field is a number, with the exponent letter of Fortran allowed.
bool is_term_number(std::string_view field) {
    std::string text = to_lower_copy(field);
    std::replace(text.begin(), text.end(), 'd', 'e');
    return text.find_first_not_of("+-.0123456789e") == std::string::npos && is_number_text(text);
}

// Tells whether a line is a term: power, exponent, coefficient and perhaps one for spin and orbit.
bool is_term(const FieldLine& fields) {
    bool whole = (fields.size() == 3 || fields.size() == 4) && is_integer_text(fields.field(0));
    for (std::size_t i = 1; whole && i < fields.size(); ++i) {
        whole = is_term_number(fields.field(i));
    }
    return whole;
}

// A line that is more than a comment, and where it is.
struct NotedLine {
    std::size_t index;
    FieldLine fields;
};

// Walks the blocks of a section of potentials: centers, then the name of a library's potential or one that is written out.
class PotentialWalk {
   public:
    explicit PotentialWalk(const std::vector<NotedLine>& lines) : lines_(lines) {}

    // Returns whether the section is made of whole blocks to its end; collects their lines of centers.
    bool walk(std::vector<const NotedLine*>& centers) {
        while (next_ < lines_.size()) {
            centers.push_back(&lines_[next_]);
            if (centers_of(lines_[next_++].fields) == Centers::None || !take_potential()) {
                return false;
            }
        }
        return true;
    }

   private:
    const FieldLine* take_line() { return next_ < lines_.size() ? &lines_[next_++].fields : nullptr; }

    bool take_potential() {
        const FieldLine* name = take_line();
        if (name == nullptr || is_number_range_text(name->field(0)) || name->field(0).substr(0, 4) == "****") {
            return false;
        }
        if (name->size() != 3) {
            return name->size() == 1;
        }
        const std::optional<std::int64_t> highest = to_int64(name->field(1));
        const std::optional<std::int64_t> electrons = to_int64(name->field(2));
        bool whole = highest && *highest >= 0 && electrons && *electrons >= 0;
        for (std::int64_t i = 0; whole && i <= *highest; ++i) {
            whole = take_component();
        }
        return whole;
    }

    // Takes a title, the number of terms, and the terms.
    bool take_component() {
        const bool has_title = take_line() != nullptr;
        const FieldLine* head = has_title ? take_line() : nullptr;
        const std::optional<std::int64_t> count = head && head->size() == 1 ? to_int64(head->field(0)) : std::nullopt;
        bool whole = count && *count >= 0;
        for (std::int64_t i = 0; whole && i < *count; ++i) {
            const FieldLine* term = take_line();
            whole = term != nullptr && is_term(*term);
        }
        return whole;
    }

    const std::vector<NotedLine>& lines_;
    std::size_t next_ = 0;
};

// Tells whether a line of a section of any form could name atoms by number. A name such as "Fe 2 0", right behind a line of
// elements, could not.
bool could_name_numbers(const std::vector<NotedLine>& lines) {
    Centers before = Centers::None;
    for (const auto& [index, fields] : lines) {
        const Centers centers = centers_of(fields);
        const bool is_name = before != Centers::None && fields.size() == 3 && !is_number_range_text(fields.field(0));
        if (centers == Centers::Numbers && !is_name) {
            return true;
        }
        before = is_name ? Centers::None : centers;
    }
    return false;
}

}  // namespace

std::string basis_text(const std::string& text, const AtomPlaces& places) {
    bool centers_next = true;
    return change_lines(text, places, [&](std::string_view line, const AtomPlaces& where) -> std::optional<std::string> {
        FieldLine fields(line);
        const bool ends_block = fields.size() > 0 && fields.field(0).substr(0, 4) == "****";
        if (fields.size() == 0 || !centers_next || ends_block) {
            centers_next = centers_next || ends_block;
            return std::string(line);
        }
        centers_next = false;
        return centers_line(std::move(fields), where);
    });
}

std::string potential_text(const std::string& text, const AtomPlaces& places) {
    std::vector<std::string_view> lines = split_lines(text);
    std::vector<NotedLine> noted;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        FieldLine fields(lines[i]);
        if (fields.size() > 0) {
            noted.push_back({i, std::move(fields)});
        }
    }
    if (!could_name_numbers(noted)) {
        return text;
    }
    std::vector<const NotedLine*> centers;
    if (!PotentialWalk(noted).walk(centers)) {
        throw CannotRenumber("it names atoms by number");
    }
    std::vector<std::string> changed(lines.size());
    for (const NotedLine* line : centers) {
        changed[line->index] = centers_line(line->fields, places);
        lines[line->index] = changed[line->index];
    }
    return join_lines(lines.data(), lines.size());
}

}  // namespace quor::input::gaussian

// Renumbers the atoms that sections name, each kind of section in its own form.
#include <gjf/core/document/job_rewriting.hpp>

#include <gjf/core/check/elements.hpp>
#include <gjf/core/document/field_line.hpp>
#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/reader/reading.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/number_range.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>
#include <limits>
#include <optional>
#include <set>

namespace quor::input::gaussian {
namespace {

using Kind = ExtraInputSectionKind;

// Says why a section cannot follow the atoms.
class CannotRenumber : public std::exception {
   public:
    explicit CannotRenumber(std::string reason) : reason_(std::move(reason)) {}
    const char* what() const noexcept override { return reason_.c_str(); }

   private:
    std::string reason_;
};

// Returns the new number of an atom, from 1; nothing when it is gone.
std::optional<std::size_t> new_number(std::string_view field, const AtomPlaces& places) {
    const std::optional<std::int64_t> number = to_int64(field);
    if (!number || *number < 1 || static_cast<std::size_t>(*number) > places.old_count()) {
        throw CannotRenumber("'" + std::string(field) + "' is no atom of the molecule");
    }
    const std::size_t place = places.places[static_cast<std::size_t>(*number) - 1];
    return place == AtomPlaces::gone ? std::nullopt : std::optional<std::size_t>(place + 1);
}

// Writes sorted numbers as a list of ranges.
std::string ranges_text(const std::set<std::size_t>& numbers) {
    std::string text;
    for (auto begin = numbers.begin(); begin != numbers.end();) {
        auto last = begin;
        while (std::next(last) != numbers.end() && *std::next(last) == *last + 1) {
            ++last;
        }
        text += (text.empty() ? "" : ",") + std::to_string(*begin);
        text += *last == *begin ? "" : "-" + std::to_string(*last);
        begin = std::next(last);
    }
    return text;
}

// Tells whether a field names atoms by number, be they there or not; elements do not.
bool names_numbers(std::string_view field) noexcept {
    return to_number_range(field, std::numeric_limits<std::int64_t>::min()).has_value();
}

// Renumbers a field that is a number or a range; nothing is left of it when all its atoms are gone.
std::string renumbered_range(std::string_view field, const AtomPlaces& places) {
    const std::optional<NumberRange> range = to_number_range(field, 1, static_cast<std::int64_t>(places.old_count()));
    if (!range) {
        throw CannotRenumber("'" + std::string(field) + "' is no atom of the molecule");
    }
    std::set<std::size_t> numbers;
    for (std::int64_t i = range->first; i <= range->last; ++i) {
        const std::size_t place = places.places[static_cast<std::size_t>(i) - 1];
        if (place != AtomPlaces::gone) {
            numbers.insert(place + 1);
        }
    }
    return ranges_text(numbers);
}

// A line of an internal coordinate: a type letter, atoms and what is to be done; gone when one of its atoms is.
std::optional<std::string> coordinate_line(std::string_view line, const AtomPlaces& places) {
    constexpr std::string_view letters = "xbadlo";
    constexpr std::size_t atom_counts[] = {1, 2, 3, 4, 4, 4};
    FieldLine fields(line);
    if (fields.size() == 0) {
        return std::string(line);
    }
    if (line.find('(') != std::string_view::npos || fields.field(0).find('=') != std::string_view::npos) {
        throw CannotRenumber("it holds expressions");
    }
    const bool typed = !is_integer_text(fields.field(0)) && fields.field(0) != "*";
    const std::size_t type = typed ? letters.find(to_lower_ascii(fields.field(0).front())) : 4;
    if (type == std::string_view::npos || (typed && fields.field(0).size() != 1)) {
        throw CannotRenumber("'" + std::string(fields.field(0)) + "' is no type of coordinate");
    }
    std::size_t count = typed ? atom_counts[type] : 4;
    bool gone = false;
    for (std::size_t i = typed ? 1 : 0; i < fields.size() && count > 0; ++i, --count) {
        if (fields.field(i) == "*") {
            continue;
        }
        if (!is_integer_text(fields.field(i))) {
            break;
        }
        const std::optional<std::size_t> number = new_number(fields.field(i), places);
        gone = gone || !number;
        if (number && fields.field(i) != std::to_string(*number)) {
            fields.set_number(i, std::to_string(*number));
        }
    }
    return gone ? std::nullopt : std::optional<std::string>(fields.text());
}

// A line of atom numbers and ranges alone.
std::optional<std::string> atom_list_line(std::string_view line, const AtomPlaces& places) {
    FieldLine fields(line);
    const std::size_t count = fields.size();
    for (std::size_t i = fields.size(); i-- > 0;) {
        const std::string text = renumbered_range(fields.field(i), places);
        if (text.empty()) {
            fields.remove(i);
        } else if (text != fields.field(i)) {
            fields.set_text(i, text);
        }
    }
    return fields.size() == 0 && count > 0 ? std::nullopt : std::optional<std::string>(fields.text());
}

// A part of a line that selects atoms, as in "atoms=1-4,C": a key, which may be missing, and the words behind it.
struct SelectionItem {
    std::string_view text;
    std::string_view key;
    std::vector<std::string_view> words;

    bool has_key(std::string_view lower) const noexcept { return equals_folded(key, lower); }
    bool selects() const noexcept { return key.empty() || has_key("atoms"); }
    bool lists_atoms() const noexcept { return selects() || has_key("notatoms"); }
};

// Cuts a line into items; a list ends where the next key begins.
std::vector<SelectionItem> selection_items(std::string_view text) {
    constexpr std::string_view separators = " \t\r\v\f,()=";
    std::vector<SelectionItem> items;
    for (std::size_t i = text.find_first_not_of(separators); i < text.size();) {
        const std::size_t end = std::min(text.find_first_of(separators, i), text.size());
        const std::size_t equals = std::min(text.find_first_not_of(" \t", end), text.size());
        const std::string_view word = text.substr(i, end - i);
        const bool is_key = equals < text.size() && text[equals] == '=';
        if (is_key || equals_folded(word, "noatoms")) {
            items.push_back({text.substr(i, (is_key ? equals + 1 : end) - i), word, {}});
        } else {
            if (items.empty() || items.back().has_key("noatoms")) {
                items.push_back({word, {}, {}});
            }
            const std::size_t closed = std::min(text.find_first_not_of(')', end), text.size());
            const auto begin = static_cast<std::size_t>(items.back().text.data() - text.data());
            items.back().words.push_back(word);
            items.back().text = text.substr(begin, closed - begin);
        }
        i = text.find_first_not_of(separators, end);
    }
    return items;
}

// Renumbers the words of an item; nothing is left of it when all of them are gone. Elements stay.
std::string renumbered_item(const SelectionItem& item, const AtomPlaces& places) {
    if (!item.lists_atoms() || item.words.empty()) {
        return std::string(item.text);
    }
    std::string result;
    const char* written = item.text.data();
    for (const std::string_view word : item.words) {
        const bool numeric = (word[0] >= '0' && word[0] <= '9') || word.find_first_not_of("+-0123456789") == word.npos;
        const std::string now = numeric ? renumbered_range(word, places) : std::string(word);
        if (!now.empty()) {
            // What stands before the first word is the key; a word that is gone takes what separates it along.
            const char* begin = result.empty() ? item.text.data() : written;
            const char* end = result.empty() ? item.words[0].data() : word.data();
            result.append(begin, end).append(now);
        }
        written = word.data() + word.size();
    }
    return result.empty() ? result : result.append(written, item.text.data() + item.text.size());
}

// Refuses when a list that selected atoms is gone and nothing on its line says that others are meant, or none.
void check_selection(const std::vector<SelectionItem>& items, const std::vector<std::string>& now) {
    bool lost = false;
    bool kept = false;
    for (std::size_t i = 0; i < items.size(); ++i) {
        lost = lost || (items[i].selects() && now[i].empty());
        kept = kept || items[i].has_key("noatoms") || (items[i].selects() && !items[i].words.empty() && !now[i].empty());
    }
    if (lost && !kept) {
        throw CannotRenumber("no atom of 'atoms=...' is left");
    }
}

// A line such as "noatoms atoms=1-4,C block=2 notatoms=7": numbers and ranges of atoms are renumbered; elements, and what
// stands behind other keys, stay. A list of which nothing is left goes with its key.
std::optional<std::string> atom_selection_line(std::string_view line, const AtomPlaces& places) {
    const std::vector<SelectionItem> items = selection_items(without_comment(line));
    if (items.empty()) {
        return std::string(line);
    }
    std::vector<std::string> now;
    std::transform(items.begin(), items.end(), std::back_inserter(now),
                   [&](const SelectionItem& item) { return renumbered_item(item, places); });
    check_selection(items, now);
    const auto end_of = [](std::string_view text) { return text.data() + text.size(); };
    std::string result;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (!now[i].empty()) {
            const char* begin = result.empty() ? line.data() : end_of(items[i - 1].text);
            const char* end = result.empty() ? items[0].text.data() : items[i].text.data();
            result.append(begin, end).append(now[i]);
        }
    }
    return result.empty() ? std::nullopt
                          : std::optional<std::string>(result.append(end_of(items.back().text), end_of(line)));
}

// A line whose first field is an atom or an element, as in a list of radii.
std::optional<std::string> first_field_line(std::string_view line, const AtomPlaces& places) {
    FieldLine fields(line);
    if (fields.size() == 0 || !names_numbers(fields.field(0))) {
        return std::string(line);
    }
    const std::string text = renumbered_range(fields.field(0), places);
    if (text.empty()) {
        return std::nullopt;
    }
    if (text != fields.field(0)) {
        fields.set_text(0, text);
    }
    return fields.text();
}

template <typename ChangeLine>
std::string change_lines(const std::string& text, const AtomPlaces& places, ChangeLine change_line) {
    std::string result;
    for (const std::string_view line : split_lines(text)) {
        if (const std::optional<std::string> now = change_line(line, places)) {
            result += *now;
            result += '\n';
        }
    }
    if (!result.empty()) {
        result.pop_back();
    }
    return result;
}

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

// The lines of centers of a basis set: they end in a zero and name elements or atoms. Others stay.
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

// A line of atom numbers cannot be told from a term of a potential but by walking all of its blocks.
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

// Lists one line an atom, behind a first line of temperature and pressure.
std::string masses_text(const std::string& text, const AtomPlaces& places) {
    const std::vector<std::string_view> lines = split_lines(text);
    if (lines.size() != places.old_count() + 1) {
        throw CannotRenumber("it does not have one line for each atom");
    }
    if (places.added) {
        throw CannotRenumber("the isotope of a new atom is not known");
    }
    std::vector<std::string_view> ordered(places.count);
    for (std::size_t old = 0; old < places.old_count(); ++old) {
        if (places.places[old] != AtomPlaces::gone) {
            ordered[places.places[old]] = lines[old + 1];
        }
    }
    std::string result(lines[0]);
    for (const std::string_view line : ordered) {
        result += '\n';
        result += line;
    }
    return result;
}

// A second or third structure: its atoms go and move as those of the first.
std::string structure_text(const std::string& text, const AtomPlaces& places) {
    const std::vector<std::string_view> lines = split_lines(text);
    const auto blank = std::find_if(lines.begin(), lines.end(), is_blank_line);
    const auto charge = std::find_if_not(blank == lines.end() ? lines.begin() : blank, lines.end(), is_blank_line);
    const auto atoms = charge == lines.end() ? charge : charge + 1;
    const bool cartesian =
        std::all_of(atoms, lines.end(), [](std::string_view line) { return FieldLine(line).size() >= 4; });
    if (!cartesian || static_cast<std::size_t>(lines.end() - atoms) != places.old_count()) {
        throw CannotRenumber("its atoms cannot be told");
    }
    if (places.added) {
        throw CannotRenumber("where a new atom is in it is not known");
    }
    std::vector<std::string_view> ordered(places.count);
    for (std::size_t old = 0; old < places.old_count(); ++old) {
        if (places.places[old] != AtomPlaces::gone) {
            ordered[places.places[old]] = atoms[static_cast<std::ptrdiff_t>(old)];
        }
    }
    std::vector<std::string_view> all(lines.begin(), atoms);
    all.insert(all.end(), ordered.begin(), ordered.end());
    return join_lines(all.data(), all.size());
}

// Rows of bonds that are kept as text.
std::optional<std::string> bond_row(std::string_view line, const AtomPlaces& places) {
    FieldLine row(line);
    if (row.size() == 0) {
        return std::string(line);
    }
    const std::optional<std::size_t> atom = new_number(row.field(0), places);
    if (!atom) {
        return std::nullopt;
    }
    for (std::size_t i = row.size() - 1; i >= 2; i -= 2) {
        const std::optional<std::size_t> partner = new_number(row.field(i - 1), places);
        if (!partner) {
            row.remove(i);
            row.remove(i - 1);
        } else if (row.field(i - 1) != std::to_string(*partner)) {
            row.set_text(i - 1, std::to_string(*partner));
        }
    }
    if (row.field(0) != std::to_string(*atom)) {
        row.set_number(0, std::to_string(*atom));
    }
    return row.text();
}

bool has_digit(const std::string& text) { return text.find_first_of("0123456789") != std::string::npos; }

std::string refuse_numbers(const std::string& text) {
    if (has_digit(text)) {
        throw CannotRenumber("it may name atoms by number");
    }
    return text;
}

std::string solvation_text(const std::string& text) {
    const bool names_spheres = contains_folded(text, "modifysph") || contains_folded(text, "extrasph");
    for (const std::string_view line : split_lines(text)) {
        Fields fields;
        cut_fields(without_comment(line), fields);
        if (names_spheres || (!fields.empty() && is_integer_text(fields[0]))) {
            throw CannotRenumber("it changes the spheres of single atoms");
        }
    }
    return text;
}

// Atoms that are only added at the end leave the numbers of the others as they are; these kinds list all atoms all the same.
bool lists_every_atom(Kind kind) noexcept {
    return kind == Kind::AtomicMasses || kind == Kind::SecondTitleAndMolecule || kind == Kind::ThirdTitleAndTSStructure ||
           kind == Kind::BOMDInput;
}

std::string renumbered(Kind kind, const std::string& text, const AtomPlaces& places) {
    switch (kind) {
        case Kind::CoordinateModifications:
        case Kind::SecondCoordinateModifications:
        case Kind::ThirdCoordinateModifications:
        case Kind::IRCCoordinates:
            return change_lines(text, places, coordinate_line);
        case Kind::SpinSpinAtoms:
        case Kind::PickettAtoms:
            return change_lines(text, places, atom_list_line);
        case Kind::FrozenAtomAlterations:
        case Kind::SecondFrozenAtomAlterations:
        case Kind::ThirdFrozenAtomAlterations:
        case Kind::HarmonicModeSelection:
        case Kind::AnharmonicModeSelection:
            return change_lines(text, places, atom_selection_line);
        case Kind::AtomicRadii:
            return change_lines(text, places, first_field_line);
        case Kind::BasisSet:
        case Kind::DensityFittingBasis:
            return basis_text(text, places);
        case Kind::ECP:
            return potential_text(text, places);
        case Kind::AtomicMasses:
            return masses_text(text, places);
        case Kind::SecondTitleAndMolecule:
        case Kind::ThirdTitleAndTSStructure:
            return structure_text(text, places);
        case Kind::SecondConnectivity:
        case Kind::ThirdConnectivity:
            return change_lines(text, places, bond_row);
        case Kind::PCMInput:
        case Kind::PCMSolvation:
            return solvation_text(text);
        case Kind::NBOInput:
        case Kind::HarmonicConstraints:
        case Kind::External:
        case Kind::LinkSpecificInput:
        case Kind::BOMDInput:
        case Kind::HinderedRotor:
        case Kind::ElectrostaticData:
        case Kind::FCHTInput:
        case Kind::GuessSource:
        case Kind::AnharmonicInput:
            return refuse_numbers(text);
        default:
            return text;
    }
}

}  // namespace

std::string renumber_section(Kind kind, const std::string& text, const AtomPlaces& places, bool force) {
    if (!places.renumbered && !(places.added && lists_every_atom(kind))) {
        return text;
    }
    try {
        return renumbered(kind, text, places);
    } catch (const CannotRenumber& reason) {
        if (force) {
            return text;
        }
        throw GJFParseException(std::string("The section '") + extra_input_kind_name(kind) +
                                "' cannot follow the change of atoms: " + reason.what());
    }
}

}  // namespace quor::input::gaussian

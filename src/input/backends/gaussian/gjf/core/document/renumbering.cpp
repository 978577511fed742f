// Renumbers the atoms that sections name: one walk over the tokens of any kind of section.
#include <gjf/core/document/job_rewriting.hpp>

#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/sections/section_kinds.hpp>
#include <gjf/core/sections/section_tokens.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/number_range.hpp>

#include <algorithm>
#include <cstdint>
#include <exception>
#include <iterator>
#include <set>
#include <span>
#include <utility>

namespace quor::input::gaussian {
namespace {

// Says why a section cannot follow the atoms. It does not leave this source.
class CannotRenumber : public std::exception {
   public:
    explicit CannotRenumber(std::string reason) : reason_(std::move(reason)) {}
    const char* what() const noexcept override { return reason_.c_str(); }

   private:
    std::string reason_;
};

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

// Renumbers a number or a range; nothing is left of it when all its atoms are gone. Throws for what is no atom.
std::string renumbered(std::string_view field, TokenKind kind, const AtomPlaces& places) {
    const bool may_be_range = kind == TokenKind::Atoms || is_integer_text(field);
    const std::optional<NumberRange> range =
        may_be_range ? to_number_range(field, 1, static_cast<std::int64_t>(places.old_count())) : std::nullopt;
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

// A token, or a list of them, among others that it is parted from by blanks or commas.
struct Sibling {
    Span span;
    std::string now;  // empty when it is gone
    bool keeps_right_end = false;

    bool gone() const noexcept { return now.empty(); }
};

using Siblings = std::vector<Sibling>;

// How the blanks around a text take up its change of length.
enum class Spacing { KeepsColumns, Plain };

// Walks the lines of one section and collects what changes.
class SectionWalk {
   public:
    SectionWalk(const SectionReading& section, const AtomPlaces& places)
        : section_(section), places_(places), line_goes_(section.lines.size()) {}

    std::string follow() {
        for (std::size_t i = 0; i < section_.lines.size(); ++i) {
            line_goes_[i] = !follow_line(i);
        }
        follow_lines_of_atoms();
        remove_lines();
        std::stable_sort(edits_.begin(), edits_.end(),
                         [](const TextEdit& a, const TextEdit& b) { return a.begin < b.begin; });
        return edited_text();
    }

   private:
    std::string edited_text() const {
        std::string result;
        std::size_t done = 0;
        for (const TextEdit& edit : edits_) {
            result.append(section_.text.substr(done, edit.begin - done)).append(edit.text);
            done = edit.end;
        }
        return result.append(section_.text.substr(done));
    }

    // Renumbers a line; returns false when it goes.
    bool follow_line(std::size_t index) {
        const SectionLine& line = section_.lines[index];
        switch (line.form) {
            case LineForm::Coordinate:
            case LineForm::First:
            case LineForm::Bonds:
            case LineForm::Atoms:
            case LineForm::Centers:
                return follow_fields(line);
            case LineForm::Selection:
                return follow_selection(index);
            case LineForm::LeftOver:
                check_left_over(line);
                return true;
            case LineForm::Include:
                if (section_.includes_name_atoms) {
                    throw CannotRenumber("it includes a file");
                }
                return true;
            case LineForm::Plain:
            case LineForm::Expression:
            case LineForm::OfAtom:
            case LineForm::BlockEnd:
            case LineForm::Shell:
            case LineForm::Primitive:
            case LineForm::Name:
                return true;
        }
        return true;
    }

    Siblings siblings_of(std::span<const SectionToken> tokens) const {
        Siblings siblings;
        for (const SectionToken& token : tokens) {
            const std::string_view text = section_[token.span];
            const bool names_atoms = token.kind == TokenKind::Atom || token.kind == TokenKind::Atoms;
            siblings.push_back({token.span, names_atoms ? renumbered(text, token.kind, places_) : std::string(text)});
        }
        return siblings;
    }

    static bool names_nothing(std::span<const SectionToken> tokens, const Siblings& fields) {
        const std::size_t names = fields.size() - (tokens.back().kind == TokenKind::End ? 1 : 0);
        return std::all_of(fields.begin(), fields.begin() + static_cast<std::ptrdiff_t>(names),
                           [](const Sibling& field) { return field.gone(); });
    }

    bool follow_fields(const SectionLine& line) {
        Siblings fields = siblings_of(section_.tokens_of(line));
        const auto gone = [](const Sibling& field) { return field.gone(); };
        if (line.form == LineForm::Coordinate || line.form == LineForm::First) {
            if (std::any_of(fields.begin(), fields.end(), gone)) {
                return false;
            }
        } else if (line.form == LineForm::Atoms) {
            if (std::all_of(fields.begin(), fields.end(), gone)) {
                return false;
            }
        } else if (line.form == LineForm::Bonds) {
            if (fields[0].gone()) {
                return false;
            }
            for (std::size_t i = 2; i < fields.size(); i += 2) {
                fields[i].now = fields[i - 1].gone() ? std::string() : fields[i].now;
            }
        } else if (names_nothing(section_.tokens_of(line), fields)) {
            throw CannotRenumber("no atom of a block is left");
        }
        for (std::size_t i = 0; i < fields.size(); ++i) {
            fields[i].keeps_right_end = line.form == LineForm::Coordinate || (line.form == LineForm::Bonds && i == 0);
        }
        write(fields, line.span.end(), Spacing::KeepsColumns);
        return true;
    }

    bool follow_selection(std::size_t index) {
        Siblings lists;
        std::vector<Siblings> words;
        bool lost = false;
        bool kept = false;
        for (; next_list_ < section_.lists.size() && section_.lists[next_list_].line == index; ++next_list_) {
            const SelectionList& list = section_.lists[next_list_];
            Siblings now = siblings_of(std::span(section_.tokens).subspan(list.first, list.count));
            const bool gone =
                list.count > 0 && std::all_of(now.begin(), now.end(), [](const Sibling& word) { return word.gone(); });
            words.push_back(std::move(now));
            lists.push_back({list.span, gone ? std::string() : std::string(section_[list.span])});
            lost = lost || (list.selects() && gone);
            kept = kept || list.is_noatoms() || (list.selects() && list.count > 0 && !gone);
        }
        // What the line means then is all atoms, or others than it did.
        if (lost && !kept) {
            throw CannotRenumber("no atom of 'atoms=...' is left");
        }
        for (std::size_t i = 0; i < lists.size(); ++i) {
            if (!lists[i].gone()) {
                write(words[i], lists[i].span.end(), Spacing::Plain);
            }
        }
        write(lists, section_.lines[index].span.end(), Spacing::Plain);
        return std::any_of(lists.begin(), lists.end(), [](const Sibling& list) { return !list.gone(); });
    }

    void check_left_over(const SectionLine& line) const {
        for (const SectionToken& token : section_.tokens_of(line)) {
            const std::optional<NumberRange> range = to_number_range(section_[token.span], 1);
            if (token.kind == TokenKind::Atoms && range && std::cmp_less_equal(range->first, places_.old_count())) {
                throw CannotRenumber("it may name atoms by number");
            }
        }
    }

    // Puts the lines that are about one atom each into the order of the atoms.
    void follow_lines_of_atoms() {
        std::vector<std::size_t> lines;
        for (std::size_t i = 0; i < section_.lines.size(); ++i) {
            if (section_.lines[i].form == LineForm::OfAtom) {
                lines.push_back(i);
            }
        }
        if (*section_.miscounted == '\0') {
            return;
        }
        if (lines.size() != places_.old_count()) {
            throw CannotRenumber(section_.miscounted);
        }
        if (places_.added) {
            throw CannotRenumber(section_.without_place);
        }
        for (std::size_t i = places_.count; i < lines.size(); ++i) {
            line_goes_[lines[i]] = true;
        }
        for (std::size_t old = 0; old < lines.size(); ++old) {
            if (const std::size_t place = places_.places[old]; place != AtomPlaces::gone && place != old) {
                const Span target = section_.lines[lines[place]].span;
                edits_.push_back({target.begin, target.end(), std::string(section_[section_.lines[lines[old]].span])});
            }
        }
    }

    // Removes lines with their ends; the last ones with the end of the line before.
    void remove_lines() {
        const std::vector<SectionLine>& lines = section_.lines;
        for (std::size_t first = 0; first < lines.size(); ++first) {
            if (!line_goes_[first]) {
                continue;
            }
            std::size_t behind = first + 1;
            while (behind < lines.size() && line_goes_[behind]) {
                ++behind;
            }
            const bool any_behind = behind < lines.size();
            const std::size_t begin = any_behind || first == 0 ? lines[first].span.begin : lines[first - 1].span.end();
            edits_.push_back({begin, any_behind ? lines[behind].span.begin : section_.text.size(), {}});
            first = behind;
        }
    }

    // Counts the blanks behind a place that another text may take: one is left before what follows.
    std::size_t free_blanks(std::size_t from, std::size_t to, bool is_last) const noexcept {
        const std::string_view gap = section_.text.substr(from, to - from);
        const std::size_t blanks = std::min(gap.find_first_not_of(' '), gap.size());
        if (is_last && blanks == gap.size()) {
            return blanks;
        }
        return blanks == 0 || (!is_last && blanks != gap.size()) ? 0 : blanks - 1;
    }

    std::size_t blanks_before(const Siblings& siblings, std::size_t i) const noexcept {
        if (i == 0) {
            return 0;
        }
        const std::size_t end = siblings[i - 1].span.end();
        const std::size_t begin = siblings[i].span.begin;
        if (section_.text.substr(end, begin - end).find_first_not_of(' ') != std::string_view::npos) {
            return 0;
        }
        return begin - (edits_.empty() ? end : std::max(end, edits_.back().end));
    }

    // Writes what is left of tokens or lists up to the end of their line. One that is gone takes along what parts it from
    // the one before; the first ones, what parts them from the one behind.
    void write(const Siblings& siblings, std::size_t end, Spacing spacing) {
        std::size_t i = 0;
        while (i < siblings.size() && siblings[i].gone()) {
            ++i;
        }
        if (i > 0 && i < siblings.size()) {
            edits_.push_back({siblings[0].span.begin, siblings[i].span.begin, {}});
        }
        while (i < siblings.size()) {
            std::size_t behind = i + 1;
            while (behind < siblings.size() && siblings[behind].gone()) {
                ++behind;
            }
            const bool is_last = behind == siblings.size();
            const std::size_t gap = siblings[behind - 1].span.end();
            const std::size_t taken = replace(siblings, i, gap, is_last ? end : siblings[behind].span.begin, spacing);
            if (behind > i + 1) {
                edits_.push_back({siblings[i].span.end(), gap + taken, {}});
            }
            i = behind;
        }
    }

    // Replaces one token by its new text. The gap behind it, from `gap` to `next`, may be parted from it by tokens that are
    // gone; returns how many of its blanks the text takes, which the caller removes when that is so.
    std::size_t replace(const Siblings& siblings, std::size_t i, std::size_t gap, std::size_t next, Spacing spacing) {
        const Sibling& token = siblings[i];
        if (token.now == section_[token.span]) {
            return 0;
        }
        const std::size_t width = token.span.length;
        const std::size_t length = token.now.size();
        std::size_t begin = token.span.begin;
        std::size_t taken = 0;
        std::string text = token.now;
        if (spacing == Spacing::KeepsColumns && length > width) {
            const std::size_t before = token.keeps_right_end ? blanks_before(siblings, i) : 0;
            const std::size_t left = before == 0 ? 0 : std::min(length - width, before - 1);
            const bool is_last = gap == siblings.back().span.end();
            taken = std::min(length - width - left, free_blanks(gap, next, is_last));
            begin -= left;
        } else if (spacing == Spacing::KeepsColumns && token.keeps_right_end) {
            text.insert(0, blanks_before(siblings, i) > 0 ? width - length : 0, ' ');
        } else if (spacing == Spacing::KeepsColumns && gap < section_.text.size() && section_.text[gap] == ' ') {
            text.append(width - length, ' ');
        }
        const bool joins_gap = gap == token.span.end();
        edits_.push_back({begin, token.span.end() + (joins_gap ? taken : 0), std::move(text)});
        return taken;
    }

    const SectionReading& section_;
    const AtomPlaces& places_;
    std::vector<bool> line_goes_;
    std::size_t next_list_ = 0;
    std::vector<TextEdit> edits_;
};

std::string followed(const SectionReading& section, const AtomPlaces& places) {
    if (!section.unclear.empty()) {
        throw CannotRenumber(section.unclear);
    }
    return SectionWalk(section, places).follow();
}

}  // namespace

std::string renumber_section(ExtraInputSectionKind kind, const std::string& text, const AtomPlaces& places, bool force) {
    if (!places.renumbered && !places.added) {
        return text;
    }
    const SectionReading section = read_section(kind, text);
    // Atoms that are only added leave the numbers of the others as they are.
    if (!places.renumbered && !section.lists_every_atom) {
        return text;
    }
    try {
        return followed(section, places);
    } catch (const CannotRenumber& reason) {
        if (force) {
            return text;
        }
        throw GJFParseException(std::string("The section '") + extra_input_kind_name(kind) +
                                "' cannot follow the change of atoms: " + reason.what());
    }
}

}  // namespace quor::input::gaussian

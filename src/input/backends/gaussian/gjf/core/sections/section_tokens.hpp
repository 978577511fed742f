// What the lines of an extra input section say: tokens with their places, atom numbers marked. Private to the library.
//
// A grammar reads the text of a section, one source each; checks walk the tokens, and renumbering replaces them. No grammar
// fails: what it cannot read it marks as words, and where atoms may be named in a form that it does not know it says so.
#pragma once

#include <gjf/core/job/extra_input_kind.hpp>
#include <gjf/core/text/span.hpp>
#include <gjf/core/text/text.hpp>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

enum class TokenKind : std::uint8_t {
    Word,
    Number,
    Element,  ///< a symbol, perhaps with a "-" that allows for its absence
    Atom,     ///< the number of one atom
    Atoms,    ///< the number of an atom, or a range
    AnyAtom,  ///< "*"
    End,      ///< the zero behind a line of centers
};

struct SectionToken {
    Span span;  ///< in the section's text
    TokenKind kind = TokenKind::Word;
};

/// What a line is. That tells what becomes of it when atoms go.
enum class LineForm : std::uint8_t {
    Plain,       ///< names no atoms
    Include,     ///< "@file": what is there is not known
    Coordinate,  ///< type, atoms, and what is to be done
    Expression,  ///< of generalised internal coordinates
    Bonds,       ///< an atom; then partners, each with an order
    Atoms,       ///< atoms alone
    First,       ///< an atom or element, and what is said of it
    Centers,     ///< elements and atoms, which the lines up to the next such line are about
    Selection,   ///< lists of atoms behind keys
    OfAtom,      ///< the n-th such line is about the n-th atom
    BlockEnd,
    Shell,
    Primitive,
    Name,      ///< of a basis set or potential
    LeftOver,  ///< of a section that nothing is known of
};

/// A line, without its end; an empty one and a comment have no tokens.
struct SectionLine {
    Span span;
    LineForm form = LineForm::Plain;
    std::uint32_t first = 0;  ///< of its tokens
    std::uint32_t count = 0;
};

/// A part of a line of selections, as "atoms=1-4,C": a key, which may be missing, and the words behind it.
struct SelectionList {
    Span span;
    std::uint32_t line = 0;   ///< from 0
    std::string_view key;     ///< empty when there is none
    std::uint32_t first = 0;  ///< of the tokens of its words
    std::uint32_t count = 0;

    /// Tells whether the atoms of its words are chosen, rather than left out or counted in another way.
    bool selects() const noexcept { return key.empty() || equals_folded(key, "atoms"); }
    bool is_noatoms() const noexcept { return equals_folded(key, "noatoms"); }
};

struct SectionReading {
    std::string_view text;  ///< what was read
    std::vector<SectionLine> lines;
    std::vector<SectionToken> tokens;
    std::vector<SelectionList> lists;
    std::string unclear;               ///< why atoms in it cannot be followed; empty when they can
    const char* miscounted = "";       ///< why not, when there is not one line `OfAtom` for each atom
    const char* without_place = "";    ///< why no atom can be added; empty when one can
    bool includes_name_atoms = false;  ///< whether a file that is included is likely to name atoms by number
    bool lists_every_atom = false;     ///< whether even an atom that is only added makes it wrong

    std::span<const SectionToken> tokens_of(const SectionLine& line) const noexcept {
        return std::span(tokens).subspan(line.first, line.count);
    }
    std::string_view operator[](Span span) const noexcept { return span.in(text); }
};

/// Reads the text of a section of some kind, whose lines end in line feeds, perhaps with a carriage return before. The text
/// must outlive what is returned.
SectionReading read_section(ExtraInputSectionKind kind, std::string_view text);

/// A type of internal coordinate, and how many atoms it has.
struct CoordinateType {
    char letter;
    std::size_t least;
    std::size_t most;
};

/// Finds a type by its letter, in any case; null when there is none.
const CoordinateType* find_coordinate_type(std::string_view field) noexcept;

/// Tells whether a text is "*" or a whole number.
bool is_atom_field(std::string_view field) noexcept;

/// Tells whether a text is a number, with the exponent letter of Fortran allowed.
bool is_fortran_or_c_number(std::string_view field);

/// Cuts a line into fields.
using CutLine = void (*)(std::string_view line, std::vector<std::string_view>& fields);

/// Cuts a line at blanks and commas outside quotes and brackets, up to its comment.
void cut_section_line(std::string_view line, std::vector<std::string_view>& fields);

/// Cuts the lines of a section and adds their tokens, for the grammars.
class SectionScanner {
   public:
    explicit SectionScanner(SectionReading& section, CutLine cut = cut_section_line) noexcept
        : section_(section), cut_(cut) {}

    /// Goes to the next line that is more than a comment and no "@file" line; false at the end.
    bool next();
    /// Fields of the line.
    const std::vector<std::string_view>& fields() const noexcept { return fields_; }
    std::string_view line() const noexcept { return section_[section_.lines[line_].span]; }
    std::string_view field(std::size_t i) const noexcept { return fields_[i]; }
    std::size_t size() const noexcept { return fields_.size(); }
    std::size_t index() const noexcept { return line_; }
    /// Says what the line is, before its tokens are added.
    void begin(LineForm form);
    void add(std::string_view text, TokenKind kind);
    /// Adds the fields from `first` on as words and numbers.
    void add_rest(std::size_t first);

   private:
    SectionReading& section_;
    CutLine cut_;
    std::vector<std::string_view> fields_;
    std::size_t line_ = static_cast<std::size_t>(-1);
};

}  // namespace quor::input::gaussian

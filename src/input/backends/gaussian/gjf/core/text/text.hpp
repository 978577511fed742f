// Cuts text into lines, fields and comments; trims and folds it. Bytes in, bytes out; no locale. Private to the library.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// Tells whether `c` is one of the four characters that trimming removes: space, tab, carriage return, line feed.
constexpr bool is_trim_character(char c) noexcept { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

/// Tells whether `c` is white space of the C locale (the four above, vertical tab and form feed).
constexpr bool is_white_space(char c) noexcept { return is_trim_character(c) || c == '\v' || c == '\f'; }

/// Removes space, tab, carriage return and line feed at both ends.
std::string_view trim_view(std::string_view text) noexcept;

/// Lower-cases one ASCII letter; every other byte stays as it is.
constexpr char to_lower_ascii(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// Tells whether `c` is a digit, or a letter of ASCII.
constexpr bool is_digit(char c) noexcept { return c >= '0' && c <= '9'; }
constexpr bool is_letter(char c) noexcept { return to_lower_ascii(c) >= 'a' && to_lower_ascii(c) <= 'z'; }

/// Lower-cases the ASCII letters of `text`.
std::string to_lower_copy(std::string_view text);

/// Compares `text` with `lower` (already lower case), ASCII case folded.
bool equals_folded(std::string_view text, std::string_view lower) noexcept;

/// Tells whether `lower` (already lower case) occurs in `text`, ASCII case folded.
bool contains_folded(std::string_view text, std::string_view lower) noexcept;

/// Removes a UTF-8 byte order mark at the start of the text.
std::string_view skip_byte_order_mark(std::string_view text) noexcept;

/// Cuts a text at every line feed and takes one trailing carriage return off each line. A final line feed ends the last line
/// and begins no other.
std::vector<std::string_view> split_lines(std::string_view text);

/// Takes the first line off a text that is not empty: without its line feed and one carriage return before that.
std::string_view take_line(std::string_view& text) noexcept;

/// Joins `count` lines with a line feed between them and none after the last.
std::string join_lines(const std::string_view* lines, std::size_t count);

/// Tells whether `c` is a quote or a bracket of any kind.
constexpr bool is_nesting_character(char c) noexcept {
    return c == '\'' || c == '"' || c == '(' || c == ')' || c == '[' || c == ']' || c == '{' || c == '}';
}

/// Follows quotes and brackets while a text is walked, one character after another.
///
/// A quote is closed by the same quote character alone; inside it no bracket counts. Parentheses, square brackets and braces
/// have a depth each, which never drops below zero. The prime of a basis set such as 6-31G(d',p') is no quote.
class NestingTracker {
   public:
    /// Takes the next character; returns whether it stands at top level (outside quotes and brackets, itself neither).
    bool advance(char c) noexcept {
        if (quote_ != 0 || is_nesting_character(c)) {
            return advance_nesting(c);
        }
        remember(c);
        return at_top_level();
    }
    bool at_top_level() const noexcept { return quote_ == 0 && (round_ | square_ | curly_) == 0; }
    bool in_quotes() const noexcept { return quote_ != 0; }

   private:
    bool advance_nesting(char c) noexcept;
    void remember(char c) noexcept {
        last_[1] = last_[0];
        last_[0] = c;
    }

    char quote_ = 0;
    char last_[2] = {0, 0};  // the two characters taken before, the later one first
    std::size_t round_ = 0;
    std::size_t square_ = 0;
    std::size_t curly_ = 0;
};

/// Tells whether the character at `i` opens a quoted stretch, when none is open: a quote that is no prime of a basis set.
bool opens_quote(std::string_view text, std::size_t i) noexcept;

/// Returns the part of a line before its comment: before the first "!" that stands outside quotes. A quote character that
/// nothing closes on the line quotes nothing.
std::string_view without_comment(std::string_view line) noexcept;

/// Tells whether a line holds a comment and nothing else.
bool is_comment_line(std::string_view line) noexcept;

/// Tells whether the content of a file takes the place of a line, as in "@molecule.txt".
bool is_include_line(std::string_view line) noexcept;

enum class FieldSeparators { WhiteSpace, WhiteSpaceAndComma };

/// Cuts a line into fields at separators outside quotes and brackets; empty fields are not produced.
///
/// With `lone_quotes_are_text`, a quote character that nothing closes on the line is an ordinary character, so that atom
/// names such as O5' do not swallow the rest of their line.
void split_fields(std::string_view line, FieldSeparators separators, bool lone_quotes_are_text,
                  std::vector<std::string_view>& fields);

}  // namespace quor::input::gaussian

// What is shown to people: colour, progress, and text that cannot disturb a terminal.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace CLI {
class App;
}

namespace quor_gjf {

/// Declares --color.
void add_colour_option(CLI::App& command);

/// Tells whether standard output is to show colour: as --color says; by itself where it is a terminal, NO_COLOR is not set
/// and TERM is not "dumb".
bool output_has_colour();

/// Returns the text with "?" in the place of control characters (tabs aside) and of bytes that are not UTF-8.
std::string printable(std::string_view text);

/// Returns a place as "PATH:LINE:COLUMN", as far as it is known: numbers from 1, 0 for none.
std::string shown_place(const std::string& path, std::size_t line, std::size_t column);

/// Returns the columns that a text takes, one a character.
std::size_t columns_of(std::string_view text) noexcept;

/// Shows a stretch of a line, and "^~~~" under its bytes [begin, begin + length); with length 0 the line alone. Long lines
/// are cut around the place. Both lines are indented by four blanks and end in a line feed. `mark_on` and `mark_off` stand
/// around the mark.
std::string excerpt(std::string_view line, std::size_t begin, std::size_t length, std::string_view mark_on = {},
                    std::string_view mark_off = {});

/// A line on standard error that tells how many files are done, of how many and how fast, when standard error is a terminal
/// and the work takes more than a second.
class Progress {
   public:
    Progress();
    /// Shows the line, now and then; `total` is asked once, when it is shown first.
    void show(std::size_t done, const std::function<std::size_t()>& total);
    /// Takes the line away, so that something else can be written.
    void clear();

   private:
    using Clock = std::chrono::steady_clock;

    bool terminal_;
    bool shown_ = false;
    std::size_t total_ = 0;  // 0 until it is known
    Clock::time_point begin_;
    Clock::time_point next_;
};

}  // namespace quor_gjf

// Colour, progress and excerpts.
#include "terminal.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <unistd.h>

namespace quor_gjf {
namespace {

constexpr std::size_t excerpt_bytes = 120;
constexpr std::size_t bytes_before_place = 60;
constexpr const char* indentation = "    ";

std::string wanted_colour = "auto";  // --color of this run

bool is_continuation(char c) noexcept { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

std::size_t announced_length(unsigned char first) noexcept {
    if (first < 0x80) {
        return 1;
    }
    return first >= 0xC2 && first < 0xE0 ? 2 : first >= 0xE0 && first < 0xF0 ? 3 : first >= 0xF0 && first < 0xF5 ? 4 : 0;
}

// Returns how many bytes at the head of a text make a character that can be shown, 0 when they do not.
std::size_t shown_length(std::string_view text) noexcept {
    const auto first = static_cast<unsigned char>(text.front());
    const std::size_t length = announced_length(first);
    if (length == 0 || length > text.size()) {
        return 0;
    }
    if (length == 1) {
        return first == '\t' || (first >= 0x20 && first != 0x7F) ? 1 : 0;
    }
    const bool whole = std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(length), is_continuation);
    // Two bytes from C2 80 to C2 9F are control characters as well.
    const bool control = first == 0xC2 && static_cast<unsigned char>(text[1]) < 0xA0;
    return whole && !control ? length : 0;
}

// Returns what stands above a mark: blanks, and tabs where the line has them.
std::string indentation_under(std::string_view text) {
    std::string blanks;
    for (const char c : text) {
        if (!is_continuation(c)) {
            blanks += c == '\t' ? '\t' : ' ';
        }
    }
    return blanks;
}

}  // namespace

void add_colour_option(CLI::App& command) {
    command
        .add_option_function<std::string>(
            "--color", [](const std::string& wanted) { wanted_colour = wanted; },
            "Colour the output: auto (default: on terminals, without NO_COLOR), always, never")
        ->type_name("WHEN")
        ->check(CLI::IsMember({"auto", "always", "never"}));
}

bool output_has_colour() {
    if (wanted_colour != "auto") {
        return wanted_colour == "always";
    }
    const char* terminal = std::getenv("TERM");
    return ::isatty(STDOUT_FILENO) == 1 && std::getenv("NO_COLOR") == nullptr && terminal != nullptr &&
           std::string_view(terminal) != "dumb";
}

std::string printable(std::string_view text) {
    std::string shown;
    shown.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = shown_length(text);
        if (length == 0) {
            shown += '?';
        } else {
            shown += text.substr(0, length);
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return shown;
}

std::string shown_place(const std::string& path, std::size_t line, std::size_t column) {
    std::string place = printable(path);
    for (const std::size_t number : {line, line == 0 ? 0 : column}) {
        place += number == 0 ? std::string() : ':' + std::to_string(number);
    }
    return place;
}

std::size_t columns_of(std::string_view text) noexcept {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) { return !is_continuation(c); }));
}

std::string excerpt(std::string_view line, std::size_t begin, std::size_t length, std::string_view mark_on,
                    std::string_view mark_off) {
    begin = std::min(begin, line.size());
    std::size_t cut = line.size() > excerpt_bytes && begin > bytes_before_place ? begin - bytes_before_place : 0;
    while (cut < begin && is_continuation(line[cut])) {
        ++cut;
    }
    std::size_t end = std::min(line.size(), cut + excerpt_bytes);
    while (end < line.size() && end > begin && is_continuation(line[end])) {
        --end;
    }
    const std::string before = (cut > 0 ? "..." : "") + printable(line.substr(cut, begin - cut));
    std::string text =
        indentation + before + printable(line.substr(begin, end - begin)) + (end < line.size() ? "...\n" : "\n");
    if (length == 0) {
        return text;
    }
    const std::size_t marked =
        std::max<std::size_t>(columns_of(printable(line.substr(begin, std::min(length, std::max(end, begin) - begin)))), 1);
    text += indentation;
    text += indentation_under(before);
    text += mark_on;
    text += '^';
    text.append(marked - 1, '~');
    text += mark_off;
    return text + '\n';
}

Progress::Progress()
    : terminal_(::isatty(STDERR_FILENO) == 1), begin_(Clock::now()), next_(begin_ + std::chrono::seconds(1)) {}

void Progress::show(std::size_t done, const std::function<std::size_t()>& total) {
    if (!terminal_ || Clock::now() < next_) {
        return;
    }
    next_ = Clock::now() + std::chrono::milliseconds(100);
    total_ = total_ == 0 ? total() : total_;
    const double seconds = std::chrono::duration<double>(Clock::now() - begin_).count();
    std::fprintf(stderr, "\r%zu of %zu files, %.0f/s\033[K", done, total_, static_cast<double>(done) / seconds);
    std::fflush(stderr);
    shown_ = true;
}

void Progress::clear() {
    if (shown_) {
        std::fputs("\r\033[K", stderr);
        std::fflush(stderr);
        shown_ = false;
    }
}

}  // namespace quor_gjf

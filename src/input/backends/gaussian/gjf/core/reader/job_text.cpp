// Reads whole texts and cuts them at their --Link1-- lines.
#include <gjf/core/reader/job_text.hpp>

#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/reader/reading.hpp>
#include <gjf/core/text/span.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <istream>
#include <system_error>

namespace quor::input::gaussian {
namespace {

bool is_job_separator(std::string_view line) noexcept {
    // Most lines are told apart by their first character.
    const auto first = std::find_if_not(line.begin(), line.end(), is_trim_character);
    if (first == line.end() || *first != job_separator.front()) {
        return false;
    }
    const std::string_view text = trim_view(line);
    return std::equal(text.begin(), text.end(), job_separator.begin(), job_separator.end(),
                      [](char a, char b) { return to_lower_ascii(a) == to_lower_ascii(b); });
}

// Takes the lines before the next separator line off `text` and hands each to `take`; returns the text they stand in.
// `separated` tells whether there was a separator line.
template <typename Take>
std::string_view take_job(std::string_view& text, bool& separated, Take take) {
    const std::string_view all = text;
    separated = false;
    while (!text.empty()) {
        const std::size_t begin = all.size() - text.size();
        const std::string_view line = take_line(text);
        if (is_job_separator(line)) {
            separated = true;
            return all.substr(0, begin);
        }
        take(line);
    }
    return all;
}

// Reads by block into the text itself: what a stream buffer cannot hold for want of memory it would drop in silence.
void append_stream(std::string& text, std::istream& stream) {
    std::array<char, 1 << 14> block;
    do {
        stream.read(block.data(), block.size());
        text.append(block.data(), static_cast<std::size_t>(stream.gcount()));
    } while (stream);
}

}  // namespace

void take_job_lines(std::string_view& text, bool& separated, std::vector<std::string_view>& lines) {
    take_job(text, separated, [&lines](std::string_view line) { lines.push_back(line); });
}

bool are_blank(LineSpan lines) noexcept { return std::all_of(lines.begin(), lines.end(), is_blank_line); }

void for_each_job_piece(std::string_view text, const std::function<void(JobPiece)>& take) {
    std::string_view rest = skip_byte_order_mark(text);
    bool separated = true;
    std::size_t first_line = 1;
    for (std::size_t number = 1; separated || !rest.empty();) {
        std::vector<std::string_view> lines;
        take_job_lines(rest, separated, lines);
        const std::size_t count = lines.size();
        // Old editors end a file with this character, which is no part of its text.
        if (!separated && count > 0 && lines.back().ends_with('\x1a')) {
            lines.back().remove_suffix(1);
        }
        if (!are_blank(lines)) {
            take({number++, first_line, separated, text, std::move(lines)});
        }
        first_line += count + 1;
    }
}

std::string read_stream(std::istream& stream) {
    std::string text;
    append_stream(text, stream);
    return text;
}

std::string read_whole_file(const std::string& path) {
    std::ifstream file(path, std::ios::in | std::ios::binary);
    std::string text;
    std::error_code unknown;  // of a pipe; a text that grows has room that it does not need
    const std::uintmax_t size = file.is_open() ? std::filesystem::file_size(path, unknown) : 0;
    text.reserve(unknown ? 0 : static_cast<std::size_t>(std::min<std::uintmax_t>(size, largest_text)));
    append_stream(text, file);
    // A folder opens but does not read.
    if (!file.is_open() || file.bad()) {
        throw GJFParseException("Cannot open file: " + path);
    }
    return text;
}

std::string_view without_byte_order_mark(std::string_view text) noexcept { return skip_byte_order_mark(text); }

std::vector<std::string_view> job_texts(std::string_view text) {
    std::vector<std::string_view> texts;
    for_each_job_piece(text, [&](const JobPiece& piece) {
        const auto offset = [&](const char* place) { return static_cast<std::size_t>(place - text.data()); };
        const std::string_view last = piece.lines.back();
        // A byte order mark goes with the first job.
        const std::size_t begin = piece.first_line == 1 ? 0 : offset(piece.lines.front().data());
        const std::size_t end = text.find('\n', offset(last.data()) + last.size());
        texts.push_back(text.substr(begin, end == std::string_view::npos ? end : end + 1 - begin));
    });
    return texts;
}

std::vector<std::string> GJFParser::split_by_link1(const std::string& text) {
    std::vector<std::string> pieces;
    std::string_view rest = text;
    bool separated = false;
    while (!rest.empty()) {
        const std::string_view piece = take_job(rest, separated, [](std::string_view) {});
        if (separated || !piece.empty()) {
            pieces.emplace_back(piece);
            if (!piece.empty() && piece.back() != '\n') {
                pieces.back() += '\n';
            }
        }
    }
    return pieces;
}

}  // namespace quor::input::gaussian

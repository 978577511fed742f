// Tells where the parts of a job stand, and how a change of them is written.
#include <gjf/core/check/checked_job.hpp>

#include <gjf/core/knowledge/facts.hpp>

#include <algorithm>
#include <iterator>

namespace quor::input::gaussian {
namespace {

// Returns the route of a job, or an empty one.
const ParsedKeywords& route_of(const GJFData& job) {
    static const ParsedKeywords none;
    return job.control.parsed_keywords ? *job.control.parsed_keywords : none;
}

}  // namespace

CheckedJob::CheckedJob(const JobPiece& piece, const JobReading& reading, const SimpleYAMLParser& vocabulary)
    : RouteWords(reading.layout.route),
      job(reading.job),
      layout(reading.layout),
      schema(vocabulary),
      route(route_of(reading.job)),
      piece_(piece),
      reading_(reading) {}

std::string_view CheckedJob::text(const LineRange& lines) const noexcept {
    const std::string_view first = line(lines.first);
    const std::string_view last = line(lines.last);
    return {first.data(), static_cast<std::size_t>(last.data() + last.size() - first.data())};
}

std::string_view CheckedJob::line(std::size_t number) const noexcept {
    const std::size_t index = number - piece_.first_line;
    return number >= piece_.first_line && index < piece_.lines.size() ? piece_.lines[index] : std::string_view();
}

TextPlace CheckedJob::route_place(Span of_route_text) const {
    const std::vector<TextPlace> places = route_places(layout, of_route_text);
    return places.empty() ? TextPlace{} : places.front();
}

TextPlace CheckedJob::place_in(std::size_t line_number, std::string_view part) const noexcept {
    const std::string_view text = line(line_number);
    if (part.data() < text.data() || part.data() > text.data() + text.size()) {
        return {line_number, 0, 0};
    }
    return {line_number, static_cast<std::size_t>(part.data() - text.data()) + 1, part.size()};
}

TextEdit CheckedJob::replacing(const TextPlace& place, std::string text) const {
    const std::size_t begin = span_of(piece_.text, line(place.line)).begin + (place.column == 0 ? 0 : place.column - 1);
    return {begin, begin + place.length, std::move(text)};
}

TextEdit CheckedJob::behind_line(std::size_t line_number, std::string_view text) const {
    const Span line_place = span_of(piece_.text, line(line_number));
    // A last line without an end takes that of the first line.
    const std::size_t end = std::min(piece_.text.find('\n', line_place.end()), piece_.text.find('\n'));
    const bool returns = end != std::string_view::npos && end > 0 && piece_.text[end - 1] == '\r';
    std::string added;
    for (const char c : text) {
        added += returns && c == '\n' ? "\r\n" : std::string(1, c);
    }
    return {line_place.end(), line_place.end(), std::move(added)};
}

TextEdit CheckedJob::blank_line_behind(std::size_t line_number) const {
    const bool is_ended = piece_.text.find('\n', span_of(piece_.text, line(line_number)).end()) != std::string_view::npos;
    // The line end of a line that has none itself is put there too.
    return behind_line(line_number, is_ended ? "\n" : "\n\n");
}

TextEdit CheckedJob::without_lines(const LineRange& lines) const {
    const std::size_t begin = span_of(piece_.text, line(lines.first)).begin;
    const std::size_t last_end = span_of(piece_.text, line(lines.last)).end();
    const std::size_t line_end = piece_.text.find('\n', last_end);
    return {begin, line_end == std::string_view::npos ? piece_.text.size() : line_end + 1, {}};
}

bool CheckedJob::restarts() const noexcept { return has_any_word(words_with("goes on with a job")); }

bool CheckedJob::molecule_from_checkpoint() const { return has_option("geom", "check") || all_from_checkpoint(); }

bool CheckedJob::all_from_checkpoint() const { return has_option("geom", "allcheck"); }

}  // namespace quor::input::gaussian

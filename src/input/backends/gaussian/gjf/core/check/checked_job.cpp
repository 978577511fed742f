// Looks at a job's route segment by segment, and tells where its parts stand.
#include <gjf/core/check/checked_job.hpp>

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
    : job(reading.job),
      layout(reading.layout),
      schema(vocabulary),
      route(route_of(reading.job)),
      piece_(piece),
      reading_(reading) {
    segments.reserve(layout.route.segments.size());
    for (const RouteTree::Segment& segment : layout.route.segments) {
        segments.push_back(written_segment(segment));
    }
}

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

WrittenSegment CheckedJob::written_segment(const RouteTree::Segment& read) const {
    const auto text = [this](Span span) { return std::string(span.in(layout.route.text)); };
    WrittenSegment segment{
        text(read.place),        read.method,        read.basis,          read.secondary_method,     read.is_oniom, {},
        route_place(read.place), read.is_assignment, text(read.assigned), route_place(read.assigned)};
    if (read.is_oniom) {
        return segment;
    }
    for (const RouteTree::Keyword& node : read.keywords) {
        WrittenKeyword& keyword = segment.keywords.emplace_back();
        keyword = {node.name, text(node.head), text(node.place), node.known(), {}, route_place(node.head), node.is_method};
        for (const RouteTree::Option& option : node.options) {
            keyword.options.push_back({text(option.name), option.canonical, text(option.value), route_place(option.name),
                                       option.name, option.value});
        }
    }
    return segment;
}

const WrittenKeyword* CheckedJob::find_keyword(std::string_view canonical) const noexcept {
    for (const WrittenSegment& segment : segments) {
        for (const WrittenKeyword& keyword : segment.keywords) {
            if (keyword.name == canonical) {
                return &keyword;
            }
        }
    }
    return nullptr;
}

const WrittenOption* CheckedJob::find_option(std::string_view name, std::string_view option) const noexcept {
    for (const WrittenSegment& segment : segments) {
        for (const WrittenKeyword& keyword : segment.keywords) {
            if (keyword.name != name) {
                continue;
            }
            for (const WrittenOption& written : keyword.options) {
                if (written.canonical == option) {
                    return &written;
                }
            }
        }
    }
    return nullptr;
}

const TextPlace* CheckedJob::find_word(std::string_view word) const noexcept {
    const std::size_t sign = word.find('=');
    if (sign != std::string_view::npos) {
        const WrittenOption* option = find_option(word.substr(0, sign), word.substr(sign + 1));
        return option == nullptr ? nullptr : &option->place;
    }
    for (const WrittenSegment& segment : segments) {
        for (const WrittenKeyword& keyword : segment.keywords) {
            const std::string_view name = keyword.name;
            const bool has_prefix = keyword.is_method || name == "rtd" || name == "utd" || name == "rtda" || name == "utda";
            if (name == word || (has_prefix && name.substr(1) == word)) {
                return &keyword.place;
            }
        }
        if (segment.method == word || (segment.is_oniom && word == "oniom")) {
            return &segment.place;
        }
    }
    return nullptr;
}

bool CheckedJob::has_all_words(std::string_view words) const noexcept {
    for (std::size_t end = 0; !words.empty(); words.remove_prefix(std::min(end + 1, words.size()))) {
        end = std::min(words.find(' '), words.size());
        if (find_word(words.substr(0, end)) == nullptr) {
            return false;
        }
    }
    return true;
}

bool CheckedJob::has_any_word(std::string_view words) const noexcept {
    for (std::size_t end = 0; !words.empty(); words.remove_prefix(std::min(end + 1, words.size()))) {
        end = std::min(words.find(' '), words.size());
        if (find_word(words.substr(0, end)) != nullptr) {
            return true;
        }
    }
    return false;
}

bool CheckedJob::names_basis(std::string_view canonical) const noexcept {
    return std::any_of(segments.begin(), segments.end(), [&](const WrittenSegment& s) { return s.basis == canonical; });
}

bool CheckedJob::restarts() const noexcept {
    constexpr const char* keywords[] = {"opt", "irc", "freq", "scf", "polar", "scan", "ircmax", "td", "bomd", "admp"};
    return has_keyword("restart") || std::any_of(std::begin(keywords), std::end(keywords),
                                                 [&](const char* name) { return has_option(name, "restart"); });
}

bool CheckedJob::molecule_from_checkpoint() const { return has_geom_option(route, schema, "chk") || all_from_checkpoint(); }

bool CheckedJob::all_from_checkpoint() const { return has_geom_option(route, schema, "allchk"); }

}  // namespace quor::input::gaussian

// Looks at a job's route segment by segment, and tells where its parts stand.
#include <gjf/core/check/checked_job.hpp>

#include <gjf/core/route/keyword_parser.hpp>
#include <gjf/core/route/keyword_shape.hpp>
#include <gjf/core/route/route_scanner.hpp>
#include <gjf/core/route/route_segments.hpp>
#include <gjf/core/text/text.hpp>

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
      reading_(reading),
      joined_(join_route_words(reading.job.control.route_keywords)) {
    read_segments();
}

std::string_view CheckedJob::line(std::size_t number) const noexcept {
    const std::size_t index = number - piece_.first_line;
    return number >= piece_.first_line && index < piece_.lines.size() ? piece_.lines[index] : std::string_view();
}

TextPlace CheckedJob::route_place(std::size_t begin, std::size_t end) const {
    const auto after = std::upper_bound(joined_.pieces.begin(), joined_.pieces.end(), begin,
                                        [](std::size_t at, const JoinedRoute::Piece& piece) { return at < piece.begin; });
    if (after == joined_.pieces.begin()) {
        return {};
    }
    const JoinedRoute::Piece& piece = *(after - 1);
    const TextPlace& word = layout.route_words[piece.word];
    const std::size_t skipped = std::min(piece.left_out + begin - piece.begin, word.length);
    return {word.line, word.column + skipped, std::min(end - begin, word.length - skipped)};
}

TextPlace CheckedJob::place_in(std::size_t line_number, std::string_view part) const noexcept {
    const std::string_view text = line(line_number);
    if (part.data() < text.data() || part.data() > text.data() + text.size()) {
        return {line_number, 0, 0};
    }
    return {line_number, static_cast<std::size_t>(part.data() - text.data()) + 1, part.size()};
}

WrittenKeyword CheckedJob::written_keyword(const std::string& name, const std::string& text, std::size_t begin) const {
    const KeywordShape shape = keyword_shape(text);
    WrittenKeyword keyword;
    keyword.name = name;
    keyword.raw = text;
    keyword.head = stretch_text(text, shape.head);
    keyword.known = schema.knows_keyword(name) || schema.knows_method(name);
    keyword.place = route_place(begin + shape.head.begin, begin + shape.head.end);
    for (const RouteStretch item : shape.items) {
        const std::string_view whole = stretch_text(text, item);
        const int equals = find_top_level_char(std::string(whole), '=');
        const std::size_t name_end =
            equals >= 0 ? static_cast<std::size_t>(equals) : std::min(whole.find('('), whole.size());
        const RouteStretch part = trimmed_stretch(text, {item.begin, item.begin + name_end});
        WrittenOption& option = keyword.options.emplace_back();
        option.name = stretch_text(text, part);
        option.canonical = schema.normalize_option(name, option.name);
        option.value = trim_view(whole.substr(std::min(name_end + (equals >= 0 ? 1 : 0), whole.size())));
        option.place = route_place(begin + part.begin, begin + part.end);
    }
    return keyword;
}

void CheckedJob::read_segments() {
    std::string_view rest = trim_view(joined_.text);
    take_route_head(rest);
    const std::size_t offset = rest.empty() ? 0 : static_cast<std::size_t>(rest.data() - joined_.text.data());
    G16KeywordParser parser(schema);
    for (const RouteSegment& range : find_route_segments(rest)) {
        const std::size_t begin = offset + range.begin;
        WrittenSegment& segment = segments.emplace_back();
        segment.text = rest.substr(range.begin, range.end - range.begin);
        segment.place = route_place(begin, offset + range.end);
        parser.parse_segment_schema_driven(segment.text, std::nullopt);
        const ParsedKeywords meaning = parser.take_parsed_keywords();
        segment.method = meaning.method;
        segment.basis = meaning.basis_set;
        segment.secondary_method = meaning.secondary_method;
        segment.is_oniom = !meaning.oniom_expression.empty();
        if (segment.is_oniom) {
            continue;
        }
        const auto add_keyword = [&](const std::string& name, const std::string& text) {
            const std::size_t at = std::min(segment.text.find(text), segment.text.size());
            segment.keywords.push_back(written_keyword(name, text, begin + at));
        };
        if (!meaning.method_options.empty()) {
            add_keyword(meaning.method, meaning.method_options);
        }
        for (const KeywordInfo& info : meaning.keywords) {
            add_keyword(info.name, info.raw);
        }
    }
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

// Reads Link 0 lines and the route, and interprets route words.
#include <gjf/core/reader/gjf_parser.hpp>

#include <gjf/core/job/link0_keys.hpp>
#include <gjf/core/reader/reading.hpp>
#include <gjf/core/route/joined_route.hpp>
#include <gjf/core/route/keyword_parser.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/sections/route_questions.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

// Stores a "%key=value" line whose key is one of the table's; returns whether it was one.
bool store_link0_line(ControlSection& control, std::string_view line) {
    if (line.front() != '%') {
        return false;
    }
    const Link0Words words = link0_words(line);
    const Link0Key* found = find_link0_key(words.key);
    if (!words.is_assigned || words.value.empty() || found == nullptr || !found->in_model ||
        !found->is_spelt_out(to_lower_copy(words.key))) {
        return false;
    }
    store_link0(control, *found, words.value);
    return true;
}

std::vector<std::string_view> route_words(std::string_view line) {
    std::vector<std::string_view> words;
    split_fields(line, FieldSeparators::WhiteSpaceAndComma, false, words);
    return words;
}

// Takes control lines one by one; a route begins at its "#" line and is open until an empty line.
class ControlReader {
   public:
    explicit ControlReader(ReadingRecorder* recorder) noexcept : recorder_(recorder) {}

    ControlSection control;

    void take(const std::string_view& raw) {
        if (recorder_ != nullptr) {
            recorder_->at(raw);
        }
        if (raw.empty()) {
            route_closed_ = route_closed_ || route_seen_;
            return;
        }
        const std::string_view line = trim_view(without_comment(raw));
        if (is_comment_line(raw)) {
            control.raw_lines.emplace_back(raw);
            return;
        }
        const bool route_open = route_seen_ && !route_closed_;
        if (!route_open && (line.empty() || (line.front() != '#' && line.front() != '%'))) {
            refuse(line, raw);
            return;
        }
        control.raw_lines.emplace_back(raw);
        if (line.empty()) {
            return;
        }
        if (store_link0_line(control, line)) {
            note_link0_line(line);
        } else if (line.front() == '%' && !route_open) {
            control.other_link0_lines.emplace_back(line);
            note_link0_line(line);
        } else if (!route_closed_) {
            take_route_words(line);
            route_seen_ = true;
        }
    }

   private:
    // Gaussian passes over the line that files for old systems begin with, and reads a file that is named.
    void refuse(std::string_view line, std::string_view raw) {
        const std::string message = "Invalid control line: " + std::string(raw);
        if (equals_folded(line, "$rungauss") || is_include_line(line)) {
            report_departure(recorder_, raw, message);
        } else {
            report_fault(recorder_, raw, message);
        }
    }

    void note_link0_line(std::string_view line) {
        if (recorder_ != nullptr) {
            // Without "=" all of the line is the key.
            const auto [written, behind, is_assigned] = link0_words(line);
            const std::string_view key = is_assigned ? written : trim_view(line.substr(1));
            const std::string_view value = is_assigned ? behind : line.substr(line.size());
            recorder_->reading.places.link0.push_back({recorder_->place_of(key), recorder_->place_of(value)});
        }
    }

    void take_route_words(std::string_view line) {
        for (const std::string_view word : route_words(line)) {
            control.route_keywords.emplace_back(word);
            if (recorder_ != nullptr) {
                recorder_->reading.places.route_words.push_back(recorder_->place_of(word));
            }
        }
    }

    ReadingRecorder* recorder_;
    bool route_seen_ = false;
    bool route_closed_ = false;
};

// Interprets the words of a route, keeping its tree and where it comes from.
ParsedKeywords read_route_words(const std::vector<std::string>& words, JobLayout& layout) {
    JoinedRoute joined = join_route_words(words);
    RouteReading reading = read_route(std::move(joined.text), default_route_schema());
    layout.route = std::move(reading.tree);
    layout.route_map = std::move(joined.map);
    return std::move(reading.meaning);
}

}  // namespace

ControlSection read_control_section(LineSpan lines, bool pass_over_blank_lines, ReadingRecorder* recorder) {
    ControlReader reader(recorder);
    for (const std::string_view& line : lines) {
        if (!pass_over_blank_lines || !is_blank_line(line)) {
            reader.take(line);
        }
    }
    ControlSection& control = reader.control;
    if (!control.route_keywords.empty()) {
        control.parsed_keywords = recorder == nullptr ? GJFParser::parse_keywords(control.route_keywords, {})
                                                      : read_route_words(control.route_keywords, recorder->reading.layout);
    }
    return std::move(reader.control);
}

std::vector<TextPlace> route_places(const JobLayout& layout, Span of_route_text) {
    std::vector<TextPlace> places;
    for (const RouteWordStretch& stretch : layout.route_map.stretches(of_route_text)) {
        const TextPlace& word = layout.route_words[stretch.word];
        places.push_back({word.line, word.column + stretch.part.begin, stretch.part.length});
    }
    return places;
}

bool GJFParser::is_valid_control_line(const std::string& line) {
    const std::string_view text = trim_view(line);
    return !text.empty() && (text.front() == '#' || text.front() == '%');
}

ControlSection GJFParser::parse_control_section(const std::vector<std::string>& lines) {
    const std::vector<std::string_view> views = views_of(lines);
    return read_control_section(views, false, nullptr);
}

std::vector<std::string> GJFParser::parse_keywords_from_line(const std::string& line, const std::string& /*schema_path*/) {
    const std::vector<std::string_view> words = route_words(without_comment(line));
    return std::vector<std::string>(words.begin(), words.end());
}

ParsedKeywords GJFParser::parse_keywords(const std::vector<std::string>& route_keywords, const std::string& schema_path) {
    G16KeywordParser parser;
    parser.load_config(schema_path);
    parser.parse(join_route_words(route_keywords).text);
    return parser.take_parsed_keywords();
}

bool GJFParser::has_geom_option(const ControlSection& control, const std::string& option) {
    if (control.route_keywords.empty()) {
        return false;
    }
    const ParsedKeywords route = parse_keywords(control.route_keywords, {});
    return RouteQuestions(route).option("geom", {default_route_schema().normalize_option("geom", option)});
}

bool GJFParser::is_geom_check(const ControlSection& control) { return has_geom_option(control, "chk"); }

bool GJFParser::is_geom_allchk(const ControlSection& control) { return has_geom_option(control, "allchk"); }

}  // namespace quor::input::gaussian

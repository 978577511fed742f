// Changes of route words, and the forms in which fixes are offered.
#include <gjf/core/check/fixes.hpp>

#include <gjf/core/check/near_names.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <optional>
#include <utility>

namespace quor::input::gaussian {
namespace {

bool is_blank(char c) noexcept { return c == ' ' || c == '\t'; }

// Tells whether a text is one list in parentheses from its first character to its last.
bool is_one_list(std::string_view text) noexcept {
    return text.size() >= 2 && text.front() == '(' && text.find(')') == text.size() - 1 && text.find('(', 1) == text.npos;
}

// Tells whether each bracket of the route has a partner. Where one has none, nobody knows yet which word an option is of.
bool is_balanced(const CheckedJob& job) {
    const std::string& text = job.route_text();
    return std::count(text.begin(), text.end(), '(') == std::count(text.begin(), text.end(), ')');
}

// Returns the place of a stretch of the route that stands in one line; nothing for another.
std::optional<TextPlace> place_in_one_line(const CheckedJob& job, Span of_route_text) {
    const std::vector<TextPlace> places = route_places(job.layout, of_route_text);
    if (places.size() != 1 || places.front().length != of_route_text.length) {
        return std::nullopt;
    }
    return places.front();
}

}  // namespace

void relate(const TextPlace& place, const std::string& message, Finding& finding) {
    finding.related.push_back({message, place.line, std::max<std::size_t>(place.column, 1), place.length});
}

void relate_line(const CheckedJob& job, std::size_t line, const std::string& message, Finding& finding) {
    relate({line, 1, job.line(line).size()}, message, finding);
}

void offer(Finding& finding, std::string title, FixSafety safety, std::vector<TextEdit> edits) {
    if (!edits.empty()) {
        finding.fixes.push_back({std::move(title), safety, std::move(edits)});
    }
}

void offer_words(const CheckedJob& job, const TextPlace& place, std::string_view written,
                 const std::vector<std::string>& words, FixSafety safety, Finding& finding) {
    const std::string_view line = job.line(place.line);
    if (place.column == 0 || written.empty() || place.length != written.size() || place.column > line.size() ||
        line.substr(place.column - 1, place.length) != written) {
        return;
    }
    for (const std::string& word : words) {
        offer(finding, "write " + word, words.size() == 1 ? safety : FixSafety::Choice, {job.replacing(place, word)});
    }
}

void offer_near(const CheckedJob& job, const TextPlace& place, std::string_view written,
                const std::vector<std::string>& near, Finding& finding) {
    const bool certain = near.size() == 1 && differ_in_dashes_alone(written, near.front());
    offer_words(job, place, written, near, certain ? FixSafety::Safe : FixSafety::Unsafe, finding);
}

std::vector<TextEdit> route_edits(const CheckedJob& job, Span of_route_text, const std::string& text) {
    const std::optional<TextPlace> place = place_in_one_line(job, of_route_text);
    return place && is_balanced(job) ? std::vector{job.replacing(*place, text)} : std::vector<TextEdit>();
}

std::vector<TextEdit> without_word(const CheckedJob& job, Span of_route_text) {
    const std::optional<TextPlace> place = place_in_one_line(job, of_route_text);
    if (!place) {
        return {};
    }
    const std::string_view line = job.line(place->line);
    std::size_t begin = place->column - 1;
    std::size_t end = begin + place->length;
    while (end < line.size() && is_blank(line[end])) {
        ++end;
    }
    const bool is_last = end == line.size();
    end = is_last ? end : begin + place->length;
    while (begin > 0 && is_blank(line[begin - 1])) {
        --begin;
    }
    if (begin == 0 && is_last) {
        return {job.without_lines({place->line, place->line})};  // an empty line would end the route
    }
    if (begin == 0 || line[begin - 1] == '#') {
        // The blanks before the word stay, those behind it go.
        begin = place->column - 1;
        end = std::min(line.find_first_not_of(" \t", end), line.size());
    }
    return {job.replacing({place->line, begin + 1, end - begin}, {})};
}

std::vector<TextEdit> without_keyword(const CheckedJob& job, const RouteTree::Keyword& keyword) {
    const bool stands_alone = std::any_of(job.tree.segments.begin(), job.tree.segments.end(),
                                          [&](const auto& segment) { return segment.place == keyword.place; });
    return stands_alone ? without_word(job, keyword.place) : std::vector<TextEdit>();
}

std::vector<TextEdit> without_option(const CheckedJob& job, const RouteTree::Keyword& keyword,
                                     const RouteTree::Option& option) {
    if (keyword.options.size() == 1) {
        return without_keyword(job, keyword);
    }
    const auto index = static_cast<std::size_t>(&option - keyword.options.data());
    // The comma before it goes too; behind the first one, the comma that follows.
    const Span cut = index > 0 ? span_between(keyword.options[index - 1].place.end(), option.place.end())
                               : span_between(option.place.begin, keyword.options[1].place.begin);
    std::vector<TextEdit> edits;
    for (const TextPlace& part : route_places(job.layout, cut)) {
        edits.push_back(job.replacing(part, {}));
    }
    return edits;
}

std::vector<TextEdit> with_option(const CheckedJob& job, const RouteTree::Keyword& keyword, const std::string& option) {
    const std::string& text = job.route_text();
    std::string_view list = span_between(keyword.head.end(), keyword.place.end()).in(text);
    if (list.empty()) {
        return route_edits(job, keyword.head, job.written(keyword.head) + "=" + option);
    }
    if (list.ends_with(')') && is_one_list(list.substr(list.find('(')))) {
        const Span last = span_between(keyword.place.end() - 1, keyword.place.end());
        return route_edits(job, last, (keyword.options.empty() ? "" : ",") + option + ")");
    }
    if (list.front() != '=') {
        return {};
    }
    list.remove_prefix(1);
    return route_edits(job, span_of(text, list), "(" + std::string(list) + "," + option + ")");
}

std::vector<TextEdit> with_word(const CheckedJob& job, const std::string& word) {
    if (const std::size_t sign = word.find('='); sign != std::string::npos) {
        if (const RouteTree::Keyword* keyword = job.find_keyword(word.substr(0, sign)); keyword != nullptr) {
            return with_option(job, *keyword, word.substr(sign + 1));
        }
    }
    if (job.tree.segments.empty()) {
        return {};
    }
    const Span last = job.tree.segments.back().place;
    const std::vector<TextPlace> places = route_places(job.layout, span_between(last.end() - 1, last.end()));
    if (places.size() != 1) {
        return {};
    }
    const TextPlace behind{places.front().line, places.front().column + places.front().length, 0};
    return {job.replacing(behind, " " + word)};
}

}  // namespace quor::input::gaussian

// Checks of route words that stand too close together: a word that begins in the letter of the print level, and options
// behind a comma without parentheses.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/check/fixes.hpp>
#include <gjf/core/text/text.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quor::input::gaussian {
namespace {

bool is_word_character(char c) noexcept { return is_letter(c) || is_digit(c) || c == '-'; }

// #PM6 is read as #P and M6.
void check_glued_head(const CheckedJob& job, Findings& findings) {
    const RouteTree& tree = job.tree;
    if (tree.head.length != 2 || tree.segments.empty() || tree.segments.front().place.begin != tree.head.end() ||
        tree.segments.front().keywords.empty() || tree.segments.front().keywords.front().known()) {
        return;
    }
    const std::string& text = tree.text;
    std::size_t end = tree.head.end();
    while (end < text.size() && is_word_character(text[end])) {
        ++end;
    }
    const std::string word = text.substr(tree.head.end() - 1, end + 1 - tree.head.end());
    if (job.schema.knows_method_exact(word) || job.schema.knows_keyword_exact(word)) {
        const Span first = span_between(tree.head.end() - 1, end);
        Finding& finding =
            findings.add("GJF-R022", Severity::Warning,
                         "'" + word + "' is read as the print level #" + word.substr(0, 1) + " and '" + word.substr(1) + "'",
                         job.route_place(first), "put a blank behind #");
        offer(finding, "write # " + word, FixSafety::Safe, route_edits(job, first, " " + word));
    }
}

// Tells whether a segment is no word of the route, but an option of a keyword.
bool is_option_alone(const CheckedJob& job, const std::string& keyword, const RouteTree::Segment& segment) {
    const std::string text = job.written(segment.place);
    // A word before "=" that is no keyword makes the segment an assignment.
    const bool is_word = segment.is_oniom || !segment.method.empty() ||
                         (!segment.is_assignment && (segment.keywords.empty() || segment.keywords.front().known()));
    return !is_word && text.find_first_of("()") == std::string::npos &&
           job.schema.knows_option(keyword, text.substr(0, text.find('=')));
}

// Returns where a list that a comma goes on with stands, when nothing but this comma stands between the two words.
std::optional<TextPlace> list_over_comma(const CheckedJob& job, Span list, const Span& next) {
    const TextPlace begin = job.route_place(span_between(list.begin, list.begin + 1));
    const TextPlace end = job.route_place(span_between(list.end() - 1, list.end()));
    const TextPlace behind = job.route_place(span_between(next.begin, next.begin + 1));
    if (begin.line != behind.line || end.line != behind.line || behind.column <= end.column || begin.column == 0 ||
        trim_view(job.line(end.line).substr(end.column, behind.column - end.column - 1)) != ",") {
        return std::nullopt;
    }
    return TextPlace{begin.line, begin.column, behind.column - begin.column + next.length};
}

// In scrf=smd,solvent=water the comma ends the keyword. Returns the number of segments that the list takes.
std::size_t check_bare_list(const CheckedJob& job, std::size_t first, Findings& findings) {
    const std::vector<RouteTree::Segment>& segments = job.tree.segments;
    const RouteTree::Segment& owner = segments[first];
    const std::string text = job.written(owner.place);
    const std::size_t sign = text.find('=');
    if (sign == std::string::npos || text.find_first_of("()/") != std::string::npos || owner.keywords.size() != 1 ||
        !owner.keywords.front().known()) {
        return 1;
    }
    std::size_t last = first;
    std::string options = text.substr(sign + 1);
    TextPlace list;
    while (last + 1 < segments.size() && is_option_alone(job, owner.keywords.front().name, segments[last + 1])) {
        const Span before = span_between(owner.place.begin + sign + 1, segments[last].place.end());
        const std::optional<TextPlace> place = list_over_comma(job, before, segments[last + 1].place);
        if (!place) {
            break;
        }
        list = *place;
        options += "," + job.written(segments[++last].place);
    }
    if (last > first) {
        Finding& finding = findings.add("GJF-R023", Severity::Error,
                                        "several options of " + owner.keywords.front().name + " stand without parentheses",
                                        list, "a comma ends a keyword: write " + text.substr(0, sign) + "=(...)");
        offer(finding, "put them in parentheses", FixSafety::Safe, {job.replacing(list, "(" + options + ")")});
    }
    return last + 1 - first;
}

void check_glued_words(const CheckedMolecule& molecule, Findings& findings) {
    const CheckedJob& job = molecule.job;
    if (!job.schema.is_loaded() || job.has_keyword("nonstd")) {
        return;
    }
    check_glued_head(job, findings);
    for (std::size_t i = 0; i < job.tree.segments.size();) {
        i += check_bare_list(job, i, findings);
    }
}

}  // namespace

const Family glued_word_family = {Known::Route, check_glued_words, {"GJF-R022", "GJF-R023"}};

}  // namespace quor::input::gaussian

// Checks of route words that stand too close together: a word that begins in the letter of the print level.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/check/fixes.hpp>
#include <gjf/core/text/text.hpp>

#include <cstddef>
#include <string>

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

void check_glued_words(const CheckedMolecule& molecule, Findings& findings) {
    const CheckedJob& job = molecule.job;
    if (!job.schema.is_loaded() || job.has_keyword("nonstd")) {
        return;
    }
    check_glued_head(job, findings);
}

}  // namespace

const Family glued_word_family = {Known::Route, check_glued_words, {"GJF-R022"}};

}  // namespace quor::input::gaussian

// Compares what is found before and after a change, as multisets, and looks for words that nobody knows.
#include <gjf/core/check/change_checks.hpp>

#include <gjf/core/check/checker.hpp>
#include <gjf/core/check/rule.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <tuple>

namespace quor::input::gaussian {
namespace {

// What each counted thing is called before its number.
constexpr std::array<std::string_view, 5> counted_names = {"line ", "atom ", "atoms ", "row ", " and "};

// Where the reading of each job ended: what lies behind could not be checked before.
std::map<std::size_t, std::size_t> reading_ends(const std::vector<Finding>& findings) {
    std::map<std::size_t, std::size_t> ends;
    for (const Finding& finding : findings) {
        if (finding.code == "GJF-P001") {
            ends.try_emplace(finding.job, finding.line);
        }
    }
    return ends;
}

// Tells whether a code is looked for only in jobs that were read whole.
bool is_about_the_whole_job(const std::string& code) {
    return std::any_of(families().begin(), families().end(), [&](const Family* family) {
        return family->needs > Known::Control &&
               std::find(family->codes.begin(), family->codes.end(), code) != family->codes.end();
    });
}

// Tells whether a finding is about a word that is not known.
bool is_about_unknown_word(const Finding& finding) {
    constexpr std::array<std::string_view, 8> codes = {"GJF-R001", "GJF-R011", "GJF-R012", "GJF-W001",
                                                       "GJF-W002", "GJF-W003", "GJF-W004", "GJF-W005"};
    return finding.severity >= Severity::Warning && std::find(codes.begin(), codes.end(), finding.code) != codes.end();
}

}  // namespace

std::string message_without_numbers(std::string_view message) {
    std::string text;
    bool counts = false;
    for (const char c : message) {
        const bool is_digit = c >= '0' && c <= '9';
        counts = is_digit && (counts || std::any_of(counted_names.begin(), counted_names.end(), [&](std::string_view name) {
                                  return std::string_view(text).ends_with(name);
                              }));
        text += counts ? std::string() : std::string(1, c);
    }
    return text;
}

std::vector<Finding> new_findings(const std::vector<Finding>& before, const std::vector<Finding>& after) {
    std::multiset<std::tuple<std::size_t, std::string, std::string>> known;
    const auto key = [](const Finding& f) { return std::make_tuple(f.job, f.code, message_without_numbers(f.message)); };
    std::transform(before.begin(), before.end(), std::inserter(known, known.end()), key);
    const std::map<std::size_t, std::size_t> ends = reading_ends(before);
    std::vector<Finding> found;
    for (const Finding& finding : after) {
        if (const auto same = known.find(key(finding)); same != known.end()) {
            known.erase(same);
            continue;
        }
        const auto end = ends.find(finding.job);
        // A comment silences nothing any more where what it silenced was mended.
        const bool was_hidden = finding.code == "GJF-X005" || ends.count(0) > 0 ||
                                (end != ends.end() && (finding.line >= end->second || is_about_the_whole_job(finding.code)));
        if (!was_hidden) {
            found.push_back(finding);
        }
    }
    return found;
}

std::vector<Finding> findings_of_change(std::string_view before, std::string_view after) {
    const std::vector<Finding> found = before == after ? std::vector<Finding>() : check_text(after);
    return found.empty() ? found : new_findings(check_text(before), found);
}

std::vector<Finding> unknown_route_words(std::string_view route) {
    std::vector<Finding> found = default_route_schema_problem().empty() ? check_route(route) : std::vector<Finding>();
    found.erase(std::remove_if(found.begin(), found.end(), [](const Finding& f) { return !is_about_unknown_word(f); }),
                found.end());
    return found;
}

}  // namespace quor::input::gaussian

// Applies fixes in passes: all at once, and where that makes a text worse, in halves until the guilty ones are alone.
#include <gjf/core/check/fix_text.hpp>

#include <gjf/core/check/rule.hpp>

#include <algorithm>
#include <map>
#include <set>
#include <span>
#include <tuple>
#include <utility>

namespace quor::input::gaussian {
namespace {

constexpr std::size_t most_passes = 10;

// A finding with the fix of it that is to be applied.
struct Candidate {
    const Finding* finding;
    const Fix* fix;
};

using Candidates = std::vector<Candidate>;

// What is said of a fix, so that one which was dropped is not tried again.
using FixKey = std::tuple<std::size_t, std::string, std::string, std::string>;

// Line numbers in a message change with the lines before them.
std::string without_line_numbers(const std::string& message) {
    constexpr std::string_view mark = "line ";
    std::string text;
    for (std::size_t i = 0; i < message.size(); ++i) {
        const bool is_digit = message[i] >= '0' && message[i] <= '9';
        if (!is_digit || !std::string_view(text).ends_with(mark)) {
            text += message[i];
        }
    }
    return text;
}

FixKey key_of(const Candidate& candidate) {
    return {candidate.finding->job, candidate.finding->code, without_line_numbers(candidate.finding->message),
            candidate.fix->title};
}

// The places that a set of changes takes, so that no two of them touch the same bytes.
class TakenPlaces {
   public:
    bool take(const std::vector<TextEdit>& edits) {
        if (!std::all_of(edits.begin(), edits.end(), [this](const TextEdit& edit) { return is_free(edit); })) {
            return false;
        }
        for (const TextEdit& edit : edits) {
            ends_.emplace(edit.begin, edit.end);
        }
        return true;
    }

   private:
    bool is_free(const TextEdit& edit) const {
        const auto next = ends_.lower_bound(edit.begin);
        return (next == ends_.end() || (next->first > edit.begin && next->first >= edit.end)) &&
               (next == ends_.begin() || std::prev(next)->second <= edit.begin);
    }

    std::map<std::size_t, std::size_t> ends_;  // by beginning
};

Candidates choose(const std::vector<Finding>& findings, const FixOptions& options, const std::set<FixKey>& refused) {
    Candidates chosen;
    TakenPlaces taken;
    for (const Finding& finding : findings) {
        const Fix* fix = options.applies && !options.applies(finding) ? nullptr : applicable_fix(finding, options.unsafe);
        if (fix != nullptr && refused.count(key_of({&finding, fix})) == 0 && taken.take(fix->edits)) {
            chosen.push_back({&finding, fix});
        }
    }
    return chosen;
}

std::string with_fixes(std::string_view text, const Candidates& fixes) {
    std::vector<TextEdit> edits;
    for (const Candidate& candidate : fixes) {
        edits.insert(edits.end(), candidate.fix->edits.begin(), candidate.fix->edits.end());
    }
    std::sort(edits.begin(), edits.end(), [](const TextEdit& a, const TextEdit& b) { return a.begin < b.begin; });
    return with_edits(text, edits);
}

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

// Tells whether nothing is found that was not found before, in what could be checked before.
bool is_no_worse(const std::vector<Finding>& before, const std::vector<Finding>& after) {
    std::multiset<std::tuple<std::size_t, std::string, std::string>> known;
    const auto key = [](const Finding& f) { return std::make_tuple(f.job, f.code, without_line_numbers(f.message)); };
    for (const Finding& finding : before) {
        known.insert(key(finding));
    }
    const std::map<std::size_t, std::size_t> ends = reading_ends(before);
    return std::all_of(after.begin(), after.end(), [&](const Finding& finding) {
        if (const auto same = known.find(key(finding)); same != known.end()) {
            known.erase(same);
            return true;
        }
        const auto end = ends.find(finding.job);
        return ends.count(0) > 0 ||
               (end != ends.end() && (finding.line >= end->second || is_about_the_whole_job(finding.code)));
    });
}

// One pass over a text: which of some fixes can be made together.
class Pass {
   public:
    Pass(const FixedText& old, const CheckOptions& options) : old_(old), options_(options) {}

    // Takes the fixes, all or in halves, beside those that were taken.
    void take(std::span<const Candidate> fixes) {
        Candidates together = taken;
        together.insert(together.end(), fixes.begin(), fixes.end());
        std::string new_text = with_fixes(old_.text, together);
        std::vector<Finding> found = check_text(new_text, options_);
        if (is_no_worse(old_.findings, found)) {
            taken = std::move(together);
            text = std::move(new_text);
            findings = std::move(found);
        } else if (fixes.size() == 1) {
            dropped.push_back(fixes.front());
        } else {
            take(fixes.first(fixes.size() / 2));
            take(fixes.subspan(fixes.size() / 2));
        }
    }

    Candidates taken;
    Candidates dropped;
    std::string text;
    std::vector<Finding> findings;

   private:
    const FixedText& old_;
    const CheckOptions& options_;
};

void report(const Candidates& fixes, std::vector<FixReport>& reports) {
    for (const Candidate& candidate : fixes) {
        reports.push_back({candidate.finding->code, candidate.finding->line, candidate.fix->title, candidate.fix->safety});
    }
}

}  // namespace

const Fix* applicable_fix(const Finding& finding, bool unsafe) noexcept {
    for (const FixSafety safety : {FixSafety::Safe, FixSafety::Unsafe}) {
        const auto is_of_class = [safety](const Fix& fix) { return fix.safety == safety; };
        const auto count = std::count_if(finding.fixes.begin(), finding.fixes.end(), is_of_class);
        if (count > 1 || (safety == FixSafety::Unsafe && !unsafe)) {
            return nullptr;
        }
        if (count == 1) {
            return &*std::find_if(finding.fixes.begin(), finding.fixes.end(), is_of_class);
        }
    }
    return nullptr;
}

FixedText fix_text(std::string_view text, const FixOptions& options) {
    FixedText result;
    result.text = text;
    result.findings = check_text(text, options.check);
    std::set<FixKey> refused;
    for (std::size_t passes = 0; passes < most_passes; ++passes) {
        const Candidates chosen = choose(result.findings, options, refused);
        if (chosen.empty()) {
            break;
        }
        Pass pass(result, options.check);
        pass.take(chosen);
        report(pass.taken, result.applied);
        report(pass.dropped, result.dropped);
        std::transform(pass.dropped.begin(), pass.dropped.end(), std::inserter(refused, refused.end()), key_of);
        if (!pass.taken.empty()) {
            // What was chosen points into the old findings.
            result.text = std::move(pass.text);
            result.findings = std::move(pass.findings);
        }
    }
    return result;
}

}  // namespace quor::input::gaussian

// Applies fixes in passes: all at once, and where that makes a text worse, in halves until the guilty ones are alone.
#include <gjf/core/check/fix_text.hpp>

#include <gjf/core/check/change_checks.hpp>

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

FixKey key_of(const Candidate& candidate) {
    return {candidate.finding->job, candidate.finding->code, message_without_numbers(candidate.finding->message),
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

Candidates choose(const std::vector<Finding>& findings, const FixOptions& options, const std::set<FixKey>& refused,
                  bool unsafe) {
    Candidates chosen;
    TakenPlaces taken;
    for (const Finding& finding : findings) {
        const Fix* fix = options.applies && !options.applies(finding) ? nullptr : applicable_fix(finding, unsafe);
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
        if (new_findings(old_.findings, found).empty()) {
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
        // What is likely is asked again behind what is sure: a route whose words are glued together misleads.
        Candidates chosen = choose(result.findings, options, refused, false);
        if (chosen.empty() && options.unsafe) {
            chosen = choose(result.findings, options, refused, true);
        }
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

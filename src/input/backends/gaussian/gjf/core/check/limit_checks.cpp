// Checks of what a site allows and wants. The limits are the user's: Gaussian would run these jobs, so none is an error.
#include <gjf/core/check/limit_checks.hpp>

#include <gjf/core/check/checker.hpp>
#include <gjf/core/check/rule.hpp>
#include <gjf/core/job/link0_keys.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <string>

namespace quor::input::gaussian {
namespace {

// Returns a word of the user's as the vocabulary spells it, as in "opt=calcfc".
std::string spelt(const SimpleYAMLParser& schema, const std::string& word) {
    const std::size_t sign = word.find('=');
    const std::string keyword = schema.normalize_keyword(word.substr(0, sign));
    return sign == std::string::npos ? keyword : keyword + '=' + schema.normalize_option(keyword, word.substr(sign + 1));
}

// Returns the line of a Link 0 key in any of its spellings, 0 for none.
std::size_t link0_line(const CheckedJob& job, std::string_view name) {
    const Link0Key* wanted = find_link0_key(name);
    for (const std::size_t number : job.layout.link0_lines) {
        const std::string_view text = trim_view(without_comment(job.line(number)));
        if (text.size() < 2) {
            continue;
        }
        const std::string_view key = text.substr(1, text.find_first_of("= \t") - 1);
        if (equals_folded(key, to_lower_copy(name)) || (wanted != nullptr && find_link0_key(key) == wanted)) {
            return number;
        }
    }
    return 0;
}

// Returns where a job has a word or, after "%", a Link 0 key; line 0 for nowhere.
TextPlace place_of_word(const CheckedJob& job, const std::string& word) {
    if (word.substr(0, 1) == "%") {
        return {link0_line(job, std::string_view(word).substr(1)), 0, 0};
    }
    std::optional<Span> span = job.find_word(spelt(job.schema, word));
    span = span ? span : job.find_word(to_lower_copy(word));
    return span ? job.route_place(*span) : TextPlace{0, 0, 0};
}

std::size_t head_line(const CheckedJob& job) {
    return job.tree.segments.empty() ? job.layout.lines.first : job.route_place(job.tree.segments.front().place).line;
}

void check_limits(const CheckedMolecule& molecule, Findings& findings) {
    const CheckedJob& job = molecule.job;
    if (job.limits == nullptr) {
        return;
    }
    const CheckLimits& limits = *job.limits;
    if (const auto memory = asked_memory(job); limits.memory > 0 && memory && memory->amount > limits.memory) {
        findings.add("GJF-X001", Severity::Warning,
                     "%mem is more than the " + std::to_string(limits.memory >> 20) + " MB allowed here", memory->place);
    }
    if (const auto cores = asked_cores(job); limits.cores > 0 && cores && cores->amount > limits.cores) {
        findings.add(
            "GJF-X002", Severity::Warning,
            std::to_string(cores->amount) + " cores are more than the " + std::to_string(limits.cores) + " allowed here",
            cores->place);
    }
    for (const std::string& word : limits.forbidden) {
        if (const TextPlace place = place_of_word(job, word); place.line != 0) {
            findings.add("GJF-X003", Severity::Warning, "'" + word + "' is forbidden here", place);
        }
    }
    for (const std::string& word : limits.wanted) {
        if (place_of_word(job, word).line == 0) {
            findings.add("GJF-X004", Severity::Warning, "'" + word + "' is wanted here and missing", head_line(job));
        }
    }
}

}  // namespace

const Family limit_family = {Known::Control, check_limits, {"GJF-X001", "GJF-X002", "GJF-X003", "GJF-X004", "GJF-X005"}};

}  // namespace quor::input::gaussian

// Reads the comments that silence codes, and finds those that silence nothing.
#include <gjf/core/check/silencing.hpp>

#include <gjf/core/check/rule.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <set>

namespace quor::input::gaussian {
namespace {

constexpr std::string_view mark = "quor-gjf:";

bool is_code(const std::string& code) {
    return std::any_of(families().begin(), families().end(), [&](const Family* family) {
        return std::find(family->codes.begin(), family->codes.end(), code) != family->codes.end();
    });
}

}  // namespace

SilencedCodes::SilencedCodes(const CheckedJob& job) {
    std::vector<std::string_view> words;
    std::size_t number = job.layout.lines.first;
    for (const std::string_view line : job.lines()) {
        const std::size_t comment = line.find('!');
        if (comment != std::string_view::npos && contains_folded(line.substr(comment), mark)) {
            split_fields(line.substr(comment + 1), FieldSeparators::WhiteSpaceAndComma, true, words);
            const bool ignores = words.size() > 2 && equals_folded(words[0], mark) && equals_folded(words[1], "ignore");
            for (std::size_t i = 2; ignores && i < words.size(); ++i) {
                std::string code(words[i]);
                std::transform(code.begin(), code.end(), code.begin(),
                               [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
                codes_.push_back({std::move(code), job.place_in(number, words[i])});
            }
        }
        ++number;
    }
}

bool SilencedCodes::has(std::string_view code) const noexcept {
    return std::any_of(codes_.begin(), codes_.end(), [&](const Silenced& each) { return each.code == code; });
}

void SilencedCodes::apply(const CheckedJob& job, std::vector<Finding>& list, std::size_t begin,
                          const std::function<bool(const std::string&)>& is_on, Findings& findings) const {
    if (codes_.empty()) {
        return;
    }
    std::set<std::string> used;
    const auto silenced = [&](const Finding& finding) { return has(finding.code) && (used.insert(finding.code), true); };
    list.erase(std::remove_if(list.begin() + static_cast<std::ptrdiff_t>(begin), list.end(), silenced), list.end());
    // What could not be read could not be found; and of other files, a text alone knows nothing.
    if (!job.read_whole() || !is_on("GJF-X005") || has("GJF-X005")) {
        return;
    }
    for (const Silenced& each : codes_) {
        if (!is_code(each.code)) {
            findings.add("GJF-X005", Severity::Note, "there is no check '" + each.code + "' to silence", each.place);
        } else if (used.count(each.code) == 0 && !is_of_other_files(each.code) && is_on(each.code)) {
            findings.add("GJF-X005", Severity::Note, each.code + " is silenced here, and is not found in this job",
                         each.place);
        }
    }
}

}  // namespace quor::input::gaussian

// Checks any text: no exception, every finding explained and placed inside the text, and nothing silenced is reported.
#include "fuzzers.hpp"
#include "properties.hpp"

#include <gjf/core/check/checker.hpp>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace quor::fuzz {
namespace {

using namespace input::gaussian;

std::vector<std::string_view> lines_of(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

bool is_described(const std::string& code) {
    const std::vector<CheckDescription>& all = check_descriptions();
    return std::any_of(all.begin(), all.end(), [&](const CheckDescription& one) { return one.code == code; });
}

void hold_place(const Finding& finding, const std::vector<std::string_view>& lines) {
    hold(finding.line <= std::max<std::size_t>(lines.size(), 1), "a finding stands in a line of the text");
    hold(finding.column == 0 || finding.line > 0, "a column needs a line");
    hold((finding.column == 0) == (finding.length == 0), "a place has a length");
    if (finding.column > 0) {
        hold(finding.column - 1 + finding.length <= lines[finding.line - 1].size(), "a finding stands inside its line");
    }
}

}  // namespace

int check_text(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::vector<std::string_view> lines = lines_of(text);
    const std::vector<Finding> findings = input::gaussian::check_text(text);
    for (const Finding& finding : findings) {
        hold(is_described(finding.code), "every code is described");
        hold(!finding.message.empty(), "every finding has a message");
        hold_place(finding, lines);
    }
    if (!findings.empty()) {
        const std::string silenced = findings.front().code;
        CheckOptions options;
        options.ignored_codes = {silenced};
        const std::vector<Finding> rest = input::gaussian::check_text(text, options);
        hold(std::none_of(rest.begin(), rest.end(), [&](const Finding& one) { return one.code == silenced; }),
             "a silenced code is not reported");
        const auto others =
            std::count_if(findings.begin(), findings.end(), [&](const Finding& one) { return one.code != silenced; });
        hold(static_cast<std::ptrdiff_t>(rest.size()) == others, "silencing a code silences nothing else");
    }
    return 0;
}

}  // namespace quor::fuzz

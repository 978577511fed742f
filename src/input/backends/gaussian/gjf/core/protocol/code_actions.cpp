// Offers what can be done about findings, and tells them as diagnostics.
#include <gjf/core/protocol/code_actions.hpp>

#include <gjf/core/check/fix_text.hpp>
#include <gjf/core/knowledge/facts.hpp>
#include <gjf/core/language/job_tokens.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <utility>

namespace quor::input::gaussian {
namespace {

Span place_of(const Finding& finding) noexcept { return span_between(finding.begin, finding.end); }

// Returns where each code is explained: the address of the page with the line; empty where there is no page.
std::map<std::string, std::string, std::less<>> find_pages() {
    std::map<std::string, std::string, std::less<>> pages;
    const std::string address = "file://" + address_of(std::filesystem::absolute(path_of_check_pages()).string());
    std::size_t number = 0;
    for (const std::string_view line : split_lines(check_pages())) {
        ++number;
        if (constexpr std::string_view heading = "### "; line.substr(0, heading.size()) == heading) {
            const std::string_view title = line.substr(heading.size());
            pages.emplace(title.substr(0, title.find(' ')), address + "#L" + std::to_string(number));
        }
    }
    return pages;
}

const std::string* page_of(std::string_view code) {
    static const auto pages = find_pages();
    const auto found = pages.find(code);
    return found == pages.end() ? nullptr : &found->second;
}

Message diagnostic_json(const OpenDocument& document, const Finding& finding, bool shares_files) {
    const std::string hint = finding.hint.empty() ? "" : " (" + finding.hint + ")";
    Message diagnostic = {{"range", document.range_json(place_of(finding))},
                          {"severity", 3 - static_cast<int>(finding.severity)},
                          {"code", finding.code},
                          {"source", "quor-gjf"},
                          {"message", finding.message + hint}};
    if (const std::string* page = shares_files ? page_of(finding.code) : nullptr) {
        diagnostic["codeDescription"] = {{"href", *page}};
    }
    for (const RelatedPlace& place : finding.related) {
        const std::size_t begin = document.offset_of_line(place.line) + (place.column == 0 ? 0 : place.column - 1);
        diagnostic["relatedInformation"].push_back(
            {{"location",
              {{"uri", document.uri()}, {"range", document.range_json(span_between(begin, begin + place.length))}}},
             {"message", place.message}});
    }
    return diagnostic;
}

bool touches(Span a, Span b) noexcept { return a.begin <= b.end() && b.begin <= a.end(); }

// Tells whether a client wants actions of a kind: all, or those that begin with one that it names.
bool wants(const Message& parameters, std::string_view kind) {
    const Message& only = member(parameters, "context/only");
    return !only.is_array() || std::any_of(only.begin(), only.end(), [&](const Message& each) {
        const std::string wanted = each.is_string() ? each.get<std::string>() : "";
        return kind == wanted || (kind.substr(0, wanted.size()) == wanted && kind.substr(wanted.size(), 1) == ".");
    });
}

void add_fixes(const DocumentQuestion& question, const Finding& finding, Message& actions) {
    const OpenDocument& document = question.document;
    const Fix* best = applicable_fix(finding, false);
    for (const Fix& fix : finding.fixes) {
        actions.push_back(
            {{"title", fix.title},
             {"kind", "quickfix"},
             {"diagnostics", Message::array({diagnostic_json(document, finding, question.options.shares_files)})},
             {"edit", document.workspace_edit(fix.edits)}});
        if (&fix == best) {
            actions.back()["isPreferred"] = true;
        }
    }
}

// A comment that silences a code: above the route of a job, at a line of its own, or one more code in the one that stands
// there.
TextEdit silencing(std::string_view text, std::size_t route, const std::string& code) {
    constexpr std::string_view comment = "! quor-gjf: ignore ";
    const std::size_t line = route == 0 ? 0 : text.rfind('\n', route - 1) + 1;
    if (line > 0) {
        const std::size_t above = line == 1 ? 0 : text.rfind('\n', line - 2) + 1;
        if (text.substr(above, comment.size()) == comment) {
            const std::size_t end = line - (line - above > 1 && text[line - 2] == '\r' ? 2 : 1);
            return {end, end, " " + code};
        }
    }
    const bool returns = text.find("\r\n") != std::string_view::npos;
    return {line, line, std::string(comment) + code + (returns ? "\r\n" : "\n")};
}

void add_silencing(const DocumentQuestion& question, const Finding& finding, Message& actions) {
    const OpenDocument& document = question.document;
    const std::vector<JobReading>& jobs = document.file().jobs();
    if (finding.job == 0 || finding.job > jobs.size() || jobs[finding.job - 1].places.route_words.empty()) {
        return;
    }
    const std::size_t route = jobs[finding.job - 1].places.route_words.front().begin;
    actions.push_back({{"title", "ignore " + finding.code + " in this job"},
                       {"kind", "quickfix"},
                       {"diagnostics", Message::array({diagnostic_json(document, finding, question.options.shares_files)})},
                       {"edit", document.workspace_edit({silencing(document.text(), route, finding.code)})}});
}

// What differs between two texts, as one change.
TextEdit difference(std::string_view old_text, std::string_view new_text) {
    const std::size_t shorter = std::min(old_text.size(), new_text.size());
    std::size_t begin = 0;
    while (begin < shorter && old_text[begin] == new_text[begin]) {
        ++begin;
    }
    std::size_t same = 0;
    while (same < shorter - begin && old_text[old_text.size() - 1 - same] == new_text[new_text.size() - 1 - same]) {
        ++same;
    }
    // Whole lines: no character is cut.
    begin = begin == 0 ? 0 : old_text.rfind('\n', begin - 1) + 1;
    const std::size_t line_end = old_text.find('\n', old_text.size() - same);
    same = line_end == std::string_view::npos ? 0 : old_text.size() - line_end - 1;
    return {begin, old_text.size() - same, std::string(new_text.substr(begin, new_text.size() - same - begin))};
}

void add_fix_all(const DocumentQuestion& question, Message& actions) {
    const OpenDocument& document = question.document;
    const std::string fixed =
        question.options.fix ? question.options.fix(document.text(), document.path()) : fix_text(document.text()).text;
    if (fixed != document.text()) {
        actions.push_back({{"title", "apply all safe fixes of quor-gjf"},
                           {"kind", fix_all_kind},
                           {"edit", document.workspace_edit({difference(document.text(), fixed)})}});
    }
}

}  // namespace

Message diagnostics_json(const OpenDocument& document, const std::vector<Finding>& findings, bool shares_files) {
    Message list = Message::array();
    for (const Finding& finding : findings) {
        list.push_back(diagnostic_json(document, finding, shares_files));
    }
    return list;
}

Message code_actions(const DocumentQuestion& question) {
    Message actions = Message::array();
    const Span range = question.range();
    if (wants(question.parameters, "quickfix")) {
        std::set<std::pair<std::size_t, std::string>> silenced;
        for (const Finding& finding : question.findings()) {
            if (touches(place_of(finding), range)) {
                add_fixes(question, finding, actions);
            }
        }
        for (const Finding& finding : question.findings()) {
            if (touches(place_of(finding), range) && silenced.emplace(finding.job, finding.code).second) {
                add_silencing(question, finding, actions);
            }
        }
    }
    if (wants(question.parameters, fix_all_kind)) {
        add_fix_all(question, actions);
    }
    return actions;
}

std::string address_of(std::string_view path) {
    constexpr std::string_view kept = "-._~/!$&'()*+,;=:@";
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string address;
    for (const char c : path) {
        if (is_letter(c) || is_digit(c) || kept.find(c) != std::string_view::npos) {
            address += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            address += {'%', digits[byte / 16], digits[byte % 16]};
        }
    }
    return address;
}

}  // namespace quor::input::gaussian

// Checks of the route word by word: words and options that nobody knows, and those that may mean several things.
#include <gjf/core/check/checked_job.hpp>

#include <gjf/core/check/near_names.hpp>
#include <gjf/core/check/solvents.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>

namespace quor::input::gaussian {
namespace {

// Names that papers use for a functional that Gaussian calls otherwise.
constexpr struct {
    const char* paper_name;
    const char* name;
} paper_names[] = {{"pbe0", "pbe1pbe"},
                   {"hse06", "hseh1pbe"},
                   {"hse03", "ohse2pbe"},
                   {"hiss", "hissbpbe"},
                   {"tpss", "tpsstpss"},
                   {"pbe", "pbepbe"},
                   {"revpbe", "pbehpbe"},
                   {"bp", "bp86"},
                   {"b3lyp5", "b3lyp"},
                   {"cam", "cam-b3lyp"},
                   {"pw91", "pw91pw91"},
                   {"b3lyp-d3", "b3lyp empiricaldispersion=gd3"},
                   {"wb97x-d3", "wb97xd"},
                   {"r2scan", ""},
                   {"scan", ""},
                   {"b97-d", "b97d"},
                   {"m06-2x-d3", "m062x empiricaldispersion=gd3"}};

// Keywords whose value is free text or a number and no option.
constexpr std::string_view free_valued[] = {"iop",      "iop2",  "iop33",  "external", "extralinks", "field",
                                            "use",      "name",  "test",   "skip",     "scale",      "temperature",
                                            "pressure", "punch", "window", "constants"};

bool is_free_valued(const WrittenKeyword& keyword) noexcept {
    return std::find(std::begin(free_valued), std::end(free_valued), keyword.name) != std::end(free_valued);
}

const char* paper_name_of(std::string_view word) noexcept {
    std::string bare = to_lower_copy(word);
    for (const std::string_view prefix : {"", "u", "ro", "r"}) {
        for (const auto& entry : paper_names) {
            if (bare.size() >= prefix.size() && bare.compare(0, prefix.size(), prefix) == 0 &&
                bare.substr(prefix.size()) == entry.paper_name) {
                return entry.name;
            }
        }
    }
    return nullptr;
}

// Reports a word that is neither keyword nor method nor basis set.
void report_unknown_word(const CheckedJob& job, const std::string& word, const TextPlace& place, Findings& findings) {
    if (word.empty()) {
        const TextPlace mark{place.line, place.column, 1};
        findings.add("GJF-W005", Severity::Warning, "a keyword's name is missing here", mark, "");
        return;
    }
    const std::vector<std::string> near = near_names(to_lower_copy(word), all_route_words(job.schema));
    findings.add("GJF-W005", near.empty() ? Severity::Warning : Severity::Error,
                 "'" + word + "' is no route keyword, method or basis set", place, did_you_mean(near));
}

bool is_ambiguous(const CheckedJob& job, const std::string& word) {
    return job.schema.keyword_completions(word).size() + job.schema.method_completions(word).size() +
               job.schema.basis_completions(word).size() >
           1;
}

// Reports a paper's name for a functional; tells whether it was one.
bool check_paper_name(const CheckedJob& job, const WrittenSegment& segment, const std::string& word, const TextPlace& place,
                      Findings& findings) {
    const char* name =
        job.schema.knows_method_exact(word) || job.schema.knows_keyword_exact(word) ? nullptr : paper_name_of(word);
    if (name == nullptr || segment.is_oniom) {
        return false;
    }
    findings.add(
        "GJF-R011", Severity::Error, "'" + word + "' is the name of a functional in papers, not in Gaussian", place,
        *name == '\0' ? std::string("Gaussian 16 has no such functional") : "Gaussian calls it " + std::string(name));
    return true;
}

void check_unknown_words(const CheckedJob& job, const WrittenSegment& segment, Findings& findings) {
    for (const WrittenKeyword& keyword : segment.keywords) {
        if (check_paper_name(job, segment, keyword.head, keyword.place, findings)) {
            continue;
        }
        if (!keyword.known && !is_ambiguous(job, keyword.head)) {
            report_unknown_word(job, keyword.head, keyword.place, findings);
        }
    }
    // A word before "=" that is no keyword makes the segment a basis set assignment, and the word is lost.
    const std::size_t equals = segment.text.find('=');
    if (segment.keywords.empty() && segment.method.empty() && !segment.is_oniom && equals != std::string::npos) {
        const std::string head(trim_view(std::string_view(segment.text).substr(0, equals)));
        if (!equals_folded(head, "basis")) {
            TextPlace place = segment.place;
            place.length = std::min(place.length, head.size());
            report_unknown_word(job, head, place, findings);
        }
    }
}

// Reports a basis set that begins as one does but goes on as none.
void check_basis_suffix(const CheckedJob& job, const WrittenSegment& segment, Findings& findings) {
    if (segment.basis.empty() || job.schema.knows_basis_exact(segment.basis)) {
        return;
    }
    TextPlace place = segment.place;
    const std::size_t at = to_lower_copy(segment.text).find(segment.basis);
    if (at != std::string::npos && at + segment.basis.size() <= place.length) {
        place = {place.line, place.column + at, segment.basis.size()};
    }
    findings.add("GJF-W005", Severity::Warning, "'" + segment.basis + "' begins like a basis set but is none", place,
                 "look at what follows the name in parentheses");
}

void check_options(const CheckedJob& job, const WrittenKeyword& keyword, Findings& findings) {
    const std::vector<std::string> options = job.schema.options_of(keyword.name);
    if (!keyword.known || options.empty() || is_free_valued(keyword)) {
        return;
    }
    for (const WrittenOption& option : keyword.options) {
        const char first = option.name.empty() ? '0' : option.name.front();
        const bool is_value = (first >= '0' && first <= '9') || first == '-' || first == '+' || first == '.';
        if (is_value || job.schema.knows_option(keyword.name, option.name) ||
            job.schema.option_completions(keyword.name, option.name).size() > 1) {
            continue;
        }
        const std::vector<std::string> near = near_names(to_lower_copy(option.name), options);
        findings.add("GJF-R001", near.empty() ? Severity::Warning : Severity::Error,
                     "'" + option.name + "' is no option of " + keyword.name, option.place, did_you_mean(near));
    }
}

void check_solvent(const WrittenKeyword& keyword, Findings& findings) {
    for (const WrittenOption& option : keyword.options) {
        const std::string_view value = trim_view(option.value);
        if (option.canonical != "solvent" || value.empty() || is_solvent(value)) {
            continue;
        }
        const std::vector<std::string> near = near_names(to_lower_copy(value), solvent_names());
        findings.add("GJF-R012", near.empty() ? Severity::Warning : Severity::Error,
                     "'" + std::string(value) + "' is no solvent of Gaussian", option.place, did_you_mean(near));
    }
}

// Reports the route parser's own remarks but the unknown words, which are looked at more closely here.
void check_warnings(const CheckedJob& job, Findings& findings) {
    for (const ParseWarning& warning : job.route.warnings) {
        if (warning.code != "GJF-W005") {
            findings.add(warning.code.c_str(), Severity::Warning, warning.message,
                         warning.span ? job.route_place(warning.span->begin, warning.span->end) : TextPlace{});
        }
    }
}

}  // namespace

void check_route_words(const CheckedJob& job, Findings& findings) {
    if (!job.schema.is_loaded()) {
        return;
    }
    check_warnings(job, findings);
    for (const WrittenSegment& segment : job.segments) {
        check_unknown_words(job, segment, findings);
        check_basis_suffix(job, segment, findings);
        for (const WrittenKeyword& keyword : segment.keywords) {
            check_options(job, keyword, findings);
            if (keyword.name == "scrf") {
                check_solvent(keyword, findings);
            }
        }
    }
}

}  // namespace quor::input::gaussian

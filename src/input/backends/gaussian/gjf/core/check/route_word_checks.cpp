// Checks of the route word by word: words and options that nobody knows, and those that may mean several things.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/check/fixes.hpp>
#include <gjf/core/check/near_names.hpp>
#include <gjf/core/knowledge/facts.hpp>
#include <gjf/core/route/option_syntax.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>
#include <optional>
#include <unordered_set>

namespace quor::input::gaussian {
namespace {

// Returns u, ro or r where they stand before a paper's name for a functional, else nothing.
std::string_view paper_prefix(std::string_view word) {
    for (const std::string_view prefix : {"", "u", "ro", "r"}) {
        if (equals_folded(word.substr(0, prefix.size()), prefix) && other_name("functional", word.substr(prefix.size()))) {
            return prefix;
        }
    }
    return {};
}

// Returns what Gaussian calls a functional that papers name otherwise, empty for none; nothing for any other word.
std::optional<std::string_view> paper_name_of(std::string_view word) {
    return other_name("functional", word.substr(paper_prefix(word).size()));
}

// Tells whether a word is a known method in a form that the vocabulary may lack: complex, generalised, or long-range
// corrected.
bool is_method_variant(const CheckedJob& job, const std::string& word) {
    constexpr std::string_view prefixes[] = {"c", "g", "lc-"};
    return std::any_of(std::begin(prefixes), std::end(prefixes), [&](std::string_view prefix) {
        return word.size() > prefix.size() + 1 && equals_folded(std::string_view(word).substr(0, prefix.size()), prefix) &&
               job.schema.knows_method_exact(word.substr(prefix.size()));
    });
}

// Says what a word that nobody knows was rather meant as: an option, or an equals sign between blanks.
std::string hint_at_form(std::string_view word) {
    if (word.empty() || word.front() == '(') {
        return "write no blanks around '=' and '/', as in opt=(ts,calcfc) and hf/6-31g";
    }
    const std::optional<std::string_view> place = other_name("option", word);
    return place ? "write " + std::string(*place) : std::string();
}

// Offers to write an option, which stands as a word of its own, behind its keyword.
void offer_option(const CheckedJob& job, const RouteTree::Keyword& keyword, Finding& finding) {
    const std::optional<std::string_view> meant = other_name("option", keyword.head.in(job.route_text()));
    if (!meant || meant->find('(') != std::string_view::npos || keyword.place != keyword.head) {
        return;
    }
    const std::string word(*meant);
    const RouteTree::Keyword* owner = job.find_keyword(word.substr(0, word.find('=')));
    std::vector<TextEdit> edits =
        owner == nullptr ? route_edits(job, keyword.head, word) : with_option(job, *owner, word.substr(word.find('=') + 1));
    const std::vector<TextEdit> removal = owner == nullptr ? edits : without_keyword(job, keyword);
    if (owner != nullptr && !edits.empty() && !removal.empty()) {
        edits.insert(edits.begin() + (removal.front().begin > edits.front().begin ? 1 : 0), removal.front());
    }
    offer(finding, "write " + word, FixSafety::Unsafe, removal.empty() ? std::vector<TextEdit>() : std::move(edits));
}

// Tells whether a word stands beside the sign between a method and a basis set.
bool is_beside_slash(std::string_view text, Span word) noexcept {
    return (word.begin > 0 && text[word.begin - 1] == '/') || (word.end() < text.size() && text[word.end()] == '/');
}

// Reports a word that is neither keyword nor method nor basis set; `is_model` where it must be one of the two last.
void report_unknown_word(const CheckedJob& job, const std::string& word, const TextPlace& place, bool is_model,
                         Findings& findings, const RouteTree::Keyword* keyword = nullptr) {
    if (word.empty()) {
        findings.add("GJF-W005", Severity::Warning, "a sign stands alone, without a keyword before it",
                     TextPlace{place.line, place.column, 1}, hint_at_form(word));
        return;
    }
    if (job.schema.knows_basis_exact(word)) {
        findings.add("GJF-W005", Severity::Note, "'" + word + "' is a basis set, of which no options are known", place);
        return;
    }
    if (const std::string hint = hint_at_form(word); !hint.empty()) {
        Finding& finding = findings.add("GJF-W005", word.front() == '(' ? Severity::Warning : Severity::Error,
                                        "'" + word + "' is no route keyword, method or basis set", place, hint);
        if (keyword != nullptr) {
            offer_option(job, *keyword, finding);
        }
        return;
    }
    const bool has_looked = findings.may_look_for_names();
    const std::vector<std::string> near =
        has_looked ? near_names(to_lower_copy(word), all_route_words(job.schema)) : std::vector<std::string>();
    const bool is_sure = (is_surely_none(word, near, has_looked) || (is_model && is_misspelt_model(word, near))) &&
                         !is_method_variant(job, word);
    Finding& finding = findings.add("GJF-W005", is_sure ? Severity::Error : Severity::Warning,
                                    "'" + word + "' is no route keyword, method or basis set", place, did_you_mean(near));
    offer_near(job, place, word, near, finding);
}

// Offers to leave out the second of two methods or basis sets of a segment, or to put it in the place of the first.
void offer_one_model(const CheckedJob& job, const RouteTree::Segment& segment, const RouteTree::Keyword& second,
                     const std::string& first, Finding& finding) {
    const Span place = second.place;
    if (place.begin == 0 || job.route_text()[place.begin - 1] != '/') {
        return;
    }
    const std::vector<TextEdit> removal = route_edits(job, span_between(place.begin - 1, place.end()), {});
    offer(finding, "leave out " + job.written(place), FixSafety::Choice, removal);
    const std::size_t at = segment.place.begin + to_lower_copy(job.written(segment.place)).find(first);
    if (at < segment.place.begin || at + first.size() >= place.begin) {
        return;
    }
    std::vector<TextEdit> edits = route_edits(job, span_between(at, at + first.size()), job.written(place));
    if (!edits.empty() && !removal.empty()) {
        edits.push_back(removal.front());
        offer(finding, "leave out " + first, FixSafety::Choice, std::move(edits));
    }
}

// Reports a word that a piece of a segment was left with, since a method or a basis set stands there already; tells whether
// it was one.
bool check_second_model(const CheckedJob& job, const RouteTree::Segment& segment, const RouteTree::Keyword& keyword,
                        Findings& findings) {
    const std::string head = job.written(keyword.head);
    const std::string raw = job.written(keyword.place);
    TextPlace place = job.route_place(keyword.head);
    place.length = raw.size();
    if (!keyword.is_method && !segment.method.empty() && job.schema.knows_method_exact(head)) {
        Finding& finding =
            findings.add("GJF-R003", Severity::Warning, "two methods: '" + segment.method + "' and '" + raw + "'", place,
                         "keep one; a second model chemistry stands behind '//', with its basis set");
        offer_one_model(job, segment, keyword, segment.method, finding);
        return true;
    }
    if (!keyword.is_method && !keyword.known() && !segment.basis.empty() && job.schema.knows_basis(raw)) {
        Finding& finding =
            findings.add("GJF-R004", Severity::Warning, "two basis sets: '" + segment.basis + "' and '" + raw + "'", place,
                         "keep one; different sets for different elements are given with gen");
        offer_one_model(job, segment, keyword, segment.basis, finding);
        return true;
    }
    return false;
}

using AmbiguousWords = std::unordered_set<std::string>;

// The word that a warning calls ambiguous, and what it may stand for; no candidates where not all are told.
struct AmbiguousWord {
    std::string word;
    std::vector<std::string> candidates;
};

AmbiguousWord words_of_warning(const std::string& message) {
    constexpr std::string_view mark = "'; candidates: ";
    const std::size_t end = message.rfind(mark);
    if (end == std::string::npos || message.find("...") != std::string::npos) {
        return {};
    }
    const std::size_t begin = message.rfind('\'', end - 1) + 1;
    AmbiguousWord found{message.substr(begin, end - begin), {}};
    std::vector<std::string_view> words;
    split_fields(std::string_view(message).substr(end + mark.size()), FieldSeparators::WhiteSpaceAndComma, true, words);
    found.candidates.assign(words.begin(), words.end());
    return found;
}

// Collects the words that the route's own warnings call ambiguous.
AmbiguousWords told_ambiguous(const CheckedJob& job) {
    AmbiguousWords words;
    for (const ParseWarning& warning : job.route.warnings) {
        const std::size_t begin = warning.message.find('\'') + 1;
        const std::size_t end = warning.message.rfind("'; candidates: ");
        if (warning.code < "GJF-W004" && end != std::string::npos) {
            words.insert(warning.message.substr(begin, end - begin));
        }
    }
    return words;
}

// Returns all words that one may begin.
std::vector<std::string> candidates_of(const CheckedJob& job, const std::string& word) {
    std::vector<std::string> candidates = job.schema.keyword_completions(word);
    for (const auto& more : {job.schema.method_completions(word), job.schema.basis_completions(word)}) {
        candidates.insert(candidates.end(), more.begin(), more.end());
    }
    return candidates;
}

// Offers the words that one may begin, unless they are too many to choose from.
void offer_choices(const CheckedJob& job, const TextPlace& place, std::string_view written,
                   const std::vector<std::string>& candidates, Finding& finding) {
    constexpr std::size_t most_choices = 6;
    if (candidates.size() <= most_choices) {
        offer_words(job, place, written, candidates, FixSafety::Choice, finding);
    }
}

// Offers Gaussian's name for a functional; a dispersion correction stands behind the segment as a word of its own.
void offer_functional(const CheckedJob& job, const RouteTree::Segment& segment, const std::string& word,
                      const TextPlace& place, std::string_view meant, FixSafety safety, Finding& finding) {
    const std::string prefix = word.substr(0, paper_prefix(word).size());
    const std::size_t blank = meant.find(' ');
    std::vector<TextEdit> edits = {job.replacing(place, prefix + std::string(meant.substr(0, blank)))};
    if (blank != std::string_view::npos) {
        const std::size_t end = segment.place.end();
        const std::vector<TextPlace> last = route_places(job.layout, span_between(end - 1, end));
        if (last.size() != 1) {
            return;
        }
        const std::string more(meant.substr(blank));
        if (last.front().line == place.line && last.front().column + 1 == place.column + place.length) {
            edits.front().text += more;
        } else {
            edits.push_back(job.replacing({last.front().line, last.front().column + 1, 0}, more));
        }
    }
    offer(finding, "write " + prefix + std::string(meant), safety, std::move(edits));
}

// Reports a paper's name for a functional; tells whether it was one.
bool check_paper_name(const CheckedJob& job, const RouteTree::Segment& segment, const std::string& word,
                      const TextPlace& place, Findings& findings) {
    const bool is_own = segment.is_oniom || job.schema.knows_method_exact(word) || job.schema.knows_keyword_exact(word);
    const std::optional<std::string_view> name = is_own ? std::nullopt : paper_name_of(word);
    if (!name) {
        return false;
    }
    // A word that begins one of Gaussian's own may be taken for its abbreviation.
    const bool may_be_taken = !job.schema.method_completions(to_lower_copy(word)).empty();
    Finding& finding = findings.add(
        "GJF-R011", may_be_taken ? Severity::Warning : Severity::Error,
        "'" + word + "' is the name of a functional in papers, not in Gaussian", place,
        name->empty() ? std::string("Gaussian 16 has no such functional") : "Gaussian calls it " + std::string(*name));
    if (!name->empty() && place.length == word.size()) {
        const bool is_sure = !may_be_taken && name->find(' ') == std::string_view::npos;
        offer_functional(job, segment, word, place, *name, is_sure ? FixSafety::Safe : FixSafety::Unsafe, finding);
    }
    return true;
}

void check_unknown_words(const CheckedJob& job, const RouteTree::Segment& segment, const AmbiguousWords& told,
                         Findings& findings) {
    for (const RouteTree::Keyword& keyword : segment.keywords) {
        const std::string head = job.written(keyword.head);
        const TextPlace place = job.route_place(keyword.head);
        if (check_paper_name(job, segment, head, place, findings) || check_second_model(job, segment, keyword, findings) ||
            keyword.known()) {
            continue;
        }
        const std::vector<std::string> candidates = candidates_of(job, head);
        if (candidates.size() < 2) {
            report_unknown_word(job, head, place, is_beside_slash(job.route_text(), keyword.place), findings, &keyword);
        } else if (told.count(head) == 0) {
            Finding& finding = findings.add("GJF-W005", head.size() == 1 ? Severity::Error : Severity::Warning,
                                            "'" + head + "' is no route keyword, method or basis set", place,
                                            "it may begin " + format_warning_candidates(candidates, 6));
            offer_choices(job, place, head, candidates, finding);
        }
    }
    // A word before "=" that is no keyword makes the segment a basis set assignment, and the word is lost.
    if (segment.is_assignment && !equals_folded(segment.assigned.in(job.route_text()), "basis")) {
        report_unknown_word(job, job.written(segment.assigned), job.route_place(segment.assigned), false, findings);
    }
}

// Each level of ONIOM is a model chemistry of its own.
void check_level_words(const CheckedJob& job, const RouteTree::Segment& segment, Findings& findings) {
    std::size_t begin = segment.place.begin;
    const std::vector<std::string> levels = oniom_levels(job.route.oniom_expression);
    if (levels.size() < 2) {
        const Severity severity = is_foreign(job.written(segment.place)) ? Severity::Error : Severity::Warning;
        findings.add("GJF-R009", severity, "oniom has less than two levels", job.route_place(segment.place),
                     "two or three model chemistries stand in its first parentheses, with colons between");
    }
    for (const std::string& level : levels) {
        begin = job.route_text().find(level, begin);
        if (level.empty() || begin == std::string::npos) {
            return;
        }
        const RouteTree tree = read_route(level, job.schema).tree;
        for (const RouteTree::Segment& part : tree.segments) {
            for (const RouteTree::Keyword& keyword : part.keywords) {
                if (keyword.match == RouteMatch::Unknown) {
                    report_unknown_word(job, std::string(keyword.head.in(level)),
                                        job.route_place(span_between(begin + keyword.head.begin,
                                                                     begin + keyword.head.begin + keyword.head.length)),
                                        is_beside_slash(level, keyword.place), findings);
                }
            }
        }
        begin += level.size();
    }
}

// Tells whether what follows the name of a basis set in parentheses has signs that stand for no functions, or gives
// functions of hydrogen before a comma: (dp) for (d,p).
bool has_odd_functions(std::string_view basis) {
    const std::size_t open = std::min(basis.find('('), basis.size());
    const std::string_view first = basis.substr(open, basis.find(',', open) - open);
    return basis.find_first_not_of("(0123456789spdfgh,'+*)", open) != std::string_view::npos ||
           first.find_first_of("sp") != std::string_view::npos;
}

// Reports a basis set that begins as one does but goes on as none.
void check_basis_suffix(const CheckedJob& job, const RouteTree::Segment& segment, Findings& findings) {
    if (segment.basis.empty() || job.schema.knows_basis_exact(segment.basis)) {
        return;
    }
    TextPlace place = job.route_place(segment.place);
    const std::size_t at = to_lower_copy(job.written(segment.place)).find(segment.basis);
    if (at != std::string::npos && at + segment.basis.size() <= place.length) {
        place = {place.line, place.column + at, segment.basis.size()};
    }
    const bool is_polarized = segment.basis.starts_with("6-31") || segment.basis.starts_with("cc-pv");
    findings.add("GJF-W005", is_polarized && has_odd_functions(segment.basis) ? Severity::Error : Severity::Warning,
                 "'" + segment.basis + "' begins like a basis set but is none", place,
                 "look at what follows the name in parentheses");
}

// Tells whether a name is an option with its value behind it, as maxcycles100.
bool has_glued_value(const CheckedJob& job, const std::string& keyword, const std::string& name) {
    constexpr std::size_t shortest = 6;
    const std::size_t end = name.find_last_not_of("0123456789") + 1;
    return end >= shortest && end < name.size() && job.schema.knows_option(keyword, name.substr(0, end));
}

// Tells whether a name may be meant as words: one that begins like a number is a value of its keyword, unless signs stand in
// it that part other things.
bool may_hold_words(std::string_view name) {
    const bool begins_like_number = is_digit(name.front()) || name.find_first_of("+-.") == 0;
    return !begins_like_number || name.find_first_of(";:/\\") != name.npos;
}

void check_option_words(const CheckedJob& job, const RouteTree::Keyword& keyword, Findings& findings) {
    if (!keyword.known() || has_trait(keyword.name, "takes free text")) {
        return;
    }
    for (std::size_t i = 0; i < keyword.options.size(); ++i) {
        const RouteTree::Option& option = keyword.options[i];
        const std::string name = job.written(option.name);
        const bool is_value = name.empty() || is_number_text(name) || !may_hold_words(name);
        // The names of some solvents hold a comma; levels of theory are options of ircmax, and layers those of oniom.
        const bool ends_solvent = i > 0 && keyword.options[i - 1].canonical == "solvent" &&
                                  is_solvent(job.written(keyword.options[i - 1].value) + "," + name);
        const bool is_model =
            (keyword.name == "ircmax" && name.find('/') != std::string::npos) ||
            (keyword.name == "oniom" && job.written(option.place).find_first_of("/:") != std::string::npos);
        if (is_value || ends_solvent || is_model || job.schema.knows_option(keyword.name, name) ||
            job.schema.option_completions(keyword.name, name).size() > 1) {
            continue;
        }
        if (job.schema.options_of(keyword.name).empty()) {
            return;  // asked last: the list is long, and most options are known
        }
        const bool has_looked = findings.may_look_for_names();
        const std::vector<std::string> near =
            has_looked ? near_names(to_lower_copy(name), all_options(job.schema, keyword.name)) : std::vector<std::string>();
        const TextPlace place = job.route_place(option.name);
        const bool names_solvent = keyword.name == "scrf" && is_solvent(name);
        const bool is_sure =
            names_solvent || is_surely_none(name, near, has_looked) || has_glued_value(job, keyword.name, name);
        Finding& finding = findings.add("GJF-R001", is_sure ? Severity::Error : Severity::Warning,
                                        "'" + name + "' is no option of " + keyword.name, place,
                                        names_solvent ? "write solvent=" + name : did_you_mean(near));
        if (names_solvent) {
            offer_words(job, place, name, {"solvent=" + name}, FixSafety::Unsafe, finding);
        } else {
            offer_near(job, place, name, near, finding);
        }
    }
}

// Tells whether a remark is about a single letter, which many words begin with: Gaussian may know a longer abbreviation.
bool is_about_one_letter(std::string_view message) {
    const std::size_t quote = message.find('\'');
    return quote != message.npos && message.size() > quote + 2 && message[quote + 2] == '\'';
}

// Reports the route parser's own remarks but the unknown words, which are looked at more closely here.
void check_warnings(const CheckedJob& job, Findings& findings) {
    for (const ParseWarning& warning : job.route.warnings) {
        if (warning.code != "GJF-W005") {
            const TextPlace place = warning.span
                                        ? job.route_place(span_between(static_cast<std::size_t>(warning.span->begin),
                                                                       static_cast<std::size_t>(warning.span->end)))
                                        : TextPlace{};
            const Severity severity = is_about_one_letter(warning.message) ? Severity::Error : Severity::Warning;
            Finding& finding = findings.add(warning.code.c_str(), severity, warning.message, place);
            if (const auto [word, candidates] = words_of_warning(warning.message); !candidates.empty()) {
                offer_choices(job, place, word, candidates, finding);
            }
        }
    }
}

void check_route_words(const CheckedMolecule& molecule, Findings& findings) {
    const CheckedJob& job = molecule.job;
    // The overlays of a route that is not standard are no words.
    if (!job.schema.is_loaded() || job.has_keyword("nonstd")) {
        return;
    }
    check_warnings(job, findings);
    const AmbiguousWords told = told_ambiguous(job);
    for (const RouteTree::Segment& segment : job.tree.segments) {
        check_basis_suffix(job, segment, findings);
        if (segment.is_oniom) {
            check_level_words(job, segment, findings);
            for (const RouteTree::Keyword& keyword : segment.keywords) {
                check_option_words(job, keyword, findings);
            }
            continue;
        }
        check_unknown_words(job, segment, told, findings);
        for (const RouteTree::Keyword& keyword : segment.keywords) {
            check_option_words(job, keyword, findings);
        }
    }
}

}  // namespace

const Family route_word_family = {
    Known::Route,
    check_route_words,
    {"GJF-R001", "GJF-R003", "GJF-R004", "GJF-R011", "GJF-W001", "GJF-W002", "GJF-W003", "GJF-W004", "GJF-W005"}};

}  // namespace quor::input::gaussian

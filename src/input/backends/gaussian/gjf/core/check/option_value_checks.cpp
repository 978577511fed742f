// Checks of the values of options: of the wrong kind, missing, or given where none is taken.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/check/fixes.hpp>
#include <gjf/core/check/near_names.hpp>
#include <gjf/core/knowledge/facts.hpp>
#include <gjf/core/knowledge/route_facts.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>

namespace quor::input::gaussian {
namespace {

enum class Fit { Good, Odd, Wrong };

// Methods share the options of the one without a spin prefix, and of the one without what stands in parentheses.
std::span<const OptionValue> values_of(std::string_view keyword) {
    for (const std::string_view prefix : {"", "ro", "r", "u"}) {
        if (keyword.starts_with(prefix)) {
            const std::string_view name = keyword.substr(prefix.size());
            for (const std::string_view tried : {name, name.substr(0, name.find('('))}) {
                if (const auto rows = option_values(tried); !rows.empty()) {
                    return rows;
                }
            }
        }
    }
    return {};
}

std::string_view without_parentheses(std::string_view value) {
    return value.size() > 1 && value.front() == '(' && value.back() == ')' ? trim_view(value.substr(1, value.size() - 2))
                                                                           : value;
}

// Tells whether a value is one of the words of a list, or a beginning of one.
bool is_named(std::string_view value, std::string_view names) {
    const std::string word = " " + to_lower_copy(value);
    return value.size() > 1 && (" " + std::string(names)).find(word) != std::string::npos;
}

Fit fit_of_integer(std::string_view value, std::string_view least) {
    if (!is_integer_text(value)) {
        return Fit::Wrong;
    }
    const std::optional<std::int64_t> number = to_int64(value);
    return least.empty() || (number && *number >= *to_int64(least)) ? Fit::Good : Fit::Odd;
}

Fit fit_of_real(std::string_view value, std::string_view above) {
    std::string text = to_lower_copy(value);
    std::replace(text.begin(), text.end(), 'd', 'e');
    const std::optional<double> number = to_number(text);
    return !number ? Fit::Wrong : *number > *to_number(above) ? Fit::Good : Fit::Odd;
}

// A size in words, or with a unit.
Fit fit_of_size(std::string_view value) {
    constexpr std::string_view units[] = {"", "kb", "mb", "gb", "tb", "kw", "mw", "gw", "tw"};
    const std::size_t digits = std::min(value.find_first_not_of("0123456789"), value.size());
    const std::string unit = to_lower_copy(value.substr(digits));
    return digits > 0 && std::find(std::begin(units), std::end(units), unit) != std::end(units) ? Fit::Good : Fit::Wrong;
}

// An internal option: overlay/option=value.
Fit fit_of_internal_option(std::string_view item) {
    const std::size_t slash = std::min(item.find('/'), item.size());
    const std::size_t sign = std::min(item.find('='), item.size());
    if (slash >= sign || sign == item.size() || !is_integer_text(trim_view(item.substr(0, slash))) ||
        !is_integer_text(trim_view(item.substr(slash + 1, sign - slash - 1))) ||
        !is_integer_text(trim_view(item.substr(sign + 1)))) {
        return Fit::Wrong;
    }
    const std::int64_t overlay = to_int64(trim_view(item.substr(0, slash))).value_or(0);
    return (overlay >= 1 && overlay <= 11) || overlay == 99 ? Fit::Good : Fit::Odd;
}

// A field, as in x+10 and xxz-5: letters of a multipole before the sign. What has no sign is not judged.
Fit fit_of_multipole(std::string_view value) {
    const std::size_t sign = value.find_first_of("+-");
    if (sign != value.npos && is_number_text(value.substr(sign)) && !is_integer_text(value.substr(sign))) {
        return Fit::Odd;
    }
    const std::string letters = to_lower_copy(value.substr(0, value.find_first_of("+-")));
    const bool is_multipole =
        !letters.empty() && letters.size() <= 4 && letters.find_first_not_of("xyz") == std::string::npos;
    const bool has_letters_alone = std::all_of(letters.begin(), letters.end(), is_letter);
    return letters.size() == value.size() || is_multipole || !has_letters_alone ? Fit::Good : Fit::Wrong;
}

Fit fit_of(std::string_view value, const OptionValue& known) {
    const std::string_view text = without_parentheses(value);
    if (!known.names.empty() && is_named(text, known.names)) {
        return Fit::Good;
    }
    return known.kind == "integer"     ? fit_of_integer(text, known.least)
           : known.kind == "real"      ? fit_of_real(text, known.least)
           : known.kind == "size"      ? fit_of_size(text)
           : known.kind == "iop"       ? fit_of_internal_option(text)
           : known.kind == "name"      ? Fit::Wrong
           : known.kind == "multipole" ? fit_of_multipole(text)
                                       : Fit::Good;
}

// Tells whether a value is surely one of the words that may stand there, misspelt.
bool is_misspelt_name(std::string_view value, const OptionValue& known) {
    std::vector<std::string_view> names;
    split_fields(known.names, FieldSeparators::WhiteSpace, true, names);
    const std::vector<std::string> listed(names.begin(), names.end());
    const std::string_view text = without_parentheses(value);
    return is_misspelt(text, listed) || is_misspelt_model(text, listed);
}

std::string wanted_value(const OptionValue& known) {
    const std::string least(known.least);
    std::string text = known.kind == "integer" ? least.empty() ? "a whole number" : "a whole number from " + least + " on"
                       : known.kind == "real"  ? "a number above " + least
                       : known.kind == "size"  ? "a number, with KB, MB, GB, TB, KW, MW, GW or TW behind it, or words"
                       : known.kind == "iop"   ? "overlay/option=number, as in 3/33=1"
                       : known.kind == "multipole" ? "a multipole, a sign and a whole number, as in x+10"
                                                   : "";
    if (!known.names.empty()) {
        text += (text.empty() ? "one of: " : ", or one of: ") + std::string(known.names);
    }
    return text.empty() ? text : "it takes " + text;
}

void report_value(const CheckedJob& job, const OptionValue& known, Fit fit, const std::string& of, Span value,
                  Findings& findings) {
    if (fit != Fit::Good) {
        const std::string written = job.written(value);
        const Severity severity =
            fit == Fit::Wrong && is_misspelt_name(written, known) ? Severity::Error : severity_named(known.severity);
        findings.add("GJF-R014", fit == Fit::Odd ? std::min(severity, Severity::Warning) : severity,
                     "'" + written + "' is no value of " + of, job.route_place(value), wanted_value(known));
    }
}

// A number that stands behind an option, between blanks, may be taken for its value, and keywords may do without theirs.
void report_missing(const CheckedJob& job, const OptionValue& known, const std::string& of, Span name, Findings& findings) {
    const std::string_view text = job.route_text();
    const std::size_t behind = text.find_first_not_of(" ,", name.end());
    const bool may_be_number = behind != text.npos && (is_digit(text[behind]) || text[behind] == '-');
    const Severity severity = severity_named(known.severity);
    const bool may_do_without = may_be_number || known.options.empty();
    findings.add("GJF-R015", may_do_without ? std::min(severity, Severity::Warning) : severity,
                 of + " stands without its value", job.route_place(name), wanted_value(known));
}

void check_value(const CheckedJob& job, const RouteTree::Keyword& keyword, const RouteTree::Option& option,
                 const OptionValue& known, Findings& findings) {
    const std::string of = keyword.name + "=" + option.canonical;
    if (option.value.length == 0) {
        if (known.takes == "required") {
            report_missing(job, known, of, option.name, findings);
        }
    } else if (known.takes == "no") {
        findings.add("GJF-R016", severity_named(known.severity), of + " takes no value", job.route_place(option.value),
                     "leave '=" + job.written(option.value) + "' out");
    } else {
        report_value(job, known, fit_of(job.written(option.value), known), of, option.value, findings);
    }
}

// Checks what a keyword itself is set to: options that are no names of options.
void check_own_value(const CheckedJob& job, const RouteTree::Keyword& keyword, const OptionValue& known,
                     Findings& findings) {
    bool has_value = false;
    for (const RouteTree::Option& option : keyword.options) {
        const std::string name = job.written(option.name);
        const bool is_name = job.schema.knows_option(keyword.name, name);
        has_value = has_value || !is_name;
        // Where options are known, other words are told as unknown ones.
        if (!is_name && (has_trait(keyword.name, "takes free text") || is_number_text(name) ||
                         job.schema.options_of(keyword.name).empty())) {
            const Span item = option.value.length == 0 ? option.name : span_between(option.name.begin, option.value.end());
            report_value(job, known, fit_of(item.in(job.route_text()), known), keyword.name, item, findings);
        }
    }
    if (!has_value && known.takes == "required") {
        report_missing(job, known, keyword.name, keyword.head, findings);
    }
}

void check_option_values(const CheckedJob& job, const RouteTree::Keyword& keyword, Findings& findings) {
    if (!keyword.known()) {
        return;
    }
    for (const OptionValue& known : values_of(keyword.name)) {
        if (known.options.empty()) {
            check_own_value(job, keyword, known, findings);
            continue;
        }
        for (const RouteTree::Option& option : keyword.options) {
            if (lists_word(known.options, option.canonical)) {
                check_value(job, keyword, option, known, findings);
            }
        }
    }
}

// Reports an option that its keyword has twice; numbers and texts may repeat.
void check_doubled_options(const CheckedJob& job, const RouteTree::Keyword& keyword, Findings& findings) {
    if (!keyword.known() || has_trait(keyword.name, "takes free text")) {
        return;
    }
    for (const RouteTree::Option& option : keyword.options) {
        const RouteTree::Option* first = keyword.find_option(option.canonical);
        if (first == &option || first == nullptr || is_number_text(option.canonical) ||
            !job.schema.knows_option(keyword.name, option.canonical)) {
            continue;
        }
        const bool equal = equals_folded(job.written(first->value), job.written(option.value));
        Finding& finding = findings.add(
            "GJF-R021", equal ? Severity::Note : Severity::Warning,
            "'" + option.canonical + "' stands twice in " + keyword.name + (equal ? "" : ", with different values"),
            job.route_place(option.name), "write it once");
        relate(job.route_place(first->name), "first here", finding);
        offer(finding, "leave out " + job.written(option.place), equal ? FixSafety::Safe : FixSafety::Choice,
              without_option(job, keyword, option));
        if (!equal) {
            offer(finding, "leave out " + job.written(first->place), FixSafety::Choice,
                  without_option(job, keyword, *first));
        }
    }
}

// Offers to write another name of a solvent: Gaussian's own where it is known, else the nearest.
void offer_solvent(const CheckedJob& job, const RouteTree::Option& option, const std::vector<std::string>& names,
                   FixSafety safety, Finding& finding) {
    for (const std::string& name : names) {
        offer(finding, "write " + name, names.size() == 1 ? safety : FixSafety::Choice,
              route_edits(job, option.value, name));
    }
}

void check_solvent(const CheckedJob& job, const RouteTree::Keyword& keyword, Findings& findings) {
    for (const RouteTree::Option& option : keyword.options) {
        const std::string_view value = option.value.in(job.route_text());
        if (option.canonical != "solvent" || value.empty() || is_solvent(value)) {
            continue;
        }
        const std::vector<std::string> near = near_names(to_lower_copy(value), solvent_names());
        const std::optional<std::string_view> abbreviated = abbreviated_solvent(value);
        Finding& finding = findings.add(
            "GJF-R012", is_misspelt(value, near) || is_misspelt_model(value, near) ? Severity::Error : Severity::Warning,
            "'" + std::string(value) + "' is no solvent of Gaussian", job.route_place(option.name),
            abbreviated ? "Gaussian calls it " + std::string(*abbreviated) : did_you_mean(near));
        offer_solvent(job, option, abbreviated ? std::vector<std::string>{std::string(*abbreviated)} : near,
                      abbreviated ? FixSafety::Safe : FixSafety::Unsafe, finding);
    }
}

void check_all_option_values(const CheckedMolecule& molecule, Findings& findings) {
    for (const RouteTree::Keyword* keyword : molecule.job.keywords) {
        check_option_values(molecule.job, *keyword, findings);
        check_doubled_options(molecule.job, *keyword, findings);
        if (keyword->name == "scrf") {
            check_solvent(molecule.job, *keyword, findings);
        }
    }
}

}  // namespace

const Family option_value_family = {
    Known::Route, check_all_option_values, {"GJF-R012", "GJF-R014", "GJF-R015", "GJF-R016", "GJF-R021"}};

}  // namespace quor::input::gaussian

// Settings into what is reported of one file.
#include <gjf/core/configuration/check_rules.hpp>

#include <gjf/core/job/memory_amount.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <string_view>

namespace quor::input::gaussian {
namespace {

constexpr const char* site_prefix = "site:";

bool begins(const std::string& code, const std::string& beginning) {
    return !beginning.empty() && beginning.size() <= code.size() &&
           to_lower_copy(code.substr(0, beginning.size())) == to_lower_copy(beginning);
}

void require_codes(const Setting& setting, const std::vector<std::string>& beginnings) {
    if (const std::string* unknown = find_unknown_code(beginnings)) {
        throw ConfigurationError(
            setting, setting_name(setting) + ": there is no check " + *unknown + "; quor-gjf check --list names all");
    }
}

std::vector<std::string> codes_of(const Configuration& configuration, const char* name) {
    const Setting* setting = configuration.find({"check", name});
    if (setting == nullptr) {
        return {};
    }
    std::vector<std::string> codes = items_of(*setting);
    require_codes(*setting, codes);
    return codes;
}

std::optional<Severity> severity_from(const std::string& name) {
    return name == "off"       ? std::nullopt
           : name == "error"   ? std::optional(Severity::Error)
           : name == "warning" ? std::optional(Severity::Warning)
                               : std::optional(Severity::Note);
}

CheckLimits limits_of(const Configuration& configuration) {
    CheckLimits limits;
    if (const Setting* memory = configuration.find({"limits", "memory"})) {
        const MemoryAmount amount = read_memory_amount(memory->values.front()).value_or(MemoryAmount{});
        limits.memory = amount.amount * amount.unit;
    }
    if (const Setting* cores = configuration.find({"limits", "cores"})) {
        limits.cores = to_int64(cores->values.front()).value_or(0);
    }
    for (const auto& [name, words] : {std::pair("forbid", &limits.forbidden), std::pair("require", &limits.wanted)}) {
        if (const Setting* setting = configuration.find({"limits", name})) {
            *words = setting->values;
        }
    }
    return limits;
}

// Returns the text of a rule's key. A rule is read once, at its condition.
const std::string& text_of_rule(const Configuration& configuration, const Setting& when, const char* key) {
    const Setting* setting = configuration.find({"rules", when.path[1], key});
    if (setting == nullptr) {
        throw ConfigurationError(when, "rules." + when.path[1] + " has no " + key);
    }
    return setting->values.front();
}

SiteRule site_rule(const Configuration& configuration, const Setting& when) {
    constexpr const char* name_letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_";
    const std::string& name = when.path[1];
    if (name.empty() || name.find_first_not_of(name_letters) != std::string::npos) {
        throw ConfigurationError(when, "the name of a rule is made of letters, digits, - and _");
    }
    const std::string& message = text_of_rule(configuration, when, "message");
    const Setting* severity = configuration.find({"rules", name, "severity"});
    try {
        return {std::string(site_prefix) + name, JobPredicate(when.values.front()), message,
                severity == nullptr ? Severity::Warning : *severity_from(severity->values.front())};
    } catch (const SelectionError& error) {
        throw ConfigurationError(when, setting_name(when) + ": " + error.what());
    }
}

// Takes the rule that a key belongs to, at the first of its keys that is read.
void add_rule(const Configuration& configuration, const Setting& key, std::vector<SiteRule>& rules) {
    const Setting* when = configuration.find({"rules", key.path[1], "when"});
    if (when == nullptr) {
        throw ConfigurationError(key, "rules." + key.path[1] + " has no when");
    }
    if (when == &key) {
        rules.push_back(site_rule(configuration, *when));
    }
}

// Where what is said of a whole job stands: at its route, else at its first line.
std::size_t first_line_of(const JobLayout& layout) {
    return layout.route_words.empty() ? layout.lines.first : layout.route_words.front().line;
}

}  // namespace

bool is_code_of_site(const std::string& code) noexcept { return code.starts_with(site_prefix); }

std::size_t longest_beginning(const std::string& code, const std::vector<std::string>& beginnings) {
    std::size_t longest = 0;
    for (const std::string& beginning : beginnings) {
        longest = begins(code, beginning) ? std::max(longest, beginning.size()) : longest;
    }
    return longest;
}

std::vector<std::string> items_of(const Setting& setting) {
    if (setting.kind == SettingKind::List) {
        return setting.values;
    }
    std::vector<std::string> items;
    std::vector<std::string_view> words;
    split_fields(setting.values.front(), FieldSeparators::WhiteSpaceAndComma, true, words);
    items.assign(words.begin(), words.end());
    return items;
}

bool names_path(const Setting& setting, const std::string& path) {
    const std::string below = path_below(setting.folder, path);
    return std::any_of(setting.values.begin(), setting.values.end(),
                       [&](const std::string& pattern) { return path_matches(pattern, below); });
}

const CheckRules::SeverityRow* CheckRules::severity_row(const std::string& code) const {
    const SeverityRow* longest = nullptr;
    for (const SeverityRow& row : severities) {
        if (begins(code, row.first) && (longest == nullptr || row.first.size() > longest->first.size())) {
            longest = &row;
        }
    }
    return longest;
}

const std::string* find_unknown_code(const std::vector<std::string>& beginnings) {
    const auto begins_none = [](const std::string& beginning) {
        const std::vector<CheckDescription>& all = check_descriptions();
        return !begins(beginning, site_prefix) && std::none_of(all.begin(), all.end(), [&](const CheckDescription& each) {
            return begins(each.code, beginning);
        });
    };
    const auto found = std::find_if(beginnings.begin(), beginnings.end(), begins_none);
    return found == beginnings.end() ? nullptr : &*found;
}

bool is_chosen(const std::string& code, const std::vector<std::string>& chosen, const std::vector<std::string>& left_out) {
    const std::size_t in = longest_beginning(code, chosen);
    const std::size_t out = longest_beginning(code, left_out);
    return out == 0 ? chosen.empty() || in != 0 : in > out;
}

bool CheckRules::reports(const std::string& code) const {
    const SeverityRow* row = severity_row(code);
    return is_chosen(code, selected, ignored) && (row == nullptr || row->second) && longest_beginning(code, left_out) == 0;
}

void CheckRules::apply(std::vector<Finding>& findings) const {
    const auto is_dropped = [&](const Finding& finding) { return !reports(finding.code); };
    findings.erase(std::remove_if(findings.begin(), findings.end(), is_dropped), findings.end());
    for (Finding& finding : findings) {
        const SeverityRow* row = severity_row(finding.code);
        finding.severity = row == nullptr ? finding.severity : *row->second;
    }
}

void CheckRules::add_site_findings(const std::string& path, const std::string& text, std::vector<Finding>& findings) const {
    if (site_rules.empty()) {
        return;
    }
    const JobFile file(path, text);
    for (std::size_t job = 0; job < file.jobs().size(); ++job) {
        for (const SiteRule& rule : site_rules) {
            if (rule.when.fits(file, job)) {
                Finding finding;
                finding.code = rule.code;
                finding.severity = rule.severity;
                finding.message = rule.message;
                finding.job = file.jobs()[job].layout.number;
                finding.line = first_line_of(file.jobs()[job].layout);
                findings.insert(std::upper_bound(findings.begin(), findings.end(), finding.line,
                                                 [](std::size_t line, const Finding& other) { return line < other.line; }),
                                std::move(finding));
            }
        }
    }
}

CheckOptions CheckRules::put_into(CheckOptions options) const {
    options.limits = limits;
    options.reports = [this](const std::string& code) { return reports(code); };
    return options;
}

void CheckRules::judge(const std::string& path, const std::string& text, std::vector<Finding>& findings) const {
    add_site_findings(path, text, findings);
    apply(findings);
}

std::vector<Finding> CheckRules::check(const std::string& path, const std::string& text, CheckOptions options) const {
    std::vector<Finding> findings = check_text(text, put_into(std::move(options)));
    judge(path, text, findings);
    return findings;
}

CheckRules check_rules(const Configuration& configuration, const std::string& path) {
    CheckRules rules;
    rules.selected = codes_of(configuration, "select");
    rules.ignored = codes_of(configuration, "ignore");
    if (const Setting* fail_on = configuration.find({"check", "fail-on"})) {
        const std::optional<Severity> severity = severity_from(fail_on->values.front());
        if (!severity || severity_name(*severity) != fail_on->values.front()) {
            throw ConfigurationError(*fail_on, "check.fail-on is \"error\", \"warning\" or \"note\"");
        }
        rules.fail_on = *severity;
    }
    for (const Setting& setting : configuration.settings()) {
        if (setting.path.size() == 3 && setting.path[0] == "rules") {
            add_rule(configuration, setting, rules.site_rules);
        }
        if (setting.path.size() != 3 || setting.path[0] != "check") {
            continue;
        }
        if (setting.path[1] == "severity") {
            require_codes(setting, {setting.path[2]});
            if (begins(setting.path[2], site_prefix) && setting.values.front() == "error") {
                throw ConfigurationError(setting, "what a rule of a site tells is a warning or a note");
            }
            rules.severities.emplace_back(setting.path[2], severity_from(setting.values.front()));
        } else if (setting.path[1] == "per-file-ignores") {
            require_codes(setting, setting.values);
            if (path_matches(setting.path[2], path_below(setting.folder, path))) {
                rules.left_out.insert(rules.left_out.end(), setting.values.begin(), setting.values.end());
            }
        }
    }
    rules.limits = limits_of(configuration);
    return rules;
}

}  // namespace quor::input::gaussian

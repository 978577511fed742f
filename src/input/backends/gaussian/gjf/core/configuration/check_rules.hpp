// What is reported of a file, and how: codes chosen, their severities, the limits of a site.
#pragma once

#include <core/export.hpp>
#include <gjf/core/check/checker.hpp>
#include <gjf/core/configuration/configuration.hpp>
#include <gjf/core/predicate/predicate.hpp>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quor::input::gaussian {

/// A rule of a site, from [rules.NAME] of its configuration: what is told of the jobs that a condition holds for.
struct SiteRule {
    std::string code;  ///< site:NAME
    JobPredicate when;
    std::string message;
    Severity severity = Severity::Warning;  ///< never more: Gaussian would run the job
};

/// Tells whether a code is that of a rule of a site.
QUOR_GJF_API bool is_code_of_site(const std::string& code) noexcept;

/// Codes are given whole or cut short, as GJF-M; of several that name a code the longest holds.
struct QUOR_GJF_API CheckRules {
    std::vector<std::string> selected;  ///< empty: all
    std::vector<std::string> ignored;
    std::vector<std::string> left_out;  ///< whatever is selected
    using SeverityRow = std::pair<std::string, std::optional<Severity>>;
    std::vector<SeverityRow> severities;  ///< by code; nothing: off
    Severity fail_on = Severity::Error;
    CheckLimits limits;
    std::vector<SiteRule> site_rules;

    /// Checks a text: within the limits, with the site's rules, and what is reported of it.
    std::vector<Finding> check(const std::string& path, const std::string& text, CheckOptions options) const;
    /// Returns `options` with the limits and with what is reported; the rules must outlive them.
    CheckOptions put_into(CheckOptions options) const;
    /// Adds what the site's rules say of the jobs of a text, at the first line of each; then as `apply`.
    void judge(const std::string& path, const std::string& text, std::vector<Finding>& findings) const;
    /// Tells whether findings of a code are reported.
    bool reports(const std::string& code) const;
    /// Drops what is not reported and gives all else its severity.
    void apply(std::vector<Finding>& findings) const;
    /// Returns what is said of the severity of a code, or null.
    const SeverityRow* severity_row(const std::string& code) const;

   private:
    void add_site_findings(const std::string& path, const std::string& text, std::vector<Finding>& findings) const;
};

/// Returns how long the longest of some beginnings of a code is, letter case aside; 0 when it begins with none.
QUOR_GJF_API std::size_t longest_beginning(const std::string& code, const std::vector<std::string>& beginnings);

/// Returns the first of some codes, which may be cut short, that begins no check's code and is no site's; null for none.
QUOR_GJF_API const std::string* find_unknown_code(const std::vector<std::string>& beginnings);

/// Tells whether a code is among those chosen, all without any, and not among those left out; of two that name it the longer
/// one holds.
QUOR_GJF_API bool is_chosen(const std::string& code, const std::vector<std::string>& chosen,
                            const std::vector<std::string>& left_out);

/// Returns what a configuration says of a file. Throws `ConfigurationError` for a code that is none, and
/// for a rule of the site that is not whole.
QUOR_GJF_API CheckRules check_rules(const Configuration& configuration, const std::string& path);

/// Returns the items of a setting: of a list its own, of a text those between commas.
QUOR_GJF_API std::vector<std::string> items_of(const Setting& setting);

/// Tells whether a setting's patterns name a path.
QUOR_GJF_API bool names_path(const Setting& setting, const std::string& path);

}  // namespace quor::input::gaussian

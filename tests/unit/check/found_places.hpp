// What the checker finds in a text, in short, for the tests of the check room.
#pragma once

#include <gjf/core/check/checker.hpp>

#include <algorithm>
#include <string>
#include <vector>

namespace quor::test {

inline const std::string helium = "\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n\n";

/// Returns "CODE line:column+length severity", one finding a line.
inline std::string places_of(const std::vector<input::gaussian::Finding>& findings) {
    std::string places;
    for (const input::gaussian::Finding& finding : findings) {
        places += finding.code.substr(4) + " " + std::to_string(finding.line) + ":" + std::to_string(finding.column) + "+" +
                  std::to_string(finding.length) + " " + severity_name(finding.severity) + "\n";
    }
    return places;
}

inline std::string places_of(const std::string& text, const input::gaussian::CheckOptions& options = {}) {
    return places_of(check_text(text, options));
}

/// Returns the first finding with a code, or null.
inline const input::gaussian::Finding* finding_of(const std::vector<input::gaussian::Finding>& findings,
                                                  const std::string& code) {
    const auto found = std::find_if(findings.begin(), findings.end(), [&](const auto& each) { return each.code == code; });
    return found == findings.end() ? nullptr : &*found;
}

}  // namespace quor::test

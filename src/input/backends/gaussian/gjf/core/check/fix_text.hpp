// Applies the fixes that findings offer, and takes none that makes a text worse.
#pragma once

#include <core/export.hpp>
#include <gjf/core/check/checker.hpp>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

struct FixOptions {
    bool unsafe = false;                          ///< apply unsafe fixes too
    std::function<bool(const Finding&)> applies;  ///< tells whose fixes are wanted; empty: of all findings
    CheckOptions check;
};

/// A fix that was applied, or was not: of which finding, at its line when it was tried.
struct FixReport {
    std::string code;
    std::size_t line = 0;
    std::string title;
    FixSafety safety = FixSafety::Safe;
};

struct FixedText {
    std::string text;
    std::vector<Finding> findings;  ///< of this text
    std::vector<FixReport> applied;
    std::vector<FixReport> dropped;  ///< with them, something would be found that was not before
};

/// Returns the fix of a finding that may be applied: the only safe one, or else the only unsafe one where these are wanted;
/// null for none.
QUOR_GJF_API const Fix* applicable_fix(const Finding& finding, bool unsafe) noexcept;

/// Mends what is found in a text by the fixes that are sure enough.
///
/// All fixes that do not overlap are made at once, unsafe ones where no safe one is left, and the new text is checked; this
/// is repeated while there are any, at most ten times. A fix after which something is found that was not before is dropped,
/// unless it lies where the old text could not be read. No byte outside the fixes' changes is touched; text that was mended
/// once is not changed again.
QUOR_GJF_API FixedText fix_text(std::string_view text, const FixOptions& options = {});

}  // namespace quor::input::gaussian

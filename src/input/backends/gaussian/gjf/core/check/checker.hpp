// Finds what would make a job fail, or give another result than meant, before it is run.
#pragma once

#include <core/export.hpp>
#include <gjf/core/check/finding.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// One code that `check_text` may give, and what is said of it. All but the code is empty where `missing_knowledge` tells
/// that the text is missing.
struct CheckDescription {
    std::string code;
    std::string title = {};
    std::string explanation = {};    ///< what it means, how bad it is and when; Markdown, in paragraphs
    std::string gaussian_says = {};  ///< what Gaussian prints when it meets the fault, as far as known
    std::string wrong_job = {};      ///< a text that raises the code
    std::string right_job = {};      ///< the text mended
};

/// Returns every code, sorted, each once; static.
QUOR_GJF_API const std::vector<CheckDescription>& check_descriptions();

/// Returns what keeps jobs from being checked: no vocabulary, or missing facts, with the file and the line; empty for
/// nothing. A job that passes all the same was hardly checked.
QUOR_GJF_API std::string missing_for_checks();

/// A checkpoint that a job names, and where.
struct NamedCheckpoint {
    std::string path;  ///< as named, with .chk at its end
    std::size_t job = 0;
    std::size_t line = 0;  ///< of the name
    std::size_t column = 0;
    std::size_t length = 0;
};

/// What a site allows and wants of its jobs; nothing by default.
struct CheckLimits {
    std::int64_t memory = 0;  ///< the most bytes of %mem; 0 for any number
    std::int64_t cores = 0;   ///< the most cores; 0 for any number
    /// Words of the route, as "opt" or "scf=qc", and Link 0 keys, as "%chk", that no job may have, or that each must have.
    std::vector<std::string> forbidden = {};
    std::vector<std::string> wanted = {};
};

struct CheckOptions {
    std::vector<std::string> ignored_codes;  ///< not reported; letter case does not matter
    /// Where the checkpoints are added that jobs of the text begin (named by %chk, and no job up to that one reads it),
    /// unless comments silence GJF-L010: only who knows the other files of a run can tell whether two begin the same. May be
    /// null.
    std::vector<NamedCheckpoint>* begun_checkpoints = nullptr;
    /// Where the one is added that the first job reads, unless a comment silences GJF-L015: whether it is there, or another
    /// file of the run writes it, the same caller can tell. May be null.
    std::vector<NamedCheckpoint>* read_checkpoints = nullptr;
    CheckLimits limits = {};
    /// Where the text is from: files that its lines "@file" name are looked for beside it. Empty: none is opened.
    std::string path = {};
    /// Tells whether findings of a code are reported; empty: all are, but those ignored.
    std::function<bool(const std::string& code)> reports = {};
};

/// Checks every job of a text and returns all findings, in the order of their places.
///
/// Never throws for malformed text: what cannot be read is a finding too, and reading goes on behind it. A comment
/// "! quor-gjf: ignore CODE CODE ..." in a job silences these codes for that job. Uses the default vocabulary; may run in
/// several threads at once. Time grows in proportion to the text.
QUOR_GJF_API std::vector<Finding> check_text(std::string_view text, const CheckOptions& options = {});

/// Checks a route that stands alone, in one line or several, for what its words say; places are those in this text.
QUOR_GJF_API std::vector<Finding> check_route(std::string_view route);

}  // namespace quor::input::gaussian

// What a check found: a coded remark with its place in the text, and the changes that would mend it.
#pragma once

#include <core/export.hpp>
#include <gjf/core/text/span.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// How bad a finding is: an error makes Gaussian refuse the job or fail, a warning probably does or gives another result
/// than meant, a note is worth a look.
enum class Severity : std::int32_t { Note = 0, Warning = 1, Error = 2 };

/// Returns "note", "warning" or "error"; static.
QUOR_GJF_API const char* severity_name(Severity severity) noexcept;

/// How sure a fix is. Safe: the old text certainly stops, or Gaussian reads both the same, and only one text can be meant.
/// Unsafe: the likely one. Choice: one of several, for people to choose from; it is never applied unasked.
enum class FixSafety : std::int32_t { Safe = 0, Unsafe = 1, Choice = 2 };

/// Returns "safe", "unsafe" or "choice"; static.
QUOR_GJF_API const char* fix_safety_name(FixSafety safety) noexcept;

/// One way to mend what was found: changes of the whole text, in order, none over another.
struct Fix {
    std::string title;  ///< what is done, as in "write calcfc"
    FixSafety safety = FixSafety::Unsafe;
    std::vector<TextEdit> edits;
};

/// Another place that a finding speaks of; line and column count from 1.
struct RelatedPlace {
    std::string message;  ///< as in "first here"
    std::size_t line = 0;
    std::size_t column = 0;
    std::size_t length = 0;
};

/// One remark about a job file. Lines and columns (in bytes) count from 1; `column` and `length` are 0 when the finding is
/// about the whole line, and `line` too when it is about no line at all.
struct Finding {
    std::string code;  ///< stable, as in "GJF-M003"; each is explained in docs/checks.md
    Severity severity = Severity::Warning;
    std::string message;   ///< one sentence without a full stop
    std::size_t job = 0;   ///< the job's number from 1, as in `JobLayout::number`; 0 for the file as a whole
    std::size_t line = 0;  ///< of the whole text
    std::size_t column = 0;
    std::size_t length = 0;
    std::string hint;  ///< what would mend it; may be empty
    /// The same place in bytes of the text from 0, a byte order mark counted, `end` not included: a whole line without its
    /// line end; both 0 for the text as a whole.
    std::size_t begin = 0;
    std::size_t end = 0;
    std::vector<RelatedPlace> related;
    std::vector<Fix> fixes;
};

}  // namespace quor::input::gaussian

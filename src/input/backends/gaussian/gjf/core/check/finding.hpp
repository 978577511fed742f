// What a check found: a coded remark with its place in the text.
#pragma once

#include <core/export.hpp>

#include <cstddef>
#include <cstdint>
#include <string>

namespace quor::input::gaussian {

/// How bad a finding is: an error makes Gaussian refuse the job or fail, a warning probably does or gives another result
/// than meant, a note is worth a look.
enum class Severity : std::int32_t { Note = 0, Warning = 1, Error = 2 };

/// Returns "note", "warning" or "error"; static.
QUOR_GJF_API const char* severity_name(Severity severity) noexcept;

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
};

}  // namespace quor::input::gaussian

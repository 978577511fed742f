// The tool's commands over one text, for callers that have no tool: a command, a text and options in, JSON out.
#pragma once

#include <core/export.hpp>

#include <stdexcept>
#include <string>
#include <string_view>

namespace quor::input::gaussian {

/// Tells that a request names no command, or an option that its command does not have or cannot read.
class QUOR_GJF_API RequestError : public std::invalid_argument {
   public:
    using std::invalid_argument::invalid_argument;
    ~RequestError() override;
};

/// Runs a command on a text and returns the line that the tool prints with --json.
///
/// `command` is one of check, fix, report, route, complete, outline, select, diff, edit, find and diagnose. `options` is a
/// JSON object, or empty, with the long names of the tool's options: stdin-filename of all about a file; where of check,
/// fix, report, edit and find; select and ignore (lists of codes, whole or cut short) and config (the text of a
/// configuration file, which else is none: its rules, limits and severities hold) of check and fix; fixable, unfixable (such
/// lists) and unsafe-fixes of fix; fields (a list) of report; select of select; other (a text) of diff; steps of diagnose,
/// whose text is an output or a formatted checkpoint; of edit the operations of the tool without "--" (a text, a list of
/// texts, or true), applied in the order of their keys, job (a number), force, strict, no-check and allow-unknown. No file
/// is opened. fix answers with the mended text among what check says, edit with the edited text, what there is to say of the
/// operations, and what is found anew. Throws `RequestError`, or `GJFParseException` for a text that cannot be read at all.
/// `changed` becomes the text that fix and edit make, byte for byte.
QUOR_GJF_API std::string request_json(std::string_view command, std::string_view text, std::string_view options,
                                      std::string* changed = nullptr);

/// Returns the line about a request that failed.
QUOR_GJF_API std::string request_error_json(const std::string& message);

}  // namespace quor::input::gaussian

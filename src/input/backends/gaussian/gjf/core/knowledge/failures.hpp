// How outputs show why jobs failed, and what else is told of them: the rows of failures.tsv and output_codes.tsv in their
// order. Private to the library.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

struct Failure {
    std::string_view id;
    std::string_view kind;
    std::string_view where;             ///< "end", "step", "scheduler" or "none"
    std::vector<std::string_view> any;  ///< fragments of which one must stand there
    std::string_view all;               ///< a fragment that must stand there too; may be empty
    std::string_view links;             ///< in which the job must have ended, with blanks between; empty for any
    std::string_view ending;            ///< "error" or "none" where a termination line must or must not be there
    std::string_view says;
    std::string_view remedy;
};
std::span<const Failure> failures();

/// What may be said of an output beside the cause of its failure: a row of output_codes.tsv.
struct OutputCode {
    std::string_view code;
    std::string_view id;
    std::string_view severity;
    std::string_view says;
    std::string_view remedy;
    std::string_view explanation;
};
std::span<const OutputCode> output_codes();

/// Returns what keeps the tables from being read; empty when they were read.
std::string missing_failures();

}  // namespace quor::input::gaussian

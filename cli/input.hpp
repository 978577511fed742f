// Reads the tool's input: a file, or standard input for "-".
#pragma once

#include <stdexcept>
#include <string>

namespace quor_gjf {

/// Tells that an input cannot be opened or read; the tool then exits with 2.
class UnreadableInput : public std::runtime_error {
   public:
    using std::runtime_error::runtime_error;
};

/// Reads a whole file, or standard input for "-"; throws `UnreadableInput` "Cannot open file: REASON".
std::string read_text(const std::string& path);

/// Says on standard error when there is no route vocabulary, or not the one that was named.
void report_missing_vocabulary();

}  // namespace quor_gjf

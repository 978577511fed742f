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

/// Tells that there is no route vocabulary, or not the one that was named, or no facts; the tool then exits with 2.
class MissingVocabulary : public std::runtime_error {
   public:
    using std::runtime_error::runtime_error;
};

/// Says on standard error when there is no route vocabulary, or not the one that was named, or another than was found first.
void report_missing_vocabulary();

/// Throws `MissingVocabulary` unless there is a vocabulary, as `report_missing_vocabulary` tells. Of JSON, `json_path` is
/// the first file, for an object that tells of it on standard output; else empty.
void require_vocabulary(const std::string& json_path = {});

/// The same for the facts of the checker too.
void require_facts(const std::string& json_path = {});

}  // namespace quor_gjf

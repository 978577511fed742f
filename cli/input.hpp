// Reads the tool's input: a file, or standard input for "-".
#pragma once

#include <gjf/gjf.hpp>

#include <string>

namespace quor_gjf {

/// Reads a whole file, or standard input for "-"; throws "Cannot open file: PATH".
std::string read_text(const std::string& path);

/// Reads every job of a file, or of standard input for "-"; throws as `GJFParser::parse_file_multi` does.
quor::input::gaussian::GJFMultiData read_jobs(const std::string& path);

/// Says once on standard error when there is no route vocabulary, and how to name one.
void report_missing_vocabulary();

}  // namespace quor_gjf

// Writes the tool's output files: whole, and none over another unless told to.
#pragma once

#include <core/fs/write_text_file.hpp>

#include <functional>
#include <stdexcept>
#include <string>

namespace quor_gjf {

/// Tells that an output file would be overwritten; the tool then exits with 2.
class OutputExists : public std::runtime_error {
   public:
    using std::runtime_error::runtime_error;
};

/// Throws `OutputExists` when there is something at a path and `force` is not set. Devices and pipes do not count: nothing
/// of them is lost.
void check_output(const std::string& path, bool force);

/// Writes to a file, whole or not at all, or to standard output when `path` is empty or "-". Throws `OutputExists`, or
/// `std::runtime_error` "Cannot write file: PATH".
void write_output(const std::string& path, const std::string& text, bool force);

/// The same for a file, whose folder is left to `folders` to flush.
void write_file(const std::string& path, const std::string& text, bool force, quor::core::fs::FolderFlushes& folders);

/// Replaces a file's text, read as `before`, where it differs from `after`. Throws `std::runtime_error` when the file holds
/// something else by now, unless `force` is set.
void replace_file(const std::string& path, const std::string& before, const std::string& after, bool force,
                  quor::core::fs::FolderFlushes& folders);

/// Runs a command's work on one input; what it throws is told on standard error, after "INPUT: ". Returns the work's exit
/// code, or 2 for input that cannot be opened and output that is there already, and 1 for any other failure.
int guarded(const std::string& input, const std::function<int()>& work);

}  // namespace quor_gjf

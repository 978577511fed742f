// A job as Python holds it: its editor, and the text it was read from.
#pragma once

#include <gjf/core/editor/gjf_editor.hpp>

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quor_python {

/// Reports a job that cannot be written without loss.
class WriteError : public std::runtime_error {
   public:
    using std::runtime_error::runtime_error;
};

/// One job. It is used by one thread at a time; what may take long works on a copy, so that Python's lock can be released.
struct JobHandle {
    quor::input::gaussian::GJFEditor editor{quor::input::gaussian::GJFData{}};
    std::string source;        ///< the job's text as read, without --Link1-- lines; empty for a job that was not read
    bool one_of_many = false;  ///< whether the text it was read from holds other jobs too
};

/// Reads the first job of a text, or all of them.
JobHandle read_first_job(std::string text);
std::vector<JobHandle> read_all_jobs(const std::string& text);

/// Returns the bytes of a file; throws "Cannot open file: PATH".
std::string read_file_text(const std::string& path);
/// Writes a file, whole or not at all; throws "Cannot write file: PATH".
void write_file_text(const std::string& path, std::string_view text);

/// Tells whether a job was read from text and still says what it said then.
bool is_as_read(const JobHandle& job);

/// Makes a job's text: this is the one place that decides how. A job that says what it said when it was read gives the bytes
/// that it was read from; another one the fixed layout, which is read again and must give the same job, else `WriteError`.
std::string job_text(const JobHandle& job);
/// Makes the text of a file of jobs, separated by --Link1-- lines, with the same care.
std::string file_text(const std::vector<JobHandle>& jobs);

}  // namespace quor_python

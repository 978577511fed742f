// A job as Python holds it: its editor, and the file that it was read from.
#pragma once

#include <gjf/core/editor/gjf_editor.hpp>

#include <cstddef>
#include <memory>
#include <optional>
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

/// Where a text cannot be read, from 1; 0 when there is no such place.
struct FaultPlace {
    std::size_t line = 0;
    std::size_t column = 0;
};

/// Reports a text that cannot be read as jobs, and where; `what()` is as of `GJFParseException`.
class MalformedText : public std::runtime_error {
   public:
    MalformedText(const char* message, FaultPlace place) : std::runtime_error(message), place_(place) {}
    const FaultPlace& place() const noexcept { return place_; }

   private:
    FaultPlace place_;
};

/// A text that was read. It never changes, so that its jobs and their copies share it, in any threads.
struct SourceText {
    std::string text;
    std::vector<std::string> pieces;  ///< the text of each job, without --Link1-- lines; empty when the text holds one job

    explicit SourceText(std::string whole);
    const std::string& job_text(std::size_t index) const noexcept { return pieces.empty() ? text : pieces[index]; }
};
using Source = std::shared_ptr<SourceText>;

/// One job. It is used by one thread at a time; what may take long works on a copy, so that Python's lock can be released.
///
/// The editor took the job from the source, so that its atom origins tell where in the source an atom stands.
struct JobHandle {
    quor::input::gaussian::GJFEditor editor{quor::input::gaussian::GJFData{}};
    Source source;           ///< none for a job that was not read
    std::size_t index = 0;   ///< of the job among those of the source
    std::string fault = {};  ///< why it cannot be read, and where in the source; it stays a text then, without data
    FaultPlace fault_place = {};

    bool readable() const noexcept { return fault.empty(); }
    /// Throws `MalformedText` for a job that cannot be read.
    void refuse_unreadable() const;
};
using JobPointers = std::vector<const JobHandle*>;

/// Reads the first job of a text, or all of them; throws `MalformedText` when it, or none of them, can be read.
JobHandle read_first_job(std::string text);
std::vector<JobHandle> read_all_jobs(std::string text);

/// Returns the bytes of a file; throws "Cannot open file: PATH".
std::string read_file_text(const std::string& path);
/// Writes a file, whole or not at all; throws "Cannot write file: PATH".
void write_file_text(const std::string& path, std::string_view text);

/// Tells whether a job was read from text and still says what it said then.
bool is_as_read(const JobHandle& job);

// Here is decided how text is made. A job that was read is written by a document over its source: what did not change keeps
// its bytes. Another one is written in the fixed layout, which is read again and must give the same job. What cannot be
// written so throws `WriteError`; `force` is that of `GJFWriteOptions`, and what the document refuses even so is written in
// the fixed layout.

/// Makes a job's text.
std::string job_text(const JobHandle& job, bool force);
/// Makes the text of a job's whole source, with this job as it is now and the others as they were read.
std::string source_text(const JobHandle& job, bool force);

/// The text of a job, or of its whole source, and the job as it is read there; none where that is not known yet.
struct WrittenJob {
    std::string text;
    std::optional<quor::input::gaussian::GJFData> data;
};
/// Makes the text as `source_text` does where the job stands among others, else as `job_text`.
WrittenJob write_job(const JobHandle& job, bool among_others, bool force);
/// Makes the text of a file of jobs. Jobs of one source, in their order, keep what stands between them.
std::string file_text(const JobPointers& jobs, bool force);

/// Where to save to.
struct SaveTarget {
    std::string path;
    bool is_own =
        false;  ///< the file that was read, or saved to before: it must hold still what it held then, unless `force`
    bool becomes_own = false;
    bool force = false;
};
/// Saves a job, into its place among the others of its own file. Returns the job as it is then: where the file is its own
/// now, and it was read at all, the job says what the file says, but for digits that were not written.
JobHandle save_job(const JobHandle& job, const SaveTarget& target);
/// Saves jobs as one file; `source` is what was read from it, or none. Replaces them, as `save_job` does, and returns their
/// source.
Source save_jobs(std::vector<JobHandle>& jobs, const Source& source, const SaveTarget& target);

}  // namespace quor_python

// What happened to a job, by its output and what lies beside it.
#pragma once

#include <core/export.hpp>
#include <gjf/core/output/output_summary.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// What is worth saying of an output, as findings of checks are of a job.
struct OutputFinding {
    std::string code;      ///< as in "GJF-O003"
    std::string severity;  ///< "error", "warning" or "note"
    std::string message;
    std::size_t line = 0;  ///< 0 for the output as a whole
    std::string hint;      ///< what may help; may be empty
    std::string cause;     ///< what it is a case of: an id of the table of failures, or one of these codes' own
};

/// A code that outputs may be given, and what is said of it.
struct OutputCodeDescription {
    std::string code;
    std::string severity;
    std::string title;
    std::string explanation;
    std::string remedy;
};

struct Diagnosis {
    OutputSummary summary;
    int link = 0;        ///< in which the last step ended, unless normally; 0 when it is not known
    std::string cause;   ///< an id of the table of failures; empty for none, or when no row fits
    std::string says;    ///< the cause in words
    std::string remedy;  ///< what may help
    std::size_t cause_line = 0;
    std::string cause_text;  ///< that line
    std::string told_mem;    ///< the memory that the output says would do, as in "11MW"
    std::string scheduler_file;
    std::string scheduler_text;  ///< the line in it
    bool may_run = false;        ///< it has no end and was written to less than ten minutes ago
    std::string job_file;        ///< beside the output, with its name; empty when there is none
    std::vector<OutputFinding> findings;
    std::string checkpoint;  ///< that the job names, where it is there
};

/// Tells that a file holds no step of Gaussian.
class QUOR_GJF_API NoOutput : public OutputError {
   public:
    using OutputError::OutputError;
};

/// Is told each point at which something was calculated.
using PointListener = std::function<void(const OutputPoint&)>;

/// Reads an output to its end. Throws `NoOutput`, and what the source throws.
QUOR_GJF_API Diagnosis diagnose_output(OutputSource& source, const PointListener& listener = {});

/// The same of a file, "-" for standard input, with what lies beside it.
QUOR_GJF_API Diagnosis diagnose_file(const std::string& path, const PointListener& listener = {});

/// Returns every code of findings in outputs, sorted.
QUOR_GJF_API std::vector<OutputCodeDescription> output_code_descriptions();

/// Returns what keeps the tables of failures and codes from being read; empty when they were read.
QUOR_GJF_API std::string missing_for_diagnosis();

}  // namespace quor::input::gaussian

// A job file as conditions and tables look at it: its jobs, their fields, and what the checker finds once somebody asks.
#pragma once

#include <core/export.hpp>
#include <gjf/core/basis/job_size.hpp>
#include <gjf/core/check/finding.hpp>
#include <gjf/core/reader/included_files.hpp>
#include <gjf/core/reader/job_layout.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// Holds a text with its jobs; findings and sizes are looked for at the first question. Used by one thread at a time.
class QUOR_GJF_API JobFile {
   public:
    /// Reads a text; `path` is what the field `file` gives, and beside what files that the text names are looked for: "-"
    /// has none. Throws `GJFParseException` for a text that is too long.
    JobFile(std::string path, std::string text, NamedFiles files = NamedFiles::LeftAlone);
    JobFile(const JobFile&) = delete;
    JobFile& operator=(const JobFile&) = delete;
    ~JobFile();

    const std::string& path() const noexcept { return path_; }
    const std::string& text() const noexcept { return text_; }
    const std::vector<JobReading>& jobs() const noexcept { return jobs_; }
    /// Returns the files that the text names; none where they are left alone.
    const std::vector<IncludedFile>& included() const noexcept { return included_; }
    /// Returns a job, counted from 0, with the files that it names in their places where all can be had: its fields are
    /// those of this one. Places are those of the longer text.
    const JobReading& whole(std::size_t job) const noexcept { return whole_[job] ? *whole_[job] : jobs_[job]; }
    /// Returns what `check_text` finds in the whole text.
    const std::vector<Finding>& findings() const;
    const JobSize& size(std::size_t job) const;

   private:
    std::string path_;
    std::string text_;
    std::vector<JobReading> jobs_;
    std::vector<IncludedFile> included_;
    std::vector<std::optional<JobReading>> whole_;
    mutable std::optional<std::vector<Finding>> findings_;
    mutable std::vector<std::optional<JobSize>> sizes_;
};

/// How the values of a field are compared.
enum class FieldForm {
    Text,      ///< letter case aside
    Formula,   ///< letter case counts
    Method,    ///< as the vocabulary takes its words
    Basis,     ///< likewise, polarization functions written as stars or in brackets
    Section,   ///< a kind of section, by its number or one of its names
    Code,      ///< a code of the checker, or how it begins
    Severity,  ///< note, warning, error, in this order
    Number,
    Memory,  ///< in bytes; written with a unit
};

/// One field of a job, by its name in conditions and tables.
struct JobField {
    const char* name;
    FieldForm form;
    const char* description;

    bool is_number() const noexcept { return form == FieldForm::Number || form == FieldForm::Memory; }
};

/// Returns all fields; static.
QUOR_GJF_API const std::vector<JobField>& job_fields();

/// Returns the field of a name, in any letter case, or null.
QUOR_GJF_API const JobField* find_job_field(std::string_view name);

/// What a job has in a field. What is not known, as the atoms of a molecule that stands in a checkpoint, differs from what
/// is known not to be there: that has no texts.
struct FieldValue {
    bool known = true;
    std::vector<std::string> texts;  ///< as they are shown
    std::optional<double> number;    ///< of a field that is a number, and of memory in bytes
};

/// Returns a field of a job, counted from 0.
QUOR_GJF_API FieldValue field_value(const JobFile& file, std::size_t job, const JobField& field);

}  // namespace quor::input::gaussian

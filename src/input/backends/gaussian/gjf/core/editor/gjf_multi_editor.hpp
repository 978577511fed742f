// Edits a file of several jobs.
#pragma once

#include <core/export.hpp>
#include <gjf/core/editor/gjf_editor.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// Owns an editor for each job of a file. Job indices count from 0. A refused call throws `GJFParseException` and changes
/// nothing. One multi editor, with the editors that it holds, is used by one thread at a time.
class QUOR_GJF_API GJFMultiEditor {
   public:
    /// Takes the jobs of a file; throws when the bonds of one are not valid.
    explicit GJFMultiEditor(GJFMultiData data);
    GJFMultiEditor(const GJFMultiEditor& other);
    GJFMultiEditor(GJFMultiEditor&& other) noexcept;
    GJFMultiEditor& operator=(const GJFMultiEditor& other);
    GJFMultiEditor& operator=(GJFMultiEditor&& other) noexcept;
    ~GJFMultiEditor();

    std::size_t job_count() const noexcept;
    /// Returns a job's editor; it stays valid until jobs are added or removed.
    GJFEditor& job(std::size_t index);
    const GJFEditor& job(std::size_t index) const;
    /// Throws "Invalid job index: N (total jobs: M)".
    void validate_job_index(std::size_t index) const;
    void add_job(const GJFData& data);
    void add_job(GJFData&& data);
    /// Inserts a job at `index`, which may be the number of jobs.
    void insert_job(std::size_t index, const GJFData& data);
    void remove_job(std::size_t index);
    /// Returns copies of all jobs.
    GJFMultiData get_multi_data() const;
    /// Writes all jobs, separated by --Link1-- lines.
    std::string to_gjf_string() const;
    /// Writes the text to a file, whole or not at all; throws "Cannot write file: PATH".
    void save_to_file(const std::string& path) const;

   private:
    std::vector<GJFEditor> editors_;
};

}  // namespace quor::input::gaussian

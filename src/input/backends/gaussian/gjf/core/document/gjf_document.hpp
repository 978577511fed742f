// A job file that is edited without moving anything but what was changed.
#pragma once

#include <core/export.hpp>
#include <gjf/core/editor/gjf_editor.hpp>
#include <gjf/core/reader/job_layout.hpp>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// What to do where a document would rather refuse.
struct GJFWriteOptions {
    /// Writes although a section names atoms in a form that cannot be renumbered, or would be read as another one after the
    /// edit; the text stays as it is there; all else is still compared. When saving: also although the file has changed
    /// since it was opened.
    bool force = false;
};

/// Holds the text of a job file, an editor for each of its jobs, and writes the text with the changed parts alone written
/// anew.
///
/// What did not change keeps its bytes: letter case, spacing, comments, line ends, digits, byte order mark, Z-matrices,
/// sections that nothing asks for. Where atoms were removed, added or put in another order, everything of the job that names
/// atoms and can be read is renumbered. Failures throw `GJFParseException` and change nothing. One document is used by one
/// thread at a time.
class QUOR_GJF_API GJFDocument {
   public:
    /// Takes a text; throws when no job in it can be read, naming the first as `GJFParser::parse_string_multi` does.
    explicit GJFDocument(std::string text);
    /// Opens a file; throws "Cannot open file: PATH" when it cannot be read.
    static GJFDocument open(const std::string& path);
    GJFDocument(const GJFDocument&) = delete;
    GJFDocument(GJFDocument&& other) noexcept;
    GJFDocument& operator=(const GJFDocument&) = delete;
    GJFDocument& operator=(GJFDocument&& other) noexcept;
    ~GJFDocument();

    /// Returns the text as it was read or last saved.
    const std::string& original_text() const noexcept;
    /// Returns the path that was opened; empty for a text.
    const std::string& path() const noexcept;

    /// Returns the number of jobs, those that cannot be read counted: these stay the texts that they are.
    std::size_t job_count() const noexcept;
    /// Tells whether a job can be read, and what is the first that cannot, by its place in the original text: an empty
    /// message where all can.
    bool readable(std::size_t index) const;
    const ReadingFault& fault(std::size_t index) const;
    /// Returns a job's editor, valid as long as the document; throws "Invalid job index: N (total jobs: M)", and
    /// "Job N: GJF Parse Error: " and its fault for one that cannot be read. An editor that is assigned to it must have
    /// taken the same job: its atom origins are taken for those of this document. One that did not take it here, and one
    /// whose job was replaced, costs another read of the text when it is written; `set_job` spares it.
    GJFEditor& job(std::size_t index);
    const GJFEditor& job(std::size_t index) const;
    /// Puts an editor that took the same job in the place of a job's; keeps that, if it was not edited, to compare with.
    void set_job(std::size_t index, GJFEditor editor);
    /// Returns where the parts of a job stood in the original text.
    const JobLayout& layout(std::size_t index) const;
    /// Puts a job before the one at `index`, or at the end; it is written in the fixed layout, and refused when that cannot
    /// carry it.
    void insert_job(std::size_t index, const GJFData& data);
    /// Takes out a job with its text. The last one cannot be removed.
    void remove_job(std::size_t index);

    /// Returns the text with the changes, read again and compared with the jobs that should be there.
    std::string to_text(const GJFWriteOptions& options = {}) const;
    /// Takes the changed text for the one that was read, with the jobs as they are read in it; returns whether it changed.
    bool take_changes(const GJFWriteOptions& options = {});
    /// Writes the changed text to the file that was opened, whole or not at all, unless nothing changed; returns whether it
    /// wrote. Throws when the file has changed since it was opened, or cannot be written ("Cannot write file: PATH").
    bool save(const GJFWriteOptions& options = {});
    /// Writes the text to another file.
    void save_as(const std::string& path, const GJFWriteOptions& options = {}) const;

   private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace quor::input::gaussian

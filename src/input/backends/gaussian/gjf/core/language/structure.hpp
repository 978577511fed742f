// The parts of a job file as editors show them: symbols, what can be folded, and small texts beside lines.
#pragma once

#include <core/export.hpp>
#include <gjf/core/predicate/job_file.hpp>
#include <gjf/core/text/span.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// What a part of a file is.
enum class PartKind { Job, Link0, Route, Title, Molecule, Variables, Section };

/// A part, and the parts within it, in order.
struct FilePart {
    PartKind kind = PartKind::Job;
    std::string name;    ///< as in "job 2", "molecule"
    std::string detail;  ///< as the title of a job; may be empty
    Span lines;          ///< whole lines, without the last line end
    std::vector<FilePart> parts;
};

/// Returns one part for each job.
QUOR_GJF_API std::vector<FilePart> file_parts(const JobFile& file);

/// A text shown beside a place, which is not in the file.
struct InlayHint {
    std::size_t offset = 0;
    std::string text;
};

/// Returns the numbers of the atoms whose lines overlap a stretch, each before its label, and the values of the coordinates
/// that lines of ModRedundant name, behind these.
QUOR_GJF_API std::vector<InlayHint> inlay_hints(const JobFile& file, Span stretch);

/// Names a file that a job file names: a line "@file".
struct FileLink {
    Span place;
    std::string path;  ///< as written
};

/// Returns the files that lines "@file" name.
QUOR_GJF_API std::vector<FileLink> file_links(const JobFile& file);

}  // namespace quor::input::gaussian

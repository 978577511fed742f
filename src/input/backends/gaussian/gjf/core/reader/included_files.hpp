// The files that the lines "@file" of a text name, read beside it: for looking only, no edit ever writes them.
//
// Nothing here is asked for by reading a text: a text alone opens no file. Who has a text from a path may ask.
#pragma once

#include <core/export.hpp>
#include <gjf/core/reader/job_layout.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// A line that names a file, and what is there.
struct IncludedFile {
    std::size_t line = 0;                  ///< in the text that names it, from 1
    std::string name = {};                 ///< as the line has it, without "@" and "/N"
    std::string problem = {};              ///< why it was not read, as in "is not there"; empty when it was
    std::string text = {};                 ///< all of it
    std::vector<IncludedFile> files = {};  ///< that its own lines name
};

/// Whether the files that a text names are opened.
enum class NamedFiles : bool { LeftAlone, Opened };

/// Returns the name in a line "@file", without the "/N" that keeps Gaussian from printing the file.
QUOR_GJF_API std::string_view included_name(std::string_view line);

/// How far files are followed.
inline constexpr std::size_t deepest_included_file = 4;  ///< a file that the text itself names has depth 1
inline constexpr std::size_t most_included_files = 100;  ///< of one text, those of its files counted
inline constexpr std::size_t largest_included_text = std::size_t{16} << 20;  ///< bytes of all these files together

/// Reads the files that a text names, in the order of its lines, and those that they name. `path` is where the text is from:
/// names are taken from its folder, also those in other folders. With an empty path nothing is opened, and nothing returned.
///
/// Only regular files are read that lie in that folder or below it after symbolic links are resolved, and none that is being
/// read already. What cannot be had is told in `problem`; nothing is thrown for it.
QUOR_GJF_API std::vector<IncludedFile> read_included_files(std::string_view text, const std::string& path);

/// Returns why a file, or one that it names, was not read: "NAME PROBLEM"; empty when all were.
QUOR_GJF_API std::string find_problem(const IncludedFile& file);

/// Returns those of the files of a text that one of its jobs names.
QUOR_GJF_API std::vector<IncludedFile> files_of_job(const std::vector<IncludedFile>& files, const JobReading& reading);

/// Returns a text in which files that were read stand in the place of the lines that name them. `first_line` is the number
/// of its first line, from which the lines of `files` count.
QUOR_GJF_API std::string with_included_files(std::string_view text, const std::vector<IncludedFile>& files,
                                             std::size_t first_line = 1);

/// Reads a job of a text once more with the files that it names in their places; places are those of the longer text.
/// Nothing where it names none, where one of them was not read, or where they would make several jobs of it.
QUOR_GJF_API std::optional<JobReading> read_with_included_files(std::string_view text, const JobReading& reading,
                                                                const std::vector<IncludedFile>& files);

}  // namespace quor::input::gaussian

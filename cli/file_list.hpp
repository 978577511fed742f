// The files that the arguments name: files as they are, folders with all job files below them.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quor_gjf {

/// One file to read, or what is wrong with a folder.
struct ListedFile {
    std::string path;
    std::string problem;  ///< empty for a file
};

/// Gives the files one after another and holds the names of the folders being walked alone, however many files there are.
///
/// Below a folder, files that end in .gjf, .com, .gau or .inp are given, letter case aside, in the byte order of their
/// names, folder after folder. Links to folders are not followed. A folder without any such file is a problem.
class FileList {
   public:
    explicit FileList(std::vector<std::string> arguments);

    /// Returns the next file, or nothing when all were given.
    std::optional<ListedFile> next();

   private:
    // A folder being walked; a name that ends in "/" is a folder.
    struct Folder {
        std::string path;
        std::vector<std::string> names;
        std::size_t next = 0;
    };

    std::optional<ListedFile> next_argument();
    std::optional<ListedFile> next_in_folder();
    std::optional<ListedFile> open_folder(const std::string& path);

    std::vector<std::string> arguments_;
    std::size_t argument_ = 0;
    std::vector<Folder> open_;
    std::size_t given_ = 0;  // of the present argument
};

}  // namespace quor_gjf

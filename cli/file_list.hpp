// The files that the arguments name: files as they are, folders with all job files below them.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace quor_gjf {

/// One file to read, or what is wrong with a folder.
struct ListedFile {
    std::string path;
    std::string problem;       ///< empty for a file
    bool is_doubtful = false;  ///< found in a folder under a name that other programs use too
};

/// What of folders is passed over.
struct Walk {
    bool hidden = false;               ///< hidden files and folders are taken
    std::vector<std::string> exclude;  ///< patterns, beside those of configuration files
    bool force_exclude = false;        ///< the patterns hold for files that are named too
    bool outputs = false;              ///< outputs are looked for, not job files
};

/// How many files and folders were passed over, and why.
struct PassedOver {
    std::size_t hidden = 0;
    std::size_t excluded = 0;
    std::size_t foreign = 0;  ///< of other programs: *.inp, and outputs
};

/// Returns what is said of them, a line with its line end; empty for none.
std::string passed_over_summary(const PassedOver& counts);

/// Gives the files one after another and holds the names of the folders being walked alone, however many files there are.
///
/// Below a folder, files that end in .gjf, .com, .gau or .inp are given, letter case aside, in the byte order of their
/// names, folder after folder; where outputs are looked for, those in .log or .out, also with .gz or .xz behind it. Links to
/// folders are not followed. A folder without any such file is a problem, unless some were passed over.
class FileList {
   public:
    explicit FileList(std::vector<std::string> arguments, Walk walk = {});

    const PassedOver& passed_over() const noexcept { return passed_over_; }

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

    // Returns the name of an entry that is walked or read, "" of any other.
    std::string name_of(const std::filesystem::directory_entry& entry);
    bool is_excluded(const std::string& path) const;

    std::vector<std::string> arguments_;
    Walk walk_;
    PassedOver passed_over_;
    std::size_t argument_ = 0;
    std::vector<Folder> open_;
    std::size_t given_ = 0;  // of the present argument
};

}  // namespace quor_gjf

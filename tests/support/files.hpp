// Files that tests write, each test in a folder of its own, and what is in them.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace quor::test {

/// A new folder under the system's folder for temporary files. No two tests share one, be they of one run or of several.
class TemporaryFolder {
   public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "quor_test_XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("no folder can be made: " + pattern);
        }
        path_ = std::filesystem::canonical(pattern);
    }
    ~TemporaryFolder() { remove(); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(const std::filesystem::path& name) const { return path_ / name; }

    /// Writes a file, making its folders, and returns its path.
    std::string write(const std::filesystem::path& name, const std::string& text) const {
        const std::filesystem::path file = path_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
        return file.string();
    }

    /// Removes it now; for a process that ends without its destructor.
    void remove() const {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }

   private:
    std::filesystem::path path_;
};

/// Returns the bytes of a file; none when it cannot be read.
inline std::string bytes_of(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Returns how many files and folders are in a folder.
inline std::size_t entries_in(const std::filesystem::path& folder) {
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator()));
}

}  // namespace quor::test

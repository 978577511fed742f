// What files of a run have to do with each other by their checkpoints: two that begin the same, so that the one that runs
// later destroys what the other left, and one that reads what nobody writes.
#pragma once

#include "file_list.hpp"

#include <gjf/core/check/checker.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace quor_gjf {

/// The checkpoints of one file that others may have to do with.
struct FileCheckpoints {
    std::vector<quor::input::gaussian::NamedCheckpoint> begun;
    std::vector<quor::input::gaussian::NamedCheckpoint> read;
};

class SharedCheckpoints {
   public:
    static constexpr const char* shared_code = "GJF-L010";
    static constexpr const char* missing_code = "GJF-L015";

    /// Takes the files and folders of the command line.
    SharedCheckpoints(std::vector<std::string> arguments, Walk walk)
        : arguments_(std::move(arguments)), walk_(std::move(walk)) {}

    /// Adds a finding for each checkpoint that a file before this one begins too, and for what is read and not there;
    /// returns whether there was any. Called in the order of the files, so that the findings do not depend on the number of
    /// threads.
    bool add_findings(const std::string& path, std::string_view content, const FileCheckpoints& checkpoints,
                      std::vector<quor::input::gaussian::Finding>& findings);

   private:
    bool is_written(const std::string& checkpoint, const std::string& reader);

    std::vector<std::string> arguments_;
    Walk walk_;
    std::unordered_map<std::string, std::string> files_;  // that first begin a checkpoint, by its path
    // The file that writes a checkpoint, or that several do; looked for at the first question.
    std::optional<std::unordered_map<std::string, std::string>> writers_;
};

}  // namespace quor_gjf

// Where quor-gjf edit -o writes each file.
#pragma once

#include "file_list.hpp"

#include <string>
#include <vector>

namespace quor_gjf {

/// Maps files to their places in the output. It is a file when one file goes in and it neither ends in "/" nor is a folder;
/// else a folder: a file has its name there, a file of a folder its path below that folder.
class EditOutputs {
   public:
    /// Takes the files and folders of the command line, and the output; empty when there is none.
    EditOutputs(std::vector<std::string> arguments, Walk walk, std::string output);

    std::string path_of(const std::string& input) const;

    /// Says why these files cannot be worked on at once: one is named twice, two would become one, or the output would be
    /// read as input; empty when there is no reason.
    std::string conflict() const;

   private:
    std::vector<std::string> arguments_;
    Walk walk_;
    std::vector<std::string> folders_;  // ending in "/"
    std::string output_;
    bool is_file_ = false;
};

}  // namespace quor_gjf

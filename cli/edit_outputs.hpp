// Where quor-gjf edit -o writes each file.
#pragma once

#include "file_list.hpp"

#include <string>
#include <vector>

namespace quor_gjf {

/// Maps files to places in an output folder: a file to its name there, a file of a folder to its path below that folder.
class EditOutputs {
   public:
    /// Takes the files and folders of the command line, and the output folder; empty when there is none.
    EditOutputs(std::vector<std::string> arguments, Walk walk, std::string output_folder);

    std::string path_of(const std::string& input) const;

    /// Says why these files cannot be worked on at once: one is named twice, two would become one, or the output would be
    /// read as input; empty when there is no reason.
    std::string conflict() const;

   private:
    std::vector<std::string> arguments_;
    Walk walk_;
    std::vector<std::string> folders_;  // ending in "/"
    std::string output_folder_;
};

}  // namespace quor_gjf

// Finds files of a run that begin the same checkpoint, so that the one that runs later destroys what the other left.
#pragma once

#include <gjf/core/check/checker.hpp>

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quor_gjf {

class SharedCheckpoints {
   public:
    static constexpr const char* code = "GJF-L010";

    /// Adds a finding for each checkpoint that a file before this one begins too; returns whether there was any. Called in
    /// the order of the files, so that the findings do not depend on the number of threads.
    bool add_findings(const std::string& path, std::string_view content,
                      const std::vector<quor::input::gaussian::BegunCheckpoint>& begun,
                      std::vector<quor::input::gaussian::Finding>& findings);

   private:
    std::unordered_map<std::string, std::string> files_;  // that first begin a checkpoint, by its path
};

}  // namespace quor_gjf
